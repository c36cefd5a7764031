"""The knight's skeleton: computes the joints of a pose and paints them."""

from __future__ import annotations

import math
from dataclasses import dataclass, replace

import numpy as np

from knight_raster import LIGHT, MIDDLE, OUTLINE, SHADE, Part, Point, pixel_grid, polygon_mask

# Lengths in pixels.
TORSO = 9.5
NECK = 6.0
UPPER_ARM, FOREARM = 5.2, 5.0
THIGH, SHIN = 6.2, 6.0
NEAR_HIP, FAR_HIP = -1.2, 1.4  # hip joints from the middle, towards the front
ANKLE = 2.6  # height of the ankle over the sole
BLADE = 21.0
BALL_Y = -9.6  # centre of the curled-up knight
CAPE_LINK, CAPE_LINKS = 4.0, 5
CAPE_WIDTHS = (2.0, 2.6, 3.2, 3.7, 4.2, 4.6)
PLUME_LINK, PLUME_LINKS = 2.6, 4


@dataclass(frozen=True)
class Pose:
    """One key pose. Angles in degrees; lengths in pixels from the anchor unless another origin is named."""

    hip_x: float = 0.0
    hip_y: float = -14.0
    lean: float = 4.0  # torso, positive leans forward
    breath: float = 0.0  # lengthens the torso
    head: float = 0.0  # nod on top of the lean, positive looks down
    near_x: float = -4.0  # sole of the near foot
    near_y: float = 0.0
    near_turn: float = 0.0  # positive lifts the toe
    far_x: float = 4.0
    far_y: float = 0.0
    far_turn: float = 0.0
    hand_x: float = 5.0  # sword hand from the near shoulder
    hand_y: float = 6.0
    off_x: float = 3.0  # other hand from the far shoulder
    off_y: float = 8.0
    grip: float = 0.0  # 1 puts the other hand on the sword
    reach: float = 1.0  # stretches the arms, so that the hands reach above the large head
    sword: float = 48.0  # 0 points forward, 90 up
    blade: float = 1.0  # visible part of the blade, shorter when it points at or away from the viewer
    heat: float = 1.0  # 0 is cold steel
    roll: float = 0.0  # turns the whole body clockwise about (pivot_x, pivot_y)
    pivot_x: float = 0.0
    pivot_y: float = -10.0
    face: float = 1.0  # -1 looks to the left
    behind: float = 0.0  # 1 draws the sword behind the body
    ball: float = 0.0  # 1 draws the knight curled up

    def but(self, **changes: float) -> "Pose":
        return replace(self, **changes)


@dataclass
class Joints:
    """Positions and directions of everything that is painted, after rotation and mirroring."""

    points: dict[str, Point]
    forward: Point  # of the torso
    head_forward: Point
    head_up: Point
    sword: Point
    near_foot: Point  # direction of the sole
    far_foot: Point
    face: float


def _bend(a: Point, target: Point, upper: float, lower: float, side: float) -> tuple[Point, Point]:
    """Elbow and hand (or knee and ankle) of two bones that reach for the target."""
    dx, dy = target[0] - a[0], target[1] - a[1]
    distance = math.hypot(dx, dy) or 1e-6
    reach = min(max(distance, abs(upper - lower) + 0.8), upper + lower - 0.02)
    ux, uy = dx / distance, dy / distance
    along = (upper * upper - lower * lower + reach * reach) / (2 * reach)
    off = math.sqrt(max(upper * upper - along * along, 0.0)) * side
    elbow = (a[0] + ux * along - uy * off, a[1] + uy * along + ux * off)
    return elbow, (a[0] + ux * reach, a[1] + uy * reach)


def _direction(degrees: float) -> Point:
    """0 is forward, 90 is up."""
    return math.cos(math.radians(degrees)), -math.sin(math.radians(degrees))


def _step(origin: Point, *moves: tuple[Point, float]) -> Point:
    x, y = origin
    for (dx, dy), length in moves:
        x, y = x + dx * length, y + dy * length
    return x, y


