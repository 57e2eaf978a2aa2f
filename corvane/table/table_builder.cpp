#include <corvane/core/errors.h>
#include <corvane/table/table_parts.h>
#include <corvane/table/property_table.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace corvane {
namespace {
constexpr int kOrder = PropertyTable::kOrder, kSquare = kOrder * kOrder;

}  // namespace

void detail::check_design(TableDesign const& d) {
    auto axis = [](TableAxis const& a) {
        return std::isfinite(a.from) && std::isfinite(a.to) && a.from < a.to &&
               (!a.logarithmic || a.from > 0);
    };
    auto named = [](std::string const& s) {
        return !s.empty() && s.size() < 32 && std::all_of(s.begin(), s.end(), [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        });
    };
    bool good = axis(d.a) && axis(d.b) && named(d.a.name) && named(d.b.name) && !d.columns.empty() &&
                d.columns.size() <= 64 && d.tolerance >= 1e-10 && d.tolerance <= 1e-2 &&
                d.halvings >= 0 && d.halvings <= 16 && d.note.size() < 2000 &&
                d.note.find('\n') == std::string::npos;
    for (TableColumn const& c : d.columns)
        good = good && named(c.name) && std::isfinite(c.unit) && c.unit >= 0;
    if (!good) throw ThException(th_out_of_range);
}

class TableBuilder {
  public:
    TableBuilder(TableDesign const& design, TableSample const& sample)
        : sample_(sample), n_(design.columns.size()) {
        check_design(design);
        table_.design_ = design;
        for (int k = 0; k < kOrder; ++k)
            for (int j = 0; j < kOrder; ++j) {
                const double angle = std::numbers::pi * (k + 0.5) / kOrder;
                node_[at(k)] = std::cos(angle);
                to_coefficient_[at(j)][at(k)] = (j ? 2.0 : 1.0) / kOrder * std::cos(j * angle);
            }
        points_.resize(kSquare * n_);
    }

    /// Breadth first, so that the children of a cell stand behind it.
    PropertyTable run(Progress const& progress) {
        struct Cell {
            double x, y, size;
            int halvings;
        };
        std::vector<Cell> cells{{0, 0, 1, 0}};
        auto& tree = table_.cells_;
        tree.assign(1, -1);
        for (std::size_t k = 0; k < cells.size(); ++k) {
            const Cell c = cells[k];
            const Fate fate = leaf(c.x, c.y, c.size);
            if (fate == Fate::stands)
                tree[k] = -2 - table_.leaves_++;
            else if (fate == Fate::halve && c.halvings < table_.design_.halvings &&
                     table_.leaves_ + static_cast<int>(cells.size() - k) < PropertyTable::kMostLeaves) {
                tree[k] = static_cast<int>(tree.size());
                const double half = c.size / 2;
                for (int right : {0, 1})
                    for (int upper : {0, 1})
                        cells.push_back({c.x + right * half, c.y + upper * half, half, c.halvings + 1});
                tree.resize(cells.size(), -1);
            }
            if (progress && !progress(static_cast<int>(k) + 1)) throw ThException(th_no_option);
        }
        return std::move(table_);
    }

  private:
    enum class Fate { stands, halve, empty };
    static std::size_t at(int k) { return static_cast<std::size_t>(k); }

