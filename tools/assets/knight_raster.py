"""Pixel primitives for the knight: shaded capsules and polygons on one 288 x 128 frame.

Coordinates are pixels from the anchor under the knight's feet: x to the right, y down, so everything above
the ground has a negative y and the pixel row that the soles stand on spans y = -1 to 0.
A pixel stores a code (material and tone) instead of a colour, so that flashes and darker far limbs only need
another table.
"""

from __future__ import annotations

import math

import numpy as np

from palette import COLOURS, colour

FRAME_W, FRAME_H = 288, 128
ANCHOR_X, ANCHOR_Y = 146, 128

# Tones of each material: outline, shade, middle, light, glint.
MATERIALS: dict[str, tuple[str, str, str, str, str]] = {
    "steel": ("iron.0", "iron.1", "iron.2", "iron.3", "iron.4"),
    "far_steel": ("iron.0", "stone.0", "iron.1", "iron.2", "iron.2"),
    "mail": ("iron.0", "stone.0", "iron.1", "stone.2", "iron.2"),
    "cloth": ("cloth.0", "cloth.1", "cloth.2", "cloth.3", "flame.1"),
    "far_cloth": ("cloth.0", "cloth.0", "cloth.1", "cloth.2", "cloth.2"),
    "gold": ("gold.0", "gold.1", "gold.2", "gold.3", "flame.3"),
    "leather": ("wood.0", "wood.1", "wood.2", "wood.3", "gold.2"),
    "fire": ("flame.0", "flame.1", "flame.2", "flame.3", "flame.3"),
    "dust": ("stone.0", "stone.1", "stone.2", "stone.3", "stone.4"),
    "ember": ("cloth.0", "cloth.2", "flame.1", "flame.2", "flame.2"),
    "coal": ("night.0", "shade.0", "night.1", "stone.0", "shade.1"),
    "bone": ("stone.0", "stone.1", "stone.2", "stone.3", "stone.4"),
    "sandstone": ("torchlit.0", "torchlit.0", "torchlit.1", "torchlit.2", "torchlit.3"),
    "stone": ("shade.0", "stone.0", "stone.1", "stone.2", "stone.3"),
}
OUTLINE, SHADE, MIDDLE, LIGHT, GLINT = range(5)
TONES = 5
_NAMES = list(MATERIALS)
LIGHT_X, LIGHT_Y = -0.55, -0.83  # towards the light, upper left

_X = (np.arange(FRAME_W) + 0.5 - ANCHOR_X)[None, :]
_Y = (np.arange(FRAME_H) + 0.5 - ANCHOR_Y)[:, None]

