#include <corvane/binding/certified_points.h>

namespace corvane::binding {
namespace {
void add_flag(ResultPoint& r, CorvaneFlag flag, bool on) {
    if (on) r.flags |= flag;
}
}  // namespace

ResultPhase phase_of(double rho, std::vector<double> x) {
    ResultPhase r;
    r[CORVANE_RHO] = rho;
    r.x = std::move(x);
    return r;
}

std::vector<double> fractions(Vector<double> const& x) {
    return {x.data, x.data + x.size()};
}

ResultPhase phase_of(PhaseRecord const& q) {
    return phase_of(q.rho, fractions(q.x));
}

ResultPhase phase_of(double rho, double x0) {
    return phase_of(rho, std::vector<double>{x0, 1.0 - x0});
}

ResultPhase phase_of(PhaseProperties const& q, std::vector<double> x) {
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

namespace {
void add_phases(ResultPoint& r, std::vector<corvane::PhaseRecord> const& phases,
                std::vector<double> const& fraction = {}) {
    for (std::size_t k = 0; k < phases.size(); ++k) {
        r.phases.push_back(phase_of(phases[k]));
        if (k < fraction.size()) r.phases.back()[CORVANE_FRACTION] = fraction[k];
    }
}
}  // namespace

ResultPoint point_of(PureState const& q) {
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

ResultPoint point_of(PureSaturation const& q) {
    ResultPoint r = point_at(q.T, q.p);
    r[CORVANE_VALUE_ERROR] = q.value_error, r[CORVANE_RHO_ERROR] = q.rho_error;
    r[CORVANE_APART_ERROR] = q.apart_error;
    r.phases = {phase_of(q.rhoL, std::vector{1.0}), phase_of(q.rhoV, std::vector{1.0})};
    return r;
}

ResultPoint point_of(FlashResult const& q, ModelN const& model) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    double volume = 0.0;
    for (std::size_t k = 0; k < q.phases.size(); ++k) {
        auto const& [rho, x] = q.phases[k];
        volume += q.fraction[k] / rho;
        r.phases.push_back(phase_of(phase_properties(model, q.T, rho, x), fractions(x)));
        r.phases.back()[CORVANE_FRACTION] = q.fraction[k];
    }
    r[CORVANE_RHO] = 1.0 / volume;
    r[CORVANE_H] = q.h, r[CORVANE_S] = q.s;
    return r;
}

ResultPoint point_of(SaturationPoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    add_phases(r, {q.given, q.incipient});
    add_phases(r, q.split, {});
    for (std::size_t k = 0; k < q.fraction.size(); ++k)
        r.phases[2 + k][CORVANE_FRACTION] = q.fraction[k];
    return r;
}

ResultPoint point_of(CriticalPoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    r[CORVANE_RHO] = q.rho;
    add_flag(r, CORVANE_FLAG_UNSTABLE, !q.stable);
    add_phases(r, {{q.rho, q.x}});
    return r;
}

ResultPoint point_of(EnvelopePoint const& q, Vector<double> const& z) {
    ResultPoint r = point_at(q.T, q.p);
    add_flag(r, CORVANE_FLAG_UNSTABLE, q.unstable);
    add_flag(r, CORVANE_FLAG_BUBBLE, q.bubble);
    r[CORVANE_VALUE_ERROR] = q.value_error, r[CORVANE_X_ERROR] = q.x_error;
    add_phases(r, {{q.rho, z}, {q.rho2, q.y}});
    return r;
}

ResultPoint point_of(TieLine const& q) {
    ResultPoint r = point_at(q.T, q.p);
    add_flag(r, CORVANE_FLAG_UNSTABLE, !q.stable);
    r[CORVANE_VALUE_ERROR] = q.value_error, r[CORVANE_X_ERROR] = q.x_error;
    r.phases = {phase_of(q.rho_x, q.x), phase_of(q.rho_y, q.y)};
    return r;
}

ResultPoint point_of(ThreePhasePoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    add_phases(r, q.phases);
    return r;
}

ResultPoint point_of(AzeotropePoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    add_phases(r, {q.dense, q.light});
    return r;
}

ResultPoint point_of(SolidFluidPoint const& q) {
    ResultPoint r = point_at(q.T, q.p, q.certificate);
    add_flag(r, CORVANE_FLAG_UNSTABLE, !q.stable);
    add_phases(r, q.certificate.phases);
    return r;
}

CorvaneEnd end_of(CurveEnd end) {
    using E = corvane::CurveEnd;
    switch (end) {
        case E::closed:
            return CORVANE_END_CLOSED;
        case E::pure:
            return CORVANE_END_PURE;
        case E::critical:
        case E::plait:
            return CORVANE_END_CRITICAL;
        case E::end_point:
            return CORVANE_END_END_POINT;
        case E::three_phase:
            return CORVANE_END_THREE_PHASE;
        case E::edge:
            return CORVANE_END_PURE;
        case E::eutectic:
            return CORVANE_END_EUTECTIC;
        case E::pressure:
            return CORVANE_END_PRESSURE;
        case E::tension:
            return CORVANE_END_TENSION;
        case E::cold:
            return CORVANE_END_COLD;
        case E::dilute:
            return CORVANE_END_DILUTE;
        case E::solid_range:
            return CORVANE_END_SOLID_RANGE;
        case E::other_range:
            return CORVANE_END_OTHER_RANGE;
        case E::uncertified:
            return CORVANE_END_UNCERTIFIED;
        case E::full:
            return CORVANE_END_FULL;
        case E::interrupted:
            return CORVANE_END_INTERRUPTED;
        case E::saturation:  // of ideal curves, which have no lines here
        case E::stuck:
            break;
    }
    return CORVANE_END_STUCK;
}

bool early(int end) {
    return end == CORVANE_END_STUCK || end == CORVANE_END_FULL || end == CORVANE_END_INTERRUPTED ||
           end == CORVANE_END_UNCERTIFIED;
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

void limit(double& option, double value) {
    if (value != 0.0) option = value;
}

}  // namespace corvane::binding
