// Arrays in, arrays out: views of NumPy arrays, loops over their elements without the interpreter's
// lock, on several threads, with a status for every element.
#pragma once

#include <corvane/corvane.h>

#include <nanobind/nanobind.h>
#include <nanobind/ndarray.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <limits>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <sys/mman.h>

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
    not_tabulated = 7,
};

/// Memory of arrays, which NumPy frees.
struct Memory {
    explicit Memory(std::size_t numbers) {
        const std::size_t bytes = numbers * sizeof(double);
        // Whole large pages: a page fault for every 4 KB costs as much as a cubic equation.
        const bool large = bytes > 2 * kLargePage;
        const std::size_t page = large ? kLargePage : 64;
        data = static_cast<double*>(std::aligned_alloc(page, (bytes + page) / page * page));
        if (!data) throw std::bad_alloc();
        if (large) madvise(data, bytes, MADV_HUGEPAGE);
        owner = nb::capsule(data, [](void* p) noexcept { std::free(p); });
    }
    static constexpr std::size_t kLargePage = 2u << 20;
    double* data;
    nb::capsule owner;
};

/// A table of NumPy with a row for every element, which owns its memory. Rows are written once, by
/// `each`; what nobody wrote is not-a-number.
class Out {
  public:
    explicit Out(std::vector<std::size_t> shape)
        : shape_(std::move(shape)), width_(widths(shape_)), memory_(shape_[0] * width_) {}
    double* data() { return memory_.data; }
    double* row(std::size_t i) { return memory_.data + i * width_; }
    void clear(std::size_t i) { std::fill_n(row(i), width_, kNaN); }
    std::size_t width() const { return width_; }
    Array array() { return Array(memory_.data, shape_.size(), shape_.data(), memory_.owner); }

  private:
    static std::size_t widths(std::vector<std::size_t> const& shape) {
        std::size_t width = 1;
        for (std::size_t k = 1; k < shape.size(); ++k) width *= shape[k];
        return width;
    }
    std::vector<std::size_t> shape_;
    std::size_t width_;
    Memory memory_;
};

/// The same column after column: NumPy sees a table of n rows. Written by `each_block`.
class OutColumns {
  public:
    OutColumns(std::size_t n, std::size_t width) : n_(n), width_(width), memory_(n * width) {}
    double* column(std::size_t k) { return memory_.data + k * n_; }
    void put(std::size_t i, double const* row) {
        for (std::size_t k = 0; k < width_; ++k) column(k)[i] = row[k];
    }
    void clear(std::size_t i) {
        for (std::size_t k = 0; k < width_; ++k) column(k)[i] = kNaN;
    }
    std::size_t width() const { return width_; }
    Array array() {
        const std::size_t shape[] = {n_, width_};
        const std::int64_t strides[] = {1, static_cast<std::int64_t>(n_)};
        return Array(memory_.data, 2, shape, memory_.owner, strides);
    }

