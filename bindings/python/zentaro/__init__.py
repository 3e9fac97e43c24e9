"""Drives a fiscal printer over a serial line.

    from zentaro import CZentaro, ENVERR_CODES

    with CZentaro(CommPort=1, PortOpen=True) as printer:
        printer.IniciarFactura("Ana Pérez", "V-12345678")
        printer.PasarLineaFactura("Café molido", Decimal("12.50"), 2, 16)
        printer.RecibirPago(29)
        assert printer.CerrarComprobante() == ENVERR_CODES.ENVERR_OK

A whole document, printed once whatever fails:

    verdict = zentaro.sell(printer, {"document": "invoice", "lines": [...], "payments": [...]}, id="F-1")

Classes, members and enumerations are those of the library, made when the package is imported; `help(CZentaro)` shows them.
"""
from ._library import AutomationError, library as _c
from ._objects import Automation, Returned, classes as _classes, enumerations as _enumerations, on_message_box, on_yield
from ._till import Checked, Closing, Job, Problem, Settled, Verdict, check, close, jobs, sell, settle, stop
from ._values import Special

__version__ = _c.zentaro_version().decode()
globals().update(_classes)
globals().update(_enumerations)
__all__ = ["Automation", "AutomationError", "Checked", "Closing", "Job", "Problem", "Returned", "Settled", "Special", "Verdict", "check", "close",
           "jobs", "on_message_box", "on_yield", "sell", "settle", "stop", *_classes, *_enumerations]
