#include <corvane/plugin/section.h>
#include <plugins/meos/equation.h>
#include <plugins/meos/vector_exp.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <tuple>
#include <utility>

namespace corvane::meos {
namespace {

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

/// Shortest text that reads back as x.
std::string text_of(double x) {
    char buffer[40];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, x).ptr};
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

void Equation::read(FILE* f) {
    const Section section = read_section(f);  // from here on nothing is refused
    std::vector<Term> const& terms = section.terms;
    const std::vector<int> order = evaluation_order(terms);

    // Sizes of the runs and of the pool.
    std::array<int, 3> run_size{};
    for (int i : order) ++run_size[terms[i].run()];
    shaped0 = padded(run_size[0]);
    level0 = shaped0 + padded(run_size[1]);
    levels = run_size[2];
    factored = level0 + padded(levels);
    const int shapes = factored - shaped0;
    int own = 0;
    for (Term const& term : terms) own += term.info().own;
    pool_.assign(3 + 2 * factored + 5 * shapes + own, 0.0);
    structure_.assign(kMaxColumns * terms.size(), 0.0);
    double* next = pool_.data() + 3;
    const auto take = [&next](int count) { return std::exchange(next, next + count); };
    double* const n_ = take(factored);
    double* const t_ = take(factored);
    double* const eta_ = take(shapes);
    double* const epsilon_ = take(shapes);
    double* const beta_ = take(shapes);
    double* const gamma_ = take(shapes);
    double* const g_ = take(shapes);
    n = n_, t = t_, eta = eta_, epsilon = epsilon_, beta = beta_, gamma = gamma_, g = g_;

    terms_ = static_cast<int>(terms.size());
    omega_ = section.omega;
    R_eos_ = section.R_eos;
    pool_[0] = section.M, pool_[1] = section.Ts, pool_[2] = section.vs;
    highest = 1;
    damping = false;
    d.assign(factored, 0.0);
    l.assign(shapes, 0.0);
    sign.assign(shapes, -1.0);
    dpower.assign(shapes, 0);
    lpower.assign(shapes, 0);
    slots.clear(), groups.clear(), extras.clear(), nonanalytic.clear(), association.clear();

    std::vector<int> place(terms.size(), -1);
    int free_place[3] = {0, shaped0, level0};
    for (int i : order) place[i] = free_place[terms[i].run()]++;

    // Every number finds its place; the file order is kept in `blocks_` and `address_`.
    blocks_.clear();
    std::vector<double*> factors, others;
    for (int b = 0, i = 0; b < static_cast<int>(section.block_size.size()); ++b) {
        Block block{terms[i].kind, {}};
        for (int row = 0; row < section.block_size[b]; ++row, ++i) {
            Term const& term = terms[i];
            const int k = place[i], s = k - shaped0;
            double* cell[kMaxColumns] = {};
            if (is_factored(term.kind)) cell[0] = n_ + k, cell[2] = t_ + k;
            if (term.kind == kExponential || term.kind == kDoubleExponential) cell[3] = g_ + s;
            if (term.kind == kGaussian || term.kind == kGaoB)
                cell[3] = eta_ + s, cell[4] = epsilon_ + s, cell[5] = beta_ + s,
                cell[6] = gamma_ + s;
            for (int c = 0; c < term.info().columns; ++c) {
                if (term.structural(c)) cell[c] = &structure_[kMaxColumns * i + c];
                if (!cell[c]) cell[c] = take(1);
                *cell[c] = term.value[c];
                block.cell.push_back(cell[c]);
                if (c == 0)
                    factors.push_back(cell[c]);
                else if (!term.structural(c))
                    others.push_back(cell[c]);
            }
            if (term.kind == kLemmon2005 && !term.structural(4))
                extras.push_back({k, nullptr, cell[4]});
            if (term.kind == kDoubleExponential) extras.push_back({k, cell[5], cell[6]});
            if (term.kind == kGaoB) extras.push_back({k, cell[7], nullptr});
            if (term.kind == kNonAnalytic)
                nonanalytic.push_back(
                    {cell[0], cell[1], cell[2], cell[3], cell[4], cell[5], cell[6], cell[7]});
            if (term.kind == kAssociation)
                association.push_back({cell[0], cell[1], cell[2], cell[3], cell[4]});
            if (!is_factored(term.kind)) continue;
            highest = std::max({highest, term.d(), term.l()});
            d[k] = term.d();
            if (term.run() == 0) continue;
            dpower[s] = term.d();
            lpower[s] = term.l();
            l[s] = term.l();
            if (term.kind == kGaoB) sign[s] = 1.0;
            if (term.kind == kPower && term.l() > 0) g_[s] = 1.0;
            damping = damping || term.info().l >= 0;
        }
        blocks_.push_back(std::move(block));
    }
    address_ = {&pool_[0], &pool_[1], &pool_[2]};
    address_.insert(address_.end(), factors.begin(), factors.end());
    address_.insert(address_.end(), others.begin(), others.end());

    for (int k = 0; k < run_size[0]; ++k) {
        Term const& term = terms[order[k]];
        const bool new_group = groups.empty() || groups.back().l != term.l();
        const int slot = static_cast<int>(slots.size());
        if (new_group) groups.push_back({slot, slot, term.l()});
        if (new_group || slots.back().d != term.d()) slots.push_back({k, k, term.d()});
        ++slots.back().last;
        groups.back().last = static_cast<int>(slots.size());
    }
}

void Equation::write(FILE* f) const {
    std::fprintf(f, "M:\t%s\nTs:\t%s\nvs:\t%s\nR_eos:\t%s\nomega:\t%s\nblocks:\t%d\n",
                 text_of(M()).c_str(), text_of(Ts()).c_str(), text_of(vs()).c_str(),
                 text_of(R_eos_).c_str(), text_of(omega_).c_str(),
                 static_cast<int>(blocks_.size()));
    for (Block const& block : blocks_) {
        KindInfo const& info = kinds[block.kind];
        const int cells = static_cast<int>(block.cell.size());
        std::fprintf(f, "%s:\t%d\t%s\n", info.key, cells / info.columns, info.titles);
        for (int i = 0; i < cells; ++i)
            std::fprintf(f, "%s%c", text_of(*block.cell[i]).c_str(),
                         (i + 1) % info.columns == 0 ? '\n' : ' ');
    }
}

}  // namespace corvane::meos
