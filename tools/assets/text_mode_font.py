"""Builds the engine's text-mode font: an 8 x 16 pixel design turned into a TrueType file."""

from __future__ import annotations

import sys
import unicodedata
from pathlib import Path

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import TTFont, newTable
from fontTools.ttLib.tables._g_l_y_f import Glyph
from fontTools.ttLib.tables.O_S_2f_2 import Panose
from fontTools.ttLib.tables.ttProgram import Program

Rows = list[str]
Point = tuple[int, int]
Pixels = set[Point]

FAMILY = "Lumarind Text Mode"  # internal name; the file name is the one that the screens open
FILE_NAME = "fonts/Perfect DOS VGA 437 Win.ttf"
VERSION = "Version 1.000"
PANOSE = Panose(bFamilyType=2, bSerifStyle=11, bWeight=6, bProportion=9)  # monospaced sans serif

CELL_W, CELL_H = 8, 16  # design pixels
ASCENT_ROWS = 12  # rows above the baseline; the other four are below it
UNIT = 128  # font units per design pixel, so the em is the cell height
EM = UNIT * CELL_H
# Seconds since 1904-01-01; fixed, so that the output is bit-identical.
TIMESTAMP = 3786912000

BLANK = "." * CELL_W
SOURCE = Path(__file__).with_name("text_mode_font.txt")

# Accent rows, as wide as a letter. The "narrow" ones are centred on a stem in columns 4 and 5.
ACCENTS: dict[str, Rows] = {
    "grave": ["..##....", "...##..."],
    "acute": ["...##...", "..##...."],
    "circumflex": ["..###...", ".##.##.."],
    "tilde": [".###.##.", "##.###.."],
    "diaeresis": [".##.##..", ".##.##.."],
    "ring": ["..###...", ".##.##..", "..###..."],
    "grave narrow": ["..##....", "...##..."],
    "acute narrow": ["....##..", "...##..."],
    "circumflex narrow": ["..####..", ".##..##."],
    "diaeresis narrow": [".##..##.", ".##..##."],
}
CEDILLA: Rows = ["...##...", "....##..", "..###..."]

# Row removed from a capital with an accent: the cell has no room above full height.
SQUEEZED_ROW = {"A": 5, "E": 4, "I": 5, "N": 4, "O": 6, "U": 6, "Y": 3}
ACCENT_BOTTOM_LOWER = 4  # one empty row stays between the accent and the x-height
ACCENT_BOTTOM_UPPER = 2

# Every composed letter: (base, accent).
COMPOSED: dict[str, tuple[str, str]] = {
    "À": ("A", "grave"), "Á": ("A", "acute"), "Â": ("A", "circumflex"), "Ã": ("A", "tilde"),
    "Ä": ("A", "diaeresis"), "È": ("E", "grave"), "É": ("E", "acute"), "Ê": ("E", "circumflex"),
    "Ë": ("E", "diaeresis"), "Ì": ("I", "grave narrow"), "Í": ("I", "acute narrow"),
    "Î": ("I", "circumflex narrow"), "Ï": ("I", "diaeresis narrow"), "Ñ": ("N", "tilde"),
    "Ò": ("O", "grave"), "Ó": ("O", "acute"), "Ô": ("O", "circumflex"), "Õ": ("O", "tilde"),
    "Ö": ("O", "diaeresis"), "Ù": ("U", "grave"), "Ú": ("U", "acute"), "Û": ("U", "circumflex"),
    "Ü": ("U", "diaeresis"), "Ý": ("Y", "acute narrow"),
    "à": ("a", "grave"), "á": ("a", "acute"), "â": ("a", "circumflex"), "ã": ("a", "tilde"),
    "ä": ("a", "diaeresis"), "å": ("a", "ring"), "è": ("e", "grave"), "é": ("e", "acute"),
    "ê": ("e", "circumflex"), "ë": ("e", "diaeresis"), "ì": ("ı", "grave narrow"),
    "í": ("ı", "acute narrow"), "î": ("ı", "circumflex narrow"), "ï": ("ı", "diaeresis narrow"),
    "ñ": ("n", "tilde"), "ò": ("o", "grave"), "ó": ("o", "acute"), "ô": ("o", "circumflex"),
    "õ": ("o", "tilde"), "ö": ("o", "diaeresis"), "ù": ("u", "grave"), "ú": ("u", "acute"),
    "û": ("u", "circumflex"), "ü": ("u", "diaeresis"), "ý": ("y", "acute"), "ÿ": ("y", "diaeresis"),
}
WITH_CEDILLA = {"Ç": "C", "ç": "c"}

