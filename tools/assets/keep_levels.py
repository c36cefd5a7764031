"""Generates the levels of the example game Cinder Keep as map editor files: rooms carved out of rock, then decorated.

The map's layers, from back to front: sky and town with parallax, the castle's walls and ground, furniture, hazards, and
the objects from which the game creates its actors. Walls and ground share a layer: most of it is then opaque, which is
drawn fastest. Cells are 16 px; rows grow downwards; ranges exclude their end.
"""

from __future__ import annotations

import itertools
from pathlib import Path

import numpy as np

import castle_props as props
import keep_tiles
from keep_tiles import HALO_TILES, NOTHING, TILE, TORCH_AT, Tileset

FOLDER = "levels"
SKY_W, SKY_H, TOWN_W, TOWN_H = 640, 320, 1024, 190
SOLID, OPEN, LEDGE, SPIKES, LAVA = "#.-^~"
LOCKED = "Locked. The key hangs above"


class Level:
    """A map under construction."""

    def __init__(self, name: str, title: str, cols: int, rows: int, theme: str, seconds: int, music: str) -> None:
        self.name, self.title, self.cols, self.rows = name, title, cols, rows
        self.seconds, self.music = seconds, music  # the time to beat
        self.cells = [[SOLID] * cols for _ in range(rows)]
        self.themes: list[list[str | None]] = [[theme] * cols for _ in range(rows)]  # None: open to the sky
        self.torches: list[tuple[int, int]] = []
        self.blocks: list[tuple] = []  # furniture: col, row, name, columns, rows, painter
        self.objects: list[tuple[str, float, float, float, float, dict]] = []

    # --- ground ---

    def fill(self, symbol: str, left: int, top: int, right: int, bottom: int) -> None:
        for row, col in itertools.product(range(top, bottom), range(left, right)):
            self.cells[row][col] = symbol

    def carve(self, left: int, top: int, right: int, bottom: int, theme: str | None = "") -> None:
        """Carves a room; `theme` is its back wall, None for the sky."""
        self.fill(OPEN, left, top, right, bottom)
        if theme != "":
            for row, col in itertools.product(range(top, bottom), range(left, right)):
                self.themes[row][col] = theme

    def rock(self, left: int, top: int, right: int, bottom: int) -> None:
        self.fill(SOLID, left, top, right, bottom)

    def ledge(self, left: int, row: int, width: int) -> None:
        self.fill(LEDGE, left, row, left + width, row + 1)

    def pit(self, left: int, floor: int, width: int, symbol: str = SPIKES) -> None:
        """A pit in the floor, two cells deep, with a hazard at its bottom."""
        self.fill(OPEN, left, floor, left + width, floor + 2)
        self.fill(symbol, left, floor + 1, left + width, floor + 2)

    # --- furniture ---

    def torch(self, *places: tuple[int, int]) -> None:
        """Places torches near these cells, aligned to the repetition of the stonework."""
        for col, row in places:
            self.torches.append((col // 4 * 4 + TORCH_AT[0], row // 4 * 4 + TORCH_AT[1]))

    def put(self, name: str, *places: tuple[int, int]) -> None:
        """Places furniture by its top-left cells."""
        self.blocks += [(col, row, name) for col, row in places]

    # --- actors: `col` and `row`, in cells, are the middle of the feet and the floor ---

    def actor(self, kind: str, col: float, row: float, **properties: object) -> None:
        self.objects.append((kind, col * TILE, row * TILE, 0, 0, properties))

    def zone(self, kind: str, left: int, top: int, width: int, height: int, **properties: object) -> None:
        self.objects.append((kind, left * TILE, top * TILE, width * TILE, height * TILE, properties))

    def embers(self, row: float, *cols: float) -> None:
        for col in cols:
            self.actor("ember", col, row)

    def arc(self, left: float, right: float, row: float, count: int = 5, rise: float = 2.0) -> None:
        """Embers along a jump."""
        for n in range(count):
            t = n / (count - 1)
            self.actor("ember", left + (right - left) * t, row - rise * 4 * t * (1 - t))


FURNITURE = {  # columns, rows, painter
    "window": (3, 6, lambda to: _window(to, 3, 6, "stars")),
    "slit": (2, 4, lambda to: _window(to, 2, 4, "stars")),
    "banner": (1, 4, lambda to: props.banner(to, 0, 2, 58)),
    "shelf": (2, 4, lambda to: props.shelf(to, 0, 0, 32, 64, 101)),
    "books": (2, 4, lambda to: props.shelf(to, 0, 0, 32, 64, 103)),
    "arch": (3, 5, lambda to: props.arch(to, 0, 0, 48, 80)),
    "gate": (3, 5, lambda to: props.gate(to, 0, 0, 48, 80)),
    "niche": (2, 2, lambda to: props.niche(to, 0, 4, 32, 18, 1)),
    "tomb": (2, 2, lambda to: props.niche(to, 0, 4, 32, 18, 2)),
    "crate": (1, 1, lambda to: props.stamp(to, props.CRATE, 0, 0)),
    "barrel": (1, 1, lambda to: props.stamp(to, props.BARREL, 0, 0)),
    "skull": (1, 1, lambda to: props.stamp(to, props.SKULL, 0, 0)),
    "chain": (1, 1, lambda to: props.stamp(to, props.CHAIN, 0, 0)),
    "table": (2, 1, lambda to: props.table(to, 0, 16, 32)),
    "moss": (2, 1, lambda to: props.moss(to, 0, 0, 32, 4)),
    "web": (1, 1, lambda to: props.cobweb(to, 0, 0, False)),
    "rubble": (2, 1, lambda to: props.rubble(to, 0, 16, 32, 5)),
    "throne": (3, 3, lambda to: props.stamp(to, props.THRONE, 3, 13)),
    "pillar": (1, 8, lambda to: props.pillar(to, 0, 0, 128)),
    "column": (1, 6, lambda to: props.pillar(to, 0, 0, 96)),
}


def _window(to: np.ndarray, cols: int, rows: int, view: str) -> None:
    """The castle's window with transparent panes, through which the map's sky is visible; the lead bars are opaque."""
    from castle_walls import index

    outside = props.window(to, 0, 0, cols * TILE, rows * TILE, view)
    to[outside & (to != index("night.0"))] = HOLE


HOLE = 254  # transparent, also in the wall behind it


def cold_halls() -> Level:
    """Level 1: to the right through the cellars, up, back to the left through a locked door, and up to the gate."""
    level = Level("level-1", "The Cold Halls", 112, 46, "hall", 150, "halls")
    # battlements, then the lower hall
    level.carve(2, 30, 18, 42, None)
    level.carve(18, 36, 22, 42, "hall")
    level.carve(22, 32, 97, 42, "hall")
    level.carve(97, 16, 110, 42, "crypt")
    level.rock(26, 41, 30, 42), level.rock(30, 39, 34, 42), level.rock(34, 41, 36, 42)
    level.pit(40, 42, 4)
    level.ledge(50, 38, 5), level.ledge(56, 35, 4)
    level.rock(61, 39, 64, 42)
    level.pit(64, 42, 8)
    level.ledge(67, 38, 2)
    level.rock(72, 40, 75, 42)
    level.pit(90, 42, 5)
    # the shaft on the right
    level.ledge(107, 38, 3), level.ledge(103, 35, 3), level.ledge(107, 32, 3), level.ledge(103, 29, 2)
    # middle hall, walked to the left
    level.carve(16, 16, 97, 27, "crypt")
    level.rock(97, 27, 103, 30)
    level.rock(84, 24, 89, 27)
    level.fill(OPEN, 66, 27, 81, 30), level.fill(SPIKES, 66, 29, 81, 30)
    level.ledge(60, 24, 4), level.ledge(54, 21, 4)
    level.rock(46, 21, 52, 22)
    level.rock(41, 16, 44, 23)  # above the door
    level.pit(30, 27, 5)
    level.rock(22, 26, 26, 27)
    # left shaft
    level.carve(4, 6, 16, 27, "crypt")
    level.ledge(4, 24, 4), level.ledge(10, 21, 6), level.ledge(4, 18, 4)
    # upper hall and the walk on the wall
    level.carve(4, 3, 60, 12, "hall")
    level.carve(60, 2, 100, 12, None)
    level.carve(98, 4, 110, 12, "hall")
    level.fill(OPEN, 4, 12, 13, 16), level.ledge(10, 15, 3)
    level.rock(60, 2, 62, 7)
    level.rock(20, 11, 24, 12), level.rock(24, 9, 27, 12)
    level.pit(34, 12, 5), level.pit(42, 12, 6)
    level.fill(OPEN, 66, 12, 82, 14), level.fill(SPIKES, 66, 13, 82, 14)
    level.rock(89, 10, 93, 12)

    level.torch((24, 36), (44, 36), (56, 36), (76, 36), (88, 36), (102, 24), (106, 34), (92, 20), (76, 20), (60, 18),
                (50, 22), (36, 20), (24, 20), (8, 22), (12, 10), (20, 4), (40, 4), (52, 6), (104, 6))
    level.put("window", (33, 33), (48, 33), (80, 33), (28, 4), (46, 4))
    level.put("slit", (66, 34), (72, 34), (99, 20), (13, 6), (6, 12))
    level.put("banner", (20, 36), (38, 34), (60, 34), (86, 34), (25, 4), (36, 4), (56, 4), (101, 5))
    level.put("arch", (83, 22), (55, 22), (36, 22), (18, 22))
    level.put("pillar", (22, 34), (46, 34), (78, 34), (95, 34), (16, 4), (33, 4), (50, 4))
    level.put("tomb", (90, 24), (62, 22), (48, 18), (28, 22)), level.put("niche", (93, 24), (58, 18), (34, 18))
    level.put("shelf", (17, 8), (53, 8)), level.put("books", (30, 37), (99, 8))
    level.put("barrel", (23, 41), (37, 41), (84, 41), (94, 26), (57, 11), (108, 11)), level.put("crate", (36, 41), (85, 41), (56, 11))
    level.put("skull", (45, 41), (80, 26), (52, 26), (20, 26)), level.put("rubble", (87, 41), (62, 26), (38, 26), (100, 41))
    level.put("moss", (50, 32), (76, 32), (70, 16), (34, 16), (101, 17)), level.put("web", (22, 32), (97, 17), (4, 6))
    level.put("chain", (68, 16), (68, 17), (79, 16), (79, 17), (79, 18), (9, 6), (9, 7), (9, 8))

    level.actor("spawn", 5, 42)
    level.zone("sign", 3, 34, 10, 8, text="{left} and {right} run, {jump} jumps: hold it to jump higher")
    level.zone("sign", 36, 32, 9, 10, text="{attack} strikes")
    level.zone("sign", 57, 32, 7, 10, text="{roll} rolls: nothing hurts you meanwhile")
    level.zone("sign", 73, 32, 8, 10, text="{special} lets out the flame; each foe you fell feeds it")
    level.embers(40, 28, 29.5), level.embers(38, 31.5, 32.5), level.arc(39.5, 44.5, 40)
    level.embers(37, 51.5, 52.5, 53.5), level.embers(34, 57, 58, 59)
    level.actor("heart", 58, 34.5)
    level.arc(64, 68, 38), level.arc(68.5, 72, 37, 4, 1.0)
    level.actor("walker", 49, 42), level.actor("walker", 55, 42), level.actor("checkpoint", 77, 42)
    level.actor("hopper", 84, 42), level.arc(89.5, 95.5, 40), level.actor("walker", 101, 42)
    level.embers(37, 108, 109), level.embers(34, 103.5, 104.5), level.embers(31, 108, 109), level.embers(26, 99, 100)
    level.actor("checkpoint", 93, 27), level.actor("watcher", 85, 24, facing=1)
    level.embers(23, 87, 88), level.actor("platform", 79, 27, dx=-160, seconds=4.0)
    level.arc(68, 79, 25, 7, 1.0)
    level.actor("hopper", 57, 27), level.actor("hopper", 49, 27)
    level.zone("sign", 44, 22, 5, 5, text=LOCKED, until_key=True)
    level.actor("key", 48, 20.5), level.embers(23, 61, 62, 63), level.embers(20, 55, 56)
    level.actor("door", 42.5, 27), level.actor("walker", 38, 27), level.arc(29.5, 35.5, 25)
    level.actor("checkpoint", 20, 27), level.actor("watcher", 22.8, 26, facing=1), level.actor("walker", 9, 27)
    level.embers(23, 5, 6), level.embers(20, 12, 13, 14), level.embers(17, 5, 6), level.actor("heart", 14.5, 20.5)
    level.actor("checkpoint", 18, 12), level.actor("walker", 30, 12), level.arc(33.5, 39.5, 10), level.arc(41.5, 48.5, 10)
    level.actor("hopper", 57, 12), level.actor("watcher", 64.5, 12, facing=-1)
    level.actor("platform", 68, 12, dx=176, seconds=4.5), level.arc(67, 81, 10, 8, 1.0)
    level.actor("walker", 102, 12), level.actor("watcher", 92.2, 10, facing=-1), level.actor("hopper", 97, 12)
    level.embers(11, 94, 95, 103, 104), level.actor("exit", 106.5, 12)
    return level


def ember_spire() -> Level:
    """Level 2: up a tower, floor by floor in alternating directions, with a sea of fire at the bottom."""
    level = Level("level-2", "The Ember Spire", 60, 88, "tower", 180, "spire")
    level.carve(2, 76, 58, 84, "crypt")
    level.pit(14, 84, 6, LAVA), level.pit(28, 84, 12, LAVA)
    level.rock(8, 83, 10, 84)
    level.rock(44, 82, 48, 84)
    # floor 2, to the left
    level.carve(50, 64, 58, 84, "tower")
    level.ledge(54, 80, 4), level.ledge(50, 77, 3)
    level.carve(2, 62, 58, 72, "tower")
    level.ledge(54, 74, 3)
    level.pit(36, 72, 6, LAVA)
    level.rock(28, 70, 33, 72), level.rock(20, 71, 23, 72), level.rock(14, 69, 17, 72)
    # floor 3, to the right, through the door
    level.carve(2, 50, 58, 60, "hall")
    level.fill(OPEN, 2, 60, 9, 62)
    level.ledge(2, 68, 4), level.ledge(7, 65, 3), level.ledge(2, 62, 3)
    level.pit(14, 60, 5, LAVA), level.pit(22, 60, 5, LAVA)
    level.ledge(30, 56, 5), level.ledge(37, 53, 4)
    level.rock(44, 50, 47, 56)
    # the well: floor 4, to the left
    level.carve(50, 38, 58, 60, "tower")
    level.carve(2, 38, 58, 48, "tower")
    level.rock(50, 48, 52, 50)
    level.fill(OPEN, 10, 48, 46, 49), level.fill(LAVA, 10, 48, 46, 49)
    level.rock(38, 48, 40, 49), level.rock(24, 45, 27, 49)
    # floor 5: the gallery under the open sky
    level.carve(2, 24, 10, 48, "tower")
    level.ledge(2, 44, 4), level.ledge(6, 41, 4), level.ledge(2, 38, 3)
    level.carve(2, 22, 58, 34, None)
    level.carve(2, 24, 10, 38, "tower")
    level.ledge(7, 35, 3), level.ledge(2, 44, 4)
    level.rock(10, 34, 58, 38)
    level.pit(18, 34, 6), level.pit(32, 34, 10)
    level.rock(45, 32, 49, 34)
    # the top
    level.carve(50, 10, 58, 34, None)
    level.ledge(55, 31, 3), level.ledge(50, 28, 3)
    level.carve(2, 8, 58, 18, "hall")
    level.rock(2, 18, 50, 22)
    level.rock(36, 16, 39, 18), level.rock(26, 14, 31, 18)
    level.pit(18, 18, 6, LAVA)

    level.torch((4, 76), (20, 78), (40, 78), (48, 76), (44, 64), (28, 64), (16, 64), (4, 64), (8, 52), (20, 52), (36, 50),
                (50, 52), (52, 40), (36, 40), (20, 40), (4, 40), (4, 28), (44, 8), (32, 8), (12, 10))
    level.put("window", (22, 63), (35, 63), (28, 50), (12, 51), (42, 39), (28, 39), (13, 39), (22, 9), (38, 9))
    level.put("slit", (52, 66), (4, 54), (53, 44), (3, 32))
    level.put("banner", (27, 63), (40, 63), (25, 51), (34, 39), (19, 39), (26, 9), (36, 9), (8, 9), (4, 9))
    level.put("column", (12, 66), (33, 54), (46, 66), (16, 12), (42, 12)), level.put("pillar", (24, 76), (42, 76), (11, 76))
    level.put("arch", (6, 79), (46, 67)), level.put("shelf", (18, 68), (49, 44)), level.put("books", (25, 68), (40, 56))
    level.put("tomb", (20, 80), (34, 78)), level.put("niche", (28, 78), (38, 80))
    level.put("barrel", (12, 83), (48, 71), (12, 59), (47, 47)), level.put("crate", (11, 83), (28, 71), (42, 59), (57, 47))
    level.put("skull", (22, 83), (48, 59)), level.put("rubble", (40, 83), (34, 71), (28, 59))
    level.put("moss", (30, 76), (10, 62), (38, 38)), level.put("web", (2, 76), (2, 50), (2, 8))
    level.put("chain", (30, 38), (30, 39), (30, 40), (44, 38), (44, 39), (18, 38), (54, 64), (54, 65))
    level.put("throne", (4, 15))

    level.actor("spawn", 4, 84)
    level.zone("sign", 3, 78, 8, 6, text="Fire below, the hearth above: climb")
    level.arc(13.5, 20.5, 82), level.actor("walker", 12, 84), level.actor("platform", 30, 84, dx=128, seconds=3.5)
    level.arc(28, 39, 82, 6, 1.0), level.actor("hopper", 51, 84), level.actor("watcher", 56.8, 84, facing=-1)
    level.embers(79, 55, 56, 57), level.embers(76, 51, 52), level.embers(73, 55, 56)
    level.actor("checkpoint", 47.5, 72), level.arc(35.5, 42.5, 70)
    level.actor("watcher", 28.8, 70, facing=1), level.actor("hopper", 25, 72), level.actor("walker", 19, 72)
    level.embers(68, 15, 16), level.actor("heart", 15.5, 68.5)
    level.embers(67, 3, 4), level.embers(64, 8, 9), level.embers(61, 3, 4)
    level.actor("checkpoint", 11, 60), level.arc(13.5, 19.5, 58), level.arc(21.5, 27.5, 58)
    level.actor("hopper", 38, 60), level.embers(55, 31, 32, 33, 34), level.actor("key", 39, 52.5)
    level.actor("door", 45.5, 60), level.zone("sign", 40, 55, 4, 5, text=LOCKED, until_key=True)
    level.actor("walker", 49, 60)
    level.actor("platform", 54, 59.5, dy=-184, seconds=4.5), level.embers(57, 54), level.embers(54, 54), level.embers(51, 54)
    level.actor("checkpoint", 49, 48)
    level.actor("platform", 44, 48, dx=-48, seconds=2.5), level.actor("platform", 35, 48, dx=-96, seconds=3.5)
    level.actor("platform", 21, 47, dx=-144, seconds=4.0)
    level.arc(12, 22, 45, 6, 1.0), level.arc(29, 37, 46, 5, 1.0)
    level.actor("heart", 3, 48), level.embers(43, 3, 4), level.embers(40, 7, 8), level.embers(37, 3, 4)
    level.actor("checkpoint", 12, 34), level.arc(17.5, 24.5, 32), level.actor("walker", 15, 34)
    level.actor("platform", 34, 34, dx=96, seconds=3.0), level.arc(32, 41, 32, 6, 1.0)
    level.actor("watcher", 48.2, 32, facing=-1), level.actor("walker", 53, 34), level.actor("heart", 51.5, 27.5)
    level.embers(30, 56, 57), level.actor("platform", 55, 28, dy=-144, seconds=4.0)
    level.embers(25, 55), level.embers(22, 55)
    level.actor("checkpoint", 46, 18), level.actor("hopper", 42, 18), level.actor("watcher", 26.9, 14, facing=1)
    level.arc(17.5, 24.5, 16), level.actor("walker", 33, 18), level.actor("hopper", 11, 18), level.embers(17, 9, 10, 11)
    level.actor("exit", 5.5, 18)
    return level


def title_view() -> Level:
    """The title screen's map: the wall of the keep by night, under a slowly panning view."""
    level = Level("title", "", 72, 18, "hall", 0, "title")
    level.carve(0, 0, 72, 14, None)
    for left in range(0, 72, 4):
        level.rock(left, 13, left + 2, 14)
    level.carve(44, 0, 54, 14, "hall"), level.rock(42, 0, 44, 14), level.rock(54, 0, 56, 14)
    level.carve(42, 9, 44, 14, "hall"), level.carve(30, 13, 44, 14, None)
    level.torch((44, 4), (48, 4))
    level.put("banner", (46, 4)), level.put("barrel", (52, 13)), level.put("crate", (51, 13))
    return level


LEVELS = (title_view, cold_halls, ember_spire)


# --- writing the maps ---

def around(level: Level, row: int, col: int, solid: bool) -> int:
    """Bits of the 3 × 3 cells around a cell, set where solid (or open); cells outside the map are rock."""
    bits = 0
    for n, (dy, dx) in enumerate(itertools.product((-1, 0, 1), repeat=2)):
        r, c = row + dy, col + dx
        rock = not (0 <= r < level.rows and 0 <= c < level.cols) or level.cells[r][c] == SOLID
        bits |= (rock == solid) << n
    return bits


def halos(level: Level) -> dict[tuple[int, int], tuple[int, int]]:
    """For each lit cell, its position in the light of the nearest torch."""
    lit: dict[tuple[int, int], tuple[int, int]] = {}
    for col, row in level.torches:
        for dy, dx in itertools.product(range(HALO_TILES), repeat=2):
            at = row - TORCH_AT[1] + dy, col - TORCH_AT[0] + dx
            old = lit.get(at)
            near = np.hypot(dx - 3, dy - 3)
            if old is None or near < np.hypot(old[0] - 3, old[1] - 3):
                lit[at] = dx, dy
    return lit


def draw(level: Level, tiles: Tileset) -> dict[str, list[list[int]]]:
    """The tile layers, as tile numbers; -1 is empty."""
    layers = {name: [[-1] * level.cols for _ in range(level.rows)] for name in ("castle", "decor", "hazards")}
    lit, holes = halos(level), set()
    for col, row in level.torches:
        assert level.cells[row][col] == OPEN and level.cells[row + 1][col] == OPEN, f"{level.name}: torch at {col}, {row}"
        layers["decor"][row][col], layers["decor"][row + 1][col] = tiles.torch()
    for col, row, name in level.blocks:
        width, height, paint = FURNITURE[name]
        numbers = tiles.block(name, width, height, paint, name)
        for dy, dx in itertools.product(range(height), range(width)):
            at = row + dy, col + dx
            if at[0] >= level.rows or numbers[dy][dx] < 0 or level.cells[at[0]][at[1]] == SOLID or level.themes[at[0]][at[1]] is None:
                continue
            if layers["decor"][at[0]][at[1]] < 0:
                layers["decor"][at[0]][at[1]] = numbers[dy][dx]
                if name in ("window", "slit"):
                    holes.add(at)
    for row, col in itertools.product(range(level.rows), range(level.cols)):
        cell, theme = level.cells[row][col], level.themes[row][col]
        if cell == SOLID:
            layers["castle"][row][col] = tiles.ground(row, col, around(level, row, col, False))
            continue
        if theme and (row, col) not in holes:
            layers["castle"][row][col] = tiles.wall(theme, row, col, lit.get((row, col)), around(level, row, col, True))
        elif theme:
            layers["castle"][row][col] = _behind_window(tiles, theme, row, col, layers["decor"][row][col], around(level, row, col, True))
        if cell == LEDGE:
            ends = [level.cells[row][col + side] == OPEN for side in (-1, 1)]
            layers["castle"][row][col] = tiles.ledge_before(layers["castle"][row][col], *ends)
        elif cell == SPIKES:
            layers["hazards"][row][col] = tiles.spikes()
        elif cell == LAVA:
            layers["hazards"][row][col] = tiles.lava(level.cells[row - 1][col] != LAVA)
    return layers


def _behind_window(tiles: Tileset, theme: str, row: int, col: int, window: int, solid: int) -> int:
    """The wall around a window, with a hole for its panes."""
    key = ("behind", theme, row % 4, col % 4, window, solid)
    if key not in tiles.known:
        pixels = tiles.tiles[tiles.wall(theme, row, col, None, solid)].pixels.copy()
        pixels[tiles.tiles[window].pixels == HOLE] = NOTHING
        tiles.add(key, keep_tiles.Tile(pixels, "wall"))
    return tiles.known[key]


def properties(values: dict[str, object]) -> str:
    if not values:
        return ""
    lines = []
    for name, value in values.items():
        kind = {bool: ' type="bool"', int: ' type="int"', float: ' type="float"'}.get(type(value), "")
        text = str(value).lower() if isinstance(value, bool) else value
        lines.append(f'<property name="{name}"{kind} value="{text}"/>')
    return f"<properties>{''.join(lines)}</properties>"


def project(level: Level, layers: dict[str, list[list[int]]]) -> str:
    """The map in the editor's XML format."""
    size = f'width="{level.cols}" height="{level.rows}"'
    ids = itertools.count(1)
    lines = [
        '<?xml version="1.0" encoding="UTF-8"?>',
        f'<map version="1.10" orientation="orthogonal" renderorder="right-down" {size} tilewidth="{TILE}" '
        f'tileheight="{TILE}" infinite="0" nextlayerid="20" nextobjectid="{len(level.objects) + 1}">',
        " " + properties({"title": level.title, "seconds": level.seconds, "music": level.music}),
        ' <tileset firstgid="1" source="keep.tsx"/>',
        f' <imagelayer id="{next(ids)}" name="sky" parallaxx="0" parallaxy="0" offsetx="{-SKY_W // 2}" offsety="{-SKY_H // 2}">'
        f'<image source="sky.png" width="{SKY_W}" height="{SKY_H}"/></imagelayer>',
        f' <imagelayer id="{next(ids)}" name="town" parallaxx="0.25" parallaxy="0" offsetx="-300" offsety="-22">'
        f'<image source="town.png" width="{TOWN_W}" height="{TOWN_H}"/></imagelayer>',
    ]
    for name, rows in layers.items():
        data = ",\n".join(",".join(str(n + 1) for n in row) for row in rows)
        lines += [f' <layer id="{next(ids)}" name="{name}" {size}>', '  <data encoding="csv">', data, "</data>", " </layer>"]
    lines.append(f' <objectgroup id="{next(ids)}" name="objects">')
    for n, (kind, x, y, w, h, values) in enumerate(level.objects, 1):
        box = f' width="{w}" height="{h}"' if w else ""
        inner = properties(values) + ("" if w else "<point/>")
        lines.append(f'  <object id="{n}" type="{kind}" x="{x:g}" y="{y:g}"{box}>{inner}</object>')
    return "\n".join([*lines, " </objectgroup>", "</map>"]) + "\n"


def check(level: Level) -> None:
    """Fails if an actor is inside rock or in mid-air."""
    for kind, x, y, w, _, _ in level.objects:
        row, col = int(y // TILE), int(x // TILE)
        if w == 0 and kind in ("spawn", "exit", "walker", "hopper", "watcher", "checkpoint", "door"):
            assert level.cells[row][col] in (SOLID, LEDGE), f"{level.name}: nothing under the {kind} at {col}, {row}"
        if kind != "platform" and w == 0:
            above = int((y - 1) // TILE)
            assert level.cells[above][col] != SOLID, f"{level.name}: the {kind} at {col}, {row} is inside rock"


def make(out_dir: Path) -> None:
    """Writes maps, tileset and backgrounds below out_dir."""
    folder = out_dir / FOLDER
    folder.mkdir(parents=True, exist_ok=True)
    tiles = Tileset()
    for build in LEVELS:
        level = build()
        check(level)
        (folder / f"{level.name}.tmx").write_text(project(level, draw(level, tiles)), encoding="utf-8", newline="\n")
    for tile in tiles.tiles:
        tile.pixels[tile.pixels == HOLE] = NOTHING
    tiles.image().save(folder / "keep.png", format="PNG", compress_level=9)
    (folder / "keep.tsx").write_text(tiles.project("keep.png"), encoding="utf-8", newline="\n")
    for name, picture in (("sky", keep_tiles.sky(SKY_W, SKY_H)), ("town", keep_tiles.town(TOWN_W, TOWN_H))):
        keep_tiles.with_alpha(picture).save(folder / f"{name}.png", format="PNG", compress_level=9)
