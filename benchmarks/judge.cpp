// How often the certified results are wrong, by a judge that shares no code with the solvers: the
// equation of state is written a second time, true solutions are Newton's from the result with 113
// bits, stability is a slow scan (judge/verdict.h).
//
//     bench_judge [-v] [--seed N] [--states N] [--only REGION] [--limit SECONDS] [--strict]
//         [--ternaries] [--flashes] [--absent] [EOS ...]
//
// EOS: PR, SRK (the default), PCSAFT, MEOS (GERG-2008), TwuPR, TwuSRK (sets 2), tcPR, tcSRK (translated,
// sets 3), PR+HV (with pairs of NRTL, see with_excess(), which its calls leave out); SRK+PSRK, CPA+vdW1,
// SAFTVRMIE+LB, whose equations are not written a second time (judge/of_model.h). Binaries, or ternaries.
// REGION: critical (1e-6 … 5 % from a critical temperature), pure (mole fractions from 1e-12 on),
// random. Every state is asked for bubble and dew points at its T and at its p, a flash and the
// stability test; with --flashes for the last two only. The mixtures take turns; a region ends after SECONDS. -v prints every fault and
// refusal as the call that shows it. The exit code is 1 if something was wrong, a stated error bound
// that is exceeded included; one phase for two whose Gibbs energy differs by less than 1e-8 RT, the
// tolerance of the certificate, counts only with --strict.
//
// --absent judges refusals for having no solution, too (slow): of binaries by changes of stability, of
// ternaries by flashes along p or T (judge/vanishing.h).
//
// Columns: two: of two phases, or called unstable; no such: refused, since there is no solution
// (judged: so many of them); beyond: refused out of the documented reach (Trial::beyond);
// then the kinds of faults; worst: the largest error of p or T, or of the mole fractions of a
// flash, in a right answer; ratio: the largest of any error over its stated bound;
// evals: of the model, per answer.
// Below the table: how many tangent planes of certified answers were proven to have nothing below
// them by more than 1e-8 RT (cubic mixtures, judge/enclosure.h), and how many were only searched; and
// how many of three phases and more Newton's method of 113 bits did not follow.
#include "judge/cubic.h"
#include "judge/multifluid.h"
#include "judge/of_model.h"
#include "judge/pcsaft.h"
#include "judge/systems.h"
#include "judge/tally.h"
#include "judge/vanishing.h"
#include "judge/verdict.h"
#include "mixtures.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {
using corvane::EquilibriumFailure;
using corvane::Saturated;
using judge::Call;
using judge::Fault;
using judge::Names;
using judge::Tally;
using enum judge::Call;
using judge::Verdict;
using Clock = std::chrono::steady_clock;

struct Settings {
    bool verbose = false, strict = false, ternaries = false, flashes = false, absent = false;
    unsigned seed = 20261122;
    int states = 4000;
    double limit = 1e9;
    std::string only;
};

struct State {
    double T, p;
    Vector<double> z;
};

template <class Equation>
class Trial {
  public:
    Trial(ModelN const& m, Names const& names, Settings const& s, Tally* tally)
        : m_(m),
          names_(names),
          settings_(s),
          tally_(tally),
          equation_(m),
          court_(equation_, std::is_same_v<Equation, judge::Cubic> ? nullptr : &m) {}
    ~Trial() {
        if (court_.other_roots && settings_.verbose)
            std::printf("  %ld times unstable only towards a root that the model does not give\n",
                        court_.other_roots);
        tally_[test].proven += court_.proven;
        tally_[test].unproven += court_.unproven;
        tally_[test].unfollowed += court_.unfollowed;
    }

