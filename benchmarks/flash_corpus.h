// Random flashes of mixtures of three to seven components, with a search for phases below the
// tangent plane that shares no code with the solver.
#pragma once

#include "mixtures.h"

#include <corvane/corvane.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <vector>

class FlashCorpus {
  public:
    bool verbose = false;
    unsigned seed = 1;
    int states = 1000;  ///< of every mixture
    int judge = 0;      ///< every so many answers are searched
    double limit = 120; ///< seconds of one mixture

    static std::vector<std::vector<std::string>> const& mixtures() {
        static const std::vector<std::vector<std::string>> all = {
            {"methane", "ethane", "propane"},
            {"nitrogen", "methane", "ethane"},
            {"methane", "ethane", "propane", "butane", "nitrogen", "carbon_dioxide"},
            {"methane", "nitrogen", "carbon_dioxide", "ethane", "propane", "butane", "pentane"},
            {"nitrogen", "methane", "ethane", "butane", "pentane"},
            {"methane", "ethane", "propane", "hydrogen_sulfide", "carbon_dioxide", "water"},
            {"methane", "ethane", "propane", "butane", "carbon_dioxide", "nitrogen", "helium"},
            {"decane", "mercury", "methane"},
            {"helium", "methane", "decane"},
            {"hydrogen", "methane", "decane"},
            {"hydrogen", "water", "decane"},
            {"carbon_dioxide", "methane", "hexadecane"},
            {"carbon_dioxide", "water", "decane"},
            {"methanol", "water", "hexane"},
            {"ethanol", "water", "benzene"},
            {"methanol", "carbon_dioxide", "decane"},
            {"carbon_dioxide", "hydrogen_sulfide", "water"},
            {"methane", "butane", "decane"},
            {"methane", "carbon_dioxide", "hydrogen_sulfide"},
            {"mercury", "water", "benzene"},
            {"methane", "water", "mercury", "decane"},
            {"carbon_dioxide", "ethane", "eicosane"},
            {"ammonia", "water", "methane"},
            {"nitrogen", "oxygen", "argon"},
            {"hydrogen", "carbon_monoxide", "methane", "water"}};
        return all;
    }

    /// Prints a row per mixture and one of all. True if nothing was wrong.
    bool run(char const* eos, char const* mth, int set) {
        std::printf("%-48s%9s%9s%9s%9s%9s%9s%9s%9s%11s%11s\n", "", "asked", "one", "two", "more",
                    "gave up", "density", "searched", "wrong", "mean us", "worst us");
        Row all;
        for (std::size_t k = 0; k < mixtures().size(); ++k) {
            auto const& names = mixtures()[k];
            Mixture m;
            try {
                m = mixture_of(names, eos, mth, set);
            } catch (ThException const&) {  // no parameters
                continue;
            }
            std::string name = eos;
            for (auto const& n : names) name += (&n == &names[0] ? ' ' : '/') + n;
            all.add(mixture(*m, names, static_cast<unsigned>(k)).print(name.substr(0, 47)));
        }
        all.print(std::string(eos) + " all");
        return all.wrong == 0;
    }

  private:
    using Clock = std::chrono::steady_clock;
    struct Row {
        long asked = 0, one = 0, two = 0, more = 0, gave_up = 0, density = 0, judged = 0, wrong = 0;
        double us = 0, worst = 0;
        void add(Row const& r) {
            asked += r.asked, one += r.one, two += r.two, more += r.more, gave_up += r.gave_up;
            density += r.density, judged += r.judged, wrong += r.wrong, us += r.us;
            worst = std::max(worst, r.worst);
        }
        Row const& print(std::string const& name) const {
            std::printf("%-48s%9ld%9ld%9ld%9ld%9ld%9ld%9ld%9ld%11.1f%11.1f\n", name.c_str(), asked,
                        one, two, more, gave_up, density, judged, wrong,
                        us / static_cast<double>(std::max(1L, asked)), worst);
            std::fflush(stdout);
            return *this;
        }
    };

    double uniform() { return std::uniform_real_distribution<double>(0, 1)(random_); }

