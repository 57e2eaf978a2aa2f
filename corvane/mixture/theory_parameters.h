// Optional extension of a mixture model: a mixing theory that knows each component by parameters of
// its own, such as groups, and no pair by any.
#pragma once

#include <corvane/core/api.h>

#include <cstdio>

namespace corvane {

/// A plug-in class that derives from ModelN first and from this after it has, in place of a file
/// for every pair, one for every component:
///
///     CorvaneS/parameters/<equation>/<theory>/<name>;<number>
///
/// with the lines name, id (of the component's set that the theory goes with) and text, as in files
/// of pairs, and the theory's own section. The number is that of the pairs (ModelN::id(i, j)).
struct CORVANE_API TheoryParameters {
    /// Reads that section for component i. @throws ThException 1
    virtual void theory_in(FILE* f, int i) = 0;
    /// Both components have been read. @throws FileError 1 the theory cannot combine them
    virtual void check_pair(int i, int j) const = 0;
    /// Writes what theory_in reads.
    virtual void theory_out(FILE* f, int i) const = 0;

  protected:
    ~TheoryParameters() = default;
};

}  // namespace corvane
