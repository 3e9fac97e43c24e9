"""The outside of the guest: starts it with its serial lines joined to virtual printers, runs commands in it, pulls
the adapter out, and judges. Called by ./test drivers with the folder that
holds kernel and file system, and that of the programs."""
import glob
import json
import os
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import threading
import time

WORK, BIN = sys.argv[1:3]
WANTED = sys.argv[3:]
FOLDER = tempfile.mkdtemp(prefix="zentaro-drivers-")


class Printer:
    """A virtual printer, and what it says of itself."""

    def __init__(self, name):
        self.link, self.state, self.log = (f"{FOLDER}/{name}{end}" for end in ("", ".json", ".log"))
        self.control = f"{FOLDER}/{name}.control"
        self.process = subprocess.Popen(
            [f"{BIN}/zentaro-printer", "--quiet", "--link", self.link, "--state", self.state, "--log", self.log,
             "--control", self.control], stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_until(lambda: os.path.exists(self.link) and os.path.exists(self.control), 30)

    def say(self, line):
        with socket.socket(socket.AF_UNIX) as control:
            control.settimeout(20)
            control.connect(self.control)
            control.sendall(line.encode() + b"\n")
            reply = control.recv(65536).decode()
        assert reply.splitlines()[-1].startswith("ok"), reply
        return reply

    def seen(self, command):
        with open(self.log, encoding="latin1") as log:
            return sum(f'"event":"command","name":"{command}"' in line for line in log)

    def invoices(self):
        """How many invoices are in the books of the day."""
        try:
            with open(self.state, encoding="utf-8") as state:
                return json.load(state)["day"]["invoices"]
        except FileNotFoundError:
            return 0

    def settle(self):
        """No fault any more, and nothing open."""
        self.say("clear")


class Guest:
    def __init__(self, first, adapter):
        kernel = glob.glob(f"{WORK}/kernel/boot/vmlinuz-*")[0]
        sockets = {name: f"{FOLDER}/{name}.socket" for name in ("console", "third", "qmp")}
        server = "server=on,wait=off"
        self.process = subprocess.Popen([
            "qemu-system-x86_64", "-m", "256", "-display", "none", "-vga", "none", "-nic", "none", "-no-reboot",
            "-kernel", kernel, "-initrd", f"{WORK}/initrd.gz", "-append", "console=ttyS0 quiet panic=-1",
            "-chardev", f"socket,id=console,path={sockets['console']},{server}", "-serial", "chardev:console",
            "-chardev", f"serial,id=first,path={first.link}", "-serial", "chardev:first",
            "-chardev", f"socket,id=third,path={sockets['third']},{server}", "-serial", "chardev:third",
            "-device", "piix3-usb-uhci,id=usb", "-chardev", f"serial,id=adapter,path={adapter.link}",
            "-device", "usb-serial,chardev=adapter,id=ftdi,bus=usb.0",
            "-qmp", f"unix:{sockets['qmp']},{server}"], stdin=subprocess.DEVNULL)
        wait_until(lambda: os.path.exists(sockets["qmp"]), 30)
        self.console, self.third, qmp = (connected(sockets[name]) for name in ("console", "third", "qmp"))
        self.monitor = qmp.makefile("rw")
        self.monitor.readline()
        self.order("qmp_capabilities")
        self.pending = ""
        self.until(r"@ready", 300)

    def order(self, name, **arguments):
        self.monitor.write(json.dumps({"execute": name, "arguments": arguments}) + "\n")
        self.monitor.flush()
        while True:
            reply = json.loads(self.monitor.readline())
            assert "error" not in reply, reply
            if "return" in reply:
                return

    def until(self, pattern, seconds):
        end = time.monotonic() + seconds
        while not (found := re.search(pattern, self.pending)):
            self.console.settimeout(max(0.1, end - time.monotonic()))
            self.pending += self.console.recv(65536).decode(errors="replace").replace("\r", "")
        text, self.pending = self.pending[:found.start()], self.pending[found.end():]
        return text, found

    def run(self, command, seconds=120):
        """The output and the exit status of a shell line."""
        self.console.sendall(command.encode() + b"\n")
        text, found = self.until(r"@status (\d+)\n", seconds)
        return text, int(found.group(1))

    def begin(self, command):
        self.run(f"({command} >/tmp/out 2>&1; echo $? >/tmp/end) & rm -f /tmp/end")

    def finish(self, seconds=180):
        """What the command that was begun has written, and its status."""
        text, _ = self.run(f"for i in $(seq {seconds}); do [ -s /tmp/end ] && break; sleep 1; done; cat /tmp/out", seconds + 60)
        status, _ = self.run("cat /tmp/end")
        return text, int(status or -1)

    def pull_out(self):
        self.order("device_del", id="ftdi")
        self.run("for i in $(seq 50); do [ -e /sys/bus/usb/devices/1-1 ] || break; sleep 0.1; done")

    def put_back(self):
        self.order("device_add", driver="usb-serial", chardev="adapter", id="ftdi", bus="usb.0")
        self.run("for i in $(seq 100); do ls /dev/ttyUSB* >/dev/null 2>&1 && break; sleep 0.1; done")


def connected(path):
    client = socket.socket(socket.AF_UNIX)
    wait_until(lambda: os.path.exists(path), 30)
    client.connect(path)
    return client


def wait_until(condition, seconds):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError("waited in vain")
        time.sleep(0.05)


def answer_to(command):
    """The answer of a printer to a command frame, as bytes."""
    body = b"\x02" + command[1:3] + b"\x1c0600\x1c3080\x1c00000001\x03"
    return body + b"%04X" % (sum(body) & 0xFFFF)


def sale(device, more=""):
    return f"zentaro sale /sale.json --device {device} --timeout 3 {more}"


def last_word(text):
    return " / ".join(text.strip().splitlines()[-3:])


# Each check gives the complaints that it has.

def doctor_sees_the_ports(guest, first, adapter):
    guest.run("export ZENTARO_SETTINGS=/tmp/settings.ini")
    guest.run("printf '[Config\\\\ModComm]\\nCOM1=/dev/ttyS1\\nCOM2=/dev/ttyUSB0\\nCOM4=/dev/ttyS3\\n' >/tmp/settings.ini")
    text, status = guest.run("zentaro doctor")
    for port in ("ttyS1", "ttyUSB0"):
        if port not in text:
            yield f"doctor does not name {port}: {text}"


def a_sale_on_a_16550(guest, first, adapter):
    guest.run("stty -F /dev/ttyS1 300 parenb icanon echo")  # whatever was set before
    text, status = guest.run(sale("/dev/ttyS1"))
    if status != 0 or first.invoices() != 1:
        yield f"status {status}, {first.invoices()} invoices: {last_word(text)}"
    settings, _ = guest.run("stty -F /dev/ttyS1 -a")
    for wanted in ("9600 baud", "cs8", "-parenb", "-cstopb", "-icanon", "-echo"):
        if wanted not in settings:
            yield f"the line is not {wanted}: {settings}"


def a_sale_on_a_usb_adapter(guest, first, adapter):
    text, status = guest.run(sale("/dev/ttyUSB0"))
    if status != 0 or adapter.invoices() != 1:
        yield f"status {status}, {adapter.invoices()} invoices: {last_word(text)}"


def a_time_out(guest, first, adapter):
    first.say("fault lose-answer always")
    begin = time.monotonic()
    text, status = guest.run("zentaro call --device /dev/ttyS1 --timeout 12 --give-up 0 StatusIF N 2>&1")
    first.settle()
    if status != 1 or time.monotonic() - begin < 11:
        yield f"status {status}: {last_word(text)}"


def two_programs_on_one_port(guest, first, adapter):
    first.say("fault lose-answer")
    guest.begin("zentaro call --device /dev/ttyS1 --timeout 6 StatusIF N")
    guest.run("sleep 2")
    text, status = guest.run("zentaro call --device /dev/ttyS1 --timeout 3 StatusIF N 2>&1")
    if status != 2 or "is in use: zentaro (process " not in text:
        yield f"the second has status {status}: {last_word(text)}"
    guest.finish()
    text, status = guest.run("zentaro call --device /dev/ttyS1 --timeout 5 StatusIF N 2>&1")
    if status != 0:
        yield f"afterwards status {status}: {last_word(text)}"


def a_break_in_an_answer(guest, first, adapter):
    def far_side():
        command = b""
        while b"\x03" not in command or len(command) < command.index(b"\x03") + 5:
            command += guest.third.recv(4096)
        answer = answer_to(command)
        guest.third.sendall(answer[:18])  # inside the document number
        time.sleep(0.5)
        guest.order("chardev-send-break", id="third")
        time.sleep(0.5)
        guest.third.sendall(answer[18:])
    far = threading.Thread(target=far_side, daemon=True)
    far.start()
    # The status that gets a tool in step is no matter here: execute sends the frame as it is given.
    text, status = guest.run("printf '%s\\n' "
        "'{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"create\",\"params\":{\"class\":\"Zentaro.CZentaro\"}}' "
        "'{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"put\",\"params\":{\"object\":1,\"name\":\"CommPort\",\"value\":3}}' "
        "'{\"jsonrpc\":\"2.0\",\"id\":3,\"method\":\"put\",\"params\":{\"object\":1,\"name\":\"PortOpen\",\"value\":true}}' "
        "'{\"jsonrpc\":\"2.0\",\"id\":4,\"method\":\"call\",\"params\":{\"object\":1,\"name\":\"StatusIF\",\"args\":[\"N\"]}}' "
        "'{\"jsonrpc\":\"2.0\",\"id\":5,\"method\":\"call\",\"params\":{\"object\":1,\"name\":\"response\",\"args\":[3]}}' "
        "| zentaro host")
    far.join(20)
    if '"id":4,"result":{"value":0' not in text or "00000001" not in text or "u0000" in text:
        yield f"the break is seen: {last_word(text)}"


def a_far_side_that_does_not_read(guest, first, adapter):
    os.kill(first.process.pid, 19)  # SIGSTOP
    guest.run("(head -c 200000 /dev/zero >/dev/ttyS1) 2>/dev/null & sleep 10; kill $!; wait", 120)
    begin = time.monotonic()
    text, status = guest.run("zentaro call --device /dev/ttyS1 --timeout 3 --give-up 0 StatusIF N 2>&1", 200)
    took = time.monotonic() - begin
    os.kill(first.process.pid, 18)
    if status not in (1, 2) or took > 25:
        yield f"status {status} after {took:.0f} s: {last_word(text)}"
    wait_until(lambda: guest.run("zentaro call --device /dev/ttyS1 --timeout 3 StatusIF N 2>&1", 200)[1] == 0, 120)


def the_adapter_pulled_out(guest, first, adapter):
    for step in ("status", "open", "item", "payment", "close"):
        before, seen = adapter.invoices(), adapter.seen(step)
        adapter.say(f"fault delay=2 on {step}")
        guest.begin(sale("/dev/ttyUSB0"))
        try:
            wait_until(lambda: adapter.seen(step) > seen, 60)
            guest.pull_out()
            time.sleep(1)
        finally:
            guest.put_back()
        text, status = guest.finish()
        adapter.settle()
        name, _ = guest.run("ls /dev/ttyUSB*")
        printed = adapter.invoices() - before
        print(f"    at {step}: status {status}, {printed} printed, {name.strip()}")
        if (status, printed) not in ((0, 1), (3, 0)) and not (step == "status" and status in (2, 4) and printed == 0):
            yield f"at {step}: status {status}, {printed} printed: {last_word(text)}"
        if name.strip() != "/dev/ttyUSB0":
            yield f"at {step}: the adapter comes back as {name.strip()}"


def a_name_without_a_port(guest, first, adapter):
    text, status = guest.run("zentaro call --device /dev/ttyS3 StatusIF N 2>&1")
    if status != 2 or "Input/output error" not in text:
        yield f"status {status}: {last_word(text)}"


def a_killed_program(guest, first, adapter):
    first.say("fault lose-answer")
    guest.run("zentaro call --device /dev/ttyS1 --timeout 20 StatusIF N >/dev/null 2>&1 & sleep 2; kill -9 $!; wait")
    text, status = guest.run("zentaro call --device /dev/ttyS1 --timeout 5 StatusIF N 2>&1")
    if status != 0:
        yield f"the next program has status {status}: {last_word(text)}"


CHECKS = [doctor_sees_the_ports, a_sale_on_a_16550, a_sale_on_a_usb_adapter, a_time_out, two_programs_on_one_port,
          a_break_in_an_answer, a_name_without_a_port, a_killed_program, the_adapter_pulled_out,
          a_far_side_that_does_not_read]


def main():
    unknown = set(WANTED) - {check.__name__ for check in CHECKS}
    if unknown:
        sys.exit(f"there is no check {', '.join(sorted(unknown))}; there are: {', '.join(check.__name__ for check in CHECKS)}")
    printers = [Printer("first"), Printer("adapter")]
    guest = None
    failed, wanted = 0, [check for check in CHECKS if not WANTED or check.__name__ in WANTED]
    try:
        begin = time.monotonic()
        guest = Guest(*printers)
        print(f"the guest is up after {time.monotonic() - begin:.0f} s", flush=True)
        guest.run("export ZENTARO_SETTINGS=/tmp/settings.ini")
        for check in wanted:
            begin = time.monotonic()
            try:
                complaints = list(check(guest, *printers))
            except (OSError, AssertionError, TimeoutError) as error:
                complaints = [repr(error)]
            failed += bool(complaints)
            word = "FAILED" if complaints else "ok    "
            print(f"{word} {check.__name__.replace('_', ' ')} ({time.monotonic() - begin:.0f} s)", flush=True)
            for complaint in complaints:
                print(f"       {complaint}", flush=True)
    finally:
        for process in [guest.process if guest else None] + [printer.process for printer in printers]:
            if process:
                process.kill()
        shutil.rmtree(FOLDER, ignore_errors=True)
    print(f"{len(wanted) - failed} passed, {failed} failed")
    sys.exit(1 if failed else 0)


main()
