#!/usr/bin/env bash
# Retakes docs/images/gallery.png: builds brevant-gallery (debug preset) and draws its window under a
# virtual X server (Xvfb), so no display is needed.
# Usage: scripts/gallery-screenshot.sh [OUTPUT.png] [PAGE]
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
output=${1:-docs/images/gallery.png}
cmake --preset debug >/dev/null
cmake --build --preset debug --target brevant-gallery
mkdir -p "$(dirname "$output")"
QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x800x24" \
  build/debug/examples/gallery/brevant-gallery ${2:+--page "$2"} --screenshot "$output"
echo "wrote $output"
