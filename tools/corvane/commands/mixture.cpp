// corvane mixture: all properties of a mixture.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/open.h>
#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/state/component_properties.h>
#include <corvane/state/phase_properties.h>

#include <fmt/format.h>

#include <cmath>
#include <memory>

namespace cli {
namespace {
struct MixtureCommand {
    Options options;
    MixtureRequest request;
    std::string T, p, rho, phase = "stable";

    int run();

  private:
    bool by_p() const { return rho.empty(); }
    std::vector<Column> columns(MixtureFluid const& mixture, bool several) const;
    Row row(MixtureFluid const& mixture, double T_, double rho_, std::string const& name) const;
    std::vector<Row> at_pressure(MixtureFluid const& mixture, double T_, double p_) const;
    Row at_density(MixtureFluid const& mixture, double T_, double rho_) const;
};

std::vector<Column> MixtureCommand::columns(MixtureFluid const& mixture, bool several) const {
    Units const& u = options.units;
    const Units molar;
    std::vector<Column> result = {{"phase", "", ""}};
    const auto add = [&](std::string const& name, Quantity quantity, char const* text) {
        result.push_back({name, u.name(quantity), text});
    };
    add("T", Quantity::temperature, "temperature");
    result.back().given = several;
    add("p", Quantity::pressure, "pressure");
    result.back().given = several && by_p();
    add("rho", Quantity::density, "density");
    result.back().given = several && !by_p();
    add("v", Quantity::volume, "volume");
    add("Z", Quantity::ratio, "compressibility factor");
    if (mixture.ideal) {
        add("u", Quantity::energy, "internal energy");
        add("h", Quantity::energy, "enthalpy");
        add("s", Quantity::entropy, "entropy");
        add("g", Quantity::energy, "Gibbs energy");
        add("a", Quantity::energy, "Helmholtz energy");
        add("cv", Quantity::entropy, "isochoric heat capacity");
        add("cp", Quantity::entropy, "isobaric heat capacity");
        add("w", Quantity::speed, "speed of sound");
        add("n_s", Quantity::ratio, "isentropic exponent, -(v/p)(dp/dv) at constant s");
        add("muJT", Quantity::joule_thomson, "Joule-Thomson coefficient");
    }
    add("kappaT", Quantity::compressibility, "isothermal compressibility");
    add("alpha", Quantity::expansivity, "thermal expansivity");
    add("B", Quantity::volume, "second virial coefficient");
    add("h_res", Quantity::energy, "residual enthalpy");
    add("s_res", Quantity::entropy, "residual entropy");
    add("g_res", Quantity::energy, "residual Gibbs energy");
    for (int i = 0; i < mixture.size(); ++i) {
        const std::string of = std::string("_") + mixture.component(i);
        add("phi" + of, Quantity::ratio, "fugacity coefficient");
        add("f" + of, Quantity::pressure, "fugacity");
        result.push_back({"v" + of, molar.name(Quantity::volume), "partial molar volume"});
        if (mixture.ideal)
            result.push_back({"h" + of, molar.name(Quantity::energy), "partial molar enthalpy"});
    }
    return result;
}

/// Values in the order of the columns.
Row MixtureCommand::row(MixtureFluid const& mixture, double T_, double rho_,
                        std::string const& name) const {
    ModelN const& m = *mixture.model;
    Vector<double> const& x = mixture.x;
    Units const& u = options.units;
    const Units molar;
    Row result;
    const auto add = [&](Quantity quantity, double value) {
        result.cells.emplace_back(u.from_library(quantity, value));
    };
    result.cells.emplace_back(name);
    const corvane::PhaseProperties q = corvane::phase_properties(m, T_, rho_, x);
    const double RT = R * T_;
    add(Quantity::temperature, T_);
    add(Quantity::pressure, q.p);
    add(Quantity::density, rho_);
    add(Quantity::volume, 1.0 / rho_);
    add(Quantity::ratio, q.Z);
    if (mixture.ideal) {
        for (double energy : {q.u, q.h}) add(Quantity::energy, energy);
        add(Quantity::entropy, q.s);
        for (double energy : {q.g, q.a}) add(Quantity::energy, energy);
        for (double capacity : {q.cv, q.cp}) add(Quantity::entropy, capacity);
        add(Quantity::speed, q.w);
        add(Quantity::ratio, q.n_s);
        add(Quantity::joule_thomson, q.mu_JT);
    }
    add(Quantity::compressibility, q.kappa_T);
    add(Quantity::expansivity, q.alpha_p);
    add(Quantity::volume, m.B(T_, x, 2));
    add(Quantity::energy, RT * q.h_res);
    add(Quantity::entropy, R * q.s_res);
    add(Quantity::energy, RT * (q.h_res - q.s_res));
    const corvane::ComponentProperties each = corvane::component_properties(m, T_, rho_, x);
    for (int i = 0; i < mixture.size(); ++i) {
        add(Quantity::ratio, std::exp(each.ln_phi[i]));
        add(Quantity::pressure, x[i] * std::exp(each.ln_fx[i]));
        result.cells.emplace_back(molar.from_library(Quantity::volume, each.v[i]));
        if (mixture.ideal)
            result.cells.emplace_back(molar.from_library(
                Quantity::energy, each.h_res[i] + RT * m.mdl1[i]->ideal.Hm(T_)));
    }
    if (!(q.dp_drho > 0.0)) result.note = "mechanically unstable";
    add_note(result.note, ideal_extrapolated(mixture, T_, u));
    return result;
}

std::vector<Row> MixtureCommand::at_pressure(MixtureFluid const& mixture, double T_,
                                             double p_) const {
    ModelN const& m = *mixture.model;
    double stable = 0.0, dense = 0.0, dilute = 0.0;
    m.Ge(p_, T_, mixture.x, 2, stable);
    const int n = m.vcalc(p_, T_, mixture.x, 1, dense, dilute);
    const auto at = [&](double density, char const* name) {
        Row result = row(mixture, T_, density, n > 1 ? name : "single");
        // As it was given: the density gives it back to rounding.
        result.cells[2] = options.units.from_library(Quantity::pressure, p_);
        if (density != stable) add_note(result.note, "the other root has the lower Gibbs energy");
        return result;
    };
    if (phase == "stable") return {at(stable, stable == dense ? "dense" : "dilute")};
    if (n == 1 && phase != "both") throw ThException(th_no_density);
    std::vector<Row> result;
    if (phase != "vapour") result.push_back(at(dense, "dense"));
    if (n > 1 && phase != "liquid") result.push_back(at(dilute, "dilute"));
    return result;
}

Row MixtureCommand::at_density(MixtureFluid const& mixture, double T_, double rho_) const {
    ModelN const& m = *mixture.model;
    if (phase != "single") {
        const double P_rho = m.pV(rho_, T_, mixture.x), p_ = m.Z(rho_, T_, mixture.x);
        if (!std::isfinite(P_rho) || !std::isfinite(p_)) throw ThException(th_out_of_range);
        if (!(P_rho > 0.0) || !(p_ > 0.0))
            throw Failure(fmt::format(
                "no single phase has this density: {}; corvane flash --rho gives the phases",
                P_rho > 0.0 ? "its pressure is not above zero"
                            : "its pressure falls with density"));
    }
    return row(mixture, T_, rho_, "given");
}

int MixtureCommand::run() {
    if (p.empty() == rho.empty()) throw Misuse("give either --p or --rho");
    if (!by_p() && phase != "stable" && phase != "single")
        throw Misuse("--rho goes with --phase stable or single");
    if (by_p() && phase == "single") throw Misuse("--phase single goes with --rho");
    options.begin();
    MixtureFluid mixture = open_mixture(request);
    Units& units = options.units;
    units.M = mixture.M();
    const Quantity quantity = by_p() ? Quantity::pressure : Quantity::density;
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, units);
    const auto values =
        positive_points(by_p() ? p : rho, by_p() ? "--p" : "--rho", quantity, units);
    Heading head = heading("mixture", mixture);
    head.remarks.push_back(options.set_reference(mixture));
    const std::size_t asked = temperatures.size() * values.size();
    Table table{columns(mixture, asked > 1), {}};
    Rows rows("mixture", table, asked, "states");
    rows.each(temperatures, values, [&](double T_, double value) {
        return rows.add_all(
            fmt::format("{} at T = {}, {} = {}", mixture.text(),
                        units.text(Quantity::temperature, T_), by_p() ? "p" : "rho",
                        units.text(quantity, value)),
            {{1, units.from_library(Quantity::temperature, T_)},
             {by_p() ? 2 : 3, units.from_library(quantity, value)}},
            [&] {
                return by_p() ? at_pressure(mixture, T_, value)
                              : std::vector<Row>{at_density(mixture, T_, value)};
            });
    });
    head.remarks.emplace_back(
        "one homogeneous phase of this composition: whether it splits is not tested here");
    return rows.write(head, upright_if(options.style, asked == 1));
}
}  // namespace

