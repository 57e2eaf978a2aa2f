#include <corvane/plugin/roots.h>
#include <plugins/meos/density_solver.h>

#include <algorithm>
#include <cmath>

namespace corvane::meos {
namespace {

/// First trial on the dilute branch: the cubic in rho that is an ideal gas at zero density and has
/// its maximum P at the spinodal.
double dilute_start(IsothermState const& spinodal, double P) {
    const double f = P / spinodal.P, a = spinodal.rho / spinodal.P;
    double y = f / (1.0 + std::sqrt(std::max(1.0 - f, 0.0)));
    if (!(a > 1.5 && a < 3.0)) return y * spinodal.rho;
    for (int k = 0; k < 2; ++k) {
        const double slope = a + y * (2.0 * (3.0 - 2.0 * a) + 3.0 * (a - 2.0) * y);
        if (!(slope > 0.0)) break;
        y -= (y * (a + y * (3.0 - 2.0 * a + (a - 2.0) * y)) - f) / slope;
        y = std::clamp(y, 0.0, 1.0);
    }
    return y * spinodal.rho;
}

/// First trial on the dense branch: beyond the tabulated liquid with a linear modulus, before it
/// with the cubic in rho that has its minimum P at the spinodal and the slope of the liquid at the
/// liquid.
double dense_start(LoopRow const& row, double P) {
    IsothermState const &liquid = row.liquid, &spinodal = row.dense;
    const double rise = liquid.P - spinodal.P, width = liquid.rho - spinodal.rho;
    if (P >= liquid.P) {
        const double q = (P - liquid.P) / (liquid.rho * liquid.S);
        const double step = murnaghan_step(q, liquid.C / liquid.S);
        return liquid.rho * (1.0 + (std::isfinite(step) ? std::min(step, 0.5) : 0.0));
    }
    const double f = std::clamp((P - spinodal.P) / rise, 0.0, 1.0);
    const double a = std::clamp(3.0 - liquid.S * width / rise, 0.2, 2.5);
    double y = std::sqrt(f);
    for (int k = 0; k < 2 && y > 0.0; ++k)
        y -= (y * y * (a + (1.0 - a) * y) - f) / (y * (2.0 * a + 3.0 * (1.0 - a) * y));
    return spinodal.rho + width * std::clamp(y, 1e-3, 1.0);
}

enum class Reach { no, yes, near };
/// Does a branch that ends at `limit` reach the point that lies `beyond` inside of it?
Reach reach(double beyond, double doubt) {
    return beyond > doubt ? Reach::yes : beyond < -doubt ? Reach::no : Reach::near;
}

/// Distance from a spinodal to the density at P, by the parabola there.
double parabola(IsothermState const& spinodal, double P) {
    return std::sqrt(2.0 * (P - spinodal.P) * spinodal.rho / spinodal.C);
}

/// Makes a row true that was tabulated for other coefficients; false where its dilute end is not
/// near the tabulated one, its liquid is none, or the isotherm falls again above that. A dense end
/// that is not near is one between two loops, which the table does not know well either: it stays,
/// with its doubt.
bool refresh(Isotherm<false> const& isotherm, double rho_c, LoopRow& row) {
    row.liquid = state_at(isotherm, row.liquid.rho);
    if (!(row.liquid.S > 0.0) || loop_above(isotherm, row, rho_c)) return false;
    const auto renew = [&](IsothermState& end, double& doubt, double side, double near) {
        const IsothermState s =
            spinodal_near(isotherm, end.rho, (1.0 - near) * end.rho, (1.0 + near) * end.rho);
        // Another spinodal may lie near, at the foot of an inner loop, but at another pressure.
        const double room = 0.5 * std::abs(end.P) + (side > 0.0 ? 0.1 * end.rho : 0.0);
        if (!(s.C * side > 0.0) || !(std::abs(s.P - end.P) < room)) return false;
        end = s;
        doubt = 0.0;
        return true;
    };
    if (!row.dense_soft) renew(row.dense, row.dense_doubt, 1.0, 0.1);
    return row.dilute_soft || renew(row.dilute, row.dilute_doubt, -1.0, 0.4);
}

Reach gas_at(LoopRow const& row, double P) {
    return P > 0.0 ? reach(row.dilute.P - P, row.dilute_soft ? 0.0 : row.dilute_doubt) : Reach::no;
}
Reach liquid_at(LoopRow const& row, double P) {
    return reach(P - row.dense.P, row.dense_soft ? 0.0 : row.dense_doubt);
}
Climb dilute_climb(LoopRow const& row, double P) {
    return {P, dilute_start(row.dilute, P), {0.0, 1.1 * row.dilute.rho, 0.0, false, true}};
}
Climb dense_climb(LoopRow const& row, double P) {
    return {P, dense_start(row, P), {0.9 * row.dense.rho, kInfinity, row.liquid.rho, true, true}};
}
Climb supercritical_climb(double start, double P) {
    return {P, start, {0.0, kInfinity, 0.0, false, true}};
}

/// Roots below Tc from the row of the tables; false if the row proves wrong.
bool roots_of_row(Isotherm<false> const& isotherm, LoopRow const& row, double rho_c, double P,
                  Roots& roots) {
    const Reach gas = gas_at(row, P);
    if (gas == Reach::yes) {
        roots.dilute = climb(isotherm, dilute_climb(row, P));
        if (roots.dilute == 0.0) return false;
    } else if (gas == Reach::near) {
        const IsothermState end = spinodal_near(isotherm, row.dilute.rho, 0.0, 1.1 * rho_c);
        if (!(end.C < 0.0)) return false;
        if (P < end.P)
            roots.dilute =
                climb(isotherm, P, end.rho - parabola(end, P), {0.0, end.rho, 0.0, false, false});
    }
    const Reach liquid = liquid_at(row, P);
    if (liquid == Reach::yes) {
        roots.dense = climb(isotherm, dense_climb(row, P));
        return roots.dense > 0.0 || P > row.liquid.P;
    }
    if (liquid == Reach::near) {
        const IsothermState end = spinodal_near(isotherm, row.dense.rho, 0.9 * rho_c, kInfinity);
        if (!(end.C > 0.0)) return false;
        if (P > end.P)
            roots.dense = climb(isotherm, P, end.rho + parabola(end, P),
                                {end.rho, kInfinity, end.rho, false, true});
    }
    return true;
}

/// Does the isotherm rise around the critical density? Newton's method for the density where its
/// slope is least.
bool rises_near(Isotherm<false> const& isotherm, double rho_c) {
    double x = rho_c, before = 0.0, C_before = 0.0;
    for (int k = 0; k < 20; ++k) {
        const IsothermState s = state_at(isotherm, x);
        if (!(s.S > 0.0)) return false;
        double step = s.C > 0.0 ? -0.05 * rho_c : 0.05 * rho_c;
        if (k > 0 && (s.C - C_before) * (x - before) > 0.0)
            step = std::clamp(-s.C * (x - before) / (s.C - C_before), -0.2 * rho_c, 0.2 * rho_c);
        // What is left to fall, were the slope a parabola, is a small part of it.
        if (std::abs(s.C * step) < 0.01 * s.S * x && std::abs(step) < 0.1 * rho_c) return true;
        before = x;
        C_before = s.C;
        x = std::clamp(x + step, 0.5 * rho_c, 1.5 * rho_c);
        if (x == before) return true;
    }
    return true;
}

/// For a pressure that neither outer branch reaches: a root on a rising branch between them, or 0.
double root_between(Isotherm<false> const& isotherm, double P, double low, double high) {
    constexpr int steps = 200;
    IsothermState a = state_at(isotherm, low);
    for (int k = 1; k <= steps; ++k) {
        const IsothermState b = state_at(isotherm, low + (high - low) * k / steps);
        if (a.S > 0.0 && b.S > 0.0 && a.P <= P && b.P > P)
            return climb(isotherm, P, 0.5 * (a.rho + b.rho), {a.rho, b.rho, 0.0, false, false});
        a = b;
    }
    return 0.0;
}

/// Is x, a root, on the first rising branch? That is concave as a rule: its slope is below the
/// secant from zero, and this below 1. Otherwise sixteen densities on the way decide.
bool on_first_branch(Isotherm<false> const& isotherm, double x) {
    const IsothermState end = state_at(isotherm, x);
    if (end.S * x <= end.P && end.P <= x) return true;
    for (int k = 1; k < 16; ++k)
        if (!(state_at(isotherm, x * k / 16).S > 0.0)) return false;
    return true;
}

/// Roots without tables.
Roots scanned_roots(Isotherm<false> const& isotherm, double rho_c, double P) {
    constexpr int steps = 48;
    const auto slope = [&](double rho) {
        const Value v = isotherm.at<3>(rho);
        return IsothermPoint{rho * v.Z(), v.slope()};
    };
    const double top = beyond_loops(isotherm, rho_c);
    const double middle = falling_density(slope, rho_c, top, steps);
    // From zero density an isotherm that has a loop is concave, and steps from the ideal gas do not
    // pass the root; at low temperature the spinodal is far below all densities of a scan.
    if (!(middle > 0.0)) {
        const double ideal = P / (1.0 + P / top);
        return {0.0, P > 0.0 ? climb(isotherm, P, ideal, {0.0, kInfinity, 0.0, false, true}) : 0.0};
    }
    Roots roots;
    if (P > 0.0) roots.dilute = climb(isotherm, P, P, {0.0, middle, 0.0, false, true});
    if (roots.dilute > 0.0 && !on_first_branch(isotherm, roots.dilute)) roots.dilute = 0.0;
    const double high = spinodal(slope, top, middle, steps);
    if (high > 0.0 && slope(high).P < P)
        roots.dense = climb(isotherm, P, 1.1 * high, {high, kInfinity, high, false, true});
    if (!(P > 0.0) || roots.dilute > 0.0 || roots.dense > 0.0) return roots;
    const double low = spinodal(slope, 1e-9 * top, middle, steps);
    if (low > 0.0 && high > low) roots.dense = root_between(isotherm, P, low, high);
    // At the critical point the slope is rounding, and its sign chance, up to 1e-5 of the density.
    const double beside = middle * (1.0 + 1e-5);
    if (roots.dense == 0.0 && is_root(isotherm, P, beside)) roots.dense = beside;
    return roots;
}

}  // namespace

Roots density_roots(Equation const& equation, StartTables const& tables,
                    Isotherm<false> const& isotherm, double P) {
    const double T = isotherm.T();
    if (!is_pressure(P)) return {};
    const bool current = tables.matches(equation);
    const double rho_c = tables.rho_c(equation);
    if (tables.known()) {
        LoopRow row;
        if (T < tables.Tc(equation)) row = tables.loop(equation, T);
        if (row.known && (current || refresh(isotherm, rho_c, row))) {
            Roots roots;
            if (roots_of_row(isotherm, row, rho_c, P, roots)) return roots;
        }
        const bool above = current ? T >= tables.Tc(equation)
                                   : T > 0.9 * tables.Tc(equation) && rises_near(isotherm, rho_c);
        if (above && !(P > 0.0)) return {};
        if (const double start = above ? tables.supercritical(equation, T, P) : 0.0; start > 0.0) {
            const double root = climb(isotherm, supercritical_climb(start, P));
            if (root > 0.0) return {0.0, root};
        }
    }
    return scanned_roots(isotherm, rho_c > 0.0 ? rho_c : 1.0 / equation.vs(), P);
}

std::optional<Climb> search_by_tables(Equation const& equation, StartTables const& tables, double T,
                                      double P) {
    if (!is_pressure(P) || !tables.known()) return {};
    if (T >= tables.Tc(equation)) {
        const double start = P > 0.0 ? tables.supercritical(equation, T, P) : 0.0;
        if (start > 0.0) return supercritical_climb(start, P);
        return {};
    }
    const LoopRow row = tables.loop(equation, T);
    if (!row.known) return {};
    const Reach gas = gas_at(row, P), liquid = liquid_at(row, P);
    if (gas == Reach::no && liquid == Reach::yes) return dense_climb(row, P);
    if (gas == Reach::yes && liquid == Reach::no) return dilute_climb(row, P);
    return {};
}

double start_density(Equation const& equation, StartTables const& tables, double T, double P,
                     int phase) {
    if (tables.matches(equation) && T > 0.0) {
        if (T >= tables.Tc(equation)) return tables.supercritical(equation, T, P);
        if (const LoopRow row = tables.loop(equation, T); row.known)
            return phase == 1 ? dense_start(row, P) : dilute_start(row.dilute, P);
    }
    return phase == 1 ? kDense / equation.vs() : P;
}

}  // namespace corvane::meos
