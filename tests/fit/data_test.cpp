// Reading of measured points: what a row becomes, and what is refused.
#include "support.h"

#include <corvane/text/failure.h>
#include <support/scratch.h>

using namespace corvane::fit;

TEST(FitData, RowsBecomePoints) {
    const Scratch scratch;
    const corvane::DataHome home(scratch.home());
    scratch.write("pure.csv",
                  "# Somebody (2000)\n"
                  "T/C,p/bar,rhoL/(kg/m3),w/(m/s),B/(cm3/mol),u_p/%,u_rhoL/(kg/"
                  "m3),use,reference,Tc/K,remark\n"
                  "26.85,10,489,,,0.5,2,,,,best\n"
                  "26.85,10,,700,,,,0,,,\n"
                  "26.85,,,,-380,,,,[7],,\n"
                  ",,,,,,,,,369.8,\n");
    const DataSet set = read_data("pure.csv", home, {"propane"}, 44.09562);
    EXPECT_EQ(set.source, "Somebody (2000)");
    ASSERT_EQ(set.points.size(), 4u);
    Point const &a = set.points[0], &b = set.points[1], &c = set.points[2], &d = set.points[3];
    EXPECT_EQ(a.kind, PointKind::saturation);
    EXPECT_DOUBLE_EQ(a.T, 300.0);
    ASSERT_EQ(a.observed.size(), 2u);
    EXPECT_DOUBLE_EQ(a.observed[0].value, 1.0);
    EXPECT_DOUBLE_EQ(a.observed[0].uncertainty, 0.005);
    EXPECT_DOUBLE_EQ(a.observed[1].value, 489e-3 / 44.09562);
    EXPECT_DOUBLE_EQ(a.observed[1].uncertainty, 2e-3 / 44.09562);
    EXPECT_EQ(b.kind, PointKind::state);
    EXPECT_FALSE(b.used);
    EXPECT_EQ(c.kind, PointKind::virial);
    EXPECT_EQ(c.reference, "[7]");
    EXPECT_EQ(c.line, 5);
    EXPECT_EQ(d.kind, PointKind::critical);
    ASSERT_EQ(d.observed.size(), 1u);
    EXPECT_EQ(d.observed[0].what, Observable::T);

    scratch.write(
        "pair.csv",
        "T/K,p/MPa,x_methane,y_C1,x2_propane\n200,1,0.3,0.9,\n200,1,,0.9,\n200,1,0.3,,0.4\n");
    const DataSet pair = read_data("pair.csv", home, {"propane", "methane"}, 0.0);
    ASSERT_EQ(pair.points.size(), 3u);
    EXPECT_EQ(pair.points[0].kind, PointKind::bubble);
    EXPECT_DOUBLE_EQ(pair.points[0].x[0], 0.7);
    EXPECT_DOUBLE_EQ(pair.points[0].observed[1].value, 1.0 - 0.9);  // y of the first component
    EXPECT_EQ(pair.points[1].kind, PointKind::dew);
    EXPECT_EQ(pair.points[2].kind, PointKind::liquid_liquid);
    EXPECT_DOUBLE_EQ(pair.points[2].x2[0], 0.4);

    // By mass: 18.015268 g/mol of water, 60.05196 of acetic acid; half of each has 1/M parts.
    scratch.write("mass.csv",
                  "T/K,p/MPa,w_water/%,w_acetic_acid/%,x2_water\n300,1,50,50,0.9\n300,1,50,,0.9\n");
    const DataSet mass = read_data("mass.csv", home, {"water", "acetic_acid"}, 0.0);
    EXPECT_TRUE(mass.by_mass);
    EXPECT_FALSE(pair.by_mass);
    for (Point const& p : mass.points) {
        EXPECT_NEAR(p.x[0], 60.05196 / (18.015268 + 60.05196), 1e-12);
        EXPECT_EQ(p.observed[0].value, p.x[0]);
        EXPECT_EQ(p.x2[0], 0.9);  // this phase by moles
    }

    scratch.write(
        "kinds.csv",
        "T/K,p/bar,x_methane,y_methane,x2_methane,hE/(kJ/mol),H_methane/kPa,u_H_methane/%,"
        "gammainf_propane,solubility_propane,kind,Tc/K\n"
        "200,10,0.3,0.9,0.4,,,,,,,\n200,10,0.3,,,-0.05,,,,,,\n200,,,,,,900,2,,,,\n"
        "200,,,,,,,,1.2,,,\n80,1,,,,,,,,0.05,,\n200,10,0.3,,,,,,,,azeotrope,\n"
        ",,0.3,,,,,,,,,300\n");
    const DataSet kinds = read_data("kinds.csv", home, {"methane", "propane"}, 0.0);
    const std::vector<PointKind> expected{
        PointKind::three_phase, PointKind::excess,    PointKind::dilute,  PointKind::dilute,
        PointKind::solubility,  PointKind::azeotrope, PointKind::critical};
    ASSERT_EQ(kinds.points.size(), expected.size());
    for (std::size_t k = 0; k < expected.size(); ++k)
        EXPECT_EQ(kinds.points[k].kind, expected[k]) << k;
    EXPECT_EQ(kinds.points[0].observed.size(), 4u);  // p, x, x2, y
    EXPECT_DOUBLE_EQ(kinds.points[1].observed[0].value, -50.0);
    Observation const& H = kinds.points[2].observed[0];
    EXPECT_DOUBLE_EQ(H.value, 0.9);
    EXPECT_DOUBLE_EQ(H.uncertainty, 0.018);
    EXPECT_EQ(kinds.points[2].x, (std::vector<double>{0.0, 1.0}));  // the solvent
    EXPECT_EQ(kinds.points[3].x, (std::vector<double>{1.0, 0.0}));
}

