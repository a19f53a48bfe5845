"""From a photo to fields: the barcodes in an image, read with zxing-cpp and parsed.

zxing-cpp (the module zxingcpp), numpy and PIL are optional: they are imported on the
first call, and their absence is an ImportError that names the packages to install.
"""

from __future__ import annotations

import io
import os
import warnings
from typing import Any, NamedTuple

from ._document import Document
from ._errors import NotRecognised
from ._parser import _check_strict, parse

__all__ = ["ImageSource", "parse_image"]

ImageSource = Any
"""What parse_image() takes: a path, an encoded image file's bytes or a binary file
object, a PIL image, or a numpy array of pixels (typed loosely: numpy and PIL are optional)."""

MAX_PIXELS = 100_000_000
"""The largest image read, in pixels: a phone's 48-megapixel photo fits twice over."""

# Photo formats only: fewer of PIL's decoders face untrusted files.
_FILE_FORMATS = ("PNG", "JPEG", "WEBP", "GIF", "BMP", "TIFF", "PPM")

_MISSING = (
    "reading barcodes in images needs zxing-cpp's Python module with numpy and PIL: on Debian "
    "install python3-zxing-cpp, python3-numpy and python3-pil (elsewhere: pip install zxing-cpp "
    "numpy pillow)"
)


class _Barcode(NamedTuple):
    symbology: str
    """ "PDF417" or "Code39"."""
    data: bytes
    """The symbol's bytes, as encoded."""


def _modules() -> tuple[Any, Any, Any]:
    try:
        import numpy
        import zxingcpp  # type: ignore[import]  # ships no type hints
        from PIL import Image as pil  # type: ignore[import]  # neither does Debian's PIL
    except ImportError as error:
        raise ImportError(f"{_MISSING} ({error})") from error
    return zxingcpp, numpy, pil


def _opened(image: object, pil: Any) -> Any:
    """The PIL image of a path, an encoded file's bytes or a binary file object."""
    if isinstance(image, (str, os.PathLike)):
        with open(image, "rb") as file:  # OSError for a file that cannot be opened
            return _decoded(file, pil, os.fsdecode(image))
    if isinstance(image, (bytes, bytearray, memoryview)):
        return _decoded(io.BytesIO(bytes(image)), pil, "the image bytes")
    return _decoded(image, pil, "the image file")


def _decoded(file: Any, pil: Any, name: str) -> Any:
    try:
        with warnings.catch_warnings():
            # Our own limit applies below; PIL's warning between its two limits is noise.
            warnings.simplefilter("ignore", pil.DecompressionBombWarning)
            opened = pil.open(file, formats=_FILE_FORMATS)
            _check_size(opened.size[0], opened.size[1])
            opened.load()
            return opened
    except MemoryError:
        raise
    except pil.DecompressionBombError as error:
        raise ValueError(f"the image is too large: {error}") from error
    except ValueError as error:
        raise ValueError(f"{name}: {error}") from error
    except Exception as error:
        # Whatever a damaged or hostile file makes a decoder raise, the caller gets one kind.
        raise ValueError(f"{name} is not an image that can be read: {error}") from error


def _check_size(width: int, height: int) -> None:
    if width * height > MAX_PIXELS:
        raise ValueError(f"the image is too large: {width}x{height} pixels, at most {MAX_PIXELS} in all")


def _luminance_of_pil(image: Any, numpy: Any, pil: Any) -> Any:
    if image.mode in ("I", "I;16", "I;16B", "I;16L", "I;16N", "F"):
        # Deep pixels would clip to white in convert("L"): scaled to 0.0-1.0 instead, from
        # 16 bits when they go past 8, from 8 bits else (or as they are for 0.0-1.0 floats).
        levels = numpy.asarray(image, dtype=numpy.float64)
        top = float(numpy.max(levels)) if levels.size else 0.0
        scale = 65535.0 if top > 255.0 else 255.0 if top > 1.0 or image.mode != "F" else 1.0
        return _luminance_of_array(levels / scale, numpy)
    if image.mode in ("RGBA", "LA", "PA", "RGBa", "La") or (image.mode == "P" and "transparency" in image.info):
        # A barcode drawn on a transparent sheet is dark on nothing: lay it on white.
        sheet = pil.new("RGBA", image.size, (255, 255, 255, 255))
        sheet.alpha_composite(image.convert("RGBA"))
        image = sheet
    return numpy.asarray(image.convert("L"), dtype=numpy.uint8)


