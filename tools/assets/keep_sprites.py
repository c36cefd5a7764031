"""Generates the enemies and items of the example game Cinder Keep: one sprite sheet of 48 px cells, with JSON as
exported by a sprite editor.

Drawn with the knight's primitives. The feet are at the middle of a cell's lower edge; enemies face right.
"""

from __future__ import annotations

import json
import math
from pathlib import Path
from typing import Callable

import numpy as np
from PIL import Image

from knight_raster import (ANCHOR_X, ANCHOR_Y, CODE_COLOURS, GLINT, LIGHT, MIDDLE, OUTLINE, SHADE, Part, blank, code,
                           polygon_mask)

PATH, SHEET = "sprites.json", "sprites.png"
CELL, COLUMNS = 48, 12
Draw = Callable[[np.ndarray, int], None]


def rect(frame: np.ndarray, x0: int, y0: int, x1: int, y1: int, material: str, tone: int) -> None:
    """Fills a rectangle, ends excluded; coordinates as in knight_raster."""
    frame[ANCHOR_Y + y0 : ANCHOR_Y + y1, ANCHOR_X + x0 : ANCHOR_X + x1] = code(material, tone)


def dot(frame: np.ndarray, x: int, y: int, material: str, tone: int) -> None:
    rect(frame, x, y, x + 1, y + 1, material, tone)


def whiten(frame: np.ndarray) -> None:
    """The frame shown when hit."""
    frame[frame > 0] = code("bone", GLINT)


# --- enemies ---

def walker(frame: np.ndarray, n: int, raised: float = 0.0) -> None:
    """The walker: an empty suit of armour with glowing eyes."""
    swing = math.sin(n * math.pi / 3)
    bob = 1 if n % 3 == 1 else 0
    far, near = Part(), Part()
    for part, way, material in ((far, -swing, "leather"), (near, swing, "leather")):
        knee, foot = (way * 3, -9), (way * 6 - (1 if way < 0 else 0), -2 - max(0, way) * 1.5)
        part.capsule((0, -15 + bob), knee, 2.4, 2.2, material)
        part.capsule(knee, foot, 2.0, 1.8, material)
        part.capsule(foot, (foot[0] + 3, foot[1] + 0.4), 1.5, 1.2, material)
    far.onto(frame)
    cape = Part()
    cape.polygon([(-4, -28 + bob), (-9 - swing, -12), (-4, -10), (1, -26 + bob)], "cloth", -0.3)
    cape.onto(frame)
    near.onto(frame)
    body = Part()
    body.ellipse((0, -21 + bob), 5.5, 7.5, 0, "leather")
    body.line((-4, -17 + bob), (5, -16 + bob), "gold", MIDDLE)
    body.onto(frame)
    head = Part()
    head.ellipse((1, -32 + bob), 4.6, 5.2, 0, "leather")
    head.polygon([(-3, -35 + bob), (-9, -39 + bob), (-1, -37 + bob)], "bone")
    head.polygon([(3, -36 + bob), (8, -41 + bob), (5, -35 + bob)], "bone")
    head.onto(frame)
    rect(frame, 1, -33 + bob, 6, -31 + bob, "coal", OUTLINE)
    dot(frame, 3, -33 + bob, "ember", MIDDLE), dot(frame, 5, -33 + bob, "ember", LIGHT)
    arm = Part()
    hand = (6 + swing * 2, -17 + bob - raised)
    arm.capsule((1, -26 + bob), hand, 2.3, 1.9, "leather")
    arm.onto(frame)
    blade = Part()
    blade.polygon([(hand[0], hand[1] - 1), (hand[0] + 12, hand[1] - 6), (hand[0] + 13, hand[1] - 4), (hand[0], hand[1] + 2)], "bone")
    blade.onto(frame)


