"""The exception a parse raises when no format reads the input."""

from __future__ import annotations

__all__ = ["NotRecognised"]


class NotRecognised(ValueError):
    """No format the library knows recognised the input.

    ``status`` is the library's status code: -25 when no format recognised the
    input, -17 for an empty input, or the negative code (-1 to -22) of the
    format reader that refused the input last. A subclass of ``ValueError``,
    so ``except ValueError`` catches it too.
    """

    status: int

    def __init__(self, status: int) -> None:
        # The status alone is the argument, so that the exception pickles.
        super().__init__(status)
        self.status = status

    def __str__(self) -> str:
        if self.status == -17:
            return "empty input (status -17)"
        return f"no known format recognised the input (status {self.status})"
