"""Paints the castle, cuts it into tiles, and writes tileset, tile layer, colliders and the map editor's project.

The level is painted as one picture, in which stones, light and furniture keep to a raster of four tiles. Equal cells
(also mirrored or turned ones) then become one tile, so that the tileset stays small while no border shows.
"""

from __future__ import annotations

import sys
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

# Rooms: stonework, cold light without any lamp, and the cells (left, top, right, bottom), ends excluded.
ROOMS = [
    (walls.ASHLAR, 1.0, (0, 10, 21, 34)),  # entry hall
    (walls.BLOCKS, 1.0, (21, 0, 50, 34)),  # great hall
    (walls.BRICK, 1.0, (0, 0, 21, 10)),  # loft
    (walls.ROUGH, 0.9, (47, 9, 71, 34)),  # broken bridge
    (walls.BRICK, 1.0, (47, 0, 71, 9)),  # library
    (walls.BRICK, 1.0, (71, 0, 83, 34)),  # tower
    (walls.ASHLAR, 1.0, (83, 0, 99, 16)),  # gallery
    (walls.ROUGH, 0.9, (83, 16, 102, 34)),  # cellar
    (walls.ASHLAR, 1.0, (99, 0, 106, 28)),  # shaft where the ways meet
    (walls.BLOCKS, 1.0, (106, 0, 120, 34)),  # throne hall
]

# Torches by cell. All stand at the same place of the four-tile raster: their light then needs one set of tiles a room.
TORCHES = [
    (5, 21), (13, 21), (25, 17), (33, 17), (41, 17), (53, 17), (65, 17), (73, 5), (77, 17), (73, 13), (81, 9), (85, 9),
    (93, 9), (93, 25), (101, 21), (101, 9), (109, 17), (117, 17), (53, 5), (65, 5), (5, 5), (13, 5),
]
TORCH_RADIUS = 62

# Windows by cell: left, top, width, height, moon.
WINDOWS = [
    (8, 16, 3, 6, True), (28, 6, 4, 9, False), (36, 6, 4, 9, True), (60, 13, 3, 6, True), (88, 6, 3, 5, False),
    (96, 6, 3, 5, True), (56, 4, 2, 3, False), (112, 9, 4, 7, True),
]

SLAB_JOINTS = {6, 23, 37, 52}


def light_of_torches(shape: tuple[int, int]) -> np.ndarray:
    """Warm light at every pixel, 0 to about 3.4."""
    field = np.zeros(shape)
    for col, row in TORCHES:
        light = walls.glow(shape, col * TILE + 7.5, row * TILE + 7, TORCH_RADIUS, 3.9)
        np.maximum(field, light, out=field)
    return field


def light_of_windows(shape: tuple[int, int]) -> np.ndarray:
    """Moonlight: a shaft that falls from each window to the lower right."""
    field = np.zeros(shape)
    y, x = np.mgrid[0 : shape[0], 0 : shape[1]] + 0.5
    for col, row, width, height, moon in WINDOWS:
        top, bottom = row * TILE, (row + height) * TILE
        lean = 0.55 * (y - bottom + 20)
        left, right = col * TILE + 4 + lean, (col + width) * TILE - 4 + lean
        inside = (y > bottom - 20) & (x > left) & (x < right)
        fade = np.clip(1 - (y - bottom) / (84 if moon else 56), 0, 1)
        edge = np.minimum(np.minimum(x - left, right - x) / 7, 1)
        np.maximum(field, np.where(inside, fade * edge * (1.9 if moon else 1.2), 0), out=field)
        halo = walls.glow(shape, (col + width / 2) * TILE, (top + bottom) / 2, width * 9 + height * 5, 1.6)
        np.maximum(field, halo, out=field)
    return field


def paint_back(grid: list[str], solid: np.ndarray, warm: np.ndarray) -> Picture:
    """The back wall with all its furniture."""
    picture = np.zeros((H, W), np.uint8)
    room_light = np.zeros((H, W))
    stones = np.zeros((H, W), np.uint8)
    for masonry, light, (left, top, right, bottom) in ROOMS:
        area = np.s_[top * TILE : bottom * TILE, left * TILE : right * TILE]
        stones[area] = walls.tiled(walls.lay(masonry), (H, W))[area]
        room_light[area] = light
    # corners and edges lie in shadow
    near = walls.distance_inside(~solid, 20)
    cold = room_light * np.clip(0.35 + near / 16, 0, 1) + light_of_windows((H, W))
    # pits and the lowest rows fade into the dark
    depth = np.clip((np.arange(H) - 24 * TILE) / (5 * TILE), 0, 1)[:, None]
    pit = np.zeros((1, W))
    pit[:, 54 * TILE : 69 * TILE] = 1
    cold = cold * (1 - depth * pit)
    shown = walls.shade(stones, walls.dithered(cold + 0.25, 3), np.array(walls.BACK_COLD))
    warm_levels = walls.dithered(warm * np.clip(0.55 + near / 14, 0, 1), 3)
    lit = walls.shade(stones, warm_levels, np.array(walls.BACK_WARM))
    picture[:] = np.where(warm_levels > 0, lit, shown)
    fade = walls.dithered((depth * pit) * 1.6 * np.ones((H, W)), 1)
    picture[fade > 0] = index("night.0")
    furnish(picture)
    return picture


