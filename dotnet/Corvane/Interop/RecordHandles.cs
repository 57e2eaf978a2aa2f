// Handles of records and of the exception object.
using System;

namespace Corvane.Interop
{
    /// <summary>Record pass1.</summary>
    internal sealed class Pass1Handle : CorvaneHandle
    {
        private Pass1Handle() { }

        internal Pass1Handle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_pass1(address);
    }

    /// <summary>Record passN.</summary>
    internal sealed class PassNHandle : CorvaneHandle
    {
        private PassNHandle() { }

        internal PassNHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_passN(address);
    }

    /// <summary>Record pass_ffeN.</summary>
    internal sealed class PassFfeNHandle : CorvaneHandle
    {
        private PassFfeNHandle() { }

        internal PassFfeNHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_pass_ffeN(address);
    }

    /// <summary>Record phdesc.</summary>
    internal sealed class PhdescHandle : CorvaneHandle
    {
        private PhdescHandle() { }

        internal PhdescHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_phdesc(address);
    }

    /// <summary>Vector&lt;phdesc&gt;.</summary>
    internal sealed class PhdescVectorHandle : CorvaneHandle
    {
        private PhdescVectorHandle() { }

        internal PhdescVectorHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_phdescV(address);
    }

    /// <summary>Exception object.</summary>
    internal sealed class ThExceptionHandle : CorvaneHandle
    {
        private ThExceptionHandle() { }

        internal ThExceptionHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_ThException(address);
    }
}
