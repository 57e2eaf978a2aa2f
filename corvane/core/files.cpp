#include <corvane/core/collected.h>
#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/core/number_text.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <locale.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {
namespace {
constexpr int kNumberLength = 128;  // longest number in a file, characters

thread_local ReadingFrom const* innermost = nullptr;

locale_t c_locale() {
    static const locale_t locale = newlocale(LC_NUMERIC_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
}

[[noreturn]] void refuse(std::string const& path, int error) {
    throw FileError(th_cannot_open, path, std::generic_category().message(error));
}

bool is_control(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7f;
}
bool is_blank(int c) {
    return c == ' ' || c == '\t' || c == '\r';
}
bool is_space(int c) {
    return is_blank(c) || c == '\n' || c == '\v' || c == '\f';
}

/// A stream that holds a text, for reading; nothing if there is no memory.
File stream_of(std::string const& text) {
    File file(fmemopen(nullptr, text.size() + 1, "w+"));
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size())
        return nullptr;
    std::rewind(file.get());
    return file;
}

/// The finite number that the whole word spells.
bool spells(char const* word, double& x) {
    if (*word == '+' && word[1] != '-') ++word;
    char const* end = word + std::strlen(word);
    const auto [stop, error] = number_from_chars(word, end, x);
    return error == std::errc() && stop == end && std::isfinite(x);
}
}  // namespace

CLocale::CLocale() : previous_(uselocale(c_locale())) {}
CLocale::~CLocale() {
    uselocale(static_cast<locale_t>(previous_));
}

std::string path_of(char const* format, ...) {
    char path[th_pathlength];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(path, sizeof path, format, arguments);
    va_end(arguments);
    if (length < 0 || length >= th_pathlength)
        throw FileError(th_cannot_open, path, "the path is too long");
    return path;
}

File open_file(std::string const& relative) {
    const std::string path = reading_path(relative);
    // Without O_NONBLOCK a pipe would wait for somebody to write to it.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        const int error = errno;
        if (const std::string text = collected_text(path); !text.empty())
            if (File row = stream_of(text)) return row;
        refuse(path, error);
    }
    struct stat kind;
    const bool regular = fstat(descriptor, &kind) == 0 && S_ISREG(kind.st_mode);
    File file(regular ? fdopen(descriptor, "r") : nullptr);
    if (file) return file;
    close(descriptor);
    throw FileError(th_cannot_open, path, "not a regular file");
}

NewFile::NewFile(std::string path) : path_(std::move(path)), target_(path_) {
    char resolved[PATH_MAX];  // a link stays, and the file behind it is replaced
    if (realpath(path_.c_str(), resolved)) {
        target_ = resolved;
        struct stat kind;
        if (stat(resolved, &kind) != 0 || !S_ISREG(kind.st_mode))
            throw FileError(th_cannot_open, path_, "not a regular file");
        if (access(resolved, W_OK) != 0) refuse(path_, errno);
    }
    static std::atomic<unsigned> count{0};
    temporary_ = target_ + ".new-" + std::to_string(getpid()) + '-' + std::to_string(++count);
    const int descriptor =
        ::open(temporary_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode_t{0666});
    if (descriptor < 0) refuse(path_, errno);
    file_.reset(fdopen(descriptor, "w+"));
    if (!file_) {
        close(descriptor);
        unlink(temporary_.c_str());
        refuse(path_, ENOMEM);
    }
}

NewFile::~NewFile() {
    if (!file_) return;
    file_.reset();
    unlink(temporary_.c_str());
}

void NewFile::commit(long section) {
    if (std::fflush(file_.get()) != 0 || std::ferror(file_.get())) refuse(path_, errno);
    std::fseek(file_.get(), section, SEEK_SET);
    char word[kNumberLength];
    while (std::fscanf(file_.get(), "%127s", word) == 1) {
        char const* sign_free = word + (word[0] == '-');
        if (std::strcmp(sign_free, "nan") == 0 || std::strcmp(sign_free, "inf") == 0)
            throw FileError(th_cannot_open, path_, "a parameter is not a finite number");
    }
    // The destructor still removes the temporary file if this fails.
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) refuse(path_, errno);
    file_.reset();
}

