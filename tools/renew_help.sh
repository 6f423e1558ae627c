#!/usr/bin/env bash
# Takes the pictures of the help pages anew from the running editor. A picture that looks as before keeps
# its file.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh

colours=128           # of a picture in its file
alike=0.004           # part of the pixels that may differ in a picture that stays
need "${build_packages[@]}" "${display_packages[@]}"
build dev help_tour media sample mw_amm mw_smg

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/pictures"
follow() {
  tools/help_tour/run_tour.sh build/dev "$1" "$scratch/$2" "$scratch/pictures" || {
    cp "$scratch/pictures/failure.png" build/ 2>/dev/null && echo "What it looked like: build/failure.png" >&2
    echo "The pictures stay as they were." >&2
    exit 1
  }
}
follow help/tutorial.htm tutorial
follow tools/help_tour/guide_tour.xml guide

# looks_alike OLD NEW: same size, and hardly a pixel has another colour.
looks_alike() {
  [ -f "$1" ] && [ "$(identify -format '%wx%h' "$1")" = "$(identify -format '%wx%h' "$2")" ] || return
  local differing total
  differing=$(compare -metric AE -fuzz 12% "$1" "$2" null: 2>&1 || true)
  total=$(identify -format '%[fx:w*h]' "$2")
  awk -v d="$differing" -v t="$total" -v a="$alike" 'BEGIN { exit !(d / t <= a) }'
}

renewed=0
for picture in "$scratch"/pictures/*.png; do
  name=$(basename "$picture")
  mogrify -strip +dither -colors "$colours" -define png:compression-level=9 "$picture"
  looks_alike "help/pictures/$name" "$picture" && continue
  cp "$picture" help/pictures/
  renewed=$((renewed + 1))
done
for picture in help/pictures/*.png; do
  [ -f "$scratch/pictures/$(basename "$picture")" ] || rm "$picture"
done
echo "$renewed pictures are new; $(ls help/pictures | wc -l) pictures, $(du -sk help/pictures | cut -f1) KiB."
