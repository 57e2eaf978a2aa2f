// Arguments, files and answers that nobody would write, the same ones every time. Whatever comes,
// the program ends by itself with 0, 1 or 2, and unless with 0, says why in one line. The
// environment variables CORVANE_FUZZ_RUNS, or CORVANE_FUZZ_SECONDS in its place, and CORVANE_FUZZ_SEED
// make the run longer and other.
#include <cli/program.h>
#include <support/scratch.h>

#include <chrono>
#include <cstdlib>
#include <random>

namespace {
const std::vector<std::string> kSeeds = {
    "list propan", "list --eos PR --substance CO2", "state PR propane --T 300 --p 1",
    "state MEOS water --T 300:500:100 --rho 0.01", "saturation PR CO2 --T 240:300:30 --all",
    "saturation PR CO2 --compare points.csv", "density PR propane --T 300 --p 0.9 --strategy all",
    "critical PR CO2", "solid MEOS water --T 260 --p 10", "viscosity MEOS CO2 --T 300 --p 0.1,10",
    "range PR propane --show rho,Z,cp", "mixture PR+vdW1 methane=0.7 propane=0.3 --T 300 --p 5",
    "bubble PR+vdW1 methane=0.3 propane=0.7 --T 250,280 --branch lower",
    "dew PR+vdW1 methane=0.7 propane --p 1 --data points.csv",
    "flash PR+vdW1 methane=0.5 propane=0.5 --p 2 --h 4000",
    "pxy PR+vdW1 propane butane --T 323.15 --data points.csv", "txy PR+vdW1 propane butane --p 1",
    "envelope PR+vdW1 methane=0.8 ethane=0.15 propane --p-start 0.1",
    "equilibrium PR+vdW1 CO2 propane --scan CO2=0:1:0.5 --T 270",
    "split PR+vdW1 methane=0.5 propane=0.5 --T 300 --p 5",
    "critical-line PR+vdW1 methane=0.7 ethane=0.2 propane",
    "critical-line PR+vdW1 methane propane --at 0.1:0.9:0.4", "critical-line PR+vdW1 CO2=1",
    "three-phase PR+vdW1 ethane methanol --T 290", "azeotrope PR+vdW1 CO2 ethane --T 220",
    "solubility PR+vdW1 methane CO2 --solid CO2 --T 120 --p 5",
    "state CO2 --input points.csv", "flash PR+vdW1 methane=0.5 propane --input points.csv --csv",
    "transport propane --T 300 --p 0.1", "transport PR+vdW1 methane=0.3 propane --T 280 --p 3",
    "diffusion water --T 300", "surface-tension CO2 --T 250,300 --mass",
    "interface PR+vdW1 methane=0.5 decane --T 311", "excess PR+vdW1 methane=0.3 propane --T 250 --p 5",
    "activity PR+vdW1 methane propane --scan methane=0:1:0.5 --T 250 --p 5",
    "henry PR+vdW1 methane propane --T 250", "virial PR+vdW1 methane=0.5 propane --T 300",
    "ideal-curve PR nitrogen --kind boyle", "reaction N2+3H2=2NH3 --T 700",
    "property-diagram PR propane --kind ph --csv", "diagram PR+vdW1 methane propane",
    "ternary PR+vdW1 methane ethane propane --T 230 --p 3 --mesh 4",
    "residue-curves PR+vdW1 propane butane pentane --p 0.5 --mesh 3",
    "fit PCSAFT propane --data points.csv --adjust m",
    "new-equation mine"};
const std::vector<std::string> kWords = {
    "0", "-1", "nan", "inf", "1e308", "1e-308", "4.9e-324", "1e999", "0x10", "1:2:3", "3:1:1",
    "1:1:0", "1,,2", ":", "=", "+", "PR", "PR+vdW1", "MEOS+GERG", "water=1", "water=0", "=1",
    "water=nan", "CO2", "helium=1e-300", "../PR/propane;1", ";", "--T", "--p", "--mass", "--json",
    "--csv", "--full", "--unit-T", "C", "--unit-p", "bar", "--set", "2147483648", "--kij", "9",
    "--home", ".", "\x1b[2J", "\xff\xfe", "%s%n", "--", "-h", "points.csv", "/dev/null"};
const std::vector<std::string> kFiles = {
    "# source\nT/K,p/MPa,x_propane,y_propane,rhoL/(kg/m3)\n280,1.2,0.5,0.6,900\n290,1.4,,-,\n",
    "T_C,p [bar],x,y\n-3,10,0.1,0.2\n\"7\",12,\"0,2\",1\n", "x1,y1,T/K\n0,1,300\n"};

std::string quoted(std::string const& word) {
    std::string text = "'";
    for (char c : word) text += c == '\'' ? "'\\''" : std::string(1, c);
    return text + "'";
}

class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    std::size_t below(std::size_t n) { return engine_() % n; }
    template <class T>
    T const& of(std::vector<T> const& list) {
        return list[below(list.size())];
    }
    /// Up to three bytes changed, left out, doubled or cut off behind.
    std::string damaged(std::string text) {
        for (std::size_t k = below(4); k > 0 && !text.empty(); --k) {
            const std::size_t at = below(text.size());
            switch (below(4)) {
                case 0:
                    text[at] = static_cast<char>(1 + below(255));
                    break;
                case 1:
                    text.erase(at, 1 + below(3));
                    break;
                case 2:
                    text.insert(at, text.substr(at, 1 + below(8)));
                    break;
                default:
                    if (below(4) == 0) text.resize(at);
            }
        }
        return text;
    }