    Row mixture(ModelN const& m, std::vector<std::string> const& names, unsigned at) {
        const int n = static_cast<int>(names.size());
        const auto begin = Clock::now();
        Row row;
        random_.seed(1000 * seed + at);
        for (int s = 0; s < states; ++s) {
            Vector<double> z(n);
            double sum = 0, Tc = 0;
            for (int i = 0; i < n; ++i) {  // uniform, skewed, logarithmic to 1e-8
                const double u = uniform(), e = -std::log(u + 1e-300);
                sum += z[i] = s % 3 == 0 ? e : s % 3 == 1 ? e * e * e : std::pow(10, -8 * u);
            }
            for (int i = 0; i < n; ++i) Tc += (z[i] /= sum) * m.mdl1[i]->Tcrit();
            const double T = std::max(30.0, Tc * (0.4 + 0.85 * uniform())),
                         p = std::pow(10, -2 + 3.7 * uniform());
            auto show = [&](char const* what, std::string const& why) {
                std::printf("  %s: corvane flash %s+%s", what, m.eos, m.mth);
                int rest = 0;  // the largest is what the others leave
                for (int i = 1; i < n; ++i)
                    if (z[i] > z[rest]) rest = i;
                for (int i = 0; i < n; ++i) {
                    std::printf(" %s", names[static_cast<unsigned>(i)].c_str());
                    if (i != rest) std::printf("=%.17g", z[i]);
                }
                std::printf(" --T %.17g --p %.17g # %s\n", T, p, why.c_str());
            };
            ++row.asked;
            const auto since = Clock::now();
            auto took = [&] {
                const double us = std::chrono::duration<double, std::micro>(Clock::now() - since).count();
                row.us += us;
                row.worst = std::max(row.worst, us);
            };
            try {
                const auto q = corvane::flash_pT(m, p, T, z);
                took();
                ++(q.phases.size() == 1 ? row.one : q.phases.size() == 2 ? row.two : row.more);
                std::vector<double> plane;
                std::string fault = contradiction(m, T, z, q, plane);
                if (fault.empty() && judge > 0 && s % judge == 0) {
                    ++row.judged;
                    const double d = lowest(m, p, T, q.phases[0].x, plane);
                    if (d < -1e-7) fault = "tangent-plane distance " + std::to_string(d);
                }
                if (fault.empty()) continue;
                ++row.wrong;
                show("wrong", fault);
            } catch (corvane::EquilibriumFailure const& e) {
                took();
                const bool no_density = !densities(m, p, T);
                ++(no_density ? row.density : row.gave_up);
                if (verbose || !no_density) show("gave up", e.what());
            } catch (ThException const& e) {
                took();
                ++(e.number == th_no_density ? row.density : row.wrong);
                if (verbose || e.number != th_no_density)
                    show("thrown", "code " + std::to_string(e.number));
            }
            if (std::chrono::duration<double>(Clock::now() - begin).count() > limit) break;
        }
        return row;
    }

