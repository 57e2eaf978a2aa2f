#include <corvane/catalogue/cache_files.h>
#include <corvane/catalogue/pair_estimate.h>
#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/core/hash.h>
#include <corvane/core/numelo.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/phases/report/validity.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace corvane::inline detail {
namespace {
constexpr int kParameters = 4;  // beta_T, gamma_T, beta_v, gamma_v
// What a deviation of one standard error is, of ln p, of the ratio of volatilities and of ln v; and
// of the logarithms of the parameters from 0. Factors of 3 up or down change no mean of
// docs/models.md by more than a tenth.
constexpr double kPressure = 0.03, kRatio = 0.1, kVolume = 0.01;
constexpr double kSpread[kParameters] = {0.03, 0.3, 0.03, 0.1};
constexpr double kMostPressure = 60.0;  // MPa

/// A bubble point that the mixture shall have.
struct PairTarget {
    double T, p, v;  // K, MPa, cm³/mol of the liquid
    double x[2], y[2];
};

/// Of pure components: what is to be added to ln p of the predictive model, and the volumes of both
/// liquids; without volumes above the critical temperature of either model.
struct Pure {
    double ln_p = 0.0, own = 0.0, predicted = 0.0;
};
Pure pure(Model1 const& own, Model1 const& predicted, double T) {
    try {
        const double highest = 0.98 * std::min(own.Tcrit(), predicted.Tcrit());
        const PureSaturation a = pure_saturation_T(own, std::min(T, highest));
        const PureSaturation b = pure_saturation_T(predicted, std::min(T, highest));
        if (T > highest) return {std::log(a.p / b.p)};
        return {std::log(a.p / b.p), 1.0 / a.rhoL, 1.0 / b.rhoL};
    } catch (EquilibriumFailure const&) {
        return {};
    }
}

PairTarget target(double T, double p, PhaseRecord const& liquid, PhaseRecord const& vapour,
              Pure const (&of)[2]) {
    PairTarget t{T, p, 1.0 / liquid.rho, {liquid.x[0], liquid.x[1]}, {vapour.x[0], vapour.x[1]}};
    double own = 0.0, predicted = 0.0, sum = 0.0;
    for (int k : {0, 1}) {
        own += t.x[k] * of[k].own;
        predicted += t.x[k] * of[k].predicted;
        t.y[k] *= std::exp(of[k].ln_p);
        sum += t.y[k];
    }
    if (predicted > 0.0) t.v *= own / predicted;
    t.p *= sum;
    for (double& y : t.y) y /= sum;
    return t;
}

/// The bubble points of one composition; none above its critical point.
void add_targets(std::vector<PairTarget>& found, ModelN const& predictive, double T, double x,
                 Pure const (&of)[2]) try {
    Vector<double> z(2);
    z[0] = x;
    z[1] = 1.0 - x;
    SaturationOptions how;
    how.trace = false;
    how.test = StabilityTest::quick;
    const SaturationPoint b = bubble_T(predictive, T, z, how);
    std::vector<PhaseRecord> liquids = b.split;
    if (liquids.empty()) liquids.push_back(b.given);
    for (PhaseRecord const& liquid : liquids)
        if (liquid.rho > 1.5 * b.incipient.rho && b.p < kMostPressure)
            found.push_back(target(T, b.p, liquid, b.incipient, of));
} catch (EquilibriumFailure const&) {
} catch (ThException const&) {
} catch (MthException const&) {
}

std::vector<PairTarget> targets(ModelN const& model, int i, int j, ModelN const& predictive,
                            Vector<double> const& T_triple) {
    Model1 const* own[] = {model.mdl1[i], model.mdl1[j]};
    const double Tc[] = {own[0]->Tcrit(), own[1]->Tcrit()};
    const bool light = Tc[0] < Tc[1];  // the first
    const double low = std::max(
        {0.5 * std::max(Tc[0], Tc[1]), 0.62 * std::sqrt(Tc[0] * Tc[1]), T_triple[i], T_triple[j]});
    std::vector<PairTarget> found;
    for (double T : {low, std::min(1.25 * low, 0.9 * std::max(Tc[0], Tc[1]))}) {
        const std::size_t before = found.size();
        const Pure of[] = {pure(*own[0], *predictive.mdl1[0], T),
                           pure(*own[1], *predictive.mdl1[1], T)};
        // Of a gas in a liquid only the dilute ones.
        for (double part : {0.75, 0.5, 0.25, 0.1, 0.03})
            if (part > 0.2 || found.size() < before + 3)
                add_targets(found, predictive, T, light ? part : 1.0 - part, of);
    }
    return found;
}

/// The pair in the mixture, all other components absent.
class Fit {
  public:
    Fit(ModelN& model, int i, int j, std::vector<PairTarget> targets)
        : model_(model), i_(i), j_(j), targets_(std::move(targets)) {}