    void state(State const& in) {
        if (!settings_.flashes)
            for (Call c : {bubble_T, dew_T, bubble_p, dew_p}) saturation(c, in);
        call(flash, in, [&] {
            const auto q = corvane::flash_pT(m_, in.p, in.T, in.z);
            took(flash);
            tally_[flash].evaluations += q.certificate.evaluations;
            tally_[flash].two += q.phases.size() > 1;
            return court_.flash(in.p, in.T, in.z, q);
        });
        call(test, in, [&] {
            const auto q = corvane::stability(m_, in.p, in.T, in.z);
            took(test);
            if (in.z.size() == 2 && q.stable && q.unconverged)  // says itself that it does not know
                throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, "", "stability",
                                         q.iterations, q.tpd, "not known");
            tally_[test].two += !q.stable;
            return court_.tested(in.p, in.T, in.z, q);
        });
    }
    /// Returns p or T; 0 without an answer.
    double saturation(Call c, State const& in) {
        const bool at_T = c == bubble_T || c == dew_T;
        const Saturated kind = c == bubble_T || c == bubble_p ? Saturated::bubble : Saturated::dew;
        double found = 0;
        call(c, in, [&] {
            const auto q = at_T ? corvane::saturation_T(m_, kind, in.T, in.z)
                                : corvane::saturation_p(m_, kind, in.p, in.z);
            took(c);
            tally_[c].evaluations += q.certificate.evaluations;
            found = at_T ? q.p : q.T;
            return court_.saturation(kind, at_T, at_T ? in.T : in.p, in.z, q);
        });
        return found;
    }

  private:
    /// Refused out of what the documentation says can be done: pressures above 1000 MPa or below
    /// 1e-288; mole fractions below 1e-300, by Wilson's K-factors, of bubble points at given p down
    /// to 0.3 of the lowest critical temperature, to which they are looked for; states at which the
    /// model says itself that it has no density for some composition, which the tangent-plane test
    /// would have to look at.
    bool beyond(Call c, State const& in) const {
        const bool at_T = c == bubble_T || c == dew_T, at_p = c == bubble_p || c == dew_p;
        if (!at_T && in.p > 1000) return true;
        const int n = in.z.size();
        double coldest = 1e300, warmest = 0;
        for (int i = 0; i < n; ++i) {
            coldest = std::min(coldest, 0.3 * m_.mdl1[i]->Tcrit());
            warmest = std::max(warmest, 2 * m_.mdl1[i]->Tcrit());
        }
        for (int i = 0; i < n; ++i) {
            Model1 const& pure = *m_.mdl1[i];
            const double T = c == bubble_p ? std::min(in.T, coldest) : in.T;
            if (5.373 * (1 + pure.omega()) * (1 - pure.Tcrit() / T) < (at_T ? -663 : -690))
                return true;
        }
        if (std::is_same_v<Equation, judge::Cubic>) return false;
        const int states = at_T || at_p ? 400 : 0;  // on the way of the search
        // Below half of a component's critical temperature a model may have no liquid of it any more.
        auto liquid_lost = [&](int i, double p, double T, double densest) {
            Model1 const& pure = *m_.mdl1[i];
            const double wilson = 5.373 * (1 + pure.omega()) * (1 - pure.Tcrit() / T);
            return T < 0.5 * pure.Tcrit() && p > pure.pcrit() * std::exp(wilson) &&
                   densest < 1.5 / pure.vcrit();
        };
        for (int k = 0; k <= states; ++k) {
            const double part = k / 400.0, p = at_T ? std::pow(10.0, -3 + 6 * part) : in.p,
                         T = at_p ? coldest * std::pow(warmest / coldest, part) : in.T;
            double own[2] = {0, 0};
            if (m_.vcalc(p, T, in.z, 1, own[0], own[1]) == 0) return true;
            for (double w : {1e-8, 1e-4, 0.02, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 0.98, 1 - 1e-4,
                             1 - 1e-8})
                for (int i = 0; i < n; ++i) {
                    Vector<double> x(n);
                    double r[2] = {0, 0};
                    for (int j = 0; j < n; ++j) x[j] = j == i ? w : (1 - w) / (n - 1);
                    if (m_.vcalc(p, T, x, 1, r[0], r[1]) == 0) return true;
                    if (w > 0.999999 && liquid_lost(i, p, T, r[0])) return true;
                }
        }
        return false;
    }
    void took(Call c) {
        tally_[c].us += std::chrono::duration<double, std::micro>(Clock::now() - begin_).count();
    }
    void call(Call c, State const& in, std::function<Verdict()> const& run) {
        Tally& t = tally_[c];
        begin_ = Clock::now();
        try {
            const Verdict v = run();
            ++t.answers;
            ++t.fault[static_cast<int>(v.fault)];
            if (v.fault == Fault::none) {
                t.worst = std::max(t.worst, c == flash ? v.x_error : v.error);
                t.ratio = std::max(t.ratio, v.ratio);
            }
            if (v.fault != Fault::none && settings_.verbose) {
                show(c, in, judge::kFaultNames[static_cast<int>(v.fault)]);
                std::printf(" # true %.12g error %.2e x %.2e tpd %.3e ratio %.1e\n", v.truth,
                            v.error, v.x_error, v.tpd, v.ratio);
            }
        } catch (EquilibriumFailure const& e) {
            took(c);
            const bool gave_up = e.kind() == EquilibriumFailure::Kind::gave_up;
            if (gave_up) {
                const bool out = beyond(c, in);
                ++(out ? t.beyond : t.gave_up);
                if (settings_.verbose) refused(c, in, out ? "beyond" : "gave up", e.what());
                return;
            }
            ++t.no_solution;
            if (settings_.absent) {
                ++t.missed_of;
                if (const double at = missed(c, in); at > 0) {
                    --t.no_solution;
                    ++t.answers;
                    ++t.fault[static_cast<int>(Fault::missed)];
                    if (settings_.verbose) {
                        show(c, in, "missed");
                        std::printf(" # true %.12g\n", at);
                    }
                }
            }
        } catch (ThException const& e) {
            took(c);
            const bool out = e.number == th_no_density && beyond(c, in);
            ++(out ? t.beyond : t.thrown);
            if (settings_.verbose)
                refused(c, in, out ? "beyond" : "thrown", "code " + std::to_string(e.number));
        }
    }
    /// The boundary that was said not to be, in p or T; 0 if none is found.
    double missed(Call c, State const& in) {
        const bool at_T = c == bubble_T || c == dew_T;
        const Saturated kind = c == bubble_T || c == bubble_p ? Saturated::bubble : Saturated::dew;
        double lo = 1e300, hi = 0;
        for (int i = 0; i < in.z.size(); ++i) {
            lo = std::min(lo, m_.mdl1[i]->Tcrit());
            hi = std::max(hi, m_.mdl1[i]->Tcrit());
        }
        const double value = at_T ? in.T : in.p;
        if (in.z.size() > 2)
            return judge::Vanishing(m_, at_T, value, in.z)
                .look(kind, at_T ? 1e-3 : 0.3 * lo, at_T ? 1e3 : 2 * hi, 160)
                .value_or(0);
        const Verdict v = court_.absent(kind, at_T, value, in.z, lo, hi);
        return v.fault == Fault::none ? 0 : v.truth;
    }
    void refused(Call c, State const& in, char const* what, std::string const& why) const {
        show(c, in, what);
        std::printf(" # %s\n", why.c_str());
    }
    /// As a command line.
    void show(Call c, State const& in, char const* what) const {
        char const* const command[] = {"bubble", "dew", "bubble", "dew", "flash", "stability"};
        std::printf("  %-10s corvane %s %s+%s", what, command[c], m_.eos, m_.mth);
        const int n = in.z.size();
        int rest = 0;  // the largest is what the others leave
        for (int i = 1; i < n; ++i)
            if (in.z[i] > in.z[rest]) rest = i;
        for (int i = 0; i < n; ++i) {
            std::printf(" %s", names_[static_cast<unsigned>(i)].c_str());
            if (i != rest) std::printf("=%.17g", in.z[i]);
        }
        if (c != bubble_p && c != dew_p) std::printf(" --T %.17g", in.T);
        if (c != bubble_T && c != dew_T) std::printf(" --p %.17g", in.p);
    }

    ModelN const& m_;
    Names const& names_;
    Settings const& settings_;
    Tally* tally_;
    Equation equation_;
    judge::Court<Equation> court_;
    Clock::time_point begin_;
};

