#include <corvane/core/constants.h>
#include <corvane/phases/coexistence/regular_pair.h>
#include <corvane/phases/coexistence/split.h>
#include <corvane/phases/flash/flash_parts.h>
#include <corvane/phases/numerics/dense.h>
#include <corvane/phases/report/least_fraction.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace corvane {
namespace {
constexpr double kApart = 1e-4;    // ln rho_i'/rho_i'' of two phases
constexpr double kAbsent = 1e-12;  // amount of a phase that is not needed, of the rarest component
constexpr double kPolish = 1e-10;  // of potentials and pressures, see residual()
constexpr double kScarce = 1e-6;   // amount that the tolerances of the potentials might feign
constexpr double kVanishing = 0.1;  // of a phase's amount, left after Newton's method failed
constexpr int kTraces = 3;          // substitutions that set them at given amounts of the phases
constexpr int kSubstitutions = 40, kFractions = 50, kNewton = 30;

/// Does a trace of the phase lower the Gibbs energy of the whole?
bool lowers(FluidModel const& fluid, double T, double p, PhaseState const& scarce) {
    PhaseState whole;
    whole.resize(fluid.size());
    if (!fluid.evaluate_at(whole, p, T, fluid.z(), Root::stable, 0)) return false;
    double d = 0.0;
    for (int i = 0; i < fluid.size(); ++i) d += scarce.x[i] * (scarce.m[i] - whole.m[i]);
    return d < 0.0;
}

bool alike(PhaseState const& a, PhaseState const& b) {
    for (int i = 0; i < a.size(); ++i)
        if (std::fabs(std::log(a.rho_i[i] / b.rho_i[i])) > kApart) return false;
    return true;
}

/// Does the model's density solver know this density? The inner loops of multi-parameter equations
/// have rising branches that are no phases.
bool is_model_root(FluidModel const& fluid, PhaseState const& s, double p) {
    double rho[2];
    const int count = fluid.densities(p, s.T, s.x, rho);
    for (int k = 0; k < count; ++k)
        if (std::fabs(rho[k] / s.rho - 1.0) < 1e-3) return true;
    return false;
}
}  // namespace

void detail::flash_record(FluidModel const& fluid, std::vector<PhaseState const*> phases,
                  std::vector<double> const& amounts, FlashResult& q) {
    std::vector<std::pair<double, std::size_t>> order;
    order.reserve(phases.size());
    for (std::size_t k = 0; k < phases.size(); ++k) {
        double mass = 0.0;
        for (int i = 0; i < fluid.size(); ++i) mass -= phases[k]->rho_i[i] * fluid.weight(i);
        order.emplace_back(mass, k);
    }
    std::sort(order.begin(), order.end());
    const std::vector<PhaseState const*> given = phases;
    double volume = 0.0;
    q.fraction.clear();
    q.fraction.reserve(phases.size());
    for (std::size_t k = 0; k < order.size(); ++k) {
        const std::size_t from = order[k].second;
        phases[k] = given[from];
        q.fraction.push_back(amounts[from]);
        volume += amounts[from] / given[from]->rho;
    }
    q.rho = 1.0 / volume;
    Certificate& c = q.certificate;
    certify(fluid, q.p, phases, c);
    for (PhaseRecord& phase : c.phases)
        for (int i = 0; i < phase.x.size(); ++i)
            if (absent(phase.x[i])) phase.x[i] = 0.0;
    q.phases = c.phases;
    c.balance = 0.0;
    for (int i = 0; i < fluid.size(); ++i) {
        double sum = 0.0;
        for (std::size_t k = 0; k < phases.size(); ++k) sum += q.fraction[k] * phases[k]->x[i];
        c.balance = std::max(c.balance, std::fabs(fluid.z()[i] - sum));
    }
}

