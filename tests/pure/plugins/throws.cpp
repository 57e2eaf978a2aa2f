#include "support/vdw_model.h"

CORVANE_PLUGIN_API Model1* create1() {
    throw 7;
}
CORVANE_PLUGIN_API void destroy1(Model1*) {}
