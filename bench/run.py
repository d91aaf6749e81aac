#!/usr/bin/env python3
"""Runs the benchmarks that scripts/bench has built and writes the page about them.

Usage: bench/run.py [PART...]; without any, all parts run and docs/performance.md is written anew.
"""

import argparse
import pathlib
import plistlib
import struct
import subprocess
import sys
import tempfile

import equivalent_svg
import large_theme
import report
from race import median, race, run

HERE = pathlib.Path(__file__).resolve().parent.parent
BUILD = HERE / "build/bench"
PROGRAMS = BUILD / "bin"
LIBRARY = BUILD / "lib/libprismal.so"
EMPTY_LIBRARY = BUILD / "lib/libbench_empty.so"
MERGED = "var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist"


def lines(*command, check=True):
    output = subprocess.run([str(word) for word in command], check=check, capture_output=True,
                            text=True).stdout
    return [line.split("\t") for line in output.splitlines()]


# --- In one process ----------------------------------------------------------------------------


def contests(results, _):
    with tempfile.NamedTemporaryFile() as rows:
        run([str(PROGRAMS / "prismal_bench"), f"--rows={rows.name}", "--benchmark_repetitions=15",
             "--benchmark_min_time=0.04", "--benchmark_enable_random_interleaving=true"])
        for line in pathlib.Path(rows.name).read_text().splitlines():
            what, against, *numbers = line.split("\t")
            limit, *times = map(float, numbers)
            results.contest(what, against, limit, *times)


def growth(results, _):
    for name, count, nanoseconds in lines(PROGRAMS / "prismal_growth",
                                          "--benchmark_repetitions=3",
                                          "--benchmark_min_time=0.02"):
        results.growth.setdefault(name, []).append((int(count), float(nanoseconds)))


def allocations(results, _):
    results.allocations = lines(PROGRAMS / "prismal_allocations", check=False)


# --- Whole processes ---------------------------------------------------------------------------


def whole(results, what, against, limit, ours, floor):
    """A contest of two that have been raced."""
    to_ns = 1e6
    results.contest(what, against, limit, *(to_ns * f(m.wall) for f in (median, min)
                                            for m in (ours, floor)))


def theme(results, folder):
    for form, name, limit in ((plistlib.FMT_XML, "XML", 0.9),
                              (plistlib.FMT_BINARY, "binary", 0.75)):
        device = folder / f"device-{name}"
        size = large_theme.write(device / MERGED, form)
        ours, floor = race([[PROGRAMS / "read_theme", device, LIBRARY],
                            [PROGRAMS / "read_libplist", device / MERGED]], 60)
        whole(results, f"reading a theme, {size / 1e6:.1f} MB of {name}", "libplist in a C program",
              limit, ours, floor)


def memory(results, folder):
    """How much a host grows by a theme."""
    for form, name in ((plistlib.FMT_XML, "XML"), (plistlib.FMT_BINARY, "binary")):
        device = folder / f"device-{name}"
        size = large_theme.write(device / MERGED, form)
        grown = lines(PROGRAMS / "read_theme", device, LIBRARY, "memory")[0][0]
        results.memory.append((name, size, int(grown) * 1024))


def png_size(path):
    return struct.unpack(">II", path.read_bytes()[16:24])


def render(results, folder):
    photo = folder / "photo.jpeg"
    equivalent_svg.write_photograph(photo)
    for name, image, limit in (("photograph", photo.name, 0.35), ("gradient", None, 0)):
        theme_file, svg = folder / f"{name}.plist", folder / f"{name}.svg"
        theme_file.write_text(equivalent_svg.theme(image))
        svg.write_text(equivalent_svg.svg(image))
        pictures = folder / f"{name}-prismal.png", folder / f"{name}-rsvg.png"
        ours, floor = race([
            [PROGRAMS / "prismal", "render", "--quiet", theme_file, "-o", pictures[0]],
            ["rsvg-convert", svg, "-o", pictures[1]]], 60)
        if png_size(pictures[0]) != png_size(pictures[1]):
            sys.exit("bench: the two pictures differ in size")
        whole(results, f"a phone's keyboard to PNG, {name} behind", "rsvg-convert", limit, ours,
              floor)


def view_options(name):
    """The options that draw the picture which --all calls `name`."""
    device = next(each for each in ("phone-3.5", "phone-4", "tablet-split", "tablet")
                  if name.startswith(each + "-"))
    orientation, style, keyplane = name[len(device) + 1:].split("-", 2)
    shown = ["--dictation"] if keyplane == "dictation" else ["--keyplane", keyplane]
    return ["--device", device, "--orientation", orientation, "--style", style, *shown]


def sheet(results, folder):
    drawn = folder / "all"
    command = [str(PROGRAMS / "prismal"), "render", "--quiet", str(HERE / "examples/Dusk.theme")]
    run([*command, "--all", str(drawn)])
    names = sorted(path.stem for path in drawn.iterdir())
    singles = [[*command, *view_options(name), "--scale", "1", "-o", str(folder / "one.png")]
               for name in names]
    whole_sheet = [*command, "--sheet", "-o", str(folder / "sheet.png")]
    rounds = []
    for _ in range(7):
        rounds.append((run(whole_sheet), sum(map(run, singles))))
    ours, floor = zip(*rounds)
    results.contest(f"the contact sheet, {len(names)} pictures", "each in a process of its own",
                    0.35, *(1e6 * f(times) for f in (median, min) for times in (ours, floor)))


def load(results, folder):
    device = folder / "device-empty"
    device.mkdir()
    for identifier, what in (("com.apple.springboard", "loading the library, no purge"),
                             ("com.example.notes", "loading the library, nothing to purge")):
        samples = [[float(number) for number in lines(
            PROGRAMS / "load_library", device, LIBRARY, EMPTY_LIBRARY, identifier,
            *["empty-first"] * (i % 2))[0][0].split()] for i in range(100)]
        ours, floor = zip(*samples)
        results.contest(what, "dlopen of an empty library",
                        3 if identifier == "com.apple.springboard" else 0,
                        *(f(times) for f in (median, min) for times in (ours, floor)))


PARTS = (contests, theme, render, sheet, load, growth, allocations, memory)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("part", nargs="*", choices=[[], *(part.__name__ for part in PARTS)])
    chosen = parser.parse_args().part
    results = report.Results()
    with tempfile.TemporaryDirectory() as temporary:
        for part in PARTS:
            if not chosen or part.__name__ in chosen:
                print(f"{part.__name__} ...", file=sys.stderr, flush=True)
                part(results, pathlib.Path(temporary))
    print(results.text())
    if not chosen:
        report.write(results, HERE / "docs")
    return 0 if results.all_within() else 1


if __name__ == "__main__":
    sys.exit(main())
