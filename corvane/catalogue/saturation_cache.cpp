#include <corvane/catalogue/saturation_cache.h>
#include <corvane/core/files.h>

#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>

#include <unistd.h>

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

bool write(fs::path const& file, std::string const& bytes) try {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    NewFile made(file.string());
    std::fwrite(bytes.data(), 1, bytes.size(), made.stream());
    if (std::fflush(made.stream()) != 0 || fsync(fileno(made.stream())) != 0) return false;
    made.commit(static_cast<long>(bytes.size()));
    return true;
} catch (ThException const&) {
    return false;
}

fs::path variable(char const* name) {
    char const* value = std::getenv(name);
    return value && *value == '/' ? fs::path(value) : fs::path();
}
}  // namespace

std::vector<fs::path> saturation_folders(DataHome const& home) {
    std::vector<fs::path> folders{home.directory() / "cache" / "saturation"};
    fs::path user = variable("XDG_CACHE_HOME");
    if (user.empty())
        if (user = variable("HOME"); !user.empty()) user /= ".cache";
    if (!user.empty()) folders.push_back(user / "corvane" / "saturation");
    return folders;
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
    for (fs::path const& folder : folders)
        if (write(folder / name, bytes)) {
            kept.file = folder / name;
            break;
        }
    return kept;
}

}  // namespace corvane
