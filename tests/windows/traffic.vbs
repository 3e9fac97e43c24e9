' The traffic of which traffic.sh compares the traces.
Dim z, second
Set z = CreateObject("Zentaro.CZentaro")
z.CommPort = 5
z.PortOpen = True
Set second = CreateObject("Zentaro.CZentaro")
second.CommPort = 5
On Error Resume Next
second.PortOpen = True
On Error GoTo 0
z.DebugMode = True
z.AbrirDNF
z.PasarLineaDNF "Año 2024"
z.CerrarDNF
z.ExecuteCMD 90
z.DebugMode = False
WScript.Quit 42
