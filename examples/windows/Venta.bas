Attribute VB_Name = "Venta" ' Escrito para VBA y no probado aquí: los ensayos corren VBScript, JScript y un cliente compilado
' Herramientas, Referencias: "Zentaro: fiscal printer on a serial line". En Office de 64 bits, la DLL de 64 bits.
Option Explicit

Sub Vender()
  Dim z As New Zentaro.CZentaro, precio As Variant, cantidad As Variant
  z.verifyCheckSum = True
  z.CommPort = 1
  On Error GoTo NoAbre
  z.PortOpen = True
  On Error GoTo 0
  If Not Hecha(z, z.IniciarFactura("Ana Pérez", "V-12345678")) Then Exit Sub
  precio = CCur(12.5)
  cantidad = 2   ' por referencia: con SuprimirDecimalesEZT una cantidad con decimales vuelve como 1, y el precio cambia
  If Not Hecha(z, z.PasarLineaFactura("Café molido", precio, cantidad, 16)) Then Exit Sub
  If Not Hecha(z, z.RecibirPago(29)) Then Exit Sub
  If Not Hecha(z, z.CerrarComprobante()) Then Exit Sub
  MsgBox "Factura impresa: " & z.response(3)
  z.PortOpen = False
  Exit Sub
NoAbre:
  MsgBox Err.Number & " " & Err.Source & ": " & Err.Description   ' 40001 CZentaro.Let PortOpen
End Sub

' 0: hecha. 5: rechazada, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
Function Hecha(z As Zentaro.CZentaro, resultado As Integer) As Boolean
  Hecha = resultado = ENVERR_OK
  If Hecha Then Exit Function
  If resultado = ENVERR_STATUS Then MsgBox z.sLastError: z.CancelarComprobante
  If resultado >= ENVERR_COMM And resultado <= ENVERR_BADSEQ Then MsgBox "No la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs)."
  z.PortOpen = False
End Function
