#include <corvane/table/table_states.h>

#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/saturation/saturation_expansion.h>
#include <corvane/pure/model1.h>
#include <corvane/state/mixture_state.h>
#include <corvane/state/phase_properties.h>
#include <corvane/state/pure_state.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>

namespace corvane {
namespace {
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

struct State {
    int phases = 0;
    double T = kNone, p = kNone, rho = kNone, h = kNone, s = kNone, u = kNone, q = kNone, cv = kNone,
           cp = kNone, w = kNone;
    void one_phase(PhaseProperties const& of) { cv = of.cv, cp = of.cp, w = of.w; }
};
struct Column {
    char const* name;
    double State::*value;
    double unit;  ///< of errors: 0 relative, 1 as it stands, 2 R, 3 R·Tc
};
constexpr Column kColumns[] = {
    {"T", &State::T, 0}, {"p", &State::p, 0}, {"rho", &State::rho, 0}, {"h", &State::h, 3},
    {"s", &State::s, 2}, {"u", &State::u, 3}, {"q", &State::q, 1},     {"cv", &State::cv, 0},
    {"cp", &State::cp, 0}, {"w", &State::w, 0}};
constexpr std::pair<Quantity, Quantity> kGiven[] = {
    {Quantity::p, Quantity::T}, {Quantity::p, Quantity::h}, {Quantity::rho, Quantity::u}};
constexpr std::pair<char const*, char const*> kAxes[] = {{"p", "T"}, {"p", "h"}, {"rho", "u"}};

std::vector<Column> columns_of(TableInputs inputs) {
    const std::size_t k = static_cast<std::size_t>(inputs);
    std::vector<Column> all;
    for (Column const& c : kColumns) {
        const std::string name = c.name;
        const bool given = name == kAxes[k].first || name == kAxes[k].second;
        if (!given && !(name == "q" && inputs == TableInputs::pT)) all.push_back(c);
    }
    return all;
}
void need(PhaseProperties const& ideal) {
    if (std::isnan(ideal.h)) throw ThException(th_no_ideal);
}
}  // namespace

struct TableStates::Source {
    Model1 const* fluid = nullptr;
    ModelN const* mixture = nullptr;
    Vector<double> z{0};
    TableInputs inputs{};
    std::vector<Column> columns;
    std::optional<SaturationExpansion> saturation;
    double Tc = 0;

    State state(double a, double b) const {
        const auto [first, second] = kGiven[static_cast<std::size_t>(inputs)];
        return fluid ? pure({first, a}, {second, b}) : mixed({first, a}, {second, b});
    }
    State pure(Given a, Given b) const {
        PureStateOptions o;
        if (saturation) o.saturation = &*saturation;
        const auto found = pure_states(*fluid, a, b, o);
        State s;
        if (found.size() != 1) return s;
        PureState const& f = found[0];
        s = {f.phase ? 1 : 2, f.T, f.p, f.rho, f.h, f.s, f.u, f.q};
        if (f.phase) s.one_phase(*f.phase);
        return s;
    }
    State mixed(Given a, Given b) const {
        FlashResult f = mixture_state(*mixture, a, b, z);
        State s{static_cast<int>(f.phases.size()), f.T, f.p, f.rho};
        if (inputs == TableInputs::pT) try {
                add_caloric(*mixture, z, f);
            } catch (ThException const& e) {
                if (e.number != th_no_ideal) throw;
            }
        s.h = f.h, s.s = f.s, s.u = f.h - f.p / f.rho;
        if (s.phases > 1)
            s.q = f.fraction.back();
        else
            s.one_phase(phase_properties(*mixture, f.T, f.rho, z));
        return s;
    }
};

TableStates::TableStates(Model1 const& model, TableInputs inputs) {
    auto s = std::make_shared<Source>();
    s->fluid = &model;
    s->inputs = inputs;
    s->columns = columns_of(inputs);
    s->Tc = model.Tcrit();
    if (inputs != TableInputs::pT) need(phase_properties(model, s->Tc, 1e-6));
    try {
        s->saturation.emplace(model);
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    }
    source_ = std::move(s);
}
TableStates::TableStates(ModelN const& model, Vector<double> z, TableInputs inputs) {
    auto s = std::make_shared<Source>();
    s->mixture = &model;
    s->inputs = inputs;
    s->columns = columns_of(inputs);
    for (int i = 0; i < z.size(); ++i) s->Tc += z[i] * model.mdl1[i]->Tcrit();
    if (inputs != TableInputs::pT) need(phase_properties(model, s->Tc, 1e-6, z));
    s->z = std::move(z);
    source_ = std::move(s);
}

TableDesign TableStates::design(double a_from, double a_to, double b_from, double b_to) const {
    Source const& s = *source_;
    const auto [a, b] = kAxes[static_cast<std::size_t>(s.inputs)];
    TableDesign d;
    d.a = {a, a_from, a_to, true};
    d.b = {b, b_from, b_to, false};
    for (Column const& c : s.columns)
        d.columns.push_back({c.name, c.unit == 2 ? R : c.unit == 3 ? R * s.Tc : c.unit});
    return d;
}

TableSample TableStates::sample() const {
    return [source = source_](double a, double b, double* values) {
        try {
            const State s = source->state(a, b);
            for (Column const& c : source->columns) *values++ = s.*c.value;
            return s.phases;
        } catch (EquilibriumFailure const&) {
        } catch (ThException const&) {
        }
        return 0;
    };
}

}  // namespace corvane
