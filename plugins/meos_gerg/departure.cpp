#include <plugins/common/vector_exp.h>
#include <plugins/meos_gerg/departure.h>

#include <algorithm>
#include <cmath>

namespace corvane::gerg {

using namespace lanes;

namespace {

V2 of(std::vector<double> const& column, int k) {
    return load(column.data() + k);
}
V2 gathered(double const* powers, std::vector<int> const& which, int k) {
    int const* w = which.data() + k;
    return V2{powers[w[0]], powers[w[1]]};
}

constexpr int kMaxTerms = 100;  // per block

struct Kind {
    char const *label, *columns;
    int count;
    double Term::*column[7];
};
constexpr Kind kKinds[] = {
    {"power", "n d t l", 4, {&Term::n, &Term::d, &Term::t, &Term::l}},
    {"gerg",
     "n d t eta epsilon beta gamma",
     7,
     {&Term::n, &Term::d, &Term::t, &Term::eta, &Term::epsilon, &Term::beta, &Term::gamma}},
    {"gaussian",
     "n d t eta epsilon beta gamma",
     7,
     {&Term::n, &Term::d, &Term::t, &Term::eta, &Term::epsilon, &Term::b, &Term::c}},
};

bool whole(double x, int least) {
    return x >= least && x <= kMaxPower && x == std::floor(x);
}

}  // namespace

void Departure::read(SectionReader& section) {
    Departure fresh;
    const int blocks = section.at("blocks") ? section.count("blocks", 0, 8) : 0;
    for (int block = 0; block < blocks; ++block) {
        int kind = 0;
        while (kind < 2 && !section.at(kKinds[kind].label)) ++kind;
        Kind const& k = kKinds[kind];
        const int count = section.rows(k.label, kMaxTerms);
        fresh.blocks_.push_back({kind, count});
        for (int row = 0; row < count; ++row) {
            double value[7];
            section.row(value, k.count);
            Term t{};
            for (int c = 0; c < k.count; ++c) t.*k.column[c] = value[c];
            if (!whole(t.d, 0) || !whole(t.l, 0))
                section.refuse("d and l must be small whole numbers");
            fresh.terms_.push_back(t);
        }
    }
    if (blocks > 0) section.no_more_rows();
    fresh.arrange();
    *this = std::move(fresh);
}

void Departure::arrange() {
    std::vector<Term> order = terms_;
    const auto level =
        std::stable_partition(order.begin(), order.end(), [](Term const& t) { return t.d != 0.0; });
    level_ = static_cast<int>(level - order.begin());
    count_ = static_cast<int>(order.size());
    order.resize(static_cast<unsigned>(padded(count_)), Term{});
    for (Term const& t : order) {
        n_.push_back(t.n), d_.push_back(t.d), t_.push_back(t.t), l_.push_back(t.l);
        eta_.push_back(t.eta), epsilon_.push_back(t.epsilon), beta_.push_back(t.beta);
        gamma_.push_back(t.gamma), b_.push_back(t.b), c_.push_back(t.c);
        damped_.push_back(t.l > 0.0 ? 1.0 : 0.0);
        own_.push_back(t.d == 0.0 ? 0.0 : 1.0);
        dpower_.push_back(static_cast<int>(t.d)), lpower_.push_back(static_cast<int>(t.l));
    }
}

void Departure::write(FILE* f) const {
    if (blocks_.empty()) return;
    SectionWriter section(f);
    section.count("blocks", static_cast<int>(blocks_.size()));
    Term const* t = terms_.data();
    for (Block const& block : blocks_) {
        Kind const& k = kKinds[block.kind];
        std::fprintf(f, "%s:\t%d\t%s\n", k.label, block.count, k.columns);
        for (int row = 0; row < block.count; ++row, ++t)
            for (int c = 0; c < k.count; ++c)
                std::fprintf(f, "%.17g%c", t->*k.column[c], c + 1 < k.count ? ' ' : '\n');
    }
}

void powers_of(double delta, double* powers) {
    powers[0] = 1.0;
    powers[1] = delta;
    for (int k = 2; k <= kMaxPower; ++k) powers[k] = powers[k / 2] * powers[k - k / 2];
}

void Departure::temperature(double tau, double* logarithm) const {
    const double ln_tau = std::log(tau);
    for (int k = 0; k < size(); k += 2) {
        const V2 offset = tau - of(c_, k);
        store(logarithm + k, of(t_, k) * ln_tau - of(b_, k) * offset * offset);
    }
}

void Departure::exponents(double delta, double const* powers, double* exponent) const {
    for (int k = 0; k < size(); k += 2) {
        const V2 off = delta - of(epsilon_, k);
        store(exponent + k, -of(damped_, k) * gathered(powers, lpower_, k) -
                                of(eta_, k) * off * off - of(beta_, k) * (delta - of(gamma_, k)));
    }
}

/// With D = δ·∂/∂δ and φ = δ^d exp(…): D φ = e1 φ, D e1 = e2, D e2 = e3.
template <int order, bool Tau>
void Departure::add(double weight, double delta, double const* powers, double tau,
                    double const* factors, double const* exponentials, Sums& s) const {
    V2 a{}, d1{}, d2{}, d3{}, t1{}, t2{}, dt{};
    for (int k = 0; k < size(); k += 2) {
        const V2 f =
            of(n_, k) * load(factors + k) * load(exponentials + k) * gathered(powers, dpower_, k);
        const V2 own = f * of(own_, k);
        a += own;
        const V2 l = of(l_, k), pl = l * gathered(powers, lpower_, k);
        const V2 q2 = -2.0 * delta * delta * of(eta_, k);
        const V2 q1 = (2.0 * of(eta_, k) * of(epsilon_, k) - of(beta_, k)) * delta;
        const V2 e1 = of(d_, k) + (q2 + q1 - pl), e2 = 2.0 * q2 + q1 - l * pl;
        const V2 D2 = e1 * e1 + e2;
        if constexpr (order >= 1) d1 += f * e1;
        if constexpr (order >= 2) d2 += f * (D2 - e1);
        if constexpr (order >= 3) {
            const V2 e3 = 4.0 * q2 + q1 - l * l * pl;
            d3 += f * (e1 * D2 + 2.0 * e1 * e2 + e3 - 3.0 * D2 + 2.0 * e1);
        }
        if constexpr (Tau) {  // τ·∂/∂τ; T·∂/∂T is its negative
            const V2 f1 = of(t_, k) - 2.0 * of(b_, k) * tau * (tau - of(c_, k));
            const V2 f2 = 2.0 * of(b_, k) * tau * (of(c_, k) - 2.0 * tau);
            t1 += own * f1;
            t2 += own * (f1 * f1 + f2 + f1);
            dt += f * e1 * f1;
        }
    }
    for (int k = level_; k < count_; ++k) {  // from their value at δ = 0
        const unsigned i = static_cast<unsigned>(k);
        const double at0 = beta_[i] * gamma_[i] - eta_[i] * epsilon_[i] * epsilon_[i];
        const double rise = std::expm1(-damped_[i] * powers[lpower_[i]] -
                                       delta * (eta_[i] * (delta - 2.0 * epsilon_[i]) + beta_[i]));
        const double own = n_[i] * factors[k] * std::exp(at0) * rise;
        const double f1 = t_[i] - 2.0 * b_[i] * tau * (tau - c_[i]);
        a[0] += own;
        t1[0] += own * f1;
        t2[0] += own * (f1 * f1 + 2.0 * b_[i] * tau * (c_[i] - 2.0 * tau) + f1);
    }
    s.d[0] += weight * sum(a);
    if constexpr (order >= 1) s.d[3] += weight * sum(d1);
    if constexpr (order >= 2) s.d[6] += weight * sum(d2);
    if constexpr (order >= 3) s.third += weight * sum(d3);
    if constexpr (Tau) {
        s.d[1] -= weight * sum(t1);
        s.d[2] += weight * sum(t2);
        s.d[4] -= weight * sum(dt);
    }
}

template void Departure::add<0, false>(double, double, double const*, double, double const*,
                                       double const*, Sums&) const;
template void Departure::add<1, false>(double, double, double const*, double, double const*,
                                       double const*, Sums&) const;
template void Departure::add<2, false>(double, double, double const*, double, double const*,
                                       double const*, Sums&) const;
template void Departure::add<3, false>(double, double, double const*, double, double const*,
                                       double const*, Sums&) const;
template void Departure::add<2, true>(double, double, double const*, double, double const*,
                                      double const*, Sums&) const;

}  // namespace corvane::gerg
