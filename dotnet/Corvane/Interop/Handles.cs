// Written by scripts/bindings: the handles of native objects, and how each is released.
using System;

namespace Corvane.Interop
{
    internal sealed class DoubleVectorHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly DoubleVectorHandle None = new DoubleVectorHandle(IntPtr.Zero, null);

        private DoubleVectorHandle() { }

        internal DoubleVectorHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_doubleV(address);
    }

    internal sealed class IntVectorHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly IntVectorHandle None = new IntVectorHandle(IntPtr.Zero, null);

        private IntVectorHandle() { }

        internal IntVectorHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_intV(address);
    }

    internal sealed class DoubleMatrixHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly DoubleMatrixHandle None = new DoubleMatrixHandle(IntPtr.Zero, null);

        private DoubleMatrixHandle() { }

        internal DoubleMatrixHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_doubleM(address);
    }

    internal sealed class PhdescVectorHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly PhdescVectorHandle None = new PhdescVectorHandle(IntPtr.Zero, null);

        private PhdescVectorHandle() { }

        internal PhdescVectorHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_phdescV(address);
    }

    internal sealed class SaturationHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly SaturationHandle None = new SaturationHandle(IntPtr.Zero, null);

        private SaturationHandle() { }

        internal SaturationHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.Corvane_delete_Saturation(address);
    }

    internal sealed class Model1Handle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly Model1Handle None = new Model1Handle(IntPtr.Zero, null);

        private Model1Handle() { }

        internal Model1Handle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.Corvane_detach1(address, IntPtr.Zero);
    }

    internal sealed class ModelNHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly ModelNHandle None = new ModelNHandle(IntPtr.Zero, null);

        private ModelNHandle() { }

        internal ModelNHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.Corvane_detachN(address, IntPtr.Zero);
    }

    internal sealed class IdealHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly IdealHandle None = new IdealHandle(IntPtr.Zero, null);

        private IdealHandle() { }

        internal IdealHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_Ideal(address);
    }

    internal sealed class SolidHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly SolidHandle None = new SolidHandle(IntPtr.Zero, null);

        private SolidHandle() { }

        internal SolidHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_Solid(address);
    }

    internal sealed class SublHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly SublHandle None = new SublHandle(IntPtr.Zero, null);

        private SublHandle() { }

        internal SublHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_Subl(address);
    }

    internal sealed class ViscoHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly ViscoHandle None = new ViscoHandle(IntPtr.Zero, null);

        private ViscoHandle() { }

        internal ViscoHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_Visco(address);
    }

    internal sealed class ThExceptionHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly ThExceptionHandle None = new ThExceptionHandle(IntPtr.Zero, null);

        private ThExceptionHandle() { }

        internal ThExceptionHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_ThException(address);
    }

    internal sealed class Pass1Handle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly Pass1Handle None = new Pass1Handle(IntPtr.Zero, null);

        private Pass1Handle() { }

        internal Pass1Handle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_pass1(address);
    }

    internal sealed class PassNHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly PassNHandle None = new PassNHandle(IntPtr.Zero, null);

        private PassNHandle() { }

        internal PassNHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_passN(address);
    }

    internal sealed class PhdescHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly PhdescHandle None = new PhdescHandle(IntPtr.Zero, null);

        private PhdescHandle() { }

        internal PhdescHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_phdesc(address);
    }

    internal sealed class PassFfeNHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly PassFfeNHandle None = new PassFfeNHandle(IntPtr.Zero, null);

        private PassFfeNHandle() { }

        internal PassFfeNHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.CSharp_delete_pass_ffeN(address);
    }

    internal sealed class FluidHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly FluidHandle None = new FluidHandle(IntPtr.Zero, null);

        private FluidHandle() { }

        internal FluidHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.Corvane_release(address);
    }

    internal sealed class MixtureHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly MixtureHandle None = new MixtureHandle(IntPtr.Zero, null);

        private MixtureHandle() { }

        internal MixtureHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.Corvane_release(address);
    }

    internal sealed class ResultHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly ResultHandle None = new ResultHandle(IntPtr.Zero, null);

        private ResultHandle() { }

        internal ResultHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) =>
            NativeMethods.Corvane_release(address);
    }
}
