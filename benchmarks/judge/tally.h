// What bench_judge counts, and its table.
#pragma once

#include "verdict.h"

#include <algorithm>
#include <cstdio>

namespace judge {

enum Call { bubble_T, dew_T, bubble_p, dew_p, flash, test, calls };
inline constexpr char const* kCalls[] = {"bubble_T", "dew_T", "bubble_p",
                                         "dew_p",    "flash", "stability"};

struct Tally {
    long answers = 0, two = 0, no_solution = 0, missed_of = 0, gave_up = 0, beyond = 0, thrown = 0,
         evaluations = 0, proven = 0, unproven = 0, unfollowed = 0;
    long fault[kFaults] = {};
    double us = 0, worst = 0, ratio = 0;  ///< time; error of a right answer, and over its bound
    long asked() const { return answers + no_solution + gave_up + beyond + thrown; }
    long wrong() const { return answers - fault[0]; }
    void add(Tally const& t) {
        answers += t.answers, two += t.two, no_solution += t.no_solution, gave_up += t.gave_up;
        thrown += t.thrown, evaluations += t.evaluations, us += t.us;
        missed_of += t.missed_of, beyond += t.beyond;
        proven += t.proven, unproven += t.unproven, unfollowed += t.unfollowed;
        worst = std::max(worst, t.worst), ratio = std::max(ratio, t.ratio);
        for (int k = 0; k < kFaults; ++k) fault[k] += t.fault[k];
    }
    static void header() {
        std::printf("%-22s%9s%9s%9s%8s%8s", "", "asked", "answers", "two", "no such", "gave up");
        std::printf("%8s%8s%7s%7s", "judged", "beyond", "thrown", "wrong");
        for (int k = 1; k < kFaults; ++k) std::printf("%9s", kFaultNames[k]);
        std::printf("%10s%9s%8s%9s\n", "worst", "ratio", "evals", "us");
    }
    void print(char const* name) const {
        if (asked() == 0) return;
        std::printf("%-22s%9ld%9ld%9ld%8ld%8ld%8ld%8ld%7ld%7ld", name, asked(), answers, two,
                    no_solution, gave_up, missed_of, beyond, thrown, wrong());
        for (int k = 1; k < kFaults; ++k) std::printf("%9ld", fault[k]);
        std::printf("%10.1e%9.1e%8ld%9.1f\n", worst, ratio, evaluations / std::max(1L, answers),
                    us / static_cast<double>(asked()));
        std::fflush(stdout);
    }
};
}  // namespace judge
