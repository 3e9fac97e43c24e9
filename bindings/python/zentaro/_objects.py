"""Classes made of the descriptions that the library gives of itself: no member is written down here."""
import collections
import enum
import inspect
import json
import typing

from . import _values as values
from ._library import MessageBox, Value, Yield, last_error, library
from ._values import Special, check, held


class Values:
    """C values in a row, given back at the end."""

    def __init__(self, count):
        self.row = (Value * count)()

    def __enter__(self):
        while held.abandoned:
            library.zentaro_release(held.abandoned.pop())
        return self.row

    def __exit__(self, *failure):
        for value in self.row:
            library.zentaro_clear(value)


Returned = collections.namedtuple("Returned", "value arguments")
Returned.__doc__ = "The result of a call, and its arguments as they stand behind it."


class Automation:
    """An object of the library. It belongs to the thread that made it, and ends with its last reference; where another thread
    drops that one, it ends when its own thread next uses the library."""

    __slots__ = ("_handle", "_abandoned", "__weakref__")

    def __init__(self, **properties):
        """A new object, its properties set in the order given: CZentaro(CommPort=1, PortOpen=True)."""
        self._abandoned = held.abandoned
        self._handle = library.zentaro_create(_library_class(self).encode())
        if not self._handle:
            raise last_error()
        for name, value in properties.items():
            setattr(self, name, value)

    def __del__(self):
        if getattr(self, "_handle", None) and library.zentaro_release(self._handle) != 0:
            self._abandoned.append(self._handle)  # this is another thread than the object's

    def __enter__(self):
        return self

    def __exit__(self, *failure):
        """Closes the port of an object that has one."""
        if hasattr(type(self), "PortOpen"):
            self.PortOpen = False

    def __reduce_ex__(self, _protocol):
        raise TypeError(f"a {type(self).__name__} cannot be copied or pickled")  # two would give back one handle

    def call(self, name, *arguments):
        """Calls a member by its name, and gives back also what it writes into its arguments: Returned(value, arguments)."""
        with Values(len(arguments) + 1) as row:
            for place, argument in zip(row, arguments):
                values.put(place, argument)
            check(library.zentaro_call(self._handle, name.encode(), row, len(arguments), row[len(arguments)]))
            taken = [values.take(value, wrapped) for value in row]
            return Returned(_as_declared(taken[-1], _results[_library_class(self)].get(name.lower())), tuple(taken[:-1]))

    def _get(self, name, enumeration):
        with Values(1) as row:
            check(library.zentaro_get(self._handle, name.encode(), row[0]))
            return _as_declared(values.take(row[0], wrapped), enumeration)

    def _put(self, name, value):
        with Values(1) as row:
            values.put(row[0], value)
            check(library.zentaro_put(self._handle, name.encode(), row[0]))


def _library_class(made):
    """The library's name of an object's class, from which a program may have derived its own."""
    own = (base.__name__ for base in type(made).__mro__ if classes.get(base.__name__) is base)
    return next(own, type(made).__name__)


def wrapped(handle):
    made = object.__new__(classes[library.zentaro_class_name(handle).decode()])
    made._handle, made._abandoned = handle, held.abandoned
    return made


def _as_declared(value, enumeration):
    """A number as the member of an enumeration that it is, if it is one."""
    try:
        return value if enumeration is None else enumerations[enumeration](value)
    except ValueError:
        return value


def _enumeration_of(accessor):
    """Of the outcomes, or the declared type."""
    name = "ENVERR_CODES" if accessor["outcome"] else accessor["result"]
    return name if name in enumerations else None


def _parameter(described):
    default = inspect.Parameter.empty
    if described["optional"]:
        default = described["default"] if not isinstance(described["default"], dict) else Special.MISSING
    return inspect.Parameter(described["name"], inspect.Parameter.POSITIONAL_OR_KEYWORD, default=default)


def _method(accessor):
    name = accessor["name"]
    signature = inspect.Signature([inspect.Parameter("self", inspect.Parameter.POSITIONAL_ONLY)] +
                                  [_parameter(described) for described in accessor["parameters"]])

    def method(self, *arguments, **named):
        bound = signature.bind(self, *arguments, **named)
        if named:
            bound.apply_defaults()
        return self.call(name, *bound.args[1:]).value

    method.__name__ = method.__qualname__ = name
    method.__signature__ = signature
    method.__doc__ = documentation(accessor)
    return method


def _property(name, accessors):
    access = {accessor["kind"]: accessor for accessor in accessors}
    reader, writer = None, None
    if "get" in access:
        enumeration = _enumeration_of(access["get"])
        reader = lambda self: self._get(name, enumeration)
    if "let" in access or "set" in access:
        writer = lambda self, value: self._put(name, value)
    return property(reader, writer, doc=documentation(accessors[0]))


def documentation(accessor):
    """What a member is, and each of its parameters."""
    notes = [f"{described['name']}: {described['note']}" for described in accessor["parameters"] if described["note"]]
    return "\n\n".join([accessor["help"]] + (["\n".join(notes)] if notes else []))


def members(description):
    """The accessors of each member by its name, in interface order."""
    grouped = {}
    for accessor in description["members"]:
        grouped.setdefault(accessor["name"], []).append(accessor)
    return grouped


def _class(description):
    name = description["class"].split(".")[1]
    body = {"__slots__": (), "__doc__": description["help"], "__module__": "zentaro"}
    for member, accessors in members(description).items():
        is_method = accessors[0]["kind"] == "method"
        body[member] = _method(accessors[0]) if is_method else _property(member, accessors)
    return type(name, (Automation,), body)


def _described():
    with Values(1) as row:
        check(library.zentaro_describe(None, row[0]))
        return json.loads(values.take(row[0], wrapped))


description = _described()
enumerations: typing.Dict[str, type] = {
    described["name"]: enum.IntEnum(described["name"], described["values"], module="zentaro")
    for described in description["enumerations"]}
classes = {made.__name__: made for made in map(_class, description["classes"])}
_results = {described["class"].split(".")[1]: {accessor["name"].lower(): _enumeration_of(accessor) for accessor in described["members"]}
            for described in description["classes"]}


def on_yield(callback):
    """Has `callback` called while an operation of this thread waits, at least 100 times a second; None ends that.

    What it raises, KeyboardInterrupt included, ends the operation and reaches its caller; whether the printer carried the
    operation out is then unknown.
    """
    def yielded(_user):
        try:
            callback()
            return 0
        except BaseException as failure:  # C cannot carry it
            held.failure = failure
            return 1

    made = Yield(yielded) if callback else Yield()
    library.zentaro_set_yield(made, None)
    held.callback = made


def on_message_box(callback):
    """Has `callback(title, text)` called for a message box of this thread; None: a line on standard error."""
    made = MessageBox(lambda _user, title, text: callback(title.decode(), text.decode())) if callback else MessageBox()
    library.zentaro_set_message_box(made, None)
    held.box = made
