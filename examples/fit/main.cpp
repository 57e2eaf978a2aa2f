// PC-SAFT parameters of hexane from measured points: main hexane.csv
#include <corvane/fit/fit.h>

#include <cstdio>
#include <exception>
#include <utility>

int main(int argc, char** argv) {
    using namespace corvane::fit;
    if (argc != 2) return 2;
    try {
        corvane::Fluid hexane = corvane::open("PCSAFT", "hexane");
        DataSet data = read_data(argv[1], hexane.home, {hexane.substance}, hexane.model->M());
        Problem problem;
        problem.add(std::move(hexane), {std::move(data)});
        for (char const* name : {"m", "Ts", "vs"}) problem.adjust(name);
        const Result r = solve(problem);
        for (FittedParameter const& p : r.parameters)
            std::printf("%s = %.4f, standard error %.2g\n", p.name.c_str(), p.value, p.error);
        for (SetReport const& s : r.sets)
            std::printf("%s: mean deviation %.2f %%, before %.2f %%\n", name_of(s.what),
                        100.0 * s.after.mean_absolute, 100.0 * s.before.mean_absolute);
        return r.converged ? 0 : 1;
    } catch (std::exception const& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
