// Functions of one variable inside a formula: evaluated with a series in that variable alone, which
// costs far less than with all the derivatives that the variable carries.
#pragma once

#include <corvane/plugin/jet.h>
#include <corvane/plugin/partials.h>

#include <array>
#include <concepts>
#include <cstddef>
#include <type_traits>

namespace corvane {

namespace line_detail {
template <class S>
struct NumberOf {
    using type = S;  // plain numbers, and series in one or two variables
};
template <Partials S>
struct NumberOf<S> {
    using type = std::conditional_t<std::same_as<typename S::Base, double>, Jet<S::order>,
                                    Gradient<1, typename S::Base>>;
};
}  // namespace line_detail

/// A number x of a formula and the type for functions of it alone: f(line.variable()) is
/// line.lift(f(line.variable())) as a number of the formula. Many functions share what they have in
/// common.
template <class S>
class Line {
  public:
    using Number = typename line_detail::NumberOf<S>::type;

    explicit Line(S const& x) : x_(x) {}
    S const& at() const { return x_; }

    Number variable() const {
        if constexpr (!Partials<S>) {
            return x_;
        } else if constexpr (std::same_as<typename S::Base, double>) {
            return Number::variable(x_.v);
        } else {
            Number one(x_.v);
            one.g[0] = 1.0;
            return one;
        }
    }
    S lift(Number const& f) const {
        if constexpr (!Partials<S>) {
            return f;
        } else if constexpr (std::same_as<typename S::Base, double>) {
            std::array<double, S::order + 1> c;
#pragma GCC unroll 8
            for (int n = 0; n <= S::order; ++n) c[static_cast<std::size_t>(n)] = f(n);
            return x_.compose(c);
        } else {
            return x_.compose({f.v, f.g[0]});
        }
    }

  private:
    S x_;
};

/// One such function.
template <class S, class F>
S of_one(S const& x, F const& f) {
    const Line<S> line(x);
    return line.lift(f(line.variable()));
}

}  // namespace corvane
