// Rows of a command that computes many points: one that fails is marked and does not end the run.
#pragma once

#include <tools/corvane/output/table.h>
#include <tools/corvane/output/watch.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace cli {

class Rows {
  public:
    using Given = std::vector<std::pair<std::size_t, Cell>>;  ///< column and what is known of it

    /// Appends to the table, of which the columns are complete. asked: the number of points, or of
    /// what else is added one by one.
    Rows(char const* command, Table& table, std::size_t asked, char const* things = "points");

    /// Appends the row that f returns. If f throws a Failure, an EquilibriumFailure, a ThException
    /// or an MthException, a row with the given cells alone, "failed: <why>" as its note, and
    /// "<what>: <why>" on standard error. `what` may be empty, where a Failure says it all. False
    /// once SIGINT came: no further point is wanted.
    /// @throws Failure the only point asked for failed
    bool add(std::string const& what, Given const& given, std::function<Row()> const& f);
    /// The same for a point of several rows.
    bool add_all(std::string const& what, Given const& given,
                 std::function<std::vector<Row>()> const& f);

    /// point(a, b) for every pair, the first the slower, until it returns false.
    template <class First, class Second, class F>
    static void each(First const& firsts, Second const& seconds, F point) {
        for (auto const& a : firsts)
            for (auto const& b : seconds)
                if (!point(a, b)) return;
    }

    /// For a trace within f.
    corvane::Progress progress();

    /// Tells in the heading if SIGINT ended the run; returns the exit code.
    int finish(Heading& heading) const;
    /// The same, and writes the table.
    int write(Heading& heading, Style const& style) const;

  private:
    std::string command_, things_;
    Table& table_;
    std::size_t asked_, done_ = 0;
    int failures_ = 0;
    bool cut_ = false;  ///< the last one is there in part
    Watch watch_;
};

/// The style of a single state, which is easier to read upright.
inline Style upright_if(Style style, bool one) {
    style.upright = one;
    return style;
}

}  // namespace cli
