// What tests of fits share.
#pragma once

#include <corvane/fit/fit.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/state/phase_properties.h>

#include <gtest/gtest.h>

#include <cmath>

namespace corvane::fit {

inline DataHome here() {
    return DataHome(".");
}
inline Fluid fluid(std::string const& equation, std::string const& substance, int set = 0) {
    return open(equation, substance, {set, here()});
}
inline Mixture binary(std::string const& model, std::string const& a, std::string const& b) {
    MixtureOptions options;
    options.home = here();
    return open_mixture(model, {a, b}, options);
}

/// Vapour pressures and liquid densities of a model between two temperatures.
inline DataSet saturation(Model1 const& model, double first, double last, int count) {
    DataSet set;
    set.name = "saturation";
    for (int k = 0; k < count; ++k) {
        Point p;
        p.T = first + (last - first) * k / (count - 1);
        const PureSaturation s = pure_saturation_T(model, p.T);
        p.p = s.p;
        p.observed = {{Observable::p, s.p}, {Observable::rhoL, s.rhoL}};
        set.points.push_back(p);
    }
    return set;
}
inline bool warned(Result const& r, std::string const& word) {
    for (std::string const& text : r.warnings)
        if (text.find(word) != std::string::npos) return true;
    return false;
}

}  // namespace corvane::fit
