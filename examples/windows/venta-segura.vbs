' Una venta que se imprime una sola vez, por zentaro.exe, probada bajo Wine:  cscript //nologo venta-segura.vbs PUERTO ID
' El ID es el de la venta en su sistema. Si se pierde una respuesta, se va la luz o muere este programa: la misma orden otra vez.
Option Explicit
Dim shell, archivos, carpeta, venta, orden, resultado
Set shell = CreateObject("WScript.Shell")
Set archivos = CreateObject("Scripting.FileSystemObject")
carpeta = archivos.GetSpecialFolder(2).Path

' El archivo es UTF-8: las letras que no son de ASCII van como \u00e9.
Set venta = archivos.CreateTextFile(carpeta & "\venta.json", True)
venta.WriteLine "{""document"": ""invoice"", ""customer"": {""name"": ""Ana P\u00e9rez"", ""rif"": ""V-12345678""},"
venta.WriteLine " ""lines"": [{""description"": ""Caf\u00e9 molido"", ""price"": 12.5, ""quantity"": 2, ""tax"": 16}],"
venta.WriteLine " ""payments"": [{""amount"": 29}]}"
venta.Close

orden = "zentaro sale """ & carpeta & "\venta.json"" --port " & WScript.Arguments(0) & " --id " & WScript.Arguments(1)
resultado = shell.Run("cmd /c """ & orden & " --json > """ & carpeta & "\respuesta.json""""", 0, True)
WScript.Echo archivos.OpenTextFile(carpeta & "\respuesta.json").ReadAll
If resultado = 0 Then
  WScript.Echo "Factura impresa"
ElseIf resultado = 3 Then
  WScript.Echo "No se imprimió: corrija la causa y dé la misma orden"
ElseIf resultado = 4 Then
  WScript.Echo "No se sabe si se imprimió: mire el papel. La misma orden pregunta otra vez, y no imprime dos veces"
Else
  WScript.Echo "No se envió nada: la respuesta dice por qué"
End If
WScript.Quit resultado
