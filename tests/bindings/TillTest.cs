// The safe sale from C#, on a virtual printer: what its calls make of documents, options, verdicts and errors.
using System;
using System.Collections.Generic;
using System.Globalization;
using System.Linq;
using System.Threading;
using Zentaro;

static class TillTest {
  static int failed = 0;

  static void Same(object expected, object actual, string what) {
    if (Equals(expected, actual)) return;
    Console.WriteLine("{0}: {1} instead of {2}", what, actual ?? "null", expected ?? "null");
    ++failed;
  }

  static string Words(string format, params object[] values) { return string.Format(CultureInfo.InvariantCulture, format, values); }

  static void Raises(int number, Action call, string what) {
    try {
      call();
      Same(number, 0, what);
    } catch (AutomationError error) {
      Same(number, error.Number, what + ", " + error.Message);
    }
  }

  static object Document(decimal paid, string name = "Ana \"la\" \\ Pérez") {
    return new Dictionary<string, object> {
      { "document", "invoice" }, { "customer", new { name } },
      { "lines", new object[] { new { description = "Café", price = 12.5m, quantity = 2, tax = 16.0 }, new { text = "Origen: Lara" },
                                new { description = "Queso", price = 8, quantity = "0.75", tax = 0 } } },
      { "payments", new[] { new { amount = paid } } } };
  }

  static void Check() {
    var good = Till.Check(Document(40));
    Same(0, good.Problems.Count, "problems");
    Same("31.00 4.00 35.00 5.00", Words("{0} {1} {2} {3}", good.Net, good.Tax, good.Total, good.Change), "amounts");
    var bad = Till.Check(Document(34.99m));
    Same(null, bad.Total, "total with a problem");
    Same("payments", bad.Problems.Single().Path, "path");
    Same("customer.name", Till.Check(Document(40, "a\tb")).Problems.Single().Path, "a tabulator");
    Same("parse error", Till.Check("{").Problems.Single().Text.Substring(0, 11), "a text");
    var note = Till.Check(new { document = "credit note", invoice = new { number = 7, date = new DateTime(2024, 3, 15), time = new DateTime(2024, 3, 15, 14, 5, 0) },
                                lines = new[] { new { description = "Pan", price = 1m, tax = 0 } } });
    Same(0, note.Problems.Count, "a credit note with a DateTime");
  }

  static void Sell(CZentaro printer) {
    var lines = new List<string>();
    var sold = Till.Sell(printer, Document(40), id: "F-1", progress: lines.Add);
    Same("printed 1 35.00 5.00 True", Words("{0} {1} {2} {3} {4}", sold.Verdict, sold.Number, sold.Total, sold.Change, sold.IsPrinted), "sold");
    Same(true, lines.Any(line => line.Contains("Café")), "progress");
    Same("already-printed", Till.Sell(printer, Document(40), "F-1").Verdict, "the same again");
    var other = Till.Sell(printer, Document(50), "F-1");
    Same("other-content False", other.Verdict + " " + other.IsPrinted, "another content");
    try {
      Till.Sell(printer, Document(60), "F-2", progress: line => { if (line.Contains("Queso")) throw new InvalidOperationException("enough"); });
      Same("an exception", "none", "what progress throws");
    } catch (InvalidOperationException failure) {
      Same("not-printed", ((SaleVerdict)failure.Data["verdict"]).Verdict, "the verdict of what was stopped");
    }
    Raises(5, () => Till.Sell(printer, Document(40), "F 3"), "an id with a blank");
    Raises(5, () => Till.Sell(printer, Document(1), "F-3"), "payments that are too small");
  }

  static void Others(CZentaro printer) {
    var day = Till.Close(printer, "X");
    Same("X printed", day.Closing + " " + day.Verdict, "closing");
    var sales = (Dictionary<string, object>)day.Figures["sales"];
    Same("6.00 25.00 4.00 1", Words("{0} {1} {2} {3}", sales["exempt"], sales["base1"], sales["tax1"], day.Figures["lastInvoice"]), "figures");
    Raises(5, () => Till.Close(printer, "Y"), "a closing that is none");
    var settled = Till.Settle(printer);
    Same(" 0 0", Words("{0} {1} {2}", settled.Refusal, settled.Judged.Count, settled.Open.Count), "settled");
    var job = Till.Jobs("F-1").Single();
    Same("printed 1 35.00", Words("{0} {1} {2}", job.State, job.Number, job.Total), "job");
    Same(true, job.Ended >= job.Begun && job.Begun.Value.Year > 2020, "its moments");
    Same(1, Till.Jobs(most: 1).Count, "the latest");
    Same(0, Till.Jobs("none").Count, "an id that is unknown");
    printer.PortOpen = false;
    Raises(5, () => Till.Settle(printer), "a closed port");
  }

  static int Main() {
    Thread.CurrentThread.CurrentCulture = new CultureInfo("es-VE");  // 12,50: none of it may reach the library
    Check();
    using (new VirtualPrinter())
    using (var printer = new CZentaro()) {
      printer.CommPort = 1;
      printer.PortOpen = true;
      Sell(printer);
      Others(printer);
    }
    return failed == 0 ? 0 : 1;
  }
}
