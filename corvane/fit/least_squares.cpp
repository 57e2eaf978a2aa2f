#include <corvane/fit/least_squares.h>

#include <algorithm>
#include <cmath>

namespace corvane::fit {

double loss_of(Loss loss, double width, double r) {
    const double size = std::fabs(r);
    if (loss == Loss::huber && size > width) return width * (2.0 * size - width);
    if (loss == Loss::cauchy) return width * width * std::log1p(r * r / (width * width));
    return r * r;
}

double weight_of(Loss loss, double width, double r) {
    const double size = std::fabs(r);
    if (loss == Loss::huber && size > width) return width / size;
    if (loss == Loss::cauchy) return 1.0 / (1.0 + r * r / (width * width));
    return 1.0;
}

namespace {
class Minimiser {
  public:
    Minimiser(Residuals const& f, LeastSquares const& how) : f_(f), how_(how) {}
    Minimum run(Eigen::VectorXd x);

  private:
    double cost(Eigen::VectorXd const& r) const {
        double sum = 0.0;
        for (Eigen::Index k = 0; k < r.size(); ++k)
            sum += robust(k) ? loss_of(how_.loss, how_.width, r[k]) : r[k] * r[k];
        return 0.5 * sum;
    }
    bool robust(Eigen::Index k) const { return how_.losses < 0 || k < how_.losses; }
    double clamp(Eigen::Index i, double x) const {
        if (how_.lower.size() == 0) return x;
        return std::clamp(x, how_.lower[i], how_.upper[i]);
    }
    bool held(Eigen::Index i, double x, double gradient) const {
        return how_.lower.size() > 0 &&
               ((x <= how_.lower[i] && gradient > 0.0) || (x >= how_.upper[i] && gradient < 0.0));
    }
    bool flat() const;  ///< no gradient is left
    Eigen::VectorXd step(double damping);
    void linearise();

