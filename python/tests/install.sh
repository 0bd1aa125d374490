#!/usr/bin/env bash
# Installs the build tree and uses the Python package as others would: beside the library, from where both were moved,
# and through pip, in an environment that has the system's packages.
# usage: install.sh CMAKE PYTHON BUILD_TREE SOURCE_TREE PYTHON_DIR
set -eu
cmake=$1 python=$2 build=$3 source=$4 packages=$5
work=$(mktemp -d "$build/python-install.XXXXXX")
trap 'rm -rf "$work"' EXIT
unset PYTHONPATH LD_LIBRARY_PATH

use() { # python: works out a result and finds the library in the moved tree
  (cd "$work" && "$1" -c '
import sys, kelvm
assert kelvm.power([3.0, 0.5], 2).tolist() == [9.0, 0.25]
assert "/moved/" in kelvm.version().path, kelvm.version().path
assert "arguments; kels" in kelvm.low.exp.__doc__
print("ok:", kelvm.__file__, kelvm.version().cpu)')
}

"$cmake" --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/moved"
echo "== beside the library"
PYTHONPATH=$work/moved/$packages use "$python"

echo "== pip"
mkdir -p "$work/tree/docs" "$work/tree/src"
cp -r "$source/python" "$work/tree"
cp "$source/docs/accuracy.md" "$work/tree/docs"
cp "$source/src/members.def" "$work/tree/src"
"$python" -m venv --system-site-packages "$work/venv"
PKG_CONFIG_PATH=$(find "$work/moved" -name pkgconfig)
export PKG_CONFIG_PATH
"$work/venv/bin/pip" install -q --no-index --no-build-isolation "$work/tree/python"
use "$work/venv/bin/python"
