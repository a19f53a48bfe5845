"""The Document a parse gives: every answer of the library, typed."""

from __future__ import annotations

import dataclasses
import datetime
import enum
import json
import re
from typing import Any, NamedTuple

__all__ = ["Check", "CheckDigits", "Document", "Format", "FormatGroup"]


class FormatGroup(enum.IntEnum):
    """The family of formats that read the input."""

    AAMVA = 0
    """PDF417 barcode of a North-American driving licence or identity card."""
    STRIPE = 1
    """Magnetic stripe of a licence."""
    HC = 2
    """HC card."""
    MILITARY_ID = 3
    """Barcode of a US military or civilian ID card."""
    NATIONAL = 4
    """A national document with a layout of its own."""
    MRZ = 5
    """Machine-readable zone of a passport, identity card or visa."""


class Format(NamedTuple):
    """The format that read the input: its family, number and name."""

    group: FormatGroup
    """The family."""
    id: int
    """The library's number of the format."""
    name: str
    """e.g. ``"AAMVA DL/ID 2013 (version 08)"`` or ``"Passport zone (TD3)"``."""


class Check(enum.Enum):
    """The verdict of a validity check."""

    VALID = "valid"
    """A rule of the jurisdiction matched."""
    INVALID = "invalid"
    """The jurisdiction is known but no rule matched."""
    NOT_CHECKABLE = "not checkable"
    """A needed field is missing, or the jurisdiction is not in the check's table."""


class CheckDigits(enum.Enum):
    """Whether the document's check digits hold."""

    VALID = "valid"
    """All of them hold."""
    INVALID = "invalid"
    """Some fail; ``Document.check_digit_failures`` names the fields."""
    NONE = "none"
    """The document has no check digits."""


# The answers as the library writes them, in its order: (member, attribute, is a date).
_ANSWERS: tuple[tuple[str, str, bool], ...] = (
    ("firstName", "first_name", False),
    ("lastName", "last_name", False),
    ("documentType", "document_type", False),
    ("countryCode", "country_code", False),
    ("country", "country", False),
    ("jurisdictionCode", "jurisdiction_code", False),
    ("iin", "iin", False),
    ("middleName", "middle_name", False),
    ("nameSuffix", "name_suffix", False),
    ("namePrefix", "name_prefix", False),
    ("fullName", "full_name", False),
    ("address1", "address1", False),
    ("address2", "address2", False),
    ("city", "city", False),
    ("licenseNumber", "license_number", False),
    ("classificationCode", "classification_code", False),
    ("restrictionCode", "restriction_code", False),
    ("restrictionCodeDescription", "restriction_code_description", False),
    ("endorsementsCode", "endorsements_code", False),
    ("endorsementCodeDescription", "endorsement_code_description", False),
    ("expirationDate", "expiration_date", True),
    ("HAZMATExpDate", "hazmat_expiration_date", True),
    ("birthdate", "birthdate", True),
    ("cardRevisionDate", "card_revision_date", True),
    ("gender", "gender", False),
    ("issueDate", "issue_date", True),
    ("issuedBy", "issued_by", False),
    ("postalCode", "postal_code", False),
    ("eyeColor", "eye_color", False),
    ("race", "race", False),
    ("hairColor", "hair_color", False),
    ("height", "height", False),
    ("weightKG", "weight_kg", False),
    ("weightLBS", "weight_lbs", False),
    ("complianceType", "compliance_type", False),
    ("vehicleClassCode", "vehicle_class_code", False),
    ("vehicleClassCodeDescription", "vehicle_class_code_description", False),
    ("aamvaVersion", "aamva_version", False),
)
_FLAGS: tuple[tuple[str, str], ...] = (
    ("isLimitedDurationDocument", "is_limited_duration_document"),
    ("isOrganDonor", "is_organ_donor"),
    ("isVeteran", "is_veteran"),
)


