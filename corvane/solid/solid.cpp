#include <corvane/core/files.h>
#include <corvane/core/numelo.h>
#include <corvane/pure/model1.h>
#include <corvane/solid/solid.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {
constexpr int kMaxPoints = 1000000;  // a larger count in a file is damage, not data
constexpr int kMaxPhases = 1000;

struct Row {
    double T, p, v, kappa;
};

/// Reads one line of a phase. Values from which no logarithm, reciprocal or spline can be formed
/// count as unreadable.
Row read_row(FILE* f) {
    Row r{};
    for (double* x : {&r.T, &r.p, &r.v, &r.kappa}) *x = corvane::read_number(f, true);
    if (!(r.T > 0.0) || !(r.p > 0.0)) corvane::malformed(f, "T and p must be positive");
    return r;
}

/// A count in 1 … most.
int read_count(FILE* f, int most) {
    const double x = corvane::read_number(f, true);
    if (!(x >= 1 && x <= most && x == std::floor(x))) corvane::malformed(f, "no such count");
    return static_cast<int>(x);
}

struct State {
    double psub, v, kappa;
};

/// The sublimation curve of one phase: ln(p/p0) = s·(x − x0) keeps the spline of s smooth, because
/// s is nearly the constant −H_sub/R (Clausius and Clapeyron).
State sublimation(Subl const& phase, double T) {
    const double x = 1.0 / T;
    const double slope = ipl_eval(x, phase.x, phase.s, phase.cs, 0);
    return {phase.p0 * std::exp(slope * (x - phase.x[0])),
            ipl_eval(x, phase.x, phase.v, phase.cv, 0),
            ipl_eval(x, phase.x, phase.kappa, phase.ckappa, 0)};
}

/// Lowest Gibbs energy over the phases at p and T; phase and rho are those of the lowest.
double stable_phase(Solid const& solid, double p, double T, int& phase, double& rho) {
    double lowest = 1e99;
    for (int j = 0; j < solid.sg.n; ++j) {
        const State state = sublimation(solid.sg[j], T);
        const double dp = p - state.psub;
        // v = v_sub·exp(−kappa·(p − psub)), integrated over p.
        const double integral = state.kappa > 0.0
                                    ? -state.v * std::expm1(-state.kappa * dp) / state.kappa
                                    : state.v * dp;
        double w = 0.0;
        const double gr = solid.model()->Gr(state.psub, T, 3, w);
        const double g = gr + std::log(w) + integral / (R * T);
        if (g < lowest) {
            lowest = g;
            phase = j;
            rho = 1.0 / (std::exp(-state.kappa * dp) * state.v);
        }
    }
    if (lowest == 1e99) throw ThException(th_out_of_range);  // p is not a number
    return lowest;
}

void check(Solid const& solid, double T) {
    if (solid.sg.n < 1 || !solid.model()) throw ThException(th_no_solid);
    if (!(T > 0.0 && T <= solid.Tmax())) throw ThException(th_out_of_range);
}

struct Isobar {
    Solid const* solid;
    double p;
};

double ge_T(double T, void* ctx) {
    auto const& isobar = *static_cast<Isobar const*>(ctx);
    int phase = 0;
    double rho = 0.0;
    return stable_phase(*isobar.solid, isobar.p, T, phase, rho);
}

/// T·∂Ge/∂T at p. The step is th_inc1 itself, 1 mK, not a fraction of T (intended). The steps may
/// leave the range of the data, so that the derivative exists up to Tmax.
double t_dge_dT(Solid const& solid, double p, double T) {
    check(solid, T);
    Isobar isobar{&solid, p};
    return T * diff_romberg(ge_T, &isobar, 1, T, th_inc1, 1, 0.0, 1e99);
}

double ge(Solid const& solid, double p, double T, double& rho) {
    int phase = 0;
    rho = 0.0;
    return solid.Ge(p, T, phase, rho);
}
}  // namespace

void Subl::load(FILE* f) {
    const corvane::CLocale c_numbers;
    if (std::fscanf(f, "%7s", name) != 1) corvane::malformed(f, "a phase is missing");
    static_cast<void>(std::fscanf(f, "%*[^ \t\r\n]"));  // a longer name
    const int m = read_count(f, kMaxPoints);
    x.size(m);
    s.size(m);
    v.size(m);
    kappa.size(m);
    for (int k = 0; k < m; ++k) {
        const Row row = read_row(f);
        if (k == 0) p0 = row.p;
        x[k] = 1.0 / row.T;
        v[k] = row.v;
        kappa[k] = row.kappa;
        s[k] = k == 0 ? 0.0 : std::log(row.p / p0) / (x[k] - x[0]);
    }
    if (m > 1) {
        // s[0] is 0/0: it is extrapolated from the other points.
        SortedVector<double> rest(m - 1);
        Vector<double> slopes(m - 1);
        for (int k = 1; k < m; ++k) {
            rest[k - 1] = x[k];
            slopes[k - 1] = s[k];
        }
        Matrix<double> c;
        ipl_spline(rest, slopes, c);
        s[0] = ipl_eval(x[0], rest, slopes, c, 0);
    }
    ipl_spline(x, s, cs);
    ipl_spline(x, v, cv);
    ipl_spline(x, kappa, ckappa);
}

