"""Parsing: the Parser that holds a native handle, and parse() on one per thread."""

from __future__ import annotations

import json
import operator
import threading
from collections.abc import Iterable
from types import TracebackType
from typing import NoReturn, Union

from . import _native
from ._document import _DEFAULTS, _SCHEMA, Document, _make_document, _values_from_result
from ._errors import NotRecognised

__all__ = ["Data", "Parser", "parse"]

Data = Union[bytes, bytearray, memoryview, str]
"""What parse() takes: the bytes a scanner read, or text."""

# The symbol sizes the library's barcode check takes: data columns, rows, error-correction level.
_SYMBOL_BOUNDS = (("columns", 3, 33), ("rows", 3, 90), ("level", 0, 8))
_NO_MEMORY = -24


def _input_bytes(data: object) -> bytes:
    if type(data) is bytes:
        return data
    if isinstance(data, str):
        try:
            return data.encode("latin-1")
        except UnicodeEncodeError:
            # surrogateescape gives back the bytes of text decoded with it (file names, argv).
            return data.encode("utf-8", "surrogateescape")
    try:
        # A copy, also of a bytes subclass: the parse reads the bytes without the GIL.
        return bytes(memoryview(data))  # type: ignore[arg-type]
    except TypeError:
        pass
    raise TypeError(f"data must be bytes, a bytes-like object or str, not {type(data).__name__}")


def _symbol(barcode: object) -> tuple[int, int, int] | None:
    if barcode is None:
        return None
    if not isinstance(barcode, Iterable) or isinstance(barcode, (str, bytes)):
        raise TypeError(f"barcode must be a tuple (columns, rows, level) of ints, not {type(barcode).__name__}")
    values = tuple(barcode)
    if len(values) != 3:
        raise ValueError(f"barcode must hold 3 numbers (columns, rows, level), not {len(values)}")
    numbers = []
    for value, (name, low, high) in zip(values, _SYMBOL_BOUNDS):
        try:
            number = operator.index(value)
        except TypeError:
            raise TypeError(f"barcode {name} must be an int, not {type(value).__name__}") from None
        if not low <= number <= high:
            raise ValueError(f"barcode {name} must lie in {low}..{high}, not {number}")
        numbers.append(number)
    return (numbers[0], numbers[1], numbers[2])


def _check_strict(strict: object) -> None:
    if strict is not True and strict is not False:
        raise TypeError(f"strict must be a bool, not {type(strict).__name__}")


class Parser:
    """A parser that keeps one native handle, and its buffers, for many parses.

    Use it as a context manager, or call close() when done::

        with orvane_parser.Parser() as parser:
            for scan in scans:
                document = parser.parse(scan)

    The parse runs without the GIL. A Parser parses one input at a time: calls
    from several threads on one Parser wait for each other, so give each thread
    its own Parser to parse in parallel.
    """

    __slots__ = ("_handle", "__weakref__")

    def __init__(self) -> None:
        self._handle = _native.Handle(_SCHEMA, _DEFAULTS)

    def parse(
        self,
        data: Data,
        *,
        strict: bool = False,
        barcode: tuple[int, int, int] | None = None,
    ) -> Document:
        """Parses one scanned input; see orvane_parser.parse()."""
        if type(data) is bytes and strict is False and barcode is None:
            status, values = self._handle.parse_values(data, False)
        else:
            _check_strict(strict)
            status, values = self._handle.parse_values(_input_bytes(data), strict, _symbol(barcode))
        if status != 0:
            raise _failure(status)
        if isinstance(values, str):
            values = _values_from_result(json.loads(values))
        return _make_document(values)

    def _parse_json(self, data: bytes, strict: bool, symbol: tuple[int, int, int] | None) -> tuple[int, str]:
        """The status and the library's JSON text, also for an input nothing recognised."""
        return self._handle.parse(data, strict, symbol)

    def close(self) -> None:
        """Frees the native handle; later parses raise ValueError. Closing twice is harmless."""
        self._handle.close()

    @property
    def closed(self) -> bool:
        """True once close() was called."""
        return self._handle.closed

    def __enter__(self) -> Parser:
        return self

    def __exit__(
        self,
        exc_type: type[BaseException] | None,
        exc: BaseException | None,
        traceback: TracebackType | None,
    ) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<orvane_parser.Parser {'closed' if self.closed else 'open'}>"

    def __reduce__(self) -> NoReturn:
        raise TypeError("a Parser holds a native handle and cannot be pickled or copied")


def _failure(status: int) -> Exception:
    if status == _NO_MEMORY:
        return MemoryError("the parser found no memory for its buffers")
    return NotRecognised(status)


_per_thread = threading.local()


def parse(
    data: Data,
    *,
    strict: bool = False,
    barcode: tuple[int, int, int] | None = None,
) -> Document:
    """Parses one scanned input and returns what was read from it.

    ``data`` is the text a barcode reader, stripe reader or OCR gave, byte for
    byte: ``bytes`` or any bytes-like object. A ``str`` is encoded as Latin-1
    when every character fits in it, else as UTF-8 (lone surrogates from a
    ``surrogateescape`` decoding turn back into their bytes).

    The parse is lenient by default: text that scanners and apps damaged (line
    breaks, encodings, separators, ...) is repaired first when that gives the
    better reading, and ``Document.repairs`` names what was repaired. With
    ``strict=True`` the input is read exactly as the formats are written.

    ``barcode=(columns, rows, level)`` gives the size of the PDF417 symbol the
    text came from (data columns 3-33, rows 3-90, error-correction level 0-8),
    and ``Document.barcode_validation_status`` then says whether the
    jurisdiction prints symbols of that size.

    Raises NotRecognised (a ValueError) when no format recognises the input,
    TypeError or ValueError for bad arguments, and MemoryError when memory is
    exhausted. Uses one Parser per calling thread.
    """
    parser: Parser
    try:
        parser = _per_thread.parser
    except AttributeError:
        parser = _per_thread.parser = Parser()
    return parser.parse(data, strict=strict, barcode=barcode)
