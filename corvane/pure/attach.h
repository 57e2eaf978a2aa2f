// Loading of equation-of-state plug-ins.
#pragma once

#include <corvane/core/api.h>

class Model1;
class ModelN;

/// Loads "./CorvaneS/libth<eos>.dll", or else "./libth<eos>.dll", and returns a new model from its
/// factory create1. The library is never unloaded. The caller owns the model and gives it back to
/// the plug-in's destroyer; see detach1. A model built without run-time types has no
/// exact-derivative extension.
/// @throws ThException 1 no usable library (or a null or over-long name, or one that was built for
///         another layout of the classes), 0 factory or destroyer
///         missing, a factory that fails or makes something else; as corvane::FileError, which says
///         which of these
CORVANE_API Model1* attach1(char const* eos);

/// The same for a mixture model: "libth<eos>+<mixing>.dll", createN, destroyN.
CORVANE_API ModelN* attachN(char const* eos, char const* mixing);

namespace corvane {

/// Releases a model through the destroyer of the plug-in that made it. Null is ignored.
/// @throws ThException 0 if no loaded plug-in claims the model
CORVANE_API void detach1(Model1* model);
/// The same for a mixture, whose components go back with it.
CORVANE_API void detachN(ModelN* model);

/// Releases a model that is not null if a plug-in claims it; returns whether. The components of a
/// mixture stay.
bool release1(Model1* model);
bool releaseN(ModelN* model);

/// For std::unique_ptr: a model that goes back to its plug-in by itself.
struct Detach {
    void operator()(Model1* model) const { detach1(model); }
    void operator()(ModelN* model) const { detachN(model); }
};

}  // namespace corvane
