// A mixture opened by names, and its certified equilibria.
using System;
using System.Collections.Generic;
using System.Linq;
using System.Runtime.InteropServices;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;
using static Corvane.Interop.Tracing;

namespace Corvane
{
    /// <summary>Which bubble or dew point, where there are several.</summary>
    public enum Branch
    {
        /// <summary>The first certified one.</summary>
        Any,
        /// <summary>The one of lowest pressure (or temperature).</summary>
        Lower,
        /// <summary>The one of highest pressure (or temperature).</summary>
        Upper
    }

    /// <summary>
    /// A mixture opened by names, from any directory: flashes, bubble and dew points, envelopes, diagrams,
    /// critical points, solids. Results carry certificates; what cannot be certified is a
    /// <see cref="ThermodynamicException"/> whose message says what was asked. Several threads may use one
    /// object. Units: K, MPa, mol/cm³, J/mol, J/(mol K); compositions are mole fractions of all
    /// components, zeros allowed.
    /// </summary>
    /// <remarks>Traces take a function that is called after every point with the number of points so far;
    /// false ends the trace, which keeps what it has, and what it throws is thrown on.</remarks>
    public sealed class Mixture : NativeObject
    {
        private readonly MixtureHandle handle;

        private Mixture(MixtureHandle handle) : base(handle)
        {
            this.handle = handle;
            Count = Corvane_Mixture_size(handle);
            Components = Enumerable.Range(0, Count).Select(i => Text(1, i)).ToArray();
            string[] names = Name.Split(new[] { '+' }, 2);
            Model = new ModelN(new ModelNHandle(Corvane_Mixture_model(handle), handle), names[0],
                               names[1], Count);
        }

        /// <summary>Opens a mixture; pairs without published parameters take the theory's estimate.
        /// </summary>
        /// <param name="model">equation and mixing theory: "PR+vdW1", "PCSAFT+LB", "MEOS+GERG"</param>
        /// <param name="components">substances: names, synonyms, CAS numbers, sum formulas</param>
        /// <returns>the mixture; dispose it</returns>
        /// <exception cref="ThermodynamicException"><see cref="FailureKind.NotOpened"/></exception>
        public static Mixture Open(string model, params string[] components) =>
            Open(model, components, null);

        /// <summary>Opens a mixture.</summary>
        /// <param name="model">equation and mixing theory: "PR+vdW1", "PCSAFT+LB", "MEOS+GERG"</param>
        /// <param name="components">substances: names, synonyms, CAS numbers, sum formulas</param>
        /// <param name="sets">parameter sets of the components; null: those that the pairs were made
        /// for</param>
        /// <param name="pairSet">number of the pairs' parameter sets</param>
        /// <param name="estimate">false refuses pairs without published parameters</param>
        /// <param name="home">directory that holds CorvaneS; null: CORVANE_DATA, else beside the
        /// assembly, else beside the native library</param>
        /// <returns>the mixture; dispose it</returns>
        /// <exception cref="ThermodynamicException"><see cref="FailureKind.NotOpened"/>: the message
        /// says what there is instead, or which file and line is at fault</exception>
        /// <exception cref="ArgumentException">as many sets as components are needed</exception>
        public static Mixture Open(string model, IEnumerable<string> components, int[] sets,
                                   int pairSet = 1, bool estimate = true, string home = null)
        {
            NotNull(model, nameof(model));
            NotNull(components, nameof(components));
            byte[][] names = components.Select(Utf8.Encode).ToArray();
            if (names.Contains(null)) throw new ArgumentNullException(nameof(components));
            if (sets != null && sets.Length != names.Length)
                throw new ArgumentException("as many sets as components are needed");
            GCHandle[] pinned = names.Select(n => GCHandle.Alloc(n, GCHandleType.Pinned)).ToArray();
            try
            {
                return new Mixture(Check(
                    Corvane_open_mixture(
                        Utf8.Encode(model), names.Length,
                        pinned.Select(p => p.AddrOfPinnedObject()).ToArray(), sets, pairSet,
                        estimate ? 1 : 0, Utf8.Encode(home ?? DataHome.Packaged), out CorvaneError e), ref e));
            }
            finally
            {
                foreach (GCHandle p in pinned) p.Free();
            }
        }

