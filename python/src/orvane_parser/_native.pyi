"""The native half of orvane_parser: parser handles over the C library."""

from typing import Any, final

Schema = tuple[tuple[str, str | None, Any], ...]

@final
class Handle:
    """Handle(schema, defaults): a parser handle of the native library; calls on it run one at a time."""

    def __init__(self, schema: Schema, defaults: dict[str, Any], /) -> None: ...
    @property
    def closed(self) -> bool:
        """True once close() was called."""
    def parse(
        self, data: bytes, strict: bool, symbol: tuple[int, int, int] | None = None, /
    ) -> tuple[int, str]:
        """Parses data; answers the status and the library's result object as JSON text."""
    def parse_values(
        self, data: bytes, strict: bool, symbol: tuple[int, int, int] | None = None, /
    ) -> tuple[int, dict[str, Any] | str]:
        """Parses data; answers the status and the Document's attributes read by the schema (the
        JSON text when it holds what the reader leaves to Python, and after a failed parse)."""
    def close(self) -> None:
        """Frees the handle; later parses raise ValueError."""

def version() -> str:
    """The native library's version, e.g. "1.26.0"."""

def read_result(text: str, schema: Schema, defaults: dict[str, Any], /) -> dict[str, Any] | None:
    """What parse_values reads from a result's JSON text; None where it leaves the text to Python."""

def reference_time(data: bytes, strict: bool, rounds: int, /) -> float:
    """Thread CPU seconds per round of the C parse plus every getter and check, for the benchmark."""
