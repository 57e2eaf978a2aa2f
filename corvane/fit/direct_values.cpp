#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/core/files.h>
#include <corvane/fit/direct_values.h>
#include <corvane/phases/solid/solid_fluid.h>
#include <corvane/phases/stability/stability.h>
#include <corvane/solid/fusion.h>
#include <corvane/state/excess.h>
#include <corvane/text/failure.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace corvane::fit {

bool DirectValues::takes(PointKind kind) {
    return kind == PointKind::excess || kind == PointKind::dilute || kind == PointKind::critical ||
           kind == PointKind::solubility;
}

Vector<double> DirectValues::vector(std::vector<double> const& x) const {
    Vector<double> v(mixture_.size());
    for (int i = 0; i < v.size(); ++i) v[i] = x[static_cast<std::size_t>(i)];
    return v;
}

void DirectValues::excess(Point const& point, double* to) {
    Vector<double> const x = vector(point.x);
    const ExcessProperties e = excess_properties(model_, point.T, point.p, x,
                                                 point.phase == 3 ? Root::dilute : Root::dense);
    for (Observation const& seen : point.observed)
        *to++ = seen.what == Observable::hE   ? e.h
                : seen.what == Observable::vE ? e.v
                                              : std::exp(e.ln_gamma[seen.component]);
}

/// At p, or at the vapour pressure of the solvent, which no parameter of a pair changes if that is
/// a single substance.
void DirectValues::dilute(std::size_t index, Point const& point, double* to) {
    Vector<double> const x = vector(point.x);
    const bool single =
        std::count_if(point.x.begin(), point.x.end(), [](double each) { return each > 0.0; }) == 1;
    const auto kept = solvent_.find(index);
    const double p = point.p > 0.0 ? point.p : kept != solvent_.end() ? kept->second : 0.0;
    for (Observation const& seen : point.observed) {
        const HenryConstant h = p > 0.0 ? henry_constant(model_, seen.component, point.T, p, x)
                                        : henry_constant(model_, seen.component, point.T, x);
        *to++ = seen.what == Observable::H ? h.H : std::exp(h.ln_gamma);
        stable_ = !(point.p > 0.0) || h.stable;  // at saturation rounding would decide
        if (single) solvent_[index] = h.p;
    }
}

void DirectValues::critical(std::size_t index, Point const& point, double* to) {
    CriticalOptions options;
    options.unstable = true;
    const auto last = critical_.find(index);
    if (last != critical_.end()) options.start = &last->second;
    const CriticalPoint c = critical_point(model_, vector(point.x), options);
    for (Observation const& seen : point.observed)
        *to++ = seen.what == Observable::T ? c.T : seen.what == Observable::p ? c.p : c.rho;
    stable_ = c.stable;
    critical_[index] = c;
}

/// Solids anchored at their melting points where these are known, else from sublimation curves.
void DirectValues::load_solids() {
    if (loaded_) return;
    const ReadingFrom from(mixture_.home.names());
    for (int i = 0; i < 2; ++i) {
        Model1& pure = *model_.mdl1[i];
        const std::string file = std::string("CorvaneS/solid/") + pure.name();
        if (std::filesystem::exists(mixture_.home.file(file))) pure.solid.load();
        try {
            anchored_[static_cast<std::size_t>(i)].emplace(pure, load_fusion(pure.name()));
        } catch (ThException const& e) {
            if (e.number != th_no_solid) throw;
        }
    }
    loaded_ = true;
}

void DirectValues::dissolved(Point const& point, double* to) {
    const int solid = point.observed[0].component;
    SolidFluidOptions options;
    for (std::size_t i : {0u, 1u}) options.anchored[i] = anchored_[i] ? &*anchored_[i] : nullptr;
    const SolidFluidPoint s = solubility(model_, solid, point.p, point.T, options);
    *to = s.x[solid];
    stable_ = s.stable;
}

bool DirectValues::values(std::size_t index, Point const& point, double* to) {
    if (point.kind == PointKind::solubility) {
        load_solids();
        const int solid = point.observed[0].component;
        if (!anchored_[static_cast<std::size_t>(solid)] && model_.mdl1[solid]->solid.sg.size() < 1)
            throw text::Failure("no solid data of " +
                                mixture_.components[static_cast<std::size_t>(solid)]);
    }
    try {
        switch (point.kind) {
            case PointKind::excess:
                excess(point, to);
                break;
            case PointKind::dilute:
                dilute(index, point, to);
                break;
            case PointKind::critical:
                critical(index, point, to);
                break;
            default:
                dissolved(point, to);
        }
    } catch (EquilibriumFailure const&) {
        return false;
    } catch (ThException const&) {
        return false;
    } catch (MthException const&) {
        return false;
    }
    return std::all_of(to, to + point.observed.size(), [](double v) { return std::isfinite(v); });
}

bool DirectValues::stable(std::size_t index, Point const& point) {
    if (point.kind == PointKind::excess)
        return point.phase == 3 || stability(model_, point.p, point.T, vector(point.x)).stable;
    std::vector<double> values(point.observed.size());
    return this->values(index, point, values.data()) && stable_;
}

/// A solid's component: ln of its fugacity in the fluid of the measured composition over that of
/// the solid.
double DirectValues::distance(Point const& point) {
    if (point.kind != PointKind::solubility) return 0.0;
    const int i = point.observed[0].component;
    const double x = point.observed[0].value;
    auto const& anchored = anchored_[static_cast<std::size_t>(i)];
    std::vector<double> z(2, 1.0 - x);
    z[static_cast<std::size_t>(i)] = x;
    try {
        const FluidModel fluid(model_, vector(z));
        PhaseState s;
        s.resize(2);
        if (fluid.size() < 2 || !fluid.evaluate_at(s, point.p, point.T, z, Root::stable, 0))
            return 0.0;
        int form = 0;
        double rho = 0.0;
        const double solid = anchored ? anchored->at(point.p, point.T, false).g
                                      : model_.mdl1[i]->solid.Ge(point.p, point.T, form, rho);
        return s.m[i] - solid;
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return 0.0;
}

}  // namespace corvane::fit
