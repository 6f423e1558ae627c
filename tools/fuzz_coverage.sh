#!/usr/bin/env bash
# Prints, for every reader of files, how many of its lines the corpus of its fuzz targets reaches.
#   tools/fuzz_coverage.sh            the table
#   tools/fuzz_coverage.sh --missed   the lines that are not reached, too
set -euo pipefail
cd "$(dirname "$0")/.."
folder=$PWD/build/coverage

# Reader | fuzz targets | source files, or FILE:WORDS where only the functions with one of these words in
# their names read.
readers="
archive directory | archive archive_writer | data/archive_directory.cpp
archive members | archive archive_writer | data/archive_segments.cpp data/archive_staging.cpp
archive | archive archive_writer | data/archive.cpp:Open|Close|Read|Write|Remove|Begin|Commit|Rollback|Stage|Undo|Mark|InGroup|MayOverwrite|PlaceMember
archive journal | archive_journal archive_writer | data/archive_journal.cpp
console scripts | settings static_objects entity_scripts | data/script.cpp
settings scripts | settings | data/level_settings.cpp data/level_settings_commands.cpp
static objects | static_objects | objects/static_object_script.cpp
entity scripts | entity_scripts | objects/entity_scripts.cpp objects/entity_records.cpp objects/entity_fields.cpp objects/entity_fields.h
mod configuration (.cfg) | mod_config | data/mod_config_parser.cpp:ModConfigParser|ApplyModConfigText|Append|AddOnce|Joined
texture set (index.dat) | texture_set | data/texture_set.cpp:Read|Load|ClearTextureSet|PathInFolder
object list (.lst) | object_list | objects/object_catalogue.cpp:ParseObjectList|AddCategory|AddEntry|IsPassedOver|CategoryOf|FindCatalogueEntry
BMP | bmp | data/bmp.cpp:Decode|Dib|Read|Convert|Find|Row|Channel|Default data/bmp_rle.cpp
DDS | dds | data/dds.cpp:Decode|Block|Expand|Mix|Format|Stated|FourCc
TGA | tga | data/image.cpp:Tga|CopyTurned|SwapRedAndBlue
standard mesh (.sm) | standard_mesh | objects/mesh_reader.cpp:MeshFile|Finite|Position|VerticesOf|Indices|Face|Collision|Material|FirstLevel|ReadStandardMesh
tree mesh (.tm) | tree_mesh | objects/mesh_reader.cpp:MeshFile|Finite|Position|VerticesOf|Indices|Face|ReadCollision|Texture|Tree|SurfaceOf
shader file (.rs) | shader_file | objects/shader_file.cpp
height map | heightmap | terrain/terrain.cpp:HeightBuffer|HeightsFromBuffer|HeightsInBuffer|SaveHeightmap|FileOffset|PaintMiniMap
exchanged height map | height_exchange | terrain/height_exchange.cpp
material map | material_map | terrain/material_map.cpp:Load|Save|ForEachDataCell|StoredMaterial|MaterialMap
shadow tracer's results | shadow_results | terrain/shadow_work.cpp:Take|Scratch terrain/level_textures.cpp:ConvertTga
"

build_and_run() {
  cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_FLAGS="-O1 -fprofile-instr-generate -fcoverage-mapping" >/dev/null
  cmake --build "$folder" --target test_fuzz >"$folder/build.log" || { tail -n 40 "$folder/build.log"; exit 1; }
  local corpus target
  for corpus in fuzz/corpus/*; do
    target=$(basename "$corpus")
    LLVM_PROFILE_FILE="$folder/$target.profraw" "$folder/bin/test_fuzz" \
      --gtest_filter="*/$target" >"$folder/$target.log" || { cat "$folder/$target.log"; exit 1; }
  done
}

# functions PROFILE FILE WORDS: "lines missed" of the functions of the file that have such a word.
count_lines() {
  llvm-cov report --show-functions "$folder/bin/test_fuzz" -instr-profile="$1" "$2" |
    awk -v words="$3" '$5 ~ /^[0-9]+$/ && $1 != "TOTAL" && $1 ~ words { lines += $5; missed += $6 }
                       END { print lines + 0, missed + 0 }'
}

show_missed() {
  llvm-cov show "$folder/bin/test_fuzz" -instr-profile="$1" "$2" | grep -E '^ +[0-9]+\| +0\|' |
    sed "s|^|    $2:|" || true
}

build_and_run
printf '%-26s %6s %8s %s\n' Reader Lines Reached ''
while IFS='|' read -r reader rest; do
  [ -n "$reader" ] || continue
  targets=${rest%%|*} files=${rest#*|}
  profiles=()
  for target in $targets; do profiles+=("$folder/$target.profraw"); done
  llvm-profdata merge -sparse "${profiles[@]}" -o "$folder/reader.profdata"
  lines=0 missed=0
  for file in $files; do
    words=.
    [[ $file == *:* ]] && words=${file#*:}
    read -r more none < <(count_lines "$folder/reader.profdata" "${file%%:*}" "$words")
    lines=$((lines + more)) missed=$((missed + none))
  done
  awk -v r="$reader" -v l="$lines" -v m="$missed" \
    'BEGIN { printf "%-26s %6d %7.1f%%%s\n", r, l, l ? 100 * (l - m) / l : 0, l && m <= l / 10 ? "" : "  below 90" }'
  if [ "${1:-}" = --missed ]; then
    for file in $files; do show_missed "$folder/reader.profdata" "${file%%:*}"; done
  fi
done <<<"$readers"
