#!/usr/bin/env python3
"""Checks what the built module's file exports, imports and promises to the loader."""

import argparse
import os
import re
import subprocess
import sys

EXPORTS = {"DllCanUnloadNow", "DllGetClassObject"}
IMPORTS = {"kernel32.dll", "msvcrt.dll"}
CHARACTERISTICS = {"HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"}
SIZE_LIMIT = 450 * 1024
RT_VERSION = 16
RT_MANIFEST = 24


def run(*command):
    environment = dict(os.environ, LC_ALL="C")
    return subprocess.run(command, check=True, capture_output=True, text=True,
                          env=environment).stdout


def check_set(what, expected, found):
    if expected == found:
        return []
    return [f"{what}: missing {sorted(expected - found)}, unexpected {sorted(found - expected)}"]


def check_elf(path, nm):
    names = {line.split()[-1].split("@")[0]
             for line in run(nm, "-D", "--defined-only", path).splitlines() if line.strip()}
    return check_set("exports", EXPORTS, names)


def exported_names(dump):
    table = dump.partition("[Ordinal/Name Pointer] Table")[2].partition("\n\n")[0]
    return set(re.findall(r"^\s*\[\s*\d+\].*?(\S+)$", table, re.MULTILINE))


def check_pe(path, objdump):
    dump = run(objdump, "-p", path)
    faults = check_set("exports", EXPORTS, exported_names(dump))
    imports = {name.lower() for name in re.findall(r"DLL Name: (\S+)", dump)}
    faults += check_set("imports", IMPORTS, imports)
    promised = set(re.findall(r"^\s+([A-Z_]+)$", dump, re.MULTILINE))
    faults += [f"DLL characteristic {name} is missing" for name in CHARACTERISTICS - promised]
    if re.search(r"^Entry 5 0{16} ", dump, re.MULTILINE):
        faults.append("no base relocations")
    if not re.search(rf"Entry: ID: 0x0*{RT_VERSION:x}\b", dump):
        faults.append("no VERSIONINFO resource")
    if not re.search(rf"Entry: ID: 0x0*{RT_MANIFEST:x}\b", dump):
        faults.append("no manifest")
    if "SYMBOL TABLE:\nno symbols" not in run(objdump, "-t", path):
        faults.append("not stripped")
    if os.path.getsize(path) >= SIZE_LIMIT:
        faults.append(f"{os.path.getsize(path)} bytes, must stay below {SIZE_LIMIT}")
    return faults


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--objdump", default="objdump")
    parser.add_argument("module")
    options = parser.parse_args()
    with open(options.module, "rb") as file:
        magic = file.read(4)
    if magic == b"\x7fELF":
        faults = check_elf(options.module, options.nm)
    else:
        faults = check_pe(options.module, options.objdump)
    for fault in faults:
        print(f"{options.module}: {fault}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
