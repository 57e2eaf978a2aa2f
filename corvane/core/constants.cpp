#include <corvane/core/constants.h>

#ifndef CORVANE_HOME
#error "CORVANE_HOME must name the data home"
#endif

char const* const th_home = CORVANE_HOME;

namespace {
// The constants are inline variables, which a library holds only if something takes their address.
// Binary callers (the flat interface, foreign languages) look them up by name.
[[gnu::used]] void const* const exported[] = {&R,
                                              &NA,
                                              &kB,
                                              &hP,
                                              &pref,
                                              &th_inc0,
                                              &th_inc1,
                                              &th_veps,
                                              &th_pathlength,
                                              &th_namelength,
                                              &th_eqnlength,
                                              &th_commlength};
}  // namespace