    std::size_t targets() const { return targets_.size(); }
    int residuals() const { return 3 * static_cast<int>(targets_.size()) + kParameters; }
    void set(Vector<double> const& ln) {
        for (int k = 0; k < kParameters; ++k) *model_.ppar(k, i_, j_) = std::exp(ln[k]);
    }
    /// @throws ThException 9 a phase without a density
    Vector<double> operator()(Vector<double> const& ln) {
        set(ln);
        Vector<double> r(residuals());
        int at = 0;
        for (PairTarget const& t : targets_) {
            const double rho_x = density(t, t.x, 1), rho_y = density(t, t.y, 3);
            double d[2];
            for (int k : {0, 1})
                d[k] = model_.my(rho_x, t.T, fractions(t.x), k == 0 ? i_ : j_) -
                       model_.my(rho_y, t.T, fractions(t.y), k == 0 ? i_ : j_);
            // Both liquid volumes at the bubble pressure to first order: dln p = Σ y·Δln f/ΔZ.
            const double P = t.p / (R * t.T), dZ = std::max(P / rho_y - P / rho_x, 0.2);
            r[at++] = (t.y[0] * d[0] + t.y[1] * d[1]) / dZ / kPressure;
            r[at++] = (d[0] - d[1]) * std::sqrt(t.y[0] * t.y[1]) / kRatio;
            r[at++] = -std::log(rho_x * t.v) / kVolume;
        }
        for (int k = 0; k < kParameters; ++k) r[at++] = ln[k] / kSpread[k];
        return r;
    }
    double cost(Vector<double> const& ln) try {
        double sum = 0.0;
        const Vector<double> r = (*this)(ln);
        for (int k = 0; k < r.size(); ++k) sum += r[k] * r[k];
        return sum;
    } catch (ThException const&) {
        return HUGE_VAL;
    }

  private:
    Vector<double> fractions(double const (&two)[2]) const {
        Vector<double> x(model_.mdl1.size());
        for (int k = 0; k < x.size(); ++k) x[k] = 0.0;
        x[i_] = two[0];
        x[j_] = two[1];
        return x;
    }
    double density(PairTarget const& t, double const (&two)[2], int phase) const {
        double a = 1.0 / t.v, b = 0.0;
        if (model_.vcalc(t.p, t.T, fractions(two), phase, a, b) < 1)
            throw ThException(th_no_density);
        return a;
    }

