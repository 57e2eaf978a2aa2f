// Transport properties as cells of rows, with the models that they came from.
#pragma once

#include <tools/corvane/input/open.h>
#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/output/rows.h>

#include <corvane/phases/flash/flash.h>
#include <corvane/transport/mixture_transport.h>

#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace cli {

/// A value, or what stands in its place: nothing, with a note.
struct TransportCell {
    Cell cell;
    std::optional<double> value;  ///< Pa·s, W/(m K), N/m, m²/s
};

/// Values as cells, and the models that they came from.
class TransportSources {
  public:
    explicit TransportSources(Units const& units) : units_(units) {}

    Column viscosity_column(std::string const& name, char const* text) const;
    Column conductivity_column(std::string const& name, char const* text) const;
    Column tension_column() const;
    static Column diffusion_column(std::string const& name, char const* text) { return {name, "m2/s", text}; }
    /// The models, each told once.
    void tell(Heading& head) const;

  protected:
    using Compute = std::function<corvane::TransportValue()>;
    /// Notes of the row say what is extrapolated, uncertain or not there. A failure of the model
    /// leaves the cell empty where `lenient`, else it is thrown.
    TransportCell viscosity(Row& row, bool lenient, Compute const& compute);
    TransportCell conductivity(Row& row, bool lenient, Compute const& compute);
    TransportCell tension(Row& row, bool lenient, Compute const& compute);
    TransportCell diffusion(Row& row, bool lenient, Compute const& compute);

  private:
    TransportCell show(char const* property, double unit, Row& row, bool lenient,
                       Compute const& compute);

    Units const& units_;
    std::mutex mutex_;  // rows of files come from several threads
    std::set<std::string> told_;
};

/// Of a pure fluid.
class TransportCells : public TransportSources {
  public:
    TransportCells(Fluid const& fluid, Units const& units)
        : TransportSources(units), transport_(fluid) {}

    corvane::Transport const& models() const { return transport_; }
    TransportCell viscosity(double T, double rho, Row& row, bool lenient = false);
    TransportCell conductivity(double T, double rho, Row& row, bool lenient = false);
    TransportCell tension(double T, Row& row);
    TransportCell diffusion(double T, double rho, Row& row);

  private:
    corvane::Transport transport_;
};

/// Of the phases of a mixture.
class MixtureTransportCells : public TransportSources {
  public:
    MixtureTransportCells(MixtureFluid const& mixture, Units const& units)
        : TransportSources(units), transport_(mixture) {}

    /// Viscosity, conductivity, surface tension.
    void add_columns(std::vector<Column>& columns) const;
    /// liquid, vapour: those between which there is a surface; null: none.
    void add_cells(double T, corvane::PhaseRecord const& phase, corvane::PhaseRecord const* liquid,
                   corvane::PhaseRecord const* vapour, Row& row);
    /// Of two components: coefficients of Maxwell and Stefan and of Fick, and what is between them.
    void add_diffusion_columns(std::vector<Column>& columns) const;
    void add_diffusion_cells(double T, corvane::PhaseRecord const& phase, Row& row);

  private:
    corvane::MixtureTransport transport_;
};

/// Boiling liquid and its vapour at every temperature [K], where no pressure was given. row: of T [K],
/// p [MPa], name of the phase, rho [mol/cm³].
void add_boiling(Rows& rows, Heading& head, Fluid const& fluid, std::vector<double> const& temperatures,
                 Units const& units,
                 std::function<Row(double, double, char const*, double)> const& row);

}  // namespace cli
