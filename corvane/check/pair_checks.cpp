#include <corvane/check/pair_checks.h>
#include <corvane/check/rewritten.h>
#include <corvane/mixture/modeln.h>
#include <corvane/mixture/pair_parameters.h>
#include <corvane/pure/model1.h>

#include <algorithm>
#include <cmath>

namespace corvane::inline detail {
namespace {

class PairChecks {
  public:
    PairChecks(Survey& survey, ModelN& model, std::vector<double> const& x,
               DensityRange const& range)
        : survey_(survey), m_(model), n_(model.mdl1.size()), x_(n_), range_(range) {
        std::copy(x.begin(), x.end(), x_.data);
        if (auto const* pairs = dynamic_cast<PairParameters const*>(&m_))
            count_ = pairs->pair_parameters();
    }

    void one_by_one() {
        for (int j = 1; j < n_; ++j)
            for (int i = 0; count_ > 0 && i < j; ++i) pair(i, j);
    }
    /// The identities with every parameter at work, of pairs and, where they are 0 and may be
    /// something else, of components (a volume translation, for instance).
    void all_at_work(std::function<void()> const& identities) {
        Rewritten all;
        for (int j = 1; j < n_; ++j)
            for (int i = 0; i < j; ++i)
                for (int k = 0; k < count_; ++k)
                    all.write(m_.ppar(k, i, j), changed(m_.param(k, i, j)));
        for (int i = 0; i < n_; ++i)
            for (int k = 3; k < m_.mdl1[i]->mpar(); ++k)  // after molar mass and scales
                if (double* const at = m_.mdl1[i]->ppar(k); *at == 0.0) {
                    all.write(at, changed(0.0));
                    if (!std::isfinite(fingerprint())) all.put_back();
                }
        identities();
    }

  private:
    static double changed(double value) { return value == 0.0 ? 0.01 : 1.01 * value; }
    static bool alike(double a, double b) {
        return std::abs(a - b) <= 1e-11 * (1.0 + std::abs(b)) || (a != a && b != b);
    }
    /// A value of everything that depends on the parameters; without a number where the state is
    /// none.
    double fingerprint() const {
        const double T = 0.6 * range_.T_low + 0.4 * range_.T_high;
        double a = 0.0, b = 0.0;
        m_.vcalc(1.0, T, x_, 1, a, b);
        return m_.Ar(0.6 * range_.top, T, x_) + 2.0 * m_.Z(0.3 * range_.top, 1.3 * T, x_) + a;
    }
    std::vector<double> values(int i, int j) const {
        std::vector<double> v;
        v.reserve(static_cast<std::size_t>(count_));
        for (int k = 0; k < count_; ++k) v.push_back(m_.param(k, i, j));
        return v;
    }
    /// As the pair (i, j), and from its section as that of (j, i).
    bool survives(int i, int j, double now) {
        const std::vector<double> before = values(i, j);
        for (bool turned : {false, true}) {
            const int a = turned ? j : i, b = turned ? i : j;
            handed_on([&](FILE* f) { m_.par_out(f, a, b); }, [&](FILE* f) { m_.par_in(f, i, j); });
            for (int k = 0; k < count_; ++k) {
                const double was = before[static_cast<std::size_t>(k)];
                if (std::abs(m_.param(k, i, j) - was) > 1e-14 * std::abs(was)) return false;
            }
        }
        return alike(fingerprint(), now);
    }
    void pair(int i, int j) {
        const std::vector<double> before = values(i, j);
        const std::string of = "pair " + std::to_string(i) + ", " + std::to_string(j);
        const double first = fingerprint();
        survey_.holds("a pair survives writing and reading", {}, survives(i, j, first), of);
        for (int k = 0; k < count_; ++k) {
            const std::string which = of + ", parameter " + std::to_string(k);
            survey_.holds("pairs: numbers and addresses", {},
                          m_.ppar(k, i, j) && m_.ppar(k, i, j) == m_.ppar(k, j, i), which);
            const double value = before[static_cast<std::size_t>(k)];
            m_.param(k, i, j, changed(value));
            const double now = fingerprint();
            // One that does not count need not be written: another rule's.
            if (now != first && std::isfinite(now))
                survey_.holds("a pair survives writing and reading", {}, survives(i, j, now),
                              which + " changed");
            m_.param(k, i, j, value);
            survey_.holds("parameters of pairs count from the moment they are written", {},
                          alike(fingerprint(), first), which + " put back");
        }
    }

    Survey& survey_;
    ModelN& m_;
    int n_, count_ = 0;
    Vector<double> x_;
    DensityRange range_;
};
}  // namespace

void check_pairs(Survey& survey, ModelN& mixture, std::vector<double> const& x,
                 DensityRange const& range, std::function<void()> const& identities) {
    PairChecks checks(survey, mixture, x, range);
    checks.one_by_one();
    checks.all_at_work(identities);
}

}  // namespace corvane::inline detail
