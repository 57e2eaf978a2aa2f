#include <corvane/catalogue/cache_files.h>
#include <corvane/core/errors.h>
#include <corvane/core/files.h>

#include <cstdlib>
#include <system_error>

#include <unistd.h>

namespace corvane::inline detail {
namespace {
namespace fs = std::filesystem;

bool write(fs::path const& file, std::string const& bytes) try {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    NewFile made(file.string());
    std::fwrite(bytes.data(), 1, bytes.size(), made.stream());
    if (std::fflush(made.stream()) != 0 || fsync(fileno(made.stream())) != 0) return false;
    made.commit(static_cast<long>(bytes.size()));
    return true;
} catch (ThException const&) {
    return false;
}

fs::path variable(char const* name) {
    char const* value = std::getenv(name);
    return value && *value == '/' ? fs::path(value) : fs::path();
}
}  // namespace

std::vector<fs::path> cache_folders(DataHome const& home, std::string const& subject) {
    std::vector<fs::path> folders{home.directory() / "cache" / subject};
    fs::path user = variable("XDG_CACHE_HOME");
    if (user.empty())
        if (user = variable("HOME"); !user.empty()) user /= ".cache";
    if (!user.empty()) folders.push_back(user / "corvane" / subject);
    return folders;
}

fs::path write_cached(std::vector<fs::path> const& folders, std::string const& name,
                      std::string const& bytes) {
    for (fs::path const& folder : folders)
        if (write(folder / name, bytes)) return folder / name;
    return {};
}

}  // namespace corvane::inline detail
