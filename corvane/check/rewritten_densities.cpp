#include <corvane/check/isotherm_scan.h>
#include <corvane/check/mixture_copies.h>
#include <corvane/check/rewritten.h>
#include <corvane/check/rewritten_densities.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <numeric>

namespace corvane::inline detail {
namespace {
using State = Survey::State;

/// A model at one temperature and composition.
struct Line {
    std::function<double(double rho)> Ar, Z, slope;
    std::function<int(double p, int phase, double& first, double& second)> vcalc;
    bool soft = false;  // an end of its branches is an inflection
};
Line line(Model1 const& m, double T) {
    return {
        [&m, T](double rho) { return m.Ar(rho, T); }, [&m, T](double rho) { return m.Z(rho, T); },
        [&m, T](double rho) { return m.pV(rho, T); },
        [&m, T](double p, int phase, double& a, double& b) { return m.vcalc(p, T, phase, a, b); }};
}
Line line(ModelN const& m, double T, Vector<double> const& x) {
    return {[&m, T, x](double rho) { return m.Ar(rho, T, x); },
            [&m, T, x](double rho) { return m.Z(rho, T, x); },
            [&m, T, x](double rho) { return m.pV(rho, T, x); },
            [&m, T, x](double p, int phase, double& a, double& b) {
                return m.vcalc(p, T, x, phase, a, b);
            }};
}

/// The roots of both models, and Ar there.
void same_roots(Survey& survey, State const& at, std::string const& which, Line const& live,
                Line const& read) {
    char const* name = "rewritten: as in a model that reads them";
    double a[2] = {0.0, 0.0}, b[2] = {0.0, 0.0};
    const int n = live.vcalc(at.p, 1, a[0], a[1]), k = read.vcalc(at.p, 1, b[0], b[1]);
    survey.holds(name, at, n == k,
                 which + ": vcalc returns " + std::to_string(n) + " and " + std::to_string(k));
    for (int i = 0; n == k && i < (n + 1) / 2; ++i) {
        const double s = std::max(live.slope(a[i]), 1e-3), Ar = live.Ar(a[i]);
        const double noise = kRounding * a[i] * (10.0 + s) / s;
        survey.same(name, at, a[i], b[i], 1e-11 * a[i] + 2.0 * noise, which);
        survey.same(name, at, Ar, read.Ar(a[i]), 40 * kRounding * (1.0 + std::abs(Ar)), which);
    }
}

/// `at` has temperature and composition.
void compare(Survey& survey, State at, std::string const& which, Line const& live, Line const* read,
             DensityRange const& range, std::vector<double> const& pressures) {
    const auto isotherm = [&](double rho) { return rho * live.Z(rho); };
    const IsothermScan scan(isotherm, range.top, range.P_high / (R * at.T));
    if (read && read->soft) return;  // its ends are a matter of definition
    for (double p : pressures) {
        at.p = p;
        Survey roots;
        check_roots(
            roots, scan, isotherm, at, p / (R * at.T),
            [&](int phase, double& a, double& b) { return live.vcalc(p, phase, a, b); },
            live.slope);
        survey.take_over("rewritten: densities that a scan finds", roots, which);
        if (read && !scan.at_spinodal(p / (R * at.T))) same_roots(survey, at, which, live, *read);
    }
}

// Changes of scales leave the equation as it is; those of one of many coefficients, whose terms
// cancel, soon make another of it, with loops that no fluid has.
constexpr double kScaled = 1.02, kOther = 1.001;

double changed(double value) {
    return value == 0.0 ? 0.01 : kScaled * value;
}

/// A model that has read what this one has now; null where there is none by its name.
std::unique_ptr<Model1, Detach> read_anew(Model1 const& m) {
    std::unique_ptr<Model1, Detach> other;
    try {
        other.reset(attach1(m.eos()));
    } catch (ThException const&) {
        return nullptr;
    }
    other->Tcrit(m.Tcrit());
    other->pcrit(m.pcrit());
    other->vcrit(m.vcrit());
    try {
        handed_on([&](FILE* f) { m.par_out(f); }, [&](FILE* f) { other->par_in(f, 1); });
    } catch (ThException const&) {
        return nullptr;  // an equation that limits its parameters
    }
    return other;
}

bool has_soft_end(Model1 const& m, double T) {
    const auto slope = [&](double rho) { return m.pV(rho, T); };
    try {
        return inflects(slope, m.xrho(T, 3)) || inflects(slope, m.xrho(T, 1));
    } catch (ThException const&) {
        return false;  // no tables, no soft ends
    }
}

/// Numbers of parameters: the scales, and evenly of those that are not 0 and no whole numbers,
/// which may be counts and exponents.
std::vector<int> chosen(Model1 const& m) {
    std::vector<int> others, all{1, 2};
    for (int i = 3; i < m.mpar(); ++i)
        if (m.param(i) != std::floor(m.param(i))) others.push_back(i);
    constexpr std::size_t kOthers = 6;
    const std::size_t count = std::min(others.size(), kOthers);
    for (std::size_t k = 0; k < count; ++k)
        all.push_back(others[(2 * k + 1) * others.size() / (2 * count)]);
    return all;
}
}  // namespace

void rewritten_densities(Survey& survey, Model1& model, DensityRange const& range) {
    const double Tc = model.Tcrit(), pc = model.pcrit();
    for (int i : chosen(model)) {
        const Rewritten with(model.ppar(i), (i < 3 ? kScaled : kOther) * model.param(i));
        const std::string which = "parameter " + std::to_string(i);
        const auto other = read_anew(model);
        for (double Tr : {0.5, 0.7, 0.9, 0.97, 1.04, 1.5}) {
            const double T = std::max(Tr * Tc, range.T_low);
            const Line live = line(model, T);
            Line read;
            if (other) {
                read = line(*other, T);
                read.soft = T < 0.995 * Tc && has_soft_end(*other, T);
            }
            compare(survey, {.T = T}, which, live, other ? &read : nullptr, range,
                    {1e-6 * pc, 0.02 * pc, 0.3 * pc, 0.9 * pc, 1.3 * pc, 4.0 * pc});
        }
    }
}

void rewritten_densities(Survey& survey, ModelN& mixture, std::vector<double> const& fractions,
                         DensityRange const& range) {
    const int n = mixture.mdl1.size();
    Vector<double> x(n);
    std::copy(fractions.begin(), fractions.end(), x.data);
    std::vector<int> all(static_cast<std::size_t>(n));
    std::iota(all.begin(), all.end(), 0);
    const auto look = [&](int k, int i, int j) {
        double* const at = i == j ? mixture.mdl1[i]->ppar(k) : mixture.ppar(k, i, j);
        const double before = mixture.Ar(0.5 * range.top, range.T_low, x);
        const Rewritten with(at, changed(*at));
        if (mixture.Ar(0.5 * range.top, range.T_low, x) == before) return;
        const std::string which = "parameter " + std::to_string(k) +
                                  (i == j ? " of component " : " of the pair ") +
                                  std::to_string(i) + (i == j ? "" : ", " + std::to_string(j));
        const Mixed other = made_of(mixture, all);
        for (double t : {0.1, 0.4, 0.8}) {
            const double T = range.T_low + t * (range.T_high - range.T_low);
            const Line live = line(mixture, T, x), read = line(*other, T, x);
            compare(survey, {.T = T, .x = &fractions}, which, live, &read, range,
                    {1e-3, 0.5, 3.0, 20.0});
        }
    };
    auto const* pairs = dynamic_cast<PairParameters const*>(&mixture);
    const int count = pairs ? pairs->pair_parameters() : 0;
    for (int j = 0; j < n; ++j) {
        for (int k : {1, 2}) look(k, j, j);
        for (int i = 0; i < j; ++i)
            for (int k = 0; k < count; ++k) look(k, i, j);
    }
}

}  // namespace corvane::inline detail
