#!/usr/bin/env bash
# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# The structure of PDF documents beside qpdf, pdfunite, mutool, pdftk and pdfseparate. Outputs are in memory, since Quirn
# waits for the disk and the others don't; the last comparison shows what that costs.
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
quirn=${QUIRN:?run ./dev bench pdf}
inputs=$here/../build/bench/pdf
on_disk=$(mktemp -d -p "$here/../build")
in_memory=$(mktemp -d -p /dev/shm)
trap 'rm -rf -- "$on_disk" "$in_memory"' EXIT
export QUIRN_BENCH_FOLDER=$in_memory

make_inputs() {
  [[ ! -e $inputs/complete ]] || return 0
  mkdir -p "$inputs"
  for photo in 1 2 3 4; do
    convert -seed "$photo" -size 4000x3000 plasma:fractal -attenuate 0.3 +noise gaussian -quality 87 \
      "$inputs/photo-$photo.jpg"
  done
  "$here/pdf_inputs.py" "$inputs" "$inputs"/photo-*.jpg
  qpdf --encrypt x x 256 -- "$inputs/long.pdf" "$inputs/long-locked.pdf"
  qpdf --encrypt x x 256 -- "$inputs/photos.pdf" "$inputs/photos-locked.pdf"
  touch "$inputs/complete"
}

make_inputs
run=("$quirn" run --quiet --out '{fresh}')
long=$inputs/long.pdf
photos=$inputs/photos.pdf
parts=("$inputs"/part-*.pdf)

"$here/side_by_side.py" 'merge 20 documents of 5,428 pages' \
  -- "${run[@]}" pdf.merge "${parts[@]}" \
  -- qpdf 2 qpdf --empty --pages "${parts[@]}" '\--' '{fresh}/out.pdf' \
  -- pdfunite 1 pdfunite "${parts[@]}" '{fresh}/out.pdf' \
  -- mutool 1 mutool merge -o '{fresh}/out.pdf' "${parts[@]}" \
  -- pdftk 1 pdftk "${parts[@]}" cat output '{fresh}/out.pdf'
"$here/side_by_side.py" --rounds 3 'split 2,000 pages, one file each' \
  -- "${run[@]}" pdf.split "$long" \
  -- qpdf 1.5 qpdf --split-pages "$long" '{fresh}/out.pdf' \
  -- pdftk 1 pdftk "$long" burst output '{fresh}/out-%04d.pdf'
"$here/side_by_side.py" 'pages 1000 to 1099 of 2,000' \
  -- "${run[@]}" pdf.split --set mode=ranges --set rangeText=1000-1099 "$long" \
  -- mutool 1 mutool merge -o '{fresh}/out.pdf' "$long" 1000-1099 \
  -- qpdf 10 qpdf --empty --pages "$long" 1000-1099 '\--' '{fresh}/out.pdf'
"$here/side_by_side.py" --rounds 3 'encrypt 60 photos' \
  -- "${run[@]}" pdf.encrypt --set password=x "$photos" \
  -- qpdf 4 qpdf --encrypt x x 256 '\--' "$photos" '{fresh}/out.pdf' \
  -- mutool 1 mutool clean -E aes-256 -U x -O x "$photos" '{fresh}/out.pdf'
for name in long photos; do
  "$here/side_by_side.py" --rounds 3 "unlock $name.pdf" \
    -- "${run[@]}" pdf.unlock --set password=x "$inputs/$name-locked.pdf" \
    -- mutool 1 mutool clean -D -p x "$inputs/$name-locked.pdf" '{fresh}/out.pdf' \
    -- qpdf 1 qpdf --decrypt --password=x "$inputs/$name-locked.pdf" '{fresh}/out.pdf'
done
# Four different photos: what is equal would be packed once here.
qpdf --empty --pages "$photos" 1-4 -- "$in_memory/four.pdf"
gs=(gs -q -dBATCH -dNOPAUSE -sDEVICE=pdfwrite '-sOutputFile={fresh}/out.pdf')
"$here/side_by_side.py" --rounds 3 'compress four photos of 12 megapixels' \
  -- "${run[@]}" pdf.compress "$in_memory/four.pdf" \
  -- gs-ebook 3 "${gs[@]}" -dPDFSETTINGS=/ebook "$in_memory/four.pdf" \
  -- gs-screen 3 "${gs[@]}" -dPDFSETTINGS=/screen "$in_memory/four.pdf"
"$here/side_by_side.py" --rounds 3 'compress 2,000 pages of text' \
  -- "${run[@]}" pdf.compress "$long" \
  -- gs-screen 3 "${gs[@]}" -dPDFSETTINGS=/screen "$long" \
  -- qpdf 1 qpdf --object-streams=generate --recompress-flate --compression-level=9 "$long" '{fresh}/out.pdf'
QUIRN_BENCH_FOLDER=$on_disk "$here/side_by_side.py" --rounds 3 'split 2,000 pages, on the disk' \
  -- "${run[@]}" pdf.split "$long" \
  -- qpdf 1 qpdf --split-pages "$long" '{fresh}/out.pdf' \
  -- pdfseparate 15 pdfseparate "$long" '{fresh}/out-%d.pdf'
