// A plug-in that was built for another layout of the library's classes.
#include "support/vdw_model.h"

#include <corvane/pure/plugin_layout.h>

extern "C" CORVANE_PLUGIN_API constexpr corvane::PluginLayout corvane_plugin_layout{.slots = 0};

namespace {
class Vdw final : public VdwModel {};
}  // namespace

CORVANE_PLUGIN_API Model1* create1() {
    return new Vdw;
}
CORVANE_PLUGIN_API void destroy1(Model1* model) {
    delete static_cast<Vdw*>(model);
}
