// Chemical potentials and the Helmholtz energy density of a mixture.
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    public sealed partial class ModelN
    {
        /// <summary>Residual chemical potential μ^r/(RT) of component i at partial densities
        /// [mol/cm³].</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="i">Number of the component, from 0.</param>
        /// <returns>Residual chemical potential μ^r/(RT) of component i, dimensionless.</returns>
        public double Myr(DoubleVector rhoI, double T, int i) =>
            Check(Corvane_ModelN_myr__SWIG_0(
                Handle, In(rhoI), T, At(i), out CorvaneError e), ref e);

        /// <summary>The same at rho [mol/cm³], mole fractions x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="i">Number of the component, from 0.</param>
        /// <returns>Residual chemical potential μ^r/(RT) of component i, dimensionless.</returns>
        public double Myr(double rho, double T, DoubleVector x, int i) =>
            Check(Corvane_ModelN_myr__SWIG_1(
                Handle, rho, T, In(x), At(i), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="i">Number of the component, from 0.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Residual chemical potential μ^r/(RT) of component i, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double Myr(double p, double T, DoubleVector x, int i, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_myr__SWIG_2(
                Handle, p, T, In(x), At(i), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Chemical potential μ/(RT), −1e99 if absent, of component i at partial
        /// densities [mol/cm³].</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="i">Number of the component, from 0.</param>
        /// <returns>Chemical potential μ/(RT), −1e99 if absent, of component i, dimensionless.</returns>
        public double My(DoubleVector rhoI, double T, int i) =>
            Check(Corvane_ModelN_my__SWIG_0(Handle, In(rhoI), T, At(i), out CorvaneError e), ref e);

        /// <summary>The same at rho [mol/cm³], mole fractions x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="i">Number of the component, from 0.</param>
        /// <returns>Chemical potential μ/(RT), −1e99 if absent, of component i, dimensionless.</returns>
        public double My(double rho, double T, DoubleVector x, int i) =>
            Check(Corvane_ModelN_my__SWIG_1(
                Handle, rho, T, In(x), At(i), out CorvaneError e), ref e);

        /// <summary>The same at p [MPa], T [K].</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="i">Number of the component, from 0.</param>
        /// <param name="phase">Which density root.</param>
        /// <param name="rho">Start value on entry, 0 for none; receives the density, mol/cm³.</param>
        /// <returns>Chemical potential μ/(RT), −1e99 if absent, of component i, dimensionless.</returns>
        /// <exception cref="ThermodynamicException">9: no such density.</exception>
        public double My(double p, double T, DoubleVector x, int i, Phase phase, ref double rho) =>
            Check(Corvane_ModelN_my__SWIG_2(
                Handle, p, T, In(x), At(i), (int)phase, ref rho, out CorvaneError e), ref e);

        /// <summary>Helmholtz energy density over RT [mol/cm³]. Throws code 5.</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Helmholtz energy density over RT [mol/cm³].</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Psi(DoubleVector rhoI, double T) =>
            Check(Corvane_ModelN_Psi__SWIG_0(Handle, In(rhoI), T, out CorvaneError e), ref e);

        /// <summary>The same at rho [mol/cm³], mole fractions x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Helmholtz energy density over RT [mol/cm³].</returns>
        public double Psi(double rho, double T, DoubleVector x) =>
            Check(Corvane_ModelN_Psi__SWIG_1(Handle, rho, T, In(x), out CorvaneError e), ref e);

        /// <summary>Gradient of rho·Ar + Σ rho_i·ln rho_i in the partial densities.</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Gradient of rho·Ar + Σ rho_i·ln rho_i in the partial densities.</returns>
        public DoubleVector PsiG(DoubleVector rhoI, double T) =>
            new DoubleVector(Check(Corvane_ModelN_PsiG__SWIG_0(
                Handle, In(rhoI), T, out CorvaneError e), ref e));

        /// <summary>The same at rho [mol/cm³], mole fractions x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Gradient of rho·Ar + Σ rho_i·ln rho_i in the partial densities.</returns>
        public DoubleVector PsiG(double rho, double T, DoubleVector x) =>
            new DoubleVector(Check(Corvane_ModelN_PsiG__SWIG_1(
                Handle, rho, T, In(x), out CorvaneError e), ref e));

        /// <summary>Hessian of the same [cm³/mol].</summary>
        /// <param name="rhoI">Partial densities, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Hessian of the same [cm³/mol].</returns>
        public DoubleMatrix PsiH(DoubleVector rhoI, double T) =>
            new DoubleMatrix(Check(Corvane_ModelN_PsiH__SWIG_0(
                Handle, In(rhoI), T, out CorvaneError e), ref e));

        /// <summary>The same at rho [mol/cm³], mole fractions x.</summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>Hessian of the same [cm³/mol].</returns>
        public DoubleMatrix PsiH(double rho, double T, DoubleVector x) =>
            new DoubleMatrix(Check(Corvane_ModelN_PsiH__SWIG_1(
                Handle, rho, T, In(x), out CorvaneError e), ref e));
    }
}
