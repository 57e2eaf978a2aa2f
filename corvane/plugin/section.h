// The equation's own section of a parameter file: lines of a label, a colon, a tab and one or more
// numbers, read by label and written with 17 digits, so that a round trip is exact.
#pragma once

#include <corvane/core/files.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

namespace corvane {

/// Reads labelled lines from the current position of a file. Numbers are those of the C locale, and
/// a line holds what it is asked for and nothing else; a remark may follow after a #. What cannot be
/// read raises ThException 1, as FileError with the line: a section that ends early, a label other
/// than the one asked for, a number that is malformed (56,25 or 5 6.25) or not finite, a count
/// outside its bounds.
class SectionReader {
  public:
    explicit SectionReader(FILE* f) : f_(f) {}
    /// Leaves the file at the first label that nobody asked for.
    ~SectionReader() {
        if (peeked_ && start_ >= 0) std::fseek(f_, start_, SEEK_SET);
    }
    SectionReader(SectionReader const&) = delete;
    SectionReader& operator=(SectionReader const&) = delete;

    /// True if the next line bears this label (given without the colon). Nothing is consumed.
    bool at(char const* label) {
        if (!peeked_) {
            start_ = std::ftell(f_);
            if (std::fscanf(f_, "%31s", label_) != 1) label_[0] = '\0';
            peeked_ = true;
        }
        const std::size_t length = std::strlen(label);
        return std::strncmp(label_, label, length) == 0 && label_[length] == ':' &&
               label_[length + 1] == '\0';
    }
    /// The number of the next line, which must bear this label.
    double number(char const* label) {
        double x = 0.0;
        numbers(label, &x, 1);
        return x;
    }
    /// A number above zero.
    double positive(char const* label) {
        take(label);
        const double x = read_number(f_, false);
        if (!(x > 0.0)) refuse(std::string(label) + " must be positive");
        finish_line(f_);
        return x;
    }
    /// The same as number for a line that may be missing: the default then.
    double number(char const* label, double otherwise) {
        return at(label) ? number(label) : otherwise;
    }
    /// An integer in [least, most].
    int count(char const* label, int least, int most) {
        const int n = head(label, least, most);
        finish_line(f_);
        return n;
    }
    /// A number of rows, followed by the titles of their columns, in [1, most].
    int rows(char const* label, int most) {
        const int n = head(label, 1, most);
        skip_line(f_);
        return n;
    }
    /// A row: a line of n numbers.
    void row(double* to, int n) {
        for (int i = 0; i < n; ++i) to[i] = read_number(f_, i == 0);
        finish_line(f_);
    }
    /// n numbers on the line of this label.
    void numbers(char const* label, double* to, int n) {
        take(label);
        for (int i = 0; i < n; ++i) to[i] = read_number(f_, false);
        finish_line(f_);
    }
    /// A word of at most 31 characters on the line of this label.
    void word(char const* label, char (&to)[32]) {
        take(label);
        if (!read_word(f_, to, sizeof to, false)) malformed(f_, "a word is missing");
        finish_line(f_);
    }
    /// Refuses what only the checks of an equation can find wrong.
    [[noreturn]] void refuse(std::string const& reason) { malformed(f_, reason); }
    /// The rows of the last table are all: another row is refused.
    void no_more_rows() {
        at("");
        const bool number = label_[0] != '\0' && std::strchr("+-.0123456789", label_[0]);
        if (number) malformed(f_, "more rows than the table says");
    }

  private:
    void take(char const* label) {
        if (!at(label)) {
            for (char* c = label_; *c; ++c)
                if (static_cast<unsigned char>(*c) < 0x20 || *c == 0x7f) *c = '?';
            malformed(f_, "the line '" + std::string(label) + ":' is expected, not '" + label_ +
                              "'");
        }
        peeked_ = false;
    }
    int head(char const* label, int least, int most) {
        take(label);
        const double x = read_number(f_, false);
        if (!(x >= least && x <= most && x == std::floor(x)))
            malformed(f_, "no count from " + std::to_string(least) + " to " +
                              std::to_string(most));
        return static_cast<int>(x);
    }

    CLocale locale_;
    FILE* f_;
    long start_ = -1;      // where the label began
    bool peeked_ = false;  // label_ holds a label that is not consumed
    char label_[32] = {};
};

/// Writes labelled lines.
class SectionWriter {
  public:
    explicit SectionWriter(FILE* f) : f_(f) {}
    void number(char const* label, double x) { numbers(label, &x, 1); }
    void count(char const* label, int n) { std::fprintf(f_, "%s:\t%d\n", label, n); }
    void numbers(char const* label, double const* x, int n) {
        std::fprintf(f_, "%s:", label);
        for (int i = 0; i < n; ++i) std::fprintf(f_, "\t%.17g", x[i]);
        std::fputc('\n', f_);
    }
    void word(char const* label, char const* text) { std::fprintf(f_, "%s:\t%s\n", label, text); }

  private:
    CLocale locale_;
    FILE* f_;
};

}  // namespace corvane
