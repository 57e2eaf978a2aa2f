// The imports against the list of exports, and every refusal of a null handle.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;
using System.Text.RegularExpressions;
using Corvane.Interop;
using static Corvane.Tests.Program;

namespace Corvane.Tests
{
    internal static class Imports
    {
        private const BindingFlags Hidden =
            BindingFlags.NonPublic | BindingFlags.Static | BindingFlags.Instance;

        private static readonly Dictionary<string, MethodInfo> Methods =
            typeof(NativeMethods).GetMethods(Hidden)
                .Where(m => (m.Attributes & MethodAttributes.PinvokeImpl) != 0)
                .ToDictionary(m => m.Name);

        internal static void MatchTheList(string folder)
        {
            Dictionary<string, string> list =
                File.ReadLines(Path.Combine(folder, "exports.txt"))
                    .Where(line => !line.StartsWith("#"))
                    .Select(line => line.Split(' '))
                    .ToDictionary(words => words[0], words => words[1]);
            foreach (string name in list.Keys.Except(Methods.Keys)) Fail(name + " is not imported");
            foreach (string name in Methods.Keys.Except(list.Keys)) Fail(name + " is not exported");
            foreach (MethodInfo m in Methods.Values.Where(m => list.ContainsKey(m.Name)))
            {
                string arguments = string.Concat(
                    m.GetParameters().Select(p => Kind(p.ParameterType)));
                Equal(m.Name, $"{Kind(m.ReturnType)}({arguments})", list[m.Name]);
            }
        }

        private static char Kind(Type type) =>
            type == typeof(void) ? 'v' : type == typeof(int) ? 'i' : type == typeof(uint) ? 'u'
            : type == typeof(double) ? 'd' : 'p';

        // The table the native test walks. What crosses by ref cannot be null here.
        internal static void RefuseNull(string folder)
        {
            Regex row = new Regex("^(FLAT|GUARDED)\\((\\w+), (\\d), \"(.*)\"\\)");
            int rows = 0;
            foreach (string line in File.ReadLines(Path.Combine(folder, "refusals.inc")))
            {
                Match m = row.Match(line);
                if (!m.Success) continue;
                string name = m.Groups[2].Value, text = m.Groups[4].Value;
                int position = int.Parse(m.Groups[3].Value);
                MethodInfo flat = Methods["CSharp_" + name];
                if (flat.GetParameters()[position].ParameterType.IsByRef) continue;
                ++rows;
                CallWithNull(flat, position, out _);
                Fails(name, FailureKind.NullArgument, -1, Callbacks.Raise, text);
                Callbacks.Raise();  // raised once
                if (m.Groups[1].Value == "FLAT") continue;
                CallWithNull(Methods["Corvane_" + name], position, out object record);
                Fails(name, FailureKind.NullArgument, 0, ((CorvaneError)record).Raise, text);
                Callbacks.Raise();  // the guarded family calls nothing back
            }
            Equal("rows", rows, 87 - 5);
        }

        private static void CallWithNull(MethodInfo import, int position, out object record)
        {
            object[] arguments = import.GetParameters()
                .Select((p, i) => Argument(p.ParameterType, i >= position)).ToArray();
            object result = import.Invoke(null, arguments);
            record = arguments.Last();
            if (result is SafeHandle handle) True(import.Name, handle.IsInvalid);
            else if (result != null) True(import.Name, Convert.ToDouble(result) == 0);
        }

        // Handles of address 0, or of one that must not be used.
        private static object Argument(Type type, bool isNull)
        {
            if (type.IsByRef) type = type.GetElementType();
            if (type == typeof(CorvaneHandle)) type = typeof(Model1Handle);
            if (typeof(CorvaneHandle).IsAssignableFrom(type))
                return Activator.CreateInstance(
                    type, Hidden, null, new object[] { (IntPtr)(isNull ? 0 : 16), null }, null);
            return type.IsValueType ? Activator.CreateInstance(type) : null;
        }
    }
}
