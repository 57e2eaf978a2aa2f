#include <corvane/core/constants.h>
#include <corvane/core/files.h>

#include <clocale>
#include <cstdarg>
#include <cstring>

#include <locale.h>
#include <sys/stat.h>

namespace corvane {
namespace {
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
    File file(std::fopen(path, mode));
    struct stat kind;
    if (!file || fstat(fileno(file.get()), &kind) != 0 || S_ISDIR(kind.st_mode))
        throw ThException(th_cannot_open);  // a folder opens for reading, but holds nothing
    return file;
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
