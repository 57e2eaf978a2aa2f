// Reading and writing data files: C-locale numbers, bounded paths, files that close themselves.
// Internal to the library and its plug-ins.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/errors.h>

#include <cstdio>
#include <memory>
#include <string>

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

/// Opens the file whose path the format and its arguments give. A null argument is for the caller
/// to refuse. @throws ThException 1 if the path does not fit th_pathlength or the file does not
/// open
CORVANE_API File open_file(char const* mode, char const* format, ...)
    __attribute__((format(printf, 2, 3)));

/// While it lives, what the calling thread reads below "./" (data of open_file, plug-ins of attach1
/// and attachN) is read below `home` instead. Nests; the inner one holds.
class CORVANE_API ReadingFrom {
  public:
    explicit ReadingFrom(std::string home);
    ~ReadingFrom();
    ReadingFrom(ReadingFrom const&) = delete;
    ReadingFrom& operator=(ReadingFrom const&) = delete;

  private:
    std::string home_;
    ReadingFrom const* outer_;
    friend std::string reading_path(std::string const& path);
};

/// The path to read for one that may begin with "./".
std::string reading_path(std::string const& path);

/// What a regular file holds, up to its first 16 MiB; empty if it cannot be read.
CORVANE_API std::string file_contents(char const* path);

/// Reads the rest of the line into a buffer of `size` characters, after blanks and tabs (and
/// nothing else: an empty text keeps its line). At most `most` characters are taken; whatever
/// remains of a longer line is left for the reads that follow. Line ends are stripped, the text
/// terminated.
CORVANE_API void read_text(FILE* f, char* buffer, int size, int most);

/// Copies at most size − 1 characters and terminates. A null text is read as "".
CORVANE_API void copy_text(char* to, int size, char const* from);

}  // namespace corvane
