// The bracket of the Illinois method. Internal to the library.
#pragma once

namespace corvane::inline detail {

/// A root between a and b, where f has different signs; b is the newest point. Regula falsi in
/// which the value at an end that stays is halved (Dowell & Jarratt, BIT 11 (1971) 168).
struct IllinoisBracket {
    double a, fa, b, fb;

    void take(double at, double f) {
        if (f * fb < 0.0) {
            a = b;
            fa = fb;
        } else {
            fa *= 0.5;
        }
        b = at;
        fb = f;
    }
};

}  // namespace corvane::inline detail
