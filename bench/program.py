"""Runs lumidex_bench and reads what it prints."""

import collections
import subprocess


class Program:
    """The program of one build, with the module that it measures."""

    def __init__(self, command, module):
        self.command = command
        self.module = module

    @staticmethod
    def native(build):
        return Program([str(build / "lumidex_bench")], build / "LumidexMgr.so")

    @staticmethod
    def windows(build):
        return Program(["wine", str(build / "lumidex_bench.exe")], build / "LumidexMgr.dll")

    def rows(self, *arguments, prefix=()):
        """The fields of each line that the program prints."""
        command = [*prefix, *self.command, *(str(argument) for argument in arguments)]
        done = subprocess.run(command, stdout=subprocess.PIPE, check=True)
        return [line.split("\t") for line in done.stdout.decode("utf-8").splitlines()]

    def numbers(self, *arguments, prefix=()):
        """Of each subject, in the order of the lines, its operations and their numbers."""
        subjects = collections.defaultdict(dict)
        for subject, operation, *values in self.rows(*arguments, prefix=prefix):
            subjects[subject][operation] = [int(value) for value in values]
        return subjects
