"""Draws the two images of the texture demo: one that stays upright, and one that looks right at any rotation."""

from __future__ import annotations

import math
import sys
from pathlib import Path

import numpy as np
from PIL import Image

from palette import colour

FOLDER = "texture_demo"
BRAZIER_W, BRAZIER_H = 30, 96
BOWL_TOP, STEM_TOP, FOOT_TOP = 46, 62, 84
ROSE = 88  # width and height of the window
PETALS = 12


class Canvas:
    """RGBA pixels, transparent at first."""

    def __init__(self, width: int, height: int) -> None:
        self.pixels = np.zeros((height, width, 4), np.uint8)

    def put(self, x: int, y: int, name: str) -> None:
        self.pixels[y, x] = (*colour(name), 255)

    def row(self, y: int, half: float, tones: tuple[str, ...]) -> None:
        """A row of a round object, centred: tones from left to right, outlined in the darkest tone."""
        middle = self.pixels.shape[1] / 2
        first, last = round(middle - half), round(middle + half) - 1
        for x in range(first, last + 1):
            part = (x - first) / max(last - first, 1)
            self.put(x, y, "iron.0" if x in (first, last) else tones[min(int(part * len(tones)), len(tones) - 1)])


def flame_heat(x: np.ndarray, y: np.ndarray) -> np.ndarray:
    """Tongues of fire over the bowl; y grows upwards from its rim. 1 is white, 0 transparent."""
    heat = np.zeros(x.shape)
    for at, tall, wide, sway in ((-5.5, 25, 4.4, 0.9), (0.5, 45, 6.6, 1.5), (6.0, 30, 4.2, -1.1), (1.5, 14, 9.5, 0.0)):
        level = np.clip((y + 3) / (tall + 3), 0, 1)
        outline = np.sqrt(level + 0.12) * (1 - level) ** 0.85 * 1.75 * wide
        centre = at * (1 - 0.35 * level) + sway * np.sin(y / 5.2) * level * 1.7
        away = np.abs(x - centre) / np.maximum(outline, 0.3)
        heat = np.maximum(heat, np.where((y > -4) & (y < tall), 1.12 - away * 0.78 - level * 0.42, 0))
    return heat


