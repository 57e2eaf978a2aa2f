// corvane ideal-curve: Joule-Thomson inversion, Boyle, Zeno and Joule curves.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/mixture_points.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/state/ideal_curve.h>

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <memory>

namespace cli {
namespace {
struct Kind {
    char const* name;
    corvane::IdealCurve which;
    Ink ink;
    char const* condition;
};
constexpr Kind kKinds[] = {
    {"joule-thomson", corvane::IdealCurve::joule_thomson, Ink::vapour, "dT/dp = 0 at constant h"},
    {"boyle", corvane::IdealCurve::boyle, Ink::liquid, "dZ/dp = 0 at constant T"},
    {"zeno", corvane::IdealCurve::zeno, Ink::black, "Z = 1"},
    {"joule", corvane::IdealCurve::joule, Ink::solid, "dZ/dT = 0 at constant density"}};

struct IdealCurveCommand {
    Options options;
    MixtureRequest request;
    std::string kind = "joule-thomson", T, T_min, p_max;
    PlotFile plot;

    int run();

  private:
    using Curves = std::function<corvane::IdealCurveResult(corvane::IdealCurve,
                                                           corvane::IdealCurveOptions const&)>;
    using Note = std::function<std::string(double T, double p)>;
    int table(Heading& head, std::string const& name, std::string const& title, double least_T, Curves const& curves,
              Note const& note);
    std::string summary(Kind const& one, corvane::IdealCurveResult const& q) const;
};

std::string IdealCurveCommand::summary(Kind const& one, corvane::IdealCurveResult const& q) const {
    Units const& u = options.units;
    const auto six = [&](Quantity quantity, double x) {  // the highest pressure is no sharper in T
        return fmt::format("{:.6g} {}", u.from_library(quantity, x), u.name(quantity));
    };
    const auto at = [&](corvane::IdealCurvePoint const& x) {
        return fmt::format("T = {}, p = {}", six(Quantity::temperature, x.T),
                           six(Quantity::pressure, x.p));
    };
    return fmt::format("{} ({}): from T = {} at zero density, highest pressure at {}, to {} at {}",
                       one.name, one.condition, six(Quantity::temperature, q.T_zero), at(q.highest),
                       in_words(q.end, corvane::CurveKind::ideal), at(q.last));
}

int IdealCurveCommand::table(Heading& head, std::string const& name, std::string const& title, double least_T,
                             Curves const& curves, Note const& note) {
    Units const& u = options.units;
    corvane::IdealCurveOptions how;
    how.T_min = T_min.empty() ? least_T : positive(T_min, "--T-min", Quantity::temperature, u);
    if (!p_max.empty()) how.p_max = positive(p_max, "--p-max", Quantity::pressure, u);
    if (!T.empty()) how.T = positive_points(T, "--T", Quantity::temperature, u);
    Table result{{{"kind", "", "curve"},
                  {"T", u.name(Quantity::temperature), "temperature", !T.empty()},
                  {"p", u.name(Quantity::pressure), "pressure"},
                  {"rho", u.name(Quantity::density), "density"},
                  {"Z", "", "compressibility factor"}},
                 {}};
    Picture picture{.title = title,
                    .x_axis = axis(Quantity::temperature, u),
                    .y_axis = axis(Quantity::pressure, u)};
    std::size_t asked = 0;
    for (Kind const& one : kKinds) asked += kind == "all" || kind == one.name;
    Rows rows("ideal-curve", result, asked, "curves");
    for (Kind const& one : kKinds) {
        if (kind != "all" && kind != one.name) continue;
        const bool go_on = rows.add_all(
            fmt::format("{}, {} curve", name, one.name), {{0, std::string(one.name)}}, [&] {
                corvane::IdealCurveResult q;
                try {
                    q = curves(one.which, how);
                } catch (ThException const& e) {
                    if (e.number != th_generic) throw;
                    throw Failure(
                        "it does not begin between the lowest temperature and 50 critical ones");
                }
                head.summary.push_back(summary(one, q));
                std::vector<Row> points;
                Curve curve{one.name, one.ink, Stroke::line, {}};
                for (auto const& x : q.points) {
                    points.push_back(
                        {{std::string(one.name), u.from_library(Quantity::temperature, x.T),
                          u.from_library(Quantity::pressure, x.p),
                          u.from_library(Quantity::density, x.rho),
                          x.rho > 0.0 ? x.p / (x.rho * R * x.T) : 1.0},
                         note(x.T, x.p)});
                    curve.points.push_back({u.from_library(Quantity::temperature, x.T),
                                            u.from_library(Quantity::pressure, x.p)});
                }
                if (points.empty()) throw Failure("it has no point at these temperatures");
                picture.curves.push_back(curve);
                return points;
            });
        if (!go_on) break;
    }
    const int code = rows.finish(head);
    plot.show(picture, head, result, options.style);
    return code;
}

int IdealCurveCommand::run() {
    plot.begin();
    if (plot && !T.empty()) throw Misuse("--plot draws curves, and --T asks for points");
    if (options.words.front().find('+') != std::string::npos &&
        !corvane::find(definitions(options.define), options.words.front())) {
        options.begin();
        options.to_mixture(request);
        const MixtureFluid mixture = open_mixture(request);
        options.units.M = mixture.M();
        Heading head = heading("ideal-curve", mixture);
        head.remarks.emplace_back(
            "one homogeneous phase of this composition: whether it splits is not tested here");
        return table(
            head, mixture.text(), title(mixture), 0.0,
            [&](auto which, auto const& how) {
                return corvane::ideal_curve(*mixture.model, mixture.x, which, how);
            },
            [](double, double) { return std::string(); });
    }
    if (!request.kij.empty() || !request.basis.empty() || request.pair_set > 0)
        throw Misuse("--kij, --basis and --pair-set are of mixtures: MODEL A=0.5 B");
    const Fluid fluid = options.open();
    Heading head = heading("ideal-curve", fluid, options.units);
    return table(
        head, fluid.name(), fmt::format("{}, {}", fluid.shown(), fluid.equation), std::max(0.4 * fluid.model->Tcrit(), fluid.notes.Tmin),
        [&](auto which, auto const& how) { return corvane::ideal_curve(*fluid.model, which, how); },
        [&](double T_, double p_) { return extrapolated(fluid, T_, p_, false, options.units); });
}
}  // namespace

void add_ideal_curve(Program& program) {
    auto curve = std::make_shared<IdealCurveCommand>();
    Command command =
        program.add("ideal-curve", "Joule-Thomson inversion, Boyle, Zeno and Joule curves",
                    [curve] { return curve->run(); });
    curve->options.add_fluid(command);
    command
        .value("--kind", curve->kind, "joule-thomson (default), boyle, zeno, joule, or all of them",
               {.one_of = {"joule-thomson", "boyle", "zeno", "joule", "all"}, .type = "KIND"})
        .value("--T", curve->T, "only the points at these temperatures", {.type = "VALUES"})
        .value("--T-min", curve->T_min,
               "lowest temperature (default: the set's, or 0.4 critical ones)")
        .value("--p-max", curve->p_max, "highest pressure (default: 10000 MPa)");
    curve->plot.add_to(command);
    curve->request.add_pairs(command);
    curve->options.add_units(command);
    curve->options.add_output(command);
    command.examples(
        R"(  corvane ideal-curve nitrogen
  corvane ideal-curve methane --T 200:600:50 --unit-p bar
  corvane ideal-curve PR CO2 --kind all --csv
  corvane ideal-curve MEOS+GERG methane=0.9 ethane --kind boyle)");
}

}  // namespace cli
