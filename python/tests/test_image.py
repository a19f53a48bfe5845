"""parse_image(): every kind of image it takes, what it refuses, photos of both symbologies,
hostile image files, and python3 -m orvane_parser --image beside orvane-parse --image."""

from __future__ import annotations

import io
import random
import struct
import subprocess
import sys
import zlib
from pathlib import Path

import pytest
from conftest import SOURCE_DIR, TOOL

import orvane_parser

numpy = pytest.importorskip("numpy")
Image = pytest.importorskip("PIL.Image")
pytest.importorskip("zxingcpp")

import photo_variants  # noqa: E402  (needs zxingcpp)

SAMPLES = SOURCE_DIR / "samples"
LICENCE = (SAMPLES / "aamva-2013-arizona.txt").read_bytes()
MILITARY = (SAMPLES / "cac-v3-idus1.txt").read_bytes()
MILITARY_CODE39 = (SAMPLES / "cac-v1.txt").read_bytes()


def answers(data: bytes, **options) -> dict:
    return orvane_parser.parse(data, **options).to_dict()


@pytest.fixture(scope="module")
def licence() -> Image.Image:
    return photo_variants.written(LICENCE, "PDF417")


def png(image: Image.Image) -> bytes:
    out = io.BytesIO()
    image.save(out, "PNG")
    return out.getvalue()


def transparent(image: Image.Image) -> Image.Image:
    """Black modules on a transparent sheet whose hidden colour is black too."""
    sheet = Image.new("RGBA", image.size, (0, 0, 0, 0))
    sheet.putalpha(Image.eval(image, lambda level: 255 - level))
    return sheet


# Each way of handing over the same photo, as a function of the greyscale PIL image and a folder.
SOURCES = {
    "path str": lambda image, folder: str(_saved(image, folder / "photo.png")),
    "path object": lambda image, folder: _saved(image, folder / "photo.png"),
    "JPEG file": lambda image, folder: _saved(image, folder / "photo.jpg"),
    "file bytes": lambda image, folder: png(image),
    "bytearray": lambda image, folder: bytearray(png(image)),
    "binary file": lambda image, folder: io.BytesIO(png(image)),
    "PIL grey": lambda image, folder: image,
    "PIL RGB": lambda image, folder: image.convert("RGB"),
    "PIL 1-bit": lambda image, folder: image.convert("1"),
    "PIL palette": lambda image, folder: image.convert("P"),
    "PIL transparent": lambda image, folder: transparent(image),
    "PIL 16-bit": lambda image, folder: Image.fromarray(numpy.asarray(image).astype(numpy.uint16) * 257),
    "numpy grey": lambda image, folder: numpy.asarray(image),
    "numpy HxWx1": lambda image, folder: numpy.asarray(image)[:, :, None],
    "numpy RGB": lambda image, folder: numpy.asarray(image.convert("RGB")),
    "numpy RGBA transparent": lambda image, folder: numpy.asarray(transparent(image)),
    "numpy view": lambda image, folder: numpy.asarray(image.convert("RGB"))[:, :, ::-1][::1, ::1],
    "numpy float": lambda image, folder: numpy.asarray(image) / 255.0,
    "numpy bool": lambda image, folder: numpy.asarray(image) > 127,
    "numpy uint16": lambda image, folder: numpy.asarray(image).astype(numpy.uint16) * 257,
}


def _saved(image: Image.Image, path: Path) -> Path:
    image.save(path)
    return path


@pytest.mark.parametrize("kind", SOURCES)
def test_every_kind_of_image_gives_the_texts_answers(kind, licence, tmp_path):
    documents = orvane_parser.parse_image(SOURCES[kind](licence, tmp_path))
    assert [document.to_dict() for document in documents] == [answers(LICENCE)]


def test_strict_and_lenient_as_for_text(licence):
    # CR LF line breaks read only leniently, as when the text itself is parsed.
    damaged = LICENCE.replace(b"\n", b"\r\n")
    image = photo_variants.written(damaged, "PDF417")
    assert [d.to_dict() for d in orvane_parser.parse_image(image)] == [answers(damaged)]
    try:
        expected = [answers(damaged, strict=True)]
    except orvane_parser.NotRecognised:
        expected = []
    assert [d.to_dict() for d in orvane_parser.parse_image(image, strict=True)] == expected
    with pytest.raises(TypeError):
        orvane_parser.parse_image(licence, strict=1)


