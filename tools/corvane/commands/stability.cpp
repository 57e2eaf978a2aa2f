#include <tools/corvane/commands/stability.h>

#include <corvane/corvane.h>

#include <cmath>

namespace cli {
namespace {
constexpr int kMostSubstitutions = 200;
constexpr double kConverged = 1e-10;  // largest change of ln W
/// Below this the reduced distance from the tangent plane counts as negative; that of a coexisting
/// phase is zero to about 1e-10.
constexpr double kNegative = -1e-6;
constexpr double kTrialPurity = 0.98;

/// Substitution from the trial composition w until its distance is negative; false if it never is.
bool falls_below(ModelN const& m, double p, double T, Vector<double> const& my, Vector<double>& w) {
    const int n = w.size();
    Vector<double> W = w;
    for (int k = 0; k < kMostSubstitutions; ++k) {
        double rho = 0.0, distance = 1.0, change = 0.0;
        w = W * (1.0 / W.sum());
        m.Ge(p, T, w, 2, rho);
        for (int i = 0; i < n; ++i) {
            if (!(w[i] > 0.0)) continue;
            const double own = m.myr(w * rho, T, i) + std::log(rho) - my[i];
            distance += W[i] * (std::log(W[i]) + own - 1.0);
            change = std::max(change, std::fabs(own + std::log(W[i])));
            W[i] = std::exp(-own);
        }
        if (!std::isfinite(distance)) return false;
        if (distance < kNegative) return true;
        if (change < kConverged) return false;
    }
    return false;
}
}  // namespace

bool unstable(ModelN const& m, double T, Vector<double> const& rho_i) {
    Matrix<double> H = m.PsiH(rho_i, T);
    for (int k = 0; k < rho_i.size(); ++k) {
        if (!(H[k][k] > 0.0)) return true;
        for (int i = k + 1; i < rho_i.size(); ++i)
            for (int j = k + 1; j < rho_i.size(); ++j) H[i][j] -= H[i][k] * H[k][j] / H[k][k];
    }
    return false;
}

std::optional<Vector<double>> splitting_phase(ModelN const& model, double p, double T, double rho,
                                              Vector<double> const& x) {
    const int n = x.size();
    Vector<double> my(n);
    int present = 0;
    for (int i = 0; i < n; ++i) {
        if (!(x[i] > 0.0)) continue;
        my[i] = model.my(x * rho, T, i);
        ++present;
    }
    for (int pure = -1; pure < n; ++pure) {
        if (pure >= 0 && !(x[pure] > 0.0)) continue;
        Vector<double> w(n);
        for (int i = 0; i < n; ++i)
            if (x[i] > 0.0)
                w[i] = pure < 0 || present == 1 ? 1.0 / present
                       : i == pure              ? kTrialPurity
                                                : (1.0 - kTrialPurity) / (present - 1);
        try {
            if (falls_below(model, p, T, my, w)) return w;
        } catch (ThException const&) {  // no density of the trial phase: another one
        } catch (MthException const&) {
        }
    }
    return {};
}

}  // namespace cli
