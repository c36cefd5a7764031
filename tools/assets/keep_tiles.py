"""Generates the tileset of the example game Cinder Keep: 16 px tiles of stone, light and furniture in its style.

Tiles are painted on first use, so that the sheet contains only tiles used by the levels. Stonework repeats every four
tiles; a torch and its light are one stamp of 8 × 8 tiles, which can be copied in the map editor. Ground tiles have
collision shapes.
"""

from __future__ import annotations

from dataclasses import dataclass, field

import numpy as np
from PIL import Image

import castle_props as props
import castle_walls as walls
from castle_walls import Picture, index, parts
from palette import COLOURS

TILE = 16
COLUMNS = 32
NOTHING = 255  # a transparent pixel
FRAME_MS = 140

# Stonework of back walls: pattern, ambient light in tones, tint (see castle_walls.shade).
THEMES = {"hall": (walls.BLOCKS, 2.7, 0.95), "crypt": (walls.ASHLAR, 2.3, 1.3), "tower": (walls.BRICK, 2.6, 0.3)}
HALO_TILES = 8  # a torch's light reaches four tiles to each side
TORCH_AT = (3, 3)  # the torch's tile in the stamp


@dataclass
class Tile:
    pixels: Picture
    family: str
    shape: tuple[int, int, int, int] | None = None  # the collision shape
    frames: list[int] = field(default_factory=list)  # of an animation, as tile numbers


def empty(width: int = TILE, height: int = TILE) -> Picture:
    return np.full((height, width), NOTHING, np.uint8)


def _neighbourhood(around: int) -> np.ndarray:
    """Mask of 48 × 48 solid pixels around a tile; bit n of `around` is set if neighbour n (row by row) is open."""
    cells = np.array([[not around >> (row * 3 + col) & 1 for col in range(3)] for row in range(3)])
    cells[1, 1] = True
    return cells.repeat(TILE, 0).repeat(TILE, 1)


