// Equations of state written in Python, as models of the library: residual Helmholtz energy from the
// class, its derivatives by Taylor series, densities by the library's own solver. Every evaluation
// takes the interpreter's lock; nothing is kept between evaluations.
#include "python_model.h"

#include "jet.h"

#include <corvane/mixture/modeln.h>
#include <corvane/plugin/tables.h>
#include <corvane/pure/model1.h>
#include <corvane/plugin/exact_slots.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <vector>

namespace py {
namespace {
constexpr double kMega = 1e6;  // mol/cm³ in mol/m³

using corvane::IsothermPoint;

/// The Python object: evaluate(T, rho, x) with rho in mol/m³ and x of NumPy, numbers or Jets.
class Equation {
    template <class F>
    auto call(F const& f) const {
        const nb::gil_scoped_acquire held;
        try {
            return f();
        } catch (nb::python_error const& e) {
            if (e.matches(PyExc_KeyboardInterrupt)) PyErr_SetInterrupt();  // for the loop around
            throw std::runtime_error(e.what());  // without objects of Python: solvers have no lock
        }
    }

  public:
    explicit Equation(nb::object object) : evaluate_(object.attr("_evaluate")) {}

    double operator()(double T, double rho, double const* x, int n) const {
        return call([&] {
            nb::list composition;
            for (int i = 0; i < n; ++i) composition.append(x[i]);
            return nb::cast<double>(evaluate_(T, rho * kMega, composition));
        });
    }
    /// Variables 0 rho·(1 + h) and 1 T·(1 + k).
    Jet at(Space const& space, double T, double rho, double const* x, int n) const {
        return call([&] {
            nb::list composition;
            for (int i = 0; i < n; ++i) composition.append(x[i]);
            const Jet r = Jet::variable(space, rho * kMega, 0, rho * kMega);
            if (space.m == 1) return jet(space, evaluate_(T, r, composition));
            return jet(space, evaluate_(Jet::variable(space, T, 1, T), r, composition));
        });
    }
    /// rho·alphar [mol/m³]; variables are the partial densities [mol/m³] and T·(1 + k).
    Jet density(Space const& space, double T, double const* rho_i, int n) const {
        return call([&] {
            Jet rho(space, 0.0);
            std::vector<Jet> parts;
            for (int i = 0; i < n; ++i) {
                parts.push_back(Jet::variable(space, rho_i[i] * kMega, i, 1.0));
                rho = rho + parts.back();
            }
            nb::list composition;
            const Jet inverse = rho.pow(-1.0);
            for (Jet const& part : parts) composition.append(part * inverse);
            return rho * jet(space, evaluate_(Jet::variable(space, T, n, T), rho, composition));
        });
    }

