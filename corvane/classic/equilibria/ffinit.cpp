#include <corvane/classic/equilibria/ffinit.h>
#include <corvane/classic/equilibria/potentials.h>
#include <corvane/classic/input/input.h>
#include <corvane/pure/model1.h>

#include <array>
#include <cmath>

namespace {
constexpr int kLast = 256;
constexpr double kRange = 10.0, kStart = -5.0;  // of ln(x/(1 − x))

/// Gibbs energy of mixing over composition.
struct Curve {
    std::array<double, kLast + 1> X, G;

    Curve(ModelN const& model, double p, double T) {
        for (int j = 1; j < kLast; ++j) {
            const double x = ztox(kRange * j / kLast + kStart);
            double rho = 0.0;
            X[j] = x;
            G[j] = model.Ge(p, T, corvane::binary(x), 2, rho) + x * std::log(x) +
                   (1 - x) * std::log(1 - x);
        }
        for (int end = 0; end < 2; ++end) {
            double rho = 0.0;
            X[end * kLast] = end;
            G[end * kLast] = model.mdl1[1 - end]->Ge(p, T, 2, rho);
        }
    }
    double slope(int a, int b) const { return (G[b] - G[a]) / (X[b] - X[a]); }
    bool above_chord(int k) const { return G[k + 1] > G[k] + slope(k, k + 2) * (X[k + 1] - X[k]); }
};
}  // namespace

Vector<double> ffinit(ModelN const* model, double p, double T) {
    corvane::require_binary(*model);
    const Curve g(*model, p, T);
    int L = 0;
    while (!g.above_chord(L))
        if (++L == kLast - 1) throw ThException(th_generic);
    int Rt = L + 2;
    double s = g.slope(L, Rt);
    // The tangent turns about its ends in turn. Ties move them outwards, so that this ends.
    for (bool moved = true; moved;) {
        moved = false;
        for (int j = Rt + 1; j <= kLast; ++j)
            if (g.slope(L, j) <= s) {
                s = g.slope(L, j);
                Rt = j;
                moved = true;
            }
        for (int j = L - 1; j >= 0; --j)
            if (g.slope(j, Rt) >= s) {
                s = g.slope(j, Rt);
                L = j;
                moved = true;
            }
    }
    Vector<double> x(2);
    x[0] = g.X[L];
    x[1] = g.X[Rt];
    return x;
}
