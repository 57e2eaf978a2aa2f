// Failure of the library.
using System;

namespace Corvane
{
    /// <summary>What kind of failure a <see cref="ThermodynamicException"/> reports.</summary>
    public enum FailureKind
    {
        /// <summary>Files, data, options, densities.</summary>
        Thermodynamic = 1,

        /// <summary>Numerical work: iterations, dimensions, singular matrices.</summary>
        Numerical = 2,

        /// <summary>A null object where one is needed.</summary>
        NullArgument = 3,

        /// <summary>No memory.</summary>
        NoMemory = 4,

        /// <summary>Anything else that left a plug-in.</summary>
        Unknown = 5,

        /// <summary>The search of a solver was complete and says that there is no solution.</summary>
        NoSolution = 6,

        /// <summary>A solver found nothing that it could certify; nothing is known.</summary>
        GaveUp = 7,

        /// <summary>What was asked for by name is not there, or damaged.</summary>
        NotOpened = 8,

        /// <summary>An index, a number of elements or a choice out of range.</summary>
        BadArgument = 9
    }

    /// <summary>Failures by name: a hundred times the kind, plus the number within it.</summary>
    public enum FailureCode
    {
        /// <summary>The code is not known.</summary>
        Unspecified = 0,
        /// <summary>No solution, or not a plug-in.</summary>
        Generic = 100,
        /// <summary>A file or plug-in is missing or malformed.</summary>
        CannotOpen = 101,
        /// <summary>Numbers of parameter sets contradict.</summary>
        SetMismatch = 102,
        /// <summary>No ideal-gas data.</summary>
        NoIdealGas = 103,
        /// <summary>No such option; not a binary.</summary>
        NoOption = 104,
        /// <summary>An argument is out of range.</summary>
        OutOfRange = 105,
        /// <summary>No solid data.</summary>
        NoSolid = 106,
        /// <summary>No thermochemical data.</summary>
        NoThermochemistry = 107,
        /// <summary>The trivial solution: both phases are the same.</summary>
        Trivial = 108,
        /// <summary>No density.</summary>
        NoDensity = 109,
        /// <summary>There is a liquid only.</summary>
        LiquidOnly = 110,
        /// <summary>There is a gas only.</summary>
        GasOnly = 111,
        /// <summary>A numerical failure without a name.</summary>
        NumericalGeneric = 200,
        /// <summary>Too many iterations.</summary>
        Iterations = 201,
        /// <summary>Dimensions do not fit.</summary>
        Dimensions = 202,
        /// <summary>A matrix is not square.</summary>
        NotSquare = 203,
        /// <summary>A matrix is singular.</summary>
        Singular = 204,
        /// <summary>Equal abscissas.</summary>
        Duplicate = 205,
        /// <summary>Abscissas without order.</summary>
        Unordered = 206,
        /// <summary>Too few points.</summary>
        TooFew = 207,
        /// <summary>No such option of a numerical method.</summary>
        NumericalNoOption = 208,
        /// <summary>A bad step.</summary>
        BadStep = 209,
        /// <summary>An abscissa is out of range.</summary>
        NumericalOutOfRange = 210,
        /// <summary>A bad interval.</summary>
        BadInterval = 211,
        /// <summary>The same sign at both ends.</summary>
        SameSign = 212,
        /// <summary>No minimum.</summary>
        NoMinimum = 213,
        /// <summary>An inflection in place of an extremum.</summary>
        Inflection = 214,
        /// <summary>Points on a straight line.</summary>
        Collinear = 215,
        /// <summary>A parameter without influence; Info is its index.</summary>
        IrrelevantParameter = 216,
        /// <summary>See <see cref="FailureKind.NullArgument"/>.</summary>
        NullArgument = 300,
        /// <summary>See <see cref="FailureKind.NoMemory"/>.</summary>
        NoMemory = 400,
        /// <summary>See <see cref="FailureKind.Unknown"/>.</summary>
        Unknown = 500,
        /// <summary>See <see cref="FailureKind.NoSolution"/>.</summary>
        NoSolution = 600,
        /// <summary>See <see cref="FailureKind.GaveUp"/>.</summary>
        GaveUp = 700,
        /// <summary>See <see cref="FailureKind.NotOpened"/>.</summary>
        NotOpened = 800,
        /// <summary>See <see cref="FailureKind.BadArgument"/>.</summary>
        BadArgument = 900
    }

    /// <summary>A failure of the library, by code. docs/dotnet.md lists the codes.</summary>
    public sealed class ThermodynamicException : Exception
    {
        internal ThermodynamicException(FailureKind kind, int number, int info, string text)
            : base(info < 0 ? text : text + ": " + info)
        {
            Kind = kind;
            Number = number;
            Info = info;
        }

        /// <summary>Which table <see cref="Number"/> belongs to.</summary>
        public FailureKind Kind { get; }

        /// <summary>Code of the failure within its kind; 0 for kinds without codes, -1 if unknown.
        /// </summary>
        public int Number { get; }

        /// <summary>The failure by name; <see cref="FailureCode.Unspecified"/> where Number is -1.
        /// </summary>
        public FailureCode Code =>
            Number < 0 ? FailureCode.Unspecified : (FailureCode)(100 * (int)Kind + Number);

        /// <summary>An additional integer, -1 for none.</summary>
        public int Info { get; }
    }
}