        /// <summary>Number of components.</summary>
        public int Count { get; }

        /// <summary>Names of the components in the data tree.</summary>
        public IReadOnlyList<string> Components { get; }

        /// <summary>Equation and mixing theory, "PR+vdW1".</summary>
        public string Name => Text(0, 0);

        /// <summary>The model, lent: it goes with this object.</summary>
        public ModelN Model { get; }

        /// <summary>Data home that it was read from.</summary>
        public string Home => Text(3, 0);

        /// <summary>Do all components have ideal-gas tables, so that h and s are known?</summary>
        public bool HasIdeal => Number(8, 0) != 0;

        /// <summary>Lowest temperature that all parameter sets were published for, K; not-a-number if
        /// none is stated.</summary>
        public double MinT => Number(5, 0);

        /// <summary>Highest such temperature, K.</summary>
        public double MaxT => Number(6, 0);

        /// <summary>Highest such pressure, MPa.</summary>
        public double MaxP => Number(7, 0);

        /// <summary>Molar mass of a component.</summary>
        /// <param name="i">index of the component</param>
        /// <returns>g/mol</returns>
        /// <exception cref="ThermodynamicException">BadArgument: no such component</exception>
        public double MolarMass(int i) => Number(0, i);

        /// <summary>Number of the parameter set of a component.</summary>
        /// <param name="i">index of the component</param>
        /// <returns>its number</returns>
        /// <exception cref="ThermodynamicException">BadArgument: no such component</exception>
        public int Set(int i) => (int)Number(4, i);

        /// <summary>Does the mixing theory's estimate stand in for published parameters of a pair?
        /// </summary>
        /// <param name="i">index of a component</param>
        /// <param name="j">index of another one</param>
        /// <returns>true if it does</returns>
        /// <exception cref="ThermodynamicException">BadArgument: no such component</exception>
        public bool IsEstimated(int i, int j) =>
            Check(Corvane_Mixture_estimated(handle, i, j, out CorvaneError e), ref e) != 0;

        /// <summary>Properties of one phase at temperature, density and composition, stable or not.
        /// </summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³</param>
        /// <param name="z">mole fractions</param>
        /// <returns>the phase with its pressure</returns>
        /// <exception cref="ThermodynamicException">code OutOfRange; BadArgument: length of z
        /// </exception>
        public EquilibriumPoint Phase(double T, double rho, params double[] z) =>
            Result.Of(Corvane_mixture_phase(handle, T, rho, z, Length(z), out CorvaneError e), ref e,
                      true)
                .Single(v => new EquilibriumPoint(v)).First();

        /// <summary>Viscosity of one phase from those of the components, Pa s.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³; 0: the mixture of dilute gases</param>
        /// <param name="z">mole fractions</param>
        /// <returns>the value with the rules, the publications of the components and whether all are in
        /// their ranges; no second source</returns>
        /// <exception cref="ThermodynamicException">NotOpened: the data home has none of a component;
        /// code OutOfRange; BadArgument: length of z</exception>
        public TransportValue Viscosity(double T, double rho, params double[] z) => Transport(0, T, rho, z);

        /// <summary>Thermal conductivity without critical enhancement, W/(m K); otherwise as
        /// <see cref="Viscosity"/>.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³; 0: the mixture of dilute gases</param>
        /// <param name="z">mole fractions</param>
        /// <returns>the value with its rules and range</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Viscosity"/></exception>
        public TransportValue ThermalConductivity(double T, double rho, params double[] z) =>
            Transport(1, T, rho, z);

