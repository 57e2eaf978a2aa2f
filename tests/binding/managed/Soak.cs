// Many calls from several threads, and garbage collections while calls are under way.
using System;
using System.IO;
using System.Linq;
using System.Threading;
using static Corvane.Tests.Program;

namespace Corvane.Tests
{
    internal static class Soak
    {
        private const int CallsPerThread = 100000, CallsPerRound = 5, Temperatures = 50;

        // Each thread has a fluid of its own; its results are those of a single thread, to the bit.
        internal static void Threads(string folder)
        {
            string[] names = { "methane", "ethane", "propane", "carbon_dioxide" };
            double[][] expected = names.Select(name => Rounds(name, Temperatures, null)).ToArray();
            RunThreads(names, CallsPerThread, expected);  // warm-up: the collector's heap grows once
            long before = Resident();
            RunThreads(names, CallsPerThread, expected);
            // The leak of one vector of 32 numbers per round would be 20 MB.
            long growth = Resident() - before;
            True($"grown by {growth} kB", growth < 5000);
        }

        private static void RunThreads(string[] names, int calls, double[][] expected)
        {
            Thread[] threads = names.Select((name, k) => new Thread(
                () => Rounds(name, calls / CallsPerRound, expected[k]))).ToArray();
            foreach (Thread thread in threads) thread.Start();
            foreach (Thread thread in threads) thread.Join();
        }

        /// <summary>Rounds of five calls along the saturation curve; compares with what was expected or
        /// returns it.</summary>
        private static double[] Rounds(string name, int rounds, double[] expected)
        {
            double[] results = new double[Temperatures];
            using (Model1 m = Model1.Open("PR", name))
            using (Saturation saturation = new Saturation(m))
            {
                for (int k = 0; k < rounds; ++k)
                {
                    double T = m.Tcrit * (0.6 + 0.3 * (k % Temperatures) / Temperatures);
                    SaturationState s = saturation.AtT(T);
                    double rho = 0;
                    double h = m.Hm(s.RhoV, T) - m.Hr(2 * s.P, T, Phase.Liquid, ref rho);
                    using (DoubleVector v = new DoubleVector(32))
                    {
                        v[k % 32] = s.P + h + rho;
                        results[k % Temperatures] = v.Sum();
                    }
                    if (expected != null && results[k % Temperatures] != expected[k % Temperatures])
                        Fail($"{name}: another result at {T} K");
                    if (k % 1000 != 0) continue;
                    string file = name + k;
                    Fails(file, FailureKind.Thermodynamic, 1, () => m.Load(file));
                    Equal("name", m.Name, name);
                }
            }
            return results;
        }

        private static long Resident()
        {
            GC.Collect();
            GC.WaitForPendingFinalizers();
            string line = File.ReadLines("/proc/self/status").First(l => l.StartsWith("VmRSS"));
            return long.Parse(new string(line.Where(char.IsDigit).ToArray()));
        }

        // Nothing is disposed: finalizers release models, mixtures and vectors while others compute.
        internal static void Collection(string folder)
        {
            bool done = false;
            Thread collector = new Thread(() =>
            {
                while (!Volatile.Read(ref done))
                {
                    GC.Collect();
                    Thread.Yield();
                }
            });
            collector.Start();
            for (int k = 0; k < 300; ++k)
            {
                // The object is garbage as soon as its call has begun.
                double z = new Model1("PR") { Name = "methane", Id = 1 }.Loaded().Z(0.01, 200);
                if (!(Math.Abs(z) < 10)) Fail("Z " + z);
                Equal("sum", new DoubleVector(Enumerable.Repeat(0.5, 100).ToArray()).Sum(), 50.0);
                double seen = 0;
                new DoubleVector(1.0, 2.0).Transform(x =>
                {
                    GC.Collect(0);
                    seen += x;
                    return x;
                });
                Equal("callback", seen, 3.0);
            }
            Volatile.Write(ref done, true);
            collector.Join();
        }

        private static Model1 Loaded(this Model1 model)
        {
            model.Load("PR");
            return model;
        }
    }
}
