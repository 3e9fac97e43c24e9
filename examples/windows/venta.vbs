' Una venta en VBScript, probada bajo Wine:  cscript //nologo venta.vbs [PUERTO]
Option Explicit
Dim z, puerto
puerto = 1
If WScript.Arguments.Count > 0 Then puerto = WScript.Arguments(0)

' Una orden. 0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
Sub Hecha(resultado)
  If resultado = 0 Then Exit Sub
  WScript.Echo "Resultado " & resultado & ": " & z.sLastError
  If resultado = 5 Then z.CancelarComprobante
  If resultado >= 1 And resultado <= 4 Then WScript.Echo "No la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs)."
  z.PortOpen = False
  WScript.Quit 1
End Sub

Set z = CreateObject("Zentaro.CZentaro")
z.verifyCheckSum = True
z.CommPort = puerto
On Error Resume Next
z.PortOpen = True
If Err.Number <> 0 Then
  WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description
  WScript.Quit 2
End If
On Error GoTo 0

Hecha z.IniciarFactura("Ana Pérez", "V-12345678")
Hecha z.PasarLineaFactura("Café molido", CCur("12.5"), 2, 16)
Hecha z.RecibirPago(29)
Hecha z.CerrarComprobante
WScript.Echo "Factura impresa: " & z.response(3)
z.PortOpen = False
