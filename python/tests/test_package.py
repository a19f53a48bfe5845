"""The package as shipped: documented public names, type hints with py.typed, and an
extension module that exports nothing but its entry point."""

from __future__ import annotations

import datetime
import enum
import inspect
import re
import shutil
import subprocess
import typing
from pathlib import Path

import pytest

import orvane_parser
from orvane_parser import _native


def public_names():
    for name in orvane_parser.__all__:
        item = getattr(orvane_parser, name)
        yield name, item
        if inspect.isclass(item) and not issubclass(item, enum.Enum):
            for member_name, member in vars(item).items():
                if not member_name.startswith("_") and (callable(member) or isinstance(member, property)):
                    yield f"{name}.{member_name}", member


@pytest.mark.parametrize("name, item", list(public_names()), ids=lambda value: value if isinstance(value, str) else "")
def test_every_public_name_is_documented(name, item):
    assert inspect.getdoc(item), name


def test_type_hints_are_shipped_and_resolve():
    package = Path(orvane_parser.__file__).parent
    assert (package / "py.typed").is_file() and (package / "_native.pyi").is_file()
    assert typing.get_type_hints(orvane_parser.parse)["return"] is orvane_parser.Document
    hints = typing.get_type_hints(orvane_parser.Document)
    assert hints["birthdate"] == typing.Optional[datetime.date]
    assert hints["is_organ_donor"] == typing.Optional[bool]


def test_version():
    assert re.fullmatch(r"\d+\.\d+\.\d+", orvane_parser.__version__)


@pytest.mark.skipif(shutil.which("nm") is None, reason="needs nm")
def test_module_exports_only_its_entry_point():
    listing = subprocess.run(["nm", "-D", "--defined-only", _native.__file__], capture_output=True, check=True, text=True)
    assert [line.split()[-1] for line in listing.stdout.splitlines()] == ["PyInit__native"]
