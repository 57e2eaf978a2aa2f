// Vectors and matrices.
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
    }
}
