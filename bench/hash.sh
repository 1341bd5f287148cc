#!/usr/bin/env bash
# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Hashing beside sha256sum and openssl: one large file, 1 GiB in many, 5,000 small ones; and start-up.
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
quirn=${QUIRN:?run ./dev bench hash}
inputs=$here/../build/bench/hash
on_disk=$(mktemp -d -p "$here/../build")
in_memory=$(mktemp -d -p /dev/shm)
trap 'rm -rf -- "$on_disk" "$in_memory"' EXIT

make_inputs() {
  [[ ! -e $inputs/complete ]] || return 0
  mkdir -p "$inputs"
  python3 - "$inputs" <<'PYTHON'
import os, pathlib, random, sys
root = pathlib.Path(sys.argv[1])
random.seed(1)
def write(folder, sizes):
    (root / folder).mkdir(exist_ok=True)
    for number, size in enumerate(sizes):
        (root / folder / f"{number:04}.bin").write_bytes(os.urandom(size))
write("large", [512 << 20])
sizes = [min(int(random.paretovariate(1.1) * 60_000), 150 << 20) for _ in range(2_121)]
scale = (1 << 30) / sum(sizes)
write("many", [int(size * scale) for size in sizes])
write("small", [int(random.expovariate(1 / 37_000)) + 100 for _ in range(5_000)])
PYTHON
  touch "$inputs/complete"
}

# The others write no files; outputs in memory show the work itself, those on the disk what a person waits for.
compare() {
  local label=$1 folder=$2 outputs=$3 sha256sum=$4 openssl=$5
  QUIRN_BENCH_FOLDER=$outputs "$here/side_by_side.py" "$label" \
    -- "$quirn" run --quiet text.hash-files --out '{fresh}' "$inputs/$folder"/* \
    -- sha256sum "$sha256sum" sha256sum "$inputs/$folder"/* \
    -- 'openssl dgst' "$openssl" openssl dgst -sha256 "$inputs/$folder"/*
}

make_inputs
compare 'one file of 512 MiB' large "$on_disk" 2 1
compare '1 GiB in 2,121 files, outputs on the disk' many "$on_disk" 3.5 1.8
compare '1 GiB in 2,121 files, outputs in memory' many "$in_memory" 3.5 1.8
compare '5,000 small files, outputs on the disk' small "$on_disk" 3 1
compare '5,000 small files, outputs in memory' small "$in_memory" 3 1
"$here/side_by_side.py" --rounds 20 'start-up: --version' -- "$quirn" --version -- 'sh -c :' 0.5 sh -c :
"$here/side_by_side.py" --rounds 20 'start-up: list' -- "$quirn" list -- 'sh -c :' 0.5 sh -c :
