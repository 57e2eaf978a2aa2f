#include <corvane/core/errors.h>
#include <corvane/core/tasks.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/saturation/pure_saturation.h>
#include <corvane/phases/saturation/saturation_expansion.h>
#include <corvane/pure/model1.h>
#include <corvane/state/equilibrium_columns.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <optional>

namespace corvane {
namespace {
constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t kRowsOfATask = 64;  // and of a piece whose rows start from each other
constexpr double kPrecise = 1e-10;        // a precomputed curve answers where it is as good

void put(double* column, std::size_t i, double value) {
    if (column) column[i] = value;
}
/// `width` values in a row; those beyond `have` are not-a-number.
void put(double* column, std::size_t i, std::size_t width, Vector<double> const* from) {
    if (!column) return;
    for (std::size_t k = 0; k < width; ++k)
        column[i * width + k] = from ? (*from)[static_cast<int>(k)] : kNoValue;
}

/// What a solver made of a row; what it throws otherwise, like the lack of memory, goes through.
template <class F>
RowStatus attempt(F const& solve) {
    try {
        solve();
        return RowStatus::solved;
    } catch (EquilibriumFailure const& e) {
        return e.kind() == EquilibriumFailure::Kind::no_solution ? RowStatus::no_solution
                                                                 : RowStatus::gave_up;
    } catch (ThException const& e) {
        return e.number == th_no_ideal ? RowStatus::no_ideal : RowStatus::invalid;
    } catch (MthException const& e) {
        return e.number == mth_iterations ? RowStatus::gave_up : RowStatus::invalid;
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const&) {  // of a model
        return RowStatus::invalid;
    }
}

void put_certificate(CertificateColumns const& to, std::size_t i, Certificate const& c,
                     RowStatus status) {
    put(to.dmu, i, c.dmu), put(to.dp, i, c.dp), put(to.tpd, i, c.tpd);
    put(to.value_error, i, c.value_error), put(to.x_error, i, c.x_error);
    put(to.rho_error, i, c.rho_error), put(to.apart_error, i, c.apart_error);
    if (to.flags)
        to.flags[i] =
            static_cast<std::uint8_t>((c.estimated_pairs ? 1 : 0) | (c.extrapolated ? 2 : 0) |
                                      (c.below_triple ? 4 : 0) | (c.near_trivial ? 8 : 0));
    if (to.status) to.status[i] = status;
}
Certificate not_solved() {
    Certificate c;
    c.dmu = c.dp = c.tpd = kNoValue;
    return c;
}

class PureRows {
  public:
    PureRows(Model1 const& model, bool at_T, double const* values, PureSaturationColumns const& to,
             SaturationExpansion const* curve)
        : model_(model), at_T_(at_T), values_(values), to_(to), curve_(curve) {}

    bool row(std::size_t i) const {
        PureSaturation s;
        const RowStatus status = attempt([&] {
            if (!curve_ || !read(values_[i], s))
                s = at_T_ ? pure_saturation_T(model_, values_[i])
                          : pure_saturation_p(model_, values_[i]);
        });
        Certificate c = not_solved();
        if (status == RowStatus::solved)
            c.value_error = s.value_error, c.rho_error = s.rho_error, c.apart_error = s.apart_error;
        else
            s.T = s.p = s.rhoL = s.rhoV = kNoValue;
        put(to_.T, i, s.T), put(to_.p, i, s.p), put(to_.rhoL, i, s.rhoL), put(to_.rhoV, i, s.rhoV);
        put_certificate(to_, i, c, status);
        return status == RowStatus::solved;
    }

