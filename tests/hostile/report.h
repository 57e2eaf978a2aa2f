// Hostile states: random arguments, and what became of the calls that got them.
//
// A call may answer or refuse with one of the library's exceptions. What it answers must satisfy
// what was asked; everything else is a fault, which is printed with all arguments.
#pragma once

#include <corvane/core/errors.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <limits>
#include <map>
#include <random>
#include <string>

class Dice {
  public:
    explicit Dice(unsigned long seed) : engine_(seed) {}
    double uniform(double a, double b) { return a + (b - a) * real_(engine_); }
    double decades(double a, double b) { return std::pow(10.0, uniform(a, b)); }
    int below(int n) { return static_cast<int>(uniform(0, n)); }
    bool one_in(int n) { return below(n) == 0; }
    /// What nobody sane asks for.
    double absurd() {
        constexpr double inf = std::numeric_limits<double>::infinity();
        const double list[] = {0.0,    -0.0,  -1.0,  -1e-12, 5e-324, 1e-310, 1e-300, 1e-100, 1e-20,
                               1e-12,  1e12,  1e20,  1e100,  1e300,  1e308,  -1e300, inf,    -inf,
                               std::nan(""), 1.0, 0.999999999};
        return list[below(std::size(list))];
    }
    /// The ordinary value, or one time in twenty an absurd one.
    double or_absurd(double ordinary) { return one_in(20) ? absurd() : ordinary; }

  private:
    std::mt19937_64 engine_;
    std::uniform_real_distribution<double> real_{0.0, 1.0};
};

class Report {
  public:
    /// The arguments that all calls of a round share, for the message of a fault.
    std::string state;

    /// Runs f. True if it answered, false if it refused by code; anything else is a fault.
    template <class F>
    bool answers(char const* function, F f) {
        Row& row = rows_[function];
        now_ = function;
        ++row.calls;
        const auto start = std::chrono::steady_clock::now();
        bool done = false;
        try {
            f();
            ++row.answers;
            done = true;
        } catch (ThException const& e) {
            expect(e.number >= 0 && e.number < th_codes, "ThException %d", e.number);
        } catch (MthException const& e) {
            expect(e.number >= 0 && e.number < mth_codes, "MthException %d", e.number);
        } catch (...) {
            expect(false, "threw something else");
        }
        const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
        row.longest = std::max(row.longest, spent.count());
        return done;
    }

    /// Judges what the last call answered.
    [[gnu::format(printf, 3, 4)]] void expect(bool right, char const* format, ...) {
        if (right) return;
        Row& row = rows_[now_];
        if (row.faults++ >= kPrinted) return;
        char text[400];
        va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
        std::printf("FAULT %s: %s: %s\n", now_, state.c_str(), text);
    }

    /// Prints the table. Returns the number of faults.
    long finish() const {
        Row sum;
        std::printf("%-22s %10s %10s %10s %8s %12s\n", "function", "calls", "answers", "refusals",
                    "faults", "longest/s");
        for (auto const& [name, row] : rows_) {
            print(name.c_str(), row);
            sum.calls += row.calls;
            sum.answers += row.answers;
            sum.faults += row.faults;
            sum.longest = std::max(sum.longest, row.longest);
        }
        print("all", sum);
        return sum.faults;
    }

  private:
    static constexpr long kPrinted = 5;  // faults of a function
    struct Row {
        long calls = 0, answers = 0, faults = 0;
        double longest = 0.0;
    };
    static void print(char const* name, Row const& row) {
        std::printf("%-22s %10ld %10ld %10ld %8ld %12.4f\n", name, row.calls, row.answers,
                    row.calls - row.answers, row.faults, row.longest);
    }
    std::map<std::string, Row> rows_;
    char const* now_ = "";
};

/// Text of printf's arguments.
[[gnu::format(printf, 1, 2)]] inline std::string text(char const* format, ...) {
    char buffer[500];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    return buffer;
}

/// |a − b| within tolerance of the larger one, or of `scale` if that is larger still.
inline bool near(double a, double b, double tolerance, double scale = 0.0) {
    return std::fabs(a - b) <= tolerance * std::max({std::fabs(a), std::fabs(b), scale});
}

void hostile_pure(Report& report, Dice& dice, long rounds);
void hostile_mixture(Report& report, Dice& dice, long rounds);
