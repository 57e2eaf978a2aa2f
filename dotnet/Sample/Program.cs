// A saturation table of carbon dioxide and a p-x-y diagram of methane + propane, both from the
// Peng-Robinson equation. Runs in any directory.
using System;
using System.Globalization;
using Corvane;

internal static class Program
{
    private static int Main()
    {
        try
        {
            SaturationTable("CO2", 220, 300, 10);
            Console.WriteLine();
            PressureComposition("methane", "propane", 213.71, 0.05);
            return 0;
        }
        catch (ThermodynamicException e)
        {
            Console.Error.WriteLine($"{e.Code}: {e.Message}");
            return 1;
        }
    }

    private static void SaturationTable(string substance, double first, double last, double step)
    {
        using (Fluid fluid = Fluid.Open("PR", substance))
        {
            Console.WriteLine($"# {fluid.Substance}, {fluid.Equation}: {fluid.Model.Comment}");
            Console.WriteLine("#  T/K    p/MPa  rhoL/(mol/dm3)  rhoV/(mol/dm3)  hvap/(J/mol)");
            for (double T = first; T <= last; T += step)
            {
                State s = fluid.State(Quantity.T, T, Quantity.Q, 0);
                EquilibriumPhase liquid = s.Phases[0], vapour = s.Phases[1];
                Row("{0,6:F1}{1,9:F4}{2,16:F4}{3,16:F5}{4,14:F1}", T, s.P, 1e3 * liquid.Rho,
                    1e3 * vapour.Rho, vapour.H - liquid.H);
            }
        }
    }

    // Bubble points from pure b on, up to the mixture's critical point.
    private static void PressureComposition(string a, string b, double T, double step)
    {
        using (Mixture mixture = Mixture.Open("PR+vdW1", a, b))
        {
            Row("# {0} + {1}, {2}, {3} K: {4}", a, b, mixture.Name, T,
                mixture.Model.GetComment(0, 1));
            Console.WriteLine("#   x_a     y_a     p/MPa  rhoL/(mol/dm3)  rhoV/(mol/dm3)");
            for (int i = 0; i * step < 1; ++i)
            {
                double x = i * step;
                try
                {
                    SaturationPoint q = mixture.BubbleT(T, new[] { x, 1 - x });
                    Row("{0,7:F4} {1,7:F4} {2,9:F5}{3,16:F4}{4,16:F5}", x, q.Incipient.X[0], q.P,
                        1e3 * q.Given.Rho, 1e3 * q.Incipient.Rho);
                }
                catch (ThermodynamicException e) when (e.Code == FailureCode.NoSolution)
                {
                    Row("# no second phase at x_a = {0:F2}", x);
                    break;
                }
            }
        }
    }

    private static void Row(string format, params object[] values)
    {
        Console.WriteLine(string.Format(CultureInfo.InvariantCulture, format, values));
    }
}
