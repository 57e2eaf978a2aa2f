#include <tools/corvane/commands/incipient.h>
#include <tools/corvane/commands/stability.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/corvane.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace cli {
namespace {
constexpr int kMostSolves = 300;       // of a walk
constexpr double kShortest = 1e-5;     // step of a walk, as part of its length
constexpr double kLargestJump = 0.5;   // of ln T, ln p, ln rho within a step of a walk
constexpr double kTrace = 1e-4;        // of the other components near a pure one
constexpr double kPotentials = 1e-8;   // equal chemical potentials over RT
constexpr double kPressures = 1e-7;    // equal pressures, relative
constexpr double kCancelled = 1e-11;   // of rho·RT: what is lost in a pressure
constexpr double kSameDensity = 1e-3;  // difference of the densities over their sum
constexpr double kNearlySame = 0.03;

double pressure(ModelN const& m, double T, Vector<double> const& rho_i) {
    return m.Z(rho_i, T) * R * T * rho_i.sum();
}
double reduced(ModelN const& m, Vector<double> const& rho_i) {
    double sum = 0.0;
    for (int i = 0; i < rho_i.size(); ++i) sum += rho_i[i] * m.mdl1[i]->vcrit();
    return sum;
}
}  // namespace

Vector<double> Incipient::y() const {
    return rho_i * (1.0 / rho_i.sum());
}

/// Wilson's vapour pressure of a component.
double IncipientSearch::saturation(int i, double T) const {
    Model1 const& c = *m_.mdl1[i];
    return c.pcrit() * std::exp(5.373 * (1.0 + c.omega()) * (1.0 - c.Tcrit() / T));
}

double IncipientSearch::wilson_pressure(double T, Vector<double> const& x) const {
    double sum = 0.0;
    for (int i = 0; i < x.size(); ++i)
        if (x[i] > 0.0) sum += dew_ ? x[i] / saturation(i, T) : x[i] * saturation(i, T);
    return dew_ ? 1.0 / sum : sum;
}

/// Start values; `rounds` of successive substitution in the K-factors, and in p where T is given.
std::optional<Incipient> IncipientSearch::wilson(double given, Vector<double> const& x,
                                                 int rounds) const {
    Incipient s{given, given, x, 0.0, Vector<double>(x.size())};
    const int n = x.size();
    if (by_T_) {
        s.p = wilson_pressure(s.T, x);
    } else {
        double low = 0.0, high = 0.0;  // of 1/T, in which ln p is nearly straight
        for (int i = 0; i < n; ++i) {
            low = low > 0.0 ? std::min(low, 0.2 / m_.mdl1[i]->Tcrit()) : 0.2 / m_.mdl1[i]->Tcrit();
            high = std::max(high, 5.0 / m_.mdl1[i]->Tcrit());
        }
        for (int k = 0; k < 50; ++k) {
            const double middle = 0.5 * (low + high);
            (wilson_pressure(1.0 / middle, x) > given ? low : high) = middle;
        }
        s.T = 2.0 / (low + high);
    }
    if (!(s.p > 0.0) || !std::isfinite(s.p)) return {};
    Vector<double> K(n);
    for (int i = 0; i < n; ++i) K[i] = std::pow(saturation(i, s.T) / s.p, dew_ ? -1.0 : 1.0);
    try {
        for (int round = 0;; ++round) {
            Vector<double> y(n);
            for (int i = 0; i < n; ++i) y[i] = x[i] > 0.0 ? x[i] * K[i] : 0.0;
            const double sum = y.sum();
            for (int i = 0; i < n; ++i) y[i] /= sum;
            const auto root = [&](Vector<double> const& at, bool dense) {
                double rho = 0.0, other = 0.0;
                m_.vcalc(s.p, s.T, at, dense ? 1 : 3, rho, other);
                return rho;
            };
            s.rho = root(x, !dew_);
            const double rho2 = rounds == 0 && !dew_ ? sum * s.p / (R * s.T) : root(y, dew_);
            s.rho_i = y * rho2;
            if (!(s.rho > 0.0) || !(rho2 > 0.0)) return {};
            if (round == rounds) return s;
            const double RT = R * s.T, Z1 = s.p / (RT * s.rho), Z2 = s.p / (RT * rho2);
            double S = 0.0;
            for (int i = 0; i < n; ++i)
                if (x[i] > 0.0) {
                    K[i] = std::exp(m_.myr(x * s.rho, s.T, i) - m_.myr(s.rho_i, s.T, i)) * Z2 / Z1;
                    S += x[i] * K[i];
                }
            if (!(S > 0.0) || !std::isfinite(S)) return {};
            const double factor = std::clamp(S, 0.5, 2.0);
            if (by_T_) s.p *= dew_ ? 1.0 / factor : factor;
        }
    } catch (ThException const&) {  // no density, or one that the model refuses: no start
    } catch (MthException const&) {
    }
    return {};
}

