// The pure-substance model.
using System;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>Density root of an isotherm at given pressure.</summary>
    public enum Phase
    {
        /// <summary>The root next to the start value of the density.</summary>
        Nearest = -1,

        /// <summary>The dense root.</summary>
        Liquid = 1,

        /// <summary>The root of lower Gibbs energy.</summary>
        Stable = 2,

        /// <summary>The dilute root.</summary>
        Vapour = 3
    }

    /// <summary>
    /// Equation of state of a pure substance, from a plug-in. Units: K, MPa, mol/cm³, cm³/mol. Property
    /// functions only read the model and may run concurrently on one object; setters and loads need it
    /// alone. Data are read from the folder CorvaneS in the working directory.
    /// </summary>
    public sealed partial class Model1 : NativeObject
    {
        internal readonly Model1Handle Handle;

        private readonly Lazy<Ideal> ideal;
        private readonly Lazy<Solid> solid;
        private readonly Lazy<Visco> visco;

        internal Model1(Model1Handle handle) : base(handle)
        {
            Handle = handle;
            ideal = new Lazy<Ideal>(
                () => new Ideal(new IdealHandle(CSharp_Model1_ideal_get(handle), handle), this));
            solid = new Lazy<Solid>(
                () => new Solid(new SolidHandle(CSharp_Model1_solid_get(handle), handle), this));
            visco = new Lazy<Visco>(
                () => new Visco(new ViscoHandle(CSharp_Model1_visco_get(handle), handle), this));
        }

        /// <summary>A new model from the plug-in CorvaneS/libth&lt;eos&gt;.dll. Code 1: no such
        /// plug-in; code 0: not a plug-in.</summary>
        /// <param name="eos">Name of the equation of state, such as PR.</param>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or malformed; 0: not
        /// a plug-in.</exception>
        public Model1(string eos) : this(Attach(eos)) { }

        /// <summary>A model with a parameter set, and with the substance's ideal-gas table if withIdeal.
        /// Code 1: plug-in or file missing.</summary>
        /// <param name="eos">Name of the equation of state, such as PR.</param>
        /// <param name="substance">Name of the substance in the data.</param>
        /// <param name="id">Number of the parameter set.</param>
        /// <param name="withIdeal">Whether the ideal-gas table is read.</param>
        /// <returns>The model; dispose it.</returns>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or malformed; 0: not
        /// a plug-in.</exception>
        public static Model1 Open(string eos, string substance, int id = 1, bool withIdeal = true)
        {
            Model1 model = new Model1(eos);
            try
            {
                model.Name = substance;
                model.Id = id;
                model.Load(eos);
                if (withIdeal) model.Ideal.Load();
                return model;
            }
            catch
            {
                model.Dispose();
                throw;
            }
        }

        /// <summary>Reads CorvaneS/parameters/&lt;eos&gt;/&lt;Name&gt;;&lt;Id&gt;; the file's own name
        /// and number replace them. Code 1: no file.</summary>
        /// <param name="eos">Folder below CorvaneS/parameters.</param>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or
        /// malformed.</exception>
        public void Load(string eos) =>
            Check(Corvane_Model1_load(Handle, Text(eos), out CorvaneError e), ref e);

        /// <summary>Writes models/parameters/&lt;eos&gt;/&lt;Name&gt;;&lt;Id&gt;. Code 1.</summary>
        /// <param name="eos">Folder below models/parameters.</param>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or
        /// malformed.</exception>
        public void Store(string eos)
        {
            Corvane_Model1_store(Handle, Text(eos), out CorvaneError e);
            e.Raise();
        }

        /// <summary>Moves the ideal part's reference state to that of CorvaneS/reaction/&lt;Name&gt;.
        /// Codes 1, 3, 5, 7, 9.</summary>
        public void LoadThermochemistry()
        {
            Corvane_Model1_load_thchem(Handle, out CorvaneError e);
            e.Raise();
        }

        /// <summary>Prints a banner to the C library's standard output; bits of level: 1 parameters,
        /// 2 ideal-gas range, 4 range of the solid data.</summary>
        /// <param name="title">A line above the rest.</param>
        /// <param name="level">What is printed: a sum of 1, 2, 4.</param>
        public void Intro(string title, int level) =>
            CSharp_Model1_intro(Handle, Text(title), level);

        /// <summary>Substance, and part of the file name; 31 bytes are kept.</summary>
        public string Name
        {
            get => Callbacks.Text(CSharp_Model1_name__SWIG_0(Handle));
            set => CSharp_Model1_name__SWIG_1(Handle, Text(value));
        }

        /// <summary>Remark on the parameter set; 79 bytes are kept.</summary>
        public string Comment
        {
            get => Callbacks.Text(CSharp_Model1_comment__SWIG_0(Handle));
            set => CSharp_Model1_comment__SWIG_1(Handle, Text(value));
        }

        /// <summary>Name of the equation of state.</summary>
        public string Eos => Callbacks.Text(CSharp_Model1_eos(Handle));

        /// <summary>Number of the parameter set.</summary>
        public int Id
        {
            get => CSharp_Model1_id__SWIG_0(Handle);
            set => CSharp_Model1_id__SWIG_1(Handle, value);
        }

        /// <summary>Molar mass, g/mol.</summary>
        public double M
        {
            get => CSharp_Model1_M__SWIG_0(Handle);
            set => CSharp_Model1_M__SWIG_1(Handle, value);
        }

        /// <summary>Scaling temperature, K.</summary>
        public double Ts
        {
            get => CSharp_Model1_Ts__SWIG_0(Handle);
            set => CSharp_Model1_Ts__SWIG_1(Handle, value);
        }

        /// <summary>Scaling volume, cm³/mol.</summary>
        public double Vs
        {
            get => CSharp_Model1_vs__SWIG_0(Handle);
            set => CSharp_Model1_vs__SWIG_1(Handle, value);
        }

        /// <summary>Critical temperature of the equation, K.</summary>
        public double Tcrit
        {
            get => CSharp_Model1_Tcrit__SWIG_0(Handle);
            set => CSharp_Model1_Tcrit__SWIG_1(Handle, value);
        }

        /// <summary>Critical pressure of the equation, MPa.</summary>
        public double Pcrit
        {
            get => CSharp_Model1_pcrit__SWIG_0(Handle);
            set => CSharp_Model1_pcrit__SWIG_1(Handle, value);
        }

        /// <summary>Critical molar volume of the equation, cm³/mol.</summary>
        public double Vcrit
        {
            get => CSharp_Model1_vcrit__SWIG_0(Handle);
            set => CSharp_Model1_vcrit__SWIG_1(Handle, value);
        }

        /// <summary>Acentric factor.</summary>
        public double Omega
        {
            get => CSharp_Model1_omega__SWIG_0(Handle);
            set => CSharp_Model1_omega__SWIG_1(Handle, value);
        }

        /// <summary>Number of parameters.</summary>
        public int ParameterCount => CSharp_Model1_mpar(Handle);

        /// <summary>Number of adjustable parameters.</summary>
        public int AdjustableCount => CSharp_Model1_madj(Handle);

        /// <summary>Parameter i, 0 &lt;= i &lt; ParameterCount.</summary>
        /// <param name="i">Number of the parameter, from 0.</param>
        public double this[int i]
        {
            get => CSharp_Model1_param__SWIG_0(Handle, InRange(i, ParameterCount, nameof(i)));
            set => CSharp_Model1_param__SWIG_1(Handle, InRange(i, ParameterCount, nameof(i)), value);
        }

        /// <summary>Sets the leading parameters; at most ParameterCount.</summary>
        /// <param name="values">The first parameters, each in its unit.</param>
        public void SetParameters(DoubleVector values)
        {
            if (DoubleVector.HandleOf(values) != null && values.Count > ParameterCount)
                throw new ArgumentException("more values than parameters");
            CSharp_Model1_params_(Handle, values.Handle);
            Callbacks.Raise();
        }

        /// <summary>Z − Zt, ∂(rho·Z)/∂rho and ∂²(rho·Z)/∂rho² at T [K], rho [mol/cm³]; all vanish at
        /// the critical point of compressibility factor Zt.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="Zt">Compressibility factor that is wanted, dimensionless.</param>
        /// <returns>Three numbers: the first two dimensionless, the third in cm³/mol.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public DoubleVector Crit(double T, double rho, double Zt) =>
            new DoubleVector(Check(
                Corvane_Model1_crit(Handle, T, rho, Zt, out CorvaneError e), ref e));

        /// <summary>The equation's own density roots at p [MPa], T [K]: 0 none, 1 one in rho1, 3 two.
        /// rho1 is a start value on entry.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root is wanted.</param>
        /// <param name="rho1">Density, mol/cm³: start value on entry; receives the root that is
        /// asked for.</param>
        /// <param name="rho2">Receives the other root, mol/cm³.</param>
        /// <returns>0: none, 1: one in rho1, 3: two.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 9: no such
        /// density.</exception>
        public int Vcalc(double p, double T, Phase phase, ref double rho1, ref double rho2) =>
            Check(Corvane_Model1_vcalc(
                Handle, p, T, (int)phase, ref rho1, ref rho2, out CorvaneError e), ref e);

        /// <summary>Start density [mol/cm³] of the equation's own solver.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <returns>The start value, mol/cm³.</returns>
        /// <exception cref="ThermodynamicException">5: out of range.</exception>
        public double Xinit(double p, double T, Phase phase) =>
            Check(Corvane_Model1_xinit(Handle, p, T, (int)phase, out CorvaneError e), ref e);

        /// <summary>Density [mol/cm³] that bounds dense or dilute roots at T [K]. Code 0 without
        /// tables.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <param name="phase">Which density root.</param>
        /// <returns>The bound, mol/cm³.</returns>
        /// <exception cref="ThermodynamicException">0: no tables.</exception>
        public double Xrho(double T, Phase phase) =>
            Check(Corvane_Model1_xrho(Handle, T, (int)phase, out CorvaneError e), ref e);

        /// <summary>True if rho [mol/cm³] lies between the two bounds. Code 0 without tables.
        /// </summary>
        /// <param name="rho">Density, mol/cm³.</param>
        /// <param name="T">Temperature, K.</param>
        /// <returns>Whether no root lies there.</returns>
        /// <exception cref="ThermodynamicException">0: no tables.</exception>
        public bool Off(double rho, double T) =>
            Check(Corvane_Model1_off(Handle, rho, T, out CorvaneError e), ref e) != 0;

        /// <summary>The model's own ideal-gas part. Setting it copies the data.</summary>
        public Ideal Ideal
        {
            get => ideal.Value;
            set
            {
                NotNull(value, nameof(value));
                CSharp_Model1_ideal_set(Handle, value.Handle);
            }
        }

        /// <summary>The model's own solid phases. Setting it copies the data.</summary>
        public Solid Solid
        {
            get => solid.Value;
            set
            {
                NotNull(value, nameof(value));
                CSharp_Model1_solid_set(Handle, value.Handle);
            }
        }

        /// <summary>The model's own viscosity. Setting it copies the data.</summary>
        public Visco Visco
        {
            get => visco.Value;
            set
            {
                NotNull(value, nameof(value));
                CSharp_Model1_visco_set(Handle, value.Handle);
            }
        }

        /// <inheritdoc/>
        public override void Dispose()
        {
            if (ideal.IsValueCreated) ideal.Value.Dispose();
            if (solid.IsValueCreated) solid.Value.Dispose();
            if (visco.IsValueCreated) visco.Value.Dispose();
            base.Dispose();
        }

        private static Model1Handle Attach(string eos) =>
            Check(Corvane_attach1(Text(eos), out CorvaneError e), ref e);

        internal static Model1Handle HandleOf(Model1 model)
        {
            NotNull(model, nameof(model));
            return model.Handle;
        }

        internal static byte[] Text(string text)
        {
            NotNull(text, nameof(text));
            return Utf8.Encode(text);
        }
    }
}
