"""Holds the man page and the shell completions against the help of the tool itself.

Every command and every option that the help names must be in all of them, and they must name no other.
The completions are run by their shells.
"""

import argparse
import pathlib
import re
import subprocess
import sys

PHOTO = "samples/panorama.jpg"


def output(*arguments):
    return subprocess.run(arguments, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=True,
                          timeout=60).stdout.decode("utf-8")


def section(text, title):
    """The lines of a part of the help."""
    found = re.search(rf"^{title}:\n((?:  .*\n)+)", text, re.MULTILINE)
    return found.group(1) if found else ""


def commands_of(tool):
    return set(re.findall(r"^  (\w+)", section(output(tool, "--help"), "Subcommands"), re.MULTILINE))


def options_of(tool, *command):
    """The options in a help, long ones and short ones."""
    lines = re.findall(r"^  (-.*)$", section(output(tool, *command, "--help"), "Options"), re.MULTILINE)
    return {name for line in lines for name in line.split()[0].split(",")}


def man_items(page, heading):
    """What the list below a heading of the man page explains."""
    part = re.search(rf'^\.S[sh] {heading}\n(.*?)(?=^\.S[sh] |\Z)', page, re.MULTILINE | re.DOTALL)
    return re.findall(r"^\.It (.*)$", part.group(1), re.MULTILINE)


def man_options(items):
    """The options in macros: "Fl Fl raw" is --raw, "Fl h" is -h."""
    return {("--" if double else "-") + name
            for item in items for double, name in re.findall(r"Fl (Fl )?([\w@]+)", item)}


def man_commands(page):
    return {item.split()[1] for item in man_items(page, "Commands")}


def synopsis_options(page, command):
    text = re.search(r"^\.Sh SYNOPSIS\n(.*?)^\.Sh ", page, re.MULTILINE | re.DOTALL).group(1)
    uses = [use for use in text.split(".Nm\n") if use.startswith(f".Cm {command}\n")]
    return man_options(uses)


def bash_words(script, *words):
    """What bash offers for the last word."""
    program = ('source "$1"; shift; COMP_WORDS=(lumidex "$@"); COMP_CWORD=$#; '
               'compopt() { :; }; _lumidex; printf "%s\\n" "${COMPREPLY[@]}"')
    return set(output("bash", "-c", program, "bash", str(script), *words).split())


def zsh_words(folder, lines):
    """What zsh offers at the end of each line."""
    program = pathlib.Path(__file__).with_name("zsh_words.zsh")
    answers = output("zsh", "-f", str(program), str(folder), *lines).splitlines()
    return {line: set(answer.split()) for line, answer in zip(lines, answers, strict=True)}


def check_zsh(faults, folder, commands, general, options):
    lines = ["lumidex ", "lumidex -"]
    for command in commands:
        lines += [f"lumidex {command} -", f"lumidex {command} -- -"]
    words = zsh_words(folder, lines)
    faults.same("commands of zsh", words["lumidex "], commands)
    faults.same("general options of zsh", words["lumidex -"], general)
    for command in commands:
        faults.same(f"zsh, {command}", words[f"lumidex {command} -"], options[command])
        faults.same(f"zsh, {command}, behind --", words[f"lumidex {command} -- -"], set())


class Faults(list):
    def same(self, what, found, expected):
        for name in sorted(expected - found):
            self.append(f"{what}: {name} is missing")
        for name in sorted(found - expected):
            self.append(f"{what}: the tool has no {name}")


def check_exit_codes(faults, tool, root, page):
    described = man_items(page, "EXIT STATUS")
    runs = {"0": [tool, "type", str(root / PHOTO)], "1": [tool, "type", str(root / "missing.jpg")],
            "2": [tool]}
    faults.same("exit codes of the man page", set(described), set(runs))
    for code, arguments in runs.items():
        done = subprocess.run(arguments, capture_output=True, check=False)
        if str(done.returncode) != code:
            faults.append(f"{arguments[1:]} exits with {done.returncode}, not {code}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--tool", required=True)
    parser.add_argument("root", type=pathlib.Path)
    options = parser.parse_args()
    page = (options.root / "docs/lumidex.1").read_text("utf-8")
    completions = options.root / "tools/lumidex/completions"
    bash = completions / "lumidex.bash"

    faults = Faults()
    commands = commands_of(options.tool)
    general = options_of(options.tool)
    faults.same("commands of the man page", man_commands(page), commands)
    faults.same("commands of bash", bash_words(bash, ""), commands | general)
    faults.same("general options of the man page",
                man_options(man_items(page, "Options of every command")), general)

    explained = man_options(man_items(page, "Options of show"))
    explained |= man_options(man_items(page, "Options of embed and write"))
    explained |= man_options(man_items(page, "Options of show, type, panorama and mark"))
    own_options = {command: options_of(options.tool, command) for command in commands}
    every = set().union(*own_options.values())
    for command, own in sorted(own_options.items()):
        faults.same(f"synopsis of {command}", synopsis_options(page, command), own - general)
        faults.same(f"bash, {command}", bash_words(bash, command, "-"), own)
        if bash_words(bash, command, "--", "-"):
            faults.append(f"bash, {command}: offers options behind --")
    check_zsh(faults, completions, commands, general, own_options)
    faults.same("options of the man page", explained, every - general)
    check_exit_codes(faults, options.tool, options.root, page)

    print(*faults, sep="\n")
    print(f"{len(commands)} commands, {len(every)} options, {len(faults)} faults")
    return 1 if faults or len(commands) < 2 or len(every) < 2 else 0


if __name__ == "__main__":
    sys.exit(main())
