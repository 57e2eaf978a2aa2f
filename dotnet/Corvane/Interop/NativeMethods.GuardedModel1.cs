// The pure-substance model: operations that can fail.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
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
    }
}
