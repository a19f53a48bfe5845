"""What a document costs from Python, beside what it costs from C.

For every bundled sample (or the files given), times the C parse plus everything a
Document holds, asked of the C interface (every getter and check, the format, the
counts, every raw element, the check digits, age, expiry and repairs: the native
module's reference loop) and
orvane_parser's parse() giving a Document, alternately, in CPU time of the thread
(so that other work on the machine counts less), and prints the fastest of each, their ratio, and the ratios per kind of sample. With --check LIMIT it exits 1
when a sample's ratio exceeds LIMIT.

    PYTHONPATH=build/python /usr/bin/python3 python/bench/parse_bench.py [--strict] [--check 4] [FILE...]
"""

from __future__ import annotations

import argparse
import statistics
import sys
import time
from pathlib import Path

import orvane_parser
from orvane_parser import _native

SAMPLES = Path(__file__).resolve().parents[2] / "samples"


def python_time(parser: orvane_parser.Parser, data: bytes, strict: bool, rounds: int) -> float:
    parse = parser.parse
    start = time.thread_time()
    for _ in range(rounds):
        parse(data, strict=strict)
    return (time.thread_time() - start) / rounds


def measure(data: bytes, strict: bool, rounds: int, repeats: int) -> tuple[float, float]:
    """The fastest C and Python times per document, measured in turns so that both see the same load."""
    c_times, python_times = [], []
    with orvane_parser.Parser() as parser:
        parser.parse(data, strict=strict)
        for _ in range(repeats):
            c_times.append(_native.reference_time(data, strict, rounds))
            python_times.append(python_time(parser, data, strict, rounds))
    return min(c_times), min(python_times)


def main() -> int:
    options = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    options.add_argument("files", nargs="*", type=Path, help="inputs to time (default: every bundled sample)")
    options.add_argument("--strict", action="store_true", help="time the strict parse (default: lenient)")
    options.add_argument("--rounds", type=int, default=500, help="parses per measurement")
    options.add_argument("--repeats", type=int, default=15, help="measurements per sample; the fastest counts")
    options.add_argument("--check", type=float, metavar="LIMIT", help="exit 1 when a ratio exceeds LIMIT")
    arguments = options.parse_args()

    files = arguments.files or sorted(SAMPLES.glob("*.txt"))
    ratios: dict[str, list[float]] = {}
    worst = 0.0
    print(f"{'sample':42} {'C parse+getters (us)':>21} {'Python parse+Document (us)':>27} {'ratio':>6}")
    for file in files:
        data = file.read_bytes()
        try:
            orvane_parser.parse(data, strict=arguments.strict)
        except orvane_parser.NotRecognised:
            print(f"{file.stem:42} not recognised")
            continue
        c_time, python_time_ = measure(data, arguments.strict, arguments.rounds, arguments.repeats)
        ratio = python_time_ / c_time
        worst = max(worst, ratio)
        ratios.setdefault(file.stem.split("-")[0], []).append(ratio)
        print(f"{file.stem:42} {c_time * 1e6:21.2f} {python_time_ * 1e6:27.2f} {ratio:6.2f}")
    print()
    print(f"{'kind':10} {'samples':>7} {'median ratio':>12} {'worst ratio':>11}")
    for kind, values in sorted(ratios.items()):
        print(f"{kind:10} {len(values):7} {statistics.median(values):12.2f} {max(values):11.2f}")
    if arguments.check is not None and worst > arguments.check:
        print(f"worst ratio {worst:.2f} exceeds {arguments.check}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
