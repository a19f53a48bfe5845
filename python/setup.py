"""Builds the extension module from the library's own sources, so that
``pip install ./python --no-build-isolation`` needs a compiler and Python's
headers but neither CMake nor an installed library. Run from the source tree:
the library's sources are read from beside this folder."""

import os
import re
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent


def library_version() -> str:
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    match = re.search(r"project\(orvane_parser VERSION (\d+\.\d+\.\d+)", text)
    if match is None:
        raise SystemExit("setup.py: no project version in ../CMakeLists.txt; build from the source tree")
    return match.group(1)


def relative(path: Path) -> str:
    # setuptools takes only paths relative to this folder.
    return os.path.relpath(path, HERE)


def library_sources() -> list[str]:
    sources = sorted(p for p in (ROOT / "src").rglob("*.cpp") if p.name != "jni.cpp")
    if not sources:
        raise SystemExit("setup.py: the library's sources are not in ../src; build from the source tree")
    return [relative(p) for p in sources]


class ParallelBuildExt(build_ext):
    """Compiles the library's sixty-odd sources on every core, not one after another,
    with their objects inside the build folder."""

    def build_extensions(self) -> None:
        object_filenames = self.compiler.object_filenames

        def objects_inside(sources, *args, **kwargs):
            # ../src/x.cpp would give build/temp.../../src/x.o, outside the folder made for it.
            return object_filenames([re.sub(r"^(\.\./)+", "", source) for source in sources], *args, **kwargs)

        self.compiler.object_filenames = objects_inside
        compile_one = self.compiler.compile
        jobs = int(self.parallel) if self.parallel else (os.cpu_count() or 1)

        def compile_all(sources, *args, **kwargs):
            with ThreadPoolExecutor(max_workers=jobs) as pool:
                batches = list(pool.map(lambda source: compile_one([source], *args, **kwargs), sources))
            return [obj for batch in batches for obj in batch]

        self.compiler.compile = compile_all
        super().build_extensions()


native = Extension(
    "orvane_parser._native",
    sources=[relative(HERE / "ext" / name) for name in ("native.cpp", "result_reader.cpp")] + library_sources(),
    include_dirs=[relative(ROOT / "include"), relative(ROOT / "src")],
    language="c++",
    extra_compile_args=["-std=c++20", "-fno-exceptions", "-fno-rtti", "-fvisibility=hidden",
                        "-fvisibility-inlines-hidden"],
    # Only the module's entry point leaves it: the library inside stays private to it.
    extra_link_args=[f"-Wl,--version-script={HERE / 'ext' / 'native.map'}", "-Wl,--exclude-libs,ALL"],
    depends=[relative(HERE / "ext" / name) for name in ("native.map", "python_api.h", "result_reader.h")],
    py_limited_api=True,
)

setup(
    version=library_version(),
    ext_modules=[native],
    cmdclass={"build_ext": ParallelBuildExt},
    options={"bdist_wheel": {"py_limited_api": "cp310"}},
)