        /// <summary>Diffusion of two components by Maxwell and Stefan, m²/s; otherwise as <see cref="Viscosity"/>.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³, not 0</param>
        /// <param name="z">mole fractions</param>
        /// <returns>the coefficient with its model and range</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Viscosity"/>; not two components</exception>
        public TransportValue Diffusion(double T, double rho, params double[] z) => Transport(3, T, rho, z);

        /// <summary>Fick's coefficient, m²/s: <see cref="Diffusion"/> times the thermodynamic factor.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³, not 0</param>
        /// <param name="z">mole fractions</param>
        /// <returns>the coefficient with its model and range</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Diffusion"/></exception>
        public TransportValue FickDiffusion(double T, double rho, params double[] z) => Transport(4, T, rho, z);

        /// <summary>Surface tension of a liquid beside a vapour by density-gradient theory, else by parachors, N/m.</summary>
        /// <param name="T">K</param>
        /// <param name="rhoLiquid">mol/cm³</param>
        /// <param name="x">mole fractions in the liquid</param>
        /// <param name="rhoVapour">mol/cm³</param>
        /// <param name="y">mole fractions in the vapour</param>
        /// <returns>the tension, N/m; zero where the phases are alike</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Viscosity"/></exception>
        /// <exception cref="ArgumentException">compositions of different lengths</exception>
        public double SurfaceTension(double T, double rhoLiquid, double[] x, double rhoVapour, double[] y)
        {
            if (Length(x) != Length(y)) throw new ArgumentException("compositions of different lengths", nameof(y));
            return Check(Corvane_mixture_tension(handle, T, rhoLiquid, x, rhoVapour, y, x.Length, new double[1],
                                                 out CorvaneError e), ref e);
        }

        /// <summary>The interface between a liquid and a vapour in equilibrium, by density-gradient theory.</summary>
        /// <param name="T">K</param>
        /// <param name="rhoLiquid">mol/cm³</param>
        /// <param name="x">mole fractions in the liquid</param>
        /// <param name="rhoVapour">mol/cm³</param>
        /// <param name="y">mole fractions in the vapour</param>
        /// <returns>the densities through it</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Viscosity"/>; NoSolution, GaveUp: no profile</exception>
        /// <exception cref="ArgumentException">compositions of different lengths</exception>
        public InterfaceProfile Interface(double T, double rhoLiquid, double[] x, double rhoVapour, double[] y)
        {
            if (Length(x) != Length(y)) throw new ArgumentException("compositions of different lengths", nameof(y));
            double[] summary = new double[3];
            const int most = 256;
            double[] values = new double[most * (x.Length + 2)];
            int points = Check(Corvane_mixture_interface(handle, T, rhoLiquid, x, rhoVapour, y, x.Length, values, most,
                                                         summary, out CorvaneError e), ref e);
            return new InterfaceProfile(values, Math.Min(points, most), x.Length, summary);
        }

        private TransportValue Transport(int property, double T, double rho, double[] z)
        {
            double[] evidence = new double[1];
            double value = Check(Corvane_mixture_transport(handle, property, T, rho, z, Length(z), evidence,
                                                           out CorvaneError e), ref e);
            string model = Utf8.Read(
                (buffer, size) => Check(
                    Corvane_mixture_transport_model(handle, property, T, rho, z, z.Length, buffer, size,
                                                    out CorvaneError f), ref f));
            return new TransportValue(value, evidence[0] == 1.0, double.NaN, model);
        }

        /// <summary>The stable state at pressure and temperature.</summary>
        /// <param name="p">MPa</param>
        /// <param name="T">K</param>
        /// <param name="z">mole fractions of the whole</param>
        /// <returns>its phases</returns>
        /// <exception cref="ThermodynamicException">GaveUp: no certified state; code OutOfRange;
        /// BadArgument: length of z</exception>
        public FlashResult FlashPT(double p, double T, params double[] z) =>
            Flash(Corvane_flash_pT(handle, p, T, z, Length(z), out CorvaneError e), ref e);

