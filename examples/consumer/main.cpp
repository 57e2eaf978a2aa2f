#include <corvane/corvane.h>

#include <cstdio>
#include <memory>

int main() {
    std::unique_ptr<Model1, corvane::Detach> fluid(attach1("PR"));  // ./CorvaneS/libthPR.dll
    fluid->name("carbon_dioxide");
    fluid->id(1);
    fluid->load("PR");    // ./CorvaneS/parameters/PR/carbon_dioxide;1
    fluid->ideal.load();  // ./CorvaneS/ideal/carbon_dioxide
    double p, rhoL, rhoV, rho = 0.0;
    vle1_T(fluid.get(), 280.0, 0, p, rhoL, rhoV);
    const double cp = R * fluid->Cpm(1.0, 280.0, 3, rho);  // 1 MPa, vapour
    std::printf("p_sat %.4f MPa, cp %.3f J/(mol K)\n", p, cp);
}
