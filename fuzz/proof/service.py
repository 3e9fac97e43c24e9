"""Jobs from four clients through `zentaro serve` on three printers, of which one is slow and one loses answers, while service,
clients and lines are cut off at random moments. In the end every job that is called printed stands once in the printers' own logs,
and no job stands there twice.

    service.py FOLDER_OF_PROGRAMS JOBS [SEED]
"""
import json
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tests/support"))
import served  # pylint: disable=wrong-import-position

BIN, JOBS = sys.argv[1], int(sys.argv[2])
SEED = int(sys.argv[3]) if len(sys.argv) > 3 else 1
PRINTERS = {"quick": [], "slow": ["--realtime"],
            "lossy": ["--fault", "lose-answer chance 3% always", "--fault", "lose-command chance 2% always"]}
CLIENTS = 4
dice = random.Random(SEED)
folder = tempfile.mkdtemp(prefix="zentaro-service-")
os.environ.update(XDG_STATE_HOME=f"{folder}/home", ZENTARO_SETTINGS=f"{folder}/settings.ini", ZENTARO_BOOKS=f"{folder}/books.db",
                  ZENTARO_LANG="en")
problems = []
counts = {"killed": 0, "ended": 0, "unplugged": 0, "power cuts": 0, "abandoned": 0, "replays": 0, "further attempts": 0,
          "found unknown": 0, "documents ended by hand": 0}
over = threading.Event()


def tell(printer, line):
    return served.tell(f"{folder}/{printer}.control", line)


class Service:
    """The service, started again after each misfortune, on the same port."""

    def __init__(self):
        self.token = subprocess.run([f"{BIN}/zentaro", "serve", "token", "add", "proof", "--rights", "sell,close,resolve,read"],
                                    capture_output=True, text=True, check=True).stdout.strip()
        self.port = served.free_port()
        self.log = open(f"{folder}/service.log", "ab")
        self.process = None
        self.hands = threading.Lock()  # who ends and starts it

    def start(self):
        words = [f"{BIN}/zentaro", "serve", "--listen", f"127.0.0.1:{self.port}"]
        for name in PRINTERS:
            words += ["--printer", f"{name}={folder}/{name}"]
        self.process = subprocess.Popen(words, stdin=subprocess.DEVNULL, stderr=self.log)

    def stop(self, how):
        self.process.send_signal(how)
        try:
            self.process.wait(150)
        except subprocess.TimeoutExpired:
            problems.append(f"the service does not end at signal {how}")
            self.process.kill()

    def end_document(self, printer):
        """What a person does with a document that is nobody's: it was opened by a service that was killed before the books
        had its number."""
        with self.hands:
            counts["documents ended by hand"] += 1
            self.stop(signal.SIGTERM)
            for _ in range(20):  # its answers are lost, too
                if subprocess.run([f"{BIN}/zentaro", "call", "CancelarComprobante", "--device", f"{folder}/{printer}"],
                                  stdin=subprocess.DEVNULL, capture_output=True, check=False).returncode == 0:
                    break
            self.start()

    def ask(self, method, path, body=None, patience=70):
        return served.ask(self.port, self.token, method, path, body, patience)


def body_of(number, attempt, printer):
    text = f"Job {number} try {attempt}"
    return {"printer": printer, "attempt": attempt, "patience": 300,
            "sale": {"document": "invoice", "lines": [{"description": text, "price": f"{number}.00", "tax": 0}] * (1 + number % 4),
                     "payments": [{"amount": number * (1 + number % 4)}]}}


def put(service, number, attempt, printer, luck):
    """The same PUT until it is answered. Some clients go away in the middle, and some send it once more."""
    body, end = body_of(number, attempt, printer), time.monotonic() + 300
    while time.monotonic() < end:
        patience = 0.05 if luck.random() < 0.2 else 70
        counts["abandoned"] += patience < 1
        code, job = service.ask("PUT", f"/v1/jobs/J-{number}?wait={luck.choice([0, 1, 20])}", body, patience)
        if code in (200, 202):
            if luck.random() < 0.2:
                counts["replays"] += 1
                continue
            return job
        if code is not None and code < 500 and code != 429:
            problems.append(f"job {number}: {code} {job}")
            return None
        time.sleep(0.05)
    problems.append(f"job {number} is never accepted")
    return None


def paper_says(number, attempt):
    return printed().count((number, attempt)) == 1


