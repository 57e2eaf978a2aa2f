// Correlations in the temperature alone: viscosity and thermal conductivity of the saturated liquid
// and of the dilute gas, surface tension.
#pragma once

#include <corvane/catalogue/home.h>

#include <string>
#include <vector>

namespace corvane::inline detail {

/// One row of a table: a form, its figures, the range of its source.
struct Correlation {
    enum class Form {
        polynomial,     ///< Σ c_k·T^k
        perry_liquid,   ///< exp(c0 + c1/T + c2·ln T + c3·T^c4)
        perry_gas,      ///< c0·T^c1/(1 + c2/T + c3/T²)
        ppds_liquid,    ///< c4·exp(c0·u^(1/3) + c1·u^(4/3)), u = (c2 − T)/(T − c3)
        vogel,          ///< 10^(c0 + c1/(c2 − T))·1e-3
        andrade,        ///< 10^(c0 + c1/T)
        power,          ///< c0·T^c1
        chemsep_16,     ///< c0 + exp(c1/T + c2 + c3·T + c4·T²)
        tension_sum,    ///< Σ c_2k·(1 − T/Tc)^c_(2k+1)
        tension_ppds,   ///< c0·(1 − Tr)^(c1 + c2·Tr + c3·Tr² + c4·Tr³)
        tension_powers  ///< c0·X^(5/4) + c1·X^(9/4) + c2·X^(13/4), X = 1 − T/Tc
    };
    Form form = Form::polynomial;
    double Tmin = 0.0, Tmax = 0.0;  ///< K; not-a-number where the source states none
    double Tc = 0.0;                ///< K, of the tension forms
    std::vector<double> c;
    std::string source;

    bool covers(double T) const { return !(T < Tmin) && !(T > Tmax); }
    double operator()(double T) const;
};

/// The rows of a substance in "<home>/CorvaneS/transport/<table>.tsv", in the order of the file,
/// which is that of preference; none where there is no file. @throws OpenFailure a malformed row
std::vector<Correlation> correlations(DataHome const& home, std::string const& table,
                                      std::string const& substance);

}  // namespace corvane::inline detail
