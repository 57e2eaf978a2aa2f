// Registration of the callbacks.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    /// <summary>
    /// The exports of the native library, one import each, grouped by subject. What each does, and
    /// what is owned, stand in corvane/binding/*.h. Strings cross as UTF-8 with a final zero (see
    /// <see cref="Utf8"/>), references to numbers as ref, FILE* and prop_str* as IntPtr. The
    /// Corvane_ family reports failures in a record; of the CSharp_ family only those exports may be
    /// called that cannot throw or that translate, followed by <see cref="Callbacks.Raise"/>.
    /// </summary>
    internal static partial class NativeMethods
    {
        // libcorvane.so, libcorvane.dylib, corvane.dll: the runtime completes the name.
        private const string Library = "corvane";

        static NativeMethods()
        {
            Callbacks.Register();
        }

        [DllImport(Library)]
        internal static extern void SWIGRegisterExceptionCallbacks_libcorvane(
            ExceptionCallback application, ExceptionCallback arithmetic,
            ExceptionCallback divide_by_zero, ExceptionCallback index_out_of_range,
            ExceptionCallback invalid_cast, ExceptionCallback invalid_operation,
            ExceptionCallback io, ExceptionCallback null_reference, ExceptionCallback out_of_memory,
            ExceptionCallback overflow, ExceptionCallback system);

        [DllImport(Library)]
        internal static extern void SWIGRegisterExceptionArgumentCallbacks_libcorvane(
            ArgumentCallback argument, ArgumentCallback argument_null,
            ArgumentCallback argument_out_of_range);

        [DllImport(Library)]
        internal static extern void SWIGRegisterStringCallback_libcorvane(StringCallback callback);
    }
}
