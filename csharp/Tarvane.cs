// tarvane for C#: the vessel library, by vessel.h. This file is all there is to compile; it needs C# 6, .NET
// Framework 4.5, Mono or .NET.
//
//   using (var vessel = new Tarvane.Vessel())
//   {
//       var request = new Tarvane.Values();
//       request.Put("shell[0].P", 150.0);
//       Tarvane.Result result = vessel.Calculate(request);
//       double? mawp = result["shell[0]"].Result("mawp");
//   }
//
// The runtime finds the library as tarvane_vessel: tarvane_vessel.dll on Windows, of the word size of the process,
// libtarvane_vessel.so elsewhere, beside the program or where the system looks. Its calls are __cdecl, in 32 bits,
// too.
//
// Numbers are in the units of the request, those of a result in the same; each is a single, so a cast to float loses
// nothing. Values have paths: "flange[0].P", "flange[0].results.mawp"; places of lists count from 0 on.
//
// A Vessel and Values belong to one thread at a time. Calculations of several take turns.
using System;
using System.Collections.Generic;
using System.Globalization;
using System.Runtime.InteropServices;
using System.Text;

namespace Tarvane
{
    /// <summary>What is wrong: the path of the field, empty for the request as a whole; the value that was given, empty
    /// where none was; and why it can't be accepted.</summary>
    public sealed class Fault
    {
        public readonly string Field, Value, Reason;
        public Fault(string field, string value, string reason)
        {
            Field = field;
            Value = value;
            Reason = reason;
        }
        public override string ToString()
        {
            return Field.Length == 0 ? Reason : Field + ": " + Reason;
        }
    }

    /// <summary>A call failed. Faults has all that is wrong, in the order of the request, one at least.</summary>
    public class TarvaneException : Exception
    {
        public readonly Status Status;
        public readonly IList<Fault> Faults;
        public string Field { get { return Faults[0].Field; } }
        public string Value { get { return Faults[0].Value; } }
        public string Reason { get { return Faults[0].Reason; } }

        internal TarvaneException(Status status, IList<Fault> faults) : base(Words(faults))
        {
            Status = status;
            Faults = faults;
        }
        private static string Words(IList<Fault> faults)
        {
            return faults[0] + (faults.Count > 1 ? " (and " + (faults.Count - 1) + " more)" : "");
        }
    }

    /// <summary>The request can't be calculated as it is, or a path has nothing.</summary>
    public sealed class InputException : TarvaneException
    {
        internal InputException(IList<Fault> faults) : base(Status.Faulty, faults) { }
        internal InputException(string field, string value, string reason)
            : this(new[] { new Fault(field, value, reason) }) { }
    }

    /// <summary>How a call ended.</summary>
    public enum Status
    {
        Ok = 0,
        Faulty = 1,        // all faults are listed, nothing was calculated
        EngineStopped = 2, // the value of the fault is the engine's code
        NoData = 3,        // the data folder, or a file in it, is missing or unreadable
        Internal = 4
    }

    /// <summary>What a result has besides verdicts and inputs.</summary>
    [Flags]
    public enum Want
    {
        Verdicts = 0,
        Results = 1,
        Report = 2,
        Drawings = 8
    }

    /// <summary>Kinds of a value.</summary>
    public enum Kind
    {
        Nothing = 0,
        Null = 1,
        Flag = 2,
        Number = 3,
        Text = 4,
        List = 5,
        Object = 6
    }

    /// <summary>Values by paths: a request that is made, a result that is read. Dispose frees them at once, else the
    /// garbage collector does.</summary>
    public sealed class Values : IDisposable
    {
        internal readonly ValuesHandle Handle;

        /// <summary>None yet, or those of a JSON text. Throws InputException for what is no JSON.</summary>
        public Values(string json = "") : this(Native.tarvane_values(Native.Bytes(json))) { }
        internal Values(ValuesHandle handle)
        {
            Handle = handle;
            if (handle.IsInvalid) throw Native.Failure((int)Status.Faulty, IntPtr.Zero);
        }
        public void Dispose() { Handle.Dispose(); }

        /// <summary>Throws InputException for a path that leads nowhere and a number that is not finite.</summary>
        public void Put(string path, double number)
        {
            Native.Check(Native.tarvane_put_number(Handle, Native.Bytes(path), number));
        }
        public void Put(string path, string text)
        {
            Native.Check(Native.tarvane_put_text(Handle, Native.Bytes(path), Native.Bytes(text)));
        }
        public void Put(string path, bool flag)
        {
            Native.Check(Native.tarvane_put_flag(Handle, Native.Bytes(path), flag ? 1 : 0));
        }
        /// <summary>A number in a unit of its own, "mm".</summary>
        public void Put(string path, double number, string unit)
        {
            if (double.IsNaN(number) || double.IsInfinity(number)) Put(path, number);
            Put(path, number.ToString("R", CultureInfo.InvariantCulture) + " " + unit);
        }

