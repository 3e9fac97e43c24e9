#!/usr/bin/env python3
"""A small sale that is never printed twice. `sale.py 2` prints at COM2; without a port it prints on a virtual printer."""
import os
import random
import sys
import time
from decimal import Decimal

from zentaro import AutomationError, CZentaro, ENVERR_CODES, nTipoCierreFiscal
from zentaro.virtual_printer import VirtualPrinter

SALE = [("IniciarFactura", "Ana Pérez", "V-12345678"),
        ("PasarLineaFactura", "Café molido", Decimal("12.50"), 2, 16),
        ("PasarLineaFactura", "Queso blanco", 8, Decimal("0.75"), 0),
        ("RecibirPago", 40),
        ("CerrarComprobante",)]


def answered(printer, outcome):
    """Done; the first field of an answer is the command that it answers."""
    return outcome == ENVERR_CODES.ENVERR_OK and printer.response(0) == printer.nLastCommand


def sold(printer):
    """The amount sold today; nothing is printed. None when the printer does not say."""
    if not answered(printer, printer.RealizarCierre(nTipoCierreFiscal.CIERRE_X, False)):
        return None
    day = printer.GetResultadoCierre()
    return day.VentasExentas + day.BaseGravable1 + day.BaseGravable2 + day.BaseGravable3


def in_step(printer):
    """The status, as soon as an answer is the one to its question; None when that takes longer than half a minute."""
    for pause in (0.5, 1, 2, 4, 8, 16):
        time.sleep(pause)  # late answers gather while the port is open, and opening it throws them away
        try:
            printer.PortOpen = False
            printer.PortOpen = True
        except AutomationError:
            continue  # an adapter that was pulled out
        status = printer.GetStatusHASAR()
        if status and printer.response(0) == printer.nLastCommand:
            return status
    return None


def settled(printer, before):
    """What became of a sale that did not go through: asked, never sent again."""
    status = in_step(printer)
    if status and status.statusDocumento != 0:
        printer.CancelarComprobante()
        status = in_step(printer)
    if status and status.statusDocumento != 0:
        return "STILL OPEN: have the document cancelled", 4
    after = sold(printer) if status else None
    if after is None:
        return "UNKNOWN: look at the paper, do not print again", 4
    return ("PRINTED", 0) if after > before else ("NOT PRINTED", 3)


def sell(port):
    with CZentaro(CommPort=port, PortOpen=True, verifyCheckSum=True) as printer:
        for _ in range(random.randrange(90)):
            printer.BuildOMB(0x38, ["*"])  # another place in the sequence than the program before
        status = in_step(printer)
        before = sold(printer) if status and status.statusDocumento == 0 else None
        if before is None:
            return "NOT PRINTED: no printer, or a document is open", 3
        for name, *arguments in SALE:
            outcome = getattr(printer, name)(*arguments)
            print(f"{name}: {outcome.name} {printer.sLastError}")
            if not answered(printer, outcome):
                return settled(printer, before)
    return "PRINTED", 0


def main():
    if len(sys.argv) > 1:
        return sell(int(sys.argv[1]))
    with VirtualPrinter() as paper:
        os.environ["ZENTARO_SETTINGS"] = str(paper.settings)
        verdict = sell(1)
        print("\n".join(paper.paper))
    return verdict


try:
    text, status = main()
except AutomationError as error:  # the port does not open: nothing was sent
    text, status = error, 2
print(text)
sys.exit(status)
