#include <corvane/core/errors.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/flash/flash.h>
#include <corvane/phases/saturation/envelope.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/state/property_diagram.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace corvane {
namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kTenths = 10, kHalvings = 10;
using Point = PropertyPoint;
using Options = PropertyDiagramOptions;

PropertyPoint point_of(PureState const& s) {
    return {s.T, s.p, s.rho, s.h, s.s, s.u, s.q};
}
/// f(), or nothing where there is no certified state.
template <class F>
std::optional<PropertyPoint> maybe(F f) {
    try {
        return f();
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return {};
}
double at(double from, double to, int k, int count, bool logarithmic) {
    const double part = count > 1 ? static_cast<double>(k) / (count - 1) : 0.0;
    return logarithmic ? from * std::pow(to / from, part) : from + part * (to - from);
}

Options settled(Options o, double Tc, double mean, double pc) {
    if (o.T_min == 0.0) o.T_min = 0.55 * mean;
    if (o.T_max == 0.0) o.T_max = 1.6 * Tc;
    if (o.p_min == 0.0) o.p_min = 1e-3 * pc;
    if (o.p_max == 0.0) o.p_max = 10.0 * pc;
    const auto above_zero = [](std::vector<double> const& values) {
        return std::all_of(values.begin(), values.end(),
                           [](double v) { return v > 0.0 && std::isfinite(v); });
    };
    const bool fractions =
        std::all_of(o.q.begin(), o.q.end(), [](double q) { return q >= 0.0 && q <= 1.0; });
    if (!(o.T_min > 0.0) || !(o.T_max > o.T_min) || !(o.p_min > 0.0) || !(o.p_max > o.p_min) ||
        !std::isfinite(o.T_max + o.p_max) || !above_zero(o.T) || !above_zero(o.p) || !above_zero(o.rho) || !fractions ||
        o.points < 2)
        throw ThException(th_out_of_range);
    return o;
}

/// Collects lines; ends when the caller says so.
class Lines {
  public:
    Lines(PropertyDiagram& d, Options const& o) : d_(d), o_(o) {}

    void begin(Quantity what, double value) { line_ = {what, value, {}}; }
    void add(std::optional<PropertyPoint> const& point) {
        if (point)
            line_.points.push_back(*point);
        else
            ++d_.failures;
        ++count_;
    }
    Isoline& line() { return line_; }
    /// False once the caller wants no more.
    bool end() {
        if (!line_.points.empty()) d_.lines.push_back(std::move(line_));
        return !o_.progress || o_.progress(count_);
    }

  private:
    PropertyDiagram& d_;
    Options const& o_;
    Isoline line_;
    int count_ = 0;
};

/// Points along `from` … `to`; state(here, phases) counts its phases, 0 where there is none. Where
/// their number changes both sides of the boundary are added. Points that are not `kept` are left out.
template <class State, class Kept>
bool bracketed(Lines& lines, double from, double to, int count, bool logarithmic, State const& state,
               Kept const& kept) {
    const auto add = [&](std::optional<PropertyPoint> const& point) {
        if (!point || kept(*point)) lines.add(point);
    };
    std::size_t last = 0;
    double before = 0.0;
    for (int k = 0; k < count; ++k) {
        const double here = at(from, to, k, count, logarithmic);
        std::size_t phases = 0;
        const auto point = state(here, phases);
        if (k > 0 && last > 0 && phases > 0 && phases != last) {
            double lo = before, hi = here;  // both sides of the boundary
            std::optional<PropertyPoint> first, second;
            for (int it = 0; it < kHalvings; ++it) {
                const double middle = 0.5 * (lo + hi);
                std::size_t found = 0;
                const auto q = state(middle, found);
                (found == last ? lo : hi) = middle;
                (found == last ? first : second) = q;
            }
            if (first) add(first);
            if (second) add(second);
        }
        add(point);
        last = phases;
        before = here;
    }
    return lines.end();
}

/// All isolines of a fluid, kind by kind, until the caller wants no more.
template <class Fluid>
void draw(Fluid const& fluid, Lines& lines, Options const& o) {
    for (double T : o.T)
        if (!fluid.across(lines, Quantity::T, T)) return;
    for (double p : o.p)
        if (!fluid.across(lines, Quantity::p, p)) return;
    for (double q : o.q)
        if (!fluid.along_q(lines, q)) return;
    for (double s : o.s) {
        lines.begin(Quantity::s, s);
        for (int k = 0; k < o.points; ++k) {
            const auto point = fluid.at_ps(at(o.p_min, o.p_max, k, o.points, true), s);
            // Outside the temperatures of the diagram there is nothing to draw.
            if (point && point->T >= o.T_min && point->T <= o.T_max) lines.add(point);
        }
        if (!lines.end()) return;
    }
    for (double rho : o.rho)
        if (!fluid.isochore(lines, rho)) return;
}

class Pure {
  public:
    Pure(Model1 const& model, Options const& o) : model_(model), o_(o) {}

    std::optional<PropertyPoint> state(Given a, Given b) const {
        return maybe([&]() -> std::optional<PropertyPoint> {
            const std::vector<PureState> all = pure_states(model_, a, b);
            if (all.empty()) return {};
            return point_of(all.front());
        });
    }
    double saturation_T(int k) const {
        const double Tc = model_.Tcrit(), part = at(1.0, 1e-3, k, o_.points, false);
        return Tc - (Tc - o_.T_min) * part * part;
    }
    /// An isotherm (or isobar) along the other of p and T, which rises.
    bool across(Lines& lines, Quantity what, double value) const {
        const bool of_T = what == Quantity::T;
        const Quantity other = of_T ? Quantity::p : Quantity::T;
        const double from = of_T ? o_.p_min : o_.T_min, to = of_T ? o_.p_max : o_.T_max;
        double boundary = kNaN;
        maybe([&]() -> std::optional<PropertyPoint> {
            const PureSaturation q =
                of_T ? pure_saturation_T(model_, value) : pure_saturation_p(model_, value);
            boundary = of_T ? q.p : q.T;
            return {};
        });
        lines.begin(what, value);
        bool beyond = !(boundary > from);
        for (int k = 0; k < o_.points; ++k) {
            const double here = at(from, to, k, o_.points, of_T);
            if (!beyond && here > boundary) {
                beyond = true;
                for (int q = 0; q <= kTenths; ++q)
                    lines.add(state({what, value},
                                    {Quantity::q, (of_T ? kTenths - q : q) / double(kTenths)}));
            }
            lines.add(state({what, value}, {other, here}));
        }
        return lines.end();
    }

    bool along_q(Lines& lines, double q) const {
        lines.begin(Quantity::q, q);
        for (int k = 0; k < o_.points; ++k)
            lines.add(state({Quantity::T, saturation_T(k)}, {Quantity::q, q}));
        return lines.end();
    }
    std::optional<PropertyPoint> at_ps(double p, double s) const {
        return state({Quantity::p, p}, {Quantity::s, s});
    }
    bool isochore(Lines& lines, double rho) const {
        const auto at_T = [&](double T, std::size_t& phases) {
            const auto point = state({Quantity::T, T}, {Quantity::rho, rho});
            phases = !point ? 0 : std::isfinite(point->q) ? 2 : 1;
            return point;
        };
        lines.begin(Quantity::rho, rho);
        return bracketed(lines, o_.T_min, o_.T_max, o_.points, false, at_T, [&](PropertyPoint const& q) {
            return q.p >= o_.p_min && q.p <= o_.p_max;
        });
    }

    PropertyDiagram run() const {
        PropertyDiagram d;
        Lines lines(d, o_);
        if (o_.T_min < model_.Tcrit())
            for (int k = 0; k < o_.points; ++k) {
                const Given T{Quantity::T, saturation_T(k)};
                const auto liquid = state(T, {Quantity::q, 0.0}), vapour = state(T, {Quantity::q, 1.0});
                if (!liquid || !vapour) continue;
                d.liquid.push_back(*liquid);
                d.vapour.push_back(*vapour);
            }
        draw(*this, lines, o_);
        return d;
    }

  private:
    Model1 const& model_;
    Options const& o_;
};

class Mixed {
  public:
    Mixed(ModelN const& model, Vector<double> const& z, Options const& o)
        : model_(model), z_(z), o_(o) {}

    std::optional<PropertyPoint> of(FlashResult const& q) const {
        PropertyPoint point{q.T, q.p, q.rho, q.h, q.s, q.h - q.p / q.rho, kNaN};
        if (q.phases.size() == 2) point.q = q.fraction.back();
        return point;
    }
    std::optional<PropertyPoint> state(double p, double T, std::size_t& phases) const {
        phases = 0;
        return maybe([&] {
            FlashResult q = flash_pT(model_, p, T, z_);
            phases = q.phases.size();
            maybe([&]() -> std::optional<PropertyPoint> {  // without tables h and s are unknown
                add_caloric(model_, z_, q);
                return {};
            });
            return of(q);
        });
    }
    bool across(Lines& lines, Quantity what, double value) const {
        const bool of_T = what == Quantity::T;
        const double from = of_T ? o_.p_min : o_.T_min, to = of_T ? o_.p_max : o_.T_max;
        const auto flash = [&](double here, std::size_t& phases) {
            return of_T ? state(here, value, phases) : state(value, here, phases);
        };
        lines.begin(what, value);
        return bracketed(lines, from, to, o_.points, of_T, flash, [](PropertyPoint const&) { return true; });
    }
    /// Of mixtures there are none.
    bool along_q(Lines&, double) const { return true; }
    std::optional<PropertyPoint> at_ps(double p, double s) const {
        return maybe([&] { return of(flash_ps(model_, p, s, z_)); });
    }
    bool isochore(Lines& lines, double rho) const {
        const auto flash = [&](double T, std::size_t& phases) {
            phases = 0;
            return maybe([&] {
                const FlashResult q = flash_Trho(model_, T, rho, z_);
                phases = q.phases.size();
                return of(q);
            });
        };
        lines.begin(Quantity::rho, rho);
        return bracketed(lines, o_.T_min, o_.T_max, o_.points, false, flash, [&](PropertyPoint const& q) {
            return q.p >= o_.p_min && q.p <= o_.p_max;
        });
    }

    PropertyDiagram run() const {
        PropertyDiagram d;
        Lines lines(d, o_);
        maybe([&]() -> std::optional<PropertyPoint> {
            EnvelopeOptions how;
            how.stability = true;
            how.p_start = o_.p_min;
            how.p_max = o_.p_max;
            for (EnvelopePoint const& q : phase_envelope(model_, z_, how).points) {
                if (q.unstable || q.T < o_.T_min || q.p > o_.p_max) continue;
                const PhaseProperties s = phase_properties(model_, q.T, q.rho, z_);
                (q.bubble ? d.liquid : d.vapour)
                    .push_back({q.T, q.p, q.rho, s.h, s.s, s.u, q.bubble ? 0.0 : 1.0});
            }
            return {};
        });
        draw(*this, lines, o_);
        return d;
    }

  private:
    ModelN const& model_;
    Vector<double> const& z_;
    Options const& o_;
};
}  // namespace

PropertyDiagram property_diagram(Model1 const& model, PropertyDiagramOptions const& options) {
    const Options o = settled(options, model.Tcrit(), model.Tcrit(), model.pcrit());
    return Pure(model, o).run();
}

PropertyDiagram property_diagram(ModelN const& model, Vector<double> const& z,
                                 PropertyDiagramOptions const& options) {
    if (z.size() != model.mdl1.size()) throw MthException(mth_dimensions);
    double Tc = 0.0, mean = 0.0, pc = 0.0;
    for (int i = 0; i < z.size(); ++i) {
        if (!(z[i] > 0.0)) continue;
        mean += z[i] * model.mdl1[i]->Tcrit();
        Tc = std::max(Tc, model.mdl1[i]->Tcrit());
        pc = std::max(pc, model.mdl1[i]->pcrit());
    }
    const Options o = settled(options, Tc, mean, pc);
    return Mixed(model, z, o).run();
}

}  // namespace corvane
