#include <corvane/core/file_error.h>
#include <corvane/pure/attach.h>

#include "support/errors.h"
#include "support/scratch.h"
#include "support/vdw_model.h"

#include <sys/stat.h>

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

TEST(Attach, TakesThePlugInOfThePresentWorkingDirectory) {
    Scratch first;
    provide("whole", "CorvaneS");
    corvane::detach1(attach1("whole"));
    {
        Scratch second;  // nothing here, though a library of that relative name is loaded
        EXPECT_EQ(th_code([] { attach1("whole"); }), th_cannot_open);
        std::filesystem::create_directory("CorvaneS");  // and here another one of that name
        std::filesystem::copy_file(second.home() / "CorvaneS/libthwhole.dll", "CorvaneS/copy");
        std::filesystem::copy_file(std::filesystem::path(TEST_PLUGINS) / "libthnofactory.dll",
                                   "CorvaneS/libthwhole.dll");
        EXPECT_EQ(th_code([] { attach1("whole"); }), th_generic);
    }
}

TEST(Attach, SurvivesDamagedAndForeignPlugIns) {
    Scratch scratch;
    for (char const* variant : {"throws", "other", "nortti", "layout"}) provide(variant, "CorvaneS");
    const auto reason = [](char const* eos) {
        try {
            corvane::detach1(attach1(eos));
        } catch (corvane::FileError const& e) {
            return std::to_string(e.number) + ": " + e.what();
        }
        return std::string();
    };
    const std::string place = "./CorvaneS/libth";
    EXPECT_EQ(reason("throws"), "0: " + place + "throws.dll: its factory fails");
    EXPECT_EQ(reason("other"), "0: " + place + "other.dll: its factory makes no Model1");
    EXPECT_EQ(reason("nortti"), "");
    EXPECT_EQ(reason("layout"), "1: " + place + "layout.dll: it was built for another version of the "
                                "library, whose models have another layout; build it again with the "
                                "headers of this one");
    EXPECT_EQ(reason("none"),
              "1: no plug-in ./CorvaneS/libthnone.dll or ./libthnone.dll");
    ASSERT_EQ(mkfifo("CorvaneS/libthpipe.dll", 0600), 0);
    EXPECT_EQ(reason("pipe"), "1: " + place + "pipe.dll: not a regular file");
    // Cut anywhere, a library is refused or, if only its section table is missing, works.
    const std::string whole = Scratch::read(std::filesystem::path(TEST_PLUGINS) / "libthwhole.dll");
    for (int part = 0; part < 50; ++part) {
        const std::string name = "cut" + std::to_string(part);
        scratch.write("CorvaneS/libth" + name + ".dll", whole.substr(0, whole.size() * part / 50));
        const std::string why = reason(name.c_str());
        EXPECT_TRUE(part > 30 || why.substr(0, 2) == "1:") << part << why;
    }
}

TEST(Attach, AModelOfNoPlugInIsNotReleased) {
    VdwModel model;  // its table of virtual functions lies in this program
    EXPECT_EQ(th_code([&] { corvane::detach1(&model); }), th_generic);
}
}  // namespace
