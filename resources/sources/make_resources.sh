#!/bin/sh
# SPDX-License-Identifier: MIT
# Rebuilds the pictures and the font of the program from the sources in this directory. The results are committed, so
# only who changes a source needs this. Needs rsvg-convert (librsvg2-bin) and fontTools (python3-fonttools).
# The arrows are not built: the program reads images/arrow*.svg as they are.
set -eu

cd "$(dirname "$0")"
images=../images

python=python3
"$python" -c 'import fontTools' 2>/dev/null || python=/usr/bin/python3

# A window shows no more of its icon than this, and the start waits for reading it.
rsvg-convert --width 128 --height 128 --output "$images/Vextral.png" Vextral.svg
rsvg-convert --output "$images/logo.png" logo.svg
for icon in mapIco zoomInIco zoomOutIco; do
    rsvg-convert --output "$images/$icon.png" "$icon.svg"
    rsvg-convert --zoom 2 --output "$images/$icon@2x.png" "$icon.svg"
done
"$python" make_digital_font.py "$images/digital.ttf"