def furnish(to: Picture) -> None:
    """Everything that stands at or hangs on the back wall. Numbers are cells."""
    t = TILE
    # entry hall
    for col in (3, 15):
        props.pillar(to, col * t, 14 * t, 26 * t)
    # great hall
    for col in (22, 34, 42):
        props.pillar(to, col * t, 5 * t, {22: 24, 34: 20, 42: 23}[col] * t)
    # gallery
    for col in (86, 92):
        props.pillar(to, col * t, 5 * t, 13 * t)
    # throne hall
    for col in (107, 111, 116):
        props.pillar(to, col * t, 8 * t, (25 if col < 111 else 24) * t)
    # bridge
    for col in (52, 56, 66):
        props.pillar(to, col * t, 12 * t, 23 * t if col == 52 else 26 * t)
    for col, row, width, height, moon in WINDOWS:
        props.window(to, col * t, row * t, width * t, height * t, moon)
    # blind arches and gates
    props.gate(to, 44 * t, 17 * t, 3 * t, 6 * t) if False else None
    props.gate(to, 94 * t, 24 * t, 2 * t, 4 * t)
    props.gate(to, 80 * t, 19 * t, 3 * t, 4 * t) if False else None
    props.arch(to, 89 * t, 23 * t, 4 * t, 5 * t)
    props.arch(to, 78 * t, 5 * t, 3 * t, 5 * t)
    # banners
    for col, row, height in ((23, 10, 66), (41, 10, 66), (88, 12, 1), (109, 10, 82), (110, 10, 1), (116, 10, 82),
                             (100, 6, 60), (103, 6, 60), (6, 14, 50), (12, 14, 50)):
        if height > 10:
            props.banner(to, col * t, row * t, height)
    # library and loft
    for n, col in enumerate((48, 50, 58, 60, 62, 66)):
        props.shelf(to, col * t, 4 * t, 2 * t, 4 * t, 100 + n % 3)
    for n, col in enumerate((8, 16)):
        props.shelf(to, col * t, 5 * t, 2 * t, 4 * t, 101 + n)
    props.table(to, 54 * t, 8 * t, 2 * t)
    for col in (3, 11, 19):
        props.stamp(to, props.CRATE, col * t, 8 * t)
    for col, row in ((10, 8), (68, 7), (92, 27), (86, 21), (17, 23), (81, 22), (80, 22)):
        props.stamp(to, props.BARREL, col * t, row * t)
    props.stamp(to, props.SKULL, 97 * t, 25 * t) if False else None
    props.stamp(to, props.SKULL, 16 * t, 25 * t) if False else None
    # chains: what hangs, hangs on something
    for col, top, bottom in ((27, 4, 9), (29, 4, 9), (35, 4, 9), (37, 4, 9), (60, 12, 22), (62, 12, 22), (76, 3, 19),
                             (78, 13, 19), (77, 3, 12), (79, 3, 12), (44, 4, 8)):
        for row in range(top, bottom):
            props.stamp(to, props.CHAIN, col * t, row * t)
    for x, row in ((24, 5), (43, 5), (66, 12), (89, 22), (100, 5), (73, 3), (10, 14), (104, 20)):
        props.moss(to, x * t, row * t, 2 * t, x)
    for col, row, seed in ((11, 22, 5), (30, 16, 6), (58, 20, 7), (82, 7, 8), (97, 9, 9), (108, 12, 10), (7, 5, 3)):
        props.crack(to, col * t, row * t, seed)
    for col, row, mirror in ((2, 4, False), (46, 9, True), (82, 3, True), (117, 8, True), (70, 3, True), (2, 14, False),
                             (18, 14, True)):
        props.cobweb(to, col * t, row * t, mirror)
    for col, row, seed in ((6, 26, 1), (44, 23, 2), (52, 23, 3), (74, 23, 4), (90, 28, 5), (95, 13, 6), (103, 25, 7)):
        props.rubble(to, col * t, row * t, 2 * t, seed)
    props.stamp(to, props.THRONE, 113 * t - 8, 24 * t - 35)
    for col, row in TORCHES:
        props.stamp(to, props.TORCH, col * t, row * t)


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


def paint_front(picture: Picture, grid: list[str], solid: np.ndarray, warm: np.ndarray) -> None:
    """Everything solid, over the back wall."""
    wood = np.kron(np.array([[symbol == "-" for symbol in row] for row in grid]), np.ones((TILE, TILE), bool)).astype(bool)
    stone = solid & ~wood
    inside = walls.distance_inside(stone, 44)
    stones = walls.tiled(walls.lay(walls.SOLID), (H, W))
    levels = walls.dithered(np.interp(inside, [0, 9, 13, 20, 25, 35, 40], [3.5, 3.4, 2.5, 2.4, 1.5, 1.4, 0.4]), 3)
    warm_on = walls.dithered(warm * 0.9, 1) > 0
    body = np.where(warm_on, walls.shade(stones, levels, walls.FRONT_WARM), walls.shade(stones, levels, walls.FRONT_COLD))

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
    for where, tone in edges:
        body = np.where(where & stone, tone, body)
    picture[stone] = body[stone]
    deep_cells(picture, grid, inside)
    mirror_faces(picture, grid, warm_on)
    paint_ledges(picture, grid)


