// Handles of models, their parts and the saturation solver.
using System;

namespace Corvane.Interop
{
    /// <summary>A pure-substance model; goes back to its plug-in.</summary>
    internal sealed class Model1Handle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly Model1Handle None = new Model1Handle(IntPtr.Zero, null);

        private Model1Handle() { }

        internal Model1Handle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.Corvane_detach1(address, IntPtr.Zero);
    }

    /// <summary>A mixture; goes back to its plug-in with its components.</summary>
    internal sealed class ModelNHandle : CorvaneHandle
    {
        /// <summary>Address 0, for optional arguments.</summary>
        internal static readonly ModelNHandle None = new ModelNHandle(IntPtr.Zero, null);

        private ModelNHandle() { }

        internal ModelNHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.Corvane_detachN(address, IntPtr.Zero);
    }

    /// <summary>Ideal-gas part.</summary>
    internal sealed class IdealHandle : CorvaneHandle
    {
        private IdealHandle() { }

        internal IdealHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_Ideal(address);
    }

    /// <summary>Solid phases.</summary>
    internal sealed class SolidHandle : CorvaneHandle
    {
        private SolidHandle() { }

        internal SolidHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_Solid(address);
    }

    /// <summary>One solid phase.</summary>
    internal sealed class SublHandle : CorvaneHandle
    {
        private SublHandle() { }

        internal SublHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_Subl(address);
    }

    /// <summary>Viscosity.</summary>
    internal sealed class ViscoHandle : CorvaneHandle
    {
        private ViscoHandle() { }

        internal ViscoHandle(IntPtr address, CorvaneHandle owner) : base(address, owner) { }

        protected override void Free(IntPtr address) => NativeMethods.CSharp_delete_Visco(address);
    }

    /// <summary>The memory of a saturation curve.</summary>
    internal sealed class SaturationHandle : CorvaneHandle
    {
        private SaturationHandle() { }

        protected override void Free(IntPtr address) => NativeMethods.Corvane_delete_Saturation(address);
    }
}
