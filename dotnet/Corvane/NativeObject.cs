// What all classes with a native object have in common.
using System;
using Corvane.Interop;

namespace Corvane
{
    /// <summary>
    /// An object of the native library. Dispose it, or leave it to the garbage collector; afterwards its
    /// members throw <see cref="ObjectDisposedException"/>, unless another object still needs it (the
    /// model of a saturation solver, the vector in a record): then it goes with that one. What it
    /// lends out (parts, components) is disposed with it.
    /// </summary>
    public abstract class NativeObject : IDisposable
    {
        internal NativeObject(CorvaneHandle handle)
        {
            NativeHandle = handle;
        }

        internal CorvaneHandle NativeHandle { get; }

        /// <summary>True if disposing this object frees the native one.</summary>
        public bool IsOwner => NativeHandle.Owned;

        /// <summary>Releases the native object; further calls do nothing.</summary>
        public virtual void Dispose()
        {
            NativeHandle.Dispose();
        }

        internal static void NotNull(object argument, string name)
        {
            if (argument == null) throw new ArgumentNullException(name);
        }

        internal static int InRange(int i, int count, string name)
        {
            if (i < 0 || i >= count) throw new ArgumentOutOfRangeException(name);
            return i;
        }
    }
}
