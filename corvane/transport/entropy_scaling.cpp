#include <corvane/core/constants.h>
#include <corvane/core/errors.h>
#include <corvane/transport/dilute_gas.h>
#include <corvane/transport/entropy_scaling.h>
#include <corvane/transport/rows.h>

#include <cmath>
#include <numbers>

namespace corvane::inline detail {
namespace {

constexpr double kAvogadro = 6.02214129e23;  // that of the plug-in's Ts and vs

EntropyScalingRow needed_row(DataHome const& home, std::string const& name) {
    const auto row = entropy_scaling_row(home, name);
    if (!row) throw OpenFailure("no entropy scaling of " + name + " in the data tree");
    return *row;
}

Mixture open_sets(DataHome const& home, std::vector<std::string> const& components) {
    MixtureOptions options;
    options.home = home;
    for (std::string const& name : components) options.sets.push_back(needed_row(home, name).set);
    return open_mixture("PCSAFT+LB", components, options);
}

}  // namespace

std::optional<EntropyScalingRow> entropy_scaling_row(DataHome const& home,
                                                     std::string const& substance) {
    const auto v = row_of(home, "entropy_scaling", substance, 7, 6);
    if (!v) return {};
    return EntropyScalingRow{static_cast<int>((*v)[0]), {(*v)[1], (*v)[2], (*v)[3], (*v)[4]}, (*v)[5]};
}

EntropyScaling::EntropyScaling(DataHome const& home, std::vector<std::string> const& components)
    : mixture_(open_sets(home, components)) {
    for (int i = 0; i < mixture_.size(); ++i) {
        Model1& model = *mixture_.model->mdl1[i];  // parameters: plug-in PCSAFT
        const double cube = *model.ppar(2) * 6.0 / (std::numbers::pi * kAvogadro);  // cm³
        segments_.push_back({*model.ppar(0), *model.ppar(3), 1e7 * std::cbrt(cube), *model.ppar(1),
                             needed_row(home, components[static_cast<std::size_t>(i)]).c});
    }
}

void EntropyScaling::translate(int component, Model1 const& model) {
    segments_[static_cast<std::size_t>(component)].shift = std::make_shared<Lazy<VolumeShift> const>(
        [&model, own = mixture_.model->mdl1[component]] { return VolumeShift(model, *own); });
}

double EntropyScaling::chapman_enskog(int i, double T) const {
    Segment const& s = segments_[static_cast<std::size_t>(i)];
    return chapman_enskog_viscosity(T, s.M, s.sigma, s.epsilon);
}

double EntropyScaling::operator()(double T, double rho, Vector<double> const& x) const {
    const int n = mixture_.size();
    const auto segment = [&](int i) -> Segment const& { return segments_[static_cast<std::size_t>(i)]; };
    const auto eta = [&](int i) { return chapman_enskog(i, T); };
    const double reference = of_gases(
        n, [&](int i) { return x[i]; }, eta, eta, [&](int i) { return segment(i).M; });
    double m = 0.0, shift = 0.0;
    for (int i = 0; i < n; ++i) {
        m += x[i] * segment(i).m;
        if (rho > 0.0 && segment(i).shift) shift += x[i] * (**segment(i).shift)(T);
    }
    double s = 0.0;
    if (rho > 0.0) {
        const double own = shifted_density(rho, shift);
        double d[2];
        DerivN const* exact = mixture_.model->derivatives();
        s = exact && exact->deriv(own, T, x, 0, 1, d)
                ? -(d[0] + d[1]) / m
                : mixture_.model->Sr(own, T, x) / m;
    }
    std::array<double, 4> c{};
    for (int i = 0; i < n; ++i)
        for (std::size_t k = 0; k < 4; ++k)
            c[k] += x[i] * (k == 0 ? 1.0 : segment(i).m / m) * segment(i).c[k];
    return reference * std::exp(c[0] + s * (c[1] + s * (c[2] + s * c[3])));
}

}  // namespace corvane::inline detail