def joints_of(pose: Pose) -> Joints:
    up, forward = _direction(90 - pose.lean), _direction(-pose.lean)
    nod = pose.lean * 0.4 + pose.head
    nod = round(nod / 12) * 12  # few steps, so that the helmet keeps its pixels from frame to frame
    head_up, head_forward = _direction(90 - nod), _direction(-nod)
    hip = (pose.hip_x, pose.hip_y)
    neck = _step(hip, (up, TORSO + pose.breath))
    p: dict[str, Point] = {"hip": hip, "neck": neck}
    p["chest"] = _step(neck, (up, -2.8))
    p["near_shoulder"] = _step(neck, (up, -1.4), (forward, -1.6))
    p["far_shoulder"] = _step(neck, (up, -1.4), (forward, 2.4))
    p["head"] = _step(neck, (head_up, NECK), (head_forward, 0.6))
    p["cape"] = _step(neck, (up, -0.6), (forward, -3.0))
    p["plume"] = _step(p["head"], (head_up, 5.0), (head_forward, 0.4))
    hand = _step(p["near_shoulder"], ((1, 0), pose.hand_x), ((0, 1), pose.hand_y))
    p["near_elbow"], p["near_hand"] = _bend(p["near_shoulder"], hand, UPPER_ARM * pose.reach, FOREARM * pose.reach, 1)
    sword = _direction(pose.sword)
    free = _step(p["far_shoulder"], ((1, 0), pose.off_x), ((0, 1), pose.off_y))
    held = _step(p["near_hand"], (sword, -2.2))
    other = (free[0] + (held[0] - free[0]) * pose.grip, free[1] + (held[1] - free[1]) * pose.grip)
    p["far_elbow"], p["far_hand"] = _bend(p["far_shoulder"], other, UPPER_ARM * pose.reach, FOREARM * pose.reach, 1)
    soles = {}
    for side, hip_off, x, y, turn in (
        ("near", NEAR_HIP, pose.near_x, pose.near_y, pose.near_turn),
        ("far", FAR_HIP, pose.far_x, pose.far_y, pose.far_turn),
    ):
        soles[side] = _direction(turn)
        start = _step(hip, (forward, hip_off))
        sole_up = (soles[side][1], -soles[side][0])
        ankle = _step((x, y), (sole_up, ANKLE))
        p[side + "_thigh"] = start
        p[side + "_knee"], p[side + "_ankle"] = _bend(start, ankle, THIGH, SHIN, -1)
    p["guard"] = _step(p["near_hand"], (sword, 2.0))
    p["pommel"] = _step(p["near_hand"], (sword, -2.8))
    p["blade"] = _step(p["near_hand"], (sword, 3.0))
    p["tip"] = _step(p["near_hand"], (sword, 3.0 + BLADE * pose.blade))

    directions = [forward, head_forward, head_up, sword, soles["near"], soles["far"]]
    if pose.roll:
        c, s = math.cos(math.radians(pose.roll)), math.sin(math.radians(pose.roll))
        cx, cy = pose.pivot_x, pose.pivot_y
        p = {k: (cx + (x - cx) * c - (y - cy) * s, cy + (x - cx) * s + (y - cy) * c) for k, (x, y) in p.items()}
        directions = [(x * c - y * s, x * s + y * c) for x, y in directions]
    if pose.face < 0:
        p = {k: (-x, y) for k, (x, y) in p.items()}
        directions = [(-x, y) for x, y in directions]
    return Joints(p, *directions, face=-1.0 if pose.face < 0 else 1.0)


TOE = 4.2  # from under the ankle to the tip of the boot


def toe_of(j: Joints, side: str) -> Point:
    """Where a boot's tip touches the ground, if it does."""
    sole = j.near_foot if side == "near" else j.far_foot
    return _step(j.points[side + "_ankle"], ((sole[1], -sole[0]), -ANKLE), (sole, TOE))


def _snap(point: Point) -> Point:
    """Rounds to half pixels, so that the width of moving limbs does not change."""
    return round(point[0] * 2) / 2, round(point[1] * 2) / 2


def _leg(j: Joints, side: str) -> Part:
    part, p = Part(), j.points
    far = side == "far"
    thigh, knee, ankle = (_snap(p[f"{side}_{name}"]) for name in ("thigh", "knee", "ankle"))
    part.capsule(thigh, knee, 1.9, 1.5, "far_steel" if far else "mail")
    part.capsule(knee, ankle, 1.6, 1.3, "far_steel" if far else "steel")
    _foot(part, ankle, j.far_foot if far else j.near_foot, j.face, "far_steel" if far else "steel")
    if not far:
        part.dot(knee[0], knee[1] - 0.5, "gold", MIDDLE)
    return part


