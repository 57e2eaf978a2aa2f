// The libraries that plug-ins are loaded from. Internal.
#pragma once

#include <string>

namespace corvane::inline detail {

/// The factory of a plug-in, by its encoded name, and the path of the library that has it.
struct LoadedFactory {
    void* address;
    std::string path;
};
/// Loads the library of a plug-in. create, destroy: encoded names of its factory and destroyer,
/// both of which it must export; suffix: their number in messages.
/// @throws FileError 1 no usable library, or one of another layout; 0 an export is missing
LoadedFactory load_factory(std::string const& plugin, char const* create, char const* destroy,
                           char const* suffix);

/// The function of that name in the library that holds the table of virtual functions, or null.
void* function_beside(void const* table, char const* name);

}  // namespace corvane::inline detail
