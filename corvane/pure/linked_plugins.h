// Plug-ins that are linked into a program instead of loaded from files: where nothing can be loaded
// (WebAssembly), and for programs of one file. attach1 and attachN look here first.
//
// A plug-in that is compiled with CORVANE_STATIC_PLUGIN defined as its name ("PR", "PR+vdW1")
// registers itself by its usual CORVANE_PLUGIN1, CORVANE_PLUGINN or CORVANE_EQUATION, and exports
// nothing: corvane_add_static_plugin of CorvanePlugin.cmake does that.
#pragma once

#include <corvane/core/api.h>

#include <string>

class Model1;
class ModelN;

namespace corvane {

/// Makes a plug-in known under a name for attach1 ("PR") or attachN ("PR+vdW1"). All models of a
/// factory are of one class. Of two of the same name the later counts; models of the earlier still
/// go back to theirs. May be called by any thread, and before main.
CORVANE_API void link_plugin(std::string const& name, Model1* (*create)(),
                             void (*destroy)(Model1*));
CORVANE_API void link_plugin(std::string const& name, ModelN* (*create)(),
                             void (*destroy)(ModelN*));

/// Registers when it is constructed: for a static object of the plug-in.
struct LinkedPlugin {
    template <class Model>
    LinkedPlugin(std::string const& name, Model* (*create)(), void (*destroy)(Model*)) {
        link_plugin(name, create, destroy);
    }
};

}  // namespace corvane
