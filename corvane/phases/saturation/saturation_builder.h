// Builds the pieces of a SaturationExpansion from converged states. Internal to the library.
#pragma once

#include <corvane/phases/saturation/pure_saturation_solver.h>
#include <corvane/phases/saturation/saturation_expansion.h>

#include <optional>
#include <vector>

namespace corvane::inline detail {

class SaturationBuilder {
  public:
    SaturationBuilder(Model1 const& model, SaturationExpansion& to);
    void build();

  private:
    using Piece = SaturationExpansion::Piece;
    static constexpr int n = SaturationExpansion::order;
    /// A solved state; z is that of its rounded temperature.
    struct Solved {
        double z, p, rhoL, rhoV, p_error, rho_error;
        /// ln(rhoL/rhoV)/z and ln(rhoL·rhoV), which vary little with z.
        double apart, product;
    };
    /// Values at the nodes, and the solver's bounds of their relative errors.
    struct Samples {
        double z[n], f[3][n], rho_error[n], p_error[n];
    };

    std::optional<Solved> solve(double z);
    Solved remember(PureSaturation const& q);
    void start(double z, double& liquid, double& vapour) const;
    void march(double step, double end);
    bool sample(double from, double to, bool core, Samples& to_samples);
    bool fit(Samples const& at, Piece& piece, double* cut);
    bool settled(double const* c, double least, double error, bool narrow, double& cut);
    bool check(Piece& piece, Samples const& at, double const* cut, bool core);
    bool finish(Piece& piece, bool core) const;
    std::optional<Piece> piece(double from, double to, bool core);
    std::optional<Piece> core(double coldest);
    bool fill(double from, double to, std::vector<Piece>& pieces);

    SaturationExpansion& to_;
    PureSaturationSolver solver_;
    double Tc_;
    std::vector<Solved> known_;  // by rising z: starts for all others
    double last_ = 0.0;          // the largest last coefficient of the piece that was tried last
};

}  // namespace corvane::inline detail
