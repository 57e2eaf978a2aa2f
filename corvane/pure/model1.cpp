// The substance's common data: names, files, reports, density-range tables.
#include <corvane/core/files.h>
#include <corvane/pure/model1.h>
#include <corvane/pure/plugin_file.h>

#include <cmath>
#include <cstring>
#include <string>

namespace {
constexpr int kCommentRead =
    78;  // intended: a longer comment line runs into the fields that follow

/// Value of table y at T, linear between the temperatures t, which descend.
double interpolate(Vector<double> const& t, Vector<double> const& y, double T) {
    const int n = t.size();
    if (n < 1 || T > t[0]) throw ThException(th_generic);
    if (n == 1) return y[0];
    int k = 1;
    if (n > 2 && T < t[1])
        for (k = 2; k < n - 1 && t[k] > T; ++k) {
        }
    if (t[k] == t[k - 1]) return y[k];
    return y[k] + (y[k - 1] - y[k]) * (T - t[k]) / (t[k - 1] - t[k]);
}
}  // namespace

/// What load changes, to be put back if it fails.
struct Model1::Header {
    explicit Header(Model1 const& m)
        : id(m.id_), pcrit(m.pcrit_), Tcrit(m.Tcrit_), vcrit(m.vcrit_) {
        std::memcpy(name, m.name_, sizeof name);
        std::memcpy(comment, m.comment_, sizeof comment);
    }
    void restore(Model1& m) const {
        m.id_ = id;
        std::memcpy(m.name_, name, sizeof name);
        std::memcpy(m.comment_, comment, sizeof comment);
        m.pcrit_ = pcrit, m.Tcrit_ = Tcrit, m.vcrit_ = vcrit;
    }
    int id;
    char name[th_namelength], comment[th_commlength];
    double pcrit, Tcrit, vcrit;
};

Model1::Model1() {
    solid.model(this);
    ideal.model(this);
    visco.model(this);
}

void Model1::name(char const* text) {
    corvane::copy_text(name_, th_namelength, text);
}
void Model1::comment(char const* text) {
    corvane::copy_text(comment_, th_commlength, text);
}

void Model1::params(Vector<double> const& v) {
    for (int i = 0; i < v.size(); ++i) *ppar(i) = v[i];
}

int Model1::load(char const* eos) {
    if (!eos) throw ThException(th_cannot_open);
    const corvane::CLocale c_numbers;
    corvane::check_name(name_);
    const std::string path = corvane::path_of("./CorvaneS/parameters/%s/%s;%d", eos, name_, id_);
    corvane::File file = corvane::open_file(path);
    if (eos_ && corvane::is_other_plugin(eos, eos_))
        throw corvane::FileError(th_cannot_open, path,
                                 "a parameter set of " + std::string(eos) + ", not " + eos_);
    FILE* f = file.get();
    const Header before(*this);
    try {
        corvane::reading(path, f, [&] {
            // Labels are skipped and what cannot be read is not detected: a field keeps what it
            // had, and the labels of the section are out of step.
            static_cast<void>(std::fscanf(f, "%*s\t%31s", name_) == 1 &&
                              std::fscanf(f, "%*s\t%9d", &id_) == 1);
            corvane::check_name(name_);
            static_cast<void>(std::fscanf(f, "%*s"));
            corvane::read_text(f, comment_, th_commlength, kCommentRead);
            for (double* field : {&pcrit_, &Tcrit_, &vcrit_}) {
                double x = *field;
                const bool read = std::fscanf(f, "%*s\t%lf", &x) == 1;
                if (!(x > 0.0 && std::isfinite(x)))
                    corvane::malformed(f, "a critical constant must be positive");
                if (!read) continue;
                *field = x;
                static_cast<void>(std::fscanf(f, "%*[\r\n]"));
            }
            par_in(f, 1);
        });
    } catch (...) {
        before.restore(*this);
        throw;
    }
    return std::fclose(file.release());
}

void Model1::store(char const* eos) const {
    if (!eos) throw ThException(th_cannot_open);
    const corvane::CLocale c_numbers;
    corvane::check_storable(name_);
    corvane::check_storable(comment_, kCommentRead);
    // intended: another tree than the one that load reads
    const std::string path = corvane::path_of("./models/parameters/%s/%s;%d", eos, name_, id_);
    for (double x : {pcrit_, Tcrit_, vcrit_})  // zero, not known, is left for somebody to fill in
        if (!(x >= 0.0 && std::isfinite(x)))
            throw corvane::FileError(th_cannot_open, path, "a critical constant is not positive");
    corvane::NewFile file(path);
    std::fprintf(file.stream(),
                 "name:\t%s\nid:\t%d\ntext:\t%s\npc:\t%15.8e\nTc:\t%15.8e\nvc:\t%15.8e\n", name_,
                 id_, comment_, pcrit_, Tcrit_, vcrit_);
    const long section = std::ftell(file.stream());
    par_out(file.stream());
    file.commit(section);
}

void Model1::intro(char const* title, int level) const {
    const corvane::CLocale c_numbers;
    for (int k = 0; k < 75; ++k) std::putchar('=');
    std::printf("\n%s %s\n\n", title ? title : "", name_);
    std::printf("equation of state: %s\n", eos_ ? eos_ : "");
    std::printf("parameter set:     %d {%s}\n\n", id_, comment_);
    if (level & 1) {
        par_out(stdout);
        std::printf("\n");
    }
    if (level & 2) ideal.info();
    if (level & 4) solid.info();
    std::fflush(stdout);
}

void Model1::show1(char const* title) const {
    const corvane::CLocale c_numbers;
    std::printf("\n%s\n\n", title ? title : "");
    par_out(stdout);
    std::printf("\n");
}

double Model1::xrho(double T, int phase) const {
    return interpolate(Ttable_, phase == 1 ? dense_ : dilute_, T);
}

bool Model1::off(double rho, double T) const {
    if (!(interpolate(Ttable_, dense_, T) > rho)) return false;
    return rho > interpolate(Ttable_, dilute_, T);
}
