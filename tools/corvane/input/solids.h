// Which solid of a substance a command works with, and what it says about it.
#pragma once

#include <tools/corvane/program.h>
#include <tools/corvane/text/units.h>

#include <corvane/phases/solid/anchored_solid.h>
#include <corvane/pure/model1.h>

#include <optional>
#include <string>

namespace cli {

/// A pure solid: anchored at the melting point, or from the sublimation data of model.solid.
struct PureSolid {
    Model1 const* model = nullptr;
    std::optional<corvane::AnchoredSolid> anchored;
    double measured = 0.0;  ///< lowest temperature of the sublimation data, K

    corvane::AnchoredSolid const* pointer() const { return anchored ? &*anchored : nullptr; }
    double T_max() const;
    double T_min() const;  ///< below, the solid is extrapolated
    double g(double p, double T) const;  ///< Gibbs energy over RT, as Model1::Ge
    char const* form(int i) const;  ///< "solid" where the forms have no names
    /// "solid benzene: anchored at …", for the heading.
    std::string remark(Units const& units) const;
};

/// Adds --solid-data: fusion, sublimation, or by default fusion where there are both.
void add_solid_data(Command& command, std::string& data);

/// Loads the data of a substance into model.solid and makes its solid; `data` as --solid-data, ""
/// for the default. Nothing: there are no such data. @throws Failure files that are damaged
std::optional<PureSolid> load_solid(Model1& model, std::string const& data);
/// The same. @throws Failure there are no such data
PureSolid require_solid(Model1& model, std::string const& data);

}  // namespace cli