def _foot(part: Part, ankle: Point, sole: Point, face: float, material: str) -> None:
    """A boot with a flat sole, aligned to whole pixels while it is on the ground."""
    if abs(sole[1]) < 0.08:
        ankle = (round(ankle[0]), round(ankle[1] + ANKLE) - ANKLE)
    down = (-sole[1] * face, sole[0] * face)
    heel = _step(ankle, (sole, -1.9))
    toe = _step(ankle, (sole, TOE))
    points = [
        _step(heel, (down, -0.8)), _step(ankle, (sole, 1.6), (down, -0.8)), _step(toe, (down, 0.9)),
        _step(toe, (down, ANKLE - 0.95)), _step(heel, (down, ANKLE - 0.95)),
    ]
    part.polygon(points, material)


def _arm(j: Joints, side: str) -> Part:
    part, p = Part(), j.points
    far = side == "far"
    shoulder, elbow, hand = (_snap(p[f"{side}_{name}"]) for name in ("shoulder", "elbow", "hand"))
    part.capsule(shoulder, elbow, 1.5, 1.4, "far_steel" if far else "mail")
    part.capsule(elbow, hand, 1.4, 1.3, "far_steel" if far else "steel")
    part.ellipse(hand, 1.7, 1.7, 0, "far_steel" if far else "steel", 0.3)
    return part


def _pauldron(j: Joints, side: str) -> Part:
    part = Part()
    shoulder = _snap(j.points[f"{side}_shoulder"])
    up = (j.forward[1] * j.face, -j.forward[0] * j.face)
    if side == "far":
        part.ellipse(_step(shoulder, (up, 0.3)), 2.4, 2.2, 0, "far_steel", 0.2)
        return part
    centre = _step(shoulder, (up, 0.2))
    tilt = math.degrees(math.atan2(j.forward[1], j.forward[0]))
    part.ellipse(centre, 3.3, 2.9, tilt, "steel", 0.1)
    rim = _step(centre, (up, -2.2))
    part.line(_step(rim, (j.forward, -2.2)), _step(rim, (j.forward, 2.2)), "gold", MIDDLE)
    return part


def _torso(j: Joints) -> Part:
    part, p = Part(), j.points
    hip, chest = _snap(p["hip"]), _snap(p["chest"])
    up = (j.forward[1] * j.face, -j.forward[0] * j.face)
    # Skirt of the tabard: its hem follows the knees.
    knees = ((p["near_knee"][0] + p["far_knee"][0]) / 2, (p["near_knee"][1] + p["far_knee"][1]) / 2)
    hem = _step(hip, ((knees[0] - hip[0], knees[1] - hip[1]), 0.72))
    part.polygon(
        [
            _step(hip, (j.forward, -3.0), (up, 1.5)), _step(hip, (j.forward, 3.2), (up, 1.5)),
            _step(hem, (j.forward, 4.4)), _step(hem, (j.forward, 0.4), (up, -1.0)), _step(hem, (j.forward, -4.2)),
        ],
        "cloth",
    )
    part.capsule(hip, chest, 2.9, 4.1, "steel")
    # Tabard strip down the breastplate, towards the front.
    part.polygon(
        [
            _step(chest, (j.forward, 0.4), (up, 3.0)), _step(chest, (j.forward, 3.4), (up, 2.0)),
            _step(hip, (j.forward, 2.6), (up, 0.6)), _step(hip, (j.forward, -0.4), (up, 0.6)),
        ],
        "cloth", 0.1,
    )
    part.line(_step(hip, (j.forward, -2.8), (up, 0.8)), _step(hip, (j.forward, 3.0), (up, 0.8)), "gold", MIDDLE)
    part.dot(*_step(hip, (j.forward, 1.4), (up, 0.8)), "gold", LIGHT)
    return part


