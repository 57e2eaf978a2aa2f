#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/numerics/illinois.h>
#include <corvane/phases/report/error_bound.h>
#include <corvane/phases/report/words.h>
#include <corvane/phases/solid/solid_fluid_states.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr int kSearchNewton = 30;
constexpr double kLogit = 30.0;    // of the search: x from 1e-13 on
constexpr double kNearPure = 16.0, kLogitEnd = 36.0;  // in steps of 1, then of 4
constexpr double kFlat = 0.5;      // convexity below which a step is divided
constexpr int kParts = 8;
constexpr int kHalvings = 60;
constexpr double kSolved = 1e-6;   // of the potentials: Newton's method ends it
constexpr double kSameRoot = 0.2;  // of ln rho
constexpr double kLeastLogit = 600.0;  // partial densities stay normal numbers

Vector<double> middle() {
    Vector<double> z(2);
    z.set(0.5);
    return z;
}
ModelN const& checked(ModelN const& model, int solid) {
    if (model.mdl1.size() != 2) throw ThException(th_no_option);
    if (solid != 0 && solid != 1) throw ThException(th_out_of_range);
    return model;
}
}  // namespace

Vector<double> SolidFluidStates::pure_composition(int component) {
    Vector<double> z(2);
    z[component] = 1.0;
    z[1 - component] = 0.0;
    return z;
}

SolidFluidStates::SolidFluidStates(ModelN const& model, int solid, Fixed held,
                                   SolidFluidOptions const& o)
    : fluid_(checked(model, solid), middle()),
      pure_(model, pure_composition(solid)),
      o_(o),
      s_(solid),
      held_(held),
      solver_(fluid_, o.anchored, held),
      stability_(fluid_) {
    hottest_ = hottest(s_);
    if (!(hottest_ > 0.0)) throw ThException(th_no_solid);
    if (!(held.value > 0.0) || !std::isfinite(held.value) || (held.at_T && held.value > hottest_) ||
        !(o.step > 0.0) || !std::isfinite(o.step) || !(o.x_min > 0.0) || !(o.p_max > 0.0) ||
        o.points < 2)
        throw ThException(th_out_of_range);
    solver_.solids = {s_};
    hottest_ *= 1.0 - 1e-12;  // its logarithm rounds
    coldest_ = 0.3 * hottest_;
    if (AnchoredSolid const* anchored = o_.anchored[s_]) {
        coldest_ = anchored->T_min();
    } else {
        Solid const& data = pure_.pure(0).solid;
        auto const& last = data.sg[data.sg.size() - 1].x;
        // Files continue their data far down, where every component would freeze: carbon dioxide's
        // are measured to 0.37 of its triple temperature.
        if (last.size() > 0)
            coldest_ = std::clamp(1.0 / last[last.size() - 1], 0.37 * hottest_, 0.99 * hottest_);
    }
    at_pure_.resize(1);
}

double SolidFluidStates::hottest(int component) const {
    if (o_.anchored[component]) return o_.anchored[component]->T_max();
    Solid const& data = fluid_.pure(component).solid;
    return data.sg.size() > 0 ? data.Tmax() : 0.0;
}

void SolidFluidStates::fail(double T, std::string const& advice,
                            EquilibriumFailure::Kind kind) const {
    std::string state = T_or_p(held_);
    if (!held_.at_T) state += ", " + quantity("T", T, "K");
    state += ", solid component " + std::to_string(s_);
    throw EquilibriumFailure(kind, state, "solid_fluid", solver_.iterations, std::nan(""), advice);
}

