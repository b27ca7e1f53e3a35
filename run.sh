#!/usr/bin/env bash
# Installs what is missing, builds Loxmere (Release) and starts it.
set -euo pipefail
cd "$(dirname "$0")"
source ./setup.sh
loxmere_install_missing
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release
cmake --build build/release --parallel "$(nproc)" --target loxmere
exec ./build/release/loxmere "$@"
