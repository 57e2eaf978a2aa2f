#include <corvane/core/constants.h>
#include <corvane/mixture/modeln.h>
#include <corvane/phases/phase/caloric.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {
namespace {
/// Where interval(T) reaches `segment`, by bisection: the table itself is not public.
double table_temperature(Ideal const& table, int segment) {
    double lo = 0.0, hi = 1e5;
    for (int k = 0; k < 60 && hi - lo > 1e-6 * hi; ++k) {
        const double mid = 0.5 * (lo + hi);
        (table.interval(mid) < segment ? lo : hi) = mid;
    }
    return hi;
}
}  // namespace

Caloric::Caloric(FluidModel const& fluid) : fluid_(fluid) {
    const auto n = static_cast<std::size_t>(fluid.size());
    for (auto* v : {&U_, &S_, &cv_}) v->resize(n);
    for (int i = 0; i < fluid.size(); ++i) fluid.pure(i).ideal.interval(300.0);  // throws
}

void Caloric::at(double T) {
    T_ = T;
    for (int i = 0; i < fluid_.size(); ++i) {
        Ideal const& gas = fluid_.pure(i).ideal;
        U_[i] = gas.Um(T);
        S_[i] = gas.Sm(T);
        cv_[i] = gas.CVm(T);
    }
}

double Caloric::h(PhaseState const& s) const {
    double sum = s.p / (s.rho * R * s.T) + s.p_T / s.rho;
    for (int i = 0; i < s.size(); ++i) sum += s.x[i] * (U_[i] - s.m_T[i]);
    return sum;
}
double Caloric::s(PhaseState const& s) const {
    double sum = h(s);
    for (int i = 0; i < s.size(); ++i) sum -= s.x[i] * (s.m[i] + U_[i] + 1.0 - S_[i]);
    return sum;
}
double Caloric::cv(PhaseState const& s) const {
    // intended: CVr lacks the factor T
    double sum = s.T * fluid_.model().CVr(s.rho, s.T, fluid_.expand(s.x));
    for (int i = 0; i < s.size(); ++i) sum += s.x[i] * cv_[i];
    return sum;
}

double Caloric::ideal_h() const {
    double sum = 1.0;
    for (int i = 0; i < fluid_.size(); ++i) sum += fluid_.z()[i] * U_[i];
    return sum;
}
double Caloric::ideal_s(double p) const {
    double sum = 0.0;
    for (int i = 0; i < fluid_.size(); ++i)
        sum += fluid_.z()[i] * (S_[i] - std::log(fluid_.z()[i] * p / (R * T_)));
    return sum;
}
double Caloric::ideal_cp() const {
    double sum = 1.0;
    for (int i = 0; i < fluid_.size(); ++i) sum += fluid_.z()[i] * cv_[i];
    return sum;
}

bool Caloric::covers(double T) const {
    for (int i = 0; i < fluid_.size(); ++i)
        if (fluid_.pure(i).ideal.interval(T) < 0) return false;
    return true;
}
double Caloric::T_first() const {
    double first = 0.0;
    for (int i = 0; i < fluid_.size(); ++i)
        first = std::max(first, table_temperature(fluid_.pure(i).ideal, 0));
    return first;
}
double Caloric::T_last() const {
    double last = std::numeric_limits<double>::infinity();
    for (int i = 0; i < fluid_.size(); ++i) {
        Ideal const& table = fluid_.pure(i).ideal;
        last = std::min(last, table_temperature(table, table.interval(1e6)));
    }
    return last;
}

}  // namespace corvane
