// A file of states: --input FILE. Every row is a state; its columns are kept as they stand, in
// their order, and what was calculated follows them, with a column "status": "ok", a note, or
// "failed: <why>". Nothing but one row is held. The output separates fields as the input does, and
// has its decimal mark.
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

class FileRun {
  public:
    struct Known {
        char const* name;
        Quantity quantity;
    };

    void add_to(Command& command);  ///< --input --keep-going
    /// To call before the data home is entered. @throws Misuse with JSON
    void begin(bool json);
    explicit operator bool() const { return !path_.empty(); }

    /// Reads the names of the columns: "T/K", "p [bar]", "T [°C]"; without unit, the one chosen.
    /// Of a mixture also x_<component> (or y_, z_) and w_<component>, mole and mass fractions.
    /// @throws Failure an unknown unit, a component that is none, as CsvReader
    void open(std::vector<Known> known, Units const& units, MixtureFluid* mixture = nullptr);

    /// Whether the file has a column of that name, and its value in the row, in library units.
    bool has(std::string const& name) const;
    bool composed() const { return !fractions_.empty(); }
    /// @throws Failure the field is empty or no number
    double operator[](std::string const& name) const;

    /// Calculates row after row; a mixture has its composition set before. Columns of details and
    /// those that the input has are left out. What compute throws marks the row. Returns the exit
    /// code: 1 if rows failed, unless --keep-going.
    int run(char const* command, std::vector<Column> const& columns, Style const& style,
            std::function<void(Row&)> const& compute);

  private:
    struct Source {
        std::size_t column;
        std::string name;
        Conversion convert;
    };
    struct Fraction {
        std::size_t column;
        int component;
    };
    double field(std::size_t column) const;
    void set_composition();

    std::string path_;
    bool keep_going_ = false, by_mass_ = false;
    std::optional<CsvReader> reader_;
    std::vector<Source> sources_;
    std::vector<Fraction> fractions_;
    std::vector<std::string> fields_;
    MixtureFluid* mixture_ = nullptr;
};

}  // namespace cli
