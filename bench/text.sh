#!/usr/bin/env bash
# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Text tools beside the programs that do one of their jobs each.
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
quirn=${QUIRN:?run ./dev bench text}
inputs=$here/../build/bench/text
export QUIRN_BENCH_FOLDER=$inputs

make_inputs() {
  [[ ! -e $inputs/complete ]] || return 0
  mkdir -p "$inputs"
  python3 - "$inputs" <<'PYTHON'
import json, pathlib, random, sys
root = pathlib.Path(sys.argv[1])
random.seed(1)
def record(number):
    return {"id": number, "name": f"user {number}", "tags": ["a", "b", "c"], "score": random.random() * 100,
            "active": number % 2 == 0, "nested": {"x": [1, 2, 3, {"y": None}], "s": "line\\n \"quoted\" é"}}
with open(root / "large.json", "w") as file:
    size = file.write("[")
    number = 0
    while size < 100_000_000:
        size += file.write(("," if number else "") + json.dumps(record(number), ensure_ascii=False))
        number += 1
    file.write("]")
with open(root / "large.xml", "w") as file:
    size = file.write("<catalog>")
    while size < 100_000_000:
        size += file.write(f'<book id="{number}"><title>Title &amp; {number}</title><price>{number}.5</price></book>')
        number += 1
    file.write("</catalog>")
words = "the quick brown fox jumps over the lazy dog café & <tag> 100% ".split(" ")
(root / "prose.txt").write_text(" ".join(random.choices(words, k=2_000_000)))
PYTHON
  touch "$inputs/complete"
}

make_inputs
"$here/side_by_side.py" --rounds 3 'JSON, 100 MB, pretty' -- "$quirn" tool dev.json "$inputs/large.json" \
  -- jq 20 jq . "$inputs/large.json"
"$here/side_by_side.py" --rounds 3 'JSON, 100 MB, minify' -- "$quirn" tool dev.json --set mode=Minify \
  "$inputs/large.json" -- jq 20 jq -c . "$inputs/large.json"
"$here/side_by_side.py" --rounds 3 'XML, 100 MB, pretty' -- "$quirn" tool dev.xml "$inputs/large.xml" \
  -- xmllint 5 xmllint --huge --format "$inputs/large.xml"
"$here/side_by_side.py" 'Base64 of 10 MB of prose' -- "$quirn" tool dev.base64 "$inputs/prose.txt" \
  -- base64 1 base64 "$inputs/prose.txt"
"$here/side_by_side.py" 'cron' \
  -- "$quirn" tool time.cron --sample -- 'sh -c :' 0.2 sh -c :
"$here/side_by_side.py" --rounds 20 'start to end of a small tool' -- "$quirn" tool dev.base64 --sample \
  -- 'sh -c :' 0.2 sh -c :
