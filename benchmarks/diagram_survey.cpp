// Complete diagrams and the lines of three phases and azeotropes of all pairs of 20 substances: how
// many are complete, and whether the curves divide the states into one and two phases as the
// tangent-plane test of single states does. Prints a table; `bench_diagram_survey EOS MIX LIST`
// names the model (PR vdW1) and lists what is not complete, if LIST is given.
#include "mixtures.h"

#include <corvane/corvane.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>

namespace {
using corvane::BinaryDiagram;

constexpr char const* kNames[] = {"methane",  "ethane",         "propane",          "butane",
                                  "hexane",   "decane",         "nitrogen",         "oxygen",
                                  "argon",    "carbon_dioxide", "hydrogen_sulfide", "ammonia",
                                  "water",    "methanol",       "ethanol",          "benzene",
                                  "hydrogen", "xenon",          "acetone",          "ethylene"};
constexpr int kTemperatures = 12, kPressures = 8, kStates = 12;
constexpr double kNear = 0.02;  // closer to a curve the chords between its points decide

Mixture make(char const* eos, char const* mth, char const* first, char const* second) {
    return mixture_of({first, second}, eos, mth, std::strcmp(eos, "MEOS") ? 1 : -1);
}

/// Is x between two phases at the running variable s (ln p or ln T)? margin: distance to a curve.
bool inside(BinaryDiagram const& d, bool at_T, double s, double x, double& margin) {
    bool in = false;
    margin = 1;
    for (auto const& b : d.branches)
        for (std::size_t k = 1; k < b.points.size(); ++k) {
            auto const &a = b.points[k - 1], &c = b.points[k];
            const double sa = std::log(at_T ? a.p : a.T), sc = std::log(at_T ? c.p : c.T);
            const double beyond = std::max({0.0, std::min(sa, sc) - s, s - std::max(sa, sc)});
            const double q = std::clamp((s - sa) / (sc - sa + 1e-300), 0.0, 1.0);
            const double l = a.x + q * (c.x - a.x), r = a.y + q * (c.y - a.y);
            margin = std::min({margin, std::fabs(x - l) + beyond, std::fabs(x - r) + beyond});
            if (beyond == 0 && (x - l) * (x - r) < 0) in = true;
        }
    return in;
}

struct Tally {
    int pairs = 0, diagrams = 0, incomplete = 0, states = 0, wrong = 0, unstable = 0, points = 0;
    int three = 0, azeotropic = 0, lost = 0, uncertified = 0;
};

void end(Tally& t, corvane::PhaseLineEnd e) {
    if (e == corvane::PhaseLineEnd::stuck || e == corvane::PhaseLineEnd::full) ++t.lost;
    if (e == corvane::PhaseLineEnd::uncertified) ++t.uncertified;
}

void diagram(ModelN const& m, bool at_T, double value, std::mt19937& random, bool list, Tally& t) {
    const BinaryDiagram d =
        at_T ? corvane::complete_pxy(m, value) : corvane::complete_Txy(m, value);
    ++t.diagrams;
    if (!d.complete()) {
        ++t.incomplete;
        if (list)
            std::printf("incomplete: %s+%s %s = %g, open %zu\n", m.mdl1[0]->name(),
                        m.mdl1[1]->name(), at_T ? "T" : "p", value, d.open.size());
    }
    for (auto const& b : d.branches) {
        t.unstable += b.unstable;
        t.points += static_cast<int>(b.points.size());
    }
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    const double Tc[] = {m.mdl1[0]->Tcrit(), m.mdl1[1]->Tcrit()};
    const double low = 0.31 * std::min(Tc[0], Tc[1]), high = 1.9 * std::max(Tc[0], Tc[1]);
    for (int k = 0; k < kStates; ++k) {
        const double u = uniform(random), x = 0.003 + 0.994 * uniform(random);
        const double p = at_T ? std::pow(10, -2.5 + 5.4 * u) : value,
                     T = at_T ? value : low * std::pow(high / low, u);
        double margin = 0;
        const bool two = inside(d, at_T, std::log(at_T ? p : T), x, margin);
        if (margin < kNear) continue;
        Vector<double> z(2);
        z[0] = x;
        z[1] = 1 - x;
        ++t.states;
        try {
            if (two != corvane::stability(m, p, T, z).stable) continue;
        } catch (ThException const&) {
            continue;  // no density there
        }
        ++t.wrong;
        if (list)
            std::printf("wrong: %s+%s T = %g, p = %g, x = %g: %s\n", m.mdl1[0]->name(),
                        m.mdl1[1]->name(), T, p, x, two ? "one phase" : "two phases");
    }
}
}  // namespace

int main(int argc, char** argv) {
    char const *eos = argc > 1 ? argv[1] : "PR", *mth = argc > 2 ? argv[2] : "vdW1";
    const bool list = argc > 3;
    std::mt19937 random(1);
    Tally t;
    for (auto i = std::begin(kNames); i != std::end(kNames); ++i)
        for (auto j = std::begin(kNames); j != i; ++j) try {
                const Mixture m = make(eos, mth, *i, *j);
                ++t.pairs;
                const double Tc[] = {m->mdl1[0]->Tcrit(), m->mdl1[1]->Tcrit()};
                const double low = 0.45 * std::min(Tc[0], Tc[1]),
                             high = 1.2 * std::max(Tc[0], Tc[1]);
                for (int k = 0; k < kTemperatures; ++k)
                    diagram(*m, true, low * std::pow(high / low, (k + 0.3) / kTemperatures), random,
                            list, t);
                for (int k = 0; k < kPressures; ++k)
                    diagram(*m, false, std::pow(10, -1.5 + 4.0 * k / kPressures), random, list, t);
                for (auto const& line : corvane::three_phase_lines(*m)) {
                    ++t.three;
                    end(t, line.begin);
                    end(t, line.end);
                    if (list && (line.begin > corvane::PhaseLineEnd::trace ||
                                 line.end > corvane::PhaseLineEnd::trace))
                        std::printf("three phases: %s+%s %g to %g K\n", *i, *j,
                                    line.points.front().T, line.points.back().T);
                }
                for (auto const& line : corvane::azeotropic_lines(*m)) {
                    ++t.azeotropic;
                    end(t, line.begin);
                    end(t, line.end);
                    if (list && (line.begin > corvane::PhaseLineEnd::trace ||
                                 line.end > corvane::PhaseLineEnd::trace))
                        std::printf("azeotropes: %s+%s %g to %g K\n", *i, *j, line.points.front().T,
                                    line.points.back().T);
                }
            } catch (ThException const&) {  // no parameters
            } catch (corvane::EquilibriumFailure const& f) {
                std::printf("%s+%s: %s\n", *i, *j, f.what());
            }
    std::printf(
        "%s+%s: %d pairs, %d diagrams of %d points, %d incomplete, %d points unstable; %d "
        "states, %d on the wrong side; lines of three phases %d, azeotropic %d, of their "
        "ends %d lost, %d without certificate\n",
        eos, mth, t.pairs, t.diagrams, t.points, t.incomplete, t.unstable, t.states, t.wrong,
        t.three, t.azeotropic, t.lost, t.uncertified);
}
