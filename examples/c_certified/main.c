/* Certified calculations from C: a state of water, a flash and the phase envelope of a gas, and what
 * a calculation says that has no answer. Runs in any directory. */
#include <corvane/binding/certified_interface.h>

#include <stdio.h>
#include <stdlib.h>

static CorvaneError error;

static void check(void) {
    if (error.kind == CORVANE_OK) return;
    fprintf(stderr, "failure %d of kind %d: %s\n", error.number, error.kind, error.message);
    exit(EXIT_FAILURE);
}

static void water(void) {
    CorvaneFluid* fluid = Corvane_open("", "water", 0, NULL, &error);
    CorvaneResult* state;
    char equation[16];
    check();
    Corvane_Fluid_text(fluid, CORVANE_TEXT_MODEL, equation, sizeof equation, &error);
    state = Corvane_pure_states(fluid, CORVANE_GIVEN_P, 25.0, CORVANE_GIVEN_T, 650.0, &error);
    check();
    printf("water (%s) at 25 MPa and 650 K: %.3f kg/m3, speed of sound %.1f m/s\n", equation,
           1e3 * Corvane_Result_value(state, 0, 0, 0, CORVANE_RHO, &error) *
               Corvane_Result_value(state, 0, 0, 0, CORVANE_M, &error),
           Corvane_Result_value(state, 0, 0, 0, CORVANE_W, &error));
    check();
    Corvane_release(state);
    Corvane_release(fluid);
}

static void gas(void) {
    const char* components[] = {"methane", "propane"};
    const double z[] = {0.5, 0.5};
    CorvaneMixture* mixture =
        Corvane_open_mixture("PR+vdW1", 2, components, NULL, 0, 1, NULL, &error);
    CorvaneResult *split, *envelope, *none;
    char evidence[400];
    int line, phase, n;
    check();

    split = Corvane_flash_pT(mixture, 2.0, 250.0, z, 2, &error);
    check();
    for (phase = 0; phase < Corvane_Result_phases(split, 0, 0, &error); ++phase)
        printf("phase %d: %.4f of the whole, x(methane) %.4f\n", phase,
               Corvane_Result_value(split, 0, 0, phase, CORVANE_FRACTION, &error),
               Corvane_Result_value(split, 0, 0, phase, CORVANE_X + 0, &error));
    Corvane_Result_certificate(split, 0, 0, evidence, sizeof evidence, &error);
    check();
    printf("%s\n", evidence);

    envelope = Corvane_envelope(mixture, z, 2, 0, 0, 0, NULL, NULL, &error);
    check();
    for (line = 0; line < Corvane_Result_lines(envelope); ++line) {
        /* All temperatures of a line at once: first their number, then the array. */
        double *T, highest = 0.0;
        int i;
        n = Corvane_Result_column(envelope, line, CORVANE_WHOLE, CORVANE_T, NULL, 0, &error);
        check();
        T = malloc((size_t)n * sizeof *T);
        if (!T) exit(EXIT_FAILURE);
        Corvane_Result_column(envelope, line, CORVANE_WHOLE, CORVANE_T, T, n, &error);
        for (i = 0; i < n; ++i)
            if (T[i] > highest) highest = T[i];
        printf("line %d of kind %d: %d points up to %.2f K\n", line,
               Corvane_Result_kind(envelope, line, &error), n, highest);
        free(T);
    }

    none = Corvane_dew_T(mixture, 400.0, z, 2, CORVANE_BRANCH_ANY, &error);
    if (none || error.kind != CORVANE_NO_SOLUTION) exit(EXIT_FAILURE);
    printf("%s\n", error.message);

    Corvane_release(envelope);
    Corvane_release(split);
    Corvane_release(mixture);
}

int main(void) {
    water();
    gas();
    return EXIT_SUCCESS;
}
