"""Stonework, light and depth of the castle's walls, pixel by pixel.

Pictures here are arrays of colour numbers (positions in palette.COLOURS), [y, x].
"""

from __future__ import annotations

import random
from dataclasses import dataclass

import numpy as np

from palette import COLOURS, colour

Picture = np.ndarray
Field = np.ndarray

PERIOD = 64  # px after which stonework repeats: four tiles; stones may cross tile borders

MORTAR, BODY, HIGH, LOW, DARK = range(5)  # parts of a stone; dark is the body of a stone of another tone

BAYER = (
    np.array([[0, 8, 2, 10], [12, 4, 14, 6], [3, 11, 1, 9], [15, 7, 13, 5]], float) / 16 - 0.47
)


def index(name: str) -> int:
    """The number of a colour such as "stone.2"."""
    return COLOURS.index(colour(name))


def parts(*names: str) -> list[int]:
    return [index(name) for name in names]


@dataclass(frozen=True)
class Masonry:
    """How stones are laid. Course heights add up to PERIOD or to half of it."""

    seed: int
    courses: tuple[int, ...]
    widths: tuple[int, int]  # shortest and longest stone
    shift: int  # y of the first course
    dark: float = 0.25  # share of stones of the other tone
    chip: float = 0.2  # share of stones that lack a corner


ASHLAR = Masonry(11, (9, 8, 10, 7, 9, 8, 6, 7), (9, 19), 5)
BRICK = Masonry(23, (5, 6, 5, 5, 6, 5), (8, 12), 2, 0.3, 0.1)
ROUGH = Masonry(37, (12, 10, 13, 9, 11, 9), (10, 22), 7, 0.35, 0.6)
BLOCKS = Masonry(53, (13, 11, 14, 12, 14), (17, 30), 4, 0.2, 0.15)
SOLID = Masonry(71, (9, 7, 8, 8), (9, 20), 3, 0.28, 0.35)