  private:
    bool read(double value, PureSaturation& s) const {
        SaturationExpansion::Point at;
        if (at_T_ ? !curve_->at_T(value, at) : !curve_->at_p(value, at)) return false;
        const SaturationErrors e = curve_->bound(at.T);
        const double error = at_T_ ? e.p : e.T, rho = std::max(e.rhoL, e.rhoV);
        if (!(error <= kPrecise) || !(rho <= kPrecise)) return false;
        s = {at.T, at.p, at.rhoL, at.rhoV, error, rho, kNoValue};
        return true;
    }
    Model1 const& model_;
    bool at_T_;
    double const* values_;
    PureSaturationColumns const& to_;
    SaturationExpansion const* curve_;
};

std::size_t pure_rows(Model1 const& model, bool at_T, std::size_t n, double const* values,
                      PureSaturationColumns const& to, int threads,
                      SaturationExpansion const* curve) {
    const PureRows rows(model, at_T, values, to, curve);
    return over_threads(n, kRowsOfATask, threads, [&](std::size_t i, std::size_t last) {
        std::size_t failed = 0;
        for (; i < last; ++i) failed += rows.row(i) ? 0 : 1;
        return failed;
    });
}

Vector<double> row_of(Compositions const& z, std::size_t i, int N) {
    Vector<double> x(N);
    std::copy_n(z.z + (z.one_for_all ? 0 : i * static_cast<std::size_t>(N)), N, &x[0]);
    return x;
}
int components(ModelN const& model) {
    const int N = model.mdl1.size();
    if (N < 1) throw MthException(mth_dimensions);
    return N;
}

/// solve(i, z, before) returns the result of row i, write(i, z, result or null, status) puts it
/// into the columns.
template <class Result, class Solve, class Write>
std::size_t mixture_rows(ModelN const& model, std::size_t n, Compositions const& z,
                         BatchOptions const& options, Solve const& solve, Write const& write) {
    const int N = components(model);
    return over_threads(n, kRowsOfATask, options.threads, [&](std::size_t i, std::size_t last) {
        std::size_t failed = 0;
        std::optional<Result> before;
        for (; i < last; ++i) {
            const Vector<double> x = row_of(z, i, N);
            std::optional<Result> now;
            const RowStatus status = attempt(
                [&] { now = solve(i, x, options.neighbours && before ? &*before : nullptr); });
            write(i, x, now ? &*now : nullptr, status);
            if (now)
                before = std::move(now);
            else
                ++failed;
        }
        return failed;
    });
}

std::size_t saturation_rows(ModelN const& model, bool at_T, Saturated kind, std::size_t n,
                            double const* values, Compositions const& z,
                            SaturationColumns const& to, BatchOptions const& options) {
    const std::size_t N = static_cast<std::size_t>(components(model));
    return mixture_rows<SaturationPoint>(
        model, n, z, options,
        [&](std::size_t i, Vector<double> const& x, SaturationPoint const* before) {
            SaturationOptions one;
            one.branch = options.branch, one.validity = options.validity, one.test = options.test;
            one.start = before, one.envelope = options.envelope;
            return at_T ? saturation_T(model, kind, values[i], x, one)
                        : saturation_p(model, kind, values[i], x, one);
        },
        [&](std::size_t i, Vector<double> const&, SaturationPoint const* r, RowStatus status) {
            put(to.T, i, r ? r->T : kNoValue), put(to.p, i, r ? r->p : kNoValue);
            put(to.rho, i, r ? r->given.rho : kNoValue);
            put(to.rho_incipient, i, r ? r->incipient.rho : kNoValue);
            put(to.x_incipient, i, N, r ? &r->incipient.x : nullptr);
            if (to.phases)
                to.phases[i] = r ? 1 + std::max(1, static_cast<int>(r->split.size())) : 0;
            put_certificate(to, i, r ? r->certificate : not_solved(), status);
        });
}

void put_flash(ModelN const& model, std::size_t i, Vector<double> const& z, FlashColumns const& to,
               FlashResult* r) {
    const double nothing = kNoValue;
    if (r && (to.h || to.s) && !std::isfinite(r->h)) try {
            add_caloric(model, z, *r);
        } catch (ThException const&) {  // no table: h and s are not-a-number
        }
    double volume = 0.0;
    const std::size_t have = r ? r->phases.size() : 0, room = static_cast<std::size_t>(to.room),
                      N = static_cast<std::size_t>(z.size());
    for (std::size_t k = 0; k < have; ++k) volume += r->fraction[k] / r->phases[k].rho;
    put(to.T, i, r ? r->T : nothing), put(to.p, i, r ? r->p : nothing);
    put(to.rho, i, r ? 1.0 / volume : nothing);
    put(to.h, i, r ? r->h : nothing), put(to.s, i, r ? r->s : nothing);
    if (to.phases) to.phases[i] = static_cast<int>(have);
    for (std::size_t k = 0; k < room; ++k) {
        const bool there = k < have;
        put(to.fraction, i * room + k, there ? r->fraction[k] : nothing);
        put(to.rho_phase, i * room + k, there ? r->phases[k].rho : nothing);
        put(to.x, i * room + k, N, there ? &r->phases[k].x : nullptr);
    }
}
}  // namespace

std::size_t pure_saturations_T(Model1 const& model, std::size_t n, double const* T,
                               PureSaturationColumns const& columns, int threads,
                               SaturationExpansion const* curve) {
    return pure_rows(model, true, n, T, columns, threads, curve);
}
std::size_t pure_saturations_p(Model1 const& model, std::size_t n, double const* p,
                               PureSaturationColumns const& columns, int threads,
                               SaturationExpansion const* curve) {
    return pure_rows(model, false, n, p, columns, threads, curve);
}

std::size_t saturations_T(ModelN const& model, Saturated kind, std::size_t n, double const* T,
                          Compositions const& z, SaturationColumns const& columns,
                          BatchOptions const& options) {
    return saturation_rows(model, true, kind, n, T, z, columns, options);
}
std::size_t saturations_p(ModelN const& model, Saturated kind, std::size_t n, double const* p,
                          Compositions const& z, SaturationColumns const& columns,
                          BatchOptions const& options) {
    return saturation_rows(model, false, kind, n, p, z, columns, options);
}

std::size_t flashes(ModelN const& model, FlashGiven given, std::size_t n, double const* a,
                    double const* b, Compositions const& z, FlashColumns const& columns,
                    BatchOptions const& options) {
    if (columns.room < 1) throw MthException(mth_dimensions);
    const auto flash_one = given == FlashGiven::pT   ? flash_pT
                           : given == FlashGiven::ph ? flash_ph
                           : given == FlashGiven::ps ? flash_ps
                                                     : flash_Trho;
    return mixture_rows<FlashResult>(
        model, n, z, options,
        [&](std::size_t i, Vector<double> const& x, FlashResult const* before) {
            FlashOptions one;
            one.start = before, one.validity = options.validity, one.test = options.test;
            return flash_one(model, a[i], b[i], x, one);
        },
        [&](std::size_t i, Vector<double> const& x, FlashResult* r, RowStatus status) {
            put_flash(model, i, x, columns, r);
            put_certificate(columns, i, r ? r->certificate : not_solved(), status);
        });
}

}  // namespace corvane
