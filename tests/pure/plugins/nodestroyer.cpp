#include "support/vdw_model.h"

#include <cstdlib>

// The loader must refuse this library before it makes an object.
CORVANE_PLUGIN_API Model1* create1() {
    std::abort();
}
