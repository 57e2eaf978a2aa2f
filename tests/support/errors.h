// Expectations on the library's exceptions, by code.
#pragma once

#include <corvane/core/errors.h>

#include <gtest/gtest.h>

/// Runs f and returns the code of the ThException it throws: −1 none, −2 something else.
template <class F>
int th_code(F f) {
    try {
        f();
    } catch (ThException const& e) {
        return e.number;
    } catch (...) {
        return -2;
    }
    return -1;
}

/// The same for MthException.
template <class F>
int mth_code(F f) {
    try {
        f();
    } catch (MthException const& e) {
        return e.number;
    } catch (...) {
        return -2;
    }
    return -1;
}
