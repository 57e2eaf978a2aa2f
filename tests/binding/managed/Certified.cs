// Fluids and mixtures opened by name: results as objects, failures by name, traces under control.
using System;
using System.IO;
using System.Linq;
using System.Threading.Tasks;
using static Corvane.Tests.Program;

namespace Corvane.Tests
{
    internal static class Certified
    {
        private static readonly double[] Half = { 0.5, 0.5 };

        internal static void Run(string folder)
        {
            // Nothing depends on the working directory.
            string home = Directory.GetCurrentDirectory();
            Directory.SetCurrentDirectory("/");
            try
            {
                Fluids();
                Mixtures();
                Binaries();
                Diagrams();
                Errors();
            }
            finally
            {
                Directory.SetCurrentDirectory(home);
            }
        }

        private static void Fluids()
        {
            Fluid kept;
            using (Fluid water = Fluid.Open("H2O"))
            {
                kept = water;
                Equal("name", water.Substance, "water");
                Equal("equation", water.Equation, "MEOS");
                True("home", File.Exists(Path.Combine(water.Home, "CorvaneS", "substances.tsv")));
                True("critical", Math.Abs(water.CriticalT - 647.096) < 1e-3 && water.HasIdeal);
                // IAPWS R6-95, table 8: saturation at 450 K, with its gas constant.
                SaturationPoint s = water.SaturationAtT(450);
                double p = s.P * (8.314371357587 / Constants.R);
                True("p " + p, Math.Abs(p - 0.932203564) < 1e-8);
                Equal("liquid", Math.Round(1e3 * s.Given.Rho * water.MolarMass, 5), 890.34125);
                Equal("vapour", Math.Round(1e3 * s.Incipient.Rho * water.MolarMass, 7), 4.8120036);
                True("bound", s.Certificate.ValueError < 1e-6);
                State wet = water.State(Quantity.T, 450, Quantity.Q, 0.25);
                Equal("phases", wet.Phases.Count, 2);
                Equal("amount", wet.Phases[1].Fraction, 0.25);
                State again = water.State(Quantity.P, wet.P, Quantity.H, wet.H);
                True("h", Math.Abs(again.Q - 0.25) < 1e-6);
                Equal("anomaly", water.States(Quantity.P, 0.101325, Quantity.Rho, 0.0555).Count, 2);
                Fails("several", FailureKind.GaveUp, 0,
                      () => water.State(Quantity.P, 0.101325, Quantity.Rho, 0.0555),
                      "MEOS water: 2 states with the given P and Rho");
                Equal("lent", water.Model.Name, "water");
                True("lent", !water.Model.IsOwner);
            }
            Throws<ObjectDisposedException>("disposed", () => kept.SaturationAtT(300));
            Throws<ObjectDisposedException>("disposed", () => kept.Model.Z(1e-3, 300));
        }

        private static void Mixtures()
        {
            using (Mixture gas = Mixture.Open("MEOS+GERG", "methane", "CO2"))
            {
                True("names", gas.Components.SequenceEqual(new[] { "methane", "carbon_dioxide" }));
                Equal("set", gas.Set(0), 8);  // GERG-2008 has equations of its own
                True("published", !gas.IsEstimated(0, 1));
                FlashResult f = gas.FlashPT(3, 220, Half);
                Equal("phases", f.Phases.Count, 2);
                Equal("whole", Math.Round(f.Phases.Sum(q => q.Fraction), 12), 1.0);
                Equal("balance", Math.Round(f.Phases.Sum(q => q.Fraction * q.X[1]), 9), 0.5);
                True("back", Math.Abs(gas.FlashPH(3, f.H, Half).T - 220) < 1e-5);
                True("back", Math.Abs(gas.FlashPS(3, f.S, Half).T - 220) < 1e-5);
                True("back", Math.Abs(gas.FlashTRho(220, f.Rho, Half).P - 3) < 1e-5);
                True("text", f.Certificate.ToString().StartsWith("phases 2, dmu "));
                Equal("lent", gas.Name + " " + gas.Model.GetId(0, 0), "MEOS+GERG 8");
                using (DoubleVector x = new DoubleVector(Half))
                    True("Z", Math.Abs(gas.Model.Z(1e-3, 300, x) - gas.Phase(300, 1e-3, Half).Phases[0].Z)
                              < 1e-14);
                // Read by threads at once.
                double[] p = new double[16];
                Parallel.For(0, p.Length, i => p[i] = gas.DewT(230, Half).P);
                True("threads", p.All(x => x == p[0]));
            }
            using (Mixture m = Mixture.Open("PR+vdW1", "methane", "propane"))
            {
                Equal("states", m.States(Quantity.T, 250, Quantity.H, 3000, Half).Count, 2);
                SaturationPoint low = m.DewT(325, Half, Branch.Lower);
                SaturationPoint high = m.DewT(325, Half, Branch.Upper);
                True("branches", low.P < high.P && low.Split.Count == 0);
                Envelope e = m.Envelope(Half);
                Equal("closed", e.Curve.End, CurveEnd.Closed);
                Equal("critical", Math.Round(e.Critical[0].T, 6),
                      Math.Round(m.CriticalPoint(Half).T, 6));
                True("highest", e.Curve.T.Max() <= e.Cricondentherm[0].T + 1e-9);
                Equal("bubble", Math.Round(m.BubbleP(m.BubbleT(250, Half).P, Half).T, 6), 250.0);
            }
        }