    /// Has the model a density at all where a test of stability must look: nearly pure, and half?
    static bool densities(ModelN const& m, double p, double T) {
        const int n = m.mdl1.size();
        for (double w : {0.5, 0.9, 0.9999, 1 - 1e-8})
            for (int i = 0; i < n; ++i) {
                Vector<double> x(n);
                double r[2] = {0, 0};
                for (int j = 0; j < n; ++j) x[j] = j == i ? w : (1 - w) / (n - 1);
                if (m.vcalc(p, T, x, 1, r[0], r[1]) == 0) return false;
            }
        return true;
    }
    static std::vector<double> potentials(ModelN const& m, double T, Vector<double> const& x,
                                          double rho) {
        std::vector<double> mu;
        const Vector<double> rho_i = x * rho;
        for (int i = 0; i < x.size(); ++i) mu.push_back(m.my(rho_i, T, i));
        return mu;
    }
    /// What the published slots say against potentials, pressures or balance; plane: the lowest
    /// potentials, those of a component that a phase does not have set aside.
    static std::string contradiction(ModelN const& m, double T, Vector<double> const& z,
                                     corvane::FlashResult const& q, std::vector<double>& plane) {
        const int n = z.size();
        std::vector<double> most;
        Vector<double> balance = z * -1.0;
        for (std::size_t k = 0; k < q.phases.size(); ++k) {
            auto const& phase = q.phases[k];
            const std::vector<double> mu = potentials(m, T, phase.x, phase.rho);
            if (k == 0) plane.assign(mu.size(), 1e300), most.assign(mu.size(), -1e300);
            for (int i = 0; i < n; ++i) {
                const auto at = static_cast<unsigned>(i);
                balance[i] += q.fraction[k] * phase.x[i];
                if (!(phase.x[i] > 0)) continue;
                plane[at] = std::min(plane[at], mu[at]);
                most[at] = std::max(most[at], mu[at]);
            }
        }
        for (int i = 0; i < n; ++i) {
            const auto at = static_cast<unsigned>(i);
            if (!(most[at] - plane[at] < 1e-8 * (1 + std::fabs(plane[at]) / 100))) return "potentials";
            if (!(std::fabs(balance[i]) < 1e-12)) return "balance";
        }
        return {};
    }
    static double distance(std::vector<double> const& mu, std::vector<double> const& plane,
                           Vector<double> const& x) {
        double d = 0;
        for (int i = 0; i < x.size(); ++i)
            d += x[i] * (mu[static_cast<unsigned>(i)] - plane[static_cast<unsigned>(i)]);
        return d;
    }
    /// Lowest tangent-plane distance of 400 random compositions along both roots (uniform, skewed,
    /// of any power of ten, around the phase, nearly pure) and of descents by substitution from the
    /// twelve lowest that differ.
    double lowest(ModelN const& m, double p, double T, Vector<double> const& phase,
                  std::vector<double> const& plane) {
        const int n = phase.size();
        struct Point {
            double d;
            Vector<double> x;
            int root;
        };
        std::vector<Point> all;
        double r[2];
        auto roots = [&](Vector<double> const& x) {
            r[0] = r[1] = 0;
            m.vcalc(p, T, x, 1, r[0], r[1]);
            return r[1] > 0 && r[1] != r[0] ? 2 : r[0] > 0 ? 1 : 0;
        };
        for (int s = 0; s < 400; ++s) {
            Vector<double> x(n);
            double sum = 0;
            for (int i = 0; i < n; ++i) {
                const double u = uniform(), e = -std::log(u + 1e-300);
                x[i] = s < n        ? (i == s ? 1 : 1e-9)
                       : s % 4 == 0 ? e
                       : s % 4 == 1 ? std::pow(e, 4)
                       : s % 4 == 2 ? std::exp(-25 * u)
                                    : phase[i] * std::exp(12 * (u - 0.5));
                sum += x[i] += 1e-120;
            }
            x = x * (1 / sum);
            const int count = roots(x);
            for (int k = 0; k < count; ++k) {
                const double d = distance(potentials(m, T, x, r[k]), plane, x);
                if (std::isfinite(d)) all.push_back({d, x, k});
            }
        }
        std::sort(all.begin(), all.end(), [](Point const& a, Point const& b) { return a.d < b.d; });
        double best = 0;
        std::vector<Point> starts;
        for (Point const& a : all) {
            best = std::min(best, a.d);
            if (starts.size() == 12) break;
            if (std::none_of(starts.begin(), starts.end(), [&](Point const& b) {
                    double apart = 0;
                    for (int i = 0; i < n; ++i) apart = std::max(apart, std::fabs(a.x[i] - b.x[i]));
                    return apart < 0.07 && a.root == b.root;
                }))
                starts.push_back(a);
        }
        for (Point& s : starts)
            for (int it = 0; it < 80; ++it) {
                const int count = roots(s.x);
                if (count == 0) break;
                const auto mu = potentials(m, T, s.x, r[count > 1 ? s.root : 0]);
                best = std::min(best, distance(mu, plane, s.x));
                double sum = 0, change = 0;
                Vector<double> w(n);
                for (int i = 0; i < n; ++i) {
                    const auto at = static_cast<unsigned>(i);
                    sum += w[i] = s.x[i] * std::exp(std::clamp(plane[at] - mu[at], -20.0, 20.0));
                }
                for (int i = 0; i < n; ++i) {
                    w[i] = std::max(w[i] / sum, 1e-120);
                    change = std::max(change, std::fabs(w[i] - s.x[i]));
                }
                s.x = w;
                if (change < 1e-9) break;
            }
        return best;
    }

    std::mt19937_64 random_;
};
