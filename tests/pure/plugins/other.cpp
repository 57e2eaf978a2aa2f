#include "support/vdw_model.h"

namespace {
struct Other final {
    virtual void nothing() {}
};
}  // namespace

// The name of a function does not tell what it returns. What is no model is not given back.
CORVANE_PLUGIN_API Model1* create1() {
    static Other other;
    return reinterpret_cast<Model1*>(&other);
}
CORVANE_PLUGIN_API void destroy1(Model1*) {}
