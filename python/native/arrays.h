// Arrays in, arrays out: views of NumPy arrays, loops over their elements without the interpreter's
// lock, on several threads, with a status for every element.
#pragma once

#include <corvane/corvane.h>

#include <nanobind/nanobind.h>
#include <nanobind/ndarray.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <exception>
#include <limits>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace py {

namespace nb = nanobind;

using Column = nb::ndarray<double const, nb::ndim<1>, nb::c_contig, nb::device::cpu>;
using Rows = nb::ndarray<double const, nb::ndim<2>, nb::c_contig, nb::device::cpu>;
using Array = nb::ndarray<nb::numpy, double>;
using Codes = nb::ndarray<nb::numpy, std::int8_t, nb::ndim<1>>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMega = 1e6;  // MPa in Pa, mol/cm³ in mol/m³

/// What became of an element; the words are in Python's Status.
enum Status : std::int8_t {
    ok = 0,
    no_solution = 1,   // the search was complete
    gave_up = 2,       // nothing is known
    invalid = 3,       // out of range, not finite
    no_ideal = 4,      // h, s, cp … without ideal-gas data
    several = 5,       // more than one state has these values
    interrupted = 6,   // not computed
};

/// An array of NumPy that owns its memory, filled with not-a-number.
class Out {
  public:
    explicit Out(std::vector<std::size_t> shape) : shape_(std::move(shape)) {
        std::size_t n = 1;
        for (std::size_t k : shape_) n *= k;
        data_ = new double[n];
        std::fill(data_, data_ + n, kNaN);
        owner_ = nb::capsule(data_, [](void* p) noexcept { delete[] static_cast<double*>(p); });
    }
    double* data() { return data_; }
    Array array() { return Array(data_, shape_.size(), shape_.data(), owner_); }

  private:
    std::vector<std::size_t> shape_;
    double* data_;
    nb::capsule owner_;
};

/// The status of every element, and the first failure in words.
class Report {
  public:
    explicit Report(std::size_t n) : n_(n), codes_(new std::int8_t[n]) {
        std::fill(codes_, codes_ + n, static_cast<std::int8_t>(interrupted));
        owner_ = nb::capsule(codes_, [](void* p) noexcept { delete[] static_cast<std::int8_t*>(p); });
    }
    void set(std::size_t i, Status status) { codes_[i] = status; }
    void fail(std::size_t i, Status status, std::string const& words) {
        codes_[i] = status;
        const std::lock_guard lock(mutex_);
        if (i < first_) {
            first_ = i;
            words_ = words;
        }
    }
    Codes codes() { return Codes(codes_, 1, &n_, owner_); }
    std::string const& words() const { return words_; }

  private:
    std::size_t n_;
    std::int8_t* codes_;
    nb::capsule owner_;
    std::mutex mutex_;
    std::size_t first_ = std::numeric_limits<std::size_t>::max();
    std::string words_;
};

/// More than one state: a choice that is not ours.
struct Several : std::runtime_error {
    Several() : std::runtime_error("more than one state has these values; see states()") {}
};

/// Calls f(i), and notes what it throws.
template <class F>
void attempt(Report& report, std::size_t i, F const& f) {
    const auto words = [](auto const& e) {
        std::string text = e.message();
        while (!text.empty() && text.back() == '\n') text.pop_back();
        return text;
    };
    try {
        f(i);
        report.set(i, ok);
    } catch (corvane::EquilibriumFailure const& e) {
        report.fail(i, e.kind() == corvane::EquilibriumFailure::Kind::no_solution ? no_solution : gave_up,
                    e.what());
    } catch (ThException const& e) {
        const bool none = e.number == th_generic || e.number == th_no_density ||
                          e.number == th_gas_only || e.number == th_liquid_only ||
                          e.number == th_trivial;
        report.fail(i, e.number == th_no_ideal ? no_ideal : none ? no_solution : invalid, words(e));
    } catch (MthException const& e) {
        report.fail(i, e.number == mth_iterations ? gave_up : invalid, words(e));
    } catch (Several const& e) {
        report.fail(i, several, e.what());
    } catch (std::exception const& e) {
        report.fail(i, invalid, e.what());
    }
}

/// f(i) for i = 0 … n − 1 on `threads` threads (0: as many as the machine has), blocks of elements
/// at a time, without the interpreter's lock. Ctrl-C ends it; what is done stays done.
/// @return false when it was interrupted
template <class F>
bool each(std::size_t n, int threads, Report& report, F const& f) {
    const std::size_t block = std::clamp<std::size_t>(n / 256, 1, 4096);
    std::atomic<std::size_t> next{0};
    std::atomic<bool> stop{false};
    const auto blocks = [&](auto&& between) {
        for (std::size_t from; !stop && (from = next.fetch_add(block)) < n; between())
            for (std::size_t i = from; i < std::min(n, from + block) && !stop; ++i)
                attempt(report, i, f);
    };
    unsigned count = threads > 0 ? static_cast<unsigned>(threads) : std::thread::hardware_concurrency();
    count = static_cast<unsigned>(std::min<std::size_t>(std::max(1u, count), (n + block - 1) / block));
    nb::gil_scoped_release released;
    std::vector<std::thread> others;
    for (unsigned k = 1; k < count; ++k) others.emplace_back([&] { blocks([] {}); });
    auto last = std::chrono::steady_clock::now();
    blocks([&] {
        const auto now = std::chrono::steady_clock::now();
        if (now - last < std::chrono::milliseconds(50)) return;
        last = now;
        nb::gil_scoped_acquire held;
        if (PyErr_CheckSignals() != 0) {
            PyErr_Clear();  // raised again by the caller, with what is done
            stop = true;
        }
    });
    for (std::thread& t : others) t.join();
    return !stop;
}

/// (array, status, first failure in words, finished)
inline nb::tuple result(Out& out, Report& report, bool finished) {
    return nb::make_tuple(out.array(), report.codes(), report.words(), finished);
}

inline void same_length(std::size_t a, std::size_t b) {
    if (a != b) throw nb::value_error("arrays of different lengths");
}

}  // namespace py
