"""The castle's level description: its symbols, the colliders generated from them, and checks that it is playable.

The text grid in castle_level.txt has one symbol for each 16 px tile:

    .  open           #  solid          -  thin ledge (upper half)    =  half step (lower half)
    ,  visible but inaccessible: cells and attics behind walls
    /  slope 1:1 up   \\  slope 1:1 down  a b  slope 1:2 up             c d  slope 1:2 down   (seen from left to right)

Picture and colliders are both generated from this grid, so that they always match.
"""

from __future__ import annotations

from collections import deque
from pathlib import Path

import numpy as np

Rect = tuple[int, int, int, int]
Tri = tuple[int, int, int, int, int, int]
Mask = np.ndarray  # bool, one element per pixel, [y, x]

TILE = 16
HALF = TILE // 2
COLS, ROWS = 120, 34
SPAWN = (100, 416)  # feet
GOAL_X, GOAL_Y = 1800, 480  # the throne is reached when the feet are this far to the right and down
SYMBOLS = ".,#-=/\\abcd"
SLOPES = "/\\abcd"

# The player's body and speeds.
BODY_W, BODY_H = 20, 40
RUN, JUMP, GRAVITY, FALL_LIMIT = 250.0, 275.0, 400.0, 600.0
STEP_UP, STICK = 10, 8
DT = 1 / 60


def load() -> list[str]:
    """Reads the grid."""
    rows = Path(__file__).with_name("castle_level.txt").read_text(encoding="utf-8").split("\n")[:-1]
    if len(rows) != ROWS or any(len(row) != COLS for row in rows):
        raise ValueError(f"the castle level must be {COLS} by {ROWS} symbols")
    if set("".join(rows)) - set(SYMBOLS):
        raise ValueError("the castle level contains an unknown symbol")
    return rows


def symbol_mask(symbol: str) -> Mask:
    """The solid pixels of a tile. A pixel belongs to a slope if its centre is on or below the line."""
    y, x = np.mgrid[0:TILE, 0:TILE] + 0.5
    line = {
        ".": np.full_like(x, TILE), ",": np.full_like(x, TILE),
        "#": np.zeros_like(x), "=": np.full_like(x, HALF), "-": np.zeros_like(x),
        "/": TILE - x, "\\": x, "a": TILE - x / 2, "b": HALF - x / 2, "c": x / 2, "d": HALF + x / 2,
    }[symbol]
    return (y >= line) & ((symbol != "-") | (y < HALF))


def solid_mask(grid: list[str]) -> Mask:
    """The solid pixels of the whole level."""
    tiles = {symbol: symbol_mask(symbol) for symbol in SYMBOLS}
    return np.vstack([np.hstack([tiles[symbol] for symbol in row]) for row in grid])


def slope_runs(grid: list[str]) -> list[tuple[int, int, int, int, bool]]:
    """Straight slopes as (left, top, right, bottom) in cells, and whether they rise to the right."""
    runs = []
    used: set[tuple[int, int]] = set()
    for col in range(COLS):
        for row in range(ROWS):
            first = grid[row][col]
            if first not in "/\\ac" or (row, col) in used:
                continue
            width, rises = (2 if first in "ac" else 1), first in "/a"
            length = 0
            while True:
                at_row, at_col = row + (-length if rises else length), col + length * width
                if at_col >= COLS or not 0 <= at_row < ROWS or grid[at_row][at_col] != first:
                    break
                used.add((at_row, at_col))
                length += 1
            last = row + (1 - length if rises else length - 1)
            runs.append((col, min(row, last), col + length * width, max(row, last) + 1, rises))
    return runs


def cap_cell(run: tuple[int, int, int, int, bool]) -> tuple[int, int]:
    """The floor cell at a slope's high end."""
    left, top, right, _, rises = run
    return top, right if rises else left - 1


def triangles(grid: list[str]) -> list[Tri]:
    """One triangle for each slope, and two that fill the floor cell at its high end.

    The body's corner is half a body ahead of its feet. If that cell were a rectangle, the corner would hit it while
    the feet are still below its top, and the body would jump up the last pixels of every slope.
    """
    found: list[Tri] = []
    for run in slope_runs(grid):
        left, top, right, bottom, rises = (run[0] * TILE, run[1] * TILE, run[2] * TILE, run[3] * TILE, run[4])
        found.append((left, bottom, right, bottom, right if rises else left, top))
        row, col = cap_cell(run)
        x, y = col * TILE, row * TILE
        found.append((x, y, x + TILE, y, x, y + TILE))
        found.append((x + TILE, y, x + TILE, y + TILE, x, y + TILE))
    return found


def triangle_mask(tris: list[Tri]) -> Mask:
    """The pixels whose centres are in a triangle or on its edge."""
    mask = np.zeros((ROWS * TILE, COLS * TILE), bool)
    y, x = np.mgrid[0 : ROWS * TILE, 0 : COLS * TILE] + 0.5
    for ax, ay, bx, by, cx, cy in tris:
        sides = [
            (x - vx) * (uy - vy) - (ux - vx) * (y - vy)
            for ux, uy, vx, vy in ((ax, ay, bx, by), (bx, by, cx, cy), (cx, cy, ax, ay))
        ]
        mask |= ~(np.any([s < 0 for s in sides], axis=0) & np.any([s > 0 for s in sides], axis=0))
    return mask


