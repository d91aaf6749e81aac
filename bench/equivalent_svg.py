"""One keyboard twice: as a theme, and as an SVG that draws the same. With a photograph behind it."""

import os
import struct
import subprocess
import sys
import zlib

WIDTH, HEIGHT, SCALE = 320, 216, 2
PHOTO_WIDTH, PHOTO_HEIGHT = 1242, 864

# The looks of the keys by role: colours from top to bottom, colour and size of the text.
LOOKS = {
    "letter": ("#FFFFFFD0", "#D8DCE6C0", "#101820FF", 23),
    "function": ("#404A5CD0", "#2C3444C0", "#FFFFFFFF", 15),
    "space": ("#FFFFFFB0", "#D8DCE6A0", "#101820FF", 15),
    "return": ("#FF9A76FF", "#E8607AFF", "#FFFFFFFF", 15),
}
BACKGROUND = ("#171534FF", "#A94F7DFF")
SHADOW = "#00000040"
CONDITIONS = {
    "letter": "*",
    "function": "DisplayType=Shift,Delete,More,International",
    "space": "DisplayType=Space",
    "return": "DisplayType=Return",
}
SHIFT = "M0,-8 L8.5,0.5 L4,0.5 L4,7 L-4,7 L-4,0.5 L-8.5,0.5 Z"
DELETE = ("M-10.5,0 L-4.5,-7 L8.5,-7 A2,2 0 0 1 10.5,-5 L10.5,5 A2,2 0 0 1 8.5,7 L-4.5,7 Z"
          "M-1,-3 L5,3 M5,-3 L-1,3")
GLOBE = ("M-8.5,0 A8.5,8.5 0 1 1 8.5,0 A8.5,8.5 0 1 1 -8.5,0 Z"
         "M-4,0 A4,8.5 0 1 1 4,0 A4,8.5 0 1 1 -4,0 Z"
         "M-8.5,0 L8.5,0 M0,-8.5 L0,8.5 M-7.2,-4.5 L7.2,-4.5 M-7.2,4.5 L7.2,4.5")
# By role: how far below the middle of its key the baseline of a label lies, in ems.
DROP = {"letter": 0.318, "function": 0.364, "space": 0.364, "return": 0.364}


def row(labels, left, top):
    return [(left + 32 * i + 3, top, 26, label, "letter") for i, label in enumerate(labels)]


def keys():
    """Left, top, width in points (all keys are 42 high), label or path, role."""
    return [
        *row("qwertyuiop", 0, 8),
        *row("asdfghjkl", 16, 62),
        (3, 116, 36, SHIFT, "function"),
        *row("zxcvbnm", 48, 116),
        (281, 116, 36, DELETE, "function"),
        (3, 170, 36, "123", "function"),
        (45, 170, 34, GLOBE, "function"),
        (85, 170, 152, "space", "space"),
        (243, 170, 74, "return", "return"),
    ]


# --- The theme --------------------------------------------------------------------------------


def plist(value):
    if isinstance(value, dict):
        inner = "".join(f"<key>{key}</key>{plist(each)}" for key, each in value.items())
        return f"<dict>{inner}</dict>"
    if isinstance(value, list):
        return f"<array>{''.join(map(plist, value))}</array>"
    if isinstance(value, int):
        return f"<integer>{value}</integer>"
    return f"<string>{value}</string>"


def theme(photo):
    colors = [["UIKBColorBackgroundStandardGradientStart", BACKGROUND[0]],
              ["UIKBColorBackgroundStandardGradientEnd", BACKGROUND[1]], ["shadow", SHADOW]]
    gradients = []
    rules = []
    for role, (top, bottom, text, _) in LOOKS.items():
        colors += [[f"{role} top", top], [f"{role} bottom", bottom], [f"{role} text", text]]
        gradients.append([role, f"{role} top", f"{role} bottom"])
        rules.append([CONDITIONS[role], {
            "BackgroundGradient": role, "TextColor": f"{role} text", "FontName": "Inter-Regular",
            "EtchColor": "shadow", "EtchOffsetX": 0, "EtchOffsetY": 1}])
    root = {"CustomColor": colors, "CustomLinearGradient": gradients,
            "Styles": {"iPhone-Standard": rules}}
    if photo:
        root["BackgroundImages"] = {"Portrait;iPhone-Standard": photo}
    return f'<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">{plist(root)}</plist>\n'