  private:
    static Jet jet(Space const& space, nb::object const& value) {
        Jet result(space, 0.0);
        if (nb::try_cast(value, result)) return result;
        return Jet(space, nb::cast<double>(value));  // a constant
    }
    nb::object evaluate_;
};

/// Elements [i·(nT+1) + j] by the contract of Deriv1 and DerivN.
int write_derivatives(Equation const& f, double rho, double T, double const* x, int n, int nrho, int nT,
                      double* d) {
    if (nrho < 0 || nT < 0 || nT > 2 || nrho > (nT == 0 ? 3 : 2)) return 0;
    constexpr double factorial[] = {1, 1, 2, 6};
    const Jet a = f.at(nT == 0 ? Space::of(1, std::max(nrho, 1)) : Space::of(2, 2), T, rho, x, n);
    for (int i = 0; i <= nrho; ++i)
        for (int j = 0; j <= nT; ++j)
            if (nT == 0)
                d[i] = a({i}) * factorial[i];
            else if (i + j <= 2)
                d[i * (nT + 1) + j] = a({i, j}) * factorial[i] * factorial[j];
    return 1;
}

IsothermPoint point_of(Equation const& f, double rho, double T, double const* x, int n) {
    double d[3];
    write_derivatives(f, rho, T, x, n, 2, 0, d);
    return {rho * (1 + d[1]), 1 + 2 * d[1] + d[2]};
}

/// The largest density: from `start` in steps of 2 % to where the pressure is no number, negative, or
/// falls, and by bisection to the last density before it.
template <class F>
double end_of_equation(F const& at, double start) {
    const auto good = [&](double rho) {
        const IsothermPoint q = at(rho);
        return std::isfinite(q.P) && std::isfinite(q.dP) && q.P > 0 && q.dP > 0;
    };
    double low = start, high = 0.0;
    for (int k = 0; k < 150 && high == 0.0; ++k) (good(1.02 * low) ? low : high) = 1.02 * low;
    for (int k = 0; k < 40 && high > 0.0; ++k) {
        const double middle = 0.5 * (low + high);
        (good(middle) ? low : high) = middle;
    }
    return low * (1 - 1e-9);
}

/// Density roots by the contract of Model1::vcalc; `top` as the end of the equation.
int roots(Equation const& f, double p, double T, double const* x, int n, double guess, double top, int phase,
          double& rho1, double& rho2) {
    if (!(T > 0.0) || !std::isfinite(T)) return 0;
    const auto at = [&](double rho) { return point_of(f, rho, T, x, n); };
    for (int k = 0; k < 100; ++k, top *= 0.97) {  // the end of this isotherm
        const IsothermPoint q = at(top);
        if (std::isfinite(q.P) && q.P > 0 && q.dP > 0) break;
    }
    const double falling = corvane::falling_density(at, guess, top, 24);
    const corvane::Branches branches{falling, falling, top, falling > 0};
    return corvane::density_roots(
        at, p / (R * T), branches, phase,
        [&](double rho) {
            double d[2];
            write_derivatives(f, rho, T, x, n, 1, 0, d);
            return d[0] + d[1] + std::log(rho);
        },
        rho1, rho2);
}

class PythonModel1 final : public Model1, public corvane::Deriv1 {
  public:
    /// Component `which` of n. M [kg/mol], start values of the critical point [K, mol/m³].
    PythonModel1(Equation const& f, int which, int n, double M, double T, double rho)
        : f_(f), x_(n, 0.0), par_{1e3 * M, T, kMega / rho} {
        eos_ = "Python";
        mpar_ = 3;
        madj_ = 0;
        x_[which] = 1.0;
        derivatives(static_cast<corvane::Deriv1 const*>(this));
        critical_point(T, rho / kMega);
    }
    using Model1::ppar;
    double* ppar(int i) override { return par_.data() + i; }
    void par_in(FILE*, int) override { throw ThException(th_cannot_open); }
    void par_out(FILE*) const override { throw ThException(th_cannot_open); }
    double Ar(double rho, double T) const override { return f_(T, rho, x_.data(), size()); }
    double Z(double rho, double T) const override {
        double d[2];
        write_derivatives(f_, rho, T, x_.data(), size(), 1, 0, d);
        return 1 + d[1];
    }
    int deriv(double rho, double T, int nrho, int nT, double* d) const override {
        return write_derivatives(f_, rho, T, x_.data(), size(), nrho, nT, d);
    }
    int vcalc(double p, double T, int phase, double& rho1, double& rho2) const override {
        return roots(f_, p, T, x_.data(), size(), 1 / vcrit(), top_, phase, rho1, rho2);
    }
    double xinit(double p, double T, int phase) const override { return phase == 1 ? 0.8 * top_ : p / (R * T); }
    double top() const { return top_; }

  private:
    int size() const { return static_cast<int>(x_.size()); }
    /// ∂P/∂rho = ∂²P/∂rho² = 0 by Newton's method in ln rho and ln T, from the start values.
    void critical_point(double T, double rho) {
        double step = 1.0;
        for (int k = 0; k < 60 && step > 1e-13; ++k) {
            const Jet a = f_.at(Space::of(2, 4), T, rho, x_.data(), size());
            const auto d = [&](int i, int j) {
                constexpr double factorial[] = {1, 1, 2, 6, 24};
                return a({i, j}) * factorial[i] * factorial[j];
            };
            const double F1 = 1 + 2 * d(1, 0) + d(2, 0), F2 = 2 * d(1, 0) + 4 * d(2, 0) + d(3, 0);
            const double T1 = 2 * d(1, 1) + d(2, 1), T2 = 2 * d(1, 1) + 4 * d(2, 1) + d(3, 1);
            const double R2 = 2 * d(1, 0) + 10 * d(2, 0) + 7 * d(3, 0) + d(4, 0);
            const double D = F2 * T2 - R2 * T1;
            double s_rho = -(F1 * T2 - F2 * T1) / D, s_T = -(F2 * F2 - R2 * F1) / D;
            step = std::max(std::abs(s_rho), std::abs(s_T));
            if (!std::isfinite(step)) break;
            const double part = std::min(1.0, 0.1 / step);
            rho *= std::exp(part * s_rho);
            T *= std::exp(part * s_T);
            if (step < 1e-7 && k > 40) break;
        }
        if (!(step < 1e-7))
            throw nb::value_error("no critical point is found from T_critical and rho_critical");
        Tcrit(T);
        vcrit(1 / rho);
        pcrit(rho * R * T * Z(rho, T));
        if (!(pcrit() > 0)) throw nb::value_error("the critical pressure is not positive");
        par_[1] = T;
        par_[2] = 1 / rho;
        // above the critical temperature, where every density before the end has a rising pressure
        top_ = end_of_equation([&](double r) { return point_of(f_, r, 1.05 * T, x_.data(), size()); }, rho);
        corvane::fill_density_tables(
            [&](double r, double t) { return point_of(f_, r, t, x_.data(), size()); },
            {T, rho, top_, 0.3 * T, 40}, Ttable_, dilute_, dense_);
        omega(0.1);  // start values are made of it, nothing else
    }

