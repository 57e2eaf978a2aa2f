// Bounds that azeotropes and three phases state, against Newton's method with 113 bits on equations
// written a second time.
#include "support/mixtures.h"

#include <benchmarks/judge/cubic.h>
#include <benchmarks/judge/pcsaft.h>
#include <corvane/corvane.h>

#include <gtest/gtest.h>

namespace {
using judge::Cubic;
using judge::Quad;
using judge::Values;

/// Phases of a binary in equilibrium at T: equal potentials and pressures, and for two phases equal
/// mole fractions. Newton's method in ln rho_i with differences of 1e-15, which leave 1e-15 a step.
template <class Equation>
class Truth {
  public:
    Truth(Equation const& equation, double T) : at_(equation, Quad(T)), T_(T) {}
    bool solve(std::vector<corvane::PhaseRecord> const& from) {
        count_ = static_cast<int>(from.size());
        int k = 0;
        for (auto const& q : from)
            for (int i : {0, 1}) y_[k++] = log(Quad(q.rho) * Quad(q.x[i]));
        for (int it = 0; it < 12; ++it) {
            Quad f[kMost], g[kMost], J[kMost][kMost];
            const Quad step = 1e-15;
            equations(f);
            for (int j = 0; j < k; ++j) {
                const Quad keep = y_[j];
                y_[j] += step;
                equations(g);
                y_[j] = keep;
                for (int i = 0; i < k; ++i) J[i][j] = (g[i] - f[i]) / step;
            }
            for (int i = 0; i < k; ++i) g[i] = -f[i];
            if (!judge::eliminate(J, g, k)) return false;
            Quad size = 0;
            for (int i = 0; i < k; ++i) {
                y_[i] += g[i];
                size = std::max(size, Quad(abs(g[i])));
            }
            if (size < 1e-22) return equations(f), true;
        }
        return false;
    }
    double p() const { return double(P_ * Quad(R) * T_); }
    double rho(int k) const { return double(exp(y_[2 * k]) + exp(y_[2 * k + 1])); }
    double x(int k, int i) const { return double(exp(y_[2 * k + i])) / rho(k); }

  private:
    static constexpr int kMost = 6;
    void equations(Quad* f) {
        Values<Quad> m[3], x[3];
        Quad P[3];
        for (int k = 0; k < count_; ++k) {
            const Quad a = exp(y_[2 * k]), b = exp(y_[2 * k + 1]);
            x[k] = {a / (a + b), b / (a + b), 0};
            P[k] = at_.state(a + b, x[k].data(), m[k].data());
            for (int i : {0, 1}) m[k][i] += log(x[k][i]);
        }
        P_ = P[count_ - 1];
        int row = 0;
        for (int k = 1; k < count_; ++k) {
            for (int i : {0, 1}) f[row++] = m[k][i] - m[0][i];
            f[row++] = (P[k] - P[0]) / P_;
        }
        if (count_ == 2) f[row++] = x[1][0] - x[0][0];
    }

