"""Paints the castle, splits it into tiles, and writes tileset, tile layer, colliders and the map editor's project.

The level is painted as one picture, in which stones, light and furniture are aligned to a grid of four tiles.
Identical cells (also mirrored or rotated ones) share one tile, which keeps the tileset small without visible borders.
"""

from __future__ import annotations

import itertools
import sys
from collections import Counter
from pathlib import Path

import numpy as np
from PIL import Image

import castle_level as level
import castle_props as props
import castle_walls as walls
from castle_walls import Picture, index, parts
from palette import COLOURS

FOLDER = "fireknight/tilemaps"
TILESET = "old-dark-castle-interior-tileset.png"
LAYER = "castle-tilemap.csv"
COLLIDERS = "castle-tilemap-collisions.csv"
MAP_PROJECT = "castle-tilemap.tmx"
TILESET_PROJECT = "castle-tileset.tsx"

TILE = level.TILE
W, H = level.COLS * TILE, level.ROWS * TILE
SHEET_COLUMNS = 32
FLIP_H, FLIP_V, FLIP_D = 0x80000000, 0x40000000, 0x20000000

# Rooms: stonework, ambient light in tones, tint (see walls.shade), and the cells (left, top, right, bottom), ends
# excluded. A pillar or a passage hides every border between two kinds of stonework.
ROOMS = [
    (walls.BLOCKS, 3.2, 0.92, (20, 0, 48, 21)),  # great hall
    (walls.ROUGH, 2.5, 1.6, (48, 9, 69, 27)),  # bridge hall with its chasm
    (walls.ASHLAR, 2.7, 0.9, (0, 10, 20, 27)),  # entry hall
    (walls.BRICK, 2.6, 0.4, (0, 0, 20.5, 10)),  # loft
    (walls.BRICK, 2.6, 0.4, (47.5, 0, 69, 9)),  # library
    (walls.ROUGH, 2.5, 1.4, (20, 20, 28.5, 34)),  # first pit
    (walls.BRICK, 2.6, 1.2, (0, 27, 20, 34)),  # cells
    (walls.ASHLAR, 2.2, 0.4, (28.5, 21, 54, 27)),  # upper crypt
    (walls.ROUGH, 2.1, 1.5, (28.5, 27, 69, 34)),  # lower crypt
    (walls.BRICK, 2.7, 0.6, (69, 0, 83.5, 21)),  # tower
    (walls.BLOCKS, 2.4, 1.9, (69, 21, 95.5, 34)),  # cistern
    (walls.ASHLAR, 2.6, 0.9, (83.5, 0, 95.5, 21)),  # gallery, attic
    (walls.ROUGH, 2.5, 1.2, (95.5, 0, 104, 34)),  # shaft
    (walls.BRICK, 2.7, 0.5, (104, 0, 120, 16)),  # antechambers
    (walls.BLOCKS, 2.7, 0.9, (104, 16, 120, 34)),  # throne hall
]

# Passages through walls: the same cells, painted as deep reveals.
PASSAGES = [
    (19, 17, 21, 22), (47, 16, 49, 20), (68, 4, 71, 8), (83, 16, 85, 20), (95, 16, 97, 20), (68, 27, 71, 30),
    (95, 27, 97, 32), (103, 4, 105, 8),
]

# Where the wall behind a pit fades into the dark, as cells (left, top, right, bottom).
PITS = [(21, 27, 26, 34), (44, 31, 49, 34), (80, 31, 89, 34)]

# Pillars by cell: column, top, bottom.
PILLARS = [
    (10, 14, 25), (18, 14, 22), (20, 4, 9), (22, 4, 20), (33, 4, 20), (46, 4, 20), (49, 10, 20), (53, 10, 20),
    (64, 10, 26), (67, 10, 26), (53, 3, 8), (67, 3, 8), (85, 9, 20), (94, 9, 20), (71, 23, 30), (79, 23, 32),
    (90, 23, 32), (94, 23, 32), (105, 3, 8), (111, 17, 30), (117, 17, 30), (109, 10, 15), (117, 10, 15),
]

# Torches by cell.
TORCHES = [
    (4, 20), (12, 19), (16, 17), (3, 28), (7, 28), (12, 28), (16, 28), (5, 5), (14, 5),
    (24, 14), (32, 15), (40, 15), (45, 14), (24, 23),
    (31, 23), (38, 23), (45, 23), (51, 23), (34, 28), (42, 28), (50, 28), (58, 28), (65, 28),
    (51, 15), (61, 15), (66, 14), (56, 22), (62, 22), (50, 5), (55, 4), (61, 4), (66, 4),
    (74, 4), (80, 4), (75, 9), (79, 13), (74, 17), (81, 17),
    (73, 25), (83, 25), (92, 26), (86, 15), (93, 15), (89, 4),
    (99, 6), (98, 11), (99, 18), (99, 28),
    (108, 4), (114, 4), (109, 11), (114, 11), (111, 23), (117, 23), (109, 25), (106, 20),
]
TORCH_RADIUS = 62