/// What is wrong with a solution, by the model's own slots; null if nothing.
char const* IncipientSearch::flaw(Incipient const& s) const {
    const Vector<double> given = s.x * s.rho;
    const double rho2 = s.rho_i.sum();
    if (!(s.p > 0.0) || !std::isfinite(s.p) || !(s.rho > 0.0) || !(rho2 > 0.0))
        return "pressure not above zero";
    const auto off = [&](Vector<double> const& rho_i) {
        const double tolerance = kPressures * s.p + kCancelled * R * s.T * rho_i.sum();
        return !(std::fabs(pressure(m_, s.T, rho_i) - s.p) < tolerance);
    };
    if (off(given) || off(s.rho_i)) return "pressures of the phases differ";
    for (int i = 0; i < s.x.size(); ++i)
        if (s.x[i] > 0.0 &&
            !(std::fabs(m_.my(given, s.T, i) - m_.my(s.rho_i, s.T, i)) < kPotentials))
            return "chemical potentials of the phases differ";
    const double red1 = reduced(m_, given), red2 = reduced(m_, s.rho_i);
    const double apart = std::fabs(red1 - red2) / (red1 + red2);
    if (apart < kSameDensity) return "the two phases have the same density";
    // Near the critical point also within the region of unstable states.
    if (apart < kNearlySame && (unstable(m_, s.T, given) || unstable(m_, s.T, s.rho_i)))
        return "the two phases are nearly the same, and unstable";
    if ((red1 < red2) != dew_)
        return dew_ ? "the given phase is the liquid there" : "the given phase is the vapour there";
    return nullptr;
}

/// Solves from the values in the point; false leaves it in an unknown state and error_ set.
bool IncipientSearch::solve(Incipient& s) {
    try {
        if (by_T_)
            vleN_T(&m_, s.T, s.x, s.p, s.rho, s.rho_i);
        else
            vleN_p(&m_, s.p, s.x, s.T, s.rho, s.rho_i);
        // That of the thin phase, in which nothing cancels.
        if (by_T_) s.p = pressure(m_, s.T, s.rho < s.rho_i.sum() ? s.x * s.rho : s.rho_i);
        char const* wrong = flaw(s);
        if (!wrong) return true;
        error_ = wrong;
    } catch (ThException const& e) {
        error_ = describe(e);
    } catch (MthException const& e) {
        error_ = describe(e);
    }
    return false;
}

std::optional<Incipient> IncipientSearch::fresh(double given, Vector<double> const& x) {
    error_ = "no density at the start values";
    for (int rounds : {0, 5}) {
        std::optional<Incipient> s = wilson(given, x, rounds);
        if (s && solve(*s)) return s;
    }
    return {};
}

