"""Photo-like images of the barcode samples, for the tests of every face that reads photos.

Each barcode-family sample (licences, military ID cards, HC and national barcodes) is
written as a PDF417 symbol with zxing-cpp's writer (the military ID layouts of the
Code 39 back also as Code 39), then damaged as a phone photo damages it. Run as a
script it writes the images and manifest.json into a folder:

    python3 photo_variants.py OUT_DIR [SAMPLES_DIR]

The same sample and kind of damage always give the same image.
"""

from __future__ import annotations

import io
import json
import sys
import zlib
from pathlib import Path
from typing import Any, Callable

import numpy
import zxingcpp
from PIL import Image, ImageFilter

ROOT = Path(__file__).resolve().parents[2]

# The kinds of damage, in the order the README's table lists them.
KINDS = ("clean", "scaled", "rotated", "blurred", "jpeg", "background", "photo")
ABOUT = {
    "clean": "as written, 3 pixels a module",
    "scaled": "scaled to 45%",
    "rotated": "rotated 3 degrees",
    "blurred": "Gaussian blur, radius 1.6 pixels",
    "jpeg": "JPEG at quality 20",
    "background": "on a card in a noisy, shaded scene 3 times its size, low contrast",
    "photo": "all at once, milder: 2 degrees, 70%, blur 0.8, scene, JPEG 50",
}
# The layouts that military ID backs print as Code 39.
CODE39_SAMPLES = ("cac-v1", "cac-vn")
MODULE = 3
# The licence the browser's fake camera shows.
CAMERA_SAMPLE = "aamva-2013-arizona"
# Code 39: each character's nine bars and spaces, a set bit for a wide one, first element
# in the highest bit. zxing-cpp's writer stops at 80 characters; these layouts hold 90.
_CODE39_ALPHABET = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%*"
_CODE39_PATTERNS = (
    0x034, 0x121, 0x061, 0x160, 0x031, 0x130, 0x070, 0x025, 0x124, 0x064,
    0x109, 0x049, 0x148, 0x019, 0x118, 0x058, 0x00D, 0x10C, 0x04C, 0x01C,
    0x103, 0x043, 0x142, 0x013, 0x112, 0x052, 0x007, 0x106, 0x046, 0x016,
    0x181, 0x0C1, 0x1C0, 0x091, 0x190, 0x0D0, 0x085, 0x184, 0x0C4, 0x0A8,
    0x0A2, 0x08A, 0x02A, 0x094,
)


def barcode_samples(samples: Path) -> list[Path]:
    """The samples whose text comes from a barcode: not stripes, not zones."""
    return [path for path in sorted(samples.glob("*.txt"))
            if path.stem.split("-")[0] in ("aamva", "cac", "hc", "national") and "stripe" not in path.stem]


def _code39(text: bytes) -> Image.Image:
    """A Code 39 symbol, one pixel a narrow module, wide ones three."""
    row: list[int] = []
    # The file's closing line break is no character of the symbol.
    for character in b"*" + text.rstrip(b"\r\n") + b"*":
        pattern = _CODE39_PATTERNS[_CODE39_ALPHABET.index(chr(character))]
        for element in range(9):
            width = 3 if pattern >> (8 - element) & 1 else 1
            row += [0 if element % 2 == 0 else 255] * width
        row.append(255)
    return Image.fromarray(numpy.tile(numpy.array(row[:-1], dtype=numpy.uint8), (40, 1)))


def written(text: bytes, symbology: str) -> Image.Image:
    """The symbol at MODULE pixels a module, with its quiet zone."""
    if symbology == "PDF417":
        # The writer takes text and encodes each character below 256 as that byte.
        smallest = Image.fromarray(zxingcpp.write_barcode(zxingcpp.BarcodeFormat.PDF417, text.decode("latin-1")))
    else:
        smallest = _code39(text)
    image = smallest.resize((smallest.width * MODULE, smallest.height * MODULE), Image.NEAREST)
    margin = 10 * MODULE
    framed = Image.new("L", (image.width + 2 * margin, image.height + 2 * margin), 255)
    framed.paste(image, (margin, margin))
    return framed


def _scaled(image: Image.Image, factor: float) -> Image.Image:
    return image.resize((round(image.width * factor), round(image.height * factor)), Image.LANCZOS)


def _rotated(image: Image.Image, degrees: float) -> Image.Image:
    return image.rotate(degrees, Image.BICUBIC, expand=True, fillcolor=255)