# Windows by cell: left, top, width, height, view. Only one shows the moon.
WINDOWS = [
    (6, 18, 3, 6, "clouds"), (14, 17, 2, 4, "stars"), (26, 8, 4, 8, "towers"), (41, 8, 4, 8, "clouds"),
    (32, 4, 3, 5, "stars"), (55, 12, 3, 7, "stars"), (61, 10, 3, 4, "clouds"), (57, 3, 2, 4, "stars"),
    (77, 3, 2, 4, "stars"), (72, 4, 2, 3, "clouds"), (88, 10, 4, 8, "towers"), (91, 3, 2, 3, "clouds"),
    (99, 13, 2, 4, "stars"), (110, 3, 3, 4, "clouds"), (111, 10, 3, 4, "towers"), (112, 18, 5, 9, "moon"),
]

# Banners by cell: column, row, and the height in px.
BANNERS = [
    (3, 16, 58), (9, 17, 58), (25, 8, 74), (34, 6, 60), (45, 7, 82), (87, 10, 66), (92, 10, 66),
    (106, 3, 54), (116, 3, 54), (107, 10, 54), (115, 10, 54), (110, 18, 84),
]

# Floors with moss, as cells (left, top, right, bottom).
MOSSY = [
    (54, 25, 68, 28), (47, 19, 54, 22), (59, 19, 62, 22), (26, 20, 29, 24), (66, 29, 76, 33), (82, 29, 86, 32),
    (89, 30, 96, 34), (32, 31, 44, 34), (49, 31, 56, 34), (10, 24, 13, 27),
]

CARPET = (112, 30, 118)  # first column, lowest floor row, end column

# Roots in the walls: column, row, length in px, direction (1 right, -1 left). Bones: column, row.
ROOTS = [
    (11, 26, 70, 1), (16, 23, 60, -1), (4, 10, 60, 1), (15, 11, 64, -1), (30, 20, 40, 1), (36, 27, 50, 1),
    (48, 26, 56, -1), (60, 26, 60, 1), (69, 12, 60, 1), (69, 22, 64, -1), (76, 20, 60, 1), (92, 20, 60, 1),
    (104, 12, 64, -1), (104, 24, 70, 1), (112, 32, 60, 1), (107, 32, 60, 1), (27, 24, 70, 1), (20, 24, 80, -1),
    (73, 32, 60, 1), (30, 1, 60, 1), (8, 1, 60, -1), (60, 1, 60, 1), (84, 1, 60, -1), (100, 1, 60, 1), (114, 1, 60, -1),
]
BONES = [
    (13, 25), (18, 26), (7, 11), (17, 12), (40, 26), (56, 27), (69, 18), (70, 25), (79, 21), (93, 21), (108, 32),
    (116, 31), (19, 30), (27, 31), (48, 1), (72, 1), (104, 20), (76, 33), (38, 16), (37, 18),
]

SLAB_JOINTS = {6, 23, 37, 52}


def light_of_torches(solid: np.ndarray) -> tuple[np.ndarray, np.ndarray, np.ndarray]:
    """Warm light at every pixel, 0 to about 3.6, and the position (x, y) of the flame that contributes most."""
    field, from_x, from_y = np.zeros(solid.shape), np.zeros(solid.shape), np.zeros(solid.shape)
    for col, row in TORCHES:
        x, y = col * TILE + 7.5, row * TILE + 7
        light = walls.glow(solid, x, y, TORCH_RADIUS, 4.0)
        more = light > field
        field[more], from_x[more], from_y[more] = light[more], x, y
    return field, from_x, from_y


def light_of_windows(shape: tuple[int, int]) -> np.ndarray:
    """Moonlight: a shaft that falls from each window to the lower right."""
    field = np.zeros(shape)
    y, x = np.mgrid[0 : shape[0], 0 : shape[1]] + 0.5
    for col, row, width, height, sky in WINDOWS:
        bottom = (row + height) * TILE
        lean = 0.5 * (y - bottom)
        left, right = col * TILE + 3 + lean, (col + width) * TILE - 3 + lean
        inside = (y > bottom) & (x > left) & (x < right)
        fade = np.clip(1 - (y - bottom) / (100 if sky == "moon" else 64), 0, 1) ** 0.7
        edge = np.clip(np.minimum(x - left, right - x) / 4, 0, 1)
        np.maximum(field, np.where(inside, fade * edge * (2.0 if sky == "moon" else 1.3), 0), out=field)
    return field


def block(cells: tuple[float, int, float, int]) -> tuple[slice, slice]:
    """The pixels of a block of cells (left, top, right, bottom)."""
    left, top, right, bottom = cells
    return np.s_[top * TILE : bottom * TILE, int(left * TILE) : int(right * TILE)]