/// Potential of the pure fluid less that of the solid. False where one of them fails.
bool SolidFluidStates::gap(double variable, double& value) {
    SolidState solid;
    if (!solid.evaluate(pure_.pure(0), o_.anchored[s_], p(variable), T(variable), false) ||
        !pure_.evaluate_at(at_pure_, p(variable), T(variable), {1.0}, Root::stable, phase_H))
        return false;
    solid_ = solid;
    value = at_pure_.m[0] - solid.g;
    return true;
}
/// Where the pure component melts or sublimes: all changes of sign of the gap, in steps of 2 % in T
/// or 30 % in p: an isobar has one, an isotherm of water below its triple point two, decades apart.
std::vector<PureSolidPoint> SolidFluidStates::pure_points() {
    std::vector<PureSolidPoint> found;
    double low = coldest_, high = hottest_, factor = 1.02;
    if (held_.at_T) {
        double psub = 0.0, v = 0.0, kappa = 0.0;
        if (AnchoredSolid const* anchored = o_.anchored[s_])
            psub = held_.value < anchored->data().T ? anchored->sublimation(held_.value)
                                                    : anchored->p_t();
        else if (pure_.pure(0).solid.sge(held_.value, -1, psub, v, kappa) < 0)
            return found;
        low = 0.5 * psub;
        high = o_.p_max;
        factor = 1.3;
    }
    double last = 0.0, at = 0.0;
    for (double w = low;; w = std::min(w * factor, high)) {
        double here = 0.0;
        const bool known = gap(w, here);
        if (known && at > 0.0 && last * here < 0.0) {
            PureSolidPoint q;
            if (pure_point(at, last, w, here, q)) found.push_back(q);
        }
        at = known ? w : 0.0;
        last = here;
        if (!(w < high)) break;
    }
    if (!held_.at_T) std::reverse(found.begin(), found.end());  // the hottest first
    return found;
}
/// Illinois method in the logarithm.
bool SolidFluidStates::pure_point(double a, double fa, double b, double fb, PureSolidPoint& q) {
    IllinoisBracket r{a, fa, b, fb};
    for (int it = 0; it < 60 && std::fabs(r.fb) > 1e-12; ++it) {
        const double w = r.a * std::exp(std::log(r.b / r.a) * r.fa / (r.fa - r.fb));
        double f = 0.0;
        if (!gap(w, f)) return false;
        r.take(w, f);
        if (std::fabs(r.b / r.a - 1.0) < 1e-15) break;
    }
    at_pure_.p = p(r.b);
    q.variable = r.b;
    q.rho = at_pure_.rho;
    q.point.T = T(r.b);
    q.point.p = p(r.b);
    q.point.x = pure_composition(s_);
    q.point.rho = at_pure_.rho;
    q.point.rho_solid = solid_.rho;
    q.point.form = solid_.form;
    certify(pure_, q.point.p, {&at_pure_}, q.point.certificate);
    q.point.certificate.dmu = std::fabs(r.fb);
    bound_pure(r.fb, q.point.certificate);
    q.point.certificate.phases.push_back({solid_.rho, q.point.x});
    q.point.certificate.flag(o_.validity, q.point.T, q.point.p, q.point.x);
    return q.point.certificate.holds();
}
/// Of at_pure_ and solid_, whose potentials differ by `gap`: by its slope in ln T (or ln p).
void SolidFluidStates::bound_pure(double gap, Certificate& c) {
    PhaseState& s = at_pure_;
    SolidState solid;
    const double T = s.T, pressure = s.p, P = pressure / (R * T);
    if (!solid.evaluate(pure_.pure(0), o_.anchored[s_], pressure, T, !held_.at_T) ||
        !pure_.evaluate(s, T, phase_all))
        return;
    const double slope =
        held_.at_T ? pressure * s.m_p(0) - P * solid.v : T * s.m_T_at_p(0) - solid.g_T;
    const double expansion = held_.at_T ? P / s.S : -(P + s.p_T) / s.S;
    const double off = std::fabs(gap) + rounding_of_m(pure_, s, 0) + solid.rounding(pressure, T);
    c.value_error = ErrorBound::kMargin * off / std::fabs(slope);
    c.rho_error = std::fabs(expansion) * c.value_error +
                  ErrorBound::kMargin * (rounding_of_P(pure_, s) + c.dp * P) / s.S;
    c.x_error = c.apart_error = 0.0;
}
/// The solution of `solver` as a point, with its certificate; second: a fluid that is known to
/// coexist.
void SolidFluidStates::certify_point(SolidFluidSolver& solver, PhaseState const* second,
                                     SolidFluidNode& q) {
    PhaseState const& a = solver.a;
    SolidFluidPoint& r = q.point;
    r.T = solver.T;
    r.p = solver.p;
    r.x = fluid_.expand(a.x);
    r.rho = a.rho;
    r.rho_solid = solver.solid[0].rho;
    r.form = solver.solid[0].form;
    Certificate& c = r.certificate;
    std::vector<PhaseState const*> fluids{&a};
    if (second) fluids.push_back(second);
    certify(fluid_, r.p, fluids, c);
    c.near_trivial = c.near_trivial && second;
    for (std::size_t k = 0; k < solver.solids.size(); ++k) {
        c.dmu = std::max(c.dmu, std::fabs(a.m[solver.solids[k]] - solver.solid[k].g));
        c.phases.push_back({solver.solid[k].rho, pure_composition(solver.solids[k])});
    }
    if (!solver.bound(c))
        c.value_error = c.x_error = c.rho_error = c.apart_error = Certificate::unknown;
    const StabilityResult result = stability_.test(a, r.p, second, true);
    c.tpd = result.stable ? std::min(0.0, result.tpd) : result.tpd;
    q.freezing = false;
    SolidState other;
    if (solver.solids.size() < 2 && other.evaluate(fluid_.pure(1 - s_), o_.anchored[1 - s_], r.p, r.T, false)) {
        const double excess = other.g - a.m[1 - s_];
        q.freezing = excess < -Certificate::tpd_tolerance;
        if (q.freezing) c.tpd = std::min(c.tpd, excess);
    }
    r.stable = result.stable && !q.freezing;
    c.evaluations = fluid_.evaluations;
    c.flag(o_.validity, r.T, r.p, r.x);
}

