// Opens a model by name: library, equation of state and data are where the package put them.
#include <corvane/corvane.h>

#include <cstdio>

int main() {
    const corvane::Fluid fluid = corvane::open("PR", "CO2");
    const double T = fluid.model->Tcrit();
    std::printf("corvane %s: critical temperature of %s %.2f K\n", CORVANE_VERSION, fluid.substance.c_str(), T);
    return T > 304.0 && T < 304.3 ? 0 : 1;
}