# Box lines, as half-open pixel spans across the line. A double line is its outer span without the inner.
LINE_SPANS = {
    "v": {"LIGHT": (3, 5), "HEAVY": (2, 6), "DOUBLE": (1, 7), "GAP": (3, 5)},
    "h": {"LIGHT": (7, 9), "HEAVY": (6, 10), "DOUBLE": (5, 11), "GAP": (7, 9)},
}
DOUBLE_STROKE = 2
# Arm -> its axis, the other axis, the arms to its sides, the arm opposite.
ARM_AXES = {
    "u": ("v", "h", "lr", "d"), "d": ("v", "h", "lr", "u"),
    "l": ("h", "v", "ud", "r"), "r": ("h", "v", "ud", "l"),
}
DIRECTIONS = {
    "UP": "u", "DOWN": "d", "LEFT": "l", "RIGHT": "r", "VERTICAL": "ud", "HORIZONTAL": "lr",
}
DASHES = {"DOUBLE": 2, "TRIPLE": 3, "QUADRUPLE": 4}
# Columns or rows left empty by dashed lines: the last one of each dash, spread over the cell.
DASH_GAPS = {
    ("v", 2): (6, 7, 14, 15), ("v", 3): (4, 9, 10, 15), ("v", 4): (3, 7, 11, 15),
    ("h", 2): (3, 7), ("h", 3): (2, 5, 7), ("h", 4): (1, 3, 5, 7),
}
# Rounded corners: the quarter turn from the bottom edge to the right edge, the others are mirrored.
ARC_DOWN_RIGHT: Rows = [BLANK] * 7 + [".....###", "....####", "...###.."] + ["...##..."] * 6

QUADRANTS = {
    0x2596: "c", 0x2597: "d", 0x2598: "a", 0x2599: "acd", 0x259A: "ad",
    0x259B: "abc", 0x259C: "abd", 0x259D: "b", 0x259E: "bc", 0x259F: "bcd",
}
QUADRANT_ORIGIN = {"a": (0, 0), "b": (4, 0), "c": (0, 8), "d": (4, 8)}

NOTDEF: Rows = (
    [BLANK] * 2 + ["#######.", "##...##.", "##...##."] + ["##.#.##."] * 4
    + ["##...##.", "##...##.", "#######."] + [BLANK] * 4
)


def read_source(text: str) -> dict[int, Rows]:
    """Parses the glyph file into code point -> sixteen rows."""
    glyphs: dict[int, Rows] = {}
    rows: Rows = []
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("U+"):
            rows = glyphs.setdefault(int(line[2:].split()[0], 16), [])
            if rows:
                raise ValueError(f"line {number}: {line} is drawn twice")
        elif line and not line.startswith(";"):
            if len(line) != CELL_W or set(line) - set("#."):
                raise ValueError(f"line {number}: not a row of {CELL_W} pixels: {line!r}")
            rows.append(line)
    wrong = [f"U+{code:04X}" for code, glyph in glyphs.items() if len(glyph) != CELL_H]
    if wrong:
        raise ValueError(f"not {CELL_H} rows high: {', '.join(wrong)}")
    return glyphs


def to_pixels(rows: Rows) -> Pixels:
    """Set pixels of a bitmap as (column, row)."""
    return {(x, y) for y, row in enumerate(rows) for x, mark in enumerate(row) if mark == "#"}


def rectangle(x0: int, y0: int, x1: int, y1: int) -> Pixels:
    """All pixels of a half-open rectangle."""
    return {(x, y) for x in range(x0, x1) for y in range(y0, y1)}


