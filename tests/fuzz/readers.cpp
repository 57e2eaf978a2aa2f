// Every reader of a data file on files that nobody would write.
//
// The first byte of an input is the reader, the rest the file. What is read must obey the rules of
// the readers: a failure is a code and changes nothing, and a model that was loaded is stored and
// read back as itself and survives being asked for properties.
#include "fuzz.h"

#include <corvane/corvane.h>
#include <corvane/core/file_error.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include <unistd.h>

namespace {
namespace fs = std::filesystem;

using Pure = std::unique_ptr<Model1, corvane::Detach>;
using Mixed = std::unique_ptr<ModelN, corvane::Detach>;

struct Equation {
    char const* eos;
    char const* mixing;  // null: the reader is that of pure substances
};
constexpr Equation kEquations[] = {{"PR", nullptr},      {"SRK", nullptr},   {"MEOS", nullptr},
                                   {"PCSAFT", nullptr},  {"PR", "vdW1"},     {"SRK", "vdW1"},
                                   {"PCSAFT", "LB"},     {"MEOS", "GERG"}};
constexpr int kModels = 8;
enum Reader { kIdeal = kModels, kSolid, kReaction, kDilute, kFriction, kPlugin, kReaders };

/// A working directory with the plug-ins, made once and removed at the end.
class Home {
  public:
    Home() : before_(fs::current_path()) {
        std::string name = fs::temp_directory_path() / "corvane-fuzz-XXXXXX";
        dir_ = mkdtemp(name.data());
        for (Equation const& e : kEquations)
            for (char const* root : {"CorvaneS", "CorvaneS/models", "models"})
                fs::create_directories(dir_ / root / "parameters" / e.eos /
                                       (e.mixing ? e.mixing : ""));
        for (char const* folder : {"CorvaneS/ideal", "CorvaneS/solid", "CorvaneS/reaction",
                                   "CorvaneS/viscosity/dilute",
                                   "models/viscosity/friction_theory/set"})
            fs::create_directories(dir_ / folder);
        for (auto const& entry : fs::directory_iterator(before_ / "CorvaneS"))
            if (entry.path().extension() == ".dll")
                fs::create_symlink(entry.path(), dir_ / "CorvaneS" / entry.path().filename());
        for (Equation const& e : kEquations) {
            const fs::path pure = fs::path("CorvaneS/parameters") / e.eos;
            for (auto const& entry : fs::directory_iterator(before_ / pure))
                if (!e.mixing && entry.is_regular_file())
                    fs::create_symlink(entry.path(), dir_ / pure / entry.path().filename());
        }
        fs::current_path(dir_);
    }
    ~Home() {
        fs::current_path(before_);
        fs::remove_all(dir_);
    }

