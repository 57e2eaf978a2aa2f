// What plug-ins are compiled against: the order of slots and fields. Numbers are those of the
// Itanium C++ ABI on a 64-bit machine, counted from the published lists.
#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <memory>

namespace {
/// Slot of a virtual function: its pointer holds 1 + 8·slot.
template <class Function>
int slot(Function function) {
    std::ptrdiff_t word[2];
    static_assert(sizeof function == sizeof word);
    std::memcpy(word, &function, sizeof word);
    return word[0] % 8 == 1 ? static_cast<int>(word[0] / 8) : -1;
}

template <class T>
T at(void const* object, std::size_t offset) {
    T value;
    std::memcpy(&value, static_cast<char const*>(object) + offset, sizeof value);
    return value;
}

std::size_t distance(void const* object, void const* member) {
    return static_cast<std::size_t>(static_cast<char const*>(member) - static_cast<char const*>(object));
}

TEST(Layout, SlotsOfModelsAreInTheirOrder) {
    using V = Vector<double> const&;
    EXPECT_EQ(slot(static_cast<double* (Model1::*)(int)>(&Model1::ppar)), 0);
    EXPECT_EQ(slot(&Model1::par_in), 1);
    EXPECT_EQ(slot(&Model1::par_out), 2);
    EXPECT_EQ(slot(&Model1::Ar), 3);
    EXPECT_EQ(slot(&Model1::Z), 4);
    EXPECT_EQ(slot(&Model1::vcalc), 5);
    EXPECT_EQ(slot(&Model1::xinit), 6);
    EXPECT_EQ(slot(&Model1::crit), 7);

    using AtRho = double (ModelN::*)(double, double, V) const;
    EXPECT_EQ(slot(static_cast<AtRho>(&ModelN::betaV)), 0);
    EXPECT_EQ(slot(static_cast<Matrix<double> (ModelN::*)(V, double) const>(&ModelN::PsiH)), 1);
    EXPECT_EQ(slot(static_cast<double* (ModelN::*)(int, int, int)>(&ModelN::ppar)), 2);
    EXPECT_EQ(slot(&ModelN::par_alloc), 3);
    EXPECT_EQ(slot(&ModelN::par_in), 4);
    EXPECT_EQ(slot(&ModelN::par_out), 5);
    EXPECT_EQ(slot(static_cast<AtRho>(&ModelN::Ar)), 6);
    EXPECT_EQ(slot(static_cast<AtRho>(&ModelN::Z)), 7);
    EXPECT_EQ(slot(&ModelN::vcalc), 8);
    EXPECT_EQ(slot(&ModelN::mixpar), 9);
    EXPECT_EQ(slot(static_cast<double (ModelN::*)(V, double, int) const>(&ModelN::myr)), 10);
}

TEST(Layout, FieldsAreInTheirOrder) {
    const std::unique_ptr<Model1, corvane::Detach> m(attach1("PR"));
    m->id(71);
    m->pcrit(1.5);
    m->Tcrit(2.5);
    m->vcrit(3.5);
    m->omega(4.5);
    EXPECT_EQ(at<int>(m.get(), 8), m->mpar());
    EXPECT_EQ(at<int>(m.get(), 12), m->madj());
    EXPECT_EQ(at<int>(m.get(), 16), 71);
    EXPECT_EQ(distance(m.get(), m->name()), 20u);
    EXPECT_EQ(distance(m.get(), m->comment()), 20u + 32u);
    EXPECT_EQ(at<char const*>(m.get(), 136), m->eos());
    for (int k = 0; k < 4; ++k) EXPECT_EQ(at<double>(m.get(), 144 + 8 * static_cast<std::size_t>(k)), 1.5 + k);
    // After the four numbers the three tables of a pointer and a count each.
    EXPECT_EQ(distance(m.get(), &m->solid), 176u + 3u * sizeof(Vector<double>));
    EXPECT_LT(distance(m.get(), &m->solid), distance(m.get(), &m->ideal));
    EXPECT_LT(distance(m.get(), &m->ideal), distance(m.get(), &m->visco));

    const std::unique_ptr<ModelN, corvane::Detach> n(attachN("PR", "vdW1"));
    n->alloc(2, "PR");
    EXPECT_EQ(at<int>(n.get(), 12), n->mmth());
    n->id(0, 1, 72);
    EXPECT_EQ(*at<int const*>(n.get(), 16), 72);
    EXPECT_EQ(at<char const*>(n.get(), 24), n->comment(0, 1));
    EXPECT_EQ(distance(n.get(), &n->eos), 32u);
    EXPECT_EQ(distance(n.get(), &n->mth), 40u);
    EXPECT_EQ(distance(n.get(), &n->mdl1), 48u);

    Matrix<double> matrix(2, 3);
    EXPECT_EQ(at<int>(&matrix, 0), 2);
    EXPECT_EQ(distance(&matrix, &matrix.data), 8u);
    EXPECT_EQ(at<int>(&matrix, sizeof(Vector<double>)), 3);
}
}  // namespace
