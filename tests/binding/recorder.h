// Callbacks that write down what the flat interface reports.
#pragma once

#include <corvane/binding/flat_interface.h>

#include <cstdlib>
#include <string>
#include <vector>

struct Recorder {
    static inline std::vector<std::string> exceptions, nulls, texts;
    static inline bool parameter_was_null = true;
    static inline char const string_handle = 0;  // its address is the "managed string"

    static void exception(char const* message) { exceptions.emplace_back(message); }
    static void null_argument(char const* message, char const* parameter) {
        nulls.emplace_back(message);
        parameter_was_null = parameter == nullptr;
    }
    static void* string(char const* text) {
        texts.emplace_back(text ? text : "<null>");
        return const_cast<char*>(&string_handle);
    }
    // No other entry of the tables may ever be called.
    static void never(char const*) { std::abort(); }
    static void never2(char const*, char const*) { std::abort(); }

    Recorder() {
        SWIGRegisterExceptionCallbacks_libcorvane(exception, never, never, never, never, never,
                                                  never, never, never, never, never);
        SWIGRegisterExceptionArgumentCallbacks_libcorvane(never2, null_argument, never2);
        SWIGRegisterStringCallback_libcorvane(string);
        clear();
    }
    ~Recorder() {
        SWIGRegisterExceptionCallbacks_libcorvane(nullptr, nullptr, nullptr, nullptr, nullptr,
                                                  nullptr, nullptr, nullptr, nullptr, nullptr,
                                                  nullptr);
        SWIGRegisterExceptionArgumentCallbacks_libcorvane(nullptr, nullptr, nullptr);
        SWIGRegisterStringCallback_libcorvane(nullptr);
    }
    static void clear() {
        exceptions.clear();
        nulls.clear();
        texts.clear();
    }
};
