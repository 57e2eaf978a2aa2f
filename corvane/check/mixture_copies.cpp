#include <corvane/check/mixture_copies.h>
#include <corvane/check/rewritten.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/mixture/theory_parameters.h>
#include <corvane/pure/model1.h>

namespace corvane::inline detail {
namespace {
/// By its section as far as its equation takes it, then by value.
void copy_component(Model1 const& from, Model1& to) {
    try {
        handed_on([&](FILE* f) { from.par_out(f); }, [&](FILE* f) { to.par_in(f, 1); });
    } catch (ThException const&) {
    }
    for (int k = 0; k < from.mpar(); ++k)
        if (to.param(k) != from.param(k)) to.param(k, from.param(k));
}

void copy_pair(ModelN const& from, int i, int j, ModelN& to, int a, int b, Pairs pairs) {
    if (pairs == Pairs::by_section)
        return handed_on([&](FILE* f) { from.par_out(f, i, j); },
                         [&](FILE* f) { to.par_in(f, a, b); });
    auto const* known = dynamic_cast<PairParameters const*>(&from);
    for (int k = 0; known && k < known->pair_parameters(); ++k)
        to.param(k, a, b, from.param(k, i, j));
}
}  // namespace

Mixed made_of(ModelN const& mixture, std::vector<int> const& which, Pairs pairs) {
    Mixed other(attachN(mixture.eos, mixture.mth));
    other->alloc(static_cast<int>(which.size()), mixture.eos);
    auto const* theory = dynamic_cast<TheoryParameters const*>(&mixture);
    for (int a = 0; a < other->mdl1.size(); ++a) {
        const int i = which[static_cast<std::size_t>(a)];
        Model1 const& from = *mixture.mdl1[i];
        Model1& to = *other->mdl1[a];
        to.name(from.name());
        to.id(from.id());
        to.load(mixture.eos);
        copy_component(from, to);
        if (theory)
            handed_on([&](FILE* f) { theory->theory_out(f, i); },
                      [&](FILE* f) { dynamic_cast<TheoryParameters&>(*other).theory_in(f, a); });
        for (int b = 0; !theory && b < a; ++b)
            if (const int j = which[static_cast<std::size_t>(b)]; i != j)
                copy_pair(mixture, i, j, *other, a, b, pairs);
    }
    return other;
}

Mixed reversed(ModelN const& mixture) {
    const int n = mixture.mdl1.size();
    Mixed other(attachN(mixture.eos, mixture.mth));
    other->alloc(n, mixture.eos);
    for (int i = 0; i < n; ++i) {
        other->mdl1[i]->name(mixture.mdl1[n - 1 - i]->name());
        other->mdl1[i]->id(mixture.mdl1[n - 1 - i]->id());
        for (int j = 0; j < i; ++j) other->id(j, i, mixture.id(n - 1 - i, n - 1 - j));
    }
    try {
        other->load(mixture.eos, mixture.mth);
    } catch (ThException const&) {
        return nullptr;
    }
    return other;
}

}  // namespace corvane::inline detail