def paint_back(solid: np.ndarray, warm: np.ndarray) -> Picture:
    """The bare back wall with its light."""
    room_light, tint, lots = np.zeros((H, W)), np.zeros((H, W)), np.zeros((H, W))
    stones = np.zeros((H, W), np.uint8)
    for masonry, light, odd, cells in ROOMS:
        area = block(cells)
        for whole, laid in zip((stones, lots), walls.lay(masonry)):
            whole[area] = walls.tiled(laid, (H, W))[area]
        room_light[area], tint[area] = light, odd
    room_light = walls.blurred(room_light, 12) + light_of_windows((H, W))
    near = walls.distance_inside(~solid, 24)  # corners and edges are in shadow
    for cells in PASSAGES:
        room_light[block(cells)] = 2.0
    light = room_light + walls.blurred(walls.blotches((H, W), 5), 8) * 1.6 - 1.1 * np.clip(1 - near / 20, 0, 1)
    for cells in PITS:
        depth = np.clip((np.arange(H) - cells[1] * TILE) / (6 * TILE), 0, 1)[:, None]
        light[block(cells)] -= (1.1 * depth * np.ones((1, W)))[block(cells)]
    picture = walls.shade(stones, lots, light, warm * np.clip(0.7 + near / 24, 0, 1) * 0.95, tint)
    for left, top, right, bottom in PASSAGES:
        props.jambs(picture, left * TILE, top * TILE, right * TILE, bottom * TILE)
    return picture


COLD_OF_PROPS = {"stone.1": "torchlit.1", "stone.0": "torchlit.0", "night.2": "torchlit.0", "shade.1": "wood.1"}
RIMS = parts("wood.1", "torchlit.1", "torchlit.2", "torchlit.3")


def relight(to: Picture, mask: np.ndarray, light: tuple[np.ndarray, np.ndarray, np.ndarray]) -> None:
    """Lights objects in front of the wall: cold colours turn warm, and edges that face a flame get a rim light."""
    warm, from_x, from_y = light
    level = walls.dithered(warm * 1.1 + 0.1, 3, 0.9)
    for cold, hot in COLD_OF_PROPS.items():
        to[mask & (level >= 1) & (to == index(cold))] = index(hot)
    level = walls.dithered(warm * 1.25 + 0.35, 3, 0.2)
    y, x = np.mgrid[0:H, 0:W]
    aside = np.abs(from_x - x) >= np.abs(from_y - y) * 0.8
    step_x = np.where(aside, np.sign(from_x - x), 0).astype(int)
    step_y = np.where(aside, 0, np.sign(from_y - y)).astype(int)
    for depth in (2, 1):
        ahead = mask[np.clip(y + depth * step_y, 0, H - 1), np.clip(x + depth * step_x, 0, W - 1)]
        rim = mask & ~ahead & (level >= depth)
        to[rim] = np.array(RIMS, np.uint8)[np.clip(level - depth, 0, 2)][rim]


