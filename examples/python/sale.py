#!/usr/bin/env python3
"""A small sale over `zentaro host`. `sale.py 2` prints on the printer at COM2; without a port it prints on a virtual printer."""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time


class Zentaro:
    """The printer object, its members as methods of this one."""

    def __init__(self, environment):
        self.host = subprocess.Popen(["zentaro", "host"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                     text=True, encoding="utf-8", env=environment)
        self.object = self.request("create", **{"class": "Zentaro.CZentaro"})["object"]

    def request(self, method, **params):
        self.host.stdin.write(json.dumps({"jsonrpc": "2.0", "id": 1, "method": method, "params": params}) + "\n")
        self.host.stdin.flush()
        answer = json.loads(self.host.stdout.readline())
        if "error" in answer:
            raise RuntimeError(f"{answer['error']['code']}: {answer['error']['message']}")
        return answer["result"]

    def put(self, name, value):
        self.request("put", object=self.object, name=name, value=value)

    def call(self, name, *args):
        return self.request("call", object=self.object, name=name, args=list(args))["value"]

    def step(self, name, *args):
        outcome = self.call(name, *args)
        print(f"{name}: {outcome}")
        if outcome != 0:
            raise RuntimeError(self.call("EnvironmentError"))

    def close(self):
        self.host.stdin.close()
        self.host.wait()


def sell(port, environment):
    printer = Zentaro(environment)
    try:
        printer.put("CommPort", port)
        printer.put("PortOpen", True)
        printer.step("IniciarFactura", "Ana Pérez", "V-12345678")
        printer.step("PasarLineaFactura", "Café molido", 12.5, 2, 16)
        printer.step("PasarLineaFactura", "Queso blanco", 8, 0.75, 0)
        printer.step("RecibirPago", 40)
        printer.step("CerrarComprobante")
    finally:
        printer.close()


def sell_on_a_virtual_printer():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        settings = folder / "settings.ini"
        settings.write_text(f"[Config\\ModComm]\nCOM1={folder}/printer\n", encoding="utf-8")
        paper = subprocess.Popen(["zentaro-printer", "--link", str(folder / "printer")], stdin=subprocess.PIPE, text=True)
        try:
            while not (folder / "printer").exists() and paper.poll() is None:
                time.sleep(0.05)
            sell(1, {**os.environ, "ZENTARO_SETTINGS": str(settings)})
        finally:
            paper.communicate("quit\n")


try:
    if len(sys.argv) > 1:
        sell(int(sys.argv[1]), os.environ)
    else:
        sell_on_a_virtual_printer()
except RuntimeError as error:
    sys.exit(str(error))
