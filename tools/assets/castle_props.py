"""The castle's furniture: windows, pillars, torches and the rest, painted on the back wall."""

from __future__ import annotations

import random

import numpy as np

from castle_walls import Picture, index

TILE = 16

# Character -> colour; a dot leaves the wall as it is.
LEGEND = {
    "k": "night.0", "n": "night.1", "b": "night.2", "B": "night.3", "v": "shade.1",
    "s": "stone.0", "S": "stone.1", "g": "stone.2", "t": "torchlit.0", "T": "torchlit.1", "d": "wood.1", "m": "wood.2", "M": "wood.3",
    "x": "cloth.0", "q": "cloth.1", "r": "cloth.2", "R": "cloth.3", "o": "flame.1", "y": "flame.2", "w": "flame.3",
    "G": "gold.2", "i": "iron.2", "I": "iron.3", "1": "moss.1", "2": "moss.2",
}

TORCH = """
.......R........
.......o........
......ror.......
......oo........
.....royo.......
.....oyyor......
....royyo.......
....oyywyo......
....oywwyo......
....roywyr......
.....royo.......
....kSiigSk.....
....kkSSkkk.....
.....kSsSk......
......ksk.......
......ksk.......
......kmk.......
......kmk.......
......kdk.......
....kSSiSSk.....
....kkkmkkk.....
......kdk.......
......kdk.......
.......k........
"""

CHAIN = """
......kSk.......
.....kS.Sk......
.....kS.Sk......
......kSk.......
......kSk.......
......kSk.......
.....kS.Sk......
.....kS.Sk......
......kSk.......
......kSk.......
......kSk.......
.....kS.Sk......
.....kS.Sk......
......kSk.......
......kSk.......
......kSk.......
"""

SKULL = """
................
................
................
................
................
................
................
................
.....ksSSk......
....ksSSSSk.....
....kSkSkSk.....
....kSSkSSk..kk.
.....kSSSk..kSSk
...kkkkkkkkkkssk
..ksSkSSksSSkkk.
..kkkkkkkkkkkk..
"""

BARREL = """
....kkkkkkkk....
...ktddttdttk...
..kvSvvvnvvnnk..
..ktddkttdkntk..
.ktddtkttdknttk.
.ktddtkttdknttk.
.kvSvvkvvnnknnk.
.ktddtkttdknttk.
.ktddtkttdknttk.
.ktddtkttdknttk.
.kvSvvkvvnnknnk.
..ktddkttdkntk..
..ktddkttdkntk..
..kvSvvvnvvnnk..
...ktddttdttk...
....kkkkkkkk....
"""

CRATE = """
................
................
.kkkkkkkkkkkkkk.
.kttttttttttttk.
.ktkkkkkkkkkktk.
.ktkdttttttkktk.
.ktktdttttknktk.
.ktkttdttkntktk.
.ktkkttdknttktk.
.ktknttkdtttktk.
.ktknnkttdttktk.
.ktknkttttdtktk.
.ktkkkkkkkkkktk.
.kttntttttntttk.
.knnnnnnnnnnnnk.
.kkkkkkkkkkkkkk.
"""

