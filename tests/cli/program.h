// Runs the built program as a person would.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

struct Outcome {
    int code;
    std::string out, err;
};

/// Runs "corvane <arguments>" through the shell, after the settings ("LC_ALL=C") or commands
/// ("cd / &&") in `before`. CORVANE_DATA is unset first. The variable CORVANE_TEST_PROGRAM names
/// another program than the built one: an installed one, for example.
inline Outcome run_corvane(std::string const& arguments, std::string const& before = "") {
    const std::string errors = testing::TempDir() + "corvane-stderr-" + std::to_string(getpid());
    char const* const other = std::getenv("CORVANE_TEST_PROGRAM");
    const std::string command = "unset CORVANE_DATA; " + before + " " + (other ? other : CORVANE_PROGRAM) + " " +
                                arguments + " 2>" + errors;
    Outcome run{-1, "", ""};
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return run;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        run.out.append(buffer, n);
    const int status = pclose(pipe);
    run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ostringstream text;
    text << std::ifstream(errors).rdbuf();
    run.err = text.str();
    std::remove(errors.c_str());
    return run;
}

inline std::vector<std::string> lines_of(std::string const& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}
