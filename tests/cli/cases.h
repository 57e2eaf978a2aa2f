// Rows of tables: what the program is asked, its exit code, and parts of both outputs.
#pragma once

#include "program.h"

struct Case {
    std::string arguments;
    int code;
    char const *out, *err;  // parts, with a '|' between them
};

inline void expect_parts(std::string const& text, std::string const& parts) {
    std::istringstream list(parts);
    for (std::string part; std::getline(list, part, '|');)
        EXPECT_NE(text.find(part), std::string::npos) << part << " is not in " << text;
}

inline void expect_all(std::vector<Case> const& cases, std::string const& before = "") {
    for (Case const& c : cases) {
        SCOPED_TRACE(c.arguments);
        const Outcome run = run_corvane(c.arguments, before);
        EXPECT_EQ(run.code, c.code) << run.err;
        expect_parts(run.out, c.out);
        expect_parts(run.err, c.err);
        EXPECT_TRUE(c.code == 0 || *c.out || run.out.empty()) << run.out;
        EXPECT_EQ(run.err.rfind("corvane: ", 0), *c.err ? 0u : run.err.npos) << run.err;
        EXPECT_EQ(run.err.empty(), !*c.err) << run.err;
    }
}
