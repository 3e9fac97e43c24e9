"""Writes the types of the package for editors and type checkers: `python -m zentaro.stubs FILE`."""
import sys

from ._objects import description, documentation, enumerations, members

_types = {"Boolean": "bool", "Int16": "int", "Int32": "int", "Double": "float", "Currency": "Decimal", "Date": "datetime",
          "Text": "str", "Array": "List[Any]", "Variant": "Any", None: "None"}

_head = '''# Made by `python -m zentaro.stubs`.
from datetime import date, datetime, time
from decimal import Decimal
from enum import Enum, IntEnum
from typing import Any, Callable, Dict, List, NamedTuple, Optional, Sequence, Tuple, TypeVar, Union

Value = Union[None, bool, int, float, str, Decimal, date, time, Sequence[Any], "Automation", "Special"]
_Self = TypeVar("_Self")
__version__: str

class Special(Enum):
    NULL: str
    MISSING: str
    NOTHING: str

class AutomationError(Exception):
    number: int
    source: str
    description: str

class Returned(NamedTuple):
    value: Any
    arguments: Tuple[Any, ...]

class Automation:
    def __init__(self, **properties: Value) -> None: ...
    def __enter__(self: _Self) -> _Self: ...
    def __exit__(self, *failure: object) -> None: ...
    def call(self, name: str, *arguments: Value) -> Returned: ...

class Verdict(NamedTuple):
    verdict: str
    number: Optional[int]
    total: Optional[Decimal]
    igtf: Optional[Decimal]
    change: Optional[Decimal]
    cause: Optional[str]
    next: Optional[str]
    @property
    def is_printed(self) -> bool: ...

class Closing(NamedTuple):
    closing: str
    verdict: str
    number: Optional[int]
    cause: Optional[str]
    next: Optional[str]
    figures: Optional[Dict[str, Any]]
    @property
    def is_printed(self) -> bool: ...

class Problem(NamedTuple):
    path: str
    text: str

class Checked(NamedTuple):
    problems: List[Problem]
    warnings: List[Problem]
    net: Optional[Decimal]
    tax: Optional[Decimal]
    igtf: Optional[Decimal]
    total: Optional[Decimal]
    paid: Optional[Decimal]
    change: Optional[Decimal]

class Job(NamedTuple):
    id: Optional[str]
    printer: str
    kind: str
    attempt: int
    state: str
    verdict: Optional[str]
    number: Optional[int]
    machine: Optional[str]
    total: Decimal
    cause: Optional[str]
    accepted: Optional[datetime]
    begun: Optional[datetime]
    ended: Optional[datetime]

class Settled(NamedTuple):
    refusal: Optional[str]
    cause: Optional[str]
    machine: Optional[str]
    judged: List[Job]
    open: List[Job]

Document = Union[str, Dict[str, Any]]
Progress = Optional[Callable[[str], None]]
def sell(printer: "CZentaro", document: Document, id: Optional[str] = None, *, again: bool = False, wait: Optional[int] = None,
         give_up: Optional[int] = None, progress: Progress = None) -> Verdict: ...
def check(document: Document) -> Checked: ...
def close(printer: "CZentaro", closing: str, id: Optional[str] = None, *, even_if_unknown: bool = False, wait: Optional[int] = None,
          give_up: Optional[int] = None, progress: Progress = None) -> Closing: ...
def settle(printer: "CZentaro", *, wait: Optional[int] = None, give_up: Optional[int] = None, progress: Progress = None) -> Settled: ...
def jobs(id: Optional[str] = None, most: int = 100) -> List[Job]: ...
def stop(printer: "CZentaro") -> None: ...
def on_yield(callback: Optional[Callable[[], None]]) -> None: ...
def on_message_box(callback: Optional[Callable[[str, str], None]]) -> None: ...
'''


def _result(accessor, classes):
    name = "ENVERR_CODES" if accessor["outcome"] else accessor["result"]
    return f"Optional[{name}]" if name in classes else _types.get(name, name)


def _docstring(text, indent):
    escaped = text.replace("\\", "\\\\").replace('"', '\\"')
    return "\n".join((indent + line).rstrip() for line in f'"""{escaped}"""'.split("\n"))


def _method(accessor, classes):
    parameters = "".join(f", {described['name']}: Value{' = ...' if described['optional'] else ''}"
                         for described in accessor["parameters"])
    return [f"    def {accessor['name']}(self{parameters}) -> {_result(accessor, classes)}:",
            _docstring(documentation(accessor), " " * 8), "        ..."]


def _property(name, accessors, classes):
    kinds = {accessor["kind"] for accessor in accessors}
    lines = ["    @property", f"    def {name}(self) -> {_result(accessors[0], classes)}:",
             _docstring(documentation(accessors[0]), " " * 8), "        ..."]
    if kinds & {"let", "set"}:
        lines += [f"    @{name}.setter", f"    def {name}(self, value: Value) -> None: ..."]
    return lines


def stubs():
    lines = [_head]
    for name, made in enumerations.items():
        lines += [f"class {name}(IntEnum):"] + [f"    {member.name} = {member.value}" for member in made] + [""]
    classes = {described["class"].split(".")[1] for described in description["classes"]}
    for described in description["classes"]:
        lines += [f"class {described['class'].split('.')[1]}(Automation):", _docstring(described["help"], "    ")]
        for name, accessors in members(described).items():
            is_method = accessors[0]["kind"] == "method"
            lines += _method(accessors[0], classes) if is_method else _property(name, accessors, classes)
        lines.append("")
    return "\n".join(lines)


if __name__ == "__main__":
    with open(sys.argv[1], "w", encoding="utf-8") as file:
        file.write(stubs())
