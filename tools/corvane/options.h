// Options that commands share, and how a command is made known to main.
#pragma once

#include <tools/corvane/open.h>
#include <tools/corvane/table.h>
#include <tools/corvane/units.h>

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace cli {

/// A command's work; returns the exit code.
using Action = std::function<int()>;

struct Options {
    std::string data;
    bool csv = false, json = false, bare = false, molar = false;
    Units units;
    Style style;  ///< complete after finish()
    FluidRequest fluid;

    void add_output(CLI::App& command);  ///< --data --csv --json --full --no-heading
    void add_units(CLI::App& command);   ///< --unit-T --unit-p --unit-rho --molar --mass
    void add_fluid(CLI::App& command);   ///< EOS SUBSTANCE --set

    /// To call first in an action: settles the output style and enters the data home.
    void begin();
    /// begin, then the fluid that was asked for; the units get its molar mass.
    Fluid open();
};

/// The commands. Each adds its subcommand to app and sets `action` when it is the one given.
void add_list(CLI::App& app, Action& action);
void add_state(CLI::App& app, Action& action);
void add_saturation(CLI::App& app, Action& action);

}  // namespace cli
