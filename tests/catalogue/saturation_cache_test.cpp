// Saturation curves kept in files.
#include "support/scratch.h"

#include <corvane/corvane.h>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using corvane::kept_saturation;

namespace {
double p_of(corvane::KeptSaturation const& kept) {
    return kept.curve.p_at(300);
}

TEST(SaturationCache, IsReadRefusedAndRebuilt) {
    Scratch scratch;
    auto fluid = corvane::open("PR", "propane", {.home = corvane::DataHome(scratch.home())});
    const std::vector<fs::path> folders{scratch.dir() / "a" / "b"};
    const auto built = kept_saturation(fluid, folders);
    const fs::path file = folders[0] / "PR,propane;1";
    EXPECT_FALSE(built.read);
    EXPECT_EQ(built.file, file);
    const auto again = kept_saturation(fluid, folders);
    EXPECT_TRUE(again.read);
    EXPECT_EQ(p_of(again), p_of(built));
    const std::string good = Scratch::read(file);
    auto other = corvane::open("PR", "butane", {.home = corvane::DataHome(scratch.home())});
    const std::string foreign = kept_saturation(other, folders).curve.bytes();
    for (std::string const& bad :
         {good.substr(0, good.size() / 2), good + "x", std::string(), foreign,
          std::string(good).replace(500, 1, good[500] == 'a' ? "b" : "a")}) {
        scratch.write(file, bad);
        const auto kept = kept_saturation(fluid, folders);
        EXPECT_FALSE(kept.read);
        EXPECT_EQ(p_of(kept), p_of(built));
        EXPECT_EQ(Scratch::read(file), good);  // and is put right
    }
    fluid.model->param(3, fluid.model->param(3) + 0.01);
    const auto changed = kept_saturation(fluid, folders);
    EXPECT_FALSE(changed.read);
    EXPECT_NE(p_of(changed), p_of(built));
    EXPECT_TRUE(kept_saturation(fluid, folders).read);
}

TEST(SaturationCache, FoldersThatCannotBeWritten) {
    Scratch scratch;
    const auto fluid = corvane::open("PR", "propane", {.home = corvane::DataHome(scratch.home())});
    scratch.write("file", "");  // no folder can be made below it, whoever asks
    const fs::path none = scratch.dir() / "file" / "below", second = scratch.dir() / "second";
    const auto kept = kept_saturation(fluid, {none, second});
    EXPECT_EQ(kept.file, second / "PR,propane;1");
    EXPECT_TRUE(kept_saturation(fluid, {none, second}).read);
    const auto homeless = kept_saturation(fluid, {none});
    EXPECT_TRUE(homeless.file.empty());
    EXPECT_EQ(p_of(homeless), p_of(kept));
}

// Processes that find no file, or a bad one, at the same time: every one gets the curve, and one
// whole file and nothing else stays.
TEST(SaturationCache, ProcessesDoNotClash) {
    Scratch scratch;
    const auto fluid = corvane::open("PR", "propane", {.home = corvane::DataHome(scratch.home())});
    const std::vector<fs::path> folders{scratch.dir() / "cache"};
    const double p = corvane::SaturationExpansion(*fluid.model).p_at(300);
    std::vector<pid_t> children;
    for (int i = 0; i < 6; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            bool right = true;
            for (int k = 0; k < 5 && right; ++k) {
                right = p_of(kept_saturation(fluid, folders)) == p;
                if (i == 0) scratch.write(folders[0] / "PR,propane;1", "damaged");
            }
            _exit(right ? 0 : 1);
        }
        children.push_back(child);
    }
    for (pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(p_of(kept_saturation(fluid, folders)), p);
    EXPECT_EQ(std::distance(fs::directory_iterator(folders[0]), fs::directory_iterator()), 1);
}
}  // namespace
