#include <corvane/core/lanes.h>
#include <corvane/core/number_text.h>
#include <corvane/plugin/section.h>
#include <plugins/meos/equation.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <tuple>
#include <utility>

namespace corvane::meos {
namespace {

using lanes::padded;

enum Kind {
    kPower,
    kExponential,
    kGaussian,
    kGaoB,
    kDoubleExponential,
    kLemmon2005,
    kNonAnalytic,
    kAssociation
};
constexpr int kKinds = 8, kMaxColumns = 8, kMaxBlocks = 32;

struct KindInfo {
    char const* key;
    int columns;
    char const* titles;
    int l;    // column of the integer exponent l, or −1
    int own;  // numbers that no array over all terms holds
};
constexpr KindInfo kinds[kKinds] = {
    {"power", 4, "n d t l", 3, 0},
    {"exponential", 5, "n d t g l", 4, 0},
    {"gaussian", 7, "n d t eta epsilon beta gamma", -1, 0},
    {"gao_b", 8, "n d t eta epsilon beta gamma b", -1, 1},
    {"double_exponential", 7, "n d t gd ld gt lt", 4, 2},
    {"lemmon_2005", 5, "n d t l m", 3, 1},
    {"non_analytic", 8, "n a b beta A B C D", -1, 8},
    {"association", 5, "a m epsilonbar kappabar vbarn", -1, 5},
};
constexpr bool is_factored(int kind) {
    return kind <= kLemmon2005;
}

/// A line of the file.
struct Term {
    int kind;
    std::array<double, kMaxColumns> value;

    KindInfo const& info() const { return kinds[kind]; }
    int d() const { return is_factored(kind) ? static_cast<int>(value[1]) : -1; }
    int l() const { return info().l < 0 ? 0 : static_cast<int>(value[info().l]); }
    /// The number is no parameter: an integer exponent, or an m of 0, which says that the factor
    /// exp(−τ^m) is absent.
    bool structural(int column) const {
        return (is_factored(kind) && column == 1) || column == info().l ||
               (kind == kLemmon2005 && column == 4 && value[4] == 0.0);
    }
    /// Run of the factored terms: 0 power, 1 shaped, 2 level.
    int run() const { return d() == 0 ? 2 : kind == kPower || kind == kLemmon2005 ? 0 : 1; }
};

/// What the file says, checked.
struct Section {
    double M = 0, Ts = 1, vs = 1, R_eos = 0, omega = 0;
    std::vector<Term> terms;
    std::vector<int> block_size;  // the kind is that of the block's first term
};

bool valid(Term const& term) {
    const auto whole = [](double x) { return x >= 0 && x <= kMaxPower && x == std::floor(x); };
    if (is_factored(term.kind) && !whole(term.value[1])) return false;
    if (term.info().l >= 0 && !whole(term.value[term.info().l])) return false;
    // Without a power of δ, only the plain functions of τ are known.
    return term.d() != 0 || term.kind <= kGaussian;
}

Section read_section(FILE* f) {
    SectionReader in(f);
    Section s;
    s.M = in.number("M");
    s.Ts = in.positive("Ts");
    s.vs = in.positive("vs");
    s.R_eos = in.number("R_eos");
    s.omega = in.number("omega");
    const int blocks = in.count("blocks", 1, kMaxBlocks);
    for (int b = 0; b < blocks; ++b) {
        int kind = 0;
        while (kind < kKinds && !in.at(kinds[kind].key)) ++kind;
        if (kind == kKinds) in.refuse("no kind of terms");
        s.block_size.push_back(
            in.rows(kinds[kind].key, kMaxTerms - static_cast<int>(s.terms.size())));
        for (int i = 0; i < s.block_size.back(); ++i) {
            Term term{kind, {}};
            in.row(term.value.data(), kinds[kind].columns);
            if (!valid(term)) in.refuse("exponents that the equation does not have");
            s.terms.push_back(term);
        }
    }
    in.no_more_rows();
    return s;
}

/// Term numbers of the factored terms: run after run, the power run by l and d.
std::vector<int> evaluation_order(std::vector<Term> const& terms) {
    std::vector<int> order;
    for (int i = 0; i < static_cast<int>(terms.size()); ++i)
        if (is_factored(terms[i].kind)) order.push_back(i);
    const auto key = [&](int i) {
        Term const& term = terms[i];
        return term.run() == 0 ? std::tuple(0, term.l(), term.d()) : std::tuple(term.run(), 0, 0);
    };
    std::stable_sort(order.begin(), order.end(), [&](int i, int j) { return key(i) < key(j); });
    return order;
}

}  // namespace

Equation::Equation() : pool_{0.0, 1.0, 1.0} {
    for (double& x : pool_) address_.push_back(&x);
}

/// Fills an equation from a section that holds no mistake any more.
class Equation::Builder {
  public:
    Builder(Equation& equation, Section const& section)
        : e_(equation),
          section_(section),
          terms_(section.terms),
          order_(evaluation_order(section.terms)) {}

