using System;
using System.Collections.Generic;

namespace Corvane
{
    /// <summary>Densities through the interface between a liquid and a vapour, by density-gradient theory.</summary>
    public sealed class InterfaceProfile
    {
        internal InterfaceProfile(double[] values, int points, int components, double[] summary)
        {
            Tension = summary[0];
            TensionError = summary[1];
            Thickness = summary[2];
            double[] z = new double[points], excess = new double[points];
            double[][] rho = new double[points][];
            for (int k = 0; k < points; ++k)
            {
                int first = k * (components + 2);
                z[k] = values[first];
                excess[k] = values[first + 1];
                rho[k] = new double[components];
                Array.Copy(values, first + 2, rho[k], 0, components);
            }
            Z = z;
            Excess = excess;
            Densities = rho;
        }

        /// <summary>N/m.</summary>
        public double Tension { get; }
        /// <summary>Relative, from half the points.</summary>
        public double TensionError { get; }
        /// <summary>From 10 to 90 % of the way, nm.</summary>
        public double Thickness { get; }
        /// <summary>Places, nm, rising into the liquid; 0 half-way.</summary>
        public IReadOnlyList<double> Z { get; }
        /// <summary>Grand potential above that of the phases at Z, MPa.</summary>
        public IReadOnlyList<double> Excess { get; }
        /// <summary>Partial densities at Z, mol/cm³: all components at each place.</summary>
        public IReadOnlyList<double[]> Densities { get; }
    }
}
