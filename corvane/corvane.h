// Everything a caller of the library needs.
#pragma once

#include <corvane/core/constants.h>
#include <corvane/core/containers.h>
#include <corvane/core/errors.h>
#include <corvane/core/records.h>
#include <corvane/equilibria/crit_slope.h>
#include <corvane/equilibria/equil2.h>
#include <corvane/equilibria/equil2s-1.h>
#include <corvane/equilibria/equil_min.h>
#include <corvane/equilibria/ffe1core.h>
#include <corvane/equilibria/ffeNcore.h>
#include <corvane/equilibria/ffinit.h>
#include <corvane/equilibria/list_different.h>
#include <corvane/ideal/ideal.h>
#include <corvane/input/input.h>
#include <corvane/mixture/heat_capacity.h>
#include <corvane/mixture/loading.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <corvane/solid/solid.h>
#include <corvane/viscosity/visco.h>
#include <corvane/volume/volume.h>