def deep_tiles() -> list[Picture]:
    """The heart of thick walls: nearly dark, a few stones barely seen; good in all eight orientations."""
    marks = [
        [(3, 4, 6, 3), (10, 10, 4, 3)], [(5, 9, 7, 4)], [(2, 2, 4, 3), (9, 6, 5, 4)], [(8, 2, 5, 3), (3, 10, 6, 3)], [],
    ]
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


def deep_cells(picture: Picture, grid: list[str], inside: np.ndarray) -> None:
    """Puts a turned deep tile wherever a whole cell lies far inside."""
    tiles = deep_tiles()
    for row in range(level.ROWS):
        for col in range(level.COLS):
            area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
            if grid[row][col] == "#" and inside[area].min() > 36:
                chance = (row * 7919 + col * 104729 + row * col * 31) % 9973
                tile = tiles[min(chance % 9, len(tiles) - 1)]
                picture[area] = orientations(tile)[chance // 9 % 8][0]


def mirror_faces(picture: Picture, grid: list[str], warm_on: np.ndarray) -> None:
    """Draws wall faces, corners and floor ends once and mirrors them for the other side."""
    def solid_at(row: int, col: int) -> bool:
        return not (0 <= row < level.ROWS and 0 <= col < level.COLS) or grid[row][col] == "#"

    drawn: dict[tuple, Picture] = {}
    for row in range(level.ROWS):
        for col in range(1, level.COLS - 1):
            area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
            around = [grid[r][c] for r in range(max(row - 1, 0), min(row + 2, level.ROWS)) for c in (col - 1, col, col + 1)]
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


def families(grid: list[str], back: Picture, plain: Picture) -> list[list[int]]:
    """A number for each cell by which the tileset is ordered."""
    order = [[0] * level.COLS for _ in range(level.ROWS)]
    for row in range(level.ROWS):
        for col in range(level.COLS):
            symbol = grid[row][col]
            area = np.s_[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE]
            if symbol == "#":
                up = row > 0 and grid[row - 1][col] not in "#"
                down = row < level.ROWS - 1 and grid[row + 1][col] not in "#"
                side = (col > 0 and grid[row][col - 1] == ".") or (col < level.COLS - 1 and grid[row][col + 1] == ".")
                order[row][col] = FAMILIES.index("floor" if up else "ceiling" if down else "face" if side else "wall")
            elif symbol == ".":
                changed = not np.array_equal(back[area], plain[area])
                order[row][col] = FAMILIES.index("furniture" if changed else "back")
            else:
                name = {"-": "ledge", "=": "step"}.get(symbol, "slope")
                order[row][col] = FAMILIES.index(name)
    return order


FAMILIES = ["floor", "step", "slope", "ledge", "face", "ceiling", "wall", "back", "furniture"]


def cut(picture: Picture, order: list[list[int]]) -> tuple[list[Picture], list[int], list[list[int]]]:
    """Cuts the picture into tiles without repeats; returns tiles, their families and the GIDs of the layer."""
    known: dict[bytes, tuple[int, int]] = {}
    tiles: list[Picture] = []
    kinds: list[int] = []
    layer = [[0] * level.COLS for _ in range(level.ROWS)]
    cells = sorted(((r, c) for r in range(level.ROWS) for c in range(level.COLS)), key=lambda rc: (order[rc[0]][rc[1]], rc))
    for row, col in cells:
        tile = np.ascontiguousarray(picture[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE])
        if tile.tobytes() not in known:
            for turned, flags in orientations(tile):
                known.setdefault(np.ascontiguousarray(turned).tobytes(), (len(tiles) + 1, flags))
            tiles.append(tile)
            kinds.append(order[row][col])
        gid, flags = known[tile.tobytes()]
        layer[row][col] = gid | flags
    return tiles, kinds, layer


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
    picture = paint_back(grid, solid, warm)
    back = picture.copy()
    paint_front(picture, grid, solid, warm)
    return picture, families(grid, back, back)


def make(out_dir: Path | str) -> None:
    """Writes the castle below out_dir."""
    grid = level.load()
    rects, tris = level.rectangles(grid), level.triangles(grid)
    level.check(grid, rects, tris)

    picture, order = paint(grid)
    tiles, kinds, layer = cut(picture, order)
    tileset = sheet(tiles)
    assert len(layer) == level.ROWS and all(len(row) == level.COLS for row in layer)
    assert all(1 <= gid & 0x0FFFFFFF <= len(tiles) for row in layer for gid in row)
    assert np.array_equal(draw_layer(tileset, layer), np.array(COLOURS, np.uint8)[picture]), "tiles differ from the picture"

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