/// Random states of one mixture.
class Dice {
  public:
    Dice(ModelN const& m, unsigned seed) : m_(m), n_(m.mdl1.size()), generator_(seed) {}

    double uniform(double a, double b) {
        return a + (b - a) * std::uniform_real_distribution<double>(0, 1)(generator_);
    }
    double magnitude(double a, double b) { return std::exp(uniform(std::log(a), std::log(b))); }
    Vector<double> composition(bool near_pure) {
        Vector<double> z(n_);
        const int major = static_cast<int>(uniform(0, n_));
        double sum = 0;
        for (int i = 0; i < n_; ++i)
            sum += z[i] = near_pure ? (i == major ? 1 : magnitude(1e-12, 1e-2))
                                    : -std::log(uniform(1e-9, 1));
        for (int i = 0; i < n_; ++i) z[i] /= sum;
        return z;
    }
    double mean_Tc(Vector<double> const& z) const {
        double T = 0;
        for (int i = 0; i < n_; ++i) T += z[i] * m_.mdl1[i]->Tcrit();
        return T;
    }
    State random() {
        State s{0, magnitude(0.01, 50), composition(false)};
        s.T = mean_Tc(s.z) * uniform(0.45, 1.25);
        return s;
    }
    /// Half of them close to the vapour pressure of the pure component by Wilson's estimate.
    State nearly_pure() {
        State s{0, 0, composition(true)};
        int k = 0;
        for (int i = 1; i < n_; ++i)
            if (s.z[i] > s.z[k]) k = i;
        Model1 const& c = *m_.mdl1[k];
        s.T = c.Tcrit() * uniform(0.5, 1.02);
        double p = c.pcrit();
        if (s.T < c.Tcrit()) {
            try {
                double rhoL, rhoV;
                vle1_T(&c, s.T, 0, p, rhoL, rhoV);
            } catch (...) {
                p = c.pcrit() * std::exp(5.373 * (1 + c.param(3)) * (1 - c.Tcrit() / s.T));
            }
        }
        const double off = magnitude(1e-9, 1);
        s.p = p * std::exp(uniform(0, 1) < 0.5 ? off : -off);
        return s;
    }
    /// False if the composition has no critical point.
    bool near_critical(State& s, double nearest) {
        s.z = composition(uniform(0, 1) < 0.2);
        try {
            const auto c = corvane::critical_point(m_, s.z);
            s.T = c.T * (1 - magnitude(nearest, 0.05));
            // The boundary's pressure falls at most about 8 times as fast as T.
            s.p = c.p * (1 - 4 * (1 - s.T / c.T) * uniform(0, 2));
            return s.p > 0;
        } catch (EquilibriumFailure const&) {
        } catch (ThException const&) {
        }
        return false;
    }

