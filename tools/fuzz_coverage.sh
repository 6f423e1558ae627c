#!/usr/bin/env bash
# Prints, for every reader of files, how many of its lines the corpus of its fuzz targets reaches.
#   tools/fuzz_coverage.sh            the table
#   tools/fuzz_coverage.sh --missed   the lines that are not reached, too
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh
need "${build_packages[@]}" "${test_packages[@]}" "${sanitizer_packages[@]}"
folder=$PWD/build/coverage

# Reader | fuzz targets | source files, or FILE:WORDS where only the functions with one of these words in
# their names read.
readers="
archive directory | archive archive_writer | data/archive_directory.cpp
archive members | archive archive_writer | data/archive_segments.cpp data/archive_staging.cpp
archive journal | archive_journal archive_writer | data/archive_journal.cpp
console scripts | settings static_objects entity_scripts shader_file | data/script.cpp:Line|Parse|ReadScript|RewriteScript|Whole
settings scripts | settings | data/level_settings.cpp data/level_settings_commands.cpp:Line|Read|Write|Find|Parse|Format|Integer|Float|Vector|Path|Bytes|Switch|Names|Kit|Team|Skin
static objects | static_objects | objects/static_object_script.cpp
entity scripts | entity_scripts | objects/entity_scripts.cpp objects/entity_records.cpp objects/entity_fields.cpp objects/entity_fields.h
mod configuration (.cfg) | mod_config | data/mod_config_parser.cpp:ModConfigParser|ApplyModConfigText|Append|AddOnce|Joined
texture set (index.dat) | texture_set | data/texture_set.cpp:Read|Load|ClearTextureSet|PathInFolder
object list (.lst) | object_list | objects/object_catalogue.cpp:ParseObjectList|AddCategory|AddEntry|IsPassedOver|CategoryOf|FindCatalogueEntry
BMP | bmp | data/bmp.cpp:Decode|Dib|Read|Convert|Find|Row|Channel|Default data/bmp_rle.cpp
DDS | dds | data/dds.cpp:Decode|Block|Expand|Mix|Format|Stated|FourCc
TGA | tga | data/image.cpp:DecodeTga|EncodeTga|CopyTurned|SwapRedAndBlue
standard mesh (.sm) | standard_mesh | objects/mesh_reader.cpp:MeshFile|Finite|Position|VerticesOf|ReadIndices|ReadFace|ReadCollision|ReadSized|Material|FirstLevel|ReadStandardMesh
tree mesh (.tm) | tree_mesh | objects/mesh_reader.cpp:MeshFile|Finite|Position|VerticesOf|ReadIndices|ReadFace|ReadCollision|ReadTexture|Tree|SurfaceOf
shader file (.rs) | shader_file | objects/shader_file.cpp
height map | heightmap | terrain/terrain.cpp:HeightBuffer|HeightsFromBuffer|HeightsInBuffer|SaveHeightmap|PaintMiniMap terrain/height_image.cpp
exchanged height map | height_exchange | terrain/height_exchange.cpp:Import|Exchange|Decode|Encode|Sample
material map | material_map | terrain/material_map.cpp:Load|Save|ForEachDataCell|StoredMaterial|MaterialMap
recovery file | recovery | data/recovery_file.cpp:Parse|ReadRecovery|Checksum|AddMember|InfoText
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

# lines_of PROFILE FILE WORDS: "number reached text" of each line that is code, in the functions of the file that
# have such a word in their own names (their mangled ones hold those of their parameters too). A line of a
# template is reached when one of its instances reaches it. The compiler may have been given absolute paths or
# ones that start in the build folder.
lines_of() {
  local names="ZNK?2mw(12_GLOBAL__N_1)?[0-9]+[A-Za-z0-9]*($3)"
  llvm-cov show "$folder/bin/test_fuzz" -instr-profile="$1" -name-regex="$names" \
    -path-equivalence="$folder/../..,$PWD" "$PWD/$2" |
    awk -F'|' '/^ *[0-9]+\| *[0-9.]+[kMGT]?\|/ {
                 n = $1 + 0; if ($2 + 0 > 0) reached[n] = 1; text[n] = substr($0, index($0, $3)) }
               END { for (n in text) print n, reached[n] + 0, text[n] }' | sort -n
}

build_and_run
printf '%-26s %6s %8s %s\n' Reader Lines Reached ''
while IFS='|' read -r reader rest; do
  [ -n "$reader" ] || continue
  targets=${rest%%|*} files=${rest#*|}
  profiles=()
  for target in $targets; do profiles+=("$folder/$target.profraw"); done
  llvm-profdata merge -sparse "${profiles[@]}" -o "$folder/reader.profdata"
  : >"$folder/reader.lines"
  for file in $files; do
    words=.
    [[ $file == *:* ]] && words=${file#*:}
    lines_of "$folder/reader.profdata" "${file%%:*}" "$words" | sed "s|^|${file%%:*}:|" >>"$folder/reader.lines"
  done
  awk -v reader="$reader" '{ lines++; reached += $2 }
    END { share = lines ? 100 * reached / lines : 0
          printf "%-26s %6d %7.1f%%%s\n", reader, lines, share, share < 90 ? "  below 90" : "" }' "$folder/reader.lines"
  if [ "${1:-}" = --missed ]; then awk '$2 == 0 { $2 = ""; print "    " $0 }' "$folder/reader.lines"; fi
done <<<"$readers"
