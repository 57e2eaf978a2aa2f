// Console input through the library.
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>Questions on standard error, answers from the C library's standard input, with a decimal
    /// point in any culture. Do not mix with System.Console.In.</summary>
    public static class ConsoleInput
    {
        /// <summary>Asks for a value or a range "(x1 x2 dx)"; returns the number of points, 0 for input
        /// that cannot be read.</summary>
        /// <param name="prompt">What is asked.</param>
        /// <param name="x1">Receives the first value, in any unit that was asked for.</param>
        /// <param name="x2">Receives the last value, in the same unit.</param>
        /// <param name="dx">Receives the step, in the same unit.</param>
        /// <returns>Number of points; 0 for input that cannot be read.</returns>
        public static int ReadVars(string prompt, ref double x1, ref double x2, ref double dx) =>
            Check(Corvane_read_vars(Model1.Text(prompt), ref x1, ref x2, ref dx,
                                    out CorvaneError e), ref e);

        /// <summary>Reads a composition, or a ratio and a composition. Code 5.</summary>
        /// <param name="prompt">What is asked.</param>
        /// <param name="x">Receives the mole fractions.</param>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public static void ReadR(string prompt, DoubleVector x)
        {
            Corvane_read_r(Model1.Text(prompt), DoubleVector.HandleOf(x), out CorvaneError e);
            e.Raise();
        }

        /// <summary>Reads all mole fractions but the last. Code 5.</summary>
        /// <param name="prompt">What is asked.</param>
        /// <param name="x">Receives the mole fractions.</param>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public static void ReadX(string prompt, DoubleVector x)
        {
            Corvane_read_x(Model1.Text(prompt), DoubleVector.HandleOf(x), out CorvaneError e);
            e.Raise();
        }
    }
}
