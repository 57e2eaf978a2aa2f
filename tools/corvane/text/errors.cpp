#include <tools/corvane/text/errors.h>

#include <tools/corvane/text/text.h>

#include <fmt/format.h>

#include <cmath>
#include <cstdio>

namespace cli {
namespace {
template <class E>
std::string in_words(E const& e, char const* type) {
    std::string text = e.message();
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return fmt::format("{} ({} {})", text, type, e.number);
}
}  // namespace

void tell(std::string const& text) noexcept {
    constexpr std::size_t kMost = 4000;  // bytes: a person reads no more
    try {
        const bool whole = text.size() <= kMost;
        const std::string line =
            "corvane: " + printable(whole ? text : text.substr(0, kMost) + " ...") + '\n';
        std::fwrite(line.data(), 1, line.size(), stderr);
    } catch (std::bad_alloc const&) {
        std::fputs("corvane: not enough memory\n", stderr);
    }
}

std::string describe(ThException const& e) {
    return in_words(e, "ThException");
}
std::string describe(MthException const& e) {
    return in_words(e, "MthException");
}
std::string describe(corvane::FileError const& e, std::string const& what) {
    const std::string path = e.path.starts_with("./") ? e.path.substr(2) : e.path;
    std::string text;
    if (!path.empty() && what.find(path) == std::string::npos) text = path + ": ";
    if (e.line > 0) text += fmt::format("line {}: ", e.line);
    return text + fmt::format("{} (ThException {})", e.reason, e.number);
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