        /// <summary>The stable state at pressure and enthalpy.</summary>
        /// <param name="p">MPa</param>
        /// <param name="h">J/mol</param>
        /// <param name="z">mole fractions of the whole</param>
        /// <returns>its phases; T is found</returns>
        /// <exception cref="ThermodynamicException">NoSolution: h is not reached; GaveUp; codes
        /// NoIdealGas, OutOfRange; BadArgument: length of z</exception>
        public FlashResult FlashPH(double p, double h, params double[] z) =>
            Flash(Corvane_flash_ph(handle, p, h, z, Length(z), out CorvaneError e), ref e);

        /// <summary>The stable state at pressure and entropy.</summary>
        /// <param name="p">MPa</param>
        /// <param name="s">J/(mol K)</param>
        /// <param name="z">mole fractions of the whole</param>
        /// <returns>its phases; T is found</returns>
        /// <exception cref="ThermodynamicException">as <see cref="FlashPH"/></exception>
        public FlashResult FlashPS(double p, double s, params double[] z) =>
            Flash(Corvane_flash_ps(handle, p, s, z, Length(z), out CorvaneError e), ref e);

        /// <summary>The stable state at temperature and density of the whole.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³</param>
        /// <param name="z">mole fractions of the whole</param>
        /// <returns>its phases; p is found</returns>
        /// <exception cref="ThermodynamicException">NoSolution, GaveUp; code OutOfRange; BadArgument:
        /// length of z</exception>
        public FlashResult FlashTRho(double T, double rho, params double[] z) =>
            Flash(Corvane_flash_Trho(handle, T, rho, z, Length(z), out CorvaneError e), ref e);

        /// <summary>All stable states that have two given quantities.</summary>
        /// <param name="first">the first quantity; Q is the amount of the lightest phase</param>
        /// <param name="a">its value: K, MPa, mol/cm³, J/mol, J/(mol K), or a fraction</param>
        /// <param name="second">the second quantity</param>
        /// <param name="b">its value, likewise: K, MPa, mol/cm³, J/mol, J/(mol K), or a fraction</param>
        /// <param name="z">mole fractions of the whole</param>
        /// <returns>states by rising temperature (density where T is given): several at most for (T, H),
        /// (T, U), (P, Rho), (P, U) and (Rho, H)</returns>
        /// <exception cref="ThermodynamicException">NoSolution, GaveUp; codes OutOfRange: a value or a
        /// pair that is not offered, NoIdealGas; BadArgument: length of z</exception>
        public IReadOnlyList<FlashResult> States(Quantity first, double a, Quantity second, double b,
                                                 params double[] z) =>
            Result.Of(Corvane_mixture_states(handle, (int)first, a, (int)second, b, z, Length(z),
                                             out CorvaneError e), ref e, true)
                .Single(v => new FlashResult(v));

        /// <summary>Bubble point at a temperature.</summary>
        /// <param name="T">K</param>
        /// <param name="z">mole fractions of the liquid</param>
        /// <param name="branch">which, where there are several</param>
        /// <returns>pressure and incipient vapour</returns>
        /// <exception cref="ThermodynamicException">NoSolution: the search was complete and there is
        /// none; GaveUp; code OutOfRange; BadArgument: length of z</exception>
        public SaturationPoint BubbleT(double T, double[] z, Branch branch = Branch.Any) =>
            Saturation(Corvane_bubble_T(handle, T, z, Length(z), (int)branch, out CorvaneError e),
                       ref e);

