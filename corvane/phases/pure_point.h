// Saturation of one component of a mixture model. Internal to the library.
#pragma once

#include <corvane/phases/diagram.h>
#include <corvane/phases/phase.h>

namespace corvane {

/// What is constant along a diagram.
struct Constant {
    bool at_T;
    double value;
};

/// The saturated pure component k of a binary as the tie line x = y, liquid first. From Wilson's
/// K-factor (bubble_T, bubble_p), or, near the critical point, from densities that differ from the
/// critical one as the root of the distance in T. False above the critical point, or if both fail.
bool pure_point(FluidModel const& fluid, int component, Constant constant, TieLine& q);

}  // namespace corvane
