#!/usr/bin/env python3
"""Writes the UI font of the engine's menus and overlays."""

from __future__ import annotations

import re
import sys
import unicodedata
from collections.abc import Callable
from pathlib import Path

import pathops
from fontTools import agl
from fontTools.feaLib.builder import addOpenTypeFeaturesFromString
from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import newTable

import ui_font_glyphs as table
from ui_font_stroke import CAP, XH, Affine, Contour, contours

FILE_NAME = "EuroStyle Normal.ttf"
ASCENT, DESCENT = 860, 230  # a line is 1.09 em high
GAP = 22  # between a capital and its mark
CREATED = 3_800_000_000  # seconds since 1904; fixed, so that the output is bit-identical
COMBINING = {
    "\u0300": "_grave", "\u0301": "_acute", "\u0302": "_hat",
    "\u0303": "_wave", "\u0308": "_dots", "\u030a": "_ring",
}
ENTRIES = {**table.GLYPHS, **{k: f"0 0 / {v}" for k, v in table.ACCENTS.items()}}


def glyph_name(char: str) -> str:
    if len(char) > 1:
        return char[1:] + ".accent"
    if char in ("\u00a0", "\u00ad"):
        return f"uni{ord(char):04X}"
    return agl.UV2AGL.get(ord(char), f"uni{ord(char):04X}")


def outlines(entry: str, place: Affine) -> list[Contour]:
    """All skeletons of an entry as closed contours, which may overlap."""
    found: list[Contour] = []
    for text in entry.split("/", 1)[1].split(" ; "):
        text = text.strip()
        if text.startswith("@") and len(text) > 1:
            name, _, numbers = text[1:].partition(" ")
            inner = Affine(*(float(n) for n in numbers.split(","))) if numbers else Affine()
            found += outlines(ENTRIES[name], inner.then(place))
        elif text:
            found += contours(text, place)
    return found


def merged(found: list[Contour]) -> pathops.Path:
    path = pathops.Path()
    pen = path.getPen()
    for contour in found:
        pen.moveTo(contour[0][0])
        for seg in contour:
            if len(seg) == 3:
                pen.qCurveTo(*seg[1:])
            else:
                pen.lineTo(seg[1])
        pen.closePath()
    path.simplify(fix_winding=True, clockwise=True)
    return path


def tidy(path: pathops.Path, dx: float) -> list[Contour]:
    """Rounds to whole units, and removes specks and points on straight lines."""
    result = []
    for contour in path.contours:
        segs: Contour = []
        for _, pts in contour:  # move, line, quad or close
            pts = tuple((x + dx, y) for x, y in pts)
            if not segs and len(pts) == 1:
                segs.append((pts[0], pts[0]))
            elif pts:
                segs.append((segs[-1][-1], *pts))
        segs.append((segs[-1][-1], segs[0][0]))
        segs = [tuple((round(x), round(y)) for x, y in s) for s in joined(segs, smooth)]
        segs = joined([s for s in segs if s[0] != s[-1]], straight)
        if len(segs) > 2 or any(len(s) > 2 for s in segs):
            result.append(segs)
    return result


def joined(segs: Contour, fits: Callable[[tuple, tuple], bool]) -> Contour:
    """Merges neighbouring segments for which `fits` is true by removing the point between them."""
    out: Contour = []
    for seg in segs:
        if out and fits(out[-1], seg):
            out[-1] = out[-1][:-1] + seg[1:]
        else:
            out.append(seg)
    if len(out) > 2 and fits(out[-1], out[0]):
        out[0] = out.pop()[:-1] + out[0][1:]
    return out


def smooth(a: tuple, b: tuple) -> bool:
    """Whether the point between two curves is implied by its neighbours.

    Rounding such a point by itself would put a kink in the curve. Extremes are
    kept, because rounding them does no harm.
    """
    if len(a) < 3 or len(b) < 3:
        return False
    p, on, q = a[-2], a[-1], b[1]
    if min(abs(p[0] - q[0]), abs(p[1] - q[1])) < 0.6:
        return False
    return max(abs((p[i] + q[i]) / 2 - on[i]) for i in (0, 1)) < 0.4


def straight(a: tuple, b: tuple) -> bool:
    if len(a) > 2 or len(b) > 2:
        return False
    u, w = [(s[1][0] - s[0][0], s[1][1] - s[0][1]) for s in (a, b)]
    cross, dot = u[0] * w[1] - u[1] * w[0], u[0] * w[0] + u[1] * w[1]
    return dot > 0 and abs(cross) <= 0.01 * dot


def drawn(shape: list[Contour]):
    pen = TTGlyphPen(None)
    for contour in shape:
        pen.moveTo(contour[0][0])
        for seg in contour:
            if len(seg) > 2:
                pen.qCurveTo(*seg[1:])
            elif seg is not contour[-1]:
                pen.lineTo(seg[1])
        pen.closePath()
    return pen.glyph()


def bearing(word: str) -> float:
    return table.BEARINGS[word] if word in table.BEARINGS else float(word)


def placed(entry: str) -> tuple[list[Contour], int]:
    """Finished outlines of an entry and its advance width."""
    left, right = entry.split("/", 1)[0].split()
    path = merged(outlines(entry, Affine()))
    if not list(path.segments):
        return [], int(bearing(left) + bearing(right))
    x0, _, x1, _ = path.bounds
    if left == "tab":
        return tidy(path, (table.DIGIT_WIDTH - x1 - x0) / 2 + float(right)), table.DIGIT_WIDTH
    advance = round(bearing(left) + x1 - x0 + bearing(right))
    return tidy(path, bearing(left) - x0), advance