THRONE = """
.....kk............................kk...........
....kGGk..........kkkkkk..........kGGk..........
....kGMk........kkGGMMGGkk........kGMk..........
....kkkk......kkGMqqqqqqMGkk......kkkk..........
....kmdk....kkMMqqrrrrrrqqMMkk....kmdk..........
....kmdkkkkkMmqqrrrrrrrrrrqqmMkkkkkmdk..........
....kmdkMMMmdqqrrrrrGGrrrrrqqdmMMMkmdk..........
....kmdkmmdddqrrrrrGGGGrrrrrqdddmmkmdk..........
....kmdkdddxqqrrrrrrGGrrrrrrqqxdddkmdk..........
....kmdktdxxqrrrrrGrGGrGrrrrrqxxdtkmdk..........
....kmdktdxqqrrrrrGGGGGGrrrrrqqxdtkmdk..........
....kmdktdxqrrrrrrrGGGGrrrrrrrqxdtkmdk..........
....kmdktdxqrrrrrrrrGGrrrrrrrrqxdtkmdk..........
....kmdktdxqrrrrrrrrrrrrrrrrrrqxdtkmdk..........
....kmdktdxqqrrrrrrrrrrrrrrrrqqxdtkmdk..........
....kmdktdxxqrrrrrrrrrrrrrrrrqxxdtkmdk..........
....kmdktdxxqqrrrrrrrrrrrrrrqqxxdtkmdk..........
....kmdktdxxxqrrrrrrrrrrrrrrqxxxdtkmdk..........
....kmdktdxxxqqrrrrrrrrrrrrqqxxxdtkmdk..........
....kmdktdxxxxqqrrrrrrrrrrqqxxxxdtkmdk..........
....kmdktdxxxxxqqqrrrrrrqqqxxxxxdtkmdk..........
.kkkkmdkkkkkxxxxxqqqqqqqqxxxxxkkkkkmdkkkk.......
kGMMMmdMMMmkxxxxxxxxxxxxxxxxxxkMMMMmdMMmGk......
kMmmmddmmmdkxxxxxxxxxxxxxxxxxxkmmmmddmmmdk......
kkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkk......
.kdmdtdmdtkqqrrrrrrrrrrrrrrrrrrqqkdmdtmdtk......
.kdmdtdmdtkxqqqqqqqqqqqqqqqqqqqqxkdmdtmdtk......
.kdmdtdmdtkxxxxxxxxxxxxxxxxxxxxxxkdmdtmdtk......
.kdmdtdmdtkkkkkkkkkkkkkkkkkkkkkkkkdmdtmdtk......
.kdmdtdmdtkdddmddddddmdddddddmdddkdmdtmdtk......
.kdmdtdmdtkddddGdddddGdddddddGdddkdmdtmdtk......
.kdmdtdmdtkdtttttttttttttttttttttkdmdtmdtk......
.kdmdtdmdtkttttttttttttttttttttttkdmdtmdtk......
.kGMdtGMMtkkkkkkkkkkkkkkkkkkkkkkkkGMdtGMtk......
kkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkk......
"""


def stamp(to: Picture, grid: str, x: int, y: int, mirror: bool = False) -> None:
    """Paints a character grid with its top-left corner at (x, y)."""
    for dy, row in enumerate(grid.split()):
        for dx, mark in enumerate(reversed(row) if mirror else row):
            if mark != "." and 0 <= y + dy < to.shape[0] and 0 <= x + dx < to.shape[1]:
                to[y + dy, x + dx] = index(LEGEND[mark])


def fill(to: Picture, x0: int, y0: int, x1: int, y1: int, name: str) -> None:
    """Fills a rectangle, ends excluded."""
    to[y0:y1, x0:x1] = index(name)


def arch_half(y: int, half: float, radius: float) -> float:
    """Half the width of a pointed arch y px below its tip; `half` is that of its straight sides."""
    if y >= radius:
        return half
    reach = 2 * half
    rise = radius - y
    return max(0.0, np.sqrt(max(reach * reach - rise * rise * (3 * half * half / (radius * radius)), 0.0)) - half)


SKY = [index(f"night.{n}") for n in (1, 2, 3)]


CRATERS = ((-3, 2, 2.4), (3, -4, 1.8), (4, 4, 1.3))  # of the moon: offset from its centre, radius


