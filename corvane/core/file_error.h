// Which file, where in it, and why: what a code of the message table does not say.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/errors.h>

#include <string>
#include <utility>

namespace corvane {

/// A ThException with the file that it is about. Whatever opens, reads or writes a file or a
/// plug-in throws this, so who needs the code alone catches ThException, and who puts failures into
/// words catches FileError before it. Code and message text are those of the plain exception.
class CORVANE_API FileError : public ThException {
  public:
    FileError(int number_, std::string path_, std::string reason_, int line_ = 0)
        : ThException(number_),
          path(std::move(path_)),
          reason(std::move(reason_)),
          line(line_) {}

    std::string path;    ///< as it was opened: relative paths start at the working directory
    std::string reason;  ///< in words, without a full stop
    int line;            ///< counted from 1; 0 where no line is to blame

    /// "./CorvaneS/ideal/argon, line 3: not a number: '29,1'".
    std::string what() const {
        const std::string place = line > 0 ? ", line " + std::to_string(line) : "";
        return path + place + (path.empty() ? "" : ": ") + reason;
    }
};

}  // namespace corvane
