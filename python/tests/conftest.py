"""What the tests share: the bundled samples and their answers, the command-line tool,
and the inputs of other parsers' test suites (read where they lie, when they are there)."""

from __future__ import annotations

import base64
import json
import os
from pathlib import Path
from typing import NamedTuple

import pytest

import orvane_parser

SOURCE_DIR = Path(os.environ.get("ORVANE_SOURCE_DIR", Path(__file__).resolve().parents[2]))
SAMPLES = sorted((SOURCE_DIR / "samples").glob("*.txt"))
PEERS = SOURCE_DIR / ".." / "shared" / "peers"
TOOL = os.environ.get("ORVANE_PARSE_TOOL")


class PeerInput(NamedTuple):
    file: str
    kind: str
    case: str
    data: bytes


def read_expected(sample: Path) -> dict[str, str]:
    """The key=value lines beside a sample."""
    expected = {}
    for line in sample.with_suffix(".expected").read_text(encoding="latin-1").splitlines():
        if line and not line.startswith("#") and "=" in line:
            key, value = line.split("=", 1)
            expected[key] = value
    return expected


def peer_inputs() -> list[PeerInput]:
    inputs = []
    for path in sorted(PEERS.glob("*.jsonl")) if PEERS.is_dir() else []:
        for line in path.read_text(encoding="utf-8").splitlines():
            record = json.loads(line)
            if "input_b64" in record:
                inputs.append(PeerInput(path.name, record["kind"], record.get("case", ""),
                                        base64.b64decode(record["input_b64"])))
    return inputs


@pytest.fixture
def parser():
    with orvane_parser.Parser() as p:
        yield p


def sample_id(path: Path) -> str:
    return path.stem
