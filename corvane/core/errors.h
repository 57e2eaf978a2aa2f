// The two exception types. Both are thrown by value and caught by constant reference; both carry an
// index into a fixed table of messages and one more integer, -1 when there is none.
#pragma once

#include <corvane/core/api.h>

/// Codes of ThException: indices into ThException::errmsg.
enum ThCode : int {
    th_generic = 0,
    th_cannot_open = 1,
    th_id_mismatch = 2,
    th_no_ideal = 3,
    th_no_option = 4,
    th_out_of_range = 5,
    th_no_solid = 6,
    th_no_thermochemistry = 7,
    th_trivial = 8,
    th_no_density = 9,
    th_liquid_only = 10,
    th_gas_only = 11,
    th_codes = 12  ///< size of the table
};

/// Codes of MthException: indices into MthException::errmsg.
enum MthCode : int {
    mth_generic = 0,
    mth_iterations = 1,
    mth_dimensions = 2,
    mth_not_square = 3,
    mth_singular = 4,
    mth_duplicate = 5,
    mth_unordered = 6,
    mth_too_few = 7,
    mth_no_option = 8,
    mth_bad_step = 9,
    mth_out_of_range = 10,
    mth_bad_interval = 11,
    mth_same_sign = 12,
    mth_no_minimum = 13,
    mth_inflection = 14,
    mth_collinear = 15,
    mth_irrelevant = 16,  ///< info holds the index of the parameter
    mth_codes = 17        ///< size of the table
};

/// Failure of the thermodynamic library: files, data, options, densities.
class CORVANE_API ThException {
  public:
    int number;  ///< index into errmsg; a code outside the table is a programming error
    int info;    ///< additional integer, -1 = none

    // Inline, so that throwing needs no symbol of libcorvane.
    explicit ThException(int number_, int info_ = -1) : number(number_), info(info_) {}

    /// errmsg[number] when info is negative; otherwise that text, ": ", info and a newline, written
    /// into one static buffer that each such call overwrites (not thread-safe; valid until the next
    /// call). A number outside the table is read as 0.
    char const* message() const;

    static char const* const errmsg[th_codes];
};

/// Failure of numerical work. Thrown by libnumelo and by the containers.
class CORVANE_API MthException {
  public:
    int number;  ///< index into errmsg
    int info;    ///< additional integer, -1 = none

    explicit MthException(int number_, int info_ = -1) : number(number_), info(info_) {}

    /// As ThException::message, with a buffer of its own. The text of mth_irrelevant has info in
    /// place of its %d.
    char const* message() const;

    static char const* const errmsg[mth_codes];
};
