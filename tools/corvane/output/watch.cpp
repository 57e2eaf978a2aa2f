#include <tools/corvane/output/watch.h>
#include <tools/corvane/text/errors.h>

#include <fmt/format.h>

#include <cstdio>
#include <ctime>
#include <utility>

#include <unistd.h>

namespace cli {
namespace {
using Clock = std::chrono::steady_clock;
constexpr auto kFirst = std::chrono::milliseconds(300), kNext = std::chrono::milliseconds(100);
constexpr sig_atomic_t kTwice = 500;  // ms

volatile sig_atomic_t interrupted_ = 0;

void show(std::string const& text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

long milliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return 1000 * now.tv_sec + now.tv_nsec / 1000000;
}

/// The first SIGINT is remembered. Who starts the program may send it twice at once, to the program
/// and to its group (timeout does): only one that comes later than that ends the program, and with
/// it what it has not written.
volatile sig_atomic_t interrupted_at_ = 0;  // ms, as far as it has room for them
extern "C" void on_interrupt(int number) {
    const auto now = static_cast<sig_atomic_t>(milliseconds() & 0x3fffffff);
    if (interrupted_ == 0) {
        interrupted_ = 1;
        interrupted_at_ = now;
    } else if (now - interrupted_at_ > kTwice || now < interrupted_at_) {
        signal(number, SIG_DFL);
        raise(number);
    }
}
}  // namespace

Watch::Watch(std::string what)
    : what_(std::move(what)), next_(Clock::now() + kFirst), terminal_(isatty(STDERR_FILENO) == 1) {
    struct sigaction action {};
    action.sa_handler = on_interrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
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
