"""A theme of about 3 MB in the XML form: 10,000 colours, 2,000 gradients and 4,000 rules."""

import plistlib

COLORS, GRADIENTS, RULES = 10_000, 2_000, 4_000
STYLES = ("iPhone-Standard", "iPhone-Alert", "iPad-Standard", "iPad-Alert")
CONDITIONS = (
    "DisplayType=Shift,Delete,More,International,Dictation;ControlState=1,3",
    "KeyName=Latin-Small-Letter-{0},Latin-Capital-Letter-{0};Row=Row1,Row2,Row3",
    "DisplayType=Letter;Row=Row{1};ControlState=2,3;KeyName=Latin-Small-Letter-{0}",
    "DisplayType=Return,Space;ControlState=1",
    "DisplayTypeHint=1{1};KeyName=Digit-{1}",
)


def color_name(i):
    return f"Colour {i} of the theme"


def gradient_name(i):
    return f"Gradient {i} of the theme"


def condition(i):
    return CONDITIONS[i % len(CONDITIONS)].format("QWERTYUIOPASDFGHJKLZXCVBNM"[i % 26], i % 5)


def rule(i):
    style = {
        "BackgroundGradient": gradient_name(i % GRADIENTS),
        "TextColor": color_name(7 * i % COLORS),
        "EtchColor": color_name(11 * i % COLORS),
        "EtchOffsetY": 1,
    }
    if i % 3 == 0:
        style["FontName"] = "Inter-Medium"
    return [condition(i), style]


def theme():
    return {
        "CustomColor": [[color_name(i), f"#{i * 2654435761 % 2**32:08X}"] for i in range(COLORS)],
        "CustomLinearGradient": [[gradient_name(i), color_name(2 * i), color_name(2 * i + 1)]
                                 for i in range(GRADIENTS)],
        "Styles": {style: [rule(i) for i in range(n, RULES, len(STYLES))]
                   for n, style in enumerate(STYLES)},
    }


def write(path, form):
    """Writes the theme; `form` is plistlib's. Returns the size of the file in bytes."""
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(plistlib.dumps(theme(), fmt=form))
    return path.stat().st_size
