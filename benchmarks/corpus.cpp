// Bubble and dew points of six binaries, cold, over compositions and temperatures: how many are
// solved, have no solution, are given up, or are wrong without saying so. Every result is checked
// through the published slots of the model, and by a scan of the tangent-plane distance over the
// composition that shares no code with the solver.
#include <corvane/corvane.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {
using Mixture = std::unique_ptr<ModelN, corvane::Detach>;
using Clock = std::chrono::steady_clock;
using corvane::Saturated;

Mixture make(char const* eos, char const* first, char const* second) {
    Mixture m(attachN(eos, "vdW1"));
    m->alloc(2, eos);
    m->mdl1[0]->name(first);
    m->mdl1[1]->name(second);
    for (int i = 0; i < 2; ++i) m->mdl1[i]->id(1);
    m->id(0, 1, 1);
    corvane::load_estimating(*m, eos, "vdW1");
    return m;
}

Vector<double> binary(double x) {
    Vector<double> z(2);
    z[0] = x;
    z[1] = 1 - x;
    return z;
}

double mass(ModelN const& m, Vector<double> const& rho_i) {
    return rho_i[0] * m.mdl1[0]->M() + rho_i[1] * m.mdl1[1]->M();
}

struct Trial {
    double tpd, mass;
};
/// Smallest tangent-plane distance to potentials mu over a grid of compositions.
Trial distance(ModelN const& m, double p, double T, double const* mu) {
    Trial best{1e9, 0};
    for (int k = -20; k < 220; ++k) {  // dense near both ends
        const double w = k < 0     ? std::pow(10.0, k / 3.0) * 0.005
                         : k > 200 ? 1 - std::pow(10.0, (200 - k) / 3.0) * 0.005
                                   : std::min(0.995, std::max(0.005, k / 200.0));
        double r[2] = {0, 0}, f[2];
        const int roots = m.vcalc(p, T, binary(w), 1, r[0], r[1]);
        for (int i = 0; i < (roots > 1 ? 2 : roots); ++i) {
            const Vector<double> v = binary(w) * r[i];
            m.derivatives()->potentials(v, T, f, nullptr, nullptr);
            double tpd = 0;
            for (int j = 0; j < 2; ++j) tpd += binary(w)[j] * (f[j] + std::log(v[j]) - mu[j]);
            if (tpd < best.tpd) best = {tpd, mass(m, v)};
        }
    }
    return best;
}

/// What is wrong with a result; null if nothing.
char const* fault(ModelN const& m, Saturated kind, double T, double x,
                  corvane::SaturationPoint const& q) {
    const Vector<double> a = q.given.x * q.given.rho, b = q.incipient.x * q.incipient.rho;
    if (std::fabs(q.given.x[0] - x) > 1e-12 || q.T != T) return "other state";
    double mu[2], apart = 0;
    for (int i = 0; i < 2; ++i) {
        mu[i] = m.my(a, T, i);
        if (!(std::fabs(mu[i] - m.my(b, T, i)) <= 1e-9)) return "potentials";
        apart = std::max(apart, std::fabs(std::log(a[i] / b[i])));
    }
    for (Vector<double> const* v : {&a, &b}) {
        const double rounding = 2e-15 * R * T * v->sum() * m.pV(v->sum(), T, *v * (1 / v->sum()));
        if (!(std::fabs(m.Z(*v, T) * R * T * v->sum() - q.p) <= 1e-9 * q.p + rounding))
            return "pressure";
    }
    if (apart < 1e-4) return "trivial";
    if ((mass(m, b) < mass(m, a)) != (kind == Saturated::bubble)) return "kind";
    return distance(m, q.p, T, mu).tpd < -1e-7 ? "unstable" : nullptr;
}

