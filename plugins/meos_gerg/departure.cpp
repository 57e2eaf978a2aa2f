#include <plugins/meos_gerg/departure.h>

#include <cmath>

namespace corvane::gerg {

namespace {

constexpr int kMaxTerms = 100;  // per block

struct Kind {
    char const *label, *columns;
    int count;
    double Term::*column[7];
};
constexpr Kind kKinds[] = {
    {"power", "n d t l", 4, {&Term::n, &Term::d, &Term::t, &Term::l}},
    {"gerg",
     "n d t eta epsilon beta gamma",
     7,
     {&Term::n, &Term::d, &Term::t, &Term::eta, &Term::epsilon, &Term::beta, &Term::gamma}},
    {"gaussian",
     "n d t eta epsilon beta gamma",
     7,
     {&Term::n, &Term::d, &Term::t, &Term::eta, &Term::epsilon, &Term::b, &Term::c}},
};

bool whole(double x, int least) {
    return x >= least && x <= kMaxPower && x == std::floor(x);
}

}  // namespace

void Departure::read(SectionReader& section) {
    Departure fresh;
    const int blocks = section.at("blocks") ? section.count("blocks", 0, 8) : 0;
    for (int block = 0; block < blocks; ++block) {
        int kind = 0;
        while (kind < 2 && !section.at(kKinds[kind].label)) ++kind;
        Kind const& k = kKinds[kind];
        const int count = section.rows(k.label, kMaxTerms);
        fresh.blocks_.push_back({kind, count});
        for (int row = 0; row < count; ++row) {
            double value[7];
            section.row(value, k.count);
            Term t{};
            for (int c = 0; c < k.count; ++c) t.*k.column[c] = value[c];
            if (!whole(t.d, 0) || !whole(t.l, 0))
                section.refuse("d and l must be small whole numbers");
            fresh.terms_.push_back(t);
        }
    }
    if (blocks > 0) section.no_more_rows();
    *this = std::move(fresh);
}

void Departure::write(FILE* f) const {
    if (blocks_.empty()) return;
    SectionWriter section(f);
    section.count("blocks", static_cast<int>(blocks_.size()));
    Term const* t = terms_.data();
    for (Block const& block : blocks_) {
        Kind const& k = kKinds[block.kind];
        std::fprintf(f, "%s:\t%d\t%s\n", k.label, block.count, k.columns);
        for (int row = 0; row < block.count; ++row, ++t)
            for (int c = 0; c < k.count; ++c)
                std::fprintf(f, "%.17g%c", t->*k.column[c], c + 1 < k.count ? ' ' : '\n');
    }
}

}  // namespace corvane::gerg
