#include <corvane/core/lanes.h>
#include <corvane/pure/model1.h>
#include <plugins/meos_gerg/shared_terms.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace corvane::gerg {

using lanes::gather, lanes::get, lanes::put, lanes::total;
using lanes::padded;
using lanes::V4;

namespace {

/// Weight times value; terms without weight may be beyond their range.
[[gnu::always_inline]] inline void weighted(V4& w, V4 const& f) {
    const V4 zero{};
    w = w == 0.0 ? zero : w * f;
}

PowerSeries1 const* series_of(Model1 const* model) {
    if (!model) return nullptr;
    // Somebody else's derivatives may stand in front of a component.
    auto const* const own = dynamic_cast<Deriv1 const*>(model);
    return own && own == model->derivatives() ? dynamic_cast<PowerSeries1 const*>(model) : nullptr;
}
/// None if there are powers that powers_of does not make, or of no density.
PowerSeries1::Terms usable(PowerSeries1 const& series) {
    const PowerSeries1::Terms own = series.terms();
    for (int k = 0; k < own.count; ++k) {
        const auto [l, d] = own.powers[k];
        if (d < 1 || d > kMaxPower || l < 0 || l > kMaxPower) return {};
    }
    return own;
}

}  // namespace

// ---- construction

void SharedTerms::append(Term const& term, double factor) {
    n_.push_back(factor), t_.push_back(term.t), d_.push_back(term.d), l_.push_back(term.l);
    eta_.push_back(term.eta), epsilon_.push_back(term.epsilon), beta_.push_back(term.beta);
    gamma_.push_back(term.gamma), b_.push_back(term.b), c_.push_back(term.c);
    powers_.push_back({static_cast<int>(term.l), static_cast<int>(term.d)});
    dpower_.push_back(static_cast<int>(term.d)), lpower_.push_back(static_cast<int>(term.l));
    top_ = std::max({top_, dpower_.back(), lpower_.back()});
    top_l_ = std::max(top_l_, lpower_.back());
    bells_in_tau_ = bells_in_tau_ || term.b != 0.0;
}
void SharedTerms::fill_up() {
    while (terms() != padded(terms())) append(Term{}, 0.0);
}

bool SharedTerms::shares(Part const& part, PowerSeries1::Terms const& terms) const {
    const auto same = [&](auto const& ours, auto const* theirs) {
        return std::memcmp(ours.data() + part.first, theirs,
                           static_cast<unsigned>(part.count) * sizeof *theirs) == 0;
    };
    return part.count == terms.count && same(t_, terms.t) && same(powers_, terms.powers);
}

void SharedTerms::add_component(Model1 const* model) {
    Part part;
    part.model = model;
    part.derivatives = model ? model->derivatives() : nullptr;
    part.series = series_of(model);
    PowerSeries1::Terms own;
    if (part.series) own = usable(*part.series);
    if (own.count > 0) {
        const auto family =
            std::find_if(components_.begin(), components_.end(),
                         [&](Part const& p) { return p.size > 0 && shares(p, own); });
        part.count = own.count;
        part.size = padded(own.count);
        part.at = factors_;
        factors_ += part.size;
        part.first = family != components_.end() ? family->first : terms();
        if (family == components_.end()) {
            for (int k = 0; k < own.count; ++k) {
                Term term{};
                term.t = own.t[k], term.d = own.powers[k].d, term.l = own.powers[k].l;
                append(term, 0.0);
            }
            fill_up();
        }
    }
    components_.push_back(part);
}

SharedTerms::SharedTerms(Components const& components, std::vector<Departure> const& functions) {
    for (int i = 0; i < components.size(); ++i) add_component(components[i]);
    const auto level = [](Term const& t) { return t.d == 0.0; };
    const auto shaped = [](Term const& t) { return t.eta != 0.0 || t.beta != 0.0 || t.b != 0.0; };
    functions_.resize(functions.size());
    for (unsigned f = 0; f < functions.size(); ++f) {
        functions_[f].first = terms();
        for (Term const& t : functions[f].terms())
            if (level(t))
                levels_.push_back({static_cast<int>(f), t});
            else if (!shaped(t))
                append(t, t.n);
        fill_up();
        functions_[f].size = terms() - functions_[f].first;
    }
    series_ = terms();
    for (unsigned f = 0; f < functions.size(); ++f) {
        functions_[f].shaped_first = terms();
        for (Term const& t : functions[f].terms())
            if (!level(t) && shaped(t)) append(t, t.n);
        fill_up();
        functions_[f].shaped_size = terms() - functions_[f].shaped_first;
    }
    for (Level const& t : levels_) top_ = std::max(top_, static_cast<int>(t.term.l));
    make_groups();
}

