#include <corvane/core/errors.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/pure/model1.h>
#include <corvane/transport/coexistence.h>

#include <cmath>
#include <numbers>

namespace corvane::inline detail {
namespace {

constexpr double kSameDensity = 1e-7;  // densities of saturation that were solved elsewhere
// The largest error between nodes was 3.8 times the last two coefficients (five temperatures in each piece of 138 reference
// equations, where they have kinks; else below one).
constexpr double kSeriesCaution = 8.0;
constexpr int kSeriesPieces = 16;
constexpr double kSeriesWidth = 2.0 / kSeriesPieces;  // in z; at 2 is a fifth of the critical temperature

std::optional<PureSaturation> saturation_if_any(Model1 const& model, double T) {
    try {
        return pure_saturation_T(model, T);
    } catch (EquilibriumFailure const&) {
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return {};
}

double series_angle(int node, int order) { return std::numbers::pi * (node + 0.5) / order; }

/// Clenshaw's recurrence.
template <class Coefficients>
double series_sum(Coefficients const& c, double x) {
    double b1 = 0.0, b2 = 0.0;
    for (std::size_t k = c.size(); k-- > 1;) {
        const double b = 2.0 * x * b1 - b2 + c[k];
        b2 = b1, b1 = b;
    }
    return x * b1 - b2 + c[0];
}

}  // namespace

Coexistence::Coexistence(Model1 const& model) : model_(model) {
    for (int piece = 0; piece < kSeriesPieces; ++piece) pieces_.emplace_back([this, piece] { return solved(piece); });
}

std::optional<Coexistence::Piece> Coexistence::solved(int piece) const {
    Piece result;
    for (int node = 0; node < kOrder; ++node) {
        const double z = kSeriesWidth * (piece + 0.5 + 0.5 * std::cos(series_angle(node, kOrder)));
        const auto s = saturation_if_any(model_, model_.Tcrit() / (1.0 + z * z));
        if (!s) return {};
        for (int k = 0; k < kOrder; ++k) {
            const double part = (k == 0 ? 1.0 : 2.0) / kOrder * std::cos(k * series_angle(node, kOrder));
            result.liquid.c[static_cast<std::size_t>(k)] += part * std::log(s->rhoL);
            result.vapour.c[static_cast<std::size_t>(k)] += part * std::log(s->rhoV);
        }
    }
    for (Series* s : {&result.liquid, &result.vapour})
        s->error = kSeriesCaution * (std::fabs(s->c[kOrder - 1]) + std::fabs(s->c[kOrder - 2]));
    return result;
}

std::optional<bool> Coexistence::tabulated(double T, double rho) const {
    const double z = std::sqrt(model_.Tcrit() / T - 1.0), place = z / kSeriesWidth;
    if (!(place < kSeriesPieces)) return {};
    const int i = static_cast<int>(place);
    auto const& piece = *pieces_[static_cast<std::size_t>(i)];
    const double x = 2.0 * (place - i) - 1.0;
    if (!piece || (i == 0 && x < -std::cos(series_angle(0, kOrder)))) return {};  // nearer to the critical point than solved
    const double l = std::log(rho), above = l - series_sum(piece->vapour.c, x), below = series_sum(piece->liquid.c, x) - l;
    // What is left out is less than what a density of saturation is told by, or decides nothing near it.
    const auto open = [](double apart, double error) { return error > 0.1 * kSameDensity && std::fabs(apart) < kSameDensity + error; };
    if (open(above, piece->vapour.error) || open(below, piece->liquid.error)) return {};
    return above > kSameDensity && below > kSameDensity;
}

bool Coexistence::parts(double T, double rho) const {
    if (!(T < model_.Tcrit()) || rho == 0.0) return false;
    if (const auto known = tabulated(T, rho)) return *known;
    const auto s = saturation_if_any(model_, T);
    return s && rho > s->rhoV * (1.0 + kSameDensity) && rho < s->rhoL * (1.0 - kSameDensity);
}

}  // namespace corvane::inline detail