# --- The SVG ----------------------------------------------------------------------------------


def paint(what, color):
    return f'{what}="{color[:7]}" {what}-opacity="{int(color[7:], 16) / 255:.4f}"'


def gradient(name, top, bottom):
    stops = "".join(
        f'<stop offset="{offset}" stop-color="{color[:7]}" '
        f'stop-opacity="{int(color[7:], 16) / 255:.4f}"/>'
        for offset, color in ((0, top), (1, bottom)))
    return f'<linearGradient id="{name}" x1="0" y1="0" x2="0" y2="1">{stops}</linearGradient>'


def mark(label, role, x, y, color):
    size = LOOKS[role][3]
    if label.startswith("M"):
        return (f'<path d="{label}" transform="translate({x} {y}) scale({size / 16})" fill="none" '
                f'stroke-width="1.4" stroke-linejoin="round" {paint("stroke", color)}/>')
    return (f'<text x="{x}" y="{y + DROP[role] * size:.2f}" font-family="Inter" '
            f'font-size="{size}" text-anchor="middle" {paint("fill", color)}>{label}</text>')


def svg_key(key):
    left, top, width, label, role = key
    face = f'<rect x="{left}" y="{top}" width="{width}" height="42" rx="4" fill="url(#{role})"/>'
    x, y = left + width / 2, top + 21
    return face + mark(label, role, x, y + 1, SHADOW) + mark(label, role, x, y, LOOKS[role][2])


def svg(photo):
    gradients = gradient("behind", *BACKGROUND)
    gradients += "".join(gradient(role, *look[:2]) for role, look in LOOKS.items())
    image = (f'<image href="{photo}" width="{WIDTH}" height="{HEIGHT}" '
             f'preserveAspectRatio="none"/>' if photo else "")
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH * SCALE}" '
            f'height="{HEIGHT * SCALE}" viewBox="0 0 {WIDTH} {HEIGHT}">'
            f'<defs>{gradients}</defs>'
            f'<rect width="{WIDTH}" height="{HEIGHT}" fill="url(#behind)"/>{image}'
            f'{"".join(map(svg_key, keys()))}</svg>\n')


# --- The photograph ---------------------------------------------------------------------------


def photograph_rows():
    """Rows of RGB bytes: a sky over hills, with the grain of a film. Always the same."""
    seed = 1
    hills = [0.55 * PHOTO_HEIGHT + 0.12 * PHOTO_HEIGHT * ((x * 7 % 600) / 600 - 0.5) ** 2 * 4
             for x in range(PHOTO_WIDTH)]
    for y in range(PHOTO_HEIGHT):
        down = 60 * y // PHOTO_HEIGHT
        sky = (60 + 5 * down // 2, 90 + down, 190 - down)
        line = bytearray()
        for x in range(PHOTO_WIDTH):
            seed = (seed * 1103515245 + 12345) & 0x7FFFFFFF
            grain = (seed >> 16) % 24
            red, green, blue = sky if y < hills[x] else (40 + x % 32, 70 + y % 24, 50)
            line += bytes((red + grain, green + grain, blue + grain))
        yield bytes(line)


def write_photograph(path):
    """In a process of its own: what this one has had in memory counts for the ones it starts."""
    process = os.fork()
    if process == 0:
        (write_jpeg if path.suffix == ".jpeg" else write_png)(path)
        os._exit(0)
    if os.waitpid(process, 0)[1] != 0:
        sys.exit("no photograph could be made")


def write_jpeg(path):
    with subprocess.Popen(["cjpeg", "-quality", "90", "-outfile", path],
                          stdin=subprocess.PIPE) as cjpeg:
        cjpeg.stdin.write(b"P6 %d %d 255\n" % (PHOTO_WIDTH, PHOTO_HEIGHT))
        for line in photograph_rows():
            cjpeg.stdin.write(line)
    if cjpeg.returncode != 0:
        os._exit(1)


def write_png(path):
    def chunk(kind, data):
        check = struct.pack(">I", zlib.crc32(kind + data))
        return struct.pack(">I", len(data)) + kind + data + check

    packer = zlib.compressobj(6)
    rows = b"".join(packer.compress(b"\0" + line) for line in photograph_rows()) + packer.flush()
    header = struct.pack(">IIBBBBB", PHOTO_WIDTH, PHOTO_HEIGHT, 8, 2, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", rows) +
                     chunk(b"IEND", b""))
