// A hash of bytes that is the same on every machine of one byte order. Internal to the library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace corvane::inline detail {

/// Fowler, Noll & Vo's hash of 64 bits (FNV-1a; RFC 9923).
class Hash {
  public:
    void add(void const* data, std::size_t size) {
        for (auto const* b = static_cast<unsigned char const*>(data); size > 0; --size)
            value_ = (value_ ^ *b++) * 0x100000001b3u;
    }
    void add(double x) { add(&x, sizeof x); }
    std::uint64_t value() const { return value_; }

  private:
    std::uint64_t value_ = 0xcbf29ce484222325u;
};

}  // namespace corvane::inline detail
