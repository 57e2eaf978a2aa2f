// The numeric containers that every interface of the library uses: Vector, Matrix, SortedVector.
//
// Indices are 0-based and never checked. Storage is one exact block per vector, without spare
// capacity, so that numerical code may walk `data` directly.
#pragma once

#include <corvane/core/errors.h>

#include <cmath>
#include <cstdio>
#include <utility>

double ran_shuffle();  // libnumelo; needed by Vector<double>::urand alone

/// Selector of find_idx and find_val.
struct MthKey {
    enum mth_key : int { key_min = 4, key_max = 5 };
};

/// Counted, owned array of T.
template <class T>
class Vector {
  public:
    int n = 0;          ///< number of elements; below 1 the vector is empty and owns nothing
    T* data = nullptr;  ///< the elements; owned, touched only while n > 0

    Vector() = default;
    /// n elements; numbers start at zero, though no caller may rely on it. n < 1: empty.
    explicit Vector(int count) : n(count > 0 ? count : 0), data(make(n)) {}
    Vector(Vector const& other) : n(other.n > 0 ? other.n : 0), data(copy_of(other.data, n)) {}
    Vector(Vector&& other) noexcept
        : n(std::exchange(other.n, 0)), data(std::exchange(other.data, nullptr)) {}
    ~Vector() { release(); }

    /// Equal counts: element-wise into the existing block. Otherwise a new block is filled before
    /// the old one goes, so that a throwing copy leaves the target unchanged.
    Vector& operator=(Vector const& other) {
        if (this == &other) return *this;
        const int count = other.n > 0 ? other.n : 0;
        if (count == n) {
            for (int i = 0; i < n; ++i) data[i] = other.data[i];
            return *this;
        }
        T* block = copy_of(other.data, count);
        release();
        data = block;
        n = count;
        return *this;
    }
    Vector& operator=(Vector&& other) noexcept {
        std::swap(n, other.n);
        std::swap(data, other.data);
        return *this;
    }

    int size() const { return n; }
    /// Resizes, keeping the first min(count, n) elements. Returns the new count. The same count
    /// keeps the block; count < 1 releases it.
    int size(int count) {
        if (count == n) return n;
        if (count < 1) {
            release();
            n = 0;
            data = nullptr;
            return 0;
        }
        Vector bigger(count);
        for (int i = 0; i < (n < count ? n : count); ++i) bigger.data[i] = std::move(data[i]);
        std::swap(n, bigger.n);
        std::swap(data, bigger.data);
        return n;
    }

    T& operator[](int i) { return data[i]; }
    T const& operator[](int i) const { return data[i]; }
    T& first() { return data[0]; }
    T const& first() const { return data[0]; }
    T& last() { return data[n - 1]; }
    T const& last() const { return data[n - 1]; }

    /// Index of the smallest (key_min) or largest (key_max) element, the first of equal ones. Any
    /// other key gives 0 (intended).
    int find_idx(MthKey::mth_key key) const {
        int best = 0;
        for (int i = 1; i < n; ++i)
            if ((key == MthKey::key_min && data[i] < data[best]) ||
                (key == MthKey::key_max && data[i] > data[best]))
                best = i;
        return best;
    }
    /// The element find_idx names; reads element 0 of an empty vector (unguarded, intended).
    T find_val(MthKey::mth_key key) const { return data[find_idx(key)]; }

    /// Replaces every element x by f(x), from index 0 upward.
    void func(T (*f)(T)) {
        for (int i = 0; i < n; ++i) data[i] = f(data[i]);
    }

    /// Σ data[i]·x^i by Horner's scheme; 0 for an empty vector.
    T polynomial(T x) const {
        if (n < 1) return T();
        T y = data[n - 1];
        for (int i = n - 2; i >= 0; --i) y = y * x + data[i];
        return y;
    }

    /// Writes head and tail as they are and each element with fmt, which must suit T. Returns the
    /// sum of the character counts that the writes reported.
    int print(FILE* f, char const* head, char const* fmt, char const* tail) const {
        const int before = std::fprintf(f, "%s", head);
        const int elements = print(f, fmt);
        return before + elements + std::fprintf(f, "%s", tail);
    }
    int print(FILE* f, char const* fmt) const {
        int count = 0;
        for (int i = 0; i < n; ++i) count += std::fprintf(f, fmt, data[i]);
        return count;
    }

    /// Element 0 = start, each next one the previous plus step (a running sum, intended).
    void ramp(T start, T step) {
        for (int i = 0; i < n; ++i, start += step) data[i] = start;
    }

    /// One formatted read per element with fmt ("%lf" for double). Returns the sum of the results.
    int read(FILE* f, char const* fmt) {
        int count = 0;
        for (int i = 0; i < n; ++i) count += std::fscanf(f, fmt, data + i);
        return count;
    }

