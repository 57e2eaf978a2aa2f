#include <corvane/core/collected.h>
#include <corvane/core/files.h>
#include <corvane/core/text.h>

#include <algorithm>
#include <map>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

namespace corvane {
namespace {
constexpr std::string_view kTable = "collected.tsv";

/// A table as this thread has read it, anew where the file is another now.
std::string const& table(std::string const& path) {
    struct Read {
        std::string text;
        struct stat state {};
    };
    thread_local std::map<std::string, Read> tables;
    static const std::string none;
    struct stat now {};
    if (stat(path.c_str(), &now) != 0) return none;
    const auto same = [&](struct stat const& then) {
        return now.st_dev == then.st_dev && now.st_ino == then.st_ino &&
               now.st_size == then.st_size && now.st_mtim.tv_sec == then.st_mtim.tv_sec &&
               now.st_mtim.tv_nsec == then.st_mtim.tv_nsec;
    };
    Read& read = tables[path];
    if (!same(read.state)) read = {file_contents(path.c_str()), now};
    return read.text;
}

/// The row of a file among rows in ascending order; "" if there is none.
std::string_view row_of(std::string_view rows, std::string_view file) {
    while (!rows.empty()) {
        const std::size_t middle = rows.size() / 2;
        const std::size_t begin = middle == 0 ? 0 : rows.rfind('\n', middle - 1) + 1;
        std::string_view rest = rows.substr(begin), line = next_part(rest, '\n');
        const std::string_view name = line.substr(0, line.find('\t'));
        if (name == file) return line;
        rows = name < file ? rest : rows.substr(0, begin);
    }
    return {};
}

/// The labels that a name of the form of `title` begins a file with.
std::string beginning(std::string_view title, std::string_view file) {
    std::string text;
    if (title.empty()) return text;
    for (char mark : {'+', ';', '\0'}) {
        if (mark == '+' && title.find(mark) == std::string_view::npos) continue;
        text +=
            std::string(next_part(title, mark)) + ":\t" + std::string(next_part(file, mark)) + '\n';
    }
    return text;
}
}  // namespace

std::string detail::collected_text(std::string const& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos || path.ends_with(kTable)) return "";
    const std::string_view file = std::string_view(path).substr(slash + 1);
    std::string_view rows = table(path.substr(0, slash + 1) + std::string(kTable));
    std::string_view titles = next_part(rows, '\n'), row = row_of(rows, file);
    if (row.empty() || file.empty()) return "";
    next_part(row, '\t');
    std::string text = beginning(next_part(titles, '\t'), file);
    const std::string_view first = file.substr(0, file.find_first_of("+;"));
    while (!titles.empty()) {
        const std::string_view title = next_part(titles, '\t');
        const std::size_t equals = title.find('=');
        const std::string_view label = title.substr(0, equals);
        std::string_view cell =
            equals == std::string_view::npos ? next_part(row, '\t') : title.substr(equals + 1);
        if (cell == "@1") cell = first;
        if (cell.empty()) continue;
        if (label == "@") {
            text += std::string(cell) + '\n';
            std::replace(text.begin(), text.end(), '|', '\n');
            continue;
        }
        const std::string line = std::string(label) + ":\t" + std::string(cell) + '\n';
        // A pair's own lines stand between those of its name.
        const std::size_t before = label == "id1"   ? text.find("name2:")
                                   : label == "id2" ? text.find("id:\t")
                                                    : std::string::npos;
        text.insert(std::min(before, text.size()), line);
    }
    return text;
}

std::vector<std::string> detail::collected_names(std::string const& folder) {
    std::vector<std::string> names;
    std::string_view rows = table(folder + '/' + std::string(kTable));
    next_part(rows, '\n');
    while (!rows.empty()) {
        std::string_view line = next_part(rows, '\n');
        if (!line.empty()) names.emplace_back(next_part(line, '\t'));
    }
    return names;
}

bool detail::has_data_file(std::string const& path) {
    return access(path.c_str(), F_OK) == 0 || !collected_text(path).empty();
}

}  // namespace corvane
