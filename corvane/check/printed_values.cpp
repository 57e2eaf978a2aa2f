#include <corvane/check/rewritten.h>
#include <corvane/check/survey.h>
#include <corvane/mixture/modeln.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation.h>
#include <corvane/pure/model1.h>

#include <algorithm>

namespace corvane {
namespace {
using Of = PrintedValue::Of;

char const* check_of(Of of) {
    switch (of) {
        case Of::Ar:
            return "printed values: Ar";
        case Of::Z:
            return "printed values: Z";
        case Of::pressure:
            return "printed values: pressure";
        case Of::saturation_pressure:
            return "printed values: saturation pressure";
        case Of::mixture_parameter:
            return "printed values: mixture parameter";
        default:
            return "printed values: saturated density";
    }
}

double found(Model1 const& m, PrintedValue const& printed) {
    switch (printed.of) {
        case Of::Ar:
            return m.Ar(printed.rho, printed.T);
        case Of::Z:
            return m.Z(printed.rho, printed.T);
        case Of::pressure:
            return m.Z(printed.rho, printed.T) * printed.rho * R * printed.T;
        case Of::mixture_parameter:
            throw ThException(th_out_of_range);
        default:
            break;
    }
    const PureSaturation s = pure_saturation_T(m, printed.T);
    return printed.of == Of::saturation_pressure ? s.p
           : printed.of == Of::liquid_density    ? s.rhoL
                                                 : s.rhoV;
}

double found(ModelN const& m, PrintedValue const& printed) {
    if (static_cast<int>(printed.x.size()) != m.mdl1.size()) throw MthException(2);
    Vector<double> x(m.mdl1.size());
    std::copy(printed.x.begin(), printed.x.end(), x.data);
    switch (printed.of) {
        case Of::Ar:
            return m.Ar(printed.rho, printed.T, x);
        case Of::Z:
            return m.Z(printed.rho, printed.T, x);
        case Of::pressure:
            return m.Z(printed.rho, printed.T, x) * printed.rho * R * printed.T;
        case Of::saturation_pressure:
            return bubble_T(m, printed.T, x).p;
        case Of::mixture_parameter:
            if (const Vector<double> p = m.mixpar(x);
                printed.number >= 0 && printed.number < p.size())
                return p[printed.number];
            throw ThException(th_out_of_range);
        default:
            throw ThException(th_out_of_range);
    }
}

double* address(Model1& m, PrintedValue::Parameter const& p) {
    return p.number < 0 || p.number >= m.mpar() ? nullptr : m.ppar(p.number);
}
double* address(ModelN& m, PrintedValue::Parameter const& p) {
    const int n = m.mdl1.size();
    if (p.i < 0 || p.j < 0 || p.i >= n || p.j >= n || p.number < 0) return nullptr;
    if (p.i == p.j) return address(*m.mdl1[p.i], p);
    auto const* pairs = dynamic_cast<PairParameters const*>(&m);
    return pairs && p.number >= pairs->pair_parameters() ? nullptr : m.ppar(p.number, p.i, p.j);
}

template <class Model>
void write(Rewritten& parameters, Model& model, PrintedValue const& printed) {
    for (PrintedValue::Parameter const& p : printed.parameters)
        if (!address(model, p)) throw ThException(th_out_of_range);
    for (PrintedValue::Parameter const& p : printed.parameters)
        parameters.write(address(model, p), p.value);
}

template <class Model>
std::vector<Check> compared(Model& model, std::vector<PrintedValue> const& values) {
    Survey survey;
    for (PrintedValue const& printed : values)
        survey.guarded("printed values", [&] {
            Rewritten with;
            write(with, model, printed);
            const bool pressure =
                printed.of == Of::pressure || printed.of == Of::saturation_pressure;
            const double own =
                pressure && printed.gas_constant > 0.0 ? printed.gas_constant / R : 1.0;
            const double value = own * found(model, printed);
            char text[96];
            std::snprintf(text, sizeof text, "%.12g, printed %.12g (", value, printed.value);
            Survey::State at{.T = printed.T};
            if (printed.rho > 0.0) at.rho = printed.rho;
            if (!printed.x.empty()) at.x = &printed.x;
            survey.see(check_of(printed.of), at, value - printed.value, printed.within,
                       text + printed.source + ")");
        });
    return survey.take();
}
}  // namespace

std::vector<Check> check_values(Model1& model, std::vector<PrintedValue> const& values) {
    return compared(model, values);
}
std::vector<Check> check_values(ModelN& mixture, std::vector<PrintedValue> const& values) {
    return compared(mixture, values);
}

}  // namespace corvane