  private:
    ModelN const& m_;
    int n_;
    std::mt19937_64 generator_;
};

struct Model {
    char const *name, *eos, *mth;
    int set;  ///< of the components; −1: what the pair's file names
    bool alone = false;  ///< the judge has no equation of its own for it
};
constexpr Model kModels[] = {{"PR", "PR", "vdW1", 1},
                             {"SRK", "SRK", "vdW1", 1},
                             {"PCSAFT", "PCSAFT", "LB", -1},
                             {"MEOS", "MEOS", "GERG", 8},
                             {"TwuPR", "PR", "vdW1", 2},
                             {"TwuSRK", "SRK", "vdW1", 2},
                             {"tcPR", "PR", "vdW1", 3},
                             {"tcSRK", "SRK", "vdW1", 3},
                             {"PR+HV", "PR", "HV", 1},
                             {"SRK+PSRK", "SRK", "PSRK", 5, true},
                             {"CPA+vdW1", "CPA", "vdW1", 1, true},
                             {"SAFTVRMIE+LB", "SAFTVRMIE", "LB", 1, true}};
constexpr char const* kRegions[] = {"critical", "pure", "random"};

/// Pairs of neighbours as those of NRTL fitted to measured points are, of which none are shipped; the others
/// of a ternary stay van der Waals pairs.
void with_excess(ModelN& m) {
    for (int i = 1; i < m.mdl1.size(); ++i) {
        const double apart = std::fabs(m.mdl1[i]->Tcrit() - m.mdl1[i - 1]->Tcrit());
        const double values[] = {0.3, 100 + 0.8 * apart, 0.3 * apart - 50, -0.1, 0.1};
        for (int k = 0; k < 5; ++k) m.param(k + 1, i, i - 1, values[k]);
    }
}

