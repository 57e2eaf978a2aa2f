#include <corvane/pure/attach.h>

#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

namespace {
void provide(std::string const& variant, std::filesystem::path const& folder) {
    std::filesystem::create_directories(folder);
    const std::string file = "libth" + variant + ".dll";
    std::filesystem::copy_file(std::filesystem::path(TEST_PLUGINS) / file, folder / file);
}

TEST(Attach, FindsAPlugInInTheDataTreeAndInTheWorkingDirectory) {
    for (char const* folder : {"CorvaneS", "."}) {
        SCOPED_TRACE(folder);
        Scratch scratch;
        provide("whole", folder);
        Model1* model = attach1("whole");
        ASSERT_NE(model, nullptr);
        EXPECT_STREQ(model->eos(), "vdw");
        EXPECT_EQ(model->ideal.model(), model);
        EXPECT_EQ(model->solid.model(), model);
        EXPECT_EQ(model->visco.model(), model);
        EXPECT_NEAR(model->Z(1e-3, 300), VdwModel().Z(1e-3, 300), 1e-15);
        corvane::detach1(model);
    }
    corvane::detach1(nullptr);
}

TEST(Attach, RefusesWhatIsMissingByCode) {
    Scratch scratch;
    provide("nofactory", "CorvaneS");
    provide("nodestroyer", "CorvaneS");
    scratch.write("CorvaneS/libthtext.dll", "no library");
    scratch.write("CorvaneS/libthwhole+vdW1.dll", "no library");
    EXPECT_EQ(th_code([] { attach1("absent"); }), th_cannot_open);
    EXPECT_EQ(th_code([] { attach1("text"); }), th_cannot_open);
    EXPECT_EQ(th_code([] { attach1(nullptr); }), th_cannot_open);
    EXPECT_EQ(th_code([] { attach1(std::string(200, 'x').c_str()); }), th_cannot_open);
    EXPECT_EQ(th_code([] { attach1("nofactory"); }), th_generic);
    EXPECT_EQ(th_code([] { attach1("nodestroyer"); }), th_generic);
    EXPECT_EQ(th_code([] { attachN("whole", "vdW1"); }), th_cannot_open);
    EXPECT_EQ(th_code([] { attachN("whole", nullptr); }), th_cannot_open);
    provide("whole", ".");
    std::filesystem::rename("libthwhole.dll", "libthwhole+x.dll");  // a pure plug-in as a mixture
    EXPECT_EQ(th_code([] { attachN("whole", "x"); }), th_generic);
}

TEST(Attach, AModelOfNoPlugInIsNotReleased) {
    VdwModel model;  // its table of virtual functions lies in this program
    EXPECT_EQ(th_code([&] { corvane::detach1(&model); }), th_generic);
}
}  // namespace
