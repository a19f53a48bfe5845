"""python3 -m orvane_parser prints what orvane-parse prints, byte for byte, and exits as it does."""

from __future__ import annotations

import subprocess
import sys

import pytest
from conftest import SAMPLES, SOURCE_DIR, TOOL, peer_inputs


def run(command: list, stdin: bytes = b"") -> subprocess.CompletedProcess:
    return subprocess.run(command, input=stdin, capture_output=True, check=False)


def module(*arguments) -> list:
    return [sys.executable, "-m", "orvane_parser", *map(str, arguments)]


def tool(*arguments) -> list:
    if TOOL is None:
        pytest.skip("ORVANE_PARSE_TOOL is not set")
    return [TOOL, *map(str, arguments)]


@pytest.fixture(scope="module")
def odd_inputs(tmp_path_factory) -> list:
    folder = tmp_path_factory.mktemp("inputs")
    files = {
        "empty.txt": b"",
        "garbage.txt": b"not a document at all",
        "caf\xe9 \"quoted\".txt".encode("latin-1").decode("utf-8", "surrogateescape"): SAMPLES[0].read_bytes(),
    }
    for number, peer in enumerate(peer_inputs()[:40]):
        files[f"peer-{number}.txt"] = peer.data
    paths = []
    for name, data in files.items():
        path = folder / name
        path.write_bytes(data)
        paths.append(path)
    return paths


@pytest.mark.parametrize(
    "options",
    [[], ["--strict"], ["--symbol", "20,15,5"], ["--symbol", " 33, 90,8"], ["--symbol", "99,1,5"]],
    ids=["lenient", "strict", "symbol", "symbol-blanks", "symbol-out-of-range"],
)
def test_prints_what_the_tool_prints(options, odd_inputs):
    files = [*SAMPLES, *odd_inputs]
    ours, theirs = run(module(*options, *files)), run(tool(*options, *files))
    assert ours.stdout == theirs.stdout
    assert ours.returncode == theirs.returncode == 1


def test_reads_standard_input():
    data = (SOURCE_DIR / "samples" / "mrz-passport.txt").read_bytes()
    ours, theirs = run(module(), data), run(tool("-"), data)
    assert ours.stdout == theirs.stdout and b'"input":"<stdin>"' in ours.stdout
    assert ours.returncode == theirs.returncode == 0


@pytest.mark.parametrize(
    "arguments, status, output",
    [
        (["--help"], 0, "--symbol"),
        (["--version"], 0, "1."),
        (["--symbol", "20,15"], 2, "COLUMNS,ROWS,LEVEL"),
        (["--symbol", "20,15,5,"], 2, "COLUMNS,ROWS,LEVEL"),
        (["--symbol"], 2, "COLUMNS,ROWS,LEVEL"),
        (["--bogus"], 2, "unknown option"),
        ([SOURCE_DIR / "samples" / "missing.txt"], 2, "cannot open"),
        ([SOURCE_DIR / "samples"], 2, "cannot"),
    ],
)
def test_exit_statuses(arguments, status, output):
    ours = run(module(*arguments))
    assert ours.returncode == status
    assert output in (ours.stdout + ours.stderr).decode()
    if TOOL is not None:
        assert run(tool(*arguments)).returncode == status