  private:
    std::size_t n_, width_;
    Memory memory_;
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
    bool done(std::size_t i) const { return codes_[i] != interrupted; }
    int code(std::size_t i) const { return codes_[i]; }
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

/// Outside a table, or in one of its gaps.
struct NotTabulated : std::runtime_error {
    NotTabulated() : std::runtime_error("outside the table, or in one of its gaps: ask the equation") {}
};

/// Whether what is called writes every value of a row, or only some beside not-a-numbers.
enum class Rows_are { written_whole, written_partly };

/// What becomes of f(): ok, or why not, in words.
template <class F>
Status outcome(F const& f, std::string& words) {
    const auto text_of = [](auto const& e) {
        std::string text = e.message();
        while (!text.empty() && text.back() == '\n') text.pop_back();
        return text;
    };
    try {
        f();
        return ok;
    } catch (corvane::EquilibriumFailure const& e) {
        words = e.what();
        return e.kind() == corvane::EquilibriumFailure::Kind::no_solution ? no_solution : gave_up;
    } catch (ThException const& e) {
        const bool none = e.number == th_generic || e.number == th_no_density ||
                          e.number == th_gas_only || e.number == th_liquid_only ||
                          e.number == th_trivial;
        words = text_of(e);
        return e.number == th_no_ideal ? no_ideal : none ? no_solution : invalid;
    } catch (MthException const& e) {
        words = text_of(e);
        return e.number == mth_iterations ? gave_up : invalid;
    } catch (Several const& e) {
        words = e.what();
        return several;
    } catch (NotTabulated const& e) {
        words = e.what();
        return not_tabulated;
    } catch (std::exception const& e) {
        words = e.what();
        return invalid;
    }
}

/// Calls f(i, row), and notes what it throws; then the row is not-a-number.
template <Rows_are how, class F>
void attempt(Out& out, Report& report, std::size_t i, F const& f) {
    std::string words;
    if constexpr (how == Rows_are::written_partly) out.clear(i);
    const Status status = outcome([&] { f(i, out.row(i)); }, words);
    if (status == ok) return report.set(i, ok);
    out.clear(i);
    report.fail(i, status, words);
}

/// Between elements, in the thread that was called: looks for Ctrl-C, and shows progress once a
/// second has passed. Holds the interpreter's lock while it does.
class Between {
  public:
    explicit Between(std::size_t n) : n_(n) {}
    ~Between() {
        if (!bar_.is_valid()) return;
        const nb::gil_scoped_acquire held;
        try {
            if (!bar_.is_none()) bar_.attr("close")();
        } catch (nb::python_error const& e) {
            if (e.matches(PyExc_KeyboardInterrupt)) PyErr_SetInterrupt();  // heard after the call
        }
        bar_.reset();
    }
    /// @return false to stop
    bool operator()(std::size_t done) {
        const auto now = Clock::now();
        if (now - last_ < std::chrono::milliseconds(50)) return true;
        last_ = now;
        const nb::gil_scoped_acquire held;
        try {
            if (!bar_.is_valid() && now - start_ > std::chrono::seconds(1))
                bar_ = nb::module_::import_("corvane.progress").attr("bar")(n_);
            if (bar_.is_valid() && !bar_.is_none()) bar_.attr("show")(done);
        } catch (nb::python_error const& e) {
            if (e.matches(PyExc_KeyboardInterrupt)) return false;  // it came while the bar was drawn
            bar_ = nb::none();  // no picture of progress is no failure
        }
        if (PyErr_CheckSignals() == 0) return true;
        PyErr_Clear();  // raised again by the caller, with what is done
        return false;
    }

