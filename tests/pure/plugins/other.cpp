#include "support/vdw_model.h"

namespace {
struct Other final {
    virtual void nothing() {}
};
}  // namespace

// The name of a function does not tell what it returns.
CORVANE_PLUGIN_API Model1* create1() {
    return reinterpret_cast<Model1*>(new Other);
}
CORVANE_PLUGIN_API void destroy1(Model1* model) {
    delete reinterpret_cast<Other*>(model);
}