void SharedTerms::make_groups() {
    for (unsigned k = 0; k < static_cast<unsigned>(series_); ++k) {
        const int l = lpower_[k], size = padded(dpower_[k]);
        auto group = std::lower_bound(groups_.begin(), groups_.end(), l,
                                      [](Group const& g, int value) { return g.l < value; });
        if (group == groups_.end() || group->l != l) group = groups_.insert(group, {l, 0, 0});
        group->size = std::max(group->size, size);
    }
    for (Group& g : groups_) {
        g.first = slots_;
        slots_ += g.size;
        top_ = std::max(top_, g.size);
    }
    for (unsigned k = 0; k < static_cast<unsigned>(series_); ++k) {  // what fills up has no weight
        auto const group = std::find_if(groups_.begin(), groups_.end(),
                                        [&](Group const& g) { return g.l == lpower_[k]; });
        slot_of_.push_back(group->first + std::max(dpower_[k], 1) - 1);
    }
}

bool SharedTerms::matches(Components const& components) const {
    if (components.size() != static_cast<int>(components_.size())) return false;
    for (int i = 0; i < components.size(); ++i) {
        Part const& p = components_[static_cast<unsigned>(i)];
        if (components[i] != p.model || (p.model && p.model->derivatives() != p.derivatives))
            return false;
        if (!p.series) continue;
        if (p.size > 0 ? !shares(p, p.series->terms()) : usable(*p.series).count > 0) return false;
    }
    return true;
}

// ---- weights

void SharedTerms::read(double* n) const {
    std::fill_n(n, factors_, 0.0);
    for (Part const& p : components_)
        if (p.size > 0) std::copy_n(p.series->terms().n, p.count, n + p.at);
}

[[gnu::always_inline]] inline void SharedTerms::weigh_in_lanes(double const* x, double const* w,
                                                               double const* n, double* c) const {
    V4 f{}, y{};
    double const* const own = n_.data();
    for (int k = 0; k < series_; k += 4) put(c + k, V4{});
    for (unsigned i = 0; i < components_.size(); ++i) {
        Part const& p = components_[i];
        const double xi = x[i];
        if (xi == 0.0) continue;
        double const* const from = n + p.at;
        double* const to = c + p.first;
        for (int k = 0, size = p.size; k < size; k += 4) {
            get(y, to + k), get(f, from + k);
            put(to + k, y + xi * f);
        }
    }
    for (unsigned i = 0; i < functions_.size(); ++i) {
        Function const& p = functions_[i];
        const double wi = w[i];
        for (int k = p.first, end = k + p.size; k < end; k += 4)
            get(f, own + k), put(c + k, wi * f);
        for (int k = p.shaped_first, end = k + p.shaped_size; k < end; k += 4)
            get(f, own + k), put(c + k, wi * f);
    }
    for (unsigned k = 0; k < levels_.size(); ++k)
        c[static_cast<unsigned>(terms()) + k] = w[levels_[k].function];
}
void SharedTerms::weigh_narrow(double const* x, double const* w, double const* n, double* c) const {
    weigh_in_lanes(x, w, n, c);
}
#if defined(__x86_64__)
[[gnu::target("avx2")]] void SharedTerms::weigh_wide(double const* x, double const* w,
                                                     double const* n, double* c) const {
    weigh_in_lanes(x, w, n, c);
}
#endif
void SharedTerms::weigh(double const* x, double const* w, double const* n, double* c) const {
#if defined(__x86_64__)
    if (lanes::wide) return weigh_wide(x, w, n, c);
#endif
    weigh_narrow(x, w, n, c);
}

// ---- one state

