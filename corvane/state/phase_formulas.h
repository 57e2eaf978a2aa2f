// Properties of a phase from its residual and ideal-gas parts, for one state or four.
#pragma once

#include <corvane/core/constants.h>
#include <corvane/core/lanes.h>

#include <array>
#include <cmath>

namespace corvane::inline detail {

/// The residual part: Ar, T·Ar_T, T²·Ar_TT, and the derivatives P_T = ∂(TZ)/∂T, P_rho = ∂(ρZ)/∂ρ.
template <class X>
struct ResidualPart {
    X a{}, Ta{}, TTa{}, Z{}, P_T{}, P_rho{};
};

/// Ideal-gas parts over R: U/T, S at unit density, CV. With the terms of mixing for mixtures.
template <class X>
struct IdealPart {
    X U{}, S{}, cv{};
};

/// As PhaseProperties.
template <class X>
struct PhaseValues {
    X p{}, Z{}, u{}, h{}, g{}, a{}, s{}, cv{}, cp{}, w{}, mu_JT{}, kappa_T{}, alpha_p{}, dp_dT{},
        dp_drho{}, n_s{};
};

[[gnu::always_inline]] inline void take_root(double& x) {
    x = std::sqrt(x);
}
[[gnu::always_inline]] inline void take_root(lanes::V4& x) {
    for (int k = 0; k < 4; ++k) x[k] = std::sqrt(x[k]);
}

template <class X>
[[gnu::always_inline]] inline void derive(X const& T, X const& rho, X const& ln_rho, double M,
                                          ResidualPart<X> const& r, IdealPart<X> const& gas,
                                          PhaseValues<X>& q) {
    const X RT = R * T;
    q.Z = r.Z;
    q.p = r.Z * rho * RT;
    q.dp_dT = rho * R * r.P_T;
    q.dp_drho = RT * r.P_rho;
    q.kappa_T = 1 / (rho * q.dp_drho);
    q.alpha_p = r.P_T / (T * r.P_rho);
    const X s_res = -r.Ta - r.a, cv_res = -2 * r.Ta - r.TTa;
    const X u = gas.U - r.Ta, s = gas.S + s_res - ln_rho, cv = gas.cv + cv_res,
            cp = cv + r.P_T * r.P_T / r.P_rho;
    q.u = RT * u;
    q.h = RT * (u + r.Z);
    q.s = R * s;
    q.a = RT * (u - s);
    q.g = RT * (u + r.Z - s);
    q.cv = R * cv;
    q.cp = R * cp;
    const X P_rho_s = r.P_rho + r.P_T * r.P_T / cv;  // (∂p/∂rho at s)/(RT)
    q.w = 1e3 * RT / M * P_rho_s;                    // J/g is 1e3 m²/s²
    take_root(q.w);
    q.n_s = P_rho_s / r.Z;
    q.mu_JT = (r.P_T / r.P_rho - 1) / (rho * q.cp);
}

}  // namespace corvane::inline detail
