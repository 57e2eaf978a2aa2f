#include <corvane/plugin/roots.h>
#include <plugins/meos/trace.h>

#include <algorithm>
#include <cmath>

namespace corvane::meos {
namespace {

constexpr double kTowardsDilute = -1.0, kTowardsDense = 1.0;  // a branch, from its end

struct End {
    IsothermState state;
    bool soft = false;
};

class Tracer {
    auto slope() const {
        return [this](double rho) {
            const Value v = isotherm_.at<3>(rho);
            return IsothermPoint{rho * v.Z(), v.slope()};
        };
    }

  public:
    explicit Tracer(Isotherm<false> const& isotherm) : isotherm_(isotherm) {}

    /// The end of a branch near the guess. `falling` may be a density where the isotherm falls.
    End end(double guess, double side, double falling) const {
        const IsothermState s = spinodal_near(isotherm_, guess, 0.5 * guess, 1.5 * guess);
        if (s.C * side > 0.0 && std::abs(s.rho - guess) < 0.05 * guess) return {s};
        if (const End e = minimum_slope(guess, side); e.state.rho > 0.0) return e;
        return march(falling, side);
    }

    /// The first spinodal on the way from a stable density.
    End scan(double stable, double to, int steps) const {
        return at_spinodal(spinodal(slope(), stable, to, steps));
    }

    /// Looks from a stable density for a spinodal that comes before the end, and puts it in its
    /// place. Loops narrower than an eighth of the way may be missed.
    void outermost(double stable, End& end) const {
        constexpr int steps = 8;
        double before = stable;
        for (int k = 1; k < steps; ++k) {
            const double x = stable + (end.state.rho - stable) * k / steps;
            if (!(slope()(x).dP > 0.0)) {
                if (const End e = scan(before, x, 1); e.state.rho > 0.0) end = e;
                return;
            }
            before = x;
        }
    }

  private:
    End at_spinodal(double rho) const { return rho > 0.0 ? End{state_at(isotherm_, rho)} : End{}; }

    /// The minimum of the slope near the guess: a soft end if the slope is positive there,
    /// otherwise the spinodal before it.
    End minimum_slope(double guess, double side) const {
        double stable = guess * (1.0 + side * 0.1);
        IsothermState a = state_at(isotherm_, stable), b;
        if (!(a.C * side > 0.0)) return {};
        for (int k = 1;; ++k) {
            if (k > 10) return {};
            b = state_at(isotherm_, guess * (1.0 + side * (0.1 - 0.02 * k)));
            if (!(b.C * side > 0.0)) break;
            a = b;
        }
        const auto bend = [&](double rho) {
            return IsothermPoint{0.0, side * state_at(isotherm_, rho).C};
        };
        const double rho = spinodal(bend, a.rho, b.rho);  // the zero of C
        const IsothermState least = rho > 0.0 ? state_at(isotherm_, rho) : IsothermState{};
        if (least.S > 0.0) return {least, true};
        return a.S > 0.0 && least.rho > 0.0 ? scan(a.rho, least.rho, 1) : End{};
    }

    /// Growing steps outwards from a density where the isotherm falls.
    End march(double falling, double side) const {
        if (!(slope()(falling).dP < 0.0)) return {};
        double step = 1e-3 * falling;
        for (int k = 0; k < 40; ++k, step *= 1.3) {
            const double x = falling + side * step;
            if (!(x > 0.0)) break;
            if (slope()(x).dP > 0.0) return scan(x, falling, 1);
            falling = x;
        }
        return {};
    }

