// Number types of the judge: 64 bits of mantissa where thousands of states are scanned, 113 bits
// where a solution is refined, 100 digits where its phases are nearly alike.
#pragma once

#include <boost/multiprecision/cpp_bin_float.hpp>
#include <boost/multiprecision/float128.hpp>

#include <array>
#include <cmath>

namespace judge {

using Long = long double;
using Quad = boost::multiprecision::float128;
using Wide = boost::multiprecision::number<boost::multiprecision::cpp_bin_float<100>,
                                           boost::multiprecision::et_off>;

/// What an equation of the judge is good for.
struct Precision {
    double noise = 1e-15;     ///< of a tangent-plane distance, over the largest |m_i|
    double step = 1e-7;       ///< of differences, over the distance of the phases
    double stalled = 1e-10;   ///< Newton step over that distance below which rounding may end the method
    bool bounds = true;       ///< whether stated bounds can be judged
    double nearest = 1e-6;    ///< distance from a critical temperature from which it serves
};

constexpr int kMax = 3;  ///< components at most
template <class Real>
using Values = std::array<Real, kMax>;

/// Solves A·x = b in place by elimination with row pivoting; b becomes x. False if singular.
template <class Real, int N>
bool eliminate(Real (&A)[N][N], Real (&b)[N], int n) {
    using std::abs;
    for (int k = 0; k < n; ++k) {
        int top = k;
        for (int i = k + 1; i < n; ++i)
            if (abs(A[i][k]) > abs(A[top][k])) top = i;
        if (!(abs(A[top][k]) > 0)) return false;
        for (int j = 0; j < n; ++j) std::swap(A[k][j], A[top][j]);
        std::swap(b[k], b[top]);
        for (int i = k + 1; i < n; ++i) {
            const Real f = A[i][k] / A[k][k];
            for (int j = k; j < n; ++j) A[i][j] -= f * A[k][j];
            b[i] -= f * b[k];
        }
    }
    for (int k = n - 1; k >= 0; --k) {
        for (int j = k + 1; j < n; ++j) b[k] -= A[k][j] * b[j];
        b[k] /= A[k][k];
    }
    return true;
}

}  // namespace judge
