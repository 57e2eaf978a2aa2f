// The checks for authors of equations find what is wrong: right models with one fault each.
#include "support/mixtures.h"

#include <corvane/check/check.h>
#include <corvane/mixture/isotherm.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/pure/many_states.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace {
/// A right model with one fault.
class Faulty final : public Model1,
                     public corvane::Deriv1,
                     public corvane::ManyStates1,
                     public corvane::ManyDensities1 {
  public:
    Faulty(Model1& right, int fault) : m_(right), fault_(fault), kept_(right.Ts()) {
        eos_ = "PR";
        mpar_ = right.mpar();
        madj_ = right.madj();
        Tcrit(right.Tcrit());
        pcrit(right.pcrit() * (fault == 1 ? 1.001 : 1.0));
        vcrit(right.vcrit());
        derivatives(this);
    }
    using Model1::ppar;
    double* ppar(int i) override { return m_.ppar(i); }
    void par_in(FILE* f, int mode) override {
        m_.par_in(f, mode);
        kept_ = m_.Ts();
    }
    void par_out(FILE* f) const override {
        if (fault_ != 2) return m_.par_out(f);
        for (int i = 0; i < 4; ++i)
            std::fprintf(f, "%s:\t%.6g\n", std::array{"M", "Ts", "vs", "omega"}[static_cast<unsigned>(i)], param(i));
    }
    double Ar(double rho, double T) const override {
        if (fault_ == 3 && m_.Ts() != kept_) return 0.1;  // an old value
        if (fault_ == 22 && m_.Ts() != kept_) return m_.Ar(rho, T) + 1e-9;
        if (fault_ == 12)
            return m_.Ar(rho, T) * (1 + 1e-10 * std::sin(1e15 * rho));  // as of a loose iteration
        return m_.Ar(rho, T) + (fault_ == 4    ? 1e-9 * rho
                                : fault_ == 13 ? 1e-3 * std::abs(rho)
                                               : 0.0);
    }
    double Z(double rho, double T) const override {
        return m_.Z(rho, T) + (fault_ == 13 ? 1e-3 * std::abs(rho) : 0.0);
    }
    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        const int n = m_.vcalc(p, T, phase, rho1, rho2);
        if (fault_ == 5 && n == 3) return rho1 = std::max(rho1, rho2), 1;
        if (fault_ == 6 && n == 3) rho1 *= 1 + 1e-9;
        if (fault_ == 7 && n == 0) rho1 = 0.0;
        if (fault_ == 21 && n == 3 && m_.Ts() != kept_) return rho1 = std::max(rho1, rho2), 1;
        return n;
    }
    double xinit(double p, double T, int phase) const override { return m_.xinit(p, T, phase); }
    void densities(int count, double const* p, double const* T, int phase,
                   double* rho) const override {
        for (int k = 0; k < count; ++k) {
            double other = rho[k] = 0.0;
            if (vcalc(p[k], T[k], phase, rho[k], other) == 0 || (fault_ == 19 && k == 5))
                rho[k] = std::nan("");
        }
    }
    void second(int count, double const* rho, double const* T, double* const* d) const override {
        constexpr int element[] = {0, 1, 2, 3, 4, 6};
        for (int i = 0; i < count; ++i) {
            double all[9];
            deriv(rho[i], T[i], 2, 2, all);
            for (int k = 0; k < 6; ++k) d[k][i] = all[element[k]];
            if (fault_ == 20 && i == 3) d[4][i] *= 1 + 1e-9;
        }
    }
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        if (fault_ == 17 && nT == 3) return 1;  // and nothing is written
        if (fault_ == 18 && nrho == 1 && nT == 2) d[6] = 0.0;  // which only the check asks for
        const int known = m_.derivatives()->deriv(rho, T, nrho, nT, d);
        if (known && nT == 2 && fault_ == 14 && rho > 2.5 / vcrit()) d[2] += 500.0;
        if (known && nT == 2 && nrho == 2) {
            constexpr int faulty[] = {1, 2, 4, 6};
            if (fault_ >= 8 && fault_ <= 11) d[faulty[fault_ - 8]] *= 1 + 1e-6;
            if (fault_ == 15) d[6] += 1e-10;  // much where the gas is thin
            if (fault_ == 16 && rho > 1e100 && T > 1 && T < Tcrit())
                throw ThException(th_out_of_range);
        }
        return known;
    }

  private:
    Model1& m_;
    int fault_;
    double kept_;
};

