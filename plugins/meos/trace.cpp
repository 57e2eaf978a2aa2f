#include <corvane/plugin/roots.h>
#include <plugins/meos/trace.h>

#include <algorithm>
#include <cmath>

namespace corvane::meos {
namespace {

constexpr double kDilute = -1.0, kDense = 1.0;  // towards which a branch lies from its end

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

}  // namespace

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
    End dilute = trace.end(ahead(&LoopRow::dilute, -width), kDilute, last.dilute.rho);
    if (dilute.state.rho == 0.0) dilute = trace.scan(0.01 * last.dilute.rho, rho_c, scan_steps);
    if (dilute.state.rho > 0.0) trace.outermost(0.0, dilute);
    End dense = trace.end(ahead(&LoopRow::dense, width), kDense, last.dense.rho);

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
