// A run of the program that a test watches while it goes on. Standard error is a terminal, on which it tells
// how far it is: a test waits for what it sees there or on standard output, never for a time.
#pragma once

#include "program.h"

#include <chrono>
#include <functional>
#include <regex>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/ioctl.h>

class Running {
  public:
    /// Runs "corvane <arguments>" through the shell, after what stands in `before`.
    explicit Running(std::string const& arguments, std::string const& before = "") {
        int slave = -1, ends[2] = {-1, -1};
        if (openpty(&terminal_, &slave, nullptr, nullptr, nullptr) != 0 || pipe(ends) != 0) return;
        char const* const other = std::getenv("CORVANE_TEST_PROGRAM");
        const std::string command = before + " exec " + (other ? other : CORVANE_PROGRAM) + " " + arguments;
        pid_ = fork();
        if (pid_ == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(slave, STDERR_FILENO);
            for (int file : {ends[0], ends[1], slave, terminal_}) close(file);
            signal(SIGINT, SIG_DFL);  // in the background of some shells it is ignored
            unsetenv("CORVANE_DATA");
            execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        close(slave);
        close(ends[1]);
        output_ = ends[0];
    }
    ~Running() {
        if (pid_ > 0) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
        }
        close(terminal_);
        close(output_);
    }
    Running(Running const&) = delete;
    Running& operator=(Running const&) = delete;

    /// Waits until it tells of so many points.
    bool has_points(long least) {
        static const std::regex told(": (\\d+) points");
        return reads([&] {
            long last = 0;
            for (std::sregex_iterator p(err_.begin(), err_.end(), told), end; p != end; ++p) last = std::stol((*p)[1]);
            return last >= least;
        });
    }
    /// Waits until this stands on standard output.
    bool has_printed(std::string const& words) {
        return reads([&] { return out_.find(words) != std::string::npos; });
    }
    /// Waits until there is something to read on standard output, and leaves it there.
    bool waits_for_a_reader() {
        pollfd one{output_, POLLIN, 0};
        return poll(&one, 1, kMost) == 1;
    }
    /// Sends SIGINT; returns when it has been taken.
    void interrupt() const {
        kill(pid_, SIGINT);
        const std::string file = "/proc/" + std::to_string(pid_) + "/status";
        for (int k = 0; k < 100000; ++k) {
            bool pending = false;
            std::ifstream status(file);
            for (std::string line; std::getline(status, line);)
                if (line.starts_with("SigPnd:") || line.starts_with("ShdPnd:"))
                    pending |= (std::stoull(line.substr(7), nullptr, 16) >> (SIGINT - 1) & 1) != 0;
            if (!pending) return;
            usleep(100);
        }
    }
    /// Reads the rest, and waits for the end.
    Outcome end() {
        reads([] { return false; });
        int status = 0;
        waitpid(pid_, &status, 0);
        pid_ = -1;
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out_, err_};
    }

  private:
    /// Of a run that hangs; nothing is judged by it.
    static constexpr int kMost = 120000;  // ms

    /// Reads until that is true. False: both ends are closed, or nothing has come for long.
    bool reads(std::function<bool()> const& done) {
        for (char block[4096]; !done();) {
            pollfd both[] = {{output_, POLLIN, 0}, {terminal_, POLLIN, 0}};
            if (closed_[0]) both[0].fd = -1;
            if (closed_[1]) both[1].fd = -1;
            if ((closed_[0] && closed_[1]) || poll(both, 2, kMost) <= 0) return false;
            for (std::size_t k : {0, 1}) {
                if (both[k].revents == 0) continue;
                const ssize_t n = read(both[k].fd, block, sizeof block);
                if (n > 0)
                    (k == 0 ? out_ : err_).append(block, static_cast<std::size_t>(n));
                else
                    closed_[k] = true;
            }
        }
        return true;
    }

    pid_t pid_ = -1;
    int terminal_ = -1, output_ = -1;
    bool closed_[2] = {false, false};
    std::string out_, err_;
};
