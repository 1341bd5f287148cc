#!/usr/bin/env bash
# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Archives beside zip, unzip, 7z, bsdtar, tar, gzip, pigz and the tools of libdeflate and ISA-L: a tree of 5,000 files
# and 186 MB, a log of 200 MB, and an archive of 100,000 entries. Sizes of what was made come at the end.
# shellcheck disable=SC2016  # the inner shell is given the folder as $0
set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
quirn=${QUIRN:?run ./dev bench archive}
inputs=$here/../build/bench/archive
# On a disk, or in memory, where no file system has its say.
scratch=$(mktemp -d -p "${SCRATCH:-$here/../build}")
trap 'rm -rf -- "$scratch"' EXIT
rounds=${ROUNDS:-3}

make_inputs() {
  [[ ! -e $inputs/complete ]] || return 0
  mkdir -p "$inputs"
  python3 - "$inputs" <<'PYTHON'
import os, pathlib, random, sys, zipfile
root = pathlib.Path(sys.argv[1])
random.seed(3)
words = ["".join(random.choice("etaoinshrdlucmfw") for _ in range(random.randint(2, 9))) for _ in range(4000)]
def source(size):
    lines = []
    length = 0
    while length < size:
        line = "  " * random.randrange(5) + " ".join(random.choices(words, k=random.randint(1, 10))) + ";"
        lines.append(line)
        length += len(line) + 1
    return "\n".join(lines)[:size].encode()
for number in range(5_000):
    folder = root / "tree" / f"module{number % 120:03}" / f"part{number % 7}"
    folder.mkdir(parents=True, exist_ok=True)
    size = int(random.expovariate(1 / 37_000)) + 100
    # Half of the bytes are compressed already, as pictures and the like are.
    data = os.urandom(size) if random.random() < 0.35 else source(size)
    (folder / f"file{number:04}").write_bytes(data)
with open(root / "log.txt", "w") as log:
    time = 1_700_000_000
    while log.tell() < 200_000_000:
        for _ in range(10_000):
            time += random.randrange(3)
            log.write(f"{time} INFO [{random.choice(words)}] GET /{random.choice(words)}/{random.choice(words)} "
                      f"status={random.choice((200, 200, 200, 404, 500))} took={random.randrange(5000)}ms "
                      f"client=10.{random.randrange(4)}.{random.randrange(256)}.{random.randrange(256)}\n")
with zipfile.ZipFile(root / "many.zip", "w") as many:
    for number in range(100_000):
        many.writestr(f"folder{number % 300:03}/{random.choice(words)}{number}.txt", b"x" * (number % 50))
PYTHON
  (cd "$inputs" && zip -qr6 tree.zip tree && 7z a -bso0 -mx=1 -mem=AES256 -tzip -psecret secret.zip tree &&
    tar -czf tree.tar.gz tree && gzip -6k log.txt)
  touch "$inputs/complete"
}

compare() { QUIRN_BENCH_FOLDER=$scratch "$here/side_by_side.py" --rounds "$rounds" "$@"; }
run=("$quirn" run --quiet --out '{fresh}')

make_inputs
cd "$inputs"
compare 'create a ZIP of 5,000 files' -- "${run[@]}" archive.zip-create tree \
  -- 'zip -6' 5 zip -qr6 '{fresh}/a.zip' tree \
  -- '7z -mx1' 1.8 7z a -bso0 -tzip -mx=1 -mmt2 '{fresh}/a.zip' tree
compare 'extract it' -- "${run[@]}" archive.zip-extract tree.zip \
  -- '7z x' 1.6 7z x -bso0 '-o{fresh}' tree.zip \
  -- 'bsdtar -x' 1.6 bsdtar -xf tree.zip -C '{fresh}' \
  -- 'unzip' 1.6 unzip -q tree.zip -d '{fresh}'
compare 'create a ZIP with AES-256' -- "${run[@]}" archive.encrypt --set password=secret tree \
  -- '7z -mx5' 7 7z a -bso0 -tzip -mem=AES256 -psecret '{fresh}/a.zip' tree
compare 'extract a ZIP with AES-256' -- "${run[@]}" archive.zip-extract --set password=secret secret.zip \
  -- '7z x' 4 7z x -bso0 -psecret '-o{fresh}' secret.zip
compare 'create a .tar.gz of the tree' -- "${run[@]}" archive.tar-create --set gzip=true tree \
  -- 'tar -z' 2.7 tar -czf '{fresh}/a.tar.gz' tree \
  -- 'tar | pigz' 2.7 tar --use-compress-program='pigz -p2' -cf '{fresh}/a.tar.gz' tree
compare 'create a .tar of the tree' -- "${run[@]}" archive.tar-create tree -- tar 1 tar -cf '{fresh}/a.tar' tree
compare 'extract the .tar.gz' -- "${run[@]}" archive.tar-extract tree.tar.gz \
  -- 'tar -xz' 1 tar -xzf tree.tar.gz -C '{fresh}' -- 'bsdtar -x' 1 bsdtar -xf tree.tar.gz -C '{fresh}'
compare 'gzip a log of 200 MB' -- "${run[@]}" archive.gzip log.txt \
  -- 'gzip -6' 2.3 sh -c 'gzip -6c log.txt >"$0"/log.gz' '{fresh}' \
  -- 'pigz -p2' 1.8 sh -c 'pigz -p2 -c log.txt >"$0"/log.gz' '{fresh}' \
  -- 'libdeflate-gzip' 1 sh -c 'libdeflate-gzip -6 -c log.txt >"$0"/log.gz' '{fresh}'
compare 'gunzip it' -- "${run[@]}" archive.gzip log.txt.gz \
  -- 'gzip -d' 1.9 sh -c 'gzip -dc log.txt.gz >"$0"/log' '{fresh}' \
  -- 'libdeflate' 1 sh -c 'libdeflate-gunzip -c log.txt.gz >"$0"/log' '{fresh}' \
  -- 'igzip -d' 0.9 sh -c 'igzip -d -c log.txt.gz >"$0"/log' '{fresh}'
compare 'inspect a ZIP of 100,000 entries' -- "${run[@]}" archive.zip-inspect many.zip \
  -- 'unzip -l' 3 unzip -l many.zip -- '7z l' 3 7z l many.zip

printf '\nmade, in bytes\n'
cd "$scratch"
find . -type f \( -name '*.zip' -o -name '*.gz' -o -name '*.tar' \) -printf '%s %f\n' | sort -u -k2 -k1n | uniq -f1
