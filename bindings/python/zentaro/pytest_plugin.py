"""For pytest: the fixture `virtual_printer`."""
import pytest

from .virtual_printer import VirtualPrinter


@pytest.fixture
def virtual_printer(monkeypatch, request):
    """A virtual printer of the test's own as COM1, with a time-out of one second.

    `@pytest.mark.parametrize("virtual_printer", [["--realtime"]], indirect=True)` starts it with options.
    """
    with VirtualPrinter(*getattr(request, "param", [])) as printer:
        monkeypatch.setenv("ZENTARO_SETTINGS", str(printer.settings))
        monkeypatch.setenv("ZENTARO_BOOKS", str(printer.books))
        # New books take over the journal that an account has of old; a test has none.
        monkeypatch.setenv("XDG_STATE_HOME", str(printer.books.parent))
        yield printer
