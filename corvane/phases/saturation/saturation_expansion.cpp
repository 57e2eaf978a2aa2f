#include <corvane/core/constants.h>
#include <corvane/core/hash.h>
#include <corvane/phases/saturation/pure_saturation_solver.h>
#include <corvane/phases/saturation/saturation_builder.h>
#include <corvane/phases/saturation/saturation_expansion.h>
#include <corvane/phases/saturation/saturation_polynomial.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace corvane {
namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kEps = std::numeric_limits<double>::epsilon();
constexpr int kCells = 256;
constexpr int kNewton = 6;  // steps of T(p); two are usual
}  // namespace

SaturationExpansion::SaturationExpansion(Model1 const& model) : key_(key_of(model)) {
    SaturationBuilder(model, *this).build();
    if (pieces_.empty())
        throw EquilibriumFailure(EquilibriumFailure::Kind::gave_up, std::string(model.name()),
                                 "SaturationExpansion", static_cast<int>(solutions_), kNaN,
                                 "the saturation curve is not smooth");
    index();
}

/// What follows from the pieces.
void SaturationExpansion::index() {
    const auto T_of = [&](double z) { return Tc_ / (1.0 + z * z); };
    Piece const &first = pieces_.front(), &last = pieces_.back();
    T_max_ = first.from > 0.0 ? T_of(first.from) : Tc_;
    T_min_ = T_of(last.to);
    p_max_ = first.p_from;
    p_min_ = last.p_to;
    for (std::size_t k = 1; k < pieces_.size(); ++k) pieces_[k].p_from = pieces_[k - 1].p_to;
    cell_scale_ = kCells / last.to;
    cells_.assign(kCells + 1, 0);
    std::size_t k = 0;
    for (int i = 0; i <= kCells; ++i) {
        while (k + 1 < pieces_.size() && pieces_[k].to * cell_scale_ < i) ++k;
        cells_[i] = static_cast<std::uint16_t>(k);
    }
}

SaturationExpansion::Piece const* SaturationExpansion::piece(double z) const noexcept {
    Piece const* at = &pieces_[cells_[static_cast<std::size_t>(z * cell_scale_)]];
    while (z > at->to && at != &pieces_.back()) ++at;
    return at;
}

bool SaturationExpansion::at_T(double T, Point& to) const noexcept {
    if (!(T >= T_min_ && T <= T_max_) || T >= Tc_) return false;
    const double z = std::min(saturation_z(Tc_, T), pieces_.back().to);
    Piece const& at = *piece(z);
    double v[3];
    evaluate(at.a, (z - at.middle) * at.scale, v);
    to = {T, v[2], v[0], v[1]};
    return true;
}

double SaturationExpansion::p_at(double T) const noexcept {
    Point s;
    return at_T(T, s) ? s.p : kNaN;
}

bool SaturationExpansion::at_p(double p, Point& to) const noexcept {
    if (!(p >= p_min_ && p <= p_max_)) return false;
    const auto found = std::partition_point(pieces_.begin(), pieces_.end(),
                                            [p](Piece const& q) { return q.p_to > p; });
    Piece const& at = found == pieces_.end() ? pieces_.back() : *found;
    const bool core = at.from == 0.0;  // there the unknown is x²
    const double low = core ? 0.0 : -1.0;
    double x = polynomial(8, at.start.data(), pressure_w(at.p_from, at.p_to, p));
    x = std::clamp(x, low, 1.0);
    for (int k = 0; k < kNewton; ++k) {
        double f = 0.0, slope = 0.0;
        for (int i = core ? order - 2 : order - 1; i >= 0; i -= core ? 2 : 1) {
            slope = slope * x + f;
            f = f * x + at.a[i][2];
        }
        const double step = (f - p) / slope, last = x;
        x = std::clamp(x - step, low, 1.0);
        if (std::fabs(x - last) < 3e-8) break;
    }
    if (core) x = std::sqrt(x);
    const double z = at.middle + x / at.scale;
    double v[3];
    evaluate(at.a, x, v);
    to = {Tc_ / (1.0 + z * z), p, v[0], v[1]};
    return true;
}

double SaturationExpansion::T_at(double p) const noexcept {
    Point s;
    return at_p(p, s) ? s.T : kNaN;
}

SaturationErrors SaturationExpansion::errors(double T, bool seen) const noexcept {
    Point s;
    if (!at_T(T, s)) return {kNaN, kNaN, kNaN, kNaN};
    const double z = std::min(saturation_z(Tc_, T), pieces_.back().to);
    Piece const& at = *piece(z);
    const double x = (z - at.middle) * at.scale;
    const double value[3] = {s.rhoL, s.rhoV, s.p};
    const auto lagrange = chebyshev_cardinals<order>(x);
    double e[3], by_lnT[3];  // dz/dlnT = −(1 + z²)/(2z)
    for (int i = 0; i < 3; ++i) {
        double a[order];
        for (int k = 0; k < order; ++k) a[k] = at.a[k][i];
        by_lnT[i] = std::fabs(polynomial_slope(order, a, x) * at.scale * (1.0 + z * z) /
                              (2.0 * z * value[i]));
        e[i] = seen ? at.measured[i] : at.cut[i] + 4.0 * kEps * by_lnT[i];
        // What errors at the nodes make of it: Lagrange's polynomials, by their absolute values.
        for (int k = 0; !seen && k < order; ++k)
            e[i] += std::fabs(lagrange[k]) * at.node_error[i][k] / value[i];
    }
    return {e[2], e[0], e[1], e[2] / by_lnT[2] + (seen ? 0.0 : 4.0 * kEps)};
}