void Solid::load() {
    if (!model_) throw ThException(th_cannot_open);
    const corvane::CLocale c_numbers;
    corvane::check_name(model_->name());
    const std::string path = corvane::path_of("./CorvaneS/solid/%s", model_->name());
    const corvane::File file = corvane::open_file(path);
    FILE* f = file.get();
    corvane::reading(path, f, [&] {
        int n = 0;
        if (std::fscanf(f, "%9d", &n) != 1 || n > kMaxPhases)
            corvane::malformed(f, "no such number of phases");
        Tmax_ = corvane::read_number(f, true);
        sg.size(0);
        sg.size(n);
        for (int i = 0; i < n; ++i) {
            try {
                sg[i].load(f);
            } catch (...) {
                sg.size(i);  // the phases read so far stay, and nothing half-read does
                throw;
            }
        }
    });
}

int Solid::sge(double T, int i, double& psub, double& v, double& kappa) const {
    if (!(T > 0.0 && T <= Tmax_) || sg.n < 1) return -1;
    int best = -1;
    State chosen{1e99, 0.0, 0.0};
    try {
        if (i == -1) {
            for (int j = 0; j < sg.n; ++j) {
                const State state = sublimation(sg[j], T);
                if (state.psub < chosen.psub) {
                    chosen = state;
                    best = j;
                }
            }
        } else {
            best = std::clamp(i, 0, sg.n - 1);
            chosen = sublimation(sg[best], T);
        }
    } catch (MthException const&) {
        return -1;  // a phase filled by hand, without its splines
    }
    if (best < 0) return -1;
    psub = chosen.psub;
    v = chosen.v;
    kappa = chosen.kappa;
    return best;
}

double Solid::Ge(double p, double T, int& i, double& rho) const {
    check(*this, T);
    return stable_phase(*this, p, T, i, rho);
}

double Solid::Gm(double p, double T, int& i, double& rho) const {
    const double g = Ge(p, T, i, rho);
    return g + model_->ideal.Gm(T);
}

double Solid::Gm(double p, double T) const {
    double rho;
    const double g = ge(*this, p, T, rho);
    return g + model_->ideal.Gm(T);
}

double Solid::Ae(double p, double T, int& i, double& rho) const {
    const double g = Ge(p, T, i, rho);
    return g - p / (rho * R * T);
}

double Solid::Ae(double p, double T) const {
    double rho;
    const double g = ge(*this, p, T, rho);
    return g - p / (rho * R * T);
}

double Solid::Am(double p, double T, int& i, double& rho) const {
    const double a = Ae(p, T, i, rho);
    return a + model_->ideal.Am(T);
}

double Solid::Am(double p, double T) const {
    const double a = Ae(p, T);
    return a + model_->ideal.Am(T);
}

double Solid::He(double p, double T) const {
    return -t_dge_dT(*this, p, T);
}

double Solid::Hm(double p, double T) const {
    const double h = He(p, T);
    return h + model_->ideal.Hm(T);
}

double Solid::Se(double p, double T) const {
    double rho;
    const double g = ge(*this, p, T, rho);
    return -t_dge_dT(*this, p, T) - g;
}

double Solid::Sm(double p, double T) const {
    const double s = Se(p, T);
    return s + model_->ideal.Sm(T);
}

double Solid::Ue(double p, double T) const {
    double rho;
    ge(*this, p, T, rho);
    return -t_dge_dT(*this, p, T) - p / (rho * R * T);
}

double Solid::Um(double p, double T) const {
    const double u = Ue(p, T);
    return u + model_->ideal.Um(T);
}

double Solid::d(double p, double T) const {
    double rho;
    ge(*this, p, T, rho);
    return std::fabs(*model_->ppar(0)) * rho;
}

double Solid::Vm(double p, double T) const {
    double rho;
    ge(*this, p, T, rho);
    return 1.0 / rho;
}

double Solid::Ttrp() const {
    return sg.n > 0 && sg[0].x.n > 0 ? 1.0 / sg[0].x[0] : 0.0;
}

char const* Solid::id(int i) const {
    return i >= 0 && i < sg.n ? sg[i].name : nullptr;
}

void Solid::info() const {
    std::printf("sublimation data available: ");
    if (sg.n < 1 || sg.last().x.n < 1) {
        std::printf("none\n\n");
        return;
    }
    const corvane::CLocale c_numbers;
    // Intended: the last point of the last phase against the first of phase 0.
    std::printf("%g-%g K\n\n", 1.0 / sg.last().x.last(), Ttrp());
}

void Solid::reset() {
    sg.size(0);
}