  private:
    std::mt19937 engine_;
};

unsigned number(char const* variable, unsigned otherwise) {
    char const* const text = std::getenv(variable);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}
}  // namespace

TEST(CliFuzz, WhateverComesItEndsByItselfAndSaysWhy) {
    const Scratch scratch;
    const std::string home = "CORVANE_DATA=" + scratch.home().string();
    Random random(number("CORVANE_FUZZ_SEED", 1));
    const unsigned limit = number("CORVANE_FUZZ_RUNS", 250), seconds = number("CORVANE_FUZZ_SECONDS", 0);
    const auto start = std::chrono::steady_clock::now();
    const auto enough = [&](unsigned runs) {
        return seconds == 0 ? runs >= limit
                            : std::chrono::steady_clock::now() - start >= std::chrono::seconds(seconds);
    };
    int codes[3] = {};
    unsigned runs = 0;
    for (; !enough(runs); ++runs) {
        std::istringstream seed(random.of(kSeeds));
        std::vector<std::string> words;
        for (std::string word; seed >> word;) words.push_back(word);
        for (std::size_t k = random.below(3); k > 0; --k) {
            const std::size_t at = random.below(words.size());
            switch (random.below(4)) {
                case 0:
                    words[at] = random.of(kWords);
                    break;
                case 1:
                    words.insert(words.begin() + static_cast<std::ptrdiff_t>(at),
                                 random.of(kWords));
                    break;
                case 2:
                    words[at] = random.damaged(words[at]);
                    break;
                default:
                    if (words.size() > 1)
                        words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
            }
        }
        std::string arguments;
        for (std::string const& word : words) arguments += quoted(word) + " ";
        scratch.write("points.csv", random.damaged(random.of(kFiles)));
        scratch.write("answers", random.damaged("(300 400 50) 1.0"));
        SCOPED_TRACE(arguments);
        // A calculation may take long where the arguments ask for much; a hang is a fault, whether
        // it works (seconds of the processor) or waits (an hour: no load of the machine is that
        // high).
        const Outcome outcome = run_corvane(arguments + " <answers",
                                            "ulimit -t 60; " + home + " timeout --signal=INT 3600");
        ASSERT_TRUE(outcome.code >= 0 && outcome.code <= 2) << outcome.code << outcome.err;
        ++codes[outcome.code];
        EXPECT_EQ(outcome.code == 2 && !outcome.out.empty(), false) << outcome.out;
        EXPECT_EQ(outcome.err.find("ERROR: AddressSanitizer"), std::string::npos) << outcome.err;
        EXPECT_EQ(outcome.err.find("runtime error"), std::string::npos) << outcome.err;
        if (outcome.code != 0) {
            EXPECT_NE(outcome.err.find("corvane: "), std::string::npos) << outcome.err;
        }
        for (char c : outcome.err)
            EXPECT_TRUE(c == '\n' || static_cast<unsigned char>(c) >= 0x20) << outcome.err;
    }
    // Most are refused, some answered: the damage is neither total nor none.
    for (int count : codes) EXPECT_GT(count, static_cast<int>(runs / 20));
    std::printf("%u runs: %d done, %d failed, %d refused\n", runs, codes[0], codes[1], codes[2]);
}
