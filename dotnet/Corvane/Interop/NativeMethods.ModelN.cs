// The mixture model.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Ak(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Gk(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Sk(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Am(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Um(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Ur(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_pV(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_B(
            ModelNHandle self, double T, DoubleVectorHandle x, int k);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Vm(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_CVm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_CVm__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_CVr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_CVr__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Cpm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Cpm__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Cpr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Cpr__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Ge__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Ge__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Gm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Gm__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Gr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Gr__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Hm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Hm__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Hr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Hr__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_alphap__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_alphap__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_kappaT__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_kappaT__SWIG_1(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Ar__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Ar__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Z__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Z__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Sr__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Sr__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_betaV__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_betaV__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_betaV__SWIG_2(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Sm__SWIG_0(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Sm__SWIG_1(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Sm__SWIG_2(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_my__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, int i);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_my__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, int i);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_my__SWIG_2(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int i, int phase,
            ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_myr__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T, int i);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_myr__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x, int i);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_myr__SWIG_2(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int i, int phase,
            ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Psi__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_Psi__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_ModelN_PsiG__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_ModelN_PsiG__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern DoubleMatrixHandle CSharp_ModelN_PsiH__SWIG_0(
            ModelNHandle self, DoubleVectorHandle rho_i, double T);

        [DllImport(Library)]
        internal static extern DoubleMatrixHandle CSharp_ModelN_PsiH__SWIG_1(
            ModelNHandle self, double rho, double T, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern int CSharp_ModelN_vcalc(
            ModelNHandle self, double p, double T, DoubleVectorHandle x, int mode, ref double rho_a,
            ref double rho_b);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_alloc(ModelNHandle self, int n, byte[] eos);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_par_alloc(ModelNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_par_in(ModelNHandle self, IntPtr f, int i, int j);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_par_out(
            ModelNHandle self, IntPtr f, int i, int j);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_ModelN_ppar(ModelNHandle self, int k, int i, int j);

        [DllImport(Library)]
        internal static extern double CSharp_ModelN_param__SWIG_0(
            ModelNHandle self, int k, int i, int j);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_param__SWIG_1(
            ModelNHandle self, int k, int i, int j, double value);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_ModelN_mixpar(
            ModelNHandle self, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern int CSharp_ModelN_mmth(ModelNHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_ModelN_getModel1i(ModelNHandle self, int i);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_load(ModelNHandle self, byte[] eos, byte[] mth);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_store2(ModelNHandle self, byte[] eos, byte[] mth);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_show2(
            ModelNHandle self, byte[] title, DoubleVectorHandle v);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_intro(ModelNHandle self, byte[] title, int flags);

        [DllImport(Library)]
        internal static extern int CSharp_ModelN_id__SWIG_0(ModelNHandle self, int i, int j);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_id__SWIG_1(
            ModelNHandle self, int i, int j, int value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_ModelN_comment__SWIG_0(
            ModelNHandle self, int i, int j);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_comment__SWIG_1(
            ModelNHandle self, int i, int j, byte[] text);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_ModelN_eos_get(ModelNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_eos_set(ModelNHandle self, byte[] text);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_ModelN_mth_get(ModelNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_mth_set(ModelNHandle self, byte[] text);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_ModelN_mdl1_get(ModelNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_ModelN_mdl1_set(ModelNHandle self, IntPtr v);

        [DllImport(Library)]
        internal static extern void CSharp_delete_ModelN(IntPtr self);
    }
}
