"""The API as Python users meet it: typed answers, strict and lenient parses, the ways an
input may be given, bad arguments, the Parser's life and the Document as a value."""

from __future__ import annotations

import copy
import dataclasses
import datetime
import json
import pickle

import pytest
from conftest import SOURCE_DIR

import orvane_parser
from orvane_parser import Check, CheckDigits, Document, FormatGroup, NotRecognised, Parser

ARIZONA = (SOURCE_DIR / "samples" / "aamva-2013-arizona.txt").read_bytes()
MEXICO = (SOURCE_DIR / "samples" / "national-mexico-latin1.txt").read_bytes()
PASSPORT = (SOURCE_DIR / "samples" / "mrz-passport.txt").read_bytes()
PASSPORT_BAD_DIGIT = (SOURCE_DIR / "tests" / "data" / "mrz" / "passport-wrong-number-check-digit.txt").read_bytes()


def test_answers_are_typed():
    document = orvane_parser.parse(ARIZONA)
    assert document.format == (FormatGroup.AAMVA, 42, "AAMVA DL/ID 2013 (version 08)")
    assert type(document.format.group) is FormatGroup
    assert document.birthdate == datetime.date(1988, 7, 4)
    assert document.expiration_date == datetime.date(2029, 7, 4)
    assert document.hazmat_expiration_date is None
    assert document.is_organ_donor is True and document.is_veteran is None
    assert document.document_id_validation_status is Check.VALID
    assert document.jurisdiction_code_validation_status is Check.VALID
    assert document.barcode_validation_status is None
    assert document.check_digits is CheckDigits.NONE and document.check_digit_failures == ()
    assert type(document.age) is int and type(document.expired) is bool and type(document.field_count) is int
    assert list(document.elements)[:3] == ["DAQ", "DCS", "DDE"]
    assert document.elements["DAC"] == "JORDAN"
    assert document.repairs == ()


def test_zone_check_digits():
    assert orvane_parser.parse(PASSPORT).check_digits is CheckDigits.VALID
    failed = orvane_parser.parse(PASSPORT_BAD_DIGIT)
    assert failed.check_digits is CheckDigits.INVALID
    assert failed.check_digit_failures[0] == "documentNumber"
    assert failed.to_dict()["mrzCheckDigitFailure"] == "documentNumber"


def test_lenient_parse_repairs_what_strict_reads_as_it_stands():
    indented = ARIZONA.replace(b"\nD", b"\n  D")
    strict = orvane_parser.parse(indented, strict=True)
    assert strict.first_name is None and strict.repairs == ()
    lenient = orvane_parser.parse(indented)
    assert lenient.repairs == ("line-indents",)
    assert dataclasses.replace(lenient, repairs=()) == orvane_parser.parse(ARIZONA)


def test_text_is_encoded_as_latin1_when_it_can_be_else_as_utf8():
    accented = ARIZONA.replace(b"DCSSAMPLE", b"DCSSAMPL\xc9")
    # Answers are the document's bytes read as Latin-1; Latin-1 text gives those bytes back.
    assert orvane_parser.parse(accented).elements["DCS"] == "SAMPL\u00c9"
    assert orvane_parser.parse(accented.decode("latin-1")) == orvane_parser.parse(accented)
    beyond_latin1 = MEXICO.decode("latin-1") + "\u0141"
    as_utf8 = orvane_parser.parse(beyond_latin1)
    assert as_utf8 == orvane_parser.parse(beyond_latin1.encode("utf-8"))
    assert "utf8-to-latin1" in as_utf8.repairs


class Index:
    def __index__(self) -> int:
        return 15


@pytest.mark.parametrize(
    "data",
    [bytearray(ARIZONA), memoryview(ARIZONA), type("Bytes", (bytes,), {})(ARIZONA)],
    ids=["bytearray", "memoryview", "bytes-subclass"],
)
def test_bytes_like_inputs(data):
    assert orvane_parser.parse(data) == orvane_parser.parse(ARIZONA)


