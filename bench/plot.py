"""Lines on logarithmic axes, as SVG."""

import math
from xml.sax.saxutils import escape

WIDTH, HEIGHT = 760, 440
LEFT, RIGHT, TOP, BOTTOM = 64, 230, 16, 44
COLORS = ("#c2410c", "#b45309", "#a16207", "#1d4ed8", "#7e22ce", "#15803d", "#0f766e")
TEXT = 'font-family="sans-serif" font-size="12" fill="#333"'


def unit(exponent):
    """A power of ten of nanoseconds, as people say it."""
    names = ("ns", "µs", "ms", "s")
    return f"{10 ** (exponent % 3)} {names[exponent // 3]}"


class Axes:
    """Powers of ten on both."""

    def __init__(self, points):
        counts, times = zip(*points)
        self.x = round(math.log10(min(counts))), math.ceil(math.log10(max(counts)))
        self.y = math.floor(math.log10(min(times))), math.ceil(math.log10(max(times)))

    def at(self, count, nanoseconds):
        def along(value, ends, start, end):
            return start + (math.log10(value) - ends[0]) / (ends[1] - ends[0]) * (end - start)

        return (along(count, self.x, LEFT, WIDTH - RIGHT),
                along(nanoseconds, self.y, HEIGHT - BOTTOM, TOP))

    def grid(self):
        for exponent in range(self.x[0], self.x[1] + 1):
            x, bottom = self.at(10 ** exponent, 10 ** self.y[0])
            yield f'<path d="M{x:.1f},{TOP}V{bottom}" stroke="#ddd"/>'
            yield (f'<text x="{x:.1f}" y="{bottom + 18}" text-anchor="middle" {TEXT}>'
                   f'{10 ** exponent:,}</text>')
        for exponent in range(self.y[0], self.y[1] + 1):
            left, y = self.at(10 ** self.x[0], 10 ** exponent)
            yield f'<path d="M{left},{y:.1f}H{WIDTH - RIGHT}" stroke="#ddd"/>'
            yield (f'<text x="{left - 8}" y="{y + 4:.1f}" text-anchor="end" {TEXT}>'
                   f'{unit(exponent)}</text>')

    def proportional(self):
        """A dashed line of what grows just as its input does, through the middle of the field."""
        start = 10 ** ((self.y[0] + self.y[1] - (self.x[1] - self.x[0])) / 2)
        points = [(10 ** exponent, start * 10 ** (exponent - self.x[0])) for exponent in self.x]
        (x1, y1), (x2, y2) = (self.at(*point) for point in points)
        return (f'<path d="M{x1:.1f},{y1:.1f}L{x2:.1f},{y2:.1f}" stroke="#999" '
                f'stroke-dasharray="5 4"/>')


def spread(positions, distance):
    """Moves labels down until no two are closer than `distance`; keeps their order."""
    moved = {}
    last = -math.inf
    for name, y in sorted(positions.items(), key=lambda each: each[1]):
        last = moved[name] = max(y, last + distance)
    return moved


def plot(lines, title):
    """`lines`: by name, points of a count and nanoseconds. Returns the SVG."""
    axes = Axes([point for points in lines.values() for point in points])
    parts = [*axes.grid(), axes.proportional()]
    labels = spread({name: axes.at(*points[-1])[1] for name, points in lines.items()}, 16)
    for (name, points), color in zip(lines.items(), COLORS):
        places = [axes.at(*point) for point in points]
        path = "L".join(f"{x:.1f},{y:.1f}" for x, y in places)
        parts.append(f'<path d="M{path}" fill="none" stroke="{color}" stroke-width="2"/>')
        parts += [f'<circle cx="{x:.1f}" cy="{y:.1f}" r="2.5" fill="{color}"/>' for x, y in places]
        end = WIDTH - RIGHT
        parts.append(f'<path d="M{end + 4},{places[-1][1]:.1f}L{end + 18},{labels[name]:.1f}" '
                     f'stroke="{color}" stroke-width="0.8"/>')
        parts.append(f'<text x="{end + 22}" y="{labels[name] + 4:.1f}" {TEXT} '
                     f'style="fill:{color}">{escape(name)}</text>')
    middle = (LEFT + WIDTH - RIGHT) / 2
    parts.append(f'<text x="{middle}" y="{HEIGHT - 8}" text-anchor="middle" {TEXT}>'
                 f'{escape(title)}</text>')
    body = "\n".join(parts)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
            f'viewBox="0 0 {WIDTH} {HEIGHT}">\n<rect width="100%" height="100%" fill="#fff"/>\n'
            f'{body}\n</svg>\n')
