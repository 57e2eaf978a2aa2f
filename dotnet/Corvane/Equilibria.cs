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
        public static double Maxwell(Model1 model, double p, double T, ref double rhoL,
                                     ref double rhoV) =>
            Check(Corvane_maxwell(Model1.HandleOf(model), p, T, ref rhoL, ref rhoV,
                                  out CorvaneError e), ref e);

        /// <summary>Pressure at which the phase of mole fractions x and density rho1 coexists with
        /// another, of partial densities rho2, at T. Start values of rho1 and rho2 decide what is found.
        /// Code 0: no solution, or one at p &lt;= 0 or with an unstable phase; 8: the second phase is
        /// the first; 5; numerical codes (1: the fit did not converge).</summary>
        public static void VleT(ModelN model, double T, DoubleVector x, ref double p,
                                ref double rho1, DoubleVector rho2)
        {
            Corvane_vleN_T(ModelN.HandleOf(model), T, model.In(x), ref p, ref rho1,
                           model.In(rho2), out CorvaneError e);
            e.Raise();
        }

        /// <summary>The temperature at p; T, too, needs a start value. Otherwise as VleT.</summary>
        public static void VleP(ModelN model, double p, DoubleVector x, ref double T,
                                ref double rho1, DoubleVector rho2)
        {
            Corvane_vleN_p(ModelN.HandleOf(model), p, model.In(x), ref T, ref rho1,
                           model.In(rho2), out CorvaneError e);
            e.Raise();
        }

        /// <summary>Residuals of VleT and VleP at the unknowns u. Code 5; numerical code 2.</summary>
        public static DoubleVector Residuals(DoubleVector u, PassFfeN context)
        {
            NativeObject.NotNull(context, nameof(context));
            if (!context.IsComplete) throw new ArgumentException("the record is not complete");
            return new DoubleVector(Check(Corvane_objffeN(
                DoubleVector.HandleOf(u), context.Handle, out CorvaneError e), ref e));
        }

        /// <summary>Start compositions (mole fractions of component 0) of the two phases into which a
        /// binary splits. Code 0: no split; 4: not a binary; 9.</summary>
        public static DoubleVector FfInit(ModelN model, double p, double T) =>
            new DoubleVector(Check(Corvane_ffinit(
                ModelN.HandleOf(model), p, T, out CorvaneError e), ref e));

        /// <summary>Adjusts the compositions x of two coexisting phases of a binary by minimising the
        /// Gibbs energy. On any failure, or if the minimum is no equilibrium (two equal phases, for
        /// example), x stays as it was.</summary>
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
        public static double XToZ(double x) => CSharp_xtoz(x);

        /// <summary>Its inverse.</summary>
        public static double ZToX(double z) => CSharp_ztox(z);

        /// <summary>Scales the mole fractions other than x[i] so that all sum to 1; returns the factor.
        /// </summary>
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
