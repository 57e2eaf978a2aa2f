// Saturation of one component of a mixture model. Internal to the library.
#pragma once

#include <corvane/phases/binary/diagram.h>
#include <corvane/phases/phase/fixed.h>
#include <corvane/phases/phase/phase.h>

namespace corvane::inline detail {

/// The saturated pure component of a binary as the tie line x = y, liquid first. From `near`, if
/// given; from Wilson's K-factor (bubble_T, bubble_p); then from densities that differ from the
/// critical one as the root of the distance in T. False above the critical point, or if all fail.
bool pure_point(FluidModel const& fluid, int component, Fixed constant, TieLine& q,
                TieLine const* near = nullptr);

}  // namespace corvane::inline detail
