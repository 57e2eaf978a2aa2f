// Where nothing can be loaded (WebAssembly): the plug-ins that are linked in are all there are.
#include <corvane/core/file_error.h>
#include <corvane/pure/plugin_file.h>
#include <corvane/pure/plugin_library.h>
#include <corvane/pure/plugin_registry.h>

namespace corvane {

LoadedFactory detail::load_factory(std::string const& plugin, char const*, char const*,
                                   char const*) {
    throw FileError(th_cannot_open, "", "no plug-in " + plugin + " is linked in");
}

void* detail::function_beside(void const*, char const*) {
    return nullptr;
}

bool detail::is_other_plugin(std::string const& name, std::string const& own) {
    return name != own && (linked_factory<Model1>(name) || linked_factory<ModelN>(name));
}

ClassOf detail::class_of(void const*, std::type_info const&) {
    return ClassOf::other;  // of an object from elsewhere; there is no elsewhere
}

}  // namespace corvane
