// Solid phases.
using System;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>
    /// The solid phases of a substance. Energies are divided by R·T, entropies by R; p in MPa, T in K.
    /// Properties throw code 6 without data, 5 above their range, 9 where the model has no vapour, and
    /// those with suffix m code 3 without an ideal-gas table.
    /// </summary>
    public sealed class Solid : SubstancePart
    {
        internal readonly SolidHandle Handle;

        internal Solid(SolidHandle handle, Model1 owner) : base(handle, owner)
        {
            Handle = handle;
        }

        /// <summary>Without data and without a model.</summary>
        public Solid() : this(CSharp_new_Solid(), null) { }

        internal override void SetModel(Model1Handle model) =>
            CSharp_Solid_model__SWIG_1(Handle, model);

        /// <summary>Reads CorvaneS/solid/&lt;name&gt;. Code 1: no file, no model, a malformed file.
        /// </summary>
        public void Load()
        {
            Corvane_Solid_load(Handle, out CorvaneError e);
            e.Raise();
        }

        /// <summary>First tabulated temperature of the first phase, K; 0 without phases.</summary>
        public double Ttrp => CSharp_Solid_Ttrp(Handle);

        /// <summary>Name of phase i; null if there is none.</summary>
        /// <param name="i">Number of the phase, from 0.</param>
        /// <returns>The name.</returns>
        public string PhaseName(int i) => Callbacks.Text(CSharp_Solid_id(Handle, i));

        /// <summary>Sublimation state at T [K] of phase i, or of the stable one for −1: pressure [MPa],
        /// molar volume [cm³/mol], compressibility [1/MPa]. Returns the phase, −1 without one.
        /// </summary>
        /// <param name="T">Temperature, K.</param>
        /// <param name="i">Number of the phase, from 0; −1: the stable one.</param>
        /// <param name="psub">Receives the pressure, MPa.</param>
        /// <param name="v">Receives the molar volume, cm³/mol.</param>
        /// <param name="kappa">Receives the compressibility, MPa⁻¹.</param>
        /// <returns>Number of the phase; −1 without one.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public int Sublimation(double T, int i, ref double psub, ref double v, ref double kappa) =>
            Check(Corvane_Solid_sge(
                Handle, T, i, ref psub, ref v, ref kappa, out CorvaneError e), ref e);

        /// <summary>Forgets the phases.</summary>
        public void Reset() => CSharp_Solid_reset(Handle);

        /// <summary>Prints the range to the C library's standard output.</summary>
        public void Info() => CSharp_Solid_info(Handle);

        /// <summary>H/(RT) without the ideal-gas part.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>H/(RT) without the ideal-gas part, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double He(double p, double T) =>
            Check(Corvane_Solid_He(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>H/(RT).</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>H/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Hm(double p, double T) =>
            Check(Corvane_Solid_Hm(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>S/R without the ideal-gas part.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>S/R without the ideal-gas part, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Se(double p, double T) =>
            Check(Corvane_Solid_Se(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>S/R.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>S/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Sm(double p, double T) =>
            Check(Corvane_Solid_Sm(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>U/(RT) without the ideal-gas part.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>U/(RT) without the ideal-gas part, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Ue(double p, double T) =>
            Check(Corvane_Solid_Ue(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>U/(RT).</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>U/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Um(double p, double T) =>
            Check(Corvane_Solid_Um(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>Molar volume [cm³/mol].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Molar volume [cm³/mol].</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Vm(double p, double T) =>
            Check(Corvane_Solid_Vm(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>Mass density [g/cm³].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Mass density, unit g/cm³.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double MassDensity(double p, double T) =>
            Check(Corvane_Solid_d(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>A/(RT) without the ideal-gas part.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>A/(RT) without the ideal-gas part, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Ae(double p, double T) =>
            Check(Corvane_Solid_Ae__SWIG_0(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>The same; i receives the phase, rho its density [mol/cm³].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="i">Receives the number of the stable phase, from 0.</param>
        /// <param name="rho">Receives its density, mol/cm³.</param>
        /// <returns>A/(RT) without the ideal-gas part, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Ae(double p, double T, ref int i, ref double rho) =>
            Check(Corvane_Solid_Ae__SWIG_1(
                Handle, p, T, ref i, ref rho, out CorvaneError e), ref e);

        /// <summary>A/(RT).</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>A/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Am(double p, double T) =>
            Check(Corvane_Solid_Am__SWIG_0(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>The same; i receives the phase, rho its density [mol/cm³].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="i">Receives the number of the stable phase, from 0.</param>
        /// <param name="rho">Receives its density, mol/cm³.</param>
        /// <returns>A/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Am(double p, double T, ref int i, ref double rho) =>
            Check(Corvane_Solid_Am__SWIG_1(
                Handle, p, T, ref i, ref rho, out CorvaneError e), ref e);

        /// <summary>G/(RT).</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>G/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Gm(double p, double T) =>
            Check(Corvane_Solid_Gm__SWIG_0(Handle, p, T, out CorvaneError e), ref e);

        /// <summary>The same; i receives the phase, rho its density [mol/cm³].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="i">Receives the number of the stable phase, from 0.</param>
        /// <param name="rho">Receives its density, mol/cm³.</param>
        /// <returns>G/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Gm(double p, double T, ref int i, ref double rho) =>
            Check(Corvane_Solid_Gm__SWIG_1(
                Handle, p, T, ref i, ref rho, out CorvaneError e), ref e);

        /// <summary>G/(RT) without the ideal-gas part; i receives the phase, rho its density
        /// [mol/cm³].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="i">Receives the number of the stable phase, from 0.</param>
        /// <param name="rho">Receives its density, mol/cm³.</param>
        /// <returns>G/(RT) without the ideal-gas part, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 6: no solid data.</exception>
        public double Ge(double p, double T, ref int i, ref double rho) =>
            Check(Corvane_Solid_Ge(Handle, p, T, ref i, ref rho, out CorvaneError e), ref e);
    }
}
