#include <corvane/core/files.h>
#include <corvane/core/numelo.h>
#include <corvane/pure/model1.h>
#include <corvane/viscosity/visco.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>
#include <string>

namespace {
constexpr int kMaxCount = 1000000;  // a larger count in a file is damage, not data
constexpr int kCommentRead = 78;    // characters of a text line, without the terminator

struct Shape {
    int a_rows, b_rows, c_rows, cols, c_cols;
};

/// Sizes of the coefficient matrices; all zero for a level that does not exist.
Shape shape_of(int level) {
    switch (level) {
        case ft_1:
            return {2, 2, 0, 3, 0};
        case ft_2:
            return {2, 3, 2, 3, 3};
        case ft_3:
            return {3, 3, 1, 5, 7};
        default:
            return {};
    }
}

bool holds(Matrix<double> const& m, int rows, int cols) {
    return m.rows() >= rows && (rows == 0 || m.cols() >= cols);
}

void make_hold(Matrix<double>& m, int rows, int cols) {
    if (!holds(m, rows, cols)) m.size(rows, cols);
}

void read_rows(FILE* f, Matrix<double>& m) {
    for (int i = 0; i < m.rows(); ++i)
        for (int j = 0; j < m.cols(); ++j)
            if (std::fscanf(f, "%*s\t%lf", &m[i][j]) == EOF) return;
}

void write_row(FILE* f, char matrix, Matrix<double> const& m, int row, int count) {
    if (row >= m.rows()) return;
    for (int j = 0; j < count && j < m.cols(); ++j)
        std::fprintf(f, "%c[%d][%d]:\t%15.8e\n", matrix, row, j, m[row][j]);
}

struct Isochore {
    Model1 const* model;
    double rho;
};

double p_T(double T, void* ctx) {
    auto const& isochore = *static_cast<Isochore const*>(ctx);
    return isochore.model->Z(isochore.rho, T) * R * T * isochore.rho;
}

/// Repulsive pressure as the thermal pressure T·∂p/∂T at rho (van der Waals' split).
double thermal_pressure(Model1 const& model, double rho, double T) {
    if (model.derivatives()) return rho * R * T * model.betaV(rho, T);
    Isochore isochore{&model, rho};
    return T * diff_romberg(p_T, &isochore, 1, T, th_inc1 * T, 1, 0.0, 1e99);
}

/// Repulsive pressure of hard spheres (Carnahan, Starling, J. Chem. Phys. 51 (1969) 635) with a
/// diameter that falls with temperature and the first quantum correction in lambda/d.
double sphere_pressure(double rho, double T, double M) {
    const double t = T / 30.41;
    const double d = 2.74725e-10 * (1.0 + 0.4378142 * t + 0.009951898 * t * t) /
                     (1.0 + 0.4745558 * t + 0.0133878 * t * t);  // m
    const double cm = 100.0 * d;
    const double eta = std::numbers::pi / 6.0 * NA * cm * cm * cm * rho;
    const double lambda = 0.03 * hP * NA / std::sqrt(std::numbers::pi * (M / 1000.0) * R * T);
    const double free = 1.0 - eta, free3 = free * free * free;
    return rho * R * T *
           (1.0 + (4.0 * eta - 2.0 * eta * eta) / free3 +
            lambda / d * eta * (1.0 + eta - 0.5 * eta * eta) / (free3 * free));
}
}  // namespace

void Visco::load0() {
    if (!model_) throw ThException(th_cannot_open);
    const corvane::CLocale c_numbers;
    corvane::check_name(model_->name());
    const std::string path =
        corvane::path_of("./CorvaneS/viscosity/dilute/%s", model_->name());
    const corvane::File file = corvane::open_file(path);
    FILE* f = file.get();
    // What cannot be read keeps its value (intended: read errors are not detected).
    int count = count_;
    const bool both = std::fscanf(f, "%9d%9d", &form_, &count) == 2;
    if (count > kMaxCount)
        throw corvane::FileError(th_cannot_open, path, "too many coefficients", 1);
    count_ = count;
    [[maybe_unused]] const int items = both ? std::fscanf(f, "%lf", &Tc_) : 0;
    dilute_.size(count_);
    dilute_.read(f, "%lf");
}

