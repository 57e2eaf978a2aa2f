// What the command prints as JSON.
#pragma once

#include "program.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdlib>

using Json = nlohmann::json;

inline Json json(std::string const& arguments) {
    const Outcome run = run_corvane(arguments + " --json");
    EXPECT_EQ(run.code, 0) << run.err;
    return Json::parse(run.out);
}
inline double value(Json const& row, std::string const& name) {
    return row.at(name).get<double>();
}
/// Of the absolute values in a column.
inline double mean(Json const& rows, char const* name) {
    double sum = 0.0;
    for (Json const& row : rows) sum += std::fabs(value(row, name));
    return sum / static_cast<double>(rows.size());
}
inline bool no_gnuplot() {
    return std::system("command -v gnuplot >/dev/null") != 0;
}
