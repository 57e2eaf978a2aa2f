// Vectors and matrices: operations that can fail.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
        [DllImport(Library)]
        internal static extern double Corvane_doubleM_getItemValue(
            DoubleMatrixHandle self, int i, int j);

        [DllImport(Library)]
        internal static extern void Corvane_doubleM_setItemValue(
            DoubleMatrixHandle self, int i, int j, double x);

        [DllImport(Library)]
        internal static extern double Corvane_doubleM_det(
            DoubleMatrixHandle self, out CorvaneError error);

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
    }
}
