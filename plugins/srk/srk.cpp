// Soave–Redlich–Kwong.
#include <plugins/common/cubic_model.h>

using SRK = corvane::CubicModel<corvane::SoaveRedlichKwong>;
CORVANE_PLUGIN1(SRK)