def furnish(to: Picture, light: tuple[np.ndarray, np.ndarray, np.ndarray]) -> dict[tuple[int, int], str]:
    """Paints all furniture and wall decoration; returns the family of each changed cell."""
    t = TILE
    changed: dict[tuple[int, int], str] = {}
    before, outside = to.copy(), np.zeros(to.shape, bool)

    def done(family: str, lit: bool = False) -> None:
        """Assigns the cells changed since the last call to a family; `lit` applies the torches' light to them."""
        mask = to != before
        if lit:
            relight(to, mask & ~outside, light)
        different = mask.reshape(level.ROWS, t, level.COLS, t).any((1, 3))
        changed.update({(int(row), int(col)): family for row, col in np.argwhere(different)})
        before[:] = to

    for col, top, bottom in PILLARS:
        props.pillar(to, col * t, top * t, bottom * t)
    done("pillar", True)
    for col, row, width, height, sky in WINDOWS:
        outside |= props.window(to, col * t, row * t, width * t, height * t, sky)
    done("window", True)
    for col, row, width, height in ((73, 26, 4, 6), (86, 27, 3, 5), (57, 21, 4, 5), (41, 16, 3, 4), (98, 27, 3, 5),
                                    (73, 17, 2, 3)):
        props.arch(to, col * t, row * t, width * t, height * t)
    done("arch", True)
    for n, (col, row) in enumerate(((33, 23), (36, 23), (40, 23), (43, 23), (47, 23), (49, 23), (36, 29), (39, 29),
                                    (45, 29), (53, 29), (56, 29), (60, 29), (63, 29))):
        props.niche(to, col * t, row * t + 4, 2 * t, 18, n)
    done("arch")
    for col, row, width, height in ((2, 21, 3, 5), (91, 28, 3, 4), (62, 22, 3, 4), (29, 16, 3, 4)):
        props.gate(to, col * t, row * t, width * t, height * t)
    for left, right in ((2, 10), (11, 19)):
        props.bars(to, left * t, 28 * t, right * t, 32 * t)
    done("gate", True)
    for col, row, height in BANNERS:
        props.banner(to, col * t, row * t, height)
    done("banner")
    for n, col in enumerate((54, 59, 62, 64)):
        props.shelf(to, col * t, 4 * t, 2 * t, 4 * t, 100 + n % 3)
    for n, (col, row) in enumerate(((8, 5), (16, 5), (86, 3))):
        props.shelf(to, col * t, row * t, 2 * t, 4 * t, 101 + n)
    done("shelf")
    for col, row in ((57, 8), (111, 8)):
        props.table(to, col * t, row * t, 2 * t)
    for col, row in ((3, 8), (10, 8), (11, 8), (11, 7), (18, 8), (77, 19), (78, 19), (78, 18), (92, 6), (40, 31),
                     (73, 7)):
        props.stamp(to, props.CRATE, col * t, row * t)
    for col, row in ((12, 8), (66, 7), (14, 31), (15, 31), (80, 19), (93, 6), (33, 19), (110, 14), (39, 19), (42, 31)):
        props.stamp(to, props.BARREL, col * t, row * t)
    props.stamp(to, props.THRONE, 113 * t + 8, 30 * t - 35)
    done("furniture")
    # chains, each hanging on a support
    for col, top, bottom in ((30, 4, 11), (32, 4, 11), (59, 10, 20), (61, 10, 20), (76, 3, 7), (42, 4, 7), (39, 4, 7),
                             (75, 23, 25), (84, 23, 28), (8, 28, 30), (17, 28, 30), (100, 4, 6), (105, 17, 19),
                             (106, 17, 19), (88, 9, 10)):
        for row in range(top, bottom):
            props.stamp(to, props.CHAIN, col * t, row * t)
    done("chain", True)
    for col, row in ((24, 4), (43, 4), (62, 10), (89, 9), (72, 23), (92, 23), (12, 14), (50, 3), (82, 23), (34, 28),
                     (52, 28), (100, 4), (57, 10), (37, 22), (114, 17), (76, 23)):
        props.moss(to, col * t, row * t, 2 * t, col)
    done("moss")
    for col, row, seed in ((11, 22, 5), (44, 11, 6), (52, 13, 7), (82, 6, 8), (86, 16, 9), (108, 24, 10), (7, 5, 3),
                           (79, 9, 11), (54, 23, 12), (31, 28, 13)):
        props.crack(to, col * t, row * t, seed)
    done("crack")
    for col, row, mirror in ((2, 4, False), (82, 3, True), (117, 17, True), (2, 14, False), (29, 22, False),
                             (53, 22, True), (2, 28, False), (18, 28, True), (85, 3, False), (94, 9, True),
                             (82, 9, True), (71, 13, False)):
        props.cobweb(to, col * t, row * t, mirror)
    done("cobweb")
    for col, row in ((5, 31), (12, 31), (17, 31), (34, 25), (45, 25), (51, 25), (38, 31), (57, 31), (62, 31), (92, 31),
                     (77, 31), (31, 31), (65, 25)):
        props.stamp(to, props.SKULL, col * t, row * t)
    for col, row, seed in ((6, 26, 1), (42, 20, 2), (52, 20, 3), (71, 20, 4), (76, 32, 5), (90, 20, 6), (107, 31, 7),
                           (32, 26, 8), (63, 26, 9), (52, 32, 10), (99, 32, 11), (3, 32, 12), (30, 20, 13)):
        props.rubble(to, col * t, row * t, 2 * t, seed)
    done("rubble")
    for col, row in TORCHES:
        props.stamp(to, props.TORCH, col * t, row * t)
    done("torch")
    return changed


def runs_from(solid: np.ndarray, axis: int, back: bool) -> np.ndarray:
    """The number of solid pixels between each solid pixel and the nearest open one in one direction of an axis."""
    work = solid if axis == 0 else solid.T
    work = work[::-1] if back else work
    count = np.zeros(work.shape, int)
    before = np.full(work.shape[1], 99)
    for n, row in enumerate(work):
        before = np.where(row, before + 1, -1)
        count[n] = before
    count = count[::-1] if back else count
    return count if axis == 0 else count.T