TEST(Checks, NameEveryFault) {
    constexpr char const* names[] = {"",
                                     "pc, Tc, vc are those of the equation",
                                     "a set survives writing and reading",
                                     "parameters count from the moment they are written",
                                     "Z is 1 + rho·∂Ar/∂rho",
                                     "densities: all that a scan finds",
                                     "densities: those that a scan finds",
                                     "impossible states have no density",
                                     "exact derivatives: ∂/∂T",
                                     "exact derivatives: ∂²/∂T²",
                                     "exact derivatives: ∂²/∂rho∂T",
                                     "exact derivatives: ∂²/∂rho²",
                                     "values are smooth to rounding",
                                     "Ar is smooth through zero density",
                                     "heat capacity and compressibility are positive",
                                     "exact derivatives: ∂²/∂rho²",
                                     "odd arguments end without exceptions",
                                     "orders of derivatives",
                                     "orders of derivatives",
                                     "many densities at once are those alone",
                                     "many states at once are those alone",
                                     "rewritten: densities that a scan finds",
                                     "rewritten: as in a model that reads them"};
    const Model right = load_set("PR", "propane");
    for (int fault = 0; fault < static_cast<int>(std::size(names)); ++fault) {
        Faulty model(*right, fault);
        bool named = false;
        for (corvane::Check const& c : corvane::check_equation(model)) {
            named = named || (!c.passed() && c.name == names[fault]);
            // The tables are not those of the model: it has none.
            EXPECT_TRUE(fault > 0 || c.passed() || c.name == "density tables are the spinodals") << c.name;
        }
        EXPECT_EQ(named, fault > 0) << names[fault];
    }
}

/// A fault by the check that is to see it, and which of the numbers that the check looks at has it.
struct Fault {
    std::string check;
    char in = 0;
};

