#include <tools/corvane/results/references.h>

#include <fmt/format.h>

namespace cli {

std::string reference_note(MixtureFluid const& mixture, int i, double T,
                           corvane::PureReference const& pure, corvane::Root root) {
    char const* const name = mixture.component(i);
    if (!(pure.rho > 0.0))
        return fmt::format("pure {} has no density at T and p: no activity coefficient", name);
    if (root == corvane::Root::stable) return "";
    const bool liquid = root == corvane::Root::dense;
    if (pure.liquid == liquid)
        return pure.stable ? "" : fmt::format("pure {} is metastable there", name);
    if (T >= mixture.model->mdl1[i]->Tcrit())
        return liquid ? fmt::format("pure {} is supercritical there, and no liquid", name) : "";
    return fmt::format("pure {} is {} there: it has no {}", name, liquid ? "vapour" : "liquid",
                       liquid ? "liquid" : "vapour");
}

}  // namespace cli