def paint_front(picture: Picture, grid: list[str], solid: np.ndarray, warm: np.ndarray) -> None:
    """Everything solid, over the back wall."""
    wood = np.array([[symbol == "-" for symbol in row] for row in grid]).repeat(TILE, 0).repeat(TILE, 1)
    stone = solid & ~wood
    inside = walls.distance_inside(stone, 56)
    stones, lots = (walls.tiled(laid, (H, W)) for laid in walls.lay(walls.SOLID))
    light = np.interp(inside, [0, 12, 18, 26, 40, 56], [4.9, 4.7, 3.9, 3.2, 2.8, 2.55])
    light += walls.blurred(walls.blotches((H, W), 6), 8) * 2.4 * np.clip(inside / 16 - 0.5, 0, 1)
    warm = np.where(stone, warm, 0)
    warm_on = walls.dithered(warm * 0.9, 1) > 0
    body = walls.shade(stones, lots, light - 0.45 * warm, warm, np.where(inside > 20, 1.3, 0.5))
    props.roots_and_bones(body, ROOTS, BONES, inside > 9)

    x = np.tile(np.arange(W), (H, 1))
    joint = np.isin(x % walls.PERIOD, list(SLAB_JOINTS))
    below_top, above_bottom = runs_from(stone, 0, False), runs_from(stone, 0, True)
    from_left, from_right = runs_from(stone, 1, False), runs_from(stone, 1, True)

    def pick(cold: str, hot: str) -> np.ndarray:
        return np.where(warm_on, index(hot), index(cold)).astype(np.uint8)

    edges = [
        (above_bottom == 2, pick("night.0", "night.0")),
        (above_bottom == 1, pick("stone.0", "torchlit.0")),
        (above_bottom == 0, pick("stone.1", "torchlit.1")),
        (from_right == 1, pick("stone.0", "torchlit.0")),
        (from_left == 1, pick("stone.0", "torchlit.0")),
        (from_right == 0, pick("stone.2", "torchlit.2")),
        (from_left == 0, pick("stone.2", "torchlit.2")),
    ]
    slab = [(0, 0), (1, 1), (2, 2), (3, 2), (4, 2), (5, 3), (6, 4)]
    for depth, step in slab:
        tone = np.where(warm_on, walls.SLAB_WARM[step], walls.SLAB_COLD[step]).astype(np.uint8)
        if 1 < depth < 5:
            tone = np.where(joint, np.where(warm_on, walls.SLAB_WARM[3], walls.SLAB_COLD[3]), tone).astype(np.uint8)
        edges.append((below_top == depth, tone))
    mossy = np.zeros((H, W), bool)
    for left, top, right, bottom in MOSSY:
        mossy[top * TILE : bottom * TILE, left * TILE : right * TILE] = True
    hang = moss_lengths()[x % walls.PERIOD]
    for depth in range(1, 8):
        name = "moss.3" if depth == 1 else "moss.2" if depth == 2 else "moss.1"
        edges.append((mossy & (below_top == depth) & (depth < hang), np.full((H, W), index(name), np.uint8)))
    first, lowest, end = CARPET
    runner = np.zeros((H, W), bool)
    runner[(lowest - 1) * TILE : (lowest + 1) * TILE, first * TILE + 6 : end * TILE] = True
    for depth, name in enumerate(("cloth.3", "cloth.3", "cloth.2", "cloth.1")):
        edges.append((runner & (below_top == depth), np.full((H, W), index(name), np.uint8)))
    edges.append((runner & (below_top == 3) & (x % 4 < 2), np.full((H, W), index("gold.2"), np.uint8)))
    for where, tone in edges:
        body = np.where(where & stone, tone, body)
    picture[stone] = body[stone]
    mirror_faces(picture, grid, warm_on)
    paint_ledges(picture, grid)


def moss_lengths() -> np.ndarray:
    """How far moss hangs over a floor's edge, for one period; bare places between the tufts."""
    at = np.arange(walls.PERIOD) * 2 * np.pi / walls.PERIOD
    return np.round(1.2 + 2.4 * np.sin(at * 3 + 1) + 2.0 * np.sin(at * 7) + 1.2 * np.sin(at * 19)).astype(int)


def orientations(tile: Picture) -> list[tuple[Picture, int]]:
    """A tile under all eight flag combinations; the diagonal flip is applied first, as in the map format."""
    found = []
    for flags in range(8):
        turned = tile.T if flags & 1 else tile
        turned = turned[:, ::-1] if flags & 4 else turned
        turned = turned[::-1] if flags & 2 else turned
        found.append((turned, (flags & 1) * FLIP_D + (flags >> 1 & 1) * FLIP_V + (flags >> 2 & 1) * FLIP_H))
    return found


def mirror_faces(picture: Picture, grid: list[str], warm_on: np.ndarray) -> None:
    """Draws wall faces, corners and floor ends once and mirrors them for the other side."""
    def solid_at(row: int, col: int) -> bool:
        return not (0 <= row < level.ROWS and 0 <= col < level.COLS) or grid[row][col] == "#"

    drawn: dict[tuple, Picture] = {}
    for row in range(level.ROWS):
        for col in range(1, level.COLS - 1):
            area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
            rows = grid[max(row - 1, 0) : row + 2]
            around = "".join(line[col - 1 : col + 2] for line in rows)
            if grid[row][col] != "#" or warm_on[area].any() or set(around) - {"#", ".", ","}:
                continue
            reach = [[solid_at(row + r, col + c) for c in (-2, -1, 0, 1, 2)] for r in (-1, 0, 1)]
            key = tuple(tuple(line) for line in reach)
            mirrored = tuple(tuple(reversed(line)) for line in reach)
            if key == mirrored or all(all(line[1:4]) for line in reach):
                continue
            name = (min(key, mirrored), row % 4)
            if name not in drawn:
                drawn[name] = picture[area].copy() if key < mirrored else picture[area][:, ::-1].copy()
            picture[area] = drawn[name] if key < mirrored else drawn[name][:, ::-1]