def _in_scene(image: Image.Image, seed: int) -> Image.Image:
    """The symbol printed in grey on an off-white card, lying off-centre in a larger,
    unevenly lit and noisy scene."""
    random = numpy.random.default_rng(seed)
    width, height = image.width * 3, image.height * 3
    y, x = numpy.mgrid[0:height, 0:width]
    scene = 90.0 + 60.0 * x / width + 30.0 * y / height
    card = (image.width // 4, image.height // 2, image.width * 2, image.height * 2)
    scene[card[1]:card[1] + card[3], card[0]:card[0] + card[2]] = 215.0
    ink = numpy.asarray(image, dtype=numpy.float64)
    top, left = card[1] + image.height // 2, card[0] + image.width // 2
    # Dark modules print at 55, light ones take the card's colour.
    region = scene[top:top + image.height, left:left + image.width]
    scene[top:top + image.height, left:left + image.width] = numpy.minimum(region, 55.0 + ink / 255.0 * 160.0)
    scene *= 0.85 + 0.15 * numpy.sin(x / width * 3.0)  # a soft shadow across
    scene += random.normal(0.0, 6.0, scene.shape)
    return Image.fromarray(numpy.clip(scene, 0, 255).astype(numpy.uint8))


def _jpeg(image: Image.Image, quality: int) -> bytes:
    out = io.BytesIO()
    image.save(out, "JPEG", quality=quality)
    return out.getvalue()


def _png(image: Image.Image) -> bytes:
    out = io.BytesIO()
    image.save(out, "PNG")
    return out.getvalue()


def damaged(image: Image.Image, kind: str, seed: int) -> tuple[bytes, str]:
    """The image with one kind of damage, as the bytes of a file and its suffix."""
    steps: dict[str, Callable[[], tuple[bytes, str]]] = {
        "clean": lambda: (_png(image), "png"),
        "scaled": lambda: (_png(_scaled(image, 0.45)), "png"),
        "rotated": lambda: (_png(_rotated(image, 3.0)), "png"),
        "blurred": lambda: (_png(image.filter(ImageFilter.GaussianBlur(1.6))), "png"),
        "jpeg": lambda: (_jpeg(image, 20), "jpg"),
        "background": lambda: (_png(_in_scene(image, seed)), "png"),
        "photo": lambda: (_jpeg(_in_scene(_scaled(_rotated(image, 2.0), 0.7).filter(ImageFilter.GaussianBlur(0.8)),
                                          seed), 50), "jpg"),
    }
    return steps[kind]()


def write_variants(out: Path, samples: Path = ROOT / "samples") -> list[dict[str, Any]]:
    """Writes every variant of every barcode sample into out; returns the manifest,
    also written to out/manifest.json."""
    out.mkdir(parents=True, exist_ok=True)
    manifest = []
    for sample in barcode_samples(samples):
        text = sample.read_bytes()
        symbologies = ["PDF417"] + (["Code39"] if sample.stem in CODE39_SAMPLES else [])
        for symbology in symbologies:
            image = written(text, symbology)
            for kind in KINDS:
                data, suffix = damaged(image, kind, zlib.crc32(f"{sample.stem}/{kind}".encode()))
                name = f"{sample.stem}.{symbology}.{kind}.{suffix}"
                (out / name).write_bytes(data)
                manifest.append({"file": name, "sample": sample.stem, "symbology": symbology, "kind": kind})
    _write_camera(written((samples / f"{CAMERA_SAMPLE}.txt").read_bytes(), "PDF417"), out / "camera.y4m")
    (out / "manifest.json").write_text(json.dumps({"kinds": list(KINDS), "about": ABOUT, "images": manifest},
                                                  indent=1) + "\n")
    return manifest


def _write_camera(image: Image.Image, path: Path) -> None:
    """One frame of a 1280x720 camera (YUV 4:2:0) showing the symbol, for a browser's fake camera."""
    frame = Image.new("L", (1280, 720), 200)
    symbol = image if image.width <= 1200 else _scaled(image, 1200 / image.width)
    frame.paste(symbol, ((1280 - symbol.width) // 2, (720 - symbol.height) // 2))
    chroma = bytes([128]) * (640 * 360 * 2)
    path.write_bytes(b"YUV4MPEG2 W1280 H720 F10:1 Ip A1:1 C420jpeg\nFRAME\n" + frame.tobytes() + chroma)


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    write_variants(Path(sys.argv[1]), Path(sys.argv[2]) if len(sys.argv) == 3 else ROOT / "samples")
