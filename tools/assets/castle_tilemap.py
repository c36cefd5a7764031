"""Paints the castle, cuts it into tiles, and writes tileset, tile layer, colliders and the map editor's project.

The level is painted as one picture, in which stones, light and furniture keep to a raster of four tiles. Equal cells
(also mirrored or turned ones) then become one tile, so that the tileset stays small while no border shows.
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
SHEET_COLUMNS = 16
FLIP_H, FLIP_V, FLIP_D = 0x80000000, 0x40000000, 0x20000000

# Rooms: stonework, cold light without any lamp, and the cells (left, top, right, bottom), ends excluded. A pillar or
# a passage hides every border between two kinds of stonework.
ROOMS = [
    (walls.BLOCKS, 1.0, (20, 0, 50, 34)),  # great hall
    (walls.ROUGH, 1.0, (50, 9, 71, 34)),  # broken bridge
    (walls.ASHLAR, 1.0, (0, 10, 21, 34)),  # entry hall
    (walls.BRICK, 1.0, (0, 0, 20.5, 10)),  # loft
    (walls.BRICK, 1.0, (47.5, 0, 71, 9)),  # library
    (walls.BRICK, 1.0, (70.5, 0, 83.5, 9)),  # tower
    (walls.BRICK, 1.0, (71, 9, 83.5, 34)),
    (walls.ASHLAR, 1.0, (83.5, 0, 98.5, 16)),  # gallery
    (walls.ROUGH, 0.4, (83, 16, 98, 34)),  # cellar
    (walls.ROUGH, 1.0, (98, 16, 107, 34)),
    (walls.ROUGH, 1.0, (98.5, 0, 106, 16)),  # shaft where the ways meet
    (walls.BLOCKS, 1.0, (107, 0, 120, 34)),  # throne hall
]

# Passages through walls: the same cells, painted as deep reveals.
PASSAGES = [(19, 19, 21, 24), (47, 16, 50, 21), (69, 18, 71, 23), (83, 19, 85, 23), (105, 20, 107, 25)]

# Where the pit's wall fades into the dark, as cells (left, top, right, bottom).
PIT = (54, 24, 69, 34)

# Pillars by cell: column, top, bottom.
PILLARS = [
    (16, 14, 26), (20, 4, 9), (22, 4, 24), (34, 4, 20), (42, 4, 23), (47, 3, 8), (54, 12, 27), (68, 12, 27), (70, 3, 8),
    (83, 5, 13), (90, 5, 13), (98, 5, 13), (108, 8, 25),
]

# Torches by cell. All stand at the same place of the four-tile raster: their light then needs one set of tiles a room.
TORCHES = [
    (5, 21), (13, 21), (25, 17), (33, 17), (41, 17), (61, 17), (73, 5), (77, 17), (73, 13), (81, 9), (89, 9), (97, 9),
    (93, 25), (101, 13), (109, 17), (117, 17), (53, 5), (65, 5), (5, 5), (13, 5),
]
TORCH_RADIUS = 66

# Windows by cell: left, top, width, height, moon.
WINDOWS = [
    (8, 16, 3, 6, True), (28, 11, 4, 7, False), (36, 11, 4, 7, True), (31, 4, 2, 5, False), (39, 4, 2, 5, False),
    (56, 13, 3, 7, False), (64, 13, 3, 7, True),
    (80, 13, 2, 4, False), (86, 6, 3, 5, False), (94, 6, 3, 5, True), (56, 4, 2, 3, False), (112, 9, 4, 7, True),
]

# Banners by cell: column, row, and the height in px.
BANNERS = [
    (6, 15, 56), (12, 15, 56), (24, 9, 66), (41, 9, 66), (84, 6, 56), (92, 6, 56), (100, 6, 66), (103, 6, 66),
    (110, 10, 82), (117, 10, 82),
]

# Floors with moss, as cells (left, top, right, bottom).
MOSSY = [(85, 23, 100, 29), (51, 21, 54, 24), (60, 22, 63, 23), (69, 23, 72, 24)]

CARPET = (108, 25, 118)  # first column, lowest floor row, end column

SLAB_JOINTS = {6, 23, 37, 52}


def light_of_torches(shape: tuple[int, int]) -> np.ndarray:
    """Warm light at every pixel, 0 to about 3.4."""
    field = np.zeros(shape)
    for col, row in TORCHES:
        light = walls.glow(shape, col * TILE + 7.5, row * TILE + 7, TORCH_RADIUS, 4.0)
        np.maximum(field, light, out=field)
    return field


def light_of_windows(shape: tuple[int, int]) -> np.ndarray:
    """Moonlight: a shaft that falls from each window to the lower right."""
    field = np.zeros(shape)
    y, x = np.mgrid[0 : shape[0], 0 : shape[1]] + 0.5
    for col, row, width, height, moon in WINDOWS:
        bottom = (row + height) * TILE
        lean = 0.5 * (y - bottom)
        left, right = col * TILE + 3 + lean, (col + width) * TILE - 3 + lean
        inside = (y > bottom) & (x > left) & (x < right)
        fade = np.clip(1 - (y - bottom) / (100 if moon else 64), 0, 1) ** 0.7
        edge = np.clip(np.minimum(x - left, right - x) / 4, 0, 1)
        np.maximum(field, np.where(inside, fade * edge * (2.3 if moon else 1.5), 0), out=field)
    return field


def paint_back(solid: np.ndarray, warm: np.ndarray) -> Picture:
    """The bare back wall with its light."""
    room_light = np.zeros((H, W))
    stones = np.zeros((H, W), np.uint8)
    for masonry, light, (left, top, right, bottom) in ROOMS:
        area = np.s_[top * TILE : bottom * TILE, int(left * TILE) : int(right * TILE)]
        stones[area] = walls.tiled(walls.lay(masonry)[0], (H, W))[area]
        room_light[area] = light
    room_light = walls.blurred(room_light, 20)
    moonlight = light_of_windows((H, W))
    near = walls.distance_inside(~solid, 20)  # corners and edges lie in shadow
    for left, top, right, bottom in PASSAGES:
        area = np.s_[top * TILE : bottom * TILE, left * TILE : right * TILE]
        room_light[area] = 0
        moonlight[area] = 0
    warm = warm * np.clip(0.75 + near / 24, 0, 1)
    # the pit fades into the dark
    pit = np.zeros((H, W))
    left, top, right, _ = PIT
    pit[:, left * TILE : right * TILE] = np.clip((np.arange(H) - top * TILE) / (5 * TILE), 0, 1)[:, None]
    cold = (room_light * np.clip(0.45 + near / 18, 0, 1) + moonlight) * (1 - pit)
    picture = walls.shade(stones, walls.dithered(cold + 0.25, 3), walls.BACK_COLD)
    warm_levels = walls.dithered(warm, 3)
    picture = np.where(warm_levels > 0, walls.shade(stones, warm_levels, walls.BACK_WARM), picture)
    picture[walls.dithered(pit * 1.6, 1) > 0] = index("night.0")
    for left, top, right, bottom in PASSAGES:
        props.jambs(picture, left * TILE, top * TILE, right * TILE, bottom * TILE)
    return picture


def furnish(to: Picture) -> dict[tuple[int, int], str]:
    """Paints everything that stands at or hangs on the back wall; returns the family of each cell it changed."""
    t = TILE
    changed: dict[tuple[int, int], str] = {}
    before = to.copy()

    def done(family: str) -> None:
        """Puts the cells that changed since the last call into a family."""
        different = (to != before).reshape(level.ROWS, t, level.COLS, t).any((1, 3))
        changed.update({(int(row), int(col)): family for row, col in np.argwhere(different)})
        before[:] = to

    for col, top, bottom in PILLARS:
        props.pillar(to, col * t, top * t, bottom * t)
    done("pillar")
    for col, row, width, height, moon in WINDOWS:
        props.window(to, col * t, row * t, width * t, height * t, moon)
    done("window")
    for col, row, width, height in ((89, 23, 3, 5), (79, 18, 3, 5), (43, 17, 3, 6)):
        props.arch(to, col * t, row * t, width * t, height * t)
    done("arch")
    for col, row, width, height in ((2, 20, 3, 6), (94, 24, 2, 4)):
        props.gate(to, col * t, row * t, width * t, height * t)
    done("gate")
    for col, row, height in BANNERS:
        props.banner(to, col * t, row * t, height)
    done("banner")
    for n, col in enumerate((48, 50, 58, 60, 62, 66)):
        props.shelf(to, col * t, 4 * t, 2 * t, 4 * t, 100 + n % 3)
    for n, col in enumerate((8, 16)):
        props.shelf(to, col * t, 5 * t, 2 * t, 4 * t, 101 + n)
    done("shelf")
    props.table(to, 54 * t, 8 * t, 2 * t)
    for col, row in ((3, 8), (10, 8), (11, 8), (11, 7), (18, 8), (73, 22)):
        props.stamp(to, props.CRATE, col * t, row * t)
    for col, row in ((12, 8), (69, 7), (17, 23), (18, 23), (82, 22), (74, 22)):
        props.stamp(to, props.BARREL, col * t, row * t)
    props.stamp(to, props.THRONE, 113 * t - 8, 24 * t - 35)
    done("furniture")
    # chains: what hangs, hangs on something
    for col, top, bottom in ((27, 4, 9), (29, 4, 9), (35, 4, 9), (37, 4, 9), (60, 12, 22), (62, 12, 22), (76, 3, 19),
                             (78, 13, 19), (77, 3, 12), (79, 3, 12), (45, 4, 8)):
        for row in range(top, bottom):
            props.stamp(to, props.CHAIN, col * t, row * t)
    done("chain")
    for col, row in ((24, 4), (43, 4), (64, 12), (89, 22), (92, 22), (102, 5), (73, 3), (10, 14), (50, 12)):
        props.moss(to, col * t, row * t, 2 * t, col)
    done("moss")
    for col, row, seed in ((11, 22, 5), (43, 12, 6), (52, 17, 7), (82, 6, 8), (92, 10, 9), (112, 19, 10), (7, 5, 3)):
        props.crack(to, col * t, row * t, seed)
    done("crack")
    for col, row, mirror in ((2, 4, False), (82, 3, True), (117, 8, True), (2, 14, False), (18, 14, True)):
        props.cobweb(to, col * t, row * t, mirror)
    done("cobweb")
    for col, row in ((92, 27), (104, 24)):
        props.stamp(to, props.SKULL, col * t, row * t)
    for col, row, seed in ((6, 26, 1), (43, 23, 2), (52, 23, 3), (76, 23, 4), (90, 28, 5), (96, 13, 6), (102, 25, 7)):
        props.rubble(to, col * t, row * t, 2 * t, seed)
    done("rubble")
    for col, row in TORCHES:
        props.stamp(to, props.TORCH, col * t, row * t)
    done("torch")
    return changed


def runs_from(solid: np.ndarray, axis: int, back: bool) -> np.ndarray:
    """How many solid pixels lie between each solid pixel and the open one that comes first along an axis."""
    work = solid if axis == 0 else solid.T
    work = work[::-1] if back else work
    count = np.zeros(work.shape, int)
    before = np.full(work.shape[1], 99)
    for n, row in enumerate(work):
        before = np.where(row, before + 1, -1)
        count[n] = before
    count = count[::-1] if back else count
    return count if axis == 0 else count.T


def paint_front(picture: Picture, grid: list[str], solid: np.ndarray, warm: np.ndarray) -> list[list[bool]]:
    """Everything solid, over the back wall. Returns which cells are deep in a wall."""
    wood = np.array([[symbol == "-" for symbol in row] for row in grid]).repeat(TILE, 0).repeat(TILE, 1)
    stone = solid & ~wood
    inside = walls.distance_inside(stone, 56)
    stones, lots = (walls.tiled(laid, (H, W)) for laid in walls.lay(walls.SOLID))
    deep = inside + 11 * lots * np.clip(inside / 28, 0, 1)  # stone by stone into the dark, without a straight border
    levels = walls.dithered(np.interp(deep, [0, 15, 18, 27, 30, 46, 52], [3.5, 3.4, 2.5, 2.4, 1.5, 1.4, 0.4]), 3)
    warm_on = walls.dithered(warm * 0.9, 1) > 0
    hot, cold = walls.shade(stones, levels, walls.FRONT_WARM), walls.shade(stones, levels, walls.FRONT_COLD)
    body = np.where(warm_on, hot, cold)

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
    runner[: (lowest + 1) * TILE, first * TILE + 6 : end * TILE] = True
    for depth, name in enumerate(("cloth.3", "cloth.3", "cloth.2", "cloth.1")):
        edges.append((runner & (below_top == depth), np.full((H, W), index(name), np.uint8)))
    edges.append((runner & (below_top == 3) & (x % 4 < 2), np.full((H, W), index("gold.2"), np.uint8)))
    for where, tone in edges:
        body = np.where(where & stone, tone, body)
    picture[stone] = body[stone]
    core = deep_cells(picture, grid, inside)
    mirror_faces(picture, grid, warm_on)
    paint_ledges(picture, grid)
    return core


def moss_lengths() -> np.ndarray:
    """How far moss hangs over a floor's edge, for one period; bare places between the tufts."""
    at = np.arange(walls.PERIOD) * 2 * np.pi / walls.PERIOD
    return np.round(1.2 + 2.4 * np.sin(at * 3 + 1) + 2.0 * np.sin(at * 7) + 1.2 * np.sin(at * 19)).astype(int)


