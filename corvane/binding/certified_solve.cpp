// The certified interface: calculations for pure fluids and mixtures.
#include <corvane/binding/certified_points.h>

#include <cmath>

using namespace corvane::binding;

namespace {
corvane::PureStateOptions range_of(corvane::Fluid const& f) {
    corvane::PureStateOptions options;
    if (std::isfinite(f.notes.Tmin)) options.T_min = 0.9 * f.notes.Tmin;
    return options;
}

/// h and s of the whole, where there are tables.
void add_caloric(corvane::Mixture const& mixture, Vector<double> const& x, corvane::FlashResult& q) {
    if (mixture.ideal && !(std::isfinite(q.h) && std::isfinite(q.s)))
        corvane::add_caloric(*mixture.model, x, q);
}

using Flash = corvane::FlashResult (*)(ModelN const&, double, double, Vector<double> const&,
                                       corvane::FlashOptions const&);

CorvaneResult* flash(char const* name, Flash solve, CorvaneMixture const* m, double a, double b,
                     double const* z, int n, CorvaneError* error) {
    return certified(error, name, m, [&] {
        const Vector<double> x = composition(m, z, n);
        corvane::FlashOptions options;
        options.validity = &m->mixture.validity;
        corvane::FlashResult q = solve(*m->mixture.model, a, b, x, options);
        add_caloric(m->mixture, x, q);
        auto r = std::make_unique<CorvaneResult>();
        r->lines.push_back(line_of(CORVANE_LINE_POINTS, std::vector{q}, *m->mixture.model));
        return r.release();
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

void add(CorvaneResult& r, corvane::Envelope const& e, Vector<double> const& z) {
    r.lines.push_back(line_of(CORVANE_LINE_ENVELOPE, e.points, z));
    r.lines.back().end = end_of(e.end);
    r.complete = r.complete && !early(r.lines.back().end);
    for (auto const& [kind, points] : {std::pair{CORVANE_LINE_CRITICAL, &e.critical},
                                       std::pair{CORVANE_LINE_CRICONDENTHERM, &e.cricondentherm},
                                       std::pair{CORVANE_LINE_CRICONDENBAR, &e.cricondenbar}})
        if (!points->empty()) r.lines.push_back(line_of(kind, *points, z));
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

EXPORT CorvaneResult* Corvane_mixture_states(const CorvaneMixture* mixture, int first, double a,
                                             int second, double b, const double* z, int n,
                                             CorvaneError* error) {
    return certified(error, "mixture_states", mixture, [&] {
        using corvane::Quantity;
        const Vector<double> x = composition(mixture, z, n);
        corvane::FlashOptions options;
        options.validity = &mixture->mixture.validity;
        auto found = corvane::mixture_states(*mixture->mixture.model, {chosen(first, Quantity::q), a},
                                             {chosen(second, Quantity::q), b}, x, options);
        for (auto& q : found.states) add_caloric(mixture->mixture, x, q);
        auto r = std::make_unique<CorvaneResult>();
        r->complete = found.complete;
        r->lines.push_back(line_of(CORVANE_LINE_POINTS, found.states, *mixture->mixture.model));
        return r.release();
    });
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
        auto options = curve_options<corvane::EnvelopeOptions>(mixture, progress, context);
        limit(options.p_start, p_start);
        limit(options.p_max, p_max);
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