        public Kind KindOf(string path) { return (Kind)Native.tarvane_kind(Handle, Native.Bytes(path)); }
        /// <summary>Of a flag 1 or 0; null where there is none.</summary>
        public double? Number(string path)
        {
            double found = Native.tarvane_number(Handle, Native.Bytes(path));
            return double.IsNaN(found) ? (double?)null : found;
        }
        /// <summary>null where there is none.</summary>
        public string Text(string path) { return Kept(Native.tarvane_text(Handle, Native.Bytes(path))); }
        /// <summary>Items of a list, or members of an object.</summary>
        public int Count(string path) { return (int)Native.tarvane_count(Handle, Native.Bytes(path)); }
        /// <summary>Names of the members of an object, in their order.</summary>
        public IList<string> Names(string path)
        {
            var names = new List<string>();
            byte[] bytes = Native.Bytes(path);
            for (long k = 0;; ++k)
            {
                string name = Kept(Native.tarvane_name(Handle, bytes, k));
                if (name == null) return names;
                names.Add(name);
            }
        }
        /// <summary>All of it as JSON.</summary>
        public string Json { get { return Kept(Native.tarvane_json(Handle)); } }

        // A text of these values, which must live until it is copied.
        private string Kept(IntPtr address)
        {
            string text = Native.Text(address);
            GC.KeepAlive(this);
            return text;
        }
    }

    /// <summary>A check: Demand Operation Limit, in Unit. A text that it does not have is empty.</summary>
    public sealed class Check
    {
        public readonly string Id, Paragraph, Case, Operation, Unit, State, Force, Reason, Remark, Step;
        public readonly bool Waivable;
        public readonly double? Demand, Limit, Ratio;
        public bool Passed { get { return State == "pass"; } }

        internal Check(Values values, string row)
        {
            Func<string, string> text = name => values.Text(row + name) ?? "";
            Id = text(".id");
            Paragraph = text(".paragraph");
            Case = text(".case");
            Operation = text(".operator");
            Unit = text(".unit");
            State = text(".state");
            Force = text(".force");
            Reason = text(".reason");
            Remark = text(".remark");
            Step = text(".step");
            Waivable = values.Number(row + ".waivable") == 1.0;
            Demand = values.Number(row + ".demand");
            Limit = values.Number(row + ".limit");
            Ratio = values.Number(row + ".ratio");
        }
    }

    /// <summary>A component of a result. A text that the result does not have is empty.</summary>
    public sealed class Component
    {
        private readonly Values values;
        public readonly string Path;

        internal Component(Values values, string path)
        {
            this.values = values;
            Path = path;
        }
        private string TextOf(string name) { return values.Text(Path + "." + name) ?? ""; }

        public string Description { get { return TextOf("description"); } }
        /// <summary>"pass", "fail" or "not made".</summary>
        public string Verdict { get { return TextOf("verdict"); } }
        public bool Passed { get { return Verdict == "pass"; } }
        public string Says { get { return TextOf("says"); } }
        public string Governing { get { return TextOf("governing"); } }
        public IList<string> ResultNames { get { return values.Names(Path + ".results"); } }

        private Kind Known(string name)
        {
            string path = Path + ".results." + name;
            Kind kind = values.KindOf(path);
            if (kind == Kind.Nothing) throw new InputException(path, "", "there is no result of this name");
            return kind;
        }
        /// <summary>A number by its name, "mawp", in the units of the request; a flag as 1 or 0; null where there is
        /// no value: Why has the reason. Throws InputException for a name that is none, and for a choice.</summary>
        public double? Result(string name)
        {
            if (Known(name) == Kind.Text)
                throw new InputException(Path + ".results." + name, Choice(name), "this result is a choice, no number");
            return values.Number(Path + ".results." + name);
        }
        /// <summary>A result that is a choice; null where there is no value.</summary>
        public string Choice(string name)
        {
            Kind kind = Known(name);
            if (kind != Kind.Text && kind != Kind.Null)
                throw new InputException(Path + ".results." + name, "", "this result is a number, no choice");
            return values.Text(Path + ".results." + name);
        }
        /// <summary>Why a result has no value; empty where it has one.</summary>
        public string Why(string name)
        {
            Known(name);
            return TextOf("why." + name);
        }
        /// <summary>The greatest pressure at which the checks pass; null where there is none, or it was not looked
        /// for.</summary>
        public double? RatedPressure { get { return values.Number(Path + ".rating.pressure"); } }
        /// <summary>The worst first.</summary>
        public IList<Check> Checks
        {
            get
            {
                var checks = new List<Check>();
                for (int k = 0; k < values.Count(Path + ".checks"); ++k)
                    checks.Add(new Check(values, Path + ".checks[" + k + "]"));
                return checks;
            }
        }
        /// <summary>The lines of the report, each with a line feed; empty unless it was wanted.</summary>
        public string Report
        {
            get
            {
                var lines = new StringBuilder();
                for (int k = 0; k < values.Count(Path + ".report"); ++k)
                    lines.Append(TextOf("report[" + k + "].text")).Append('\n');
                return lines.ToString();
            }
        }
    }

