#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>

#include <cstdio>
#include <initializer_list>
#include <string>

#include <dlfcn.h>

// Factory and destroyer are C++ functions of the global namespace; these are their encoded names.
#define CREATE1 "_Z7create1v"
#define DESTROY1 "_Z8destroy1P6Model1"
#define CREATEN "_Z7createNv"
#define DESTROYN "_Z8destroyNP6ModelN"

namespace {
/// Loads the first library that opens. Local symbols: every plug-in defines the same names.
void* open_library(std::initializer_list<std::string> paths) {
    for (std::string const& path : paths)
        if (path.size() < static_cast<std::size_t>(th_pathlength))
            if (void* library =
                    dlopen(corvane::reading_path(path).c_str(), RTLD_NOW | RTLD_LOCAL))
                return library;
    throw ThException(th_cannot_open);
}

/// Address of a symbol; the last-error value, not the address, tells success.
void* symbol(void* library, char const* name) {
    dlerror();
    void* address = dlsym(library, name);
    if (dlerror()) throw ThException(th_generic);
    return address;
}

template <class Model>
Model* make(std::string const& plugin, char const* create, char const* destroy) {
    void* library =
        open_library({"./CorvaneS/libth" + plugin + ".dll", "./libth" + plugin + ".dll"});
    auto* factory = reinterpret_cast<Model* (*)()>(symbol(library, create));
    symbol(library, destroy);
    return factory();
}

/// Calls the destroyer of the library that holds the model's table of virtual functions.
template <class Model>
void give_back(Model* model, char const* destroy) {
    if (!model) return;
    void* const* table = *reinterpret_cast<void* const* const*>(model);
    Dl_info where{};
    if (!dladdr(table, &where) || !where.dli_fname) throw ThException(th_generic);
    void* library = dlopen(where.dli_fname, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    if (!library) throw ThException(th_generic);
    reinterpret_cast<void (*)(Model*)>(symbol(library, destroy))(model);
}
}  // namespace

Model1* attach1(char const* eos) {
    if (!eos) throw ThException(th_cannot_open);
    Model1* model = make<Model1>(eos, CREATE1, DESTROY1);
    if (model) model->derivatives(dynamic_cast<corvane::Deriv1 const*>(model));
    return model;
}

ModelN* attachN(char const* eos, char const* mixing) {
    if (!eos || !mixing) throw ThException(th_cannot_open);
    ModelN* model = make<ModelN>(std::string(eos) + "+" + mixing, CREATEN, DESTROYN);
    if (model) model->derivatives(dynamic_cast<corvane::DerivN const*>(model));
    return model;
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
}  // namespace corvane
