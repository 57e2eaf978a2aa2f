// Handles of native objects.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    /// <summary>
    /// A handle that owns a native object, or borrows one that lives inside another. A borrowed handle
    /// keeps its owner from being released, and so does a record the objects its pointers name: a
    /// native object goes when the last handle that needs it has gone, in whatever order they are
    /// disposed or finalized. Passed to an import, a handle also outlives the call.
    /// </summary>
    internal abstract class CorvaneHandle : SafeHandle
    {
        private const int OwnerSlot = 0, Slots = 3;

        private readonly bool owned;
        private CorvaneHandle[] held;

        /// <summary>For the marshaller: the result of an import that makes an object.</summary>
        protected CorvaneHandle() : base(IntPtr.Zero, true)
        {
            owned = true;
        }

        /// <summary>Borrows the object at an address from the owner (null: from nobody).</summary>
        protected CorvaneHandle(IntPtr address, CorvaneHandle owner) : base(IntPtr.Zero, true)
        {
            if (owner != null) Hold(OwnerSlot, owner);
            SetHandle(address);
        }

        public override bool IsInvalid => handle == IntPtr.Zero;

        internal bool Owned => owned;

        /// <summary>Keeps another object alive for this one, in place of what the slot held.</summary>
        internal void Hold(int slot, CorvaneHandle other)
        {
            bool added = false;
            other?.DangerousAddRef(ref added);
            if (held == null) held = new CorvaneHandle[Slots];
            CorvaneHandle before = held[slot];
            held[slot] = added ? other : null;
            before?.DangerousRelease();
        }

        /// <summary>Frees an owned object. Must not throw.</summary>
        protected abstract void Free(IntPtr address);

        protected sealed override bool ReleaseHandle()
        {
            if (owned) Free(handle);
            if (held != null)
                foreach (CorvaneHandle other in held) other?.DangerousRelease();
            return true;
        }
    }
}
