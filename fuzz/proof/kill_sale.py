"""Sales by `zentaro sale --id KEY`, killed, interrupted and unplugged at random, and repeated under the same key
until a verdict is there. In the end the journal and the printer's books must agree: every key printed once.

    kill_sale.py FOLDER_OF_PROGRAMS SALES [SEED] [realtime] [tcp]
"""
import json
import os
import random
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

BIN, SALES = sys.argv[1], int(sys.argv[2])
SEED = int(sys.argv[3]) if len(sys.argv) > 3 else 1
REAL_TIME = "realtime" in sys.argv
TCP = "tcp" in sys.argv
PRINTED, NOT_PRINTED, UNKNOWN, OPEN_BEFORE, PERHAPS = 0, 3, 4, 5, 6
dice = random.Random(SEED)
folder = tempfile.mkdtemp(prefix="zentaro-kill-")
state, link, control = (f"{folder}/{name}" for name in ("state.json", "printer", "control"))
os.environ.update(XDG_STATE_HOME=f"{folder}/home", ZENTARO_SETTINGS=f"{folder}/settings.ini")
problems = []


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return f"127.0.0.1:{probe.getsockname()[1]}"


line, device = ("--link", link), link
if TCP:
    line = ("--tcp", free_port())
    device = f"tcp://{line[1]}"


def say(line):
    with socket.socket(socket.AF_UNIX) as client:
        client.connect(control)
        client.sendall(line.encode() + b"\n")
        return client.recv(4096).decode()


def sale_file(number):
    path = f"{folder}/{number}.json"
    with open(path, "w", encoding="utf-8") as file:
        json.dump({"document": "invoice", "lines": [{"description": f"Articulo {number}", "price": f"{number}.00",
                                                     "tax": 16} for _ in range(1 + number % 3)],
                   "payments": [{"amount": 10 * number}]}, file)
    return path


def attempt(number, misfortune):
    """One run of the command under a misfortune; its exit status, or none when it was killed."""
    process = subprocess.Popen(
        [f"{BIN}/zentaro", "sale", sale_file(number), "--id", f"sale-{number}", "--device", device, "--timeout", "1"],
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    if misfortune:
        time.sleep(dice.random() * (2.5 if REAL_TIME else 0.25))
    if misfortune == "unplug":
        say("fault hang-up=0.5")
    elif misfortune:
        process.send_signal(misfortune)
    try:
        errors = process.communicate(timeout=120)[1].decode(errors="replace")
    except subprocess.TimeoutExpired:
        process.kill()
        problems.append(f"sale {number} does not end")
        return None
    # A signal in the first moment still ends the program itself; nothing was sent then.
    died = process.returncode in (-signal.SIGKILL, -signal.SIGINT, -signal.SIGTERM)
    if not died and process.returncode not in (PRINTED, NOT_PRINTED, UNKNOWN, OPEN_BEFORE, PERHAPS, 2):
        problems.append(f"sale {number}: exit status {process.returncode}: {errors.strip()[-200:]}")
    return process.returncode


def end_by_hand():
    """A kill between the opening and the moment in which the books have the document's number leaves a document that
    is nobody's, and no sale ends it on a guess: a person does, as the message says."""
    subprocess.run([f"{BIN}/zentaro", "call", "CancelarComprobante", "--device", device, "--timeout", "1"],
                   stdin=subprocess.DEVNULL, capture_output=True, check=False)


def main():
    printer = subprocess.Popen(
        [f"{BIN}/zentaro-printer", "--quiet", *line, "--state", state, "--control", control]
        + (["--realtime"] if REAL_TIME else []), stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    counts = {"killed": 0, "interrupted": 0, "unplugged": 0, "ended by hand": 0}
    names = {signal.SIGKILL: "killed", signal.SIGINT: "interrupted", signal.SIGTERM: "interrupted", "unplug": "unplugged"}
    try:
        while not (os.path.exists(control) and (TCP or os.path.exists(link))):
            time.sleep(0.05)
        for number in range(1, SALES + 1):
            verdict, attempts = None, 0
            while verdict != PRINTED and attempts < 12:
                attempts += 1
                misfortune = dice.choice([signal.SIGKILL, signal.SIGINT, signal.SIGTERM, "unplug"]) if attempts < 4 else None
                if misfortune:
                    counts[names[misfortune]] += 1
                verdict = attempt(number, misfortune)
                if verdict == 0 and misfortune == "unplug":
                    say("clear")
                if verdict == OPEN_BEFORE:
                    end_by_hand()
                    counts["ended by hand"] += 1
            if verdict != PRINTED:
                problems.append(f"sale {number} has no verdict but {verdict}")
        journal = subprocess.run([f"{BIN}/zentaro", "sale", "--journal"], capture_output=True, text=True, check=False).stdout
        with open(state, encoding="utf-8") as file:
            books = json.load(file)["day"]
    finally:
        printer.kill()
        shutil.rmtree(folder, ignore_errors=True)
    net = sum(number * (1 + number % 3) * 100 for number in range(1, SALES + 1))
    if books["invoices"] != SALES:
        problems.append(f"{SALES} sales, but {books['invoices']} invoices in the books")
    if sum(books["sales"]["bases"]) != net:
        problems.append(f"the books hold {sum(books['sales']['bases'])}, the sales make {net}")
    for number in range(1, SALES + 1):
        if f"sale-{number}" not in journal:
            problems.append(f"sale {number} is not in the journal")
    print(f"  {SALES} sales, {counts['killed']} kills, {counts['interrupted']} interruptions, {counts['unplugged']} times "
          f"unplugged, {counts['ended by hand']} documents ended by hand; {books['invoices']} invoices, "
          f"{books['cancelled']} documents cancelled")
    for problem in problems:
        print(f"  FAILED {problem}")
    print(f"{SALES - len(problems)} passed, {len(problems)} failed")
    sys.exit(1 if problems else 0)


main()
