// A virtual printer behind COM1; its paper comes out on standard output.
using System;
using System.Diagnostics;
using System.IO;
using System.Threading;

class VirtualPrinter : IDisposable {
  readonly string folder = Path.Combine(Path.GetTempPath(), "zentaro-" + Guid.NewGuid().ToString("N").Substring(0, 12));
  readonly Process process;

  public VirtualPrinter() {
    Directory.CreateDirectory(folder);
    string link = Path.Combine(folder, "printer"), settings = Path.Combine(folder, "settings.ini");
    File.WriteAllText(settings, "[Config\\ModComm]\nCOM1=" + link + "\n");
    Environment.SetEnvironmentVariable("ZENTARO_SETTINGS", settings);
    Environment.SetEnvironmentVariable("ZENTARO_BOOKS", Path.Combine(folder, "books.db"));
    process = Process.Start(new ProcessStartInfo("zentaro-printer", "--link " + link) { UseShellExecute = false, RedirectStandardInput = true });
    while (!File.Exists(link) && !process.HasExited) Thread.Sleep(50);
  }

  public void Dispose() {
    process.StandardInput.WriteLine("quit");
    process.WaitForExit();
    Directory.Delete(folder, true);
  }
}
