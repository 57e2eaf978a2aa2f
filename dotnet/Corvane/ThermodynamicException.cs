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
        Unknown = 5
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

        /// <summary>An additional integer, -1 for none.</summary>
        public int Info { get; }
    }
}
