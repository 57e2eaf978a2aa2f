// Outcome of a guarded call.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    /// <summary>The record CorvaneError of the guarded functions; blittable.</summary>
    [StructLayout(LayoutKind.Sequential)]
    internal unsafe struct CorvaneError
    {
        private const int MessageSize = 384;

        internal int Kind;
        internal int Number;
        internal int Info;
        private fixed byte message[MessageSize];

        internal void Raise()
        {
            if (Kind != 0) throw ToException();
        }

        private ThermodynamicException ToException()
        {
            fixed (byte* text = message)
                return new ThermodynamicException(
                    (FailureKind)Kind, Number, Info, Utf8.Decode((IntPtr)text));
        }

        /// <summary>The result of the call that filled the record, or its failure.</summary>
        internal static T Check<T>(T result, ref CorvaneError error)
        {
            error.Raise();
            return result;
        }
    }
}
