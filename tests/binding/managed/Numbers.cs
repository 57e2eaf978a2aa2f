// Results with all their bits, one "name bits" a line; managed_test.cpp holds them against C++.
using System;
using System.Linq;
using Corvane;

namespace Corvane.Tests
{
    internal static class Numbers
    {
        internal static void Print(string folder)
        {
            const double T = 180, p = 4;
            using (Model1 m = Model1.Open("PR", "methane"))
            using (Saturation saturation = new Saturation(m))
            {
                SaturationState s = saturation.AtT(T);
                Show("sat.p", s.P);
                Show("sat.rhoL", s.RhoL);
                Show("sat.rhoV", s.RhoV);
                Show("sat.T", saturation.AtP(1).T);
                Show("Z", m.Z(s.RhoL, T));
                Show("Hm", m.Hm(s.RhoL, T));
                Show("Sm", m.Sm(s.RhoV, T));
                Show("B", m.B(T, 2));
                double rho = 0;
                Show("Cpm", m.Cpm(p, T, Phase.Liquid, ref rho));
                Show("rho", rho);
                Show("crit", m.Crit(T, 0.01, 0.3)[1]);
                using (DoubleVector roots = new DoubleVector(3))
                {
                    VolumeFinder.Volume(m, s.P, T, m.Vs, roots);
                    Show("root", roots[0]);
                }
            }
            using (ModelN m = ModelN.Open("PR", "vdW1", new[] { "methane", "propane" }))
            using (DoubleVector x = new DoubleVector(0.3, 0.7))
            using (DoubleVector vapour = new DoubleVector(1e-3, 1e-4))
            {
                double pressure = 0, liquid = 0.016;
                Equilibria.VleT(m, 213.71, x, ref pressure, ref liquid, vapour);
                Show("vle.p", pressure);
                Show("vle.rho", liquid);
                Show("vle.y", vapour[1]);
                Show("my", m.My(liquid, 213.71, x, 1));
                Show("PsiH", m.PsiH(vapour, 213.71)[0, 1]);
                Show("cp", m.HeatCapacities(liquid, 213.71, x).Cpm);
            }
            using (Mixture m = Mixture.Open("PR+vdW1", "methane", "propane"))
            {
                FlashResult f = m.FlashPH(2, 230, 0.3, 0.7);
                Show("flash.T", f.T);
                Show("flash.x", f.Phases[1].X[1]);
                Show("flash.error", f.Certificate.XError);
                Show("dew.rho", m.DewP(2, new[] { 0.3, 0.7 }).Incipient.Rho);
                Show("phase.w", m.Phase(300, 1e-3, 0.3, 0.7).Phases[0].SpeedOfSound);
                Show("mixture.viscosity", m.Viscosity(300, 1e-3, 0.3, 0.7).Value);
                Show("mixture.conductivity", m.ThermalConductivity(300, 1e-3, 0.3, 0.7).Value);
                SaturationPoint bubble = m.BubbleT(250, new[] { 0.3, 0.7 });
                InterfaceProfile profile = m.Interface(250, bubble.Phases[0].Rho, bubble.Phases[0].X.ToArray(),
                                                       bubble.Phases[1].Rho, bubble.Phases[1].X.ToArray());
                Show("interface.tension", profile.Tension);
                Show("interface.thickness", profile.Thickness);
                Show("interface.z", profile.Z[profile.Z.Count - 1]);
                Show("interface.rho", profile.Densities[5][1]);
                Show("mixture.tension", m.SurfaceTension(250, 0.014, new[] { 0.3, 0.7 }, 1e-3, new[] { 0.9, 0.1 }));
            }
            using (Fluid propane = Fluid.Open("PR", "propane"))
            {
                Show("viscosity", propane.Viscosity(300, 1e-3).Value);
                Show("conductivity", propane.ThermalConductivity(300, 1e-3).Value);
                Show("tension", propane.SurfaceTension(300).Value);
            }
        }

        private static void Show(string name, double value)
        {
            Console.WriteLine($"{name} {BitConverter.DoubleToInt64Bits(value):x16}");
        }
    }
}
