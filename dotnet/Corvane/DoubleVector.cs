// Vectors of real numbers.
using System;
using System.Collections;
using System.Collections.Generic;
using System.Runtime.InteropServices;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>A vector of real numbers that the library reads and writes.</summary>
    public sealed class DoubleVector : NativeObject, IReadOnlyList<double>
    {
        internal readonly DoubleVectorHandle Handle;

        internal DoubleVector(DoubleVectorHandle handle) : base(handle)
        {
            Handle = handle;
        }

        /// <summary>count zeros; empty for a negative count.</summary>
        /// <param name="count">Number of elements.</param>
        public DoubleVector(int count) : this(Make(count)) { }

        /// <summary>The given numbers.</summary>
        /// <param name="values">The elements, in any unit.</param>
        public DoubleVector(params double[] values) : this(Checked(values).Length)
        {
            CopyFrom(values);
        }

        /// <summary>A copy.</summary>
        /// <param name="other">What is copied.</param>
        public DoubleVector(DoubleVector other) : this(Copy(other)) { }

        /// <summary>Number of elements. Setting it keeps the common leading part.</summary>
        public int Count
        {
            get => CSharp_doubleV_size__SWIG_0(Handle);
            set => Check(Corvane_doubleV_size__SWIG_1(Handle, value, out CorvaneError e), ref e);
        }

        /// <summary>Element i, 0 &lt;= i &lt; Count.</summary>
        /// <param name="i">Number of the element, from 0.</param>
        public double this[int i]
        {
            get => CSharp_doubleV_getItemValue(Handle, InRange(i, Count, nameof(i)));
            set => CSharp_doubleV_setItemValue(Handle, InRange(i, Count, nameof(i)), value);
        }

        /// <summary>The sum of the elements.</summary>
        /// <returns>The sum, in the unit of the elements.</returns>
        public double Sum() => CSharp_doubleV_sum(Handle);

        /// <summary>The sum of their squares.</summary>
        /// <returns>The sum, in the squared unit of the elements.</returns>
        public double SumOfSquares() => CSharp_doubleV_sum2(Handle);

        /// <summary>Value at x of the polynomial with these coefficients, constant first.</summary>
        /// <param name="x">Where it is evaluated, in any unit.</param>
        /// <returns>The value, in the unit of the constant.</returns>
        public double Polynomial(double x) => CSharp_doubleV_polynomial(Handle, x);

        /// <summary>Index of the first smallest or largest element; 0 if empty.</summary>
        /// <param name="key">Which element: by value or by amount, smallest or largest.</param>
        /// <returns>Its number, from 0.</returns>
        public int IndexOf(Extremum key)
        {
            int native = (int)key;
            int index = CSharp_doubleV_find_idx(Handle, ref native);
            Callbacks.Raise();
            return index;
        }

        /// <summary>Sets every element to x.</summary>
        /// <param name="x">The value, in any unit.</param>
        public void Fill(double x) => CSharp_doubleV_set(Handle, x);

        /// <summary>Element i becomes start + i·step.</summary>
        /// <param name="start">Element 0, in any unit.</param>
        /// <param name="step">Difference of neighbours, in the same unit.</param>
        public void Ramp(double start, double step) => CSharp_doubleV_ramp(Handle, start, step);

        /// <summary>Makes it a random unit vector. Not empty.</summary>
        public void RandomUnit()
        {
            if (Count == 0) throw new InvalidOperationException("the vector is empty");
            CSharp_doubleV_urand(Handle);
        }

        /// <summary>Replaces every element x by f(x). If f throws, or changes the number of elements,
        /// the elements stay as f left them.</summary>
        /// <param name="f">The function of an element.</param>
        public void Transform(Func<double, double> f)
        {
            NotNull(f, nameof(f));
            // Not by the native loop: f may resize or dispose of what that walks along.
            CopyFrom(Array.ConvertAll(ToArray(), x => f(x)));
        }

        /// <summary>The elements as an array.</summary>
        /// <returns>A copy of the elements, in their unit.</returns>
        public double[] ToArray()
        {
            double[] values = new double[Count];
            WithData(data => Marshal.Copy(data, values, 0, values.Length), values.Length);
            return values;
        }

        /// <summary>Sets the elements; values has Count numbers.</summary>
        /// <param name="values">As many numbers, in any unit.</param>
        public void CopyFrom(double[] values)
        {
            if (Checked(values).Length != Count) throw new ArgumentException("wrong length");
            WithData(data => Marshal.Copy(values, 0, data, values.Length), values.Length);
        }

        /// <summary>The elements in order.</summary>
        /// <returns>An enumerator of a copy.</returns>
        public IEnumerator<double> GetEnumerator() => ((IEnumerable<double>)ToArray()).GetEnumerator();

        IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

        /// <summary>The elements, separated by commas, in the invariant culture.</summary>
        /// <returns>The text.</returns>
        public override string ToString() =>
            string.Join(", ", Array.ConvertAll(ToArray(), x => FormattableString.Invariant($"{x:R}")));

        private static DoubleVectorHandle Make(int count) =>
            Check(Corvane_new_doubleV__SWIG_0(count, out CorvaneError e), ref e);

        private static DoubleVectorHandle Copy(DoubleVector other) =>
            Check(Corvane_new_doubleV__SWIG_2(HandleOf(other), out CorvaneError e), ref e);

        private void WithData(Action<IntPtr> copy, int count)
        {
            if (count == 0) return;
            copy(CSharp_doubleV_first__SWIG_0(Handle));
            GC.KeepAlive(this);
        }

        private static double[] Checked(double[] values)
        {
            NotNull(values, nameof(values));
            return values;
        }

        internal static DoubleVectorHandle HandleOf(DoubleVector vector)
        {
            NotNull(vector, nameof(vector));
            return vector.Handle;
        }
    }

    /// <summary>Which extreme element to look for.</summary>
    public enum Extremum
    {
        /// <summary>The smallest.</summary>
        Minimum = 4,

        /// <summary>The largest.</summary>
        Maximum = 5
    }
}