def _luminance_of_array(pixels: Any, numpy: Any) -> Any:
    """A 2-D uint8 array of grey levels from a numpy array of grey, RGB or RGBA pixels."""
    if pixels.ndim == 3 and pixels.shape[2] == 1:
        pixels = pixels[:, :, 0]
    if pixels.ndim not in (2, 3) or (pixels.ndim == 3 and pixels.shape[2] not in (3, 4)):
        raise ValueError(f"a numpy image must be HxW, HxWx1, HxWx3 or HxWx4, not {'x'.join(map(str, pixels.shape))}")
    _check_size(pixels.shape[1], pixels.shape[0])
    kind = pixels.dtype.kind
    if kind == "b":
        levels = pixels.astype(numpy.float64) * 255.0
    elif kind == "f":
        # Floating-point pixels run from 0.0 to 1.0, as image libraries write them.
        levels = numpy.nan_to_num(pixels.astype(numpy.float64), nan=1.0) * 255.0
    elif kind in "ui":
        levels = pixels.astype(numpy.float64)
        if pixels.dtype.itemsize > 1:
            levels /= 257.0
    else:
        raise TypeError(f"a numpy image must hold numbers, not {pixels.dtype}")
    levels = numpy.clip(levels, 0.0, 255.0)
    if levels.ndim == 3:
        grey = levels[:, :, 0] * 0.299 + levels[:, :, 1] * 0.587 + levels[:, :, 2] * 0.114
        if levels.shape[2] == 4:
            alpha = levels[:, :, 3] / 255.0
            grey = grey * alpha + 255.0 * (1.0 - alpha)
        levels = grey
    return numpy.ascontiguousarray(numpy.rint(levels), dtype=numpy.uint8)


def _luminance(image: object) -> Any:
    zxingcpp, numpy, pil = _modules()
    if isinstance(image, numpy.ndarray):
        return _luminance_of_array(image, numpy)
    if not isinstance(image, pil.Image):
        if not isinstance(image, (str, os.PathLike, bytes, bytearray, memoryview)) and not hasattr(image, "read"):
            raise TypeError(
                "image must be a path, image file bytes, a binary file, a PIL image or a numpy array, "
                f"not {type(image).__name__}"
            )
        image = _opened(image, pil)
    _check_size(image.size[0], image.size[1])
    return _luminance_of_pil(image, numpy, pil)


_BINARIZERS = ("LocalAverage", "FixedThreshold", "GlobalHistogram")


def _read_barcodes(image: object) -> list[_Barcode]:
    """Every PDF417 and Code 39 symbol in the image, PDF417 first (military ID backs
    carry both, and the PDF417 symbol holds more), each once."""
    zxingcpp = _modules()[0]
    grey = _luminance(image)
    if grey.size == 0:
        return []
    # Debian's zxing-cpp 1.4 aborts the process when it meets one Code 39 symbol at two
    # scales of the image, so Code 39 is read at the image's own scale only.
    passes = ((zxingcpp.BarcodeFormat.PDF417, True), (zxingcpp.BarcodeFormat.Code39, False))
    found: list[_Barcode] = []
    # The local binarizer reads most photos; a fixed threshold reads the dim, blurred and
    # tilted ones it misses, so the others are tried only when it finds nothing.
    for binarizer in _BINARIZERS:
        for form, downscale in passes:
            results = zxingcpp.read_barcodes(
                grey, formats=form, try_rotate=True, try_downscale=downscale,
                binarizer=getattr(zxingcpp.Binarizer, binarizer),
            )
            for result in results:
                barcode = _Barcode("PDF417" if form == zxingcpp.BarcodeFormat.PDF417 else "Code39", bytes(result.bytes))
                if result.valid and barcode.data and barcode not in found:
                    found.append(barcode)
        if found:
            break
    return found


def parse_image(image: ImageSource, *, strict: bool = False) -> list[Document]:
    """Reads every PDF417 and Code 39 barcode in a photo and parses each one.

    ``image`` is a path, the bytes of an image file or a binary file object (PNG,
    JPEG, WebP, GIF, BMP, TIFF or PPM), a PIL image, or a numpy array of pixels
    (HxW grey, HxWx3 RGB or HxWx4 RGBA; integers, or floats from 0.0 to 1.0).
    The barcode may lie anywhere in the photo, upright, sideways or upside down,
    and tilted a few degrees.

    Returns one Document per barcode that a format recognises, those of PDF417
    symbols first (a military ID card's back has a PDF417 and a Code 39 symbol); an
    empty list when the image holds no barcode that parses. The parse is lenient
    unless ``strict=True``; the symbol's size is not checked (the decoder does not
    report it).

    Raises ImportError naming the packages to install when zxing-cpp, numpy or PIL
    is missing, OSError when a path cannot be opened, ValueError for data that is
    no readable image or an image over 100 megapixels, and TypeError for other
    arguments.
    """
    _check_strict(strict)
    documents = []
    for barcode in _read_barcodes(image):
        try:
            documents.append(parse(barcode.data, strict=strict))
        except NotRecognised:
            continue
    return documents
