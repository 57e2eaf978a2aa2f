// Plug-ins, free functions, the saturation solver: operations that can fail.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
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
    }
}