def hopper(frame: np.ndarray, pose: str, n: int) -> None:
    """The hopper: a lump of coal with a fire inside; it crouches before it jumps."""
    wide, tall, lift = {"sit": (11, 9 + n, 0), "crouch": (14, 6, 0), "air": (9, 12, 4)}[pose]
    body = Part()
    body.ellipse((0, -tall - lift), wide, tall, 0, "far_cloth", 0.1)
    for x in (-6, -1, 5):
        body.polygon([(x - 3, -tall * 1.7 - lift), (x, -tall * 2 - 4 - lift), (x + 3, -tall * 1.7 - lift)], "far_cloth", 0.3)
    body.onto(frame)
    inside = polygon_mask([(-wide, -lift), (wide, -lift), (wide, -2 * tall - lift), (-wide, -2 * tall - lift)])
    filled = (frame > 0) & inside
    for k, (x0, y0, x1, y1) in enumerate(((-0.6, -0.5, -0.2, -1.2), (-0.2, -1.2, 0.1, -0.8), (0.1, -0.8, 0.5, -1.4), (-0.7, -1.1, -0.4, -1.5))):
        for t in np.linspace(0, 1, 14):
            x, y = round((x0 + (x1 - x0) * t) * wide), round((y0 + (y1 - y0) * t) * tall - lift)
            if filled[ANCHOR_Y + y, ANCHOR_X + x]:
                dot(frame, x, y, "fire", SHADE if (k + n) % 2 else MIDDLE)
    eye = round(-tall * 1.05 - lift)
    for x in (2, 7):
        rect(frame, x - (wide < 10), eye - 2, x + 2 - (wide < 10), eye + 1, "fire", LIGHT if pose != "crouch" else GLINT)
        dot(frame, x + 1 - (wide < 10), eye, "cloth", OUTLINE)
    for x in (-wide + 3, wide - 5):
        rect(frame, x, -2 - lift, x + 4, -lift, "cloth", OUTLINE)


def watcher(frame: np.ndarray, heat: int, n: int) -> None:
    """The watcher: a gargoyle on a post that spits fire; before that its mouth glows."""
    post = Part()
    post.polygon([(-7, -1), (7, -1), (5, -9), (-5, -9)], "sandstone", -0.1)
    post.onto(frame)
    wing = Part()
    wing.polygon([(-2, -20), (-15, -36 + n), (-17, -22 + n), (-10, -18), (-6, -12)], "sandstone", -0.35)
    wing.onto(frame)
    body = Part()
    body.ellipse((-1, -16), 7, 8, 10, "sandstone")
    body.capsule((3, -12), (5, -8), 2, 2.4, "sandstone")
    body.onto(frame)
    head = Part()
    head.ellipse((4, -27), 7.5, 6.5, 0, "sandstone", 0.1)
    head.polygon([(-1, -31), (-5, -39), (2, -33)], "bone")
    head.polygon([(5, -32), (6, -40), (9, -31)], "bone")
    head.onto(frame)
    dot(frame, 6, -30, "ember", LIGHT), dot(frame, 7, -30, "ember", LIGHT), dot(frame, 5, -31, "coal", OUTLINE)
    gap = 1 + heat
    rect(frame, 6, -26, 12, -26 + gap, "coal", OUTLINE)
    if heat:
        rect(frame, 7, -26, 12, -26 + gap, "fire", SHADE if heat == 1 else MIDDLE if heat == 2 else LIGHT)
        for k in range(heat * 2):
            dot(frame, 12 + (k * 5 + n * 3) % (3 + heat * 2), -28 + (k * 7 + n) % 6, "fire", LIGHT if k % 2 else SHADE)


# --- things ---

def flame(frame: np.ndarray, x: float, base: float, tall: float, wide: float, n: int, seed: float = 0.0) -> None:
    """A flickering flame."""
    for dy in range(int(tall) + 1):
        t = dy / tall
        lean = math.sin(n * math.pi / 2 + t * 4 + seed) * 2.2 * t
        half = wide * (1 - t) ** 0.7 * (0.75 + 0.25 * math.sin(3.1 * min(t * 2.4, 1)))
        for dx in range(-int(wide) - 4, int(wide) + 5):
            near = abs(dx - lean) / max(half, 0.01)
            if near <= 1:
                heat = (1 - near) * 0.9 + (1 - t) * 0.75
                tone = LIGHT if heat > 1.05 else MIDDLE if heat > 0.72 else SHADE if heat > 0.35 else OUTLINE
                dot(frame, round(x + dx), round(base - dy), "fire", tone)


def ember(frame: np.ndarray, n: int) -> None:
    body = Part()
    turn = abs(math.cos(n * math.pi / 6))
    body.polygon([(0, -15), (1.5 + 4.5 * turn, -9), (0, -3), (-1.5 - 4.5 * turn, -9)], "gold", 0.2)
    body.onto(frame)
    rect(frame, 0, -11, 1, -7, "fire", LIGHT), dot(frame, -1, -10, "fire", MIDDLE)
    if n < 2:
        dot(frame, 2 - n, -13 + n, "bone", GLINT)


