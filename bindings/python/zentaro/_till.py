"""The safe sale: a document is printed once, with a verdict that holds. What goes wrong at a counter is a verdict; an exception says
what the program did wrong, or that the books cannot be read."""
import ctypes
import datetime
import json
import os
import pathlib
import sys
import typing
from decimal import Decimal

from . import _values as values
from ._library import Value
from ._objects import Values, wrapped
from ._values import check as _checked

_Progress = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_char_p)
_loaded = None


class Verdict(typing.NamedTuple):
    """What became of a document. `verdict` is "printed", "not-printed", "unknown" and so on; `next` says what the cashier does."""
    verdict: str
    number: typing.Optional[int]
    total: typing.Optional[Decimal]
    igtf: typing.Optional[Decimal]
    change: typing.Optional[Decimal]
    cause: typing.Optional[str]
    next: typing.Optional[str]

    @property
    def is_printed(self):
        """Whether the document is on paper, now or since an earlier call with this id."""
        return self.verdict in ("printed", "printed-in-part", "already-printed")


class Closing(typing.NamedTuple):
    """What became of an X or a Z; its figures are grouped as on paper."""
    closing: str
    verdict: str
    number: typing.Optional[int]
    cause: typing.Optional[str]
    next: typing.Optional[str]
    figures: typing.Optional[dict]
    is_printed = Verdict.is_printed


class Problem(typing.NamedTuple):
    path: str
    text: str


class Checked(typing.NamedTuple):
    """What a document adds up to; the amounts are None while there are problems."""
    problems: typing.List[Problem]
    warnings: typing.List[Problem]
    net: typing.Optional[Decimal]
    tax: typing.Optional[Decimal]
    igtf: typing.Optional[Decimal]
    total: typing.Optional[Decimal]
    paid: typing.Optional[Decimal]
    change: typing.Optional[Decimal]


class Job(typing.NamedTuple):
    """A document or closing of the books."""
    id: typing.Optional[str]
    printer: str
    kind: str
    attempt: int
    state: str
    verdict: typing.Optional[str]
    number: typing.Optional[int]
    machine: typing.Optional[str]
    total: Decimal
    cause: typing.Optional[str]
    accepted: typing.Optional[datetime.datetime]
    begun: typing.Optional[datetime.datetime]
    ended: typing.Optional[datetime.datetime]


class Settled(typing.NamedTuple):
    """`judged` are the jobs about which something became known now, `open` those that a person has to look at."""
    refusal: typing.Optional[str]
    cause: typing.Optional[str]
    machine: typing.Optional[str]
    judged: typing.List[Job]
    open: typing.List[Job]


_amounts = ("net", "tax", "igtf", "total", "paid", "change")
_moments = ("accepted", "begun", "ended")
_lists = {"problems": Problem, "warnings": Problem, "judged": Job, "open": Job}


def _made(kind, given):
    def member(name):
        value = given[name]
        if name in _lists:
            return [_made(_lists[name], item) for item in value]
        if value is None:
            return None
        if name in _moments:
            return datetime.datetime.fromisoformat(value.replace("Z", "+00:00"))
        if name == "figures":
            return json.loads(json.dumps(value), object_hook=_figures)
        return Decimal(value) if name in _amounts else value
    return kind(**{name: member(name) for name in kind._fields})


def _figures(group):
    return {name: Decimal(value) if isinstance(value, str) else value for name, value in group.items()}


def _plain(value):
    """For JSON: amounts as texts, a moment as the members date and time."""
    if isinstance(value, dict):
        plain = {name: _plain(item) for name, item in value.items()}
        for date, time in (("date", "time"), ("fecha", "hora")):
            if isinstance(value.get(date), datetime.datetime):
                plain[date] = value[date].date().isoformat()
                plain.setdefault(time, value[date].time().isoformat("seconds"))
        return plain
    if isinstance(value, (list, tuple)):
        return [_plain(item) for item in value]
    if isinstance(value, Decimal):
        return format(value, "f")
    if isinstance(value, datetime.time):
        return value.isoformat("seconds")
    return value.isoformat() if isinstance(value, datetime.date) else value


