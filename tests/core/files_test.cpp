#include <corvane/core/collected.h>
#include <corvane/core/constants.h>
#include <corvane/core/files.h>

#include "support/errors.h"
#include "support/scratch.h"

#include <clocale>
#include <cmath>
#include <csignal>

#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {
TEST(Files, RefusesOverlongPathsFoldersAndAbsentFiles) {
    Scratch scratch;
    scratch.write("there", "x");
    EXPECT_NO_THROW(corvane::open_file("./there"));
    EXPECT_EQ(th_code([] { corvane::open_file("./absent"); }), th_cannot_open);
    EXPECT_EQ(th_code([] { corvane::open_file("./"); }), th_cannot_open);
    ASSERT_EQ(mkfifo("pipe", 0600), 0);  // nobody writes to it: opening it the plain way would hang
    EXPECT_EQ(th_code([] { corvane::open_file("pipe"); }), th_cannot_open);
    EXPECT_EQ(th_code([] { corvane::NewFile file("pipe"); }), th_cannot_open);
    // A path that would exist if it were cut is not opened.
    const std::string name(th_pathlength - 3, 'a');
    scratch.write(name, "x");
    EXPECT_NO_THROW(corvane::open_file(corvane::path_of("./%s", name.c_str())));
    EXPECT_EQ(th_code([&] { corvane::path_of("./%sb", name.c_str()); }), th_cannot_open);
}

TEST(Files, RowsOfATableAreFiles) {
    Scratch scratch;
    const auto text = [](char const* path) { return corvane::file_contents(path); };
    scratch.write("pure/collected.tsv",
                  "name;id\ttext=of a paper\tpc\tnote\tsource=A, B\n"
                  "ab;1\t4.2\tdense\n"
                  "ab;12\t4.3\t\n"
                  "abc;1\t\t\n"
                  "b;1");  // cut short
    EXPECT_EQ(text("pure/ab;1"),
              "name:\tab\nid:\t1\ntext:\tof a paper\npc:\t4.2\nnote:\tdense\nsource:\tA, B\n");
    EXPECT_EQ(text("pure/ab;12"),
              "name:\tab\nid:\t12\ntext:\tof a paper\npc:\t4.3\nsource:\tA, B\n");
    EXPECT_EQ(text("pure/b;1"), "name:\tb\nid:\t1\ntext:\tof a paper\nsource:\tA, B\n");
    for (char const* absent :
         {"pure/a;1", "pure/ab;2", "pure/c;1", "pure/", "pure/name;id", "pair/ab;1", "ab;1"}) {
        EXPECT_EQ(text(absent), "") << absent;
        EXPECT_EQ(th_code([&] { corvane::open_file(absent); }), th_cannot_open) << absent;
    }
    EXPECT_EQ(corvane::collected_names("pure"),
              (std::vector<std::string>{"ab;1", "ab;12", "abc;1", "b;1"}));
    scratch.write("pair/collected.tsv",
                  "name1+name2;id\tid1\tid2\ttext=t\tof=@1\tkij\na+b;3\t1\t20\t0.1\n");
    EXPECT_EQ(text("pair/a+b;3"),
              "name1:\ta\nid1:\t1\nname2:\tb\nid2:\t20\nid:\t3\ntext:\tt\nof:\ta\nkij:\t0.1\n");
    EXPECT_EQ(text("pair/b+a;3"), "");
    scratch.write("gas/collected.tsv", "\t@\tsource=A\nargon\t2|100 20.8|300 20.8\n");
    EXPECT_EQ(text("gas/argon"), "2\n100 20.8\n300 20.8\nsource:\tA\n");
    // A stream as of a file: read, told and sought.
    const corvane::File file = corvane::open_file("pure/ab;1");
    ASSERT_EQ(std::fseek(file.get(), 6, SEEK_SET), 0);
    EXPECT_EQ(std::fgetc(file.get()), 'a');
    // A file goes first; a table that has changed is read anew.
    scratch.write("pure/ab;1", "own");
    EXPECT_EQ(text("pure/ab;1"), "own");
    scratch.write("pure/collected.tsv", "name;id\nz;1\n");
    EXPECT_TRUE(corvane::has_data_file("pure/z;1"));
    EXPECT_FALSE(corvane::has_data_file("pure/ab;12"));
    for (char const* odd : {"", "\n", "\t\n\t\n", "name;id\n\n\n", "=\t=\n=;1\t\n", "a+b;c"}) {
        scratch.write("pure/collected.tsv", odd);
        text("pure/=;1");
        EXPECT_LE(corvane::collected_names("pure").size(), 1u) << odd;
    }
}

