#include <corvane/pure/plugin_registry.h>

#include <deque>
#include <mutex>

namespace corvane {
namespace {
/// Entries stay where they are and are never removed.
template <class Model>
struct Registry {
    std::mutex lock;
    std::deque<LinkedFactory<Model>> all;
};
template <class Model>
Registry<Model>& registry() {
    static Registry<Model> one;  // plug-ins register before main
    return one;
}

template <class Model>
void add(std::string const& name, Model* (*create)(), void (*destroy)(Model*)) {
    Registry<Model>& known = registry<Model>();
    const std::lock_guard guard(known.lock);
    auto& entry = known.all.emplace_front();
    entry.name = name, entry.create = create, entry.destroy = destroy;
}

/// The first entry that fits, or null.
template <class Model, class Fits>
LinkedFactory<Model>* first(Fits fits) {
    Registry<Model>& known = registry<Model>();
    const std::lock_guard guard(known.lock);
    for (LinkedFactory<Model>& entry : known.all)
        if (fits(entry)) return &entry;
    return nullptr;
}
}  // namespace

void link_plugin(std::string const& name, Model1* (*create)(), void (*destroy)(Model1*)) {
    add(name, create, destroy);
}
void link_plugin(std::string const& name, ModelN* (*create)(), void (*destroy)(ModelN*)) {
    add(name, create, destroy);
}

inline namespace detail {
template <class Model>
LinkedFactory<Model>* linked_factory(std::string const& name) {
    return first<Model>([&](auto const& entry) { return entry.name == name; });
}

template <class Model>
auto linked_destroyer(Model const* model) -> void (*)(Model*) {
    void const* const table = *reinterpret_cast<void const* const*>(model);
    auto const* made_it = first<Model>([&](auto const& entry) { return entry.table == table; });
    return made_it ? made_it->destroy : nullptr;
}

template <class Model>
std::vector<std::string> linked_names() {
    std::vector<std::string> names;
    first<Model>([&](auto const& entry) { return names.push_back(entry.name), false; });
    return names;
}

template LinkedFactory<Model1>* linked_factory(std::string const&);
template LinkedFactory<ModelN>* linked_factory(std::string const&);
template auto linked_destroyer(Model1 const*) -> void (*)(Model1*);
template auto linked_destroyer(ModelN const*) -> void (*)(ModelN*);
template std::vector<std::string> linked_names<Model1>();
template std::vector<std::string> linked_names<ModelN>();
}  // namespace detail
}  // namespace corvane