        /// <summary>Bubble point at a pressure.</summary>
        /// <param name="p">MPa</param>
        /// <param name="z">mole fractions of the liquid</param>
        /// <param name="branch">which, where there are several</param>
        /// <returns>temperature and incipient vapour</returns>
        /// <exception cref="ThermodynamicException">as <see cref="BubbleT"/></exception>
        public SaturationPoint BubbleP(double p, double[] z, Branch branch = Branch.Any) =>
            Saturation(Corvane_bubble_p(handle, p, z, Length(z), (int)branch, out CorvaneError e),
                       ref e);

        /// <summary>Dew point at a temperature.</summary>
        /// <param name="T">K</param>
        /// <param name="z">mole fractions of the vapour</param>
        /// <param name="branch">which, where there are several</param>
        /// <returns>pressure and incipient liquid</returns>
        /// <exception cref="ThermodynamicException">as <see cref="BubbleT"/></exception>
        public SaturationPoint DewT(double T, double[] z, Branch branch = Branch.Any) =>
            Saturation(Corvane_dew_T(handle, T, z, Length(z), (int)branch, out CorvaneError e),
                       ref e);

        /// <summary>Dew point at a pressure.</summary>
        /// <param name="p">MPa</param>
        /// <param name="z">mole fractions of the vapour</param>
        /// <param name="branch">which, where there are several</param>
        /// <returns>temperature and incipient liquid</returns>
        /// <exception cref="ThermodynamicException">as <see cref="BubbleT"/></exception>
        public SaturationPoint DewP(double p, double[] z, Branch branch = Branch.Any) =>
            Saturation(Corvane_dew_p(handle, p, z, Length(z), (int)branch, out CorvaneError e),
                       ref e);

        /// <summary>The phase envelope, from a dew point on.</summary>
        /// <param name="z">mole fractions</param>
        /// <param name="pStart">pressure of the first dew point, MPa; 0: 0.05</param>
        /// <param name="pMax">MPa; 0: 1000</param>
        /// <param name="all">the curves of other liquids, too, every point with a test of its stability
        /// </param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>curves and their special points</returns>
        /// <exception cref="ThermodynamicException">GaveUp: no dew point to begin with, or a pure
        /// fluid; code OutOfRange; BadArgument: length of z</exception>
        public Envelope Envelope(double[] z, double pStart = 0, double pMax = 0, bool all = false,
                                 Func<int, bool> progress = null) =>
            Traced(progress, (ProgressCallback f, out CorvaneError e) => Corvane_envelope(
                handle, z, Length(z), pStart, pMax, all ? 1 : 0, f, IntPtr.Zero, out e))
                .Curves((curves, complete) => new Envelope(curves, complete));

        /// <summary>The critical point of a composition.</summary>
        /// <param name="z">mole fractions</param>
        /// <returns>a stable critical point</returns>
        /// <exception cref="ThermodynamicException">NoSolution; code OutOfRange; BadArgument: length of
        /// z</exception>
        public CriticalPoint CriticalPoint(params double[] z) =>
            Result.Of(Corvane_critical_point(handle, z, Length(z), out CorvaneError e), ref e)
                .Single(v => new CriticalPoint(v)).First();

        /// <summary>All critical points of a composition that a search finds.</summary>
        /// <param name="z">mole fractions</param>
        /// <returns>by rising density, stable or not</returns>
        /// <exception cref="ThermodynamicException">code OutOfRange; BadArgument: length of z
        /// </exception>
        public IReadOnlyList<CriticalPoint> CriticalPoints(params double[] z) =>
            Result.Of(Corvane_critical_points(handle, z, Length(z), out CorvaneError e), ref e)
                .Single(v => new CriticalPoint(v));

        /// <summary>Complete p-x-y diagram of a binary.</summary>
        /// <param name="T">K</param>
        /// <param name="pMax">MPa; 0: 1000</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>branches, azeotropes, three-phase states</returns>
        /// <exception cref="ThermodynamicException">codes NoOption: not a binary, OutOfRange
        /// </exception>
        public Diagram DiagramPxy(double T, double pMax = 0, Func<int, bool> progress = null) =>
            Traced(progress, (ProgressCallback f, out CorvaneError e) => Corvane_diagram_pxy(
                handle, T, pMax, f, IntPtr.Zero, out e))
                .Curves((curves, complete) => new Diagram(curves, complete));

