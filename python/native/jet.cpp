#include "jet.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <mutex>
#include <numeric>
#include <stdexcept>

namespace py {
namespace {
void monomials(int m, int left, std::vector<int>& now, std::vector<std::vector<int>>& all) {
    if (static_cast<int>(now.size()) == m) {
        all.push_back(now);
        return;
    }
    for (int k = 0; k <= left; ++k) {
        now.push_back(k);
        monomials(m, left - k, now, all);
        now.pop_back();
    }
}
}  // namespace

int Space::index(std::vector<int> const& exponent) const {
    const auto at = std::find(exponents.begin(), exponents.end(), exponent);
    if (at == exponents.end()) throw std::logic_error("no such derivative");
    return static_cast<int>(at - exponents.begin());
}

Space const& Space::of(int m, int order) {
    static std::mutex guard;
    static auto& kept = *new std::map<std::pair<int, int>, std::unique_ptr<Space const>>;
    const std::lock_guard lock(guard);
    auto& place = kept[{m, order}];
    if (place) return *place;
    auto space = std::make_unique<Space>();
    space->m = m;
    space->order = order;
    std::vector<int> now;
    monomials(m, order, now, space->exponents);
    const auto total = [](std::vector<int> const& e) { return std::accumulate(e.begin(), e.end(), 0); };
    std::stable_sort(space->exponents.begin(), space->exponents.end(), [&](auto const& a, auto const& b) {
        return total(a) != total(b) ? total(a) < total(b) : a > b;
    });
    const int n = static_cast<int>(space->exponents.size());
    for (int a = 0; a < n; ++a)
        for (int b = 0; b < n; ++b) {
            std::vector<int> sum = space->exponents[a];
            for (int k = 0; k < m; ++k) sum[k] += space->exponents[b][k];
            if (total(sum) <= order) space->products.push_back({a, b, space->index(sum)});
        }
    place = std::move(space);
    return *place;
}

Jet::Jet(Space const& space, double value) : space_(&space), c_(space.exponents.size(), 0.0) {
    c_[0] = value;
}

Jet Jet::variable(Space const& space, double value, int which, double slope) {
    Jet r(space, value);
    r.c_[1 + which] = slope;
    return r;
}

Jet Jet::operator+(Jet const& b) const {
    Jet r(*this);
    for (std::size_t k = 0; k < c_.size(); ++k) r.c_[k] += b.c_[k];
    return r;
}
Jet Jet::operator*(Jet const& b) const {
    if (space_ != b.space_) throw std::invalid_argument("numbers of different evaluations");
    Jet r(*space_, 0.0);
    for (auto const& [i, j, k] : space_->products) r.c_[k] += c_[i] * b.c_[j];
    return r;
}
Jet Jet::operator+(double b) const {
    Jet r(*this);
    r.c_[0] += b;
    return r;
}
Jet Jet::operator*(double b) const {
    Jet r(*this);
    for (double& c : r.c_) c *= b;
    return r;
}

Jet Jet::compose(Taylor const& f) const {
    Jet v(*this);
    v.c_[0] = 0.0;
    Jet r(*space_, f[space_->order]);
    for (int n = space_->order - 1; n >= 0; --n) r = r * v + f[n];
    return r;
}

Jet Jet::pow(double a) const {
    const double v = value();
    if (a >= 0.0 && a == std::floor(a) && a < 1e3) {  // also where v <= 0
        Jet r(*space_, 1.0), base(*this);
        for (int n = static_cast<int>(a); n > 0; n /= 2) {
            if (n % 2) r = r * base;
            if (n > 1) base = base * base;
        }
        return r;
    }
    Taylor f;
    double binomial = 1.0;
    for (int k = 0; k <= kOrder; ++k) {
        f[k] = binomial * std::pow(v, a - k);
        binomial *= (a - k) / (k + 1);
    }
    return compose(f);
}
Jet Jet::pow(Jet const& exponent) const {
    return (exponent * log()).exp();
}
Jet Jet::exp() const {
    const double f = std::exp(value());
    return compose({f, f, f / 2, f / 6, f / 24});
}
Jet Jet::expm1() const {
    const double f = std::exp(value());
    return compose({std::expm1(value()), f, f / 2, f / 6, f / 24});
}
Jet Jet::log() const {
    const double r = 1 / value();
    return compose({std::log(value()), r, -r * r / 2, r * r * r / 3, -r * r * r * r / 4});
}
Jet Jet::log1p() const {
    const double r = 1 / (1 + value());
    return compose({std::log1p(value()), r, -r * r / 2, r * r * r / 3, -r * r * r * r / 4});
}
Jet Jet::sin() const {
    const double s = std::sin(value()), c = std::cos(value());
    return compose({s, c, -s / 2, -c / 6, s / 24});
}
Jet Jet::cos() const {
    const double s = std::sin(value()), c = std::cos(value());
    return compose({c, -s, -c / 2, s / 6, c / 24});
}
Jet Jet::tanh() const {
    const double t = std::tanh(value()), d = 1 - t * t;
    return compose({t, d, -t * d, d * (3 * t * t - 1) / 3, t * d * (2 - 3 * t * t) / 3});
}
Jet Jet::arctan() const {
    const double x = value(), d = 1 / (1 + x * x);
    return compose({std::atan(x), d, -x * d * d, (3 * x * x - 1) * d * d * d / 3,
                    x * (1 - x * x) * d * d * d * d});
}

}  // namespace py