double Visco::eta0(double T) const {
    if (Tc_ == 0.0) throw ThException(th_no_option);  // nothing loaded
    const double reduced = T / Tc_;
    const double t = std::pow(reduced, 0.25);
    const double polynomial = dilute_.polynomial(t);
    return form_ == 2 ? polynomial * t * t * t / (reduced + 1.0) : polynomial;
}

void Visco::load1(char const* set) {
    if (!model_ || !set) throw ThException(th_cannot_open);
    const corvane::CLocale c_numbers;
    corvane::check_name(model_->name());
    const corvane::File file = corvane::open_file(corvane::path_of(
        "./models/viscosity/friction_theory/%s/%s;%d", set, model_->name(), id_));
    FILE* f = file.get();
    int level = level_;
    // What cannot be read keeps its value (intended: read errors are not detected).
    if (std::fscanf(f, "%*s\t%*s") == EOF || std::fscanf(f, "%*s\t%9d", &id_) == EOF ||
        std::fscanf(f, "%*s\t%9d", &level) == EOF)
        level = level_;
    level_ = static_cast<ft_level>(level);

    // Everything up to the text line is skipped; the line that tells the quality of the fit is
    // there.
    comment_[0] = '\0';
    char word[th_commlength];
    while (std::fscanf(f, "%79s", word) == 1) {
        const int separator = std::getc(f);
        if (std::strcmp(word, "text:") != 0) continue;
        if (separator == '\n' || !std::fgets(comment_, kCommentRead + 1, f)) break;
        if (!std::strchr(comment_, '\n')) {
            int c;
            while ((c = std::getc(f)) != '\n' && c != EOF) {
            }
        }
        comment_[std::strcspn(comment_, "\r\n")] = '\0';
        break;
    }

    const Shape shape = shape_of(level);
    a_.size(shape.a_rows, shape.cols);
    b_.size(shape.b_rows, shape.cols);
    c_.size(shape.c_rows, shape.c_cols);
    read_rows(f, a_);
    read_rows(f, b_);
    read_rows(f, c_);
}

void Visco::set1(Vector<double> const& p) {
    const bool second = p.n >= 13;
    if (p.n < (second ? 21 : 12)) throw MthException(mth_dimensions);
    const Shape shape = shape_of(second ? ft_2 : ft_1);
    make_hold(a_, shape.a_rows, 3);
    make_hold(b_, shape.b_rows, 3);
    if (second) make_hold(c_, shape.c_rows, 3);
    for (int j = 0; j < 3; ++j) {
        a_[0][j] = p[j];
        a_[1][j] = p[3 + j];
        b_[0][j] = p[6 + j];
        b_[1][j] = p[9 + j];
        if (!second) continue;
        b_[2][j] = p[12 + j];
        c_[0][j] = p[15 + j];
        c_[1][j] = p[18 + j];
    }
}

