// Phase equilibria.
using System;
using System.Collections.Generic;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>A phase of an equilibrium.</summary>
    public struct PhaseDescriptor
    {
        /// <summary>A fluid.</summary>
        public static readonly PhaseDescriptor Fluid = new PhaseDescriptor(0, -1);

        /// <summary>The pure solid of a component, phase as in <see cref="Solid"/>.</summary>
        /// <param name="species">Number of a component, from 0.</param>
        /// <param name="phase">Number of its solid phase, from 0; −1 for a fluid.</param>
        public PhaseDescriptor(int species, int phase)
        {
            Species = species;
            Phase = phase;
        }

        /// <summary>Component.</summary>
        public int Species { get; }

        /// <summary>−1 for a fluid.</summary>
        public int Phase { get; }
    }

    /// <summary>
    /// Phase equilibria. p in MPa, T in K, densities in mol/cm³. All functions are re-entrant. A pure
    /// fluid's saturation curve is the affair of <see cref="Saturation"/>.
    /// </summary>
    public static class Equilibria
    {
        /// <summary>(μ_V − μ_L)/(RT) of the two roots of a pure fluid, and their densities. Codes 5, 9,
        /// 10 (a liquid only), 11 (a gas only).</summary>
        /// <param name="model">The model.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="rhoL">Density of the liquid, mol/cm³: start value on entry; receives the
        /// root.</param>
        /// <param name="rhoV">Density of the vapour, mol/cm³: start value on entry; receives the
        /// root.</param>
        /// <returns>(μ_V − μ_L)/(RT), dimensionless.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 9: no such density; 10: a
        /// liquid only; 11: a gas only.</exception>
        public static double Maxwell(Model1 model, double p, double T, ref double rhoL,
                                     ref double rhoV) =>
            Check(Corvane_maxwell(Model1.HandleOf(model), p, T, ref rhoL, ref rhoV,
                                  out CorvaneError e), ref e);

        /// <summary>Pressure at which the phase of mole fractions x and density rho1 coexists with
        /// another, of partial densities rho2, at T. Start values of rho1 and rho2 decide what is found.
        /// Code 0: no solution, or one at p &lt;= 0 or with an unstable phase; 8: the second phase is
        /// the first; 5; numerical codes (1: the fit did not converge).</summary>
        /// <param name="model">The model.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component of the first phase.</param>
        /// <param name="p">Receives the pressure, MPa.</param>
        /// <param name="rho1">Density of the first phase, mol/cm³: start value on entry; receives
        /// the solution.</param>
        /// <param name="rho2">Partial densities of the second phase, mol/cm³: start values on
        /// entry; receive the solution.</param>
        /// <exception cref="ThermodynamicException">0: no solution; 5: out of range; 8: trivial
        /// solution; numerical 1: the fit did not converge.</exception>
        public static void VleT(ModelN model, double T, DoubleVector x, ref double p,
                                ref double rho1, DoubleVector rho2)
        {
            Corvane_vleN_T(ModelN.HandleOf(model), T, model.In(x), ref p, ref rho1,
                           model.In(rho2), out CorvaneError e);
            e.Raise();
        }

        /// <summary>The temperature at p; T, too, needs a start value. Otherwise as VleT.</summary>
        /// <param name="model">The model.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="x">Mole fractions, one for each component of the first phase.</param>
        /// <param name="T">Temperature, K: start value on entry; receives the solution.</param>
        /// <param name="rho1">Density of the first phase, mol/cm³: start value on entry; receives
        /// the solution.</param>
        /// <param name="rho2">Partial densities of the second phase, mol/cm³: start values on
        /// entry; receive the solution.</param>
        /// <exception cref="ThermodynamicException">0: no solution; 5: out of range; 8: trivial
        /// solution; numerical 1: the fit did not converge.</exception>
        public static void VleP(ModelN model, double p, DoubleVector x, ref double T,
                                ref double rho1, DoubleVector rho2)
        {
            Corvane_vleN_p(ModelN.HandleOf(model), p, model.In(x), ref T, ref rho1,
                           model.In(rho2), out CorvaneError e);
            e.Raise();
        }

        /// <summary>Residuals of VleT and VleP at the unknowns u. Code 5; numerical code 2.</summary>
        /// <param name="u">Partial densities of the present components in the second phase and the
        /// density of the given one, mol/cm³; at given p then T, K.</param>
        /// <param name="context">The record of the problem.</param>
        /// <returns>Differences of potentials over RT, dimensionless, and of pressures,
        /// MPa.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; numerical 2: wrong number of
        /// unknowns.</exception>
        public static DoubleVector Residuals(DoubleVector u, PassFfeN context)
        {
            NativeObject.NotNull(context, nameof(context));
            if (!context.IsComplete) throw new ArgumentException("the record is not complete");
            return new DoubleVector(Check(Corvane_objffeN(
                DoubleVector.HandleOf(u), context.Handle, out CorvaneError e), ref e));
        }

        /// <summary>Start compositions (mole fractions of component 0) of the two phases into which a
        /// binary splits. Code 0: no split; 4: not a binary; 9.</summary>
        /// <param name="model">The binary.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Two mole fractions of component 0.</returns>
        /// <exception cref="ThermodynamicException">0: no solution; 4: no such option; 9: no such
        /// density.</exception>
        public static DoubleVector FfInit(ModelN model, double p, double T) =>
            new DoubleVector(Check(Corvane_ffinit(
                ModelN.HandleOf(model), p, T, out CorvaneError e), ref e));

        /// <summary>Adjusts the compositions x of two coexisting phases of a binary by minimising the
        /// Gibbs energy. On any failure, or if the minimum is no equilibrium (two equal phases, for
        /// example), x stays as it was.</summary>
        /// <param name="model">The binary.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phases">The two phases.</param>
        /// <param name="x">Mole fractions of component 0 in each phase: start values on entry;
        /// receive the solution.</param>
        /// <exception cref="ThermodynamicException">0: no solution; 4: no such option; 8: trivial
        /// solution; 9: no such density.</exception>
        public static void EquilMin(ModelN model, double p, double T,
                                    IReadOnlyList<PhaseDescriptor> phases, DoubleVector x)
        {
            NativeObject.NotNull(phases, nameof(phases));
            if (phases.Count != 2 || Binary(x) == null)
                throw new ArgumentException("two phases are needed");
            using (PhdescVectorHandle native = CSharp_new_phdescV__SWIG_0(phases.Count))
            {
                for (int i = 0; i < phases.Count; ++i)
                    CSharp_phdescV_setItemValue(native, i, phases[i].Species, phases[i].Phase);
                Corvane_equil_min(ModelN.HandleOf(model), p, T, native, x.Handle,
                                  out CorvaneError e);
                e.Raise();
            }
        }

        /// <summary>Compositions x (mole fractions of component 0) and densities rho of two coexisting
        /// fluid phases of a binary. Code 0: no split or no solution; 4; 8; 9.</summary>
        /// <param name="model">The binary.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions of component 0 in each phase.</param>
        /// <param name="rho">Receives the densities, mol/cm³.</param>
        /// <exception cref="ThermodynamicException">0: no solution; 4: no such option; 8: trivial
        /// solution; 9: no such density.</exception>
        public static void Equil2(ModelN model, double p, double T, DoubleVector x,
                                  DoubleVector rho)
        {
            Corvane_equil2(ModelN.HandleOf(model), p, T, Binary(x), Binary(rho),
                           out CorvaneError e);
            e.Raise();
        }

        /// <summary>Composition x[1] of the fluid of a binary that coexists with a pure solid, x[0] = 0
        /// or 1; rho receives the densities of solid and fluid. Returns the solid phase. Of a solid of
        /// component 1 the fluid holds 1 − x[1], known to 4e-15 only: put what hardly dissolves
        /// first. Codes 0, 4, 5, 6, 9.</summary>
        /// <param name="model">The binary.</param>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions of component 0: x[0] names the solid, x[1] receives the
        /// fluid's.</param>
        /// <param name="phase">Which density root the fluid is.</param>
        /// <param name="rho">Receives the densities of solid and fluid, mol/cm³.</param>
        /// <returns>Number of the solid phase, from 0.</returns>
        /// <exception cref="ThermodynamicException">0: no solution; 4: no such option; 5: out of
        /// range; 6: no solid data; 9: no such density.</exception>
        public static int Equil2S(ModelN model, double p, double T, DoubleVector x, Phase phase,
                                  DoubleVector rho)
        {
            int i = 0;
            Corvane_equil2s(ModelN.HandleOf(model), p, T, Binary(x), (int)phase, 0, Binary(rho),
                            ref i, out CorvaneError e);
            e.Raise();
            return i;
        }

        /// <summary>Critical point of the mixture of composition x, and the critical line of a binary
        /// from there on with first step s in x[0] (0: the point only). x and s receive the last ones,
        /// the result has rows x0, T, rho, p; the last p of a line may be negative (it goes on under
        /// tension). Codes 0, 4, 5.</summary>
        /// <param name="model">The model.</param>
        /// <param name="x">Mole fractions, one for each component; receives the last.</param>
        /// <param name="s">First step in x[0], a mole fraction; 0: the point alone; receives the
        /// last step.</param>
        /// <returns>Rows of x[0] (mole fraction), T (K), rho (mol/cm³), p (MPa).</returns>
        /// <exception cref="ThermodynamicException">0: no solution; 4: no such option; 5: out of
        /// range.</exception>
        public static DoubleMatrix CritSlopeX(ModelN model, DoubleVector x, ref double s)
        {
            DoubleMatrix line = new DoubleMatrix(0, 4);
            Corvane_crit_slope_x(ModelN.HandleOf(model), model.In(x), ref s, line.Handle,
                                 out CorvaneError e);
            e.Raise();
            return line;
        }

        /// <summary>Appends those of a[i] + d to list that its first count elements do not hold; returns
        /// where each stands. count receives the new number.</summary>
        /// <param name="a">The numbers to append.</param>
        /// <param name="d">What is added to each, in their unit.</param>
        /// <param name="list">What they are appended to.</param>
        /// <param name="count">Number of elements that are in use; receives the new one.</param>
        /// <returns>For each of a its place in the list.</returns>
        public static int[] ListDifferent(DoubleVector a, double d, DoubleVector list,
                                          ref int count)
        {
            int n = DoubleVector.HandleOf(a) != null ? a.Count : 0;
            if (ReferenceEquals(a, list))  // one is read while the other grows
                throw new ArgumentException("two vectors are needed");
            NativeObject.InRange(count, DoubleVector.HandleOf(list) != null ? list.Count + 1 : 0,
                                 nameof(count));
            using (IntVectorHandle native =
                       Check(Corvane_new_intV__SWIG_0(n, out CorvaneError made), ref made))
            {
                Corvane_list_different(a.Handle, d, list.Handle, ref count, native,
                                       out CorvaneError e);
                e.Raise();
                int[] index = new int[n];
                for (int i = 0; i < n; ++i) index[i] = CSharp_intV_getItemValue(native, i);
                return index;
            }
        }

        /// <summary>ln(x/(1 − x)), the mole fraction as an unbounded variable; ±230 at the ends.
        /// </summary>
        /// <param name="x">Mole fraction.</param>
        /// <returns>The variable, dimensionless.</returns>
        public static double XToZ(double x) => CSharp_xtoz(x);

        /// <summary>Its inverse.</summary>
        /// <param name="z">The variable, dimensionless.</param>
        /// <returns>The mole fraction.</returns>
        public static double ZToX(double z) => CSharp_ztox(z);

        /// <summary>Scales the mole fractions other than x[i] so that all sum to 1; returns the factor.
        /// </summary>
        /// <param name="i">Component whose mole fraction stays.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>The factor, dimensionless.</returns>
        public static double AdjustX(int i, DoubleVector x)
        {
            NativeObject.NotNull(x, nameof(x));
            NativeObject.InRange(i, x.Count, nameof(i));
            return Check(Corvane_adjust_x(i, x.Handle, out CorvaneError e), ref e);
        }

        private static DoubleVectorHandle Binary(DoubleVector x)
        {
            if (DoubleVector.HandleOf(x) != null && x.Count != 2)
                throw new ArgumentException("two elements are needed");
            return x.Handle;
        }
    }
}
