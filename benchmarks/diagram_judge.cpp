// Do complete diagrams of random binaries hold all splits, and nothing else? Two random substances
// that have parameters, an isotherm and an isobar at random: states at random, in the logit of the
// composition, too, are judged by an equation written a second time (judge/verdict.h), and each end of
// a branch is held against the name it is given.
//
//     bench_diagram_judge [-v] [--hard] [--pairs N] [--seed N] [EOS ...]
//
// EOS: PR, SRK (both). --hard: the pairs of bench_judge, with mercury, helium, water. Columns: branches whose end is not where its name says; states judged, those
// where the diagram has a split that is none, those that split where it has none. Diagrams that call
// themselves not complete are counted, and of their states only the first kind is. The exit code is 1
// if a complete diagram was wrong. -v prints each fault as a command.
#include "judge/cubic.h"
#include "judge/systems.h"
#include "judge/verdict.h"
#include "mixtures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {
using corvane::BinaryDiagram;
using corvane::DiagramEnd;
using corvane::TieLine;

constexpr int kStates = 30;
constexpr double kNear = 0.3;     // in the logit: the chords between the points decide
constexpr double kExact = 1e-6;

struct Tally {
    int pairs = 0, diagrams = 0, incomplete = 0, branches = 0, ends = 0, states = 0, none = 0,
        missed = 0;
    bool right() const { return ends + none + missed == 0; }
};

double logit(double x) {
    return std::clamp(std::log(x) - std::log1p(-x), -700.0, 700.0);
}

class Survey {
  public:
    Survey(char const* eos, bool verbose, Tally& t) : eos_(eos), verbose_(verbose), t_(t) {}

    void pair(std::string const& a, std::string const& b, std::mt19937_64& random) {
        const Mixture m = mixture_of({a, b}, eos_, "vdW1");
        const judge::Cubic equation(*m);
        const judge::Court<judge::Cubic> court(equation);
        ++t_.pairs;
        names_ = a + ' ' + b;
        const double Tc[] = {m->mdl1[0]->Tcrit(), m->mdl1[1]->Tcrit()};
        const double low = std::min(Tc[0], Tc[1]), high = std::max(Tc[0], Tc[1]);
        std::uniform_real_distribution<double> unit(0, 1);
        diagram(*m, court, true, 0.45 * low * std::pow(1.2 * high / (0.45 * low), unit(random)), random);
        diagram(*m, court, false, std::pow(10, -2 + 4 * unit(random)), random);
    }

