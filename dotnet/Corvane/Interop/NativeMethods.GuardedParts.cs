// Ideal gas, solid phases, viscosity: operations that can fail.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
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
    }
}
