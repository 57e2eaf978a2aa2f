// Written by scripts/bindings: the flat interface, from signatures.txt.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_new_doubleV__SWIG_0(int n);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_new_doubleV__SWIG_1();

        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_new_doubleV__SWIG_2(DoubleVectorHandle v);

        [DllImport(Library)]
        internal static extern void CSharp_delete_doubleV(IntPtr self);

        [DllImport(Library)]
        internal static extern int CSharp_doubleV_size__SWIG_0(DoubleVectorHandle self);

        [DllImport(Library)]
        internal static extern int CSharp_doubleV_size__SWIG_1(DoubleVectorHandle self, int n);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_doubleV_first__SWIG_0(DoubleVectorHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_doubleV_last__SWIG_0(DoubleVectorHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_doubleV_getItem__SWIG_0(
            DoubleVectorHandle self, int i);

        [DllImport(Library)]
        internal static extern double CSharp_doubleV_getItemValue(DoubleVectorHandle self, int i);

        [DllImport(Library)]
        internal static extern void CSharp_doubleV_setItemValue(
            DoubleVectorHandle self, int i, double x);

        [DllImport(Library)]
        internal static extern int CSharp_doubleV_find_idx(DoubleVectorHandle self, ref int key);

        [DllImport(Library)]
        internal static extern double CSharp_doubleV_find_val(DoubleVectorHandle self, ref int key);

        [DllImport(Library)]
        internal static extern void CSharp_doubleV_func(DoubleVectorHandle self, RealFunction f);

        [DllImport(Library)]
        internal static extern double CSharp_doubleV_polynomial(DoubleVectorHandle self, double x);

        [DllImport(Library)]
        internal static extern int CSharp_doubleV_print__SWIG_0(
            DoubleVectorHandle self, IntPtr f, byte[] head, byte[] fmt, byte[] tail);

        [DllImport(Library)]
        internal static extern int CSharp_doubleV_print__SWIG_1(
            DoubleVectorHandle self, IntPtr f, byte[] fmt);

        [DllImport(Library)]
        internal static extern int CSharp_doubleV_read(
            DoubleVectorHandle self, IntPtr f, byte[] fmt);

        [DllImport(Library)]
        internal static extern void CSharp_doubleV_ramp(
            DoubleVectorHandle self, double start, double step);

        [DllImport(Library)]
        internal static extern void CSharp_doubleV_set(DoubleVectorHandle self, double x);

        [DllImport(Library)]
        internal static extern double CSharp_doubleV_sum(DoubleVectorHandle self);

        [DllImport(Library)]
        internal static extern double CSharp_doubleV_sum2(DoubleVectorHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_doubleV_urand(DoubleVectorHandle self);

        [DllImport(Library)]
        internal static extern IntVectorHandle CSharp_new_intV__SWIG_0(int n);

        [DllImport(Library)]
        internal static extern IntVectorHandle CSharp_new_intV__SWIG_1();

        [DllImport(Library)]
        internal static extern IntVectorHandle CSharp_new_intV__SWIG_2(IntVectorHandle v);

        [DllImport(Library)]
        internal static extern void CSharp_delete_intV(IntPtr self);

        [DllImport(Library)]
        internal static extern int CSharp_intV_size__SWIG_0(IntVectorHandle self);

        [DllImport(Library)]
        internal static extern int CSharp_intV_size__SWIG_1(IntVectorHandle self, int n);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_intV_first__SWIG_0(IntVectorHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_intV_last__SWIG_0(IntVectorHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_intV_getItem__SWIG_0(IntVectorHandle self, int i);

        [DllImport(Library)]
        internal static extern int CSharp_intV_getItemValue(IntVectorHandle self, int i);

        [DllImport(Library)]
        internal static extern void CSharp_intV_setItemValue(IntVectorHandle self, int i, int x);

        [DllImport(Library)]
        internal static extern int CSharp_intV_find_idx(IntVectorHandle self, ref int key);

        [DllImport(Library)]
        internal static extern int CSharp_intV_find_val(IntVectorHandle self, ref int key);

        [DllImport(Library)]
        internal static extern void CSharp_intV_func(IntVectorHandle self, IntFunction f);

        [DllImport(Library)]
        internal static extern int CSharp_intV_polynomial(IntVectorHandle self, int x);

        [DllImport(Library)]
        internal static extern int CSharp_intV_print__SWIG_0(
            IntVectorHandle self, IntPtr f, byte[] head, byte[] fmt, byte[] tail);

        [DllImport(Library)]
        internal static extern int CSharp_intV_print__SWIG_1(
            IntVectorHandle self, IntPtr f, byte[] fmt);

        [DllImport(Library)]
        internal static extern int CSharp_intV_read(IntVectorHandle self, IntPtr f, byte[] fmt);

        [DllImport(Library)]
        internal static extern void CSharp_intV_ramp(IntVectorHandle self, int start, int step);

        [DllImport(Library)]
        internal static extern void CSharp_intV_set(IntVectorHandle self, int x);

        [DllImport(Library)]
        internal static extern int CSharp_intV_sum(IntVectorHandle self);

        [DllImport(Library)]
        internal static extern int CSharp_intV_sum2(IntVectorHandle self);

        [DllImport(Library)]
        internal static extern DoubleMatrixHandle CSharp_new_doubleM__SWIG_0(int rows, int cols);

        [DllImport(Library)]
        internal static extern DoubleMatrixHandle CSharp_new_doubleM__SWIG_1(int rows);

        [DllImport(Library)]
        internal static extern DoubleMatrixHandle CSharp_new_doubleM__SWIG_2();

        [DllImport(Library)]
        internal static extern void CSharp_delete_doubleM(IntPtr self);

        [DllImport(Library)]
        internal static extern int CSharp_doubleM_rows(DoubleMatrixHandle self);

        [DllImport(Library)]
        internal static extern int CSharp_doubleM_cols(DoubleMatrixHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_doubleM_size(
            DoubleMatrixHandle self, int rows, int cols);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_doubleM_I(DoubleMatrixHandle self);

        [DllImport(Library)]
        internal static extern double CSharp_doubleM_det(DoubleMatrixHandle self);

        [DllImport(Library)]
        internal static extern ThExceptionHandle CSharp_new_ThException__SWIG_0(int number);

        [DllImport(Library)]
        internal static extern ThExceptionHandle CSharp_new_ThException__SWIG_1(
            int number, int info);

        [DllImport(Library)]
        internal static extern void CSharp_delete_ThException(IntPtr self);

        [DllImport(Library)]
        internal static extern int CSharp_ThException_number(ThExceptionHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_ThException_message(ThExceptionHandle self);

        [DllImport(Library)]
        internal static extern int CSharp_th_namelength_get();

        [DllImport(Library)]
        internal static extern int CSharp_th_eqnlength_get();

        [DllImport(Library)]
        internal static extern int CSharp_th_commlength_get();

        [DllImport(Library)]
        internal static extern double CSharp_R_get();

        [DllImport(Library)]
        internal static extern double CSharp_NA_get();

        [DllImport(Library)]
        internal static extern double CSharp_kB_get();

        [DllImport(Library)]
        internal static extern double CSharp_hP_get();

        [DllImport(Library)]
        internal static extern double CSharp_pref_get();

        [DllImport(Library)]
        internal static extern double CSharp_th_inc0_get();

        [DllImport(Library)]
        internal static extern double CSharp_th_inc1_get();

        [DllImport(Library)]
        internal static extern double CSharp_th_veps_get();

        [DllImport(Library)]
        internal static extern double CSharp_ran_shuffle();

        [DllImport(Library)]
        internal static extern Model1Handle CSharp_attach1(byte[] eos);

        [DllImport(Library)]
        internal static extern ModelNHandle CSharp_attachN(byte[] eos, byte[] mixing);

        [DllImport(Library)]
        internal static extern int CSharp_read_vars(
            byte[] prompt, ref double x1, ref double x2, ref double dx);

        [DllImport(Library)]
        internal static extern int CSharp_recognize(byte[] name, IntPtr table);

        [DllImport(Library)]
        internal static extern double CSharp_xtoz(double x);

        [DllImport(Library)]
        internal static extern double CSharp_ztox(double z);

        [DllImport(Library)]
        internal static extern double CSharp_adjust_x(int i, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern void CSharp_read_r(byte[] prompt, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern void CSharp_read_x(byte[] prompt, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern int CSharp_volav(
            CorvaneHandle model, int kind, double p, double T, DoubleVectorHandle x, double d,
            ref double rho);

        [DllImport(Library)]
        internal static extern int CSharp_volf1(
            Model1Handle model, double p, double T, double vmin, ref double rho1, ref double rho2);

        [DllImport(Library)]
        internal static extern uint CSharp_volnewt(
            CorvaneHandle model, int kind, double p, double T, DoubleVectorHandle x, double d,
            ref double rho);

        [DllImport(Library)]
        internal static extern int CSharp_volume(
            CorvaneHandle model, int kind, double p, double T, DoubleVectorHandle x, double d,
            DoubleVectorHandle roots);

        [DllImport(Library)]
        internal static extern void CSharp_vle1_T(
            Model1Handle model, double T, int cont, ref double p, ref double rhoL, ref double rhoV);

        [DllImport(Library)]
        internal static extern void CSharp_vle1_p(
            Model1Handle model, double p, int cont, ref double T, ref double rhoL, ref double rhoV);

        [DllImport(Library)]
        internal static extern double CSharp_maxwell(
            Model1Handle model, double p, double T, ref double rhoL, ref double rhoV);

        [DllImport(Library)]
        internal static extern void CSharp_vleN_T(
            ModelNHandle model, double T, DoubleVectorHandle x, ref double p, ref double rho1,
            DoubleVectorHandle rho2);

        [DllImport(Library)]
        internal static extern void CSharp_vleN_p(
            ModelNHandle model, double p, DoubleVectorHandle x, ref double T, ref double rho1,
            DoubleVectorHandle rho2);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_objffeN(
            DoubleVectorHandle u, CorvaneHandle ctx);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_ffinit(
            ModelNHandle model, double p, double T);

        [DllImport(Library)]
        internal static extern void CSharp_equil_min(
            ModelNHandle m, double p, double T, PhdescVectorHandle ph, DoubleVectorHandle x);

        [DllImport(Library)]
        internal static extern void CSharp_list_different(
            DoubleVectorHandle a, double d, DoubleVectorHandle list, ref int count,
            IntVectorHandle idx);

        [DllImport(Library)]
        internal static extern void CSharp_equil2s(
            ModelNHandle m, double p, double T, DoubleVectorHandle x, int phase, double d,
            DoubleVectorHandle rho, ref int i);

        [DllImport(Library)]
        internal static extern void CSharp_equil2(
            ModelNHandle m, double p, double T, DoubleVectorHandle x, DoubleVectorHandle rho);

        [DllImport(Library)]
        internal static extern void CSharp_crit_slope_x(
            ModelNHandle m, DoubleVectorHandle x, ref double s, DoubleMatrixHandle line);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Ak(Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Am(Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Ar(Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Sk(Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Um(Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Z(Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_pV(Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_B(Model1Handle self, double T, int n);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Vm(
            Model1Handle self, double p, double T, int phase);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_CVm__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_CVm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_CVr__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_CVr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Cpm__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Cpm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Cpr__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Cpr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Ge__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Ge__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Gm__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Gm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Gr__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Gr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Hm__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Hm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Hr__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Hr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Sm__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Sm__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Sr__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Sr__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Ur__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Ur__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_alphap__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_alphap__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_betaV__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_betaV__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_kappaT__SWIG_0(
            Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_kappaT__SWIG_1(
            Model1Handle self, double p, double T, int phase, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_M__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_M__SWIG_1(Model1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_vs__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_vs__SWIG_1(Model1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Ts__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_Ts__SWIG_1(Model1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_Tcrit__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_Tcrit__SWIG_1(Model1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_pcrit__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_pcrit__SWIG_1(Model1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_vcrit__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_vcrit__SWIG_1(Model1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_omega__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_omega__SWIG_1(Model1Handle self, double value);

        [DllImport(Library)]
        internal static extern DoubleVectorHandle CSharp_Model1_crit(
            Model1Handle self, double T, double rho, double Zt);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_param__SWIG_0(Model1Handle self, int i);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_param__SWIG_1(Model1Handle self, int i, double x);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_params_(Model1Handle self, DoubleVectorHandle v);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Model1_ppar__SWIG_0(Model1Handle self, int i);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_par_in(Model1Handle self, IntPtr f, int mode);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_par_out(Model1Handle self, IntPtr f);

        [DllImport(Library)]
        internal static extern int CSharp_Model1_mpar(Model1Handle self);

        [DllImport(Library)]
        internal static extern int CSharp_Model1_madj(Model1Handle self);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_xinit(
            Model1Handle self, double p, double T, int phase);

        [DllImport(Library)]
        internal static extern int CSharp_Model1_vcalc(
            Model1Handle self, double p, double T, int phase, ref double rho1, ref double rho2);

        [DllImport(Library)]
        internal static extern double CSharp_Model1_xrho(Model1Handle self, double T, int phase);

        [DllImport(Library)]
        internal static extern int CSharp_Model1_load(Model1Handle self, byte[] eos);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_load_thchem(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_store(Model1Handle self, byte[] eos);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_show1(Model1Handle self, byte[] title);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_intro(Model1Handle self, byte[] title, int level);

        [DllImport(Library)]
        internal static extern uint CSharp_Model1_off(Model1Handle self, double rho, double T);

        [DllImport(Library)]
        internal static extern int CSharp_Model1_id__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_id__SWIG_1(Model1Handle self, int id);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Model1_name__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_name__SWIG_1(Model1Handle self, byte[] name);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Model1_comment__SWIG_0(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_comment__SWIG_1(Model1Handle self, byte[] text);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Model1_eos(Model1Handle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Model1_ideal_get(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_ideal_set(Model1Handle self, IdealHandle value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Model1_solid_get(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_solid_set(Model1Handle self, SolidHandle value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Model1_visco_get(Model1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_Model1_visco_set(Model1Handle self, ViscoHandle value);

        [DllImport(Library)]
        internal static extern void CSharp_delete_Model1(IntPtr self);

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

        [DllImport(Library)]
        internal static extern IdealHandle CSharp_new_Ideal();

        [DllImport(Library)]
        internal static extern void CSharp_delete_Ideal(IntPtr self);

        [DllImport(Library)]
        internal static extern double CSharp_Ideal_Am(IdealHandle self, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Ideal_CVm(IdealHandle self, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Ideal_Cpm(IdealHandle self, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Ideal_Gm(IdealHandle self, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Ideal_Hm(IdealHandle self, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Ideal_Sm(IdealHandle self, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Ideal_Um(IdealHandle self, double T);

        [DllImport(Library)]
        internal static extern void CSharp_Ideal_info(IdealHandle self);

        [DllImport(Library)]
        internal static extern int CSharp_Ideal_interval(IdealHandle self, double T);

        [DllImport(Library)]
        internal static extern void CSharp_Ideal_load(IdealHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Ideal_offset(IdealHandle self, double dh, double ds);

        [DllImport(Library)]
        internal static extern void CSharp_Ideal_reset(IdealHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Ideal_model__SWIG_0(IdealHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Ideal_model__SWIG_1(
            IdealHandle self, Model1Handle model);

        [DllImport(Library)]
        internal static extern SolidHandle CSharp_new_Solid();

        [DllImport(Library)]
        internal static extern void CSharp_delete_Solid(IntPtr self);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Ae__SWIG_0(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Ae__SWIG_1(
            SolidHandle self, double p, double T, ref int i, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Am__SWIG_0(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Am__SWIG_1(
            SolidHandle self, double p, double T, ref int i, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Gm__SWIG_0(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Gm__SWIG_1(
            SolidHandle self, double p, double T, ref int i, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Ge(
            SolidHandle self, double p, double T, ref int i, ref double rho);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_He(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Hm(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Se(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Sm(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Ue(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Um(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Vm(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_d(SolidHandle self, double p, double T);

        [DllImport(Library)]
        internal static extern int CSharp_Solid_sge(
            SolidHandle self, double T, int i, ref double psub, ref double v, ref double kappa);

        [DllImport(Library)]
        internal static extern double CSharp_Solid_Ttrp(SolidHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Solid_id(SolidHandle self, int i);

        [DllImport(Library)]
        internal static extern void CSharp_Solid_info(SolidHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Solid_load(SolidHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Solid_reset(SolidHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Solid_model__SWIG_0(SolidHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Solid_model__SWIG_1(
            SolidHandle self, Model1Handle model);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Solid_sg_get(SolidHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Solid_sg_set(SolidHandle self, IntPtr v);

        [DllImport(Library)]
        internal static extern SublHandle CSharp_new_Subl();

        [DllImport(Library)]
        internal static extern void CSharp_delete_Subl(IntPtr self);

        [DllImport(Library)]
        internal static extern void CSharp_Subl_load(SublHandle self, IntPtr f);

        [DllImport(Library)]
        internal static extern ViscoHandle CSharp_new_Visco();

        [DllImport(Library)]
        internal static extern void CSharp_delete_Visco(IntPtr self);

        [DllImport(Library)]
        internal static extern double CSharp_Visco_eta(
            ViscoHandle self, double rho, double T, ref double pr, ref double pa);

        [DllImport(Library)]
        internal static extern double CSharp_Visco_eta0(ViscoHandle self, double T);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_intro(ViscoHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_load0(ViscoHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_load1(ViscoHandle self, byte[] set);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_set1(ViscoHandle self, DoubleVectorHandle v);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_set_comment(
            ViscoHandle self, byte[] text, ref int level);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_set_id(ViscoHandle self, int id);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_show(ViscoHandle self, double rms);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_store1(ViscoHandle self, byte[] set, double rms);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_reset(ViscoHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_Visco_model__SWIG_0(ViscoHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_Visco_model__SWIG_1(
            ViscoHandle self, Model1Handle model);

        [DllImport(Library)]
        internal static extern Pass1Handle CSharp_new_pass1();

        [DllImport(Library)]
        internal static extern void CSharp_delete_pass1(IntPtr self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_pass1_mdl1_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_mdl1_set(Pass1Handle self, Model1Handle value);

        [DllImport(Library)]
        internal static extern int CSharp_pass1_mode_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_mode_set(Pass1Handle self, int value);

        [DllImport(Library)]
        internal static extern double CSharp_pass1_p_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_p_set(Pass1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_pass1_rho_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_rho_set(Pass1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_pass1_T_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_T_set(Pass1Handle self, double value);

        [DllImport(Library)]
        internal static extern PassNHandle CSharp_new_passN();

        [DllImport(Library)]
        internal static extern void CSharp_delete_passN(IntPtr self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_passN_mdlN_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_mdlN_set(PassNHandle self, ModelNHandle value);

        [DllImport(Library)]
        internal static extern int CSharp_passN_i_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_i_set(PassNHandle self, int value);

        [DllImport(Library)]
        internal static extern double CSharp_passN_p_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_p_set(PassNHandle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_passN_rho_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_rho_set(PassNHandle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_passN_T_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_T_set(PassNHandle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_passN_h_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_h_set(PassNHandle self, double value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_passN_x_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_x_set(PassNHandle self, DoubleVectorHandle value);

        [DllImport(Library)]
        internal static extern PassFfeNHandle CSharp_new_pass_ffeN();

        [DllImport(Library)]
        internal static extern void CSharp_delete_pass_ffeN(IntPtr self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_pass_ffeN_m_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_m_set(PassFfeNHandle self, ModelNHandle value);

        [DllImport(Library)]
        internal static extern int CSharp_pass_ffeN_mode_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_mode_set(PassFfeNHandle self, int value);

        [DllImport(Library)]
        internal static extern double CSharp_pass_ffeN_p_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_p_set(PassFfeNHandle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_pass_ffeN_T_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_T_set(PassFfeNHandle self, double value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_pass_ffeN_xl_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_xl_set(
            PassFfeNHandle self, DoubleVectorHandle value);

        [DllImport(Library)]
        internal static extern PhdescHandle CSharp_new_phdesc();

        [DllImport(Library)]
        internal static extern void CSharp_delete_phdesc(IntPtr self);

        [DllImport(Library)]
        internal static extern int CSharp_phdesc_species_get(PhdescHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_phdesc_species_set(PhdescHandle self, int value);

        [DllImport(Library)]
        internal static extern int CSharp_phdesc_phase_get(PhdescHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_phdesc_phase_set(PhdescHandle self, int value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_prop_str_sname_get(IntPtr self);

        [DllImport(Library)]
        internal static extern void CSharp_prop_str_sname_set(IntPtr self, byte[] text);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_prop_str_lname_get(IntPtr self);

        [DllImport(Library)]
        internal static extern void CSharp_prop_str_lname_set(IntPtr self, byte[] text);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_prop_str_unit_get(IntPtr self);

        [DllImport(Library)]
        internal static extern void CSharp_prop_str_unit_set(IntPtr self, byte[] text);

        [DllImport(Library)]
        internal static extern int CSharp_prop_str_dimension_get(IntPtr self);

        [DllImport(Library)]
        internal static extern PhdescVectorHandle CSharp_new_phdescV__SWIG_0(int n);

        [DllImport(Library)]
        internal static extern void CSharp_delete_phdescV(IntPtr self);

        [DllImport(Library)]
        internal static extern int CSharp_phdescV_size(PhdescVectorHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_phdescV_getItem__SWIG_0(
            PhdescVectorHandle self, int i);

        [DllImport(Library)]
        internal static extern void CSharp_phdescV_setItemValue(
            PhdescVectorHandle self, int i, int species, int phase);
    }
}
