#!/usr/bin/env python3
"""Holds the version of everything that names one against the version of the CMake project."""

import argparse
import re
import struct
import subprocess
import sys

# VS_FIXEDFILEINFO: signature, structure version, then file and product version of two words each.
FIXED_INFO = struct.Struct("<6I")
FIXED_SIGNATURE = struct.pack("<2I", 0xFEEF04BD, 0x00010000)


def tool_version(command):
    done = subprocess.run([*command, "--version"], check=True, capture_output=True, text=True,
                          stdin=subprocess.DEVNULL, timeout=120)
    return done.stdout.strip()


def first_heading(path):
    with open(path, encoding="utf-8") as file:
        found = re.search(r"^## (\S+)", file.read(), re.MULTILINE)
    return found.group(1) if found else None


def assembly_version(path):
    with open(path, encoding="utf-8") as file:
        found = re.search(r'<assemblyIdentity [^>]*name="LumidexMgr" version="([^"]*)"', file.read())
    return found.group(1) if found else None


def four_numbers(high, low):
    return f"{high >> 16}.{high & 0xFFFF}.{low >> 16}.{low & 0xFFFF}"


def fixed_versions(data):
    start = data.find(FIXED_SIGNATURE)
    if start < 0:
        return None
    _, _, *words = FIXED_INFO.unpack_from(data, start)
    return four_numbers(*words[:2]), four_numbers(*words[2:])


# A string of the resource: its key, a zero, padding to four bytes, its value, a zero.
def resource_text(data, key):
    pattern = re.escape(key.encode("utf-16-le")) + rb"(?:\0\0)+((?:[^\0]\0)+)\0\0"
    found = re.search(pattern, data)
    return found.group(1).decode("utf-16-le") if found else None


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--expect", required=True)
    parser.add_argument("--changelog", required=True)
    parser.add_argument("--manifest")
    parser.add_argument("--module")
    parser.add_argument("command", nargs="+", help="the tool, with what runs it")
    options = parser.parse_args()
    expected, four = options.expect, options.expect + ".0"
    found = [("tool", f"lumidex {expected}", tool_version(options.command)),
             ("changelog", expected, first_heading(options.changelog))]
    if options.manifest:
        found.append(("manifest", four, assembly_version(options.manifest)))
    if options.module:
        with open(options.module, "rb") as file:
            data = file.read()
        found.append(("VERSIONINFO", (four, four), fixed_versions(data)))
        found += [(key, expected, resource_text(data, key))
                  for key in ("FileVersion", "ProductVersion")]
    faults = [f"{what}: expected {wanted}, found {given}"
              for what, wanted, given in found if wanted != given]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
