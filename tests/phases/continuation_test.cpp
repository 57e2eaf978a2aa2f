// The engine behind all curves, on one that is known: a circle, by arc length.
#include <corvane/phases/continuation/continuation.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

using corvane::CurveEnd;
using corvane::CurveKind;
using corvane::Trial;

namespace {
/// Predicts along the tangent, corrects towards the centre, and ends at `last` radian; within
/// `gap` no step is found.
struct Circle {
    double last = 1e300, gap = 1e300, angle = 0.0, turn = 0.0;
    std::vector<double> steps = {};

    int count() const { return static_cast<int>(steps.size()); }
    Trial attempt(double length, CurveEnd& end) {
        turn = std::atan(length);
        if (turn > 0.3 || angle + turn > gap) return Trial::failed;
        if (angle + turn > last) {
            end = CurveEnd::pressure;
            return Trial::ended;
        }
        angle += turn;
        steps.push_back(length);
        return Trial::taken;
    }
    double growth() const { return turn < 0.1 ? 2.0 : 1.0; }
    CurveEnd lost() const { return CurveEnd::uncertified; }
    std::optional<CurveEnd> arrive() const {
        return angle > 2 * M_PI ? std::optional(CurveEnd::closed) : std::nullopt;
    }
};

TEST(Continuation, StepsGrowAndShrinkAndEveryEndIsTold) {
    const struct {
        Circle circle;
        int most, interrupt;
        CurveEnd end;
    } cases[] = {{{}, 1000, 1000, CurveEnd::closed},
                 {{.last = 3.0}, 1000, 1000, CurveEnd::pressure},
                 {{.gap = 3.0}, 1000, 1000, CurveEnd::uncertified},  // why is the curve's to say
                 {{}, 5, 1000, CurveEnd::full},
                 {{}, 1000, 7, CurveEnd::interrupted}};
    for (auto const& c : cases) {
        Circle circle = c.circle;
        corvane::StepLength step{1e-3, 0.25, 1e-6, 0.5};
        const auto progress = [&](int points) { return points < c.interrupt + 40; };
        EXPECT_EQ(continuation(circle, step, c.most, progress, 40), c.end);
        for (std::size_t k = 1; k < circle.steps.size(); ++k) {
            EXPECT_LE(circle.steps[k], 0.25);
            EXPECT_LE(circle.steps[k], 2.0 * circle.steps[k - 1]);
        }
        EXPECT_LE(circle.count(), std::min(c.most, c.interrupt));
        if (c.end == CurveEnd::uncertified) {
            EXPECT_NEAR(circle.angle, c.circle.gap, 2e-6);
        }
    }
    Circle wide;  // its first step is too long for it
    corvane::StepLength step{4.0, 4.0, 1e-6, 0.5};
    EXPECT_FALSE(advance(wide, step));
    EXPECT_EQ(wide.steps, std::vector<double>{0.25});
}

TEST(Continuation, EveryEndHasWordsOfItsOwn) {
    for (CurveKind kind : {CurveKind::any, CurveKind::branch, CurveKind::phase_line,
                           CurveKind::azeotrope, CurveKind::solid, CurveKind::ternary}) {
        std::set<std::string> words;
        for (int end = 0; end <= static_cast<int>(CurveEnd::stuck); ++end)
            EXPECT_TRUE(words.insert(in_words(static_cast<CurveEnd>(end), kind)).second) << end;
    }
    EXPECT_STREQ(in_words(CurveEnd::three_phase, CurveKind::solid),
                 "a split, where a second fluid coexists");
}
}  // namespace
