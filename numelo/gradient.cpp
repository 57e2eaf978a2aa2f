// Gradient and matrix of second derivatives of a function of several variables.
#include <corvane/core/numelo.h>
#include <numelo/ladder.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using corvane::Quotient;

constexpr double infinity = std::numeric_limits<double>::infinity();

void check(Vector<double> const& x, int order, Vector<double> const& h) {
    if (order != 2) throw MthException(mth_no_option);
    if (x.n != h.n) throw MthException(mth_dimensions);
    for (int i = 0; i < x.n; ++i)
        if (!(h[i] > 0.0) || !std::isfinite(h[i]) || x[i] + h[i] == x[i])
            throw MthException(mth_bad_step, i);
}

/// Second derivatives by ladders whose rungs are t·h, t = 16, 8, 4, … The mixed ones use the points
/// (x ± s_i, x ± s_j) of equal signs and those on the axes (Abramowitz & Stegun, Handbook of
/// Mathematical Functions, 1964, eq. 25.3.27), which the diagonal has evaluated already.
class Hessian {
  public:
    Hessian(numelo_functionv f, void* ctx, Vector<double> const& x, Vector<double> const& h)
        : f_(f), ctx_(ctx), x_(x), h_(h), point_(x), f0_(f(x, ctx)), axes_(x.n) {}

    Matrix<double> result() {
        if (!std::isfinite(f0_)) throw MthException(mth_out_of_range);
        const int n = x_.n;
        Matrix<double> hessian(n, n);
        for (int i = 0; i < n; ++i) {
            hessian[i][i] = diagonal(i);
            for (int j = 0; j < i; ++j) hessian[i][j] = hessian[j][i] = mixed(i, j);
        }
        return hessian;
    }

  private:
    static constexpr double outermost = 16.0;

    /// Values of f at one rung of the ladder along one component.
    struct Rung {
        double t = 0.0, step = 0.0, up = 0.0, down = 0.0;
    };

    bool absent(int i) const { return x_[i] == 0.0; }

    double start(int i) const {
        return absent(i) ? outermost
                         : std::min(outermost, std::max(1.0, 0.1 * std::fabs(x_[i]) / h_[i]));
    }

    double at(int i, double xi, int j, double xj) {
        point_[i] = xi;
        point_[j] = xj;
        const double f = f_(point_, ctx_);
        point_[i] = x_[i];
        point_[j] = x_[j];
        return f;
    }

    Rung rung(int i, double t) {
        for (Rung const& known : axes_[i])
            if (known.t == t) return known;
        Rung r;
        r.t = t;
        const double s = t * h_[i];
        r.step = x_[i] >= 0.0 ? (x_[i] + s) - x_[i] : x_[i] - (x_[i] - s);
        r.up = at(i, x_[i] + r.step, i, x_[i] + r.step);
        if (!absent(i)) r.down = at(i, x_[i] - r.step, i, x_[i] - r.step);
        axes_[i].push_back(r);
        return r;
    }

    double diagonal(int i) {
        const double unit = h_[i] * h_[i];
        if (absent(i)) {  // f(s) = f0 + f'·s + f''/2·s² + …: coefficient 1 of (f(s) − f0)/s
            auto row = [&](double& t, double& q, double& noise) {
                const Rung r = rung(i, t);
                q = (r.up - f0_) / t;
                noise = 2.0 * corvane::rounding(std::max(std::fabs(f0_), std::fabs(r.up))) / t;
            };
            return 2.0 * corvane::climb(row, Quotient::one_sided, 1, 5, outermost, 1.0) / unit;
        }
        auto row = [&](double& t, double& q, double& noise) {
            const Rung r = rung(i, t);
            const double s = r.step / h_[i];
            q = ((r.up - f0_) + (r.down - f0_)) / (s * s);
            noise = 4.0 * corvane::rounding(size(r)) / (s * s);
        };
        return corvane::climb(row, Quotient::even, 0, 3, start(i), 1.0) / unit;
    }

    double mixed(int i, int j) {
        if (absent(i)) std::swap(i, j);  // now i is absent only if both are
        auto row = [&](double& t, double& q, double& noise) {
            const Rung a = rung(i, t), b = rung(j, t);
            const double si = a.step, sj = b.step, unit = (si / h_[i]) * (sj / h_[j]);
            const double both = at(i, x_[i] + si, j, x_[j] + sj);
            if (!absent(j)) {
                const double other = at(i, x_[i] - si, j, x_[j] - sj);
                q = 0.5 * (((both - a.up) - (b.up - f0_)) + ((other - a.down) - (b.down - f0_))) /
                    unit;
            } else if (!absent(i)) {
                const double other = at(i, x_[i] - si, j, sj);
                q = 0.5 * ((both - a.up) - (other - a.down)) / unit;
            } else {
                q = ((both - a.up) - (b.up - f0_)) / unit;
            }
            noise = 3.0 * corvane::rounding(std::max({size(a), size(b), std::fabs(both)})) / unit;
        };
        const double first = std::min(start(i), start(j)), unit = h_[i] * h_[j];
        if (absent(j)) return corvane::climb(row, Quotient::one_sided, 0, 4, first, 1.0) / unit;
        return corvane::climb(row, Quotient::even, 0, 3, first, 1.0) / unit;
    }

    double size(Rung const& r) const {
        return std::max({std::fabs(f0_), std::fabs(r.up), std::fabs(r.down)});
    }

    numelo_functionv f_;
    void* ctx_;
    Vector<double> const &x_, &h_;
    Vector<double> point_;
    double f0_;
    std::vector<std::vector<Rung>> axes_;
};

}  // namespace

Vector<double> diff_gradient(numelo_functionv f, void* ctx, Vector<double> const& x, int order,
                             Vector<double> const& h) {
    check(x, order, h);
    Vector<double> gradient(x.n), point(x);
    for (int i = 0; i < x.n; ++i) {
        auto line = [&](double t) {
            point[i] = t;
            return f(point, ctx);
        };
        const double low = x[i] == 0.0 ? 0.0 : -infinity;
        gradient[i] = corvane::derivative(line, 1, x[i], h[i], 1, low, infinity);
        point[i] = x[i];
    }
    return gradient;
}

Matrix<double> diff_hessian(numelo_functionv f, void* ctx, Vector<double> const& x, int order,
                            Vector<double> const& h) {
    check(x, order, h);
    return Hessian(f, ctx, x, h).result();
}
