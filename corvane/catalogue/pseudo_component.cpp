#include <corvane/catalogue/home.h>
#include <corvane/catalogue/parameter_sets.h>
#include <corvane/catalogue/pseudo_component.h>
#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/pure/model1.h>

#include <cmath>
#include <string>

namespace corvane {
namespace {
/// What the critical point says of a cubic equation: b = Omega_b·R·Tc/pc, Zc = (1 - Omega_b)/3 of
/// Peng & Robinson (Ind. Eng. Chem. Fundam. 15 (1976) 59), 1/3 of Soave (Chem. Eng. Sci. 27 (1972)
/// 1197).
struct Cubic {
    double Omega_b, Zc;
};

Cubic cubic(std::string const& equation, std::string const& name) {
    if (equation == "PR") {
        const double y = 1.0 / (1.0 + std::cbrt(4.0 - std::sqrt(8.0)) + std::cbrt(4.0 + std::sqrt(8.0)));
        const double b = y / (3.0 + y);
        return {b, (1.0 - b) / 3.0};
    }
    if (equation == "SRK") return {(std::cbrt(2.0) - 1.0) / 3.0, 1.0 / 3.0};
    throw OpenFailure(name + " is defined by Tc, pc and omega, which is for PR and SRK alone, not for " +
                      equation);
}
}  // namespace

PseudoComponent const* find(std::vector<PseudoComponent> const& defined, std::string const& name) {
    for (PseudoComponent const& one : defined)
        if (one.name == name) return &one;
    return nullptr;
}

void define(Model1& model, PseudoComponent const& s) {
    const Cubic form = cubic(model.eos() ? model.eos() : "", s.name);
    const auto refuse = [&](char const* why) { throw OpenFailure(s.name + ": " + why); };
    if (!is_file_name(s.name) || s.name.find('=') != std::string::npos)
        throw OpenFailure("'" + s.name + "' cannot be the name of a substance");
    const double RT_p = R * s.Tc / s.pc, b = form.Omega_b * RT_p, v = form.Zc * RT_p - s.c;
    if (!(s.Tc > 0.0) || !std::isfinite(s.Tc)) refuse("its critical temperature is not above zero");
    if (!(s.pc > 0.0) || !std::isfinite(s.pc)) refuse("its critical pressure is not above zero");
    if (!(s.omega >= -1.0 && s.omega <= 4.0)) refuse("its acentric factor is not from -1 to 4");
    if (!(s.M >= 0.0) || !std::isfinite(s.M)) refuse("its molar mass is below zero");
    if (!std::isfinite(s.c) || !(b - s.c > 0.0)) refuse("its volume translation leaves no volume");
    model.name(s.name.c_str());
    model.comment("defined by Tc, pc and omega");
    model.Tcrit(s.Tc);
    model.pcrit(s.pc);
    model.vcrit(v);
    const CLocale c_numbers;
    char text[512];
    const int length = std::snprintf(
        text, sizeof text, "M:\t%.17g\nTs:\t%.17g\nvs:\t%.17g\nomega:\t%.17g\nc:\t%.17g\n", s.M, s.Tc,
        b, s.omega, s.c);
    const File section(fmemopen(text, static_cast<std::size_t>(length), "r"));
    if (!section) throw OpenFailure(s.name + ": not enough memory");
    try {
        model.par_in(section.get(), 1);
    } catch (ThException const& e) {
        throw OpenFailure(s.name + ": " + e.message());
    }
}

}  // namespace corvane
