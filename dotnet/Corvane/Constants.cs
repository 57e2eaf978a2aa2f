// Constants of the library.
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>Physical constants (CODATA 2010) and settings of the library.</summary>
    public static class Constants
    {
        /// <summary>Molar gas constant, J/(mol K).</summary>
        public static double R => CSharp_R_get();

        /// <summary>Avogadro constant, 1/mol.</summary>
        public static double NA => CSharp_NA_get();

        /// <summary>Boltzmann constant, J/K.</summary>
        public static double KB => CSharp_kB_get();

        /// <summary>Planck constant, J s.</summary>
        public static double HP => CSharp_hP_get();

        /// <summary>Standard pressure, MPa.</summary>
        public static double Pref => CSharp_pref_get();

        /// <summary>Size of a name in bytes, with its final zero.</summary>
        public static int NameLength => CSharp_th_namelength_get();

        /// <summary>Size of a remark in bytes, with its final zero.</summary>
        public static int CommentLength => CSharp_th_commlength_get();

        /// <summary>Relative increment of the volume finder.</summary>
        public static double VolumeIncrement => CSharp_th_inc0_get();

        /// <summary>Relative step of numerical differentiation.</summary>
        public static double DerivativeIncrement => CSharp_th_inc1_get();

        /// <summary>Relative tolerance of the volume finder.</summary>
        public static double VolumeTolerance => CSharp_th_veps_get();

        /// <summary>A random number in 0 … 1 from the calling thread's generator.</summary>
        /// <returns>The number, dimensionless.</returns>
        public static double RanShuffle() => CSharp_ran_shuffle();
    }
}
