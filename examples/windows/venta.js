// Una venta en JScript, probada bajo Wine:  cscript //nologo venta.js [PUERTO]
var z = new ActiveXObject("Zentaro.CZentaro");

// Una orden. 0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
function hecha(resultado) {
  if (resultado === 0) return;
  WScript.Echo("Resultado " + resultado + ": " + z.sLastError);
  if (resultado === 5) z.CancelarComprobante();
  if (resultado >= 1 && resultado <= 4) WScript.Echo("No la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs).");
  z.PortOpen = false;
  WScript.Quit(1);
}

z.verifyCheckSum = true;
z.CommPort = WScript.Arguments.length > 0 ? WScript.Arguments(0) : 1;
try {
  z.PortOpen = true;
} catch (error) {
  WScript.Echo((error.number & 0xFFFF) + " " + error.message);
  WScript.Quit(2);
}
hecha(z.IniciarFactura("Ana Pérez", "V-12345678"));
hecha(z.PasarLineaFactura("Café molido", 12.5, 2, 16));
hecha(z.RecibirPago(29));
hecha(z.CerrarComprobante());
// Un arreglo llega como VBArray.
var campos = new VBArray(z.getResponse(0)).toArray();
WScript.Echo("Factura impresa: " + campos[3]);
z.PortOpen = false;
