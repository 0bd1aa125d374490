"""Builds the package against the library that is installed, which pkg-config finds (PKG_CONFIG_PATH for a prefix of its
own). CMakeLists.txt does the same against the library of the build tree."""
import pathlib
import shutil
import subprocess

import numpy
from setuptools import Extension, setup
from setuptools.command.build_py import build_py

TREE = pathlib.Path(__file__).resolve().parent.parent


def pkg_config(*what):
    found = subprocess.run(["pkg-config", *what, "kelvm"], capture_output=True, text=True)
    if found.returncode:
        raise SystemExit(f"kelvm's library has to be installed first: {found.stderr}")
    return found.stdout.split()


class BuildWithAccuracy(build_py):
    """Adds the page of measured errors, which the functions' documentation quotes."""

    def run(self):
        super().run()
        shutil.copy(TREE / "docs/accuracy.md", pathlib.Path(self.build_lib) / "kelvm")


libraries = [str(pathlib.Path(flag[2:]).resolve()) for flag in pkg_config("--libs-only-L")]
setup(
    cmdclass={"build_py": BuildWithAccuracy},
    ext_modules=[
        Extension(
            "kelvm._core", ["src/core.cpp"], depends=["src/instructions.hpp", "src/loops.hpp", "src/near.hpp"],
            include_dirs=["src", str(TREE / "src"), numpy.get_include()],
            libraries=["kelvm"], library_dirs=libraries, runtime_library_dirs=libraries,
            extra_compile_args=["-std=c++20", "-O2", "-msse4.1", *pkg_config("--cflags")])
    ])
