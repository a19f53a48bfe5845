"""python3 -m orvane_parser [--strict] [--symbol COLUMNS,ROWS,LEVEL] [--image] [FILE...]

Prints the same JSON lines as the orvane-parse command: one object per input (with
--image, per barcode in each photo), its name first, then the library's result object.
"""

from __future__ import annotations

import os
import re
import sys
from typing import BinaryIO, TextIO

from . import __version__
from ._document import _library_json
from ._errors import NotRecognised
from ._image import _read_barcodes
from ._parser import Parser

_PROGRAM = "python3 -m orvane_parser"
_USAGE = f"""usage: {_PROGRAM} [--strict] [--symbol COLUMNS,ROWS,LEVEL] [--image] [FILE...]

Parses each FILE (standard input when none is given, or for "-") as one scanned
input, byte for byte: the text of a PDF417 barcode, a magnetic stripe or a
machine-readable zone. Prints one JSON object per input on standard output, the
same as the orvane-parse command: the input's name, the parse status, the format
that read it, every field the library answers (under the names of the Java result
object; dates also as ISO 8601), the flags, the checks, the field count, the check
digits, age and expiry, the repairs made to damaged text, and every raw element.

Inputs are parsed leniently: text that scanners and apps damaged is repaired
first when that gives the better reading.

  --strict        parse exactly as the formats are written, repairing nothing
  --symbol C,R,L  also check that a PDF417 symbol of C data columns, R rows and
                  error-correction level L is one the jurisdiction prints
  --image         each FILE is a photo (PNG or JPEG): every PDF417 and Code 39
                  barcode in it is read and parsed, one line per barcode with its
                  symbology under "barcode" (null when the photo shows none)
  --version       print the library's version
  -h, --help      show this help

Exit status: 0 when every input was recognised (a photo when one of its barcodes
was), 1 when one was not, 2 for a file that could not be read or a bad option.
"""
# What orvane-parse takes: three integers, blanks allowed before each, nothing after.
_SYMBOL = re.compile(r"\s*([+-]?\d+),\s*([+-]?\d+),\s*([+-]?\d+)", re.ASCII)
_INT_RANGE = range(-(2**31), 2**31)


class _Options:
    def __init__(self) -> None:
        self.files: list[str] = []
        self.strict = False
        self.symbol: tuple[int, int, int] | None = None
        self.image = False


def _read_options(arguments: list[str], out: TextIO, err: TextIO) -> _Options | int:
    """The options, or the exit status: 0 after help or version, 2 for a bad command line."""
    options = _Options()
    at = 0
    while at < len(arguments):
        argument = arguments[at]
        at += 1
        if argument in ("-h", "--help"):
            out.write(_USAGE)
            return 0
        if argument == "--version":
            out.write(f"orvane_parser {__version__}\n")
            return 0
        if argument == "--strict":
            options.strict = True
        elif argument == "--image":
            options.image = True
        elif argument == "--symbol":
            match = _SYMBOL.fullmatch(arguments[at]) if at < len(arguments) else None
            at += 1
            numbers = tuple(int(number) for number in match.groups()) if match else ()
            if len(numbers) != 3 or not all(number in _INT_RANGE for number in numbers):
                err.write(f"{_PROGRAM}: --symbol needs COLUMNS,ROWS,LEVEL (for example 20,15,5)\n")
                return 2
            options.symbol = (numbers[0], numbers[1], numbers[2])
        elif argument.startswith("-") and argument != "-":
            err.write(f"{_PROGRAM}: unknown option {argument} (try --help)\n")
            return 2
        else:
            options.files.append(argument)
    if not options.files:
        options.files.append("-")
    return options


def _parse_one(parser: Parser, name: str, source: BinaryIO, options: _Options, out: TextIO, err: TextIO) -> int:
    try:
        data = source.read()
    except OSError as error:
        err.write(f"{_PROGRAM}: cannot read {name}: {error.strerror}\n")
        return 2
    status, text = parser._parse_json(data, options.strict, options.symbol)
    # The name as orvane-parse writes it: its bytes, each outside printable ASCII as \u00XX.
    quoted = _library_json(os.fsencode(name).decode("latin-1"))
    out.write(f'{{"input":{quoted},{text[1:]}\n')
    if status != 0:
        err.write(f"{_PROGRAM}: {name}: {NotRecognised(status)}\n")
        return 1
    return 0


def _parse_image(parser: Parser, name: str, source: BinaryIO, options: _Options, out: TextIO, err: TextIO) -> int:
    try:
        barcodes = _read_barcodes(source.read())
    except ImportError as error:
        err.write(f"{_PROGRAM}: {error}\n")
        return 2
    except (OSError, ValueError) as error:
        err.write(f"{_PROGRAM}: cannot read the image {name}: {error}\n")
        return 2
    quoted = _library_json(os.fsencode(name).decode("latin-1"))
    if not barcodes:
        out.write(f'{{"input":{quoted},"barcode":null,"status":-17}}\n')
        err.write(f"{_PROGRAM}: {name}: no PDF417 or Code 39 barcode found\n")
        return 1
    recognised = False
    for barcode in barcodes:
        status, text = parser._parse_json(barcode.data, options.strict, options.symbol)
        out.write(f'{{"input":{quoted},"barcode":"{barcode.symbology}",{text[1:]}\n')
        recognised = recognised or status == 0
    if not recognised:
        err.write(f"{_PROGRAM}: {name}: no known format recognised its barcodes\n")
        return 1
    return 0


def main(arguments: list[str] | None = None, out: TextIO | None = None, err: TextIO | None = None) -> int:
    """Runs the command on the arguments (sys.argv[1:] by default); returns the exit status."""
    out = sys.stdout if out is None else out
    err = sys.stderr if err is None else err
    options = _read_options(sys.argv[1:] if arguments is None else arguments, out, err)
    if isinstance(options, int):
        return options
    worst = 0
    with Parser() as parser:
        for file in options.files:
            parse_one = _parse_image if options.image else _parse_one
            if file == "-":
                result = parse_one(parser, "<stdin>", sys.stdin.buffer, options, out, err)
            else:
                try:
                    source = open(file, "rb")
                except OSError as error:
                    err.write(f"{_PROGRAM}: cannot open {file}: {error.strerror}\n")
                    result = 2
                else:
                    with source:
                        result = parse_one(parser, file, source, options, out, err)
            out.flush()
            worst = max(worst, result)
    return worst


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BrokenPipeError:
        # A reader that stopped early (| head): leave quietly, as a C tool killed by SIGPIPE would.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        sys.exit(1)
