#!/usr/bin/env python3
"""Installs the build, or unpacks its package, and builds and runs a project that uses nothing else."""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile
import zlib
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent.parent
EPOCH = "1700000000"  # 2023-11-14 22:13:20, the time that every package of the test carries
MODULES = {"windows": "bin/LumidexMgr.dll", "linux": "lib/lumidex/LumidexMgr.so"}
TOOLS = {"windows": "bin/lumidex.exe", "linux": "bin/lumidex"}
DOCUMENTS = {"windows": "", "linux": "share/doc/lumidex/"}
FILES = {
    "windows": {"bin/LumidexMgr.manifest", "symbols/LumidexMgr.dll.debug", "LICENSE.txt",
                "python/lumidex.py"},
    "linux": {"share/doc/lumidex/copyright", "share/lumidex/python/lumidex.py",
              "share/man/man1/lumidex.1", "share/bash-completion/completions/lumidex",
              "share/zsh/vendor-completions/_lumidex"},
}


class Failure(Exception):
    pass


def require(condition, message):
    if not condition:
        raise Failure(message)


def run(*command, **options):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True,
                          stdin=subprocess.DEVNULL, timeout=280, **options)
    require(done.returncode == 0, f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def files_below(folder):
    return {path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file()}


# --- What must be there ---

def sources_below(folder):
    return {path.relative_to(ROOT).as_posix() for path in (ROOT / folder).rglob("*")
            if path.is_file()}


def expected_files(system, configuration):
    config = f"LumidexTargets-{configuration.lower()}.cmake"
    found = {f"lib/cmake/Lumidex/{name}" for name in (
        "LumidexConfig.cmake", "LumidexConfigVersion.cmake", "LumidexTargets.cmake", config)}
    documents = {"README.md", "CHANGELOG.md", "docs/hosting.md", "docs/reading.md",
                 "docs/writing.md", "docs/show.schema.json"} | sources_below("examples")
    found |= {DOCUMENTS[system] + name for name in documents}
    return found | {MODULES[system], TOOLS[system]} | FILES[system] | sources_below("include/lumidex")


def check_files(tree, options):
    expected, found = expected_files(options.system, options.configuration), files_below(tree)
    require(expected == found, f"missing {sorted(expected - found)}, "
                               f"unexpected {sorted(found - expected)}")
    for name in sorted(found):
        for folder in (ROOT, options.build):
            require(os.fsencode(folder) not in (tree / name).read_bytes(),
                    f"{name} contains {folder}")


# The module names its symbols with their checksum; they lead from an address to a line.
def check_symbols(tree, options):
    symbols = tree / "symbols/LumidexMgr.dll.debug"
    link = (symbols.name + "\0").encode()
    link += b"\0" * (-len(link) % 4) + zlib.crc32(symbols.read_bytes()).to_bytes(4, "little")
    require(link in (tree / MODULES["windows"]).read_bytes(), "the DLL does not name its symbols")
    entry = re.search(r"^(\w+) T DllGetClassObject$", run(options.nm, symbols), re.MULTILINE)
    require(entry, "no symbol DllGetClassObject")
    line = run(options.addr2line, "-e", symbols, entry.group(1))
    require(re.match(r"(\./)+src/com/ModuleEntry\.cpp:\d+", line), f"DllGetClassObject is in {line}")


# --- Where it comes from ---

def install(folder, options):
    run(options.cmake, "--install", options.build, "--prefix", folder / "tree")
    return folder / "tree"


def make_package(folder, options):
    environment = dict(os.environ, SOURCE_DATE_EPOCH=EPOCH, TZ="UTC")
    run(options.cpack, "--config", options.build / "CPackConfig.cmake", "-B", folder,
        cwd=options.build, env=environment)
    packages = [path for path in folder.iterdir() if path.is_file()]
    require(len(packages) == 1, f"packages: {packages}")
    return packages[0]


def unpack_zip(package, folder, options):
    top = f"lumidex-{options.version}-windows-x64"
    require(package.name == top + ".zip", f"the package is {package.name}")
    with zipfile.ZipFile(package) as archive:
        require(all(name.startswith(top + "/") for name in archive.namelist()),
                f"not everything is in {top}")
        times = {entry.date_time for entry in archive.infolist()}
        require(times == {(2023, 11, 14, 22, 13, 20)}, f"times in the package: {times}")
        archive.extractall(folder)
    return folder / top


def unpack_deb(package, folder, options):
    architecture = run("dpkg", "--print-architecture").strip()
    require(package.name == f"lumidex_{options.version}_{architecture}.deb",
            f"the package is {package.name}")
    for field, expected in (("Package", "lumidex"), ("Version", options.version),
                            ("Architecture", architecture)):
        found = run("dpkg-deb", "-f", package, field).strip()
        require(found == expected, f"{field}: expected {expected}, found {found}")
    depends = run("dpkg-deb", "-f", package, "Depends")
    for library in ("libc6", "libstdc++6"):
        require(re.search(rf"(^|, ){re.escape(library)} \(>=", depends),
                f"Depends without {library}: {depends}")
    for line in run("dpkg-deb", "-c", package).splitlines():
        require(re.match(r"(drwxr-xr-x|-rw-r--r--|-rwxr-xr-x) root/root ", line),
                f"owner or mode: {line}")
    run("dpkg-deb", "-x", package, folder)
    for name in (MODULES["linux"], TOOLS["linux"]):
        require(".debug_info" not in run("readelf", "-SW", folder / "usr" / name),
                f"{name} is not stripped")
    return folder / "usr"


# The package is made twice: the same build gives the same bytes.
def package(folder, options):
    first, second = (make_package(folder / name, options) for name in ("first", "second"))
    require(first.read_bytes() == second.read_bytes(), "two packages of one build differ")
    unpack = unpack_zip if options.system == "windows" else unpack_deb
    return unpack(first, folder / "unpacked", options)


# --- What uses it ---

def check_consumer(tree, folder, options):
    shutil.copytree(HERE / "consumer", folder / "consumer")
    values = {"CMAKE_PREFIX_PATH": tree, "VERSION": options.version,
              "LANGUAGES": options.languages.replace(",", ";"),
              "EXAMPLES": tree / DOCUMENTS[options.system] / "examples",
              "SAMPLES": ROOT / "samples", "PYTHON": sys.executable,
              "CHECK": HERE.parent / "sdk/check_examples.py",
              "CMAKE_C_COMPILER": options.c_compiler, "CMAKE_CXX_COMPILER": options.cxx_compiler}
    if options.toolchain:
        values["CMAKE_TOOLCHAIN_FILE"] = options.toolchain
    build = folder / "build"
    run(options.cmake, "-G", "Ninja", "-S", folder / "consumer", "-B", build,
        *(f"-D{name}={value}" for name, value in values.items()))
    run(options.cmake, "--build", build, "-j1")
    run(options.ctest, "--test-dir", build, "--output-on-failure", "--no-tests=error")
    used = (build / "used.txt").read_text().split()
    expected = [str(tree / name) for name in
                (MODULES[options.system], TOOLS[options.system], "include")]
    require(used == expected, f"expected {expected}, used {used}")


# The system makes the object by the manifest beside the module, and by the one in it.
def check_activation(tree, options):
    run(options.emulator, options.activation, tree / MODULES["windows"],
        tree / "bin/LumidexMgr.manifest", ROOT / "samples/panorama.jpg")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("kind", choices=("install", "package"))
    parser.add_argument("--build", required=True, type=Path)
    parser.add_argument("--system", required=True, choices=("linux", "windows"))
    for name in ("toolchain", "emulator", "activation"):
        parser.add_argument(f"--{name}")
    parser.add_argument("--languages", required=True)
    for name in ("version", "configuration", "cmake", "cpack", "ctest", "nm", "addr2line",
                 "c-compiler", "cxx-compiler"):
        parser.add_argument(f"--{name}", required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name).resolve()
        try:
            tree = (install if options.kind == "install" else package)(folder, options)
            check_files(tree, options)
            if options.system == "windows":
                check_symbols(tree, options)
                check_activation(tree, options)
            check_consumer(tree, folder, options)
        except Failure as failure:
            print(failure)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
