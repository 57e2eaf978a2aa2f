// The certified interface: calculations, and how their results become lines of points of phases.
#include <corvane/binding/certified.h>
#include <corvane/corvane.h>

#include <cmath>
#include <memory>

using namespace corvane::binding;

namespace {
// ---- results

ResultPhase phase_of(double rho, std::vector<double> x) {
    ResultPhase r;
    r[CORVANE_RHO] = rho;
    r.x = std::move(x);
    return r;
}

std::vector<double> fractions(Vector<double> const& x) {
    std::vector<double> v;
    for (int i = 0; i < x.size(); ++i) v.push_back(x[i]);
    return v;
}

ResultPhase phase_of(corvane::PhaseRecord const& q) {
    return phase_of(q.rho, fractions(q.x));
}

/// Of a binary.
ResultPhase phase_of(double rho, double x0) {
    return phase_of(rho, std::vector<double>{x0, 1.0 - x0});
}

ResultPhase phase_of(corvane::PhaseProperties const& q, std::vector<double> x) {
    ResultPhase r = phase_of(q.rho, std::move(x));
    r[CORVANE_T] = q.T, r[CORVANE_P] = q.p, r[CORVANE_Z] = q.Z, r[CORVANE_M] = q.M;
    r[CORVANE_U] = q.u, r[CORVANE_H] = q.h, r[CORVANE_G] = q.g, r[CORVANE_A] = q.a;
    r[CORVANE_S] = q.s, r[CORVANE_CV] = q.cv, r[CORVANE_CP] = q.cp, r[CORVANE_W] = q.w;
    r[CORVANE_MU_JT] = q.mu_JT, r[CORVANE_KAPPA_T] = q.kappa_T, r[CORVANE_ALPHA_P] = q.alpha_p;
    r[CORVANE_DP_DT] = q.dp_dT, r[CORVANE_DP_DRHO] = q.dp_drho;
    return r;
}

ResultPoint point_at(double T, double p) {
    ResultPoint r;
    r[CORVANE_T] = T, r[CORVANE_P] = p;
    return r;
}

void add_flag(ResultPoint& r, CorvaneFlag flag, bool on) {
    if (on) r.flags |= flag;
}

ResultPoint point_at(double T, double p, corvane::Certificate const& c) {
    ResultPoint r = point_at(T, p);
    r[CORVANE_DMU] = c.dmu, r[CORVANE_DP] = c.dp, r[CORVANE_TARGET] = c.target;
    r[CORVANE_BALANCE] = c.balance, r[CORVANE_TPD] = c.tpd, r[CORVANE_CONDITIONS] = c.conditions;
    r[CORVANE_VALUE_ERROR] = c.value_error, r[CORVANE_X_ERROR] = c.x_error;
    r[CORVANE_RHO_ERROR] = c.rho_error, r[CORVANE_APART_ERROR] = c.apart_error;
    r[CORVANE_EVALUATIONS] = static_cast<double>(c.evaluations);
    add_flag(r, CORVANE_FLAG_NEAR_TRIVIAL, c.near_trivial);
    add_flag(r, CORVANE_FLAG_ESTIMATED_PAIRS, c.estimated_pairs);
    add_flag(r, CORVANE_FLAG_EXTRAPOLATED, c.extrapolated);
    add_flag(r, CORVANE_FLAG_BELOW_TRIPLE, c.below_triple);
    r.certificate = c;
    return r;
}

void add_phases(ResultPoint& r, std::vector<corvane::PhaseRecord> const& phases,
                std::vector<double> const& fraction = {}) {
    for (std::size_t k = 0; k < phases.size(); ++k) {
        r.phases.push_back(phase_of(phases[k]));
        if (k < fraction.size()) r.phases.back()[CORVANE_FRACTION] = fraction[k];
    }
}

ResultPoint point_of(corvane::PureState const& q) {
    ResultPoint r = point_at(q.T, q.p);
    r[CORVANE_RHO] = q.rho, r[CORVANE_Q] = q.q;
    r[CORVANE_H] = q.h, r[CORVANE_S] = q.s, r[CORVANE_U] = q.u;
    for (auto const* phase : {&q.phase, &q.liquid, &q.vapour})
        if (*phase) r.phases.push_back(phase_of(**phase, {1.0}));
    if (q.phase) r.phases[0][CORVANE_FRACTION] = 1.0;
    if (q.liquid) {
        r.phases[0][CORVANE_FRACTION] = 1.0 - q.q;
        r.phases[1][CORVANE_FRACTION] = q.q;
    }
    return r;
}

ResultPoint point_of(corvane::PureSaturation const& q) {
    ResultPoint r = point_at(q.T, q.p);
    r[CORVANE_VALUE_ERROR] = q.value_error, r[CORVANE_RHO_ERROR] = q.rho_error;
    r[CORVANE_APART_ERROR] = q.apart_error;
    r.phases = {phase_of(q.rhoL, std::vector{1.0}), phase_of(q.rhoV, std::vector{1.0})};
    return r;
}

ResultPoint point_of(corvane::FlashResult const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    double volume = 0.0;
    for (std::size_t k = 0; k < q.phases.size(); ++k) volume += q.fraction[k] / q.phases[k].rho;
    r[CORVANE_RHO] = 1.0 / volume;
    r[CORVANE_H] = q.h, r[CORVANE_S] = q.s;
    add_phases(r, q.phases, q.fraction);
    return r;
}

ResultPoint point_of(corvane::SaturationPoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    add_phases(r, {q.given, q.incipient});
    add_phases(r, q.split, {});
    for (std::size_t k = 0; k < q.fraction.size(); ++k)
        r.phases[2 + k][CORVANE_FRACTION] = q.fraction[k];
    return r;
}

ResultPoint point_of(corvane::CriticalPoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    r[CORVANE_RHO] = q.rho;
    add_flag(r, CORVANE_FLAG_UNSTABLE, !q.stable);
    add_phases(r, {{q.rho, q.x}});
    return r;
}

ResultPoint point_of(corvane::EnvelopePoint const& q, Vector<double> const& z) {
    ResultPoint r = point_at(q.T, q.p);
    add_flag(r, CORVANE_FLAG_UNSTABLE, q.unstable);
    add_flag(r, CORVANE_FLAG_BUBBLE, q.bubble);
    add_phases(r, {{q.rho, z}, {q.rho2, q.y}});
    return r;
}

ResultPoint point_of(corvane::TieLine const& q) {
    ResultPoint r = point_at(q.T, q.p);
    add_flag(r, CORVANE_FLAG_UNSTABLE, !q.stable);
    r.phases = {phase_of(q.rho_x, q.x), phase_of(q.rho_y, q.y)};
    return r;
}

ResultPoint point_of(corvane::ThreePhasePoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    add_phases(r, q.phases);
    return r;
}

ResultPoint point_of(corvane::AzeotropePoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    add_phases(r, {q.dense, q.light});
    return r;
}

ResultPoint point_of(corvane::SolidFluidPoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    add_flag(r, CORVANE_FLAG_UNSTABLE, !q.stable);
    add_phases(r, q.certificate.phases);
    return r;
}

template <class Points, class... More>
ResultLine line_of(int kind, Points const& points, More const&... more) {
    ResultLine r;
    r.kind = kind;
    r.points.reserve(points.size());
    for (auto const& q : points) r.points.push_back(point_of(q, more...));
    return r;
}

// ---- ends

CorvaneEnd end_of(corvane::CurveEnd end) {
    using E = corvane::CurveEnd;
    switch (end) {
        case E::closed: return CORVANE_END_CLOSED;
        case E::pure: return CORVANE_END_PURE;
        case E::critical:
        case E::plait: return CORVANE_END_CRITICAL;
        case E::end_point: return CORVANE_END_END_POINT;
        case E::three_phase: return CORVANE_END_THREE_PHASE;
        case E::edge: return CORVANE_END_PURE;
        case E::eutectic: return CORVANE_END_EUTECTIC;
        case E::pressure: return CORVANE_END_PRESSURE;
        case E::tension: return CORVANE_END_TENSION;
        case E::cold: return CORVANE_END_COLD;
        case E::dilute: return CORVANE_END_DILUTE;
        case E::solid_range: return CORVANE_END_SOLID_RANGE;
        case E::other_range: return CORVANE_END_OTHER_RANGE;
        case E::uncertified: return CORVANE_END_UNCERTIFIED;
        case E::full: return CORVANE_END_FULL;
        case E::interrupted: return CORVANE_END_INTERRUPTED;
        case E::stuck: break;
    }
    return CORVANE_END_STUCK;
}

bool early(int end) {
    return end == CORVANE_END_STUCK || end == CORVANE_END_FULL || end == CORVANE_END_INTERRUPTED ||
           end == CORVANE_END_UNCERTIFIED;
}

template <class Curve>
void add_curve(CorvaneResult& r, int kind, Curve const& curve) {
    ResultLine line = line_of(kind, curve.points);
    line.begin = end_of(curve.begin);
    line.end = end_of(curve.end);
    r.complete = r.complete && !early(line.begin) && !early(line.end);
    r.lines.push_back(std::move(line));
}

void add(CorvaneResult& r, corvane::Envelope const& e, Vector<double> const& z) {
    r.lines.push_back(line_of(CORVANE_LINE_ENVELOPE, e.points, z));
    r.lines.back().end = end_of(e.end);
    r.complete = r.complete && !early(r.lines.back().end);
    for (auto const& [kind, points] : {std::pair{CORVANE_LINE_CRITICAL, &e.critical},
                                       std::pair{CORVANE_LINE_CRICONDENTHERM, &e.cricondentherm},
                                       std::pair{CORVANE_LINE_CRICONDENBAR, &e.cricondenbar}})
        if (!points->empty()) r.lines.push_back(line_of(kind, *points, z));
}

void add(CorvaneResult& r, corvane::BinaryDiagram const& d) {
    std::vector<corvane::TieLine> azeotropes;
    for (auto const& branch : d.branches) {
        using P = corvane::PhasePair;
        add_curve(r,
                  branch.kind == P::vapour_liquid   ? CORVANE_LINE_VAPOUR_LIQUID
                  : branch.kind == P::liquid_liquid ? CORVANE_LINE_LIQUID_LIQUID
                                                    : CORVANE_LINE_FLUID_FLUID,
                  branch);
        azeotropes.insert(azeotropes.end(), branch.azeotropes.begin(), branch.azeotropes.end());
    }
    if (!azeotropes.empty()) r.lines.push_back(line_of(CORVANE_LINE_AZEOTROPES, azeotropes));
    if (!d.three_phase.empty())
        r.lines.push_back(line_of(CORVANE_LINE_THREE_PHASE, d.three_phase));
    if (!d.open.empty()) r.lines.push_back(line_of(CORVANE_LINE_OPEN, d.open));
    r.complete = d.complete();
}

template <class Point>
CorvaneResult* single(std::vector<Point> const& points) {
    auto r = std::make_unique<CorvaneResult>();
    r->lines.push_back(line_of(CORVANE_LINE_POINTS, points));
    return r.release();
}
template <class Point>
CorvaneResult* single(Point const& point) {
    return single(std::vector<Point>{point});
}

// ---- arguments

template <class Choice>
Choice chosen(int i, Choice last) {
    if (i < 0 || i > static_cast<int>(last)) throw BadArgument("no choice " + std::to_string(i));
    return static_cast<Choice>(i);
}

Vector<double> composition(CorvaneMixture const* m, double const* z, int n) {
    if (!z) refuse_null("composition");
    if (n != m->mixture.size())
        throw BadArgument(std::to_string(n) + " mole fractions for " +
                          std::to_string(m->mixture.size()) + " components");
    Vector<double> x(n);
    for (int i = 0; i < n; ++i) x[i] = z[i];
    return x;
}

corvane::Progress progress_of(CorvaneProgress* progress, void* context) {
    if (!progress) return {};
    return [=](int points) { return progress(points, context) != 0; };
}

/// Sets a limit where one is given; 0 keeps the default.
void limit(double& option, double value) {
    if (value != 0.0) option = value;
}

corvane::PureStateOptions range_of(corvane::Fluid const& f) {
    corvane::PureStateOptions options;
    if (std::isfinite(f.notes.Tmin)) options.T_min = 0.9 * f.notes.Tmin;
    return options;
}

// ---- calculations of several functions

using Flash = corvane::FlashResult (*)(ModelN const&, double, double, Vector<double> const&,
                                       corvane::FlashOptions const&);

CorvaneResult* flash(char const* name, Flash solve, CorvaneMixture const* m, double a, double b,
                     double const* z, int n, CorvaneError* error) {
    return certified(error, name, m, [&] {
        const Vector<double> x = composition(m, z, n);
        corvane::FlashOptions options;
        options.validity = &m->mixture.validity;
        corvane::FlashResult q = solve(*m->mixture.model, a, b, x, options);
        if (m->mixture.ideal && !(std::isfinite(q.h) && std::isfinite(q.s)))
            corvane::add_caloric(*m->mixture.model, x, q);
        return single(q);
    });
}

CorvaneResult* saturation(char const* name, corvane::Saturated kind, bool at_T,
                          CorvaneMixture const* m, double value, double const* z, int n, int branch,
                          CorvaneError* error) {
    return certified(error, name, m, [&] {
        corvane::SaturationOptions options;
        options.branch = chosen(branch, corvane::Branch::upper);
        options.validity = &m->mixture.validity;
        return single((at_T ? corvane::saturation_T : corvane::saturation_p)(
            *m->mixture.model, kind, value, composition(m, z, n), options));
    });
}

corvane::PhaseLineOptions line_options(CorvaneMixture const* m, double p_max,
                                       CorvaneProgress* progress, void* context) {
    corvane::PhaseLineOptions options;
    limit(options.p_max, p_max);
    options.validity = &m->mixture.validity;
    options.progress = progress_of(progress, context);
    return options;
}

corvane::SolidFluidOptions solid_options(CorvaneMixture const* m, CorvaneProgress* progress,
                                         void* context) {
    if (m->mixture.size() != 2) throw ThException(th_no_option);
    corvane::SolidFluidOptions options;
    options.anchored = m->solids();
    options.validity = &m->mixture.validity;
    options.progress = progress_of(progress, context);
    return options;
}

CorvaneResult* solid_lines(std::vector<corvane::SolidFluidLine> const& lines) {
    auto r = std::make_unique<CorvaneResult>();
    for (auto const& line : lines) add_curve(*r, CORVANE_LINE_SOLID_0 + line.solid, line);
    return r.release();
}
}  // namespace

