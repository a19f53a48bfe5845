"""Whatever bytes arrive, a parse gives a Document or raises NotRecognised: samples cut at
every byte, random and mutated inputs (single bytes replaced among them), long inputs,
other parsers' inputs. Every Document the native reader builds equals the one the Python
path builds from the same text, and many parses leave no memory behind."""

from __future__ import annotations

import datetime
import json
import os
import random
import tracemalloc

import pytest
from conftest import SAMPLES, peer_inputs, sample_id

from orvane_parser import Document, NotRecognised, Parser
from orvane_parser._document import _document_from_json

ARIZONA = next(sample for sample in SAMPLES if sample.stem == "aamva-2013-arizona").read_bytes()


def parse_or_none(parser: Parser, data: bytes | str, strict: bool = False) -> Document | None:
    try:
        document = parser.parse(data, strict=strict)
    except NotRecognised:
        return None
    assert isinstance(document, Document)
    return document


def check_both_paths(parser: Parser, data: bytes, strict: bool = False) -> None:
    """The Document of the native reader, and of the library's JSON read in Python, agree."""
    document = parse_or_none(parser, data, strict)
    status, text = parser._parse_json(data, strict, None)
    assert (document is None) == (status != 0)
    if document is not None:
        assert document == _document_from_json(text)
        assert list(document.to_dict().items()) == list(without_impossible_dates(json.loads(text)).items())


def without_impossible_dates(result: dict) -> dict:
    """The library's object less the dates that are no calendar date (year 0, 30 February),
    which a Document has as None."""
    for member in [member for member in result if member.endswith("ISO")]:
        try:
            datetime.date.fromisoformat(result[member])
        except ValueError:
            del result[member], result[member[: -len("ISO")]]
    return result


@pytest.mark.parametrize("sample", SAMPLES, ids=sample_id)
def test_samples_cut_at_every_length(parser, sample):
    data = sample.read_bytes()
    for length in range(len(data) + 1):
        check_both_paths(parser, data[:length], strict=length % 2 == 0)


def mutate(rng: random.Random, data: bytes) -> bytes:
    cut = rng.randrange(len(data) + 1)
    choice = rng.randrange(5)
    if choice == 0:
        return data[:cut] + bytes([rng.randrange(256)]) + data[cut + 1 :]
    if choice == 1:
        return data[:cut] + rng.randbytes(rng.randrange(1, 16)) + data[cut:]
    if choice == 2:
        return data[:cut] + data[cut + rng.randrange(1, 32) :]
    if choice == 3:
        return data[:cut] + data[cut : cut + rng.randrange(1, 64)] * rng.randrange(2, 6) + data[cut:]
    return data[:cut] + rng.choice(SAMPLES).read_bytes()[rng.randrange(64) :]


def test_mutated_and_random_inputs(parser):
    rng = random.Random(20261123)
    samples = [sample.read_bytes() for sample in SAMPLES]
    for _ in range(4000):
        data = rng.choice(samples)
        for _ in range(rng.randrange(1, 6)):
            data = mutate(rng, data)
        check_both_paths(parser, data, strict=rng.random() < 0.3)
        parse_or_none(parser, data.decode("latin-1") + chr(rng.randrange(0x100, 0x3000)))
    for size in (1, 2, 3, 17, 255, 1024, 8191, 8192, 8193):
        check_both_paths(parser, rng.randbytes(size))
    for byte in range(256):
        check_both_paths(parser, bytes([byte]) * 64)


@pytest.mark.parametrize("size", [8191, 8192, 8193, 65536, 1 << 20])
def test_long_inputs(parser, size):
    # A licence whose last element is padded out with bytes the result escapes six times over,
    # so that the handle's result buffer must grow.
    padded = ARIZONA.rstrip(b"\r\n") + b"\nZZZ"
    padded += b"\xe9" * max(0, size - len(padded) - 1) + b"\r"
    document = parse_or_none(parser, padded)
    assert document is not None and document.first_name == "JORDAN"
    # Its exact length is the library's to say; check_both_paths holds the binding to it.
    assert set(document.elements["ZZZ"]) == {"\xe9"} and len(document.elements["ZZZ"]) > size - 400
    check_both_paths(parser, padded)
    parse_or_none(parser, b"A" * size)
    parse_or_none(parser, b"\x1e" * size)


def test_inputs_of_other_parsers():
    inputs = peer_inputs()
    if not inputs:
        pytest.skip("no inputs of other parsers' test suites")
    recognised = 0
    with Parser() as parser:
        for peer in inputs:
            for strict in (False, True):
                recognised += parse_or_none(parser, peer.data, strict) is not None
            check_both_paths(parser, peer.data)
            if peer.data:
                parse_or_none(parser, peer.data.decode("utf-8", "surrogateescape"))
    assert recognised > 0


# Under AddressSanitizer the leak check covers this, tracemalloc has leaks of its own there,
# and the allocator's quarantine grows the resident size.
SANITIZED = os.environ.get("ORVANE_SANITIZED") == "1"


@pytest.mark.skipif(SANITIZED, reason="the leak sanitizer checks this build")
def test_many_parses_keep_no_memory(parser):
    inputs = [sample.read_bytes() for sample in SAMPLES] + [b"not a document"]

    def parse_all(rounds: int) -> None:
        for _ in range(rounds):
            for data in inputs:
                parse_or_none(parser, data)

    parse_all(5)
    tracemalloc.start()
    try:
        parse_all(10)
        before = tracemalloc.get_traced_memory()[0]
        parse_all(40)
        grown = tracemalloc.get_traced_memory()[0] - before
    finally:
        tracemalloc.stop()
    # A Python object kept per parse would grow this by 2000 objects at least.
    assert grown < 16 * 1024


@pytest.mark.skipif(SANITIZED or not os.path.exists("/proc/self/statm"), reason="needs /proc, no sanitizer")
def test_many_parses_keep_no_native_memory(parser):
    def resident_pages() -> int:
        with open("/proc/self/statm") as statm:
            return int(statm.read().split()[1])

    data = [sample.read_bytes() for sample in SAMPLES]
    for _ in range(20):
        for item in data:
            parse_or_none(parser, item)
    before = resident_pages()
    for _ in range(200):
        for item in data:
            parse_or_none(parser, item)
    # Ten thousand parses: a leak of a few bytes each would show as many pages.
    assert (resident_pages() - before) * os.sysconf("SC_PAGE_SIZE") < 512 * 1024

