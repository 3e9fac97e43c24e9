// A sale in JScript: calls, arrays in both directions, and errors as JScript counts them.
var failures = 0;
function expect(what, got, wanted) {
  if (got === wanted) return;
  ++failures;
  WScript.Echo(what + ": " + got + " and not " + wanted);
}

var z = new ActiveXObject("Zentaro.CZentaro");
expect("closed port", z.CortarPapel(), -1);
try {
  z.PortOpen = true;
  expect("an error", "none", "one");
} catch (error) {
  expect("its number", error.number, -2146788287);
  expect("its number as VBScript counts", error.number & 0xFFFF, 40001);
  expect("its text", error.message, "Puerto serial no asignado");
}

// An array of JScript's own; one that holds itself is no value.
expect("array", z.BuildOMB(0x48, ["1", , 2.5]), "\x02\"H\x1C1\x1C\x7F\x1C2.5\x030208");
var list = [1];
list[0] = list;
try {
  z.BuildOMB(0x48, list);
  expect("an error", "none", "one");
} catch (error) {
  expect("a list in itself", error.number & 0xFFFF, 13);
}
z.PortOpen = false;
z.CommPort = 5;
z.PortOpen = true;
expect("invoice", z.IniciarFactura("Ana", "V-1"), 0);
expect("item", z.PasarLineaFactura("Cafe", 12.5, 2, 16), 0);
expect("payment", z.RecibirPago(29), 0);
expect("close", z.CerrarComprobante(), 0);
var fields = new VBArray(z.getResponse(0)).toArray();
expect("fields", fields[1], z.response(1));
expect("record", z.GetStatusN().FacturasPeriodo, 1);
z.PortOpen = false;
WScript.Quit(failures === 0 ? 42 : 3);
