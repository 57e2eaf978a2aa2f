// What a command throws, and how the library's exceptions are put into words.
#pragma once

#include <corvane/core/errors.h>
#include <corvane/core/file_error.h>
#include <corvane/phases/report/certificate.h>
#include <corvane/text/failure.h>

#include <optional>
#include <stdexcept>
#include <string>

namespace cli {

/// What was asked could not be done; exit code 1. The text is one clear sentence.
using corvane::text::Failure;

/// The command line makes no sense; exit code 2.
struct Misuse : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A line on standard error: "corvane: <text>", as printable() has it. Where standard error does not
/// take it, nothing happens: the exit code tells the rest.
void tell(std::string const& text) noexcept;

/// "text of the message table (ThException 9)".
std::string describe(ThException const& e);
std::string describe(MthException const& e);
/// "no solution: <why>" or "gave up: <what to try>", with solver, iterations and last residual; the
/// state is left to the caller, who knows the units.
std::string describe(corvane::EquilibriumFailure const& e);

/// "line 3: not a number: '29,1' (ThException 1)", after the path if `what` does not name the file.
std::string describe(corvane::FileError const& e, std::string const& what);

/// Runs f. What stopped it, if that was a failure of this command or of the library.
template <class F>
std::optional<std::string> failure_of(F f) {
    try {
        f();
        return {};
    } catch (Failure const& e) {
        return e.what();
    } catch (corvane::EquilibriumFailure const& e) {
        return describe(e);
    } catch (ThException const& e) {
        return describe(e);
    } catch (MthException const& e) {
        return describe(e);
    }
}

/// Runs f; an exception of the library becomes a Failure "<what>: <text of the table> (<code>)".
template <class F>
auto asking(std::string const& what, F f) -> decltype(f()) {
    try {
        return f();
    } catch (corvane::FileError const& e) {
        throw Failure(what + ": " + describe(e, what));
    } catch (ThException const& e) {
        throw Failure(what + ": " + describe(e));
    } catch (MthException const& e) {
        throw Failure(what + ": " + describe(e));
    } catch (corvane::EquilibriumFailure const& e) {
        throw Failure(what + ": " + describe(e));
    }
}

}  // namespace cli
