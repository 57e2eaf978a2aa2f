#include <corvane/core/constants.h>
#include <corvane/core/file_error.h>
#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <corvane/pure/plugin_file.h>
#include <corvane/pure/plugin_library.h>
#include <corvane/pure/plugin_registry.h>

#include <new>
#include <string>
#include <typeinfo>

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

template <class Model>
Model* make_linked(corvane::LinkedFactory<Model>& plugin) {
    Model* const model = plugin.create();
    if (!model) return nullptr;
    plugin.table = *reinterpret_cast<void const* const*>(model);
    model->derivatives(dynamic_cast<typename Extension<Model>::type const*>(model));
    return model;
}

/// Calls the factory of a loaded plug-in; what it throws or returns is checked, as nobody else can.
template <class Model>
Model* make_loaded(std::string const& plugin, char const* create, char const* destroy,
                   char const* suffix) {
    const corvane::LoadedFactory factory =
        corvane::load_factory(plugin, create, destroy, suffix);
    Model* model = nullptr;
    try {
        model = reinterpret_cast<Model* (*)()>(factory.address)();
    } catch (ThException const&) {
        throw;
    } catch (std::bad_alloc const&) {
        throw;
    } catch (...) {
        throw corvane::FileError(th_generic, factory.path, "its factory fails");
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
            throw corvane::FileError(th_generic, factory.path,
                                     std::string("its factory makes no Model") + suffix);
    }
    return model;
}

template <class Model>
Model* make(std::string const& plugin, char const* create, char const* destroy, char const* suffix) {
    if (auto* const linked = corvane::linked_factory<Model>(plugin)) return make_linked(*linked);
    return make_loaded<Model>(plugin, create, destroy, suffix);
}

/// The destroyer of the plug-in that made the model, or null.
template <class Model>
auto destroyer(Model const* model, char const* name) -> void (*)(Model*) {
    if (auto* const linked = corvane::linked_destroyer(model)) return linked;
    void const* table = *reinterpret_cast<void const* const*>(model);
    return reinterpret_cast<void (*)(Model*)>(corvane::function_beside(table, name));
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
