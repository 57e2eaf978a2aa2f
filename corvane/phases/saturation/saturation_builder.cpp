#include <corvane/phases/saturation/saturation_builder.h>
#include <corvane/phases/saturation/saturation_polynomial.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {
constexpr double kEps = std::numeric_limits<double>::epsilon();
constexpr double kFirst = 0.1;     // z of the first state, 1 % below critical
constexpr double kColdest = 2.0;   // z: a fifth of the critical temperature
constexpr double kNearest = 1e-5;  // z: 1e-10 below critical
constexpr double kLargestCore = 0.25, kSmallestCore = 0.004;  // z
constexpr double kCutOff = 2e-15;  // relative: what the last coefficients may be
constexpr double kNoise = 4.0;     // of a solution's bound: coefficients of a rough model
constexpr double kSpan = 2.0;      // of ln p in a piece

}  // namespace

SaturationBuilder::SaturationBuilder(Model1 const& model, SaturationExpansion& to)
    : to_(to), solver_(model, {true, model.Tcrit()}) {
    solver_.critical(true);
    Tc_ = to_.Tc_ = solver_.Tc();
}

// ---- states

SaturationBuilder::Solved SaturationBuilder::remember(PureSaturation const& q) {
    const double z = saturation_z(Tc_, q.T);
    const Solved s{z,
                   q.p,
                   q.rhoL,
                   q.rhoV,
                   q.value_error,
                   q.rho_error,
                   std::log(q.rhoL / q.rhoV) / z,
                   std::log(q.rhoL) + std::log(q.rhoV)};
    ++to_.solutions_;
    return s;
}

/// From up to four known states around z, by Lagrange's polynomial in z.
void SaturationBuilder::start(double z, double& liquid, double& vapour) const {
    const auto above = std::lower_bound(known_.begin(), known_.end(), z,
                                        [](Solved const& s, double at) { return s.z < at; });
    const int size = static_cast<int>(known_.size()), i = static_cast<int>(above - known_.begin());
    const int first = std::clamp(i - 2, 0, std::max(0, size - 4)), last = std::min(size, first + 4);
    // Extrapolated to the critical point the nearest will do.
    const bool beyond = i == 0 && z < 0.5 * known_.front().z;
    double apart = 0.0, product = 0.0;
    for (int j = first; j < last; ++j) {
        double w = 1.0;
        for (int k = first; k < last; ++k)
            if (k != j) w *= (z - known_[k].z) / (known_[j].z - known_[k].z);
        if (beyond) w = j == first ? 1.0 : 0.0;
        apart += w * known_[j].apart;
        product += w * known_[j].product;
    }
    liquid = std::exp(0.5 * (product + apart * z));
    vapour = std::exp(0.5 * (product - apart * z));
}

std::optional<SaturationBuilder::Solved> SaturationBuilder::solve(double z) {
    try {
        double liquid = 0.0, vapour = 0.0;
        start(z, liquid, vapour);
        if (!(liquid > vapour) || !(vapour > 0.0)) return {};
        return remember(solver_.from(Tc_ / (1.0 + z * z), liquid, vapour));
    } catch (EquilibriumFailure const&) {
        return {};
    }
}

/// States from the last known one on, in steps that shrink where one does not arrive; each on the
/// branch that the model's own search has, as far as that tells the phases apart.
void SaturationBuilder::march(double step, double end) {
    const bool up = end > kFirst;
    const double longest = step;
    double z = kFirst;
    // z is that of a rounded T: the end is met nearly.
    for (int k = 0; k < 400 && (up ? z < 0.999999 * end : z > 1.01 * end); ++k) {
        const double next = up ? std::min(end, z + step) : std::max(end, z * step);
        const auto s = solve(next);
        const double T = Tc_ / (1.0 + next * next);
        const bool seen = s && (next < 0.01 || solver_.outermost({T, s->p, s->rhoL, s->rhoV}));
        if (seen) {
            known_.insert(up ? known_.end() : known_.begin(), *s);
            z = s->z;
            if (up) step = std::min(2.0 * step, longest);
            continue;
        }
        step = up ? 0.5 * step : std::sqrt(step);
        if (up ? step < 1e-3 : step > 0.97) return;
    }
}

// ---- pieces

