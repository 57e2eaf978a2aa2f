// Peng–Robinson.
#include <plugins/common/cubic_model.h>

using PR = corvane::CubicModel<corvane::PengRobinson>;
CORVANE_PLUGIN1(PR)
