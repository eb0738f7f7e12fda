#!/usr/bin/env bash
# Builds the release preset and runs the main job: `brevant demo` on the bundled samples.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake --preset default -DBV_BUILD_TESTS=OFF >/dev/null
cmake --build --preset default --target brevant
exec build/release/tools/brevant/brevant demo "$@"
