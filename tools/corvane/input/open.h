// From the words on the command line to a loaded model.
#pragma once

#include <tools/corvane/output/table.h>
#include <tools/corvane/program.h>
#include <tools/corvane/text/text.h>
#include <tools/corvane/text/units.h>

#include <corvane/catalogue/open.h>

#include <string>
#include <utility>
#include <vector>

namespace cli {

using corvane::IdealNotes;
using corvane::ParameterNotes;

struct FluidRequest {
    std::string eos, substance;  ///< eos may be empty: the best that there is
    int set = 0;  ///< 0: set 1, or the first there is
    std::vector<std::string> define = {};  ///< words of --define
};

/// Substances from the words of --define: "C7+", "Tc=540", "pc=27bar", "omega=0.35", "M=96", a word
/// without '=' beginning the next. @throws Misuse
std::vector<corvane::PseudoComponent> definitions(std::vector<std::string> const& words);
/// Those for the components of this name. @throws Misuse also for one that is none of them
std::vector<corvane::PseudoComponent> definitions(std::vector<std::string> const& words,
                                                  std::vector<std::string> const& components);
void add_define(Command& command, std::vector<std::string>& words);

struct Fluid : corvane::Fluid {
    explicit Fluid(corvane::Fluid&& opened) : corvane::Fluid(std::move(opened)) {}
    std::string name() const;  ///< "PR propane"
    bool chosen = false;       ///< the equation was not named
    bool pseudo = false;       ///< of --define
    std::string asked;         ///< the substance as it was named
    std::string shown() const { return name_in_picture(asked, substance); }
};

/// corvane::open from the data home that was entered; a file that says to hold another substance is
/// told on standard error. @throws corvane::OpenFailure
Fluid open_fluid(FluidRequest const& request);

/// "C7+ is defined here: Tc ...".
std::string defined_remark(Model1 const& model, Units const& units);

/// Heading with equation, substance and set, and the stated range as a remark.
Heading heading(std::string const& command, Fluid const& fluid, Units const& units);

/// "extrapolated: …" when (T, p) lies outside the stated range of the set, or T outside that of the
/// ideal-gas data in use; "" otherwise.
std::string extrapolated(Fluid const& fluid, double T, double p, bool with_ideal,
                         Units const& units);

/// "below …, above …" when (T, p) lies outside a stated range; "" otherwise.
std::string beyond(ParameterNotes const& range, double T, double p, Units const& units);

/// "ideal-gas data above …" when T lies outside their stated range; "" otherwise.
std::string beyond(IdealNotes const& gas, double T, Units const& units);

/// Appends a note to what is there.
void add_note(std::string& notes, std::string const& note);

}  // namespace cli