// ---- pure fluids

EXPORT CorvaneResult* Corvane_pure_states(const CorvaneFluid* fluid, int first, double a,
                                          int second, double b, CorvaneError* error) {
    return certified(error, "pure_states", fluid, [&] {
        using corvane::Quantity;
        return single(corvane::pure_states(
            *fluid->fluid.model, {chosen(first, Quantity::q), a}, {chosen(second, Quantity::q), b},
            range_of(fluid->fluid)));
    });
}

EXPORT CorvaneResult* Corvane_pure_saturation_T(const CorvaneFluid* fluid, double T,
                                                CorvaneError* error) {
    return certified(error, "pure_saturation_T", fluid, [&] {
        return single(corvane::pure_saturation_T(*fluid->fluid.model, T));
    });
}

EXPORT CorvaneResult* Corvane_pure_saturation_p(const CorvaneFluid* fluid, double p,
                                                CorvaneError* error) {
    return certified(error, "pure_saturation_p", fluid, [&] {
        return single(corvane::pure_saturation_p(*fluid->fluid.model, p));
    });
}

EXPORT CorvaneResult* Corvane_pure_phase(const CorvaneFluid* fluid, double T, double rho,
                                         CorvaneError* error) {
    return certified(error, "pure_phase", fluid, [&] {
        const auto q = corvane::phase_properties(*fluid->fluid.model, T, rho);
        auto r = std::make_unique<CorvaneResult>();
        r->lines.resize(1);
        r->lines[0].points.push_back(point_at(T, q.p));
        r->lines[0].points[0].phases.push_back(phase_of(q, {1.0}));
        return r.release();
    });
}

