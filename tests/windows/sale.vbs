' A day of a till in VBScript: what a script sees of values, errors, records and write-back.
Option Explicit
Dim failures, z, second, shell, cents, amount, kind, record, fields, settings
failures = 0
settings = "HKCU\Software\VB and VBA Program Settings\TRV\Config\EPSONZT\"
Set shell = CreateObject("WScript.Shell")

Sub Expect(what, got, wanted)
  If VarType(got) = VarType(wanted) Then
    If got = wanted Then Exit Sub
  End If
  failures = failures + 1
  WScript.Echo what & ": " & got & " (" & TypeName(got) & ") and not " & wanted & " (" & TypeName(wanted) & ")"
End Sub

' Number, source and start of the text of the error that just came.
Sub ExpectError(what, number, source, text)
  Expect what & ", number", Err.Number, CLng(number)
  If source <> "" Then Expect what & ", source", Err.Source, source
  If text <> "" Then Expect what & ", text", Left(Err.Description, Len(text)), text
  Err.Clear
End Sub

shell.RegWrite settings & "SuprimirDecimalesEZT", "1", "REG_SZ"
Set z = CreateObject("Zentaro.CZentaro")

' Errors of every kind; a script runs on.
On Error Resume Next
z.PortOpen = True
ExpectError "no port", 40001, "CZentaro.Let PortOpen", "Puerto serial no asignado"
z.PortOpen = False
z.CommPort = 8
z.PortOpen = True
ExpectError "a port that there is not", 40001, "CZentaro.Let PortOpen", "Error (2): CommOpen (CreateFile) - "
z.PortOpen = False
z.CommPort = 9
z.PortOpen = True
ExpectError "a port outside", 40001, "CZentaro.Let PortOpen", "Error (9): CommOpen - Subscript out of range LINEA "
z.PortOpen = False
z.CommPort = "caja"
z.PortOpen = True
ExpectError "no number", 13, "", ""
z.CommPort = Null
z.PortOpen = False
ExpectError "Null", 94, "Zentaro", "Invalid use of Null"
z.BuildOMB 256, Array()
ExpectError "a command outside", 5, "", ""
z.BuildOMB 100000, Array()
ExpectError "a number too large", 6, "", ""
z.Nada
ExpectError "no such member", 438, "", ""
z.CortarPapel 1
ExpectError "too many arguments", 450, "", ""
z.PasarLineaDNF
ExpectError "too few arguments", 450, "", ""
z.PrinterType = "x"
ExpectError "read only", 438, "", ""
Set second = CreateObject("Zentaro.statusN")
ExpectError "not creatable", 429, "", ""
On Error GoTo 0

Expect "closed port", z.CortarPapel, -1
z.CommPort = 5
z.PortOpen = True
Expect "open", z.PortOpen, True
Set second = CreateObject("zentaro.czentaro")
second.CommPort = "5"
On Error Resume Next
second.PortOpen = True
ExpectError "one port twice", 40001, "CZentaro.Let PortOpen", "Error (-1): CommOpen - Port in use."
On Error GoTo 0
Set second = Nothing  ' required: it closes the port of the driver, which is the first one's
z.PortOpen = False
z.PortOpen = True

' An invoice. A fractional quantity is folded into the price, in the script's own variables.
Expect "invoice", z.IniciarFactura("Ana Pérez", "V-12345678"), 0
cents = CCur("10.5")
amount = 2.5
Expect "item", z.PasarLineaFactura("Café", cents, amount, 16), 0
Expect "price written back", cents, 26.25
Expect "quantity written back", amount, 1
Expect "text line", z.PasarLineaExtra("gracias"), 0
Expect "discount", z.RegistrarDescuento(1.25), 0
Expect "subtotal", z.Subtotal, 0
Expect "total", z.response(3), "2900"
Expect "payment", z.RecibirPago(CCur(20)), 0
Expect "payment by a medium", z.PagoConMedio("02", 20), 0
kind = "T"
Expect "close with IGTF", z.CerrarComprobanteIGTF(kind, 10), CLng(0)
Expect "type written back", kind, "U"
Expect "no error text", z.sLastError, "VOID"

' A refused command.
Expect "refused", z.RecibirPago(1), 5
Expect "outcome kept", z.nEnvironmentError, CLng(5)
Expect "bit 15", z.BitFiscal(15), CLng(32768)
Expect "error text", Left(z.sLastError, 6), "ERROR "

' Fields, records, dates.
fields = z.getResponse(0)
Expect "fields", IsArray(fields), True
Expect "one field", z.response(1), fields(1)
Expect "out of range", z.response(99), -1
Set record = z.GetStatusN
Expect "record", record.FacturasPeriodo, CLng(1)
record.CodigoStatus = "77"
Expect "a record can be written", record.CodigoStatus, "77"
Expect "clock", VarType(z.GetDateTime), vbDate
Expect "set the clock", z.SetDateTime(#2026-03-15 14:05:00#), 0
Expect "bad argument", z.SetDateTime(5), 6
Set record = z.PerformReturnCierre(0)
Expect "exempt", record.VentasExentas, CCur(0)
Expect "base", record.BaseGravable1, CCur(25)
Set record = CreateObject("Zentaro.statusHASAR")
record.LoadFromResponse z.getResponse(0)

' The line hangs up: the command fails in its time, and the port can be given back.
shell.RegWrite settings & "TimeOutZT", "2", "REG_SZ"
z.PortOpen = False
Set z = CreateObject("Zentaro.CZentaro")
z.CommPort = 5
z.PortOpen = True
Expect "hang-up", z.PaperFeed, 1
z.PortOpen = False

' Silence is a time-out.
z.CommPort = 6
z.PortOpen = True
Expect "time-out", z.CortarPapel, 1
Expect "its text", Left(z.EnvironmentError, 14), "TIEMPO AGOTADO"
z.PortOpen = False

shell.RegWrite settings & "SuprimirDecimalesEZT", "0", "REG_SZ"
shell.RegWrite settings & "TimeOutZT", "12", "REG_SZ"
If failures = 0 Then WScript.Quit 42
WScript.Quit 3