/// States at the Chebyshev nodes. The core reaches from −to to to, with the vapour at z < 0.
bool SaturationBuilder::sample(double from, double to, bool core, Samples& s) {
    const double middle = core ? 0.0 : 0.5 * (from + to), half = core ? to : 0.5 * (to - from);
    for (int k = 0; k < (core ? n / 2 : n); ++k) {
        const auto q = solve(middle + half * chebyshev_node<n>(k));
        if (!q) return false;
        s.z[k] = q->z;
        s.f[0][k] = q->rhoL;
        s.f[1][k] = q->rhoV;
        s.f[2][k] = q->p;
        s.rho_error[k] = q->rho_error;
        s.p_error[k] = q->p_error;
        if (core) {
            const int j = n - 1 - k;
            s.z[j] = -q->z;
            s.f[0][j] = q->rhoV;
            s.f[1][j] = q->rhoL;
            s.f[2][j] = q->p;
            s.rho_error[j] = q->rho_error;
            s.p_error[j] = q->p_error;
        }
    }
    return true;
}

/// Are the last coefficients within rounding of the least value? `cut` receives what the series
/// lacks, by its decay. Coefficients that do not decay any more are the noise of the model, if they
/// are near the solver's bound of it; in a narrow piece they cannot be anything else.
bool SaturationBuilder::settled(double const* c, double least, double error, bool narrow,
                                double& cut) {
    const double last = std::fabs(c[n - 1]) + std::fabs(c[n - 2]);
    const double before = std::fabs(c[n - 3]) + std::fabs(c[n - 4]);
    const double ratio = std::clamp(last / before, 0.05, 0.9);
    cut = last * ratio / (1.0 - ratio) / least;
    last_ = std::max(last_, last / least);
    const bool flat = before < 4.0 * last;
    return last <= kCutOff * least || (flat && last <= kNoise * error * least) ||
           (narrow && last <= kNoise * error * least);
}

/// Interpolation at the nodes, moved to the temperatures that rounding made of them. False if the
/// coefficients do not settle.
bool SaturationBuilder::fit(Samples const& at, Piece& piece, double* cut) {
    bool all = true;
    const bool narrow = piece.to - piece.from < piece.to / 64.0;
    for (int i = 0; i < 3; ++i) {
        double f[n], c[n], a[n];
        std::copy_n(at.f[i], n, f);
        for (int pass = 0; pass < 2; ++pass) {
            chebyshev_coefficients<n>(f, c);
            monomials(n, c, a);
            for (int k = 0; pass == 0 && k < n; ++k) {
                const double x = chebyshev_node<n>(k),
                             here = (at.z[k] - piece.middle) * piece.scale;
                f[k] += polynomial_slope(n, a, x) * (x - here);
            }
        }
        const double least = *std::min_element(f, f + n);
        double const* error = i < 2 ? at.rho_error : at.p_error;
        if (!settled(c, least, *std::max_element(error, error + n), narrow, cut[i])) all = false;
        for (int k = 0; k < n; ++k) {
            piece.a[k][i] = a[k];
            piece.node_error[i][k] = error[k] * f[k];
        }
    }
    for (int k = 0; k < n; ++k) piece.a[k][3] = 0.0;
    return all;
}

/// Against the solver between the nodes, and in the core next to the critical point. Sets cut and
/// measured.
bool SaturationBuilder::check(Piece& piece, Samples const& at, double const* cut, bool core) {
    static constexpr double kBetween[] = {0.98078528040323045, -0.98078528040323045,
                                          0.55557023301960222, -0.19509032201612827};
    for (int i = 0; i < 3; ++i) {
        double sum = 0.0;
        for (auto const& row : piece.a) sum += std::fabs(row[i]);
        piece.cut[i] = cut[i] + 2.0 * n * kEps * sum / *std::min_element(at.f[i], at.f[i] + n);
    }
    for (int k = 0; k < (core ? 6 : 4); ++k) {
        const double x = k < 4 ? kBetween[k] : (k == 4 ? 1e-2 : 1e-3) * piece.scale;
        const auto q = solve(piece.middle + (core ? std::fabs(x) : x) / piece.scale);
        if (!q) return false;
        double v[3];
        evaluate(piece.a, (q->z - piece.middle) * piece.scale, v);
        const double value[3] = {q->rhoL, q->rhoV, q->p};
        for (int i = 0; i < 3; ++i) {
            const double off = std::fabs(v[i] / value[i] - 1.0);
            const double error = i < 2 ? q->rho_error : q->p_error;
            // rounding of Tc counts next to it
            if (!(off <= 1e-14 + 4.0 * cut[i] + 2.0 * error + 4.0 * kEps / q->z)) return false;
            if (k < 4) piece.measured[i] = std::max(piece.measured[i], off);
        }
    }
    // A model may lose more digits than its solver assumes.
    for (int i = 0; i < 3; ++i) piece.cut[i] += 2.0 * piece.measured[i];
    return true;
}

