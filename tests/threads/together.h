// Work that several threads do at the same time.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

using Numbers = std::vector<double>;

inline bool same(Numbers const& a, Numbers const& b) {
    return a.size() == b.size() && !std::memcmp(a.data(), b.data(), a.size() * sizeof(double));
}

/// Runs work(0 … tasks − 1) alone, then in `count` threads, each in an order of its own, and expects
/// the same bits every time.
template <class Work>
void expect_same_bits(int tasks, std::initializer_list<int> counts, Work work) {
    std::vector<Numbers> alone;
    for (int k = 0; k < tasks; ++k) {
        alone.push_back(work(k));
        EXPECT_GT(alone.back().size(), 8u);
    }
    for (int count : counts) {
        std::atomic<int> different = 0;
        std::vector<std::thread> threads;
        for (int t = 0; t < count; ++t)
            threads.emplace_back([&, t] {
                for (int k = tasks; k-- > 0;) {
                    const int at = (k + 3 * t) % tasks;
                    if (!same(work(at), alone[static_cast<unsigned>(at)])) ++different;
                }
            });
        for (std::thread& t : threads) t.join();
        EXPECT_EQ(different, 0);
    }
}
