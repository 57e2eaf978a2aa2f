// A long calculation as a person sees it: how far it is, and the key that ends it.
#pragma once

#include <corvane/phases/report/progress.h>

#include <chrono>
#include <string>

#include <signal.h>

namespace cli {

/// Exit code of a run that SIGINT ended.
constexpr int kInterrupted = 130;

/// While it lives, SIGINT does not end the program but the calculation, which keeps what it has; a
/// second SIGINT, half a second later or more, ends the program. On a terminal, standard error
/// shows one line that is rewritten, after the first third of a second. One at a time.
class Watch {
  public:
    explicit Watch(std::string what);
    ~Watch();
    Watch(Watch const&) = delete;
    Watch& operator=(Watch const&) = delete;

    /// Tells of further points. False once SIGINT came.
    bool go_on(long points = 1);
    /// go_on as the library's traces call it; must not outlive this.
    corvane::Progress progress();
    /// Whether SIGINT came in this run of the program.
    static bool interrupted();
    /// A line on standard error: "corvane: <command>: <text>".
    void say(std::string const& command, std::string const& text);

  private:
    void wipe();

    std::string what_;
    struct sigaction before_;
    std::chrono::steady_clock::time_point next_;
    bool terminal_, shown_ = false;
    long points_ = 0;
};

}  // namespace cli
