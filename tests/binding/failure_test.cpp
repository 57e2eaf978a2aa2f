// What the function interfaces do with failures: null arguments, exceptions, callbacks.
#include "binding/recorder.h"
#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

#include <corvane/binding/guarded_interface.h>

#include <cstring>
#include <functional>
#include <utility>

namespace {
using Texts = std::vector<std::string>;

// ---- null arguments ----------------------------------------------------------------------------

CorvaneError record;

/// 0, or an address that must not be used; the record for the outcome.
template <class A>
A argument(bool null) {
    static char unused[1];
    if constexpr (std::is_same_v<A, CorvaneError*>)
        return &record;
    else if constexpr (std::is_pointer_v<A>)
        return null ? nullptr : reinterpret_cast<A>(unused);
    else
        return A();
}

template <class R, class... A, std::size_t... I>
R call(R (*f)(A...), std::size_t position, std::index_sequence<I...>) {
    return f(argument<A>(I >= position)...);
}

/// Calls f with all addresses from a position on null and checks that the result is zero.
template <class R, class... A>
void call_with_null(char const* name, R (*f)(A...), int position) {
    const auto from = static_cast<std::size_t>(position);
    if constexpr (std::is_void_v<R>)
        call(f, from, std::index_sequence_for<A...>());
    else
        EXPECT_EQ(call(f, from, std::index_sequence_for<A...>()), R()) << name;
}

// An address used before the refusal of a later one would crash; so would the null ones after it.
TEST(Refusals, EveryNullArgumentInOrder) {
    const Recorder recorder;
    int rows = 0;
    auto check = [&](char const* name, char const* text) {
        EXPECT_EQ(Recorder::nulls, Texts{text}) << name;
        EXPECT_TRUE(Recorder::parameter_was_null) << name;
        EXPECT_TRUE(Recorder::exceptions.empty()) << name;
        Recorder::clear();
        ++rows;
    };
    auto check_record = [&](char const* name, char const* text) {
        EXPECT_EQ(record.kind, CORVANE_NULL_ARGUMENT) << name;
        EXPECT_EQ(record.number, 0) << name;
        EXPECT_EQ(record.info, -1) << name;
        EXPECT_STREQ(record.message, text) << name;
        EXPECT_TRUE(Recorder::nulls.empty()) << name;  // no callback from the guarded family
    };
#define FLAT(name, position, text)                            \
    call_with_null("CSharp_" #name, CSharp_##name, position); \
    check("CSharp_" #name, text);
#define GUARDED(name, position, text)                           \
    FLAT(name, position, text)                                  \
    call_with_null("Corvane_" #name, Corvane_##name, position); \
    check_record("Corvane_" #name, text);
#include "binding/refusals.inc"
#undef FLAT
#undef GUARDED
    EXPECT_EQ(rows, 87);  // lines of the table
}

// ---- exceptions --------------------------------------------------------------------------------

struct Failure {
    char const* name;
    int kind, number;
    std::function<void()> flat;
    std::function<void(CorvaneError*)> guarded;
};
#define FAILS(name, kind, number, ...)                                                           \
    Failure {                                                                                    \
#name, kind, number,                                                                     \
            [&] { CSharp_##name(__VA_ARGS__); },                                                 \
                                              [&](CorvaneError *                                 \
                                                  error) { Corvane_##name(__VA_ARGS__, error); } \
    }

class Failures : public ::testing::Test {
  protected:
    Failures() {
        scratch.write("CorvaneS/ideal/unsorted", "3\n300 30\n200 31\n400 32\n");
        scratch.write("CorvaneS/solid/twice",
                      "1 100\nI 3\n90 1e-3 20 0\n90 1e-3 20 0\n80 1e-4 20 0\n");
        scratch.write("short", "I 2\n90 1e-3 20 0\n");
        scratch.write("twice", "I 3\n90 1e-3 20 0\n90 1e-3 20 0\n80 1e-4 20 0\n");
        scratch.write("answers", "-1\n");
        fluid.name("nothing");
        unsorted.name("unsorted");
        twice.name("twice");
    }
    ~Failures() override {
        if (file_) std::fclose(file_);
    }
    FILE* file(char const* name) {
        if (file_) std::fclose(file_);
        return file_ = std::fopen(name, "r");
    }
    Vector<double>* answers() {
        EXPECT_TRUE(std::freopen("answers", "r", stdin));
        return &two;
    }

    Scratch scratch;
    VdwModel fluid, unsorted, twice;
    Vector<double> two{2};
    Matrix<double> wide{2, 3};
    Subl phase;

  private:
    FILE* file_ = nullptr;
};

// The codes are those the operations document. CSharp_adjust_x also translates, but cannot raise;
// pairs (mixtures) are below, with a real mixture.
TEST_F(Failures, TranslatedOnes) {
    constexpr int th = CORVANE_THERMODYNAMIC, mth = CORVANE_NUMERICAL;
    Ideal &none = fluid.ideal, &bad = unsorted.ideal;
    const Failure table[] = {
        FAILS(attach1, th, th_cannot_open, "no_such_equation"),
        FAILS(attachN, th, th_cannot_open, "no_such_equation", "vdW1"),
        FAILS(read_r, th, th_out_of_range, "", answers()),
        FAILS(read_x, th, th_out_of_range, "", answers()),
        FAILS(Model1_xrho, th, th_generic, &fluid, 300, 1),
        FAILS(Model1_load, th, th_cannot_open, &fluid, "vdw"),
        FAILS(Model1_load_thchem, th, th_cannot_open, &fluid),
        FAILS(Model1_store, th, th_cannot_open, &fluid, "vdw"),
        FAILS(Ideal_interval, th, th_no_ideal, &none, 300),
        FAILS(Ideal_load, th, th_cannot_open, &none),
        FAILS(Ideal_load, mth, mth_unordered, &bad),
        FAILS(Ideal_offset, th, th_no_ideal, &none, 1, 1),
        FAILS(Solid_load, th, th_cannot_open, &fluid.solid),
        FAILS(Subl_load, th, th_cannot_open, &phase, file("short")),
        FAILS(Subl_load, mth, mth_duplicate, &phase, file("twice")),
        FAILS(Visco_load0, th, th_cannot_open, &fluid.visco),
        FAILS(Visco_load1, th, th_cannot_open, &fluid.visco, "MEOS"),
        FAILS(Visco_store1, th, th_cannot_open, &fluid.visco, nullptr, 0),
        FAILS(doubleM_det, mth, mth_not_square, &wide),
    };
    for (Failure const& f : table) {
        SCOPED_TRACE(f.name);
        EXPECT_NO_THROW(f.flat());  // without callbacks: nothing but a zero result
        const Recorder recorder;
        EXPECT_NO_THROW(f.flat());
        EXPECT_EQ(Recorder::exceptions, Texts{f.kind == th ? "C++ ThException exception thrown"
                                                           : "C++ MthException exception thrown"});
        EXPECT_TRUE(Recorder::nulls.empty());
        Recorder::clear();
        CorvaneError e{};
        f.guarded(&e);
        EXPECT_EQ(e.kind, f.kind);
        EXPECT_EQ(e.number, f.number);
        EXPECT_EQ(e.info, -1);
        // The text of the table; of a file, its name follows.
        const std::string text =
            f.kind == th ? ThException::errmsg[f.number] : MthException::errmsg[f.number];
        EXPECT_EQ(std::string(e.message).substr(0, text.size()), text);
        EXPECT_TRUE(e.message[text.size()] == '\0' || e.message[text.size()] == ':') << e.message;
        f.guarded(nullptr);  // the record may be missing
        EXPECT_TRUE(Recorder::exceptions.empty());
    }
    EXPECT_EQ(CSharp_doubleM_det(&wide), 0);
    EXPECT_EQ(CSharp_attach1("no_such_equation"), nullptr);
    EXPECT_EQ(CSharp_Ideal_interval(&none, 300), 0);
}

// Every other export lets exceptions leave; its guarded form keeps them.
TEST_F(Failures, UntranslatedOnesLeave) {
    const Recorder recorder;
    double a = 0, b = 0;
    const Failure table[] = {
        FAILS(Ideal_Cpm, CORVANE_THERMODYNAMIC, th_no_ideal, &fluid.ideal, 300),
        FAILS(Model1_Hm__SWIG_0, CORVANE_THERMODYNAMIC, th_no_ideal, &fluid, 0.01, 300),
        FAILS(Model1_Vm, CORVANE_THERMODYNAMIC, th_no_density, &fluid, -1e6, 300, 1),
        FAILS(maxwell, CORVANE_THERMODYNAMIC, th_out_of_range, &fluid, -1, 100, &a, &b),
        FAILS(Visco_set1, CORVANE_NUMERICAL, mth_dimensions, &fluid.visco, &two),
        FAILS(Solid_load, CORVANE_NUMERICAL, mth_duplicate, &twice.solid),
    };
    for (Failure const& f : table) {
        SCOPED_TRACE(f.name);
        EXPECT_EQ(f.kind == CORVANE_THERMODYNAMIC ? th_code(f.flat) : mth_code(f.flat), f.number);
        CorvaneError e{};
        EXPECT_NO_THROW(f.guarded(&e));
        EXPECT_EQ(e.kind, f.kind);
        EXPECT_EQ(e.number, f.number);
    }
    EXPECT_TRUE(Recorder::exceptions.empty());
    CorvaneError e{};
    Corvane_Model1_Z(&fluid, 0.01, 300, &e);  // a success clears the record
    EXPECT_EQ(e.kind, CORVANE_OK);
    EXPECT_STREQ(e.message, "");
}

// ---- texts -------------------------------------------------------------------------------------

TEST(Strings, GoThroughTheCallback) {
    VdwModel model("argon");
    Solid solid;
    solid.sg = Vector<Subl>(1);
    std::strcpy(solid.sg[0].name, "alpha");
    void* e = CSharp_new_ThException__SWIG_1(9, 2);
    auto all = [&] {
        return std::vector<void*>{CSharp_ThException_message(e), CSharp_Model1_eos(&model),
                                  CSharp_Solid_id(&solid, 0), CSharp_Solid_id(&solid, -1)};
    };
    for (void* result : all()) EXPECT_EQ(result, nullptr);  // nobody registered
    const Recorder recorder;
    for (void* result : all()) EXPECT_EQ(result, &Recorder::string_handle);
    EXPECT_EQ(Recorder::texts,
              Texts({"volume finder returned no solution: 2\n", "vdw", "alpha", "<null>"}));
    EXPECT_EQ(CSharp_ThException_number(e), 9);
    CSharp_delete_ThException(e);
}
}  // namespace
