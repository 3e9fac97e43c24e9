"""A chain on this machine for tests: a broker, a centre and tills with virtual printers, each a process that can be killed,
and a network between the tills and the broker that can be cut."""
import getpass
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import urllib.request

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
from served import ask, eventually, free_port, papers, tell  # pylint: disable=wrong-import-position


class Broker:
    """Mosquitto without a store: killed, it forgets everything."""

    def __init__(self, folder):
        self.port, self.folder, self.process = free_port(), folder, None
        self.configure("")

    def configure(self, more):
        with open(f"{self.folder}/broker.conf", "w", encoding="utf-8") as file:
            file.write(f"listener {self.port} 127.0.0.1\nuser {getpass.getuser()}\nallow_anonymous true\npersistence false\nmax_queued_messages 0\n{more}\n")

    def start(self):
        self.process = subprocess.Popen(["mosquitto", "-c", f"{self.folder}/broker.conf"], stdout=subprocess.DEVNULL,
                                        stderr=open(f"{self.folder}/broker.log", "ab"))
        assert eventually(lambda: socket.socket().connect_ex(("127.0.0.1", self.port)) == 0, 10)

    def kill(self):
        if self.process:
            self.process.kill()
            self.process.wait()
        self.process = None

    def say(self, topic, text):
        subprocess.run(["mosquitto_pub", "-V", "5", "-p", str(self.port), "-q", "1", "-t", topic, "-m", text], check=True)


class Network:
    """Between a till and the broker: passes bytes on, slowly when told to, and cuts its connections."""

    def __init__(self, target):
        self.target, self.delay, self.is_cut, self.open = target, 0.0, False, []
        self.door = socket.create_server(("127.0.0.1", 0))
        self.port = self.door.getsockname()[1]
        threading.Thread(target=self.listen, daemon=True).start()

    def listen(self):
        while True:
            here, _ = self.door.accept()
            if self.is_cut:
                here.close()
                continue
            try:
                there = socket.create_connection(("127.0.0.1", self.target), 5)
                there.settimeout(None)
            except OSError:
                here.close()
                continue
            self.open += [here, there]
            for one, other in ((here, there), (there, here)):
                threading.Thread(target=self.carry, args=(one, other), daemon=True).start()

    def carry(self, one, other):
        try:
            while data := one.recv(4096):
                time.sleep(self.delay)
                other.sendall(data)
        except OSError:
            pass
        for end in (one, other):
            try:
                end.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass

    def cut(self):
        self.is_cut = True
        for end in self.open:
            try:
                end.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass
        self.open.clear()

    def mend(self):
        self.is_cut = False


