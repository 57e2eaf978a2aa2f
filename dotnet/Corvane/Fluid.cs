// A pure substance opened by name.
using System;
using System.Collections.Generic;
using System.Linq;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;
using static Corvane.Interop.Tracing;

namespace Corvane
{
    /// <summary>What a state of a pure fluid can be asked by.</summary>
    public enum Quantity
    {
        /// <summary>Temperature, K.</summary>
        T,
        /// <summary>Pressure, MPa.</summary>
        P,
        /// <summary>Density of the whole, mol/cm³.</summary>
        Rho,
        /// <summary>Enthalpy, J/mol.</summary>
        H,
        /// <summary>Entropy, J/(mol K).</summary>
        S,
        /// <summary>Internal energy, J/mol.</summary>
        U,
        /// <summary>Amount of vapour over the whole, 0 to 1.</summary>
        Q
    }

    /// <summary>A transport property with what it comes from.</summary>
    public sealed class TransportValue
    {
        internal TransportValue(double value, bool inRange, double secondSource, string model)
        {
            Value = value;
            InRange = inRange;
            SecondSource = secondSource;
            Model = model;
        }

        /// <summary>Pa s, W/(m K) or N/m.</summary>
        public double Value { get; }
        /// <summary>Does the temperature lie within what the source states?</summary>
        public bool InRange { get; }
        /// <summary>Relative deviation of a second source; not-a-number without one.</summary>
        public double SecondSource { get; }
        /// <summary>The model and its publication.</summary>
        public string Model { get; }
    }

    /// <summary>
    /// A pure substance opened by name, from any directory: stable states by two quantities, saturation.
    /// Several threads may use one object. Units: K, MPa, mol/cm³, J/mol, J/(mol K).
    /// </summary>
    /// <example><code>
    /// using (Fluid water = Fluid.Open("water"))
    ///     double w = water.State(Quantity.P, 25, Quantity.T, 650).Phases[0].SpeedOfSound;
    /// </code></example>
    public sealed class Fluid : NativeObject
    {
        private readonly FluidHandle handle;

        private Fluid(FluidHandle handle) : base(handle)
        {
            this.handle = handle;
            Model = new Model1(new Model1Handle(Corvane_Fluid_model(handle), handle));
        }

        /// <summary>Opens a substance with the best equation that it has: MEOS, else PCSAFT, else PR,
        /// else SRK.</summary>
        /// <param name="substance">name in the data tree, synonym, CAS number or sum formula</param>
        /// <returns>the fluid; dispose it</returns>
        /// <exception cref="ThermodynamicException"><see cref="FailureKind.NotOpened"/></exception>
        public static Fluid Open(string substance) => Open(null, substance);

        /// <summary>Opens a substance with an equation.</summary>
        /// <param name="equation">name of a plug-in, "MEOS", "PR"; null: the best that there is</param>
        /// <param name="substance">name in the data tree, synonym, CAS number or sum formula</param>
        /// <param name="set">number of the parameter set; 0: the first</param>
        /// <param name="home">directory that holds CorvaneS; null: CORVANE_DATA, else beside the
        /// assembly, else beside the native library</param>
        /// <returns>the fluid; dispose it</returns>
        /// <exception cref="ThermodynamicException"><see cref="FailureKind.NotOpened"/>: the message
        /// says what there is instead, or which file and line is at fault</exception>
        public static Fluid Open(string equation, string substance, int set = 0, string home = null)
        {
            NotNull(substance, nameof(substance));
            return new Fluid(Check(
                Corvane_open(Utf8.Encode(equation), Utf8.Encode(substance), set, Utf8.Encode(home ?? DataHome.Packaged),
                             out CorvaneError e), ref e));
        }

        /// <summary>Name of the equation.</summary>
        public string Equation => Text(0);

        /// <summary>Name in the data tree.</summary>
        public string Substance => Text(1);

        /// <summary>Where the parameters come from; "" if that is not known.</summary>
        public string Source => Text(2);

