"""Builds the C++ library with CMake and puts it, with its data, into the package.

The library finds its data by its own path, so the package holds native/lib/libtessarel.so, native/lib/BIPs.mix and
native/fluids/. The sources are those of the repository around this directory.
"""

import csv
import os
import pathlib
import shutil
import subprocess

from setuptools import setup
from setuptools.command.build_py import build_py
from setuptools.dist import Distribution

ROOT = pathlib.Path(__file__).resolve().parent.parent
# A build directory that is configured already is taken as it is.
BUILD = ROOT / os.environ.get("TESSAREL_PYTHON_BUILD", "build-python")


class BuildLibrary(build_py):
    """The package's modules, and beside them the library, its fluids and the table of substances."""

    def run(self):
        super().run()
        package = pathlib.Path(self.build_lib) / "tessarel"
        self._build_library()
        native = package / "native"
        shutil.rmtree(native, ignore_errors=True)
        (native / "lib").mkdir(parents=True)
        shutil.copy(BUILD / "lib" / "libtessarel.so", native / "lib" / "libtessarel.so")
        shutil.copy(BUILD / "lib" / "BIPs.mix", native / "lib" / "BIPs.mix")
        shutil.copytree(BUILD / "fluids", native / "fluids")
        self._write_substances(package / "substances.csv")

    @staticmethod
    def _build_library():
        if not (BUILD / "CMakeCache.txt").exists():
            subprocess.check_call(
                [
                    "cmake",
                    "-S",
                    str(ROOT),
                    "-B",
                    str(BUILD),
                    "-DCMAKE_BUILD_TYPE=Release",
                    "-DTESSAREL_TESTS=OFF",
                    "-DTESSAREL_EXAMPLES=OFF",
                ]
            )
        subprocess.check_call(
            [
                "cmake",
                "--build",
                str(BUILD),
                "--parallel",
                str(os.cpu_count() or 1),
                "--target",
                "tessarel",
                "tessarel_data",
            ]
        )

    @staticmethod
    def _write_substances(path):
        """Name, formula and CAS number of the fluids that ship, from the table that their records are made of."""
        with open(ROOT / "data" / "sources" / "fluids.csv", newline="", encoding="utf-8") as source:
            rows = [(row["name"], row["formula"], row["cas"]) for row in csv.DictReader(source)]
        with open(path, "w", newline="", encoding="utf-8") as target:
            csv.writer(target).writerows([("name", "formula", "cas"), *rows])


class BinaryDistribution(Distribution):
    """The package holds a shared library, so its wheel is one for this platform."""

    def has_ext_modules(self):
        return True


setup(cmdclass={"build_py": BuildLibrary}, distclass=BinaryDistribution)
