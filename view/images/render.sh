#!/usr/bin/env bash
# Renders the icons: 150 px for 75 points, white with alpha; the diagram tints them.
# Needs rsvg-convert (package librsvg2-bin). The pictures are committed, builds do not need it.
set -euo pipefail
cd "$(dirname "$0")"
for icon in INPUT REC INV LOAD; do
  rsvg-convert --width 150 --height 150 "$icon.svg" --output "$icon.png"
done
