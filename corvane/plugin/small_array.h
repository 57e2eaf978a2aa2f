// Scratch space for a few values per component: on the stack for mixtures of up to N components.
#pragma once

#include <memory>
#include <type_traits>

namespace corvane {

/// n values, made as `T a[n]` makes them; the room for the others costs nothing.
template <class T, int N = 24>
class SmallArray {
    static_assert(std::is_trivially_destructible_v<T>);

  public:
    explicit SmallArray(int n) {
        if (n <= N) {
            std::uninitialized_default_construct_n(stack_, n);
        } else {
            heap_.reset(new T[static_cast<unsigned>(n)]);
            data_ = heap_.get();
        }
    }
    SmallArray(SmallArray const&) = delete;
    SmallArray& operator=(SmallArray const&) = delete;
    T& operator[](int i) { return data_[i]; }
    T const& operator[](int i) const { return data_[i]; }

  private:
    union {
        T stack_[N];
    };
    std::unique_ptr<T[]> heap_;
    T* data_ = stack_;
};

}  // namespace corvane
