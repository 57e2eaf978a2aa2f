#include <corvane/core/constants.h>
#include <corvane/core/files.h>

#include <clocale>
#include <cstdarg>
#include <cstring>

#include <locale.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {
namespace {
thread_local ReadingFrom const* reading = nullptr;

locale_t c_locale() {
    static const locale_t locale = newlocale(LC_NUMERIC_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
}
}  // namespace

CLocale::CLocale() : previous_(uselocale(c_locale())) {}
CLocale::~CLocale() {
    uselocale(static_cast<locale_t>(previous_));
}

File open_file(char const* mode, char const* format, ...) {
    char path[th_pathlength];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(path, sizeof path, format, arguments);
    va_end(arguments);
    if (length < 0 || length >= th_pathlength) throw ThException(th_cannot_open);
    File file(std::fopen(*mode == 'r' ? reading_path(path).c_str() : path, mode));
    struct stat kind;
    if (!file || fstat(fileno(file.get()), &kind) != 0 || S_ISDIR(kind.st_mode))
        throw ThException(th_cannot_open);  // a folder opens for reading, but holds nothing
    return file;
}

ReadingFrom::ReadingFrom(std::string home) : home_(std::move(home)), outer_(reading) {
    reading = this;
}
ReadingFrom::~ReadingFrom() {
    reading = outer_;
}

std::string reading_path(std::string const& path) {
    return reading && path.starts_with("./") ? reading->home_ + path.substr(1) : path;
}

std::string file_contents(char const* path) {
    constexpr std::size_t kMost = 16 << 20;
    std::string text;
    // Not blocking: a pipe that nobody writes to opens at once, and is refused.
    const int descriptor = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return text;
    const File file(fdopen(descriptor, "r"));
    struct stat kind;
    if (!file || fstat(descriptor, &kind) != 0 || !S_ISREG(kind.st_mode)) return text;
    char block[1 << 14];
    while (text.size() < kMost) {
        const std::size_t count = std::fread(block, 1, sizeof block, file.get());
        if (count == 0) break;
        text.append(block, count);
    }
    return text;
}

void read_text(FILE* f, char* buffer, int size, int most) {
    buffer[0] = '\0';
    int c;
    while ((c = std::getc(f)) == ' ' || c == '\t') {
    }
    if (c == EOF) return;
    std::ungetc(c, f);
    if (!std::fgets(buffer, most + 1 < size ? most + 1 : size, f)) return;
    buffer[std::strcspn(buffer, "\r\n")] = '\0';
}

void copy_text(char* to, int size, char const* from) {
    std::snprintf(to, static_cast<std::size_t>(size), "%s", from ? from : "");
}

}  // namespace corvane
