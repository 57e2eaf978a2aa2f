// Handles of containers.
using System;

namespace Corvane.Interop
{
    /// <summary>Vector&lt;double&gt;.</summary>
    internal sealed class DoubleVectorHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly DoubleVectorHandle None = new DoubleVectorHandle(IntPtr.Zero, null);

        private DoubleVectorHandle() { }

        internal DoubleVectorHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_doubleV(address);
    }

    /// <summary>Vector&lt;int&gt;.</summary>
    internal sealed class IntVectorHandle : CorvaneHandle
    {
        private IntVectorHandle() { }

        internal IntVectorHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_intV(address);
    }

    /// <summary>Matrix&lt;double&gt;.</summary>
    internal sealed class DoubleMatrixHandle : CorvaneHandle
    {
        private DoubleMatrixHandle() { }

        internal DoubleMatrixHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_doubleM(address);
    }
}
