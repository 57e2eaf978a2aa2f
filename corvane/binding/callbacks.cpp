// Registration of the callbacks, and what the exports hand to them.
#include <corvane/binding/flat.h>

#include <cstring>
#include <new>

namespace {
// Process-wide, written once at start, without locks.
CorvaneExceptionCallback* exception_callback = nullptr;              // entry 0: application
CorvaneArgumentExceptionCallback* argument_null_callback = nullptr;  // entry 1: argument null
CorvaneStringCallback* string_callback = nullptr;
}  // namespace

// Of the eleven exception kinds only the first is ever raised, of the three argument kinds only the
// second; the others are accepted and forgotten.
EXPORT void SWIGRegisterExceptionCallbacks_libcorvane(
    CorvaneExceptionCallback* application, CorvaneExceptionCallback*, CorvaneExceptionCallback*,
    CorvaneExceptionCallback*, CorvaneExceptionCallback*, CorvaneExceptionCallback*,
    CorvaneExceptionCallback*, CorvaneExceptionCallback*, CorvaneExceptionCallback*,
    CorvaneExceptionCallback*, CorvaneExceptionCallback*) {
    exception_callback = application;
}

EXPORT void SWIGRegisterExceptionArgumentCallbacks_libcorvane(
    CorvaneArgumentExceptionCallback*, CorvaneArgumentExceptionCallback* argument_null,
    CorvaneArgumentExceptionCallback*) {
    argument_null_callback = argument_null;
}

EXPORT void SWIGRegisterStringCallback_libcorvane(CorvaneStringCallback* callback) {
    string_callback = callback;
}

namespace corvane::binding {

void report_exception(char const* message) {
    if (exception_callback) exception_callback(message);
}
void report_null_argument(char const* message) {
    if (argument_null_callback) argument_null_callback(message, nullptr);
}
void* text(char const* s) {
    return string_callback ? string_callback(s) : nullptr;
}

char const* copy_text(char const* s) {
    if (!s) return nullptr;
    const std::size_t size = std::strlen(s) + 1;
    char* block = new char[size];
    std::memcpy(block, s, size);
    return block;
}

}  // namespace corvane::binding