def paint_ledges(picture: Picture, grid: list[str]) -> None:
    """Wooden ledges, with a strut where one meets a wall."""
    rows = parts("skin.2", "torchlit.3", "wood.2", "wood.2", "wood.2", "wood.1", "wood.0", "night.0")
    for row in range(level.ROWS):
        for col in range(level.COLS):
            if grid[row][col] != "-":
                continue
            x, y = col * TILE, row * TILE
            for dy, tone in enumerate(rows):
                picture[y + dy, x : x + TILE] = tone
            picture[y + 4, x + 2 : x + 9] = index("wood.1")
            picture[y + 3, x + 8 : x + 14] = index("wood.3")
            left, right = grid[row][col - 1] == ".", grid[row][col + 1] == "."
            for is_end, at in ((left, x), (right, x + TILE - 1)):
                if is_end:
                    picture[y + 2 : y + 8, at] = index("wood.0")
            if left or right:
                at = x + 3 if left else x + TILE - 6
                picture[y + 2 : y + 7, at : at + 3] = index("stone.1")
                picture[y + 2 : y + 7, at] = index("stone.2")
                picture[y + 7, at : at + 3] = index("night.0")
            if row + 1 < level.ROWS and (grid[row][col - 1] == "#" or grid[row][col + 1] == "#"):
                mirror = grid[row][col + 1] == "#"
                for dy in range(8, TILE):
                    reach = TILE - dy + 2
                    for dx in range(reach - 4, reach):
                        if dx >= 0:
                            px = x + (TILE - 1 - dx if mirror else dx)
                            picture[y + dy, px] = index("night.0" if dx in (reach - 4, reach - 1) else "wood.1")


# The families of tiles, in tileset order.
FAMILIES = [
    "floor", "step", "slope", "ledge", "face", "ceiling", "wall", "deep", "back", "depth", "torchlight", "moonlight",
    "passage", "pillar", "window", "arch", "gate", "banner", "shelf", "furniture", "chain", "moss", "crack", "cobweb",
    "rubble", "torch",
]
EXACT = {"depth"}  # its gradient would show seams if similar tiles were shared


def inside(row: int, col: int, cells: tuple[int, int, int, int]) -> bool:
    """Whether a cell is in a block of cells (left, top, right, bottom)."""
    return cells[0] <= col < cells[2] and cells[1] <= row < cells[3]


def family(grid: list[str], row: int, col: int) -> str:
    """The family of a cell, determined from the level's symbols only."""
    symbol = grid[row][col]
    if symbol != "#":
        return {".": "back", ",": "back", "-": "ledge", "=": "step"}.get(symbol, "slope")
    if row > 0 and grid[row - 1][col] != "#":
        return "floor"
    if row < level.ROWS - 1 and grid[row + 1][col] != "#":
        return "ceiling"
    if set(grid[row][max(col - 1, 0) : col + 2]) & {".", ","}:
        return "face"
    around = [line[max(col - 3, 0) : col + 4] for line in grid[max(row - 3, 0) : row + 4]]
    return "deep" if set("".join(around)) == {"#"} else "wall"


def families(grid: list[str], furnished: dict[tuple[int, int], str], warm: np.ndarray) -> list[list[int]]:
    """The index of each cell's family, by which the tileset is ordered."""
    order = []
    moonlight = light_of_windows((H, W))
    for row in range(level.ROWS):
        line = []
        for col in range(level.COLS):
            area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
            name = family(grid, row, col)
            if name == "back":
                if (row, col) in furnished:
                    name = furnished[row, col]
                elif any(inside(row, col, cells) for cells in PASSAGES):
                    name = "passage"
                elif any(inside(row, col, cells) for cells in PITS):
                    name = "depth"
                elif warm[area].max() > 1:
                    name = "torchlight"
                elif moonlight[area].max() > 0.4:
                    name = "moonlight"
            line.append(FAMILIES.index(name))
        order.append(line)
    return order


# Tiles of one family that differ by no more than this are merged, so that slightly shifted light shares a tile: the sum
# of the three channels' differences, as a mean over the tile and over each 4 px square of it.
ALIKE, ALIKE_SQUARE = 10.0, 40.0


def unlike(first: np.ndarray, second: np.ndarray) -> np.ndarray:
    """Difference between pictures of whole tiles, [..., y, x, channel]; up to 1 they are merged."""
    apart = np.abs(first.astype(np.int16) - second.astype(np.int16)).sum(-1)
    squares = apart.reshape(*apart.shape[:-2], 4, 4, 4, 4).mean((-1, -3))
    return np.maximum(apart.mean((-1, -2)) / ALIKE, squares.max((-1, -2)) / ALIKE_SQUARE)


def cut(picture: Picture, order: list[list[int]]) -> tuple[list[Picture], list[int], list[list[int]]]:
    """Splits the picture into distinct tiles; returns tiles, their families and the GIDs of the layer."""
    cells: dict[tuple[int, int], Picture] = {}
    for row, col in itertools.product(range(level.ROWS), range(level.COLS)):
        area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
        cells[row, col] = np.ascontiguousarray(picture[area])
    # Frequent tiles come first in their family, so that rare ones are merged into them and not the other way round.
    uses = Counter(tile.tobytes() for tile in cells.values())
    by_use = sorted(cells, key=lambda at: (order[at[0]][at[1]], -uses[cells[at].tobytes()], at))

    known: dict[bytes, tuple[int, int]] = {}  # a tile's pixels in each orientation -> GID and flags
    tiles: list[Picture] = []
    kinds: list[int] = []
    colours = np.array(COLOURS, np.int16)
    layer = [[0] * level.COLS for _ in range(level.ROWS)]
    for kind, group in itertools.groupby(by_use, key=lambda at: order[at[0]][at[1]]):
        first = len(tiles)
        seen = np.zeros((0, TILE, TILE, 3), np.int16)
        for row, col in group:
            tile = cells[row, col]
            if tile.tobytes() not in known:
                shown = colours[tile]
                apart = unlike(seen, shown)
                if len(apart) and apart.min() <= 1 and FAMILIES[kind] not in EXACT:
                    known[tile.tobytes()] = (first + int(apart.argmin()) + 1, 0)
                else:
                    for turned, flags in orientations(tile):
                        known.setdefault(np.ascontiguousarray(turned).tobytes(), (len(tiles) + 1, flags))
                    tiles.append(tile)
                    kinds.append(kind)
                    seen = np.concatenate([seen, shown[None]])
            gid, flags = known[tile.tobytes()]
            layer[row][col] = gid | flags
    return in_order(tiles, kinds, layer, order)


