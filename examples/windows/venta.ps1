# Escrito para PowerShell y no probado aquí.   powershell -File venta.ps1 [-Puerto 1]   (32 bits: el de C:\Windows\SysWOW64)
param([int]$Puerto = 1)

$z = New-Object -ComObject Zentaro.CZentaro

# 0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite.
function Hecha([int]$Resultado) {
  if ($Resultado -eq 0) { return }
  $motivo = $z.sLastError
  if ($Resultado -eq 5) { [void]$z.CancelarComprobante() } else { $motivo = 'no la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs)' }
  throw "Resultado ${Resultado}: $motivo"
}

$z.verifyCheckSum = $true
$z.CommPort = $Puerto
try {
  $z.PortOpen = $true
  Hecha $z.IniciarFactura('Ana Pérez', 'V-12345678')
  Hecha $z.PasarLineaFactura('Café molido', 12.5, 2, 16)
  Hecha $z.RecibirPago(29)
  Hecha $z.CerrarComprobante()
  "Factura impresa: $($z.response(3))"
} catch {
  $_.Exception.Message
  exit 1
} finally {
  $z.PortOpen = $false
}
