// corvane virial: virial coefficients of a substance or a mixture.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/rows.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/numbers.h>

#include <corvane/state/virial.h>

#include <fmt/format.h>

#include <functional>
#include <memory>

namespace cli {
namespace {
struct VirialCommand {
    Options options;
    MixtureRequest request;
    std::string T;
    FileRun file;

    int run();

  private:
    int of_mixture();
    std::vector<Column> columns(Units const& u) const;
    static void add(Row& row, Units const& u, corvane::VirialCoefficients const& q);
    using At = std::function<Row(double T)>;
    int table(Heading& head, std::string const& name, std::vector<Column> const& columns,
              At const& at);
};

std::vector<Column> VirialCommand::columns(Units const& u) const {
    const std::string v = u.name(Quantity::volume);
    return {{"B", v, "second virial coefficient"},
            {"C", v.find('/') == std::string::npos ? v + "^2" : "(" + v + ")^2",
             "third virial coefficient"},
            {"TdBdT", v, "T times the slope of B"}};
}

void VirialCommand::add(Row& row, Units const& u, corvane::VirialCoefficients const& q) {
    const auto volume = [&](double x) { return u.from_library(Quantity::volume, x); };
    row.cells.insert(row.cells.end(), {volume(q.B), volume(volume(q.C)), volume(q.B_T)});
}

/// Rows at the temperatures asked for, or of the file.
int VirialCommand::table(Heading& head, std::string const& name, std::vector<Column> const& columns,
                         At const& at) {
    Units const& u = options.units;
    if (file) {
        file.open({{"T", Quantity::temperature}}, u);
        if (!file.has("T")) throw Failure("--input: a column T is needed");
        const FileRun::Compute compute = [&](FileRow const& in, Row& row) { row = at(in["T"]); };
        return file.run("virial", columns, options.style, [&] { return compute; });
    }
    const auto temperatures = positive_points(T, "--T", Quantity::temperature, u);
    head.remarks.emplace_back("Z = 1 + B rho + C rho^2 + ...");
    Table result{columns, {}};
    Rows rows("virial", result, temperatures.size());
    for (double T_ : temperatures)
        if (!rows.add(fmt::format("{} at T = {}", name, u.text(Quantity::temperature, T_)),
                      {{0, u.from_library(Quantity::temperature, T_)}}, [&] { return at(T_); }))
            break;
    return rows.write(head, options.style);
}

/// Cross coefficients are molar; so are the others then.
int VirialCommand::of_mixture() {
    options.to_mixture(request);
    request.fractions_optional = true;
    const MixtureFluid mixture = open_mixture(request);
    Units molar;
    molar.temperature = options.units.temperature;
    std::vector<Column> all = {{"T", molar.name(Quantity::temperature), "temperature", true}};
    if (mixture.composed)
        for (Column const& one : columns(molar)) all.push_back(one);
    const int n = mixture.size();
    for (int i = 0; i < n; ++i)
        for (int j = i; j < n; ++j)
            all.push_back({fmt::format("B_{}_{}", mixture.component(i), mixture.component(j)),
                           molar.name(Quantity::volume), "coefficient of the pair"});
    Heading head = heading("virial", mixture);
    if (!mixture.composed)
        head.remarks.emplace_back(
            "no mole fractions were given: coefficients of pairs alone; where B "
            "is not quadratic in the mole fractions, of the equimolar mixture");
    return table(head, mixture.text(), all, [&](double T_) {
        const auto q = corvane::virial_coefficients(*mixture.model, T_, mixture.x);
        Row row{{molar.from_library(Quantity::temperature, T_)}, ""};
        if (mixture.composed) add(row, molar, q);
        for (int i = 0; i < n; ++i)
            for (int j = i; j < n; ++j) row.cells.emplace_back(q.B_ij[i][j]);
        return row;
    });
}

int VirialCommand::run() {
    file.begin(options.json());
    if (file ? !T.empty() : T.empty()) throw Misuse("give --T, or --input");
    if (options.words.front().find('+') != std::string::npos &&
        !corvane::find(definitions(options.define), options.words.front())) {
        options.begin();
        return of_mixture();
    }
    if (!request.kij.empty() || !request.basis.empty() || request.pair_set > 0)
        throw Misuse("--kij, --basis and --pair-set are of mixtures: MODEL A=0.5 B");
    const Fluid fluid = options.open();
    Units const& u = options.units;
    std::vector<Column> all = {{"T", u.name(Quantity::temperature), "temperature", true}};
    for (Column const& one : columns(u)) all.push_back(one);
    Heading head = heading("virial", fluid, u);
    return table(head, fluid.name(), all, [&](double T_) {
        Row row{{u.from_library(Quantity::temperature, T_)},
                extrapolated(fluid, T_, 0.0, false, u)};
        add(row, u, corvane::virial_coefficients(*fluid.model, T_));
        return row;
    });
}
}  // namespace

void add_virial(Program& program) {
    auto virial = std::make_shared<VirialCommand>();
    Command command =
        program.add("virial", "virial coefficients, of mixtures with those of the pairs",
                    [virial] { return virial->run(); });
    virial->options.add_fluid(command);
    command.value("--T", virial->T, "temperatures: 300 or 300,310 or first:last:step",
                  {.type = "VALUES"});
    virial->file.add_to(command);
    virial->request.add_pairs(command);
    virial->options.add_units(command);
    virial->options.add_output(command);
    command.examples(
        R"(  corvane virial nitrogen --T 200:600:100
  corvane virial MEOS+GERG methane=0.9 CO2 --T 0,15,25 --unit-T C
  corvane virial PR+vdW1 methane butane --T 300      of the pairs)");
}

}  // namespace cli
