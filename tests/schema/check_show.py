"""Holds what `lumidex show --json` prints against docs/show.schema.json.

Every combination of options runs over the samples, a text file and a path that does not exist. Then
one line with something of everything is spoiled in every place: the schema must refuse it each time.
"""

import argparse
import copy
import itertools
import json
import pathlib
import subprocess
import sys

from schema import Schema

FLAGS = ("--raw", "--store", "--trace")
MASKS = ((), ("--mask", "0xFFF"), ("--mask", "0x80000001"))


def reads(*arguments):
    """The lines of a run, each as an object; duplicate keys are refused."""

    def unique(pairs):
        found = dict(pairs)
        if len(found) != len(pairs):
            raise ValueError("a key stands twice in one object")
        return found

    done = subprocess.run([*arguments], capture_output=True, check=False)
    text = done.stdout.decode("utf-8")
    if not text.endswith("\n"):
        raise ValueError("the last line has no end")
    return [json.loads(line, object_pairs_hook=unique) for line in text[:-1].split("\n")]


def wrong_keys(line, flags):
    """The options that add a key, and do not, or the other way round."""
    if ("log" in line) != ("--trace" in flags) or ("store" in line) != ("--store" in flags):
        return ["log or store does not follow its option"]
    if any(("hex" in record) != ("--raw" in flags) for record in line["records"]):
        return ["hex does not follow --raw"]
    return []


def places(value, path=()):
    """Every place in a value, the value itself included."""
    yield path
    if isinstance(value, (dict, list)):
        for key, child in value.items() if isinstance(value, dict) else enumerate(value):
            yield from places(child, (*path, key))


def spoiled(line):
    """The line with one place made wrong, and what was done; once for each place and way."""
    for path in places(line):
        for change in ("another type", "one key more", "one key less"):
            copied = copy.deepcopy(line)
            parent, target = None, copied
            for key in path:
                parent, target = target, target[key]
            if change == "another type":
                if parent is None:
                    continue
                parent[path[-1]] = True
            elif not isinstance(target, dict) or (change == "one key less" and not target):
                continue
            elif change == "one key more":
                target["surplus"] = 0
            elif path[-1:] and (len(path) > 1 and path[-2] in ("blocks", "subifds")):
                continue  # a table may lack any key
            elif path[-1:] == ("subifds",):
                continue
            else:
                del target[sorted(target.keys() - {"hex", "log", "store"})[0]]
            yield copied, f"{change} at {'.'.join(map(str, path)) or 'the top'}"


def essence(lines):
    """One small line with a record of every type and an entry of every block that the lines have."""
    line = copy.deepcopy(next(line for line in lines if line["store"]["thumbnail"]))
    line["records"] = list({r["type"]: r for each in lines for r in each["records"]}.values())
    line["log"] = line["log"][:1]
    line["store"]["thumbnail"] = line["store"]["thumbnail"][:4]
    for number in line["store"]["blocks"]:
        tables = (each["store"]["blocks"][number] for each in lines)
        entries = next((table for table in tables if table), {})
        line["store"]["blocks"][number] = dict(list(entries.items())[:1])
    return line


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--tool", required=True)
    parser.add_argument("root", type=pathlib.Path)
    options = parser.parse_args()
    schema = Schema(json.loads((options.root / "docs/show.schema.json").read_text("utf-8")))
    samples = sorted(str(path) for path in (options.root / "samples").glob("*.[jp][pn]g"))
    files = [*samples, str(options.root / "LICENSE"), str(options.root / "missing.jpg")]

    faults = []
    count = 0
    for mask, *chosen in itertools.product(MASKS, *(((), (flag,)) for flag in FLAGS)):
        flags = (*mask, *sum(chosen, ()))
        lines = reads(options.tool, "show", "--json", *flags, *files)
        if [line["file"] for line in lines] != files:
            faults.append(f"{flags}: not a line for every file, in order")
        for line in lines:
            count += 1
            for fault in [*schema.errors(line), *wrong_keys(line, flags)]:
                faults.append(f"{' '.join(flags)} {line['file']}: {fault}")

    refused = 0
    line = essence(reads(options.tool, "show", "--json", *FLAGS, "--mask", "0xFFF", *samples))
    faults.extend(schema.errors(line))
    for bad, change in spoiled(line):
        refused += 1
        if not schema.errors(bad):
            faults.append(f"the schema allows {change}")

    print(*faults[:40], sep="\n")
    print(f"{count} lines held, {refused} spoiled lines, {len(faults)} faults")
    return 1 if faults or not count or not refused else 0


if __name__ == "__main__":
    sys.exit(main())
