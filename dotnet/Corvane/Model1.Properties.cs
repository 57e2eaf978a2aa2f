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
        public double Ak(double rho, double T) =>
            Check(Corvane_Model1_Ak(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>A/(RT), with the ideal-gas part at rho [mol/cm³], T [K]. Throws code 3,
        /// 5.</summary>
        public double Am(double rho, double T) =>
            Check(Corvane_Model1_Am(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>Residual Helmholtz energy A^r/(RT) at rho [mol/cm³], T [K].</summary>
        public double Ar(double rho, double T) =>
            Check(Corvane_Model1_Ar(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>Sr − ln(rho) at rho [mol/cm³], T [K]. Throws code 5.</summary>
        public double Sk(double rho, double T) =>
            Check(Corvane_Model1_Sk(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>U/(RT) at rho [mol/cm³], T [K]. Throws code 3.</summary>
        public double Um(double rho, double T) =>
            Check(Corvane_Model1_Um(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>Compressibility factor p/(rho·R·T) at rho [mol/cm³], T [K].</summary>
        public double Z(double rho, double T) =>
            Check(Corvane_Model1_Z(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>(∂p/∂rho at T)/(R·T) at rho [mol/cm³], T [K].</summary>
        public double PV(double rho, double T) =>
            Check(Corvane_Model1_pV(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>Isochoric heat capacity over R at rho [mol/cm³], T [K]. Throws code
        /// 3.</summary>
        public double CVm(double rho, double T) =>
            Check(Corvane_Model1_CVm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double CVm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_CVm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual isochoric heat capacity over R at rho [mol/cm³], T [K].</summary>
        public double CVr(double rho, double T) =>
            Check(Corvane_Model1_CVr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double CVr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_CVr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Isobaric heat capacity over R at rho [mol/cm³], T [K]. Throws code 3.</summary>
        public double Cpm(double rho, double T) =>
            Check(Corvane_Model1_Cpm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Cpm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Cpm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual isobaric heat capacity over R at rho [mol/cm³], T [K].</summary>
        public double Cpr(double rho, double T) =>
            Check(Corvane_Model1_Cpr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Cpr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Cpr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Ar + Z − 1 + ln(rho) at rho [mol/cm³], T [K]. Throws code 5.</summary>
        public double Ge(double rho, double T) =>
            Check(Corvane_Model1_Ge__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Ge(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Ge__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>G/(RT) at rho [mol/cm³], T [K]. Throws code 3, 5.</summary>
        public double Gm(double rho, double T) =>
            Check(Corvane_Model1_Gm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Gm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Gm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Ar + Z − 1 at rho [mol/cm³], T [K].</summary>
        public double Gr(double rho, double T) =>
            Check(Corvane_Model1_Gr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Gr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Gr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>H/(RT) at rho [mol/cm³], T [K]. Throws code 3.</summary>
        public double Hm(double rho, double T) =>
            Check(Corvane_Model1_Hm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Hm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Hm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual enthalpy H^r/(RT) at rho [mol/cm³], T [K].</summary>
        public double Hr(double rho, double T) =>
            Check(Corvane_Model1_Hr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Hr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Hr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>S/R at rho [mol/cm³], T [K]. Throws code 3, 5.</summary>
        public double Sm(double rho, double T) =>
            Check(Corvane_Model1_Sm__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Sm(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Sm__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual entropy S^r/R at rho [mol/cm³], T [K].</summary>
        public double Sr(double rho, double T) =>
            Check(Corvane_Model1_Sr__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Sr(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Sr__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Residual internal energy U^r/(RT) at rho [mol/cm³], T [K].</summary>
        public double Ur(double rho, double T) =>
            Check(Corvane_Model1_Ur__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Ur(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_Ur__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>T times the thermal expansivity at rho [mol/cm³], T [K].</summary>
        public double Alphap(double rho, double T) =>
            Check(Corvane_Model1_alphap__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double Alphap(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_alphap__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>(∂p/∂T at rho)/(rho·R) at rho [mol/cm³], T [K].</summary>
        public double BetaV(double rho, double T) =>
            Check(Corvane_Model1_betaV__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double BetaV(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_betaV__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>rho·R·T times the isothermal compressibility at rho [mol/cm³], T [K].</summary>
        public double KappaT(double rho, double T) =>
            Check(Corvane_Model1_kappaT__SWIG_0(Handle, rho, T, out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        public double KappaT(double p, double T, Phase phase, ref double rho) =>
            Check(Corvane_Model1_kappaT__SWIG_1(
                Handle, p, T, (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Molar volume [cm³/mol] at p [MPa], T [K]. Throws code 9.</summary>
        public double Vm(double p, double T, Phase phase) =>
            Check(Corvane_Model1_Vm(Handle, p, T, (int)phase, out CorvaneError e), ref e);

        /// <summary>n-th virial coefficient [(cm³/mol)^(n−1)] at T [K], 1 &lt;= n &lt;= 9.</summary>
        public double B(double T, int n) =>
            Check(Corvane_Model1_B(Handle, T, n, out CorvaneError e), ref e);

        /// <summary>Density [mol/cm³] of a phase at p [MPa], T [K]. Throws code 9.</summary>
        public double Density(double p, double T, Phase phase)
        {
            double rho = 0;
            Gr(p, T, phase, ref rho);
            return rho;
        }
    }
}
