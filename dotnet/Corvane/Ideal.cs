// Ideal-gas properties.
using System;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>Ideal-gas caloric properties of a substance from a table of heat capacities. Reduced:
    /// heat capacities and entropies by R, energies by R·T.</summary>
    public sealed class Ideal : SubstancePart
    {
        internal readonly IdealHandle Handle;

        internal Ideal(IdealHandle handle, Model1 owner) : base(handle, owner)
        {
            Handle = handle;
        }

        /// <summary>Without data and without a model.</summary>
        public Ideal() : this(CSharp_new_Ideal(), null) { }

        internal override void SetModel(Model1Handle model) =>
            CSharp_Ideal_model__SWIG_1(Handle, model);

        /// <summary>Reads CorvaneS/ideal/&lt;name&gt;. Code 1: no file or no model; numerical codes 5, 6:
        /// temperatures that do not ascend.</summary>
        public void Load()
        {
            Corvane_Ideal_load(Handle, out CorvaneError e);
            e.Raise();
        }

        /// <summary>Table segment of T [K], −1 below the table. Code 3 without data.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Number of the segment, from 0; −1 below the table.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public int Interval(double T) =>
            Check(Corvane_Ideal_interval(Handle, T, out CorvaneError e), ref e);

        /// <summary>Adds dh [K] to every energy and ds [R] to every entropy. Code 3 without data.
        /// </summary>
        /// <param name="dh">What is added to energies over R, K.</param>
        /// <param name="ds">What is added to entropies over R, dimensionless.</param>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public void Offset(double dh, double ds)
        {
            Corvane_Ideal_offset(Handle, dh, ds, out CorvaneError e);
            e.Raise();
        }

        /// <summary>Forgets the data.</summary>
        public void Reset() => CSharp_Ideal_reset(Handle);

        /// <summary>Prints the range to the C library's standard output.</summary>
        public void Info() => CSharp_Ideal_info(Handle);

        /// <summary>cp°/R at T [K]. Throws code 3 without data.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>cp°/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Cpm(double T) =>
            Check(Corvane_Ideal_Cpm(Handle, T, out CorvaneError e), ref e);

        /// <summary>cv°/R at T [K]. Throws code 3 without data.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>cv°/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double CVm(double T) =>
            Check(Corvane_Ideal_CVm(Handle, T, out CorvaneError e), ref e);

        /// <summary>H°/(RT) at T [K]. Throws code 3 without data.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>H°/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Hm(double T) => Check(Corvane_Ideal_Hm(Handle, T, out CorvaneError e), ref e);

        /// <summary>S°/R at unit density (mol/cm³) at T [K]. Throws code 3 without data.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>S°/R at unit density (mol/cm³).</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Sm(double T) => Check(Corvane_Ideal_Sm(Handle, T, out CorvaneError e), ref e);

        /// <summary>U°/(RT) − S°/R at T [K]. Throws code 3 without data.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>U°/(RT) − S°/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Am(double T) => Check(Corvane_Ideal_Am(Handle, T, out CorvaneError e), ref e);

        /// <summary>U°/(RT) + 1 − S°/R at T [K]. Throws code 3 without data.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>U°/(RT) + 1 − S°/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Gm(double T) => Check(Corvane_Ideal_Gm(Handle, T, out CorvaneError e), ref e);

        /// <summary>U°/(RT) at T [K]. Throws code 3 without data.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <returns>U°/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Um(double T) => Check(Corvane_Ideal_Um(Handle, T, out CorvaneError e), ref e);
    }
}