  private:
    using Clock = std::chrono::steady_clock;
    std::size_t n_;
    Clock::time_point start_ = Clock::now(), last_ = start_;
    nb::object bar_;
};

/// f(i, row) for i = 0 … n − 1 on `threads` threads (0: as many as the machine has), without the
/// interpreter's lock. Ctrl-C ends it; what is done stays done.
/// @return false when it was interrupted
template <Rows_are how = Rows_are::written_partly, class F>
bool each(Out& out, Report& report, std::size_t n, int threads, F const& f) {
    const std::size_t block = std::clamp<std::size_t>(n / 256, 1, 4096);
    std::atomic<std::size_t> next{0}, done{0};
    std::atomic<bool> stop{false};
    unsigned count = threads > 0 ? static_cast<unsigned>(threads) : std::thread::hardware_concurrency();
    count = static_cast<unsigned>(std::min<std::size_t>(std::max(1u, count), (n + block - 1) / block));
    const auto blocks = [&](auto&& between) {
        for (std::size_t from; !stop && (from = next.fetch_add(block)) < n;) {
            const std::size_t to = std::min(n, from + block);
            std::size_t i = from;
            for (std::size_t mark = i; i < to && !stop; mark = i) {
                // one element of an equilibrium may last as long as thousands of a property
                for (const std::size_t end = std::min(to, i + between.stride()); i < end && !stop; ++i)
                    attempt<how>(out, report, i, f);
                done += i - mark;
                if (!between(done)) stop = true;
            }
        }
    };
    struct Silent {
        std::size_t stride() const { return 64; }
        bool operator()(std::size_t) const { return true; }
    };
    struct Watching : Between {
        using Between::Between;
        std::size_t stride() const { return stride_; }
        bool operator()(std::size_t k) {
            const auto now = std::chrono::steady_clock::now();
            const auto spent = now - before_;
            before_ = now;
            if (spent < std::chrono::milliseconds(1)) stride_ = std::min<std::size_t>(2 * stride_, 4096);
            if (spent > std::chrono::milliseconds(20)) stride_ = std::max<std::size_t>(stride_ / 4, 1);
            return Between::operator()(k);
        }
        std::size_t stride_ = 1;
        std::chrono::steady_clock::time_point before_ = std::chrono::steady_clock::now();
    };
    const nb::gil_scoped_release released;
    std::vector<std::thread> others;
    for (unsigned k = 1; k < count; ++k) others.emplace_back([&] { blocks(Silent{}); });
    blocks(Watching(n));
    for (std::thread& t : others) t.join();
    if (stop)
        for (std::size_t i = 0; i < n; ++i)
            if (!report.done(i)) out.clear(i);
    return !stop;
}

/// many(from, to) for blocks of so many elements, on threads as `each`: calculates them together.
/// Elements that failed(i) tells of then, or a whole block where `many` throws, are calculated by
/// one(i, row), which says why.
template <std::size_t width, class Many, class Failed, class One>
bool each_block(OutColumns& out, Report& report, std::size_t n, int threads, std::size_t block,
                Many const& many, Failed const& failed, One const& one) {
    std::atomic<std::size_t> next{0}, done{0};
    std::atomic<bool> stop{false};
    unsigned count =
        threads > 0 ? static_cast<unsigned>(threads) : std::thread::hardware_concurrency();
    count =
        static_cast<unsigned>(std::min<std::size_t>(std::max(1u, count), (n + block - 1) / block));
    const auto alone = [&](std::size_t i) {
        std::array<double, width> row;
        row.fill(kNaN);
        std::string words;
        const Status status = outcome([&] { one(i, row.data()); }, words);
        if (status == ok) {
            out.put(i, row.data());
            return report.set(i, ok);
        }
        out.clear(i);
        report.fail(i, status, words);
    };
    const auto blocks = [&](auto&& between) {
        for (std::size_t from; !stop && (from = next.fetch_add(block)) < n;) {
            const std::size_t to = std::min(n, from + block);
            std::string words;
            const bool together = outcome([&] { many(from, to); }, words) == ok;
            for (std::size_t i = from; i < to && !stop; ++i) {
                if (together && !failed(i)) {
                    report.set(i, ok);
                    continue;
                }
                alone(i);
                if (!between(done + i - from)) stop = true;
            }
            done += to - from;
            if (!between(done)) stop = true;
        }
    };
    const nb::gil_scoped_release released;
    std::vector<std::thread> others;
    for (unsigned k = 1; k < count; ++k)
        others.emplace_back([&] { blocks([](std::size_t) { return true; }); });
    blocks(Between(n));
    for (std::thread& t : others) t.join();
    if (stop)
        for (std::size_t i = 0; i < n; ++i)
            if (!report.done(i)) out.clear(i);
    return !stop;
}

/// (array, status, first failure in words, finished); of a single state its row as a list and its status as a
/// number, so that NumPy need not be loaded.
inline nb::tuple result(OutColumns& out, Report& report, bool finished) {
    return nb::make_tuple(out.array(), report.codes(), report.words(), finished);
}
inline nb::tuple result(Out& out, Report& report, bool finished, bool single = false) {
    if (!single) return nb::make_tuple(out.array(), report.codes(), report.words(), finished);
    nb::list row;
    for (std::size_t k = 0; k < out.width(); ++k) row.append(out.row(0)[k]);
    return nb::make_tuple(row, report.code(0), report.words(), finished);
}

inline void same_length(std::size_t a, std::size_t b) {
    if (a != b) throw nb::value_error("arrays of different lengths");
}

}  // namespace py
