// Free functions.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
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
    }
}
