// Tables of properties for programs that need a state a million times: polynomials on cells that are
// halved until they give what the equation gives, in a file that any program reads.
//
//     const corvane::Fluid co2 = corvane::open("MEOS", "CO2");
//     const corvane::TableStates states(*co2.model, corvane::TableInputs::ph);
//     corvane::TableDesign design = states.design(0.1, 20, 5000, 40000);       // MPa, J/mol
//     design.tolerance = 1e-6;
//     const auto table = corvane::PropertyTable::build(design, states.sample());
//     table.write("co2.table");
//     …
//     std::vector<double> q(table.columns().size());
//     if (!table.at(p, h, q.data())) …                                         // ask the equation
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/report/progress.h>

#include <functional>
#include <string>
#include <vector>

namespace corvane {

struct TableColumn {
    std::string name;   ///< letters, digits and _
    double unit = 0.0;  ///< errors count in it; 0: of the value itself, which is positive (its logarithm
                        ///< is what is tabulated)
};

struct TableAxis {
    std::string name;
    double from = 0.0, to = 0.0;
    bool logarithmic = false;  ///< cells halve ln(value); from > 0
};

struct TableDesign {
    TableAxis a, b;
    std::vector<TableColumn> columns;
    double tolerance = 1e-6;  ///< of a value, in the unit of its column; 1e-10 … 1e-2
    int halvings = 9;         ///< of the range at most, 0 … 16: how fine cells become
    std::string note;         ///< what the numbers are of: model, parameters, units; one line
};

/// Values of all columns at (a, b). Returns what kind of state it is (1, 2 … for one phase, two …; no
/// cell has states of two kinds), or 0 where there is none. A column may be not-a-number for a kind.
using TableSample = std::function<int(double a, double b, double* values)>;

/// What a table is worth, at random points.
struct TableCheck {
    int points = 0;    ///< asked, of equal probability in the axes' measure
    int answered = 0;  ///< of those, by the table
    int without = 0;   ///< not answered, and without a state
    int other = 0;     ///< answered where the state is of another kind, or there is none
    std::vector<double> worst;  ///< of each column: largest error, in its unit; not of `other`
};

/// Chebyshev polynomials of degree 6 by 6 on the cells of a quadtree: interpolation in Chebyshev points
/// (Trefethen, Approximation Theory and Approximation Practice, 2013). A cell stands if 13 further
/// states in it and on its edges agree within a third of the tolerance, and if 36 on a ring, a
/// sixteenth of its width outside, are of the same kind and near the polynomial: a phase boundary that
/// enters the cell between two of them would have to bend within a twentieth of it. Otherwise it is
/// halved both ways, and where it may not be halved any more the table has a gap and says so: a
/// program asks the equation there. States at samples are exact; between them nothing is proven,
/// check() draws the sample that says how good a table is.
///
/// Immutable; threads may share one.
class CORVANE_API PropertyTable {
  public:
    static constexpr int kDegree = 6, kOrder = kDegree + 1, kMostLeaves = 200000;

    /// @param progress  called after every cell with the number of cells; false ends the work
    /// @throws ThException 5 a design that is not as described, 4 ended by progress; what sample throws
    static PropertyTable build(TableDesign const& design, TableSample const& sample,
                               Progress const& progress = {});
    /// @throws FileError 1: no such file, not a table, or damaged (every byte is under a digest)
    static PropertyTable read(std::string const& path);
    /// As a whole or not at all. @throws FileError 1
    void write(std::string const& path) const;

    TableDesign const& design() const { return design_; }
    std::vector<TableColumn> const& columns() const { return design_.columns; }
    int leaves() const { return leaves_; }  ///< cells that answer
    double coverage() const;                ///< their share of the range

    /// All columns at (a, b). False, and values as they were, outside the range and in gaps.
    bool at(double a, double b, double* values) const noexcept;
    /// @throws ThException 5 points < 1; what sample throws
    TableCheck check(TableSample const& sample, int points, unsigned seed) const;

  private:
    friend class TableBuilder;
    friend struct TableFile;
    PropertyTable() = default;
    double const* cell(double a, double b, double& x, double& y) const noexcept;

    TableDesign design_;
    /// Of each cell: > 0 the first of its four children; −1 a gap; −2 − k leaf k.
    std::vector<int> cells_;
    std::vector<double> values_;  ///< leaf, column, coefficient of T_i(a)·T_j(b)
    int leaves_ = 0;
};

}  // namespace corvane