def lay(masonry: Masonry) -> tuple[np.ndarray, Field]:
    """Lays one period of stones; returns the part at each pixel and, per stone, a random number from 0 to 1."""
    rng, lot = random.Random(masonry.seed), random.Random(masonry.seed + 1)
    tall = sum(masonry.courses)
    out = np.full((tall, PERIOD), MORTAR, np.uint8)
    lots = np.zeros((tall, PERIOD))
    y = masonry.shift
    joints_above: set[int] = set()
    for height in masonry.courses:
        while True:
            widths: list[int] = []
            while sum(widths) < PERIOD:
                widths.append(rng.randint(*masonry.widths))
            widths[-1] -= sum(widths) - PERIOD
            start = rng.randrange(PERIOD)
            joints = {(start + sum(widths[:n])) % PERIOD for n in range(len(widths))}
            near = {(j + n) % PERIOD for j in joints_above for n in (-2, -1, 0, 1, 2)}
            if widths[-1] >= masonry.widths[0] and not joints & near:
                break
        joints_above = joints
        x = start
        for width in widths:
            dark = rng.random() < masonry.dark
            drawn = lot.random()
            for dy in range(height):
                for dx in range(width):
                    lots[(y + dy) % tall, (x + dx) % PERIOD] = drawn
            chipped, corner = rng.random() < masonry.chip, rng.randrange(4)
            for dy in range(height - 1):  # the last row and column are mortar
                for dx in range(width - 1):
                    part = DARK if dark else BODY
                    if dy == 0 or (dx == 0 and dy < height - 3):
                        part = BODY if dark else HIGH
                    elif dy == height - 2 or dx == width - 2:
                        part = LOW
                    at_corner = (dy == 0 or dy == height - 2) and (dx == 0 or dx == width - 2)
                    if at_corner and chipped and corner == (dy > 0) * 2 + (dx > 0):
                        part = MORTAR
                    out[(y + dy) % tall, (x + dx) % PERIOD] = part
            # a few pits in the face
            for _ in range(rng.randrange(3)):
                dx, dy = rng.randrange(1, max(2, width - 2)), rng.randrange(1, max(2, height - 2))
                out[(y + dy) % tall, (x + dx) % PERIOD] = LOW
            x += width
        y += height
    return np.tile(out, (PERIOD // tall, 1)), np.tile(lots, (PERIOD // tall, 1))


# The tones of stone from dark to light, and below the offset in tones of each part of a stone from its body.
COLD = parts("night.0", "shade.0", "night.1", "stone.0", "shade.1", "stone.1", "stone.2")
BLUE = parts("night.0", "shade.0", "night.1", "night.2", "shade.1", "night.3", "night.3")  # some stones of cold walls
GREEN = parts("night.0", "shade.0", "night.1", "stone.0", "moss.1", "stone.1", "stone.2")  # and some of damp ones
DUSK = parts("night.0", "shade.0", "cloth.0", "torchlit.0", "torchlit.0", "torchlit.1", "stone.2")  # purple ones
ASHEN = parts("night.0", "shade.0", "night.1", "stone.0", "wood.1", "torchlit.1", "torchlit.2")  # by a fire
WARM = parts("night.0", "shade.0", "cloth.0", "torchlit.0", "wood.1", "torchlit.1", "torchlit.2")
STEPS = {MORTAR: -1.5, BODY: 0.0, HIGH: 0.9, LOW: -0.9, DARK: -0.5}
VARIETY = 2.6  # tones between the darkest and the lightest stone of one wall in one light
# The worn slab on floors: lit top, second row, face, joint, shadow below.
SLAB_COLD = parts("stone.4", "stone.3", "stone.2", "stone.0", "night.1")
SLAB_WARM = parts("skin.3", "torchlit.3", "torchlit.2", "torchlit.0", "torchlit.0")


def dithered(field: Field, top: int, spread: float = 0.5) -> np.ndarray:
    """Quantises a field to levels 0..top with ordered dithering in a 4 px pattern."""
    h, w = field.shape
    noise = np.tile(BAYER, (h // 4 + 1, w // 4 + 1))[:h, :w]
    return np.clip(np.floor(field + noise * spread + 1e-6), 0, top).astype(int)


def tiled(parts_of: np.ndarray, shape: tuple[int, int]) -> np.ndarray:
    """Repeats one period of stonework over a picture."""
    h, w = shape
    return np.tile(parts_of, (h // PERIOD + 1, w // PERIOD + 1))[:h, :w]


def worn(shape: tuple[int, int]) -> Field:
    """Weathering: blotches of 2 to 4 px that lighten and darken, from -0.5 to 0.5, repeating with the stonework."""
    random_ = np.random.Generator(np.random.PCG64(97))
    coarse = random_.uniform(-0.5, 0.5, (PERIOD // 4, PERIOD // 4)).repeat(4, 0).repeat(4, 1)
    fine = random_.uniform(-0.5, 0.5, (PERIOD // 2, PERIOD // 2)).repeat(2, 0).repeat(2, 1)
    return tiled(0.55 * coarse + 0.45 * np.roll(fine, 1, 1), shape)


def blotches(shape: tuple[int, int], seed: int) -> Field:
    """Damp and dry areas about 40 px wide, -0.5 to 0.5, in whole tiles, so that identical tiles stay identical."""
    h, w = shape[0] // 16, shape[1] // 16
    coarse = np.random.Generator(np.random.PCG64(seed)).uniform(-0.5, 0.5, (h // 2 + 2, w // 3 + 2))
    return coarse.repeat(2, 0).repeat(3, 1)[:h, :w].repeat(16, 0).repeat(16, 1)


def shade(parts_of: np.ndarray, lots: Field, light: Field, warm: Field, tint: Field, rough: float = 0.6) -> Picture:
    """Colours stonework. `light` is in tones, `warm` the part of it that comes from fire. `tint` is the share of stones
    of another colour: none at 0, up to 1 blue and purple ones, above 1 also mossy ones."""
    value = light + 2.1 * (1 - np.exp(-warm / 1.5)) + np.array([STEPS[part] for part in range(5)])[parts_of]
    value = value + (lots - 0.5) * VARIETY + worn(parts_of.shape) * rough
    step = np.clip(np.floor(value + 0.5), 0, len(COLD) - 1).astype(int)
    odd = (lots * 7.3) % 1
    picture = np.array(COLD, np.uint8)[step]
    picture = np.where(odd < 0.29 * np.clip(tint, 0, 1), np.array(BLUE, np.uint8)[step], picture)
    picture = np.where((odd > 0.66) & (odd < 0.8) & (tint > 1), np.array(GREEN, np.uint8)[step], picture)
    picture = np.where((odd > 0.4) & (odd < 0.4 + 0.2 * np.clip(tint, 0, 1)), np.array(DUSK, np.uint8)[step], picture)
    glowing = dithered(warm + (lots - 0.5) * 0.5 + 0.35, 1) > 0
    fiery = np.where((odd > 0.3) & (odd < 0.45), np.array(ASHEN, np.uint8)[step], np.array(WARM, np.uint8)[step])
    return np.where(glowing, fiery, picture)


def glow(solid: np.ndarray, x: float, y: float, radius: float, strength: float) -> Field:
    """Light of one flame: strongest at its centre, zero at the radius, slightly larger upwards, blocked by walls."""
    light = np.zeros(solid.shape)
    reach = int(radius) + 8
    left, top = max(int(x) - reach, 0), max(int(y) - reach, 0)
    area = np.s_[top : min(int(y) + reach, solid.shape[0]), left : min(int(x) + reach, solid.shape[1])]
    py, px = np.mgrid[area] + 0.5
    dy = np.where(py < y, (py - y) * 0.9, (py - y) * 1.05)
    blocked = np.zeros(px.shape)
    for part in np.arange(1, 25) / 25:
        at_y, at_x = (y + (py - y) * part).astype(int), (x + (px - x) * part).astype(int)
        blocked += solid[np.clip(at_y, 0, solid.shape[0] - 1), np.clip(at_x, 0, solid.shape[1] - 1)]
    through = np.clip(1.25 - blocked / 25 * np.hypot(px - x, py - y) / 14, 0, 1)
    light[area] = np.clip(1 - np.hypot(px - x, dy) / radius, 0, 1) * strength * through
    return light


def blurred(field: Field, reach: int) -> Field:
    """Box blur with this radius."""
    for axis in (0, 1):
        width = [(reach + 1, reach) if n == axis else (0, 0) for n in (0, 1)]
        total = np.pad(field, width, mode="edge").cumsum(axis)
        size = 2 * reach + 1
        ahead = np.take(total, range(size, total.shape[axis]), axis)
        field = (ahead - np.take(total, range(total.shape[axis] - size), axis)) / size
    return field


def distance_inside(solid: np.ndarray, limit: int) -> Field:
    """Distance in px from each solid pixel to the nearest open one, up to a limit; 0 where open."""
    far = np.where(solid, float(limit), 0.0)
    for _ in range(limit):  # chamfer steps: straight 1, diagonal 1.41
        grown = far.copy()
        pad = np.pad(far, 1, constant_values=float(limit))
        for dy in (-1, 0, 1):
            for dx in (-1, 0, 1):
                if dy or dx:
                    step = 1.41 if dy and dx else 1.0
                    near = pad[1 + dy : pad.shape[0] - 1 + dy, 1 + dx : pad.shape[1] - 1 + dx]
                    np.minimum(grown, near + step, out=grown)
        if np.array_equal(grown, far):
            break
        far = np.where(solid, grown, 0.0)
    return far