class Font:
    def __init__(self) -> None:
        self.glyphs: dict = {}
        self.advance: dict[str, int] = {}
        self.cmap: dict[int, str] = {}
        self.box: dict[str, tuple] = {}
        self.rise: dict[str, tuple] = {}

    def add(self, name: str, shape: list[Contour], advance: int) -> None:
        self.glyphs[name] = drawn(shape)
        self.advance[name] = advance
        points = [p for contour in shape for seg in contour for p in seg]
        if points:
            xs, ys = zip(*points)
            self.box[name] = (min(xs), max(xs), max(ys))
            self.rise[name] = (min(ys), max(ys))

    def add_entries(self) -> None:
        self.add(".notdef", *placed(table.NOTDEF))
        for name, text in table.ACCENTS.items():
            self.add(glyph_name(name), tidy(merged(outlines(ENTRIES[name], Affine())), 0), 0)
        for char, entry in table.GLYPHS.items():
            if len(char) == 1:
                self.cmap[ord(char)] = glyph_name(char)
                self.add(glyph_name(char), *placed(entry))

    def add_accented(self) -> None:
        for code in range(0xC0, 0x100):
            if code in self.cmap:
                continue
            base, mark = unicodedata.normalize("NFD", chr(code))
            base = "\u0131" if base == "i" else base
            self._compose(chr(code), base, mark)

    def _compose(self, char: str, base: str, mark: str) -> None:
        under, over = glyph_name(base), glyph_name(COMBINING[mark])
        left, right, top = self.box[under]
        dx = round((left + right) / 2)
        flat, dy = 1.0, 0
        if top > XH + 40:  # marks on capitals are lower, so that they stay within the line
            low, high = self.rise[over]
            flat = min(1.0, (ASCENT - 8 - top - GAP) / (high - low))
            dy = round(top + GAP - flat * low)
        pad = max(0, 12 - self.box[over][0] - dx)  # keeps wide marks on i clear of the neighbours
        pen = TTGlyphPen({under: None, over: None})
        pen.addComponent(under, (1, 0, 0, 1, pad, 0))
        pen.addComponent(over, (1, 0, 0, flat, dx + pad, dy))
        name = glyph_name(char)
        self.glyphs[name] = pen.glyph()
        self.advance[name] = self.advance[under] + 2 * pad
        self.cmap[ord(char)] = name


def kern_classes(groups: dict[str, str], prefix: str, font: Font) -> list[str]:
    known = [chr(c) for c in sorted(font.cmap)]
    lines = []
    for key, chars in groups.items():
        members = [glyph_name(c) for c in known if unicodedata.normalize("NFD", c)[0] in chars]
        lines.append(f"@{prefix}{key} = [{' '.join(members)}];")
    return lines


def feature_text(font: Font) -> str:
    lines = kern_classes(table.KERN_FIRST, "first_", font)
    lines += kern_classes(table.KERN_SECOND, "second_", font)
    lines.append("feature kern {")
    for first, pairs in table.KERNS.items():
        for second, amount in re.findall(r"([A-Za-z]+)(-?\d+)", pairs):
            lines.append(f"  pos @first_{first} @second_{second} {amount};")
    lines.append("} kern;")
    return "\n".join(lines)


def build() -> FontBuilder:
    font = Font()
    font.add_entries()
    font.add_accented()
    rest = sorted(n for n in font.glyphs if n not in font.cmap.values() and n != ".notdef")
    order = [".notdef"] + [font.cmap[c] for c in sorted(font.cmap)] + rest
    builder = FontBuilder(1000, isTTF=True)
    builder.setupGlyphOrder(order)
    builder.setupCharacterMap(font.cmap)
    builder.setupGlyf(font.glyphs)
    glyf = builder.font["glyf"]
    builder.setupHorizontalMetrics({n: (font.advance[n], getattr(glyf[n], "xMin", 0)) for n in order})
    builder.setupHorizontalHeader(ascent=ASCENT, descent=-DESCENT, lineGap=0)
    setup_names(builder)
    addOpenTypeFeaturesFromString(builder.font, feature_text(font))
    return builder


def setup_names(builder: FontBuilder) -> None:
    builder.setupNameTable(
        {
            "copyright": "Lumarind Engine contributors",
            "familyName": "Lumarind Sans",
            "styleName": "Regular",
            "uniqueFontIdentifier": "LUMA: Lumarind Sans Normal 1.0",
            "fullName": "Lumarind Sans Normal",
            "version": "Version 1.000",
            "psName": "LumarindSans-Normal",
            "licenseDescription": "MIT",
            "typographicFamily": "Lumarind Sans",
            "typographicSubfamily": "Normal",
        },
        mac=False,
    )
    builder.setupOS2(
        sTypoAscender=ASCENT, sTypoDescender=-DESCENT, sTypoLineGap=0,
        usWinAscent=ASCENT, usWinDescent=DESCENT, sxHeight=XH, sCapHeight=CAP,
        achVendID="LUMA", fsType=0, fsSelection=0x40 | 0x80, version=4,
        usWeightClass=400, usWidthClass=6,
        yStrikeoutPosition=290, yStrikeoutSize=84, ulCodePageRange1=1,
    )
    builder.setupPost(underlinePosition=-100, underlineThickness=84)
    head = builder.font["head"]
    head.created = head.modified = CREATED
    head.fontRevision = 1.0
    builder.font.recalcTimestamp = False
    gasp = builder.font["gasp"] = newTable("gasp")
    gasp.gaspRange = {0xFFFF: 0x0A}  # grey at every size, never snapped


def make(out_dir: str | Path) -> None:
    path = Path(out_dir) / "fonts" / FILE_NAME
    path.parent.mkdir(parents=True, exist_ok=True)
    build().save(path)


if __name__ == "__main__":
    make(sys.argv[1] if len(sys.argv) > 1 else "assets")
