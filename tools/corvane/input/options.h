// Options that commands share.
#pragma once

#include <tools/corvane/input/open.h>
#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/output/table.h>
#include <tools/corvane/program.h>
#include <tools/corvane/text/units.h>

#include <string>
#include <vector>

namespace cli {

struct Options {
    Units units;
    Style style;  ///< complete after begin()
    std::vector<std::string> words;  ///< of the fluid: equation and substance, or this alone
    std::string set;                 ///< of the fluid: a number; of a mixture also by component
    std::vector<std::string> define;

    /// --csv --json --full --no-heading --home
    void add_output(Command& command);
    void add_units(Command& command);  ///< --units --unit-T … --molar --mass
    void add_fluid(Command& command);  ///< [EOS] SUBSTANCE --set --define
    void add_reference(Command& command);  ///< --reference

    /// To call first in an action: settles the output style and finds the data home.
    void begin();
    bool json() const { return json_; }
    /// Are the words of a mixture, "PR+vdW1 methane=0.7 propane" or with fractions alone?
    bool names_mixture() const;
    /// The mixture that they name, with --set and --define.
    void to_mixture(MixtureRequest& request) const;
    /// begin, then the fluid that was asked for; the units get its molar mass.
    Fluid open();
    /// Moves the reference state as asked; returns the remark on what holds. @throws Failure
    std::string set_reference(Fluid& fluid) const;
    std::string set_reference(MixtureFluid& mixture) const;
    /// What to append where an enthalpy, entropy or inner energy was given: "" if the state was chosen.
    std::string other_references() const;

  private:
    std::string data_, preset_, reference_ = "table";
    bool csv_ = false, json_ = false, bare_ = false, molar_ = false;
};

}  // namespace cli
