// Curves, envelopes and diagrams.
using System.Collections.Generic;
using System.Linq;

namespace Corvane
{
    /// <summary>What a curve is.</summary>
    public enum CurveKind
    {
        /// <summary>Single points.</summary>
        Points,
        /// <summary>A phase envelope: the given phase, the incipient one.</summary>
        Envelope,
        /// <summary>Local maxima of T along an envelope.</summary>
        Cricondentherm,
        /// <summary>Local maxima of p along an envelope.</summary>
        Cricondenbar,
        /// <summary>Critical points.</summary>
        Critical,
        /// <summary>Vapour and liquid.</summary>
        VapourLiquid,
        /// <summary>Two liquids.</summary>
        LiquidLiquid,
        /// <summary>Two fluids.</summary>
        FluidFluid,
        /// <summary>Azeotropes: dense phase, light phase.</summary>
        Azeotropes,
        /// <summary>Three fluid phases, by falling mass density.</summary>
        ThreePhase,
        /// <summary>Splits that were found but not traced.</summary>
        Open,
        /// <summary>Component 0 is solid: the fluid, then the solids.</summary>
        Solid0,
        /// <summary>Component 1 is solid.</summary>
        Solid1,
        /// <summary>Bubble points of a property diagram.</summary>
        Liquid,
        /// <summary>Dew points of a property diagram.</summary>
        Vapour,
        /// <summary>States of one temperature.</summary>
        Isotherm,
        /// <summary>States of one pressure.</summary>
        Isobar,
        /// <summary>States of one density.</summary>
        Isochore,
        /// <summary>States of one entropy.</summary>
        Isentrope,
        /// <summary>States of one amount of vapour.</summary>
        EqualQ
    }

    /// <summary>Why a curve begins or ends where it does.</summary>
    public enum CurveEnd
    {
        /// <summary>Not a curve.</summary>
        None,
        /// <summary>Back at its beginning.</summary>
        Closed,
        /// <summary>At a pure component.</summary>
        Pure,
        /// <summary>Phases become alike.</summary>
        Critical,
        /// <summary>Critical end point: another phase coexists with the critical one.</summary>
        EndPoint,
        /// <summary>A further phase appears.</summary>
        ThreePhase,
        /// <summary>The other component freezes.</summary>
        Eutectic,
        /// <summary>The highest pressure; of T-x-y diagrams the highest temperature.</summary>
        Pressure,
        /// <summary>The lowest temperature.</summary>
        Cold,
        /// <summary>The pressure becomes negative.</summary>
        Tension,
        /// <summary>A mole fraction becomes too small.</summary>
        Dilute,
        /// <summary>End of the data of the solid.</summary>
        SolidRange,
        /// <summary>The other component freezes at once where the data of its solid begin.</summary>
        OtherRange,
        /// <summary>The next point misses its certificate.</summary>
        Uncertified,
        /// <summary>Bound of the number of points.</summary>
        Full,
        /// <summary>Ended by the caller.</summary>
        Interrupted,
        /// <summary>No shorter step finds a further point.</summary>
        Stuck
    }

    /// <summary>Points along a curve.</summary>
    public sealed class Curve
    {
        internal Curve(CurveKind kind, CurveEnd begin, CurveEnd end, PointValues[] values)
        {
            Kind = kind;
            Begin = begin;
            End = end;
            Points = values.Select(v => new EquilibriumPoint(v)).ToArray();
        }

        /// <summary>What it is.</summary>
        public CurveKind Kind { get; }
        /// <summary>Why it begins where it does.</summary>
        public CurveEnd Begin { get; }
        /// <summary>Why it ends where it does.</summary>
        public CurveEnd End { get; }
        /// <summary>Its points.</summary>
        public IReadOnlyList<EquilibriumPoint> Points { get; }
        /// <summary>Temperatures, K.</summary>
        public double[] T => Points.Select(q => q.T).ToArray();
        /// <summary>Pressures, MPa.</summary>
        public double[] P => Points.Select(q => q.P).ToArray();

        /// <summary>Densities of a phase along the curve.</summary>
        /// <param name="phase">index of the phase</param>
        /// <returns>mol/cm³</returns>
        /// <exception cref="System.ArgumentOutOfRangeException">a point has no such phase</exception>
        public double[] Rho(int phase) => Points.Select(q => q.Phases[phase].Rho).ToArray();

        /// <summary>Mole fractions of a component in a phase along the curve.</summary>
        /// <param name="phase">index of the phase</param>
        /// <param name="component">index of the component</param>
        /// <returns>mole fractions</returns>
        /// <exception cref="System.ArgumentOutOfRangeException">there is no such phase or component
        /// </exception>
        public double[] X(int phase, int component) =>
            Points.Select(q => q.Phases[phase].X[component]).ToArray();
    }

    /// <summary>Curves of one calculation, and whether they are all that there is.</summary>
    public class CurveSet
    {
        internal CurveSet(IReadOnlyList<Curve> curves, bool complete)
        {
            Curves = curves;
            IsComplete = complete;
        }