TEST(FitData, MarksExcludePoints) {
    const Scratch scratch;
    const corvane::DataHome home(scratch.home());
    scratch.write("marks.csv",
                  "T/K,p/MPa,use,exclude\n300,1,0,\n300,1,0.0,\n300,1,no,\n300,1,False,\n300,1,,x\n"
                  "300,1,,1.0\n300,1,1,0\n300,1,1.0,0.0\n300,1,yes,no\n300,1,,false\n");
    const DataSet set = read_data("marks.csv", home, {"propane"}, 44.1);
    ASSERT_EQ(set.points.size(), 10u);
    for (std::size_t k = 0; k < 10; ++k) EXPECT_EQ(set.points[k].used, k > 5) << k;
}

TEST(FitData, WhatMakesNoSenseIsRefusedWithItsLine) {
    const Scratch scratch;
    const corvane::DataHome home(scratch.home());
    const struct {
        char const *text, *why;
    } cases[] = {{"T/K,p/MPa\n300,abc\n", ":2: 'abc' is not a number"},
                 {"T/K,p/MPa\n300,-1\n", "not above zero"},
                 {"T/K,p/furlong\n300,1\n", "unknown unit"},
                 {"T,p/MPa\n300,1\n", "no unit"},
                 {"T/K,p/MPa\n,1\n", "no temperature"},
                 {"T/K,w/(m/s)\n300,700\n", "no pressure"},
                 {"T/K,p/MPa,p/bar\n300,1,10\n", "two columns"},
                 {"T/K,p/MPa,kind\n300,1,nonsense\n", "no kind"},
                 {"T/K,p/MPa,u_p/MPa\n300,1,0\n", "uncertainty"},
                 {"T/K,p/MPa,weight\n300,1,-1\n", "weight"},
                 {"a,b\n1,2\n", "no column that is known"},
                 {"T/K,p/MPa\n", "no measured points"},
                 {"", "empty"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        scratch.write("bad.csv", c.text);
        try {
            read_data("bad.csv", home, {"propane"}, 44.1);
            ADD_FAILURE() << "read";
        } catch (corvane::text::Failure const& e) {
            EXPECT_NE(std::string(e.what()).find(c.why), std::string::npos) << e.what();
        }
    }
    for (char const* text :
         {"T/K,p/MPa,x_methane,x_propane\n300,1,0.3,0.8\n", "T/K,p/MPa,x_butane\n300,1,0.3\n",
          "T/K,H/MPa\n300,1\n", "T/K,hE/(J/mol),x_methane\n300,1,0.3\n",
          "T/K,p/MPa,kind\n300,1,bubble\n", "T/K,p/MPa,kind\n300,1,saturation\n",
          "T/K,p/MPa,w_methane,x_propane\n300,1,0.3,0.7\n",
          "T/K,p/MPa,w_methane,u_w_methane/%\n300,1,0.3,1\n",
          "T/K,p/MPa,solubility_propane\n80,1,1\n", "T/K,H_methane/MPa,H_propane/MPa\n300,1,1\n"}) {
        scratch.write("bad.csv", text);
        EXPECT_THROW(read_data("bad.csv", home, {"methane", "propane"}, 0.0),
                     corvane::text::Failure)
            << text;
    }
}
