// Objects of the flat interface: containers, records, texts, parts of models, ownership.
#include "binding/recorder.h"
#include "support/mixtures.h"
#include "support/vdw_model.h"

#include <corvane/binding/guarded_interface.h>
#include <corvane/binding/phdesc_interface.h>
#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cstring>

#include <malloc.h>

namespace {
// What the managed vectors and matrices do not reach.
TEST(Containers, AddressesIntegersAndShapes) {
    void* v = CSharp_new_doubleV__SWIG_0(4);
    CSharp_doubleV_ramp(v, 2, -1);  // 2 1 0 -1
    double* first = CSharp_doubleV_first__SWIG_0(v);
    EXPECT_EQ(CSharp_doubleV_getItem__SWIG_0(v, 2), first + 2);
    EXPECT_EQ(CSharp_doubleV_last__SWIG_0(v), first + 3);
    int key = MthKey::key_min, unknown = 0;
    EXPECT_EQ(CSharp_doubleV_find_val(v, &key), -1);
    EXPECT_EQ(CSharp_doubleV_find_idx(v, &unknown), 0);
    EXPECT_EQ(CSharp_doubleV_sum2(v), 6);
    CSharp_doubleV_urand(v);
    EXPECT_NEAR(CSharp_doubleV_sum2(v), 1, 1e-14);  // a unit vector, to rounding
    CSharp_delete_doubleV(v);
    void* i = CSharp_new_intV__SWIG_0(3);
    CSharp_intV_ramp(i, 5, 2);  // 5 7 9
    EXPECT_EQ(CSharp_intV_sum(i), 21);
    EXPECT_EQ(*CSharp_intV_last__SWIG_0(i), 9);
    CSharp_delete_intV(i);
    void* rows = CSharp_new_doubleM__SWIG_1(4);
    EXPECT_EQ(CSharp_doubleM_rows(rows), 4);
    EXPECT_EQ(CSharp_doubleM_cols(rows), 0);
    CSharp_delete_doubleM(rows);
}

TEST(Constants, Values) {
    EXPECT_EQ(CSharp_th_namelength_get(), 32);
    EXPECT_EQ(CSharp_th_eqnlength_get(), 20);
    EXPECT_EQ(CSharp_th_commlength_get(), 80);
    EXPECT_EQ(CSharp_R_get(), 8.3144621);  // CODATA 2010, as the next three
    EXPECT_EQ(CSharp_NA_get(), 6.02214129e23);
    EXPECT_EQ(CSharp_kB_get(), 1.3806488e-23);
    EXPECT_EQ(CSharp_hP_get(), 6.62606957e-34);
    EXPECT_EQ(CSharp_pref_get(), 0.1);
    EXPECT_EQ(CSharp_th_inc0_get(), 2e-5);
    EXPECT_EQ(CSharp_th_inc1_get(), 1e-3);
    EXPECT_EQ(CSharp_th_veps_get(), 1e-9);
    const double random = CSharp_ran_shuffle();
    EXPECT_TRUE(random >= 0 && random <= 1);
}

#define FIELD(record, field, value)                             \
    EXPECT_FALSE(CSharp_##record##_##field##_get(r)) << #field; \
    CSharp_##record##_##field##_set(nullptr, value);            \
    CSharp_##record##_##field##_set(r, value);                  \
    EXPECT_EQ(CSharp_##record##_##field##_get(r), value) << #field

TEST(Records, FieldsStartAtZeroAndIgnoreNull) {
    char target[8];  // addresses of models and vectors: kept, not used
    void* address = target;
    void* r = CSharp_new_pass1();
    FIELD(pass1, mdl1, address);
    FIELD(pass1, mode, 1);
    FIELD(pass1, p, 2.5);
    FIELD(pass1, rho, 3.5);
    FIELD(pass1, T, 4.5);
    CSharp_delete_pass1(r);
    r = CSharp_new_passN();
    FIELD(passN, mdlN, address);
    FIELD(passN, i, 1);
    FIELD(passN, p, 2.5);
    FIELD(passN, rho, 3.5);
    FIELD(passN, T, 4.5);
    FIELD(passN, h, 5.5);
    FIELD(passN, x, address);
    CSharp_delete_passN(r);
    r = CSharp_new_pass_ffeN();
    FIELD(pass_ffeN, m, address);
    FIELD(pass_ffeN, mode, 1);
    FIELD(pass_ffeN, p, 2.5);
    FIELD(pass_ffeN, T, 4.5);
    FIELD(pass_ffeN, xl, address);
    CSharp_delete_pass_ffeN(r);
    r = CSharp_new_phdesc();
    FIELD(phdesc, species, 1);
    FIELD(phdesc, phase, 2);
    CSharp_delete_phdesc(r);
    r = CSharp_new_phdescV__SWIG_0(2);
    EXPECT_EQ(CSharp_phdescV_size(r), 2);
    CSharp_phdescV_setItemValue(r, 1, 3, 4);
    EXPECT_EQ(CSharp_phdesc_phase_get(CSharp_phdescV_getItem__SWIG_0(r, 1)), 4);
    CSharp_delete_phdescV(r);
}

// A setter stores a copy and drops the old block without freeing it (intended), so the test does.
TEST(Records, TextFieldsAreCopies) {
    const Recorder recorder;
    prop_str row;
    char text[] = "p";
#define TEXT(name)                               \
    CSharp_prop_str_##name##_set(&row, text);    \
    text[0] = 'q';                               \
    EXPECT_STREQ(row.name, "p");                 \
    text[0] = 'p';                               \
    CSharp_prop_str_##name##_get(&row);          \
    delete[] row.name;                           \
    CSharp_prop_str_##name##_set(&row, nullptr); \
    EXPECT_EQ(row.name, nullptr);                \
    CSharp_prop_str_##name##_get(&row);          \
    CSharp_prop_str_##name##_set(nullptr, text)
    TEXT(sname);
    TEXT(lname);
    TEXT(unit);
    EXPECT_EQ(Recorder::texts,
              (std::vector<std::string>{"p", "<null>", "p", "<null>", "p", "<null>"}));
    row.dimension = 3;
    EXPECT_EQ(CSharp_prop_str_dimension_get(&row), 3);
}

TEST(Models, MixtureTextsAndFiles) {
    const Recorder recorder;
    const Mixture m = mixture_of("PR", "vdW1", {"methane", "propane"});
    char text[] = "theory";
    CSharp_ModelN_mth_set(m.get(), text);
    CSharp_ModelN_mth_set(nullptr, text);
    CSharp_ModelN_eos_set(nullptr, text);
    text[0] = 'X';
    CSharp_ModelN_comment__SWIG_1(m.get(), 0, 1, "a pair");
    for (void* result : {CSharp_ModelN_mth_get(m.get()), CSharp_ModelN_eos_get(m.get()),
                         CSharp_ModelN_comment__SWIG_0(m.get(), 1, 0)})
        EXPECT_EQ(result, &Recorder::string_handle);
    EXPECT_EQ(Recorder::texts, (std::vector<std::string>{"theory", "PR", "a pair"}));
    delete[] m->mth;  // the setter's copy, which the library never frees (intended)
    CSharp_ModelN_mth_set(m.get(), nullptr);
    EXPECT_EQ(m->mth, nullptr);
    CSharp_ModelN_load(m.get(), "PR", "no_such_theory");
    CSharp_ModelN_store2(m.get(), "PR", "no_such_theory");
    EXPECT_EQ(Recorder::exceptions,
              std::vector<std::string>(2, "C++ ThException exception thrown"));
}

TEST(Models, PartsAreTheModelsOwn) {
    VdwModel m;
    m.name("argon");
    void *ideal = CSharp_Model1_ideal_get(&m), *visco = CSharp_Model1_visco_get(&m);
    EXPECT_EQ(ideal, &m.ideal);
    EXPECT_EQ(CSharp_Model1_solid_get(&m), &m.solid);
    CSharp_Ideal_load(ideal);  // through the handle
    EXPECT_EQ(CSharp_Ideal_Cpm(ideal, 300), m.ideal.Cpm(300));
    m.name("methane");
    CSharp_Visco_load0(visco);
    EXPECT_EQ(CSharp_Visco_eta0(visco, 300), m.visco.eta0(300));

    // A copy names its new owner, whatever the original named.
    void *new_ideal = CSharp_new_Ideal(), *new_solid = CSharp_new_Solid(),
         *new_visco = CSharp_new_Visco();
    CSharp_Model1_ideal_set(&m, new_ideal);
    CSharp_Model1_solid_set(&m, new_solid);
    CSharp_Model1_visco_set(&m, new_visco);
    EXPECT_EQ(CSharp_Ideal_model__SWIG_0(ideal), &m);
    EXPECT_EQ(m.solid.model(), &m);
    EXPECT_EQ(m.visco.model(), &m);
    EXPECT_THROW(m.ideal.Cpm(300), ThException);
    CSharp_Model1_ideal_set(nullptr, new_ideal);
    CSharp_Model1_ideal_set(&m, nullptr);
    Vector<Subl> phases(2);
    CSharp_Solid_sg_set(&m.solid, &phases);
    CSharp_Solid_sg_set(nullptr, &phases);
    EXPECT_EQ(m.solid.sg.size(), 2);
    CSharp_delete_Ideal(new_ideal);
    CSharp_delete_Solid(new_solid);
    CSharp_delete_Visco(new_visco);
}

// Under the address sanitizer: every block goes back the way it came, and a model that is larger
// than its base class, too.
TEST(Models, DeletionReturnsWhatThePlugInHasAdded) {
    const auto used = [](int count) {
        for (int k = 0; k < count; ++k) {
            void* model = CSharp_attach1("MEOS");
            CSharp_Model1_name__SWIG_1(model, "carbon_dioxide");
            CSharp_Model1_id__SWIG_1(model, 1);
            CSharp_Model1_load(model, "MEOS");
            CSharp_delete_Model1(model);
            void* mixture = CSharp_attachN("MEOS", "GERG");
            CSharp_delete_ModelN(mixture);
        }
        return mallinfo2().uordblks;
    };
    const auto before = used(3);
    EXPECT_LT(used(20) - before, 20 * 1000u);  // bytes; a model of this set has 44 kB of its own
}

TEST(Models, Deletion) {
    CSharp_delete_Model1(new VdwModel);
    void *pure = CSharp_attach1("PR"), *mixture = CSharp_attachN("PR", "vdW1");
    ASSERT_TRUE(pure && mixture);
    CorvaneError e{};
    Corvane_detach1(pure, &e);
    EXPECT_EQ(e.kind, CORVANE_OK);
    char name[] = "PR";
    CSharp_ModelN_alloc(mixture, 2, name);
    char const* kept = static_cast<ModelN*>(mixture)->mdl1[0]->eos();
    name[0] = 'X';  // the export keeps a copy of the caller's text
    EXPECT_STREQ(static_cast<ModelN*>(mixture)->eos, "PR");
    EXPECT_STREQ(kept, "PR");
    delete[] static_cast<ModelN*>(mixture)->eos;  // that copy is never freed (intended)
    Corvane_detachN(mixture, &e);
    EXPECT_EQ(e.kind, CORVANE_OK);
    Corvane_detach1(nullptr, nullptr);
    for (auto* remove :
         {CSharp_delete_doubleV, CSharp_delete_intV, CSharp_delete_doubleM, CSharp_delete_Model1,
          CSharp_delete_ModelN, CSharp_delete_Ideal, CSharp_delete_Solid, CSharp_delete_Subl,
          CSharp_delete_Visco, CSharp_delete_pass1, CSharp_delete_passN, CSharp_delete_pass_ffeN,
          CSharp_delete_phdesc, CSharp_delete_phdescV, CSharp_delete_ThException,
          Corvane_delete_Saturation})
        remove(nullptr);
    CSharp_delete_Subl(CSharp_new_Subl());
    Vector<double> huge(1);
    EXPECT_EQ(Corvane_doubleV_size__SWIG_1(&huge, 2, &e), 2);
}
}  // namespace
