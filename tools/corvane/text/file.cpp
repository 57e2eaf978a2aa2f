#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/file.h>

#include <fmt/format.h>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cli {
namespace {
[[noreturn]] void fail(std::string const& path, char const* why) {
    throw Failure(fmt::format("{}: {}", path, why));
}

struct Descriptor {
    explicit Descriptor(int number_) : number(number_) {}
    ~Descriptor() { close(number); }
    Descriptor(Descriptor const&) = delete;
    Descriptor& operator=(Descriptor const&) = delete;
    int number;
};

std::string contents(int file, std::string const& path) {
    std::string text;
    char block[1 << 16];
    while (true) {
        const ssize_t count = read(file, block, sizeof block);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail(path, std::strerror(errno));
        if (count == 0) return text;
        text.append(block, static_cast<std::size_t>(count));
        if (text.size() > kLargestFile) fail(path, "the file is too large");
    }
}

std::vector<std::string> lines_of(std::string const& text) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        if (!lines.back().empty() && lines.back().back() == '\r') lines.back().pop_back();
        begin = end + 1;
    }
    return lines;
}
}  // namespace

std::vector<std::string> read_lines(std::string const& path) {
    const int number = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (number < 0) fail(path, errno == ENOENT ? "no such file" : std::strerror(errno));
    const Descriptor file(number);
    struct stat status {};
    if (fstat(number, &status) == 0 && S_ISDIR(status.st_mode)) fail(path, "a folder, not a file");
    return lines_of(contents(number, path));
}

}  // namespace cli
