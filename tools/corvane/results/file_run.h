// A file of states: --input FILE. Every row is a state; its columns are kept as they stand, in
// their order, and what was calculated follows them, with a column "status": "ok", a note, or
// "failed: <why>". Nothing but a few thousand rows is held. The output separates fields as the
// input does, and has its decimal mark.
#pragma once

#include <tools/corvane/input/open_mixture.h>
#include <tools/corvane/output/table.h>
#include <tools/corvane/text/csv.h>
#include <tools/corvane/text/units.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cli {

class FileRun;

/// A row of the file, as a calculation sees it.
class FileRow {
  public:
    /// A value in library units, not-a-number where there is no such column.
    /// @throws Failure the field is empty or no number
    double operator[](std::string const& name) const;
    /// Mole fractions: those of the row, or where the file has none of the mixture.
    Vector<double> const& x() const { return x_; }

  private:
    friend FileRun;
    FileRow(FileRun const& run, std::vector<std::string> const& fields);
    double field(std::size_t column) const;

    FileRun const& run_;
    std::vector<std::string> const& fields_;
    Vector<double> x_;
};

class FileRun {
  public:
    /// Calculates the cells of a row; of a chunk of rows one after the other, so that a result may
    /// be the start of the next.
    using Compute = std::function<void(FileRow const&, Row&)>;

    struct Known {
        char const* name;
        Quantity quantity;
    };

    void add_to(Command& command);  ///< --input --keep-going --threads
    /// To call before the data home is entered. @throws Misuse with JSON
    void begin(bool json);
    explicit operator bool() const { return !path_.empty(); }

    /// Reads the names of the columns: "T/K", "p [bar]", "T [°C]"; without unit, the one chosen.
    /// Of a mixture also x_<component> (or y_, z_) and w_<component>, mole and mass fractions.
    /// @throws Failure an unknown unit, a component that is none, as CsvReader
    void open(std::vector<Known> known, Units const& units, MixtureFluid const* mixture = nullptr);

    bool has(std::string const& name) const;
    bool composed() const { return !fractions_.empty(); }

    /// Calculates row after row. Columns of details and those that the input has are left out. What
    /// a calculation throws marks the row. `make` is called for every chunk, of a size that does not
    /// depend on the number of threads, so that the output does not either. Returns the exit code:
    /// 1 if rows failed, unless --keep-going.
    int run(char const* command, std::vector<Column> const& columns, Style const& style,
            std::function<Compute()> const& make);

  private:
    friend FileRow;
    struct Source {
        std::size_t column;
        std::string name;
        Conversion convert;
    };
    struct Fraction {
        std::size_t column;
        int component;
    };
    struct Chunk;
    struct Shown;
    Vector<double> composition(FileRow const& row) const;
    bool read(std::vector<Chunk>& chunks);
    void compute(Chunk& chunk, Shown const& shown, Compute const& how) const;
    void compute(std::vector<Chunk>& chunks, Shown const& shown,
                 std::function<Compute()> const& make) const;

    std::string path_;
    bool keep_going_ = false, by_mass_ = false;
    int threads_ = 1;
    std::optional<CsvReader> reader_;
    std::vector<Source> sources_;
    std::vector<Fraction> fractions_;
    MixtureFluid const* mixture_ = nullptr;
};

}  // namespace cli
