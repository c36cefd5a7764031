"""Draws the program's icon at each of the usual sizes: a flame in an arched window at night."""

from __future__ import annotations

import sys
from pathlib import Path

import numpy as np
from PIL import Image

from palette import colour

SIZES = (16, 24, 32, 48, 64, 128, 256, 512)
FINE = 8  # samples per pixel in each direction

Field = np.ndarray


def arch(x: Field, y: Field, half: float, spring: float, foot: float) -> Field:
    """A pointed arch: two arcs above the line at `spring`, upright below it, down to `foot`."""
    radius = 1.25 * half
    above = np.maximum(spring - y, 0)
    return (np.abs(x) + radius - half <= np.sqrt(np.maximum(radius**2 - above**2, 0))) & (y <= foot) & (above < radius)


def tongue(x: Field, y: Field, at: float, tall: float, wide: float, sway: float, foot: float) -> Field:
    """The heat of one tongue of fire: round below, widest at a quarter of its height, pointed above. 0 is its edge."""
    level = (foot - y) / tall
    below, above = np.clip(1 - level / 0.26, 0, 1), np.clip((level - 0.26) / 0.74, 0, 1)
    half = wide * np.sqrt(1 - below**2) * (1 - above) ** 1.25 * (1 + 0.55 * above)
    away = np.abs(x - at - sway * np.sin(level * 4.2) * level) / np.maximum(half, 1e-6)
    return np.where((level >= 0) & (level <= 1) & (away < 1), 1 - away - 0.5 * np.clip(level - 0.12, 0, 1) + 1e-6, -1)


def layer(picture: Field, mask: Field, name: str) -> None:
    picture[mask] = (*colour(name), 255)


def draw(size: int) -> Image.Image:
    """Straight edges are on whole pixels; small icons omit the joints of the stones."""
    side = size * FINE
    unit = (np.arange(side) + 0.5) / side * 2 - 1  # -1 to 1 across the picture
    x, y = np.meshgrid(unit, unit)
    picture = np.zeros((side, side, 4), np.uint8)

    def snap(length: float) -> float:
        return max(round(length * size / 2), 1) * 2 / size

    line = snap(0.05) if size >= 48 else 0.0
    frame, hole, foot, spring = snap(0.88), snap(0.6), snap(0.94), 0.14
    layer(picture, arch(x, y, frame, spring, foot), "iron.0")
    stone = arch(x, y, frame - line, spring, foot - line)
    layer(picture, stone, "stone.2")
    layer(picture, stone & (x > 0.12 * (y + 1)), "stone.1")
    if line:
        for turn in (-1.25, -0.75, -0.25, 0.25, 0.75, 1.25):  # of a joint, from upright
            across = x * np.cos(turn) + (y - 0.3) * np.sin(turn)
            layer(picture, stone & (np.abs(across) < line / 2) & (y < spring), "iron.0")
        for row in (0.24, 0.52, 0.78):
            layer(picture, stone & (np.abs(y - snap(row)) < line / 2), "iron.0")
        layer(picture, arch(x, y, hole + line, spring, foot), "iron.0")
    sky = arch(x, y, hole, spring, foot - snap(0.1))
    layer(picture, sky, "night.1")
    layer(picture, sky & ((x / 0.62) ** 2 + ((y - 0.42) / 0.95) ** 2 < 1), "shade.1")
    layer(picture, sky & ((x / 0.52) ** 2 + ((y - 0.5) / 0.78) ** 2 < 1), "cloth.0")
    heat = np.full_like(x, -1)
    fires = ((0.0, 1.48, 0.42, 0.10), (-0.25, 0.92, 0.27, -0.10), (0.26, 1.06, 0.26, 0.08))
    for at, tall, wide, sway in fires if size >= 32 else fires[:1] + ((0.22, 0.9, 0.3, 0.05), (-0.2, 0.7, 0.32, 0.0)):
        heat = np.maximum(heat, tongue(x, y, at, tall, wide, sway, foot - snap(0.06)))
    low = 0.3 * np.clip((foot - y) / 1.2, 0, 1)  # the hottest part of the fire is near its foot
    for limit, name in ((-0.9, "flame.0"), (-0.12, "flame.1"), (0.18, "flame.2"), (0.52, "flame.3")):
        layer(picture, heat - (low if limit > -0.5 else 0) > limit, name)
    return shrink(picture, size)


def shrink(picture: Field, size: int) -> Image.Image:
    """Downsamples: the mean of each pixel's samples, weighted by alpha."""
    samples = picture.reshape(size, FINE, size, FINE, 4).astype(np.uint32)
    alpha = samples[..., 3].sum((1, 3))
    rgb = (samples[..., :3] * samples[..., 3:]).sum((1, 3)) // np.maximum(alpha, 1)[..., None]
    return Image.fromarray(np.dstack([rgb, alpha // FINE**2]).astype(np.uint8), "RGBA")


def make(out_dir: Path) -> None:
    for size in SIZES:
        draw(size).save(out_dir / f"{size}.png", optimize=True)


if __name__ == "__main__":
    make(Path(sys.argv[1]))
