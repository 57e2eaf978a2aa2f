// What traced curves are asked for alike.
#pragma once

#include <corvane/phases/report/progress.h>

namespace corvane {

struct Validity;

/// What every traced curve is asked for. The header of each says in what a step is measured; some have
/// defaults of their own.
struct CurveOptions {
    double step = 0.05;                  ///< longest step
    int points = 1000;                   ///< bound of their number, of every line or branch
    Validity const* validity = nullptr;  ///< for the flags of the certificates, where points have one
    Progress progress;
};

/// Of a curve along which p or T varies: where it ends.
struct LineOptions : CurveOptions {
    double p_max = 1000.0;  ///< MPa
    double T_min = 0.0;     ///< K; 0: 0.3 of the lower critical temperature
};

}  // namespace corvane