namespace {
/// How far two phases are from equal potentials and from the pressure (relative, beyond rounding of
/// the density).
double residual(double p, PhaseState const& a, PhaseState const& b) {
    double off = 0.0;
    for (PhaseState const* s : {&a, &b}) {
        const double rounding = 8 * std::numeric_limits<double>::epsilon() * R * s->T * s->S;
        off = std::max(off, (std::fabs(s->p - p) - rounding) / p);
    }
    for (int i = 0; i < a.size(); ++i) off = std::max(off, std::fabs(a.m[i] - b.m[i]));
    return off;
}

bool bound_apart(CoexistenceSolver& two, double T, double p, PhaseState& a, PhaseState& b,
                 double& beta, bool exact, Certificate& c) {
    const double volume_a = (1.0 - beta) / a.rho, volume_b = beta / b.rho;
    two.z = &two.fluid.z();
    two.T = T;
    two.p = p;
    two.fraction = {volume_b / (volume_a + volume_b)};
    two.start(0, a.x, a.rho);
    two.start(1, b.x, b.rho);
    two.u.back() = std::log(T);
    if (!exact) {
        if (!two.solve(kNewton)) return false;
        a = two.phase[0];
        b = two.phase[1];
        const std::vector<double> moles = two.amounts();
        beta = moles[1] / (moles[0] + moles[1]);
    } else {
        for (int k = 0; k < 2; ++k) {  // T is exact, what depends on it of no account
            PhaseState& s = two.phase[k] = k ? b : a;
            std::fill(s.m_T.begin(), s.m_T.end(), s.p_T = 0.0);
        }
    }
    if (!(std::min(beta, 1.0 - beta) > kScarce) && !lowers(two.fluid, T, p, beta < 0.5 ? b : a))
        return false;
    return two.bound(c) && c.apart_error < Certificate::apart_limit;
}
}  // namespace

bool detail::flash_bound(CoexistenceSolver& two, double T, double p, PhaseState& a, PhaseState& b,
                 double& beta, Certificate& c) {
    FluidModel const& fluid = two.fluid;
    double d = 0.0, most = 0.0;
    for (int i = 0; i < fluid.size(); ++i) {
        const double half = 0.5 * std::log(a.rho_i[i] / b.rho_i[i]);
        d += fluid.z()[i] * half * half;
        most = std::max(most, std::fabs(half));
    }
    d = std::sqrt(d);
    if (!(d > 1e-9)) return false;
    if (d > RegularPair::kNear || most > RegularPair::kNearEach) {
        return bound_apart(two, T, p, a, b, beta, !(residual(p, a, b) > kPolish), c);
    }
    const double volume_a = (1.0 - beta) / a.rho, volume_b = beta / b.rho;
    RegularPair pair(fluid);
    pair.T = T;
    pair.p = p;
    pair.fixed_fraction = false;
    pair.start(a.rho_i, b.rho_i, T, volume_b / (volume_a + volume_b));
    if (!pair.solve(kNewton) || !pair.bound(c) || !(c.apart_error < Certificate::apart_limit) ||
        !pair.locally_stable())
        return false;
    const double found = pair.y.back();
    if (!(found >= 0.0 && found <= 1.0)) return false;
    a = pair.a;
    b = pair.b;
    beta = found * b.rho / ((1.0 - found) * a.rho + found * b.rho);
    // Its last steps may be slow where the phases are not that near.
    return !(residual(p, a, b) > kPolish) || bound_apart(two, T, p, a, b, beta, false, c);
}

bool detail::flash_certified(FluidModel const& fluid, Stability& stability,
                     std::vector<PhaseState> const& phases, std::vector<double> const& amounts,
                     FlashResult& q) {
    std::vector<PhaseState const*> all;
    for (PhaseState const& s : phases) {
        for (PhaseState const* other : all)
            if (alike(s, *other)) return false;
        if (!stability.locally_stable(s)) return false;
        all.push_back(&s);
    }
    flash_record(fluid, all, amounts, q);
    Certificate& c = q.certificate;
    c.tpd = 0.0;
    if (!c.holds() || !(c.balance < 1e-12)) return false;
    for (PhaseState const& s : phases)
        if (!is_model_root(fluid, s, q.p)) return false;
    PhaseState plane = phases[0];
    for (PhaseState const& s : phases)
        for (int i = 0; i < fluid.size(); ++i)
            if (absent(plane.x[i]))
                plane.m[i] = std::min(plane.m[i], s.m[i]);
    const StabilityResult r =
        stability.test(plane, q.p, phases.size() > 1 ? &phases[1] : nullptr, true);
    c.tpd = std::min(0.0, r.tpd);
    // Of three components and more a start that is lost among traces is no sign of a further phase.
    return r.stable && (fluid.size() > 2 && phases.size() > 1 ? !r.unseen : !r.unconverged);
}

