// Peng–Robinson with the mixing rule of Huron & Vidal, Fluid Phase Equilib. 3 (1979) 255: the
// excess Gibbs energy at infinite pressure is that of a modified NRTL equation,
//
//     a/(b·R·T) = Σ x_i·a_i/(b_i·R·T) − gE/(Λ·R·T),
//     gE/(R·T) = Σ x_i·[Σ x_j·b_j·G_ji·τ_ji]/[Σ x_k·b_k·G_ki],   G = exp(−α·τ).
//
// With α = 0 and energies from a_i, b_i and k_ij it is the van der Waals rule, which stands for
// pairs without parameters of NRTL. See README.md.
#include <plugins/common/excess_cubic.h>

namespace {
using namespace corvane;

struct HuronVidal : ExcessCubic<PengRobinson, HuronVidal> {
    static constexpr char const* mixing = "HV";
    static constexpr Parameter pair_parameters[] = {
        {.label = "kij", .optional = true},
        {.label = "alpha", .low = 0.0, .optional = true},
        {.label = "C12", .unit = "K", .optional = true, .mirror = 3},
        {.label = "C21", .unit = "K", .optional = true, .mirror = 2},
        {.label = "D12", .optional = true, .mirror = 5},
        {.label = "D21", .optional = true, .mirror = 4}};
    enum { kij, alpha, C12, C21, D12, D21 };

    template <class T>
    struct Component {
        double b, c;
        T q, root;  // a/(b·R·T) and its square root
    };
    template <class T>
    Component<T> component(T const& temperature, double const* p) const {
        using std::sqrt;
        const T q = attraction_of<PengRobinson>(temperature, p);
        return {p[cubic_vs], p[cubic_c], q, value_of(q) > 0.0 ? sqrt(q) : T(0.0)};
    }
    /// b·G and b·G·τ of the one in the sums for the other.
    template <class T>
    struct Pair {
        T G_ij, Gt_ij, G_ji, Gt_ji;
    };
    template <class T>
    Pair<T> pair(T const& temperature, Component<T> const& i, Component<T> const& j,
                 double const* p) const {
        using std::exp;
        if (&i == &j) return {T(i.b), T(0.0), T(i.b), T(0.0)};
        if (p[alpha] == 0.0) {
            const T cross = 2.0 * std::sqrt(i.b * j.b) / (i.b + j.b) * (1.0 - p[kij]) * i.root *
                            j.root;
            return {T(i.b), i.b * Lambda() * (j.q - cross), T(j.b), j.b * Lambda() * (i.q - cross)};
        }
        // Files say 1 for the component of lower number; here i is the higher.
        const T t_ij = p[C21] / temperature + p[D21], t_ji = p[C12] / temperature + p[D12];
        const T G_ij = i.b * exp(T(-p[alpha] * t_ij)), G_ji = j.b * exp(T(-p[alpha] * t_ji));
        return {G_ij, G_ij * t_ij, G_ji, G_ji * t_ji};
    }

    template <class At, class X, class B>
    static auto excess(At const& at, Fractions<X> const& x, B const& /*b*/) {
        const auto g = x.sum([&](int i) {
            const auto above =
                x.sum([&](int j) { return j > i ? at(j, i).Gt_ij : at(i, j).Gt_ji; });
            const auto below = x.sum([&](int j) { return j > i ? at(j, i).G_ij : at(i, j).G_ji; });
            return above / below;
        });
        return g * (-1.0 / Lambda());
    }
};
}  // namespace

CORVANE_MIXTURE(HuronVidal)
