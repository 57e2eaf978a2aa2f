#include <tools/corvane/input/home.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/catalogue/parameter_sets.h>
#include <corvane/core/files.h>

#include <fmt/format.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace cli {
namespace {
namespace fs = std::filesystem;

// For the one thread that opens models, until the program ends.
std::optional<corvane::DataHome> entered;
std::unique_ptr<corvane::ReadingFrom> reading;

bool has_tree(fs::path const& home) {
    std::error_code error;
    return fs::is_directory(home / "CorvaneS", error);
}

/// Whether it holds a tree with plug-ins.
bool complete(fs::path const& home) {
    return has_tree(home) && !corvane::plugins(corvane::DataHome(home)).pure.empty();
}

/// Whether somebody else than this user and root can write to a file or folder. A group of the
/// user's own number is taken for the user's alone.
bool others_write(fs::path const& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return false;  // not there
    const bool owner = status.st_uid != 0 && status.st_uid != geteuid();
    const bool group = status.st_gid != 0 && status.st_gid != geteuid();
    return owner || (group && (status.st_mode & S_IWGRP) != 0) || (status.st_mode & S_IWOTH) != 0;
}

/// The folder or plug-in of the home that others can write to; empty if there is none.
fs::path written_by_others(fs::path const& home) {
    for (fs::path const& folder : {home, home / "CorvaneS"}) {
        if (others_write(folder)) return folder;
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error))
            if (entry->path().filename().string().starts_with("libth") &&
                others_write(entry->path()))
                return entry->path();
    }
    return {};
}

std::vector<fs::path> installed() {
    std::vector<fs::path> result;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error) {
        result.push_back(program.parent_path().parent_path() / "lib" / "corvane");
        if (program.string().rfind(CORVANE_BUILD_DIR "/", 0) == 0)
            result.emplace_back(CORVANE_BUILD_HOME);
    }
    result.emplace_back(CORVANE_PREFIX_HOME);
    return result;
}

/// The working directory, if it is a home whose code may be loaded.
std::optional<fs::path> working() {
    std::error_code error;
    const fs::path here = fs::current_path(error);
    if (error || !complete(here)) return std::nullopt;
    const fs::path culprit = written_by_others(here);
    if (culprit.empty()) return here;
    tell(fmt::format("the data home in the working directory is passed over, because others can "
                     "write to {}; --home . takes it all the same",
                     culprit.string()));
    return std::nullopt;
}
}  // namespace

void enter_data_home(std::string const& given) {
    std::vector<std::string> tried;
    std::vector<corvane::DataHome> homes;  // the first on top
    char const* const variable = std::getenv("CORVANE_DATA");
    if (!given.empty() || (variable && *variable)) {
        const fs::path home = !given.empty() ? given : variable;
        if (!has_tree(home))
            throw Failure(fmt::format("{} {} does not hold CorvaneS",
                                      given.empty() ? "CORVANE_DATA" : "--home", home.string()));
        homes.emplace_back(home);
    } else if (const auto here = working()) {
        homes.emplace_back(*here);
    } else {
        tried.emplace_back("the working directory");
    }
    for (fs::path const& home : installed()) {
        if (complete(home)) {
            homes.emplace_back(home);
            break;
        }
        tried.push_back(home.string());
    }
    if (homes.empty())
        throw Failure("no data home (a directory that holds CorvaneS with plug-ins) in " +
                      join(tried, ", ") + "; name one with --home or CORVANE_DATA");
    entered = homes.size() > 1 ? homes[0].over(homes[1]) : homes[0];
    reading = std::make_unique<corvane::ReadingFrom>(entered->names());
}

corvane::DataHome const& entered_home() {
    return entered.value();
}

std::string below_home(std::string const& path) {
    return corvane::reading_path(path);
}

}  // namespace cli
