// A small sale that is never printed twice. `mono sale.exe 2` prints at COM2; without a port it prints on a virtual printer.
// Build it with Zentaro.cs: mcs -out:sale.exe Sale.cs VirtualPrinter.cs Zentaro.cs
using System;
using System.Threading;
using Zentaro;

static class Sale {
  struct Verdict {
    public string Text;
    public int Status;
  }
  static Verdict Is(string text, int status) { return new Verdict { Text = text, Status = status }; }

  /// Done; the first field of an answer is the command that it answers.
  static bool Answered(CZentaro printer) {
    return printer.nEnvironmentError == ENVERR_CODES.ENVERR_OK && Convert.ToInt32(printer.response(0)) == printer.nLastCommand;
  }

  /// The amount sold today; nothing is printed. Null when the printer does not say.
  static decimal? Sold(CZentaro printer) {
    printer.RealizarCierre(nTipoCierreFiscal.CIERRE_X, false);
    if (!Answered(printer)) return null;
    using (var day = printer.GetResultadoCierre()) {
      return day.VentasExentas + day.BaseGravable1 + day.BaseGravable2 + day.BaseGravable3;
    }
  }

  /// The status, as soon as an answer is the one to its question; null when that takes longer than half a minute.
  static statusHASAR InStep(CZentaro printer) {
    foreach (int pause in new[] { 500, 1000, 2000, 4000, 8000, 16000 }) {
      Thread.Sleep(pause);  // late answers gather while the port is open, and opening it throws them away
      try {
        printer.PortOpen = false;
        printer.PortOpen = true;
      } catch (AutomationError) {
        continue;  // an adapter that was pulled out
      }
      var status = printer.GetStatusHASAR();
      if (status != null && Answered(printer)) return status;
    }
    return null;
  }

  /// What became of a sale that did not go through: asked, never sent again.
  static Verdict Settled(CZentaro printer, decimal before) {
    var status = InStep(printer);
    if (status != null && status.statusDocumento != 0) {
      printer.CancelarComprobante();
      status = InStep(printer);
    }
    if (status != null && status.statusDocumento != 0) return Is("STILL OPEN: have the document cancelled", 4);
    decimal? after = status == null ? null : Sold(printer);
    if (after == null) return Is("UNKNOWN: look at the paper, do not print again", 4);
    return after > before ? Is("PRINTED", 0) : Is("NOT PRINTED", 3);
  }

  static bool Step(CZentaro printer, string name, ENVERR_CODES outcome) {
    Console.WriteLine(name + ": " + outcome + " " + printer.sLastError);
    return Answered(printer);
  }

  static Verdict Sell(CZentaro printer) {
    printer.verifyCheckSum = true;
    for (int place = new Random().Next(90); place > 0; --place) {
      printer.BuildOMB(0x38, new object[] { "*" });  // another place in the sequence than the program before
    }
    var status = InStep(printer);
    decimal? before = status != null && status.statusDocumento == 0 ? Sold(printer) : null;
    if (before == null) return Is("NOT PRINTED: no printer, or a document is open", 3);
    bool printed = Step(printer, "IniciarFactura", printer.IniciarFactura("Ana Pérez", "V-12345678")) &&
                   Step(printer, "PasarLineaFactura", printer.PasarLineaFactura("Café molido", 12.50m, 2, 16)) &&
                   Step(printer, "PasarLineaFactura", printer.PasarLineaFactura("Queso blanco", 8, 0.75m, 0)) &&
                   Step(printer, "RecibirPago", printer.RecibirPago(40)) &&
                   Step(printer, "CerrarComprobante", printer.CerrarComprobante());
    return printed ? Is("PRINTED", 0) : Settled(printer, before.Value);
  }

  static int Main(string[] arguments) {
    using (arguments.Length == 0 ? new VirtualPrinter() : null)
    using (var printer = new CZentaro()) {
      printer.CommPort = arguments.Length == 0 ? 1 : int.Parse(arguments[0]);
      printer.PortOpen = true;
      var verdict = Sell(printer);
      Console.WriteLine(verdict.Text);
      return verdict.Status;
    }
  }
}
