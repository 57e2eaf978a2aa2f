// corvane diagram: the p-T projection of a binary.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/diagrams/binary_lines.h>
#include <tools/corvane/diagrams/plot.h>
#include <tools/corvane/diagrams/several.h>
#include <tools/corvane/input/options.h>
#include <tools/corvane/output/watch.h>
#include <tools/corvane/text/errors.h>

#include <corvane/phases/binary/azeotrope.h>
#include <corvane/phases/binary/critical_line.h>
#include <corvane/phases/binary/three_phase_line.h>

#include <fmt/format.h>

#include <memory>

namespace cli {
namespace {
struct DiagramCommand {
    Options options;
    MixtureRequest request;
    LineLimits limits;
    Models models;
    PlotFile plot;

    int run();

  private:
    Drawn with(MixtureRequest const& of);
};

Drawn DiagramCommand::with(MixtureRequest const& of) {
    const MixtureFluid mixture = open_binary(of);
    options.units.M = mixture.M();
    Heading head = heading("diagram", mixture);
    Watch watch("corvane: diagram");
    BinaryLines lines(mixture, options.units);
    const auto of_lines =
        limits.apply<corvane::CriticalLineOptions>(mixture, options.units, watch, bool(plot));
    const auto of_phases =
        limits.apply<corvane::PhaseLineOptions>(mixture, options.units, watch, bool(plot));
    ModelN const& model = *mixture.model;
    int failures = 0;
    // A kind of line that fails is told of; the others stay.
    const auto each = [&](char const* kind, auto find) {
        if (Watch::interrupted()) return;
        try {
            const auto found = asking(fmt::format("{}: {}", mixture.text(), kind), find);
            for (auto const& line : found) lines.add(line);
            if (found.empty()) head.remarks.push_back(fmt::format("no {} found", kind));
        } catch (Failure const& failure) {
            ++failures;
            head.remarks.push_back(fmt::format("failed: {}", failure.what()));
            watch.say("diagram", failure.what());
        }
    };
    for (int i : {0, 1})
        if (!Watch::interrupted()) lines.add_pure(i);
    each("critical lines", [&] { return corvane::critical_lines(model, of_lines); });
    each("lines of three phases", [&] { return corvane::three_phase_lines(model, of_phases); });
    each("azeotropic lines", [&] { return corvane::azeotropic_lines(model, of_phases); });
    lines.finish(head);
    if (Watch::interrupted()) head.summary.emplace_back("interrupted: lines are missing");
    limits.frame(lines.projection.picture);
    return {head, lines.table, lines.projection.picture, title_of_model(mixture),
            Watch::interrupted() ? kInterrupted : failures > 0 || lines.open() ? 1 : 0};
}

int DiagramCommand::run() {
    plot.begin();
    options.begin();
    return models.draw(request, plot, options.style, [&](MixtureRequest const& of) { return with(of); });
}
}  // namespace

void add_diagram(Program& program) {
    auto diagram = std::make_shared<DiagramCommand>();
    Command command = program.add(
        "diagram", "p-T projection of a binary: critical, three-phase, azeotropic lines",
        [diagram] { return diagram->run(); });
    diagram->request.binary = true;
    diagram->request.add_to(command);
    diagram->limits.add_to(command);
    diagram->models.add_to(command);
    diagram->plot.add_to(command);
    diagram->options.add_units(command);
    diagram->options.add_output(command);
    command.examples(
        R"(  corvane diagram PR+vdW1 CO2 decane --kij 0.1 --plot diagram.svg
  corvane diagram PR+vdW1 CO2 ethane --plot azeotropes.png)");
}

}  // namespace cli
