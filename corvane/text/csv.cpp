#include <corvane/core/text.h>
#include <corvane/text/csv.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane::text {
namespace {
constexpr std::size_t kBlock = 1u << 16, kLongestLine = 1u << 20,
                      kLargestFile = 64u << 20;  // bytes

/// Has what no text has: control characters other than tabs, ends of lines and pages, and escape.
bool is_binary(std::string_view bytes) {
    return std::any_of(bytes.begin(), bytes.end(), [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return code < 9 || (code > 13 && code < 32 && code != 27);
    });
}
}  // namespace

CsvReader::CsvReader(std::string const& path, bool (*stop)())
    : path_(path), stop_(stop), file_(path == "-" ? stdin : std::fopen(path.c_str(), "re")) {
    const auto fail = [&](char const* why) { throw Failure(path + ": " + why); };
    if (!file_) fail(errno == ENOENT ? "no such file" : std::strerror(errno));
    struct stat status {};
    if (fstat(fileno(file_.get()), &status) == 0 && S_ISDIR(status.st_mode))
        fail("a folder, not a file");
    while (header_.empty()) {
        if (!get_line())
            fail(line_ > 0 ? "no line with column names" : "the file is empty");
        if (text_.empty()) continue;
        for (char c : {'\t', ';'})
            if (separator_ == ',' && text_.find(c) != std::string::npos) separator_ = c;
        split_line(header_);
    }
}

/// The next block of the file; false at its end.
bool CsvReader::fill() {
    const int file = fileno(file_.get());
    const bool first = block_.empty() && line_ == 0;
    block_.resize(kBlock);
    used_ = 0;
    ssize_t n = -1;
    while (n < 0) {
        pollfd input{file, POLLIN, 0};
        // Reading goes on after a signal, waiting does not.
        if (poll(&input, 1, -1) < 0 && errno == EINTR && stop_ && stop_())
            n = 0;
        else if ((n = ::read(file, block_.data(), kBlock)) < 0 && errno != EINTR)
            throw Failure(path_ + ": " + std::strerror(errno));
    }
    block_.resize(static_cast<std::size_t>(n));
    if (first && is_binary(block_))
        throw Failure(path_ + (block_.starts_with("\xff\xfe") || block_.starts_with("\xfe\xff")
                                   ? ": a text in UTF-16; save it in UTF-8"
                                   : ": not a text file"));
    return n > 0;
}

bool CsvReader::waits() const {
    if (block_.find('\n', used_) != std::string::npos) return false;
    pollfd input{fileno(file_.get()), POLLIN, 0};
    return poll(&input, 1, 0) == 0;
}

/// The next line that is no comment, trimmed, into text_.
bool CsvReader::get_line() {
    while (true) {
        text_.clear();
        bool more = true, whole = false;
        while (!whole && (more = used_ < block_.size() || fill())) {
            const std::size_t end = std::min(block_.find('\n', used_), block_.size());
            if (text_.size() + end - used_ > kLongestLine)
                throw Failure(path_ + ": the file is too large: a line above 1 MiB");
            text_.append(block_, used_, end - used_);
            whole = end < block_.size();
            used_ = whole ? end + 1 : end;
        }
        if (!more && text_.empty()) return false;
        if (++line_ == 1 && text_.starts_with("\xef\xbb\xbf")) text_.erase(0, 3);
        // A tab at the end or at the beginning bounds an empty field.
        const auto blank = [&](char x) { return x == ' ' || x == '\r' || (x == '\t' && separator_ != '\t'); };
        while (!text_.empty() && blank(text_.back())) text_.pop_back();
        if (text_.empty() || text_.front() != '#') return true;
        comments_.push_back(trimmed(std::string_view(text_).substr(1)));
    }
}

void CsvReader::split_line(std::vector<std::string>& fields) {
    std::size_t n = 0;
    const auto begin = [&] {
        if (n == fields.size()) fields.emplace_back();
        fields[n++].clear();
    };
    begin();
    bool quoted = false;
    for (std::size_t k = 0; k < text_.size(); ++k) {
        const char c = text_[k];
        if (c == '"' && quoted && k + 1 < text_.size() && text_[k + 1] == '"')
            fields[n - 1] += text_[++k];
        else if (c == '"')
            quoted = !quoted;
        else if (c == separator_ && !quoted)
            begin();
        else
            fields[n - 1] += c;
    }
    if (quoted) throw Failure(path_ + ":" + std::to_string(line_) + ": a quotation is not closed");
    fields.resize(n);
    for (std::string& field : fields)
        if (!field.empty() && (field.front() <= ' ' || field.back() <= ' ')) field = trimmed(field);
}

bool CsvReader::next(std::vector<std::string>& fields) {
    do {
        if (!get_line()) return false;
    } while (text_.empty());
    split_line(fields);
    if (fields.size() > header_.size())
        throw Failure(path_ + ":" + std::to_string(line_) + ": more fields than columns");
    fields.resize(header_.size());
    return true;
}

std::string CsvReader::decimal(std::string const& field) const {
    std::string text = field;
    const std::size_t comma = text.find(',');
    if (separator_ == ',' || comma == std::string::npos) return text;
    text[comma] = '.';
    if (!to_number(text)) return field;
    if (!decimal_comma_) decimal_comma_ = true;  // readers of fields do not write
    return text;
}

ColumnName::ColumnName(std::string const& heading) {
    const std::size_t at = heading.find_first_of("/_ [(");
    name = heading.substr(0, at);
    unit = at == std::string::npos ? "" : trimmed(heading.substr(at));
    while (!unit.empty() && std::string("/_ ").find(unit.front()) != std::string::npos)
        unit.erase(0, 1);
    if (unit.size() > 1 && (unit.front() == '(' || unit.front() == '['))
        unit = unit.substr(1, unit.size() - 2);
}

CsvFile read_csv(std::string const& path) {
    CsvReader reader(path);
    CsvFile csv{{}, reader.header(), {}, {}};
    std::vector<std::string> fields;
    std::size_t size = 0;
    while (reader.next(fields)) {
        for (std::string& field : fields) size += (field = reader.decimal(field)).size() + 1;
        if (size > kLargestFile) throw Failure(path + ": the file is too large");
        csv.rows.push_back(fields);
        csv.lines.push_back(reader.line());
    }
    csv.comments = reader.comments();
    return csv;
}

}  // namespace corvane::text