def heart(frame: np.ndarray, n: int) -> None:
    body = Part()
    r = 3.6 + (0.5 if n == 1 else 0)
    body.ellipse((-3, -11), r, r, 0, "cloth", 0.3), body.ellipse((3, -11), r, r, 0, "cloth", 0.3)
    body.polygon([(-6.2, -9.5), (6.2, -9.5), (0, -2.5)], "cloth", 0.2)
    body.onto(frame)
    rect(frame, -5, -13, -3, -11, "bone", GLINT)


def key(frame: np.ndarray, n: int) -> None:
    y = -16 - (0, 1, 2, 1)[n]
    body = Part()
    body.ellipse((0, y - 4), 5, 5, 0, "gold", 0.2)
    body.capsule((0, y), (0, y + 12), 1.4, 1.4, "gold")
    body.capsule((1, y + 8), (5, y + 8), 1.2, 1.2, "gold"), body.capsule((1, y + 12), (4, y + 12), 1.2, 1.2, "gold")
    body.onto(frame)
    rect(frame, -2, y - 6, 2, y - 2, "gold", OUTLINE), rect(frame, -1, y - 5, 1, y - 3, "cloth", LIGHT)


def door(frame: np.ndarray, _: int) -> None:
    rect(frame, -8, -48, 8, 0, "leather", OUTLINE)
    for x in (-7, -2, 3):
        rect(frame, x, -47, x + 4, -1, "leather", MIDDLE)
        rect(frame, x, -47, x + 1, -1, "leather", LIGHT)
        rect(frame, x + 3, -47, x + 4, -1, "leather", SHADE)
    for y in (-42, -10):
        rect(frame, -8, y, 8, y + 4, "steel", SHADE), rect(frame, -8, y, 8, y + 1, "steel", MIDDLE)
        for x in (-6, 0, 5):
            dot(frame, x, y + 2, "steel", GLINT)
    rect(frame, -5, -30, 5, -18, "gold", SHADE), rect(frame, -5, -30, 5, -29, "gold", LIGHT)
    rect(frame, -4, -29, 4, -19, "gold", MIDDLE), rect(frame, -1, -27, 1, -21, "coal", OUTLINE), rect(frame, -2, -26, 2, -24, "coal", OUTLINE)


def platform(frame: np.ndarray, _: int) -> None:
    """A moving platform: its top is row 36 of the cell, 12 px thick."""
    rect(frame, -24, -12, 24, 0, "steel", OUTLINE)
    rect(frame, -23, -12, 23, -10, "gold", LIGHT)
    rect(frame, -23, -10, 23, -3, "leather", MIDDLE), rect(frame, -23, -5, 23, -3, "leather", SHADE)
    for x in (-23, -10, 8, 20):
        rect(frame, x, -11, x + 3, -2, "steel", SHADE), rect(frame, x, -11, x + 1, -2, "steel", MIDDLE)
    rect(frame, -20, -2, 20, -1, "leather", OUTLINE)


def brazier(frame: np.ndarray, n: int, lit: bool) -> None:
    stand = Part()
    stand.polygon([(-6, -1), (6, -1), (2, -5), (2, -12), (-2, -12), (-2, -5)], "steel", -0.1)
    stand.polygon([(-8, -19), (8, -19), (5, -12), (-5, -12)], "steel")
    stand.onto(frame)
    rect(frame, -7, -20, 7, -18, "coal", MIDDLE)
    if lit:
        rect(frame, -6, -20, 6, -18, "fire", MIDDLE)
        flame(frame, -3, -19, 11, 3.4, n, 1.0), flame(frame, 3, -19, 12, 3.4, n, 2.6), flame(frame, 0, -19, 18, 4.6, n)


