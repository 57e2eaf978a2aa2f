// Written by scripts/bindings: the guarded interface, from signatures.txt.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
        [DllImport(Library)]
        internal static extern DoubleVectorHandle Corvane_new_doubleV__SWIG_0(
            int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle Corvane_new_doubleV__SWIG_2(
            DoubleVectorHandle v, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_doubleV_size__SWIG_1(
            DoubleVectorHandle self, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern IntVectorHandle Corvane_new_intV__SWIG_0(
            int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern IntVectorHandle Corvane_new_intV__SWIG_2(
            IntVectorHandle v, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_intV_size__SWIG_1(
            IntVectorHandle self, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleMatrixHandle Corvane_new_doubleM__SWIG_0(
            int rows, int cols, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_doubleM_size(
            DoubleMatrixHandle self, int rows, int cols, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_doubleM_det(
            DoubleMatrixHandle self, out CorvaneError error);

        [DllImport(Library)]
        internal static extern Model1Handle Corvane_attach1(byte[] eos, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ModelNHandle Corvane_attachN(
            byte[] eos, byte[] mixing, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_read_vars(
            byte[] prompt, ref double x1, ref double x2, ref double dx, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_adjust_x(
            int i, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_read_r(
            byte[] prompt, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_read_x(
            byte[] prompt, DoubleVectorHandle x, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_volav(
            CorvaneHandle model, int kind, double p, double T, DoubleVectorHandle x, double d,
            ref double rho, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_volf1(
            Model1Handle model, double p, double T, double vmin, ref double rho1, ref double rho2,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern uint Corvane_volnewt(
            CorvaneHandle model, int kind, double p, double T, DoubleVectorHandle x, double d,
            ref double rho, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_volume(
            CorvaneHandle model, int kind, double p, double T, DoubleVectorHandle x, double d,
            DoubleVectorHandle roots, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_vle1_T(
            Model1Handle model, double T, int cont, ref double p, ref double rhoL, ref double rhoV,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_vle1_p(
            Model1Handle model, double p, int cont, ref double T, ref double rhoL, ref double rhoV,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_maxwell(
            Model1Handle model, double p, double T, ref double rhoL, ref double rhoV,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_vleN_T(
            ModelNHandle model, double T, DoubleVectorHandle x, ref double p, ref double rho1,
            DoubleVectorHandle rho2, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_vleN_p(
            ModelNHandle model, double p, DoubleVectorHandle x, ref double T, ref double rho1,
            DoubleVectorHandle rho2, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle Corvane_objffeN(
            DoubleVectorHandle u, CorvaneHandle ctx, out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle Corvane_ffinit(
            ModelNHandle model, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_equil_min(
            ModelNHandle m, double p, double T, PhdescVectorHandle ph, DoubleVectorHandle x,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_list_different(
            DoubleVectorHandle a, double d, DoubleVectorHandle list, ref int count,
            IntVectorHandle idx, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_equil2s(
            ModelNHandle m, double p, double T, DoubleVectorHandle x, int phase, double d,
            DoubleVectorHandle rho, ref int i, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_equil2(
            ModelNHandle m, double p, double T, DoubleVectorHandle x, DoubleVectorHandle rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_crit_slope_x(
            ModelNHandle m, DoubleVectorHandle x, ref double s, DoubleMatrixHandle line,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Ak(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Am(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Ar(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Sk(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Um(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Z(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_pV(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_B(
            Model1Handle self, double T, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Vm(
            Model1Handle self, double p, double T, int phase, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_CVm__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_CVm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_CVr__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_CVr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Cpm__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Cpm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Cpr__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Cpr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Ge__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Ge__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Gm__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Gm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Gr__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Gr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Hm__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Hm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Hr__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Hr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Sm__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Sm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Sr__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Sr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Ur__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_Ur__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_alphap__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_alphap__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_betaV__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_betaV__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_kappaT__SWIG_0(
            Model1Handle self, double rho, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_kappaT__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle Corvane_Model1_crit(
            Model1Handle self, double T, double rho, double Zt, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Model1_params_(
            Model1Handle self, DoubleVectorHandle v, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Model1_par_in(
            Model1Handle self, IntPtr f, int mode, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Model1_par_out(
            Model1Handle self, IntPtr f, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_xinit(
            Model1Handle self, double p, double T, int phase, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Model1_vcalc(
            Model1Handle self, double p, double T, int phase, ref double rho1, ref double rho2,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Model1_xrho(
            Model1Handle self, double T, int phase, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Model1_load(
            Model1Handle self, byte[] eos, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Model1_load_thchem(
            Model1Handle self, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Model1_store(
            Model1Handle self, byte[] eos, out CorvaneError error);

        [DllImport(Library)]
        internal static extern uint Corvane_Model1_off(
            Model1Handle self, double rho, double T, out CorvaneError error);

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

        [DllImport(Library)]
        internal static extern double Corvane_Ideal_Am(
            IdealHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Ideal_CVm(
            IdealHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Ideal_Cpm(
            IdealHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Ideal_Gm(
            IdealHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Ideal_Hm(
            IdealHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Ideal_Sm(
            IdealHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Ideal_Um(
            IdealHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Ideal_interval(
            IdealHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Ideal_load(IdealHandle self, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Ideal_offset(
            IdealHandle self, double dh, double ds, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Ae__SWIG_0(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Ae__SWIG_1(
            SolidHandle self, double p, double T, ref int i, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Am__SWIG_0(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Am__SWIG_1(
            SolidHandle self, double p, double T, ref int i, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Gm__SWIG_0(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Gm__SWIG_1(
            SolidHandle self, double p, double T, ref int i, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Ge(
            SolidHandle self, double p, double T, ref int i, ref double rho,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_He(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Hm(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Se(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Sm(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Ue(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Um(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_Vm(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Solid_d(
            SolidHandle self, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Solid_sge(
            SolidHandle self, double T, int i, ref double psub, ref double v, ref double kappa,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Solid_load(SolidHandle self, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Subl_load(
            SublHandle self, IntPtr f, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Visco_eta(
            ViscoHandle self, double rho, double T, ref double pr, ref double pa,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Visco_eta0(
            ViscoHandle self, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Visco_load0(ViscoHandle self, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Visco_load1(
            ViscoHandle self, byte[] set, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Visco_set1(
            ViscoHandle self, DoubleVectorHandle v, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Visco_set_comment(
            ViscoHandle self, byte[] text, ref int level, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Visco_store1(
            ViscoHandle self, byte[] set, double rms, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_detach1(IntPtr model, IntPtr error);

        [DllImport(Library)]
        internal static extern void Corvane_detachN(IntPtr model, IntPtr error);

        [DllImport(Library)]
        internal static extern SaturationHandle Corvane_new_Saturation(out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_delete_Saturation(IntPtr self);

        [DllImport(Library)]
        internal static extern void Corvane_Saturation_at_T(
            SaturationHandle self, Model1Handle model, double T, int cont, ref double p,
            ref double rhoL, ref double rhoV, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_Saturation_at_p(
            SaturationHandle self, Model1Handle model, double p, int cont, ref double T,
            ref double rhoL, ref double rhoV, out CorvaneError error);

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
        internal static extern double Corvane_doubleM_getItemValue(
            DoubleMatrixHandle self, int i, int j);

        [DllImport(Library)]
        internal static extern void Corvane_doubleM_setItemValue(
            DoubleMatrixHandle self, int i, int j, double x);
    }
}