def test_barcode_symbol_is_checked():
    assert orvane_parser.parse(ARIZONA, barcode=(20, Index(), 5)).barcode_validation_status in set(Check)
    for edge in [(3, 3, 0), (33, 90, 8)]:
        assert orvane_parser.parse(ARIZONA, barcode=edge).barcode_validation_status is not None


@pytest.mark.parametrize(
    "args, keywords, error",
    [
        ((None,), {}, TypeError),
        ((123,), {}, TypeError),
        (([1, 2],), {}, TypeError),
        ((ARIZONA, True), {}, TypeError),
        ((ARIZONA,), {"strict": "yes"}, TypeError),
        ((ARIZONA,), {"strict": 1}, TypeError),
        ((ARIZONA,), {"strict": None}, TypeError),
        ((ARIZONA,), {"barcode": 5}, TypeError),
        ((ARIZONA,), {"barcode": "abc"}, TypeError),
        ((ARIZONA,), {"barcode": (20.0, 15, 5)}, TypeError),
        ((ARIZONA,), {"barcode": (20, 15)}, ValueError),
        ((ARIZONA,), {"barcode": (20, 15, 5, 1)}, ValueError),
        ((ARIZONA,), {"barcode": (2, 15, 5)}, ValueError),
        ((ARIZONA,), {"barcode": (34, 15, 5)}, ValueError),
        ((ARIZONA,), {"barcode": (20, 2, 5)}, ValueError),
        ((ARIZONA,), {"barcode": (20, 91, 5)}, ValueError),
        ((ARIZONA,), {"barcode": (20, 15, -1)}, ValueError),
        ((ARIZONA,), {"barcode": (20, 15, 9)}, ValueError),
        ((ARIZONA,), {"barcode": (2**40, 15, 5)}, ValueError),
        (("\ud800",), {}, ValueError),
        ((ARIZONA,), {"unknown": 1}, TypeError),
    ],
)
def test_bad_arguments(args, keywords, error):
    with pytest.raises(error):
        orvane_parser.parse(*args, **keywords)
    with Parser() as parser, pytest.raises(error):
        parser.parse(*args, **keywords)


@pytest.mark.parametrize("data, status", [(b"", -17), ("", -17), (b"hello world", -25), (b"\x00" * 100, -25)])
def test_not_recognised(data, status):
    with pytest.raises(NotRecognised) as raised:
        orvane_parser.parse(data)
    assert raised.value.status == status
    assert isinstance(raised.value, ValueError) and str(status) in str(raised.value)
    assert pickle.loads(pickle.dumps(raised.value)).status == status


def test_parser_life():
    parser = Parser()
    assert not parser.closed and "open" in repr(parser)
    first = parser.parse(ARIZONA)
    assert parser.parse(MEXICO) != first and parser.parse(ARIZONA) == first
    with parser as entered:
        assert entered is parser
    assert parser.closed and "closed" in repr(parser)
    parser.close()
    with pytest.raises(ValueError, match="closed"):
        parser.parse(ARIZONA)
    for copier in (pickle.dumps, copy.copy):
        with pytest.raises(TypeError):
            copier(Parser())


def test_document_is_a_frozen_value():
    document = orvane_parser.parse(ARIZONA)
    with pytest.raises(dataclasses.FrozenInstanceError):
        document.first_name = "X"  # type: ignore[misc]
    assert pickle.loads(pickle.dumps(document)) == document
    assert hash(document) == hash(orvane_parser.parse(ARIZONA))
    built = Document(**{field.name: getattr(document, field.name) for field in dataclasses.fields(Document)})
    assert built == document and vars(built).keys() == vars(document).keys()
    renamed = dataclasses.replace(document, first_name="ALEX")
    assert renamed.to_dict()["firstName"] == "ALEX" and renamed != document
    assert json.loads(document.to_json()) == document.to_dict()
    assert "first_name='JORDAN'" in repr(document) and "hazmat" not in repr(document)


def test_json_escapes_as_the_library_does():
    document = Document(format=orvane_parser.Format(FormatGroup.AAMVA, 1, ""), elements={"X": "a\bb\fc\\bd\x7f\xe9"})
    assert '"X":"a\\u0008b\\u000cc\\\\bd\\u007f\\u00e9"' in document.to_json()