def _head(j: Joints, heat: float) -> Part:
    part = Part()
    centre = (round(j.points["head"][0]), round(j.points["head"][1]))
    x, y = pixel_grid()
    x, y = x - centre[0], y - centre[1]
    f = x * j.head_forward[0] + y * j.head_forward[1]
    u = x * j.head_up[0] + y * j.head_up[1]
    dome = (f * f / 4.4 ** 2 + (u - 0.2) ** 2 / 4.8 ** 2 <= 1) & (u > -1.4)
    jaw = (u <= -1.0) & (u > -4.6) & (f > -3.6 + np.maximum(-u - 3, 0) * 0.6) & (f < 4.3 - np.maximum(-u - 2, 0) * 0.8)
    lit = (x * -0.62 + y * -0.78) / 4.6
    part.shaded(dome | jaw, lit, "steel", 0.05)
    part.put(dome & (np.abs(f + 0.4) < 0.6) & (u > 2.0), "gold", MIDDLE)
    part.put((dome | jaw) & (u > 0.6) & (u <= 1.6) & (f > -2.4), "gold", MIDDLE)
    part.put((dome | jaw) & (u > -1.2) & (u <= 0.6) & (f > -0.4), "steel", OUTLINE)
    if heat > 0.15:
        eyes = (dome | jaw) & (u > -0.7) & (u <= 0.4) & (f > 1.4) & (f < 3.6)
        part.put(eyes, "fire", MIDDLE if heat > 0.5 else SHADE)
    part.put(jaw & (u < -1.6) & (np.abs(f - 1.6) < 0.55), "steel", SHADE)
    return part


def _between(a: Point, b: Point, part: float) -> Point:
    return a[0] + (b[0] - a[0]) * part, a[1] + (b[1] - a[1]) * part


def _cape(chain: list[Point], face: float) -> Part:
    part = Part()
    left, right = [], []
    for i, point in enumerate(chain):
        before, after = chain[max(i - 1, 0)], chain[min(i + 1, len(chain) - 1)]
        dx, dy = after[0] - before[0], after[1] - before[1]
        length = math.hypot(dx, dy) or 1e-6
        side = (-dy / length * face, dx / length * face)  # outer side, away from the body
        left.append(_step(point, (side, CAPE_WIDTHS[i])))
        right.append(_step(point, (side, -CAPE_WIDTHS[i])))
    end, last = chain[-1], chain[-2]
    along = (end[0] - last[0], end[1] - last[1])
    for i in range(len(chain) - 1):
        part.put(polygon_mask([left[i], left[i + 1], right[i + 1], right[i]]), "cloth", SHADE)
        inner = _between(left[i + 1], right[i + 1], 0.6), _between(left[i], right[i], 0.6)
        part.put(polygon_mask([left[i], left[i + 1], *inner]), "cloth", MIDDLE)
    # The hem ends in three points.
    for a, b in ((0.0, 0.36), (0.36, 0.7), (0.7, 1.0)):
        tip = _step(_between(left[-1], right[-1], (a + b) / 2), (along, 0.5))
        point = [_between(left[-1], right[-1], a), tip, _between(left[-1], right[-1], b)]
        part.put(polygon_mask(point), "cloth", SHADE if a > 0.5 else MIDDLE)
    for i in range(len(chain) - 1):
        part.line(_between(left[i], right[i], 0.12), _between(left[i + 1], right[i + 1], 0.12), "cloth", LIGHT)
    return part


def _plume(chain: list[Point]) -> Part:
    part = Part()
    widths = (1.4, 1.9, 1.8, 1.4, 0.8)
    for i, (a, b) in enumerate(zip(chain, chain[1:])):
        part.capsule(a, b, widths[i], widths[i + 1], "cloth", 0.15)
    return part