def test_a_military_back_gives_both_symbols_pdf417_first():
    code39 = photo_variants.written(MILITARY_CODE39, "Code39")
    pdf417 = photo_variants.written(MILITARY, "PDF417")
    back = Image.new("L", (max(code39.width, pdf417.width), code39.height + pdf417.height + 60), 255)
    back.paste(code39, (0, 0))
    back.paste(pdf417, (0, code39.height + 60))
    documents = orvane_parser.parse_image(back)
    assert [d.to_dict() for d in documents] == [answers(MILITARY), answers(MILITARY_CODE39)]


def test_images_without_a_document():
    blank = numpy.full((200, 300), 255, dtype=numpy.uint8)
    greeting = photo_variants.written(b"hello, not a licence", "PDF417")
    for image in (blank, greeting, numpy.zeros((0, 0), dtype=numpy.uint8), numpy.zeros((1, 1), dtype=numpy.uint8)):
        assert orvane_parser.parse_image(image) == []


def test_one_code39_symbol_at_two_scales_does_not_abort(tmp_path):
    # zxing-cpp 1.4 asserts when one linear symbol turns up at two scales of the image: the
    # photo that made it abort is read in a process of its own so that an abort fails the test.
    code39 = photo_variants.written(MILITARY_CODE39, "Code39")
    data, suffix = photo_variants.damaged(code39, "background", 1)
    path = tmp_path / f"code39.{suffix}"
    path.write_bytes(data)
    script = "import sys, orvane_parser; print(len(orvane_parser.parse_image(sys.argv[1])))"
    run = subprocess.run([sys.executable, "-c", script, str(path)], capture_output=True, check=False)
    assert run.returncode == 0, run.stderr.decode()
    assert run.stdout == b"1\n"


def _png_header(width: int, height: int) -> bytes:
    """A grey PNG of that size whose pixels are missing."""
    chunks = [(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 0, 0, 0, 0)), (b"IDAT", zlib.compress(b"\0")),
              (b"IEND", b"")]
    return b"\x89PNG\r\n\x1a\n" + b"".join(
        struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body)) for kind, body in chunks)


@pytest.mark.parametrize(
    "image, error, words",
    [
        (12, TypeError, "image must be"),
        (None, TypeError, "image must be"),
        (b"", ValueError, "not an image"),
        (b"hello, not a picture", ValueError, "not an image"),
        (_png_header(20000, 20000), ValueError, "too large"),
        (_png_header(10001, 10000), ValueError, "too large"),
        (_png_header(100, 100), ValueError, "not an image"),
        (numpy.zeros((4, 4, 2), dtype=numpy.uint8), ValueError, "HxW"),
        (numpy.zeros((4,), dtype=numpy.uint8), ValueError, "HxW"),
        (numpy.zeros((4, 4), dtype=object), TypeError, "numbers"),
        (numpy.zeros((10001, 10001), dtype=bool), ValueError, "too large"),
        (SOURCE_DIR / "samples" / "missing.png", FileNotFoundError, "missing.png"),
    ],
    ids=["int", "None", "empty", "text", "huge", "over-the-limit", "no-pixels", "two-channels", "1-D", "objects", "huge-array", "missing"],
)
def test_refusals(image, error, words):
    with pytest.raises(error, match=words):
        orvane_parser.parse_image(image)


