"""The Python package as it comes in the wheel, on the virtual printer of its own fixture."""
import ast
import copy
import datetime
import subprocess
import sys
import threading
from decimal import Decimal

import pytest
import zentaro
from zentaro import AutomationError, CZentaro, ENVERR_CODES, Special


@pytest.mark.parametrize("value, back", [
    (None, None), (Special.NULL, Special.NULL), (Special.MISSING, Special.MISSING), (Special.NOTHING, None),
    (True, True), (70000, 70000), (2**31, 2.0**31), (0.525, 0.525),
    (Decimal("-12.345"), Decimal("-12.3450")), (Decimal(2**63 - 1) / 10000, Decimal("922337203685477.5807")),
    (datetime.datetime(2024, 3, 15, 14, 5, 9), datetime.datetime(2024, 3, 15, 14, 5, 9)),
    (datetime.datetime(1899, 12, 28, 6), datetime.datetime(1899, 12, 28, 6)),
    (datetime.date(1899, 12, 30), datetime.datetime(1899, 12, 30)), (datetime.time(18), datetime.datetime(1899, 12, 30, 18)),
    ("Ñandú\0x €", "Ñandú\0x €"), ((1, ["a", None]), [1, ["a", None]]),
])
def test_values_come_back(value, back):
    printer = CZentaro()
    printer.CommPort = value
    assert printer.CommPort == back and type(printer.CommPort) is type(back)
    printer.CommPort = printer  # a reference, also to itself
    assert printer.CommPort.PrinterType == "EPSON TMU"
    printer.CommPort = None


@pytest.mark.parametrize("attempt, error", [
    (lambda printer: CZentaro(CommPort=Decimal("1.00001")), ValueError),
    (lambda printer: CZentaro(CommPort=Decimal(2**63) / 10000), OverflowError),
    (lambda printer: CZentaro(CommPort=object()), TypeError),
    (lambda printer: CZentaro(ComPort=1), AttributeError),
    (lambda printer: setattr(printer, "PrinterType", "x"), AttributeError),
    (lambda printer: printer.RecibirPago(), TypeError),
    (lambda printer: printer.RecibirPago(1, 2), TypeError),
    (lambda printer: zentaro.statusN(), AutomationError(429, "Zentaro")),
    (lambda printer: printer.call("Nope"), AutomationError(438, "Zentaro")),
    (lambda printer: CZentaro(PortOpen=True), AutomationError(40001, "CZentaro.Let PortOpen")),
    (lambda printer: setattr(printer, "nLastCommand", "x"), AutomationError(13, "Zentaro")),
    (lambda printer: copy.copy(printer), TypeError),
])
def test_what_does_not_fit_raises(attempt, error):
    with pytest.raises(error if isinstance(error, type) else type(error)) as raised:
        attempt(CZentaro())
    if not isinstance(error, type):
        assert (raised.value.number, raised.value.source) == (error.number, error.source) and raised.value.description


def test_a_sale_on_the_virtual_printer(virtual_printer):
    class Till(CZentaro):
        """A program's own."""
    with Till(CommPort=1, PortOpen=True) as printer:
        assert printer.IniciarFactura(sRIFCliente="V-12345678") is ENVERR_CODES.ENVERR_OK
        virtual_printer.fault("lose-answer on item")
        assert virtual_printer.faults == ["lose-answer on item once"]
        assert printer.PasarLineaFactura("Café", Decimal("12.50"), 2, 16) is ENVERR_CODES.ENVERR_COMM
        assert printer.nEnvironmentError is ENVERR_CODES.ENVERR_COMM
        assert printer.RecibirPago(40) is ENVERR_CODES.ENVERR_OK
        assert virtual_printer.status["document"] == 1
        assert printer.call("CerrarComprobanteIGTF", "T", 0) == (ENVERR_CODES.ENVERR_OK, ("T", 0))
        record = printer.GetStatusHASAR()
        assert type(record) is zentaro.statusHASAR and record.numeroUltimaFactura == 1
    assert not printer.isPortOpen
    assert len(virtual_printer.paper) == 1 and "TOTAL                           Bs 29,00" in virtual_printer.paper[0]
    commands = [entry.name for entry in virtual_printer.log if entry.event == "command"]
    assert commands == ["open", "item", "payment", "close", "status"]
    with pytest.raises(ValueError, match="lose-anser"):
        virtual_printer.fault("lose-anser")