def rectangles(grid: list[str]) -> list[Rect]:
    """The solid cells not covered by triangles, as strips.

    Each strip extends from a surface down to the next open space and is as wide as both stay level. Drawn as outlines,
    the strips follow floors, stairs and ceilings, and their vertical lines start at visible corners.
    """
    left_over = solid_mask(grid) & ~triangle_mask(triangles(grid))
    cells = left_over[::HALF, ::HALF]
    rects: list[Rect] = []
    open_strips: dict[tuple[int, int], int] = {}  # (top, bottom) -> first column
    for x in range(cells.shape[1] + 1):
        column = cells[:, x] if x < cells.shape[1] else np.zeros(cells.shape[0], bool)
        edges = np.flatnonzero(np.diff(np.concatenate([[0], column.astype(np.int8), [0]])))
        spans = {(int(top), int(bottom)) for top, bottom in zip(edges[::2], edges[1::2])}
        for span in set(open_strips) - spans:
            start = open_strips.pop(span)
            rects.append((start * HALF, span[0] * HALF, (x - start) * HALF, (span[1] - span[0]) * HALF))
        for span in spans - set(open_strips):
            open_strips[span] = x
    return sorted(rects)


class Body:
    """The player's box with the game's movement, using tables precomputed for a level."""

    def __init__(self, rects: list[Rect], tris: list[Tri]) -> None:
        self.width, self.height = COLS * TILE, ROWS * TILE
        margin = BODY_H + 2
        solid = np.zeros((self.height + 2 * margin, self.width), np.int32)
        for x, y, w, h in rects:
            solid[y + margin : y + h + margin, x : x + w] = 1
        total = np.pad(solid.cumsum(0).cumsum(1), ((1, 0), (1, 0)))
        across = total[:, BODY_W:] - total[:, :-BODY_W]
        count = across[BODY_H:] - across[:-BODY_H]
        # blocked[y][x] for feet at (x, y): rows shift by the margin, columns by half a body
        self.rows = (count > 0).tolist()
        self.row_shift = margin - BODY_H
        self.surface: list[float | None] = [None] * (self.width + 1)
        for ax, ay, bx, by, cx, cy in tris:
            for px, py, qx, qy in ((ax, ay, bx, by), (bx, by, cx, cy), (cx, cy, ax, ay)):
                for x in range(min(px, qx), max(px, qx) + 1):
                    y = min(py, qy) if px == qx else py + (x - px) * (qy - py) / (qx - px)
                    old = self.surface[x]
                    self.surface[x] = y if old is None else min(old, y)

    def blocked(self, x: int, y: int) -> bool:
        """Whether a box with its feet there overlaps a rectangle."""
        row, col = y + self.row_shift, x - BODY_W // 2
        return 0 <= col < self.width - BODY_W and 0 <= row < len(self.rows) and self.rows[row][col]

    def grounded(self, x: int, y: int) -> bool:
        surface = self.surface[x] if 0 <= x <= self.width else None
        return self.blocked(x, y + 1) or (surface is not None and y >= surface - 0.5)

    def run(self, x: int, y: int, jump: bool, moves: list[tuple[int, int]]) -> list[tuple[int, int]]:
        """Simulates moves of (direction, steps) from a standing position; the last direction is held until landing.

        Returns the landing position, or an empty list if the body falls out of the level.
        """
        vel_y, rem_x, rem_y = (-JUMP if jump else 0.0), 0.0, 0.0
        on_ground = True
        for direction, steps in [*moves, (moves[-1][0], 600)]:
            held = (direction, steps) != moves[0] and steps == 600
            for _ in range(steps):
                if held and on_ground:
                    return [(x, y)]
                vel_y = min(vel_y + GRAVITY * DT, FALL_LIMIT)
                rem_x += direction * RUN * DT
                move = int(np.trunc(rem_x + (0.5 if rem_x >= 0 else -0.5)))
                rem_x -= move
                sign = 1 if move > 0 else -1
                for _ in range(abs(move)):
                    if self.blocked(x + sign, y):
                        lift = next((n for n in range(1, STEP_UP + 1) if not self.blocked(x, y - n)
                                     and not self.blocked(x + sign, y - n)), 0) if on_ground else 0
                        if not lift:
                            rem_x = 0.0
                            break
                        y -= lift
                    x += sign
                rem_y += vel_y * DT
                move = int(np.trunc(rem_y + (0.5 if rem_y >= 0 else -0.5)))
                rem_y -= move
                sign = 1 if move > 0 else -1
                for _ in range(abs(move)):
                    if self.blocked(x, y + sign):
                        rem_y = vel_y = 0.0
                        break
                    y += sign
                x = min(max(x, 0), self.width)
                surface = self.surface[x]
                if surface is not None:
                    at = int(np.floor(surface + 0.5))
                    if y > at or (on_ground and vel_y >= 0 and at - y <= STICK):
                        step = -1 if at > y else 1
                        old, y, vel_y = y, at, 0.0
                        while y != old and self.blocked(x, y):
                            y += step
                on_ground = self.grounded(x, y)
                if y > self.height:
                    return []
        return [(x, y)] if on_ground else []


