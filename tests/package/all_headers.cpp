// All public headers in one program: no name is defined twice.
#include <corvane/corvane.h>

#include <corvane/binding/certified_interface.h>
#include <corvane/binding/phdesc_interface.h>
#include <corvane/check/check.h>
#include <corvane/mixture/isotherm.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/plugin/cubic.h>
#include <corvane/plugin/equation.h>
#include <corvane/plugin/formula.h>
#include <corvane/plugin/plugin.h>
#include <corvane/plugin/roots.h>
#include <corvane/plugin/section.h>
#include <corvane/plugin/tables.h>
