"""The native reader that turns the library's JSON into a Document's attributes agrees with
the Python path on all it reads, and leaves to Python all it does not."""

from __future__ import annotations

import json

import pytest

from orvane_parser import _native
from orvane_parser._document import _DEFAULTS, _SCHEMA, _values_from_result

HEAD = '{"status":0,"formatGroup":5,"formatId":64,'

READ = [
    HEAD + '"firstName":"A\\"B\\\\C\\/D\\b\\f\\n\\r\\t\\u00e9\\u0000\\u00FF","elements":{}}',
    HEAD + '"birthdate":"02/30/2020","birthdateISO":"2020-02-30","expirationDate":"12/31/9999",'
    '"expirationDateISO":"9999-12-31","elements":{}}',
    HEAD + '"isOrganDonor":1,"isVeteran":0,"isLimitedDurationDocument":7,"age":-3,"fieldCount":999999999999999999}',
    HEAD + '"documentIdValidationStatus":"valid","barcodeValidationStatus":"symbol out of range","checkDigits":"invalid",'
    '"checkDigitFailures":["documentNumber","composite"],"repairs":[],"expired":true}',
    # Members the schema does not know are read past, whatever they hold.
    HEAD + '"future":{"a":[1,{"b":null},"\\u0041"]},"later":false,"lastName":"X","elements":{"DAQ":"1","DAQ":"2"}}',
    # Out of the library's order, and with blanks.
    ' { "elements" : { } , "lastName" : "Y" , "formatName":"Z", "formatGroup" : 0 , "formatId" : 1 } ',
    "{}",
]

LEFT_TO_PYTHON = [
    HEAD + '"firstName":"\\u0141"}',  # a code point past Latin-1
    HEAD + '"age":1.5}',
    HEAD + '"age":1e3}',
    HEAD + '"age":1234567890123456789}',  # past 18 digits
    HEAD + '"firstName":"\u00e9"}',  # a raw byte outside ASCII
    HEAD + '"elements":' + "[" * 9 + "]" * 9 + "}",
    HEAD + '"firstName":"\\x"}',
    HEAD + '"firstName":"\\u00g0"}',
    # Not JSON at all, or cut short anywhere.
    HEAD + '"firstName":"A"',
    HEAD + '"firstName" "A"}',
    HEAD + '"firstName":"A"}}',
    HEAD + '"firstName":"A",}',
    HEAD + '"firstName":tru}',
    HEAD + '"firstName":-}',
    "",
    "[]",
]


@pytest.mark.parametrize("text", READ)
def test_reads_as_the_python_path_does(text):
    assert _native.read_result(text, _SCHEMA, _DEFAULTS) == _values_from_result(json.loads(text))


def test_dates_that_are_no_calendar_date_are_none():
    values = _native.read_result(READ[1], _SCHEMA, _DEFAULTS)
    assert values["birthdate"] is None and values["expiration_date"].year == 9999


@pytest.mark.parametrize("text", LEFT_TO_PYTHON)
def test_leaves_the_rest_to_python(text):
    assert _native.read_result(text, _SCHEMA, _DEFAULTS) is None


@pytest.mark.parametrize("cut", range(len(READ[3])))
def test_text_cut_anywhere_is_left_to_python(cut):
    text = READ[3][:cut]
    assert _native.read_result(text, _SCHEMA, _DEFAULTS) is None


def test_conversions_that_raise_reach_the_caller():
    def refuse(value):
        raise ArithmeticError(value)

    with pytest.raises(ArithmeticError):
        _native.read_result('{"age":1}', (("age", "age", refuse),), {})
    with pytest.raises(TypeError):
        _native.read_result('{"age":{"a":"b"}}', (("age", "age", {}),), {})


@pytest.mark.parametrize(
    "schema, defaults",
    [((), {}), ([("a", "a", None)], {}), ((("a", "a", None),), []), ((("a", 5, None),), {}), ((("a",),), {})],
)
def test_malformed_schemas_are_refused(schema, defaults):
    with pytest.raises((TypeError, ValueError)):
        _native.read_result("{}", schema, defaults)
    with pytest.raises((TypeError, ValueError)):
        _native.Handle(schema, defaults)
