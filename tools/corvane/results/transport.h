// Transport properties as cells of rows, with the models that they came from.
#pragma once

#include <tools/corvane/input/open.h>
#include <tools/corvane/output/rows.h>

#include <corvane/transport/transport.h>

#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>

namespace cli {

/// A value, or what stands in its place: nothing, with a note.
struct TransportCell {
    Cell cell;
    std::optional<double> value;  ///< Pa·s, W/(m K), N/m
};

class TransportCells {
  public:
    TransportCells(Fluid const& fluid, Units const& units) : transport_(fluid), units_(units) {}

    corvane::Transport const& models() const { return transport_; }
    Column viscosity_column(std::string const& name, char const* text) const;
    Column conductivity_column(std::string const& name, char const* text) const;
    Column tension_column() const;

    /// Notes of the row say what is extrapolated, uncertain or not there. A failure of the model
    /// leaves the cell empty where `lenient`, else it is thrown.
    TransportCell viscosity(double T, double rho, Row& row, bool lenient = false);
    TransportCell conductivity(double T, double rho, Row& row, bool lenient = false);
    TransportCell tension(double T, Row& row);
    /// The models, each told once.
    void tell(Heading& head) const;

  private:
    TransportCell show(char const* property, double unit, Row& row, bool lenient,
                       std::function<corvane::TransportValue()> const& compute);

    corvane::Transport transport_;
    Units const& units_;
    std::mutex mutex_;  // rows of files come from several threads
    std::set<std::string> told_;
};

}  // namespace cli