        /// <summary>Data home that it was read from.</summary>
        public string Home => Text(3);

        /// <summary>Molar mass, g/mol.</summary>
        public double MolarMass => Number(0);

        /// <summary>Critical temperature stored with the parameters, K.</summary>
        public double CriticalT => Number(1);

        /// <summary>Critical pressure stored with the parameters, MPa.</summary>
        public double CriticalP => Number(2);

        /// <summary>Critical density stored with the parameters, mol/cm³.</summary>
        public double CriticalRho => Number(3);

        /// <summary>Number of the parameter set.</summary>
        public int Set => (int)Number(4);

        /// <summary>Lowest published temperature, K; not-a-number if it is not stated.</summary>
        public double MinT => Number(5);

        /// <summary>Highest published temperature, K; not-a-number if it is not stated.</summary>
        public double MaxT => Number(6);

        /// <summary>Highest published pressure, MPa; not-a-number if it is not stated.</summary>
        public double MaxP => Number(7);

        /// <summary>Is there an ideal-gas table, so that h, s, u, cp and w are known?</summary>
        public bool HasIdeal => Number(8) != 0;

        /// <summary>The model, lent: it goes with this object.</summary>
        public Model1 Model { get; }

        /// <summary>All stable states that have two given quantities.</summary>
        /// <param name="first">the first quantity</param>
        /// <param name="a">its value: K, MPa, mol/cm³, J/mol, J/(mol K), or a fraction</param>
        /// <param name="second">the second quantity</param>
        /// <param name="b">its value, likewise: K, MPa, mol/cm³, J/mol, J/(mol K), or a fraction</param>
        /// <returns>states by rising temperature; several where the quantities leave a choice, none
        /// where none was found</returns>
        /// <exception cref="ThermodynamicException">code OutOfRange: a value out of range or a pair
        /// that is not offered; NoIdealGas; NoSolution, GaveUp from saturation</exception>
        public IReadOnlyList<State> States(Quantity first, double a, Quantity second, double b) =>
            Result.Of(Corvane_pure_states(handle, (int)first, a, (int)second, b,
                                          out CorvaneError e), ref e, true)
                .Single(v => new State(v));

        /// <summary>The stable state that has two given quantities.</summary>
        /// <param name="first">the first quantity</param>
        /// <param name="a">its value: K, MPa, mol/cm³, J/mol, J/(mol K), or a fraction</param>
        /// <param name="second">the second quantity</param>
        /// <param name="b">its value, likewise: K, MPa, mol/cm³, J/mol, J/(mol K), or a fraction</param>
        /// <returns>the state</returns>
        /// <exception cref="ThermodynamicException">as <see cref="States"/>; GaveUp: none was found, or
        /// several have these values</exception>
        public State State(Quantity first, double a, Quantity second, double b)
        {
            IReadOnlyList<State> all = States(first, a, second, b);
            if (all.Count == 1) return all[0];
            throw new ThermodynamicException(
                FailureKind.GaveUp, 0, -1,
                $"{Equation} {Substance}: {(all.Count == 0 ? "no state" : all.Count + " states")} "
                + $"with the given {first} and {second}");
        }

        /// <summary>Properties of one phase at temperature and density, stable or not.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³</param>
        /// <returns>the phase with its pressure</returns>
        /// <exception cref="ThermodynamicException">code OutOfRange</exception>
        public EquilibriumPoint Phase(double T, double rho) =>
            Result.Of(Corvane_pure_phase(handle, T, rho, out CorvaneError e), ref e, true)
                .Single(v => new EquilibriumPoint(v)).First();

        /// <summary>Saturation at a temperature; phases: liquid, vapour.</summary>
        /// <param name="T">K</param>
        /// <returns>the state, with bounds of its errors in the certificate</returns>
        /// <exception cref="ThermodynamicException">NoSolution: at or above the critical point;
        /// GaveUp; code OutOfRange</exception>
        public SaturationPoint SaturationAtT(double T) =>
            Result.Of(Corvane_pure_saturation_T(handle, T, out CorvaneError e), ref e)
                .Single(v => new SaturationPoint(v)).First();

