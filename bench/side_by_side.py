#!/usr/bin/env python3
# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

"""Times Quirn beside the programs that people use today, in turn, and prints ratios.

    side_by_side.py [--rounds N] LABEL -- QUIRN ARGS... -- [NAME TARGET] OTHER ARGS... [-- ...]

Each command is a whole process; a word "--" of its own is written "\\--" here. {fresh} in a command is a new folder each time, in QUIRN_BENCH_FOLDER. They are left for
the calling script to remove at its end: for minutes after many files were deleted, ext4 makes new ones ten times slower.
A ratio of 2.0 means that Quirn takes half the time; TARGET is the ratio that it should reach.
"""

import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time


def split(words):
    groups = [[]]
    for word in words:
        if word == "--":
            groups.append([])
        else:
            groups[-1].append("--" if word == "\\--" else word)
    return groups


def run(command, fresh_root):
    """Seconds of wall time, processor seconds and peak memory in MiB."""
    if any("{fresh}" in word for word in command):
        fresh = tempfile.mkdtemp(dir=fresh_root)
        command = [word.replace("{fresh}", fresh) for word in command]
    os.sync()
    began = time.perf_counter()
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.perf_counter() - began
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{command[0]} ended with {process.returncode}")
    return wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--rounds", type=int, default=5)
    options, words = parser.parse_known_args()
    (label, *_), quirn, *others = split(words)
    commands = [("quirn", None, quirn)] + [(other[0], float(other[1]), other[2:]) for other in others]
    present = [entry for entry in commands if shutil.which(entry[2][0])]
    figures = {name: [] for name, _, _ in present}
    fresh_root = os.environ.get("QUIRN_BENCH_FOLDER")
    for turn in range(options.rounds + 1):  # the first fills the caches and is not counted
        for name, _, command in present:
            figure = run(command, fresh_root)
            if turn > 0:
                figures[name].append(figure)
    print(f"\n{label}")
    for name, target, _ in present:
        wall, cpu, memory = (statistics.median(column) for column in zip(*figures[name]))
        line = f"  {name:<24} {wall * 1000:9.1f} ms  {cpu * 1000:9.1f} ms cpu  {memory:6.1f} MiB"
        if target is not None:
            ratio = statistics.median(theirs[0] / ours[0] for theirs, ours in zip(figures[name], figures["quirn"]))
            line += f"  quirn is {ratio:5.2f}x as fast, wanted {target:.1f}x"
        print(line)


main()