    Equation f_;
    std::vector<double> x_;
    std::array<double, 3> par_;
    double top_ = 0.0;
};

class PythonModelN final : public corvane::ExactMixture {
  public:
    explicit PythonModelN(Equation const& f) : ExactMixture("Python", "Python"), f_(f) {
        derivatives(static_cast<corvane::DerivN const*>(this));
    }
    double* ppar(int, int, int) override { return nullptr; }  // the class has its own
    void par_alloc() override {}
    void par_in(FILE*, int, int) override { throw ThException(th_cannot_open); }
    void par_out(FILE*, int, int) const override { throw ThException(th_cannot_open); }
    Vector<double> mixpar(Vector<double> const&) const override { return {}; }
    double Ar(double rho, double T, Vector<double> const& x) const override { return f_(T, rho, &x[0], x.size()); }
    double Z(double rho, double T, Vector<double> const& x) const override {
        double d[2];
        deriv(rho, T, x, 1, 0, d);
        return 1 + d[1];
    }
    int deriv(double rho, double T, Vector<double> const& x, int nrho, int nT, double* d) const override {
        return write_derivatives(f_, rho, T, &x[0], x.size(), nrho, nT, d);
    }
    int vcalc(double p, double T, Vector<double> const& x, int mode, double& rho_a, double& rho_b) const override {
        double v = 0.0, v_top = 0.0;
        for (int i = 0; i < x.size(); ++i) {
            v += x[i] * mdl1[i]->vcrit();
            v_top += x[i] / static_cast<PythonModel1 const*>(mdl1[i])->top();
        }
        return roots(f_, p, T, &x[0], x.size(), 1 / v, 1 / v_top, mode, rho_a, rho_b);
    }
    double myr(Vector<double> const& rho_i, double T, int i) const override {
        std::vector<double> mu(static_cast<std::size_t>(rho_i.size()));
        potentials(rho_i, T, mu.data(), nullptr, nullptr);
        return mu[static_cast<std::size_t>(i)];
    }
    void potentials(Vector<double> const& rho_i, double T, double* mu, double* mu_T, double* mu_rho) const override {
        const int n = rho_i.size();
        double rho = 0.0;
        for (int i = 0; i < n; ++i) rho += rho_i[i];
        if (rho == 0.0) {  // no composition
            std::fill_n(mu, n, 0.0);
            if (mu_T) std::fill_n(mu_T, n, 0.0);
            if (mu_rho) std::fill_n(mu_rho, n * n, 0.0);
            return;
        }
        const Jet F = f_.density(Space::of(n + 1, mu_T || mu_rho ? 2 : 1), T, &rho_i[0], n);
        std::vector<int> e(static_cast<std::size_t>(n) + 1, 0);
        for (int i = 0; i < n; ++i) {
            ++e[i];
            mu[i] = F(e);
            ++e[n];
            if (mu_T) mu_T[i] = F(e);
            --e[n];
            for (int j = 0; j < n && mu_rho; ++j) {
                ++e[j];
                mu_rho[i * n + j] = (i == j ? 2.0 : 1.0) * kMega * F(e);
                --e[j];
            }
            --e[i];
        }
    }

  private:
    Equation f_;
};
}  // namespace

Model1* python_model1(nb::object const& equation, int which, int n, double M, double T, double rho) {
    return new PythonModel1(Equation(equation), which, n, M, T, rho);
}
ModelN* python_modelN(nb::object const& equation) {
    return new PythonModelN(Equation(equation));
}
std::array<double, 4> python_derivatives(nb::object const& equation, double T, double rho,
                                         std::vector<double> const& x) {
    std::array<double, 4> d{};
    write_derivatives(Equation(equation), rho / kMega, T, x.data(), static_cast<int>(x.size()), 1, 1, d.data());
    return d;
}

}  // namespace py

// What the library looks for when it gives a model back to its maker.
CORVANE_PLUGIN_API void destroy1(Model1* model);
CORVANE_PLUGIN_API void destroyN(ModelN* model);
void destroy1(Model1* model) {
    const nanobind::gil_scoped_acquire held;
    delete static_cast<py::PythonModel1*>(model);
}
void destroyN(ModelN* model) {
    const nanobind::gil_scoped_acquire held;
    delete static_cast<py::PythonModelN*>(model);
}