@dataclasses.dataclass(frozen=True, kw_only=True, repr=False)
class Document:
    """What the library read from one input.

    Text answers are ``str`` (the document's bytes read as Latin-1) or ``None``
    when the document does not give them. Dates are ``datetime.date`` or
    ``None``, also for a stated date that is no calendar date (30 February, a
    year 0), whose text ``elements`` still holds. Flags are ``bool``, or
    ``None`` when the document does not say. ``to_dict()`` and ``to_json()``
    give the library's own result object.
    """

    format: Format
    """The format that read the input."""

    first_name: str | None = None
    """First name: as read, else the first of the given names, else cut from the whole name."""
    middle_name: str | None = None
    """Middle name(s): as read, else the given names after the first."""
    last_name: str | None = None
    """Last name: as read, else cut from the whole name."""
    name_suffix: str | None = None
    """Generational suffix ("JR", "III", ...)."""
    name_prefix: str | None = None
    """Name prefix, as read."""
    full_name: str | None = None
    """Whole name with blanks between its parts."""

    document_type: str | None = None
    """Document type: "DL", "ID", "PASSPORT", ..."""
    country_code: str | None = None
    """ISO 3166-1 alpha-3 country code."""
    country: str | None = None
    """Country, as read or derived."""
    jurisdiction_code: str | None = None
    """State, province or other jurisdiction code."""
    iin: str | None = None
    """Six-digit issuer identification number."""
    issued_by: str | None = None
    """Two-letter code of the jurisdiction that the IIN belongs to."""
    aamva_version: str | None = None
    """Two digits of the AAMVA header version."""

    address1: str | None = None
    """First address line (street)."""
    address2: str | None = None
    """Second address line."""
    city: str | None = None
    """City."""
    postal_code: str | None = None
    """Postal code; US ZIP codes as 12345-6789."""
    license_number: str | None = None
    """Document or customer number."""

    birthdate: datetime.date | None = None
    """Date of birth."""
    issue_date: datetime.date | None = None
    """Issue date."""
    expiration_date: datetime.date | None = None
    """Expiry date; 9999-12-31 for a document that does not expire."""
    card_revision_date: datetime.date | None = None
    """Date of the card design revision."""
    hazmat_expiration_date: datetime.date | None = None
    """Expiry date of the hazardous-materials endorsement."""

    gender: str | None = None
    """Gender: "Male" or "Female"."""
    eye_color: str | None = None
    """Eye colour name ("Brown"), or the stored code."""
    hair_color: str | None = None
    """Hair colour name, or the stored code."""
    race: str | None = None
    """Race, as stored."""
    height: str | None = None
    """Height: 5'10", 175cm or the document's own text."""
    weight_kg: str | None = None
    """Weight in kilograms, or a kilogram range."""
    weight_lbs: str | None = None
    """Weight in pounds, or a pound range."""

    classification_code: str | None = None
    """Vehicle class code (the same as vehicle_class_code)."""
    vehicle_class_code: str | None = None
    """Vehicle class code."""
    vehicle_class_code_description: str | None = None
    """Description of the vehicle class."""
    restriction_code: str | None = None
    """Restriction codes."""
    restriction_code_description: str | None = None
    """Description of the restrictions."""
    endorsements_code: str | None = None
    """Endorsement codes."""
    endorsement_code_description: str | None = None
    """Description of the endorsements."""
    compliance_type: str | None = None
    """The one-character compliance type."""

    is_limited_duration_document: bool | None = None
    """Whether the document is of limited duration."""
    is_organ_donor: bool | None = None
    """Whether the holder is an organ donor."""
    is_veteran: bool | None = None
    """Whether the holder is a veteran."""

    document_id_validation_status: Check | None = None
    """Whether the licence number has a shape its jurisdiction issues."""
    jurisdiction_code_validation_status: Check | None = None
    """Whether the jurisdiction code agrees with the issuer identification number."""
    barcode_validation_status: Check | None = None
    """Whether the PDF417 symbol is one the jurisdiction prints; only when parse() was given ``barcode``."""

    field_count: int = 0
    """Number of fields the reading filled."""
    check_digits: CheckDigits = CheckDigits.NONE
    """Whether the check digits of a machine-readable zone (or a South African identity number) hold."""
    check_digit_failures: tuple[str, ...] = ()
    """The fields whose check digits fail, e.g. ("documentNumber", "composite")."""
    age: int | None = None
    """Whole years from the birth date to the day of the parse."""
    expired: bool | None = None
    """Whether the expiry date lies before the day of the parse."""
    repairs: tuple[str, ...] = ()
    """The repairs a lenient parse applied to damaged text, e.g. ("crlf-lines",)."""
    elements: dict[str, str] = dataclasses.field(default_factory=dict, hash=False)
    """Every raw element in document order: AAMVA element ids, zone fields or field names."""

    def to_dict(self) -> dict[str, Any]:
        """The library's result object as a dict: Java result names, dates as MM/DD/YYYY
        with "...ISO" members, flags as 0/1, checks as words, members in the library's order."""
        result: dict[str, Any] = {"status": 0}
        form = self.format
        result["formatGroup"] = int(form.group)
        result["formatId"] = form.id
        if form.name:
            result["formatName"] = form.name
        for member, attribute, is_date in _ANSWERS:
            value = getattr(self, attribute)
            if value is None:
                continue
            if is_date:
                result[member] = f"{value.month:02d}/{value.day:02d}/{value.year:04d}"
                result[member + "ISO"] = value.isoformat()
            else:
                result[member] = value
        for member, attribute in _FLAGS:
            value = getattr(self, attribute)
            if value is not None:
                result[member] = int(value)
        if self.document_id_validation_status is not None:
            result["documentIdValidationStatus"] = self.document_id_validation_status.value
        if self.jurisdiction_code_validation_status is not None:
            result["jurisdictionCodeValidationStatus"] = self.jurisdiction_code_validation_status.value
        result["fieldCount"] = self.field_count
        result["checkDigits"] = self.check_digits.value
        failures = self.check_digit_failures
        if failures:
            result["checkDigitFailures"] = list(failures)
        # The zone members the library keeps for the command-line tool's older readers.
        if form.group == FormatGroup.MRZ and self.check_digits is not CheckDigits.NONE:
            result["mrzCheckDigits"] = self.check_digits.value
            if failures:
                result["mrzCheckDigitFailure"] = failures[0]
        if self.age is not None:
            result["age"] = self.age
        if self.expired is not None:
            result["expired"] = self.expired
        if self.repairs:
            result["repairs"] = list(self.repairs)
        result["elements"] = dict(self.elements)
        if self.barcode_validation_status is not None:
            result["barcodeValidationStatus"] = self.barcode_validation_status.value
        return result

    def to_json(self) -> str:
        """The library's result object as compact JSON text, as orvane-parse prints it
        (without its "input" member): every byte outside printable ASCII as \\u00XX."""
        return _library_json(self.to_dict())

    def __repr__(self) -> str:
        # Only what the document gave: most of the sixty fields are empty for any one format.
        shown = []
        for field in _FIELD_NAMES:
            value = getattr(self, field)
            if value is None or value == () or value == {}:
                continue
            shown.append(f"{field}={value!r}")
        return f"Document({', '.join(shown)})"


