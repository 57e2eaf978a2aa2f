// Pseudo-random numbers.
#include <corvane/core/numelo.h>

#include <array>
#include <atomic>
#include <cstdint>

namespace {

/// SplitMix64 (Steele, Lea & Flood, OOPSLA 2014, p. 453): a Weyl sequence behind a mixing function.
class Generator {
  public:
    std::uint64_t next() {
        std::uint64_t z = state_ += kStep;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }

    /// Generators of different numbers begin 2^40 draws apart.
    explicit Generator(std::uint64_t number) : state_(kFirst + kStep * (number << 40)) {}

  private:
    static constexpr std::uint64_t kFirst = 0x853c49e6748fea9bu, kStep = 0x9e3779b97f4a7c15u;
    std::uint64_t state_;
};

/// Bays & Durham: the last number drawn picks the table entry to hand out, which a new one
/// replaces.
class Shuffle {
  public:
    explicit Shuffle(std::uint64_t number) : generator_(number) {
        for (std::uint64_t& entry : table_) entry = generator_.next();
        last_ = generator_.next();
    }
    std::uint64_t next() {
        std::uint64_t& entry = table_[last_ >> 58];
        last_ = entry;
        entry = generator_.next();
        return last_;
    }

  private:
    Generator generator_;
    std::array<std::uint64_t, 64> table_{};
    std::uint64_t last_ = 0;
};

}  // namespace

double ran_shuffle() {
    static std::atomic<std::uint64_t> threads{0};
    thread_local Shuffle shuffle(threads++);
    // The middles of 2^52 equal cells, so neither 0 nor 1.
    return (static_cast<double>(shuffle.next() >> 12) + 0.5) * 0x1p-52;
}
