#include <corvane/core/errors.h>
#include <corvane/core/files.h>
#include <corvane/transport/friction_theory.h>

#include <filesystem>

namespace corvane::inline detail {

std::unique_ptr<FrictionTheory> FrictionTheory::find(DataHome const& home, std::string const& substance) {
    constexpr int kSets = 9;
    for (int set = 1; set <= kSets; ++set) {
        const auto file = home.file("models/viscosity/friction_theory/MEOS/" + substance + ';' + std::to_string(set));
        if (!std::filesystem::exists(file)) continue;
        FluidOptions options;
        options.home = home;
        options.set = set;
        return std::unique_ptr<FrictionTheory>(
            new FrictionTheory(open("MEOS", substance, options), parameter_notes(file.string())));
    }
    return nullptr;
}

FrictionTheory::FrictionTheory(Fluid fluid, ParameterNotes notes) : fluid_(std::move(fluid)), notes_(std::move(notes)) {
    const ReadingFrom from(fluid_.home.names());
    Visco& visco = fluid_.model->visco;
    try {
        visco.load0();
        visco.set_id(fluid_.set);
        visco.load1("MEOS");
    } catch (ThException const&) {
        throw OpenFailure("friction theory of " + fluid_.substance + ": a file cannot be read");
    }
}

double FrictionTheory::background(double T, double rho) const {
    if (!(rho > 0.0)) return dilute(T);
    Visco const& visco = fluid_.model->visco;
    double pr = 0.0, pa = 0.0;
    const double eta = 1e-6 * visco.eta(1e-6 * rho, T, pr, pa);
    return visco.level() == ft_3 ? eta : eta + dilute(T);  // levels 1 and 2 give the dense part alone
}

}  // namespace corvane::inline detail
