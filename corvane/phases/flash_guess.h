// Start values of flashes. Internal to the library.
#pragma once

#include <corvane/phases/flash.h>

namespace corvane {

/// The split at (p, T) that Wilson's K-factors lead to, or else the whole in its phase of lower
/// Gibbs energy: phases and fractions of a result that is not tested. False without a density root.
bool flash_guess(ModelN const& model, double p, double T, Vector<double> const& z,
                 FlashResult& result);

}  // namespace corvane
