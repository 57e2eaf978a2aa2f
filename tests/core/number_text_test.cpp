// What stands in for std::from_chars and std::to_chars against these themselves.
#include <corvane/core/number_text.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <random>

namespace {
TEST(NumberText, ReadsAsTheStandardLibrary) {
    for (std::string text :
         {"1",   "-1.5", "0",  "-0",  ".5",    "5.",     "1e3",    "1E-3",  "1e",  "1e+", "1.5x",
          "0x10", "-0x1", "",  "-",   "+1",    " 1",     ".",      "-.",    "e5",  "--1", "1e400",
          "-1e400", "1e-400", "0e999", "1,5", "1 2", "123456789012345678901234567890", "4.9e-324",
          "2.2250738585072011e-308"}) {
        double expected = 7.0, x = 7.0;
        char const *const first = text.data(), *const last = first + text.size();
        const auto standard = std::from_chars(first, last, expected);
        const auto own = corvane::by_c_library::from_chars(first, last, x);
        EXPECT_EQ(own.ec, standard.ec) << text;
        EXPECT_EQ(own.ptr, standard.ptr) << text;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(x), std::bit_cast<std::uint64_t>(expected)) << text;
    }
    // A number ends where its text ends, whatever stands behind it.
    char const digits[] = "123456";
    double x = 0.0;
    EXPECT_EQ(corvane::by_c_library::from_chars(digits, digits + 3, x).ptr, digits + 3);
    EXPECT_EQ(x, 123.0);
}

TEST(NumberText, WritesAsTheStandardLibrary) {
    std::mt19937_64 random(1);
    for (int k = 0; k < 2000; ++k) {
        const auto x = k == 0 ? 0.0 : std::bit_cast<double>(random());
        if (!std::isfinite(x)) continue;
        for (char form : {'g', 'e'})
            EXPECT_EQ(corvane::by_c_library::text_of(x, form, k % 17),
                      corvane::number_text(x, form, k % 17));
        for (std::string const& text :
             {corvane::shortest_text(x), corvane::by_c_library::shortest_text(x)})
            EXPECT_EQ(std::strtod(text.c_str(), nullptr), x) << text;
    }
}
}  // namespace
