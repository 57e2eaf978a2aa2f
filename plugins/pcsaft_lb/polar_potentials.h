// Chemical potentials of the polar terms of a PC-SAFT mixture.
//
// At temperature T the energy density over R·T of an interaction is F = a2²/(a2 − a3), with a2 a
// quadratic and a3 a cubic form of the partial densities n_i whose coefficients are polynomials in
// ζ3. With t = a3/a2 and g = 1/(1 − t)
//     dF = (2 − g)·g·da2 + g²·da3,   d²F = … + 2·g³/a2·(da3 − t·da2)².
// An amount below 1e-20 of the whole counts as that: a dipole alone among quadrupoles has a
// potential, and both forms would be zero.
#pragma once

#include <corvane/plugin/small_array.h>
#include <plugins/common/pcsaft/polar.h>
#include <plugins/pcsaft_lb/components.h>

namespace corvane::pcsaft {

/// S is double, or Jet<1> that carries derivatives in T. Second derivatives are for double.
template <class S>
class PolarPotentials {
  public:
    /// @param n   partial densities, mol/cm³
    /// @param z3  packing fraction
    PolarPotentials(Components const& c, SmallArray<double> const& n, S const& T, S const& z3,
                    bool second)
        : index_(c.size),
          first_(c.size * kPolarKinds),
          second_wanted_(second),
          second_(second ? c.size * c.size * kPolarKinds : 0),
          z3_(z3) {
        double total = 0.0;
        for (int i = 0; i < c.size; ++i) {
            total += n[i];
            index_[i] = c[i].polar() ? size_++ : -1;
        }
        SmallArray<Moments, 8> of(size_);
        SmallArray<double> amount(size_);
        SmallArray<int> number(size_);
        for (int i = 0; i < c.size; ++i)
            if (const int k = index_[i]; k >= 0) {
                of[k] = c[i].moments();
                amount[k] = std::max(n[i], 1e-20 * total);
                number[k] = i;
            }
        const auto like = [&](int k, int l) { return c.like(number[k], number[l]); };
        for (int kind = 0; kind < kPolarKinds; ++kind)
            add(static_cast<PolarKind>(kind), of, amount, like, T);
    }
    PolarPotentials(PolarPotentials const&) = delete;
    PolarPotentials& operator=(PolarPotentials const&) = delete;

    /// ∂F/∂ζ3 at constant n_i.
    S slope() const {
        S sum = 0.0;
        for (int k = 0; k < count_; ++k) sum += kinds_[k].along(kinds_[k].a2.z, kinds_[k].a3.z);
        return sum;
    }
    /// ∂F/∂n_i at constant ζ3.
    S mu(int i) const {
        S sum = 0.0;
        if (index_[i] >= 0)
            for (int k = 0; k < count_; ++k) {
                Form const& f = first_[k * size_ + index_[i]];
                sum += kinds_[k].along(f.a2.f, f.a3.f);
            }
        return sum;
    }
    /// ∂²F/∂n_i∂n_j. @param qi, qj  ∂ζ3/∂n_i, ∂ζ3/∂n_j
    double hessian(int i, int j, double qi, double qj) const {
        const int a = index_[i], b = index_[j];
        double sum = 0.0;
        for (int k = 0; k < count_; ++k) {
            Kind const& kind = kinds_[k];
            const Form none{}, &fi = a < 0 ? none : first_[k * size_ + a],
                               &fj = b < 0 ? none : first_[k * size_ + b],
                               &fij = a < 0 || b < 0 ? none : second_[(k * size_ + a) * size_ + b];
            const auto both = [&](Value const& all, Value const& di, Value const& dj,
                                  Value const& dij) {
                return dij.f + di.z * qj + dj.z * qi + all.zz * qi * qj;
            };
            sum += kind.along(both(kind.a2, fi.a2, fj.a2, fij.a2),
                              both(kind.a3, fi.a3, fj.a3, fij.a3));
            const auto apart = [&](Form const& f, double q) {
                return f.a3.f + kind.a3.z * q - kind.t * (f.a2.f + kind.a2.z * q);
            };
            sum += 2.0 * kind.g * kind.g * kind.g / kind.a2.f * apart(fi, qi) * apart(fj, qj);
        }
        return sum;
    }

  private:
    struct Value {
        S f = 0.0, z = 0.0, zz = 0.0;  // with its derivatives in ζ3
    };
    struct Form {
        Value a2, a3;
    };
    struct Kind : Form {
        S t, g;
        S along(S const& da2, S const& da3) const { return g * ((2.0 - g) * da2 + g * da3); }
    };

    template <std::size_t N>
    Value polynomial(std::array<S, N> const& c) const {
        Value v{c[N - 1]};
        for (std::size_t n = N - 1; n-- > 0;) {
            v.zz = v.zz * z3_ + 2.0 * v.z;
            v.z = v.z * z3_ + v.f;
            v.f = v.f * z3_ + c[n];
        }
        return v;
    }
    Form at_state(PolarSeries const& s, S const& T) const {
        const PolarLine<S> line(s, T, S(1.0));
        return {polynomial(line.p), polynomial(line.q)};
    }

    template <class Like>
    void add(PolarKind kind, SmallArray<Moments, 8> const& of, SmallArray<double> const& n,
             Like like, S const& T) {
        SmallArray<PolarSeries, 16> pair(size_ * size_);  // 2·W_ij and 6·Σ n_l·V_ijl
        SmallArray<PolarSeries, 8> own(size_);
        PolarSeries all;
        for (int i = 0; i < size_; ++i)
            for (int j = 0; j <= i; ++j) {
                PolarSeries& s = pair[i * size_ + j];
                add_pair(s, kind, of[i], of[j], like(i, j), 2.0);
                for (int l = 0; l < size_; ++l)
                    add_triple(s, kind, of[i], of[j], of[l], 6.0 * n[l]);
                own[i].add(s, n[j], 0.5 * n[j]);
                if (i != j) own[j].add(s, n[i], 0.5 * n[i]);
            }
        for (int i = 0; i < size_; ++i) all.add(own[i], 0.5 * n[i], n[i] / 3.0);
        if (all.empty()) return;
        Kind& k = kinds_[count_];
        static_cast<Form&>(k) = at_state(all, T);
        k.t = k.a3.f / k.a2.f;
        k.g = 1.0 / (1.0 - k.t);
        if (!(value_of(k.g) > 0.0))
            k.g = std::numeric_limits<double>::quiet_NaN();  // past the pole
        for (int i = 0; i < size_; ++i) {
            first_[count_ * size_ + i] = at_state(own[i], T);
            for (int j = 0; second_wanted_ && j <= i; ++j)
                second_[(count_ * size_ + i) * size_ + j] =
                    second_[(count_ * size_ + j) * size_ + i] = at_state(pair[i * size_ + j], T);
        }
        ++count_;
    }

    int size_ = 0, count_ = 0;
    SmallArray<int> index_;
    SmallArray<Form, 72> first_;
    bool second_wanted_;
    SmallArray<Form, 48> second_;
    S z3_;
    std::array<Kind, kPolarKinds> kinds_;
};

}  // namespace corvane::pcsaft