def _sword(j: Joints, heat: float) -> Part:
    part, p = Part(), j.points
    side = (-j.sword[1], j.sword[0])
    metal = "fire" if heat > 0.6 else "ember" if heat > 0.2 else "steel"
    blade, tip = p["blade"], p["tip"]
    length = math.hypot(tip[0] - blade[0], tip[1] - blade[1])
    if length > 2:
        shoulder = _step(blade, (j.sword, length - 4))
        part.polygon(
            [
                _step(blade, (side, -1.5)), _step(shoulder, (side, -1.5)), tip,
                _step(shoulder, (side, 1.5)), _step(blade, (side, 1.5)),
            ],
            metal,
        )
        # The upper edge is lit; hot metal glows up to the middle.
        x, y = pixel_grid()
        if side[1] > 0 or (side[1] == 0 and side[0] > 0):
            side = (-side[0], -side[1])
        above = (x - blade[0]) * side[0] + (y - blade[1]) * side[1]
        inside = part.pixels > 0
        part.put(inside, metal, MIDDLE if heat > 0.2 else SHADE)
        part.put(inside & (above > -0.35), metal, LIGHT)
    hilt = Part()
    hilt.capsule(p["pommel"], p["guard"], 0.8, 0.8, "leather")
    hilt.capsule(_step(p["guard"], (side, -2.6)), _step(p["guard"], (side, 2.6)), 0.8, 0.8, "gold", 0.2)
    hilt.ellipse(p["pommel"], 1.2, 1.2, 0, "gold")
    out = Part()
    part.onto(out.pixels)
    hilt.onto(out.pixels)
    return out


def _curled(pose: Pose) -> Part:
    """The knight as a ball: helmet tucked in, knees to the chest, the cape wrapped around the back."""
    c, s = math.cos(math.radians(pose.roll)), math.sin(math.radians(pose.roll))

    def at(x: float, y: float) -> Point:
        return x * c - y * s, BALL_Y + x * s + y * c

    out = Part()
    groups = (
        (("cloth", at(-1.8, 0.6), at(-0.6, 0.6), 7.4, 7.0),),
        (("steel", at(-1.0, 0.0), at(0.0, 1.0), 4.6, 4.2),),
        (("cloth", at(-3.0, -6.8), at(1.0, -8.0), 1.2, 1.5), ("cloth", at(1.0, -8.0), at(5.6, -6.8), 1.5, 1.3)),
        (("steel", at(2.6, -3.6), at(2.9, -3.2), 4.3, 4.3),),
        (
            ("mail", at(-2.5, 5.6), at(4.8, 3.2), 1.9, 1.7),
            ("steel", at(4.8, 3.2), at(2.0, 7.6), 1.6, 1.3),
            ("steel", at(0.6, 7.8), at(3.6, 7.4), 1.0, 1.0),
        ),
        (("mail", at(-1.6, -0.6), at(2.0, 3.2), 1.3, 1.2),),
        (("steel", at(-2.2, -1.2), at(-1.8, -1.0), 2.7, 2.7),),
    )
    for number, shapes in enumerate(groups):
        part = Part()
        for material, a, b, ra, rb in shapes:
            part.capsule(a, b, ra, rb, material)
        if number == 3:
            part.line(at(1.6, -6.0), at(6.6, -2.6), "gold", MIDDLE)
            part.line(at(3.0, -1.8), at(6.0, 0.0), "steel", OUTLINE)
            part.dot(*at(5.2, -0.6), "fire", MIDDLE)
        if number == 0:
            part.line(at(-8.0, 1.0), at(-5.0, 6.0), "cloth", SHADE)
        part.onto(out.pixels)
    return out


def paint(frame: np.ndarray, pose: Pose, cape: list[Point], plume: list[Point]) -> None:
    """Paints the knight over the frame, back to front."""
    if pose.ball > 0.5:
        _curled(pose).onto(frame)
        return
    j = joints_of(pose)
    sword = _sword(j, pose.heat)
    _cape(cape, j.face).onto(frame)
    if pose.behind > 0.5:
        sword.onto(frame, outlined=False)
    _arm(j, "far").onto(frame)
    _pauldron(j, "far").onto(frame)
    _leg(j, "far").onto(frame)
    _leg(j, "near").onto(frame)
    _torso(j).onto(frame)
    # Arms stretched above the head are drawn behind it; otherwise they would hide the face.
    overhead = pose.reach > 1.2
    if overhead:
        _arm(j, "near").onto(frame)
    _plume(plume).onto(frame)
    _head(j, pose.heat).onto(frame)
    if pose.behind <= 0.5:
        sword.onto(frame, outlined=False)
    if not overhead:
        _arm(j, "near").onto(frame)
    _pauldron(j, "near").onto(frame)
