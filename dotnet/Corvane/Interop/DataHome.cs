// Where the data lie, seen from the assembly.
using System;
using System.IO;

namespace Corvane.Interop
{
    internal static class DataHome
    {
        /// <summary>The folder "corvane" beside the assembly, where a build with the NuGet package leaves
        /// plug-ins and data; null where it is not, or where the environment names a home.</summary>
        internal static readonly string Packaged = Find();

        private static string Find()
        {
            if (!string.IsNullOrEmpty(Environment.GetEnvironmentVariable("CORVANE_DATA"))) return null;
            string assembly = typeof(DataHome).Assembly.Location;  // "" in a program of one file
            string folder = string.IsNullOrEmpty(assembly) ? AppDomain.CurrentDomain.BaseDirectory
                                                           : Path.GetDirectoryName(assembly);
            string home = Path.GetFullPath(Path.Combine(folder, "corvane"));
            return Directory.Exists(Path.Combine(home, "CorvaneS")) ? home : null;
        }
    }
}
