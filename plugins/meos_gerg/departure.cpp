#include <plugins/meos_gerg/departure.h>

#include <cmath>

namespace corvane::gerg {
namespace {

constexpr int kMaxTerms = 100;   // per block
constexpr int kMaxPower = 32;    // largest exponent of the density

struct Kind {
    char const *label, *columns;
    int count;
    double Term::*column[7];
};
constexpr Kind kKinds[] = {
    {"power", "n d t l", 4, {&Term::n, &Term::d, &Term::t, &Term::l}},
    {"gerg", "n d t eta epsilon beta gamma", 7,
     {&Term::n, &Term::d, &Term::t, &Term::eta, &Term::epsilon, &Term::beta, &Term::gamma}},
    {"gaussian", "n d t eta epsilon beta gamma", 7,
     {&Term::n, &Term::d, &Term::t, &Term::eta, &Term::epsilon, &Term::b, &Term::c}},
};

bool whole(double x, int least) {
    return x >= least && x <= kMaxPower && x == std::floor(x);
}

double power(double x, int n) {
    double y = 1.0;
    for (; n > 0; n >>= 1, x *= x)
        if (n & 1) y *= x;
    return y;
}

/// δ^d exp(…) of a term and its first three logarithmic derivatives: D φ = e1 φ, D e1 = e2, D e2 =
/// e3 with D = δ·∂/∂δ.
struct DensityPart {
    double phi, e1, e2, e3;
    DensityPart(Term const& t, double delta) : phi(power(delta, static_cast<int>(t.d))), e1(t.d) {
        double exponent = 0.0, q1 = 0.0, q2 = 0.0, pl = 0.0;
        if (t.l > 0.0) {
            pl = power(delta, static_cast<int>(t.l));
            exponent -= pl;
        }
        if (t.eta != 0.0 || t.beta != 0.0) {
            const double off = delta - t.epsilon;
            exponent -= t.eta * off * off + t.beta * (delta - t.gamma);
            q2 = -2.0 * t.eta * delta * delta;
            q1 = (2.0 * t.eta * t.epsilon - t.beta) * delta;
        }
        if (exponent != 0.0) phi *= std::exp(exponent);
        e1 += q2 + q1 - t.l * pl;
        e2 = 2.0 * q2 + q1 - t.l * t.l * pl;
        e3 = 4.0 * q2 + q1 - t.l * t.l * t.l * pl;
    }
};

double temperature_factor(Term const& t, double tau, double log_tau) {
    double exponent = t.t * log_tau;
    if (t.b != 0.0) exponent -= t.b * (tau - t.c) * (tau - t.c);
    return exponent == 0.0 ? t.n : t.n * std::exp(exponent);
}

}  // namespace

void Departure::read(SectionReader& section, FILE* f) {
    Departure fresh;
    const int blocks = section.at("blocks") ? section.count("blocks", 0, 8) : 0;
    for (int block = 0; block < blocks; ++block) {
        int kind = 0;
        while (kind < 2 && !section.at(kKinds[kind].label)) ++kind;
        Kind const& k = kKinds[kind];
        const int count = section.count(k.label, 1, kMaxTerms);
        fresh.blocks_.push_back({kind, count});
        for (int row = 0; row < count; ++row) {
            Term t{};
            for (int c = 0; c < k.count; ++c)
                if (std::fscanf(f, "%lf", &(t.*k.column[c])) != 1 ||
                    !std::isfinite(t.*k.column[c]))
                    throw ThException(th_cannot_open);
            if (!whole(t.d, 1) || !whole(t.l, 0)) throw ThException(th_cannot_open);
            fresh.terms_.push_back(t);
        }
    }
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
    for (Term const& t : terms_) {
        const DensityPart q(t, delta);
        const double value = *factors++ * q.phi, D2 = q.e1 * q.e1 + q.e2;
        s.d[0] += value;
        s.d[3] += value * q.e1;
        s.d[6] += value * (D2 - q.e1);
        if (order < 3) continue;
        const double D3 = q.e1 * D2 + 2.0 * q.e1 * q.e2 + q.e3;
        s.third += value * (D3 - 3.0 * D2 + 2.0 * q.e1);
    }
}

void Departure::second(double delta, double tau, Sums& s) const {
    const double log_tau = std::log(tau);
    for (Term const& t : terms_) {
        const DensityPart q(t, delta);
        const double value = temperature_factor(t, tau, log_tau) * q.phi;
        // τ·∂/∂τ; T·∂/∂T is its negative.
        const double f1 = t.t - 2.0 * t.b * tau * (tau - t.c);
        const double f2 = 2.0 * t.b * tau * (t.c - 2.0 * tau);
        s.d[0] += value;
        s.d[1] -= value * f1;
        s.d[2] += value * (f1 * f1 + f2 + f1);
        s.d[3] += value * q.e1;
        s.d[4] -= value * q.e1 * f1;
        s.d[6] += value * (q.e1 * q.e1 + q.e2 - q.e1);
    }
}

}  // namespace corvane::gerg
