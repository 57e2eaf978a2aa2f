// Reading and writing data files: C-locale numbers, bounded paths, files that close themselves.
// Internal to the library and its plug-ins.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/file_error.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

/// While it lives, the calling thread reads and writes numbers with the decimal point of the C
/// locale, whatever the process has set.
class CORVANE_API CLocale {
  public:
    CLocale();
    ~CLocale();
    CLocale(CLocale const&) = delete;
    CLocale& operator=(CLocale const&) = delete;

  private:
    void* previous_;
};

struct FileCloser {
    void operator()(FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<FILE, FileCloser>;

/// The path that a format and its arguments give. A null argument is for the caller to refuse.
/// @throws FileError 1 if it does not fit th_pathlength
CORVANE_API std::string path_of(char const* format, ...) __attribute__((format(printf, 1, 2)));

/// Opens a regular file, or a row of its folder's collected.tsv, for reading; nothing that could
/// block or never end.
/// @throws FileError 1
CORVANE_API File open_file(std::string const& path);

/// Runs a reader on the file of that path. A ThException that leaves it (a plug-in's own, say) gets
/// path and line if it has none.
template <class F>
auto reading(std::string const& path, FILE* f, F reader) -> decltype(reader());

/// A file in the making: what is written to stream() becomes the file of that path as a whole on
/// commit(), or not at all, and an older file stays until then.
class CORVANE_API NewFile {
  public:
    /// @throws FileError 1 if nothing can be created there. Folders are not made.
    explicit NewFile(std::string path);
    ~NewFile();
    NewFile(NewFile const&) = delete;
    NewFile& operator=(NewFile const&) = delete;

    FILE* stream() const { return file_.get(); }
    /// @throws FileError 1 if anything could not be written, or if a number in the lines from
    ///         `section` on (a position in the stream) is not finite, which no reader takes
    void commit(long section = 0);

  private:
    std::string path_, target_, temporary_;
    File file_;
};

/// Refuses, as code 1, a substance name that would lead out of its folder or that bears control
/// characters. Names come from files, too.
CORVANE_API void check_name(char const* name);
/// Refuses, as code 1, what a parameter file could not give back: a name with a blank (or none), a
/// comment longer than `most` or with a line end.
CORVANE_API void check_storable(char const* name);
CORVANE_API void check_storable(char const* comment, int most);

/// While it lives, what the calling thread reads below "./" (data of open_file, plug-ins of attach1
/// and attachN) is read below the first of `homes` that has it instead. Nests; the inner one holds.
class CORVANE_API ReadingFrom {
  public:
    /// @param homes  at least one
    explicit ReadingFrom(std::vector<std::string> homes);
    ~ReadingFrom();
    ReadingFrom(ReadingFrom const&) = delete;
    ReadingFrom& operator=(ReadingFrom const&) = delete;

  private:
    std::vector<std::string> homes_;
    ReadingFrom const* outer_;
    friend std::vector<std::string> reading_paths(std::string const& path);
};

/// The path to read for one that may begin with "./": in the first home that has it, or else, for
/// the message, in the first.
CORVANE_API std::string reading_path(std::string const& path);
/// That path in every home, the first the one that holds; of each row of a table that several have.
CORVANE_API std::vector<std::string> reading_paths(std::string const& path);
/// The number of the first home that has the path, counted from 0; that of homes if none has.
CORVANE_API int reading_home(std::string const& path);

/// What a regular file, or such a row, holds, up to its first 16 MiB; empty if it cannot be read.
CORVANE_API std::string file_contents(char const* path);

/// Reads the rest of the line into a buffer of `size` characters, after blanks and tabs (and
/// nothing else: an empty text keeps its line). At most `most` characters are taken; whatever
/// remains of a longer line is left for the reads that follow. Line ends are stripped, other control
/// characters become blanks, the text is terminated.
CORVANE_API void read_text(FILE* f, char* buffer, int size, int most);

/// Copies at most size − 1 characters and terminates. A null text is read as "". The two may
/// overlap.
CORVANE_API void copy_text(char* to, int size, char const* from);

/// Reads the next word, on this line or (any_line) on one that follows; the white space after it
/// stays. False if there is none. @throws FileError 1 for a word of `size` characters or more
CORVANE_API bool read_word(FILE* f, char* to, int size, bool any_line);
/// Reads the next word as a finite number, the whole of it: 56,25 or 0.5D+02 are none.
/// @throws FileError 1
CORVANE_API double read_number(FILE* f, bool any_line);
/// Goes to the next line; what is left of this one must be nothing or a remark that begins with #.
/// @throws FileError 1
CORVANE_API void finish_line(FILE* f);
/// Goes to the next line, whatever is left of this one.
CORVANE_API void skip_line(FILE* f);
/// Line on which the file stands, counted from 1; 0 if it cannot tell.
CORVANE_API int line_of(FILE* f);
/// Throws FileError 1 for the line on which the file stands; `reading` adds the path.
[[noreturn]] CORVANE_API void malformed(FILE* f, std::string const& reason);

template <class F>
auto reading(std::string const& path, FILE* f, F reader) -> decltype(reader()) {
    try {
        return reader();
    } catch (FileError& e) {
        if (e.path.empty()) {
            e.path = reading_path(path);
            if (e.line == 0) e.line = line_of(f);
        }
        throw;
    } catch (ThException const& e) {
        FileError known(e.number, reading_path(path), "not what the equation expects", line_of(f));
        known.info = e.info;
        throw known;  // NOLINT(misc-throw-by-value-catch-by-reference): it carries more
    }
}

}  // namespace corvane
