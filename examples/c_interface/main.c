/* The library from C, through its function interface: saturation pressure and heat capacity of
 * carbon dioxide. Run it in a data home, the folder that holds CorvaneS. */
#include <corvane/binding/flat_interface.h>
#include <corvane/binding/guarded_interface.h>

#include <stdio.h>
#include <stdlib.h>

static int failed; /* set by the callbacks, read after each call */

static void report(const char* message) {
    fprintf(stderr, "%s\n", message);
    failed = 1;
}
static void report_argument(const char* message, const char* parameter) {
    (void)parameter;
    report(message);
}
/* C keeps strings as they are: the text itself is the handle. */
static void* keep(const char* text) {
    return (void*)text;
}

/* The guarded functions report in a record and call nothing back. */
static void check(const CorvaneError* error) {
    if (error->kind == CORVANE_OK) return;
    fprintf(stderr, "failure %d of kind %d: %s\n", error->number, error->kind, error->message);
    exit(EXIT_FAILURE);
}

int main(int argc, char** argv) {
    const char* substance = argc > 1 ? argv[1] : "carbon_dioxide";
    const double T = 280.0;
    double p = 0.0, rhoL = 0.0, rhoV = 0.0, rho = 0.0, cp;
    void* fluid;
    CorvaneError error;

    SWIGRegisterExceptionCallbacks_libcorvane(report, report, report, report, report, report,
                                              report, report, report, report, report);
    SWIGRegisterExceptionArgumentCallbacks_libcorvane(report_argument, report_argument,
                                                      report_argument);
    SWIGRegisterStringCallback_libcorvane(keep);

    fluid = CSharp_attach1("PR");
    if (failed) return EXIT_FAILURE;
    CSharp_Model1_name__SWIG_1(fluid, substance);
    CSharp_Model1_id__SWIG_1(fluid, 1);
    CSharp_Model1_load(fluid, "PR");
    if (failed) return EXIT_FAILURE;
    CSharp_Ideal_load(CSharp_Model1_ideal_get(fluid)); /* borrowed: lives with the model */
    if (failed) return EXIT_FAILURE;

    /* These can throw and are not translated by the flat interface: guarded for a caller in C. */
    Corvane_vle1_T(fluid, T, 0, &p, &rhoL, &rhoV, &error);
    check(&error);
    cp = CSharp_R_get() * Corvane_Model1_Cpm__SWIG_1(fluid, 1.0, T, 3, &rho, &error);
    check(&error);
    printf("%s at %g K: p_sat %.4f MPa, vapour at 1 MPa: cp %.3f J/(mol K)\n",
           (const char*)CSharp_Model1_name__SWIG_0(fluid), T, p, cp);

    Corvane_detach1(fluid, &error);
    check(&error);
    return EXIT_SUCCESS;
}