/// From its value at δ = 0. With h the exponent: δ·h' = h1, δ²·h'' = h2, δ³·h''' = h3.
void SharedTerms::Level::add(double weight, double delta, double tau, int order, Sums& sums) const {
    if (weight == 0.0) return;
    Term const& t = term;
    const double offset = tau - t.c, x = t.l > 0.0 ? std::pow(delta, t.l) : 0.0;
    const double f = weight * t.n *
                     std::exp(t.t * std::log(tau) - t.b * offset * offset + t.beta * t.gamma -
                              t.eta * t.epsilon * t.epsilon);
    const double rise = std::expm1(-x - delta * (t.eta * (delta - 2.0 * t.epsilon) + t.beta));
    const double h1 = -2.0 * t.eta * delta * (delta - t.epsilon) - t.beta * delta - t.l * x;
    const double h2 = -2.0 * t.eta * delta * delta - t.l * (t.l - 1.0) * x;
    const double h3 = -t.l * (t.l - 1.0) * (t.l - 2.0) * x;
    const double a = f * rise, whole = f * (1.0 + rise);
    const double g1 = t.t - 2.0 * t.b * tau * offset, g2 = 2.0 * t.b * tau * (t.c - 2.0 * tau);
    sums.d[0] += a;
    sums.d[3] += whole * h1;
    if (order < 2) return;
    sums.d[6] += whole * (h1 * h1 + h2);
    sums.d[1] -= a * g1;
    sums.d[2] += a * (g1 * g1 + g2 + g1);
    sums.d[4] -= whole * h1 * g1;
    if (order > 2) sums.third += whole * (h1 * (h1 * h1 + 3.0 * h2) + h3);
}

/// δ^i·∂^i/∂δ^i of δ^d·exp(h) over itself is d + h1, d(d−1) + 2d·h1 + h1² + h2: for exp(−δ^l) h1 =
/// −u, u = l·δ^l, h2 = −(l − 1)·u.
template <bool Keep>
[[gnu::always_inline]] inline Sums SharedTerms::sum_in_lanes(double const* weight, double delta,
                                                             double tau, Kept* kept) const {
    double powers[kMaxPower + 1];
    powers_of(delta, top_, powers);
    const double ln_tau = std::log(tau);
    const int decays = padded(top_l_ + 1), size = terms();
    SmallArray<double, 400> exponentials(decays + size);
    double *const E = &exponentials[0], *const phi = E + decays;
    E[0] = 0.0;
    for (int l = 1; l < decays; ++l) E[l] = l <= top_l_ ? -powers[l] : 0.0;
    V4 t{}, d{}, x{}, y{};
    for (int k = 0; k < series_; k += 4) {
        get(t, t_.data() + k);
        put(phi + k, t * ln_tau);
    }
    for (int k = series_; k < size; k += 4) {
        get(t, t_.data() + k), get(x, epsilon_.data() + k), get(y, eta_.data() + k);
        V4 e = t * ln_tau - y * (delta - x) * (delta - x);
        get(x, gamma_.data() + k), get(y, beta_.data() + k);
        e -= y * (delta - x);
        if (bells_in_tau_) {
            get(x, c_.data() + k), get(y, b_.data() + k);
            e -= y * (tau - x) * (tau - x);
        }
        put(phi + k, e);
    }
    lanes::exp_lanes<V4, lanes::I4>(E, decays + size);
    V4 a{}, L{}, LL{}, U{}, UU{}, LU{};
    for (int k = 0; k < series_; k += 4) {
        V4 f{}, w{};
        get(f, phi + k), gather(x, powers, dpower_.data() + k), gather(y, E, lpower_.data() + k);
        f = f * x * y;
        gather(x, powers, lpower_.data() + k), get(y, l_.data() + k);
        const V4 u = y * x;
        get(t, t_.data() + k), get(d, d_.data() + k), get(w, weight + k);
        weighted(w, f);
        const V4 e = d - u, wt = w * t;
        a += w, L += w * e, LL += w * (d * (d - 1.0) - u * (2.0 * d + (y - 1.0) - u));
        U += wt, UU += wt * (t + 1.0), LU += wt * e;
        if constexpr (Keep) put(kept->a + k, f), put(kept->L + k, f * e), put(kept->U + k, f * t);
    }
    for (int k = series_; k < size; k += 4) {
        V4 f{}, w{};
        get(f, phi + k), gather(x, powers, dpower_.data() + k);
        f = f * x;
        get(x, eta_.data() + k), get(y, epsilon_.data() + k);
        const V4 q2 = -2.0 * delta * delta * x;
        V4 q = 2.0 * x * y;
        get(y, beta_.data() + k), get(t, t_.data() + k), get(d, d_.data() + k), get(w, weight + k);
        q = q2 + (q - y) * delta;
        weighted(w, f);
        const V4 e = d + q;
        V4 g{};
        if (bells_in_tau_) {
            get(x, b_.data() + k), get(y, c_.data() + k);
            g = 2.0 * x * tau * (y - 2.0 * tau);
            t -= 2.0 * x * tau * (tau - y);
        }
        const V4 wt = w * t;
        a += w, L += w * e, LL += w * (d * (d - 1.0) + q * (2.0 * d + q) + q2);
        U += wt, UU += wt * (t + 1.0) + w * g, LU += wt * e;
        if constexpr (Keep) put(kept->a + k, f), put(kept->L + k, f * e), put(kept->U + k, f * t);
    }
    Sums sums;
    sums.d[0] = total(a), sums.d[3] = total(L), sums.d[6] = total(LL);
    sums.d[1] = -total(U), sums.d[2] = total(UU), sums.d[4] = -total(LU);
    return sums;
}
template <bool Keep>
Sums SharedTerms::sum_narrow(double const* c, double delta, double tau, Kept* kept) const {
    return sum_in_lanes<Keep>(c, delta, tau, kept);
}
#if defined(__x86_64__)
template <bool Keep>
[[gnu::target("avx2")]] Sums SharedTerms::sum_wide(double const* c, double delta, double tau,
                                                   Kept* kept) const {
    return sum_in_lanes<Keep>(c, delta, tau, kept);
}
#endif

