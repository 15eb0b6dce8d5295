"""Checks that the runs of the tool shown in the documents are what the tool prints.

A block of a document that begins with "$ lumidex ..." is run from the root of the project. Its lines
must be those of the output, in order; a line "..." stands for any number of lines left out.
"""

import argparse
import pathlib
import re
import shlex
import subprocess
import sys

GAP = "..."


def runs(text):
    """The command line and the shown lines of every run in a document."""
    for block in re.findall(r"^```\n(\$ lumidex .*?)^```$", text, re.MULTILINE | re.DOTALL):
        command, *shown = block.splitlines()
        yield shlex.split(command)[2:], shown


def parts(shown):
    """The shown lines between the gaps."""
    found = [[]]
    for line in shown:
        if line == GAP:
            found.append([])
        else:
            found[-1].append(line)
    return found


def find(lines, part, start):
    """Where a part begins at or behind a line, or None."""
    for i in range(start, len(lines) - len(part) + 1):
        if lines[i : i + len(part)] == part:
            return i
    return None


def difference(shown, printed):
    """What is wrong with the shown lines, or None."""
    first, *others = parts(shown)
    if printed[: len(first)] != first:
        return "the output does not begin as shown"
    end = len(first)
    for part in others:
        position = find(printed, part, end)
        if position is None:
            return f"not in the output: {part[0]}"
        end = position + len(part)
    # Blank lines at the end are left out of a document.
    if not (shown and shown[-1] == GAP) and any(printed[end:]):
        return f"not shown: {printed[end]}"
    return None


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--tool", required=True)
    parser.add_argument("root", type=pathlib.Path)
    options = parser.parse_args()
    count = bad = 0
    for document in [options.root / "README.md", *sorted((options.root / "docs").glob("*.md"))]:
        for arguments, shown in runs(document.read_text(encoding="utf-8")):
            done = subprocess.run([options.tool, *arguments], cwd=options.root,
                                  capture_output=True, check=False)
            wrong = difference(shown, done.stdout.decode("utf-8").splitlines())
            count += 1
            if wrong:
                bad += 1
                print(f"{document.name}: lumidex {' '.join(arguments)}: {wrong}")
    print(f"{count} runs shown, {bad} wrong")
    return 1 if bad or not count else 0


if __name__ == "__main__":
    sys.exit(main())
