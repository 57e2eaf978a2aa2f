// The pure-substance model.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
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
    }
}
