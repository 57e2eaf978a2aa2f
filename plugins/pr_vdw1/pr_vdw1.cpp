// Peng–Robinson with van der Waals one-fluid mixing.
#include <plugins/common/cubic_mixture.h>

using PR_vdW1 = corvane::CubicMixture<corvane::PengRobinson>;
CORVANE_PLUGINN(PR_vdW1)