/// A right mixture with one fault.
class FaultyMixture final : public ModelN,
                            public corvane::DerivN,
                            public corvane::IsothermN,
                            public corvane::PairParameters {
  public:
    FaultyMixture(ModelN& right, Fault const& fault)
        : m_(right),
          exact_(*right.derivatives()),
          kept_(dynamic_cast<corvane::IsothermN const&>(right)),
          fault_(fault) {
        alloc(right.mdl1.size(), right.eos);
        mth = right.mth;
        for (int i = 0; i < mdl1.size(); ++i) {
            mdl1[i]->name(right.mdl1[i]->name());
            mdl1[i]->id(right.mdl1[i]->id());
            mdl1[i]->load(right.eos);
            for (int j = 0; j < i; ++j) id(j, i, right.id(j, i));
        }
        derivatives(this);
    }
    ~FaultyMixture() {
        for (int i = 0; i < mdl1.size(); ++i) corvane::detach1(mdl1[i]);
    }
    double* ppar(int k, int i, int j) override {
        return is("pairs: numbers and addresses") && i > j ? &other_ : m_.ppar(k, i, j);
    }
    void par_alloc() override {}
    void par_in(FILE* f, int i, int j) override {
        m_.par_in(f, i, j);
        if (is("a pair survives writing and reading")) m_.param(0, i, j, m_.param(0, i, j) + 1e-9);
    }
    void par_out(FILE* f, int i, int j) const override { m_.par_out(f, i, j); }
    int pair_parameters() const override {
        return dynamic_cast<corvane::PairParameters const&>(m_).pair_parameters();
    }

    double Ar(double rho, double T, Vector<double> const& x) const override {
        double more = 0.0;
        if (is("Z is 1 + rho·∂Ar/∂rho")) more = 1e-8 * rho;
        if (is("components in another order")) more = 1e-9 * rho * x[0];
        if (is("nothing at zero density") && rho == 0.0) more = 1e-12;
        if (is("parameters of pairs count from the moment they are written")) {
            latched_ = latched_ || m_.param(0, 0, 1) != kij_;
            more = latched_ ? 1e-9 : 0.0;  // what was kept is never made anew
        }
        if (is("rewritten: as in a model that reads them"))
            more = m_.param(0, 0, 1) == kij_ ? 0.0 : 1e-9;
        return m_.Ar(rho, T, x) + more;
    }
    double Z(double rho, double T, Vector<double> const& x) const override {
        return m_.Z(rho, T, x) *
               (is("a component alone is the pure fluid") && x[0] == 1.0 ? 1 + 1e-9 : 1.0);
    }
    double betaV(double rho, double T, Vector<double> const& x) const override {
        if (is("betaV is ∂(T·Z)/∂T", 'k'))  // a pair's third parameter, 0 as shipped, with a sign
            return m_.betaV(rho, T, x) - 2e-2 * m_.param(2, 0, 1) / T;
        if (is("betaV is ∂(T·Z)/∂T", 'c'))  // a component's translation, 0 as shipped
            return m_.betaV(rho, T, x) - 2e-2 * mdl1[1]->param(8) / T;
        if (is("Z and betaV have numbers at the same densities") && rho > 1.0)
            return 1.0;  // past the covolume
        return m_.betaV(rho, T, x) * (is("betaV is ∂(T·Z)/∂T") ? 1 + 1e-7 : 1.0);
    }
    double myr(Vector<double> const& rho_i, double T, int i) const override {
        return m_.myr(rho_i, T, i) * (is("myr is a potential") && i == 1 ? 1 + 1e-9 : 1.0);
    }
    Vector<double> mixpar(Vector<double> const& x) const override { return m_.mixpar(x); }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& a,
              double& b) const override {
        const int n = m_.vcalc(p, T, x, mode, a, b);
        if (is("densities: all that a scan finds") && n == 3) return a = std::max(a, b), 1;
        if (is("densities: those that a scan finds") && n == 3) a *= 1 + 1e-9;
        if (is("impossible states have no density") && n == 0) a = 0.0;
        if (is("rewritten: densities that a scan finds"))
            a *= m_.param(0, 0, 1) == kij_ ? 1.0 : 1 + 1e-9;
        return n;
    }

    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT,
              double* d) const override {
        if (is("orders of derivatives") && nrho == 3) return 0;
        const int known = exact_.deriv(rho, T, x, nrho, nT, d);
        const auto wrong = [&](char const* name, int orders, int k) {
            if (is(name) && orders == nrho && k < (nrho + 1) * (nT + 1)) d[k] *= 1 + 1e-6;
        };
        wrong("exact derivatives: ∂/∂T", 2, 1);
        wrong("exact derivatives: ∂²/∂T²", 2, 2);
        wrong("exact derivatives: ∂²/∂rho²", 2, 6);
        wrong("exact derivatives: orders agree", 3, 1);
        wrong("exact derivatives: ∂³/∂rho³", 3, 3);
        return known;
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T,
                    double* H) const override {
        exact_.potentials(rho_i, T, mu, mu_T, H);
        const int n = rho_i.size();
        if (is("mu_i is ∂(rho·Ar)/∂rho_i")) mu[0] *= 1 + 1e-7;
        if (is("an absent component has the potential of a trace"))
            for (int i = 0; i < n; ++i) mu[i] += rho_i[i] == 0.0 ? 1e-6 : 0.0;
        if (is("potentials: whatever is asked for with them") && !H) mu[0] += 1e-8;
        if (is("Euler: Σ x_i·mu_i is Ar + Z − 1"))
            for (int i = 0; i < n; ++i) mu[i] *= 1 + 1e-9;
        if (mu_T && is("slope of mu_i in T")) mu_T[1] *= 1 + 1e-6;
        if (is("potentials at zero density") && mu_T && rho_i.sum() == 0.0) mu_T[1] = 1e-12;
        if (!H) return;
        if (is("potentials at zero density: ∂myr/∂rho") && rho_i.sum() == 0.0) H[1] *= 1 + 1e-4;
        if (is("Hessian is symmetric")) H[1] *= 1 + 1e-8;
        if (is("Hessian: ∂mu_i/∂rho_j")) H[1] *= 1 + 1e-6, H[n] *= 1 + 1e-6;
        if (is("Gibbs–Duhem: Σ Σ x_i·x_j·rho·∂mu_i/∂rho_j is ∂(rho·Z)/∂rho − 1")) H[0] *= 1 + 1e-8;
    }

    int isotherm_size(int n) const override { return kept_.isotherm_size(n); }
    void isotherm(double T, int const* present, int n, bool slopes, double* work) const override {
        constexpr int first = 0;
        const bool wrong = is("isotherm: without an absent component") && n == 1;
        kept_.isotherm(T, wrong ? &first : present, n, slopes, work);
    }
    int densities(double const* work, int n, double const* x, double p,
                  double* rho) const override {
        const int roots = kept_.densities(work, n, x, p, rho);
        if (roots > 0 && is("isotherm: the same densities")) rho[0] *= 1 + 1e-8;
        return roots;
    }
    double gibbs(double const* work, int n, double const* x, double p, double rho) const override {
        return kept_.gibbs(work, n, x, p, rho) +
               (is("isotherm: the same potentials", 'g') ? 1e-8 : 0.0);
    }
    void potentials(double const* work, int n, double const* rho_i, double* mu, double* mu_T,
                    double* H, double* P, double* P_T) const override {
        kept_.potentials(work, n, rho_i, mu, mu_T, H, P, P_T);
        struct {
            char which;
            double* value;
        } const outputs[] = {{'m', mu}, {'T', mu_T}, {'H', H}, {'p', P}, {'P', P_T}};
        for (auto const& [which, value] : outputs)
            if (value && is("isotherm: the same potentials", which)) *value *= 1 + 1e-7;
    }

  private:
    bool is(char const* check, char in = 0) const {
        return fault_.check == check && fault_.in == in;
    }
    ModelN& m_;
    corvane::DerivN const& exact_;
    corvane::IsothermN const& kept_;
    Fault fault_;
    double kij_ = m_.param(0, 0, 1), other_ = 0.0;
    mutable bool latched_ = false;
};

