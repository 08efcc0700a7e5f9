#!/bin/sh
# SPDX-License-Identifier: MIT
# Renders the program's icons from resources/sources/Vextral.svg. The results are committed, so only who changes the
# drawing needs this.
# Needs rsvg-convert (librsvg2-bin) and convert (imagemagick).
set -eu

cd "$(dirname "$0")"
resources=../../resources

for size in 16 24 32 48 64 128 256; do
    rsvg-convert --width $size --height $size --output $size.png $resources/sources/Vextral.svg
done
convert 16.png 24.png 32.png 48.png 64.png 256.png ../windows/VextralRemoteControl.ico
