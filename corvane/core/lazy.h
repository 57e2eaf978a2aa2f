// A value that is made when it is first asked for.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

namespace corvane::inline detail {

/// Neither copied nor moved; several threads may ask at the same time, one of them makes it. What the maker
/// throws reaches the caller, and the next one makes it anew.
template <class T>
class Lazy {
  public:
    explicit Lazy(std::function<T()> make) : make_(std::move(make)) {}
    T const& operator*() const {
        if (T const* made = made_.load(std::memory_order_acquire)) return *made;
        const std::lock_guard lock(mutex_);
        if (!value_) value_.emplace(make_());
        made_.store(&*value_, std::memory_order_release);
        return *value_;
    }

  private:
    std::function<T()> make_;
    mutable std::atomic<T const*> made_ = nullptr;
    mutable std::mutex mutex_;
    mutable std::optional<T> value_;
};

}  // namespace corvane::inline detail