SolidFluidStates::Sample SolidFluidStates::sample(double z, int root, double rho) {
    Sample q;
    q.z = z;
    std::vector<double> x(2);
    x[s_] = 1.0 / (1.0 + std::exp(-z));
    x[1 - s_] = 1.0 / (1.0 + std::exp(z));
    double r[2];
    const int roots = fluid_.densities(held_.value, at_, x, r);
    if (roots < 1) return q;
    q.two = roots == 2;
    if (rho > 0.0)
        root = roots == 2 && std::fabs(std::log(r[1] / rho)) < std::fabs(std::log(r[0] / rho));
    q.rho = r[roots == 2 ? root : 0];
    PhaseState& state = solver_.a;
    for (int i = 0; i < 2; ++i) state.rho_i[i] = x[i] * q.rho;
    if (!fluid_.evaluate(state, at_, phase_H)) return q;
    q.h = state.m[s_] - level_;
    q.convex = x[0] * x[1] *
               (state.m_n(0, 0) - state.m_n(0, 1) - state.m_n(1, 0) + state.m_n(1, 1));
    q.known = true;
    return q;
}

/// All fluids at T (and the pressure of the isobar) that have the potential of the solid.
std::vector<SolidFluidNode> SolidFluidStates::crossings(double temperature) {
    std::vector<SolidFluidNode> found;
    SolidState solid;
    missed_ = false;
    if (!solid.evaluate(fluid_.pure(s_), o_.anchored[s_], held_.value, temperature, false))
        return found;
    at_ = temperature;
    level_ = solid.g;
    bool two = true;
    for (int root = 0; root < 2 && two; ++root) {  // the dense one, the dilute one
        two = false;
        Sample last;
        for (double z = -kLogit; z <= kLogitEnd; z += z < kNearPure ? 1.0 : 4.0) {
            const Sample here = sample(z, root, 0.0);
            two = two || here.two;
            missed_ = missed_ || !here.known;
            if (last.known && here.known) between(last, here, root, found);
            // Below the first composition ln x is the potential but for a constant (Henry's law).
            if (here.known && z == -kLogit && here.h > 0.0 && z - here.h > -kLeastLogit)
                missed_ = !cross(z - here.h, here.rho, -1e300, z, found) || missed_;
            last = here;
        }
    }
    return found;
}

/// In parts where the fluid is not far from splitting: there the potential has extrema.
void SolidFluidStates::between(Sample const& a, Sample const& b, int root,
                               std::vector<SolidFluidNode>& found) {
    if (!(std::min(a.convex, b.convex) < kFlat)) return bracketed(a, b, found);
    Sample last = a;
    for (int k = 1; k <= kParts; ++k) {
        const Sample here =
            k < kParts ? sample(a.z + k * (b.z - a.z) / kParts, root, 0.0) : b;
        if (last.known && here.known) bracketed(last, here, found);
        last = here;
    }
}

/// From where the chord crosses, else bisected until Newton's method arrives.
void SolidFluidStates::bracketed(Sample a, Sample b, std::vector<SolidFluidNode>& found) {
    if (!(a.h * b.h <= 0.0)) return;
    const double low = a.z, high = b.z, chord = b.z - b.h * (b.z - a.z) / (b.h - a.h);
    if (cross(chord, b.rho, low, high, found)) return;
    for (int k = 0; k < kHalvings; ++k) {
        const Sample middle = sample(0.5 * (a.z + b.z), 0, a.rho);
        if (!middle.known) break;
        if (std::fabs(middle.h) < kSolved) {
            missed_ = !cross(middle.z, middle.rho, low, high, found) || missed_;
            return;
        }
        (a.h * middle.h <= 0.0 ? b : a) = middle;
    }
    // The potential jumps with the density, or it is not known what it does.
    missed_ = missed_ || !(std::fabs(std::log(a.rho / b.rho)) > kSameRoot);
}

bool SolidFluidStates::cross(double z, double rho, double low, double high,
                             std::vector<SolidFluidNode>& found) {
    // The density of this composition, not of the grid's: cold liquids are so stiff that p would be
    // far off.
    const Sample from = sample(z, 0, rho);
    std::vector<double> start(2);
    start[s_] = 1.0 / (1.0 + std::exp(-z));
    start[1 - s_] = 1.0 / (1.0 + std::exp(z));
    solver_.start(start, from.known ? from.rho : rho, at_);
    solver_.row = {0.0, 0.0, 1.0};
    solver_.value = std::log(at_);
    SolidFluidNode q;
    if (!solver_.solve(kSearchNewton) || !solver_.tangent(q.t)) return false;
    q.u = solver_.u;
    const double margin = 1e-6 * (1.0 + std::fabs(z)), reached = q.u[s_] - q.u[1 - s_];
    if (!(reached > low - margin && reached < high + margin)) return false;
    for (SolidFluidNode const& other : found)
        if (std::fabs(other.u[0] - q.u[0]) + std::fabs(other.u[1] - q.u[1]) < 1e-6) return true;
    certify_point(solver_, nullptr, q);
    if (!(q.point.certificate.dmu <= Certificate::tolerance &&
          q.point.certificate.dp <= Certificate::tolerance))
        return false;
    found.push_back(q);
    return true;
}

}  // namespace corvane
