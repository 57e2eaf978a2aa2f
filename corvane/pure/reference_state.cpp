// Reference state of a substance from its enthalpy of formation and entropy.
#include <corvane/core/files.h>
#include <corvane/pure/model1.h>

void Model1::load_thchem() {
    double T0 = 0, H0 = 0, S0 = 0;
    {
        const corvane::CLocale c_numbers;
        const corvane::File file = corvane::open_file("r", "./CorvaneS/reaction/%s", name_);
        if (std::fscanf(file.get(), "%lf%lf%lf", &T0, &H0, &S0) != 3)
            throw ThException(th_no_thermochemistry);
    }
    double rho0 = 0.0;
    Gr(pref, T0, 2, rho0);  // intended: for the density of the stable phase alone
    const double dh = H0 / R - T0 * Hm(rho0, T0);
    if (!(rho0 > 0)) throw ThException(th_out_of_range);
    const double ds = S0 / R - Sm(rho0, T0);
    ideal.offset(dh, ds);
}
