// Escrito para C# y no probado aquí.   csc /platform:x86 Venta.cs   (x64 con la DLL de 64 bits), o dotnet con <PlatformTarget>.
using System;
using System.Runtime.InteropServices;

static class Venta {
  static dynamic z;

  // 0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
  static void Hecha(short resultado) {
    if (resultado == 0) return;
    if (resultado == 5) { string error = z.sLastError; z.CancelarComprobante(); throw new Exception(error); }
    throw new Exception($"Resultado {resultado}: no la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs)");
  }

  [STAThread]  // el objeto es de un apartamento de un solo hilo
  static int Main() {
    z = Activator.CreateInstance(Type.GetTypeFromProgID("Zentaro.CZentaro", true));
    try {
      z.verifyCheckSum = true;
      z.CommPort = 1;
      z.PortOpen = true;
      Hecha(z.IniciarFactura("Ana Pérez", "V-12345678"));
      Hecha(z.PasarLineaFactura("Café molido", 12.5m, 2, 16));
      Hecha(z.RecibirPago(29));
      Hecha(z.CerrarComprobante());
      Console.WriteLine("Factura impresa: " + z.response(3));
      return 0;
    } catch (COMException error) {  // 0x800A9C41: 40001, el puerto no abre
      Console.Error.WriteLine($"{error.ErrorCode & 0xFFFF} {error.Source}: {error.Message}");
      return 2;
    } catch (Exception error) {
      Console.Error.WriteLine(error.Message);
      return 1;
    } finally {
      z.PortOpen = false;
    }
  }
}
