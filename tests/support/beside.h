// Equations on the authors' kit beside the plug-ins that are written by hand: the same parameters
// in both.
#pragma once

#include <corvane/mixture/modeln.h>
#include <corvane/pure/attach.h>
#include <corvane/pure/model1.h>
#include <tests/support/shipped.h>

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

struct KitEquation {
    friend std::ostream& operator<<(std::ostream& out, KitEquation const& e) {
        return out << e.by_hand;
    }
    char const *by_hand, *on_kit, *mixing;
    /// Number of the parameter by hand for each on the kit.
    std::vector<int> parameter;
};
inline std::vector<KitEquation> const& kit_equations() {
    static const std::vector<KitEquation> all{
        {"PR", "PR76", "vdW1", {0, 1, 2, 3, 8}},
        {"SRK", "SRKkit", "vdW1", {0, 1, 2, 3}},
        {"PCSAFT", "PCSAFTkit", "LB", {0, 1, 2, 3, 4, 5, 6, 7}}};
    return all;
}

/// Whether the equation on the kit has what a set asks of the one by hand: cubic ones leave out
/// other alpha functions, SRK the translation.
inline bool on_kit(KitEquation const& e, Model1 const& by_hand) {
    if (e.by_hand == std::string("PCSAFT")) return true;
    return by_hand.param(4) == 0.0 && (e.parameter.size() > 4 || by_hand.param(8) == 0.0);
}

/// Changes to a folder in which the data home and the libraries of `plugins` are found.
inline void enter_with_plugins(std::filesystem::path const& folder,
                               std::filesystem::path const& home, char const* plugins) {
    namespace fs = std::filesystem;
    fs::create_directories(folder);
    fs::current_path(folder);
    if (!fs::exists("CorvaneS")) fs::create_directory_symlink(home / "CorvaneS", "CorvaneS");
    for (auto const& file : fs::directory_iterator(plugins))
        if (!fs::exists(file.path().filename()))
            fs::create_symlink(file.path(), file.path().filename());
}

using MixtureModel = std::unique_ptr<ModelN, corvane::Detach>;

inline void copy_parameters(KitEquation const& e, Model1 const& from, Model1& to) {
    for (int k = 0; k < to.mpar(); ++k)
        to.param(k, from.param(e.parameter[static_cast<unsigned>(k)]));
    to.Tcrit(from.Tcrit());
    to.pcrit(from.pcrit());
    to.vcrit(from.vcrit());
}
struct PurePair {
    Model hand, kit;
};
inline PurePair pure_pair(KitEquation const& e, char const* name) {
    PurePair m{load_set(e.by_hand, name), Model(attach1(e.on_kit))};
    copy_parameters(e, *m.hand, *m.kit);
    return m;
}
struct MixturePair {
    MixtureModel hand, kit;
};
/// With k_ij = 0.01·(i + j) and l_ij = −0.005·i·j.
inline MixturePair mixture_pair(KitEquation const& e, std::vector<char const*> const& names) {
    MixturePair m{MixtureModel(attachN(e.by_hand, e.mixing)),
                  MixtureModel(attachN(e.on_kit, e.mixing))};
    const int n = static_cast<int>(names.size());
    m.hand->alloc(n, e.by_hand);
    m.kit->alloc(n, e.on_kit);
    for (int i = 0; i < n; ++i) {
        Model1& component = *m.hand->mdl1[i];
        component.name(names[static_cast<unsigned>(i)]);
        component.id(1);
        component.load(e.by_hand);
        copy_parameters(e, component, *m.kit->mdl1[i]);
        for (int j = 0; j < i; ++j)
            for (ModelN* both : {m.hand.get(), m.kit.get()}) {
                both->param(0, i, j, 0.01 * (i + j));
                both->param(1, i, j, -0.005 * i * j);
            }
    }
    return m;
}
