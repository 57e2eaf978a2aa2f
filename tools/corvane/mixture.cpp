// corvane mixture: all properties of a mixture at one state.
#include <tools/corvane/commands.h>
#include <tools/corvane/errors.h>
#include <tools/corvane/numbers.h>
#include <tools/corvane/open.h>
#include <tools/corvane/open_mixture.h>
#include <tools/corvane/options.h>

#include <corvane/mixture/heat_capacity.h>

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
    double read(std::string const& text, char const* option, Quantity quantity) const {
        return positive_points(text, option, quantity, options.units).front();
    }
    Row row(MixtureFluid const& mixture, double T_, double rho_, std::string const& name,
            Table& table) const;
};

/// Partial molar volumes [cm³/mol] and residual chemical potentials at a state. With
/// P_j = ∂(p/RT)/∂rho_j = 1 + Σ_i rho_i·∂myr_i/∂rho_j (Gibbs-Duhem), v_j = P_j/Σ rho_k·P_k.
struct Partials {
    Vector<double> myr, v;
};
Partials partials(ModelN const& model, double rho, double T, Vector<double> const& x) {
    const int n = x.size();
    const Vector<double> rho_i = x * rho;
    Partials result{Vector<double>(n), Vector<double>(n)};
    Vector<double> slopes(n * n);
    if (corvane::DerivN const* exact = model.derivatives()) {
        exact->potentials(rho_i, T, result.myr.data, nullptr, slopes.data);
    } else {
        const Matrix<double> H = model.PsiH(rho_i, T);
        for (int i = 0; i < n; ++i) {
            result.myr[i] = model.myr(rho_i, T, i);
            for (int j = 0; j < n; ++j)
                slopes[i * n + j] = H[i][j] - (i == j && rho_i[i] > 0.0 ? 1.0 / rho_i[i] : 0.0);
        }
    }
    double total = 0.0;
    for (int j = 0; j < n; ++j) {
        double P = 1.0;
        for (int i = 0; i < n; ++i) P += rho_i[i] * slopes[i * n + j];
        result.v[j] = P;
        total += rho_i[j] * P;
    }
    for (int j = 0; j < n; ++j) result.v[j] /= total;
    return result;
}

Row MixtureCommand::row(MixtureFluid const& mixture, double T_, double rho_,
                        std::string const& name, Table& table) const {
    ModelN const& m = *mixture.model;
    Vector<double> const& x = mixture.x;
    Units const& u = options.units;
    const bool first = table.columns.empty();
    Row result;
    const auto add = [&](std::string const& column, Quantity quantity, char const* text, double v) {
        if (first) table.columns.push_back({column, u.name(quantity), text});
        result.cells.emplace_back(u.from_library(quantity, v));
    };
    if (first) table.columns.push_back({"phase", "", ""});
    result.cells.emplace_back(name);
    const double RT = R * T_, Z = m.Z(rho_, T_, x), P_rho = m.pV(rho_, T_, x);
    const double P_T = m.betaV(rho_, T_, x), p_ = Z * RT * rho_;
    add("T", Quantity::temperature, "temperature", T_);
    add("p", Quantity::pressure, "pressure", p_);
    add("rho", Quantity::density, "density", rho_);
    add("v", Quantity::volume, "volume", 1.0 / rho_);
    add("Z", Quantity::ratio, "compressibility factor", Z);
    if (mixture.ideal) {
        const corvane::HeatCapacities c = corvane::heat_capacities(m, rho_, T_, x);
        add("u", Quantity::energy, "internal energy", RT * m.Um(rho_, T_, x));
        add("h", Quantity::energy, "enthalpy", RT * m.Hm(rho_, T_, x));
        add("s", Quantity::entropy, "entropy", R * m.Sm(rho_, T_, x));
        add("g", Quantity::energy, "Gibbs energy", RT * m.Gm(rho_, T_, x));
        add("a", Quantity::energy, "Helmholtz energy", RT * m.Am(rho_, T_, x));
        add("cv", Quantity::entropy, "isochoric heat capacity", R * c.CVm);
        add("cp", Quantity::entropy, "isobaric heat capacity", R * c.Cpm);
        const double w2 = RT / (1e-3 * mixture.M()) * (P_rho + P_T * P_T / c.CVm);
        add("w", Quantity::speed, "speed of sound", std::sqrt(w2));
        add("muJT", Quantity::joule_thomson, "Joule-Thomson coefficient",
            (P_T / P_rho - 1.0) / (rho_ * R * c.Cpm));
    }
    add("kappaT", Quantity::compressibility, "isothermal compressibility",
        1.0 / (rho_ * RT * P_rho));
    add("alpha", Quantity::expansivity, "thermal expansivity", P_T / P_rho / T_);
    add("B", Quantity::volume, "second virial coefficient", m.B(T_, x, 2));
    add("h_res", Quantity::energy, "residual enthalpy", RT * m.Hr(rho_, T_, x));
    add("s_res", Quantity::entropy, "residual entropy", R * m.Sr(rho_, T_, x));
    add("g_res", Quantity::energy, "residual Gibbs energy", RT * m.Gr(rho_, T_, x));
    const Partials each = partials(m, rho_, T_, x);
    const Units molar = [&] {
        Units same = u;
        same.mass = false;
        return same;
    }();
    for (int i = 0; i < mixture.size(); ++i) {
        const std::string of = std::string("_") + mixture.component(i);
        const double ln_phi = each.myr[i] - std::log(Z);
        add("phi" + of, Quantity::ratio, "fugacity coefficient", std::exp(ln_phi));
        add("f" + of, Quantity::pressure, "fugacity", x[i] * std::exp(ln_phi) * p_);
        if (first)
            table.columns.push_back(
                {"v" + of, molar.name(Quantity::volume), "partial molar volume"});
        result.cells.emplace_back(molar.from_library(Quantity::volume, each.v[i]));
    }
    if (!(P_rho > 0.0)) result.note = "mechanically unstable";
    return result;
}