    Isotherm<false> const& isotherm_;
};

/// The state of least slope near a density; rho = 0 if it is not within half of rho_c.
IsothermState least_slope(Isotherm<false> const& isotherm, double x, double rho_c) {
    constexpr double h = 1e-4;  // of the density, for the derivative of C
    for (int k = 0; k < 30; ++k) {
        const IsothermState s = state_at(isotherm, x);
        const double bend =
            (state_at(isotherm, x * (1.0 + h)).C - state_at(isotherm, x * (1.0 - h)).C) / (2.0 * h);
        const double step =
            bend > 0.0 ? std::clamp(-s.C / bend, -0.05, 0.05) : std::copysign(0.05, -s.C);
        if (!std::isfinite(step)) return {};
        if (std::abs(step) < 1e-9) return s;
        x *= 1.0 + step;
        if (std::abs(x - rho_c) > 0.5 * rho_c) return {};
    }
    return {};
}

}  // namespace

CriticalPoint critical_near(Equation const& equation, double Tc, double rho_c) {
    const IsothermState stored = state_at(Isotherm<false>(equation, Tc), rho_c);
    if (std::abs(stored.S) < 1e-8 && std::abs(stored.C) < 1e-4) return {Tc, rho_c};
    double before = Tc, T = Tc * 1.001, S_before = 0.0, x = rho_c;
    for (int k = 0; k < 30; ++k) {
        const IsothermState s =
            least_slope(Isotherm<false>(equation, k == 0 ? before : T), x, rho_c);
        if (!(s.rho > 0.0)) return {};
        x = s.rho;
        if (k > 0) {
            const double step = -s.S * (T - before) / (s.S - S_before);
            if (!std::isfinite(step) && s.S != 0.0) return {};
            if (std::abs(s.S) < 1e-12 || std::abs(step) < 1e-12 * T) return {T, x};
            before = T;
            T += std::clamp(step, -0.02 * Tc, 0.02 * Tc);
            if (std::abs(T - Tc) > 0.1 * Tc) return {};
        }
        S_before = s.S;
    }
    return {};
}

bool loop_above(Isotherm<false> const& isotherm, LoopRow const& row, double rho_c) {
    constexpr int steps = 24;
    const double top = beyond_loops(isotherm, rho_c);
    for (int k = 1; k < steps; ++k)
        if (!(state_at(isotherm, row.liquid.rho + (top - row.liquid.rho) * k / steps).S > 0.0))
            return true;
    return false;
}

LoopRow trace_row(Isotherm<false> const& isotherm, LoopRow const& last, LoopRow const* before,
                  double rho_c, double width) {
    constexpr int scan_steps = 60;
    const Tracer trace(isotherm);
    // Linear in the number of the row, but never by more than a tenth: rows may jump to another
    // loop.
    const auto ahead = [&](IsothermState LoopRow::*s, double first) {
        const double here = (last.*s).rho;
        if (!before) return here + first;
        return here + std::clamp(here - (before->*s).rho, -0.1 * here, 0.1 * here);
    };
    End dilute = trace.end(ahead(&LoopRow::dilute, -width), kTowardsDilute, last.dilute.rho);
    if (dilute.state.rho == 0.0) dilute = trace.scan(0.01 * last.dilute.rho, rho_c, scan_steps);
    if (dilute.state.rho > 0.0) trace.outermost(0.0, dilute);
    End dense = trace.end(ahead(&LoopRow::dense, width), kTowardsDense, last.dense.rho);

    // The liquid of the last temperature is on the dense branch, except next to the critical point.
    LoopRow row;
    const double liquid = climb(
        isotherm, dilute.state.P, ahead(&LoopRow::liquid, 2.0 * width),
        {dilute.state.rho, kInfinity, std::max(last.liquid.rho, dense.state.rho), true, true});
    const double stable = liquid > 0.0 ? liquid : last.liquid.rho;
    if (dense.state.rho == 0.0) dense = trace.scan(stable, 0.5 * rho_c, scan_steps);
    if (!(dilute.state.rho > 0.0 && dense.state.rho > dilute.state.rho)) return row;
    trace.outermost(stable, dense);
    row.dilute = dilute.state;
    row.dense = dense.state;
    row.dilute_soft = dilute.soft;
    row.dense_soft = dense.soft;
    row.liquid = liquid > 0.0 ? state_at(isotherm, liquid) : last.liquid;
    row.known = liquid > dense.state.rho;
    return row;
}

}  // namespace corvane::meos
