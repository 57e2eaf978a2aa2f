// The mixture model: operations that can fail.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
        [DllImport(Library)]
        internal static extern int Corvane_ModelN_load_estimating(
            ModelNHandle self, byte[] eos, byte[] mth, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_ModelN_pair_parameters(ModelNHandle self);

        [DllImport(Library)]
        internal static extern void Corvane_ModelN_heat_capacities(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, ref double CVr,
            ref double Cpr, ref double CVm, ref double Cpm, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_ModelN_components(ModelNHandle self);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Ak(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Gk(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Sk(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Am(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Um(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Ur(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_pV(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_B(
            ModelNHandle self, double T, DoubleVectorHandle x, int k, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Vm(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_CVm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_CVm__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_CVr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_CVr__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Cpm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Cpm__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Cpr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Cpr__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Ge__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Ge__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Gm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Gm__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Gr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Gr__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Hm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Hm__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Hr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Hr__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_alphap__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_alphap__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_kappaT__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_kappaT__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Ar__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Ar__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Z__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Z__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Sr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Sr__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_betaV__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_betaV__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_betaV__SWIG_2(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Sm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Sm__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Sm__SWIG_2(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_my__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, int i, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_my__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, int i,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_my__SWIG_2(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int i, int phase,
            ref double rho, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_myr__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, int i, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_myr__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, int i,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_myr__SWIG_2(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int i, int phase,
            ref double rho, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Psi__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_ModelN_Psi__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle Corvane_ModelN_PsiG__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle Corvane_ModelN_PsiG__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleMatrixHandle Corvane_ModelN_PsiH__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleMatrixHandle Corvane_ModelN_PsiH__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_ModelN_vcalc(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int mode, ref double rho_a,
            ref double rho_b, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_ModelN_alloc(
            ModelNHandle self, int n, byte[] eos, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_ModelN_par_alloc(
            ModelNHandle self, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_ModelN_par_in(
            ModelNHandle self, IntPtr f, int i, int j, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_ModelN_par_out(
            ModelNHandle self, IntPtr f, int i, int j, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle Corvane_ModelN_mixpar(
            ModelNHandle self, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_ModelN_load(
            ModelNHandle self, byte[] eos, byte[] mth, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_ModelN_store2(
            ModelNHandle self, byte[] eos, byte[] mth, out CorvaneError error);
    }
}