// ---- mixtures

EXPORT CorvaneResult* Corvane_mixture_phase(const CorvaneMixture* mixture, double T, double rho,
                                            const double* z, int n, CorvaneError* error) {
    return certified(error, "mixture_phase", mixture, [&] {
        const Vector<double> x = composition(mixture, z, n);
        const auto q = corvane::phase_properties(*mixture->mixture.model, T, rho, x);
        auto r = std::make_unique<CorvaneResult>();
        r->lines.resize(1);
        r->lines[0].points.push_back(point_at(T, q.p));
        r->lines[0].points[0].phases.push_back(phase_of(q, fractions(x)));
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_flash_pT(const CorvaneMixture* mixture, double p, double T,
                                       const double* z, int n, CorvaneError* error) {
    return flash("flash_pT", corvane::flash_pT, mixture, p, T, z, n, error);
}
EXPORT CorvaneResult* Corvane_flash_ph(const CorvaneMixture* mixture, double p, double h,
                                       const double* z, int n, CorvaneError* error) {
    return flash("flash_ph", corvane::flash_ph, mixture, p, h, z, n, error);
}
EXPORT CorvaneResult* Corvane_flash_ps(const CorvaneMixture* mixture, double p, double s,
                                       const double* z, int n, CorvaneError* error) {
    return flash("flash_ps", corvane::flash_ps, mixture, p, s, z, n, error);
}
EXPORT CorvaneResult* Corvane_flash_Trho(const CorvaneMixture* mixture, double T, double rho,
                                         const double* z, int n, CorvaneError* error) {
    return flash("flash_Trho", corvane::flash_Trho, mixture, T, rho, z, n, error);
}

EXPORT CorvaneResult* Corvane_bubble_T(const CorvaneMixture* mixture, double T, const double* z,
                                       int n, int branch, CorvaneError* error) {
    return saturation("bubble_T", corvane::Saturated::bubble, true, mixture, T, z, n, branch,
                      error);
}
EXPORT CorvaneResult* Corvane_bubble_p(const CorvaneMixture* mixture, double p, const double* z,
                                       int n, int branch, CorvaneError* error) {
    return saturation("bubble_p", corvane::Saturated::bubble, false, mixture, p, z, n, branch,
                      error);
}
EXPORT CorvaneResult* Corvane_dew_T(const CorvaneMixture* mixture, double T, const double* z, int n,
                                    int branch, CorvaneError* error) {
    return saturation("dew_T", corvane::Saturated::dew, true, mixture, T, z, n, branch, error);
}
EXPORT CorvaneResult* Corvane_dew_p(const CorvaneMixture* mixture, double p, const double* z, int n,
                                    int branch, CorvaneError* error) {
    return saturation("dew_p", corvane::Saturated::dew, false, mixture, p, z, n, branch, error);
}

EXPORT CorvaneResult* Corvane_envelope(const CorvaneMixture* mixture, const double* z, int n,
                                       double p_start, double p_max, int all,
                                       CorvaneProgress* progress, void* context,
                                       CorvaneError* error) {
    return certified(error, "envelope", mixture, [&] {
        const Vector<double> x = composition(mixture, z, n);
        ModelN const& model = *mixture->mixture.model;
        corvane::EnvelopeOptions options;
        limit(options.p_start, p_start);
        limit(options.p_max, p_max);
        options.progress = progress_of(progress, context);
        auto r = std::make_unique<CorvaneResult>();
        if (all)
            for (auto const& e : corvane::phase_envelopes(model, x, options)) add(*r, e, x);
        else
            add(*r, corvane::phase_envelope(model, x, options), x);
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_critical_point(const CorvaneMixture* mixture, const double* z, int n,
                                             CorvaneError* error) {
    return certified(error, "critical_point", mixture, [&] {
        corvane::CriticalOptions options;
        options.validity = &mixture->mixture.validity;
        return single(corvane::critical_point(*mixture->mixture.model, composition(mixture, z, n),
                                              options));
    });
}

EXPORT CorvaneResult* Corvane_critical_points(const CorvaneMixture* mixture, const double* z, int n,
                                              CorvaneError* error) {
    return certified(error, "critical_points", mixture, [&] {
        corvane::CriticalOptions options;
        options.validity = &mixture->mixture.validity;
        return single(corvane::critical_points(*mixture->mixture.model, composition(mixture, z, n),
                                               options));
    });
}

// ---- binaries

EXPORT CorvaneResult* Corvane_diagram_pxy(const CorvaneMixture* mixture, double T, double p_max,
                                          CorvaneProgress* progress, void* context,
                                          CorvaneError* error) {
    return certified(error, "diagram_pxy", mixture, [&] {
        corvane::DiagramOptions options;
        limit(options.p_max, p_max);
        options.progress = progress_of(progress, context);
        auto r = std::make_unique<CorvaneResult>();
        add(*r, corvane::complete_pxy(*mixture->mixture.model, T, options));
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_diagram_Txy(const CorvaneMixture* mixture, double p, double T_min,
                                          CorvaneProgress* progress, void* context,
                                          CorvaneError* error) {
    return certified(error, "diagram_Txy", mixture, [&] {
        corvane::DiagramOptions options;
        options.T_min = T_min;
        options.progress = progress_of(progress, context);
        auto r = std::make_unique<CorvaneResult>();
        add(*r, corvane::complete_Txy(*mixture->mixture.model, p, options));
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_critical_lines(const CorvaneMixture* mixture, double p_max,
                                             CorvaneProgress* progress, void* context,
                                             CorvaneError* error) {
    return certified(error, "critical_lines", mixture, [&] {
        corvane::CriticalLineOptions options;
        limit(options.p_max, p_max);
        options.validity = &mixture->mixture.validity;
        options.progress = progress_of(progress, context);
        auto r = std::make_unique<CorvaneResult>();
        for (auto const& line : corvane::critical_lines(*mixture->mixture.model, options)) {
            add_curve(*r, CORVANE_LINE_CRITICAL, line);
            auto& points = r->lines.back().points;
            if (points.empty()) continue;
            if (line.begin_phase.x.size() > 0)
                points.front().phases.push_back(phase_of(line.begin_phase));
            if (line.end_phase.x.size() > 0)
                points.back().phases.push_back(phase_of(line.end_phase));
        }
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_three_phase_lines(const CorvaneMixture* mixture, double p_max,
                                                CorvaneProgress* progress, void* context,
                                                CorvaneError* error) {
    return certified(error, "three_phase_lines", mixture, [&] {
        auto r = std::make_unique<CorvaneResult>();
        for (auto const& line :
             corvane::three_phase_lines(*mixture->mixture.model,
                                        line_options(mixture, p_max, progress, context)))
            add_curve(*r, CORVANE_LINE_THREE_PHASE, line);
        return r.release();
    });
}

EXPORT CorvaneResult* Corvane_azeotropic_lines(const CorvaneMixture* mixture, double p_max,
                                               CorvaneProgress* progress, void* context,
                                               CorvaneError* error) {
    return certified(error, "azeotropic_lines", mixture, [&] {
        auto r = std::make_unique<CorvaneResult>();
        for (auto const& line :
             corvane::azeotropic_lines(*mixture->mixture.model,
                                       line_options(mixture, p_max, progress, context)))
            add_curve(*r, CORVANE_LINE_AZEOTROPES, line);
        return r.release();
    });
}

// ---- solids

EXPORT CorvaneResult* Corvane_solubility(const CorvaneMixture* mixture, int solid, double p,
                                         double T, CorvaneError* error) {
    return certified(error, "solubility", mixture, [&] {
        return single(corvane::solubility(*mixture->mixture.model, solid, p, T,
                                          solid_options(mixture, nullptr, nullptr)));
    });
}

EXPORT CorvaneResult* Corvane_eutectic(const CorvaneMixture* mixture, double p,
                                       CorvaneError* error) {
    return certified(error, "eutectic", mixture, [&] {
        return single(corvane::eutectic(*mixture->mixture.model, p,
                                        solid_options(mixture, nullptr, nullptr)));
    });
}

EXPORT CorvaneResult* Corvane_solid_fluid_isobar(const CorvaneMixture* mixture, int solid, double p,
                                                 CorvaneProgress* progress, void* context,
                                                 CorvaneError* error) {
    return certified(error, "solid_fluid_isobar", mixture, [&] {
        return solid_lines(corvane::solid_fluid_isobar(*mixture->mixture.model, solid, p,
                                                       solid_options(mixture, progress, context)));
    });
}

EXPORT CorvaneResult* Corvane_solid_fluid_isotherm(const CorvaneMixture* mixture, int solid,
                                                   double T, double p_max,
                                                   CorvaneProgress* progress, void* context,
                                                   CorvaneError* error) {
    return certified(error, "solid_fluid_isotherm", mixture, [&] {
        auto options = solid_options(mixture, progress, context);
        limit(options.p_max, p_max);
        return solid_lines(
            corvane::solid_fluid_isotherm(*mixture->mixture.model, solid, T, options));
    });
}
