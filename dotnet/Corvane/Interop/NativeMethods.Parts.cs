// Ideal gas, solid phases, viscosity.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
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
    }
}
