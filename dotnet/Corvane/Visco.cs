// Viscosity.
using System;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>Level of friction theory.</summary>
    public enum FrictionLevel
    {
        /// <summary>None set.</summary>
        None = 0,

        /// <summary>Twelve coefficients.</summary>
        One = 1,

        /// <summary>Twenty-one coefficients.</summary>
        Two = 2,

        /// <summary>With temperature-dependent hard spheres.</summary>
        Three = 3
    }

    /// <summary>Dilute-gas viscosity and friction theory of a pure fluid; µPa·s with the shipped data.
    /// </summary>
    public sealed class Visco : SubstancePart
    {
        internal readonly ViscoHandle Handle;

        internal Visco(ViscoHandle handle, Model1 owner) : base(handle, owner)
        {
            Handle = handle;
        }

        /// <summary>Without data and without a model.</summary>
        public Visco() : this(CSharp_new_Visco(), null) { }

        internal override void SetModel(Model1Handle model) =>
            CSharp_Visco_model__SWIG_1(Handle, model);

        /// <summary>Reads CorvaneS/viscosity/dilute/&lt;name&gt;. Code 1.</summary>
        public void LoadDilute()
        {
            Corvane_Visco_load0(Handle, out CorvaneError e);
            e.Raise();
        }

        /// <summary>Reads models/viscosity/friction_theory/&lt;set&gt;/&lt;name&gt;;&lt;id&gt;. Code 1.
        /// </summary>
        /// <param name="set">Folder of the set: an equation of state.</param>
        /// <param name="id">Number of the set.</param>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or
        /// malformed.</exception>
        public void LoadFriction(string set, int id)
        {
            byte[] text = Model1.Text(set);
            CSharp_Visco_set_id(Handle, id);
            Corvane_Visco_load1(Handle, text, out CorvaneError e);
            e.Raise();
        }

        /// <summary>Writes the friction-theory set with the deviation of its fit. Code 1.</summary>
        /// <param name="set">Folder of the set.</param>
        /// <param name="rms">Deviation of the fit, relative.</param>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or
        /// malformed.</exception>
        public void StoreFriction(string set, double rms)
        {
            Corvane_Visco_store1(Handle, Model1.Text(set), rms, out CorvaneError e);
            e.Raise();
        }

        /// <summary>Viscosity of the dilute gas at T [K]. Code 4 before <see cref="LoadDilute"/>.
        /// </summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Viscosity, µPa·s.</returns>
        /// <exception cref="ThermodynamicException">4: no data.</exception>
        public double Eta0(double T) =>
            Check(Corvane_Visco_eta0(Handle, T, out CorvaneError e), ref e);

        /// <summary>Friction-theory viscosity at rho [mol/cm³], T [K]; the caller adds Eta0 at levels 1
        /// and 2. pr and pa receive the repulsive and attractive pressures [MPa]. Code 4.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="pr">Receives the repulsive pressure, MPa.</param>
        /// <param name="pa">Receives the attractive pressure, MPa.</param>
        /// <returns>Viscosity, µPa·s.</returns>
        /// <exception cref="ThermodynamicException">4: no data.</exception>
        public double Eta(double rho, double T, ref double pr, ref double pa) =>
            Check(Corvane_Visco_eta(Handle, rho, T, ref pr, ref pa, out CorvaneError e), ref e);

        /// <summary>Sets the coefficients. Numerical code 2: fewer than 12.</summary>
        /// <param name="values">12 coefficients or more.</param>
        /// <exception cref="ThermodynamicException">Numerical 2: fewer than 12.</exception>
        public void SetCoefficients(DoubleVector values)
        {
            Corvane_Visco_set1(Handle, DoubleVector.HandleOf(values), out CorvaneError e);
            e.Raise();
        }

        /// <summary>Sets the remark and the level.</summary>
        /// <param name="text">The remark.</param>
        /// <param name="level">The number of coefficients.</param>
        public void SetComment(string text, FrictionLevel level)
        {
            int native = (int)level;
            Corvane_Visco_set_comment(Handle, Model1.Text(text), ref native, out CorvaneError e);
            e.Raise();
        }

        /// <summary>Empties the coefficients.</summary>
        public void Reset() => CSharp_Visco_reset(Handle);

        /// <summary>Prints number and remark to the C library's standard output.</summary>
        public void Intro() => CSharp_Visco_intro(Handle);
    }
}
