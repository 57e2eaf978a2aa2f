// The exports of the library against their list and against the headers.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <regex>
#include <sstream>
#include <string>

namespace {
using Signatures = std::map<std::string, std::string>;

std::string contents(std::string const& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    EXPECT_FALSE(text.str().empty()) << path;
    return text.str();
}

Signatures listed() {
    Signatures list;
    std::istringstream lines(contents(CORVANE_SOURCE "/tests/binding/exports.txt"));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t blank = line.find(' ');
        if (line[0] != '#') list[line.substr(0, blank)] = line.substr(blank + 1);
    }
    return list;
}

char kind(std::string const& type) {
    if (type.find('*') != std::string::npos) return 'p';
    if (type.find("unsigned") != std::string::npos) return 'u';
    if (type.find("double") != std::string::npos) return 'd';
    return type.find("int") != std::string::npos ? 'i' : 'v';
}

/// Declarations of a header in the notation of the list.
void add_header(std::string const& name, Signatures& all) {
    const std::string text = contents(CORVANE_SOURCE "/corvane/binding/" + name);
    static const std::regex declaration(R"(CORVANE_API\s+([^;()]*?)(\w+)\(([^;]*)\);)");
    for (std::sregex_iterator m(text.begin(), text.end(), declaration), end; m != end; ++m) {
        std::string signature{kind((*m)[1]), '('};
        std::istringstream arguments((*m)[3]);
        for (std::string a; std::getline(arguments, a, ',');)
            if (a != "void") signature += kind(a);
        all[(*m)[2]] = signature + ")";
    }
}

TEST(Exports, HeadersMatchTheList) {
    Signatures headers;
    for (char const* name : {"flat_interface.h", "phdesc_interface.h", "guarded_interface.h",
                             "certified_interface.h"})
        add_header(name, headers);
    EXPECT_EQ(headers, listed());
}

// 376 functions of the flat interface and 5 for vectors of phase descriptors, 3 registrations, and
// the guarded family: nothing is missing and nothing else carries these prefixes.
TEST(Exports, LibraryMatchesTheList) {
    Signatures list = listed();
    std::array<int, 3> count{};
    const std::unique_ptr<FILE, int (*)(FILE*)> symbols(
        popen("nm -D --defined-only " CORVANE_LIBRARY, "r"), pclose);
    ASSERT_TRUE(symbols);
    char name[256];
    while (std::fscanf(symbols.get(), "%*s %*s %255s", name) == 1) {
        const std::string symbol = name;
        const std::size_t family = symbol.rfind("CSharp_", 0) == 0    ? 0
                                   : symbol.rfind("SWIG", 0) == 0     ? 1
                                   : symbol.rfind("Corvane_", 0) == 0 ? 2
                                                                      : count.size();
        if (family == count.size()) continue;
        ++count[family];
        EXPECT_EQ(list.erase(symbol), 1u) << symbol << " is not in the list";
    }
    for (auto const& [missing, signature] : list) ADD_FAILURE() << missing << " is missing";
    EXPECT_EQ(count[0], 376 + 5);
    EXPECT_EQ(count[1], 3);
}
}  // namespace
