// The envelope of one composition, kept for many saturation points of it.
//
//     const corvane::KeptEnvelope envelope(*mixture.model, z);
//     corvane::SaturationOptions options;
//     options.envelope = &envelope;
//     for (double T : temperatures) … corvane::bubble_T(*mixture.model, T, z, options) …
#pragma once

#include <corvane/core/api.h>
#include <corvane/phases/saturation/envelope.h>

class ModelN;

namespace corvane {

/// Traced once, as the third step of saturation_T traces it for each point that its other steps do
/// not find, and read there. Where T (or p) lies beyond all of the curve, by 2 % (10 % of p), and
/// the curve is whole and has the critical point of the composition on it, no solution is looked
/// for next to that: the search over all pressures decides. A refusal then costs 4 to 6
/// solutions, in place of 7 to 11 where it is 4 % above the spinodal (30 % of p) and 60 to 140
/// nearer to it, and this object some 40.
///
/// Holds for the parameters that the model had. Reading is free of state and may go on in many
/// threads.
class CORVANE_API KeptEnvelope {
  public:
    /// @throws ThException 5, MthException 2; what the model throws
    KeptEnvelope(ModelN const& model, Vector<double> const& z);

    /// Of this model, the object, and of these mole fractions, bit by bit?
    bool of(ModelN const& model, Vector<double> const& z) const;
    /// The curve, with `found`.
    Envelope const& curve() const { return curve_; }
    /// False: nothing could be traced; a pure fluid has none.
    bool found() const { return found_; }
    bool whole() const { return found_ && !stuck_; }  ///< not lost before its end
    /// See above. at_T: is `value` a temperature [K], or a pressure [MPa]?
    bool beyond(bool at_T, double value) const { return value > (at_T ? T_end_ : p_end_); }

  private:
    ModelN const* model_;
    Vector<double> z_;
    Envelope curve_;
    bool found_ = false, stuck_ = false;
    double T_end_ = 1e300, p_end_ = 1e300;
};

}  // namespace corvane