// A fault of 1e-9 to 1e-6 in one place: the right check tells it, and none where there is no fault.
TEST(Checks, NameEveryFaultOfAMixture) {
    const Mixture right = mixture_of("PR", "vdW1", {"methane", "propane"});
    for (Fault const& fault :
         std::vector<Fault>{{""},
                            {"Z is 1 + rho·∂Ar/∂rho"},
                            {"betaV is ∂(T·Z)/∂T"},
                            {"betaV is ∂(T·Z)/∂T", 'k'},
                            {"betaV is ∂(T·Z)/∂T", 'c'},
                            {"pairs: numbers and addresses"},
                            {"a pair survives writing and reading"},
                            {"parameters of pairs count from the moment they are written"},
                            {"an absent component has the potential of a trace"},
                            {"potentials: whatever is asked for with them"},
                            {"isotherm: without an absent component"},
                            {"exact derivatives: ∂/∂T"},
                            {"exact derivatives: ∂²/∂T²"},
                            {"exact derivatives: ∂²/∂rho²"},
                            {"exact derivatives: ∂³/∂rho³"},
                            {"exact derivatives: orders agree"},
                            {"orders of derivatives"},
                            {"Euler: Σ x_i·mu_i is Ar + Z − 1"},
                            {"myr is a potential"},
                            {"Hessian is symmetric"},
                            {"Hessian: ∂mu_i/∂rho_j"},
                            {"Gibbs–Duhem: Σ Σ x_i·x_j·rho·∂mu_i/∂rho_j is ∂(rho·Z)/∂rho − 1"},
                            {"mu_i is ∂(rho·Ar)/∂rho_i"},
                            {"slope of mu_i in T"},
                            {"isotherm: the same potentials", 'm'},
                            {"isotherm: the same potentials", 'T'},
                            {"isotherm: the same potentials", 'H'},
                            {"isotherm: the same potentials", 'p'},
                            {"isotherm: the same potentials", 'P'},
                            {"isotherm: the same potentials", 'g'},
                            {"isotherm: the same densities"},
                            {"densities: all that a scan finds"},
                            {"densities: those that a scan finds"},
                            {"rewritten: densities that a scan finds"},
                            {"rewritten: as in a model that reads them"},
                            {"impossible states have no density"},
                            {"Z and betaV have numbers at the same densities"},
                            {"nothing at zero density"},
                            {"potentials at zero density"},
                            {"potentials at zero density: ∂myr/∂rho"},
                            {"a component alone is the pure fluid"},
                            {"components in another order"}}) {
        FaultyMixture model(*right, fault);
        bool named = false;
        for (corvane::Check const& c : corvane::check_mixture(model)) {
            named = named || (!c.passed() && c.name == fault.check);
            EXPECT_TRUE(!fault.check.empty() || c.passed()) << c.name;
        }
        EXPECT_EQ(named, !fault.check.empty()) << fault.check << ' ' << fault.in;
    }
}

