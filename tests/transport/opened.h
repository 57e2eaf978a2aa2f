#pragma once
// Fluids with their transport properties, opened once a program, and vectors.
#include <corvane/corvane.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

struct Opened {
    corvane::Fluid fluid;
    corvane::Transport transport;
    explicit Opened(char const* equation, std::string const& name)
        : fluid(corvane::open(equation, name)), transport(fluid) {}
};

inline Opened const& opened(std::string const& name, char const* equation = "MEOS") {
    static std::map<std::string, std::unique_ptr<Opened>> all;
    auto& one = all[equation + name];
    if (!one) one = std::make_unique<Opened>(equation, name);
    return *one;
}

inline Vector<double> vec(std::vector<double> const& values) {
    Vector<double> v(static_cast<int>(values.size()));
    for (int i = 0; i < v.size(); ++i) v[i] = values[static_cast<std::size_t>(i)];
    return v;
}