    void set(T value) {
        for (int i = 0; i < n; ++i) data[i] = value;
    }
    T sum() const {
        T s = T();
        for (int i = 0; i < n; ++i) s += data[i];
        return s;
    }
    /// Sum of the squares.
    T sum2() const {
        T s = T();
        for (int i = 0; i < n; ++i) s += data[i] * data[i];
        return s;
    }

    /// Fills the vector with a random direction, uniform on the unit sphere: points of the cube are
    /// drawn until one lies in the unit ball. The ball fills 3e-4 of the cube at n = 12 and 2e-8 at
    /// n = 20, so use it up to n = 12. An empty vector is left alone.
    void urand() {
        if (n < 1) return;
        T s;
        do {
            s = T();
            for (int i = 0; i < n; ++i) {
                data[i] = 2 * ran_shuffle() - 1;
                s += data[i] * data[i];
            }
        } while (!(s > 0 && s <= 1));
        const T scale = 1 / std::sqrt(s);
        for (int i = 0; i < n; ++i) data[i] *= scale;
    }

  private:
    static T* make(int count) {
        return count > 0 ? new T[static_cast<unsigned>(count)]() : nullptr;
    }
    static T* copy_of(T const* from, int count) {
        Vector copy(count);
        for (int i = 0; i < count; ++i) copy.data[i] = from[i];
        copy.n = 0;
        return std::exchange(copy.data, nullptr);
    }
    void release() {
        if (n > 0) delete[] data;
    }
};

inline Vector<double> operator*(Vector<double> const& a, double s) {
    Vector<double> b(a);
    for (int i = 0; i < b.n; ++i) b.data[i] *= s;
    return b;
}
inline Vector<double> operator*(double s, Vector<double> const& a) {
    return a * s;
}

/// Dot product. Unequal counts: MthException 2.
inline double operator*(Vector<double> const& a, Vector<double> const& b) {
    if (a.n != b.n) throw MthException(mth_dimensions);
    double s = 0.0;
    for (int i = 0; i < a.n; ++i) s += a.data[i] * b.data[i];
    return s;
}

/// Element-wise sum. Unequal counts: MthException 2, checked after the copy of a (intended).
inline Vector<double> operator+(Vector<double> const& a, Vector<double> const& b) {
    Vector<double> c(a);
    if (a.n != b.n) throw MthException(mth_dimensions);
    for (int i = 0; i < c.n; ++i) c.data[i] += b.data[i];
    return c;
}

/// Vector of row vectors, all of ncols elements.
template <class T>
class Matrix : public Vector<Vector<T>> {
  public:
    int ncols = 0;  ///< number of columns, as given

    Matrix() = default;
    /// rows × cols elements; negative counts of rows are taken as 0, cols is stored as given.
    explicit Matrix(int rows, int cols = 0) : Vector<Vector<T>>(rows), ncols(cols) {
        for (int i = 0; i < this->n; ++i) this->data[i].size(cols);
    }

    int rows() const { return this->n; }
    int cols() const { return ncols; }

    int size() const { return this->n; }
    /// Resizes, keeping the common leading part.
    void size(int rows, int cols) {
        Vector<Vector<T>>::size(rows);
        for (int i = 0; i < this->n; ++i) this->data[i].size(cols);
        ncols = cols;
    }

    /// Writes ones on the leading diagonal and zeros elsewhere. Returns the matrix.
    Matrix& I() {
        for (int i = 0; i < this->n; ++i)
            for (int j = 0; j < ncols; ++j) this->data[i][j] = i == j ? 1.0 : 0.0;
        return *this;
    }

    /// Determinant by plain cofactor expansion along row 0 (intended, although the cost grows as
    /// n!: meant for orders up to about 8). 0 for order 0. Not square: MthException 3.
    T det() const {
        const int order = this->n;
        if (ncols != order) throw MthException(mth_not_square);
        if (order == 0) return T();
        Matrix const& a = *this;
        if (order == 1) return a[0][0];
        if (order == 2) return a[0][0] * a[1][1] - a[0][1] * a[1][0];
        Matrix minor(order - 1, order - 1);
        T sum = T(), sign = 1;
        for (int j = 0; j < order; ++j, sign = -sign) {
            for (int i = 1; i < order; ++i)
                for (int k = 0, to = 0; k < order; ++k)
                    if (k != j) minor[i - 1][to++] = a[i][k];
            sum += sign * a[0][j] * minor.det();
        }
        return sum;
    }
};

/// Vector whose elements stand in strictly ascending order; who fills it sees to that, the spline
/// routines of libnumelo check it.
template <class T>
class SortedVector : public Vector<T> {
  public:
    using Vector<T>::Vector;
    SortedVector() = default;
    explicit SortedVector(Vector<T> const& v) : Vector<T>(v) {}
};
