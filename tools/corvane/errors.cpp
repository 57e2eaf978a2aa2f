#include <tools/corvane/errors.h>

#include <fmt/format.h>

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

}  // namespace cli
