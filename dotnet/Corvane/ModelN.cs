// The mixture model.
using System;
using System.Collections.Generic;
using Corvane.Interop;
using static Corvane.Interop.CorvaneError;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>
    /// A mixture: one equation of state with one mixing theory over a list of components. Units, threads
    /// and data as for <see cref="Model1"/>. Compositions have one element per component.
    /// </summary>
    public sealed partial class ModelN : NativeObject
    {
        internal readonly ModelNHandle Handle;

        /// <summary>Number of a component's set that the first pair file with it replaces.</summary>
        public const int FromPair = -1;

        private readonly string eos, mixing;
        private Model1[] components = new Model1[0];

        /// <summary>A new mixture without components, from the plug-in
        /// CorvaneS/libth&lt;eos&gt;+&lt;mixing&gt;.dll. Codes 0, 1 as for a pure model.</summary>
        /// <param name="eos">Name of the equation of state, such as PR.</param>
        /// <param name="mixing">Name of the mixing theory, such as vdW1.</param>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or malformed; 0: not
        /// a plug-in.</exception>
        public ModelN(string eos, string mixing) : base(Attach(eos, mixing))
        {
            Handle = (ModelNHandle)NativeHandle;
            this.eos = eos;
            this.mixing = mixing;
        }

        /// <summary>Lent by a mixture that was opened by name.</summary>
        internal ModelN(ModelNHandle handle, string eos, string mixing, int count) : base(handle)
        {
            Handle = handle;
            this.eos = eos;
            this.mixing = mixing;
            TakeComponents(count);
        }

        /// <summary>A mixture of substances with set 1 of every pair, the parameter sets of the
        /// components that those name (set 1 where there is no pair), and their ideal-gas tables. Pairs
        /// without a file: code 1, or the theory's own estimate (k_ij = 0) if estimatePairs.</summary>
        /// <param name="eos">Name of the equation of state, such as PR.</param>
        /// <param name="mixing">Name of the mixing theory, such as vdW1.</param>
        /// <param name="substances">Names of the components in the data.</param>
        /// <param name="estimatePairs">Whether a pair without a file takes the theory's
        /// estimate.</param>
        /// <param name="withIdeal">Whether the ideal-gas tables are read.</param>
        /// <returns>The mixture; dispose it.</returns>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or malformed; 2:
        /// numbers of parameter sets contradict; 0: not a plug-in.</exception>
        public static ModelN Open(string eos, string mixing, IEnumerable<string> substances,
                                  bool estimatePairs = false, bool withIdeal = true)
        {
            NotNull(substances, nameof(substances));
            string[] names = new List<string>(substances).ToArray();
            ModelN mixture = new ModelN(eos, mixing);
            try
            {
                mixture.Allocate(names.Length);
                for (int i = 0; i < names.Length; ++i)
                {
                    mixture.SetId(i, i, names.Length > 1 ? FromPair : 1);
                    for (int j = 0; j < i; ++j) mixture.SetId(i, j, 1);
                }
                for (int i = 0; i < names.Length; ++i) mixture.components[i].Name = names[i];
                if (estimatePairs) mixture.LoadEstimating();
                else mixture.Load();
                if (withIdeal)
                    foreach (Model1 component in mixture.components) component.Ideal.Load();
                return mixture;
            }
            catch
            {
                mixture.Dispose();
                throw;
            }
        }

        /// <summary>Makes count components and the binary parameters, once.</summary>
        /// <param name="count">Number of components, from 1.</param>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or
        /// malformed.</exception>
        public void Allocate(int count)
        {
            if (count < 1) throw new ArgumentOutOfRangeException(nameof(count));
            if (Count > 0) throw new InvalidOperationException("the mixture has its components");
            Corvane_ModelN_alloc(Handle, count, Model1.Text(eos), out CorvaneError e);
            e.Raise();
            TakeComponents(count);
        }

        private void TakeComponents(int count)
        {
            Model1[] made = new Model1[count];
            for (int i = 0; i < count; ++i)
                made[i] = new Model1(new Model1Handle(CSharp_ModelN_getModel1i(Handle, i), Handle));
            components = made;
        }

        /// <summary>Number of components.</summary>
        public int Count => components.Length;

        /// <summary>The components, borrowed from the mixture.</summary>
        public IReadOnlyList<Model1> Components => components;

        /// <summary>Name of the equation of state.</summary>
        public string Eos => eos;

        /// <summary>Name of the mixing theory.</summary>
        public string Mixing => mixing;

        /// <summary>Reads the files of all pairs and components. Code 1: no file of a pair, or a
        /// component that cannot be loaded; code 2: numbers of sets that contradict.</summary>
        public void Load()
        {
            Corvane_ModelN_load(Handle, Model1.Text(eos), Model1.Text(mixing), out CorvaneError e);
            e.Raise();
        }

        /// <summary>The same, but pairs without a file keep the theory's estimate. Returns how many.
        /// </summary>
        /// <returns>Number of pairs without a file.</returns>
        /// <exception cref="ThermodynamicException">1: file or plug-in missing or malformed; 2:
        /// numbers of parameter sets contradict.</exception>
        public int LoadEstimating() =>
            Check(Corvane_ModelN_load_estimating(
                Handle, Model1.Text(eos), Model1.Text(mixing), out CorvaneError e), ref e);

        /// <summary>Writes the file of the pair (0, 1) to models/parameters. Code 1.</summary>
        public void Store()
        {
            if (Count < 2) throw new InvalidOperationException("the mixture has no pair");
            Corvane_ModelN_store2(Handle, Model1.Text(eos), Model1.Text(mixing), out CorvaneError e);
            e.Raise();
        }

        /// <summary>Prints components and pairs to the C library's standard output; bits of flags:
        /// 1 parameters, 2 ideal-gas and 4 solid ranges.</summary>
        /// <param name="title">A line above the rest.</param>
        /// <param name="flags">What is printed: a sum of 1, 2, 4.</param>
        public void Intro(string title, int flags) =>
            CSharp_ModelN_intro(Handle, Model1.Text(title), flags);

        /// <summary>Number of the parameter set of a pair, or of component i when i = j.</summary>
        /// <param name="i">Number of a component, from 0.</param>
        /// <param name="j">Number of another, or i for the component itself.</param>
        /// <returns>The number.</returns>
        public int GetId(int i, int j) => CSharp_ModelN_id__SWIG_0(Handle, At(i), At(j));

        /// <summary>Sets it.</summary>
        /// <param name="i">Number of a component, from 0.</param>
        /// <param name="j">Number of another, or i for the component itself.</param>
        /// <param name="id">The number.</param>
        public void SetId(int i, int j, int id) =>
            CSharp_ModelN_id__SWIG_1(Handle, At(i), At(j), id);

        /// <summary>Remark on the pair, or on component i when i = j.</summary>
        /// <param name="i">Number of a component, from 0.</param>
        /// <param name="j">Number of another, or i for the component itself.</param>
        /// <returns>The remark.</returns>
        public string GetComment(int i, int j) =>
            Callbacks.Text(CSharp_ModelN_comment__SWIG_0(Handle, At(i), At(j)));

        /// <summary>Sets it; 79 bytes are kept.</summary>
        /// <param name="i">Number of a component, from 0.</param>
        /// <param name="j">Number of another, or i for the component itself.</param>
        /// <param name="text">The remark.</param>
        public void SetComment(int i, int j, string text) =>
            CSharp_ModelN_comment__SWIG_1(Handle, At(i), At(j), Model1.Text(text));

        /// <summary>Number of parameters of a pair; 0 if the plug-in does not tell, and then they are
        /// not to be had here.</summary>
        public int PairParameterCount => Corvane_ModelN_pair_parameters(Handle);

        /// <summary>Binary parameter k of the pair, or parameter k of component i when i = j.</summary>
        /// <param name="k">Number of the parameter, from 0.</param>
        /// <param name="i">Number of a component, from 0.</param>
        /// <param name="j">Number of another, or i for the component itself.</param>
        public double this[int k, int i, int j]
        {
            get => CSharp_ModelN_param__SWIG_0(Handle, Parameter(k, i, j), i, j);
            set => CSharp_ModelN_param__SWIG_1(Handle, Parameter(k, i, j), i, j, value);
        }

        /// <summary>A number of the plug-in's choice.</summary>
        public int Mmth => CSharp_ModelN_mmth(Handle);

        /// <summary>Mixture parameters at x, of the plug-in's choice.</summary>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <returns>The parameters, each in its unit.</returns>
        public DoubleVector Mixpar(DoubleVector x) =>
            new DoubleVector(Check(
                Corvane_ModelN_mixpar(Handle, In(x), out CorvaneError e), ref e));

        /// <summary>The equation's own density roots; as <see cref="Model1.Vcalc"/>.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="T">Temperature, K.</param>
        /// <param name="x">Mole fractions, one for each component.</param>
        /// <param name="phase">Which density root is wanted.</param>
        /// <param name="rho1">Density, mol/cm³: start value on entry; receives the root that is
        /// asked for.</param>
        /// <param name="rho2">Receives the other root, mol/cm³.</param>
        /// <returns>0: none, 1: one in rho1, 3: two.</returns>
        /// <exception cref="ThermodynamicException">5: out of range; 9: no such
        /// density.</exception>
        public int Vcalc(double p, double T, DoubleVector x, Phase phase, ref double rho1,
                         ref double rho2) =>
            Check(Corvane_ModelN_vcalc(
                Handle, p, T, In(x), (int)phase, ref rho1, ref rho2, out CorvaneError e), ref e);

        /// <inheritdoc/>
        public override void Dispose()
        {
            foreach (Model1 component in components) component.Dispose();
            base.Dispose();
        }

        /// <summary>A composition or partial densities of the right length.</summary>
        internal DoubleVectorHandle In(DoubleVector x)
        {
            if (DoubleVector.HandleOf(x) != null && x.Count != Count)
                throw new ArgumentException("one element per component is needed");
            return x.Handle;
        }

        private int At(int i) => InRange(i, Count, nameof(i));

        private int Parameter(int k, int i, int j)
        {
            int count = At(i) == At(j) ? components[i].ParameterCount : PairParameterCount;
            return InRange(k, count, nameof(k));
        }

        internal static ModelNHandle HandleOf(ModelN model)
        {
            NotNull(model, nameof(model));
            return model.Handle;
        }

        private static ModelNHandle Attach(string eos, string mixing) =>
            Check(Corvane_attachN(
                Model1.Text(eos), Model1.Text(mixing), out CorvaneError e), ref e);
    }
}
