#include <tools/corvane/output/rows.h>
#include <tools/corvane/text/errors.h>

#include <fmt/format.h>

namespace cli {

Rows::Rows(char const* command, Table& table, std::size_t asked, char const* things)
    : command_(command),
      things_(things),
      table_(table),
      asked_(asked),
      watch_(fmt::format("corvane: {}, {} {} asked for", command, asked, things)) {}

bool Rows::add(std::string const& what, Given const& given, std::function<Row()> const& f) {
    return add_all(what, given, [&] { return std::vector{f()}; });
}

bool Rows::add_all(std::string const& what, Given const& given,
                   std::function<std::vector<Row>()> const& f) {
    ++done_;
    const auto why = failure_of([&] {
        for (Row& row : f()) table_.rows.push_back(std::move(row));
    });
    if (!why) return watch_.go_on();
    const std::string text = what.empty() ? *why : what + ": " + *why;
    if (asked_ == 1) throw Failure(text);
    ++failures_;
    watch_.say(command_, text);
    Row failed{std::vector<Cell>(table_.columns.size()), "failed: " + *why};
    for (auto const& [column, cell] : given) failed.cells[column] = cell;
    table_.rows.push_back(std::move(failed));
    return watch_.go_on();
}

corvane::Progress Rows::progress() {
    return [this](int) {
        cut_ = !watch_.go_on();
        return !cut_;
    };
}

int Rows::finish(Heading& heading) const {
    if (Watch::interrupted()) {
        heading.summary.push_back(fmt::format("interrupted: {} of {} {}{}", done_ - (cut_ ? 1 : 0), asked_, things_,
                                              cut_ ? ", the last one in part" : ""));
        return kInterrupted;
    }
    return failures_ == 0 ? 0 : 1;
}

int Rows::write(Heading& heading, Style const& style) const {
    const int code = finish(heading);
    cli::write(heading, table_, style);
    return code;
}

}  // namespace cli
