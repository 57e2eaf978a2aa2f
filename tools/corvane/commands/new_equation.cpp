// corvane new-equation: a project for an equation of state of one's own, which builds and runs as
// it is.
#include <tools/corvane/commands/commands.h>
#include <tools/corvane/text/errors.h>
#include <tools/corvane/text/text.h>

#include <corvane/catalogue/parameter_sets.h>

#include <fmt/format.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

namespace cli {
namespace {
namespace fs = std::filesystem;

// In all texts @NAME@ stands for the name.
constexpr char const* kSource =
    R"(// @NAME@: an equation of state. This is van der Waals' (1873); write yours in its place.
//
//     A^r/(RT) = -ln(1 - b rho) - a rho/(RT),   a = 27/8 R Ts b
#include <corvane/plugin/formula.h>

#include <cmath>

namespace {
struct Equation {
    static constexpr char const *name = "@NAME@", *mixing = "vdW1";
    // As the lines of a parameter file. The first three are M, a temperature and a volume.
    static constexpr corvane::Parameter parameters[] = {
        {.label = "M", .unit = "g/mol", .value = 40.0},
        {.label = "Ts", .unit = "K", .value = 150.0, .low = corvane::above_zero, .adjustable = true},
        {.label = "vs", .unit = "cm3/mol", .value = 30.0, .low = corvane::above_zero, .adjustable = true}};
    static constexpr corvane::Parameter pair_parameters[] = {{.label = "kij"}};
    enum { M, Ts, vs };

    /// A^r/(RT) of density mol/cm3 at temperature K, for any number type. Zero at zero density and
    /// relatively accurate near it (log1p); not-a-number past a pole.
    template <class T>
    T alphar(T temperature, T density, corvane::Fractions<T> const& x) const {
        using std::log1p;
        const T b = x.sum([&](int i) { return x.par(i, vs); });
        const T a = x.sum2([&](int i, int j) {  // a/R
            const double k = i == j ? 0.0 : x.pair(i, j, 0);
            return 27.0 / 8.0 * (1.0 - k) * std::sqrt(x.par(i, Ts) * x.par(i, vs) * x.par(j, Ts) * x.par(j, vs));
        });
        return -log1p(-b * density) - a * density / temperature;
    }
    /// The largest density, and one near the critical.
    corvane::DensityRange range(double /*temperature*/, corvane::Fractions<double> const& x) const {
        const double b = x.sum([&](int i) { return x.par(i, vs); });
        return {.top = (1.0 - 1e-9) / b, .loop = 1.0 / (3.0 * b)};
    }
};
}  // namespace

CORVANE_FORMULA(Equation)
)";

constexpr char const* kProject =
    R"(# cmake -B build -DCMAKE_PREFIX_PATH=<where Corvane is installed>
# cmake --build build
# ctest --test-dir build
# corvane saturation @NAME@ argon --T 120 --home build
cmake_minimum_required(VERSION 3.25)
project(@NAME@ LANGUAGES CXX)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()
find_package(corvane REQUIRED)
corvane_add_equation(@NAME@ MIXING vdW1 equation.cpp)

# The data home of this project is its build folder, over the installed one.
file(COPY parameters/ DESTINATION "${CMAKE_BINARY_DIR}/CorvaneS/parameters/@NAME@")

enable_testing()
find_program(CORVANE corvane HINTS "${corvane_DIR}/../../../bin")
add_test(NAME pure COMMAND "${CORVANE}" check-equation @NAME@ --home "${CMAKE_BINARY_DIR}")
add_test(NAME mixture COMMAND "${CORVANE}" check-equation @NAME@+vdW1 argon krypton --home "${CMAKE_BINARY_DIR}")
)";

/// pc, Tc and vc are those of the equation: b = vs, Tc = Ts, pc = R Ts/(8 vs), vc = 3 vs.
struct Set {
    char const* substance;
    double M, Tc, pc;
};
constexpr Set kSets[] = {{"argon", 39.948, 150.687, 4.863}, {"krypton", 83.798, 209.48, 5.525}};

std::string parameter_set(Set const& s) {
    constexpr double gas = 8.3144621;
    const double b = gas * s.Tc / (8.0 * s.pc);
    return fmt::format(
        "name:\t{}\nid:\t1\ntext:\tfrom the critical "
        "point\npc:\t{:.16g}\nTc:\t{:.16g}\nvc:\t{:.16g}\n"
        "M:\t{:.16g}\nTs:\t{:.16g}\nvs:\t{:.16g}\n",
        s.substance, s.pc, s.Tc, 3.0 * b, s.M, s.Tc, b);
}

std::string filled(std::string text, std::string const& name) {
    for (std::size_t at; (at = text.find("@NAME@")) != std::string::npos;)
        text.replace(at, 6, name);
    return text;
}

void write_file(fs::path const& path, std::string const& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) throw Failure(fmt::format("{} cannot be written", path.string()));
}

void check_name(std::string const& name) {
    bool fits = corvane::is_file_name(name) && name.size() < 24 &&
                std::isalpha(static_cast<unsigned char>(name[0]));
    for (char c : name)
        fits = fits && (std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-');
    if (!fits)
        throw Misuse(fmt::format(
            "'{}' is no name of an equation: up to 23 letters, digits, '-' and '_', a letter first",
            clipped(name)));
}

int create(fs::path const& folder) {
    const std::string name = folder.filename();
    check_name(name);
    std::error_code error;
    if (!fs::create_directory(folder, error) || !fs::create_directory(folder / "parameters", error))
        throw Failure(fmt::format("{}: {}", clipped(folder.string()),
                                  error ? error.message() : "is there already"));
    write_file(folder / "equation.cpp", filled(kSource, name));
    write_file(folder / "CMakeLists.txt", filled(kProject, name));
    for (Set const& set : kSets)
        write_file(folder / "parameters" / fmt::format("{};1", set.substance), parameter_set(set));
    const std::string path = folder;
    fmt::print(
        "{0}: equation.cpp, CMakeLists.txt, parameters\n"
        "cmake -S {0} -B {0}/build && cmake --build {0}/build && ctest --test-dir {0}/build\n",
        path);
    if (std::fflush(stdout) != 0) throw Failure("standard output does not take the answer");
    return 0;
}
}  // namespace

void add_new_equation(Program& program) {
    auto name = std::make_shared<std::string>();
    Command command = program.add("new-equation", "a project for an equation of state of one's own",
                                  [name] { return create(*name); });
    command.positional("NAME", *name,
                       "of the equation; the folder that is made, with a path before it or not",
                       true);
    command.examples("  corvane new-equation mine");
}

}  // namespace cli
