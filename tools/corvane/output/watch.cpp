#include <tools/corvane/output/watch.h>
#include <tools/corvane/text/errors.h>

#include <fmt/format.h>

#include <cstdio>
#include <utility>

#include <unistd.h>

namespace cli {
namespace {
using Clock = std::chrono::steady_clock;
constexpr auto kFirst = std::chrono::milliseconds(300), kNext = std::chrono::milliseconds(100);

volatile sig_atomic_t interrupted_ = 0;

void show(std::string const& text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

extern "C" void on_interrupt(int) {
    interrupted_ = 1;
}
}  // namespace

Watch::Watch(std::string what)
    : what_(std::move(what)), next_(Clock::now() + kFirst), terminal_(isatty(STDERR_FILENO) == 1) {
    struct sigaction action {};
    action.sa_handler = on_interrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigaction(SIGINT, nullptr, &before_);
    // A program started in the background with SIGINT ignored goes on ignoring it.
    if (before_.sa_handler != SIG_IGN) sigaction(SIGINT, &action, nullptr);
}

Watch::~Watch() {
    wipe();
    if (!interrupted_) sigaction(SIGINT, &before_, nullptr);
}

bool Watch::interrupted() {
    return interrupted_ != 0;
}

bool Watch::go_on(long points) {
    points_ += points;
    if (terminal_ && Clock::now() >= next_) {
        show(fmt::format("\r{}: {} points (Ctrl-C ends, keeping them)\033[K", what_, points_));
        shown_ = true;
        next_ = Clock::now() + kNext;
    }
    return !interrupted();
}

corvane::Progress Watch::progress() {
    return [this](int) { return go_on(); };
}

void Watch::wipe() {
    if (shown_) show("\r\033[K");
    shown_ = false;
}

void Watch::say(std::string const& command, std::string const& text) {
    wipe();
    tell(command + ": " + text);
}

}  // namespace cli