namespace {
/// Fractions of K phases for fugacity coefficients 1/e (n×K): the minimum of Q = Σ beta − Σ z·ln E,
/// E = Σ beta·e, over beta >= 0, which is convex and has Σ beta = 1. Newton's method where it lowers
/// Q, else beta·Σ z·e/E, which always does (Q is the likelihood of a mixture's parts: Dempster, Laird
/// & Rubin, J. R. Stat. Soc. B 39 (1977) 1) and sets traces at once. A phase that is not needed is
/// returned, or −1.
int fractions(std::vector<double> const& z, std::vector<double> const& e,
              std::vector<double>& beta, std::vector<double>& E) {
    const std::size_t K = beta.size();
    const double absent = kAbsent * *std::min_element(z.begin(), z.end());
    std::vector<double> g(K), H(K * K), step(K), from;
    auto objective = [&] {
        double Q = std::accumulate(beta.begin(), beta.end(), 0.0);
        for (std::size_t i = 0; i < z.size(); ++i) {
            E[i] = std::inner_product(beta.begin(), beta.end(), &e[K * i], 0.0);
            Q -= z[i] * std::log(E[i]);
        }
        return Q;
    };
    double Q = objective();
    for (int it = 0; it < kFractions; ++it) {
        std::fill(g.begin(), g.end(), 1.0);
        std::fill(H.begin(), H.end(), 0.0);
        for (std::size_t i = 0; i < z.size(); ++i) {
            double const* ei = &e[K * i];
            for (std::size_t k = 0; k < K; ++k) {
                g[k] -= z[i] * ei[k] / E[i];
                for (std::size_t l = 0; l < K; ++l)
                    H[K * k + l] += z[i] * ei[k] * ei[l] / (E[i] * E[i]);
            }
        }
        for (std::size_t k = 0; k < K; ++k) {
            if (beta[k] > absent || g[k] < 0.0) continue;
            for (std::size_t l = 0; l < K; ++l) H[K * k + l] = H[K * l + k] = 0.0;  // stays absent
            H[K * k + k] = 1.0;
            g[k] = 0.0;
        }
        from = beta;
        const double last = Q;
        double most = 1.0;
        bool lower = false;
        if (it > 1 && lu_solve(static_cast<int>(K), H.data(), (step = g).data())) {
            most = 0.0;
            for (std::size_t k = 0; k < K; ++k) most = std::max(most, std::fabs(step[k]) / beta[k]);
            if (most < 1e-10) break;
            for (double scale = 1.0; scale > 1e-3 && !lower; scale *= 0.3) {
                double sum = 0.0;
                for (std::size_t k = 0; k < K; ++k)
                    sum += beta[k] = std::max({from[k] - scale * step[k], 0.1 * from[k], absent});
                for (double& b : beta) b = std::max(b / sum, absent);
                Q = objective();
                lower = Q < last || most < 1e-7;  // next to the minimum Q is flat to rounding
            }
        }
        if (lower) continue;
        for (std::size_t k = 0; k < K; ++k) beta[k] = std::max(from[k] * (1.0 - g[k]), absent);
        Q = objective();
    }
    const auto least = std::min_element(beta.begin(), beta.end());
    return *least > 100 * absent ? -1 : static_cast<int>(least - beta.begin());
}

/// Phases that may be those of a flash, by their mole fractions, and their amounts.
struct Phases {
    FluidModel const& fluid;
    double p, T;
    std::vector<std::vector<double>> w;
    std::vector<double> beta;
    std::vector<PhaseState> s;  // as many at least
    std::vector<double> e, E;   // as fractions() has them

