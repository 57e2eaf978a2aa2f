// The equation's own section of a parameter file: lines of a label, a colon, a tab and one or more
// numbers, read by label and written with 17 digits, so that a round trip is exact.
#pragma once

#include <corvane/core/files.h>

#include <cmath>
#include <cstdio>
#include <cstring>

namespace corvane {

/// Reads labelled lines from the current position of a file. Numbers are those of the C locale.
/// What cannot be read raises ThException 1: a section that ends early, a label other than the one
/// asked for, a number that is malformed or not finite, a count outside its bounds.
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
    /// The number of the next line, which must bear this label. The rest of the line is skipped.
    double number(char const* label) {
        double x = 0.0;
        numbers(label, &x, 1);
        return x;
    }
    /// The same for a line that may be missing: the default then.
    double number(char const* label, double otherwise) {
        return at(label) ? number(label) : otherwise;
    }
    /// An integer in [least, most].
    int count(char const* label, int least, int most) {
        const double x = number(label);
        if (!(x >= least && x <= most && x == std::floor(x))) throw ThException(th_cannot_open);
        return static_cast<int>(x);
    }
    /// n numbers on the line of this label (they may go on over following lines).
    void numbers(char const* label, double* to, int n) {
        if (!at(label)) throw ThException(th_cannot_open);
        peeked_ = false;
        for (int i = 0; i < n; ++i)
            if (std::fscanf(f_, "%lf", to + i) != 1 || !std::isfinite(to[i]))
                throw ThException(th_cannot_open);
        if (std::fscanf(f_, "%*[^\n]") == EOF) return;  // the last line of the file
    }
    /// A word of at most 31 characters on the line of this label.
    void word(char const* label, char (&to)[32]) {
        if (!at(label)) throw ThException(th_cannot_open);
        peeked_ = false;
        if (std::fscanf(f_, "%31s%*[^\n]", to) < 1) throw ThException(th_cannot_open);
    }

  private:
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