INVOICE = {"document": "invoice", "customer": {"name": "Ana Pérez", "rif": "V-12345678"},
           "lines": [{"description": "Café molido", "price": Decimal("12.50"), "quantity": 2, "tax": 16}], "payments": [{"amount": 40}]}


def test_a_document_is_sold_once(virtual_printer):
    lines = []
    with CZentaro(CommPort=1, PortOpen=True) as printer:
        virtual_printer.fault("lose-answer on close")
        verdict = zentaro.sell(printer, INVOICE, id="F-1", progress=lines.append)
        assert verdict.is_printed and (verdict.verdict, verdict.number, verdict.total) == ("printed", 1, Decimal("29.00"))
        assert any("Café molido" in line for line in lines)
        assert zentaro.sell(printer, INVOICE, id="F-1").verdict == "already-printed"
        note = {"document": "credit note", "customer": INVOICE["customer"], "lines": INVOICE["lines"],
                "invoice": {"number": 1, "serial": "ZZZ0000001", "date": datetime.datetime(2024, 3, 15, 14, 5)}}
        assert zentaro.sell(printer, note, id="N-1").verdict == "printed"
        assert zentaro.settle(printer).open == []
        closing = zentaro.close(printer, "Z", id="Z-1")
        assert (closing.verdict, closing.number, closing.figures["sales"]["base1"]) == ("printed", 1, Decimal("25.00"))
    assert [(job.id, job.state, type(job.ended)) for job in zentaro.jobs()] == [
        (id, "printed", datetime.datetime) for id in ("F-1", "N-1", "Z-1")]
    assert [job.total for job in zentaro.jobs("F-1")] == [Decimal("29.00")] and zentaro.jobs("F-2") == []
    assert len(virtual_printer.paper) == 3 and "14:05" in virtual_printer.paper[1]


def test_what_a_callback_raises_stops_the_document(virtual_printer):
    def interrupt(line):
        if "Café" in line:
            raise KeyboardInterrupt
    with CZentaro(CommPort=1, PortOpen=True) as printer:
        with pytest.raises(KeyboardInterrupt) as raised:
            zentaro.sell(printer, INVOICE, progress=interrupt)
        assert raised.value.verdict.verdict == "not-printed"
    assert "DOCUMENTO ANULADO" in virtual_printer.paper[0]


def test_what_is_wrong_with_a_document():
    wrong = {**INVOICE, "lines": [{"description": "Pan", "price": "1O", "tax": 16}]}
    assert [problem.path for problem in zentaro.check(wrong).problems] == ["lines[0].price"]
    assert zentaro.check(INVOICE).change == Decimal("11.00")
    with pytest.raises(AutomationError, match="PortOpen"):
        zentaro.sell(CZentaro(), INVOICE)


def test_a_callback_ends_a_wait(virtual_printer):
    def stop():
        raise KeyboardInterrupt
    zentaro.on_yield(stop)
    try:
        with pytest.raises(KeyboardInterrupt):
            CZentaro().Subtotal()
    finally:
        zentaro.on_yield(None)
    assert CZentaro().Subtotal() is ENVERR_CODES.ENVERR_COMM


def test_an_object_stays_on_its_thread():
    printer, failures = CZentaro(), []

    def elsewhere():
        try:
            printer.Subtotal()
        except AutomationError as failure:
            failures.append(failure.number)
    thread = threading.Thread(target=elsewhere)
    thread.start()
    thread.join()
    assert failures == [5]


def test_an_object_that_another_thread_drops_ends_on_its_own(virtual_printer):
    dropped = [CZentaro(CommPort=1, PortOpen=True)]
    thread = threading.Thread(target=dropped.clear)
    thread.start()
    thread.join()
    with CZentaro(CommPort=1, PortOpen=True) as printer:
        assert printer.Subtotal() is not ENVERR_CODES.ENVERR_COMM


def test_documentation_and_stubs_come_from_the_descriptions():
    assert CZentaro.RecibirPago.__doc__.startswith("Registers a payment.\n\nivmMontoRecibido: ")
    stubs = (zentaro.__path__[0] + "/__init__.pyi")
    with open(stubs, encoding="utf-8") as file:
        names = {node.name: node for node in ast.parse(file.read()).body if isinstance(node, ast.ClassDef)}
    defined = {node.name for node in names["CZentaro"].body if isinstance(node, ast.FunctionDef)}
    assert defined == {name for name in vars(CZentaro) if not name.startswith("__")}
    smoke = subprocess.run([sys.executable, "-m", "zentaro"], capture_output=True, text=True)
    assert smoke.returncode == 0 and "CZentaro" in smoke.stdout