/// The start of T(p), for a pressure that falls all along the piece.
bool SaturationBuilder::finish(Piece& piece, bool core) const {
    double v[3];
    evaluate(piece.a, core ? 0.0 : -1.0, v);
    piece.p_from = v[2];
    evaluate(piece.a, 1.0, v);
    piece.p_to = v[2];
    double a[n], even[n / 2];
    for (int k = 0; k < n; ++k) a[k] = piece.a[k][2];
    for (int k = 0; k < n / 2; ++k) even[k] = a[2 * k];
    const auto slope = [&](double x) {
        return core ? polynomial_slope(n / 2, even, x) : polynomial_slope(n, a, x);
    };
    for (int k = 0; k <= 64; ++k)
        if (!(slope(core ? k / 64.0 : k / 32.0 - 1.0) < 0.0)) return false;
    if (!(piece.p_from > piece.p_to) || !(piece.p_to > 0.0)) return false;
    // x (in the core x²) at the nodes of w, by bisection
    constexpr int m = 8;
    double x[m], c[m];
    for (int k = 0; k < m; ++k) {
        const double p = pressure_at(piece.p_from, piece.p_to, chebyshev_node<m>(k));
        double low = core ? 0.0 : -1.0, high = 1.0;
        for (int j = 0; j < 30; ++j) {
            const double mid = 0.5 * (low + high);
            const double here = core ? polynomial(n / 2, even, mid) : polynomial(n, a, mid);
            (here > p ? low : high) = mid;
        }
        x[k] = 0.5 * (low + high);
    }
    chebyshev_coefficients<m>(x, c);
    monomials(m, c, piece.start.data());
    return true;
}

std::optional<SaturationBuilder::Piece> SaturationBuilder::piece(double from, double to,
                                                                 bool core) {
    Piece piece{};
    piece.from = core ? 0.0 : from;
    piece.to = to;
    piece.middle = core ? 0.0 : 0.5 * (from + to);
    piece.scale = core ? 1.0 / to : 2.0 / (to - from);
    Samples at;
    double cut[3];
    if (!sample(from, to, core, at) || !fit(at, piece, cut)) return {};
    if (!check(piece, at, cut, core) || !finish(piece, core)) return {};
    return piece;
}

/// The piece around the critical point, as large as its series allows: with z the last coefficient
/// grows by the power of its order.
std::optional<SaturationBuilder::Piece> SaturationBuilder::core(double coldest) {
    for (double edge = std::min(kLargestCore, coldest); edge > kSmallestCore;) {
        last_ = kCutOff;
        if (const auto found = piece(0.0, edge, true)) return found;
        edge *= std::clamp(std::pow(kCutOff / last_, 1.0 / (n - 2)), 0.3, 0.75);
    }
    return {};
}

/// Pieces from one z to another, each halved until it settles. False: it ends in between, and
/// the pieces reach up to there.
bool SaturationBuilder::fill(double from, double to, std::vector<Piece>& pieces) {
    const auto a = solve(from), b = solve(to);
    const bool wide = a && b && std::log(a->p / b->p) > kSpan;
    if (a && b && !wide)
        if (const auto whole = piece(from, to, false)) {
            pieces.push_back(*whole);
            return true;
        }
    if (to - from < (wide ? 1e-3 : 1.0 / 100.0) * to) return false;
    const double middle = 0.5 * (from + to);
    return fill(from, middle, pieces) && fill(middle, to, pieces);
}

void SaturationBuilder::build() {
    known_.push_back(remember(solver_.solve(Tc_ / (1.0 + kFirst * kFirst))));
    march(0.5, kNearest);
    march(0.1, kColdest);
    const double coldest = known_.back().z;
    std::vector<Piece> all, near;
    double edge = kLargestCore;
    if (const auto core = this->core(coldest)) {
        near.push_back(*core);
        edge = core->to;
    } else {  // towards the critical point, as far as there are pieces
        for (double to = edge; to > kNearest; to *= 0.5) {
            std::vector<Piece> half;
            if (!fill(0.5 * to, to, half)) break;
            near.insert(near.begin(), half.begin(), half.end());
        }
    }
    for (double from = edge; from < coldest; from *= 2.0)
        if (!fill(from, std::min(coldest, 2.0 * from), all)) break;
    near.insert(near.end(), all.begin(), all.end());
    to_.pieces_ = std::move(near);
}

}  // namespace corvane
