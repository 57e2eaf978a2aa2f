// Work on the elements of arrays, over threads. Internal to the library.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace corvane::inline detail {

inline constexpr int kMostThreads = 64;

/// Calls f(first, last) for pieces of 0 … n − 1 of `size` elements each, which begin at its
/// multiples whatever the number of threads (0: as many as the machine has), and returns the sum of
/// what it returns. What it throws ends the work of its thread and is thrown again at the end.
template <class F>
std::size_t over_threads(std::size_t n, std::size_t size, int threads, F const& f) {
    const std::size_t tasks = (n + size - 1) / size;
    if (threads <= 0) threads = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    threads = static_cast<int>(
        std::min<std::size_t>({static_cast<std::size_t>(threads), kMostThreads, tasks}));
    std::atomic<std::size_t> next{0}, sum{0};
    std::exception_ptr error;
    std::mutex guard;
    const auto take = [&] {
        try {
            for (std::size_t task; (task = next++) < tasks;)
                sum += f(task * size, std::min(n, (task + 1) * size));
        } catch (...) {
            const std::lock_guard<std::mutex> lock(guard);
            error = std::current_exception();
        }
    };
    std::vector<std::thread> others;
    try {
        for (int k = 1; k < threads; ++k) others.emplace_back(take);
    } catch (std::system_error const&) {  // fewer threads do
    }
    take();
    for (std::thread& t : others) t.join();
    if (error) std::rethrow_exception(error);
    return sum;
}

}  // namespace corvane::inline detail
