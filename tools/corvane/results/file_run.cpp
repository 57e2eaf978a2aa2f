#include <tools/corvane/output/watch.h>
#include <tools/corvane/results/compare.h>
#include <tools/corvane/results/file_run.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <thread>

namespace cli {
namespace {
void put(std::string& out, std::string const& word, char separator) {
    const bool plain = word.find_first_of("\"\n\r#") == std::string::npos &&
                       word.find(separator) == std::string::npos;
    if (plain) {
        out += word;
        return;
    }
    out += '"';
    for (char c : word) out += c == '"' ? "\"\"" : std::string(1, c);
    out += '"';
}

void put(std::string& out, double x, Style const& style, bool comma) {
    if (!std::isfinite(x)) return;
    const std::size_t begin = out.size();
    if (style.full)
        fmt::format_to(std::back_inserter(out), "{}", x);
    else
        fmt::format_to(std::back_inserter(out), "{:.{}g}", x,
                       style.precision > 0 ? style.precision : 7);
    if (const std::size_t point = out.find('.', begin); comma && point != std::string::npos)
        out[point] = ',';
}

void flush(std::string& out) {
    if (std::fwrite(out.data(), 1, out.size(), stdout) != out.size() || std::fflush(stdout) != 0)
        throw Failure("standard output does not take the result");
    out.clear();
}
}  // namespace

void FileRun::add_to(Command& command) {
    command
        .value("--input", path_,
               "a CSV file with a state in every row (- for standard input), with columns such as "
               "T/K, p [bar], x_methane: CSV with the results beside them",
               {.type = "FILE"})
        .flag("--keep-going", keep_going_, "with --input: exit code 0 even if rows failed")
        .count("--threads", threads_, "with --input: rows are calculated by so many (default 1)");
}

void FileRun::begin(bool json) {
    if (path_.empty()) {
        if (threads_ > 1) throw Misuse("--threads goes with --input");
        if (keep_going_) throw Misuse("--keep-going goes with --input");
        return;
    }
    if (json) throw Misuse("--input writes CSV, not JSON");
    if (path_ != "-") path_ = std::filesystem::absolute(path_).string();
}

void FileRun::open(std::vector<Known> known, Units const& units,
                   MixtureFluid const* mixture) {
    mixture_ = mixture;
    reader_.emplace(path_, Watch::interrupted);
    bool by_mole = false;
    for (std::size_t k = 0; k < reader_->header().size(); ++k) {
        std::string const& heading = reader_->header()[k];
        const ColumnName column(heading);
        if (mixture && column.name.size() == 1 && !column.unit.empty() &&
            std::string("wxyz").find(column.name) != std::string::npos) {
            const int i = mixture->index(column.unit);
            if (i < 0)
                throw Failure(fmt::format("{}: {} is not a component of the mixture", path_,
                                          column.unit));
            (column.name == "w" ? by_mass_ : by_mole) = true;
            fractions_.push_back({k, i});
            continue;
        }
        const auto found = std::find_if(known.begin(), known.end(),
                                        [&](Known const& one) { return one.name == column.name; });
        if (found == known.end()) continue;
        if (has(column.name))
            throw Failure(fmt::format("{}: two columns {}", path_, column.name));
        sources_.push_back({k, column.name, units.of_column(found->quantity, column.unit, path_, heading)});
    }
    if (by_mass_ && by_mole)
        throw Failure(path_ + ": mole and mass fractions do not go together");
    if (mixture && !mixture->composed && fractions_.empty())
        throw Failure(fmt::format("{}: no composition: columns such as x_{}", path_,
                                  mixture->component(0)));
}

bool FileRun::has(std::string const& name) const {
    return std::any_of(sources_.begin(), sources_.end(),
                       [&](Source const& source) { return source.name == name; });
}

FileRow::FileRow(FileRun const& run, std::vector<std::string> const& fields)
    : run_(run), fields_(fields) {
    if (run.mixture_) x_ = run.composition(*this);
}

double FileRow::field(std::size_t column) const {
    std::string const& text = fields_[column];
    const auto x = to_number(text);
    if (x) return *x;
    const auto y = to_number(run_.reader_->decimal(text));
    if (!y)
        throw Failure(fmt::format("{}: {}", run_.reader_->header()[column],
                                  text.empty() ? "nothing is given"
                                               : fmt::format("'{}' is not a number", clipped(text))));
    return *y;
}

double FileRow::operator[](std::string const& name) const {
    for (FileRun::Source const& source : run_.sources_)
        if (source.name == name) return source.convert.to_library(field(source.column));
    return std::nan("");
}

/// One component may lack its column or field: it gets the rest.
Vector<double> FileRun::composition(FileRow const& row) const {
    if (fractions_.empty()) return mixture_->x;
    const int n = mixture_->size();
    std::vector<bool> known(static_cast<unsigned>(n));
    Vector<double> z(n);
    double sum = 0.0;
    for (Fraction const& fraction : fractions_) {
        if (row.fields_[fraction.column].empty()) continue;
        const double x = row.field(fraction.column);
        if (!(x >= 0.0))
            throw Failure(reader_->header()[fraction.column] + " is below zero");
        known[static_cast<unsigned>(fraction.component)] = true;
        z[fraction.component] = x;
        sum += x;
    }
    const auto missing = std::count(known.begin(), known.end(), false);
    if (missing > 1) throw Failure("more than one component lacks its fraction");
    if (missing == 1) {
        if (sum > 1.0 + 1e-9) throw Failure("the fractions sum to more than 1");
        const auto at = std::find(known.begin(), known.end(), false) - known.begin();
        z[static_cast<int>(at)] = std::max(0.0, 1.0 - sum);
        sum = std::max(1.0, sum);
    }
    if (!(sum > 0.0)) throw Failure("the fractions sum to zero");
    double moles = 0.0;
    for (int i = 0; i < n; ++i) {
        z[i] /= sum;
        if (by_mass_) z[i] /= mixture_->molar_mass(i);
        moles += z[i];
    }
    for (int i = 0; i < n; ++i) z[i] /= moles;
    return z;
}

/// Rows that are calculated one after the other, and the lines that come out.
struct FileRun::Chunk {
    std::vector<std::vector<std::string>> rows;
    bool comma = false;  ///< numbers have a decimal comma up to here
    std::string out;
    std::size_t done = 0;  ///< rows; less than all after SIGINT
    long failed = 0;
    std::exception_ptr error;
};

struct FileRun::Shown {
    std::vector<std::size_t> columns;  ///< of the results
    Style style;
};

/// The next chunks; false at the end of the file. What is wrong with a line is in the last chunk.
bool FileRun::read(std::vector<Chunk>& chunks) {
    constexpr std::size_t kRows = 64, kChunks = 32;
    chunks.clear();
    bool more = true, waits = false;
    while (more && !waits && chunks.size() < kChunks) {
        Chunk& chunk = chunks.emplace_back();
        try {
            std::vector<std::string> fields;
            // Who writes into a pipe row by row gets his answers so.
            for (; chunk.rows.size() < kRows && !waits && (more = reader_->next(fields));
                 waits = reader_->waits()) {
                // Whether numbers have a decimal comma is seen here, and not by who comes first.
                for (Source const& source : sources_) reader_->decimal(fields[source.column]);
                for (Fraction const& fraction : fractions_) reader_->decimal(fields[fraction.column]);
                chunk.rows.push_back(std::move(fields));
            }
        } catch (...) {
            chunk.error = std::current_exception();
            more = false;
        }
        chunk.comma = reader_->decimal_comma();
    }
    return more;
}

void FileRun::compute(Chunk& chunk, Shown const& shown, Compute const& how) const {
    const char separator = reader_->separator();
    std::string& out = chunk.out;
    Row row;
    for (auto const& fields : chunk.rows) {
        if (Watch::interrupted()) return;
        row.cells.clear();
        row.note.clear();
        const auto why = failure_of([&] { how(FileRow(*this, fields), row); });
        for (std::string const& text : fields) {
            put(out, text, separator);
            out += separator;
        }
        for (std::size_t k : shown.columns) {
            if (!why && k < row.cells.size()) {
                if (auto const* x = std::get_if<double>(&row.cells[k]))
                    put(out, *x, shown.style, chunk.comma);
                else if (auto const* word = std::get_if<std::string>(&row.cells[k]))
                    put(out, *word, separator);
                else if (auto const* n = std::get_if<long>(&row.cells[k]))
                    out += std::to_string(*n);
            }
            out += separator;
        }
        if (why) ++chunk.failed;
        put(out, why ? "failed: " + printable(*why) : row.note.empty() ? "ok" : row.note,
            separator);
        out += '\n';
        ++chunk.done;
    }
}

/// Every thread takes the next chunk that nobody has.
void FileRun::compute(std::vector<Chunk>& chunks, Shown const& shown,
                      std::function<Compute()> const& make) const {
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t k; (k = next++) < chunks.size();) try {
                compute(chunks[k], shown, make());
            } catch (...) {
                chunks[k].error = std::current_exception();
            }
    };
    std::vector<std::jthread> others;
    const auto useful = std::min(static_cast<std::size_t>(threads_), chunks.size());
    try {
        while (others.size() + 1 < useful) others.emplace_back(work);
    } catch (std::system_error const&) {  // no further thread: those that are there do it
    }
    work();
}