    typename Equation::template At<Quad> at_;
    double T_;
    int count_ = 0;
    Quad y_[kMost], P_ = 0;
};

/// a, b: the neighbours on a line, whose T is one of the unknowns and is off by its own bound; none
/// where T was given.
template <class Equation, class Point>
void within(Equation const& equation, Point const& q, Point const* a = nullptr,
            Point const* b = nullptr) {
    SCOPED_TRACE(testing::Message() << q.T << " K");
    corvane::Certificate const& c = q.certificate;
    Truth<Equation> truth(equation, q.T);
    ASSERT_TRUE(truth.solve(c.phases));
    ASSERT_TRUE(c.bounded());
    EXPECT_LT(c.value_error, 1e-8);
    const double run = a ? std::fabs(std::log(b->T / a->T)) / c.value_error : 1;
    const auto moved = [&](auto of) { return a ? std::fabs(of(*b) - of(*a)) / run : 0.0; };
    EXPECT_LE(std::fabs(q.p / truth.p() - 1),
              c.value_error + moved([](Point const& s) { return std::log(s.p); }));
    for (int k = 0; k < static_cast<int>(c.phases.size()); ++k) {
        const auto phase = [k](Point const& s) { return s.certificate.phases[k]; };
        EXPECT_LE(std::fabs(c.phases[k].rho / truth.rho(k) - 1),
                  c.rho_error + moved([&](Point const& s) { return std::log(phase(s).rho); }));
        for (int i : {0, 1})
            EXPECT_LE(std::fabs(c.phases[k].x[i] - truth.x(k, i)),
                      c.x_error + moved([&](Point const& s) { return phase(s).x[i]; }));
    }
}

template <class Equation, class Line>
int line_within(Equation const& equation, Line const& line) {
    int bounded = 0;
    for (std::size_t k = 1; k + 1 < line.points.size(); ++k) {
        auto const& q = line.points[k];
        if (!q.certificate.bounded()) continue;
        ++bounded;
        within(equation, q, &line.points[k - 1], &line.points[k + 1]);
    }
    EXPECT_GE(bounded, static_cast<int>(line.points.size()) - 3);
    return bounded;
}

TEST(JudgeLines, AzeotropesLieWithinTheirBounds) {
    int points = 0;
    for (auto const& [eos, mth, a, b] :
         {std::tuple{"PR", "vdW1", "carbon_dioxide", "ethane"}, {"SRK", "vdW1", "acetone", "hexane"}}) {
        const Mixture m = estimated_mixture(eos, mth, {a, b}, 1);
        const Cubic cubic(*m);
        for (auto const& line : corvane::azeotropic_lines(*m)) points += line_within(cubic, line);
    }
    EXPECT_GT(points, 40);
    const Mixture m = estimated_mixture("PR", "vdW1", {"carbon_dioxide", "ethane"}, 1);
    const auto q = corvane::azeotrope_T(*m, 260);
    within(Cubic(*m), q);
}

TEST(JudgeLines, ThreePhasesLieWithinTheirBounds) {
    int points = 0;
    for (auto const& [eos, a, b] : {std::tuple{"PR", "carbon_dioxide", "water"},
                                    {"SRK", "methane", "hexane"}, {"PR", "hydrogen_sulfide", "water"}}) {
        const Mixture m = estimated_mixture(eos, "vdW1", {a, b}, 1);
        const Cubic cubic(*m);
        for (auto const& line : corvane::three_phase_lines(*m)) points += line_within(cubic, line);
    }
    EXPECT_GT(points, 100);
    const Mixture m = estimated_mixture("PCSAFT", "LB", {"methane", "hexane"}, -1);
    const auto q = corvane::three_phase_T(*m, 190);
    within(judge::PcSaft(*m), q);
}

/// The fluid beside the pure solid of a component at (p, T), by Newton's method in ln rho_i: the Gibbs
/// energy of the solid less that of the pure fluid is the library's, everything else is not.
struct Dissolved {
    Dissolved(ModelN const& model, int solid, double p, double T, corvane::SolidFluidPoint const& from)
        : at(Cubic(model), Quad(T)), P(Quad(p) / (Quad(R) * Quad(T))) {
        level = gap(model, solid, p, T);
        y[0] = log(Quad(from.rho) * Quad(from.x[0]));
        y[1] = log(Quad(from.rho) * Quad(from.x[1]));
        for (int it = 0; it < 12; ++it) {
            Quad f[2], g[2], J[2][2];
            equations(solid, f);
            for (int j : {0, 1}) {
                const Quad keep = y[j], step = 1e-15;
                y[j] += step;
                equations(solid, g);
                y[j] = keep;
                for (int i : {0, 1}) J[i][j] = (g[i] - f[i]) / step;
            }
            for (int i : {0, 1}) g[i] = -f[i];
            if (!judge::eliminate(J, g, 2)) return;
            for (int i : {0, 1}) y[i] += g[i];
            solved = abs(g[0]) < 1e-22 && abs(g[1]) < 1e-22;
        }
    }
    /// Potential of the pure solid.
    Quad gap(ModelN const& model, int i, double p, double T) {
        int form = 0;
        double rho = 0.0;
        Model1 const& c = *model.mdl1[i];
        const Quad solid = c.solid.Ge(p, T, form, rho), fluid = c.Ge(p, T, 2, rho);
        Quad pure = log(Quad(rho)), x[2] = {i == 0, i == 1}, m[2], step = 1e-15;
        for (int it = 0; it < 8; ++it) {
            const Quad here = at.state(exp(pure), x, m);
            pure -= (here / P - 1) * step / (at.state(exp(pure + step), x, m) / P - here / P);
        }
        at.state(exp(pure), x, m);
        return m[i] + solid - fluid;
    }
    Quad potential(int i) {
        const Quad rho = exp(y[0]) + exp(y[1]);
        Quad x[2] = {exp(y[0]) / rho, exp(y[1]) / rho}, m[2];
        at.state(rho, x, m);
        return m[i] + log(x[i]);
    }
    void equations(int solid, Quad* f) {
        const Quad rho = exp(y[0]) + exp(y[1]);
        Quad x[2] = {exp(y[0]) / rho, exp(y[1]) / rho}, m[2];
        f[1] = at.state(rho, x, m) / P - 1;
        f[0] = m[solid] + log(x[solid]) - level;
    }
    double rho() const { return double(exp(y[0]) + exp(y[1])); }
    double x(int i) const { return double(exp(y[i])) / rho(); }

