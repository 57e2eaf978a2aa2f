// Vapour–liquid equilibrium of a pure fluid.
using Corvane.Interop;
using static Corvane.Interop.NativeMethods;

namespace Corvane
{
    /// <summary>A state of vapour–liquid equilibrium.</summary>
    public struct SaturationState
    {
        internal SaturationState(double T, double p, double rhoL, double rhoV)
        {
            this.T = T;
            P = p;
            RhoL = rhoL;
            RhoV = rhoV;
        }

        /// <summary>Temperature, K.</summary>
        public double T { get; }

        /// <summary>Pressure, MPa.</summary>
        public double P { get; }

        /// <summary>Density of the liquid, mol/cm³.</summary>
        public double RhoL { get; }

        /// <summary>Density of the vapour, mol/cm³.</summary>
        public double RhoV { get; }
    }

    /// <summary>
    /// The saturation solver with the memory of a march along a curve: one object per curve and thread.
    /// </summary>
    public sealed class Saturation : NativeObject
    {
        private readonly Model1 model;
        private readonly SaturationHandle handle;

        /// <summary>A solver for a model, which it does not own.</summary>
        /// <param name="model">The model; it must live as long.</param>
        public Saturation(Model1 model) : base(Make())
        {
            handle = (SaturationHandle)NativeHandle;
            handle.Hold(0, Model1.HandleOf(model));
            this.model = model;
        }

        /// <summary>The state at T [K]. proceed: start from the last solution instead of the critical
        /// point. Code 0: no solution (at or above the critical point); 9.</summary>
        /// <param name="T">Temperature, K.</param>
        /// <param name="proceed">Start from the last solution, not from the critical point.</param>
        /// <returns>The state.</returns>
        /// <exception cref="ThermodynamicException">0: no solution; 9: no such density.</exception>
        public SaturationState AtT(double T, bool proceed = false)
        {
            double p = 0, rhoL = 0, rhoV = 0;
            Corvane_Saturation_at_T(handle, model.Handle, T, proceed ? 1 : 0, ref p, ref rhoL,
                                    ref rhoV, out CorvaneError e);
            e.Raise();
            return new SaturationState(T, p, rhoL, rhoV);
        }

        /// <summary>The state at p [MPa]; otherwise as <see cref="AtT"/>.</summary>
        /// <param name="p">Pressure, MPa.</param>
        /// <param name="proceed">Start from the last solution, not from the critical point.</param>
        /// <returns>The state.</returns>
        /// <exception cref="ThermodynamicException">0: no solution; 9: no such density.</exception>
        public SaturationState AtP(double p, bool proceed = false)
        {
            double T = 0, rhoL = 0, rhoV = 0;
            Corvane_Saturation_at_p(handle, model.Handle, p, proceed ? 1 : 0, ref T, ref rhoL,
                                    ref rhoV, out CorvaneError e);
            e.Raise();
            return new SaturationState(T, p, rhoL, rhoV);
        }

        private static SaturationHandle Make() =>
            CorvaneError.Check(Corvane_new_Saturation(out CorvaneError e), ref e);
    }
}
