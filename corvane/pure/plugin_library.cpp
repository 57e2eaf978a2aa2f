#include <corvane/core/file_error.h>
#include <corvane/core/files.h>
#include <corvane/pure/plugin_file.h>
#include <corvane/pure/plugin_layout.h>
#include <corvane/pure/plugin_library.h>

#include <vector>

#include <dlfcn.h>

namespace corvane {
namespace {
/// The library of a plug-in, loaded, and the path that says which.
struct Library {
    void* handle;
    std::string path;
};

/// Where a plug-in may lie, home by home.
std::vector<std::vector<std::string>> places(std::string const& plugin) {
    std::vector<std::vector<std::string>> homes;
    for (char const* place : {"./CorvaneS/libth", "./libth"}) {
        const std::string name = place + plugin + ".dll";
        if (name.size() >= static_cast<std::size_t>(th_pathlength)) continue;
        const auto paths = reading_paths(name);
        homes.resize(paths.size());
        for (std::size_t k = 0; k < paths.size(); ++k) homes[k].push_back(paths[k]);
    }
    return homes;
}

/// Loads the first library that opens, of the first home that has one. Local symbols: every plug-in
/// defines the same names.
Library open_library(std::string const& plugin) {
    std::string reason;
    for (auto const& home : places(plugin)) {
        if (!reason.empty()) break;  // what is wrong with the first must not go unnoticed
        for (std::string const& path : home) {
            const PluginFile file(path);
            if (file.exists()) reason += reason.empty() ? "" : "; ";
            if (!file.usable()) {
                if (file.exists()) reason += path + ": " + file.reason();
                continue;
            }
            // The resolved path: by its relative name the loader would take a library that it knows
            // from another working directory for this one.
            if (void* handle = dlopen(file.resolved().c_str(), RTLD_NOW | RTLD_LOCAL))
                return {handle, path};
            char const* text = dlerror();
            reason += text ? text : path;
        }
    }
    const std::string name = "libth" + plugin + ".dll";
    throw FileError(th_cannot_open, "",
                             reason.empty() ? "no plug-in ./CorvaneS/" + name + " or ./" + name
                                            : reason);
}

/// Address of a symbol; the last-error value, not the address, tells success.
void* symbol(Library const& library, char const* name, char const* what) {
    dlerror();
    void* address = dlsym(library.handle, name);
    if (dlerror())
        throw FileError(th_generic, library.path, std::string("it exports no ") + what);
    return address;
}

/// Refuses a plug-in whose stamp is another. Plug-ins without one, built without the kit, are taken.
void check_layout(Library const& library) {
    dlerror();
    auto const* stamp =
        static_cast<PluginLayout const*>(dlsym(library.handle, "corvane_plugin_layout"));
    if (dlerror() || !stamp || *stamp == PluginLayout{}) return;
    throw FileError(
        th_cannot_open, library.path,
        "it was built for another version of the library, whose models have another layout; build "
        "it again with the headers of this one");
}
}  // namespace

LoadedFactory detail::load_factory(std::string const& plugin, char const* create,
                                   char const* destroy, char const* suffix) {
    const Library library = open_library(plugin);
    check_layout(library);
    void* const factory = symbol(library, create, (std::string("create") + suffix).c_str());
    symbol(library, destroy, (std::string("destroy") + suffix).c_str());
    return {factory, library.path};
}

void* detail::function_beside(void const* table, char const* name) {
    Dl_info where{};
    if (!dladdr(table, &where) || !where.dli_fname) return nullptr;
    void* library = dlopen(where.dli_fname, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    if (!library) return nullptr;
    dlerror();
    void* address = dlsym(library, name);
    const bool found = !dlerror();
    dlclose(library);  // it stays loaded for whoever attached it
    return found ? address : nullptr;
}

}  // namespace corvane