    int count() const { return static_cast<int>(w.size()); }
    void add(std::vector<double> const& x) {
        w.push_back(x);
        s.resize(std::max(s.size(), w.size()));
        s.back().resize(fluid.size());
    }
    void remove(int k) {
        w.erase(w.begin() + k);
        beta.erase(beta.begin() + k);
    }
    bool evaluate(int k) { return fluid.evaluate_at(s[k], p, T, w[k], Root::stable, 0); }
    bool substitute(bool given, double& change);
    bool settle(std::vector<double> const* amounts);
    bool start(SplitSolver& solver);
};

/// A substitution, and how far it changes the logarithms of the mole fractions; without one where a
/// phase is left out. given: the amounts are, and stay. False if that leaves no two phases.
bool Phases::substitute(bool given, double& change) {
    const int n = fluid.size(), K = count();
    e.resize(static_cast<std::size_t>(K * n));
    for (int k = 0; k < K; ++k) {
        if (!evaluate(k)) return false;
        for (int i = 0; i < n; ++i) e[K * i + k] = std::log(w[k][i]) - s[k].m[i];
    }
    for (int i = 0; i < n; ++i) {  // only their ratios count
        const double most = *std::max_element(&e[K * i], &e[K * i] + K);
        for (int k = 0; k < K; ++k) e[K * i + k] = std::exp(e[K * i + k] - most);
    }
    if (given)
        for (int i = 0; i < n; ++i)
            E[i] = std::inner_product(beta.begin(), beta.end(), &e[K * i], 0.0);
    const int gone = given ? -1 : fractions(fluid.z(), e, beta, E);
    if (gone >= 0) {
        change = 1.0;
        if (K < 3) return false;
        remove(gone);
        return true;
    }
    change = 0.0;
    for (int k = 0; k < K; ++k) {
        double sum = 0.0;
        for (int i = 0; i < n; ++i) sum += fluid.z()[i] * e[K * i + k] / E[i];
        for (int i = 0; i < n; ++i) {
            const double next = std::max(fluid.z()[i] * e[K * i + k] / E[i] / sum, least_fraction);
            change = std::max(change, std::fabs(std::log(next / w[k][i])));
            w[k][i] = next;
        }
    }
    return true;
}

/// Substitutions from equal amounts, or a few at given ones.
bool Phases::settle(std::vector<double> const* amounts) {
    if (amounts)
        beta = *amounts;
    else
        beta.assign(w.size(), 1.0 / count());
    double change = 0.0;
    for (int it = 0; it < (amounts ? kTraces : kSubstitutions); ++it) {
        if (!substitute(amounts != nullptr, change)) return false;
        if (it > 2 && change < 1e-3) break;
    }
    return true;
}

/// Sets where Newton's method starts.
bool Phases::start(SplitSolver& solver) {
    std::vector<PhaseRecord> records;
    for (int k = 0; k < count(); ++k) {
        if (!evaluate(k)) return false;
        records.push_back({s[k].rho, fluid.expand(w[k])});
    }
    return solver.start(T, p, records, beta);
}
}  // namespace

bool detail::flash_many(FluidModel const& fluid, Stability& stability,
                        std::vector<std::vector<double>> const& w, FlashResult& q,
                        std::vector<double> const& amounts) {
    const int n = fluid.size();
    Phases phases{fluid, q.p, q.T, {}, {}, {}, {}, std::vector<double>(fluid.z().size())};
    for (std::vector<double> const& x : w) phases.add(x);
    for (int round = 0; round < 2 * n; ++round) {
        if (!phases.settle(round == 0 && !amounts.empty() ? &amounts : nullptr)) return false;
        const int K = phases.count();
        SplitSolver solver(fluid, nullptr, Target::none);
        if (!phases.start(solver)) return false;
        if (!solver.solve(kNewton)) {
            std::vector<double> const& beta = phases.beta;
            int gone = 0;
            for (int k = 1; k < K; ++k)
                if (solver.amount[k] * beta[gone] < solver.amount[gone] * beta[k]) gone = k;
            if (K < 3 || !(solver.amount[gone] < kVanishing * beta[gone])) return false;
            phases.remove(gone);
            continue;
        }
        if (solver.bound(q.certificate) &&
            flash_certified(fluid, stability, solver.phase, solver.amount, q))
            return true;
        const StabilityResult r = stability.test(solver.phase[0], q.p, &solver.phase[1], false);
        if (r.stable || !r.other) return false;
        for (int k = 0; k < K; ++k) phases.w[k] = solver.phase[k].x;
        phases.add(r.trial.w);
    }
    return false;
}

}  // namespace corvane
