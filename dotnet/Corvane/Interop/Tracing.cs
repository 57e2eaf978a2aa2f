// Calls that trace curves, under the eyes of a function of the caller.
using System;
using System.Runtime.ExceptionServices;

namespace Corvane.Interop
{
    internal static class Tracing
    {
        internal delegate ResultHandle Trace(ProgressCallback progress, out CorvaneError error);

        /// <summary>Runs a trace. What the caller's function throws ends it, and is thrown here, where
        /// no native frame lies between.</summary>
        internal static Result Traced(Func<int, bool> progress, Trace trace)
        {
            if (progress == null) return Result.Of(trace(null, out CorvaneError none), ref none);
            ExceptionDispatchInfo thrown = null;
            ProgressCallback callback = (points, context) =>
            {
                try
                {
                    return progress(points) ? 1 : 0;
                }
                catch (Exception e)
                {
                    thrown = ExceptionDispatchInfo.Capture(e);
                    return 0;
                }
            };
            ResultHandle handle = trace(callback, out CorvaneError error);
            GC.KeepAlive(callback);
            if (thrown != null)
            {
                handle.Dispose();
                thrown.Throw();
            }
            return Result.Of(handle, ref error);
        }

        /// <summary>Quantities as the native side has them.</summary>
        internal static int[] Codes(Quantity[] what, double[] values)
        {
            NativeObject.NotNull(what, nameof(what));
            NativeObject.NotNull(values, nameof(values));
            if (what.Length != values.Length)
                throw new ArgumentException("a value for each isoline is needed");
            return Array.ConvertAll(what, q => (int)q);
        }
    }
}
