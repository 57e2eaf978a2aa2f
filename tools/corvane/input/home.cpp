#include <tools/corvane/input/home.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/catalogue/parameter_sets.h>

#include <fmt/format.h>

#include <cstdlib>
#include <vector>

namespace cli {
namespace {
namespace fs = std::filesystem;

bool has_tree(fs::path const& home) {
    std::error_code error;
    return fs::is_directory(home / "CorvaneS", error);
}

void enter(fs::path const& home) {
    std::error_code error;
    fs::current_path(home, error);
    if (error) throw Failure(fmt::format("cannot enter {}: {}", home.string(), error.message()));
}

std::vector<fs::path> places() {
    std::vector<fs::path> result;
    std::error_code error;
    if (const fs::path here = fs::current_path(error); !error) result.push_back(here);
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error) {
        result.push_back(program.parent_path().parent_path() / "lib" / "corvane");
        if (program.string().rfind(CORVANE_BUILD_DIR "/", 0) == 0)
            result.emplace_back(CORVANE_BUILD_HOME);
    }
    result.emplace_back(CORVANE_PREFIX_HOME);
    return result;
}
}  // namespace

fs::path enter_data_home(std::string const& given) {
    char const* const variable = std::getenv("CORVANE_DATA");
    if (!given.empty() || (variable && *variable)) {
        const fs::path home = !given.empty() ? given : variable;
        if (!has_tree(home))
            throw Failure(fmt::format("{} {} does not hold CorvaneS",
                                      given.empty() ? "CORVANE_DATA" : "--home", home.string()));
        enter(home);
        return home;
    }
    std::vector<std::string> tried;
    for (fs::path const& home : places()) {
        if (has_tree(home) && !corvane::plugins(corvane::DataHome(home)).pure.empty()) {
            enter(home);
            return home;
        }
        tried.push_back(home.string());
    }
    throw Failure("no data home (a directory that holds CorvaneS with plug-ins) in " +
                  join(tried, ", ") + "; name one with --home or CORVANE_DATA");
}

corvane::DataHome entered_home() {
    return corvane::DataHome(fs::current_path());
}

}  // namespace cli