def objects(order: list[list[int]]) -> list[list[tuple[int, int]]]:
    """For each cell, the first cell of the connected area of its family, such as a window or a gate."""
    start = [[(-1, -1)] * level.COLS for _ in range(level.ROWS)]
    for row, col in itertools.product(range(level.ROWS), range(level.COLS)):
        queue = [(row, col)] if start[row][col] == (-1, -1) else []
        while queue:
            r, c = queue.pop()
            if not (0 <= r < level.ROWS and 0 <= c < level.COLS) or order[r][c] != order[row][col]:
                continue
            if start[r][c] != (-1, -1):
                continue
            start[r][c] = (row, col)
            queue += [(r - 1, c), (r + 1, c), (r, c - 1), (r, c + 1)]
    return start


def in_order(
    tiles: list[Picture], kinds: list[int], layer: list[list[int]], order: list[list[int]]
) -> tuple[list[Picture], list[int], list[list[int]]]:
    """Sorts the tiles by family and, within one, by the first object that uses them, so that they are easy to find."""
    start = objects(order)
    places: dict[int, tuple] = {}
    for row, col in itertools.product(range(level.ROWS), range(level.COLS)):
        n = (layer[row][col] & 0x0FFFFFFF) - 1
        place = (order[row][col] != kinds[n], start[row][col], row, col)
        places[n] = min(places.get(n, place), place)
    sequence = sorted(range(len(tiles)), key=lambda n: (kinds[n], places[n]))
    number = {old: new for new, old in enumerate(sequence)}
    renumbered = [[(gid & ~0x0FFFFFFF) | (number[(gid & 0x0FFFFFFF) - 1] + 1) for gid in row] for row in layer]
    return [tiles[n] for n in sequence], [kinds[n] for n in sequence], renumbered


