' Escrito para VB.NET y no probado aquí.   vbc /platform:x86 Venta.vb   (x64 con la DLL de 64 bits)
Option Strict Off
Imports System.Runtime.InteropServices

Module Venta
  <STAThread>
  Function Main(argumentos As String()) As Integer
    Dim z As Object = CreateObject("Zentaro.CZentaro")
    z.verifyCheckSum = True
    z.CommPort = If(argumentos.Length > 0, CInt(argumentos(0)), 1)
    Try
      z.PortOpen = True
    Catch problema As COMException
      Console.Error.WriteLine("El puerto no abre: " & problema.Message)
      Return 2
    End Try

    ' 0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
    Dim resultado As Integer = z.IniciarFactura("Ana Pérez", "V-12345678")
    If resultado = 0 Then resultado = z.PasarLineaFactura("Café molido", 12.5D, 2, 16)
    If resultado = 0 Then resultado = z.RecibirPago(29)
    If resultado = 0 Then resultado = z.CerrarComprobante()

    Select Case resultado
      Case 0
        Console.WriteLine("Factura impresa: " & z.response(3))
      Case 1 To 4
        Console.Error.WriteLine("No se sabe si se imprimió. No la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs).")
      Case Else
        Console.Error.WriteLine("Resultado " & resultado & ": " & z.sLastError)
        If resultado = 5 Then z.CancelarComprobante()
    End Select
    z.PortOpen = False
    Marshal.ReleaseComObject(z)
    Return If(resultado = 0, 0, 1)
  End Function
End Module
