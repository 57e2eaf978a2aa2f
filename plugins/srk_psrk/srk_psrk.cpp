// Predictive Soave–Redlich–Kwong: the excess Gibbs energy at zero pressure from groups (UNIFAC),
// T. Holderbaum, J. Gmehling, Fluid Phase Equilib. 70 (1991) 251.
//
//     a/(b·R·T) = Σ x_i·a_i/(b_i·R·T) + [gE/(R·T) + Σ x_i·ln(b/b_i)]/A1,   A1 = ln(1.1/2.1)
//
// The two parts of gE are those of Fredenslund, Jones & Prausnitz, AIChE J. 21 (1975) 1086, with
// Σ θ_k·Σ θ_m·psi_mk/S_k = 1 used in the residual one. See README.md.
#include <plugins/common/excess_cubic.h>
#include <plugins/srk_psrk/groups.h>

#include <algorithm>
#include <array>
#include <string>

namespace {
using namespace corvane;

constexpr int kKinds = 9;  // of groups in a molecule
constexpr int kMain = 128;

/// Interaction of main group m with main group k in the row for k: places in the table, from 1 on,
/// negative where k comes first; 0 for none.
using Places = std::array<std::array<short, kMain>, kMain>;
constexpr Places kPlaces = [] {
    Places places{};
    short n = 0;
    for (auto const& pair : psrk::interactions) {
        ++n;
        places[pair.i][pair.j] = n;
        places[pair.j][pair.i] = static_cast<short>(-n);
    }
    return places;
}();

psrk::Subgroup const* subgroup(double number) {
    const auto* found =
        std::find_if(std::begin(psrk::subgroups), std::end(psrk::subgroups),
                     [&](psrk::Subgroup const& s) { return s.number == number; });
    return found == std::end(psrk::subgroups) ? nullptr : found;
}

/// psi of main group m in the sum for k.
template <class T>
T psi(T const& temperature, int m, int k) {
    using std::exp;
    const int place = kPlaces[m][k];
    if (place == 0) return T(1.0);
    auto const& pair = psrk::interactions[std::abs(place) - 1];
    double const* v = place > 0 ? pair.of_i : pair.of_j;
    return exp(T(-v[1] - v[0] / temperature - v[2] * temperature));
}

struct Psrk : ExcessCubic<SoaveRedlichKwong, Psrk> {
    static constexpr char const* mixing = "PSRK";
    static constexpr Parameter theory_parameters[] = {
        {.label = "group1"},
        {.label = "count1", .low = 0.0},
        {.label = "group2", .optional = true},
        {.label = "count2", .low = 0.0, .optional = true},
        {.label = "group3", .optional = true},
        {.label = "count3", .low = 0.0, .optional = true},
        {.label = "group4", .optional = true},
        {.label = "count4", .low = 0.0, .optional = true},
        {.label = "group5", .optional = true},
        {.label = "count5", .low = 0.0, .optional = true},
        {.label = "group6", .optional = true},
        {.label = "count6", .low = 0.0, .optional = true},
        {.label = "group7", .optional = true},
        {.label = "count7", .low = 0.0, .optional = true},
        {.label = "group8", .optional = true},
        {.label = "count8", .low = 0.0, .optional = true},
        {.label = "group9", .optional = true},
        {.label = "count9", .low = 0.0, .optional = true}};
    static_assert(std::size(theory_parameters) == 2 * kKinds);