template <class Equation>
long examine(Model const& model, std::string const& region, Settings const& s) {
    Tally tally[calls];
    const auto begin = Clock::now();
    long without = 0;
    std::vector<std::pair<Names, Mixture>> mixtures;
    for (Names const& names : s.ternaries ? judge::kTernaries : judge::kBinaries) try {
            Mixture m = mixture_of(names, model.eos, model.mth, model.set);
            if (std::strcmp(model.mth, "HV") == 0) with_excess(*m);
            const Equation readable(*m);
            mixtures.emplace_back(names, std::move(m));
        } catch (ThException const&) {  // no parameters, or some that the judge's equation does not know
        }
    struct Docket {
        Dice dice;
        Trial<Equation> trial;
    };
    std::vector<std::unique_ptr<Docket>> dockets;
    unsigned seed = s.seed;
    for (auto const& [names, m] : mixtures)
        dockets.push_back(std::unique_ptr<Docket>(
            new Docket{Dice(*m, ++seed), Trial<Equation>(*m, names, s, tally)}));
    int states = 0;
    auto enough = [&] {
        return states >= s.states ||
               std::chrono::duration<double>(Clock::now() - begin).count() > s.limit;
    };
    while (!dockets.empty() && !enough())  // in turn, so that a run cut short has seen them all
        for (auto& docket : dockets) {
            if (enough()) break;
            ++states;
            State in{};
            if (region == "critical") {
                if (!docket->dice.near_critical(in, Equation::kPrecision.nearest)) {
                    ++without;
                    continue;
                }
            } else
                in = region == "pure" ? docket->dice.nearly_pure() : docket->dice.random();
            docket->trial.state(in);
        }
    const std::size_t count = mixtures.size();
    dockets.clear();
    const std::string title = std::string(model.name) + (s.ternaries ? " 3 " : " ");
    Tally all;
    for (int c = 0; c < calls; ++c) {
        tally[c].print((title + region + ' ' + judge::kCalls[c]).c_str());
        all.add(tally[c]);
    }
    all.print((title + region).c_str());
    std::printf("%zu mixtures, %d states, %ld of them without a critical point; stability proven %ld "
                "times, not %ld; %ld of three phases by their potentials alone\n",
                count, states, without, all.proven, all.unproven, all.unfollowed);
    return all.wrong() - (s.strict ? 0 : all.fault[static_cast<int>(Fault::slightly)]);
}
}  // namespace

int main(int argc, char** argv) {
    Settings s;
    std::vector<std::string> asked;
    for (int k = 1; k < argc; ++k) {
        const std::string word = argv[k];
        auto value = [&] { return k + 1 < argc ? argv[++k] : ""; };
        if (word == "-v")
            s.verbose = true;
        else if (word == "--strict")
            s.strict = true;
        else if (word == "--flashes")
            s.flashes = true;
        else if (word == "--absent")
            s.absent = true;
        else if (word == "--ternaries")
            s.ternaries = true;
        else if (word == "--seed")
            s.seed = static_cast<unsigned>(std::atol(value()));
        else if (word == "--states")
            s.states = std::atoi(value());
        else if (word == "--limit")
            s.limit = std::atof(value());
        else if (word == "--only")
            s.only = value();
        else
            asked.push_back(word);
    }
    if (asked.empty()) asked = {"PR", "SRK"};
    Tally::header();
    long wrong = 0;
    for (Model const& model : kModels)
        if (std::find(asked.begin(), asked.end(), model.name) != asked.end())
            for (char const* region : kRegions)
                if (s.only.empty() || s.only == region) {
                    const std::string name = model.name;
                    wrong += model.alone        ? examine<judge::OfModel>(model, region, s)
                             : name == "PCSAFT" ? examine<judge::PcSaft>(model, region, s)
                             : name == "MEOS"   ? examine<judge::MultiFluid>(model, region, s)
                                                : examine<judge::Cubic>(model, region, s);
                }
    return wrong ? 1 : 0;
}
