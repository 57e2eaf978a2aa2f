// A native result, read into managed objects at once.
using System;
using System.Collections.Generic;
using System.Linq;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane.Interop
{
    /// <summary>
    /// The lines of a native result, which is released as soon as it has been read. Properties are read
    /// as columns: one call a property and line, whatever the number of points.
    /// </summary>
    internal sealed class Result
    {
        private const int Properties = 31, Fractions = 1000, Whole = -1;
        private const int Rho = 2, Fraction = 7;

        private struct Line
        {
            internal CurveKind Kind;
            internal CurveEnd Begin, End;
            internal PointValues[] Points;
        }

        private readonly Line[] lines;
        private readonly bool complete;

        /// <summary>Reads the result of a call, or throws its failure.</summary>
        /// <param name="handle">the result</param>
        /// <param name="error">the record of the call</param>
        /// <param name="detailed">all properties of the phases, rather than density, amount, x</param>
        internal static Result Of(ResultHandle handle, ref CorvaneError error, bool detailed = false)
        {
            error.Raise();
            using (handle) return new Result(handle, detailed);
        }

        private Result(ResultHandle handle, bool detailed)
        {
            complete = Corvane_Result_complete(handle) != 0;
            lines = new Line[Corvane_Result_lines(handle)];
            for (int i = 0; i < lines.Length; ++i)
                lines[i] = new Line
                {
                    Kind = (CurveKind)Check(
                        Corvane_Result_kind(handle, i, out CorvaneError k), ref k),
                    Begin = (CurveEnd)Check(
                        Corvane_Result_begin(handle, i, out CorvaneError b), ref b),
                    End = (CurveEnd)Check(Corvane_Result_end(handle, i, out CorvaneError e), ref e),
                    Points = Read(handle, i, detailed)
                };
        }

        /// <summary>The points of a result that has single points only.</summary>
        internal IReadOnlyList<T> Single<T>(Func<PointValues, T> make) =>
            lines[0].Points.Select(make).ToArray();

        /// <summary>The curves, and whether they are complete.</summary>
        internal T Curves<T>(Func<IReadOnlyList<Curve>, bool, T> make) =>
            make(lines.Select(l => new Curve(l.Kind, l.Begin, l.End, l.Points)).ToArray(), complete);

        /// <summary>The lines of a property diagram.</summary>
        internal PropertyDiagram PropertyDiagram() =>
            new PropertyDiagram(lines.Select(l => new Isoline(l.Kind, l.Points)).ToArray(), complete);

        private static PointValues[] Read(ResultHandle handle, int line, bool detailed)
        {
            int n = Check(Corvane_Result_points(handle, line, out CorvaneError e), ref e);
            PointValues[] points = new PointValues[n];
            int[] phases = new int[n];
            for (int i = 0; i < n; ++i)
            {
                int at = i;
                phases[i] = Check(Corvane_Result_phases(handle, line, i, out e), ref e);
                points[i] = new PointValues
                {
                    Whole = new double[Properties],
                    Phases = new EquilibriumPhase[phases[i]],
                    Flags = Check(Corvane_Result_flags(handle, line, i, out e), ref e),
                    Text = Utf8.Read((buffer, size) => Check(
                        Corvane_Result_certificate(handle, line, at, buffer, size,
                                                   out CorvaneError c), ref c))
                };
            }
            for (int property = 0; property < Properties; ++property)
            {
                double[] column = Column(handle, line, Whole, property, n);
                for (int i = 0; i < n; ++i) points[i].Whole[property] = column[i];
            }
            int most = phases.DefaultIfEmpty(0).Max();
            for (int phase = 0; phase < most; ++phase)
            {
                double[][] values = Enumerable.Range(0, Properties)
                    .Select(p => detailed || p == Rho || p == Fraction
                                     ? Column(handle, line, phase, p, n) : null).ToArray();
                double[][] x = Enumerable.Range(0, Corvane_Result_components(handle))
                    .Select(k => Column(handle, line, phase, Fractions + k, n)).ToArray();
                for (int i = 0; i < n; ++i)
                    if (phase < phases[i])
                        points[i].Phases[phase] = new EquilibriumPhase(
                            values.Select(v => v == null ? double.NaN : v[i]).ToArray(),
                            x.Select(v => v[i]).ToArray());
            }
            return points;
        }

        private static double[] Column(ResultHandle handle, int line, int phase, int property, int n)
        {
            double[] values = new double[n];
            Check(Corvane_Result_column(handle, line, phase, property, values, n,
                                        out CorvaneError e), ref e);
            return values;
        }
    }
}
