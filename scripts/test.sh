#!/usr/bin/env bash
# Builds the debug preset and runs every test through ctest.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake --preset debug >/dev/null
cmake --build --preset debug
ctest --preset debug -j "$(nproc)"
