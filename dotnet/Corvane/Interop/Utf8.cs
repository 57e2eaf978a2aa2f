// Texts between managed and native code.
using System;
using System.Runtime.InteropServices;
using System.Text;

namespace Corvane.Interop
{
    internal static class Utf8
    {
        /// <summary>The text with a final zero; null stays null. A zero inside is refused, since the
        /// native side would read less than was meant.</summary>
        internal static byte[] Encode(string text)
        {
            if (text == null) return null;
            if (text.IndexOf('\0') >= 0)
                throw new ArgumentException("a text for the library must not contain '\\0'");
            return Encoding.UTF8.GetBytes(text + '\0');
        }

        /// <summary>A text that the native side writes into a buffer of the given size, returning the
        /// length that it needs.</summary>
        internal static string Read(Func<byte[], int, int> write)
        {
            byte[] buffer = new byte[256];
            int length = write(buffer, buffer.Length);
            if (length >= buffer.Length)
            {
                buffer = new byte[length + 1];
                length = Math.Min(write(buffer, buffer.Length), length);
            }
            return Encoding.UTF8.GetString(buffer, 0, length);
        }

        /// <summary>A copy of the text at an address; null for address 0.</summary>
        internal static string Decode(IntPtr address)
        {
            if (address == IntPtr.Zero) return null;
            int length = 0;
            while (Marshal.ReadByte(address, length) != 0) ++length;
            byte[] bytes = new byte[length];
            Marshal.Copy(address, bytes, 0, length);
            return Encoding.UTF8.GetString(bytes);
        }
    }
}
