// What could not be done with a text or a file of a user.
#pragma once

#include <stdexcept>

namespace corvane::text {

/// The text is one clear sentence.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace corvane::text
