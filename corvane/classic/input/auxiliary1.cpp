// Input of pure-fluid states: ranges of a variable, names of properties.
#include <corvane/classic/input/input.h>
#include <corvane/core/files.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

int read_vars(char const* prompt, double& x1, double& x2, double& dx) {
    std::string text;
    for (char const* c = prompt ? prompt : ""; *c; ++c) {
        text += *c;
        if (c[0] == '%' && c[1] == '%') ++c;
    }
    std::fputs(text.c_str(), stderr);
    const corvane::CLocale c_numbers;
    if (std::scanf("%lf", &x1) == 1) {
        x2 = x1;
        dx = 1.0;
        return 1;
    }
    // What did not begin a number is still in the stream: the parenthesis.
    if (std::scanf("(%lf%lf%lf)", &x1, &x2, &dx) < 3) return 0;
    const double count = (x2 - x1) / dx + 1.5;
    constexpr double kLargest = std::numeric_limits<int>::max();
    return std::fabs(count) < kLargest ? static_cast<int>(count) : 0;
}

int recognize(char const* name, prop_str const* table) {
    for (int i = 0; table[i].sname && table[i].sname[0] != '\0'; ++i)
        if (std::strcmp(name, table[i].sname) == 0) return i;
    return -1;
}
