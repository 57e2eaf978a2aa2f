// What certified calculations return: points of phases, with their certificates.
using System;
using System.Collections.Generic;
using System.Linq;

namespace Corvane
{
    /// <summary>A phase of a result. What a calculation does not compute is not-a-number.</summary>
    public sealed class EquilibriumPhase
    {
        internal EquilibriumPhase(double[] values, double[] x)
        {
            Rho = values[2];
            H = values[3];
            S = values[4];
            U = values[5];
            Fraction = values[7];
            G = values[8];
            A = values[9];
            Z = values[10];
            Cv = values[11];
            Cp = values[12];
            SpeedOfSound = values[13];
            JouleThomson = values[14];
            KappaT = values[15];
            AlphaP = values[16];
            DpDT = values[17];
            DpDrho = values[18];
            MolarMass = values[19];
            X = x;
        }

        /// <summary>Density, mol/cm³.</summary>
        public double Rho { get; }
        /// <summary>Mole fractions of all components.</summary>
        public IReadOnlyList<double> X { get; }
        /// <summary>Amount of the phase over the whole: flashes, states of pure fluids.</summary>
        public double Fraction { get; }
        /// <summary>Enthalpy, J/mol: this and what follows of states and single phases.</summary>
        public double H { get; }
        /// <summary>Entropy, J/(mol K).</summary>
        public double S { get; }
        /// <summary>Internal energy, J/mol.</summary>
        public double U { get; }
        /// <summary>Gibbs energy, J/mol.</summary>
        public double G { get; }
        /// <summary>Helmholtz energy, J/mol.</summary>
        public double A { get; }
        /// <summary>Compressibility factor.</summary>
        public double Z { get; }
        /// <summary>Isochoric heat capacity, J/(mol K).</summary>
        public double Cv { get; }
        /// <summary>Isobaric heat capacity, J/(mol K).</summary>
        public double Cp { get; }
        /// <summary>Speed of sound, m/s.</summary>
        public double SpeedOfSound { get; }
        /// <summary>Joule–Thomson coefficient, K/MPa.</summary>
        public double JouleThomson { get; }
        /// <summary>Isothermal compressibility, 1/MPa.</summary>
        public double KappaT { get; }
        /// <summary>Isobaric expansivity, 1/K.</summary>
        public double AlphaP { get; }
        /// <summary>∂p/∂T at constant density, MPa/K.</summary>
        public double DpDT { get; }
        /// <summary>∂p/∂rho at constant temperature, MPa cm³/mol.</summary>
        public double DpDrho { get; }
        /// <summary>Molar mass, g/mol.</summary>
        public double MolarMass { get; }
    }

    /// <summary>Evidence for a result; not-a-number where a calculation does not give it.</summary>
    public sealed class Certificate
    {
        internal Certificate(double[] values, int flags, string text)
        {
            Dmu = values[20];
            Dp = values[21];
            Target = values[22];
            Balance = values[23];
            TangentPlaneDistance = values[24];
            ValueError = values[25];
            XError = values[26];
            RhoError = values[27];
            ApartError = values[28];
            Conditions = values[29];
            Evaluations = double.IsNaN(values[30]) ? 0 : (long)values[30];
            NearTrivial = (flags & 1) != 0;
            EstimatedPairs = (flags & 2) != 0;
            Extrapolated = (flags & 4) != 0;
            BelowTriple = (flags & 8) != 0;
            this.text = text;
        }

        private readonly string text;

        /// <summary>Largest difference of the chemical potentials between the phases, over RT.</summary>
        public double Dmu { get; }
        /// <summary>Largest relative difference of the pressures.</summary>
        public double Dp { get; }
        /// <summary>Distance to the h, s or density that was asked for, over RT, R, or relative.
        /// </summary>
        public double Target { get; }
        /// <summary>Largest error of the balance of a component.</summary>
        public double Balance { get; }
        /// <summary>Smallest tangent-plane distance that was found, over RT.</summary>
        public double TangentPlaneDistance { get; }
        /// <summary>Bound of the relative error of p (T given) or T (p given).</summary>
        public double ValueError { get; }
        /// <summary>Bound of the error of all mole fractions.</summary>
        public double XError { get; }
        /// <summary>Bound of the relative error of all densities.</summary>
        public double RhoError { get; }
        /// <summary>Bound of the error of the distance between the phases, relative to it.</summary>
        public double ApartError { get; }
        /// <summary>Largest residual of the critical conditions.</summary>
        public double Conditions { get; }
        /// <summary>Evaluations of the model.</summary>
        public long Evaluations { get; }
        /// <summary>The phases are nearly alike, as near a critical point.</summary>
        public bool NearTrivial { get; }
        /// <summary>A pair has no published parameters.</summary>
        public bool EstimatedPairs { get; }
        /// <summary>Outside the published range of the parameters.</summary>
        public bool Extrapolated { get; }
        /// <summary>Below the triple temperature of a component, which may freeze.</summary>
        public bool BelowTriple { get; }