def sheet(tiles: list[Picture]) -> Image.Image:
    """Lays the tiles out as one picture."""
    rows = -(-len(tiles) // SHEET_COLUMNS)
    numbers = np.full((rows * TILE, SHEET_COLUMNS * TILE), index("night.0"), np.uint8)
    for n, tile in enumerate(tiles):
        y, x = n // SHEET_COLUMNS * TILE, n % SHEET_COLUMNS * TILE
        numbers[y : y + TILE, x : x + TILE] = tile
    return Image.fromarray(np.array(COLOURS, np.uint8)[numbers])


def draw_layer(tileset: Image.Image, layer: list[list[int]]) -> np.ndarray:
    """Draws the layer as the game does, from the written tileset."""
    pixels = np.array(tileset)
    columns = pixels.shape[1] // TILE
    out = np.zeros((H, W, 3), np.uint8)
    for row, values in enumerate(layer):
        for col, gid in enumerate(values):
            n = (gid & 0x0FFFFFFF) - 1
            y, x = n // columns * TILE, n % columns * TILE
            tile = pixels[y : y + TILE, x : x + TILE]
            tile = tile.transpose(1, 0, 2) if gid & FLIP_D else tile
            tile = tile[:, ::-1] if gid & FLIP_H else tile
            tile = tile[::-1] if gid & FLIP_V else tile
            out[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE] = tile
    return out


def tileset_project(count: int, rows: int, kinds: list[int]) -> str:
    """The tileset in the map editor's format; each tile's class is its family."""
    lines = [
        '<?xml version="1.0" encoding="UTF-8"?>',
        f'<tileset version="1.10" name="castle" tilewidth="{TILE}" tileheight="{TILE}" tilecount="{count}" '
        f'columns="{SHEET_COLUMNS}">',
        f' <image source="{TILESET}" width="{SHEET_COLUMNS * TILE}" height="{rows * TILE}"/>',
        *(f' <tile id="{n}" type="{FAMILIES[kind]}"/>' for n, kind in enumerate(kinds)),
        "</tileset>",
    ]
    return "\n".join(lines) + "\n"


def map_project(csv: str, rects: list[level.Rect], tris: list[level.Tri]) -> str:
    """The map in the editor's format, with the colliders as an object layer."""
    objects = []
    for n, (x, y, w, h) in enumerate(rects):
        objects.append(f'  <object id="{n + 1}" x="{x}" y="{y}" width="{w}" height="{h}"/>')
    for n, (ax, ay, bx, by, cx, cy) in enumerate(tris):
        objects.append(f'  <object id="{len(rects) + n + 1}" x="{ax}" y="{ay}">')
        objects.append(f'   <polygon points="0,0 {bx - ax},{by - ay} {cx - ax},{cy - ay}"/>')
        objects.append("  </object>")
    data = csv.rstrip("\n").replace("\n", ",\n")
    lines = [
        '<?xml version="1.0" encoding="UTF-8"?>',
        f'<map version="1.10" orientation="orthogonal" renderorder="right-down" width="{level.COLS}" '
        f'height="{level.ROWS}" tilewidth="{TILE}" tileheight="{TILE}" infinite="0" nextlayerid="3" '
        f'nextobjectid="{len(rects) + len(tris) + 1}">',
        f' <tileset firstgid="1" source="{TILESET_PROJECT}"/>',
        f' <layer id="1" name="castle" width="{level.COLS}" height="{level.ROWS}">',
        '  <data encoding="csv">',
        data,
        "</data>",
        " </layer>",
        ' <objectgroup id="2" name="collisions">',
        *objects,
        " </objectgroup>",
        "</map>",
    ]
    return "\n".join(lines) + "\n"


def paint(grid: list[str]) -> tuple[Picture, list[list[int]]]:
    """The whole level as one picture, with the family of each cell."""
    solid = level.solid_mask(grid)
    light = light_of_torches(solid)
    picture = paint_back(solid, light[0])
    changed = furnish(picture, light)
    paint_front(picture, grid, solid, light[0])
    return picture, families(grid, changed, light[0])


def check_contrast(picture: Picture, solid: np.ndarray) -> None:
    """Fails if walkable surfaces have too little contrast with the back wall."""
    light = np.array(COLOURS)[picture] @ [0.2126, 0.7152, 0.0722]
    top = solid & ~np.vstack([np.ones((1, W), bool), solid[:-1]])
    second = solid & np.vstack([np.zeros((1, W), bool), top[:-1]])
    assert min(light[top].min(), light[second].min()) > np.percentile(light[~solid], 99), "a lit edge is too dark"


VIEW_W, VIEW_H = 426, 240  # what a window of 1280 x 720 shows
LARGEST_SHARE, LARGEST_AT_SPAWN = 0.15, 0.10


def check_variety(picture: Picture) -> None:
    """Fails if one colour covers too much of a view: large flat areas look unfinished."""
    for number in np.unique(picture):
        total = np.pad((picture == number).cumsum(0).cumsum(1), ((1, 0), (1, 0)))
        rows, cols = total[VIEW_H:] - total[:-VIEW_H], np.s_[VIEW_W:]
        share = (rows[:, cols] - rows[:, :-VIEW_W]) / (VIEW_W * VIEW_H)
        name = "%02x%02x%02x" % COLOURS[number]
        assert share.max() <= LARGEST_SHARE, f"{name} covers {share.max():.1%} of a view"
        assert share[level.SPAWN[1] - VIEW_H // 2, 0] <= LARGEST_AT_SPAWN, f"{name} fills the first view"


def make(out_dir: Path | str) -> None:
    """Writes the castle below out_dir."""
    grid = level.load()
    rects, tris = level.rectangles(grid), level.triangles(grid)
    level.check(grid, rects, tris)

    picture, order = paint(grid)
    check_contrast(picture, level.solid_mask(grid))
    check_variety(picture)
    tiles, kinds, layer = cut(picture, order)
    tileset = sheet(tiles)
    assert len(layer) == level.ROWS and all(len(row) == level.COLS for row in layer)
    assert all(1 <= gid & 0x0FFFFFFF <= len(tiles) for row in layer for gid in row)
    drawn, expected = draw_layer(tileset, layer), np.array(COLOURS, np.uint8)[picture]
    for row in range(0, H, TILE):
        for col in range(0, W, TILE):
            area = np.s_[row : row + TILE, col : col + TILE]
            assert unlike(drawn[area], expected[area]) <= 1, f"the layer does not show the picture at {col}, {row}"

    folder = Path(out_dir) / FOLDER
    folder.mkdir(parents=True, exist_ok=True)
    tileset.save(folder / TILESET, format="PNG", compress_level=9)
    csv = "".join(",".join(map(str, row)) + "\n" for row in layer)
    shapes = "".join(",".join(map(str, shape)) + "\n" for shape in [*rects, *tris])
    (folder / LAYER).write_text(csv, encoding="utf-8", newline="\n")
    (folder / COLLIDERS).write_text(shapes, encoding="utf-8", newline="\n")
    sheet_rows = tileset.height // TILE
    (folder / TILESET_PROJECT).write_text(
        tileset_project(sheet_rows * SHEET_COLUMNS, sheet_rows, kinds), encoding="utf-8", newline="\n"
    )
    (folder / MAP_PROJECT).write_text(map_project(csv, rects, tris), encoding="utf-8", newline="\n")


if __name__ == "__main__":
    make(sys.argv[1] if len(sys.argv) > 1 else "assets")