double Visco::eta(double rho, double T, double& pr, double& pa) const {
    const Shape shape = shape_of(level_);
    if (shape.cols == 0 || !model_ || !holds(a_, shape.a_rows, shape.cols) ||
        !holds(b_, shape.b_rows, shape.cols) || !holds(c_, shape.c_rows, shape.c_cols))
        throw ThException(th_no_option);

    const double G = Tc_ / T;
    const double p = model_->Z(rho, T) * R * T * rho;
    const double ideal = rho * R * T;
    double psi[5] = {1.0};
    if (level_ == ft_3) {
        double power = 1.0;
        for (int k = 1; k < 5; ++k) psi[k] = std::exp((power *= G) - 1.0) - 1.0;
    } else {
        psi[1] = std::exp(G) - 1.0;
        psi[2] = std::exp(G * G) - 1.0;
    }
    const auto kappa = [&](Matrix<double> const& m, int row, int exponent) {
        double sum = 0.0;
        for (int j = 0; j < shape.cols; ++j) sum += m[row][j] * psi[j];
        for (int k = 0; k < exponent; ++k) sum *= G;
        return sum;
    };

    if (level_ == ft_3) {
        const double dilute = rho * eta0(T) * c_[0].polynomial(1.0 / T);
        pr = sphere_pressure(rho, T, *model_->ppar(0));
        pa = p - pr;
        // Intended: the excess over the ideal pressure in the first power only.
        return dilute + kappa(b_, 0, 1) * (pr - ideal) + kappa(b_, 1, 2) * pr * pr +
               kappa(b_, 2, 3) * pr * pr * pr + kappa(a_, 0, 1) * pa + kappa(a_, 1, 2) * pa * pa +
               kappa(a_, 2, 3) * pa * pa * pa;
    }
    const double repulsive = thermal_pressure(*model_, rho, T);
    pr = repulsive;
    pa = p - repulsive;
    const double attraction = kappa(a_, 0, 1) * pa + kappa(a_, 1, 3) * pa * pa;
    if (level_ == ft_1) return kappa(b_, 0, 1) * pr + kappa(b_, 1, 3) * pr * pr + attraction;
    const double excess = pr - ideal;
    return kappa(b_, 2, 2) * pr * pr * pr + kappa(b_, 0, 1) * excess +
           kappa(b_, 1, 3) * excess * excess + attraction + kappa(c_, 0, 1) * ideal +
           kappa(c_, 1, 3) * ideal * ideal;
}

void Visco::show(double rms) const {
    const corvane::CLocale c_numbers;
    const int k = level_ == ft_3 ? 5 : 3;
    std::printf("r.m.s. dev.\t%11.4e\n", rms);
    write_row(stdout, 'a', a_, 0, k);
    write_row(stdout, 'a', a_, 1, k);
    write_row(stdout, 'b', b_, 0, k);
    write_row(stdout, 'b', b_, 1, k);
    if (level_ == ft_2) {
        write_row(stdout, 'b', b_, 2, k);
        write_row(stdout, 'c', c_, 0, k);
        write_row(stdout, 'c', c_, 1, k);
    }
    if (level_ == ft_3) {  // intended: a[2] is not shown
        write_row(stdout, 'b', b_, 2, 5);
        write_row(stdout, 'c', c_, 0, 7);
    }
}

void Visco::store1(char const* set, double rms) const {
    if (!model_ || !set) throw ThException(th_cannot_open);
    const corvane::CLocale c_numbers;
    // Intended: sets are written under the data home but read from ./models.
    corvane::check_storable(model_->name());
    corvane::check_storable(comment_, th_commlength);  // load1 cuts a longer one
    corvane::NewFile file(corvane::path_of("%s%s%s/%s;%d", th_home, "/viscosity/friction_theory/",
                                           set, model_->name(), id_));
    FILE* f = file.stream();
    std::fprintf(f, "name:\t%s\nid:\t%d\ntheory:\t%d\n", model_->name(), id_, int{level_});
    std::fprintf(f, "quality:\tr.m.s. dev. %11.4e\ntext:\t%s\n", rms, comment_);
    const long section = std::ftell(f);
    write_row(f, 'a', a_, 0, 3);
    write_row(f, 'a', a_, 1, 3);
    write_row(f, 'b', b_, 0, 3);
    write_row(f, 'b', b_, 1, 3);
    if (level_ == ft_2) {  // intended: level 3 is written as far as level 1
        write_row(f, 'b', b_, 2, 3);
        write_row(f, 'c', c_, 0, 3);
        write_row(f, 'c', c_, 1, 3);
    }
    file.commit(section);
}

void Visco::intro() const {
    std::printf("FT parameter set: %d {%s}\n\n", id_, comment_);
}

void Visco::set_comment(char const* text, ft_level const& level) {
    corvane::copy_text(comment_, th_commlength, text);
    level_ = level;
}

void Visco::reset() {
    a_.size(0, 0);
    b_.size(0, 0);
    c_.size(0, 0);
}
