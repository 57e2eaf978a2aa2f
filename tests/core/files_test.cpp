#include <corvane/core/constants.h>
#include <corvane/core/files.h>

#include "support/errors.h"
#include "support/scratch.h"

#include <clocale>

namespace {
TEST(Files, RefusesOverlongPathsFoldersAndAbsentFiles) {
    Scratch scratch;
    scratch.write("there", "x");
    EXPECT_NO_THROW(corvane::open_file("r", "./%s", "there"));
    EXPECT_EQ(th_code([] { corvane::open_file("r", "./%s", "absent"); }), th_cannot_open);
    EXPECT_EQ(th_code([] { corvane::open_file("r", "./%s", ""); }), th_cannot_open);
    // A path that would exist if it were cut is not opened.
    const std::string name(th_pathlength - 3, 'a');
    scratch.write(name, "x");
    EXPECT_NO_THROW(corvane::open_file("r", "./%s", name.c_str()));
    EXPECT_EQ(th_code([&] { corvane::open_file("r", "./%sb", name.c_str()); }), th_cannot_open);
}

TEST(Files, ReadsTheRestOfALineAndLeavesWhatIsTooLong) {
    Scratch scratch;
    scratch.write("f", "text:\t two words \r\ntext:\t\ntext:\t12345678\n");
    const corvane::File file = corvane::open_file("r", "f");
    char text[16];
    char const* const expected[] = {"two words ", "", "12345"};
    for (char const* line : expected) {
        ASSERT_EQ(std::fscanf(file.get(), "%*s"), 0);
        corvane::read_text(file.get(), text, sizeof text, line[0] == '1' ? 5 : 15);
        EXPECT_STREQ(text, line);
    }
    char rest[8];
    ASSERT_EQ(std::fscanf(file.get(), "%7s", rest), 1);
    EXPECT_STREQ(rest, "678");
}

TEST(Files, NumbersHaveAPointWhateverTheProcessHasSet) {
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) GTEST_SKIP() << "locale de_DE.UTF-8 not installed";
    char text[16];
    double x = 0;
    {
        const corvane::CLocale c_numbers;
        std::snprintf(text, sizeof text, "%.1f", 1.5);
        ASSERT_EQ(std::sscanf("2.5", "%lf", &x), 1);
    }
    EXPECT_STREQ(text, "1.5");
    EXPECT_EQ(x, 2.5);
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    EXPECT_STREQ(text, "1,5");  // and the process has its own again
    std::setlocale(LC_ALL, "C");
}
}  // namespace