  private:
    fs::path before_, dir_;
};

std::string contents(fs::path const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
void write(fs::path const& path, std::string const& text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// Runs f; true if it raises no exception of the library. Any other leaves.
template <class F>
bool succeeds(F f) {
    try {
        f();
        return true;
    } catch (ThException const&) {
    } catch (MthException const&) {
    }
    return false;
}

template <class Model, class... Pair>
std::string section(Model const& m, Pair... pair) {
    char* text = nullptr;
    std::size_t size = 0;
    FILE* f = open_memstream(&text, &size);
    m.par_out(f, pair...);
    std::fclose(f);
    const std::string copy(text, size);
    std::free(text);
    return copy;
}
std::string all_of(Model1 const& m) {
    return std::string(m.name()) + ';' + std::to_string(m.id()) + m.comment() +
           std::to_string(m.pcrit()) + std::to_string(m.Tcrit()) + std::to_string(m.vcrit()) +
           section(m);
}

/// Nothing that is asked for may end the process or not end; what comes out is anybody's guess.
void use(Model1 const& m) {
    for (double T : {0.0, 77.0, 300.0, 1e6})
        succeeds([&] {
            double a = 0, b = 0;
            for (double p : {-1.0, 1e-3, 10.0})
                if (m.vcalc(p, T, 1, a, b) > 0) m.Z(a, T), m.Ar(a, T);
            m.xrho(T, 1);
            m.off(0.01, T);
            m.Hr(0.01, T);
        });
}

void read_pure(char const* eos, std::string const& text) {
    const std::string file = std::string("parameters/") + eos + "/x;1";
    write("CorvaneS/" + file, text);
    const Pure m(attach1(eos));
    m->name("x");
    m->id(1);
    const std::string before = all_of(*m);
    if (!succeeds([&] { m->load(eos); })) {
        fuzz_require(all_of(*m) == before, "a failed load changes nothing");
        return;
    }
    for (double x : {m->pcrit(), m->Tcrit(), m->vcrit()})
        fuzz_require(x >= 0 && std::isfinite(x), "critical constants are numbers");
    use(*m);
    m->name("x");
    m->id(1);
    for (double x : {m->pcrit(), m->Tcrit(), m->vcrit()})
        if (x == 0.0) return;  // not known: stored so, but not loaded
    const std::string loaded = section(*m);
    if (!succeeds([&] { m->store(eos); })) return;
    fs::rename("models/" + file, "CorvaneS/" + file);
    const Pure again(attach1(eos));
    again->name("x");
    again->id(1);
    fuzz_require(succeeds([&] { again->load(eos); }), "what store writes load reads");
    fuzz_require(section(*again) == loaded, "a stored parameter is itself");
}

void read_pair(Equation const& e, std::string const& text) {
    const std::string tree = std::string("parameters/") + e.eos + '/';
    const std::string file = tree + e.mixing + "/a+b;1";
    write("CorvaneS/" + file, text);
    const Mixed m(attachN(e.eos, e.mixing));
    m->alloc(2, e.eos);
    m->id(0, 1, 1);
    for (int i : {0, 1}) {
        m->mdl1[i]->name(i == 0 ? "a" : "b");  // the file has others, whose sets are there
        m->mdl1[i]->id(-1);
    }
    const std::string before = section(*m, 0, 1);
    if (!succeeds([&] { m->load(e.eos, e.mixing); })) {
        // Either the pair failed, and nothing changed, or a component whose number it gives did.
        fuzz_require(std::string(m->mdl1[0]->name()) != "a" || section(*m, 0, 1) == before,
                     "a failed pair changes nothing");
        return;
    }
    Vector<double> x(2);
    x.set(0.5);
    succeeds([&] {
        double a = 0, b = 0;
        m->vcalc(1, 300, x, 1, a, b);
        m->Z(0.001, 300, x);
        m->my(0.001, 300, x, 0);
        m->Hr(0.001, 300, x);
    });
    succeeds([&] { m->store2(e.eos, e.mixing); });
}

void read_part(int reader, std::string const& text) {
    static const Pure m(attach1("PR"));
    m->name("x");
    m->M(44), m->Ts(300), m->vs(30), m->Tcrit(300), m->vcrit(100);
    switch (reader) {
        case kIdeal:
            write("CorvaneS/ideal/x", text);
            if (!succeeds([&] { m->ideal.load(); })) return;
            for (double T : {1e-3, 300.0, 1e6})
                succeeds([&] { m->ideal.Sm(T), m->ideal.Hm(T), m->ideal.interval(T); });
            m->ideal.reset();
            return;
        case kSolid:
            write("CorvaneS/solid/x", text);
            succeeds([&] { m->solid.load(); });
            for (double T : {1e-3, 100.0, 200.0}) {
                double psub = 0, v = 0, kappa = 0;
                m->solid.sge(T, -1, psub, v, kappa);
                succeeds([&] { m->solid.Hm(0.1, T); });
            }
            m->solid.reset();
            return;
        case kReaction:
            write("CorvaneS/reaction/x", text);
            write("CorvaneS/ideal/x", "2\n100 30\n1000 60\n");
            m->ideal.load();
            succeeds([&] { m->load_thchem(); });
            fuzz_require(std::isfinite(m->ideal.Hm(300)), "a reference state is a number");
            m->ideal.reset();
            return;
        case kDilute:
            write("CorvaneS/viscosity/dilute/x", text);
            if (succeeds([&] { m->visco.load0(); })) succeeds([&] { m->visco.eta0(300); });
            return;
        case kFriction: {
            write("models/viscosity/friction_theory/set/x;1", text);
            m->visco.set_id(1);
            double pr = 0, pa = 0;
            if (succeeds([&] { m->visco.load1("set"); }))
                succeeds([&] { m->visco.eta(0.001, 300, pr, pa); });
            return;
        }
        default:  // a plug-in that is no library; one that is runs, and cannot be judged here
            if (text.compare(0, 4, "\177ELF") == 0) return;
            write("CorvaneS/libthX.dll", text);
            fuzz_require(!succeeds([&] { attach1("X"); }), "no library is refused");
    }
}
}  // namespace

std::vector<std::string> fuzz_seeds() {
    static std::vector<std::string> seeds;
    if (!seeds.empty()) return seeds;
    const auto add = [](int reader, fs::path const& folder) {
        std::vector<fs::path> files;
        for (auto const& entry : fs::directory_iterator(folder))
            if (entry.is_regular_file()) files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        // A dozen, evenly spread: the files of a folder differ little.
        for (std::size_t k = 0; k < 12 && k < files.size(); ++k)
            seeds.push_back(static_cast<char>(reader) +
                            contents(files[k * files.size() / std::min<std::size_t>(12, files.size())]));
    };
    for (int k = 0; k < kModels; ++k) {
        Equation const& e = kEquations[k];
        const fs::path folder = fs::path("CorvaneS/parameters") / e.eos / (e.mixing ? e.mixing : "");
        if (fs::exists(folder)) add(k, folder);
    }
    add(kIdeal, "CorvaneS/ideal");
    add(kSolid, "CorvaneS/solid");
    add(kReaction, "CorvaneS/reaction");
    add(kDilute, "CorvaneS/viscosity/dilute");
    for (auto const& set : fs::directory_iterator("models/viscosity/friction_theory"))
        add(kFriction, set.path());
    seeds.push_back(static_cast<char>(kPlugin) + std::string("no library"));
    return seeds;
}

std::vector<std::string> fuzz_words() {
    return {"name:",  "id:",       "text:",      "pc:",   "Tc:",        "vc:",    "M:",
            "Ts:",    "vs:",       "omega:",     "alpha:", "L:",        "m:",     "donors:",
            "R_eos:", "blocks:",   "power:",     "gaussian:", "gao_b:", "lemmon_2005:",
            "of:",    "kij:",      "lij:",       "betaT:", "xi:",       "F:",     "theory:",
            "level:", "1000000",   "1000001",    "1.7976931348623157e308"};
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static const std::vector<std::string> seeds = fuzz_seeds();  // before the directory changes
    static const Home home;
    if (size < 1) return 0;
    const int reader = data[0] % kReaders;
    const std::string text(reinterpret_cast<char const*>(data) + 1, size - 1);
    if (reader >= kModels)
        read_part(reader, text);
    else if (kEquations[reader].mixing)
        read_pair(kEquations[reader], text);
    else
        read_pure(kEquations[reader].eos, text);
    return 0;
}
