// Two zeros of a function between neighbouring points of a mesh. Internal to the library.
#pragma once

#include <cmath>
#include <optional>

namespace corvane::inline detail {

struct MeshPoint {
    double at, value;
};

/// Two neighbouring brackets of a zero: left < middle < right, the sign in the middle is another.
struct ClosePair {
    MeshPoint left, middle, right;
};

/// Where |f| is least at the middle one of three points of the same sign: golden sections (Kiefer, Proc.
/// Am. Math. Soc. 4 (1953) 502) towards the extremum, until f changes its sign, is no number, or `most`
/// evaluations are done. A pair that is closer than a part of 0.618^most of the interval is not found.
template <class F>
std::optional<ClosePair> close_pair(F const& f, MeshPoint a, MeshPoint b, MeshPoint c, int most) {
    const double sign = b.value;
    if (!(a.value * sign > 0.0) || !(c.value * sign > 0.0) || !std::isfinite(a.value + b.value + c.value) ||
        std::fabs(b.value) > std::fabs(a.value) || std::fabs(b.value) > std::fabs(c.value))
        return {};
    for (int k = 0; k < most; ++k) {
        const bool left = b.at - a.at > c.at - b.at;
        const double at = b.at + 0.381966 * (left ? a.at - b.at : c.at - b.at);
        const MeshPoint here{at, f(at)};
        if (!std::isfinite(here.value)) return {};
        if (here.value * sign <= 0.0) return left ? ClosePair{a, here, b} : ClosePair{b, here, c};
        if (std::fabs(here.value) < std::fabs(b.value)) {
            (left ? c : a) = b;
            b = here;
        } else {
            (left ? a : c) = here;
        }
    }
    return {};
}

}  // namespace corvane::inline detail
