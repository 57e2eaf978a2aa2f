#include "support/vdw_model.h"

namespace {
class Vdw final : public VdwModel {};
}  // namespace

CORVANE_PLUGIN_API void destroy1(Model1* model) {
    delete static_cast<Vdw*>(model);
}
