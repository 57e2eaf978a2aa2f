#include <corvane/classic/equilibria/crit_slope.h>
#include <corvane/core/constants.h>
#include <corvane/core/numelo.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using corvane::LineEnd;

namespace {

// The critical point of a composition.

constexpr int kTrials = 10;
constexpr double kFirstTrial = 0.001, kRootTolerance = 1e-10, kStencil = 0.001;  // relative

struct Critical {
    ModelN const* model;
    double* rho;  // density of the temperature search
    double* T;    // start value, then that of the last density
    Vector<double> const* x;
    Vector<double> u;  // eigenvector of the last density; empty at first
};

/// Smallest eigenvalue of H, and its eigenvector.
double smallest(Matrix<double> const& H, Vector<double>& u) {
    Vector<double> values;
    Matrix<double> vectors;
    lin_jacobi(H, values, vectors);
    u = vectors[0];
    return values[0];
}

/// Derivative of the smallest eigenvalue along u by the five-point formula.
double slope_along(ModelN const& m, Vector<double> const& n, double T, Vector<double> const& u) {
    const double h = kStencil * n.sum();
    Vector<double> unused;
    const auto at = [&](int k) { return smallest(m.PsiH(n + k * h * u, T), unused); };
    return (8 * (at(1) - at(-1)) - (at(2) - at(-2))) / (12 * h);
}

/// Gives u, whose sign is arbitrary, the direction of `before`, and keeps out absent components.
void orient(Vector<double>& u, Vector<double> const& before, Vector<double> const& x) {
    for (int i = 0; i < u.size(); ++i)
        if (x[i] <= 0) u[i] = 0.0;
    if (before.size() == u.size() && u * before < 0) u = u * -1.0;
}

double objcrit_T(double T, void* ctx) {
    auto const& s = *static_cast<Critical const*>(ctx);
    Vector<double> u;
    return smallest(s.model->PsiH(*s.rho, T, *s.x), u);
}

/// Steps from start, where f is f_start, until f changes its sign; doubles the step while f falls,
/// reverses and doubles it otherwise. v receives every trial. Returns f there.
double bracket(numelo_function f, void* ctx, double start, double f_start, double& v) {
    double step = kFirstTrial * start;
    for (int k = 0; k < kTrials; ++k) {
        v = start + step;
        const double f_v = f(v, ctx);
        if (f_start * f_v <= 0) return f_v;
        step *= std::fabs(f_v) < std::fabs(f_start) ? 2 : -2;
    }
    throw ThException(th_generic);
}

double objcrit_rho(double rho, void* ctx) {
    auto& s = *static_cast<Critical*>(ctx);
    s.rho = &rho;
    const double T0 = *s.T, f0 = objcrit_T(T0, ctx);
    const double f1 = bracket(objcrit_T, ctx, T0, f0, *s.T), T1 = *s.T;
    *s.T = eqn_regulafalsi(objcrit_T, ctx, T1, T0, f1, f0, kRootTolerance * T1);
    s.rho = nullptr;
    const Vector<double> n = rho * *s.x;
    Vector<double> u;
    smallest(s.model->PsiH(n, *s.T), u);
    orient(u, s.u, *s.x);
    s.u = u;
    return slope_along(*s.model, n, *s.T, u);
}

/// Critical density and temperature of composition x from start values.
void crit_x(ModelN const* model, Vector<double> const& x, double& rho, double& T) {
    Critical context{model, nullptr, &T, &x, {}};
    const double rho0 = rho, f0 = objcrit_rho(rho0, &context);
    const double f1 = bracket(objcrit_rho, &context, rho0, f0, rho), rho1 = rho;
    rho = eqn_regulafalsi(objcrit_rho, &context, rho1, rho0, f1, f0, kRootTolerance * rho1);
    objcrit_rho(rho, &context);  // T of the final density
}

// The line.

constexpr int kMostPoints = 1000;
constexpr double kDense = 3.0, kHighest = 1000.0;            // rho·Σ x_i·vcrit_i; MPa
constexpr double kVanishing = 1e-6;                          // mole fraction
constexpr double kLargestStep = 0.05, kSmallestStep = 1e-6;  // in the metric of Point
constexpr double kTangentStep = 1e-4;
constexpr double kStraight = 0.9995, kBent = 0.99;  // cosine of step and tangent: longer, refused
constexpr double kUnit = 30.0;                      // see Corrector
// of squares: to be confirmed by crit_x, good enough without that
constexpr double kNearby = 1e-8, kLargestSum = 1e-12;
constexpr double kSame = 1e-4;
constexpr int kFitIterations = 20;

/// A point of the line, or a difference of two: x[0], ln rho, ln T.
using Point = std::array<double, 3>;

Point operator-(Point const& a, Point const& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
Point along(Point const& a, double s, Point const& t) {
    return {a[0] + s * t[0], a[1] + s * t[1], a[2] + s * t[2]};
}
double dot(Point const& a, Point const& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
double length(Point const& a) {
    return std::sqrt(dot(a, a));
}
Point unit(Point const& a) {
    return along({}, 1 / length(a), a);
}

bool is_vanishing(double x0) {
    return std::min(x0, 1 - x0) < kVanishing;
}

class Line {
  public:
    Line(ModelN const& model, Vector<double> const& x) : model_(model), others_(x) {
        const double rest = x.sum() - x[0];
        for (int i = 0; i < x.size(); ++i)
            others_[i] = i == 0 ? 0.0 : rest > 0 ? x[i] / rest : 1.0 / (x.size() - 1);
    }

    Vector<double> composition(double x0) const {
        Vector<double> x = others_ * (1 - x0);
        x[0] = x0;
        return x;
    }
    /// Mole-fraction average of a property of the components.
    double average(double x0, double (Model1::*property)() const) const {
        const Vector<double> x = composition(x0);
        double sum = 0.0;
        for (int i = 0; i < x.size(); ++i) sum += x[i] * (model_.mdl1[i]->*property)();
        return sum;
    }
    double pressure(Point const& y) const {
        const double rho = std::exp(y[1]), T = std::exp(y[2]);
        return model_.Z(rho, T, composition(y[0])) * R * T * rho;
    }

    /// The critical point at the composition of y, from the rest of y.
    Point solve(Point const& y) const {
        double rho = std::exp(y[1]), T = std::exp(y[2]);
        crit_x(&model_, composition(y[0]), rho, T);
        return {y[0], std::log(rho), std::log(T)};
    }
    /// The same where no start is known.
    Point search(double x0) const {
        const double T = average(x0, &Model1::Tcrit), v = average(x0, &Model1::vcrit);
        if (!(T > 0) || !(v > 0)) throw ThException(th_out_of_range);
        for (double fT : {1.0, 1.15, 1.3, 0.9})
            for (double frho : {1.0, 1.25, 0.8, 1.6}) try {
                    const Point y = solve({x0, std::log(frho / v), std::log(fT * T)});
                    if (std::exp(y[1]) * v < kDense && pressure(y) > 0) return y;
                } catch (...) {
                }
        if (others_.size() == 2)
            for (int k = 0; k < 2; ++k) try {
                    const bool heavy0 = model_.mdl1[0]->Tcrit() > model_.mdl1[1]->Tcrit();
                    return reach(x0, (k == 0) == heavy0 ? 1.0 : 0.0);
                } catch (...) {
                }
        throw ThException(th_generic);
    }

    /// The same along the line from a pure component, x[0] = end.
    Point reach(double x0, double end) const {
        const Point pure{end, -std::log(average(end, &Model1::vcrit)),
                         std::log(average(end, &Model1::Tcrit))};
        Line path(*this);
        path.start(solve(pure), end > 0 ? -kLargestStep : kLargestStep);
        for (int k = 0; k < kMostPoints; ++k) {
            const Point before = path.y_;
            if (!path.advance()) break;
            const double step = path.y_[0] - before[0];
            if ((before[0] - x0) * (path.y_[0] - x0) <= 0) {
                Point y = along(before, (x0 - before[0]) / step, path.y_ - before);
                y[0] = x0;
                return solve(y);
            }
            if (path.pressure(path.y_) > kHighest || path.y_[0] == 1 - end) break;
        }
        throw ThException(th_generic);
    }

    /// Sets the point and the direction from which advance goes on.
    void start(Point const& y, double s) {
        y_ = y;
        u_ = eigenvector(y);
        tangent_ = tangent_at(y, {s, 0.0, 0.0});
        largest_ = std::max(kLargestStep, std::fabs(s));
        step_ = std::min(std::fabs(s / tangent_[0]), largest_);
    }

    /// The next point of the line; false where it ends open.
    bool advance() {
        for (; step_ > kSmallestStep; step_ *= 0.5) try {
                const Point next = step_along_tangent();
                const Point move = next - y_;
                const double cosine = dot(move, tangent_) / length(move);
                if (!(cosine > kBent)) continue;
                if (!is_vanishing(next[0])) tangent_ = tangent_at(next, tangent_);
                u_ = eigenvector(next);
                y_ = next;
                if (cosine > kStraight) step_ = std::min(1.5 * step_, largest_);
                return true;
            } catch (...) {  // no such point: a shorter step
            }
        return false;
    }

    Point const& point() const { return y_; }

  private:
    /// The next point, or the pure component where that would lie beyond it.
    Point step_along_tangent() const {
        const Point predicted = along(y_, step_, tangent_);
        if (!is_vanishing(predicted[0])) return correct(predicted);
        const double end = predicted[0] < 0.5 ? 0.0 : 1.0;
        Point last = along(y_, (end - y_[0]) / tangent_[0], tangent_);
        last[0] = end;
        return solve(last);
    }

    Vector<double> eigenvector(Point const& y) const {
        const Vector<double> x = composition(y[0]);
        Vector<double> u;
        smallest(model_.PsiH(std::exp(y[1]) * x, std::exp(y[2])), u);
        orient(u, u_, x);
        return u;
    }

    /// Both conditions at y, made dimensionless with rho.
    std::array<double, 2> conditions(Point const& y) const {
        if (!(y[0] >= 0 && y[0] <= 1)) throw ThException(th_out_of_range);
        const double rho = std::exp(y[1]), T = std::exp(y[2]);
        const Vector<double> x = composition(y[0]), n = rho * x;
        Vector<double> u;
        const double value = smallest(model_.PsiH(n, T), u);
        orient(u, u_, x);
        return {rho * value, rho * rho * slope_along(model_, n, T, u)};
    }

    /// Direction of the line at y, on the side of `before`: normal to the gradients of both
    /// conditions.
    Point tangent_at(Point const& y, Point const& before) const {
        Point g[2];
        for (int j = 0; j < 3; ++j) {
            Point low = y, high = y;
            low[j] -= kTangentStep;
            high[j] += kTangentStep;
            if (j == 0) {
                low[0] = std::max(low[0], 0.0);
                high[0] = std::min(high[0], 1.0);
            }
            const auto a = conditions(low), b = conditions(high);
            for (int i = 0; i < 2; ++i) g[i][j] = (b[i] - a[i]) / (high[j] - low[j]);
        }
        const Point t =
            unit({g[0][1] * g[1][2] - g[0][2] * g[1][1], g[0][2] * g[1][0] - g[0][0] * g[1][2],
                  g[0][0] * g[1][1] - g[0][1] * g[1][0]});
        if (!std::isfinite(length(t))) throw ThException(th_generic);
        return along({}, dot(t, before) < 0 ? -1.0 : 1.0, t);
    }

    /// Context of the corrector's residuals. Its variables are 1 + (y − predicted)/kUnit, so that
    /// the difference steps of fit_marquardt, 3e-6 of a variable, become 1e-4 in y: large against
    /// the noise of a numerical PsiH.
    struct Corrector {
        Line const* line;
        Point predicted;
        Point at(Vector<double> const& v) const {
            return along(predicted, kUnit, {v[0] - 1, v[1] - 1, v[2] - 1});
        }
    };

    /// Both conditions, and the distance along the tangent.
    static Vector<double> residuals(Vector<double> const& v, void* ctx) {
        auto const& s = *static_cast<Corrector const*>(ctx);
        const Point y = s.at(v);
        const auto c = s.line->conditions(y);
        Vector<double> r(3);
        r[0] = c[0];
        r[1] = c[1];
        r[2] = dot(s.line->tangent_, y - s.predicted);
        return r;
    }

    Point correct(Point const& predicted) const {
        Corrector context{this, predicted};
        Vector<double> v(3);
        v.set(1.0);
        const double F = fit_marquardt(residuals, v, 3, &context, kFitIterations, 0);
        if (!(F < kNearby)) throw ThException(th_generic);
        const Point y = context.at(v);
        try {
            const Point solved = solve(y), change = solved - y;
            if (length(change) < kSame) return solved;
        } catch (...) {  // next to an extremum of x
        }
        if (!(F < kLargestSum)) throw ThException(th_generic);
        return y;
    }

    ModelN const& model_;
    Vector<double> others_;
    Vector<double> u_;  // eigenvector at the last point
    Point y_{}, tangent_{};
    double step_ = 0.0, largest_ = 0.0;
};

bool is_dense(Line const& line, double x0, double rho, double p) {
    return rho * line.average(x0, &Model1::vcrit) > kDense || p > kHighest;
}
}  // namespace

void crit_slope_x(ModelN const* model, Vector<double>& x, double& s, Matrix<double>& line) {
    const int n = model->mdl1.size();
    if (n < 1 || x.size() != n) throw MthException(mth_dimensions);
    const double step = n > 1 ? s : 0.0;
    if (n > 2 && step != 0) throw ThException(th_no_option);
    if (!(x[0] >= 0 && x[0] + step >= 0) || !(x[0] <= 1 && x[0] + step <= 1))
        throw ThException(th_out_of_range);
    Line path(*model, x);
    const bool given = line.rows() > 0 && line.cols() > 2 && line[0][1] > 0 && line[0][2] > 0;
    const Point first =
        given ? path.solve({x[0], std::log(line[0][2]), std::log(line[0][1])}) : path.search(x[0]);
    if (step != 0)
        path.start(first, step);
    else if (!(path.pressure(first) > 0))
        throw ThException(th_generic);

    std::vector<std::array<double, 4>> rows;
    const auto add = [&](Point const& y) {
        rows.push_back({y[0], std::exp(y[2]), std::exp(y[1]), path.pressure(y)});
    };
    const auto at_end = [&] {
        auto const& row = rows.back();
        return rows.size() > 1 && (is_vanishing(row[0]) || is_dense(path, row[0], row[2], row[3]) ||
                                   (row[3] <= 0 && rows[rows.size() - 2][3] > 0));
    };
    add(first);
    while (step != 0 && rows.size() < kMostPoints && !at_end() && path.advance()) add(path.point());

    const std::size_t count = rows.size();
    line.size(static_cast<int>(count), 4);
    for (std::size_t k = 0; k < count; ++k) std::copy_n(rows[k].data(), 4, line[k].data);
    x = path.composition(rows.back()[0]);
    s = count > 1 ? rows[count - 1][0] - rows[count - 2][0] : 0.0;
}

namespace corvane {

LineEnd critical_line_end(ModelN const* model, Matrix<double> const& line) {
    Vector<double> const& last = line[line.rows() - 1];
    const double x0 = last[0];
    if (x0 == 0 || x0 == 1) return LineEnd::pure;
    if (is_vanishing(x0)) return LineEnd::vanishing;
    Vector<double> x(model->mdl1.size());
    x.set(1.0);
    if (is_dense(Line(*model, x), x0, last[2], last[3])) return LineEnd::dense;
    if (last[3] <= 0) return LineEnd::tension;
    return line.rows() >= kMostPoints ? LineEnd::full : LineEnd::open;
}

}  // namespace corvane
