// Each export reaches the operation of its name: results equal those of the class to the last bit.
#include "support/mixtures.h"
#include "support/vdw_model.h"

#include <corvane/binding/flat_interface.h>
#include <corvane/binding/guarded_interface.h>
#include <corvane/corvane.h>

#include <gtest/gtest.h>
#include <boost/preprocessor/seq/for_each.hpp>

namespace {
#define EACH(name, wanted, ...)                                      \
    EXPECT_EQ(CSharp_##name(__VA_ARGS__), wanted) << #name;          \
    EXPECT_EQ(Corvane_##name(__VA_ARGS__, &error), wanted) << #name; \
    EXPECT_EQ(error.kind, CORVANE_OK) << #name

CorvaneError error;
const double T = 180, p = 4, rho = 0.02;  // liquid methane, liquid methane + propane

// A table: one operation after the other.
#define OF(r, macro, f) macro(f);

#define AT_RHO(f) EACH(Model1_##f, m.f(rho, T), &m, rho, T)
#define AT_BOTH(f)                                       \
    EACH(Model1_##f##__SWIG_0, m.f(rho, T), &m, rho, T); \
    EACH(Model1_##f##__SWIG_1, m.f(p, T, 1, r), &m, p, T, 1, &(r = 0.02))

TEST(Forwarders, Model1) {
    const Model owner = load_set("PR", "methane");
    Model1& m = *owner;
    m.ideal.load();
    double r = 0, r2 = 0;
    BOOST_PP_SEQ_FOR_EACH(OF, AT_RHO, (Ak)(Am)(Ar)(Sk)(Um)(Z)(pV));
    BOOST_PP_SEQ_FOR_EACH(
        OF, AT_BOTH, (CVm)(CVr)(Cpm)(Cpr)(Ge)(Gm)(Gr)(Hm)(Hr)(Sm)(Sr)(Ur)(alphap)(betaV)(kappaT));
    EACH(Model1_B, m.B(T, 2), &m, T, 2);
    EACH(Model1_Vm, m.Vm(p, T, 1), &m, p, T, 1);
    EACH(Model1_xinit, m.xinit(p, T, 3), &m, p, T, 3);
    EACH(Model1_vcalc, m.vcalc(p, T, 1, r, r2), &m, p, T, 1, &r, &r2);
    EXPECT_DOUBLE_EQ(r, 1 / m.Vm(p, T, 1));
    EXPECT_EQ(CSharp_Model1_mpar(&m), m.mpar());
    EXPECT_EQ(CSharp_Model1_madj(&m), m.madj());
    EXPECT_EQ(CSharp_Model1_ppar__SWIG_0(&m, 1), m.ppar(1));
    auto* crit = static_cast<Vector<double>*>(CSharp_Model1_crit(&m, T, rho, 0.3));
    EXPECT_EQ((*crit)[2], m.crit(T, rho, 0.3)[2]);
    CSharp_delete_doubleV(crit);
#define PROPERTY(f, value)                  \
    CSharp_Model1_##f##__SWIG_1(&m, value); \
    EXPECT_EQ(m.f(), value) << #f;          \
    EXPECT_EQ(CSharp_Model1_##f##__SWIG_0(&m), value) << #f
    PROPERTY(M, 1.5);
    PROPERTY(vs, 2.5);
    PROPERTY(Ts, 3.5);
    PROPERTY(Tcrit, 4.5);
    PROPERTY(pcrit, 5.5);
    PROPERTY(vcrit, 6.5);
    PROPERTY(omega, 7.5);
    PROPERTY(id, 8);
    CSharp_Model1_param__SWIG_1(&m, 2, 9.5);
    EXPECT_EQ(CSharp_Model1_param__SWIG_0(&m, 2), m.vs());
}

#define N_RHO(f, n) EACH(ModelN_##f##n, m.f(rho, T, x), &m, rho, T, &x)
#define N_PART(f, n) EACH(ModelN_##f##n, m.f(rho_i, T), &m, &rho_i, T)
#define N_P(f, n) EACH(ModelN_##f##n, m.f(p, T, x, 1, r), &m, p, T, &x, 1, &(r = 0.02))
#define N_RHO_ONLY(f) N_RHO(f, )
#define N_PART_ONLY(f) N_PART(f, )
#define N_BOTH(f)       \
    N_RHO(f, __SWIG_0); \
    N_P(f, __SWIG_1)
#define N_TWO(f)        \
    N_RHO(f, __SWIG_0); \
    N_PART(f, __SWIG_1)

TEST(Forwarders, ModelN) {
    const Mixture owner = mixture_of("PR", "vdW1", {"methane", "propane"});
    ModelN& m = *owner;
    Vector<double> x = vec({0.6, 0.4}), rho_i = vec({0.012, 0.008});
    double r = 0, r2 = 0;
    BOOST_PP_SEQ_FOR_EACH(OF, N_PART_ONLY, (Ak)(Gk)(Sk));
    BOOST_PP_SEQ_FOR_EACH(OF, N_RHO_ONLY, (Am)(Um)(Ur)(pV));
    BOOST_PP_SEQ_FOR_EACH(OF, N_BOTH, (CVm)(CVr)(Cpm)(Cpr)(Ge)(Gm)(Gr)(Hm)(Hr)(alphap)(kappaT));
    BOOST_PP_SEQ_FOR_EACH(OF, N_TWO, (Ar)(Z)(Sr)(betaV)(Sm));
    N_P(betaV, __SWIG_2);
    N_P(Sm, __SWIG_2);
    EACH(ModelN_B, m.B(T, x, 2), &m, T, &x, 2);
    EACH(ModelN_Vm, m.Vm(p, T, x, 1), &m, p, T, &x, 1);
    EACH(ModelN_vcalc, m.vcalc(p, T, x, 1, r, r2), &m, p, T, &x, 1, &r, &r2);
    EACH(ModelN_Psi__SWIG_0, m.Psi(rho_i, T), &m, &rho_i, T);
    EACH(ModelN_Psi__SWIG_1, m.Psi(rho, T, x), &m, rho, T, &x);
#define POTENTIAL(f)                                                  \
    EACH(ModelN_##f##__SWIG_0, m.f(rho_i, T, 1), &m, &rho_i, T, 1);   \
    EACH(ModelN_##f##__SWIG_1, m.f(rho, T, x, 1), &m, rho, T, &x, 1); \
    EACH(ModelN_##f##__SWIG_2, m.f(p, T, x, 1, 1, r), &m, p, T, &x, 1, 1, &(r = 0.02))
    POTENTIAL(my);
    POTENTIAL(myr);
    auto* g = static_cast<Vector<double>*>(CSharp_ModelN_PsiG__SWIG_0(&m, &rho_i, T));
    auto* h = static_cast<Matrix<double>*>(CSharp_ModelN_PsiH__SWIG_1(&m, rho, T, &x));
    EXPECT_EQ((*g)[1], m.PsiG(rho_i, T)[1]);
    EXPECT_EQ(Corvane_doubleM_getItemValue(h, 0, 1), m.PsiH(rho, T, x)[0][1]);
    CSharp_delete_doubleV(g);
    CSharp_delete_doubleM(h);

    EXPECT_EQ(Corvane_ModelN_components(&m), 2);
    EXPECT_EQ(CSharp_ModelN_getModel1i(&m, 1), m.mdl1[1]);
    EXPECT_EQ(CSharp_ModelN_mdl1_get(&m), &m.mdl1);
    EXPECT_EQ(CSharp_ModelN_mmth(&m), m.mmth());
    CSharp_ModelN_param__SWIG_1(&m, 0, 0, 1, 0.25);
    EXPECT_EQ(CSharp_ModelN_param__SWIG_0(&m, 0, 1, 0), 0.25);
    EXPECT_EQ(*CSharp_ModelN_ppar(&m, 0, 0, 1), 0.25);
    CSharp_ModelN_id__SWIG_1(&m, 0, 1, 7);
    EXPECT_EQ(CSharp_ModelN_id__SWIG_0(&m, 1, 0), 7);
    double c[4];
    Corvane_ModelN_heat_capacities(&m, rho, T, &x, c, c + 1, c + 2, c + 3, &error);
    EXPECT_EQ(c[3], corvane::heat_capacities(m, rho, T, x).Cpm);
}

TEST(Forwarders, FreeFunctions) {
    const Model fluid = load_set("PR", "methane");
    Model1* m = fluid.get();
    Vector<double> roots(3), list, x = vec({0.5, 0.3});
    Vector<int> index(2);
    double a, b, c, a2, b2, c2;
    int count = 0;
    void* saturation = Corvane_new_Saturation(&error);
    const auto expect_same = [&](char const* of) {
        EXPECT_TRUE(a == a2 && b == b2 && c == c2) << of;
        a2 = b2 = c2 = 0;
    };
    vle1_T(m, 150, 0, a, b, c);
    CSharp_vle1_T(m, 150, 0, &a2, &b2, &c2);
    expect_same("flat T");
    Corvane_vle1_T(m, 150, 0, &a2, &b2, &c2, &error);
    expect_same("guarded T");
    Corvane_Saturation_at_T(saturation, m, 150, 0, &a2, &b2, &c2, &error);
    expect_same("march T");
    const double ps = a;
    vle1_p(m, ps, 0, a, b, c);
    CSharp_vle1_p(m, ps, 0, &a2, &b2, &c2);
    expect_same("flat p");
    Corvane_vle1_p(m, ps, 0, &a2, &b2, &c2, &error);
    expect_same("guarded p");
    Corvane_Saturation_at_p(saturation, m, ps, 0, &a2, &b2, &c2, &error);
    expect_same("march p");
    // Next to the critical point the march gives up, and the direct solver answers.
    int refused = 0;
    for (double d : {1e-9, 1e-10, 1e-11}) {
        const double near = m->Tcrit() * (1 - d);
        try {
            double p_near, liquid, vapour;
            corvane::SaturationMarch().at_T(m, near, 0, p_near, liquid, vapour);
        } catch (...) {
            ++refused;
        }
        const corvane::PureSaturation q = corvane::pure_saturation_T(*m, near);
        Corvane_Saturation_at_T(saturation, m, near, 0, &a2, &b2, &c2, &error);
        EXPECT_EQ(error.kind, CORVANE_OK);
        EXPECT_NEAR(a2 / q.p, 1, 1e-11);
        EXPECT_NEAR(b2 - c2, q.rhoL - q.rhoV, 0.1 * (q.rhoL - q.rhoV));  // the march's own tolerance
        Corvane_Saturation_at_p(saturation, m, q.p, 0, &a2, &b2, &c2, &error);
        EXPECT_EQ(error.kind, CORVANE_OK);
        EXPECT_NEAR(a2 / near, 1, 1e-11);
    }
    EXPECT_GT(refused, 0);
    Corvane_delete_Saturation(saturation);
    a = maxwell(m, ps, 150, b, c);
    a2 = CSharp_maxwell(m, ps, 150, &b2, &c2);
    expect_same("flat maxwell");
    a2 = Corvane_maxwell(m, ps, 150, &b2, &c2, &error);
    expect_same("guarded maxwell");
    EXPECT_EQ(CSharp_volume(m, 0, ps, 150, nullptr, m->vs(), &roots), 3);
    EXPECT_NEAR(roots[0], b, 1e-6 * b);  // the volume finder's tolerance, seen at the liquid root
    EXPECT_EQ(CSharp_xtoz(0.3), xtoz(0.3));
    EXPECT_EQ(CSharp_ztox(0.3), ztox(0.3));
    EXPECT_DOUBLE_EQ(CSharp_adjust_x(0, &x), 0.5 / 0.3);
    const prop_str table[] = {{"p", "pressure", "MPa", 1}, {"", "", "", 0}};
    EXPECT_EQ(CSharp_recognize("p", const_cast<prop_str*>(table)), recognize("p", table));
    CSharp_list_different(&x, 1, &list, &count, &index);
    EXPECT_EQ(count, 1);  // 0.5 twice
    EXPECT_EQ(list[0], 1.5);
}
}  // namespace