  private:
    void fault(bool at_T, double value, std::string const& what) const {
        if (verbose_)
            std::printf("  corvane %s %s+vdW1 %s --%c %.10g --T-min 1e-9 # %s\n", at_T ? "pxy" : "txy",
                        eos_, names_.c_str(), at_T ? 'T' : 'p', value, what.c_str());
    }
    /// Is the end where its name says?
    static bool named(DiagramEnd e, TieLine const& q, BinaryDiagram const& d, bool at_T, double T_min,
                      double T_max, double p_max) {
        switch (e) {
            case DiagramEnd::pure: return q.x == q.y && (q.x == 0 || q.x == 1);
            case DiagramEnd::critical: return q.x == q.y && q.rho_x == q.rho_y;
            case DiagramEnd::pressure:
                return std::fabs(at_T ? q.p / p_max - 1 : q.T / T_max - 1) < kExact;
            case DiagramEnd::cold: return !at_T && std::fabs(q.T / T_min - 1) < kExact;
            case DiagramEnd::three_phase:
                return std::any_of(d.three_phase.begin(), d.three_phase.end(), [&](auto const& s) {
                    return std::fabs(at_T ? s.p / q.p - 1 : s.T / q.T - 1) < kExact;
                });
            default: return false;
        }
    }
    /// Is x between two phases at the running variable s (ln p or ln T)? near: to a curve.
    static bool inside(BinaryDiagram const& d, bool at_T, double s, double x, bool& near) {
        bool in = false;
        near = false;
        const double X = logit(x);
        for (auto const& b : d.branches)
            for (std::size_t k = 1; k < b.points.size(); ++k) {
                TieLine const &a = b.points[k - 1], &c = b.points[k];
                const double sa = std::log(at_T ? a.p : a.T), sc = std::log(at_T ? c.p : c.T);
                if (s < std::min(sa, sc) - 0.02 || s > std::max(sa, sc) + 0.02) continue;
                const double q = std::clamp((s - sa) / (sc - sa + 1e-300), 0.0, 1.0);
                double side[2];
                for (int i : {0, 1}) {
                    const double from = i ? a.y : a.x, to = i ? c.y : c.x;
                    const double L = logit(from), R = logit(to);
                    side[i] = L + q * (R - L);
                    // within the box of the step, which a trace crosses by decades
                    near = near || (X > std::min(L, R) - kNear && X < std::max(L, R) + kNear);
                }
                const bool beyond = s < std::min(sa, sc) || s > std::max(sa, sc);
                const bool between = (X - side[0]) * (X - side[1]) < 0;
                if (beyond && between) near = true;
                if (!beyond && between) in = true;
            }
        return in;
    }
    void diagram(ModelN const& m, judge::Court<judge::Cubic> const& court, bool at_T, double value,
                 std::mt19937_64& random) {
        corvane::DiagramOptions o;
        const double Tc[] = {m.mdl1[0]->Tcrit(), m.mdl1[1]->Tcrit()};
        const double low = std::min(Tc[0], Tc[1]), high = std::max(Tc[0], Tc[1]);
        const BinaryDiagram d =
            at_T ? corvane::complete_pxy(m, value, o) : corvane::complete_Txy(m, value, o);
        ++t_.diagrams;
        const bool complete = d.complete();
        t_.incomplete += !complete;
        if (!complete) fault(at_T, value, "not complete, open " + std::to_string(d.open.size()));
        for (auto const& b : d.branches) {
            ++t_.branches;
            for (bool last : {false, true}) {
                const DiagramEnd e = last ? b.end : b.begin;
                TieLine const& q = last ? b.points.back() : b.points.front();
                if (e == DiagramEnd::stuck || e == DiagramEnd::full ||
                    named(e, q, d, at_T, 0.3 * low, 2 * high, o.p_max))
                    continue;
                ++t_.ends;
                fault(at_T, value, "end " + std::to_string(static_cast<int>(e)) + " at " +
                                       std::to_string(at_T ? q.p : q.T));
            }
        }
        std::uniform_real_distribution<double> unit(0, 1);
        for (int k = 0; k < kStates; ++k) {
            const double u = unit(random);
            const double p = at_T ? std::pow(10, -3 + 6 * u) : value,
                         T = at_T ? value : 0.3 * low * std::pow(2 * high / (0.3 * low), u);
            const double L = k % 2 ? -25 + 50 * unit(random) : logit(0.003 + 0.994 * unit(random));
            const double x = 1 / (1 + std::exp(-L));
            bool near = false;
            const bool two = inside(d, at_T, std::log(at_T ? p : T), x, near);
            if (near || (!two && !complete)) continue;
            Vector<double> z(2);
            z[0] = x;
            z[1] = 1 / (1 + std::exp(L));
            ++t_.states;
            const bool splits = court.stability(p, T, z).tpd < -1e-8L;
            if (splits == two) continue;
            ++(two ? t_.none : t_.missed);
            char text[120];
            std::snprintf(text, sizeof text, "%s at T %.8g p %.8g x %.6g", two ? "one phase" : "missed",
                          T, p, x);
            fault(at_T, value, text);
        }
    }

    char const* eos_;
    bool verbose_;
    Tally& t_;
    std::string names_;
};

std::vector<std::string> substances(std::string const& eos) {
    std::vector<std::string> names;
    for (auto const& file : std::filesystem::directory_iterator("CorvaneS/parameters/" + eos)) {
        const std::string name = file.path().filename().string();
        if (name.ends_with(";1")) names.push_back(name.substr(0, name.size() - 2));
    }
    std::sort(names.begin(), names.end());
    return names;
}
}  // namespace

int main(int argc, char** argv) {
    bool verbose = false, hard = false;
    int pairs = 100;
    unsigned seed = 1;
    std::vector<std::string> equations;
    for (int k = 1; k < argc; ++k) {
        const std::string word = argv[k];
        auto value = [&] { return k + 1 < argc ? std::atoi(argv[++k]) : 0; };
        if (word == "-v")
            verbose = true;
        else if (word == "--hard")
            hard = true;
        else if (word == "--pairs")
            pairs = value();
        else if (word == "--seed")
            seed = static_cast<unsigned>(value());
        else
            equations.push_back(word);
    }
    if (equations.empty()) equations = {"PR", "SRK"};
    bool right = true;
    for (std::string const& eos : equations) {
        const auto names = substances(eos);
        std::mt19937_64 random(seed);
        Tally t;
        while (t.pairs < pairs) try {
                auto any = [&] { return names[random() % names.size()]; };
                const judge::Names pair =
                    hard ? judge::kBinaries[random() % judge::kBinaries.size()] : judge::Names{any(), any()};
                if (pair[0] != pair[1])
                    Survey(eos.c_str(), verbose, t).pair(pair[0], pair[1], random);
            } catch (ThException const&) {         // no parameters, or others than the judge has
            } catch (std::runtime_error const&) {  // translated
            }
        std::printf("%s: %d pairs, %d diagrams, %d not complete; %d branches, %d ends elsewhere than "
                    "named; %d states judged, %d in splits that are none, %d splits missed\n",
                    eos.c_str(), t.pairs, t.diagrams, t.incomplete, t.branches, t.ends, t.states, t.none,
                    t.missed);
        right = right && t.right();
    }
    return right ? 0 : 1;
}