class End:
    """One `zentaro serve` with books of its own: the centre, or a till."""

    def __init__(self, chain, name, words, listens=True):
        self.chain, self.name, self.words, self.process = chain, name, words, None
        self.folder = f"{chain.folder}/{name}"
        os.makedirs(self.folder, exist_ok=True)
        self.books = f"{self.folder}/books.db"
        self.env = {**os.environ, "ZENTARO_BOOKS": self.books, "XDG_STATE_HOME": self.folder, "ZENTARO_LANG": "en",
                    "ZENTARO_SETTINGS": f"{chain.folder}/settings.ini"}
        self.port = free_port() if listens else None
        self.token = self.run("serve", "token", "add", "test", "--rights", "sell,close,resolve,read").strip() if listens else None

    def run(self, *words):
        return subprocess.run([f"{self.chain.programs}/zentaro", *words], env=self.env, check=True, capture_output=True, text=True).stdout

    def start(self):
        log = open(f"{self.folder}/log", "ab")
        listen = f"127.0.0.1:{self.port}" if self.port else "none"
        before = os.path.getsize(log.name)
        self.process = subprocess.Popen([f"{self.chain.programs}/zentaro", "serve", "--listen", listen, *self.words], env=self.env,
                                        stdin=subprocess.DEVNULL, stderr=log)
        assert eventually(lambda: "ready: " in self.said()[before:], 20), self.said()[-2000:]
        return self

    def stop(self, how=signal.SIGKILL):
        if not self.process:
            return
        self.process.send_signal(how)
        self.process.wait(60)
        self.process = None

    def said(self):
        with open(f"{self.folder}/log", encoding="utf-8", errors="replace") as log:
            return log.read()

    def ask(self, method, path, body=None, patience=70):
        return ask(self.port, self.token, method, path, body, patience)

    def metrics(self):
        request = urllib.request.Request(f"http://127.0.0.1:{self.port}/metrics", headers={"Authorization": f"Bearer {self.token}"})
        with urllib.request.urlopen(request, timeout=20) as answer:
            return answer.read().decode()

    def put(self, number, printer, wait=0, **more):
        return self.ask("PUT", f"/v1/jobs/{number}?wait={wait}", {"printer": printer, "patience": 120, "sale": sale(number), **more})

    def job(self, number, wait=0):
        return self.ask("GET", f"/v1/jobs/{number}?wait={wait}")[1]

    def becomes(self, number, *states, patience=90):
        return eventually(lambda: self.job(number).get("state") in states, patience)

    def all_jobs(self):
        jobs, after = [], 0
        while True:
            _, part = self.ask("GET", f"/v1/jobs?after={after}")
            if not part.get("jobs"):
                return jobs
            jobs += part["jobs"]
            after = part["revision"]


def sale(text):
    return {"document": "invoice", "lines": [{"description": text, "price": 10, "tax": 16}], "payments": [{"amount": 20}]}


class Chain:
    def __init__(self, programs):
        self.programs, self.printers, self.ends = programs, {}, []
        self.folder = tempfile.mkdtemp(prefix="zentaro-chain-")
        with open(f"{self.folder}/settings.ini", "w", encoding="utf-8") as file:
            file.write("[Config\\EPSONZT]\nTimeOutZT=1\n")
        self.broker = Broker(self.folder)
        self.broker.start()
        self.centre = End(self, "centre", ["--tills", f"mqtt://127.0.0.1:{self.broker.port}"])
        self.ends.append(self.centre)

    def printer(self, name, *options):
        self.printers[name] = subprocess.Popen(
            [f"{self.programs}/zentaro-printer", "--quiet", "--link", f"{self.folder}/{name}.tty", "--serial", name.upper(),
             "--state", f"{self.folder}/{name}.state", "--control", f"{self.folder}/{name}.control",
             "--log", f"{self.folder}/{name}.printed", *options], stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        assert eventually(lambda: os.path.exists(f"{self.folder}/{name}.tty"), 20)

    def kill_printer(self, name):
        os.unlink(f"{self.folder}/{name}.tty")  # else somebody's next device may have its name
        self.printers[name].kill()
        self.printers[name].wait()

    def till(self, name, listens=True, port=None, printer=None, folder=None, spread=4, options=()):
        printer = printer or name
        if printer not in self.printers:
            self.printer(printer, *options)
        till = End(self, folder or name, ["--printer", f"caja={self.folder}/{printer}.tty", "--till", name, "--spread", str(spread),
                                          "--centre", f"mqtt://127.0.0.1:{port or self.broker.port}"], listens)
        self.ends.append(till)
        return till

    def tell(self, printer, line):
        return tell(f"{self.folder}/{printer}.control", line)

    def online(self, name):
        return next((till for till in self.centre.ask("GET", "/v1/tills")[1].get("tills", []) if till["name"] == name), {})

    def is_ready(self, name):
        return eventually(lambda: self.online(name).get("online"))

    def papers(self, printer):
        return papers(f"{self.folder}/{printer}.printed")

    def end(self):
        for end in self.ends:
            end.stop()
        for printer in self.printers.values():
            printer.kill()
        self.broker.kill()
        shutil.rmtree(self.folder, ignore_errors=True)