        /// <summary>Complete T-x-y diagram of a binary.</summary>
        /// <param name="p">MPa</param>
        /// <param name="TMin">K; 0: 0.3 of the lower critical temperature</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>branches, azeotropes, three-phase states</returns>
        /// <exception cref="ThermodynamicException">codes NoOption: not a binary, OutOfRange
        /// </exception>
        public Diagram DiagramTxy(double p, double TMin = 0, Func<int, bool> progress = null) =>
            Traced(progress, (ProgressCallback f, out CorvaneError e) => Corvane_diagram_Txy(
                handle, p, TMin, f, IntPtr.Zero, out e))
                .Curves((curves, complete) => new Diagram(curves, complete));

        /// <summary>Everything that three components do at a pressure and a temperature.</summary>
        /// <param name="p">MPa</param>
        /// <param name="T">K</param>
        /// <param name="step">longest step in the compositions of both phases, a mole fraction; 0: 0.05
        /// </param>
        /// <param name="mesh">parts of an edge in the search, 2 to 100; 0: 10</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>regions, plait points, triangles</returns>
        /// <exception cref="ThermodynamicException">codes NoOption: not three components, OutOfRange
        /// </exception>
        public TernaryDiagram Ternary(double p, double T, double step = 0, int mesh = 0,
                                      Func<int, bool> progress = null) =>
            Traced(progress, (ProgressCallback f, out CorvaneError e) => Corvane_ternary(
                handle, p, T, step, mesh, f, IntPtr.Zero, out e))
                .Curves((curves, complete) => new TernaryDiagram(curves, complete));

        /// <summary>Property diagram of a composition: phase envelope and isolines of stable states.
        /// </summary>
        /// <param name="z">mole fractions</param>
        /// <param name="what">for each isoline what it keeps: T, P, Rho or S</param>
        /// <param name="values">for each isoline its value: K, MPa, mol/cm³ or J/(mol K)</param>
        /// <param name="points">states of a line, about; 0: 120</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>bubble points, dew points, isolines</returns>
        /// <exception cref="ThermodynamicException">code OutOfRange; BadArgument: length of z, another
        /// quantity</exception>
        public PropertyDiagram PropertyDiagram(double[] z, Quantity[] what, double[] values,
                                               int points = 0, Func<int, bool> progress = null) =>
            Traced(progress, (ProgressCallback f, out CorvaneError e) => Corvane_property_diagram(
                handle, z, Length(z), Tracing.Codes(what, values), values, values.Length, points, f,
                IntPtr.Zero, out e))
                .PropertyDiagram();

        /// <summary>Critical lines of a binary. At a critical end point the coexisting phase is the
        /// second one of the last (or first) point.</summary>
        /// <param name="pMax">MPa; 0: 1000</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>lines of critical points</returns>
        /// <exception cref="ThermodynamicException">GaveUp; codes NoOption: not a binary, OutOfRange
        /// </exception>
        public CurveSet CriticalLines(double pMax = 0, Func<int, bool> progress = null) =>
            Lines(progress, (ProgressCallback f, out CorvaneError e) => Corvane_critical_lines(
                handle, pMax, f, IntPtr.Zero, out e));

        /// <summary>Lines of three fluid phases of a binary.</summary>
        /// <param name="pMax">MPa; 0: 1000</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>lines; none where none was found</returns>
        /// <exception cref="ThermodynamicException">codes NoOption: not a binary, OutOfRange
        /// </exception>
        public CurveSet ThreePhaseLines(double pMax = 0, Func<int, bool> progress = null) =>
            Lines(progress, (ProgressCallback f, out CorvaneError e) => Corvane_three_phase_lines(
                handle, pMax, f, IntPtr.Zero, out e));

