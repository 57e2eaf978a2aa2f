// corvane flash as another command uses it.
#pragma once

#include <tools/corvane/input/options.h>
#include <tools/corvane/results/file_run.h>

#include <map>
#include <string>

namespace cli {

/// Runs the flash of a mixture under the name of `command`. given: values by symbol ("T", "p",
/// "rho", "v", "h", "s"; others are refused), empty ones do not count, or `file`. transport: as of --transport.
/// Returns the exit code.
int flash(char const* command, Options const& options, MixtureRequest const& request,
          std::map<std::string, std::string> const& given, FileRun file = {}, bool transport = false);

}  // namespace cli
