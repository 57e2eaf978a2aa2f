// What every calculation of a binary starts with. Internal to the library.
#pragma once

#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>

#include <cmath>

namespace corvane::inline detail {

/// @throws ThException 4 not a binary; 5 T or p is not a positive number
inline void check_binary(ModelN const& model, double value) {
    if (model.mdl1.size() != 2) throw ThException(th_no_option);
    if (!(value > 0.0) || !std::isfinite(value)) throw ThException(th_out_of_range);
}

/// @throws ThException 5 a step or bound that is not a number, or none to work with
template <class Options>
void check_options(Options const& o) {
    if (!(o.step > 0.0) || !(o.p_max > 0.0) || !(o.T_min >= 0.0) ||
        !std::isfinite(o.step + o.p_max + o.T_min))
        throw ThException(th_out_of_range);
}

/// f(), or false where the model refuses a state: a curve ends there, and does not take all others
/// with it.
template <class F>
bool survives(F f) {
    try {
        return f();
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return false;
}

/// Both components present, for a FluidModel whose phases bring their own compositions.
inline Vector<double> equal_parts() {
    Vector<double> z(2);
    z.set(0.5);
    return z;
}

}  // namespace corvane::inline detail
