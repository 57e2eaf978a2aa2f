// Written by scripts/bindings: the certified interface, from its header.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
        [DllImport(Library)]
        internal static extern FluidHandle Corvane_open(
            byte[] equation, byte[] substance, int set, byte[] home, out CorvaneError error);

        [DllImport(Library)]
        internal static extern MixtureHandle Corvane_open_mixture(
            byte[] model, int count, IntPtr[] components, int[] sets, int pair_set, int estimate,
            byte[] home, out CorvaneError error);

        [DllImport(Library)]
        internal static extern void Corvane_release(IntPtr handle);

        [DllImport(Library)]
        internal static extern int Corvane_message([Out] byte[] buffer, int size);

        [DllImport(Library)]
        internal static extern int Corvane_Fluid_text(
            FluidHandle fluid, int what, [Out] byte[] buffer, int size, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Mixture_text(
            MixtureHandle mixture, int what, int i, [Out] byte[] buffer, int size,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Fluid_number(
            FluidHandle fluid, int what, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Mixture_number(
            MixtureHandle mixture, int what, int i, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Mixture_size(MixtureHandle mixture);

        [DllImport(Library)]
        internal static extern int Corvane_Mixture_estimated(
            MixtureHandle mixture, int i, int j, out CorvaneError error);

        [DllImport(Library)]
        internal static extern IntPtr Corvane_Fluid_model(FluidHandle fluid);

        [DllImport(Library)]
        internal static extern IntPtr Corvane_Mixture_model(MixtureHandle mixture);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_pure_states(
            FluidHandle fluid, int first, double a, int second, double b, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_pure_saturation_T(
            FluidHandle fluid, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_pure_saturation_p(
            FluidHandle fluid, double p, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_pure_phase(
            FluidHandle fluid, double T, double rho, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_transport(
            FluidHandle fluid, int property, double T, double rho, [Out] double[] evidence,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_transport_model(
            FluidHandle fluid, int property, double T, double rho, [Out] byte[] buffer, int size,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_mixture_phase(
            MixtureHandle mixture, double T, double rho, double[] z, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_mixture_transport(
            MixtureHandle mixture, int property, double T, double rho, double[] z, int n,
            [Out] double[] evidence, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_mixture_transport_model(
            MixtureHandle mixture, int property, double T, double rho, double[] z, int n,
            [Out] byte[] buffer, int size, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_mixture_tension(
            MixtureHandle mixture, double T, double rho_liquid, double[] x, double rho_vapour,
            double[] y, int n, [Out] double[] evidence, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_mixture_interface(
            MixtureHandle mixture, double T, double rho_liquid, double[] x, double rho_vapour,
            double[] y, int n, [Out] double[] values, int points, [Out] double[] summary,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_flash_pT(
            MixtureHandle mixture, double p, double T, double[] z, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_flash_ph(
            MixtureHandle mixture, double p, double h, double[] z, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_flash_ps(
            MixtureHandle mixture, double p, double s, double[] z, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_flash_Trho(
            MixtureHandle mixture, double T, double rho, double[] z, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_mixture_states(
            MixtureHandle mixture, int first, double a, int second, double b, double[] z, int n,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_bubble_T(
            MixtureHandle mixture, double T, double[] z, int n, int branch, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_bubble_p(
            MixtureHandle mixture, double p, double[] z, int n, int branch, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_dew_T(
            MixtureHandle mixture, double T, double[] z, int n, int branch, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_dew_p(
            MixtureHandle mixture, double p, double[] z, int n, int branch, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_envelope(
            MixtureHandle mixture, double[] z, int n, double p_start, double p_max, int all,
            ProgressCallback progress, IntPtr context, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_critical_point(
            MixtureHandle mixture, double[] z, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_critical_points(
            MixtureHandle mixture, double[] z, int n, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_diagram_pxy(
            MixtureHandle mixture, double T, double p_max, ProgressCallback progress,
            IntPtr context, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_diagram_Txy(
            MixtureHandle mixture, double p, double T_min, ProgressCallback progress,
            IntPtr context, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_critical_lines(
            MixtureHandle mixture, double p_max, ProgressCallback progress, IntPtr context,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_three_phase_lines(
            MixtureHandle mixture, double p_max, ProgressCallback progress, IntPtr context,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_azeotropic_lines(
            MixtureHandle mixture, double p_max, ProgressCallback progress, IntPtr context,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_solubility(
            MixtureHandle mixture, int solid, double p, double T, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_eutectic(
            MixtureHandle mixture, double p, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_solid_fluid_isobar(
            MixtureHandle mixture, int solid, double p, ProgressCallback progress, IntPtr context,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_solid_fluid_isotherm(
            MixtureHandle mixture, int solid, double T, double p_max, ProgressCallback progress,
            IntPtr context, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_ternary(
            MixtureHandle mixture, double p, double T, double step, int mesh,
            ProgressCallback progress, IntPtr context, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_pure_property_diagram(
            FluidHandle fluid, int[] what, double[] values, int count, int points,
            ProgressCallback progress, IntPtr context, out CorvaneError error);

        [DllImport(Library)]
        internal static extern ResultHandle Corvane_property_diagram(
            MixtureHandle mixture, double[] z, int n, int[] what, double[] values, int count,
            int points, ProgressCallback progress, IntPtr context, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Result_lines(ResultHandle result);

        [DllImport(Library)]
        internal static extern int Corvane_Result_points(
            ResultHandle result, int line, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Result_phases(
            ResultHandle result, int line, int point, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Result_components(ResultHandle result);

        [DllImport(Library)]
        internal static extern int Corvane_Result_complete(ResultHandle result);

        [DllImport(Library)]
        internal static extern int Corvane_Result_kind(
            ResultHandle result, int line, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Result_begin(
            ResultHandle result, int line, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Result_end(
            ResultHandle result, int line, out CorvaneError error);

        [DllImport(Library)]
        internal static extern double Corvane_Result_value(
            ResultHandle result, int line, int point, int phase, int property,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Result_column(
            ResultHandle result, int line, int phase, int property, [Out] double[] values, int size,
            out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Result_flags(
            ResultHandle result, int line, int point, out CorvaneError error);

        [DllImport(Library)]
        internal static extern int Corvane_Result_certificate(
            ResultHandle result, int line, int point, [Out] byte[] buffer, int size,
            out CorvaneError error);
    }
}
