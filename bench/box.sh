#!/usr/bin/env bash
# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# What the box costs: 1,000 small files through workers beside the same in process, what a warm and a cold worker add
# to a file, and start-up.
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
quirn=${QUIRN:?run ./dev bench box}
both_ways=$(dirname -- "$quirn")/both_ways
inputs=$here/../build/bench/box

make_inputs() {
  [[ ! -e $inputs/complete ]] || return 0
  mkdir -p "$inputs/small"
  python3 - "$inputs/small" <<'PYTHON'
import os, pathlib, random, sys
random.seed(1)
for number in range(1_000):
    size = int(random.expovariate(1 / 37_000)) + 100
    (pathlib.Path(sys.argv[1]) / f"{number:04}.bin").write_bytes(os.urandom(size))
PYTHON
  touch "$inputs/complete"
}

# run_batch FOLDER LABEL: with the outputs in new folders there.
run_batch() {
  QUIRN_BENCH_FOLDER=$1 "$here/side_by_side.py" --rounds 15 "$2" \
    -- "$both_ways" boxed "$quirn" '{fresh}' "$inputs/small"/* \
    -- 'in process' 0.9 "$both_ways" here "$quirn" '{fresh}' "$inputs/small"/*
}

make_inputs
fresh=$(mktemp -d -p /dev/shm)
trap 'rm -rf -- "$fresh"' EXIT
run_batch "$inputs" '1,000 small files through workers'
run_batch "$fresh" 'the same, outputs in memory'

printf '\none file at a time\n'
"$both_ways" files "$quirn" "$fresh" "$inputs/small"/00*

"$here/side_by_side.py" --rounds 20 'start-up: --version, wanted under 10 ms' -- "$quirn" --version