/// From a solution to T or p and composition, with steps that are halved where they fail and starts
/// extrapolated from the last two points.
std::optional<Incipient> IncipientSearch::walk(Incipient const& from, double given,
                                               Vector<double> const& x) {
    const double start = by_T_ ? from.T : from.p;
    Incipient last = from, before = from;
    double s = 0.0, s_before = 0.0, step = 1.0;
    for (int k = 0; k < kMostSolves; ++k) {
        const double next = std::min(1.0, s + step);
        Incipient trial = last;
        trial.x = next < 1.0 ? from.x * (1.0 - next) + x * next : x;
        const double now = next < 1.0 ? start * std::pow(given / start, next) : given;
        const double w = s > s_before ? (next - s) / (s - s_before) : 0.0;
        const auto ahead = [&](double a, double b) {  // on the line through ln b, ln a
            return w > 0.0 ? a * std::pow(a / b, std::min(w, 2.0)) : a;
        };
        for (int i = 0; i < x.size(); ++i)
            if (trial.x[i] > 0.0 && last.x[i] > 0.0)
                trial.rho_i[i] =
                    trial.x[i] * ahead(last.rho_i[i] / last.x[i], before.rho_i[i] / before.x[i]);
        trial.rho = ahead(last.rho, before.rho);
        trial.T = by_T_ ? now : ahead(last.T, before.T);
        trial.p = by_T_ ? last.p : now;
        const auto far = [](double a, double b) {
            return std::fabs(std::log(a / b)) > kLargestJump;
        };
        if (solve(trial) && !far(trial.T, last.T) && !far(trial.p, last.p) &&
            !far(trial.rho, last.rho) && !far(trial.rho_i.sum(), last.rho_i.sum())) {
            if (next >= 1.0) return trial;
            before = last;
            s_before = s;
            last = trial;
            s = next;
            step *= 1.7;
        } else {
            step = 0.5 * (next - s);
            if (step < kShortest) break;
        }
    }
    error_ = fmt::format("lost at T = {:.6g} K, p = {:.4g} MPa, {} {:.4g}: {}", last.T, last.p,
                         m_.mdl1[0]->name(), last.x[0], error_);
    return {};
}

std::vector<IncipientSearch::Start> IncipientSearch::easy(double given,
                                                          Vector<double> const& x) const {
    std::vector<Start> result;
    for (double part : by_T_ ? std::vector{0.8, 0.6, 0.45} : std::vector{0.2, 0.02, 1e-3})
        result.push_back({fmt::format("a march from {} = {:.4g} {}", by_T_ ? "T" : "p",
                                      part * given, by_T_ ? "K" : "MPa"),
                          part * given, x});
    for (int i = 0; i < x.size(); ++i) {
        Model1 const& c = *m_.mdl1[i];
        if (!(x[i] > 0.0) || given > 0.98 * (by_T_ ? c.Tcrit() : c.pcrit())) continue;
        Vector<double> near = x * kTrace;
        near[i] += 1.0 - kTrace;
        result.push_back({fmt::format("a march from nearly pure {}", c.name()), given, near});
    }
    return result;
}

std::optional<Incipient> IncipientSearch::at(double given, Vector<double> const& x) {
    tried_.clear();
    std::optional<Incipient> found;
    const auto note = [&](std::string const& what) { tried_.push_back(what + ": " + error_); };
    if (last_ && !(found = walk(*last_, given, x))) note("from the last point");
    if (!found) {
        found = fresh(given, x);
        if (!found) note("Wilson's K-factors");
        // Above the critical temperature a vapour may have two dew pressures: the lower one, which
        // the curve from lower T leads to.
        const auto first = found && dew_ && by_T_ ? fresh(0.8 * given, x) : std::nullopt;
        const auto lower = first ? walk(*first, given, x) : std::nullopt;
        if (lower && lower->p < found->p) found = lower;
    }
    if (!found)
        for (Start const& start : easy(given, x)) {
            const std::optional<Incipient> first = fresh(start.given, start.x);
            if (first && (found = walk(*first, given, x))) break;
            note(start.name);
        }
    if (found) last_ = found;
    return found;
}

std::string IncipientSearch::failure() const {
    return join(tried_, "; ");
}

}  // namespace cli
