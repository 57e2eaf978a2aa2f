// Options that commands share.
#pragma once

#include <tools/corvane/input/open.h>
#include <tools/corvane/output/table.h>
#include <tools/corvane/program.h>
#include <tools/corvane/text/units.h>

#include <string>

namespace cli {

struct Options {
    Units units;
    Style style;  ///< complete after begin()
    FluidRequest fluid;

    /// --csv --json --full --no-heading --home; --data is the older name of --home, except where
    /// a command takes measured points by it.
    void add_output(Command& command, bool measured_data = false);
    void add_units(Command& command);  ///< --unit-T --unit-p --unit-rho --molar --mass
    void add_fluid(Command& command);  ///< EOS SUBSTANCE --set

    /// To call first in an action: settles the output style and enters the data home.
    void begin();
    /// begin, then the fluid that was asked for; the units get its molar mass.
    Fluid open();

  private:
    std::string data_;
    bool csv_ = false, json_ = false, bare_ = false, molar_ = false;
};

}  // namespace cli
