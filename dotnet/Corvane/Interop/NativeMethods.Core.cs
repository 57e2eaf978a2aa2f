// The exception type and the constants.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
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
    }
}
