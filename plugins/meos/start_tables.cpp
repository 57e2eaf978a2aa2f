#include <plugins/meos/start_tables.h>

#include <algorithm>
#include <cmath>

namespace corvane::meos {
namespace {

constexpr double kFirstInverse = 1.0, kLastInverse = 0.04;  // Tc/T of the rows above Tc

double mix(double a, double b, double w) {
    return a + w * (b - a);
}
IsothermState mix(IsothermState const& a, IsothermState const& b, double w) {
    return {mix(a.rho, b.rho, w), mix(a.P, b.P, w), mix(a.S, b.S, w), mix(a.C, b.C, w)};
}

}  // namespace

void StartTables::fill(Equation const& equation, double Tc, double rho_c, Vector<double>& T,
                       Vector<double>& dilute, Vector<double>& dense) {
    rows_.clear();
    grid_.clear();
    snapshot_.clear();
    CriticalPoint own;
    if (Tc > 0.0 && Tc < 1e5 && rho_c > 0.0 && std::isfinite(rho_c))
        own = critical_near(equation, Tc, rho_c);
    if (own.T > 0.0) {
        Tc = own.T;
        rho_c = own.rho;
    }
    Ts_ = equation.Ts();
    vs_ = equation.vs();
    Tc_ = Tc;
    rho_c_ = rho_c;
    step_ = Tc * (1.0 - kLowest) / (kCount * kCount);
    if (own.T > 0.0) {
        LoopRow critical;
        critical.dilute = critical.dense = critical.liquid =
            state_at(Isotherm<false>(equation, Tc), rho_c);
        critical.known = true;
        rows_.push_back(critical);
        LoopRow last = critical, before = critical;
        for (int k = 1; k <= kCount; ++k) {
            const Isotherm<false> isotherm(equation, Tc - step_ * k * k);
            // The spinodals part as the square root of Tc − T, that is, evenly with k. A first
            // guess of the width: a van der Waals fluid's, 2·sqrt(1 − T/Tc).
            const double first = 2.0 * std::sqrt(step_ / Tc) * rho_c;
            const LoopRow row = trace_row(isotherm, last, k == 1 ? nullptr : &before, rho_c, first);
            if (!(row.dilute.rho > 0.0)) break;
            rows_.push_back(row);
            before = last;
            last = row;
        }
        leave_out_inner_loops(equation);
        fill_supercritical(equation);
        snapshot_ = equation.pool();
    }
    const int count = static_cast<int>(rows_.size());
    const int n = count > 2 ? count + 1 : 0;
    T.size(n), dilute.size(n), dense.size(n);
    for (int i = 0; i < n; ++i) {
        const int k = i - 1;
        T[i] = i == 0 ? 1e5 : Tc - step_ * k * k;
        dilute[i] = i < 2 ? rho_c / 0.999 : rows_[k].dilute.rho;
        dense[i] = i < 2 ? rho_c / 1.001 : rows_[k].dense.rho;
    }
}

void StartTables::leave_out_inner_loops(Equation const& equation) {
    constexpr int stride = 20;  // a second loop, once open, widens towards low temperatures
    const auto wrong = [&](int k) {
        return rows_[k].known &&
               loop_above(Isotherm<false>(equation, Tc_ - step_ * k * k), rows_[k], rho_c_);
    };
    const int count = static_cast<int>(rows_.size());
    bool any = false;
    for (int k = count - 1; k > 0 && !any; k -= stride) any = wrong(k);
    for (int k = 1; k < count && any; ++k)
        if (wrong(k)) rows_[k].known = false;
}

LoopRow StartTables::loop(Equation const& equation, double T) const {
    T *= Ts_ / equation.Ts();
    const double position = std::sqrt((Tc_ - T) / step_);
    const int count = static_cast<int>(rows_.size());
    if (count < 3 || !(position < count - 1)) return {};
    const int k = static_cast<int>(position);
    const double w = position - k;
    LoopRow const &a = rows_[k], &b = rows_[k + 1];
    LoopRow row;
    row.known = a.known && b.known;
    if (!row.known) return row;
    const double scale = vs_ / equation.vs();
    const auto between = [&](IsothermState LoopRow::*s) {
        const IsothermState q = mix(a.*s, b.*s, w);
        return IsothermState{q.rho * scale, q.P * scale, q.S, q.C};
    };
    row.dilute = between(&LoopRow::dilute);
    row.dense = between(&LoopRow::dense);
    row.liquid = between(&LoopRow::liquid);
    // Linear interpolation errs by an eighth of the second difference; twice that is doubted.
    LoopRow const& c = k + 2 < count ? rows_[k + 2] : rows_[k - 1];
    LoopRow const &middle = k + 2 < count ? b : a, &end = k + 2 < count ? a : b;
    const auto doubt = [&](IsothermState LoopRow::*s) {
        return 0.25 * scale * std::abs((c.*s).P - 2.0 * (middle.*s).P + (end.*s).P);
    };
    row.dilute_doubt = doubt(&LoopRow::dilute);
    row.dense_doubt = doubt(&LoopRow::dense);
    row.dilute_soft = a.dilute_soft || b.dilute_soft;
    row.dense_soft = a.dense_soft || b.dense_soft;
    return row;
}

void StartTables::fill_supercritical(Equation const& equation) {
    grid_.reserve(kRows * (kColumns + 1));
    for (int i = 0; i < kRows; ++i) {
        const double x = mix(kFirstInverse, kLastInverse, i / (kRows - 1.0));
        const Isotherm<false> isotherm(equation, Tc_ / x);
        grid_.push_back({0.0, 1.0});
        for (int j = 1; j <= kColumns; ++j) {
            const IsothermState s = state_at(isotherm, 0.25 * j * rho_c_);
            const bool critical = i == 0 && j == 4;
            grid_.push_back({s.P / rho_c_, critical ? std::max(s.S, 0.0) : s.S});
        }
    }
}

double StartTables::supercritical(Equation const& equation, double T, double P) const {
    const double rho_c = this->rho_c(equation), f = P / rho_c;
    const double x = std::clamp(Tc(equation) / T, kLastInverse, kFirstInverse);
    const double position = (kFirstInverse - x) / (kFirstInverse - kLastInverse) * (kRows - 1);
    const int i = std::min(static_cast<int>(position), kRows - 2);
    const double w = position - i;
    Node const* row = &grid_[i * (kColumns + 1)];
    const auto node = [&](int j) {
        Node const &a = row[j], &b = row[j + kColumns + 1];
        const bool rise = a.S >= 0.0 && b.S >= 0.0;
        return Node{mix(a.F, b.F, w), rise ? mix(a.S, b.S, w) : -1.0};
    };
    // The pair of nodes around f, then the cubic through both values and slopes.
    int j = 0;
    Node a = node(0), b = node(1);
    while (j + 1 < kColumns && b.F < f && b.S >= 0.0) {
        ++j;
        a = b;
        b = node(j + 1);
    }
    if (!(b.S >= 0.0)) return 0.0;
    if (!(b.F > f)) return 0.25 * kColumns * rho_c;
    const double h = 0.25, rise = b.F - a.F;
    const double c2 = 3.0 * rise - h * (2.0 * a.S + b.S), c3 = h * (a.S + b.S) - 2.0 * rise;
    double u = (f - a.F) / rise;
    for (int k = 0; k < 3; ++k) {
        const double slope = h * a.S + u * (2.0 * c2 + 3.0 * u * c3);
        if (!(slope > 0.1 * rise)) break;
        u = std::clamp(u - (a.F + u * (h * a.S + u * (c2 + u * c3)) - f) / slope, 0.0, 1.0);
    }
    return rho_c * h * (j + u);
}

}  // namespace corvane::meos