    void build() {
        size();
        reset();
        number();
        collect();
    }

  private:
    using Cells = std::array<double*, kMaxColumns>;

    double* take(int count) { return std::exchange(next_, next_ + count); }

    /// Sizes of the runs and of the pool.
    void size() {
        std::array<int, 3> run_size{};
        for (int i : order_) ++run_size[terms_[i].run()];
        powers_ = run_size[0];
        e_.shaped0 = padded(run_size[0]);
        e_.level0 = e_.shaped0 + padded(run_size[1]);
        e_.levels = run_size[2];
        e_.factored = e_.level0 + padded(e_.levels);
        const int shapes = e_.factored - e_.shaped0;
        int own = 0;
        for (Term const& term : terms_) own += term.info().own;
        e_.pool_.assign(3 + 2 * e_.factored + 5 * shapes + own, 0.0);
        e_.structure_.assign(kMaxColumns * terms_.size(), 0.0);
        next_ = e_.pool_.data() + 3;
        e_.n = n_ = take(e_.factored);
        e_.t = t_ = take(e_.factored);
        e_.eta = eta_ = take(shapes);
        e_.epsilon = epsilon_ = take(shapes);
        e_.beta = beta_ = take(shapes);
        e_.gamma = gamma_ = take(shapes);
        e_.g = g_ = take(shapes);
    }

    void reset() {
        const int shapes = e_.factored - e_.shaped0;
        e_.terms_ = static_cast<int>(terms_.size());
        e_.omega_ = section_.omega;
        e_.R_eos_ = section_.R_eos;
        e_.pool_[0] = section_.M, e_.pool_[1] = section_.Ts, e_.pool_[2] = section_.vs;
        e_.highest = 1;
        e_.damping = false;
        e_.d.assign(e_.factored, 0.0);
        e_.l.assign(shapes, 0.0);
        e_.sign.assign(shapes, -1.0);
        e_.dpower.assign(shapes, 0);
        e_.lpower.assign(shapes, 0);
        e_.slots.clear(), e_.falling.clear(), e_.groups.clear(), e_.extras.clear();
        e_.nonanalytic.clear(), e_.association.clear();
    }

    /// Every number finds its place; the file order is kept in the blocks and addresses.
    void number() {
        std::vector<int> place(terms_.size(), -1);
        int free_place[3] = {0, e_.shaped0, e_.level0};
        for (int i : order_) place[i] = free_place[terms_[i].run()]++;
        std::vector<double*> factors, others;
        e_.blocks_.clear();
        int i = 0;
        for (int size : section_.block_size) {
            Block block{terms_[i].kind, {}};
            for (int row = 0; row < size; ++row, ++i) {
                Term const& term = terms_[i];
                Cells cell = shared(term, place[i]);
                for (int c = 0; c < term.info().columns; ++c) {
                    if (term.structural(c)) cell[c] = &e_.structure_[kMaxColumns * i + c];
                    if (!cell[c]) cell[c] = take(1);
                    *cell[c] = term.value[c];
                    block.cell.push_back(cell[c]);
                    if (c == 0)
                        factors.push_back(cell[c]);
                    else if (!term.structural(c))
                        others.push_back(cell[c]);
                }
                extend(term, place[i], cell);
                if (is_factored(term.kind)) powers(term, place[i]);
            }
            e_.blocks_.push_back(std::move(block));
        }
        e_.address_ = {&e_.pool_[0], &e_.pool_[1], &e_.pool_[2]};
        e_.address_.insert(e_.address_.end(), factors.begin(), factors.end());
        e_.address_.insert(e_.address_.end(), others.begin(), others.end());
    }

