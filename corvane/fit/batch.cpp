#include <corvane/core/errors.h>
#include <corvane/fit/fit.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>

namespace corvane::fit {
namespace {
void run(Job const& job, Outcome& outcome) {
    try {
        outcome.problem = job.make();
        outcome.result = solve(*outcome.problem, job.options);
        outcome.done = true;
    } catch (std::exception const& e) {
        outcome.failure = e.what();
    } catch (ThException const& e) {
        outcome.failure = e.message();
    } catch (MthException const& e) {
        outcome.failure = e.message();
    }
}
}  // namespace

std::vector<Outcome> solve_all(std::vector<Job> const& jobs, int threads,
                               std::function<bool(int done)> const& go_on) {
    std::vector<Outcome> outcomes(jobs.size());
    std::atomic<std::size_t> next{0};
    std::atomic<bool> stopped{false};
    const auto work = [&] {
        for (std::size_t k; !stopped && (k = next++) < jobs.size();) {
            run(jobs[k], outcomes[k]);
            if (go_on && !go_on(1)) stopped = true;
        }
    };
    const int count =
        std::clamp<int>(threads, 1, static_cast<int>(std::max<std::size_t>(1, jobs.size())));
    std::vector<std::thread> others;
    for (int k = 1; k < count; ++k) others.emplace_back(work);
    work();
    for (std::thread& each : others) each.join();
    return outcomes;
}

}  // namespace corvane::fit