def exit_gate(frame: np.ndarray, n: int) -> None:
    """An arch full of light."""
    for y in range(-46, 0):
        half = 17 if y > -30 else int(17 * math.sqrt(max(1 - ((y + 30) / 16.5) ** 2, 0)))
        for x in range(-half, half):
            edge = half - abs(x + 0.5)
            joint = (y // 8 + (x > 0)) % 2 and y % 8 == 0
            if edge < 5:
                dot(frame, x, y, "stone", OUTLINE if edge < 1 or joint else LIGHT if x < 0 and edge > 3 else MIDDLE)
            else:
                wave = math.sin(y * 0.3 + n * math.pi / 2 + 1.2 * math.sin(x * 0.4))
                level = (edge - 5) * 0.3 + wave * 0.5 + (y + 46) / 46 * 0.6 - 0.2 + ((x + y) % 2) * 0.3
                dot(frame, x, y, "fire", OUTLINE if level < 0.5 else SHADE if level < 1.3 else MIDDLE if level < 2.2 else LIGHT)


def fireball(frame: np.ndarray, n: int) -> None:
    for k, (x, r) in enumerate(((-8 - n, 1.6), (-5, 2.6), (0, 4.2))):
        yy, xx = np.mgrid[-16:1, -14:8]
        far = np.hypot(xx + 0.5 - x, yy + 8.5 + (n - 1) * (2 - k) * 0.7)
        for y, dx in np.argwhere(far <= r):
            heat = 1 - far[y, dx] / r
            tone = LIGHT if heat > 0.55 and k == 2 else MIDDLE if heat > 0.3 else SHADE
            dot(frame, int(dx) - 14, int(y) - 16, "fire", tone)


def hit_version(draw: Draw) -> Draw:
    def both(frame: np.ndarray, n: int) -> None:
        draw(frame, n)
        whiten(frame)
    return both


CLIPS: list[tuple[str, int, int, bool, Draw]] = [  # name, frames, ms per frame, loops
    ("ember", 6, 110, True, ember),
    ("heart", 2, 300, True, heart),
    ("key", 4, 160, True, key),
    ("door", 1, 100, True, door),
    ("platform", 1, 100, True, platform),
    ("brazier", 1, 100, True, lambda f, n: brazier(f, n, False)),
    ("brazier_lit", 4, 110, True, lambda f, n: brazier(f, n, True)),
    ("exit", 4, 130, True, exit_gate),
    ("fireball", 3, 70, True, fireball),
    ("walker", 6, 110, True, walker),
    ("walker_hit", 1, 100, True, hit_version(walker)),
    ("hopper_sit", 2, 380, True, lambda f, n: hopper(f, "sit", n)),
    ("hopper_crouch", 1, 100, True, lambda f, n: hopper(f, "crouch", n)),
    ("hopper_air", 1, 100, True, lambda f, n: hopper(f, "air", n)),
    ("hopper_hit", 1, 100, True, hit_version(lambda f, n: hopper(f, "sit", n))),
    ("watcher", 2, 420, True, lambda f, n: watcher(f, 0, n)),
    ("watcher_charge", 3, 180, False, lambda f, n: watcher(f, n + 1, n)),
    ("watcher_hit", 1, 100, True, hit_version(lambda f, n: watcher(f, 1, n))),
]


def make(out_dir: Path) -> None:
    """Writes the sheet and its JSON file."""
    cells = [(name, n, ms, draw) for name, count, ms, _, draw in CLIPS for n in range(count)]
    lines_of_cells = -(-len(cells) // COLUMNS)
    sheet = Image.new("RGBA", (COLUMNS * CELL, lines_of_cells * CELL))
    frames = []
    for at, (name, n, ms, draw) in enumerate(cells):
        frame = blank()
        draw(frame, n)
        cell = frame[ANCHOR_Y - CELL : ANCHOR_Y, ANCHOR_X - CELL // 2 : ANCHOR_X + CELL // 2]
        x, y = at % COLUMNS * CELL, at // COLUMNS * CELL
        sheet.paste(Image.fromarray(CODE_COLOURS[cell], "RGBA"), (x, y))
        rows_used, cols_used = np.flatnonzero(cell.any(1)), np.flatnonzero(cell.any(0))
        left, top = int(cols_used[0]), int(rows_used[0])  # trimmed
        box = {"x": left, "y": top, "w": int(cols_used[-1]) + 1 - left, "h": int(rows_used[-1]) + 1 - top}
        frames.append({"filename": f"{name} {n}", "frame": box | {"x": x + left, "y": y + top}, "rotated": False,
                       "trimmed": True, "spriteSourceSize": box, "sourceSize": {"w": CELL, "h": CELL}, "duration": ms})
    tags, first = [], 0
    for name, count, _, loops, _ in CLIPS:
        tag = {"name": name, "from": first, "to": first + count - 1, "direction": "forward"}
        tags.append(tag if loops else tag | {"repeat": "1"})
        first += count
    meta = {"image": SHEET, "format": "RGBA8888", "size": {"w": sheet.width, "h": sheet.height}, "scale": "1", "frameTags": tags}
    out_dir.mkdir(parents=True, exist_ok=True)
    sheet.save(out_dir / SHEET, format="PNG", compress_level=9)
    lines = ",\n".join("  " + json.dumps(frame) for frame in frames)
    (out_dir / PATH).write_text(f'{{"frames": [\n{lines}\n],\n"meta": {json.dumps(meta, indent=1)}}}\n', encoding="utf-8", newline="\n")
