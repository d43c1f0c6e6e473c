// A host in C# of the vessel library: a flange, its verdict and some of its results, a sweep, and what a fault looks
// like.
//   mcs Calculate.cs Tarvane.cs && mono Calculate.exe [DATA_FOLDER]
// Without a folder the library looks for the data files.
using System;
using System.Globalization;
using Tarvane;

static class Calculate
{
    static Values MakeRequest()
    {
        var request = new Values();
        request.Put("units", "US");
        request.Put("flange[0].description", "N1");
        request.Put("flange[0].type", "weld neck");
        request.Put("flange[0].bolting", "TEMA");
        request.Put("flange[0].facing", "1a");
        request.Put("flange[0].h", 82.55, "mm"); // in a unit of its own
        string[] keys = { "P", "T", "ci", "B", "A", "t", "g0", "g1", "Sfo", "Sfa", "C",
                          "n", "a", "Sb", "Sa", "Fod", "Fid", "Go", "Gi", "m", "y", "tg" };
        double[] numbers = { 150, 300, 0.0625, 12, 19, 1.19, 0.375, 1.19, 20000, 20000, 17,
                             12, 0.875, 25000, 25000, 15, 12, 14.75, 14, 3, 10000, 0.125 };
        for (int i = 0; i < keys.Length; ++i) request.Put("flange[0]." + keys[i], numbers[i]);
        return request;
    }

    static void Show(Component component, string name)
    {
        double? value = component.Result(name);
        if (value != null)
            Console.WriteLine(name + " " + Fixed(value));
        else // a result without a value has a reason
            Console.WriteLine(name + ": " + component.Why(name));
    }

    static void ShowResult(Vessel vessel, Values request)
    {
        Result result = vessel.Calculate(request);
        Console.WriteLine(result.Verdict);
        Component flange = result["flange[0]"];
        Console.WriteLine(flange.Says);
        Show(flange, "mawp");
        Show(flange, "map_nc");
        Show(flange, "t_req");
        Console.WriteLine("rated pressure " + Fixed(flange.RatedPressure));
        Check worst = flange.Checks[0];
        Console.WriteLine("first check " + worst.Id + ", ratio " + Fixed(worst.Ratio));
    }

    static void ShowSweep(Vessel vessel, Values request)
    {
        double[,] thickness = { { 0.75 }, { 1.0 }, { 1.19 } };
        Sweep table = vessel.Sweep(request, new[] { "flange[0].t" },
                                   new[] { "flange[0].results.mawp", "flange[0].passed" }, thickness);
        for (int row = 0; row < 3; ++row)
            Console.WriteLine("t " + Fixed(thickness[row, 0]) + ": mawp " + Fixed(table.Y[row, 0]) + ", " +
                              (table.Y[row, 1] > 0.0 ? "pass" : "no pass"));
    }

    static string Fixed(double? number)
    {
        return number.Value.ToString("F3", CultureInfo.InvariantCulture);
    }

    static int Main(string[] arguments)
    {
        try
        {
            using (var vessel = new Vessel(arguments.Length > 0 ? arguments[0] : ""))
            {
                Console.WriteLine("tarvane " + Vessel.Version);
                Values request = MakeRequest();
                ShowResult(vessel, request);
                ShowSweep(vessel, request);
                request.Put("flange[0].P", "ten"); // this one is at fault
                try
                {
                    ShowResult(vessel, request);
                    return 1;
                }
                catch (InputException error)
                {
                    Console.WriteLine("fault " + error.Field + ": " + error.Reason);
                }
            }
            return 0;
        }
        catch (TarvaneException error)
        {
            Console.WriteLine(error.Message);
            return 1;
        }
    }
}