def squeeze(rows: Rows, dropped: int) -> Rows:
    """Removes a row and moves the rows above it down."""
    return [BLANK] + rows[:dropped] + rows[dropped + 1:]


def compose(glyphs: dict[int, Rows], base: str, accent: str) -> Pixels:
    """Base letter plus the accent above it."""
    rows = glyphs[ord(base)]
    bottom = ACCENT_BOTTOM_LOWER
    if base in SQUEEZED_ROW:
        rows, bottom = squeeze(rows, SQUEEZED_ROW[base]), ACCENT_BOTTOM_UPPER
    marks = ACCENTS[accent]
    top = bottom - len(marks)
    return to_pixels(rows) | {(x, y + top) for x, y in to_pixels(marks)}


def box_arms(name: str) -> dict[str, str]:
    """Weight of each arm, read from the character's Unicode name."""
    arms: dict[str, str] = {}
    weight = "LIGHT"
    for part in name.split(" AND "):
        words = part.replace("SINGLE", "LIGHT").split()
        weight = next((word for word in words if word in LINE_SPANS["v"]), weight)
        for word in words:
            arms.update({arm: weight for arm in DIRECTIONS.get(word, "")})
    return arms


def stretch(arm: str, across: tuple[int, int], length: int) -> Pixels:
    """A bar as wide as the span across, reaching into the cell from the edge the arm leaves by."""
    low, high = across
    corners = {
        "u": (low, 0, high, length),
        "d": (low, CELL_H - length, high, CELL_H),
        "l": (0, low, length, high),
        "r": (CELL_W - length, low, CELL_W, high),
    }
    return rectangle(*corners[arm])


def box_pixels(arms: dict[str, str]) -> Pixels:
    """Line art for one cell: the hollow of double lines is cut out before single lines cross them."""
    solid: Pixels = set()
    hollow: Pixels = set()
    crossing: Pixels = set()
    for arm, weight in arms.items():
        axis, other_axis, sides, opposite = ARM_AXES[arm]
        along, across = LINE_SPANS[axis], LINE_SPANS[other_axis]
        sideways = [arms[side] for side in sides if side in arms]
        through = opposite in arms
        if weight == "DOUBLE":
            stem = sideways and "DOUBLE" not in sideways and not through
            solid |= stretch(arm, along["DOUBLE"], across[heaviest(sideways)][1])
            hollow |= stretch(arm, along["GAP"], across["GAP"][0 if stem else 1])
        elif "DOUBLE" in sideways:
            if through:
                length = across["GAP"][1]
            elif len(sideways) == 2:  # a tee stops at the nearer of the two lines
                length = across["DOUBLE"][0] + DOUBLE_STROKE
            else:  # a corner takes in both
                length = across["DOUBLE"][1]
            crossing |= stretch(arm, along[weight], length)
        else:
            solid |= stretch(arm, along[weight], across[heaviest(sideways)][1])
    return (solid - hollow) | crossing


def heaviest(weights: list[str]) -> str:
    """The widest of the given weights."""
    return max(weights, key=["LIGHT", "HEAVY", "DOUBLE"].index, default="LIGHT")


def mirror(pixels: Pixels, horizontal: bool, vertical: bool) -> Pixels:
    """Flips a cell."""
    return {
        (CELL_W - 1 - x if horizontal else x, CELL_H - 1 - y if vertical else y) for x, y in pixels
    }