    /// A state, its positive columns as logarithms. 0 where a value cannot be tabulated, too.
    int state(double x, double y, double* to) const {
        TableDesign const& d = table_.design_;
        const int kind = sample_(value_at(d.a, std::clamp(x, 0.0, 1.0)), value_at(d.b, std::clamp(y, 0.0, 1.0)), to);
        for (std::size_t k = 0; k < n_ && kind; ++k) {
            if (std::isinf(to[k]) || (d.columns[k].unit == 0 && to[k] <= 0)) return 0;
            if (d.columns[k].unit == 0) to[k] = std::log(to[k]);
        }
        return kind;
    }
    Fate leaf(double x, double y, double size) {
        std::vector<double> q(n_);
        int kind = -1;  // of all states
        bool any = false;
        auto same = [&](int other) {
            any |= other > 0;
            if (kind < 0) kind = other;
            return other == kind && other > 0;
        };
        bool good = true;
        for (int i = 0; i < kOrder; ++i)
            for (int j = 0; j < kOrder; ++j) {
                good &= same(state(x + size * (1 + node_[at(i)]) / 2, y + size * (1 + node_[at(j)]) / 2,
                                   points_.data() + static_cast<std::size_t>(i * kOrder + j) * n_));
                if (!good && any) return Fate::halve;
            }
        std::vector<double> c;
        if (good) c = coefficients();
        auto near = [&](double s, double t, double tolerance) {
            const int other = state(x + size * (1 + s) / 2, y + size * (1 + t) / 2, q.data());
            if (!same(other)) return false;
            // A ring that the range cuts off is on the edge.
            const double u = std::clamp(s, -1 - 2 * x / size, -1 + 2 * (1 - x) / size),
                         v = std::clamp(t, -1 - 2 * y / size, -1 + 2 * (1 - y) / size);
            return agrees(c, u, v, q, tolerance);
        };
        const double tolerance = table_.design_.tolerance;
        static constexpr double inside[][2] = {{-1, -1}, {-1, 1},        {1, -1},        {1, 1},
                                               {0, -1},  {0, 1},         {-1, 0},        {1, 0},
                                               {0.9, 0.37}, {-0.61, 0.88}, {-0.93, -0.42}, {0.29, -0.71},
                                               {0.12, 0.17}};
        for (auto const& [s, t] : inside)
            if (good) good = near(s, t, tolerance / 3);
        constexpr double out = 1.125;
        for (int k = -4; k <= 4; ++k)
            for (int side = 0; side < 4; ++side) {
                const double along = out * k / 4, across = side < 2 ? out : -out;
                // Outside, T_6 is up to 10, so that its polynomial is less good there.
                if (good || !any)
                    good = (side % 2 ? near(along, across, 50 * tolerance)
                                     : near(across, along, 50 * tolerance)) && good;
            }
        if (good) {
            table_.values_.insert(table_.values_.end(), c.begin(), c.end());
            return Fate::stands;
        }
        return any ? Fate::halve : Fate::empty;
    }
    std::vector<double> coefficients() const {
        std::vector<double> c(n_ * kSquare);
        for (std::size_t column = 0; column < n_; ++column)
            for (int i = 0; i < kOrder; ++i)
                for (int j = 0; j < kOrder; ++j) {
                    double sum = 0;
                    for (int k = 0; k < kOrder; ++k)
                        for (int l = 0; l < kOrder; ++l)
                            sum += to_coefficient_[at(i)][at(k)] * to_coefficient_[at(j)][at(l)] *
                                   points_[static_cast<std::size_t>(k * kOrder + l) * n_ + column];
                    c[column * kSquare + static_cast<std::size_t>(i * kOrder + j)] = sum;
                }
        return c;
    }
    bool agrees(std::vector<double> const& c, double s, double t, std::vector<double> const& q,
                double tolerance) const {
        if (c.empty()) return false;
        const CellRow ts = chebyshev_polynomials(s), tt = chebyshev_polynomials(t);
        for (std::size_t k = 0; k < n_; ++k) {
            const double said = chebyshev_sum(c.data() + k * kSquare, ts, tt),
                         unit = table_.design_.columns[k].unit;
            if (std::isnan(q[k]) && std::isnan(said)) continue;
            if (!(std::fabs(said - q[k]) <= tolerance * (unit == 0 ? 1 : unit))) return false;
        }
        return true;
    }

    TableSample const& sample_;
    std::size_t n_;
    PropertyTable table_;
    double node_[kOrder], to_coefficient_[kOrder][kOrder];
    std::vector<double> points_;  ///< of the cell at hand: node of a, node of b, column
};

PropertyTable PropertyTable::build(TableDesign const& design, TableSample const& sample,
                                   Progress const& progress) {
    return TableBuilder(design, sample).run(progress);
}

}  // namespace corvane
