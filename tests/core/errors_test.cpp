#include <corvane/core/constants.h>
#include <corvane/core/errors.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {
TEST(Errors, MessagesFollowTheTables) {
    EXPECT_STREQ(ThException(5).message(), "value out of range");
    EXPECT_STREQ(ThException(1, 7).message(), "could not open file: 7\n");
    EXPECT_STREQ(ThException(1, 0).message(), "could not open file: 0\n");  // 0 is a real info
    EXPECT_STREQ(ThException(1, -1).message(), "could not open file");
    EXPECT_STREQ(ThException(99).message(), "generic failure");
    EXPECT_EQ(ThException(3).info, -1);
    EXPECT_STREQ(MthException(2).message(), "incompatible matrix/vector dimensions");
    EXPECT_STREQ(MthException(16, 3).message(), "parameter #3 irrelevant");
    // The longest text, with the longest number, keeps its end.
    const std::string longest = MthException(9, 2147483647).message();
    EXPECT_EQ(longest, std::string(MthException::errmsg[9]) + ": 2147483647\n");
}

TEST(Constants, AreExportedByName) {
    void* library = dlopen(nullptr, RTLD_NOW);  // the program and what it is linked to
    ASSERT_NE(library, nullptr);
    for (char const* name : {"R", "NA", "kB", "hP", "pref", "th_inc0", "th_inc1", "th_veps",
                             "th_pathlength", "th_home", "th_namelength"})
        EXPECT_NE(dlsym(library, name), nullptr) << name;
    EXPECT_EQ(*static_cast<double const*>(dlsym(library, "R")), 8.3144621);
    EXPECT_NEAR(NA * kB, R, 1e-7);
}
}  // namespace
