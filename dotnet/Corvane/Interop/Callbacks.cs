// What the native library calls back: exceptions, null arguments, texts.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    internal delegate void ExceptionCallback(IntPtr message);

    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    internal delegate void ArgumentCallback(IntPtr message, IntPtr parameter);

    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    internal delegate IntPtr StringCallback(IntPtr text);

    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    internal delegate double RealFunction(double x);

    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    internal delegate int IntFunction(int x);

    /// <summary>Called after every point of a trace; 0 ends it. Must not throw.</summary>
    [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
    internal delegate int ProgressCallback(int points, IntPtr context);

    /// <summary>
    /// The callbacks must not throw through native frames: they leave a pending exception, or the
    /// text, with their thread, and the caller picks it up right after the native call.
    /// </summary>
    internal static class Callbacks
    {
        // In static fields, so that they are never collected while native code holds them.
        private static readonly ExceptionCallback Exception = OnException;
        private static readonly ArgumentCallback Argument = OnArgument;
        private static readonly StringCallback String = OnString;

        [ThreadStatic] private static ThermodynamicException pending;
        [ThreadStatic] private static string received;

        internal static void Register()
        {
            NativeMethods.SWIGRegisterExceptionCallbacks_libcorvane(
                Exception, Exception, Exception, Exception, Exception, Exception, Exception,
                Exception, Exception, Exception, Exception);
            NativeMethods.SWIGRegisterExceptionArgumentCallbacks_libcorvane(
                Argument, Argument, Argument);
            NativeMethods.SWIGRegisterStringCallback_libcorvane(String);
        }

        /// <summary>Throws what a callback left pending on this thread.</summary>
        internal static void Raise()
        {
            ThermodynamicException exception = pending;
            if (exception == null) return;
            pending = null;
            throw exception;
        }

        /// <summary>The text behind the result of a string-returning export.</summary>
        internal static string Text(IntPtr result)
        {
            string text = received;
            received = null;
            Raise();
            return result == IntPtr.Zero ? null : text;
        }

        // The code of the exception does not cross here: Number and Info are -1.
        private static void OnException(IntPtr message)
        {
            string text = Utf8.Decode(message);
            FailureKind kind = text.Contains("MthException") ? FailureKind.Numerical
                                                             : FailureKind.Thermodynamic;
            pending = new ThermodynamicException(kind, -1, -1, text);
        }

        private static void OnArgument(IntPtr message, IntPtr parameter)
        {
            pending = new ThermodynamicException(
                FailureKind.NullArgument, -1, -1, Utf8.Decode(message));
        }

        private static IntPtr OnString(IntPtr text)
        {
            received = Utf8.Decode(text);
            return text;
        }
    }
}
