/* The version of these headers: here alone; everything else takes it from here. Macros only, for C too.
 *
 *     #if CORVANE_VERSION_NUMBER >= 200   // 0.2.0 or newer
 *
 * Programs built for one minor version work with every library of that minor version. */
#pragma once

#define CORVANE_VERSION_MAJOR 0
#define CORVANE_VERSION_MINOR 1
#define CORVANE_VERSION_PATCH 0

/* "0.1.0" */
#define CORVANE_VERSION \
    CORVANE_VERSION_TEXT(CORVANE_VERSION_MAJOR, CORVANE_VERSION_MINOR, CORVANE_VERSION_PATCH)
/* 100 for 0.1.0, 10203 for 1.2.3 */
#define CORVANE_VERSION_NUMBER \
    (CORVANE_VERSION_MAJOR * 10000 + CORVANE_VERSION_MINOR * 100 + CORVANE_VERSION_PATCH)

#define CORVANE_VERSION_TEXT(major, minor, patch) CORVANE_VERSION_TEXT_(major, minor, patch)
#define CORVANE_VERSION_TEXT_(major, minor, patch) #major "." #minor "." #patch