_FIELD_NAMES = tuple(field.name for field in dataclasses.fields(Document))
_ESCAPE = re.compile(r"\\(.)")


def _long_escape(match: re.Match[str]) -> str:
    letter = match.group(1)
    if letter == "b":
        return "\\u0008"
    if letter == "f":
        return "\\u000c"
    return match.group(0)


def _library_json(result: object) -> str:
    """Compact JSON escaped as the library escapes: Python writes \\b and \\f, it writes \\u0008 and \\u000c."""
    text = json.dumps(result, separators=(",", ":"))
    if "\\b" in text or "\\f" in text:
        text = _ESCAPE.sub(_long_escape, text)
    return text


_FLAG_VALUES = {0: False, 1: True}
_CHECKS = {check.value: check for check in Check}
_CHECK_DIGITS = {verdict.value: verdict for verdict in CheckDigits}
_GROUPS = {group.value: group for group in FormatGroup}


def _schema() -> tuple[tuple[str, str | None, Any], ...]:
    """How the library's object fills a Document, in the order the library writes it:
    (member, attribute or None to skip it, conversion: None, a dict to look the value up
    in, or a callable whose ValueError gives None). The format's members go to private keys that _make_document takes."""
    entries: list[tuple[str, str | None, Any]] = [
        ("status", None, None),
        ("formatGroup", "_format_group", None),
        ("formatId", "_format_id", None),
        ("formatName", "_format_name", None),
    ]
    for member, attribute, is_date in _ANSWERS:
        if is_date:
            # The ISO member that follows carries the same date.
            entries += [(member, None, None), (member + "ISO", attribute, datetime.date.fromisoformat)]
        else:
            entries.append((member, attribute, None))
    entries += [(member, attribute, _FLAG_VALUES) for member, attribute in _FLAGS]
    entries += [
        ("documentIdValidationStatus", "document_id_validation_status", _CHECKS),
        ("jurisdictionCodeValidationStatus", "jurisdiction_code_validation_status", _CHECKS),
        ("fieldCount", "field_count", None),
        ("checkDigits", "check_digits", _CHECK_DIGITS),
        ("checkDigitFailures", "check_digit_failures", None),
        # What check_digits and check_digit_failures say already.
        ("mrzCheckDigits", None, None),
        ("mrzCheckDigitFailure", None, None),
        ("age", "age", None),
        ("expired", "expired", None),
        ("repairs", "repairs", None),
        ("elements", "elements", None),
        ("barcodeValidationStatus", "barcode_validation_status", _CHECKS),
    ]
    return tuple(entries)