def window(to: Picture, x: int, y: int, width: int, height: int, view: str) -> np.ndarray:
    """An arched window of whole tiles: dressed stone frame, lead, and a night sky with the motif `view`.

    Returns the mask of the panes' pixels.
    """
    outside = np.zeros(to.shape, bool)
    rng = random.Random(width * 100 + height * 10 + x)
    centre = x + width / 2
    for dy in range(height):
        for dx in range(width):
            off = abs(x + dx + 0.5 - centre)
            outer = arch_half(dy, width / 2, width * 0.72)
            inner = arch_half(dy - 5, width / 2 - 5, width * 0.6) if dy >= 5 else 0.0
            if dy >= height - 4:
                sill = "stone.1" if dy == height - 4 else "stone.0" if dy < height - 1 else "night.0"
                to[y + dy, x + dx] = index(sill)
            elif off < inner:
                depth = dy / height
                step = 1 if depth < 0.3 else 2 if depth < 0.78 else 3
                blend = (depth - (0.3 if step == 1 else 0.78)) * height
                if -4 < blend < 0 and (dx + dy) % 2 == 0:
                    step += 1
                to[y + dy, x + dx] = index(f"night.{min(step, 3)}")
                outside[y + dy, x + dx] = True
                if off > inner - 1.2:
                    to[y + dy, x + dx] = index("night.0")
            elif off < outer:
                joint = (dy + (3 if dx < width / 2 else 7)) % 9 == 0
                rim = off > outer - 1.3
                name = "night.0" if rim or joint else "shade.1" if off < inner + 1.5 else "stone.0"
                to[y + dy, x + dx] = index(name)

    def put(px: int, py: int, name: str) -> None:
        """Sets a pixel of the view outside."""
        if x <= px < x + width and y <= py < y + height and to[py, px] in SKY:
            to[py, px] = index(name)

    for _ in range(width * height // (60 if view == "stars" else 110)):
        at = x + rng.randrange(6, width - 6), y + rng.randrange(8, height - 10)
        put(*at, rng.choice(["stone.2", "iron.2", "stone.3"]))
    if view == "clouds":
        for n in range(2 + height // 60):
            cx, cy = x + rng.randrange(4, width - 4), y + int(height * (0.34 + 0.22 * n)) + rng.randrange(4)
            puffs = [(rng.randint(-13, 13), rng.randint(3, 6)) for _ in range(5)]
            for dx in range(-20, 21):
                top = max(max(np.sqrt(max(r * r - (dx - at) ** 2, 0)) for at, r in puffs), 0)
                for dy in range(-int(top), 1 if top > 1 else 0):
                    put(cx + dx, cy + dy, "stone.1" if dy < 1.6 - top else "shade.1" if dy < -1 else "stone.0")
    if view == "moon":
        mx, my, radius = centre + 11, y + height * 0.34, 9.6
        for dy in range(-14, 15):
            for dx in range(-14, 15):
                px, py, far = int(mx + dx), int(my + dy), np.hypot(dx, dy)
                if far < radius:
                    crater = any(np.hypot(dx - at, dy - down) < size for at, down, size in CRATERS)
                    put(px, py, "stone.3" if crater or far > radius - 1.3 else "stone.4")
                elif far < radius + 3 and (px + py) % 2:
                    put(px, py, "night.3")
    # hills on the horizon, or a town with towers
    for dx in range(5, width - 5):
        tall = int(5 + 3 * np.sin((dx + x) * 0.33) + 2 * np.sin(dx * 0.9))
        for dy in range(height - 4 - tall, height - 4):
            put(x + dx, y + dy, "night.1")
    if view == "towers":
        for tower, (left, wide, tall) in enumerate(((9, 7, 44), (24, 9, 58), (38, 6, 36), (47, 5, 50))):
            left, base = x + left * width // 64, y + height - 4
            for dx in range(wide):
                roof = tall + 7 - 3 * abs(dx - wide // 2) if tower % 2 else tall + 2 * (dx % 2)
                for dy in range(roof):
                    put(left + dx, base - dy, "shade.0" if dx < wide - 2 else "night.1")
            for n in range(2 + tower % 2):
                at = base - tall + 6 + 9 * n
                if to[at, left + wide // 2] == index("shade.0"):
                    to[at : at + 2, left + wide // 2] = index("gold.1")
    # lead: one post and bars
    for dy in range(6, height - 4):
        for dx in range(4, width - 4):
            off = abs(x + dx + 0.5 - centre)
            post, bar = off < 1 and width > 20, dy % 16 == 13
            if (post or bar) and off < arch_half(dy - 5, width / 2 - 5, width * 0.6):
                to[y + dy, x + dx] = index("night.0")
    return outside


def pillar(to: Picture, x: int, top: int, bottom: int) -> None:
    """A half column on the wall, one tile wide with base and capital, lit from the left."""
    def course(y0: int, y1: int, names: str) -> None:
        """Rows of one profile, given as a character for each pixel."""
        for dx, mark in enumerate(names):
            to[y0:y1, x + dx] = index(LEGEND[mark])

    shaft = "kknsSsSssssnsnkk"
    course(top, bottom, shaft)
    for y in range(top + TILE, bottom, 2 * TILE):
        course(y, y + 1, "kkkkkkkkkkkkkkkk")
    for y0, y1, names in (
        (top, top + 4, "kSSSSSsssssssnnk"), (top + 4, top + 5, "kkkkkkkkkkkkkkkk"),
        (top + 5, top + 8, "kksSSSsssssnnnkk"),
        (top + 8, top + 9, "kkkkkkkkkkkkkkkk"), (bottom - 9, bottom - 8, "kkkkkkkkkkkkkkkk"),
        (bottom - 8, bottom - 5, "kksSSSsssssnnnkk"), (bottom - 5, bottom - 4, "kkkkkkkkkkkkkkkk"),
        (bottom - 4, bottom, "kSSSSSsssssssnnk"),
    ):
        course(y0, y1, names)


def arch(to: Picture, x: int, y: int, width: int, height: int, walled: bool = True) -> None:
    """A blind arch in the wall: a ring of wedge stones around a niche, which is walled up, so that it does not look
    like an exit, or left open to be filled with bars."""
    centre = x + width / 2
    for dy in range(height):
        for dx in range(width):
            off = abs(x + dx + 0.5 - centre)
            outer = arch_half(dy, width / 2, width * 0.5)
            inner = arch_half(dy - 6, width / 2 - 6, width * 0.42) if dy >= 6 else 0.0
            if off < inner:
                deep = off > inner - 2 or dy < 9
                course, shift = dy // 5, 3 * (dy // 5 % 2)
                joint = dy % 5 == 0 or (dx + shift) % 9 == 0
                tones = ("night.1", "shade.0", "stone.0", "night.1", "shade.1")
                stone = tones[(course * 7 + (dx + shift) // 9 * 3) % 5] if walled else "shade.0"
                to[y + dy, x + dx] = index("night.0" if deep or (joint and walled) else stone)
            elif off < outer:
                rise = max(0.0, width * 0.5 - dy)
                wedge = int(np.degrees(np.arctan2(rise, off)) // 14) if rise else dy // 10
                lit, light_stone = x + dx < centre, wedge % 2 == 0
                name = "stone.1" if lit and light_stone else "shade.1" if lit or light_stone else "stone.0"
                edge = off > outer - 1.2 or off < inner + 1.2
                to[y + dy, x + dx] = index("night.0" if edge else name)


def niche(to: Picture, x: int, y: int, width: int, height: int, seed: int) -> None:
    """A burial niche in a crypt's wall: sill, dark interior, and bones."""
    fill(to, x, y, x + width, y + height, "night.0")
    fill(to, x, y, x + width, y + 1, "shade.1")
    fill(to, x, y + height, x + width, y + height + 2, "stone.1")
    fill(to, x, y + height + 2, x + width, y + height + 3, "night.0")
    fill(to, x + 2, y + 3, x + width - 2, y + height, "shade.0")
    fill(to, x + 2, y + 3, x + width - 2, y + 5, "night.0")
    floor = y + height
    if seed % 4 == 3:  # empty except for a web
        cobweb(to, x + 2, y + 3, False)
        return
    fill(to, x + 12, floor - 3, x + width - 5, floor - 2, "stone.1")
    fill(to, x + 9, floor - 1, x + width - 4, floor, "shade.1")
    for rib in range(x + 12, x + width - 10, 3):
        fill(to, rib, floor - 5, rib + 1, floor - 2, "stone.1")
    skull = x + 5
    fill(to, skull, floor - 6, skull + 5, floor - 2, "stone.1")
    fill(to, skull + 1, floor - 7, skull + 4, floor - 6, "stone.2")
    fill(to, skull + 1, floor - 2, skull + 4, floor, "stone.1")
    for eye in (skull + 1, skull + 3):
        fill(to, eye, floor - 5, eye + 1, floor - 3, "night.0")


def bars(to: Picture, x0: int, y0: int, x1: int, y1: int) -> None:
    """An iron grating in front of a cell."""
    for bar in range(x0 + 6, x1 - 2, 9):
        fill(to, bar, y0, bar + 1, y1, "stone.1")
        fill(to, bar + 1, y0, bar + 2, y1, "shade.0")
    for rail in (y0 + 6, y1 - 8):
        fill(to, x0, rail, x1, rail + 1, "stone.2")
        fill(to, x0, rail + 1, x1, rail + 2, "stone.0")
        fill(to, x0, rail + 2, x1, rail + 3, "night.0")


def roots_and_bones(
    to: Picture, roots: list[tuple[int, int, int, int]], bones: list[tuple[int, int]], where: np.ndarray
) -> None:
    """Roots along the joints of thick walls, and bones between the stones, within the mask `where`."""
    def dot(x: int, y: int, name: str) -> None:
        if 0 <= y < to.shape[0] and 0 <= x < to.shape[1] and where[y, x]:
            to[y, x] = index(name)

    for col, row, length, way in roots:
        rng = random.Random(col * 40 + row)
        ends = [(col * TILE + 8.0, row * TILE + 4.0, way * rng.uniform(0.5, 0.9), length)]
        while ends:
            x, y, lean, left = ends.pop()
            for n in range(left):
                lean = min(max(lean + rng.uniform(-0.35, 0.35), -1.1), 1.1)
                x, y = x + lean, y + rng.uniform(0.25, 0.75)
                thick = 2 if left - n > 34 else 1
                for k in range(thick):
                    dot(int(x), int(y) + k, "wood.1" if k == 0 else "torchlit.0")
                dot(int(x), int(y) + thick, "night.0")
                if n % 17 == 13 and left > 20:
                    ends.append((x, y, -lean + rng.uniform(-0.4, 0.4), (left - n) // 2))
    for col, row in bones:
        rng = random.Random(col * 50 + row)
        x, y = col * TILE + rng.randrange(6), row * TILE + rng.randrange(5)
        long = rng.randint(9, 13)
        for n in range(long):
            dot(x + n, y + n // 4, "stone.2" if n % 5 else "stone.1")
            dot(x + n, y + n // 4 + 1, "night.0")
        for ex, ey in ((x - 1, y), (x + long, y + (long - 1) // 4)):
            dot(ex, ey - 1, "stone.2")
            dot(ex, ey + 1, "stone.2")


def jambs(to: Picture, x0: int, y0: int, x1: int, y1: int) -> None:
    """The two dressed edges of a passage through a wall."""
    for x, step in ((x0, 1), (x1 - 1, -1)):
        for y in range(y0, y1):
            long = y // 9 % 2
            to[y, x] = index("night.0")
            for n in range(1, 8 if long else 5):
                joint = y % 9 == 0 or n == (7 if long else 4)
                lit = n == 1 if step > 0 else n == (6 if long else 3)
                to[y, x + n * step] = index("night.0" if joint else "stone.1" if lit else "stone.0")


def banner(to: Picture, x: int, y: int, height: int) -> None:
    """A hanging banner with a golden flame and a swallow tail, 16 px wide."""
    for dy in range(height):
        for dx in range(16):
            tail = height - dy <= 7 and abs(dx - 7.5) < (8 - (height - dy)) * 0.95
            if tail:
                continue
            fold = (dx + (dy // 9) % 2) % 7
            name = "cloth.0" if dx in (0, 15) or fold == 6 else "cloth.1" if fold in (0, 1, 4, 5) else "cloth.2"
            if dx > 10 and name == "cloth.2":
                name = "cloth.1"
            if dx in (1, 14):
                name = "gold.1" if dy < height - 4 else "cloth.0"
            to[y + dy, x + dx] = index(name)
    fill(to, x, y - 2, x + 16, y, "night.0")
    fill(to, x, y - 2, x + 16, y - 1, "wood.1")
    flame = ["...G....", "...GG...", "..GGG.G.", ".GGMGGG.", ".GMMMGG.", ".GMrMMG.", "..GrrG..", "...GG..."]
    for dy, row in enumerate(flame):
        for dx, mark in enumerate(row):
            if mark != ".":
                to[y + 8 + dy, x + 4 + dx] = index({"G": "gold.1", "M": "gold.1", "r": "cloth.3"}[mark])


def gate(to: Picture, x: int, y: int, width: int, height: int) -> None:
    """An arched doorway closed by bars, dark behind them."""
    arch(to, x, y, width, height, walled=False)
    centre = x + width / 2
    for dy in range(6, height):
        inner = arch_half(dy - 6, width / 2 - 6, width * 0.42)
        for dx in range(width):
            if abs(x + dx + 0.5 - centre) < inner - 1:
                bar, cross = dx % 6, (dy - 6) % 14
                if bar in (2, 3) or cross in (5, 6):
                    to[y + dy, x + dx] = index("stone.1" if bar == 2 or cross == 5 else "shade.1")
                    if bar in (2, 3) and cross in (5, 6):
                        to[y + dy, x + dx] = index("iron.1" if bar == 2 else "night.1")


# Books: colours of the spine and of its shaded side.
BOOKS = [
    ("cloth.0", "night.1"), ("cloth.1", "cloth.0"), ("wood.1", "wood.0"), ("wood.2", "wood.1"), ("moss.1", "stone.0"),
    ("night.2", "night.1"), ("torchlit.1", "torchlit.0"), ("torchlit.0", "night.1"),
]


def shelf(to: Picture, x: int, y: int, width: int, height: int, seed: int) -> None:
    """A bookcase: boards of dark wood, books in dim colours."""
    rng = random.Random(seed)
    fill(to, x, y, x + width, y + height, "night.0")
    fill(to, x, y, x + width, y + 2, "wood.1")
    for side in (x, x + width - 2):
        fill(to, side, y, side + 2, y + height, "wood.0" if side > x else "wood.1")
    level = y + 2
    while level + 14 <= y + height + 2:
        floor = min(level + 13, y + height - 2)
        bx = x + 3
        while bx < x + width - 4:
            if rng.random() < 0.14:
                bx += rng.randint(2, 5)
                continue
            wide, tall = rng.randint(2, 4), rng.randint(6, 10)
            name, dark = rng.choice(BOOKS)
            wide = min(wide, x + width - 3 - bx)
            fill(to, bx, floor - tall, bx + wide, floor, name)
            fill(to, bx + wide - 1, floor - tall, bx + wide, floor, dark)
            if tall > 7 and rng.random() < 0.6:
                fill(to, bx, floor - tall + 2, bx + wide - 1, floor - tall + 3, "torchlit.1")
            bx += wide
        fill(to, x + 2, floor, x + width - 2, floor + 1, "wood.1")
        fill(to, x + 2, floor + 1, x + width - 2, floor + 2, "wood.0")
        level = floor + 2


def crack(to: Picture, x: int, y: int, seed: int) -> None:
    """A crack that wanders down the wall for two tiles."""
    rng = random.Random(seed)
    cx = x + 6
    for dy in range(28):
        cx += rng.choice([-1, 0, 0, 1]) if dy % 2 == 0 else 0
        to[y + dy, cx] = index("night.0")
        if rng.random() < 0.3:
            to[y + dy, cx + 1] = index("night.0")
        if rng.random() < 0.25:
            to[y + dy, cx - 1] = index("stone.0")
        if dy in (9, 17):
            for n in range(5):
                to[y + dy + n, cx + (n if dy == 9 else -n)] = index("night.0")


def cobweb(to: Picture, x: int, y: int, mirror: bool) -> None:
    """Threads across an upper corner of 16 px."""
    for dy in range(16):
        for dx in range(16):
            far = np.hypot(dx, dy)
            spoke = dx == 0 or dy == 0 or dx == dy or dx == 2 * dy + 1 or dy == 2 * dx + 1
            ring = abs(far - 6) < 0.5 or abs(far - 10) < 0.5 or abs(far - 14) < 0.45
            if far < 15 and (spoke or (ring and (dx + dy) % 3)):
                to[y + dy, x + (15 - dx if mirror else dx)] = index("stone.0" if far > 7 else "stone.1")


def moss(to: Picture, x: int, y: int, width: int, seed: int, longest: int = 9) -> None:
    """Moss hanging down from y."""
    rng = random.Random(seed)
    length = 3.0
    for dx in range(width):
        length = min(max(length + rng.uniform(-2.2, 2.2), 0), longest)
        for dy in range(int(length)):
            last = dy >= int(length) - 2
            to[y + dy, x + dx] = index("stone.0" if last and rng.random() < 0.4 else "moss.1")


def rubble(to: Picture, x: int, y: int, width: int, seed: int) -> None:
    """Fallen stones lying on a floor whose top is at y."""
    rng = random.Random(seed)
    at = x
    while at < x + width - 4:
        w, h = rng.randint(3, 7), rng.randint(2, 5)
        w = min(w, x + width - at)
        for dy in range(h):
            for dx in range(w):
                if (dx in (0, w - 1)) and dy == 0:
                    continue
                name = "stone.0" if dy == 0 else "night.1"
                if dx == w - 1 or dy == h - 1:
                    name = "night.0"
                to[y - h + dy, at + dx] = index(name)
        at += w + rng.randint(0, 6)


def table(to: Picture, x: int, y: int, width: int) -> None:
    """A table 14 px high on a floor at y."""
    fill(to, x, y - 14, x + width, y - 11, "wood.1")
    fill(to, x, y - 11, x + width, y - 10, "night.0")
    for leg in (x + 3, x + width - 6):
        fill(to, leg, y - 10, leg + 3, y, "wood.0")
        fill(to, leg, y - 10, leg + 1, y, "wood.1")
