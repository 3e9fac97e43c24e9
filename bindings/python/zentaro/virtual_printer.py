"""A virtual printer for tests: a running `zentaro-printer` with its faults, paper and log as Python objects."""
import json
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
import time
import types

_cut = "- - - - "


def _program():
    """$ZENTARO_PRINTER, or the program of the wheel, or the installed one."""
    native = pathlib.Path(__file__).parent / "native" / "zentaro-printer"
    program = os.environ.get("ZENTARO_PRINTER") or (str(native) if native.exists() else shutil.which("zentaro-printer"))
    if program is None:
        raise FileNotFoundError("zentaro-printer is not installed; ZENTARO_PRINTER may name it")
    return program


class VirtualPrinter:
    """A printer at `device`, with an empty memory of its own and options of the command line, for example "--realtime".

    `settings` is a settings file in which it is COM1 and the time-out is `time_out` whole seconds; `books` are for what is sold on it.
    """

    def __init__(self, *options, time_out=1):
        self._folder = tempfile.TemporaryDirectory(prefix="zentaro-")
        folder = pathlib.Path(self._folder.name)
        self.device, self.settings = folder / "printer", folder / "settings.ini"
        self.books = folder / "books" / "books.db"
        self.books.parent.mkdir()
        self._paper, self._log, self._control, self._notices = (folder / name for name in ("paper.txt", "log", "control", "notices"))
        self.settings.write_text(f"[Config\\EPSONZT]\nTimeOutZT={time_out}\n[Config\\ModComm]\nCOM1={self.device}\n", "utf-8")
        with self._notices.open("wb") as notices:
            self._process = subprocess.Popen(
                [_program(), "--quiet", "--link", self.device, "--paper", self._paper, "--log", self._log, "--control",
                 self._control, *options], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=notices)
        while not self.device.exists():
            if self._process.poll() is not None:
                reason = self._notices.read_text("utf-8", "replace")
                self.close()
                raise RuntimeError("zentaro-printer does not start: " + reason)
            time.sleep(0.01)

    def close(self):
        self._process.terminate()
        self._process.communicate()
        self._folder.cleanup()

    def __enter__(self):
        return self

    def __exit__(self, *failure):
        self.close()

    def tell(self, line):
        """Sends a control line ("help" lists them) and returns the reply; ValueError with the printer's text when it refuses."""
        with socket.socket(socket.AF_UNIX) as control, control.makefile("rw", encoding="utf-8") as lines:
            control.connect(str(self._control))
            control.sendall(line.encode() + b"\n")
            reply = []
            while not reply or not reply[-1].startswith(("ok", "error")):
                reply.append(lines.readline().rstrip("\n") or "error: the printer has ended")
        if reply[-1].startswith("error"):
            raise ValueError(reply[-1])
        return "\n".join(reply)

    def fault(self, plan):
        """Orders faults: "lose-answer on close", "paper-out on item after 2"."""
        self.tell("fault " + plan)

    @property
    def faults(self):
        """The faults in force."""
        return self.tell("faults").split("\n")[:-1]

    def clear(self, effect=""):
        """Ends all faults, or those with this effect; paper is back, the cover is closed."""
        self.tell(f"clear {effect}".rstrip())

    @property
    def status(self):
        """The open document and the last numbers: {"document": 0, "invoice": 1, ...}; the status words are hexadecimal texts."""
        pairs = dict(pair.split("=") for pair in self.tell("status").split()[1:])
        return {name: text if name in ("printer", "fiscal") else int(text) for name, text in pairs.items()}

    @property
    def paper(self):
        """The sheets printed so far, each a text of lines 40 characters wide."""
        text = self._paper.read_text("utf-8") if self._paper.exists() else ""
        sheets, lines = [], []
        for line in text.splitlines():
            if line.startswith(_cut):
                sheets.append("\n".join(lines))
                lines = []
            else:
                lines.append(line)
        return sheets

    @property
    def log(self):
        """What came over the line and what struck: objects with time, ms, event, name, and fields where there are any."""
        lines = self._log.read_text("utf-8").splitlines() if self._log.exists() else []
        return [json.loads(line, object_hook=lambda entry: types.SimpleNamespace(**entry)) for line in lines]