    ModelN& model_;
    int i_, j_;
    std::vector<PairTarget> targets_;
};

/// The first model that predicts the two, and its mean error (docs/models.md).
struct Predictive {
    Mixture mixture;
    int pair_set;
    double expected;
};
std::optional<Predictive> predictive(DataHome const& home, std::string const& a,
                                     std::string const& b) {
    MixtureOptions options;
    options.home = home;
    const auto take = [&](char const* model, int number, bool estimate,
                          double expected) -> std::optional<Predictive> {
        try {
            options.pair_set = number;
            options.estimate = estimate;
            return Predictive{open_mixture(model, {a, b}, options), number, expected};
        } catch (OpenFailure const&) {
            return {};
        }
    };
    for (int number : {3, 1, 2, 4})
        if (auto p = take("PCSAFT+LB", number, false, 0.03)) return p;
    if (auto p = take("SRK+PSRK", 1, false, 0.11)) return p;
    return take("PR+vdW1", 1, true, 0.18);
}

/// All that the estimate depends on.
std::uint64_t key_of(ModelN const& model, int i, int j, Mixture const& predictive) {
    constexpr double version = 1.0;
    Hash hash;
    hash.add(version);
    const auto add = [&](Model1 const& component) {
        for (double x : {component.Tcrit(), component.pcrit(), component.vcrit()}) hash.add(x);
        for (int k = 0; k < component.mpar(); ++k) hash.add(component.param(k));
    };
    ModelN const& other = *predictive.model;
    for (int k : {i, j}) add(*model.mdl1[k]);
    for (int k : {0, 1}) add(*other.mdl1[k]);
    if (auto const* pairs = dynamic_cast<PairParameters const*>(&other))
        for (int k = 0; k < pairs->pair_parameters(); ++k) hash.add(other.param(k, 0, 1));
    return hash.value();
}

using Values = std::array<double, kParameters>;

/// "<key> <four numbers> <hash of them>"
std::string text_of(std::uint64_t key, Values const& values) {
    const CLocale c_numbers;
    Hash hash;
    for (double x : values) hash.add(x);
    char text[160];
    std::snprintf(text, sizeof text, "%016llx %.17g %.17g %.17g %.17g %016llx\n",
                  static_cast<unsigned long long>(key), values[0], values[1], values[2], values[3],
                  static_cast<unsigned long long>(hash.value()));
    return text;
}
std::optional<Values> read(std::filesystem::path const& file, std::uint64_t key) {
    const CLocale c_numbers;
    const std::string text = file_contents(file.c_str());
    Values v{};
    if (std::sscanf(text.c_str(), "%*s %lf %lf %lf %lf", &v[0], &v[1], &v[2], &v[3]) !=
            kParameters ||
        text_of(key, v) != text)
        return {};
    for (double x : v)
        if (!(x > 0.01 && x < 100.0)) return {};
    return v;
}

/// The parameters that the fit gives, if it does.
std::optional<Values> fitted(ModelN& model, int i, int j, ModelN const& predictive) {
    Fit fit(model, i, j, targets(model, i, j, predictive, validity(model).T_triple));
    if (fit.targets() < 2) return {};
    Vector<double> best(kParameters), ln(kParameters);
    for (int k = 0; k < kParameters; ++k) best[k] = ln[k] = 0.0;
    double least = fit.cost(best);
    for (double gamma : {0.8, 0.9, 1.12, 1.25, 1.5}) {
        ln[1] = std::log(gamma);
        if (const double c = fit.cost(ln); c < least) {
            least = c;
            best = ln;
        }
    }
    if (!std::isfinite(least)) return {};
    try {
        fit_marquardt([](Vector<double> const& x, void* f) { return (*static_cast<Fit*>(f))(x); },
                      best, fit.residuals(), &fit, 60, 0);
    } catch (MthException const&) {  // what it has come to is judged by its cost
    } catch (ThException const&) {
    }
    if (!(fit.cost(best) <= least)) return {};
    Values values{};
    for (unsigned k = 0; k < kParameters; ++k) values[k] = std::exp(best[static_cast<int>(k)]);
    return values;
}
}  // namespace

std::optional<PairEstimate> estimate_reducing(DataHome const& home, ModelN& model, int i, int j,
                                              std::vector<std::filesystem::path> folders) {
    Model1 const &a = *model.mdl1[i], &b = *model.mdl1[j];
    const auto known = predictive(home, a.name(), b.name());
    if (!known) return {};
    if (folders.empty()) folders = cache_folders(home, "pairs");
    const std::string file = std::string("MEOS+GERG,") + a.name() + ';' + std::to_string(a.id()) +
                             '+' + b.name() + ';' + std::to_string(b.id());
    const std::uint64_t key = key_of(model, i, j, known->mixture);
    std::optional<Values> values;
    for (auto const& folder : folders)
        if ((values = read(folder / file, key))) break;
    if (!values) {
        Values before{};
        for (int k = 0; k < kParameters; ++k)
            before[static_cast<unsigned>(k)] = model.param(k, i, j);
        values = fitted(model, i, j, *known->mixture.model);
        for (int k = 0; k < kParameters; ++k)
            model.param(k, i, j, before[static_cast<unsigned>(k)]);
        if (!values) return {};
        write_cached(folders, file, text_of(key, *values));
    }
    for (int k = 0; k < kParameters; ++k) model.param(k, i, j, (*values)[static_cast<unsigned>(k)]);
    return PairEstimate{i, j, known->mixture.name(), known->pair_set, known->expected};
}

}  // namespace corvane::inline detail