// A wrong constant that is the same in every slot passes all identities and nothing but a printed
// figure: 0.01 % of the energy scale in place of a fault of the formula.
TEST(Checks, OnlyPrintedValuesSeeAnotherEquation) {
    using corvane::PrintedValue;
    using Of = PrintedValue::Of;
    // IAPWS R6-95(2018), tables 6 and 8; the release's gas constant.
    const std::vector<PrintedValue> water{
        {Of::Ar, 500, 838.025e-3 / 18.015268, {}, -3.42693206, 5e-9, 0, "table 6"},
        {Of::saturation_pressure, 450, 0, {}, 0.932203564, 5e-10, 8.314371357587, "table 8"},
        {Of::liquid_density, 450, 0, {}, 890.341250e-3 / 18.015268, 5e-11, 0, "table 8"},
        {Of::vapour_density, 450, 0, {}, 4.81200360e-3 / 18.015268, 5e-13, 0, "table 8"}};
    // GERG-2008's authors, half a unit of the last digit and half of the density's.
    const std::vector<PrintedValue> gas{
        {Of::pressure, 275.74, 12.5e-3, {0.5, 0.5}, 7.8845752, 1e-7, 8.314472, "GERG"}};
    const Model pure = load_set("MEOS", "water");
    const Mixture mixture = estimated_mixture("MEOS", "GERG", {"methane", "propane"}, -1);
    const double Ts = pure->param(1), methane = mixture->param(1, 0, 0);
    for (bool wrong : {false, true}) {
        pure->param(1, Ts * (wrong ? 1.0001 : 1.0));
        mixture->param(1, 0, 0, methane * (wrong ? 1.0001 : 1.0));
        for (auto const& checks : {corvane::check_values(*pure, water),
                                   corvane::check_values(*mixture, gas)})
            for (corvane::Check const& c : checks)
                EXPECT_EQ(c.passed(), !wrong) << c.name << ": " << c.what << ' ' << c.worst;
    }
    pure->param(1, Ts), mixture->param(1, 0, 0, methane);
    // The same by the figure's own parameters, which are put back.
    for (bool wrong : {true, false}) {
        std::vector<PrintedValue> one{water[0]}, other{gas};
        one[0].parameters = {{1, 0, 0, Ts * (wrong ? 1.0001 : 1.0)}};
        other[0].parameters = {{4, 1, 0, 1.0}, {1, 0, 0, methane * (wrong ? 1.0001 : 1.0)}};
        EXPECT_EQ(corvane::check_values(*pure, one).back().passed(), !wrong);
        EXPECT_EQ(corvane::check_values(*mixture, other).back().passed(), !wrong);
        EXPECT_EQ(pure->param(1), Ts);
        EXPECT_EQ(mixture->param(1, 0, 0), methane);
        one[0].parameters = {{99, 0, 0, 1.0}}, other[0].parameters = {{0, 0, 2, 1.0}};
        EXPECT_FALSE(corvane::check_values(*pure, one).back().passed());
        EXPECT_FALSE(corvane::check_values(*mixture, other).back().passed());
    }
    // What there is no number for fails, and does not throw.
    for (PrintedValue const& none :
         {PrintedValue{Of::saturation_pressure, 1e4, 0, {}, 1, 1, 0, ""},
          PrintedValue{Of::Z, 300, std::nan(""), {}, 1, 1, 0, ""}})
        EXPECT_FALSE(corvane::check_values(*pure, {none}).back().passed());
    EXPECT_FALSE(corvane::check_values(*mixture, {PrintedValue{Of::Z, 300, 1e-3, {1.0}, 1, 9, 0, ""}})
                     .back()
                     .passed());
}
}  // namespace
