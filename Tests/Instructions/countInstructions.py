#!/usr/bin/env python3
"""Counts the instructions of fixed workloads and holds them against the counts on file.

Only what the program's own code does is counted, not the C library, whose functions vary with the processor.
Status 1 where a workload takes 3% more or less than on file, 77 where the counts on file are of no use here.
"""

import argparse
import json
import pathlib
import re
import subprocess
import sys
import tempfile

MARGIN = 0.03
SKIPPED = 77


class Unusable(Exception):
    """Why counts cannot be compared here."""


def counts_in(profile, program):
    """The workload's name and its instructions, of one of callgrind's files; none for one that has no name."""
    name = None
    total = 0
    names = {}
    is_own = False
    is_call = False
    for line in profile.splitlines():
        if line.startswith("desc: Trigger: Client Request: "):
            name = line.removeprefix("desc: Trigger: Client Request: ")
        elif match := re.fullmatch(r"ob=(\(\d+\))(?: (.*))?", line):
            names.setdefault(match[1], match[2])
            is_own = names[match[1]] == program
        elif match := re.fullmatch(r"cob=(\(\d+\)) (.*)", line):
            names.setdefault(match[1], match[2])
        elif line.startswith("calls="):
            is_call = True  # the next line is what the function called took
        elif match := re.fullmatch(r"(?:[+-]?\d+|\*) (\d+)", line):
            if is_own and not is_call:
                total += int(match[1])
            is_call = False
    return name, total


def count(valgrind, program):
    with tempfile.TemporaryDirectory() as folder:
        run = subprocess.run(
            [valgrind, "--tool=callgrind", "--instr-atstart=no",
             f"--callgrind-out-file={folder}/profile", program],
            capture_output=True, text=True, env={"LC_ALL": "C"}, check=False)
        if run.returncode != 0:
            sys.exit(f"the workloads failed with status {run.returncode}:\n{run.stderr}")
        counts = {}
        for file in sorted(pathlib.Path(folder).iterdir(), key=lambda file: (len(file.name), file.name)):
            name, instructions = counts_in(file.read_text(), program)
            if name:
                counts[name] = instructions
        return counts


def check_usable(known, here):
    for key, ours in here.items():
        if known.get(key) != ours:
            raise Unusable(f"the counts on file are of {known.get(key)}, and this is {ours}")


def compare(known, counted):
    """A table, and whether every count is as on file."""
    lines = [f"{'workload':24}{'on file':>14}{'now':>14}{'change':>9}"]
    good = True
    for name in sorted(known.keys() | counted.keys()):
        before, now = known.get(name), counted.get(name)
        if before is None or now is None or before == 0:
            lines.append(f"{name:24}{before or '-':>14}{now or '-':>14}  {'is new' if before is None else 'is gone'}")
            good = False
            continue
        change = now / before - 1.0
        is_off = abs(now - before) > MARGIN * before
        good = good and not is_off
        remark = "" if not is_off else "  more than before" if change > 0 else "  less: adopt it"
        lines.append(f"{name:24}{before:>14,}{now:>14,}{100 * change:>+8.2f}%{remark}")
    return "\n".join(lines), good


def has_wide_vectors():
    info = pathlib.Path("/proc/cpuinfo")
    return info.exists() and re.search(r"^flags\s.*\bavx2\b.*\bfma\b|^flags\s.*\bfma\b.*\bavx2\b", info.read_text(), re.M)


def main():
    parser = argparse.ArgumentParser()
    for option in ("valgrind", "program", "compiler", "architecture"):
        parser.add_argument(f"--{option}", required=True)
    parser.add_argument("--counts", required=True, type=pathlib.Path)
    parser.add_argument("--update", action="store_true")
    arguments = parser.parse_args()
    here = {"compiler": arguments.compiler, "architecture": arguments.architecture}
    known = json.loads(arguments.counts.read_text()) if arguments.counts.exists() else {}
    try:
        # Valgrind offers AVX2 where the processor has it, and nothing wider anywhere.
        if arguments.architecture == "x86_64" and not has_wide_vectors():
            raise Unusable("the counts are of a processor with AVX2, and this one has none")
        if not arguments.update:
            check_usable(known, here)
    except Unusable as reason:
        print(f"skipped: {reason}")
        return SKIPPED
    counted = count(arguments.valgrind, arguments.program)
    table, good = compare(known.get("instructions", {}), counted)
    print(table)
    if arguments.update:
        arguments.counts.write_text(json.dumps(here | {"instructions": counted}, indent=2) + "\n")
        return 0
    if not good:
        print("\nWhere this is meant: cmake --build --preset dev --target update-instruction-counts")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
