// Compositions of mixtures.
#include <corvane/classic/input/input.h>
#include <corvane/core/files.h>

#include <cstdio>

namespace {
void ask(char const* prompt) {
    std::fprintf(stderr, "%s\n", prompt ? prompt : "");
}

/// Leaves x alone when there is no number to read (intended).
void read_number(double& x) {
    [[maybe_unused]] const int items = std::scanf("%lf", &x);
}
}  // namespace

double adjust_x(int i, Vector<double>& x) {
    const int n = x.size();
    if (n < 2) return 1.0;
    const double kept = x[i], sum = x.sum();
    const bool scale = sum > kept;
    const double factor = scale ? (1.0 - kept) / (sum - kept) : (1.0 - kept) / (n - 1);
    for (int k = 0; k < n; ++k)
        if (k != i) x[k] = scale ? x[k] * factor : factor;
    return factor;
}

void read_x(char const* prompt, Vector<double>& x) {
    const int n = x.size();
    if (n < 1) return;
    const corvane::CLocale c_numbers;
    if (n > 1) ask(prompt);
    x[n - 1] = 1.0;
    for (int k = 0; k < n - 1; ++k) {
        read_number(x[k]);
        if (!(x[k] >= 0.0 && x[k] <= 1.0)) throw ThException(th_out_of_range);
        x[n - 1] -= x[k];
    }
    if (x[n - 1] < 0.0) throw ThException(th_out_of_range);
}

void read_r(char const* prompt, Vector<double>& x) {
    const int n = x.size();
    if (n < 1) return;
    const corvane::CLocale c_numbers;
    ask(prompt);
    for (int k = 0; k < n; ++k) read_number(x[k]);
    if (!(x[0] > 1.0)) {  // intended: taken as they stand, not normalised
        for (int k = 0; k < n; ++k)
            if (!(x[k] >= 0.0)) throw ThException(th_out_of_range);
        return;
    }
    const double f = 1.0 / x[0];
    double sum = 0.0;
    for (int k = 0; k < n - 1; ++k) sum += x[k] = x[k + 1];
    x[n - 1] = 1.0 - sum;
    for (int k = 0; k < n; ++k) {
        if (!(x[k] >= 0.0 && x[k] <= 1.0)) throw ThException(th_out_of_range);
        x[k] *= f;  // intended: the rest too
    }
}
