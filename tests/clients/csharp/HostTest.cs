// Tarvane.cs beside what vessel.h promises.
//   HostTest.exe FOLDER_OF_THE_DATA_FILES
using System;
using System.Globalization;
using System.Linq;
using System.Threading;
using Tarvane;

static class HostTest
{
    static int failures;

    static void Same<T>(string what, T found, T wanted)
    {
        if (Equals(found, wanted)) return;
        Console.WriteLine(what + ": " + found + " in place of " + wanted);
        ++failures;
    }

    static E Thrown<E>(string what, Action work) where E : Exception
    {
        try
        {
            work();
        }
        catch (E expected)
        {
            return expected;
        }
        throw new Exception(what + ": no " + typeof(E).Name);
    }

    static Values Shell()
    {
        var request = new Values();
        request.Put("shell[0].description", "Mantel \u00b0\u00e4");
        request.Put("shell[0].kind", "cylinder");
        string[] keys = { "P", "T", "D", "t", "S", "Sa", "E" };
        double[] numbers = { 150, 300, 60, 0.5, 20000, 20000, 1 };
        for (int i = 0; i < keys.Length; ++i) request.Put("shell[0]." + keys[i], numbers[i]);
        return request;
    }

    static void TestValues()
    {
        Values values = Shell();
        values.Put("shell[0].yes", true);
        Same("flag", values.KindOf("shell[0].yes"), Kind.Flag);
        Same("its number", values.Number("shell[0].yes"), (double?)1.0);
        Same("text", values.Text("shell[0].description"), "Mantel \u00b0\u00e4");
        Same("no text", values.Text("shell[0].P"), null);
        Same("no number", values.Number("shell[1].P"), null);
        Same("count", values.Count("shell"), 1);
        Same("names", string.Join(",", values.Names("shell[0]").Take(3)), "description,kind,P");
        Same("JSON", new Values(values.Json).Json, values.Json);
        values.Put("x", 82.55, "mm");
        Same("a quantity", values.Text("x"), "82.55 mm");
        InputException error = Thrown<InputException>("path", () => values.Put("shell[2].P", 1.0));
        Same("field", error.Field, "shell[2].P");
        Same("reason", error.Reason, "the next place of the list is 1");
        Same("value", error.Value, "1");
        Thrown<InputException>("NaN", () => values.Put("P", double.NaN));
        Thrown<InputException>("NaN mm", () => values.Put("P", double.NaN, "mm"));
        Thrown<InputException>("JSON", () => new Values("{"));
        values.Dispose();
        Thrown<ObjectDisposedException>("disposed values", () => values.Number("P"));
    }

    static void TestVessel(string folder)
    {
        TarvaneException none = Thrown<TarvaneException>("no folder", () => new Vessel("/no/such/f\u00f6lder"));
        Same("status", none.Status, Status.NoData);
        Same("folder", none.Reason.Contains("/no/such/f\u00f6lder"), true);

        var vessel = new Vessel(folder);
        Result result = vessel.Calculate(Shell(), Want.Results | Want.Report);
        Component shell = result["shell[0]"];
        Same("verdict", result.Verdict, "pass");
        Same("passed", shell.Passed && result.Passed, true);
        Same("description", shell.Description, "Mantel \u00b0\u00e4");
        Same("report", shell.Report.Contains("Mantel") && shell.Report.EndsWith("\n"), true);
        // SEt/(R + 0.6t)
        Same("mawp", Math.Abs(shell.Result("mawp").Value - 20000.0 * 0.5 / 30.3) < 0.01, true);
        Same("no value", shell.Result("t_14f"), null);
        Same("why", shell.Why("t_14f").Length > 0, true);
        Same("a choice", shell.ResultNames.Any(name => result.Values.KindOf("shell[0].results." + name) == Kind.Text &&
                                                       shell.Choice(name).Length > 0), true);
        Same("unknown", Thrown<InputException>("name", () => shell.Result("mwap")).Field, "shell[0].results.mwap");
        Thrown<InputException>("component", () => result["shell[1]"].ToString());
        Check check = shell.Checks[0];
        Same("check", check.Id, result.Values.Text("shell[0].governing"));
        Same("its paragraph", check.Paragraph, result.Values.Text("shell[0].checks[0].paragraph"));
        Same("its figures", check.Passed && Math.Abs((check.Operation == "<=" ? check.Demand / check.Limit :
                                                      check.Limit / check.Demand).Value - check.Ratio.Value) < 1e-5, true);
        Same("rated", shell.RatedPressure >= 150.0, true);

        Values faulty = Shell();
        faulty.Put("shell[0].P", "zehn");
        faulty.Put("shell[0].E", "eins");
        InputException error = Thrown<InputException>("fault", () => vessel.Calculate(faulty));
        Same("faults", error.Faults.Count, 2);
        Same("field", error.Field, "shell[0].P");
        Same("value", error.Value, "the text \"zehn\"");
        Same("message", error.Message.EndsWith(" (and 1 more)"), true);
        Same("schema", vessel.Schema("keys").StartsWith("{"), true);
        Thrown<InputException>("schema", () => vessel.Schema("kees"));

        double[,] x = { { 0.5, 150 }, { -1, 150 }, { 0.25, 100 } };
        string[] inputs = { "shell[0].t", "shell[0].P" }, outputs = { "shell[0].results.mawp", "shell[0].passed" };
        Sweep table = vessel.Sweep(Shell(), inputs, outputs, x);
        Same("row", (float)table.Y[0, 0], (float)shell.Result("mawp").Value);
        Same("fault of a row", table.Faults[1].Field, "shell[0].t");
        Same("NaN", double.IsNaN(table.Y[1, 0]), true);
        Same("no fault", table.Faults[0], null);
        Same("verdict of a row", table.Y[2, 1], 1.0);
        Thrown<InputException>("columns", () => vessel.Sweep(Shell(), new[] { "shell[0].t" }, outputs, x));
        Same("a name", Thrown<InputException>("name", () => vessel.Sweep(Shell(), inputs, new[] { "shell[0].mawp" }, x))
                           .Field, "shell[0].mawp");

        vessel.Dispose();
        vessel.Dispose();
        Thrown<ObjectDisposedException>("disposed vessel", () => vessel.Calculate(Shell()));
        Same("a result outlives its vessel", shell.Result("mawp") > 0.0, true);
    }

    // What nobody holds may be freed at any time.
    static void TestCollector(string folder)
    {
        using (var vessel = new Vessel(folder))
        {
            bool ended = false;
            var collector = new Thread(() => { while (!Volatile.Read(ref ended)) GC.Collect(); });
            collector.Start();
            double first = vessel.Calculate(Shell())["shell[0]"].Result("mawp").Value;
            for (int i = 0; i < 20; ++i)
                Same("again", vessel.Calculate(Shell())["shell[0]"].Result("mawp").Value, first);
            Volatile.Write(ref ended, true);
            collector.Join();
        }
    }

    static int Main(string[] arguments)
    {
        // A decimal comma must not reach a request.
        Thread.CurrentThread.CurrentCulture = new CultureInfo("de-DE");
        TestValues();
        TestVessel(arguments[0]);
        TestCollector(arguments[0]);
        if (failures == 0) Console.WriteLine("Tarvane.cs: all as expected");
        return failures == 0 ? 0 : 1;
    }
}
