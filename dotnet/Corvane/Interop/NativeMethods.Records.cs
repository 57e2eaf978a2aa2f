// Context records and phase descriptors.
using System;
using System.Runtime.InteropServices;

namespace Corvane.Interop
{
    internal static partial class NativeMethods
    {
        [DllImport(Library)]
        internal static extern Pass1Handle CSharp_new_pass1();

        [DllImport(Library)]
        internal static extern void CSharp_delete_pass1(IntPtr self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_pass1_mdl1_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_mdl1_set(Pass1Handle self, Model1Handle value);

        [DllImport(Library)]
        internal static extern int CSharp_pass1_mode_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_mode_set(Pass1Handle self, int value);

        [DllImport(Library)]
        internal static extern double CSharp_pass1_p_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_p_set(Pass1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_pass1_rho_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_rho_set(Pass1Handle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_pass1_T_get(Pass1Handle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass1_T_set(Pass1Handle self, double value);

        [DllImport(Library)]
        internal static extern PassNHandle CSharp_new_passN();

        [DllImport(Library)]
        internal static extern void CSharp_delete_passN(IntPtr self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_passN_mdlN_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_mdlN_set(PassNHandle self, ModelNHandle value);

        [DllImport(Library)]
        internal static extern int CSharp_passN_i_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_i_set(PassNHandle self, int value);

        [DllImport(Library)]
        internal static extern double CSharp_passN_p_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_p_set(PassNHandle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_passN_rho_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_rho_set(PassNHandle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_passN_T_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_T_set(PassNHandle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_passN_h_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_h_set(PassNHandle self, double value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_passN_x_get(PassNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_passN_x_set(PassNHandle self, DoubleVectorHandle value);

        [DllImport(Library)]
        internal static extern PassFfeNHandle CSharp_new_pass_ffeN();

        [DllImport(Library)]
        internal static extern void CSharp_delete_pass_ffeN(IntPtr self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_pass_ffeN_m_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_m_set(PassFfeNHandle self, ModelNHandle value);

        [DllImport(Library)]
        internal static extern int CSharp_pass_ffeN_mode_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_mode_set(PassFfeNHandle self, int value);

        [DllImport(Library)]
        internal static extern double CSharp_pass_ffeN_p_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_p_set(PassFfeNHandle self, double value);

        [DllImport(Library)]
        internal static extern double CSharp_pass_ffeN_T_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_T_set(PassFfeNHandle self, double value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_pass_ffeN_xl_get(PassFfeNHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_pass_ffeN_xl_set(
            PassFfeNHandle self, DoubleVectorHandle value);

        [DllImport(Library)]
        internal static extern PhdescHandle CSharp_new_phdesc();

        [DllImport(Library)]
        internal static extern void CSharp_delete_phdesc(IntPtr self);

        [DllImport(Library)]
        internal static extern int CSharp_phdesc_species_get(PhdescHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_phdesc_species_set(PhdescHandle self, int value);

        [DllImport(Library)]
        internal static extern int CSharp_phdesc_phase_get(PhdescHandle self);

        [DllImport(Library)]
        internal static extern void CSharp_phdesc_phase_set(PhdescHandle self, int value);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_prop_str_sname_get(IntPtr self);

        [DllImport(Library)]
        internal static extern void CSharp_prop_str_sname_set(IntPtr self, byte[] text);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_prop_str_lname_get(IntPtr self);

        [DllImport(Library)]
        internal static extern void CSharp_prop_str_lname_set(IntPtr self, byte[] text);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_prop_str_unit_get(IntPtr self);

        [DllImport(Library)]
        internal static extern void CSharp_prop_str_unit_set(IntPtr self, byte[] text);

        [DllImport(Library)]
        internal static extern int CSharp_prop_str_dimension_get(IntPtr self);

        [DllImport(Library)]
        internal static extern PhdescVectorHandle CSharp_new_phdescV__SWIG_0(int n);

        [DllImport(Library)]
        internal static extern void CSharp_delete_phdescV(IntPtr self);

        [DllImport(Library)]
        internal static extern int CSharp_phdescV_size(PhdescVectorHandle self);

        [DllImport(Library)]
        internal static extern IntPtr CSharp_phdescV_getItem__SWIG_0(
            PhdescVectorHandle self, int i);

        [DllImport(Library)]
        internal static extern void CSharp_phdescV_setItemValue(
            PhdescVectorHandle self, int i, int species, int phase);
    }
}
