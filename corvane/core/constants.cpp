#include <corvane/core/constants.h>
#include <corvane/core/loaded_from.h>

#include <climits>
#include <cstdlib>
#include <cstring>

#include <sys/stat.h>

#ifndef CORVANE_HOME
#error "CORVANE_HOME must name the data home"
#endif

namespace {
// The pointer itself is a constant, which a program may replace by its own: what it points to is
// settled when the library is loaded.
char home_text[PATH_MAX] = CORVANE_HOME;

[[gnu::constructor]] void find_home() {
    char const* const library = corvane::loaded_from(home_text);
    char path[PATH_MAX];
    if (!library || !realpath(library, path)) return;
    char* const name = std::strrchr(path, '/') + 1;
    constexpr char data[] = "corvane", models[] = "/models";
    if (static_cast<std::size_t>(name - path) + sizeof data + sizeof models > sizeof path) return;
    std::strcpy(name, data);
    struct stat folder;
    if (stat(path, &folder) != 0 || !S_ISDIR(folder.st_mode)) return;
    std::strcat(path, models);
    std::strcpy(home_text, path);
}
}  // namespace

char const* const th_home = home_text;

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
