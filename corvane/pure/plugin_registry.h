// The plug-ins that are linked in, as attach and the catalogue see them. Internal.
#pragma once

#include <corvane/pure/linked_plugins.h>

#include <atomic>
#include <string>
#include <vector>

namespace corvane::inline detail {

template <class Model>
struct LinkedFactory {
    std::string name;
    Model* (*create)();
    void (*destroy)(Model*);
    /// Table of virtual functions of what it makes, by which models are known again; null before
    /// the first.
    std::atomic<void const*> table{nullptr};
};

/// Null if no plug-in of that name is linked in.
template <class Model>
LinkedFactory<Model>* linked_factory(std::string const& name);
/// The destroyer of the plug-in that made the model, or null.
template <class Model>
auto linked_destroyer(Model const* model) -> void (*)(Model*);
/// Names of all, of substances or of mixtures.
template <class Model>
std::vector<std::string> linked_names();

}  // namespace corvane::inline detail