        private static void Binaries()
        {
            using (Mixture m = Mixture.Open("PR+vdW1", "carbon_dioxide", "ethane"))
            {
                int calls = 0;
                Diagram d = m.DiagramPxy(263.15, 0, n => ++calls > 0);
                True("complete", d.IsComplete && calls > 10);
                Equal("azeotropes", d.Azeotropes.Count, 1);
                EquilibriumPoint azeotrope = d.Azeotropes[0];
                Equal("azeotrope", azeotrope.Phases[0].X[0], azeotrope.Phases[1].X[0]);
                Equal("x", d.Branches[0].X(0, 0)[0], d.Branches[0].Points[0].Phases[0].X[0]);
                CurveSet part = m.CriticalLines(0, n => n < 3);
                Equal("interrupted", part.Curves[0].End, CurveEnd.Interrupted);
                True("interrupted", !part.IsComplete);
                Throws<FormatException>("thrown on",
                                        () => m.CriticalLines(0, n => throw new FormatException()));
                Equal("lines", m.CriticalLines().Curves[0].Begin, CurveEnd.Pure);
                Equal("azeotropic", m.AzeotropicLines().Curves[0].Kind, CurveKind.Azeotropes);
            }
            using (Mixture m = Mixture.Open("PR+vdW1", "benzene", "naphthalene"))
            {
                EquilibriumPoint e = m.Eutectic(0.1);
                Curve line = m.SolidFluidIsobar(1, 0.1).Curves[0];
                Equal("kind", line.Kind, CurveKind.Solid1);
                Equal("end", line.End, CurveEnd.Eutectic);
                Equal("T", Math.Round(line.T.Last(), 6), Math.Round(e.T, 6));
            }
        }

        private static void Diagrams()
        {
            using (Mixture m = Mixture.Open("PR+vdW1", "methane", "ethane", "CO2"))
            {
                TernaryDiagram d = m.Ternary(5, 250, 0.1, 6);
                True("regions", d.Regions.Count > 0 && d.Regions[0].Points.Count > 3);
                EquilibriumPoint tie = d.Regions[0].Points[1];
                // The middle of a tie line is a state of the two phases at its ends.
                double[] z = tie.Phases[0].X.Zip(tie.Phases[1].X, (a, b) => (a + b) / 2).ToArray();
                FlashResult f = m.FlashPT(5, 250, z);
                Equal("phases", f.Phases.Count, 2);
                True("x", Math.Abs(f.Phases[0].X[0] - tie.Phases[0].X[0]) < 1e-8);
            }
            using (Fluid co2 = Fluid.Open("PR", "CO2"))
            {
                PropertyDiagram d = co2.PropertyDiagram(new[] { Quantity.P }, new[] { 3.0 }, 20);
                Equal("kind", d.Isolines.Single().Kind, CurveKind.Isobar);
                True("complete", d.IsComplete);
                State s = d.Isolines[0].States[5];
                State again = co2.State(Quantity.P, s.P, Quantity.H, s.H);
                True("h", Math.Abs(again.T - s.T) < 1e-6 * s.T);
                Throws<ArgumentException>("values", () => co2.PropertyDiagram(
                    new[] { Quantity.P }, new double[0]));
            }
        }

        private static void Errors()
        {
            Fails("open", FailureKind.NotOpened, 0, () => Fluid.Open("unobtainium"));
            Fails("home", FailureKind.NotOpened, 0, () => Fluid.Open("PR", "methane", 0, "/no"),
                  "/no does not hold CorvaneS");
            Throws<ArgumentNullException>("null", () => Mixture.Open("PR+vdW1", "methane", null));
            using (Mixture m = Mixture.Open("PR+vdW1", "methane", "propane"))
            {
                Fails("length", FailureKind.BadArgument, 0, () => m.FlashPT(1, 300, 1.0),
                      "flash_pT, PR+vdW1 methane, propane: 1 mole fractions for 2 components");
                Throws<ArgumentNullException>("null", () => m.DewT(300, null));
                try
                {
                    m.DewT(400, Half);
                    Fail("a dew point at 400 K");
                }
                catch (ThermodynamicException e)
                {
                    Equal("code", e.Code, FailureCode.NoSolution);
                    True(e.Message, e.Message.StartsWith(
                        "PR+vdW1 methane, propane: dew_T: no solution at T = 400 K"));
                }
                try
                {
                    m.FlashPT(-1, 300, Half);
                    Fail("a negative pressure");
                }
                catch (ThermodynamicException e)
                {
                    Equal("code", e.Code, FailureCode.OutOfRange);
                }
            }
            // Longer than the record: the whole text crosses nevertheless.
            string home = "/" + new string('x', 700);
            Fails("long", FailureKind.NotOpened, 0, () => Fluid.Open("PR", "methane", 0, home),
                  home + " does not hold CorvaneS");
        }
    }
}