BAYER = np.array([[0, 8, 2, 10], [12, 4, 14, 6], [3, 11, 1, 9], [15, 7, 13, 5]]) / 16.0 + 1 / 32
DITHER = np.tile(BAYER, (FRAME_H // 4, FRAME_W // 4))

Point = tuple[float, float]


def code(material: str, tone: int) -> int:
    """The code of a pixel; 0 is transparent."""
    return 1 + _NAMES.index(material) * TONES + tone


def _code_colours() -> np.ndarray:
    table = np.zeros((1 + len(_NAMES) * TONES, 4), np.uint8)
    for name, tones in MATERIALS.items():
        for tone, entry in enumerate(tones):
            table[code(name, tone)] = (*colour(entry), 255)
    return table


CODE_COLOURS = _code_colours()
assert {tuple(row[:3]) for row in CODE_COLOURS[1:].tolist()} <= set(COLOURS)


def pixel_grid() -> tuple[np.ndarray, np.ndarray]:
    """Coordinates of the pixel centres, as a row and a column to broadcast."""
    return _X, _Y


def blank() -> np.ndarray:
    return np.zeros((FRAME_H, FRAME_W), np.uint8)


def _spread(mask: np.ndarray) -> np.ndarray:
    """The mask dilated by one pixel up, down, left and right, without wrapping around the frame."""
    grown = mask.copy()
    grown[1:] |= mask[:-1]
    grown[:-1] |= mask[1:]
    grown[:, 1:] |= mask[:, :-1]
    grown[:, :-1] |= mask[:, 1:]
    return grown


class Part:
    """One group of shapes that share an outline, such as a whole leg."""

    def __init__(self) -> None:
        self.pixels = blank()

    def put(self, mask: np.ndarray, material: str, tone: int) -> None:
        self.pixels[mask] = code(material, tone)

    def shaded(self, mask: np.ndarray, lit: np.ndarray, material: str, bias: float = 0.0) -> None:
        """Fills by three tones; `lit` runs from -1 (away from the light) to 1."""
        base = code(material, 0)
        tones = np.where(lit + bias > 0.42, LIGHT, np.where(lit + bias < -0.36, SHADE, MIDDLE))
        self.pixels[mask] = (base + tones)[mask]

    def capsule(self, a: Point, b: Point, ra: float, rb: float, material: str, bias: float = 0.0) -> None:
        """A limb from a to b; ra and rb are the radii at its ends, without the outline."""
        (ax, ay), (bx, by) = a, b
        dx, dy = bx - ax, by - ay
        length2 = dx * dx + dy * dy
        along = np.zeros((FRAME_H, FRAME_W))
        if length2 > 0:
            along = np.clip(((_X - ax) * dx + (_Y - ay) * dy) / length2, 0, 1)
        nx, ny = _X - (ax + along * dx), _Y - (ay + along * dy)
        radius = ra + (rb - ra) * along
        distance = np.hypot(nx, ny)
        lit = (nx * LIGHT_X + ny * LIGHT_Y) / np.maximum(radius, 0.5)
        self.shaded(distance <= radius, lit, material, bias)

    def ellipse(self, centre: Point, rx: float, ry: float, degrees: float, material: str, bias: float = 0.0) -> None:
        c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
        x, y = _X - centre[0], _Y - centre[1]
        u, v = (x * c + y * s) / rx, (-x * s + y * c) / ry
        lit = (x * LIGHT_X + y * LIGHT_Y) / max(rx, ry)
        self.shaded(u * u + v * v <= 1, lit, material, bias)

    def polygon(self, points: list[Point], material: str, bias: float = 0.0) -> None:
        mask = polygon_mask(points)
        centre_x = sum(p[0] for p in points) / len(points)
        centre_y = sum(p[1] for p in points) / len(points)
        size = max(math.hypot(p[0] - centre_x, p[1] - centre_y) for p in points)
        lit = ((_X - centre_x) * LIGHT_X + (_Y - centre_y) * LIGHT_Y) / size * 1.3
        self.shaded(mask, lit, material, bias)

    def line(self, a: Point, b: Point, material: str, tone: int) -> None:
        """A line one pixel wide, only where the part already has pixels."""
        steps = max(1, math.ceil(max(abs(b[0] - a[0]), abs(b[1] - a[1]))))
        for i in range(steps + 1):
            self.dot(a[0] + (b[0] - a[0]) * i / steps, a[1] + (b[1] - a[1]) * i / steps, material, tone)

    def dot(self, x: float, y: float, material: str, tone: int) -> None:
        px, py = math.floor(x) + ANCHOR_X, math.floor(y) + ANCHOR_Y
        if 0 <= px < FRAME_W and 0 <= py < FRAME_H and self.pixels[py, px]:
            self.pixels[py, px] = code(material, tone)

    def onto(self, frame: np.ndarray, outlined: bool = True) -> None:
        """Draws the part over the frame. The outline has the darkest tone of the adjacent material."""
        filled = self.pixels > 0
        if outlined:
            ring = _spread(filled) & ~filled
            border = np.zeros_like(self.pixels)
            for shift, axis in ((1, 0), (-1, 0), (1, 1), (-1, 1)):
                moved = np.roll(self.pixels, shift, axis)
                border = np.maximum(border, np.where(moved > 0, (moved - 1) // TONES * TONES + 1, 0))
            frame[ring] = border[ring]
        frame[filled] = self.pixels[filled]


def polygon_mask(points: list[Point]) -> np.ndarray:
    """Pixels whose centres are inside the polygon (even-odd rule)."""
    inside = np.zeros((FRAME_H, FRAME_W), bool)
    for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
        if ay == by:
            continue
        crosses = (ay > _Y) != (by > _Y)
        inside ^= crosses & (_X < (bx - ax) * (_Y - ay) / (by - ay) + ax)
    return inside


def fire_codes(heat: np.ndarray, dither: float = 0.45) -> np.ndarray:
    """Converts heat, 0 to 1, to pixels of the flame ramp; below about a quarter they are transparent."""
    level = np.floor(heat * 4 + (DITHER - 0.5) * dither).astype(int)
    level = np.clip(level, 0, 4)
    table = np.array([0] + [code("fire", tone) for tone in (OUTLINE, SHADE, MIDDLE, LIGHT)], np.uint8)
    return table[level]


def lay(frame: np.ndarray, pixels: np.ndarray) -> None:
    """Draws all pixels that are not transparent over the frame."""
    frame[pixels > 0] = pixels[pixels > 0]
