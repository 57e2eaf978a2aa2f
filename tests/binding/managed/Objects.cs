// Objects: values, texts, ownership, and the order in which things are released.
using System;
using System.Linq;
using System.Runtime.CompilerServices;
using Corvane.Interop;
using static Corvane.Tests.Program;

namespace Corvane.Tests
{
    internal static class Objects
    {
        internal static void Run(string folder)
        {
            Containers();
            Texts();
            Lifetimes();
            RecordsAndEquilibria();
        }

        private static void Containers()
        {
            using (DoubleVector v = new DoubleVector(3.0, 1.0, 2.0))
            using (DoubleVector copy = new DoubleVector(v))
            using (DoubleMatrix m = new DoubleMatrix(2, 2))
            {
                copy[0] = 9;
                Equal("copy", v[0], 3.0);
                Equal("minimum", v.IndexOf(Extremum.Minimum), 1);
                Equal("maximum", v.IndexOf(Extremum.Maximum), 0);
                v.Count = 4;
                Equal("grown", v[2], 2.0);
                v[3] = -1;
                v.Transform(x => x * x);
                True("squares", v.SequenceEqual(new double[] { 9, 1, 4, 1 }));
                Equal("sum", v.Sum(), 15.0);
                Equal("polynomial", v.Polynomial(2), 9.0 + 2 + 16 + 8);
                m.SetIdentity();
                m[0, 1] = 5;
                m[1, 0] = 2;
                Equal("determinant", m.Determinant(), -9.0);
                m.Resize(3, 2);
                Equal("element", m[0, 1], 5.0);
                Equal("new element", m[2, 1], 0.0);
            }
            using (ModelN mixture = ModelN.Open("MEOS", "GERG", new[] { "methane", "propane" }))
                Equal("pair parameters", mixture.PairParameterCount, 7);
            Equal("gas constant", Constants.R, 8.3144621);  // CODATA 2010
            Equal("name length", Constants.NameLength, 32);
        }

        private static void Texts()
        {
            using (Model1 m = new Model1("PR"))
            {
                m.Name = new string('n', 40);
                Equal("long name", m.Name, new string('n', 31));
                m.Comment = "Öl, 20 °C";
                Equal("remark", m.Comment, "Öl, 20 °C");
                Equal("equation", m.Eos, "PR");
                Equal("no solid", m.Solid.PhaseName(0), null);
                Equal("negative solid", m.Solid.PhaseName(-1), null);
                Throws<ArgumentNullException>("null name", () => m.Name = null);
            }
        }

        private static void Lifetimes()
        {
            Model1 m = Model1.Open("PR", "methane");
            Ideal part = m.Ideal;
            True("same part", ReferenceEquals(part, m.Ideal));
            True("part of the model", !part.IsOwner && m.IsOwner);
            m.Dispose();
            m.Dispose();
            Throws<ObjectDisposedException>("model", () => m.Z(0.01, 300));
            Throws<ObjectDisposedException>("part", () => part.Cpm(300));

            Model1 needed = Model1.Open("PR", "methane");
            Ideal own = new Ideal { Model = needed };
            needed.Dispose();
            own.Load();  // reads the name of the model, which it keeps
            double cp = own.Cpm(300);
            own.Dispose();

            // A component outlives every reference to its mixture.
            Model1 component = Component();
            for (int i = 0; i < 5; ++i) Collect();
            Equal("component", component.Name, "propane");
            Equal("its part", component.Ideal.Model, component);

            using (Model1 target = Model1.Open("PR", "methane", withIdeal: false))
            using (Ideal source = new Ideal { Model = target })
            {
                source.Load();
                target.Ideal = source;
                Equal("copied data", target.Ideal.Cpm(300), cp);
            }
        }

        [MethodImpl(MethodImplOptions.NoInlining)]
        private static Model1 Component() =>
            ModelN.Open("PR", "vdW1", new[] { "methane", "propane" }).Components[1];

        private static void Collect()
        {
            GC.Collect();
            GC.WaitForPendingFinalizers();
        }

        private static void RecordsAndEquilibria()
        {
            using (ModelN mixture = ModelN.Open("PR", "vdW1", new[] { "methane", "propane" }))
            using (PassFfeN record = new PassFfeN())
            using (DoubleVector x = new DoubleVector(0.3, 0.7))
            using (DoubleVector vapour = new DoubleVector(1e-3, 1e-4))
            {
                const double T = 213.71;
                double p = 0, liquid = 0.016;
                Equilibria.VleT(mixture, T, x, ref p, ref liquid, vapour);
                // The solver's end: sum of squared residuals below th_inc1 squared by far.
                record.Model = mixture;
                record.X = x;
                record.T = T;
                using (DoubleVector u = new DoubleVector(vapour[0], vapour[1], liquid))
                using (DoubleVector residuals = Equilibria.Residuals(u, record))
                    True("residuals", residuals.SumOfSquares() < 1e-12);
                Equal("record", new { record.T, record.Mode, record.P }.ToString(),
                      new { T, Mode = 0, P = 0.0 }.ToString());
                // The same split by minimisation, which is good to 1e-7 in x on a flat surface.
                using (DoubleVector split = new DoubleVector(0.25, 0.95))
                {
                    var fluids = new[] { PhaseDescriptor.Fluid, PhaseDescriptor.Fluid };
                    Equilibria.EquilMin(mixture, p, T, fluids, split);
                    True("minimum", Math.Abs(split[0] - 0.3) < 1e-4);
                }
                using (DoubleVector start = new DoubleVector(0.5, 0.5))
                {
                    double step = 0;
                    using (DoubleMatrix line = Equilibria.CritSlopeX(mixture, start, ref step))
                        Equal("critical point", line.Rows + " " + line.Columns, "1 4");
                }
            }
        }
    }
}
