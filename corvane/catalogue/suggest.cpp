#include <corvane/catalogue/suggest.h>
#include <corvane/core/text.h>

#include <algorithm>
#include <cstdlib>

namespace corvane {

int detail::edit_distance(std::string const& first, std::string const& second) {
    const std::string a = lower(first), b = lower(second);
    std::vector<int> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) last[j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({row[j - 1] + 1, last[j] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

std::vector<std::string> detail::nearest(std::string const& asked, std::vector<std::string> const& names) {
    constexpr std::size_t kMost = 3;
    // One slip in a short name, one for every four characters of a longer one; a name of one or two
    // characters is near in nothing but its case.
    const int limit = asked.size() < 3 ? 0 : std::max(1, static_cast<int>(asked.size()) / 4);
    std::vector<std::pair<int, std::string>> near;
    const auto apart = [&](std::string const& name) {  // at least
        return std::abs(static_cast<int>(asked.size()) - static_cast<int>(name.size()));
    };
    for (std::string const& name : names)
        if (apart(name) > limit)
            continue;
        else if (const int distance = edit_distance(asked, name); distance <= limit)
            near.emplace_back(distance, name);
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    std::vector<std::string> best;
    for (auto const& [distance, name] : near)
        if (distance == near.front().first && best.size() < kMost) best.push_back(name);
    return best;
}

std::string detail::did_you_mean(std::string const& asked, std::vector<std::string> const& names) {
    const auto best = nearest(asked, names);
    return best.empty() ? "" : ": did you mean " + join(best, " or ") + "?";
}

}  // namespace corvane
