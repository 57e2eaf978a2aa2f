// Precomputed saturation curves that are kept in files.
#pragma once

#include <corvane/catalogue/open.h>
#include <corvane/core/api.h>
#include <corvane/phases/saturation/saturation_expansion.h>

#include <filesystem>
#include <vector>

namespace corvane {

struct KeptSaturation {
    SaturationExpansion curve;
    std::filesystem::path file;  ///< where it is kept; empty if nothing can be written
    bool read = false;           ///< from that file; else it was built now
};

/// The saturation curve of a fluid from its file, or built and kept for the next call.
///
/// The file is "<equation>,<substance>;<set>" in the first of `folders` that holds a good one.
/// Good is: whole by its checksum, of this version and kind of machine, made from the same
/// parameters (SaturationExpansion::same_as), and in agreement with the model's equations at three
/// temperatures. Anything else there is replaced: a changed parameter drops the file. It is
/// written under another name, brought to the disk and renamed, so that processes at the same time
/// read the old or the new one, whole. What cannot be written is built at each call, without an
/// error.
///
/// @param folders  to look in, in this order; the first that can be written gets the file. Empty:
///                 saturation_folders(fluid.home)
/// @throws as SaturationExpansion
CORVANE_API KeptSaturation kept_saturation(Fluid const& fluid,
                                           std::vector<std::filesystem::path> folders = {});

/// "cache/saturation" of the home's first directory, and for homes that are read-only
/// "corvane/saturation" in the user's cache: $XDG_CACHE_HOME, else $HOME/.cache.
CORVANE_API std::vector<std::filesystem::path> saturation_folders(DataHome const& home);

}  // namespace corvane