class Tileset:
    """The tileset under construction; tiles are cached by key."""

    def __init__(self) -> None:
        self.tiles: list[Tile] = []
        self.known: dict[tuple, int] = {}
        self.laid = {name: walls.lay(masonry) for name, (masonry, _, _) in THEMES.items()}
        self.laid_solid = walls.lay(walls.SOLID)

    def add(self, key: tuple, tile: Tile) -> int:
        self.known[key] = len(self.tiles)
        self.tiles.append(tile)
        return self.known[key]

    # --- stone ---

    def wall(self, theme: str, row: int, col: int, halo: tuple[int, int] | None, around: int) -> int:
        """Back wall. `halo` is the tile's position in a torch's stamp; bits of `around` mark solid neighbours."""
        key = ("wall", theme, row % 4, col % 4, halo, around)
        if key in self.known:
            return self.known[key]
        y, x = row % 4 * TILE, col % 4 * TILE
        area = np.s_[y : y + TILE, x : x + TILE]
        _, light, tint = THEMES[theme]
        solid = _neighbourhood(~around & 0x1FF)
        solid[TILE : 2 * TILE, TILE : 2 * TILE] = False
        near = walls.distance_inside(~solid, 14)[TILE : 2 * TILE, TILE : 2 * TILE]
        warm = np.zeros((TILE, TILE))
        if halo:
            py, px = np.mgrid[0:TILE, 0:TILE] + 0.5
            dy = py + halo[1] * TILE - (TORCH_AT[1] * TILE + 7)
            dx = px + halo[0] * TILE - (TORCH_AT[0] * TILE + 7.5)
            warm = np.clip(1 - np.hypot(dx, dy * np.where(dy < 0, 0.9, 1.05)) / 56, 0, 1) * 4.2
        field_ = np.full((TILE, TILE), light) - 1.3 * np.clip(1 - near / 14, 0, 1)
        stones, lots = (laid[area] for laid in self.laid[theme])
        picture = walls.shade(stones, lots, field_, warm, np.full((TILE, TILE), tint))
        return self.add(key, Tile(picture, "torchlight" if halo else "wall"))

    def ground(self, row: int, col: int, around: int) -> int:
        """Solid stone. Bits of `around` mark open neighbours."""
        key = ("ground", row % 4, col % 4, around)
        if key in self.known:
            return self.known[key]
        area = np.s_[row % 4 * TILE : row % 4 * TILE + TILE, col % 4 * TILE : col % 4 * TILE + TILE]
        inside = walls.distance_inside(_neighbourhood(around), 32)[TILE : 2 * TILE, TILE : 2 * TILE]
        stones, lots = (laid[area] for laid in self.laid_solid)
        light = np.interp(inside, [0, 12, 18, 26, 32], [4.9, 4.6, 3.6, 2.9, 2.6])
        picture = walls.shade(stones, lots, light, np.zeros((TILE, TILE)), np.where(inside > 20, 1.3, 0.5))
        up, left, right, down = (around >> bit & 1 for bit in (1, 3, 5, 7))
        if down:
            picture[-3:] = np.array(parts("night.0", "stone.0", "stone.1"), np.uint8)[:, None]
        for open_, at, beside in ((left, 0, 1), (right, TILE - 1, TILE - 2)):
            if open_:
                picture[:, at], picture[:, beside] = index("stone.2"), index("stone.0")
        if up:
            self._slab(picture, col % 4 * TILE, left, right)
        return self.add(key, Tile(picture, "floor" if up else "ground", (0, 0, TILE, TILE)))

    @staticmethod
    def _slab(picture: Picture, x: int, left: int, right: int) -> None:
        for depth, step in enumerate((0, 1, 2, 2, 2, 3, 4)):
            picture[depth] = walls.SLAB_COLD[step]
        for joint in (6, 23, 37, 52):
            if x <= joint < x + TILE:
                picture[2:5, joint - x] = walls.SLAB_COLD[3]
        for open_, at in ((left, 0), (right, TILE - 1)):
            if open_:
                picture[2:6, at] = walls.SLAB_COLD[3]

    def ledge(self, left: bool, right: bool) -> int:
        """A wooden board in the upper half of its cell; `left` and `right` are true if it ends on that side."""
        key = ("ledge", left, right)
        if key in self.known:
            return self.known[key]
        picture = empty()
        rows = parts("skin.2", "torchlit.3", "wood.2", "wood.2", "wood.2", "wood.1", "wood.0", "night.0")
        picture[:8] = np.array(rows, np.uint8)[:, None]
        picture[4, 2:9], picture[3, 8:14] = index("wood.1"), index("wood.3")
        for ends, edge, iron in ((left, 0, 3), (right, TILE - 1, TILE - 6)):
            if ends:
                picture[2:8, edge] = index("wood.0")
                picture[2:7, iron : iron + 3] = index("stone.1")
                picture[2:7, iron] = index("stone.2")
        return self.add(key, Tile(picture, "ledge", (0, 0, TILE, 8)))

    def ledge_before(self, wall: int, left: bool, right: bool) -> int:
        """A ledge drawn over the wall tile `wall`; -1 for none."""
        board = self.ledge(left, right)
        key = ("ledge before", wall, board)
        if wall >= 0 and key not in self.known:
            pixels = self.tiles[wall].pixels.copy()
            shown = self.tiles[board].pixels
            pixels[shown != NOTHING] = shown[shown != NOTHING]
            self.add(key, Tile(pixels, "ledge", self.tiles[board].shape))
        return board if wall < 0 else self.known[key]

    # --- furniture and hazards ---

    def block(self, name: str, width: int, height: int, paint, family: str, phase: tuple[int, int] = (0, 0)) -> list[list[int]]:
        """An image of several tiles, transparent when passed to `paint`. Empty tiles are -1."""
        key = ("block", name, *phase)
        if (*key, 0, 0) not in self.known:
            picture = empty(width * TILE, height * TILE)
            paint(picture)
            for row in range(height):
                for col in range(width):
                    cell = picture[row * TILE : (row + 1) * TILE, col * TILE : (col + 1) * TILE].copy()
                    if (cell == NOTHING).all() and (row or col):
                        self.known[(*key, row, col)] = -1
                    else:
                        self.add((*key, row, col), Tile(cell, family))
        return [[self.known[(*key, row, col)] for col in range(width)] for row in range(height)]

    def animated(self, name: str, count: int, paint, family: str, shape: tuple | None = None) -> int:
        """An animated tile; its first frame is the tile itself."""
        key = ("animated", name)
        if key not in self.known:
            numbers = []
            for frame in range(count):
                picture = empty()
                paint(picture, frame)
                numbers.append(self.add((*key, frame), Tile(picture, family, shape)))
            self.tiles[numbers[0]].frames = numbers
            self.known[key] = numbers[0]
        return self.known[key]

    def torch(self) -> tuple[int, int]:
        """The upper and the lower tile; the flame moves."""
        lean = (0, 1, 0, -1)

        def paint(to: Picture, frame: int, part: int) -> None:
            whole = empty(TILE, 2 * TILE)
            props.stamp(whole, props.TORCH, 0, 0)
            flame = whole[:11].copy()
            whole[:11] = NOTHING
            for y in range(11):
                shift = round(lean[(frame + y // 4) % 4] * (11 - y) / 7)
                source = min(max(y + (frame % 2 if y < 5 else 0), 0), 10)
                whole[y] = np.roll(flame[source], shift)
            to[:] = whole[part * TILE : (part + 1) * TILE]

        return (self.animated("torch", 4, lambda to, frame: paint(to, frame, 0), "torch"),
                self.animated("torch foot", 1, lambda to, frame: paint(to, frame, 1), "torch"))

    def spikes(self) -> int:
        def paint(to: Picture, _: int) -> None:
            for left in (0, 5, 11):
                tall = 10 if left == 5 else 8
                for dy in range(tall):
                    half = dy * 5 // (2 * tall)
                    y = TILE - tall + dy
                    to[y, left + 2 - half : left + 3 + half] = index("iron.2")
                    to[y, left + 2 - half] = index("iron.3")
                    to[y, left + 2 + half] = index("iron.1")
            to[TILE - 1] = index("iron.0")

        return self.animated("spikes", 1, paint, "spikes", (2, 8, 12, 8))

    def lava(self, surface: bool) -> int:
        def paint(to: Picture, frame: int) -> None:
            ramp = parts("cloth.2", "cloth.3", "flame.1", "flame.2", "flame.3")
            y, x = np.mgrid[0:TILE, 0:TILE]
            turn = 2 * np.pi / TILE
            heat = np.sin(x * turn + frame * np.pi / 2) + np.sin((2 * x + y * 2) * turn - frame * np.pi / 2)
            top = 4 + np.round(np.sin(x[0] * turn + frame * np.pi / 2)).astype(int) if surface else np.full(TILE, -9)
            depth = y - top
            level = walls.dithered(2.0 + 0.55 * heat - np.clip(depth, 0, 20) * (0.11 if surface else 0), 4, 0.9)
            to[:] = np.array(ramp, np.uint8)[np.clip(level, 0, 2) if not surface else np.clip(level, 0, 3)]
            if surface:
                to[depth == 0], to[depth == 1] = ramp[4], ramp[3]
                to[depth < 0] = NOTHING

        return self.animated(f"lava {surface}", 4, paint, "lava", (0, 5 if surface else 0, TILE, 11 if surface else TILE))

    # --- files ---

    def image(self) -> Image.Image:
        rows = -(-len(self.tiles) // COLUMNS)
        sheet = np.full((rows * TILE, COLUMNS * TILE), NOTHING, np.uint8)
        for n, tile in enumerate(self.tiles):
            y, x = n // COLUMNS * TILE, n % COLUMNS * TILE
            sheet[y : y + TILE, x : x + TILE] = tile.pixels
        return with_alpha(sheet)

    def project(self, name: str) -> str:
        """The tileset in the map editor's XML format."""
        rows = -(-len(self.tiles) // COLUMNS)
        lines = [
            '<?xml version="1.0" encoding="UTF-8"?>',
            f'<tileset version="1.10" name="keep" tilewidth="{TILE}" tileheight="{TILE}" '
            f'tilecount="{rows * COLUMNS}" columns="{COLUMNS}">',
            f' <image source="{name}" width="{COLUMNS * TILE}" height="{rows * TILE}"/>',
        ]
        for n, tile in enumerate(self.tiles):
            inner = ""
            if tile.shape:
                x, y, w, h = tile.shape
                inner += f'<objectgroup><object id="1" x="{x}" y="{y}" width="{w}" height="{h}"/></objectgroup>'
            if len(tile.frames) > 1:
                frames = "".join(f'<frame tileid="{frame}" duration="{FRAME_MS}"/>' for frame in tile.frames)
                inner += f"<animation>{frames}</animation>"
            lines.append(f' <tile id="{n}" type="{tile.family}">{inner}</tile>')
        return "\n".join([*lines, "</tileset>"]) + "\n"


def with_alpha(picture: Picture) -> Image.Image:
    """Converts palette indices to an image; NOTHING is transparent."""
    table = np.zeros((256, 4), np.uint8)
    table[: len(COLOURS), :3], table[: len(COLOURS), 3] = COLOURS, 255
    return Image.fromarray(table[picture], "RGBA")


# --- backgrounds ---

def sky(width: int, height: int) -> Picture:
    """Night, lighter towards the horizon, with stars and a moon."""
    random_ = np.random.default_rng(7)
    y = np.mgrid[0:height, 0:width][0]
    step = walls.dithered(0.35 + 2.5 * (y / height) ** 1.4, 3, 1.0)
    picture = np.array([index(f"night.{n}") for n in range(4)], np.uint8)[step]
    for _ in range(150):
        at = int(random_.uniform(0, height * 0.8)), int(random_.uniform(0, width))
        picture[at] = index(("stone.1", "stone.2", "iron.2", "stone.4")[int(random_.integers(4))])
    yy, xx = np.mgrid[0:height, 0:width]
    far = np.hypot(xx - width * 0.6, yy - height * 0.24)
    picture[(far < 30) & ((xx + yy) % 2 == 0) & (step < 3)] = index("night.2")
    picture[far < 21], picture[far < 19.5] = index("stone.3"), index("stone.4")
    for at, down, size in ((-7, 4, 5), (6, -7, 4), (8, 8, 3), (-3, -11, 2.5)):
        crater = np.hypot(xx - width * 0.6 - at, yy - height * 0.24 - down) < size
        picture[crater & (far < 19)] = index("stone.3")
    return picture


def town(width: int, height: int) -> Picture:
    """Roofs and towers against the sky, with lit windows; tiles horizontally."""
    random_ = np.random.default_rng(12)
    picture = empty(width, height)
    for layer, (tone, edge, low, high, wide) in enumerate((("night.1", "night.2", 80, 150, 34), ("shade.0", "night.1", 58, 106, 46))):
        x = 0
        while x < width - 12:
            w = min(int(random_.integers(wide // 2, wide)), width - x)
            tall = int(random_.integers(low, high))
            kind = int(random_.integers(3))
            for dx in range(w):
                roof = (w // 2 - abs(dx - w // 2)) * 2 if kind == 0 else (4 if dx // 4 % 2 else 0) if kind == 1 else 0
                top = max(height - tall - roof, 0)
                picture[top:, x + dx] = index(tone)
                picture[top, x + dx] = index(edge)
            picture[height - tall :, x] = index(edge)
            for _ in range(tall // 26):
                wy, wx = height - tall + int(random_.integers(8, max(tall, 9))), x + int(random_.integers(3, max(w - 3, 4)))
                if layer == 0 or random_.random() < 0.6:
                    picture[min(wy, height - 4) : min(wy, height - 4) + 3, wx : wx + 2] = index("gold.1" if layer else "wood.2")
            x += w + int(random_.integers(0, 14))
    return picture