def carry(service, number, luck):
    """One job to its paper, as a careful client does: a further attempt only of what was not printed."""
    attempt = 1
    for _ in range(12):
        job = put(service, number, attempt, luck.choice(list(PRINTERS)), luck)
        looked = time.monotonic()
        while job and job["state"] not in ("printed", "not-printed"):
            time.sleep(0.05)
            _, seen = service.ask("GET", f"/v1/jobs/J-{number}?wait=5")
            job = seen if seen and "state" in seen else job
            if job["state"] == "unknown" and time.monotonic() - looked > 40:  # a person looks at the paper
                counts["found unknown"] += 1
                if job["cause"] == "a document is open":
                    service.end_document(job["printer"])
                service.ask("PUT", f"/v1/jobs/J-{number}/finding", {"printed": paper_says(number, job["attempt"])})
            if time.monotonic() - looked > 600:
                problems.append(f"job {number} stays {job['state']}: {job['verdict']} {job['cause']}")
                return
        if job is None or job["state"] == "printed":
            return
        counts["further attempts"] += 1
        attempt = job["attempt"] + 1
    problems.append(f"job {number} is not printed after {attempt} attempts")


def client(service, numbers, seed):
    luck = random.Random(seed)
    for number in numbers:
        carry(service, number, luck)


def misfortunes(service):
    while not over.wait(dice.uniform(0.3, 3)):
        what = dice.choice(["kill", "kill", "end", "unplug", "power"])
        if what in ("kill", "end"):
            counts["killed" if what == "kill" else "ended"] += 1
            with service.hands:
                service.stop(signal.SIGKILL if what == "kill" else signal.SIGTERM)
                time.sleep(dice.choice([0, 0.5]))
                service.start()
        elif what == "unplug":
            counts["unplugged"] += 1
            tell(dice.choice(list(PRINTERS)), "fault hang-up=0.5")
        else:
            counts["power cuts"] += 1
            tell(dice.choice(list(PRINTERS)), f"fault power-cut=0.5 on {dice.choice(['open', 'item', 'payment', 'close'])}")


def printed():
    """(number, attempt) of every document that a printer counted, by the printers' own logs."""
    found = []
    for name in PRINTERS:
        for text in served.papers(f"{folder}/{name}.log"):
            _, number, _, attempt = text.split()[:4]
            found.append((int(number), int(attempt)))
    return found


def judge(service):
    papers = printed()
    on_paper = [number for number, _ in papers]
    for number in range(1, JOBS + 1):
        _, job = service.ask("GET", f"/v1/jobs/J-{number}")
        state = job.get("state") if job else None
        if state != "printed" or on_paper.count(number) != 1:
            problems.append(f"job {number} is {state}, and stands {on_paper.count(number)} times on paper")
        elif (number, job["attempt"]) not in papers:
            problems.append(f"job {number} is printed by attempt {job['attempt']}, the paper shows another")
    numbers = {}
    for name in PRINTERS:
        numbers[name] = 0
        if os.path.exists(f"{folder}/{name}.state"):  # written with the first document
            with open(f"{folder}/{name}.state", encoding="utf-8") as file:
                numbers[name] = json.load(file)["day"]["invoices"]
    if sum(numbers.values()) != len(papers):
        problems.append(f"the printers counted {numbers}, their logs show {len(papers)}")
    return numbers


def main():
    printers = [subprocess.Popen([f"{BIN}/zentaro-printer", "--quiet", "--link", f"{folder}/{name}", "--serial", name.upper(),
                                  "--state", f"{folder}/{name}.state", "--control", f"{folder}/{name}.control",
                                  "--log", f"{folder}/{name}.log", "--seed", str(SEED), *options],
                                 stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL) for name, options in PRINTERS.items()]
    numbers = {}
    try:
        while not all(os.path.exists(f"{folder}/{name}") and os.path.exists(f"{folder}/{name}.control") for name in PRINTERS):
            time.sleep(0.05)
        with open(os.environ["ZENTARO_SETTINGS"], "w", encoding="utf-8") as file:
            file.write("[Config\\EPSONZT]\nTimeOutZT=1\n")
        service = Service()
        service.start()
        clients = [threading.Thread(target=client, args=(service, range(1 + place, JOBS + 1, CLIENTS), SEED * 100 + place))
                   for place in range(CLIENTS)]
        trouble = threading.Thread(target=misfortunes, args=(service,))
        for thread in [*clients, trouble]:
            thread.start()
        for thread in clients:
            thread.join()
        over.set()
        trouble.join()
        time.sleep(1)
        numbers = judge(service)
        service.stop(signal.SIGTERM)
    finally:
        for printer in printers:
            printer.kill()
        if problems and "--keep" in sys.argv:
            print(f"  kept in {folder}")
        else:
            shutil.rmtree(folder, ignore_errors=True)
    print(f"  {JOBS} jobs; {numbers}; " + ", ".join(f"{count} {what}" for what, count in counts.items()))
    for problem in problems:
        print(f"  FAILED {problem}")
    print(f"{JOBS - len(problems)} passed, {len(problems)} failed")
    sys.exit(1 if problems else 0)


main()