    template <class T>
    struct Component {
        double b, c;
        T q;
        double volume, surface;  // relative ones
        int kinds;
        int main[kKinds];
        double share[kKinds];  // of the surface
    };
    template <class T>
    Component<T> component(T const& temperature, double const* p) const {
        Component<T> of{p[cubic_vs], p[cubic_c],
                        attraction_of<SoaveRedlichKwong>(temperature, p), 0.0, 0.0, 0, {}, {}};
        for (int k = 0; k < kKinds; ++k) {
            double const* given = p + cubic_parameters + 2 * k;
            psrk::Subgroup const* group = given[1] > 0.0 ? subgroup(given[0]) : nullptr;
            if (!group) continue;
            of.volume += given[1] * group->R;
            of.surface += given[1] * group->Q;
            of.main[of.kinds] = group->main;
            of.share[of.kinds++] = given[1] * group->Q;
        }
        return of;
    }
    /// Σ over the groups m of one component, for each group k of the other, of share_m·psi_mk.
    template <class T>
    struct Pair {
        T at_i[kKinds], at_j[kKinds];  // groups of i among those of j, and the reverse
    };
    template <class T>
    Pair<T> pair(T const& temperature, Component<T> const& i, Component<T> const& j,
                 double const* /*none*/) const {
        Pair<T> of;
        around(temperature, i, j, of.at_i);
        around(temperature, j, i, of.at_j);
        return of;
    }

    /// [gE/(R·T) + Σ x_i·ln(b/b_i)]/A1.
    template <class At, class X, class B>
    static auto excess(At const& at, Fractions<X> const& x, B const& b) {
        using std::log;
        // One component alone needs no groups.
        const bool alone = at.size() == 1;
        const auto volume = [&](int i) { return alone ? 1.0 : at[i].volume; };
        const auto surface = [&](int i) { return alone ? 1.0 : at[i].surface; };
        const auto r = x.sum(volume), s = x.sum(surface);
        // Of the sizes; they vanish for one component, to the bit.
        const auto log_r = log(r), log_s = log(s);
        const auto sizes =
            log(b) - x.sum([&](int i) { return std::log(at[i].b); }) -
            (log_r - x.sum([&](int i) { return std::log(volume(i)); })) +
            5.0 * (s * (log_r - log_s) - x.sum([&](int i) {
                return surface(i) * (std::log(volume(i)) - std::log(surface(i)));
            })) +
            (s * log_s - x.sum([&](int i) { return surface(i) * std::log(surface(i)); }));
        // Of the groups.
        const auto groups = x.sum([&](int i) {
            decltype(residual(at, x, i, 0)) sum(0.0);
            for (int k = 0; k < at[i].kinds; ++k) sum += residual(at, x, i, k);
            return sum;
        });
        return (sizes - groups) / kA1;
    }

    /// Components whose groups have no interaction parameters.
    static std::string refusal(double const* i, double const* j) {
        for (int k = 0; k < kKinds; ++k)
            for (int l = 0; l < kKinds; ++l) {
                if (!(i[2 * k + 1] > 0.0) || !(j[2 * l + 1] > 0.0)) continue;
                auto const *a = subgroup(i[2 * k]), *b = subgroup(j[2 * l]);
                if (!a || !b) return "a number that is no group of PSRK";
                if (a->main != b->main && kPlaces[a->main][b->main] == 0)
                    return std::string("PSRK has no interaction of the groups ") + a->name +
                           " and " + b->name;
            }
        return "";
    }

  private:
    static inline const double kA1 = std::log(1.1 / 2.1);

    template <class T>
    static void around(T const& temperature, Component<T> const& of, Component<T> const& among,
                       T* sums) {
        for (int k = 0; k < kKinds; ++k) {
            sums[k] = T(0.0);
            if (k >= of.kinds) continue;
            for (int m = 0; m < among.kinds; ++m)
                sums[k] += among.share[m] * psi(temperature, among.main[m], of.main[k]);
        }
    }
    /// Surface of group k of component i times ln of its sum over that in the pure component.
    template <class At, class X>
    static auto residual(At const& at, Fractions<X> const& x, int i, int k) {
        using std::log;
        const auto sum = x.sum([&](int j) { return i >= j ? at(i, j).at_i[k] : at(i, j).at_j[k]; });
        return at[i].share[k] * log(std::decay_t<decltype(sum)>(sum / at(i, i).at_i[k]));
    }
};
}  // namespace

CORVANE_MIXTURE(Psrk)