        /// <summary>The certificate in one line; "" where there is none.</summary>
        /// <returns>the line</returns>
        public override string ToString() => text;
    }

    /// <summary>What a point of a result was read from.</summary>
    internal sealed class PointValues
    {
        internal double[] Whole;
        internal EquilibriumPhase[] Phases;
        internal int Flags;
        internal string Text;
    }

    /// <summary>A state of one or more phases.</summary>
    public class EquilibriumPoint
    {
        internal EquilibriumPoint(PointValues v)
        {
            T = v.Whole[0];
            P = v.Whole[1];
            Phases = v.Phases;
            Certificate = new Certificate(v.Whole, v.Flags, v.Text);
            Unstable = (v.Flags & 16) != 0;
        }

        /// <summary>Temperature, K.</summary>
        public double T { get; }
        /// <summary>Pressure, MPa.</summary>
        public double P { get; }
        /// <summary>The phases; their order stands with the method.</summary>
        public IReadOnlyList<EquilibriumPhase> Phases { get; }
        /// <summary>Evidence.</summary>
        public Certificate Certificate { get; }
        /// <summary>A further phase is more stable: a part of a curve, a critical point of a list.
        /// </summary>
        public bool Unstable { get; }
    }

    /// <summary>A stable state of a pure fluid: one phase, or liquid and vapour.</summary>
    public sealed class State : EquilibriumPoint
    {
        internal State(PointValues v) : base(v)
        {
            Rho = v.Whole[2];
            H = v.Whole[3];
            S = v.Whole[4];
            U = v.Whole[5];
            Q = v.Whole[6];
        }

        /// <summary>Density of the whole, mol/cm³.</summary>
        public double Rho { get; }
        /// <summary>Enthalpy of the whole, J/mol; not-a-number without an ideal-gas table.</summary>
        public double H { get; }
        /// <summary>Entropy of the whole, J/(mol K); not-a-number without an ideal-gas table.</summary>
        public double S { get; }
        /// <summary>Internal energy of the whole, J/mol; not-a-number without a table.</summary>
        public double U { get; }
        /// <summary>Amount of vapour over the whole; not-a-number in one phase.</summary>
        public double Q { get; }
    }

    /// <summary>How a mixture splits: phases by falling mass density.</summary>
    public sealed class FlashResult : EquilibriumPoint
    {
        internal FlashResult(PointValues v) : base(v)
        {
            Rho = v.Whole[2];
            H = v.Whole[3];
            S = v.Whole[4];
        }

        /// <summary>Density of the whole, mol/cm³.</summary>
        public double Rho { get; }
        /// <summary>Enthalpy of the whole, J/mol; not-a-number without ideal-gas tables.</summary>
        public double H { get; }
        /// <summary>Entropy of the whole, J/(mol K); not-a-number without ideal-gas tables.</summary>
        public double S { get; }
    }

    /// <summary>A bubble or dew point, or saturation of a pure fluid (liquid, vapour).</summary>
    public sealed class SaturationPoint : EquilibriumPoint
    {
        internal SaturationPoint(PointValues v) : base(v) { }

        /// <summary>The phase of the given composition; the liquid of a pure fluid.</summary>
        public EquilibriumPhase Given => Phases[0];
        /// <summary>The incipient phase; the vapour of a pure fluid.</summary>
        public EquilibriumPhase Incipient => Phases[1];
        /// <summary>The liquids (two, or as many as components) into which the given composition is split
        /// where the first vapour appears, the densest first; empty where it is one phase.</summary>
        public IReadOnlyList<EquilibriumPhase> Split => Phases.Skip(2).ToArray();
    }

    /// <summary>A critical point.</summary>
    public sealed class CriticalPoint : EquilibriumPoint
    {
        internal CriticalPoint(PointValues v) : base(v) { }

        /// <summary>Density, mol/cm³.</summary>
        public double Rho => Phases[0].Rho;
        /// <summary>Mole fractions.</summary>
        public IReadOnlyList<double> X => Phases[0].X;
    }
}
