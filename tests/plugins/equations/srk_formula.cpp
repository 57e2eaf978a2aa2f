// Soave, Chem. Eng. Sci. 27 (1972) 1197, with van der Waals mixing, in one function:
//
//     A^r/(RT) = −ln(1 − y) − q·ln(1 + y),   y = b·rho,   q = a/(b·R·T).
#include <corvane/plugin/formula.h>

#include <cmath>

namespace {
using corvane::above_zero;

struct Soave {
    static constexpr char const *name = "SRKformula", *mixing = "vdW1";
    static constexpr corvane::Parameter parameters[] = {
        {.label = "M", .unit = "g/mol", .value = 1.0},
        {.label = "Ts", .unit = "K", .value = 1.0, .low = above_zero, .adjustable = true},
        {.label = "vs", .unit = "cm3/mol", .value = 1.0, .low = above_zero, .adjustable = true},
        {.label = "omega", .adjustable = true}};
    static constexpr corvane::Parameter pair_parameters[] = {{.label = "kij"},
                                                             {.label = "lij", .optional = true}};
    enum { M, Ts, vs, omega };

    template <class T>
    T alphar(T temperature, T density, corvane::Fractions<T> const& x) const {
        using std::log1p, std::sqrt;
        const T root_T = sqrt(temperature);
        // √(a_i/(R·T)) = u_i/√T − w_i.
        auto root = [&](int i) {
            const double w = x.par(i, omega), m = 0.480 + w * (1.574 - 0.176 * w);
            const double one = std::sqrt(q_c * x.par(i, vs));
            struct {
                double u, w;
            } r{one * (1.0 + m) * std::sqrt(x.par(i, Ts)), one * m};
            return r;
        };
        auto a = [&](auto const& term) {
            return x.sum2([&](int i, int j) {
                return (i == j ? 1.0 : 1.0 - x.pair(i, j, 0)) * term(root(i), root(j));
            });
        };
        const T b = covolume(x);
        const T a_RT = a([](auto i, auto j) { return i.u * j.u; }) / temperature -
                       a([](auto i, auto j) { return i.u * j.w + i.w * j.u; }) / root_T +
                       a([](auto i, auto j) { return i.w * j.w; });
        const T y = b * density;
        return -log1p(-y) - a_RT / b * log1p(y);
    }
    corvane::DensityRange range(double /*temperature*/, corvane::Fractions<double> const& x) const {
        const double b = covolume(x);
        return {.top = (1.0 - 1e-12) / b, .loop = (std::cbrt(2.0) - 1.0) / b, .single = true};
    }

  private:
    static constexpr double q_c = 4.9339624518280285;  // a_c/(b·R·Tc) = 1/(3·(2^(1/3) − 1)²)
    template <class T>
    static T covolume(corvane::Fractions<T> const& x) {
        return x.sum2([&](int i, int j) {
            return 0.5 * (x.par(i, vs) + x.par(j, vs)) * (i == j ? 1.0 : 1.0 - x.pair(i, j, 1));
        });
    }
};
}  // namespace

CORVANE_FORMULA(Soave)
