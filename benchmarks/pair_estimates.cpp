// Reducing parameters from predictive models (corvane/catalogue/pair_estimate.h), for pairs whose
// own are published: bubble pressures with beta = gamma = 1 and with the estimate against the
// published.
//
//     bench_pair_estimates [-v] [N]
//
// N: only every Nth file. Pairs with beta = 1, which are combining rules, are left out.
// States: mole fractions 0.1 … 0.9 and 0.55 … 0.95 of Σ x·Tc, not below a triple point, at which
// the published pair has a bubble point below 50 MPa. A state without a bubble point, or off by
// more than a factor of two, counts as 100 %. A row: name, states, mean deviations of the two,
// model.
#include <corvane/catalogue/pair_estimate.h>
#include <corvane/corvane.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {
using corvane::Mixture;
constexpr double kMost = 1.0;

struct State {
    double T, p;
    Vector<double> z;
};
double pressure(ModelN const& m, double T, Vector<double> const& z) try {
    corvane::SaturationOptions how;
    how.trace = false;
    how.test = corvane::StabilityTest::quick;
    return corvane::bubble_T(m, T, z, how).p;
} catch (corvane::EquilibriumFailure const&) {
    return 0.0;
} catch (ThException const&) {
    return 0.0;
} catch (MthException const&) {
    return 0.0;
}
std::vector<State> states(Mixture const& published) {
    ModelN const& m = *published.model;
    std::vector<State> all;
    for (double x : {0.1, 0.3, 0.5, 0.7, 0.9})
        for (double part : {0.55, 0.65, 0.75, 0.85, 0.95}) {
            Vector<double> z(2);
            z[0] = x;
            z[1] = 1.0 - x;
            const double T = part * (x * m.mdl1[0]->Tcrit() + z[1] * m.mdl1[1]->Tcrit());
            if (T < published.validity.T_triple[0] || T < published.validity.T_triple[1]) continue;
            if (const double p = pressure(m, T, z); p > 0.0 && p < 50.0) all.push_back({T, p, z});
        }
    return all;
}
double deviation(ModelN const& m, std::vector<State> const& all) {
    double sum = 0.0;
    for (State const& s : all) {
        const double p = pressure(m, s.T, s.z);
        sum += p > 0.0 ? std::min(std::fabs(p / s.p - 1.0), kMost) : kMost;
    }
    return 100.0 * sum / static_cast<double>(all.size());
}
/// Neither fitted betas nor a fitted xi.
bool combined(ModelN const& m) {
    return m.param(0, 0, 1) == 1.0 && m.param(2, 0, 1) == 1.0 && m.param(5, 0, 1) == 0.0;
}
struct Row {
    double before, after;
};
double quantile(std::vector<double> v, double q) {
    if (v.empty()) return 0.0;
    std::sort(v.begin(), v.end());
    return v[static_cast<std::size_t>(q * static_cast<double>(v.size() - 1) + 0.5)];
}
}  // namespace

int main(int argc, char** argv) {
    bool verbose = false;
    int every = 1;
    for (int k = 1; k < argc; ++k)
        if (!std::strcmp(argv[k], "-v"))
            verbose = true;
        else
            every = std::max(1, std::atoi(argv[k]));
    const auto home = corvane::DataHome::find();
    std::vector<std::string> files;
    for (auto const& f : std::filesystem::directory_iterator(home.tree() / "parameters/MEOS/GERG"))
        files.push_back(f.path().filename().string());
    std::sort(files.begin(), files.end());
    std::map<std::string, std::vector<Row>> rows;
    double seconds = 0.0;
    long fits = 0;
    for (std::size_t k = 0; k < files.size(); k += static_cast<std::size_t>(every)) try {
            std::string const& f = files[k];
            const std::size_t plus = f.find('+'), semicolon = f.find(';');
            if (plus == std::string::npos || semicolon == std::string::npos) continue;
            const std::vector<std::string> names{f.substr(0, plus),
                                                 f.substr(plus + 1, semicolon - plus - 1)};
            const int number = std::atoi(f.c_str() + semicolon + 1);
            corvane::MixtureOptions options;
            options.pair_set = number;
            const Mixture published = corvane::open_mixture("MEOS+GERG", names, options);
            if (combined(*published.model)) continue;
            const auto all = states(published);
            if (all.size() < 3) continue;
            const int set = published.model->id(0, 0);
            options.pair_set = 9;  // of which there are none
            options.sets = {set, set};
            options.predict = false;
            Mixture unknown = corvane::open_mixture("MEOS+GERG", names, options);
            const double before = deviation(*unknown.model, all);
            const auto begin = std::chrono::steady_clock::now();
            const auto e = corvane::estimate_reducing(home, *unknown.model, 0, 1);
            seconds +=
                std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
            ++fits;
            const double after = deviation(*unknown.model, all);
            const std::string model =
                e ? e->model + (e->pair_set > 1 ? ' ' + std::to_string(e->pair_set) : "") : "none";
            for (std::string const& group :
                 {model, std::string("all"), "number " + std::to_string(number)})
                rows[group].push_back({before, after});
            if (verbose) {
                std::printf("%-48s %3zu %7.2f %7.2f  %s ", f.c_str(), all.size(), before, after,
                            model.c_str());
                for (int i = 0; i < 4; ++i) std::printf(" %.4f", unknown.model->param(i, 0, 1));
                std::printf("\n");
                std::fflush(stdout);
            }
        } catch (std::exception const& e) {
            std::printf("%s: %s\n", files[k].c_str(), e.what());
        }
    std::printf("%-14s %5s  %8s %8s %8s   %8s %8s %8s\n", "%", "pairs", "mean", "median", "9 in 10",
                "mean", "median", "9 in 10");
    for (auto const& [name, of] : rows) {
        std::vector<double> a, b;
        double ma = 0.0, mb = 0.0;
        for (Row const& r : of)
            a.push_back(r.before), b.push_back(r.after), ma += r.before, mb += r.after;
        const double n = static_cast<double>(of.size());
        std::printf("%-14s %5zu  %8.1f %8.1f %8.1f   %8.1f %8.1f %8.1f\n", name.c_str(), of.size(),
                    ma / n, quantile(a, 0.5), quantile(a, 0.9), mb / n, quantile(b, 0.5),
                    quantile(b, 0.9));
    }
    std::printf("%.1f ms an estimate, clock\n", 1e3 * seconds / static_cast<double>(fits));
}