    /// <summary>A result.</summary>
    public sealed class Result
    {
        /// <summary>All of it, by paths.</summary>
        public readonly Values Values;
        internal Result(Values values) { Values = values; }

        public string Verdict { get { return Values.Text("verdict"); } }
        public bool Passed { get { return Verdict == "pass"; } }
        public string Says { get { return Values.Text("says"); } }
        /// <summary>"flange[0]". Throws InputException if there is none.</summary>
        public Component this[string path]
        {
            get
            {
                if (Values.Text(path + ".verdict") == null)
                    throw new InputException(path, "", "the result has no such component");
                return new Component(Values, path);
            }
        }
    }

    /// <summary>The outputs of a sweep.</summary>
    public sealed class Sweep
    {
        /// <summary>Rows by outputs; NaN where there is no value.</summary>
        public readonly double[,] Y;
        /// <summary>The first fault of each row, null where it has none.</summary>
        public readonly Fault[] Faults;
        internal Sweep(double[,] y, Fault[] faults)
        {
            Y = y;
            Faults = faults;
        }
    }

    /// <summary>A folder of data files.</summary>
    public sealed class Vessel : IDisposable
    {
        private readonly VesselHandle handle;

        /// <summary>Without a folder the library looks for one. Throws TarvaneException where it, or files in it, are
        /// missing, and for a library of another ABI; DllNotFoundException where there is no library.</summary>
        public Vessel(string dataFolder = "")
        {
            int status = Native.tarvane_open(Native.Abi, Native.Bytes(dataFolder), out handle);
            if (status == (int)Status.Ok) return;
            handle.Dispose();
            throw Native.Failure(status, IntPtr.Zero);
        }
        public void Dispose() { handle.Dispose(); }

        /// <summary>Of the library: "1.0.0".</summary>
        public static string Version { get { return Native.Text(Native.tarvane_version()); } }

        /// <summary>Throws InputException with all faults of the request, and TarvaneException.</summary>
        public Result Calculate(Values request, Want want = Want.Results)
        {
            IntPtr json;
            int status = Native.tarvane_calculate(handle, Native.tarvane_json(request.Handle), (int)want, out json);
            GC.KeepAlive(request);
            Check(status);
            var result = new Values(Native.tarvane_values(json));
            GC.KeepAlive(this);
            return new Result(result);
        }

        /// <summary>One request with many values, x rows by inputs. Throws as Calculate for a request that is at fault
        /// whatever the inputs, and for unknown names.</summary>
        public Sweep Sweep(Values request, string[] inputs, string[] outputs, double[,] x)
        {
            if (x.GetLength(1) != inputs.Length)
                throw new InputException("x", x.GetLength(1) + " columns", inputs.Length + " inputs are expected");
            int rows = x.GetLength(0);
            var y = new double[rows, outputs.Length];
            var fault = new int[rows];
            int status;
            long done;
            using (var names = new NameList(inputs))
            using (var results = new NameList(outputs))
                status = Native.tarvane_sweep(handle, Native.tarvane_json(request.Handle), names.Addresses,
                                              results.Addresses, rows, x, y, fault, IntPtr.Zero, IntPtr.Zero, out done);
            GC.KeepAlive(request);
            Check(status);
            IList<Fault> all = Native.FaultsOf(Native.tarvane_last_error(handle));
            var ofRows = new Fault[rows];
            for (int row = 0; row < rows; ++row)
                if (fault[row] > 0) ofRows[row] = all[fault[row] - 1];
            GC.KeepAlive(this);
            return new Sweep(y, ofRows);
        }

        /// <summary>"input", "result" or "keys", JSON.</summary>
        public string Schema(string what)
        {
            string text = Native.Text(Native.tarvane_schema(handle, Native.Bytes(what)));
            if (text == null) Check((int)Status.Faulty);
            GC.KeepAlive(this);
            return text;
        }

        private void Check(int status)
        {
            if (status == (int)Status.Ok) return;
            TarvaneException failure = Native.Failure(status, Native.tarvane_last_error(handle));
            GC.KeepAlive(this);
            throw failure;
        }
    }

    internal sealed class VesselHandle : SafeHandle
    {
        private VesselHandle() : base(IntPtr.Zero, true) { }
        public override bool IsInvalid { get { return handle == IntPtr.Zero; } }
        protected override bool ReleaseHandle()
        {
            Native.tarvane_close(handle);
            return true;
        }
    }

