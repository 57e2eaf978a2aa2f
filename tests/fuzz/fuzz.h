// What a fuzzing target supplies. A target is one source file of tests/fuzz and one line of its
// CMakeLists.txt; it is linked with driver.cpp, or with a coverage-guided fuzzing engine that calls
// the same function (scripts/fuzz).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

/// Runs one input. A fault is whatever ends the process, takes longer than ten seconds, or leaves
/// the function as an exception. Returns 0.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

/// Valid inputs to start from. Called once, in the data home, before the first input runs.
std::vector<std::string> fuzz_seeds();
/// Words that mean something to the target, besides numbers of every kind.
std::vector<std::string> fuzz_words();

/// Ends the process where an input that runs shows a wrong result.
inline void fuzz_require(bool holds, char const* what) {
    if (holds) return;
    std::fprintf(stderr, "fuzz: not true: %s\n", what);
    std::abort();
}