def brazier() -> np.ndarray:
    """A fire bowl on a tall iron stand, for the image that slides."""
    canvas = Canvas(BRAZIER_W, BRAZIER_H)
    y, x = np.mgrid[0:BRAZIER_H, 0:BRAZIER_W]
    heat = flame_heat(x + 0.5 - BRAZIER_W / 2, BOWL_TOP + 2.0 - y)
    for limit, name in ((0.34, "cloth.1"), (0.42, "flame.0"), (0.56, "flame.1"), (0.74, "flame.2"), (0.9, "flame.3")):
        canvas.pixels[heat > limit] = (*colour(name), 255)
    for spark_x, spark_y in ((6, 9), (22, 5), (24, 14), (4, 18), (17, 1)):
        canvas.put(spark_x, spark_y, "flame.1" if spark_y % 2 else "flame.0")

    lit = ("iron.3", "iron.4", "iron.3", "iron.2", "iron.2", "iron.1", "iron.1")
    dim = ("iron.1", "iron.2", "iron.2", "iron.1", "iron.1", "iron.0", "iron.0")
    gold = ("gold.2", "gold.3", "gold.3", "gold.2", "gold.1", "gold.1", "gold.0")
    # the bowl: rim, coals seen over it, body, a band of gold
    for row in range(BOWL_TOP, STEM_TOP):
        depth = (row - BOWL_TOP) / (STEM_TOP - BOWL_TOP)
        half = 13.5 if row < BOWL_TOP + 3 else 12.6 * math.sqrt(max(1 - depth**2.2, 0.03))
        tones = lit if row < BOWL_TOP + 2 else lit[1:] if depth < 0.5 else dim
        if row == BOWL_TOP + 2:
            tones = ("iron.0",)
        canvas.row(row, half, gold if row in (BOWL_TOP + 6, BOWL_TOP + 7) else tones)
    for n in range(-5, 6, 2):  # teeth of the rim glow from behind
        canvas.put(BRAZIER_W // 2 + n * 2, BOWL_TOP, "flame.2")
    # light that falls through the rim
    for n, at in enumerate((5, 10, 16, 21)):
        canvas.put(at + 2, BOWL_TOP + 4 + n % 2, "flame.1")
    # the stem: knots of gold on a twisted rod
    for row in range(STEM_TOP, FOOT_TOP):
        at = row - STEM_TOP
        knot = at in (0, 1, 10, 11, 12)
        twist = ("iron.3", "iron.1", "iron.2") if (at // 2) % 2 else ("iron.1", "iron.3", "iron.1")
        canvas.row(row, 4.0 if at in (1, 11) else 3.5 if knot else 2.5, gold if knot else twist)
    # three legs that curl up at their ends
    for row in range(FOOT_TOP, BRAZIER_H):
        spread = 2.5 + 10.0 * ((row - FOOT_TOP) / (BRAZIER_H - FOOT_TOP)) ** 1.6
        for side in (-1, 1):
            for k in range(4):
                px = math.floor(BRAZIER_W / 2 + side * (spread - 1.5 + k) - (side > 0) * 1)
                if 0 <= px < BRAZIER_W:
                    canvas.put(px, row, ("iron.0", "iron.3" if side < 0 else "iron.1", "iron.2", "iron.0")[k])
        canvas.row(row, 2.5 if row < BRAZIER_H - 2 else 3.5, ("iron.2", "iron.3", "iron.1"))
    for side in (1, BRAZIER_W - 4):
        for k in range(3):
            canvas.put(side + k, BRAZIER_H - 3, "iron.2" if k < 2 else "iron.0")
    return canvas.pixels


GLASS = {  # four tones of each pane, from its rim inwards
    "blue": ("night.1", "night.2", "night.3", "iron.2"),
    "red": ("cloth.0", "cloth.1", "cloth.2", "cloth.3"),
    "gold": ("gold.0", "gold.1", "gold.2", "gold.3"),
    "green": ("moss.0", "moss.1", "moss.2", "moss.3"),
    "fire": ("cloth.2", "flame.1", "flame.2", "flame.3"),
}


def rose_pixel(x: float, y: float) -> str:
    """The colour of the round window at an offset from its centre; shading depends only on the distance."""
    far, turn = math.hypot(x, y), math.degrees(math.atan2(y, x)) % 360
    if far >= ROSE / 2 - 0.2:
        return ""
    step = 360 / PETALS
    across = abs((turn + step / 2) % step - step / 2)  # degrees to the middle of the nearest petal
    between = abs(turn % step - step / 2)  # and to the middle of the nearest gap
    if far > 39.5:  # the stone ring with its joints
        joint = math.radians(between) * far < 0.55
        return "stone.0" if far > 43 or far < 40.3 or joint else "stone.3" if 41 < far < 42.2 else "stone.2"
    if far > 37.6:
        return "stone.4" if 38.2 < far < 39 else "stone.1"

    def pane(glass: str, depth: float) -> str:
        """A pane by the distance to its lead, in pixels."""
        return "night.0" if depth < 0.7 else GLASS[glass][min(int((depth - 0.7) / 1.5), 3)]

    def eye(radius: float, angle: float, size: float, glass: str) -> str:
        """A round pane at a distance from the middle, seen under an angle."""
        off = math.hypot(far * math.cos(math.radians(angle)) - radius, far * math.sin(math.radians(angle)))
        return pane(glass, size - off) if off < size else ""

    for shape in (
        eye(32.6, across, 4.9, "fire" if round(turn / step) % 2 else "blue"),
        eye(35.3, between, 2.7, "green"),
        eye(12.6, between, 2.4, "gold"),
    ):
        if shape:
            return shape
    if 9.6 < far < 28.4:  # petals: pointed at the inside, round at the outside
        half = 5.9 * math.sin(min((far - 9.6) / 16.5, 1) * math.pi / 2)
        half *= math.sqrt(max(1 - (max(far - 23, 0) / 5.4) ** 2, 0))
        off = far * math.sin(math.radians(across))
        if off < half:
            red = round(turn / step) % 2
            return pane("red" if red else "blue", min(half - off, 28.4 - far, (far - 9.6) * 0.7))
    if far < 8.8:  # the sun in the middle
        ray = 6.0 + 1.6 * math.cos(math.radians(turn * PETALS))
        if far > 8.0:
            return "stone.1"
        return pane("fire", 1.2 + (ray - far) * 0.9) if far < ray else pane("red", min(8.0 - far, far - ray) + 0.5)
    # tracery of stone between the panes
    if 28.8 < far < 29.8 or 9 < far < 9.8:
        return "stone.2"
    return "stone.1" if math.radians(between) * far < 0.8 else "stone.0"


def rose_window() -> np.ndarray:
    """A rose window with twelvefold symmetry and no directional light, because it rotates."""
    canvas = Canvas(ROSE, ROSE)
    for y in range(ROSE):
        for x in range(ROSE):
            name = rose_pixel(x + 0.5 - ROSE / 2, y + 0.5 - ROSE / 2)
            if name:
                canvas.put(x, y, name)
    return canvas.pixels


def make(out_dir: Path | str) -> None:
    """Writes the pictures below out_dir."""
    folder = Path(out_dir) / FOLDER
    folder.mkdir(parents=True, exist_ok=True)
    for name, pixels in (("texture_a", brazier()), ("texture_b", rose_window())):
        Image.fromarray(pixels, "RGBA").save(folder / f"{name}.png", format="PNG", compress_level=9)


if __name__ == "__main__":
    make(sys.argv[1] if len(sys.argv) > 1 else "assets")