    /// The columns that stand in the arrays of all factored terms.
    Cells shared(Term const& term, int k) const {
        Cells cell{};
        const int s = k - e_.shaped0;
        if (is_factored(term.kind)) cell[0] = n_ + k, cell[2] = t_ + k;
        if (term.kind == kExponential || term.kind == kDoubleExponential) cell[3] = g_ + s;
        if (term.kind == kGaussian || term.kind == kGaoB)
            cell[3] = eta_ + s, cell[4] = epsilon_ + s, cell[5] = beta_ + s, cell[6] = gamma_ + s;
        return cell;
    }
    /// What a kind has beyond them.
    void extend(Term const& term, int k, Cells const& cell) {
        if (term.kind == kLemmon2005 && !term.structural(4))
            e_.extras.push_back({k, nullptr, cell[4]});
        if (term.kind == kDoubleExponential) e_.extras.push_back({k, cell[5], cell[6]});
        if (term.kind == kGaoB) e_.extras.push_back({k, cell[7], nullptr});
        if (term.kind == kNonAnalytic)
            e_.nonanalytic.push_back(
                {cell[0], cell[1], cell[2], cell[3], cell[4], cell[5], cell[6], cell[7]});
        if (term.kind == kAssociation)
            e_.association.push_back({cell[0], cell[1], cell[2], cell[3], cell[4]});
    }
    void powers(Term const& term, int k) {
        e_.highest = std::max({e_.highest, term.d(), term.l()});
        e_.d[k] = term.d();
        if (term.run() == 0) return;
        const int s = k - e_.shaped0;
        e_.dpower[s] = term.d();
        e_.lpower[s] = term.l();
        e_.l[s] = term.l();
        if (term.kind == kGaoB) e_.sign[s] = 1.0;
        if (term.kind == kPower && term.l() > 0) g_[s] = 1.0;
        e_.damping = e_.damping || term.info().l >= 0;
    }

    /// Slots and groups of the power run.
    void collect() {
        for (int k = 0; k < powers_; ++k) {
            Term const& term = terms_[order_[k]];
            const bool new_group = e_.groups.empty() || e_.groups.back().l != term.l();
            const int slot = static_cast<int>(e_.slots.size());
            if (new_group) e_.groups.push_back({slot, slot, term.l()});
            if (new_group || e_.slots.back().d != term.d()) {
                const int d = term.d();
                e_.slots.push_back({k, k, d});
                for (int factor : {1, d, d * (d - 1), d * (d - 1) * (d - 2)})
                    e_.falling.push_back(factor);
            }
            ++e_.slots.back().last;
            e_.groups.back().last = static_cast<int>(e_.slots.size());
        }
    }

    Equation& e_;
    Section const& section_;
    std::vector<Term> const& terms_;
    const std::vector<int> order_;
    int powers_ = 0;
    double* next_ = nullptr;  // what is free of the pool
    double *n_ = nullptr, *t_ = nullptr;
    double *eta_ = nullptr, *epsilon_ = nullptr, *beta_ = nullptr, *gamma_ = nullptr, *g_ = nullptr;
};

void Equation::read(FILE* f) {
    const Section section = read_section(f);  // from here on nothing is refused
    Builder(*this, section).build();
}

void Equation::write(FILE* f) const {
    std::fprintf(f, "M:\t%s\nTs:\t%s\nvs:\t%s\nR_eos:\t%s\nomega:\t%s\nblocks:\t%d\n",
                 shortest_text(M()).c_str(), shortest_text(Ts()).c_str(),
                 shortest_text(vs()).c_str(), shortest_text(R_eos_).c_str(),
                 shortest_text(omega_).c_str(), static_cast<int>(blocks_.size()));
    for (Block const& block : blocks_) {
        KindInfo const& info = kinds[block.kind];
        const int cells = static_cast<int>(block.cell.size());
        std::fprintf(f, "%s:\t%d\t%s\n", info.key, cells / info.columns, info.titles);
        for (int i = 0; i < cells; ++i)
            std::fprintf(f, "%s%c", shortest_text(*block.cell[i]).c_str(),
                         (i + 1) % info.columns == 0 ? '\n' : ' ');
    }
}

}  // namespace corvane::meos