/// A boundary of the kind asked for that a scan over p finds where the solver says there is none;
/// 0 if there is none. Only such boundaries count as the scan itself resolves: 8 % in p.
double overlooked(ModelN const& m, Saturated kind, double T, double x) {
    bool stable = true;
    double last_mass = 0;
    Trial last{};
    for (double p = 1e-7; p < 1000; p *= 1.08) {
        double r[2] = {0, 0}, mu[2];
        if (m.vcalc(p, T, binary(x), -1, r[0], r[1]) < 1) continue;
        const Vector<double> v = binary(x) * r[0];
        for (int j = 0; j < 2; ++j) mu[j] = m.my(v, T, j);
        const Trial t = distance(m, p, T, mu);
        const bool now = t.tpd > -1e-9;
        if (now != stable) {
            // both phases on the unstable side
            if (((now ? last : t).mass < (now ? last_mass : mass(m, v))) ==
                (kind == Saturated::bubble))
                return p;
        }
        stable = now;
        last_mass = mass(m, v);
        last = t;
    }
    return 0;
}
}  // namespace

int main(int argc, char** argv) {
    const bool verbose = argc > 1 && !std::strcmp(argv[1], "-v");
    const bool scan = argc > 1 && !std::strcmp(argv[1], "--scan");  // check the refusals, too
    static char const* const pairs[][2] = {
        {"methane", "ethane"},  {"methane", "decane"}, {"carbon_dioxide", "methane"},
        {"nitrogen", "ethane"}, {"water", "methane"},  {"carbon_dioxide", "water"}};
    std::printf("%-36s%8s%10s%9s%8s%12s%12s\n", "", "solved", "no such", "gave up", "wrong",
                "mean us", "worst us");
    int all[4] = {};
    for (char const* eos : {"PR", "SRK"})
        for (auto const& pair : pairs)
            for (Saturated kind : {Saturated::bubble, Saturated::dew}) {
                const Mixture m = make(eos, pair[0], pair[1]);
                int count[4] = {};
                double sum = 0, worst = 0;
                for (int ix = 0; ix < 10; ++ix)
                    for (int iT = 0; iT < 12; ++iT) {
                        const double x = 0.05 + 0.1 * ix, f = 0.5 + 0.43 * iT / 11;
                        const double T =
                            f * (x * m->mdl1[0]->Tcrit() + (1 - x) * m->mdl1[1]->Tcrit());
                        const auto begin = Clock::now();
                        auto took = [&] {
                            const double us =
                                std::chrono::duration<double, std::micro>(Clock::now() - begin)
                                    .count();
                            sum += us;
                            worst = std::max(worst, us);
                        };
                        try {
                            const auto q = corvane::saturation_T(*m, kind, T, binary(x));
                            took();
                            char const* wrong = fault(*m, kind, T, x, q);
                            ++count[wrong ? 3 : 0];
                            if (wrong)
                                std::printf(
                                    "  wrong (%s): %s+%s x=%.2f T=%.3f p=%.6g rho %.4g %.4g y "
                                    "%.6g; %s\n",
                                    wrong, pair[0], pair[1], x, T, q.p, q.given.rho,
                                    q.incipient.rho, q.incipient.x[0],
                                    q.certificate.line().c_str());
                        } catch (corvane::EquilibriumFailure const& e) {
                            took();
                            const bool none =
                                e.kind() == corvane::EquilibriumFailure::Kind::no_solution;
                            ++count[none ? 1 : 2];
                            const double at = scan && none ? overlooked(*m, kind, T, x) : 0;
                            if (at > 0) {
                                --count[1];
                                ++count[3];
                                std::printf("  overlooked near p=%.6g: %s\n", at, e.what());
                            }
                            if (verbose || !none) std::printf("  %s\n", e.what());
                        }
                    }
                char name[80];
                std::snprintf(name, sizeof name, "%s %s/%s %s", eos, pair[0], pair[1],
                              kind == Saturated::bubble ? "bubble" : "dew");
                std::printf("%-36s%8d%10d%9d%8d%12.1f%12.1f\n", name, count[0], count[1], count[2],
                            count[3], sum / 120, worst);
                for (int k = 0; k < 4; ++k) all[k] += count[k];
            }
    std::printf("%-36s%8d%10d%9d%8d\n", "all", all[0], all[1], all[2], all[3]);
    return all[3] ? 1 : 0;
}
