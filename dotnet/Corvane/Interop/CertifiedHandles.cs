// Handles of what is opened by name, and of results.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    /// <summary>Called after every point of a trace; 0 ends it. Must not throw.</summary>
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    internal delegate int ProgressCallback(int points, IntPtr context);

    /// <summary>A pure substance opened by name.</summary>
    internal sealed class FluidHandle : CorvaneHandle
    {
        private FluidHandle() { }

        protected override void Free(IntPtr address) => NativeMethods.Corvane_release(address);
    }

    /// <summary>A mixture opened by name.</summary>
    internal sealed class MixtureHandle : CorvaneHandle
    {
        private MixtureHandle() { }

        protected override void Free(IntPtr address) => NativeMethods.Corvane_release(address);
    }

    /// <summary>A result.</summary>
    internal sealed class ResultHandle : CorvaneHandle
    {
        private ResultHandle() { }

        protected override void Free(IntPtr address) => NativeMethods.Corvane_release(address);
    }
}
