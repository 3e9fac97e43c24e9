# Escrito para Python con pywin32 (win32com) y no probado aquí.   py venta.py [PUERTO]
import sys
from decimal import Decimal

import pywintypes
import win32com.client


def hecha(z, resultado):
    """0: hecha. 5: la impresora la rechazó, no cambió nada. 1 a 4: no se sabe si la hizo; no se repite."""
    if resultado == 0:
        return
    motivo = z.sLastError
    if resultado == 5:
        z.CancelarComprobante()
    else:
        motivo = "no la repita, mire el papel; zentaro sale no deja esta duda (venta-segura.vbs)"
    raise SystemExit(f"Resultado {resultado}: {motivo}")


def main():
    z = win32com.client.Dispatch("Zentaro.CZentaro")
    z.verifyCheckSum = True
    z.CommPort = int(sys.argv[1]) if len(sys.argv) > 1 else 1
    try:
        z.PortOpen = True
    except pywintypes.com_error as error:
        _, source, text, _, _, code = error.excepinfo
        raise SystemExit(f"{code & 0xFFFF} {source}: {text}")  # 40001: el puerto no abre
    try:
        hecha(z, z.IniciarFactura("Ana Pérez", "V-12345678"))
        hecha(z, z.PasarLineaFactura("Café molido", Decimal("12.5"), 2, 16))
        hecha(z, z.RecibirPago(29))
        hecha(z, z.CerrarComprobante())
        print("Factura impresa:", z.response(3))
    finally:
        z.PortOpen = False


main()
