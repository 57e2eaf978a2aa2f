// Vectors and matrices from lists of numbers.
#pragma once

#include <corvane/core/numelo.h>

#include <algorithm>
#include <vector>

template <class V = Vector<double>>
V vector_of(std::vector<double> const& values) {
    V v(static_cast<int>(values.size()));
    std::copy(values.begin(), values.end(), v.data);
    return v;
}
inline Matrix<double> matrix_of(std::vector<std::vector<double>> const& rows) {
    Matrix<double> m(static_cast<int>(rows.size()), static_cast<int>(rows[0].size()));
    for (int i = 0; i < m.rows(); ++i) m[i] = vector_of(rows[i]);
    return m;
}