Sums SharedTerms::sum(double const* c, double delta, double tau, Kept* kept) const {
#if defined(__x86_64__)
    if (lanes::wide)
        return kept ? sum_wide<true>(c, delta, tau, kept) : sum_wide<false>(c, delta, tau, kept);
#endif
    return kept ? sum_narrow<true>(c, delta, tau, kept) : sum_narrow<false>(c, delta, tau, kept);
}

Sums SharedTerms::second(double const* c, double delta, double tau) const {
    Sums sums = sum(c, delta, tau, nullptr);
    for (unsigned k = 0; k < levels_.size(); ++k)
        levels_[k].add(c[static_cast<unsigned>(terms()) + k], delta, tau, 2, sums);
    return sums;
}

Sums SharedTerms::each(double const* c, double const* n, double delta, double tau,
                       std::array<double, 3>* component, std::array<double, 3>* function) const {
    const int size = terms();
    SmallArray<double, 900> values(3 * size);
    Kept kept{&values[0], &values[0] + size, &values[0] + 2 * size};
    Sums sums = sum(c, delta, tau, &kept);
    const auto add = [&](double const* factor, int first, int count, double* to) {
        lanes::V2 a{}, L{}, U{};
        for (int k = 0; k < count; k += 2) {
            const lanes::V2 f = lanes::load(factor + k);
            a += f * lanes::load(kept.a + first + k);
            L += f * lanes::load(kept.L + first + k);
            U += f * lanes::load(kept.U + first + k);
        }
        to[0] += lanes::sum(a), to[1] += lanes::sum(L), to[2] += lanes::sum(U);
    };
    for (unsigned i = 0; i < components_.size(); ++i) {
        Part const& p = components_[i];
        if (p.size == 0) continue;
        component[i][0] = component[i][1] = component[i][2] = 0.0;
        add(n + p.at, p.first, p.size, component[i].data());
    }
    for (unsigned f = 0; f < functions_.size(); ++f) {
        Function const& own = functions_[f];
        function[f][0] = function[f][1] = function[f][2] = 0.0;
        add(n_.data() + own.first, own.first, own.size, function[f].data());
        add(n_.data() + own.shaped_first, own.shaped_first, own.shaped_size, function[f].data());
    }
    for (unsigned k = 0; k < levels_.size(); ++k) {
        Sums s;
        levels_[k].add(1.0, delta, tau, 2, s);
        auto& to = function[levels_[k].function];
        to[0] += s.d[0], to[1] += s.d[3], to[2] -= s.d[1];
        sums.add(c[static_cast<unsigned>(size) + k], s);
    }
    return sums;
}

}  // namespace corvane::gerg
