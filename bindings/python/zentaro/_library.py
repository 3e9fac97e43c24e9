"""The shared library and its C interface (zentaro_c.h), as ctypes sees them."""
import ctypes
import os
import pathlib
import sys


class Value(ctypes.Structure):
    """A zentaro_value; the union's members are its own."""


class _As(ctypes.Union):
    _fields_ = [("boolean", ctypes.c_int32), ("int16", ctypes.c_int16), ("int32", ctypes.c_int32), ("number", ctypes.c_double),
                ("currency", ctypes.c_int64), ("text", ctypes.c_void_p), ("items", ctypes.POINTER(Value)), ("object", ctypes.c_void_p)]


Value._anonymous_ = ("as_",)
Value._fields_ = [("kind", ctypes.c_int32), ("count", ctypes.c_int32), ("as_", _As)]

(EMPTY, NULL, MISSING, BOOLEAN, INT16, INT32, DOUBLE, CURRENCY, DATE, TEXT, ARRAY, OBJECT) = range(12)

Yield = ctypes.CFUNCTYPE(ctypes.c_int32, ctypes.c_void_p)
MessageBox = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.c_char_p, ctypes.c_char_p)


class AutomationError(Exception):
    """What the library raises: 13 type mismatch, 40001 from PortOpen, and so on. The text of the exception is the description."""

    def __init__(self, number, source="", description=""):
        super().__init__(number, source, description)
        self.number, self.source, self.description = number, source, description

    def __str__(self):
        return f"{self.description} ({self.number}, {self.source})"


def _candidates():
    """$ZENTARO_LIBRARY alone, or the library of the wheel, or the installed one."""
    named = os.environ.get("ZENTARO_LIBRARY")
    if named:
        return [named]
    names = ["zentaro_c.dll"] if sys.platform == "win32" else ["libzentaro.so.0"]
    native = pathlib.Path(__file__).parent / "native"
    return [str(native / name) for name in names if (native / name).exists()] + names


def _load():
    failures = []
    for name in _candidates():
        try:
            return ctypes.CDLL(name)  # lets go of the interpreter's lock while the library waits
        except OSError as failure:
            failures.append(str(failure))
    raise ImportError("the Zentaro library is not installed; ZENTARO_LIBRARY may name it: " + "; ".join(failures))


def _declared(library):
    value, text = ctypes.POINTER(Value), ctypes.c_char_p
    handle, number = ctypes.c_void_p, ctypes.c_int32
    for name, result, *arguments in (
            ("clear", number, value), ("set_text", number, value, text, number), ("set_array", number, value, number),
            ("set_object", number, value, handle), ("create", handle, text), ("release", number, handle),
            ("class_name", text, handle), ("get", number, handle, text, value), ("put", number, handle, text, value),
            ("call", number, handle, text, value, number, value), ("describe", number, text, value),
            ("error_number", number), ("error_source", text), ("error_description", text),
            ("set_yield", None, Yield, handle), ("set_message_box", None, MessageBox, handle), ("version", text)):
        function = getattr(library, "zentaro_" + name)
        function.restype, function.argtypes = result, arguments
    return library


library = _declared(_load())


def last_error():
    return AutomationError(library.zentaro_error_number(), library.zentaro_error_source().decode(),
                           library.zentaro_error_description().decode())
