"""Turn the text read from identity documents into named fields.

Hand it what a PDF417 reader, a magnetic-stripe reader or OCR of a
machine-readable zone gave; the library recognises the format itself (68 of
them, and 7 more the default lenient parse tries: North-American licence
barcodes of every AAMVA edition, licence stripes, military ID cards, passport,
identity-card and visa zones, national documents) and keeps the best reading::

    import orvane_parser

    document = orvane_parser.parse(scanned_bytes)
    print(document.first_name, document.last_name, document.birthdate)
    if document.expired:
        print("expired on", document.expiration_date)

parse() raises NotRecognised when no format reads the input. For many inputs,
keep a Parser (one per thread) and call its parse().

From a photo of a licence's back, with zxing-cpp installed (python3-zxing-cpp)::

    for document in orvane_parser.parse_image("licence-back.jpg"):
        print(document.full_name, document.age)
"""

from ._document import Check, CheckDigits, Document, Format, FormatGroup
from ._errors import NotRecognised
from ._image import parse_image
from ._native import version as _native_version
from ._parser import Parser, parse

__all__ = [
    "Check",
    "CheckDigits",
    "Document",
    "Format",
    "FormatGroup",
    "NotRecognised",
    "Parser",
    "parse",
    "parse_image",
]

__version__: str = _native_version()
"""The version of the native library the package is built on, e.g. "1.26.0"."""
