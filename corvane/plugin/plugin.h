// What the author of an equation of state includes first: the base class and the export of its
// factory.
#pragma once

#include <corvane/pure/linked_plugins.h>
#include <corvane/pure/model1.h>
#include <corvane/pure/plugin_layout.h>

#include <type_traits>

/// The stamp of a plug-in, by which the library knows that it was built for another layout.
extern "C" {
[[gnu::used]] CORVANE_PLUGIN_API inline constexpr corvane::PluginLayout corvane_plugin_layout{};
}

/// Exports create1 and destroy1 of a pure-substance model: CORVANE_PLUGIN1(VanDerWaals) at the end
/// of the only source that needs it, outside every namespace.
///
/// The class derives from Model1 as its first base and is final. Its constructor sets eos_ to a
/// string literal, mpar_ and madj_ to the number of parameters and of adjustable ones, and gives
/// every parameter a value. It throws nothing but ThException and MthException, keeps no mutable
/// state (the properties of one model may be asked for by several threads) and nothing derived from
/// parameters, since callers write through ppar at any time.
///
/// With CORVANE_STATIC_PLUGIN defined as the plug-in's name ("PR"), nothing is exported: the plug-in
/// registers itself in the program that it is linked into (corvane/pure/linked_plugins.h).
// NOLINTBEGIN(bugprone-macro-parentheses): a type takes none
#ifndef CORVANE_STATIC_PLUGIN
#define CORVANE_PLUGIN1(Class)                                                \
    static_assert(std::is_base_of_v<Model1, Class> && std::is_final_v<Class>, \
                  #Class " must be a final class derived from Model1");       \
    CORVANE_PLUGIN_API Model1* create1();                                     \
    CORVANE_PLUGIN_API void destroy1(Model1* model);                          \
    Model1* create1() {                                                       \
        return new Class;                                                     \
    }                                                                         \
    void destroy1(Model1* model) {                                            \
        delete static_cast<Class*>(model);                                    \
    }

/// The same for a mixture model: createN and destroyN; linked in, the name is "PR+vdW1".
#define CORVANE_PLUGINN(Class)                                                \
    static_assert(std::is_base_of_v<ModelN, Class> && std::is_final_v<Class>, \
                  #Class " must be a final class derived from ModelN");       \
    CORVANE_PLUGIN_API ModelN* createN();                                     \
    CORVANE_PLUGIN_API void destroyN(ModelN* model);                          \
    ModelN* createN() {                                                       \
        return new Class;                                                     \
    }                                                                         \
    void destroyN(ModelN* model) {                                            \
        delete static_cast<Class*>(model);                                    \
    }
#else
#define CORVANE_PLUGIN1(Class)                                                          \
    static_assert(std::is_base_of_v<Model1, Class> && std::is_final_v<Class>,           \
                  #Class " must be a final class derived from Model1");                 \
    static const corvane::LinkedPlugin corvane_linked_1(                                \
        CORVANE_STATIC_PLUGIN, +[]() -> Model1* { return new Class; },                  \
        +[](Model1* model) { delete static_cast<Class*>(model); });
#define CORVANE_PLUGINN(Class)                                                          \
    static_assert(std::is_base_of_v<ModelN, Class> && std::is_final_v<Class>,           \
                  #Class " must be a final class derived from ModelN");                 \
    static const corvane::LinkedPlugin corvane_linked_N(                                \
        CORVANE_STATIC_PLUGIN, +[]() -> ModelN* { return new Class; },                  \
        +[](ModelN* model) { delete static_cast<Class*>(model); });
#endif
// NOLINTEND(bugprone-macro-parentheses)
