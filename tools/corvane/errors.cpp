#include <tools/corvane/errors.h>

#include <fmt/format.h>

#include <cmath>

namespace cli {
namespace {
template <class E>
std::string in_words(E const& e, char const* type) {
    std::string text = e.message();
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return fmt::format("{} ({} {})", text, type, e.number);
}
}  // namespace

std::string describe(ThException const& e) {
    return in_words(e, "ThException");
}
std::string describe(MthException const& e) {
    return in_words(e, "MthException");
}
std::string describe(corvane::EquilibriumFailure const& e) {
    const bool none = e.kind() == corvane::EquilibriumFailure::Kind::no_solution;
    std::string text = none ? "no solution" : "gave up";
    if (!e.advice().empty()) text += ": " + e.advice();
    text += fmt::format(" ({}, {} iterations", e.solver(), e.iterations());
    if (std::isfinite(e.residual())) text += fmt::format(", last residual {:.2g}", e.residual());
    return text + ')';
}

}  // namespace cli
