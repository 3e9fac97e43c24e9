#!/usr/bin/env python3
"""A small sale that is never printed twice. `sale.py 2` prints at COM2; without a port it prints on a virtual printer."""
import os
import sys
from decimal import Decimal

import zentaro
from zentaro.virtual_printer import VirtualPrinter

SALE = {
    "document": "invoice",
    "customer": {"name": "Ana Pérez", "rif": "V-12345678"},
    "lines": [{"description": "Café molido", "price": Decimal("12.50"), "quantity": 2, "tax": 16},
              {"description": "Queso blanco", "price": 8, "quantity": Decimal("0.75"), "tax": 0}],
    "payments": [{"amount": 40}],
}


def sell(port):
    with zentaro.CZentaro(CommPort=port, PortOpen=True) as printer:
        # Under an id of the program's own nothing is ever printed twice, also after a power cut.
        return zentaro.sell(printer, SALE, id="F-1", progress=print)


def main():
    if len(sys.argv) > 1:
        return sell(int(sys.argv[1]))
    with VirtualPrinter() as paper:
        os.environ.update(ZENTARO_SETTINGS=str(paper.settings), ZENTARO_BOOKS=str(paper.books))
        verdict = sell(1)
        print("\n".join(paper.paper))
    return verdict


try:
    verdict = main()
except zentaro.AutomationError as error:  # the port does not open: nothing was sent
    print(error, file=sys.stderr)
    sys.exit(2)
if verdict.is_printed:
    words, status = "PRINTED", 0
elif verdict.verdict in ("not-printed", "unreachable", "busy"):
    words, status = "NOT PRINTED", 3
else:  # somebody has to look at the paper
    words, status = "STILL OPEN" if verdict.verdict.startswith("still-") else "UNKNOWN", 4
print(f"{words}: number {verdict.number}, total {verdict.total}. {verdict.next}")
sys.exit(status)
