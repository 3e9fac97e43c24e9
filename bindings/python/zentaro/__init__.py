"""Drives a fiscal printer over a serial line.

    from zentaro import CZentaro, ENVERR_CODES

    with CZentaro(CommPort=1, PortOpen=True) as printer:
        printer.IniciarFactura("Ana Pérez", "V-12345678")
        printer.PasarLineaFactura("Café molido", Decimal("12.50"), 2, 16)
        printer.RecibirPago(29)
        assert printer.CerrarComprobante() == ENVERR_CODES.ENVERR_OK

Classes, members and enumerations are those of the library, made when the package is imported; `help(CZentaro)` shows them.
"""
from ._library import AutomationError, library as _c
from ._objects import Automation, Returned, classes as _classes, enumerations as _enumerations, on_message_box, on_yield
from ._values import Special

__version__ = _c.zentaro_version().decode()
globals().update(_classes)
globals().update(_enumerations)
__all__ = ["Automation", "AutomationError", "Returned", "Special", "on_message_box", "on_yield", *_classes, *_enumerations]
