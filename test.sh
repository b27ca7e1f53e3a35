#!/usr/bin/env bash
# Installs what is missing, builds Loxmere and its tests (Debug, warnings as
# errors) and runs the whole suite. Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")"
source ./setup.sh
loxmere_install_missing
cmake -S . -B build/test -DCMAKE_BUILD_TYPE=Debug -DVN_WERROR=ON
cmake --build build/test --parallel "$(nproc)"
cd build/test
ctest --output-on-failure --timeout 600 "$@"
