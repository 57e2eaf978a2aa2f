// Properties of a mixture.
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <remarks>
    /// Suffix r: residual; suffix m: with the components' ideal-gas parts, code 3 without them.
    /// Energies are divided by R·T, entropies by R. Mole fractions are used as given. At (p, T, x) rho
    /// is a start value on entry and receives the density [mol/cm³]; code 9 where the phase does not
    /// exist. CVr, CVm, Cpr and Cpm lack a factor T, as in the C++ interface;
    /// <see cref="HeatCapacities"/> gives the physical values.
    /// </remarks>
    public sealed partial class ModelN
    {
        /// <summary>A/(RT) at rho [mol/cm³], T [K], x. Throws code 3, 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>A/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data; 5: out of range.</exception>
        public double Am(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Am(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>U/(RT) at rho [mol/cm³], T [K], x. Throws code 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>U/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Um(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Um(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>Residual internal energy U^r/(RT) at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Residual internal energy U^r/(RT), dimensionless.</returns>
        public double Ur(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Ur(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>(∂p/∂rho at T, x)/(R·T) at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>(∂p/∂rho at T, x)/(R·T), dimensionless.</returns>
        public double PV(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_pV(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The C++ interface's CVm (see the remarks) at rho [mol/cm³], T [K], x. Throws
        /// code 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>The C++ interface's CVm, over R, its residual part in K⁻¹ (see the remarks).</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double CVm(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_CVm__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>The C++ interface's CVm, over R, its residual part in K⁻¹ (see the remarks).</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double CVm(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_CVm__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>The C++ interface's CVr [1/K] (see the remarks) at rho [mol/cm³], T [K],
        /// x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>The C++ interface's CVr [1/K] (see the remarks).</returns>
        public double CVr(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_CVr__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>The C++ interface's CVr [1/K] (see the remarks).</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double CVr(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_CVr__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>The C++ interface's Cpm (see the remarks) at rho [mol/cm³], T [K], x. Throws
        /// code 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>The C++ interface's Cpm, over R, its residual part in K⁻¹ (see the remarks).</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Cpm(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Cpm__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>The C++ interface's Cpm, over R, its residual part in K⁻¹ (see the remarks).</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Cpm(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_Cpm__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>The C++ interface's Cpr (see the remarks) at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>The C++ interface's Cpr, over R, its residual part in K⁻¹ (see the remarks).</returns>
        public double Cpr(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Cpr__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>The C++ interface's Cpr, over R, its residual part in K⁻¹ (see the remarks).</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Cpr(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_Cpr__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Ar + Z − 1 + ln(rho), without a mixing term at rho [mol/cm³], T [K], x. Throws
        /// code 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Ar + Z − 1 + ln(rho), without a mixing term, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Ge(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Ge__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Ar + Z − 1 + ln(rho), without a mixing term, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Ge(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_Ge__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>G/(RT) at rho [mol/cm³], T [K], x. Throws code 3, 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>G/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data; 5: out of range.</exception>
        public double Gm(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Gm__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>G/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Gm(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_Gm__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Ar + Z − 1 at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Ar + Z − 1, dimensionless.</returns>
        public double Gr(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Gr__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Ar + Z − 1, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Gr(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_Gr__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>H/(RT) at rho [mol/cm³], T [K], x. Throws code 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>H/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Hm(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Hm__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>H/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Hm(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_Hm__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual enthalpy H^r/(RT) at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Residual enthalpy H^r/(RT), dimensionless.</returns>
        public double Hr(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Hr__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Residual enthalpy H^r/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Hr(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_Hr__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>T times the thermal expansivity at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>T times the thermal expansivity, dimensionless.</returns>
        public double Alphap(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_alphap__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>T times the thermal expansivity, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Alphap(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_alphap__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>rho·R·T times the isothermal compressibility at rho [mol/cm³], T [K],
        /// x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>rho·R·T times the isothermal compressibility, dimensionless.</returns>
        public double KappaT(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_kappaT__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>rho·R·T times the isothermal compressibility, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double KappaT(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_kappaT__SWIG_1(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual Helmholtz energy A^r/(RT) at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Residual Helmholtz energy A^r/(RT), dimensionless.</returns>
        public double Ar(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Ar__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at partial densities [mol/cm³].</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Residual Helmholtz energy A^r/(RT), dimensionless.</returns>
        public double Ar(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_Ar__SWIG_1(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>Compressibility factor p/(rho·R·T) at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Compressibility factor p/(rho·R·T), dimensionless.</returns>
        public double Z(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Z__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at partial densities [mol/cm³].</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Compressibility factor p/(rho·R·T), dimensionless.</returns>
        public double Z(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_Z__SWIG_1(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>Residual entropy S^r/R at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Residual entropy S^r/R, dimensionless.</returns>
        public double Sr(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Sr__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at partial densities [mol/cm³].</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Residual entropy S^r/R, dimensionless.</returns>
        public double Sr(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_Sr__SWIG_1(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>(∂p/∂T at rho, x)/(rho·R) at rho [mol/cm³], T [K], x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>(∂p/∂T at rho, x)/(rho·R), dimensionless.</returns>
        public double BetaV(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_betaV__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at partial densities [mol/cm³].</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>(∂p/∂T at rho, x)/(rho·R), dimensionless.</returns>
        public double BetaV(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_betaV__SWIG_1(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>(∂p/∂T at rho, x)/(rho·R), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double BetaV(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_betaV__SWIG_2(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>S/R; normalises the composition at rho [mol/cm³], T [K], x. Throws code 3,
        /// 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>S/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data; 5: out of range.</exception>
        public double Sm(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Sm__SWIG_0(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>The same at partial densities [mol/cm³].</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>S/R, dimensionless.</returns>
        public double Sm(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_Sm__SWIG_1(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>S/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Sm(double p, double T, DoubleVector x, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_Sm__SWIG_2(
                Handle, p, T, In(x), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Ar − 1 + Σ y·ln rho_i at partial densities [mol/cm³]. Throws code 5.</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Ar − 1 + Σ y·ln rho_i, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Ak(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_Ak(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>Gr + Σ y·ln rho_i at partial densities [mol/cm³]. Throws code 5.</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Gr + Σ y·ln rho_i, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Gk(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_Gk(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>Sr − Σ y·ln rho_i at partial densities [mol/cm³]. Throws code 5.</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Sr − Σ y·ln rho_i, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Sk(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_Sk(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>Molar volume [cm³/mol] at p [MPa], T [K]. Throws code 9.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <returns>Molar volume [cm³/mol].</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Vm(double p, double T, DoubleVector x, Phase phase) =>
            Check(Corvane_ModelN_Vm(
                Handle, p, T, In(x), (int)phase, out CorvaneError e), ref e);

        /// <summary>k-th virial coefficient [(cm³/mol)^(k−1)], 1 &lt;= k &lt;= 9.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="k">Which coefficient, 2 for the second.</param>
        /// <returns>The coefficient, (cm³/mol)^(k−1).</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double B(double T, DoubleVector x, int k) =>
            Check(Corvane_ModelN_B(Handle, T, In(x), k, out CorvaneError e), ref e);

        /// <summary>Density [mol/cm³] of a phase at p [MPa], T [K]. Throws code 9.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root.</param>
        /// <returns>Density [mol/cm³] of a phase.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Density(double p, double T, DoubleVector x, Phase phase)
        {
            double rho = 0;
            Gr(p, T, x, phase, ref rho);
            return rho;
        }

        /// <summary>The physical heat capacities over R, residual and total, at rho [mol/cm³], T [K],
        /// mole fractions x. Throws code 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>cv and cp, residual and in all, over R.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public HeatCapacities HeatCapacities(double rho, double T, DoubleVector x)
        {
            double CVr = 0, Cpr = 0, CVm = 0, Cpm = 0;
            Corvane_ModelN_heat_capacities(
                Handle, rho, T, In(x), ref CVr, ref Cpr, ref CVm, ref Cpm, out CorvaneError e);
            e.Raise();
            return new HeatCapacities(CVr, Cpr, CVm, Cpm);
        }
    }

    /// <summary>Heat capacities of a mixture over R.</summary>
    public struct HeatCapacities
    {
        internal HeatCapacities(double CVr, double Cpr, double CVm, double Cpm)
        {
            this.CVr = CVr;
            this.Cpr = Cpr;
            this.CVm = CVm;
            this.Cpm = Cpm;
        }

        /// <summary>Residual isochoric.</summary>
        public double CVr { get; }

        /// <summary>Residual isobaric.</summary>
        public double Cpr { get; }

        /// <summary>Isochoric.</summary>
        public double CVm { get; }

        /// <summary>Isobaric.</summary>
        public double Cpm { get; }
    }
}