void check_name(char const* name) {
    for (char const* c = name; *c; ++c)
        if (*c == '/' || is_control(*c))
            throw FileError(th_cannot_open, "", "not the name of a substance");
}

void check_storable(char const* name) {
    check_name(name);
    if (!*name || std::strchr(name, ' '))
        throw FileError(th_cannot_open, "", "the name of the substance is empty or has a blank");
}

void check_storable(char const* comment, int most) {
    if (static_cast<int>(std::strlen(comment)) > most)
        throw FileError(th_cannot_open, "",
                        "a comment has at most " + std::to_string(most) + " characters");
    if (std::strpbrk(comment, "\r\n"))
        throw FileError(th_cannot_open, "", "a comment has one line only");
}

ReadingFrom::ReadingFrom(std::vector<std::string> homes)
    : homes_(std::move(homes)), outer_(innermost) {
    innermost = this;
}
ReadingFrom::~ReadingFrom() {
    innermost = outer_;
}

std::vector<std::string> reading_paths(std::string const& path) {
    if (!innermost || !path.starts_with("./")) return {path};
    std::vector<std::string> paths;
    for (std::string const& home : innermost->homes_) paths.push_back(home + path.substr(1));
    return paths;
}

int reading_home(std::string const& path) {
    const auto paths = reading_paths(path);
    return static_cast<int>(std::find_if(paths.begin(), paths.end(), has_data_file) -
                            paths.begin());
}

std::string reading_path(std::string const& path) {
    const auto paths = reading_paths(path);
    if (paths.size() == 1) return paths.front();
    const auto home = static_cast<std::size_t>(reading_home(path));
    return paths[home < paths.size() ? home : 0];
}

std::string file_contents(char const* path) {
    constexpr std::size_t kMost = 16 << 20;
    std::string text;
    // Not blocking: a pipe that nobody writes to opens at once, and is refused.
    const int descriptor = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return collected_text(path);
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
    for (char* at = buffer; *at; ++at)
        if (*at != '\t' && is_control(*at)) *at = ' ';
}

void copy_text(char* to, int size, char const* from) {
    const std::size_t length = from ? strnlen(from, static_cast<std::size_t>(size) - 1) : 0;
    if (length > 0) std::memmove(to, from, length);
    to[length] = '\0';
}

bool read_word(FILE* f, char* to, int size, bool any_line) {
    int c = std::getc(f);
    while (any_line ? is_space(c) : is_blank(c)) c = std::getc(f);
    int n = 0;
    for (; c != EOF && !is_space(c); c = std::getc(f)) {
        if (n + 1 >= size) malformed(f, "a word is too long");
        to[n++] = static_cast<char>(c);
    }
    if (c != EOF) std::ungetc(c, f);
    to[n] = '\0';
    return n > 0;
}

double read_number(FILE* f, bool any_line) {
    char word[kNumberLength];
    if (!read_word(f, word, sizeof word, any_line)) malformed(f, "a number is missing");
    double x = 0.0;
    if (!spells(word, x)) {
        for (char* c = word; *c; ++c)
            if (is_control(*c)) *c = '?';
        malformed(f, "not a finite number: '" + std::string(word) + "'");
    }
    return x;
}

void finish_line(FILE* f) {
    int c = std::getc(f);
    while (is_blank(c)) c = std::getc(f);
    if (c != EOF && c != '\n' && c != '#') {
        std::ungetc(c, f);
        malformed(f, "the line goes on after its value");
    }
    while (c != EOF && c != '\n') c = std::getc(f);
}

void skip_line(FILE* f) {
    for (int c = std::getc(f); c != EOF && c != '\n';) c = std::getc(f);
}

int line_of(FILE* f) {
    const long at = std::ftell(f);
    if (at < 0 || std::fseek(f, 0, SEEK_SET) != 0) return 0;
    int line = 1;
    for (long k = 0; k < at; ++k) {
        const int c = std::getc(f);
        if (c == EOF) break;
        line += c == '\n';
    }
    std::fseek(f, at, SEEK_SET);
    return line;
}

void malformed(FILE* f, std::string const& reason) {
    throw FileError(th_cannot_open, "", reason, line_of(f));
}

}  // namespace corvane
