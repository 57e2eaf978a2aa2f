// Matrices of real numbers.
using System;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>A matrix of real numbers.</summary>
    public sealed class DoubleMatrix : NativeObject
    {
        internal readonly DoubleMatrixHandle Handle;

        internal DoubleMatrix(DoubleMatrixHandle handle) : base(handle)
        {
            Handle = handle;
        }

        /// <summary>rows × columns zeros.</summary>
        /// <param name="rows">Number of rows.</param>
        /// <param name="columns">Number of columns.</param>
        public DoubleMatrix(int rows, int columns) : this(Make(rows, columns)) { }

        /// <summary>Number of rows.</summary>
        public int Rows => CSharp_doubleM_rows(Handle);

        /// <summary>Number of columns.</summary>
        public int Columns => CSharp_doubleM_cols(Handle);

        /// <summary>Element (i, j), from 0.</summary>
        /// <param name="i">Number of the row, from 0.</param>
        /// <param name="j">Number of the column, from 0.</param>
        public double this[int i, int j]
        {
            get => Corvane_doubleM_getItemValue(
                Handle, InRange(i, Rows, nameof(i)), InRange(j, Columns, nameof(j)));
            set => Corvane_doubleM_setItemValue(
                Handle, InRange(i, Rows, nameof(i)), InRange(j, Columns, nameof(j)), value);
        }

        /// <summary>Resizes, keeping the common leading part.</summary>
        /// <param name="rows">Number of rows.</param>
        /// <param name="columns">Number of columns.</param>
        public void Resize(int rows, int columns)
        {
            NotNegative(rows, columns);
            Corvane_doubleM_size(Handle, rows, columns, out CorvaneError e);
            e.Raise();
        }

        /// <summary>Writes ones on the leading diagonal and zeros elsewhere.</summary>
        public void SetIdentity() => CSharp_doubleM_I(Handle);

        /// <summary>Determinant, by cofactors: for orders up to about 8. Numerical failure 3 for a
        /// matrix that is not square.</summary>
        /// <returns>The determinant, in the unit of the elements to the power of the
        /// order.</returns>
        /// <exception cref="ThermodynamicException">Numerical 3: not square.</exception>
        public double Determinant() =>
            Check(Corvane_doubleM_det(Handle, out CorvaneError e), ref e);

        private static DoubleMatrixHandle Make(int rows, int columns)
        {
            NotNegative(rows, columns);
            return Check(Corvane_new_doubleM__SWIG_0(rows, columns, out CorvaneError e), ref e);
        }

        private static void NotNegative(int rows, int columns)
        {
            if (rows < 0) throw new ArgumentOutOfRangeException(nameof(rows));
            if (columns < 0) throw new ArgumentOutOfRangeException(nameof(columns));
        }

        internal static DoubleMatrixHandle HandleOf(DoubleMatrix matrix)
        {
            NotNull(matrix, nameof(matrix));
            return matrix.Handle;
        }
    }
}