void add_mixture(Program& program) {
    auto mixture = std::make_shared<MixtureCommand>();
    Command command = program.add("mixture", "all properties of a mixture",
                                  [mixture] { return mixture->run(); });
    mixture->request.add_to(command);
    command
        .value("--T", mixture->T, "temperatures: 300 or 300,310 or first:last:step",
               {.required = true, .type = "VALUES"})
        .value("--p", mixture->p, "pressures, in the same forms", {.type = "VALUES"})
        .value("--rho", mixture->rho, "densities, in the same forms", {.type = "VALUES"})
        .excludes("--rho", "--p")
        .value("--phase", mixture->phase,
               "at a pressure: stable root (default), liquid, vapour, both; at a density: single, "
               "for a phase even if it is mechanically unstable",
               {.one_of = {"stable", "liquid", "vapour", "both", "single"}, .type = "PHASE"});
    mixture->options.add_reference(command);
    mixture->options.add_units(command);
    mixture->options.add_output(command);
    command.examples(
        R"(  corvane mixture PR+vdW1 methane=0.7 propane=0.3 --T 300 --p 5
  corvane mixture PR+vdW1 methane=0.7 propane=0.3 --T 300:340:10 --p 1,5 --csv
  corvane mixture SRK+vdW1 nitrogen=0.1 CO2=0.2 methane --T 20 --unit-T C --p 60 --unit-p bar)");
}

}  // namespace cli
