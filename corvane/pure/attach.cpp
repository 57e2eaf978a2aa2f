#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <corvane/pure/plugin_file.h>
#include <corvane/pure/plugin_layout.h>

#include <new>
#include <string>
#include <typeinfo>
#include <vector>

#include <dlfcn.h>

// Factory and destroyer are C++ functions of the global namespace; these are their encoded names.
#define CREATE1 "_Z7create1v"
#define DESTROY1 "_Z8destroy1P6Model1"
#define CREATEN "_Z7createNv"
#define DESTROYN "_Z8destroyNP6ModelN"

namespace {
template <class Model>
struct Extension;
template <>
struct Extension<Model1> {
    using type = corvane::Deriv1;
};
template <>
struct Extension<ModelN> {
    using type = corvane::DerivN;
};

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
        const auto paths = corvane::reading_paths(name);
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
            const corvane::PluginFile file(path);
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
    throw corvane::FileError(th_cannot_open, "",
                             reason.empty() ? "no plug-in ./CorvaneS/" + name + " or ./" + name
                                            : reason);
}

/// Address of a symbol; the last-error value, not the address, tells success.
void* symbol(Library const& library, char const* name, char const* what) {
    dlerror();
    void* address = dlsym(library.handle, name);
    if (dlerror())
        throw corvane::FileError(th_generic, library.path, std::string("it exports no ") + what);
    return address;
}

/// Refuses a plug-in whose stamp is another. Plug-ins without one, built without the kit, are taken.
void check_layout(Library const& library) {
    dlerror();
    auto const* stamp =
        static_cast<corvane::PluginLayout const*>(dlsym(library.handle, "corvane_plugin_layout"));
    if (dlerror() || !stamp || *stamp == corvane::PluginLayout{}) return;
    throw corvane::FileError(
        th_cannot_open, library.path,
        "it was built for another version of the library, whose models have another layout; build "
        "it again with the headers of this one");
}

/// Calls the factory; what it throws or returns is checked, as nobody else can.
template <class Model>
Model* make(std::string const& plugin, char const* create, char const* destroy, char const* suffix) {
    const Library library = open_library(plugin);
    check_layout(library);
    auto* factory = reinterpret_cast<Model* (*)()>(
        symbol(library, create, (std::string("create") + suffix).c_str()));
    symbol(library, destroy, (std::string("destroy") + suffix).c_str());
    Model* model = nullptr;
    try {
        model = factory();
    } catch (ThException const&) {
        throw;
    } catch (std::bad_alloc const&) {
        throw;
    } catch (...) {
        throw corvane::FileError(th_generic, library.path, "its factory fails");
    }
    if (!model) return nullptr;
    switch (corvane::class_of(model, typeid(Model))) {
        case corvane::ClassOf::derived:
            model->derivatives(dynamic_cast<typename Extension<Model>::type const*>(model));
            break;
        case corvane::ClassOf::unknown:  // built without run-time types: differentiated numerically
            model->derivatives(nullptr);
            break;
        case corvane::ClassOf::other:
            throw corvane::FileError(th_generic, library.path,
                                     std::string("its factory makes no Model") + suffix);
    }
    return model;
}

/// The destroyer in the library that holds the model's table of virtual functions, or null.
template <class Model>
auto destroyer(Model const* model, char const* name) -> void (*)(Model*) {
    void const* table = *reinterpret_cast<void const* const*>(model);
    Dl_info where{};
    if (!dladdr(table, &where) || !where.dli_fname) return nullptr;
    void* library = dlopen(where.dli_fname, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    if (!library) return nullptr;
    dlerror();
    void* address = dlsym(library, name);
    const bool found = !dlerror();
    dlclose(library);  // it stays loaded for whoever attached it
    return found ? reinterpret_cast<void (*)(Model*)>(address) : nullptr;
}

template <class Model>
void give_back(Model* model, char const* name) {
    if (!model) return;
    auto* destroy = destroyer(model, name);
    if (!destroy) throw ThException(th_generic);
    destroy(model);
}
}  // namespace

Model1* attach1(char const* eos) {
    if (!eos) throw ThException(th_cannot_open);
    return make<Model1>(eos, CREATE1, DESTROY1, "1");
}

ModelN* attachN(char const* eos, char const* mixing) {
    if (!eos || !mixing) throw ThException(th_cannot_open);
    return make<ModelN>(std::string(eos) + "+" + mixing, CREATEN, DESTROYN, "N");
}

namespace corvane {
void detach1(Model1* model) {
    give_back(model, DESTROY1);
}
void detachN(ModelN* model) {
    if (!model) return;
    for (int i = 0; i < model->mdl1.size(); ++i) detach1(model->mdl1[i]);
    give_back(model, DESTROYN);
}
bool release1(Model1* model) {
    auto* destroy = destroyer(model, DESTROY1);
    if (destroy) destroy(model);
    return destroy != nullptr;
}
bool releaseN(ModelN* model) {
    auto* destroy = destroyer(model, DESTROYN);
    if (destroy) destroy(model);
    return destroy != nullptr;
}
}  // namespace corvane
