// Distinct values of vectors.
#pragma once

#include <corvane/core/api.h>
#include <corvane/core/containers.h>

/// Appends to list those of the values a[i] + d that it does not hold yet, and writes to idx[i]
/// where each stands. Values are compared exactly; a not-a-number equals nothing and is always
/// appended. The first count entries take part, so repeated calls accumulate one list.
///
/// @param[in,out] list   grows as needed, entry by entry
/// @param[in,out] count  number of entries in use, 0 <= count <= list.size()
/// @param[out]    idx    at least a.size() elements on entry; not resized
CORVANE_API void list_different(Vector<double> const& a, double d, Vector<double>& list, int& count,
                                Vector<int>& idx);
