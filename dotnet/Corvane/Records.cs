// Context records of objective functions.
using Corvane.Interop;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>State of a pure fluid, for objective functions. Keeps alive what its references name; does not own it.</summary>
    public sealed class Pass1 : NativeObject
    {
        internal readonly Pass1Handle Handle;

        private Model1 model;

        /// <summary>Every field zero or null.</summary>
        public Pass1() : base(CSharp_new_pass1())
        {
            Handle = (Pass1Handle)NativeHandle;
        }

        /// <summary>The model. May be null.</summary>
        public Model1 Model
        {
            get => model;
            set
            {
                Handle.Hold(1, value?.Handle);
                CSharp_pass1_mdl1_set(Handle, value?.Handle ?? Model1Handle.None);
                model = value;
            }
        }

        /// <summary>Phase or root option of the caller.</summary>
        public int Mode
        {
            get => CSharp_pass1_mode_get(Handle);
            set => CSharp_pass1_mode_set(Handle, value);
        }

        /// <summary>Pressure, MPa.</summary>
        public double P
        {
            get => CSharp_pass1_p_get(Handle);
            set => CSharp_pass1_p_set(Handle, value);
        }

        /// <summary>Density, mol/cm³.</summary>
        public double Rho
        {
            get => CSharp_pass1_rho_get(Handle);
            set => CSharp_pass1_rho_set(Handle, value);
        }

        /// <summary>Temperature, K.</summary>
        public double T
        {
            get => CSharp_pass1_T_get(Handle);
            set => CSharp_pass1_T_set(Handle, value);
        }
    }

    /// <summary>State of a mixture, for objective functions. Keeps alive what its references name; does not own it.</summary>
    public sealed class PassN : NativeObject
    {
        internal readonly PassNHandle Handle;

        private ModelN model;
        private DoubleVector x;

        /// <summary>Every field zero or null.</summary>
        public PassN() : base(CSharp_new_passN())
        {
            Handle = (PassNHandle)NativeHandle;
        }

        /// <summary>The mixture. May be null.</summary>
        public ModelN Model
        {
            get => model;
            set
            {
                Handle.Hold(1, value?.Handle);
                CSharp_passN_mdlN_set(Handle, value?.Handle ?? ModelNHandle.None);
                model = value;
            }
        }

        /// <summary>Mole fractions. May be null.</summary>
        public DoubleVector X
        {
            get => x;
            set
            {
                Handle.Hold(2, value?.Handle);
                CSharp_passN_x_set(Handle, value?.Handle ?? DoubleVectorHandle.None);
                x = value;
            }
        }

        /// <summary>Component.</summary>
        public int I
        {
            get => CSharp_passN_i_get(Handle);
            set => CSharp_passN_i_set(Handle, value);
        }

        /// <summary>Pressure, MPa.</summary>
        public double P
        {
            get => CSharp_passN_p_get(Handle);
            set => CSharp_passN_p_set(Handle, value);
        }

        /// <summary>Density, mol/cm³.</summary>
        public double Rho
        {
            get => CSharp_passN_rho_get(Handle);
            set => CSharp_passN_rho_set(Handle, value);
        }

        /// <summary>Temperature, K.</summary>
        public double T
        {
            get => CSharp_passN_T_get(Handle);
            set => CSharp_passN_T_set(Handle, value);
        }

        /// <summary>An increment or target value of the caller.</summary>
        public double H
        {
            get => CSharp_passN_h_get(Handle);
            set => CSharp_passN_h_set(Handle, value);
        }
    }

    /// <summary>State of a two-phase equilibrium: see <see cref="Equilibria.Residuals"/>. Keeps alive what its references name; does not own it.</summary>
    public sealed class PassFfeN : NativeObject
    {
        internal readonly PassFfeNHandle Handle;

        private ModelN model;
        private DoubleVector x;

        /// <summary>Every field zero or null.</summary>
        public PassFfeN() : base(CSharp_new_pass_ffeN())
        {
            Handle = (PassFfeNHandle)NativeHandle;
        }

        /// <summary>The mixture. May be null.</summary>
        public ModelN Model
        {
            get => model;
            set
            {
                Handle.Hold(1, value?.Handle);
                CSharp_pass_ffeN_m_set(Handle, value?.Handle ?? ModelNHandle.None);
                model = value;
            }
        }

        /// <summary>Mole fractions of the given phase. May be null.</summary>
        public DoubleVector X
        {
            get => x;
            set
            {
                Handle.Hold(2, value?.Handle);
                CSharp_pass_ffeN_xl_set(Handle, value?.Handle ?? DoubleVectorHandle.None);
                x = value;
            }
        }

        /// <summary>0: T is given; 1: p is given and T is the last unknown.</summary>
        public int Mode
        {
            get => CSharp_pass_ffeN_mode_get(Handle);
            set => CSharp_pass_ffeN_mode_set(Handle, value);
        }

        /// <summary>Pressure, MPa, in mode 1.</summary>
        public double P
        {
            get => CSharp_pass_ffeN_p_get(Handle);
            set => CSharp_pass_ffeN_p_set(Handle, value);
        }

        /// <summary>Temperature, K, in mode 0.</summary>
        public double T
        {
            get => CSharp_pass_ffeN_T_get(Handle);
            set => CSharp_pass_ffeN_T_set(Handle, value);
        }

        internal bool IsComplete => model != null && x != null;
    }
}
