// Parameters that are written behind a model's back, for a while; sections that go from one model
// to another.
#pragma once

#include <corvane/core/errors.h>

#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace corvane::inline detail {

/// Puts the values back at the end of its life, the last first.
class Rewritten {
  public:
    Rewritten() = default;
    Rewritten(double* at, double value) { write(at, value); }
    Rewritten(Rewritten const&) = delete;
    Rewritten& operator=(Rewritten const&) = delete;
    ~Rewritten() {
        while (!before_.empty()) put_back();
    }
    void write(double* at, double value) {
        before_.emplace_back(at, *at);
        *at = value;
    }
    void put_back() {
        *before_.back().first = before_.back().second;
        before_.pop_back();
    }

  private:
    std::vector<std::pair<double*, double>> before_;
};

/// What `write` puts into a file, given to `read`.
template <class Write, class Read>
void handed_on(Write const& write, Read const& read) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> f(std::tmpfile(), std::fclose);
    if (!f) throw ThException(th_cannot_open);
    write(f.get());
    std::rewind(f.get());
    read(f.get());
}

}  // namespace corvane::inline detail
