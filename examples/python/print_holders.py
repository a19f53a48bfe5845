"""Prints who each scanned document names, and whether it is still valid.

    python3 examples/python/print_holders.py samples/*.txt

Each file holds what one scan read: the text of a licence barcode, a magnetic
stripe or a machine-readable zone.
"""

import sys

import orvane_parser


def main(paths: list[str]) -> int:
    status = 0
    with orvane_parser.Parser() as parser:
        for path in paths:
            with open(path, "rb") as scan:
                data = scan.read()
            try:
                document = parser.parse(data)
            except orvane_parser.NotRecognised as error:
                print(f"{path}: {error}", file=sys.stderr)
                status = 1
                continue
            name = " ".join(part for part in (document.first_name, document.last_name) if part)
            born = document.birthdate.isoformat() if document.birthdate else "birth date unknown"
            state = {True: "expired", False: "valid", None: "expiry unknown"}[document.expired]
            print(f"{path}: {name or 'no name'}, {born}, {document.document_type}, {state} ({document.format.name})")
    return status


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