bool SaturationExpansion::within(double error, double T) const noexcept {
    const SaturationErrors e = bound(T);
    return e.p <= error && e.rhoL <= error && e.rhoV <= error;
}

PureSaturation SaturationExpansion::certified_T(Model1 const& model, double T) const {
    Point s;
    if (at_T(T, s)) try {
            PureSaturationSolver solver(model, {true, T});
            solver.critical(T > 0.97 * Tc_);
            return solver.from(T, s.rhoL, s.rhoV);
        } catch (EquilibriumFailure const&) {  // next to the critical point, say
        }
    return pure_saturation_T(model, T);
}

PureSaturation SaturationExpansion::certified_p(Model1 const& model, double p) const {
    Point s;
    if (!at_p(p, s)) return pure_saturation_p(model, p);
    PureSaturation q = certified_T(model, s.T);
    // ln p by ln T, between neighbours that are far beyond rounding
    const double h = std::min(1e-4, 0.25 * (Tc_ - s.T) / s.T);
    Point cold;
    if (!at_T(s.T * (1.0 - h), cold)) return pure_saturation_p(model, p);
    const double slope = std::log(s.p / cold.p) / -std::log1p(-h), off = std::log(q.p / p);
    if (std::fabs(off) > 0.5 * q.value_error + 1e-13) return pure_saturation_p(model, p);
    q.value_error = (q.value_error + std::fabs(off)) / slope * 1.1 + 4.0 * kEps;
    const SaturationErrors e = bound(cold.T);
    PureSaturationSolver::add_error_of_T(q, h, cold.rhoL, cold.rhoV,
                                         q.rho_error + std::max(e.rhoL, e.rhoV));
    q.p = p;
    return q;
}

std::uint64_t SaturationExpansion::key_of(Model1 const& model) {
    Hash h;
    h.add(model.eos(), std::strlen(model.eos()));
    for (int i = 0; i < model.mpar(); ++i) h.add(model.param(i));
    const double Tc = model.Tcrit(), rho_c = 1.0 / model.vcrit();
    for (double x : {R, Tc, rho_c, model.pcrit()}) h.add(x);
    for (double T : {0.5, 0.8, 0.99, 1.2})
        for (double rho : {0.01, 0.5, 1.5, 2.5}) {
            h.add(model.Ar(rho * rho_c, T * Tc));
            h.add(model.Z(rho * rho_c, T * Tc));
        }
    return h.value();
}

bool SaturationExpansion::same_as(Model1 const& model) const {
    return key_of(model) == key_;
}

// ---- bytes

namespace {
constexpr char kMagic[8] = {'C', 'o', 'r', 'v', 'S', 'a', 't', '1'};
constexpr std::uint64_t kMostPieces = 60000;
struct Header {
    char magic[8];
    double one;  // 1: of the same kind of number
    std::uint64_t piece_size, pieces, key;
    double Tc;
    std::int64_t solutions;
};
}  // namespace

std::string SaturationExpansion::bytes() const {
    static_assert(std::is_trivially_copyable_v<Piece>);
    Header head{{}, 1.0, sizeof(Piece), pieces_.size(), key_, Tc_, solutions_};
    std::memcpy(head.magic, kMagic, sizeof kMagic);
    std::string out(reinterpret_cast<char const*>(&head), sizeof head);
    out.append(reinterpret_cast<char const*>(pieces_.data()), pieces_.size() * sizeof(Piece));
    Hash h;
    h.add(out.data(), out.size());
    const std::uint64_t sum = h.value();
    out.append(reinterpret_cast<char const*>(&sum), sizeof sum);
    return out;
}

std::optional<SaturationExpansion> SaturationExpansion::from_bytes(std::string const& bytes) {
    Header head;
    std::uint64_t sum = 0;
    if (bytes.size() < sizeof head + sizeof sum) return {};
    std::memcpy(&head, bytes.data(), sizeof head);
    const std::size_t body = bytes.size() - sizeof sum;
    std::memcpy(&sum, bytes.data() + body, sizeof sum);
    Hash h;
    h.add(bytes.data(), body);
    if (std::memcmp(head.magic, kMagic, sizeof kMagic) != 0 || head.one != 1.0 ||
        head.piece_size != sizeof(Piece) || head.pieces < 1 || head.pieces > kMostPieces ||
        body != sizeof head + head.pieces * sizeof(Piece) || h.value() != sum)
        return {};
    SaturationExpansion e;
    e.Tc_ = head.Tc;
    e.key_ = head.key;
    e.solutions_ = head.solutions;
    e.pieces_.resize(head.pieces);
    std::memcpy(e.pieces_.data(), bytes.data() + sizeof head, head.pieces * sizeof(Piece));
    // A checksum is no proof against a foreign hand: what reading relies on is looked at.
    double z = e.pieces_.front().from;
    if (!(e.Tc_ > 0.0) || !(z >= 0.0)) return {};
    for (Piece const& q : e.pieces_) {
        if (q.from != z || !(q.to > q.from) || !std::isfinite(q.to)) return {};
        z = q.to;
    }
    e.index();
    return e;
}

}  // namespace corvane
