// Console input of states and compositions, property names, and transforms of mole fractions.
//
// Prompts go to standard error and answers come from standard input, so that standard output stays
// free for results. Numbers are read with a decimal point, whatever the locale of the process.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

/// One row of a caller's property table. The table ends with a row whose sname is "". The texts are
/// not owned.
struct prop_str {
    char const* sname = nullptr;  ///< short name, the key of recognize
    char const* lname = nullptr;  ///< long name
    char const* unit = nullptr;
    int dimension = 0;  ///< kind of quantity, by the caller's own numbering
};

/// Asks for a value, or for a range "(x1 x2 dx)". prompt is a format text (intended): "%%" prints
/// one percent sign; nothing else in it is interpreted.
///
/// @param[out] x1, x2, dx  first and last value and step; a single value gives x2 = x1, dx = 1
/// @return number of points x1, x1 + dx … x2 (half a step of tolerance, cut off towards zero): 1
/// for
///         a single value; 0 for input that cannot be read or a count that is no int. An end on the
///         wrong side of the start gives 0 or a negative count. Never throws.
CORVANE_API int read_vars(char const* prompt, double& x1, double& x2, double& dx);

/// Index of the first row whose sname equals name exactly, or −1.
CORVANE_API int recognize(char const* name, prop_str const* table);

/// ln(x/(1 − x)): the mole fraction 0 … 1 as an unbounded variable; ±230 at and beyond the ends.
CORVANE_API double xtoz(double x);

/// Inverse of xtoz: 1/(exp(−z) + 1); exactly 0 below −230 and 1 above 230.
CORVANE_API double ztox(double z);

/// After x[i] was set, scales the other mole fractions so that all sum to 1; where the others sum
/// to zero or less they share the rest equally.
/// @return the factor applied to the others, or their common value; 1 for fewer than two
/// components,
///         which are left alone
CORVANE_API double adjust_x(int i, Vector<double>& x);

/// Reads a composition of x.size() numbers. If the first is at most 1, all are taken as they stand,
/// without normalisation. If it is larger, it is a ratio: the others move down by one place, the
/// last is the rest to 1, and all are divided by the ratio (intended, also for the rest).
/// @throws ThException 5 for a negative value or, with a ratio, a fraction outside 0 … 1 before the
///         division. Input that cannot be read leaves the element as it was (intended).
CORVANE_API void read_r(char const* prompt, Vector<double>& x);

/// Reads the first x.size() − 1 mole fractions; the last is the rest to 1. One component asks and
/// reads nothing.
/// @throws ThException 5 for a value outside 0 … 1 at once, for a negative rest after the last
/// value.
///         Input that cannot be read leaves the element as it was (intended).
CORVANE_API void read_x(char const* prompt, Vector<double>& x);
