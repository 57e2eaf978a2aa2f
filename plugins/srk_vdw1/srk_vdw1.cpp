// Soave–Redlich–Kwong with van der Waals one-fluid mixing.
#include <plugins/common/cubic_mixture.h>

using SRK_vdW1 = corvane::CubicMixture<corvane::SoaveRedlichKwong>;
CORVANE_PLUGINN(SRK_vdW1)
