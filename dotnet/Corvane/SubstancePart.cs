// What the parts of a substance have in common.
using System;
using Corvane.Interop;

namespace Corvane
{
    /// <summary>A part of a substance beside its equation of state: of a model, or by itself.</summary>
    public abstract class SubstancePart : NativeObject
    {
        private const int ModelSlot = 1;

        private Model1 model;

        internal SubstancePart(CorvaneHandle handle, Model1 owner) : base(handle)
        {
            model = owner;
        }

        /// <summary>The model whose name gives the file name. Fixed for the part of a model.</summary>
        /// <exception cref="InvalidOperationException">set on the part of a model</exception>
        public Model1 Model
        {
            get => model;
            set
            {
                if (!IsOwner) throw new InvalidOperationException("the part of a model");
                NativeHandle.Hold(ModelSlot, value?.Handle);
                SetModel(value?.Handle ?? Model1Handle.None);
                model = value;
            }
        }

        internal abstract void SetModel(Model1Handle model);
    }
}
