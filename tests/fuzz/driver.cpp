// Runs a fuzzing target with mutations of its seeds, the same ones for the same number.
//
//     fuzz_TARGET [--runs N] [--seconds S] [--seed K]     prints "N executions, 0 faults"
//     fuzz_TARGET FILE...                                 runs the given inputs, nothing else
//
// The input that ends the process is left in ./fuzz-fault.
#include "fuzz.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

extern "C" [[gnu::weak]] void __sanitizer_set_death_callback(void (*)());

namespace {
std::string const* running = nullptr;
char fault_path[4096];

/// Leaves the input behind; async-signal-safe.
void save() {
    if (!running) return;
    const int f = open(fault_path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (f >= 0 && write(f, running->data(), running->size()) >= 0) close(f);
    constexpr char text[] = "fuzz: the input is in ";
    if (write(2, text, sizeof text - 1) < 0 || write(2, fault_path, std::strlen(fault_path)) < 0 ||
        write(2, "\n", 1) < 0)
        return;
}
void on_signal(int number) {
    save();
    std::signal(number, SIG_DFL);
    raise(number);
}

class Mutator {
  public:
    Mutator(std::vector<std::string> seeds, std::vector<std::string> words, unsigned number)
        : seeds_(std::move(seeds)), words_(std::move(words)), random_(number) {
        for (char const* word :
             {"nan", "-inf", "0", "-1", "1e308", "1e-308", "4.9e-324", "1e999", "2147483647",
              "2147483648", "-2147483649", "99999999999999999999", "1,5", "1.5D+02", "0x10", "1e",
              "..", "../../../x", "%s%n", "\x1b[2J", "\xff\xfe", "#", ""})
            words_.emplace_back(word);
        words_.push_back(std::string(1, '\0'));
        words_.push_back(std::string(200, 'x'));
    }

    std::string next() {
        std::string text = seeds_[below(seeds_.size())];
        for (std::size_t k = 0, n = 1 + below(4); k < n; ++k) mutate(text);
        return text;
    }

  private:
    std::size_t below(std::size_t n) { return n == 0 ? 0 : random_() % n; }

    void mutate(std::string& text) {
        const std::size_t at = below(text.size() + 1), length = below(text.size() - at + 1);
        switch (below(9)) {
            case 0:
                if (at < text.size()) text[at] = static_cast<char>(random_());
                break;
            case 1: text.erase(at, below(9)); break;
            case 2: text.erase(at, length); break;
            case 3: text.insert(at, text.substr(below(text.size() + 1), below(200))); break;
            case 4: text.insert(at, 1, static_cast<char>(random_())); break;
            case 5: text.resize(at); break;
            case 6: {  // the end of another seed
                std::string const& other = seeds_[below(seeds_.size())];
                text.replace(at, std::string::npos, other.substr(below(other.size() + 1)));
                break;
            }
            default: {  // one word for another; numbers are what these files consist of
                constexpr char space[] = " \t\n";
                const std::size_t from = std::min(text.find_first_not_of(space, at), text.size());
                const std::size_t to = std::min(text.find_first_of(space, from), text.size());
                text.replace(from, to - from, words_[below(words_.size())]);
            }
        }
        if (text.size() > 1 << 16) text.resize(1 << 16);
    }

    std::vector<std::string> seeds_, words_;
    std::mt19937 random_;
};

void run(std::string const& input) {
    running = &input;
    constexpr itimerval limit{{0, 0}, {10, 0}},
        none{};  // seconds of the processor, beside whatever other work
    setitimer(ITIMER_PROF, &limit, nullptr);
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(input.data()), input.size());
    setitimer(ITIMER_PROF, &none, nullptr);
    running = nullptr;
}

std::string contents(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
}  // namespace

int main(int argc, char** argv) {
    long runs = 1000, seconds = 0;
    unsigned number = 1;
    std::vector<std::string> inputs;
    for (int k = 1; k < argc; ++k) {
        const std::string word = argv[k];
        const char* value = k + 1 < argc ? argv[k + 1] : "";
        if (word == "--runs")
            runs = std::atol(value), ++k;
        else if (word == "--seconds")
            seconds = std::atol(value), ++k;
        else if (word == "--seed")
            number = static_cast<unsigned>(std::atol(value)), ++k;
        else
            inputs.push_back(contents(word));
    }
    const std::string path = std::filesystem::absolute("fuzz-fault");
    path.copy(fault_path, sizeof fault_path - 1);
    for (int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGPROF})
        std::signal(signal, on_signal);
    if (__sanitizer_set_death_callback) __sanitizer_set_death_callback(save);

    const std::vector<std::string> seeds = fuzz_seeds();
    if (seeds.empty()) {
        std::fprintf(stderr, "fuzz: no seeds; run in the data home\n");
        return 1;
    }
    if (!inputs.empty()) {
        for (std::string const& input : inputs) run(input);
        std::printf("%zu executions, 0 faults\n", inputs.size());
        return 0;
    }
    for (std::string const& seed : seeds) run(seed);
    Mutator mutator(seeds, fuzz_words(), number);
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(seconds);
    long count = 0;
    while (seconds > 0 ? Clock::now() < end : count < runs) {
        run(mutator.next());
        ++count;
    }
    std::printf("%ld executions, 0 faults\n", count + static_cast<long>(seeds.size()));
    return 0;
}
