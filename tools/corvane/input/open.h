// From the words on the command line to a loaded model.
#pragma once

#include <tools/corvane/input/parameter_file.h>
#include <tools/corvane/output/table.h>
#include <tools/corvane/text/units.h>

#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <memory>
#include <optional>
#include <string>

namespace cli {

struct FluidRequest {
    std::string eos, substance;
    int set = 0;  ///< 0: set 1, or the first there is
};

/// A model with its parameter set and, where there is a table, its ideal-gas part.
struct Fluid {
    std::unique_ptr<Model1, corvane::Detach> model;
    ParameterNotes notes;
    std::optional<IdealNotes> ideal;  ///< nothing: the substance has no ideal-gas table

    std::string name() const;  ///< "PR propane"
};

/// Attaches the equation and loads the substance, which may be named as in the data tree or by
/// anything the index of substances knows. The working directory is the data home.
/// @throws Failure with what is near: equations, substances, sets
Fluid open_fluid(FluidRequest const& request);

/// The name in the data tree of a substance given in any way that the index knows; the text itself
/// if a parameter set goes by it. @throws Failure with what is near
std::string substance_name(std::string const& eos, std::string const& text);

/// The same of a substance that has a parameter set. @throws Failure with the equations that have one
std::string component_name(std::string const& eos, std::string const& text);

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