    Residuals const& f_;
    LeastSquares const& how_;
    Minimum at_;
    Eigen::MatrixXd weighted_;  // Jacobian with the weights of the losses
    Eigen::VectorXd r_, gradient_, scale_;
    std::vector<Eigen::Index> free_;
};

void Minimiser::linearise() {
    weighted_ = at_.J;
    r_ = at_.r;
    for (Eigen::Index k = 0; k < r_.size(); ++k)
        if (robust(k)) {
            const double root = std::sqrt(weight_of(how_.loss, how_.width, r_[k]));
            weighted_.row(k) *= root;
            r_[k] *= root;
        }
    gradient_ = weighted_.transpose() * r_;
    scale_ = scale_.cwiseMax(weighted_.colwise().norm().transpose());
    free_.clear();
    for (Eigen::Index i = 0; i < at_.x.size(); ++i)
        if (scale_[i] > 0.0 && !held(i, at_.x[i], gradient_[i])) free_.push_back(i);
}

/// The damped step in the free variables; zero in the others.
Eigen::VectorXd Minimiser::step(double damping) {
    const auto n = static_cast<Eigen::Index>(free_.size()), m = weighted_.rows();
    Eigen::MatrixXd A = Eigen::MatrixXd::Zero(m + n, n);
    Eigen::VectorXd b = Eigen::VectorXd::Zero(m + n), full = Eigen::VectorXd::Zero(at_.x.size());
    for (Eigen::Index j = 0; j < n; ++j) {
        const Eigen::Index i = free_[static_cast<std::size_t>(j)];
        A.col(j).head(m) = weighted_.col(i) / scale_[i];
        A(m + j, j) = std::sqrt(damping);
    }
    b.head(m) = -r_;
    const Eigen::VectorXd s = A.colPivHouseholderQr().solve(b);
    double longest = 1.0;
    for (Eigen::Index j = 0; j < n; ++j) {
        const Eigen::Index i = free_[static_cast<std::size_t>(j)];
        full[i] = s[j] / scale_[i];
        const double room = how_.room.size() > 0 ? how_.room[i] : 1.0;
        longest = std::fmax(longest, std::fabs(full[i]) / (std::fabs(at_.x[i]) + room));
    }
    return full / longest;
}

bool Minimiser::flat() const {
    return std::all_of(free_.begin(), free_.end(), [&](Eigen::Index i) {
        return std::fabs(gradient_[i]) <= 1e-9 * scale_[i] * r_.norm();
    });
}

Minimum Minimiser::run(Eigen::VectorXd x) {
    for (Eigen::Index i = 0; i < x.size(); ++i) x[i] = clamp(i, x[i]);
    at_.x = x;
    scale_ = Eigen::VectorXd::Zero(x.size());
    if (!f_(at_.x, at_.r, &at_.J)) {
        at_.J.resize(0, 0);  // the sign of a start that is none
        return at_;
    }
    at_.cost = cost(at_.r);
    linearise();
    double damping = 1e-3, growth = 2.0;
    const double nothing = 1e-28 * at_.cost;  // what rounding leaves of the residuals, squared
    while (at_.iterations < how_.limit && (!how_.go_on || how_.go_on())) {
        ++at_.iterations;
        if (flat() || at_.cost <= nothing) {
            at_.converged = true;
            break;
        }
        Eigen::VectorXd trial = at_.x + step(damping);
        for (Eigen::Index i = 0; i < trial.size(); ++i) trial[i] = clamp(i, trial[i]);
        const Eigen::VectorXd s = trial - at_.x;
        double moved = 0.0;
        for (Eigen::Index i = 0; i < s.size(); ++i)
            moved = std::fmax(moved, std::fabs(s[i]) / (std::fabs(at_.x[i]) + 1e-3));
        if (moved < 1e-9) {
            at_.converged = true;
            break;
        }
        Eigen::VectorXd r;
        Eigen::MatrixXd J;
        const double foreseen = -gradient_.dot(s) - 0.5 * (weighted_ * s).squaredNorm();
        const bool finite = f_(trial, r, &J);
        const double next = finite ? cost(r) : 0.0, gain = (at_.cost - next) / foreseen;
        if (finite && next < at_.cost && gain > 1e-4) {
            const bool settled = at_.cost - next <= 1e-14 * at_.cost && moved < 1e-6;
            at_.x = trial;
            at_.r = r;
            at_.J = J;
            at_.cost = next;
            linearise();
            damping *= std::fmax(1.0 / 5.0, 1.0 - std::pow(2.0 * gain - 1.0, 3));
            damping = std::fmax(damping, 1e-14);
            growth = 2.0;
            if (settled) {
                at_.converged = true;
                break;
            }
        } else {
            // Nothing is gained any more beyond rounding: this is the minimum.
            if (finite && std::fabs(next - at_.cost) <= 1e-12 * at_.cost && moved < 1e-5) {
                at_.converged = true;
                break;
            }
            damping *= growth;
            growth *= 2.0;
            if (damping > 1e30) break;
        }
    }
    return at_;
}
}  // namespace

Minimum minimise(Residuals const& f, Eigen::VectorXd x, LeastSquares const& how) {
    return Minimiser(f, how).run(std::move(x));
}

Uncertainty uncertainty(Eigen::MatrixXd const& J, Eigen::VectorXd const& r) {
    const Eigen::Index n = J.cols(), rows = J.rows();
    Uncertainty u;
    u.spread = rows > n ? std::sqrt(r.squaredNorm() / static_cast<double>(rows - n)) : 0.0;
    u.error = Eigen::VectorXd::Constant(n, kUnknown);
    u.correlation = Eigen::MatrixXd::Constant(n, n, kUnknown);
    u.leverage = Eigen::VectorXd::Zero(rows);
    if (n == 0) return u;
    const Eigen::VectorXd size = J.colwise().norm();
    Eigen::MatrixXd unit = J;
    for (Eigen::Index i = 0; i < n; ++i)
        if (size[i] > 1e-10) unit.col(i) /= size[i];
    const Eigen::JacobiSVD<Eigen::MatrixXd> svd(unit, Eigen::ComputeThinU | Eigen::ComputeThinV);
    const auto& s = svd.singularValues();
    u.weakest = svd.matrixV().col(n - 1);
    u.condition = s[n - 1] > 0.0 ? s[0] / s[n - 1] : INFINITY;
    if (!(s[n - 1] > 1e-12 * s[0]) || !(size.minCoeff() > 1e-10)) return u;
    u.leverage = svd.matrixU().rowwise().squaredNorm();
    const Eigen::MatrixXd root = svd.matrixV() * s.cwiseInverse().asDiagonal();
    const Eigen::MatrixXd covariance = root * root.transpose();
    const Eigen::VectorXd deviation = covariance.diagonal().cwiseSqrt();
    u.error = u.spread * deviation.cwiseQuotient(size);
    u.correlation = covariance.cwiseQuotient(deviation * deviation.transpose());
    return u;
}

}  // namespace corvane::fit
