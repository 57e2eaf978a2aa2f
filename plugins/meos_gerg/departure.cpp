#include <plugins/meos_gerg/departure.h>

#include <cmath>

namespace corvane::gerg {
namespace {

constexpr int kMaxTerms = 100;  // per block
constexpr int kMaxPower = 32;   // largest exponent of the density

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

/// δ^k, k = 0 … kMaxPower, worked out as far as they are asked for.
class Powers {
  public:
    explicit Powers(double delta) : delta_(delta) { value_[0] = 1.0; }
    double operator()(double k) {
        const int n = static_cast<int>(k);
        while (known_ < n) {
            value_[known_ + 1] = value_[known_] * delta_;
            ++known_;
        }
        return value_[n];
    }

  private:
    double delta_, value_[kMaxPower + 1];
    int known_ = 0;
};

/// δ^d exp(…) of one term after another, with the first three logarithmic derivatives: D φ = e1 φ,
/// D e1 = e2, D e2 = e3 where D = δ·∂/∂δ; `value` counts from δ = 0 (a difference only where d =
/// 0). Neighbours often share the exponential.
class DensityPart {
  public:
    explicit DensityPart(double delta) : delta_(delta), powers_(delta) {}
    void next(Term const& t) {
        if (t.l != l_ || t.eta != eta_ || t.beta != beta_ || t.epsilon != epsilon_ ||
            t.gamma != gamma_)
            exponential(t);
        value = phi = powers_(t.d) * exp_;
        if (t.d == 0.0) value = exp0_ * std::expm1(exponent_);
        e1 = t.d + g1_;
    }
    double value = 0.0, phi = 0.0, e1 = 0.0, e2 = 0.0, e3 = 0.0;

  private:
    void exponential(Term const& t) {
        l_ = t.l, eta_ = t.eta, beta_ = t.beta, epsilon_ = t.epsilon, gamma_ = t.gamma;
        const double pl = l_ > 0.0 ? powers_(l_) : 0.0, off = delta_ - epsilon_;
        const double at0 = beta_ * gamma_ - eta_ * epsilon_ * epsilon_;
        exp_ = std::exp(-pl - eta_ * off * off - beta_ * (delta_ - gamma_));
        exp0_ = std::exp(at0);
        exponent_ = -pl - delta_ * (eta_ * (delta_ - 2.0 * epsilon_) + beta_);
        const double q2 = -2.0 * eta_ * delta_ * delta_;
        const double q1 = (2.0 * eta_ * epsilon_ - beta_) * delta_;
        g1_ = q2 + q1 - l_ * pl;
        e2 = 2.0 * q2 + q1 - l_ * l_ * pl;
        e3 = 4.0 * q2 + q1 - l_ * l_ * l_ * pl;
    }

    double delta_;
    Powers powers_;
    double l_ = 0.0, eta_ = 0.0, beta_ = 0.0, epsilon_ = 0.0, gamma_ = 0.0;  // of exp_
    double exp_ = 1.0, exp0_ = 1.0, exponent_ = 0.0, g1_ = 0.0;
};

double temperature_factor(Term const& t, double tau, double log_tau) {
    double exponent = t.t * log_tau;
    if (t.b != 0.0) exponent -= t.b * (tau - t.c) * (tau - t.c);
    return exponent == 0.0 ? t.n : t.n * std::exp(exponent);
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
    *this = std::move(fresh);
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

void Departure::isotherm(double tau, std::vector<double>& factors) const {
    const double log_tau = std::log(tau);
    for (Term const& t : terms_) factors.push_back(temperature_factor(t, tau, log_tau));
}

void Departure::at(double delta, double const* factors, int order, Sums& s) const {
    DensityPart q(delta);
    for (Term const& t : terms_) {
        q.next(t);
        const double factor = *factors++, value = factor * q.phi, D2 = q.e1 * q.e1 + q.e2;
        s.d[0] += factor * q.value;
        s.d[3] += value * q.e1;
        s.d[6] += value * (D2 - q.e1);
        if (order < 3) continue;
        const double D3 = q.e1 * D2 + 2.0 * q.e1 * q.e2 + q.e3;
        s.third += value * (D3 - 3.0 * D2 + 2.0 * q.e1);
    }
}

void Departure::second(double delta, double tau, Sums& s) const {
    const double log_tau = std::log(tau);
    DensityPart q(delta);
    for (Term const& t : terms_) {
        q.next(t);
        const double factor = temperature_factor(t, tau, log_tau);
        const double own = factor * q.value, value = factor * q.phi;
        // τ·∂/∂τ; T·∂/∂T is its negative.
        const double f1 = t.t - 2.0 * t.b * tau * (tau - t.c);
        const double f2 = 2.0 * t.b * tau * (t.c - 2.0 * tau);
        s.d[0] += own;
        s.d[1] -= own * f1;
        s.d[2] += own * (f1 * f1 + f2 + f1);
        s.d[3] += value * q.e1;
        s.d[4] -= value * q.e1 * f1;
        s.d[6] += value * (q.e1 * q.e1 + q.e2 - q.e1);
    }
}

}  // namespace corvane::gerg
