// Scratch space for a few values per component: on the stack for mixtures of up to N components.
#pragma once

#include <array>
#include <vector>

namespace corvane {

template <class T, int N = 24>
class SmallArray {
  public:
    explicit SmallArray(int n) {
        if (n > N) {
            heap_.resize(static_cast<unsigned>(n));
            data_ = heap_.data();
        }
    }
    SmallArray(SmallArray const&) = delete;
    SmallArray& operator=(SmallArray const&) = delete;
    T& operator[](int i) { return data_[i]; }
    T const& operator[](int i) const { return data_[i]; }

  private:
    std::array<T, N> stack_;
    std::vector<T> heap_;
    T* data_ = stack_.data();
};

}  // namespace corvane
