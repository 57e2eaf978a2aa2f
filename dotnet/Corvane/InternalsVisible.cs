using System.Runtime.CompilerServices;

[assembly: InternalsVisibleTo("Corvane.Tests")]
