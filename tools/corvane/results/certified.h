// Certificates in the output: a few words in a table, everything in CSV and JSON.
#pragma once

#include <tools/corvane/output/table.h>

#include <corvane/phases/report/certificate.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace cli {

/// How many results are to be taken with care.
class Cautions {
  public:
    void add(corvane::Certificate const& certificate);
    /// Of a point of a trace, which has no flags of its own; z: what is present.
    void add(corvane::Validity const& validity, double T, double p, Vector<double> const& z);
    /// Lines of summary, if there are any.
    void report(Heading& heading) const;

  private:
    long all_ = 0, extrapolated_ = 0, below_triple_ = 0;
};

/// The largest bounds of errors, of results or of the points of curves.
class Bounds {
  public:
    template <class Point>
    void add(Point const& q) {
        if (!std::isfinite(q.value_error + q.x_error)) return;
        error_ = std::max(error_, q.value_error);
        x_error_ = std::max(x_error_, q.x_error);
    }
    bool any() const { return error_ >= 0.0; }
    double value() const { return any() ? error_ : corvane::Certificate::unknown; }
    double x_value() const { return any() ? x_error_ : corvane::Certificate::unknown; }
    /// ", errors below 3e-11 (relative, of p or T) and 2e-11 (of x)", or nothing.
    std::string text() const;

  private:
    double error_ = -1.0, x_error_ = 0.0;
};

/// The worst of the certificates of a run.
class Evidence {
  public:
    /// Columns dmu, dp, tpd, error, x_error, evaluations, flags, which tables leave out.
    static void add_columns(std::vector<Column>& columns);
    /// Cells of these columns; notes in a few words, which report explains.
    void add(Row& row, corvane::Certificate const& certificate);
    /// A line of summary, if there are results.
    void report(Heading& heading) const;

  private:
    long results_ = 0, evaluations_ = 0;
    Cautions cautions_;
    double dmu_ = 0.0, dp_ = 0.0, tpd_ = 0.0, conditions_ = 0.0;
    Bounds bounds_;
};

/// A certificate as fields of a list.
void append(Fields& fields, corvane::Certificate const& certificate);

/// "potentials agree to 2.1e-13 (over RT), pressures to 3e-12 (of p)".
std::string agreement(double dmu, double dp);

}  // namespace cli
