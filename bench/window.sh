#!/usr/bin/env bash
# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# From the start of the process to the first paint of the window, and the suggestions for 1,000 inputs,
# on a display in memory. Medians of nine, in milliseconds.
set -euo pipefail

quirn=${QUIRN:?run ./dev bench window}
program=$(dirname -- "$quirn")/first_paint
if [[ ! -x $program ]] || ! command -v Xvfb >/dev/null; then
  echo "window: left out, without Xvfb or the program that measures (./dev bench window builds it)"
  exit
fi

exec 3< <(exec Xvfb -displayfd 1 -screen 0 1920x1200x24 2>/dev/null)
server=$!
trap 'kill "$server"' EXIT
read -r display <&3

for _ in 1 2 3 4 5 6 7 8 9; do
  DISPLAY=:$display QT_QPA_PLATFORM=xcb "$program" "$(date +%s%N)" 2>/dev/null
done | python3 -c '
import statistics, sys
rows = [[float(word) for word in line.split()] for line in sys.stdin]
paint, suggestions = (statistics.median(column) for column in zip(*rows))
print(f"window: first paint {paint:.0f} ms (target 300), suggestions for 1,000 inputs {suggestions:.2f} ms (target 16)")'
