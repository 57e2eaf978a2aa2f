// usage: hostile SEED ROUNDS     in a data home. Exit code 1 if a call was at fault.
#include "hostile/report.h"

#include <cstdlib>

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: hostile SEED ROUNDS\n");
        return 2;
    }
    Dice dice(std::strtoul(arguments[1], nullptr, 10));
    const long rounds = std::strtol(arguments[2], nullptr, 10);
    Report report;
    hostile_pure(report, dice, rounds);
    hostile_mixture(report, dice, rounds);
    return report.finish() == 0 ? 0 : 1;
}