int MixtureCommand::run() {
    if (p.empty() == rho.empty()) throw Misuse("give either --p or --rho");
    if (!rho.empty() && phase != "stable")
        throw Misuse("--phase goes with --p: a density is one state");
    options.begin();
    const MixtureFluid mixture = open_mixture(request);
    Units& units = options.units;
    units.M = mixture.M();
    const double T_ = read(T, "--T", Quantity::temperature);
    const Quantity quantity = p.empty() ? Quantity::density : Quantity::pressure;
    const double given = p.empty() ? read(rho, "--rho", quantity) : read(p, "--p", quantity);
    Heading head = heading("mixture", mixture);
    head.remarks.emplace_back(
        mixture.ideal
            ? "zero of energies and entropies: each component's ideal gas at the start of its table"
            : "a component has no ideal-gas data: total properties are left out");
    ModelN const& m = *mixture.model;
    Table table;
    asking(
        fmt::format("{} at T = {}, {} = {}", mixture.name(), units.text(Quantity::temperature, T_),
                    p.empty() ? "rho" : "p", units.text(quantity, given)),
        [&] {
            if (p.empty()) {
                table.rows.push_back(row(mixture, T_, given, "given", table));
                return;
            }
            double stable = 0.0, dense = 0.0, dilute = 0.0;
            m.Ge(given, T_, mixture.x, 2, stable);
            const int n = m.vcalc(given, T_, mixture.x, 1, dense, dilute);
            const auto add = [&](double at, char const* name) {
                table.rows.push_back(row(mixture, T_, at, n > 1 ? name : "single", table));
                if (at != stable)
                    add_note(table.rows.back().note, "the other root has the lower Gibbs energy");
            };
            if (phase == "stable") {
                add(stable, stable == dense ? "dense" : "dilute");
                return;
            }
            if (n == 1 && phase != "both") throw ThException(th_no_density);
            if (phase != "vapour") add(dense, "dense");
            if (n > 1 && phase != "liquid") add(dilute, "dilute");
        });
    head.remarks.emplace_back(
        "one homogeneous phase of this composition: whether it splits is not tested here");
    Style style = options.style;
    style.upright = true;
    write(head, table, style);
    return 0;
}
}  // namespace

void add_mixture(Program& program) {
    auto mixture = std::make_shared<MixtureCommand>();
    Command command = program.add("mixture", "all properties of a mixture at one state",
                                  [mixture] { return mixture->run(); });
    mixture->request.add_to(command);
    command.value("--T", mixture->T, "temperature", {.required = true})
        .value("--p", mixture->p, "pressure")
        .value("--rho", mixture->rho, "density")
        .excludes("--rho", "--p")
        .value("--phase", mixture->phase,
               "root at a given pressure: stable (default), liquid, vapour, both",
               {.one_of = {"stable", "liquid", "vapour", "both"}, .type = "PHASE"});
    mixture->options.add_units(command);
    mixture->options.add_output(command);
    command.examples(
        R"(  corvane mixture PR+vdW1 methane=0.7 propane=0.3 --T 300 --p 5
  corvane mixture SRK+vdW1 nitrogen=0.1 CO2=0.2 methane --T 20 --unit-T C --p 60 --unit-p bar)");
}

}  // namespace cli
