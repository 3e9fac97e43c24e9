"""What `zentaro serve` adds: from the PUT to the first byte on the line beside `zentaro sale`, jobs a second, a sale beside idle streams
and slow clients, memory.

    service.py FOLDER_OF_PROGRAMS [ROUNDS]
"""
import http.client
import json
import os
import pty
import shutil
import socket
import subprocess
import sys
import tempfile
import threading
import time
import tty

BIN, ROUNDS = os.path.abspath(sys.argv[1]), int(sys.argv[2]) if len(sys.argv) > 2 else 30
folder = tempfile.mkdtemp(prefix="zentaro-bench-")
env = {**os.environ, "XDG_STATE_HOME": folder, "ZENTARO_SETTINGS": f"{folder}/none.ini", "ZENTARO_LANG": "en"}
SALE = {"document": "invoice", "lines": [{"description": "Arepa", "price": 10, "tax": 16}], "payments": [{"amount": 20}]}
children = []


def start(words, books):
    child = subprocess.Popen(words, env={**env, "ZENTARO_BOOKS": f"{folder}/{books}/books.db"}, stdin=subprocess.DEVNULL,
                             stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    children.append(child)
    for line in child.stderr:
        if line.startswith("ready: "):
            threading.Thread(target=child.stderr.read, daemon=True).start()
            return child, line.split()[1]
    raise RuntimeError("it does not start")


def printer(name, *options):
    return start([f"{BIN}/zentaro-printer", "--quiet", "--link", f"{folder}/{name}", "--serial", name.upper(), *options], "none")[1]


class Line:
    """A line between a program and a printer, which notes when its first byte came."""

    def __init__(self, name):
        outer, inner = pty.openpty()
        tty.setraw(inner)
        self.device, self.first = os.ttyname(inner), None
        there = os.open(printer(name), os.O_RDWR | os.O_NOCTTY)
        tty.setraw(there)
        for one, other, is_host in ((outer, there, True), (there, outer, False)):
            threading.Thread(target=self.carry, args=(one, other, is_host), daemon=True).start()
        self.keep = inner

    def carry(self, one, other, is_host):
        while True:
            try:
                data = os.read(one, 4096)
            except OSError:  # the printer has ended
                return
            if is_host and self.first is None:
                self.first = time.monotonic()
            os.write(other, data)

    def since(self, begin, patience=10):
        while self.first is None and time.monotonic() - begin < patience:
            time.sleep(0.0005)
        return (self.first - begin) * 1e3


class Service:
    def __init__(self, devices, books):
        self.token = subprocess.run([f"{BIN}/zentaro", "serve", "token", "add", books, "--rights", "sell,read"], env=env, check=True,
                                    capture_output=True, text=True).stdout.strip()
        words = [word for name, device in devices.items() for word in ("--printer", f"{name}={device}")]
        self.process, url = start([f"{BIN}/zentaro", "serve", "--listen", "127.0.0.1:0", *words], books)
        self.port = int(url.rsplit(":", 1)[1])
        while any(one["state"] != "ready" for one in self.ask("GET", "/v1/printers")["printers"]):
            time.sleep(0.1)

    def ask(self, method, path, body=None):
        client = http.client.HTTPConnection("127.0.0.1", self.port, timeout=70)
        client.request(method, path, None if body is None else json.dumps(body),
                       {"Authorization": f"Bearer {self.token}", "Content-Type": "application/json"})
        return json.load(client.getresponse())

    def sell(self, number, name, wait=60):
        job = self.ask("PUT", f"/v1/jobs/{number}?wait={wait}", {"printer": name, "patience": 300, "sale": SALE})
        assert wait == 0 or job["state"] == "printed", job

    def memory(self):
        with open(f"/proc/{self.process.pid}/smaps_rollup", encoding="utf-8") as file:
            return next(int(line.split()[1]) for line in file if line.startswith("Pss:"))


def share(values, part):
    return sorted(values)[int(part * (len(values) - 1))]


def first_bytes():
    line, other = Line("line1"), Line("line2")
    service, puts, sales = Service({"a": line.device, "paced": printer("paced", "--realtime")}, "first"), [], []
    with open(f"{folder}/sale.json", "w", encoding="utf-8") as file:
        json.dump(SALE, file)
    for number in range(ROUNDS):
        time.sleep(0.3)
        line.first, begin = None, time.monotonic()
        service.sell(f"F-{number}", "a")
        puts.append(line.since(begin))
        other.first, begin = None, time.monotonic()
        subprocess.run([f"{BIN}/zentaro", "sale", f"{folder}/sale.json", "--id", f"F-{number}", "--device", other.device], check=True,
                       env={**env, "ZENTARO_BOOKS": f"{folder}/sold/books.db"}, capture_output=True)
        sales.append(other.since(begin))
    print(f"to the first byte on the line: PUT p50 {share(puts, .5):.1f} ms, p99 {share(puts, .99):.1f}; zentaro sale {share(sales, .5):.1f}, "
          f"{share(sales, .99):.1f}; ratio {share(puts, .5) / share(sales, .5):.2f}, {share(puts, .99) / share(sales, .99):.2f}")
    return service


def beside_others(service):
    """In turns: a sale at the pace of 9600 baud alone, and beside clients that hold what they may have."""
    ratios, before, after = [], service.memory(), 0
    for turn in range(max(3, ROUNDS // 3)):
        times = []
        for crowd in (0, 1):
            held = [socket.create_connection(("127.0.0.1", service.port)) for _ in range(120 * crowd)]
            for place, client in enumerate(held):
                text = f"GET /v1/events HTTP/1.1\r\nHost: 127.0.0.1\r\nAuthorization: Bearer {service.token}\r\n\r\n" if place < 30 else "GET /"
                client.sendall(text.encode())
            time.sleep(0.2)
            after = service.memory() if crowd else after
            begin = time.monotonic()
            service.sell(f"C-{turn}-{crowd}", "paced")
            times.append(time.monotonic() - begin)
            for client in held:
                client.close()
            time.sleep(0.2)
        ratios.append(times[1] / times[0])
    print(f"a sale beside 30 streams and 90 slow clients, of one alone: {share(ratios, .5):.2f} ({share(ratios, .05):.2f} to "
          f"{share(ratios, .95):.2f}); memory of the service {before} kB alone, {after} with these 120")


def ten_printers():
    names = [f"p{number}" for number in range(10)]
    service = Service({name: printer(name) for name in names}, "ten")
    memory, jobs, begin = service.memory(), 20, time.monotonic()
    for number in range(jobs):
        for name in names:
            service.sell(f"T-{number}-{name}", name, 0)
    while any(one["queue"] for one in service.ask("GET", "/v1/printers")["printers"]):
        time.sleep(0.05)
    print(f"ten instant printers: {10 * jobs / (time.monotonic() - begin):.0f} jobs a second; memory with ten printers {memory} kB")


try:
    for books in ("none", "first", "sold", "ten"):
        os.mkdir(f"{folder}/{books}")
    beside_others(first_bytes())
    ten_printers()
finally:
    for child in children:
        child.kill()
    shutil.rmtree(folder, ignore_errors=True)
