// A saturation table of carbon dioxide and a p-x-y diagram of methane + propane, both from the
// Peng-Robinson equation. Run it in a data home, the folder that holds CorvaneS.
using System;
using Corvane;

internal static class Program
{
    private static int Main()
    {
        try
        {
            SaturationTable("carbon_dioxide", 220, 300, 10);
            Console.WriteLine();
            PressureComposition("methane", "propane", 213.71, 0.05);
            return 0;
        }
        catch (ThermodynamicException e)
        {
            Console.Error.WriteLine(Line($"{e.Kind} failure {e.Number}: {e.Message}"));
            return 1;
        }
    }

    private static void SaturationTable(string substance, double first, double last, double step)
    {
        using (Model1 fluid = Model1.Open("PR", substance))
        using (Saturation saturation = new Saturation(fluid))
        {
            Console.WriteLine("# " + fluid.Name + ", " + fluid.Eos + ": " + fluid.Comment);
            Console.WriteLine("#  T/K    p/MPa  rhoL/(mol/dm3)  rhoV/(mol/dm3)  hvap/(J/mol)");
            for (double T = first; T <= last; T += step)
            {
                SaturationState s = saturation.AtT(T, proceed: T > first);
                double hvap = Constants.R * T * (fluid.Hm(s.RhoV, T) - fluid.Hm(s.RhoL, T));
                Console.WriteLine(Line(
                    $"{T,6:F1}{s.P,9:F4}{1e3 * s.RhoL,16:F4}{1e3 * s.RhoV,16:F5}{hvap,14:F1}"));
            }
        }
    }

    // Bubble points from pure b on, until the phases become one at the mixture's critical point.
    private static void PressureComposition(string a, string b, double T, double step)
    {
        using (ModelN mixture = ModelN.Open("PR", "vdW1", new[] { a, b }))
        using (Saturation saturation = new Saturation(mixture.Components[1]))
        {
            Console.WriteLine(Line($"# {a} + {b}, {mixture.Eos}+{mixture.Mixing}, {T} K: ")
                              + mixture.GetComment(0, 1));
            Console.WriteLine("#   x_a     y_a     p/MPa  rhoL/(mol/dm3)  rhoV/(mol/dm3)");
            SaturationState pure = saturation.AtT(T);
            Row(0, 0, pure.P, pure.RhoL, pure.RhoV);

            DoubleVector x = new DoubleVector(step, 1 - step);
            DoubleVector vapour = WilsonStart(mixture, T, x);
            double p = 0, liquid = pure.RhoL;
            for (int i = 1; i * step < 1; ++i)
            {
                x[0] = i * step;
                x[1] = 1 - x[0];
                try
                {
                    Equilibria.VleT(mixture, T, x, ref p, ref liquid, vapour);
                }
                catch (ThermodynamicException)
                {
                    Console.WriteLine(Line($"# no second phase at x_a = {x[0]:F2}"));
                    break;
                }
                Row(x[0], vapour[0] / vapour.Sum(), p, liquid, vapour.Sum());
            }
        }
    }

    private static void Row(double x, double y, double p, double rhoL, double rhoV)
    {
        Console.WriteLine(
            Line($"{x,7:F4} {y,7:F4} {p,9:F5}{1e3 * rhoL,16:F4}{1e3 * rhoV,16:F5}"));
    }

    // Partial densities of an ideal vapour above a liquid x, from Wilson's K factors.
    private static DoubleVector WilsonStart(ModelN mixture, double T, DoubleVector x)
    {
        DoubleVector rho = new DoubleVector(mixture.Count);
        for (int i = 0; i < mixture.Count; ++i)
        {
            Model1 c = mixture.Components[i];
            double partial = x[i] * c.Pcrit * Math.Exp(5.373 * (1 + c.Omega) * (1 - c.Tcrit / T));
            rho[i] = partial / (Constants.R * T);
        }
        return rho;
    }

    private static string Line(FormattableString text) => FormattableString.Invariant(text);
}
