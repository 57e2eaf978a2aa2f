#include <corvane/classic/volume/fluid.h>
#include <corvane/classic/volume/volume.h>
#include <corvane/core/numelo.h>

int volf1(Model1 const* model, double p, double T, double vmin, double& rho1, double& rho2) {
    corvane::pass_vol fluid{0, p, T, 1.0, nullptr, model};  // d = 1: the variable is rho itself
    if (!corvane::is_state(p, T)) return 0;
    int count = 0;
    try {
        // The factors keep off the spinodals, which the tables only interpolate.
        const double gas_end = 0.999 * model->xrho(T, 3);
        const double liquid_end = 1.001 * model->xrho(T, 1);
        const double rho_max = 1.0 / vmin;
        try {
            const double f = fluid.excess(gas_end);
            if (f >= 0.0) {
                const double root =
                    eqn_regulafalsi(corvane::pdiff, &fluid, 0.0, gas_end, -p, f, th_veps * gas_end);
                if (corvane::is_root(fluid, root)) {
                    rho1 = root;
                    count = 1;
                }
            }
        } catch (...) {  // no gas root; the liquid is still tried
        }
        const double f_end = fluid.excess(liquid_end);
        const double f_max = fluid.excess(rho_max);
        if (f_end <= 0.0 && f_max >= 0.0) {
            const double root = eqn_regulafalsi(corvane::pdiff, &fluid, liquid_end, rho_max, f_end,
                                                f_max, th_veps * rho_max);
            if (!corvane::is_root(fluid, root)) return count;
            if (count == 1) rho2 = rho1;
            rho1 = root;
            ++count;
        }
    } catch (...) {  // what was found stays
    }
    return count;
}
