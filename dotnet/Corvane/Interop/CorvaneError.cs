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
                    (FailureKind)Kind, Number, Info, Whole(Utf8.Decode((IntPtr)text)));
        }

        /// <summary>The certified functions keep a text that the record cuts short.</summary>
        private static string Whole(string text)
        {
            if (System.Text.Encoding.UTF8.GetByteCount(text) < MessageSize - 4) return text;
            string whole = Utf8.Read((buffer, size) => NativeMethods.Corvane_message(buffer, size));
            return whole.Length > text.Length && whole.StartsWith(
                       text.Substring(0, text.Length - 1), StringComparison.Ordinal)
                       ? whole : text;
        }

        /// <summary>The result of the call that filled the record, or its failure.</summary>
        internal static T Check<T>(T result, ref CorvaneError error)
        {
            error.Raise();
            return result;
        }
    }
}