# Moves that the search tries from each standing position: (jump, moves). Times in steps of 1/60 s; d is the direction.
TRIES: list[tuple[bool, list[tuple[int, int]]]] = [
    (jump, [(d * way, steps) for way, steps in moves])
    for d in (-1, 1)
    for jump, moves in (
        (False, [(1, 4)]), (False, [(1, 12), (0, 1)]), (False, [(1, 8), (-1, 1)]), (True, [(1, 1)]),
        (True, [(0, 12), (1, 1)]), (True, [(0, 24), (1, 1)]), (True, [(0, 36), (1, 1)]), (True, [(1, 8), (0, 1)]),
        (True, [(1, 20), (0, 1)]), (True, [(1, 32), (0, 1)]), (True, [(1, 48), (0, 1)]),
        (True, [(0, 20), (1, 14), (0, 1)]),
    )
]

Node = tuple[int, int]


def flood(body: Body) -> dict[Node, set[Node]]:
    """All standing positions reachable from the spawn, with their successors; x in whole tiles."""
    def node(place: tuple[int, int]) -> Node:
        return place[0] // TILE, place[1]

    edges: dict[Node, set[Node]] = {}
    queue = deque([SPAWN])
    while queue:
        place = queue.popleft()
        if node(place) in edges:
            continue
        follow = edges[node(place)] = set()
        for jump, moves in TRIES:
            for landed in body.run(*place, jump, moves):
                follow.add(node(landed))
                queue.append(landed)
    return edges


def standing_cells(grid: list[str]) -> list[tuple[int, int]]:
    """Cells on which a body could stand: solid top with three open cells above."""
    return [
        (row, col)
        for row in range(3, ROWS)
        for col in range(COLS)
        if grid[row][col] in "#-" and all(grid[row - n][col] == "." for n in (1, 2, 3))
    ]


def check(grid: list[str], rects: list[Rect], tris: list[Tri]) -> None:
    """Fails if picture and colliders differ or the level is not playable."""
    expected = solid_mask(grid)
    covered = np.zeros(expected.shape, np.int32)
    for x, y, w, h in rects:
        assert w > 0 and h > 0
        covered[y : y + h, x : x + w] += 1
    assert covered.max() == 1, "rectangles overlap"
    assert np.array_equal((covered > 0) | triangle_mask(tris), expected), "colliders differ from the solid cells"
    assert not ((covered > 0) & triangle_mask(tris)).any(), "a triangle overlaps a rectangle"
    assert len(rects) < 160, f"{len(rects)} rectangles are too many to scan"

    x, y = SPAWN
    assert not expected[y - BODY_H : y, x - BODY_W // 2 : x + BODY_W // 2].any(), "the spawn is blocked"
    assert expected[y, x - BODY_W // 2 : x + BODY_W // 2].all(), "no floor under the spawn"
    assert expected[:, :TILE].all() and expected[:, -TILE:].all(), "the level is open at a side"

    for run in slope_runs(grid):
        left, top, right, bottom, rises = run
        cap_row, cap_col = cap_cell(run)
        low = left - 1 if rises else right
        assert grid[cap_row][cap_col] == "#" and grid[cap_row - 1][cap_col] == ".", f"slope {run}: high end"
        assert grid[bottom][low] == "#" and grid[bottom - 1][low] == ".", f"slope {run}: low end"
        # A slope lifts any body below it, so there must be no open space.
        for col in range(min(left, cap_col), max(right, cap_col + 1)):
            column = "".join(row[col] for row in grid)
            surface = cap_row if col == cap_col else max(column.rfind(symbol) for symbol in SLOPES)
            assert set(column[surface + 1 :]) <= {"#", ","}, f"slope {run}: column {col} is open below it"

    edges = flood(Body(rects, tris))
    goals = {place for place in edges if place[0] >= GOAL_X // TILE and place[1] >= GOAL_Y}
    assert goals, "the throne cannot be reached"
    hidden = {place for place in edges if grid[(place[1] - 1) // TILE][place[0]] == ","}
    assert not hidden, f"inaccessible cells can be reached: {sorted(hidden)}"
    back: dict[Node, set[Node]] = {}
    for start, ends in edges.items():
        for end in ends:
            back.setdefault(end, set()).add(start)
    home, queue = set(goals), deque(goals)
    while queue:
        for before in back.get(queue.popleft(), set()) - home:
            home.add(before)
            queue.append(before)
    assert not set(edges) - home, f"no way out of {sorted(set(edges) - home)}"
    reached = {(y // TILE, x) for x, y in edges}
    missed = [cell for cell in standing_cells(grid) if not any((cell[0], cell[1] + n) in reached for n in (-1, 0, 1))]
    assert not missed, f"these cells look like footholds but cannot be reached: {missed}"
