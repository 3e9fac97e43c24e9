"""Python values as values of the library, and back.

None is Empty, a list an array, Decimal currency, datetime a date; an int beyond 32 bits goes as a double. What Python has no
value for is one of Special. Nothing, the null reference, comes back as None.
"""
import collections
import ctypes
import datetime
import decimal
import enum
import threading

from . import _library as c
from ._library import library


class Special(enum.Enum):
    NULL = "Null"
    MISSING = "an argument that is left out"
    NOTHING = "the null reference"


_epoch = datetime.datetime(1899, 12, 30)
_day = datetime.timedelta(days=1)


def _scaled(amount):
    scaled = amount.scaleb(4)
    if scaled != scaled.to_integral_value():
        raise ValueError(f"{amount} has more than the four decimals of a currency amount")
    if not -2**63 <= scaled < 2**63:
        raise OverflowError(f"{amount} is too large for a currency amount")
    return int(scaled)


def _days(moment):
    since = moment - _epoch
    fraction = (since - datetime.timedelta(days=since.days)) / _day
    return since.days + fraction if since.days >= 0 else since.days - fraction  # the fraction counts forward, always


def _moment(days):
    whole = int(days)
    return _epoch + datetime.timedelta(days=whole, seconds=round(abs(days - whole) * 86400))


def _put_number(target, value):
    if isinstance(value, bool):
        target.kind, target.boolean = c.BOOLEAN, value
    elif isinstance(value, int) and -2**31 <= value < 2**31:
        target.kind, target.int32 = c.INT32, value
    elif isinstance(value, decimal.Decimal):
        target.currency = _scaled(value)
        target.kind = c.CURRENCY
    else:
        target.kind, target.number = c.DOUBLE, value


def _put_date(target, value):
    if isinstance(value, datetime.time):
        value = datetime.datetime.combine(_epoch, value)
    elif not isinstance(value, datetime.datetime):
        value = datetime.datetime(value.year, value.month, value.day)
    target.kind, target.number = c.DATE, _days(value)


def _put_items(target, values):
    check(library.zentaro_set_array(target, len(values)))
    for index, value in enumerate(values):
        put(target.items[index], value)


def put(target, value):
    """Fills an Empty c.Value."""
    if isinstance(value, str):
        text = value.encode("utf-8", "replace")
        check(library.zentaro_set_text(target, text, len(text)))
    elif isinstance(value, (int, float, decimal.Decimal)):
        _put_number(target, value)
    elif isinstance(value, (datetime.date, datetime.time)):
        _put_date(target, value)
    elif isinstance(value, (list, tuple)):
        _put_items(target, value)
    elif isinstance(value, Special):
        target.kind = {Special.NULL: c.NULL, Special.MISSING: c.MISSING, Special.NOTHING: c.OBJECT}[value]
    elif hasattr(value, "_handle"):
        check(library.zentaro_set_object(target, value._handle))
    elif value is not None:
        raise TypeError(f"a value of the library cannot be made of {type(value).__name__}")


def take(source, wrap):
    """The Python value of a c.Value; `wrap` makes an object of a handle, which is then its own."""
    if source.kind == c.TEXT:
        return ctypes.string_at(source.text, source.count).decode("utf-8")
    if source.kind == c.ARRAY:
        return [take(source.items[index], wrap) for index in range(source.count)]
    if source.kind == c.OBJECT and source.object:
        source.kind = c.EMPTY
        return wrap(source.object)
    return {c.NULL: lambda: Special.NULL, c.MISSING: lambda: Special.MISSING, c.BOOLEAN: lambda: source.boolean != 0,
            c.INT16: lambda: source.int16, c.INT32: lambda: source.int32, c.DOUBLE: lambda: source.number,
            c.CURRENCY: lambda: decimal.Decimal(source.currency).scaleb(-4),
            c.DATE: lambda: _moment(source.number)}.get(source.kind, lambda: None)()


class Held(threading.local):
    """What C holds on to for this thread, an exception on its way through C, and handles that other threads dropped."""

    callback = box = failure = None

    def __init__(self):
        self.abandoned = collections.deque()


held = Held()


def check(number):
    """Raises what the library or a callback raised."""
    if number == 0:
        return
    failure, held.failure = held.failure, None
    raise failure if failure is not None else c.last_error()
