// Reference state of a substance from its enthalpy of formation and entropy.
#include <corvane/core/files.h>
#include <corvane/pure/model1.h>

void Model1::load_thchem() {
    double T0 = 0, H0 = 0, S0 = 0;
    {
        const corvane::CLocale c_numbers;
        corvane::check_name(name_);
        const std::string path = corvane::path_of("./CorvaneS/reaction/%s", name_);
        const corvane::File file = corvane::open_file(path);
        corvane::reading(path, file.get(), [&] {
            try {
                for (double* x : {&T0, &H0, &S0}) *x = corvane::read_number(file.get(), true);
            } catch (corvane::FileError& e) {
                e.number = th_no_thermochemistry;
                throw;
            }
        });
    }
    double rho0 = 0.0;
    Gr(pref, T0, 2, rho0);  // intended: for the density of the stable phase alone
    const double dh = H0 / R - T0 * Hm(rho0, T0);
    if (!(rho0 > 0)) throw ThException(th_out_of_range);
    const double ds = S0 / R - Sm(rho0, T0);
    ideal.offset(dh, ds);
}
