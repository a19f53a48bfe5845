"""Every bundled sample gives the answers written beside it, and the Document gives back
the library's own object, byte for byte as orvane-parse prints it."""

from __future__ import annotations

import datetime
import re
import subprocess

import pytest
from conftest import SAMPLES, TOOL, peer_inputs, read_expected, sample_id

import orvane_parser
from orvane_parser import Check, Document

# Java result names whose snake_case is not the mechanical one.
IRREGULAR_NAMES = {"HAZMATExpDate": "hazmat_expiration_date", "weightKG": "weight_kg", "weightLBS": "weight_lbs"}


def attribute_of(java_name: str) -> str:
    return IRREGULAR_NAMES.get(java_name) or re.sub(r"(?<!^)(?=[A-Z])", "_", java_name).lower()


def as_expected_text(document: Document, key: str) -> str:
    """A Document's answer written as the .expected files write it."""
    if key == "status":
        return "0"
    if key == "formatGroup":
        return str(int(document.format.group))
    if key == "formatId":
        return str(document.format.id)
    value = getattr(document, attribute_of(key))
    if value is None:
        return ""
    if isinstance(value, datetime.date):
        return value.strftime("%m/%d/") + f"{value.year:04d}"
    if isinstance(value, bool):
        return str(int(value))
    if isinstance(value, Check):
        return value.value
    return value


@pytest.mark.parametrize("sample", SAMPLES, ids=sample_id)
def test_sample_gives_its_expected_answers(sample):
    document = orvane_parser.parse(sample.read_bytes(), strict=True)
    for key, value in read_expected(sample).items():
        assert as_expected_text(document, key) == value, key


def tool_lines(*arguments) -> list[str]:
    """orvane-parse's lines for the arguments, each without its "input" member."""
    if TOOL is None:
        pytest.skip("ORVANE_PARSE_TOOL is not set")
    run = subprocess.run([TOOL, *map(str, arguments)], capture_output=True, check=False)
    return ["{" + line[line.index(',"status":') + 1 :] for line in run.stdout.decode("ascii").splitlines()]


@pytest.mark.parametrize(
    "options, keywords",
    [([], {}), (["--strict"], {"strict": True}), (["--symbol", "20,15,5"], {"barcode": (20, 15, 5)})],
    ids=["lenient", "strict", "symbol"],
)
def test_documents_give_back_the_library_object(options, keywords):
    lines = tool_lines(*options, *SAMPLES)
    assert len(lines) == len(SAMPLES)
    for sample, line in zip(SAMPLES, lines):
        document = orvane_parser.parse(sample.read_bytes(), **keywords)
        assert document.to_json() == line, sample.name


def test_peer_inputs_give_back_the_library_object(tmp_path):
    inputs = [peer.data for peer in peer_inputs() if peer.data]
    if not inputs:
        pytest.skip("no inputs of other parsers' test suites")
    files = []
    for number, data in enumerate(inputs):
        files.append(tmp_path / f"{number}.txt")
        files[-1].write_bytes(data)
    compared = 0
    for data, line in zip(inputs, tool_lines(*files), strict=True):
        try:
            document = orvane_parser.parse(data)
        except orvane_parser.NotRecognised as error:
            assert line == f'{{"status":{error.status}}}'
            continue
        assert document.to_json() == line
        compared += 1
    assert compared > 0
