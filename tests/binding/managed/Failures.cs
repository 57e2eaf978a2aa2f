// Failures of operations: the exports that translate exceptions, and the public classes.
using System;
using System.IO;
using Corvane.Interop;
using static Corvane.Interop.NativeMethods;
using static Corvane.Tests.Program;

namespace Corvane.Tests
{
    internal static class Failures
    {
        internal static void Run(string folder)
        {
            string home = Directory.GetCurrentDirectory();
            using (Model1 m = Model1.Open("PR", "methane"))
            using (Model1 empty = new Model1("PR"))
            using (ModelN mixture = ModelN.Open("PR", "vdW1", new[] { "methane", "propane" }))
            {
                string scratch = Path.Combine(Path.GetTempPath(), Path.GetRandomFileName());
                Directory.CreateDirectory(Path.Combine(scratch, "CorvaneS/ideal"));
                Directory.SetCurrentDirectory(scratch);
                try
                {
                    File.WriteAllText("CorvaneS/ideal/unsorted", "3\n300 30\n200 31\n400 32\n");
                    empty.Name = "nothing";
                    Translated(empty, mixture);
                    Public(m, empty, mixture);
                }
                finally
                {
                    Directory.SetCurrentDirectory(home);
                    Directory.Delete(scratch, true);
                }
            }
        }

        // Those without a file or standard input as argument. The code does not cross.
        private static void Translated(Model1 m, ModelN mixture)
        {
            byte[] pr = Utf8.Encode("PR"), no = Utf8.Encode("no_such");
            Pending("attach1", () => CSharp_attach1(no));
            Pending("attachN", () => CSharp_attachN(no, no));
            Pending("Model1_load", () => CSharp_Model1_load(m.Handle, pr));
            Pending("Model1_load_thchem", () => CSharp_Model1_load_thchem(m.Handle));
            Pending("Model1_store", () => CSharp_Model1_store(m.Handle, pr));
            Pending("ModelN_load", () => CSharp_ModelN_load(mixture.Handle, pr, no));
            Pending("ModelN_store2", () => CSharp_ModelN_store2(mixture.Handle, pr, no));
            Pending("Ideal_interval", () => CSharp_Ideal_interval(m.Ideal.Handle, 300));
            Pending("Ideal_load", () => CSharp_Ideal_load(m.Ideal.Handle));
            Pending("Ideal_offset", () => CSharp_Ideal_offset(m.Ideal.Handle, 1, 1));
            Pending("Solid_load", () => CSharp_Solid_load(m.Solid.Handle));
            Pending("Visco_load0", () => CSharp_Visco_load0(m.Visco.Handle));
            Pending("Visco_load1", () => CSharp_Visco_load1(m.Visco.Handle, no));
            Pending("Visco_store1", () => CSharp_Visco_store1(m.Visco.Handle, null, 0));
            m.Name = "unsorted";
            Pending("Ideal_load", () => CSharp_Ideal_load(m.Ideal.Handle), FailureKind.Numerical);
            using (DoubleMatrix wide = new DoubleMatrix(2, 3))
                Pending("doubleM_det", () => CSharp_doubleM_det(wide.Handle),
                        FailureKind.Numerical);
        }

        private static void Pending(string name, Action call,
                                    FailureKind kind = FailureKind.Thermodynamic)
        {
            call();
            string type = kind == FailureKind.Numerical ? "MthException" : "ThException";
            Fails(name, kind, -1, Callbacks.Raise, $"C++ {type} exception thrown");
        }

        private static void Public(Model1 m, Model1 empty, ModelN mixture)
        {
            const FailureKind th = FailureKind.Thermodynamic, mth = FailureKind.Numerical;
            double a = 0, b = 0;
            int i = 0;
            using (DoubleVector x = new DoubleVector(0.5, 0.5))
            using (Saturation s = new Saturation(m))
            {
                Fails("plug-in", th, 1, () => new Model1("no_such"),
                      "could not open file: no plug-in ./CorvaneS/libthno_such.dll or "
                      + "./libthno_such.dll");
                Fails("ideal", th, 3, () => empty.Hm(0.01, 300));
                Fails("no density", th, 9, () => m.Density(-1e6, 300, Phase.Liquid));
                Fails("above critical", th, 0, () => s.AtT(400));
                Fails("maxwell", th, 5, () => Equilibria.Maxwell(m, -1, 150, ref a, ref b));
                Fails("no solid", th, 6, () => m.Solid.Ge(1, 80, ref i, ref a));
                Fails("no viscosity", th, 4, () => m.Visco.Eta0(300));
                Fails("few coefficients", mth, 2, () => m.Visco.SetCoefficients(x));
                Fails("no split", th, 0, () => Equilibria.FfInit(mixture, 0.01, 300));
            }
            // What the native side would not notice is refused before it gets there.
            using (DoubleVector three = new DoubleVector(3))
            {
                Throws<ArgumentException>("length", () => mixture.Z(0.01, 300, three));
                Throws<ArgumentNullException>("composition", () => mixture.Z(0.01, 300, null));
                Throws<ArgumentOutOfRangeException>("component", () => mixture.GetId(0, 2));
                Throws<ArgumentOutOfRangeException>("parameter", () => m[m.ParameterCount] = 1);
                Throws<ArgumentOutOfRangeException>("element", () => a = three[3]);
                Throws<ArgumentOutOfRangeException>("negative", () => a = three[-1]);
                Throws<ArgumentException>("zero in a name", () => m.Name = "a\0b");
                Throws<InvalidOperationException>("components twice", () => mixture.Allocate(2));
                Throws<InvalidOperationException>("a part's owner", () => m.Ideal.Model = empty);
                Throws<ArgumentOutOfRangeException>("pair's parameter", () => mixture[99, 0, 1] = 1);
                Throws<ArgumentException>("one vector twice",
                                          () => Equilibria.ListDifferent(three, 0, three, ref i));
                Throws<ArgumentException>("a delegate that resizes", () => three.Transform(x =>
                {
                    three.Count = 1000;
                    three.Count = 1;
                    return x;
                }));
                Throws<FormatException>(
                    "a delegate's exception",
                    () => three.Transform(x => throw new FormatException()));
            }
        }
    }
}
