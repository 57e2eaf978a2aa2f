// Properties of a pure fluid.
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <remarks>
    /// Suffix r: residual; suffix m: with the ideal-gas part, code 3 where none is loaded. Energies are
    /// divided by R·T, entropies and heat capacities by R. At (p, T) rho is a start value on entry and
    /// receives the density [mol/cm³]; code 9 where the phase does not exist. Properties with ln(rho)
    /// throw code 5 for rho &lt;= 0.
    /// </remarks>
    public sealed partial class Model1
    {
        /// <summary>Ar + ln(rho) − 1 at rho [mol/cm³], T [K]. Throws code 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Ar + ln(rho) − 1, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Ak(double rho, double T) =>
            Check(Corvane_Model1_Ak(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>A/(RT), with the ideal-gas part at rho [mol/cm³], T [K]. Throws code 3,
        /// 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>A/(RT), with the ideal-gas part, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data; 5: out of range.</exception>
        public double Am(double rho, double T) =>
            Check(Corvane_Model1_Am(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>Residual Helmholtz energy A^r/(RT) at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Residual Helmholtz energy A^r/(RT), dimensionless.</returns>
        public double Ar(double rho, double T) =>
            Check(Corvane_Model1_Ar(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>Sr − ln(rho) at rho [mol/cm³], T [K]. Throws code 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Sr − ln(rho), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Sk(double rho, double T) =>
            Check(Corvane_Model1_Sk(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>U/(RT) at rho [mol/cm³], T [K]. Throws code 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>U/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Um(double rho, double T) =>
            Check(Corvane_Model1_Um(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>Compressibility factor p/(rho·R·T) at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Compressibility factor p/(rho·R·T), dimensionless.</returns>
        public double Z(double rho, double T) =>
            Check(Corvane_Model1_Z(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>(∂p/∂rho at T)/(R·T) at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>(∂p/∂rho at T)/(R·T), dimensionless.</returns>
        public double PV(double rho, double T) =>
            Check(Corvane_Model1_pV(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>Isochoric heat capacity over R at rho [mol/cm³], T [K]. Throws code
        /// 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Isochoric heat capacity over R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double CVm(double rho, double T) =>
            Check(Corvane_Model1_CVm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Isochoric heat capacity over R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double CVm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_CVm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual isochoric heat capacity over R at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Residual isochoric heat capacity over R, dimensionless.</returns>
        public double CVr(double rho, double T) =>
            Check(Corvane_Model1_CVr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Residual isochoric heat capacity over R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double CVr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_CVr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Isobaric heat capacity over R at rho [mol/cm³], T [K]. Throws code 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Isobaric heat capacity over R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Cpm(double rho, double T) =>
            Check(Corvane_Model1_Cpm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Isobaric heat capacity over R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Cpm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Cpm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual isobaric heat capacity over R at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Residual isobaric heat capacity over R, dimensionless.</returns>
        public double Cpr(double rho, double T) =>
            Check(Corvane_Model1_Cpr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Residual isobaric heat capacity over R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Cpr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Cpr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Ar + Z − 1 + ln(rho) at rho [mol/cm³], T [K]. Throws code 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Ar + Z − 1 + ln(rho), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Ge(double rho, double T) =>
            Check(Corvane_Model1_Ge__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Ar + Z − 1 + ln(rho), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Ge(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Ge__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>G/(RT) at rho [mol/cm³], T [K]. Throws code 3, 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>G/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data; 5: out of range.</exception>
        public double Gm(double rho, double T) =>
            Check(Corvane_Model1_Gm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>G/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Gm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Gm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Ar + Z − 1 at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Ar + Z − 1, dimensionless.</returns>
        public double Gr(double rho, double T) =>
            Check(Corvane_Model1_Gr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Ar + Z − 1, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Gr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Gr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>H/(RT) at rho [mol/cm³], T [K]. Throws code 3.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>H/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data.</exception>
        public double Hm(double rho, double T) =>
            Check(Corvane_Model1_Hm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>H/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Hm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Hm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual enthalpy H^r/(RT) at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Residual enthalpy H^r/(RT), dimensionless.</returns>
        public double Hr(double rho, double T) =>
            Check(Corvane_Model1_Hr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Residual enthalpy H^r/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Hr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Hr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>S/R at rho [mol/cm³], T [K]. Throws code 3, 5.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>S/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">3: no ideal-gas data; 5: out of range.</exception>
        public double Sm(double rho, double T) =>
            Check(Corvane_Model1_Sm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>S/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Sm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Sm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual entropy S^r/R at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Residual entropy S^r/R, dimensionless.</returns>
        public double Sr(double rho, double T) =>
            Check(Corvane_Model1_Sr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Residual entropy S^r/R, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Sr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Sr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual internal energy U^r/(RT) at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Residual internal energy U^r/(RT), dimensionless.</returns>
        public double Ur(double rho, double T) =>
            Check(Corvane_Model1_Ur__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Residual internal energy U^r/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Ur(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Ur__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>T times the thermal expansivity at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>T times the thermal expansivity, dimensionless.</returns>
        public double Alphap(double rho, double T) =>
            Check(Corvane_Model1_alphap__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>T times the thermal expansivity, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Alphap(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_alphap__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>(∂p/∂T at rho)/(rho·R) at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>(∂p/∂T at rho)/(rho·R), dimensionless.</returns>
        public double BetaV(double rho, double T) =>
            Check(Corvane_Model1_betaV__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>(∂p/∂T at rho)/(rho·R), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double BetaV(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_betaV__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>rho·R·T times the isothermal compressibility at rho [mol/cm³], T [K].</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>rho·R·T times the isothermal compressibility, dimensionless.</returns>
        public double KappaT(double rho, double T) =>
            Check(Corvane_Model1_kappaT__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>rho·R·T times the isothermal compressibility, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double KappaT(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_kappaT__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Molar volume [cm³/mol] at p [MPa], T [K]. Throws code 9.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <returns>Molar volume [cm³/mol].</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Vm(double p, double T, Phase phase) =>
            Check(Corvane_Model1_Vm(Handle, p, T, (int)phase, out CorvaneError e), ref e);

        /// <summary>n-th virial coefficient [(cm³/mol)^(n−1)] at T [K], 1 &lt;= n &lt;= 9.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <param name="n">Order, from 2.</param>
        /// <returns>n-th virial coefficient [(cm³/mol)^(n−1)].</returns>
        public double B(double T, int n) =>
            Check(Corvane_Model1_B(Handle, T, n, out CorvaneError e), ref e);

        /// <summary>Density [mol/cm³] of a phase at p [MPa], T [K]. Throws code 9.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <returns>Density [mol/cm³] of a phase.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Density(double p, double T, Phase phase)
        {
            double rho = 0;
            Gr(p, T, phase, ref rho);
            return rho;
        }
    }
}
