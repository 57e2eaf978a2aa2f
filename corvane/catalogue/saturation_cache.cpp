#include <corvane/catalogue/cache_files.h>
#include <corvane/catalogue/saturation_cache.h>
#include <corvane/core/files.h>

#include <cmath>
#include <optional>
#include <string>

namespace corvane {
namespace {
namespace fs = std::filesystem;

/// Does it meet the equations where it says that it does? A sample, against files of a foreign
/// hand.
bool agrees(SaturationExpansion const& curve, Model1 const& model) {
    for (double part : {0.2, 0.5, 0.8}) {
        const double T = curve.T_min() + part * (curve.T_max() - curve.T_min());
        SaturationExpansion::Point s;
        if (!curve.at_T(T, s)) return false;
        const PureSaturation q = curve.certified_T(model, T);
        const SaturationErrors e = curve.bound(T);
        if (!(std::fabs(s.p / q.p - 1.0) <= e.p + q.value_error) ||
            !(std::fabs(s.rhoL / q.rhoL - 1.0) <= e.rhoL + q.rho_error) ||
            !(std::fabs(s.rhoV / q.rhoV - 1.0) <= e.rhoV + q.rho_error))
            return false;
    }
    return true;
}

std::optional<SaturationExpansion> read(fs::path const& file, Model1 const& model) try {
    auto curve = SaturationExpansion::from_bytes(file_contents(file.c_str()));
    if (curve && curve->same_as(model) && agrees(*curve, model)) return curve;
    return {};
} catch (EquilibriumFailure const&) {
    return {};
}
}  // namespace

std::vector<fs::path> saturation_folders(DataHome const& home) {
    return cache_folders(home, "saturation");
}

KeptSaturation kept_saturation(Fluid const& fluid, std::vector<fs::path> folders) {
    if (folders.empty()) folders = saturation_folders(fluid.home);
    const std::string name =
        fluid.equation + ',' + fluid.substance + ';' + std::to_string(fluid.set);
    // A name that would lead elsewhere is of no file.
    if (name.find('/') != std::string::npos) folders.clear();
    for (fs::path const& folder : folders)
        if (auto curve = read(folder / name, *fluid.model))
            return {std::move(*curve), folder / name, true};
    KeptSaturation kept{SaturationExpansion(*fluid.model), {}, false};
    const std::string bytes = kept.curve.bytes();
    kept.file = write_cached(folders, name, bytes);
    return kept;
}

}  // namespace corvane
