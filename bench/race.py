"""Whole processes, started in turns and timed from the outside."""

import os
import sys
import time


class Measured:
    """What one command took, of many runs: milliseconds of wall clock and of the processors."""

    def __init__(self):
        self.wall = []
        self.processor = []
        self.peak_kib = 0

    def add(self, wall, usage):
        self.wall.append(wall)
        self.processor.append((usage.ru_utime + usage.ru_stime) * 1000)
        self.peak_kib = max(self.peak_kib, usage.ru_maxrss)


def median(numbers):
    numbers = sorted(numbers)
    return (numbers[len(numbers) // 2] + numbers[(len(numbers) - 1) // 2]) / 2


def run(command, measured=None):
    """Runs a command to its end. Its standard output goes nowhere; the run counts when it works."""
    start = time.perf_counter()
    silent = [(os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)]
    process = os.posix_spawnp(command[0], command, os.environ, file_actions=silent)
    _, status, usage = os.wait4(process, 0)
    took = (time.perf_counter() - start) * 1000
    if status != 0:
        sys.exit(f"bench: failed: {' '.join(map(str, command))}")
    if measured is not None:
        measured.add(took, usage)
    return took


def race(commands, runs):
    """Measures commands in turns, so that what slows the machine down slows all of them."""
    commands = [[str(word) for word in command] for command in commands]
    results = [Measured() for _ in commands]
    for command in commands:  # files and libraries into memory
        run(command)
    for _ in range(runs):
        for command, measured in zip(commands, results):
            run(command, measured)
    return results
