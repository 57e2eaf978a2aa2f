#include <corvane/core/constants.h>
#include <corvane/core/files.h>
#include <corvane/core/numelo.h>
#include <corvane/ideal/ideal.h>
#include <corvane/pure/model1.h>

#include <cmath>
#include <map>
#include <mutex>
#include <utility>

#include <sys/stat.h>

namespace {
constexpr int kMaxPoints = 1000000;

/// Intended: the handle of a table stays open for the life of the process. One for each file is
/// enough: a model loaded a thousand times must not use up the descriptors.
void keep_open(corvane::File file) {
    static std::mutex guard;
    static auto& kept = *new std::map<std::pair<dev_t, ino_t>, FILE*>;
    struct stat which;
    if (fstat(fileno(file.get()), &which) != 0) return;
    const std::lock_guard<std::mutex> lock(guard);
    const auto [place, first] = kept.try_emplace({which.st_dev, which.st_ino}, file.get());
    if (first) static_cast<void>(file.release());
}

/// Integral of (y + b·s + c·s² + d·s³) over s from 0 to dx.
double integral(double y, double b, double c, double d, double dx) {
    return (((d / 4 * dx + c / 3) * dx + b / 2) * dx + y) * dx;
}

/// Integral of that cubic over T = x + s, s from 0 to dx: the cubic divided by (x + s) leaves the
/// remainder r, which gives the logarithm, and a quadratic.
double integral_over_T(double x, double y, double b, double c, double d, double dx) {
    const double q1 = c - d * x, q0 = b - q1 * x, r = y - q0 * x;
    return r * std::log1p(dx / x) + ((d / 3 * dx + q1 / 2) * dx + q0) * dx;
}
}  // namespace

struct Ideal::Value {
    double cv, U, S;  // U in K
};

void Ideal::load() {
    if (!model_) throw ThException(th_cannot_open);
    corvane::check_name(model_->name());
    read(corvane::path_of("./CorvaneS/ideal/%s", model_->name()));
}

void Ideal::read(std::string const& path) {
    const corvane::CLocale c_numbers;
    corvane::File file = corvane::open_file(path);
    FILE* f = file.get();
    int n = 0;
    if (std::fscanf(f, "%9d", &n) != 1 || n < 0) n = 0;
    SortedVector<double> x;
    Vector<double> y;
    corvane::reading(path, f, [&] {
        if (n > kMaxPoints) corvane::malformed(f, "too many points");
        x.size(n);
        y.size(n);
        for (int k = 0; k < n; ++k) {
            x[k] = corvane::read_number(f, true);
            y[k] = corvane::read_number(f, true) * (1 / R) - 1;
        }
    });
    keep_open(std::move(file));
    Vector<double> energy(n), entropy(n);
    Matrix<double> c;
    if (n > 0) {
        c.size(3, n);
        ipl_spline(x, y, c);
    }
    for (int k = 1; k < n; ++k) {
        const int j = k - 1;
        const double dx = x[k] - x[j];
        energy[k] = energy[j] + integral(y[j], c[0][j], c[1][j], c[2][j], dx);
        entropy[k] = entropy[j] + integral_over_T(x[j], y[j], c[0][j], c[1][j], c[2][j], dx);
    }
    x_ = std::move(x);
    y_ = std::move(y);
    energy_ = std::move(energy);
    entropy_ = std::move(entropy);
    c_ = std::move(c);
}

void Ideal::info() const {
    std::printf("ideal-gas data available: ");
    if (x_.size() < 1)
        std::printf("none\n\n");
    else
        std::printf("%g-%g K\n\n", x_.first(), x_.last());
}

// Intended: at an interior table temperature the segment to its left, as T > x[mid] is strict.
int Ideal::segment(double T) const {
    const int n = x_.size();
    if (T < x_[0]) return 0;
    if (T >= x_[n - 1]) return n - 1;
    int low = 0;
    for (int count = n - 1; count > 1;) {  // without a branch that depends on T
        const int half = count / 2;
        low += half * (T > x_[low + half]);
        count -= half;
    }
    return low;
}

int Ideal::interval(double T) const {
    if (x_.size() < 1) throw ThException(th_no_ideal);
    return T < x_[0] ? -1 : segment(T);
}

void Ideal::offset(double dh, double ds) {
    if (x_.size() < 1) throw ThException(th_no_ideal);
    for (int k = 0; k < x_.size(); ++k) {
        energy_[k] += dh;
        entropy_[k] += ds;
    }
}

void Ideal::reset() {
    x_.size(0);  // intended: the other tables stay
}

// Inlined, so that what a caller does not take is not computed.
[[gnu::always_inline]] inline Ideal::Value Ideal::at(double T) const {
    if (x_.size() < 1) throw ThException(th_no_ideal);
    const int k = segment(T);
    const double x = x_[k], y = y_[k], b = c_[0][k], c = c_[1][k], d = c_[2][k], dx = T - x;
    if (T < x_[0])
        // intended: the entropy's last term has c where cv and U have b
        return {y + dx * b, energy_[k] + (y + b / 2 * dx) * dx,
                entropy_[k] + (y - b * x) * std::log(T / x) + dx * c};
    return {y + ((d * dx + c) * dx + b) * dx, energy_[k] + integral(y, b, c, d, dx),
            entropy_[k] + integral_over_T(x, y, b, c, d, dx)};
}

double Ideal::CVm(double T) const {
    return at(T).cv;
}
double Ideal::Cpm(double T) const {
    return 1 + at(T).cv;
}
double Ideal::Um(double T) const {
    return at(T).U / T;
}
double Ideal::Hm(double T) const {
    return at(T).U / T + 1;
}
double Ideal::Sm(double T) const {
    return at(T).S;
}
double Ideal::Am(double T) const {
    const Value v = at(T);
    return v.U / T - v.S;
}
double Ideal::Gm(double T) const {
    const Value v = at(T);
    return v.U / T + 1 - v.S;
}
Ideal::Parts Ideal::parts(double T) const {
    const Value v = at(T);
    return {v.U / T, v.S, v.cv};
}