    internal sealed class ValuesHandle : SafeHandle
    {
        private ValuesHandle() : base(IntPtr.Zero, true) { }
        public override bool IsInvalid { get { return handle == IntPtr.Zero; } }
        protected override bool ReleaseHandle()
        {
            Native.tarvane_values_close(handle);
            return true;
        }
    }

    // Names in UTF-8, and their addresses with a null pointer after them.
    internal sealed class NameList : IDisposable
    {
        internal readonly IntPtr[] Addresses;
        internal NameList(string[] names)
        {
            Addresses = new IntPtr[names.Length + 1];
            for (int i = 0; i < names.Length; ++i)
            {
                byte[] bytes = Native.Bytes(names[i]);
                Addresses[i] = Marshal.AllocHGlobal(bytes.Length);
                Marshal.Copy(bytes, 0, Addresses[i], bytes.Length);
            }
        }
        public void Dispose()
        {
            foreach (IntPtr address in Addresses) Marshal.FreeHGlobal(address);
        }
    }

    // The calls of vessel.h.
    internal static class Native
    {
        internal const int Abi = 1;
        private const string Library = "tarvane_vessel";
        private const CallingConvention Convention = CallingConvention.Cdecl;

        [DllImport(Library, CallingConvention = Convention)]
        internal static extern int tarvane_open(int abi, byte[] dataFolder, out VesselHandle vessel);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern void tarvane_close(IntPtr vessel);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern IntPtr tarvane_version();
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern IntPtr tarvane_last_error(VesselHandle vessel);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern IntPtr tarvane_last_error(IntPtr none);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern IntPtr tarvane_schema(VesselHandle vessel, byte[] what);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern int tarvane_calculate(VesselHandle vessel, IntPtr request, int want, out IntPtr result);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern int tarvane_sweep(VesselHandle vessel, IntPtr request, IntPtr[] inputs, IntPtr[] outputs,
                                                 long rows, double[,] x, [In, Out] double[,] y, [In, Out] int[] fault,
                                                 IntPtr progress, IntPtr user, out long done);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern ValuesHandle tarvane_values(byte[] json);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern ValuesHandle tarvane_values(IntPtr json);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern void tarvane_values_close(IntPtr values);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern int tarvane_put_number(ValuesHandle values, byte[] path, double number);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern int tarvane_put_text(ValuesHandle values, byte[] path, byte[] text);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern int tarvane_put_flag(ValuesHandle values, byte[] path, int flag);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern IntPtr tarvane_json(ValuesHandle values);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern int tarvane_kind(ValuesHandle values, byte[] path);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern double tarvane_number(ValuesHandle values, byte[] path);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern IntPtr tarvane_text(ValuesHandle values, byte[] path);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern long tarvane_count(ValuesHandle values, byte[] path);
        [DllImport(Library, CallingConvention = Convention)]
        internal static extern IntPtr tarvane_name(ValuesHandle values, byte[] path, long place);

        // UTF-8 with a NUL at its end, and back; the runtime's own texts are in other encodings.
        internal static byte[] Bytes(string text) { return Encoding.UTF8.GetBytes((text ?? "") + '\0'); }
        internal static string Text(IntPtr address)
        {
            if (address == IntPtr.Zero) return null;
            int length = 0;
            while (Marshal.ReadByte(address, length) != 0) ++length;
            var bytes = new byte[length];
            Marshal.Copy(address, bytes, 0, length);
            return Encoding.UTF8.GetString(bytes);
        }

        internal static IList<Fault> FaultsOf(IntPtr json)
        {
            var faults = new List<Fault>();
            using (ValuesHandle list = tarvane_values(json))
                for (int k = 0; k < tarvane_count(list, Bytes("")); ++k)
                {
                    Func<string, string> text = name => Text(tarvane_text(list, Bytes("[" + k + "]." + name))) ?? "";
                    faults.Add(new Fault(text("path"), text("value"), text("reason")));
                }
            return faults;
        }
        // Of a call with a handle the text of its error; else that of the thread.
        internal static TarvaneException Failure(int status, IntPtr error)
        {
            IList<Fault> faults = FaultsOf(error != IntPtr.Zero ? error : tarvane_last_error(IntPtr.Zero));
            if (faults.Count == 0) faults.Add(new Fault("", "", "the call failed without a reason"));
            return status == (int)Status.Faulty ? new InputException(faults)
                                                : new TarvaneException((Status)status, faults);
        }
        // Of a call with values.
        internal static void Check(int status)
        {
            if (status != (int)Status.Ok) throw Failure(status, IntPtr.Zero);
        }
    }
}
