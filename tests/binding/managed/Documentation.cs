// Every public member has a summary, every parameter and result a text, every number its unit.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Reflection;
using System.Text.RegularExpressions;
using System.Xml;
using static Corvane.Tests.Program;

namespace Corvane.Tests
{
    internal static class Documentation
    {
        private const BindingFlags Declared = BindingFlags.Public | BindingFlags.NonPublic |
                                              BindingFlags.Instance | BindingFlags.Static |
                                              BindingFlags.DeclaredOnly;

        // What a number is measured in, or why it needs no unit.
        private static readonly Regex Unit = new Regex(
            @"\b(K|MPa|g/mol|kg/mol|cm³/mol|m/s|N/m|J/mol|Pa·s|µPa·s|nm)\b|mol/cm³|MPa⁻¹|K⁻¹|dimensionless|" +
            @"fraction|any unit|of the parameter|relative|unit");

        internal static void Complete(string folder)
        {
            string assembly = typeof(Model1).Assembly.Location;
            var document = new XmlDocument();
            document.Load(Path.ChangeExtension(assembly, "xml"));
            Dictionary<string, XmlElement> entries =
                document.GetElementsByTagName("member").Cast<XmlElement>()
                    .ToDictionary(e => e.GetAttribute("name"));
            int members = 0;
            foreach (Type type in typeof(Model1).Assembly.GetExportedTypes())
            {
                Entry(entries, "T:" + Name(type), type.Name);
                if (typeof(Delegate).IsAssignableFrom(type)) continue;
                foreach (MemberInfo member in type.GetMembers(Declared).Where(Visible))
                {
                    ++members;
                    Check(entries, type, member);
                }
            }
            True("members", members > 300);
        }

        private static void Check(IReadOnlyDictionary<string, XmlElement> entries, Type type,
                                  MemberInfo member)
        {
            var property = member as PropertyInfo;
            var method = member as MethodBase;
            ParameterInfo[] parameters = property?.GetIndexParameters() ??
                                         method?.GetParameters() ?? new ParameterInfo[0];
            string name = member is ConstructorInfo ? "#ctor" : member.Name;
            string arguments = parameters.Length == 0
                ? "" : "(" + string.Join(",", parameters.Select(p => Name(p.ParameterType))) + ")";
            string id = $"{"MPF"[property != null ? 1 : method != null ? 0 : 2]}:{Name(type)}.{name}{arguments}";
            if (name.StartsWith("op_Implicit") || name.StartsWith("op_Explicit"))
                id += "~" + Name(((MethodInfo)method).ReturnType);
            string what = $"{type.Name}.{name}{arguments}";
            XmlElement entry = Entry(entries, id, what);
            if (entry == null || entry["inheritdoc"] != null) return;
            foreach (ParameterInfo p in parameters)
                Text(entry.SelectSingleNode($"param[@name='{p.Name}']")?.InnerText, p.ParameterType,
                     $"{what}: parameter {p.Name}");
            Type result = (method as MethodInfo)?.ReturnType ?? typeof(void);
            if (result != typeof(void)) Text(entry["returns"]?.InnerText, result, what + ": result");
        }

        private static XmlElement Entry(IReadOnlyDictionary<string, XmlElement> entries, string id, string what)
        {
            if (!entries.TryGetValue(id, out XmlElement entry))
                Fail($"{what}: no documentation ({id})");
            else if (entry["inheritdoc"] == null)
                True(what + ": no summary", entry["summary"]?.InnerText.Trim().Length > 3);
            return entry;
        }

        private static void Text(string text, Type type, string what)
        {
            if (string.IsNullOrWhiteSpace(text))
                Fail(what + " is not described");
            else if (type == typeof(double) || type == typeof(double[]) ||
                     type == typeof(double).MakeByRefType())
                True($"{what} has no unit: {text}", Unit.IsMatch(text));
        }

        // Public, or protected; no accessors, which are described with their property.
        private static bool Visible(MemberInfo member)
        {
            if (member is MethodBase method)
            {
                bool accessor = method.IsSpecialName && !method.IsConstructor && !method.Name.StartsWith("op_");
                return (method.IsPublic || method.IsFamily) && !accessor;
            }
            if (member is PropertyInfo property)
                return property.GetAccessors(true).Any(m => m.IsPublic || m.IsFamily);
            return member is FieldInfo field && (field.IsPublic || field.IsFamily) && !field.IsSpecialName;
        }

        // As the compiler writes it in names of members.
        private static string Name(Type type)
        {
            if (type.IsByRef) return Name(type.GetElementType()) + "@";
            if (type.IsArray) return Name(type.GetElementType()) + "[]";
            if (!type.IsGenericType) return type.FullName.Replace('+', '.');
            string generic = type.GetGenericTypeDefinition().FullName.Split('`')[0];
            return generic + "{" + string.Join(",", type.GetGenericArguments().Select(Name)) + "}";
        }
    }
}
