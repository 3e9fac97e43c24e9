// A small sale that is never printed twice. `mono sale.exe 2` prints at COM2; without a port it prints on a virtual printer.
// Build it with Zentaro.cs: mcs -out:sale.exe Sale.cs VirtualPrinter.cs Zentaro.cs
using System;
using Zentaro;

static class Sale {
  static readonly object document = new {
    document = "invoice",
    customer = new { name = "Ana Pérez", rif = "V-12345678" },
    lines = new[] { new { description = "Café molido", price = 12.50m, quantity = 2m, tax = 16 },
                    new { description = "Queso blanco", price = 8m, quantity = 0.75m, tax = 0 } },
    payments = new[] { new { amount = 40 } },
  };

  static SaleVerdict Sell(int port) {
    using (var printer = new CZentaro()) {
      printer.CommPort = port;
      printer.PortOpen = true;
      // Under an id of the program's own nothing is ever printed twice, also after a power cut.
      return Till.Sell(printer, document, id: "F-1", progress: Console.WriteLine);
    }
  }

  static int Main(string[] arguments) {
    SaleVerdict verdict;
    try {
      using (arguments.Length == 0 ? new VirtualPrinter() : null) verdict = Sell(arguments.Length == 0 ? 1 : int.Parse(arguments[0]));
    } catch (AutomationError error) {  // the port does not open: nothing was sent
      Console.Error.WriteLine(error.Message);
      return 2;
    }
    bool isNothing = verdict.Verdict == "not-printed" || verdict.Verdict == "unreachable" || verdict.Verdict == "busy";
    bool isOpen = verdict.Verdict.StartsWith("still-");  // as when it is unknown, somebody has to look at the paper
    string words = verdict.IsPrinted ? "PRINTED" : isNothing ? "NOT PRINTED" : isOpen ? "STILL OPEN" : "UNKNOWN";
    Console.WriteLine("{0}: number {1}, total {2}. {3}", words, verdict.Number, verdict.Total, verdict.Next);
    return verdict.IsPrinted ? 0 : isNothing ? 3 : 4;
  }
}
