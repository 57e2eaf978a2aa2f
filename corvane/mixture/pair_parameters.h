// Optional extension of a mixture model: how many parameters a pair has.
#pragma once

#include <corvane/core/api.h>

namespace corvane {

/// A plug-in class that derives from ModelN first and from this after it lets callers check the
/// first argument of ModelN::ppar.
struct CORVANE_API PairParameters {
    virtual int pair_parameters() const = 0;

  protected:
    ~PairParameters() = default;
};

}  // namespace corvane