        /// <summary>Azeotropic lines of a binary.</summary>
        /// <param name="pMax">MPa; 0: 1000</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>lines; none where none was found</returns>
        /// <exception cref="ThermodynamicException">codes NoOption: not a binary, OutOfRange
        /// </exception>
        public CurveSet AzeotropicLines(double pMax = 0, Func<int, bool> progress = null) =>
            Lines(progress, (ProgressCallback f, out CorvaneError e) => Corvane_azeotropic_lines(
                handle, pMax, f, IntPtr.Zero, out e));

        /// <summary>The fluid of a binary that is saturated with a pure solid.</summary>
        /// <param name="solid">component that is solid, 0 or 1</param>
        /// <param name="p">MPa</param>
        /// <param name="T">K</param>
        /// <returns>the fluid, then the solid</returns>
        /// <exception cref="ThermodynamicException">NoSolution; codes NoSolid: no data, NoOption: not a
        /// binary, OutOfRange</exception>
        public EquilibriumPoint Solubility(int solid, double p, double T) =>
            Result.Of(Corvane_solubility(handle, solid, p, T, out CorvaneError e), ref e)
                .Single(v => new EquilibriumPoint(v)).First();

        /// <summary>The eutectic of a binary.</summary>
        /// <param name="p">MPa</param>
        /// <returns>the fluid, then both solids</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Solubility"/></exception>
        public EquilibriumPoint Eutectic(double p) =>
            Result.Of(Corvane_eutectic(handle, p, out CorvaneError e), ref e)
                .Single(v => new EquilibriumPoint(v)).First();

        /// <summary>Lines of solubility at constant pressure.</summary>
        /// <param name="solid">component that is solid, 0 or 1</param>
        /// <param name="p">MPa</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>lines from the melting point on: the fluid, then the solid</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Solubility"/></exception>
        public CurveSet SolidFluidIsobar(int solid, double p, Func<int, bool> progress = null) =>
            Lines(progress, (ProgressCallback f, out CorvaneError e) => Corvane_solid_fluid_isobar(
                handle, solid, p, f, IntPtr.Zero, out e));

        /// <summary>Lines of solubility at constant temperature.</summary>
        /// <param name="solid">component that is solid, 0 or 1</param>
        /// <param name="T">K</param>
        /// <param name="pMax">MPa; 0: 1000</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>lines: the fluid, then the solid</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Solubility"/></exception>
        public CurveSet SolidFluidIsotherm(int solid, double T, double pMax = 0,
                                           Func<int, bool> progress = null) =>
            Lines(progress, (ProgressCallback f, out CorvaneError e) =>
                Corvane_solid_fluid_isotherm(handle, solid, T, pMax, f, IntPtr.Zero, out e));

        /// <inheritdoc/>
        public override void Dispose()
        {
            Model.Dispose();
            base.Dispose();
        }

        private static CurveSet Lines(Func<int, bool> progress, Trace trace) =>
            Traced(progress, trace).Curves((curves, complete) => new CurveSet(curves, complete));

        private static FlashResult Flash(ResultHandle result, ref CorvaneError error) =>
            Result.Of(result, ref error).Single(v => new FlashResult(v)).First();

        private static SaturationPoint Saturation(ResultHandle result, ref CorvaneError error) =>
            Result.Of(result, ref error).Single(v => new SaturationPoint(v)).First();

        private static int Length(double[] z)
        {
            NotNull(z, nameof(z));
            return z.Length;
        }

        private string Text(int what, int i) => Utf8.Read(
            (buffer, size) => Check(
                Corvane_Mixture_text(handle, what, i, buffer, size, out CorvaneError e), ref e));

        private double Number(int what, int i) =>
            Check(Corvane_Mixture_number(handle, what, i, out CorvaneError e), ref e);
    }
}