    Cubic::At<Quad> at;
    Quad P, level, y[2];
    bool solved = false;
};

TEST(JudgeLines, SolubilitiesLieWithinTheirBounds) {
    int points = 0;
    for (auto const& [a, b, kij] :
         {std::tuple{"methane", "carbon_dioxide", 0.1},
                                    {"carbon_dioxide", "methane", 0.09},
                                    {"hydrogen_sulfide", "carbon_dioxide", 0.1}}) {
        const Mixture m = estimated_mixture("PR", "vdW1", {a, b});
        m->param(0, 0, 1, kij);
        for (int i : {0, 1}) m->mdl1[i]->solid.load();
        for (double p : {0.05, 1.0, 20.0})
            for (int solid : {0, 1})
                for (auto const& line : corvane::solid_fluid_isobar(*m, solid, p))
                    for (std::size_t k = 1; k + 1 < line.points.size(); k += 4) {
                        const double T = line.points[k].T;
                        const auto q = corvane::solubility(*m, solid, p, T);
                        SCOPED_TRACE(testing::Message() << a << ' ' << b << ' ' << p << ' ' << T);
                        Dissolved truth(*m, solid, p, T, q);
                        ASSERT_TRUE(truth.solved);
                        corvane::Certificate const& c = q.certificate;
                        ASSERT_TRUE(c.bounded());
                        EXPECT_EQ(c.value_error, 0);
                        EXPECT_LT(c.x_error, 1e-9);
                        EXPECT_LE(std::fabs(q.rho / truth.rho() - 1), c.rho_error);
                        for (int i : {0, 1})
                            EXPECT_LE(std::fabs(q.x[i] - truth.x(i)), c.x_error);
                        ++points;
                    }
        // On either side of the melting point, by its bound, the pure solid melts or freezes.
        for (auto const& line : corvane::solid_fluid_isobar(*m, 0, 1.0)) {
            auto const& q = line.points.front();
            if (line.begin != corvane::SolidFluidEnd::pure) continue;
            const double off = q.certificate.value_error;
            ASSERT_TRUE(off < 1e-11);
            double excess[2];
            for (int k : {0, 1}) {
                int form = 0;
                double rho = 0;
                const double T = q.T * (1 + (k ? off : -off));
                excess[k] = m->mdl1[0]->solid.Ge(1.0, T, form, rho) - m->mdl1[0]->Ge(1.0, T, 2, rho);
                EXPECT_NEAR(rho / q.rho, 1, q.certificate.rho_error + 1e-2 * off);
            }
            EXPECT_LT(excess[0] * excess[1], 0) << a;
        }
        // On either side of the eutectic, by its bound, the other component melts or freezes.
        const auto e = corvane::eutectic(*m, 1.0);
        const double off = e.certificate.value_error;
        ASSERT_TRUE(off < 1e-10);
        double excess[2];
        for (int k : {0, 1}) {
            const double T = e.T * (1 + (k ? off : -off));
            Dissolved fluid(*m, 0, 1.0, T, e);
            ASSERT_TRUE(fluid.solved);
            excess[k] = double(fluid.potential(1) - fluid.gap(*m, 1, 1.0, T));
        }
        EXPECT_LT(excess[0] * excess[1], 0) << a << ' ' << b;
    }
    EXPECT_GT(points, 50);
}
}  // namespace