        /// <summary>Saturation at a pressure; otherwise as <see cref="SaturationAtT"/>.</summary>
        /// <param name="p">MPa</param>
        /// <returns>the state</returns>
        /// <exception cref="ThermodynamicException">as <see cref="SaturationAtT"/></exception>
        public SaturationPoint SaturationAtP(double p) =>
            Result.Of(Corvane_pure_saturation_p(handle, p, out CorvaneError e), ref e)
                .Single(v => new SaturationPoint(v)).First();

        /// <summary>Property diagram: saturation and isolines of stable states.</summary>
        /// <param name="what">for each isoline what it keeps: T, P, Rho, S or Q</param>
        /// <param name="values">for each isoline its value: K, MPa, mol/cm³, J/(mol K) or a fraction
        /// </param>
        /// <param name="points">states of a line, about; 0: 120</param>
        /// <param name="progress">called after every point; false ends the trace</param>
        /// <returns>bubble points, dew points, isolines</returns>
        /// <exception cref="ThermodynamicException">code OutOfRange; BadArgument: another quantity
        /// </exception>
        public PropertyDiagram PropertyDiagram(Quantity[] what, double[] values, int points = 0,
                                               Func<int, bool> progress = null) =>
            Traced(progress, (ProgressCallback f, out CorvaneError e) => Corvane_pure_property_diagram(
                handle, Tracing.Codes(what, values), values, values.Length, points, f, IntPtr.Zero,
                out e))
                .PropertyDiagram();

        /// <summary>Viscosity by the best model that there is for the substance, Pa s.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³; 0: the dilute gas</param>
        /// <returns>the value with its model and range</returns>
        /// <exception cref="ThermodynamicException">NotOpened: the data home has no model of it; code
        /// OutOfRange</exception>
        public TransportValue Viscosity(double T, double rho) => Transport(0, T, rho);

        /// <summary>Thermal conductivity, W/(m K); otherwise as <see cref="Viscosity"/>.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³; 0: the dilute gas</param>
        /// <returns>the value with its model and range</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Viscosity"/></exception>
        public TransportValue ThermalConductivity(double T, double rho) => Transport(1, T, rho);

        /// <summary>Coefficient of self-diffusion, m²/s; otherwise as <see cref="Viscosity"/>.</summary>
        /// <param name="T">K</param>
        /// <param name="rho">mol/cm³, not 0</param>
        /// <returns>the value with its model and range</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Viscosity"/></exception>
        public TransportValue Diffusion(double T, double rho) => Transport(3, T, rho);

        /// <summary>Surface tension of liquid and vapour, N/m.</summary>
        /// <param name="T">K</param>
        /// <returns>the value with its model and range; zero from the critical temperature on</returns>
        /// <exception cref="ThermodynamicException">as <see cref="Viscosity"/></exception>
        public TransportValue SurfaceTension(double T) => Transport(2, T, 0.0);

        private TransportValue Transport(int property, double T, double rho)
        {
            double[] evidence = new double[2];
            double value = Check(
                Corvane_transport(handle, property, T, rho, evidence, out CorvaneError e), ref e);
            string model = Utf8.Read(
                (buffer, size) => Check(
                    Corvane_transport_model(handle, property, T, rho, buffer, size, out CorvaneError f), ref f));
            return new TransportValue(value, evidence[0] == 1.0, evidence[1], model);
        }

        /// <inheritdoc/>
        public override void Dispose()
        {
            Model.Dispose();
            base.Dispose();
        }

        private string Text(int what) => Utf8.Read(
            (buffer, size) => Check(
                Corvane_Fluid_text(handle, what, buffer, size, out CorvaneError e), ref e));

        private double Number(int what) =>
            Check(Corvane_Fluid_number(handle, what, out CorvaneError e), ref e);
    }
}
