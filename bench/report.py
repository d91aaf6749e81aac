"""What was measured, as text and as the page docs/performance.md."""

import datetime
import math
import pathlib
import re
import subprocess

from plot import plot

PACKAGES = ("g++", "libstdc++6", "libbenchmark-dev", "libboost1.81-dev", "libplist-dev",
            "librsvg2-bin", "libcairo2", "libexpat1", "libjpeg62-turbo", "libdeflate0")
BEGIN, END = "<!-- measured: begin -->", "<!-- measured: end -->"


def duration(nanoseconds):
    """A time in the unit that suits it."""
    for size, unit in ((1e9, "s"), (1e6, "ms"), (1e3, "µs")):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def exponent(points):
    """By how much more than its input a line grows: 1 is in proportion. From its upper half."""
    upper = points[len(points) // 2:]
    (first_count, first_time), (last_count, last_time) = upper[0], upper[-1]
    return math.log(last_time / first_time) / math.log(last_count / first_count)


class Contest:
    def __init__(self, what, against, limit, ours, floor, least_ours, least_floor):
        self.what, self.against, self.limit = what, against, limit
        self.ours, self.floor = ours, floor
        self.ratio, self.least = ours / floor, least_ours / least_floor

    def verdict(self):
        if self.limit == 0:
            return ""
        return "yes" if self.ratio <= self.limit else "no"

    def cells(self):
        return (self.what, self.against, duration(self.ours), duration(self.floor),
                f"{self.ratio:.3g}", f"{self.least:.3g}",
                f"{self.limit:g}" if self.limit else "", self.verdict())


class Results:
    HEAD = ("what", "against", "prismal", "floor", "ratio", "of the least", "at most", "within")

    def __init__(self):
        self.contests = []
        self.growth = {}
        self.allocations = []
        self.memory = []

    def contest(self, *arguments):
        self.contests.append(Contest(*arguments))

    def all_within(self):
        return all(contest.verdict() != "no" for contest in self.contests) and all(
            int(count) <= int(limit) for _, count, limit in self.allocations)

    def tables(self):
        if self.contests:
            yield self.HEAD, [contest.cells() for contest in self.contests]
        if self.growth:
            yield (("what grows", "10", "1,000", "100,000", "exponent"),
                   [(name, *(duration(dict(points)[n]) for n in (10, 1_000, 100_000)),
                     f"{exponent(points):.2f}") for name, points in self.growth.items()])
        if self.allocations:
            yield ("request", "allocations", "at most"), self.allocations
        if self.memory:
            yield (("theme", "file", "the host grows by", "ratio"),
                   [(form, f"{size / 1e6:.2f} MB", f"{grown / 1e6:.2f} MB", f"{grown / size:.2f}")
                    for form, size, grown in self.memory])

    def text(self):
        texts = []
        for head, rows in self.tables():
            rows = [head, *rows]
            widths = [max(len(row[i]) for row in rows) for i in range(len(head))]
            texts.append("\n".join("  ".join(cell.ljust(width) for cell, width in zip(row, widths))
                                   .rstrip() for row in rows))
        return "\n\n".join(texts)


def markdown(head, rows):
    return "\n".join(f"| {' | '.join(row)} |" for row in (head, ["---"] * len(head), *rows))


def processor():
    cpuinfo = pathlib.Path("/proc/cpuinfo").read_text()
    name = re.search(r"model name\s*: (.*)", cpuinfo)
    return f"{name[1] if name else 'unknown'}, {cpuinfo.count('processor' + chr(9))} threads"


def versions():
    output = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Version}, ", *PACKAGES],
                            capture_output=True, text=True, check=False).stdout
    return output.rstrip(", ")


def measured(results):
    tables = [markdown(*table) for table in results.tables()]
    return "\n\n".join([
        f"Measured on {datetime.date.today():%-d %B %Y}; processor: {processor()}. Packages: "
        f"{versions()}.",
        *tables[:1],
        "## Growth\n\n![Time against count, both axes logarithmic](growth.svg)\n\n"
        "The dashed line grows just as its input does. The exponent is the slope of a line's "
        "upper half: 1 is in proportion.",
        *tables[1:2],
        "## Allocations and memory",
        *tables[2:],
    ])


def write(results, docs):
    """Puts what was measured into its place in the page; the rest of the page stays."""
    page = docs / "performance.md"
    before, _, rest = page.read_text().partition(BEGIN)
    after = rest.partition(END)[2]
    page.write_text(f"{before}{BEGIN}\n{measured(results)}\n{END}{after}")
    (docs / "growth.svg").write_text(plot(results.growth, "how many"))