int FileRun::run(char const* command, std::vector<Column> const& columns, Style const& style,
                 std::function<Compute()> const& make) {
    const char separator = reader_->separator();
    Shown shown{{}, style};
    std::string out;
    for (std::string const& name : reader_->header()) {
        put(out, name, separator);
        out += separator;
    }
    for (std::size_t k = 0; k < columns.size(); ++k) {
        const bool given = std::any_of(
            reader_->header().begin(), reader_->header().end(), [&](std::string const& heading) {
                return heading == columns[k].name || ColumnName(heading).name == columns[k].name;
            });
        if (given || columns[k].detail) continue;
        shown.columns.push_back(k);
        put(out, columns[k].heading(), separator);
        out += separator;
    }
    out += "status\n";
    Watch watch(fmt::format("corvane: {}, rows of {}", command, path_));
    long rows = 0, failed = 0;
    std::exception_ptr error;
    std::vector<Chunk> chunks;
    for (bool more = true; more && !error && !Watch::interrupted();) {
        more = read(chunks);
        compute(chunks, shown, make);
        for (Chunk const& chunk : chunks) {
            out += chunk.out;
            rows += static_cast<long>(chunk.done);
            failed += chunk.failed;
            watch.go_on(static_cast<long>(chunk.done));
            error = chunk.error;
            if (error || chunk.done < chunk.rows.size()) break;
        }
        flush(out);
    }
    if (error) std::rethrow_exception(error);
    if (Watch::interrupted()) {
        watch.say(command, fmt::format("interrupted after {} rows", rows));
        return kInterrupted;
    }
    if (failed > 0)
        watch.say(command, fmt::format("{} of {} rows failed: see the column status", failed, rows));
    return failed > 0 && !keep_going_ ? 1 : 0;
}

}  // namespace cli