def _json(document):
    return (document if isinstance(document, str) else json.dumps(_plain(document))).encode()


def _library():
    """$ZENTARO_TILL_LIBRARY, or the library of the wheel, or the installed one."""
    global _loaded
    if _loaded is None:
        name = "zentaro_c.dll" if sys.platform == "win32" else "libzentaro-till.so.0"
        own = pathlib.Path(__file__).parent / "native" / name
        _loaded = ctypes.CDLL(os.environ.get("ZENTARO_TILL_LIBRARY") or (str(own) if own.exists() else name))
        handle, text, value = ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(Value)
        for called, *arguments in (("sell", handle, text, text, _Progress, handle, value), ("check", text, value),
                                   ("close", handle, text, text, _Progress, handle, value),
                                   ("settle", handle, text, _Progress, handle, value), ("jobs", text, ctypes.c_int32, value)):
            function = getattr(_loaded, "zentaro_till_" + called)
            function.restype, function.argtypes = ctypes.c_int32, arguments
        _loaded.zentaro_till_stop.restype, _loaded.zentaro_till_stop.argtypes = None, [handle]
    return _loaded


def _answer(function, *arguments):
    with Values(1) as row:
        _checked(function(*arguments, row[0]))
        return json.loads(values.take(row[0], wrapped))


def _called(kind, name, printer, arguments, options, progress):
    """What `progress` raises, Ctrl-C included, stops the document between two steps. It is raised again when the document has its
    end, with that as its member `verdict`."""
    failures = []

    def told(_user, line):
        try:
            if progress:
                progress(line.decode())
        except BaseException as failure:  # C cannot carry it
            failures.append(failure)
            stop(printer)

    given = {option: value for option, value in options.items() if value is not None and value is not False}
    function = getattr(_library(), "zentaro_till_" + name)
    made = _made(kind, _answer(function, printer._handle, *arguments, json.dumps(given).encode(), _Progress(told), None))
    if failures:
        failures[0].verdict = made
        raise failures[0]
    return made


def sell(printer, document, id=None, *, again=False, wait=None, give_up=None, progress=None):
    """Prints a document, a dict with the members of a sale file or its JSON, once, and gives its Verdict.

    Nothing is ever printed twice under an `id`. `progress` is called with each line for people. `again` prints the same content
    without an id for a new customer. `wait` are the seconds that a printer which another program uses is waited for, `give_up` those
    that a lost answer is.
    """
    options = {"id": id, "again": again, "wait": wait, "giveUp": give_up}
    return _called(Verdict, "sell", printer, (_json(document),), options, progress)


def check(document):
    """What the document adds up to, and what is wrong with it; no printer is asked."""
    return _made(Checked, _answer(_library().zentaro_till_check, _json(document)))


def close(printer, closing, id=None, *, even_if_unknown=False, wait=None, give_up=None, progress=None):
    """Prints the closing: "Z" ends the day, "X" reads it."""
    options = {"id": id, "evenIfUnknown": even_if_unknown, "wait": wait, "giveUp": give_up}
    return _called(Closing, "close", printer, (closing.encode(),), options, progress)


def settle(printer, *, wait=None, give_up=None, progress=None):
    """Judges by the printer's counters what was cut short."""
    return _called(Settled, "settle", printer, (), {"wait": wait, "giveUp": give_up}, progress)


def jobs(id=None, most=100):
    """The latest jobs of the books, the oldest of them first; with an id that job alone, if there is one."""
    found = _answer(_library().zentaro_till_jobs, id if id is None else id.encode(), most)
    return [_made(Job, job) for job in found]


def stop(printer):
    """Asks the call under way on the printer to stop between two steps; from any thread. The call gives its verdict then."""
    _library().zentaro_till_stop(printer._handle)
