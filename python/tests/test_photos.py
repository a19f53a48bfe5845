"""Photos of every barcode sample, clean and damaged as phones damage them: what parse_image()
and orvane-parse --image read from each must be what parsing the sample's text gives, and
every clean photo must read. The counts per kind of damage go to decode-table.json beside
the photos (ORVANE_PHOTO_DIR, in the build folder), for the README's table."""

from __future__ import annotations

import json
import os
import subprocess
from collections import Counter
from pathlib import Path

import pytest
from conftest import SOURCE_DIR, TOOL

import orvane_parser

pytest.importorskip("numpy")
pytest.importorskip("PIL.Image")
pytest.importorskip("zxingcpp")

import photo_variants  # noqa: E402  (needs zxingcpp)


@pytest.fixture(scope="module")
def photos(tmp_path_factory) -> tuple[Path, list[dict]]:
    folder = Path(os.environ["ORVANE_PHOTO_DIR"]) if "ORVANE_PHOTO_DIR" in os.environ else tmp_path_factory.mktemp("photos")
    return folder, photo_variants.write_variants(folder, SOURCE_DIR / "samples")


def sample_answers(name: str) -> dict:
    return orvane_parser.parse((SOURCE_DIR / "samples" / f"{name}.txt").read_bytes()).to_dict()


def record(folder: Path, face: str, read: Counter, total: Counter) -> None:
    path = folder / "decode-table.json"
    table = json.loads(path.read_text()) if path.exists() else {}
    table[face] = {kind: [read[kind], total[kind]] for kind in photo_variants.KINDS}
    path.write_text(json.dumps(table, indent=1) + "\n")


def check_face(face: str, photos, documents_of) -> None:
    folder, manifest = photos
    read, total, wrong = Counter(), Counter(), []
    for photo, documents in zip(manifest, documents_of(folder, manifest)):
        total[photo["kind"]] += 1
        if documents:
            read[photo["kind"]] += 1
        # A photo gives the sample's answers or nothing: never other answers.
        if documents not in ([], [sample_answers(photo["sample"])]):
            wrong.append(photo["file"])
    record(folder, face, read, total)
    assert wrong == []
    assert read["clean"] == total["clean"] == len(photo_variants.barcode_samples(SOURCE_DIR / "samples")) + 2


def test_the_photos_cover_every_barcode_sample(photos):
    _, manifest = photos
    names = {photo["sample"] for photo in manifest}
    assert names == {path.stem for path in photo_variants.barcode_samples(SOURCE_DIR / "samples")}
    assert {"aamva", "cac", "hc", "national"} == {name.split("-")[0] for name in names}
    assert {photo["symbology"] for photo in manifest if photo["sample"] == "cac-v1"} == {"PDF417", "Code39"}


def test_python_reads_what_the_text_gives(photos):
    def documents_of(folder, manifest):
        for photo in manifest:
            yield [document.to_dict() for document in orvane_parser.parse_image(folder / photo["file"])]

    check_face("python", photos, documents_of)


def test_the_tool_reads_what_the_text_gives(photos):
    if TOOL is None or b"--image" not in subprocess.run([TOOL, "--help"], capture_output=True, check=False).stdout:
        pytest.skip("orvane-parse is not set or was built without zxing-cpp")

    def documents_of(folder, manifest):
        run = subprocess.run([TOOL, "--image", *(photo["file"] for photo in manifest)], cwd=folder,
                             capture_output=True, check=False)
        assert run.returncode in (0, 1), run.stderr.decode()
        by_file: dict[str, list] = {photo["file"]: [] for photo in manifest}
        for line in run.stdout.decode("ascii").splitlines():
            result = json.loads(line)
            name = result.pop("input")
            result.pop("barcode")
            if result["status"] == 0:
                by_file[name].append(result)
        return [by_file[photo["file"]] for photo in manifest]

    check_face("cli", photos, documents_of)
