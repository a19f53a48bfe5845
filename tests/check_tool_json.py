"""Parses the output of orvane-parse with Python's own JSON parser: every sample and test
input, strictly and leniently, and the inputs of other parsers' test suites when their
folder lies beside the project. Each line must be one JSON object with the members the
documentation lists, of the types it gives."""
import base64
import glob
import json
import os
import subprocess
import sys

TOOL, SOURCE = sys.argv[1], sys.argv[2]

TEXTS = ("formatName", "firstName", "lastName", "birthdate", "birthdateISO", "licenseNumber")
CHECKS = ("documentIdValidationStatus", "jurisdictionCodeValidationStatus")


def check(name, line):
    value = json.loads(line)
    assert isinstance(value, dict), name
    assert isinstance(value["status"], int), name
    if value["status"] != 0:
        return
    for member in ("formatGroup", "formatId", "fieldCount"):
        assert isinstance(value[member], int), (name, member)
    assert 0 <= value["formatGroup"] <= 5, name
    for member in TEXTS:
        assert isinstance(value.get(member, ""), str), (name, member)
    for member in CHECKS:
        assert value.get(member, "valid") in ("valid", "invalid", "not checkable"), (name, member)
    assert value["checkDigits"] in ("valid", "invalid", "none"), name
    assert all(isinstance(f, str) for f in value.get("checkDigitFailures", [])), name
    assert isinstance(value.get("age", 0), int) and isinstance(value.get("expired", False), bool), name
    assert all(isinstance(r, str) for r in value.get("repairs", [])), name
    elements = value["elements"]
    assert isinstance(elements, dict) and all(isinstance(v, str) for v in elements.values()), name


def run(arguments, stdin=None):
    done = subprocess.run([TOOL] + arguments, input=stdin, capture_output=True, check=False)
    assert done.returncode in (0, 1), (arguments, done.returncode, done.stderr)
    return done.stdout.decode("ascii").splitlines()  # the tool escapes every byte beyond ASCII


files = sorted(glob.glob(os.path.join(SOURCE, "samples", "*.txt")))
files += sorted(glob.glob(os.path.join(SOURCE, "tests", "data", "**", "*.txt"), recursive=True))
checked = 0
for mode in ([], ["--strict"]):
    lines = run(mode + files)
    assert len(lines) == len(files), (len(lines), len(files))
    for name, line in zip(files, lines):
        check(name, line)
        assert json.loads(line)["input"] == name
        checked += 1

peers = sorted(glob.glob(os.path.join(SOURCE, "..", "shared", "peers", "*.jsonl")))
for path in peers:
    with open(path, encoding="utf-8") as lines:
        for number, record in enumerate(lines):
            data = base64.b64decode(json.loads(record).get("input_b64", ""))
            if not data:
                continue
            for mode in ([], ["--strict"]):
                (line,) = run(mode + ["-"], stdin=data)
                check("%s:%d" % (path, number + 1), line)
                checked += 1

print("%d JSON objects parsed (%d peer files)" % (checked, len(peers)))
