// Tests of the managed assembly: Corvane.Tests.exe <group> [<folder with the tables>]. Exit code 0 if
// all checks hold; each that does not is a line on standard error.
using System;
using System.Collections.Generic;
using Corvane;

namespace Corvane.Tests
{
    internal static class Program
    {
        private static int failures;

        private static int Main(string[] arguments)
        {
            var groups = new Dictionary<string, Action<string>>
            {
                ["imports"] = Imports.MatchTheList,
                ["refusals"] = Imports.RefuseNull,
                ["failures"] = Failures.Run,
                ["objects"] = Objects.Run,
                ["certified"] = Certified.Run,
                ["documentation"] = Documentation.Complete,
                ["soak"] = Soak.Threads,
                ["collection"] = Soak.Collection,
                ["numbers"] = Numbers.Print
            };
            groups[arguments[0]](arguments.Length > 1 ? arguments[1] : null);
            return failures == 0 ? 0 : 1;
        }

        internal static void Equal<T>(string what, T actual, T expected)
        {
            if (!EqualityComparer<T>.Default.Equals(actual, expected))
                Fail($"{what}: {actual}, expected {expected}");
        }

        internal static void True(string what, bool condition)
        {
            if (!condition) Fail(what);
        }

        internal static void Throws<E>(string what, Action action) where E : Exception
        {
            try
            {
                action();
                Fail(what + ": no exception");
            }
            catch (E)
            {
            }
            catch (Exception e)
            {
                Fail($"{what}: {e}");
            }
        }

        /// <summary>A failure of the library by kind, code and information.</summary>
        internal static void Fails(string what, FailureKind kind, int number, Action action,
                                   string message = null)
        {
            try
            {
                action();
                Fail(what + ": no exception");
            }
            catch (ThermodynamicException e)
            {
                Equal(what + " kind", e.Kind, kind);
                Equal(what + " number", e.Number, number);
                Equal(what + " info", e.Info, -1);
                if (message != null) Equal(what + " message", e.Message, message);
            }
        }

        internal static void Fail(string message)
        {
            System.Threading.Interlocked.Increment(ref failures);
            Console.Error.WriteLine(message);
        }
    }
}