def diagonal(rising: bool) -> Pixels:
    """Corner to corner, two pixels wide like every other line."""
    falling = {(x, y) for y in range(CELL_H) for x in (y // 2, (y + 1) // 2) if x < CELL_W}
    return mirror(falling, rising, False)


def box_glyph(code: int) -> Pixels:
    """One character of the box-drawing range."""
    name = unicodedata.name(chr(code)).removeprefix("BOX DRAWINGS ")
    arms = box_arms(name)
    if "DIAGONAL" in name:
        rising, falling = diagonal(True), diagonal(False)
        return rising | falling if "CROSS" in name else rising if "UPPER RIGHT" in name else falling
    if "ARC" in name:
        return mirror(to_pixels(ARC_DOWN_RIGHT), "LEFT" in name, "UP" in name)
    if "DASH" in name:
        weight, count = name.split()[0], DASHES[name.split()[1]]
        axis = "v" if "VERTICAL" in name else "h"
        gaps = DASH_GAPS[axis, count]
        line = box_pixels({arm: weight for arm in arms})
        return {(x, y) for x, y in line if (y if axis == "v" else x) not in gaps}
    return box_pixels(arms)


def block_glyph(code: int) -> Pixels:
    """One character of the block range: bars, shades and quadrants."""
    cell = rectangle(0, 0, CELL_W, CELL_H)
    sparse = {(x, y) for x, y in cell if (x + 2 * (y % 2)) % 4 == 0}
    special = {
        0x2580: rectangle(0, 0, CELL_W, 8),
        0x2590: rectangle(4, 0, CELL_W, CELL_H),
        0x2591: sparse,
        0x2592: {(x, y) for x, y in cell if (x + y) % 2 == 0},
        0x2593: cell - sparse,
        0x2594: rectangle(0, 0, CELL_W, 2),
        0x2595: rectangle(7, 0, CELL_W, CELL_H),
    }
    if code in special:
        return special[code]
    if code in QUADRANTS:
        origins = [QUADRANT_ORIGIN[part] for part in QUADRANTS[code]]
        return set().union(*(rectangle(x, y, x + 4, y + 8) for x, y in origins))
    if code <= 0x2588:  # lower eighths, growing
        return rectangle(0, CELL_H - 2 * (code - 0x2580), CELL_W, CELL_H)
    return rectangle(0, 0, 0x2590 - code, CELL_H)  # left eighths, shrinking


def all_glyphs() -> dict[int, Pixels]:
    """Every character of the font with its set pixels."""
    drawn = read_source(SOURCE.read_text(encoding="utf-8"))
    glyphs = {code: to_pixels(rows) for code, rows in drawn.items()}
    glyphs[0xA0] = set()
    for letter, (base, accent) in COMPOSED.items():
        glyphs[ord(letter)] = compose(drawn, base, accent)
    for letter, base in WITH_CEDILLA.items():
        hook = {(x, y + ASCENT_ROWS) for x, y in to_pixels(CEDILLA)}
        glyphs[ord(letter)] = to_pixels(drawn[ord(base)]) | hook
    glyphs.update({code: box_glyph(code) for code in range(0x2500, 0x2580)})
    glyphs.update({code: block_glyph(code) for code in range(0x2580, 0x25A0)})
    return dict(sorted(glyphs.items()))


def boundary(pixels: Pixels) -> dict[Point, list[Point]]:
    """Unit edges around the set pixels, keyed by start corner, with the ink on their right."""
    edges: dict[Point, list[Point]] = {}
    for x, y in sorted(pixels):
        sides = (
            ((x, y - 1), (x, y), (x + 1, y)),
            ((x + 1, y), (x + 1, y), (x + 1, y + 1)),
            ((x, y + 1), (x + 1, y + 1), (x, y + 1)),
            ((x - 1, y), (x, y + 1), (x, y)),
        )
        for neighbour, start, end in sides:
            if neighbour not in pixels:
                edges.setdefault(start, []).append(end)
    return edges


def trace(pixels: Pixels) -> list[list[Point]]:
    """Closed contours of corners only: outer ones clockwise on screen, holes the other way."""
    edges = boundary(pixels)
    contours = []
    while edges:
        start = min(edges)
        here, ahead, corners = start, (0, 0), []
        while here in edges:
            ends = edges[here]
            # Two pixels that touch only by a corner stay apart: there, always turn right.
            right = (here[0] - ahead[1], here[1] + ahead[0])
            end = right if right in ends else ends[0]
            ends.remove(end)
            if not ends:
                del edges[here]
            step = (end[0] - here[0], end[1] - here[1])
            if step != ahead:
                corners.append(here)
            here, ahead = end, step
            if here == start:
                break
        first_step = (corners[1][0] - start[0], corners[1][1] - start[1])
        if first_step[0] * ahead[1] == first_step[1] * ahead[0]:
            corners.pop(0)
        contours.append(corners)
    return contours


def outline(pixels: Pixels) -> Glyph:
    """TrueType outline of a bitmap."""
    pen = TTGlyphPen(None)
    for corners in trace(pixels):
        points = [(x * UNIT, (ASCENT_ROWS - y) * UNIT) for x, y in corners]
        pen.moveTo(points[0])
        for point in points[1:]:
            pen.lineTo(point)
        pen.closePath()
    return pen.glyph()


def glyph_name(code: int) -> str:
    """Production name of a character."""
    return "space" if code == 0x20 else f"uni{code:04X}"


def add_rendering_hints(font: TTFont) -> None:
    """Disables grid-fitting and hinting."""
    gasp = newTable("gasp")
    gasp.version = 1
    gasp.gaspRange = {0xFFFF: 0x000A}  # smooth, never grid-fit
    font["gasp"] = gasp
    # A program that disables glyph instructions. Some renderers auto-hint a font that has no program or only a
    # tiny one, which would distort the pixels.
    prep = newTable("prep")
    prep.program = Program()
    prep.program.fromAssembly(
        ["PUSHW[ ]", "511", "SCANCTRL[ ]", "PUSHB[ ]", "4", "SCANTYPE[ ]", "PUSHB[ ]", "1 1", "INSTCTRL[ ]"]
    )
    font["prep"] = prep


def build(path: Path) -> None:
    """Writes the font file."""
    glyphs = all_glyphs()
    outlines = {".notdef": outline(to_pixels(NOTDEF))}
    outlines |= {glyph_name(code): outline(pixels) for code, pixels in glyphs.items()}
    ascent, descent, advance = ASCENT_ROWS * UNIT, (CELL_H - ASCENT_ROWS) * UNIT, CELL_W * UNIT

    fb = FontBuilder(EM, isTTF=True)
    fb.setupGlyphOrder(list(outlines))
    fb.setupCharacterMap({code: glyph_name(code) for code in glyphs})
    fb.setupGlyf(outlines)
    table = fb.font["glyf"]
    fb.setupHorizontalMetrics({name: (advance, getattr(table[name], "xMin", 0)) for name in outlines})
    fb.setupHorizontalHeader(ascent=ascent, descent=-descent, lineGap=0)
    fb.setupNameTable({
        "copyright": "Lumarind Engine contributors",
        "familyName": FAMILY,
        "styleName": "Regular",
        "uniqueFontIdentifier": f"LUMA: {FAMILY}: 1.000",
        "fullName": FAMILY,
        "version": VERSION,
        "psName": FAMILY.replace(" ", "") + "-Regular",
        "manufacturer": "Lumarind Engine",
        "licenseDescription": "MIT",
    })
    fb.setupOS2(
        version=4, xAvgCharWidth=advance, usWeightClass=400, usWidthClass=5, fsType=0, achVendID="LUMA",
        sTypoAscender=ascent, sTypoDescender=-descent, sTypoLineGap=0, usWinAscent=ascent,
        usWinDescent=descent, sxHeight=7 * UNIT, sCapHeight=10 * UNIT, fsSelection=0x0040 | 0x0080,
        panose=PANOSE, ulUnicodeRange1=0x00000003, ulUnicodeRange2=0,
        ulCodePageRange1=0x00000001, ulCodePageRange2=0x40000000,
    )
    fb.setupPost(isFixedPitch=1, underlinePosition=-2 * UNIT, underlineThickness=UNIT)
    add_rendering_hints(fb.font)
    fb.updateHead(created=TIMESTAMP, modified=TIMESTAMP, lowestRecPPEM=16, fontRevision=1.0)
    fb.font.recalcTimestamp = False
    path.parent.mkdir(parents=True, exist_ok=True)
    fb.save(path)


def make(out_dir: Path | str) -> None:
    """Writes the font below out_dir."""
    build(Path(out_dir) / FILE_NAME)


if __name__ == "__main__":
    make(sys.argv[1] if len(sys.argv) > 1 else "assets")
