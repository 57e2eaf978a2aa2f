// Ideal-gas properties of many temperatures: segments by the leading bits of T, four at once.
#include <corvane/core/errors.h>
#include <corvane/core/lanes.h>
#include <corvane/ideal/ideal.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

using corvane::lanes::get, corvane::lanes::put, corvane::lanes::gather, corvane::lanes::V4;

struct Ideal::Columns {
    static constexpr int kBlock = 256;         // temperatures whose segments are kept
    static constexpr int kWorthIndexing = 24;  // fewer are searched for one by one
    static constexpr int kMostBins = 512, kMostSteps = 4;
    static constexpr int kShift = 47;  // bins of 1/32 of a power of two

    explicit Columns(Ideal const& table)
        : gas(table),
          n(table.x_.size()),
          x(&table.x_[0]),
          y(&table.y_[0]),
          b(&table.c_[0][0]),
          c(&table.c_[1][0]),
          d(&table.c_[2][0]),
          energy(&table.energy_[0]),
          entropy(&table.entropy_[0]) {}

    /// Numbers of positive temperatures that ascend with them.
    static std::int64_t bin_of(double T) {
        std::int64_t bits;
        std::memcpy(&bits, &T, sizeof bits);
        return bits >> kShift;
    }
    /// The first segment of each bin, as Ideal::segment counts at the bin's lower end. False for
    /// tables of other spacing than those of substances.
    bool index() {
        if (n < 2 || !(x[0] > 0) || n > 1 << 15) return false;
        first_bin = bin_of(x[0]);
        const std::int64_t span = bin_of(x[n - 1]) - first_bin;
        if (span >= kMostBins) return false;
        bins = static_cast<int>(span) + 1;
        steps = 0;
        for (int bin = 0, k = 0; bin < bins; ++bin) {
            const int before = k;
            first[bin] = static_cast<short>(k);
            while (k < n - 2 && bin_of(x[k + 1]) <= first_bin + bin) ++k;
            steps = std::max(steps, k - before);
        }
        return steps <= kMostSteps;
    }
    int indexed(double T) const {
        const std::int64_t bin = std::clamp<std::int64_t>(bin_of(T) - first_bin, 0, bins - 1);
        int k = first[bin];
        for (int s = 0; s < steps; ++s) k += k < n - 2 && T > x[k + 1];
        return T < x[n - 1] ? k : n - 1;
    }

    /// As Ideal::at for temperatures from the first of the table on.
    [[gnu::always_inline]] inline void four(double const* T_, int const* k, double* U_, double* S_,
                                            double* cv_) const {
        V4 T{}, x0{}, y0{}, b0{}, c0{}, d0{}, U{}, S{};
        get(T, T_);
        gather(x0, x, k), gather(y0, y, k), gather(b0, b, k), gather(c0, c, k), gather(d0, d, k);
        gather(U, energy, k), gather(S, entropy, k);
        const V4 dx = T - x0;
        put(cv_, y0 + ((d0 * dx + c0) * dx + b0) * dx);
        U = U + (((d0 / 4 * dx + c0 / 3) * dx + b0 / 2) * dx + y0) * dx;
        put(U_, U / T);
        const V4 q1 = c0 - d0 * x0, q0 = b0 - q1 * x0, r = y0 - q0 * x0;
        V4 ln = dx / x0;
        corvane::lanes::log_lanes<false>(ln);
        put(S_, S + (r * ln + ((d0 / 3 * dx + q1 / 2) * dx + q0) * dx));
    }
    [[gnu::always_inline]] inline void fours(int count, double const* T, int const* k, double* U,
                                             double* S, double* cv) const {
        int i = 0;
        for (; i + 4 <= count; i += 4) four(T + i, k + i, U + i, S + i, cv + i);
        if (i == count) return;
        double all[4][4];
        int last[4];
        for (int j = 0; j < 4; ++j) {
            const int from = std::min(i + j, count - 1);
            all[0][j] = T[from], last[j] = k[from];
        }
        four(all[0], last, all[1], all[2], all[3]);
        for (int j = 0; i < count; ++i, ++j) U[i] = all[1][j], S[i] = all[2][j], cv[i] = all[3][j];
    }
    void narrow(int count, double const* T, int const* k, double* U, double* S, double* cv) const {
        fours(count, T, k, U, S, cv);
    }
#if defined(__x86_64__)
    [[gnu::target("avx2")]] void wide(int count, double const* T, int const* k, double* U,
                                      double* S, double* cv) const {
        fours(count, T, k, U, S, cv);
    }
#endif
    void block(int count, double const* T, bool with_index, double* U, double* S,
               double* cv) const {
        int k[kBlock];
        bool below = false;
        for (int i = 0; i < count; ++i) {
            k[i] = with_index ? indexed(T[i]) : gas.segment(T[i]);
            below = below || T[i] < x[0];
        }
#if defined(__x86_64__)
        if (corvane::lanes::wide)
            wide(count, T, k, U, S, cv);
        else
#endif
            narrow(count, T, k, U, S, cv);
        for (int i = 0; below && i < count; ++i)
            if (T[i] < x[0]) {
                const Parts one = gas.parts(T[i]);
                U[i] = one.U, S[i] = one.S, cv[i] = one.cv;
            }
    }

    Ideal const& gas;
    int n;
    double const *x, *y, *b, *c, *d, *energy, *entropy;
    std::int64_t first_bin = 0;
    int bins = 0, steps = 0;
    short first[kMostBins];
};

void Ideal::parts(int count, double const* T, double* U, double* S, double* cv) const {
    if (x_.size() < 1) throw ThException(th_no_ideal);
    Columns columns(*this);
    const bool indexed = count >= Columns::kWorthIndexing && columns.index();
    for (int i = 0; i < count; i += Columns::kBlock)
        columns.block(std::min(Columns::kBlock, count - i), T + i, indexed, U + i, S + i, cv + i);
}
