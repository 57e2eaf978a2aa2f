#include <tools/corvane/output/whole_file.h>
#include <tools/corvane/text/errors.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cli {
namespace {
namespace fs = std::filesystem;

/// While it lives, no signal that a person sends ends the program.
class Uninterrupted {
  public:
    Uninterrupted() {
        sigset_t signals;
        sigemptyset(&signals);
        for (int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
        sigprocmask(SIG_BLOCK, &signals, &before_);
    }
    ~Uninterrupted() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    Uninterrupted(Uninterrupted const&) = delete;
    Uninterrupted& operator=(Uninterrupted const&) = delete;

  private:
    sigset_t before_;
};

/// 0, or why not all bytes were taken.
int write_all(int file, std::string const& bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t n = ::write(file, bytes.data() + done, bytes.size() - done);
        if (n > 0)
            done += static_cast<std::size_t>(n);
        else if (n == 0 || errno != EINTR)
            return n == 0 ? ENOSPC : errno;
    }
    return 0;
}

/// Into a pipe or a device; a pipe that nobody reads any more is an error, not the end.
int write_through(std::string const& bytes, fs::path const& path) {
    const auto before = signal(SIGPIPE, SIG_IGN);
    const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    int error = file < 0 ? errno : write_all(file, bytes);
    if (file >= 0 && close(file) != 0 && error == 0) error = errno;
    signal(SIGPIPE, before);
    return error;
}

/// Into a new file, which then takes the place of the old one.
int replace(std::string const& bytes, fs::path const& path) {
    const Uninterrupted uninterrupted;
    std::string name = path.string() + ".XXXXXX";
    const int file = mkstemp(name.data());
    if (file < 0) return errno;
    const mode_t mask = umask(0);
    umask(mask);
    int error = fchmod(file, 0666 & ~mask) == 0 ? 0 : errno;
    if (error == 0) error = write_all(file, bytes);
    if (error == 0 && fsync(file) != 0) error = errno;
    if (close(file) != 0 && error == 0) error = errno;
    if (error == 0 && std::rename(name.c_str(), path.c_str()) != 0) error = errno;
    if (error != 0) std::remove(name.c_str());
    return error;
}
}  // namespace

void write_whole(std::string const& bytes, fs::path const& path, std::string const& option) {
    std::error_code none;
    // A link stays, and what it points to is replaced.
    fs::path target = fs::is_symlink(path, none) ? fs::weakly_canonical(path, none) : path;
    if (none || target.empty()) target = path;
    const fs::file_status status = fs::status(target, none);
    const int error = fs::is_directory(status) ? EISDIR
                      : fs::exists(status) && !fs::is_regular_file(status)
                          ? write_through(bytes, target)
                          : replace(bytes, target);
    if (error != 0)
        throw Failure(fmt::format("{}: cannot write {}: {}", option, path.string(), std::strerror(error)));
}

}  // namespace cli