TEST(Files, ReadsTheRestOfALineAndLeavesWhatIsTooLong) {
    Scratch scratch;
    scratch.write("f", "text:\t two words \r\ntext:\t\ntext:\t12345678\n");
    const corvane::File file = corvane::open_file("f");
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

TEST(Files, ANumberIsTheWholeWordOrAFailureThatNamesTheLine) {
    Scratch scratch;
    struct Row {
        char const* word;
        double value;  // NAN: refused
    };
    for (Row const& r :
         {Row{"56.25", 56.25}, Row{"+1e-3", 1e-3}, Row{".5", 0.5}, Row{"-0", 0.0}, Row{"3.", 3.0},
          Row{"4.9e-324", 4.9e-324}, Row{"56,25", NAN}, Row{"0.5625D+02", NAN}, Row{"1e999", NAN},
          Row{"nan", NAN}, Row{"-inf", NAN}, Row{"0x10", NAN}, Row{"1.2.3", NAN}, Row{"5-", NAN},
          Row{"+-5", NAN}, Row{"1e", NAN}, Row{"", NAN}, Row{"5\x01", NAN}}) {
        scratch.write("f", std::string("a b\n ") + r.word + "\n7");
        const corvane::File file = corvane::open_file("f");
        corvane::skip_line(file.get());
        try {
            EXPECT_EQ(corvane::read_number(file.get(), false), r.value) << r.word;
        } catch (corvane::FileError const& e) {
            EXPECT_TRUE(std::isnan(r.value)) << r.word;
            EXPECT_EQ(e.line, 2);
            EXPECT_EQ(e.number, th_cannot_open);
            EXPECT_EQ(e.what().substr(0, 8), ", line 2") << e.what();
        }
    }
    scratch.write("f", std::string(5000, '1'));
    EXPECT_EQ(th_code([] { corvane::read_number(corvane::open_file("f").get(), true); }),
              th_cannot_open);
}

/// While it lives, files of this process cannot grow beyond a size, as on a full disk.
struct FullDisk {
    explicit FullDisk(rlim_t size) : handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit limit = before;
        limit.rlim_cur = size;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    rlimit before;
    void (*handler)(int);
};

TEST(Files, AFileIsReplacedAsAWholeOrNotAtAll) {
    Scratch scratch;
    scratch.write("real", "old");
    std::filesystem::create_symlink("real", "file");
    const auto write = [](std::string const& text) {
        return th_code([&] {
            corvane::NewFile file("file");
            std::fputs(text.c_str(), file.stream());
            file.commit();
        });
    };
    const auto entries = [] {
        return std::distance(std::filesystem::directory_iterator("."), {});
    };
    {
        const FullDisk full(100);
        EXPECT_EQ(write(std::string(5000, 'x')), th_cannot_open);
    }
    EXPECT_EQ(write("a:\tnan\n"), th_cannot_open);  // no reader takes it
    EXPECT_EQ(write("a:\t-inf\n"), th_cannot_open);
    { const corvane::NewFile given_up("file"); }
    EXPECT_EQ(Scratch::read("real"), "old");
    EXPECT_EQ(write("new"), -1);
    EXPECT_EQ(Scratch::read("real"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink("file"));
    EXPECT_EQ(entries(), 2);  // nothing else is left behind
    std::filesystem::create_symlink("/dev/full", "full");
    EXPECT_EQ(th_code([] { corvane::NewFile file("full"); }), th_cannot_open);
}

TEST(Files, TheDataHomeIsFoundFromWhereTheLibraryLies) {
    Dl_info library{};
    ASSERT_TRUE(dladdr(reinterpret_cast<void const*>(&corvane::skip_line), &library));
    const Scratch scratch;
    std::filesystem::create_directories("moved/lib/corvane");
    std::filesystem::copy_file(library.dli_fname, "moved/lib/copy.so");
    const std::string lib = std::filesystem::canonical("moved/lib");
    void* copy = dlopen((lib + "/copy.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_TRUE(copy) << dlerror();
    EXPECT_EQ(std::string(*static_cast<char const* const*>(dlsym(copy, "th_home"))),
              lib + "/corvane/models");
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
