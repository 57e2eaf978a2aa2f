#include <corvane/core/containers.h>

#include "support/errors.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace {
Vector<double> vec(std::initializer_list<double> values) {
    Vector<double> v(static_cast<int>(values.size()));
    std::copy(values.begin(), values.end(), v.data);
    return v;
}
std::vector<double> list(Vector<double> const& v) {
    return {v.data, v.data + v.size()};
}

TEST(Vector, ResizingKeepsThePrefixAndTheSameCountKeepsTheBlock) {
    Vector<double> v = vec({1, 2, 3});
    double const* block = v.data;
    EXPECT_EQ(v.size(3), 3);
    EXPECT_EQ(v.data, block);
    EXPECT_EQ(v.size(5), 5);
    EXPECT_EQ(v[2], 3);
    EXPECT_EQ(v.size(2), 2);
    EXPECT_EQ(list(v), (std::vector<double>{1, 2}));
    EXPECT_EQ(v.size(-4), 0);
    EXPECT_EQ(v.size(), 0);
    EXPECT_EQ(Vector<double>(-3).size(), 0);
}

TEST(Vector, AssignmentCopiesWithEqualAndUnequalCounts) {
    Vector<double> a = vec({1, 2}), b = vec({3, 4}), c = vec({5, 6, 7});
    double const* block = a.data;
    a = b;
    EXPECT_EQ(a.data, block);
    EXPECT_EQ(list(a), list(b));
    a = c;
    EXPECT_EQ(list(a), list(c));
    a[0] = 9;
    EXPECT_EQ(c[0], 5);
    a = static_cast<Vector<double>&>(a);
    EXPECT_EQ(list(a), (std::vector<double>{9, 6, 7}));
    a = Vector<double>();
    EXPECT_EQ(a.size(), 0);
}

TEST(Vector, ExtremaTakeTheFirstOfEqualsAndUnknownKeysSelectNothing) {
    const auto other = static_cast<MthKey::mth_key>(0);
    EXPECT_EQ(vec({3, 1, 1}).find_idx(MthKey::key_min), 1);
    EXPECT_EQ(vec({2, 5, 5}).find_idx(MthKey::key_max), 1);
    EXPECT_EQ(vec({2, 5, 5}).find_val(MthKey::key_max), 5);
    EXPECT_EQ(vec({2, 1, 5}).find_idx(other), 0);
    EXPECT_EQ(vec({2, 1, 5}).find_val(other), 2);
}

TEST(Vector, WholeVectorOperations) {
    EXPECT_EQ(vec({1, 0, 3}).polynomial(2), 13);
    EXPECT_EQ(vec({7}).polynomial(2), 7);
    Vector<double> v(4);
    v.ramp(0.5, 0.25);
    EXPECT_EQ(list(v), (std::vector<double>{0.5, 0.75, 1.0, 1.25}));
    v.func([](double x) { return 2 * x; });
    EXPECT_EQ(v.sum(), 7);
    EXPECT_EQ(vec({1, 2, 3}).sum2(), 14);
    EXPECT_EQ(Vector<double>().sum(), 0);
    EXPECT_EQ(vec({1, 2}) * vec({3, 4}), 11);
    EXPECT_EQ(list(2.0 * vec({1, 2}) + vec({1, 1}) * 3.0), (std::vector<double>{5, 7}));
    EXPECT_EQ(mth_code([] { vec({1, 2}) + vec({1, 2, 3}); }), mth_dimensions);
    EXPECT_EQ(mth_code([] { vec({1, 2}) * vec({1, 2, 3}); }), mth_dimensions);
}

TEST(Vector, PrintsAndReadsWithTheCallersFormat) {
    FILE* f = std::tmpfile();
    const Vector<double> v = vec({1.5, -2});
    EXPECT_EQ(v.print(f, "a%d ", "%.1f ", "z"), 4 + 9 + 1);  // head and tail are no formats
    EXPECT_EQ(v.print(f, " %g"), 7);
    std::rewind(f);
    Vector<double> w(3);
    ASSERT_EQ(std::fscanf(f, "a%%d"), 0);
    EXPECT_EQ(w.read(f, "%lf"), 2);  // the third read meets the z
    EXPECT_EQ(w[1], -2);
    std::fclose(f);
}

TEST(Vector, RandomDirectionsHaveUnitLength) {
    for (int n : {1, 2, 5}) {
        Vector<double> v(n), mean(n);
        for (int k = 0; k < 2000; ++k) {
            v.urand();
            ASSERT_NEAR(v.sum2(), 1.0, 1e-14);
            mean = mean + v * (1.0 / 2000);
        }
        // Each component has variance 1/n; five standard errors of 2000 draws.
        for (int i = 0; i < n; ++i) EXPECT_NEAR(mean[i], 0.0, 5 / std::sqrt(2000.0 * n));
    }
    Vector<double>().urand();
}

// The rows of a matrix cannot be resized behind the back of its count of columns.
template <class Container>
concept ResizedByCount = requires(Container c) { c.size(1); };
static_assert(ResizedByCount<Vector<double>> && !ResizedByCount<Matrix<double>>);

TEST(Matrix, ShapesIdentityAndDeterminant) {
    Matrix<double> m(2, 3);
    EXPECT_EQ(mth_code([&] { m.det(); }), mth_not_square);
    EXPECT_EQ(mth_code([] { Matrix<double>(0, 3).det(); }), mth_not_square);
    EXPECT_EQ(&m.I(), &m);
    EXPECT_EQ(list(m[0]), (std::vector<double>{1, 0, 0}));
    EXPECT_EQ(list(m[1]), (std::vector<double>{0, 1, 0}));
    m.size(3, 3);
    EXPECT_EQ(m[1][1], 1);
    EXPECT_EQ(m.I().det(), 1);
    EXPECT_EQ(Matrix<double>().det(), 0);
    m.size(0, 0);
    EXPECT_EQ(m.rows(), 0);
    EXPECT_EQ(Matrix<double>(-1, 4).cols(), 4);
    // Vandermonde: the determinant is the product of all differences of the nodes.
    Matrix<double> v(4, 4);
    const double node[] = {1, 2, 4, 7};
    double expected = 1;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) v[i][j] = std::pow(node[i], j);
        for (int j = 0; j < i; ++j) expected *= node[i] - node[j];
    }
    EXPECT_DOUBLE_EQ(v.det(), expected);
    Matrix<double> copy(v);
    copy[0][0] = 5;
    EXPECT_EQ(v[0][0], 1);
}
}  // namespace
