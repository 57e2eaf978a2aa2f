// Densities at given pressure and temperature.
using System;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>
    /// Density roots of p = Z·R·T·rho from Z and Ar alone. p in MPa, T in K, densities in mol/cm³; d
    /// [cm³/mol] is a reference volume with rho·d &lt; 1 for all states of interest, such as the
    /// covolume. A model's own Vcalc is faster and surer. Nothing is kept between calls.
    /// </summary>
    public static class VolumeFinder
    {
        private const int Pure = 0, Mixture = 1;

        /// <summary>All roots, densest first: roots has at least 3 elements. Returns 0, 1 or 3.
        /// </summary>
        /// <param name="model">The fluid.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="d">Reference volume, cm³/mol: all densities are below 1/d.</param>
        /// <param name="roots">Receives the densities, mol/cm³.</param>
        /// <returns>Number of roots.</returns>
        public static int Volume(Model1 model, double p, double T, double d, DoubleVector roots) =>
            Check(Corvane_volume(Model1.HandleOf(model), Pure, p, T, DoubleVectorHandle.None, d,
                                 DoubleVector.HandleOf(roots), out CorvaneError e), ref e);

        /// <summary>The same for a mixture of mole fractions x.</summary>
        /// <param name="model">The mixture.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="d">Reference volume, cm³/mol: all densities are below 1/d.</param>
        /// <param name="roots">Receives the densities, mol/cm³.</param>
        /// <returns>Number of roots.</returns>
        public static int Volume(ModelN model, double p, double T, DoubleVector x, double d,
                                 DoubleVector roots)
        {
            if (ReferenceEquals(x, roots))  // one is read while the other is filled
                throw new ArgumentException("two vectors are needed");
            return Check(Corvane_volume(ModelN.HandleOf(model), Mixture, p, T, model.In(x), d,
                                        DoubleVector.HandleOf(roots), out CorvaneError e), ref e);
        }

        /// <summary>The root near the start value rho, by Newton's method and the Illinois method. False
        /// if none was found, or one that is off by more than a part in a thousand, as in a gas too
        /// thin for the absolute tolerance of 1e-9 in rho·d.</summary>
        /// <param name="model">The fluid.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="d">Reference volume, cm³/mol: all densities are below 1/d.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Whether it was found.</returns>
        public static bool Volav(Model1 model, double p, double T, double d, ref double rho) =>
            Check(Corvane_volav(Model1.HandleOf(model), Pure, p, T, DoubleVectorHandle.None, d,
                                ref rho, out CorvaneError e), ref e) != 0;

        /// <summary>The same for a mixture of mole fractions x.</summary>
        /// <param name="model">The mixture.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="d">Reference volume, cm³/mol: all densities are below 1/d.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Whether it was found.</returns>
        public static bool Volav(ModelN model, double p, double T, DoubleVector x, double d,
                                 ref double rho) =>
            Check(Corvane_volav(ModelN.HandleOf(model), Mixture, p, T, model.In(x), d, ref rho,
                                out CorvaneError e), ref e) != 0;

        /// <summary>The root near the start value rho, by plain Newton steps. False if none was found,
        /// and for a pure model without density tables; rho is then as before.</summary>
        /// <param name="model">The fluid.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="d">Reference volume, cm³/mol: all densities are below 1/d.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Whether it was found.</returns>
        public static bool Volnewt(Model1 model, double p, double T, double d, ref double rho) =>
            Check(Corvane_volnewt(Model1.HandleOf(model), Pure, p, T, DoubleVectorHandle.None, d,
                                  ref rho, out CorvaneError e), ref e) != 0;

        /// <summary>The same for a mixture of mole fractions x.</summary>
        /// <param name="model">The mixture.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="d">Reference volume, cm³/mol: all densities are below 1/d.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Whether it was found.</returns>
        public static bool Volnewt(ModelN model, double p, double T, DoubleVector x, double d,
                                   ref double rho) =>
            Check(Corvane_volnewt(ModelN.HandleOf(model), Mixture, p, T, model.In(x), d, ref rho,
                                  out CorvaneError e), ref e) != 0;

        /// <summary>The stable roots between the density bounds of the model's tables; vmin [cm³/mol] is
        /// the lower limit of the volume. Returns their number, 0 to 2, the dense one first.</summary>
        /// <param name="model">The fluid.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="vmin">Lowest volume, cm³/mol.</param>
        /// <param name="rho1">Start value on entry, 0 for none; receives the first root, mol/cm³.</param>
        /// <param name="rho2">Receives the second root, mol/cm³.</param>
        /// <returns>Number of roots.</returns>
        public static int Volf1(Model1 model, double p, double T, double vmin, ref double rho1,
                                ref double rho2) =>
            Check(Corvane_volf1(Model1.HandleOf(model), p, T, vmin, ref rho1, ref rho2,
                                out CorvaneError e), ref e);
    }
}