_SCHEMA = _schema()
_ENTRIES = {member: (attribute, convert) for member, attribute, convert in _SCHEMA}
# What every result starts from: the fields' defaults, and placeholders _make_document replaces.
_DEFAULTS: dict[str, Any] = {
    field.name: None if field.default is dataclasses.MISSING else field.default for field in dataclasses.fields(Document)
}
_DEFAULTS.update({"_format_group": -1, "_format_id": -1, "_format_name": ""})


def _values_from_result(result: dict[str, Any]) -> dict[str, Any]:
    """What the native reader makes of the library's object, for the text it leaves to Python:
    the Document's attributes by the schema, arrays as tuples, members not in the schema left out
    (so that a newer library still loads)."""
    values = _DEFAULTS.copy()
    for member, value in result.items():
        attribute, convert = _ENTRIES.get(member, (None, None))
        if attribute is None:
            continue
        if type(value) is list:
            value = tuple(value)
        if convert is None:
            values[attribute] = value
        elif type(convert) is dict:
            values[attribute] = convert.get(value)
        else:
            try:
                values[attribute] = convert(value)
            except ValueError:  # a date that is no date
                values[attribute] = None
    return values


def _make_document(values: dict[str, Any]) -> Document:
    """The Document of a result's attributes (values is taken over)."""
    group = values.pop("_format_group")
    values["format"] = Format(_GROUPS.get(group, group), values.pop("_format_id"), values.pop("_format_name"))
    if values["elements"] is None:
        values["elements"] = {}
    # Sets the fields at once: the generated __init__ of a frozen dataclass assigns its
    # sixty fields one by one through object.__setattr__, which costs more than the parse.
    document = object.__new__(Document)
    object.__setattr__(document, "__dict__", values)
    return document


def _document_from_json(text: str) -> Document:
    """The Document of the library's JSON text, read in Python."""
    return _make_document(_values_from_result(json.loads(text)))