def deep_tiles() -> list[Picture]:
    """The heart of thick walls: nearly dark, a few stones barely seen; good in all eight orientations."""
    marks = [[(3, 4, 6, 3), (10, 10, 4, 3)], [(5, 9, 7, 4)], [(2, 2, 4, 3), (9, 6, 5, 4)], [(8, 2, 5, 3)], []]
    tiles = []
    for stones in marks:
        tile = np.full((TILE, TILE), index("night.0"), np.uint8)
        for x, y, w, h in stones:
            tile[y, x : x + w] = index("night.1")
            tile[y : y + h - 1, x] = index("night.1")
        tiles.append(tile)
    return tiles


def orientations(tile: Picture) -> list[tuple[Picture, int]]:
    """A tile under all eight flag combinations; the diagonal flip comes first, as the map format has it."""
    found = []
    for flags in range(8):
        turned = tile.T if flags & 1 else tile
        turned = turned[:, ::-1] if flags & 4 else turned
        turned = turned[::-1] if flags & 2 else turned
        found.append((turned, (flags & 1) * FLIP_D + (flags >> 1 & 1) * FLIP_V + (flags >> 2 & 1) * FLIP_H))
    return found


def deep_cells(picture: Picture, grid: list[str], inside: np.ndarray) -> list[list[bool]]:
    """Puts a turned deep tile wherever a whole cell lies far inside; returns where."""
    core = [[False] * level.COLS for _ in range(level.ROWS)]
    tiles = deep_tiles()
    for row in range(level.ROWS):
        for col in range(level.COLS):
            area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
            if grid[row][col] == "#" and inside[area].min() > 53:
                chance = (row * 7919 + col * 104729 + row * col * 31) % 9973
                tile = tiles[min(chance % 14, len(tiles) - 1)]
                picture[area] = orientations(tile)[chance // 14 % 8][0]
                core[row][col] = True
    return core


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
            if grid[row][col] != "#" or warm_on[area].any() or set(around) - {"#", "."}:
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
    """Wooden ledges; where one meets a wall a strut holds it."""
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
            left, right = grid[row][col - 1] in ".", grid[row][col + 1] in "."
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


# The families of tiles, in the order in which they lie in the tileset.
FAMILIES = [
    "floor", "step", "slope", "ledge", "face", "ceiling", "wall", "core", "back", "depth", "torchlight", "moonlight",
    "passage", "pillar", "window", "arch", "gate", "banner", "shelf", "furniture", "chain", "moss", "crack", "cobweb",
    "rubble", "torch",
]
EXACT = {"core", "depth"}  # their few marks and their dither would show if tiles were shared that are only alike


def inside(row: int, col: int, cells: tuple[int, int, int, int]) -> bool:
    """Whether a cell lies in a block of cells (left, top, right, bottom)."""
    return cells[0] <= col < cells[2] and cells[1] <= row < cells[3]


def family(grid: list[str], row: int, col: int, deep: bool) -> str:
    """The family of a cell by the level's symbols alone."""
    symbol = grid[row][col]
    if symbol != "#":
        return {".": "back", "-": "ledge", "=": "step"}.get(symbol, "slope")
    if row > 0 and grid[row - 1][col] != "#":
        return "floor"
    if row < level.ROWS - 1 and grid[row + 1][col] != "#":
        return "ceiling"
    if "." in grid[row][max(col - 1, 0) : col + 2]:
        return "face"
    return "core" if deep else "wall"


def families(
    grid: list[str], core: list[list[bool]], furnished: dict[tuple[int, int], str], warm: np.ndarray
) -> list[list[int]]:
    """A number for each cell by which the tileset is ordered."""
    order = []
    moonlight = light_of_windows((H, W))
    for row in range(level.ROWS):
        line = []
        for col in range(level.COLS):
            area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
            name = family(grid, row, col, core[row][col])
            if name == "back":
                if (row, col) in furnished:
                    name = furnished[row, col]
                elif any(inside(row, col, cells) for cells in PASSAGES):
                    name = "passage"
                elif inside(row, col, PIT):
                    name = "depth"
                elif warm[area].max() > 1:
                    name = "torchlight"
                elif moonlight[area].max() > 0.4:
                    name = "moonlight"
            line.append(FAMILIES.index(name))
        order.append(line)
    return order


# Two tiles of one family count as one when they differ by no more than this, so that shadows and light that fall a
# pixel apart share a tile: the sum of the three channels' differences, as a mean over the tile and over each 4 px
# square of it.
ALIKE, ALIKE_SQUARE = 4.0, 20.0


def unlike(first: np.ndarray, second: np.ndarray) -> np.ndarray:
    """How far pictures of whole tiles, [..., y, x, channel], are apart; up to 1 they are alike."""
    apart = np.abs(first.astype(np.int16) - second.astype(np.int16)).sum(-1)
    squares = apart.reshape(*apart.shape[:-2], 4, 4, 4, 4).mean((-1, -3))
    return np.maximum(apart.mean((-1, -2)) / ALIKE, squares.max((-1, -2)) / ALIKE_SQUARE)


def cut(picture: Picture, order: list[list[int]]) -> tuple[list[Picture], list[int], list[list[int]]]:
    """Cuts the picture into tiles without repeats; returns tiles, their families and the GIDs of the layer."""
    cells: dict[tuple[int, int], Picture] = {}
    for row, col in itertools.product(range(level.ROWS), range(level.COLS)):
        area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
        cells[row, col] = np.ascontiguousarray(picture[area])
    # Common tiles come first in their family, so that rare ones are taken for them and not the other way round.
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
    """For each cell the first cell of the connected area of its family: the window, the gate it belongs to."""
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
    """Sorts the tiles by family and, within one, by the object that shows them first, so that people find them."""
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
    """The tileset as the map editor reads it; every tile carries its family as its class."""
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
    """The map as the editor reads it, with the colliders as an object layer."""
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
    warm = light_of_torches((H, W))
    picture = paint_back(solid, warm)
    changed = furnish(picture)
    core = paint_front(picture, grid, solid, warm)
    return picture, families(grid, core, changed, warm)


def check_contrast(picture: Picture, solid: np.ndarray) -> None:
    """Fails when what one can stand on does not stand out from the back wall."""
    light = np.array(COLOURS)[picture] @ [0.2126, 0.7152, 0.0722]
    top = solid & ~np.vstack([np.ones((1, W), bool), solid[:-1]])
    second = solid & np.vstack([np.zeros((1, W), bool), top[:-1]])
    assert min(light[top].min(), light[second].min()) > np.percentile(light[~solid], 99), "a lit edge is too dark"


def make(out_dir: Path | str) -> None:
    """Writes the castle below out_dir."""
    grid = level.load()
    rects, tris = level.rectangles(grid), level.triangles(grid)
    level.check(grid, rects, tris)

    picture, order = paint(grid)
    check_contrast(picture, level.solid_mask(grid))
    tiles, kinds, layer = cut(picture, order)
    tileset = sheet(tiles)
    assert len(layer) == level.ROWS and all(len(row) == level.COLS for row in layer)
    assert all(1 <= gid & 0x0FFFFFFF <= len(tiles) for row in layer for gid in row)
    drawn, wanted = draw_layer(tileset, layer), np.array(COLOURS, np.uint8)[picture]
    for row in range(0, H, TILE):
        for col in range(0, W, TILE):
            area = np.s_[row : row + TILE, col : col + TILE]
            assert unlike(drawn[area], wanted[area]) <= 1, f"the layer does not show the picture at {col}, {row}"

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