def damaged_files(licence: Image.Image, count: int = 240) -> list[bytes]:
    """PNG and JPEG files of the licence, cut short and with bytes overwritten."""
    small = licence.resize((licence.width // 2, licence.height // 2))
    jpeg = io.BytesIO()
    small.save(jpeg, "JPEG", quality=60)
    originals = [png(small), jpeg.getvalue()]
    rng = random.Random(417)
    files = []
    for turn in range(count):
        data = bytearray(originals[turn % 2])
        if turn % 3 == 0:
            data = data[: rng.randrange(len(data))]
        for _ in range(rng.randrange(1, 12)):
            data[rng.randrange(len(data))] = rng.randrange(256)
        files.append(bytes(data))
    # A Huffman table of 16 x 255 codes, which overran Debian's stb_image's tables.
    overfull = originals[1][:2] + b"\xff\xc4" + struct.pack(">H", 2 + 17 + 4080) + b"\x00" + b"\xff" * 16 + \
        b"\x00" * 4080 + originals[1][2:]
    return files + [_png_header(20000, 20000), _png_header(100, 100), b"", overfull]


def test_hostile_image_files_raise_value_error_or_read(licence):
    """Damaged PNG and JPEG files either read or raise ValueError, never anything else."""
    outcomes = {"read": 0, "refused": 0}
    for data in damaged_files(licence):
        try:
            documents = orvane_parser.parse_image(data)
        except ValueError:
            outcomes["refused"] += 1
        else:
            assert all(d.to_dict() == answers(LICENCE) for d in documents)
            outcomes["read"] += 1
    assert outcomes["read"] and outcomes["refused"]


def test_missing_zxing_names_the_package():
    script = (
        "import sys; sys.modules['zxingcpp'] = None\n"
        "import orvane_parser\n"
        "try:\n    orvane_parser.parse_image(b'')\n"
        "except ImportError as error:\n    print(error)\n"
    )
    run = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True, check=False)
    assert run.returncode == 0, run.stderr
    assert "python3-zxing-cpp" in run.stdout and "pip install zxing-cpp" in run.stdout


# The command line: python3 -m orvane_parser --image prints what orvane-parse --image prints.


def tool_reads_images() -> bool:
    if TOOL is None:
        return False
    return b"--image" in subprocess.run([TOOL, "--help"], capture_output=True, check=False).stdout


@pytest.fixture(scope="module")
def photos(tmp_path_factory, licence) -> dict:
    folder = tmp_path_factory.mktemp("photos")
    paths = {
        "licence": _saved(licence, folder / "licence.png"),
        "blank": _saved(Image.new("L", (300, 200), 255), folder / "blank.png"),
        "greeting": _saved(photo_variants.written(b"hello", "PDF417"), folder / "greeting.png"),
        "text": SAMPLES / "aamva-2013-arizona.txt",
    }
    (folder / "caf\xe9.jpg").write_bytes(photo_variants.damaged(licence, "jpeg", 0)[0])
    paths["latin-1 name"] = folder / "caf\xe9.jpg"
    return paths


@pytest.mark.parametrize(
    "names, options, status, lines",
    [
        (["licence"], [], 0, ['"barcode":"PDF417","status":0']),
        (["licence", "latin-1 name"], ["--strict"], 0, ['"barcode":"PDF417","status":0'] * 2),
        (["licence"], ["--symbol", "20,15,5"], 0, ['"barcodeValidationStatus":']),
        (["blank"], [], 1, ['"barcode":null,"status":-17}']),
        (["greeting"], [], 1, ['"barcode":"PDF417","status":-25']),
        (["licence", "blank"], [], 1, ['"status":0', '"status":-17']),
        (["text"], [], 2, []),
    ],
    ids=["licence", "strict", "symbol", "no-barcode", "not-a-document", "mixed", "not-an-image"],
)
def test_the_command_line(photos, names, options, status, lines):
    files = [str(photos[name]) for name in names]
    ours = subprocess.run([sys.executable, "-m", "orvane_parser", "--image", *options, *files],
                          capture_output=True, check=False)
    assert ours.returncode == status, ours.stderr
    printed = ours.stdout.decode().splitlines()
    assert len(printed) == len(lines)
    for line, expected in zip(printed, lines):
        assert expected in line
    if tool_reads_images():
        theirs = subprocess.run([TOOL, "--image", *options, *files], capture_output=True, check=False)
        assert (theirs.stdout, theirs.returncode) == (ours.stdout, ours.returncode)


def test_the_tool_survives_hostile_image_files(licence, tmp_path):
    if not tool_reads_images():
        pytest.skip("orvane-parse is not set or was built without zxing-cpp")
    files = []
    for number, data in enumerate(damaged_files(licence)):
        files.append(tmp_path / f"{number}.img")
        files[-1].write_bytes(data)
    run = subprocess.run([TOOL, "--image", *files], capture_output=True, check=False)
    # 2 as some files are no image; a crash or a sanitizer's report would be another status.
    assert run.returncode == 2, run.stderr.decode(errors="replace")[-3000:]
    for line in run.stdout.decode().splitlines():
        assert '"status":0' in line or '"barcode":null' in line, line
    errors = run.stderr.decode()
    assert "too large: 20000x20000 pixels" in errors and "not a PNG or JPEG image" in errors
    assert "Huffman table holds more than 256 codes" in errors


def test_the_command_line_reads_a_photo_from_standard_input(photos):
    data = photos["licence"].read_bytes()
    ours = subprocess.run([sys.executable, "-m", "orvane_parser", "--image"], input=data, capture_output=True, check=False)
    assert ours.returncode == 0 and ours.stdout.startswith(b'{"input":"<stdin>","barcode":"PDF417","status":0,')
    if tool_reads_images():
        assert subprocess.run([TOOL, "--image", "-"], input=data, capture_output=True, check=False).stdout == ours.stdout
