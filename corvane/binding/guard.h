// Helper of the guarded exports: runs an operation and turns every exception into a record.
// Internal.
#pragma once

#include <corvane/binding/guarded_interface.h>
#include <corvane/core/file_error.h>

#include <cstdio>
#include <initializer_list>
#include <new>
#include <string>
#include <type_traits>

namespace corvane::binding {

/// An argument that must not be null, and what its refusal says.
struct Needed {
    void const* argument;
    char const* message;
};

inline void record(CorvaneError* error, int kind, int number, int info, char const* message) {
    if (!error) return;
    error->kind = kind;
    error->number = number;
    error->info = info;
    error->message[0] = '\0';
    if (*message) std::snprintf(error->message, sizeof error->message, "%s", message);
}

template <class F>
auto guard(CorvaneError* error, std::initializer_list<Needed> needed, F f) {
    using Result = std::invoke_result_t<F>;
    record(error, CORVANE_OK, 0, -1, "");
    try {
        bool complete = true;
        for (Needed const& n : needed)
            if (complete && !n.argument) {
                record(error, CORVANE_NULL_ARGUMENT, 0, -1, n.message);
                complete = false;
            }
        if (complete) return f();
    } catch (corvane::FileError const& e) {
        const std::string text = std::string(ThException(e.number).message()) + ": " + e.what();
        record(error, CORVANE_THERMODYNAMIC, e.number, e.info, text.c_str());
    } catch (ThException const& e) {
        record(error, CORVANE_THERMODYNAMIC, e.number, e.info, ThException(e.number).message());
    } catch (MthException const& e) {
        record(error, CORVANE_NUMERICAL, e.number, e.info, MthException(e.number).message());
    } catch (std::bad_alloc const&) {
        record(error, CORVANE_NO_MEMORY, 0, -1, "out of memory");
    } catch (...) {
        record(error, CORVANE_UNKNOWN, 0, -1, "unknown failure");
    }
    if constexpr (!std::is_void_v<Result>) return Result();
}

}  // namespace corvane::binding