        /// <summary>All curves.</summary>
        public IReadOnlyList<Curve> Curves { get; }

        /// <summary>False if a curve ends early (stuck, full, interrupted, uncertified), or if a diagram
        /// has splits that were not traced.</summary>
        public bool IsComplete { get; }

        /// <summary>The points of all curves of a kind.</summary>
        internal IReadOnlyList<EquilibriumPoint> PointsOf(CurveKind kind) =>
            Curves.Where(c => c.Kind == kind).SelectMany(c => c.Points).ToArray();
    }

    /// <summary>The phase envelope of a mixture of given composition.</summary>
    public sealed class Envelope : CurveSet
    {
        internal Envelope(IReadOnlyList<Curve> curves, bool complete) : base(curves, complete) { }

        /// <summary>The curve from the dew side on; the first one where there are several.</summary>
        public Curve Curve => Curves[0];
        /// <summary>Critical points.</summary>
        public IReadOnlyList<EquilibriumPoint> Critical => PointsOf(CurveKind.Critical);
        /// <summary>Local maxima of T.</summary>
        public IReadOnlyList<EquilibriumPoint> Cricondentherm => PointsOf(CurveKind.Cricondentherm);
        /// <summary>Local maxima of p.</summary>
        public IReadOnlyList<EquilibriumPoint> Cricondenbar => PointsOf(CurveKind.Cricondenbar);
    }

    /// <summary>Everything that three components do at T and p.</summary>
    public sealed class TernaryDiagram : CurveSet
    {
        internal TernaryDiagram(IReadOnlyList<Curve> curves, bool complete) : base(curves, complete) { }

        /// <summary>Regions of two phases: their tie lines in order. They begin and end at an edge
        /// (<see cref="CurveEnd.Pure"/>), at a plait point (<see cref="CurveEnd.Critical"/>) or at a
        /// triangle.</summary>
        public IReadOnlyList<Curve> Regions =>
            Curves.Where(c => c.Kind == CurveKind.VapourLiquid || c.Kind == CurveKind.LiquidLiquid ||
                              c.Kind == CurveKind.FluidFluid).ToArray();
        /// <summary>Plait points.</summary>
        public IReadOnlyList<EquilibriumPoint> Plait => PointsOf(CurveKind.Critical);
        /// <summary>Triangles: three phases each.</summary>
        public IReadOnlyList<EquilibriumPoint> ThreePhase => PointsOf(CurveKind.ThreePhase);
        /// <summary>Wholes of which nothing certain is known, as phases without a density.</summary>
        public IReadOnlyList<EquilibriumPoint> Open => PointsOf(CurveKind.Open);
    }

    /// <summary>Stable states along a line of a property diagram.</summary>
    public sealed class Isoline
    {
        internal Isoline(CurveKind kind, PointValues[] values)
        {
            Kind = kind;
            States = values.Select(v => new State(v)).ToArray();
        }

        /// <summary>What is the same along it.</summary>
        public CurveKind Kind { get; }
        /// <summary>Its states: T, p, rho, h, s, u and q of the whole, without phases.</summary>
        public IReadOnlyList<State> States { get; }
    }

    /// <summary>A property diagram: saturation and isolines.</summary>
    public sealed class PropertyDiagram
    {
        internal PropertyDiagram(IReadOnlyList<Isoline> lines, bool complete)
        {
            Liquid = lines[0];
            Vapour = lines[1];
            Isolines = lines.Skip(2).ToArray();
            IsComplete = complete;
        }

        /// <summary>Bubble points.</summary>
        public Isoline Liquid { get; }
        /// <summary>Dew points.</summary>
        public Isoline Vapour { get; }
        /// <summary>Isolines: isotherms, isobars, lines of equal q, isentropes, isochores.</summary>
        public IReadOnlyList<Isoline> Isolines { get; }
        /// <summary>False if states of the isolines are missing.</summary>
        public bool IsComplete { get; }
    }

    /// <summary>A complete p-x-y or T-x-y diagram of a binary.</summary>
    public sealed class Diagram : CurveSet
    {
        internal Diagram(IReadOnlyList<Curve> curves, bool complete) : base(curves, complete) { }

        /// <summary>The two-phase curves.</summary>
        public IReadOnlyList<Curve> Branches =>
            Curves.Where(c => c.Kind == CurveKind.VapourLiquid || c.Kind == CurveKind.LiquidLiquid ||
                              c.Kind == CurveKind.FluidFluid).ToArray();
        /// <summary>Azeotropes.</summary>
        public IReadOnlyList<EquilibriumPoint> Azeotropes => PointsOf(CurveKind.Azeotropes);
        /// <summary>States of three phases, where branches meet.</summary>
        public IReadOnlyList<EquilibriumPoint> ThreePhase => PointsOf(CurveKind.ThreePhase);
        /// <summary>Splits that were found but not traced.</summary>
        public IReadOnlyList<EquilibriumPoint> Open => PointsOf(CurveKind.Open);
    }
}
