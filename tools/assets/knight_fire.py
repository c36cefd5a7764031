"""Fire in animation frames: particles emitted by the blade, smear frames of fast cuts, and large fields of fire.

Everything is a function of the clip's seed and the frame, so that loops are seamless and the output is bit-identical.
"""

from __future__ import annotations

import math

import numpy as np

from knight_motion import SLAM_AT, Clip, Ring, Smear
from knight_raster import (
    ANCHOR_X, ANCHOR_Y, FRAME_H, FRAME_W, LIGHT, MIDDLE, OUTLINE, SHADE, blank, code, fire_codes, lay, pixel_grid,
)
from knight_rig import joints_of

SUBSTEPS = 4  # emissions per frame
BLADE_RATE = 4  # particles per emission at rate 1
LONGEST_LIFE = 7
EDGE = 3  # px between flames and the frame's sides, so that no flame is cut off

# Hottest first: tone of the flame ramp, and the pixels of a particle at that heat.
STAGES = (
    (LIGHT, ((0, -1), (0, 0), (1, 0), (0, 1), (1, 1))),
    (MIDDLE, ((0, -1), (0, 0), (1, 0), (0, 1), (1, 1))),
    (SHADE, ((0, -1), (0, 0), (1, 0))),
    (OUTLINE, ((0, 0),)),
)
STAGE_ENDS = (0.14, 0.42, 0.72)  # fractions of a particle's life
FOLLOW = 0.8  # share of the blade's movement after emission that a particle follows


class Particles:
    """All particles of a clip, stored at emission; the position at any time follows from the age."""

    def __init__(self, clip: Clip, seed: int) -> None:
        self.clip = clip
        random = np.random.Generator(np.random.PCG64(seed))
        self.births: list[tuple[float, ...]] = []
        # In one-shot clips the blade is already burning at the start.
        first = 0 if clip.loop else -LONGEST_LIFE * SUBSTEPS
        for step in range(first, clip.frames * SUBSTEPS):
            time = step / SUBSTEPS
            self._from_blade(time, random)
            for spray in clip.sprays:
                if spray.start <= time < spray.end:
                    for _ in range(spray.rate):
                        angle = math.radians(random.uniform(*spray.angles))
                        speed = random.uniform(*spray.speed)
                        self.births.append((
                            time, spray.x + random.uniform(-1, 1) * spray.spread[0],
                            spray.y + random.uniform(-1, 1) * spray.spread[1],
                            math.cos(angle) * speed, -math.sin(angle) * speed,
                            random.uniform(*spray.life), random.uniform(0, 6.28), -1.0, 1,
                        ))

    def _from_blade(self, time: float, random: np.random.Generator) -> None:
        pose = self.clip.pose(time)
        joints = joints_of(pose)
        (ax, ay), (bx, by) = joints.points["blade"], joints.points["tip"]
        count = BLADE_RATE * self.clip.rate * pose.heat * min(1.0, 0.3 + pose.blade)
        # The random stream must not depend on the pose, or a small change would affect the whole clip.
        for i in range(8):
            u, sx, sy, vx, vy, life, phase = random.uniform(0, 1, 7)
            if i >= count:
                continue
            self.births.append((
                time, ax + (bx - ax) * u + (sx - 0.5) * 2, ay + (by - ay) * u + (sy - 0.5) * 2,
                vx - 0.5, -1.2 - vy * 2.0, 1.4 + life * 2.4 * (0.4 + 0.6 * pose.heat), phase * 6.28, u,
                round((1 - pose.heat) * 2.5),
            ))

    def draw(self, frame: np.ndarray, time: float) -> None:
        alive: list[list[tuple[int, int]]] = [[] for _ in STAGES]
        points = joints_of(self.clip.pose(time)).points
        (ax, ay), (bx, by) = points["blade"], points["tip"]
        for birth, x, y, vx, vy, life, phase, u, first_stage in self.births:
            age = time - birth
            if self.clip.loop:
                age %= self.clip.frames
            if not 0 <= age < life:
                continue
            # In a loop shorter than a particle's life, the particles of earlier passes are drawn too.
            if u >= 0:
                x += (ax + (bx - ax) * u - x) * FOLLOW
                y += (ay + (by - ay) * u - y) * FOLLOW
            ages = [age]
            if self.clip.loop:
                while ages[-1] + self.clip.frames < life:
                    ages.append(ages[-1] + self.clip.frames)
            for a in ages:
                px = x + (vx + self.clip.drift[0] * min(1.0, 0.4 + a * 0.3)) * a + math.sin(phase + a * 1.7) * 0.9
                py = y + (vy + self.clip.drift[1]) * a
                stage = max(first_stage, sum(a / life > end for end in STAGE_ENDS))
                alive[stage].append((math.floor(px) + ANCHOR_X, math.floor(py) + ANCHOR_Y))
        for (tone, shape), spots in reversed(list(zip(STAGES, alive))):
            for px, py in spots:
                for dx, dy in shape:
                    qx, qy = px + dx, py + dy
                    if EDGE <= qx < FRAME_W - EDGE and EDGE <= qy < FRAME_H:
                        frame[qy, qx] = code("fire", tone)


def smear_heat(clip: Clip, smear: Smear) -> np.ndarray:
    """The heat of the area swept by the blade: highest at the blade and at the rim, ragged at the trailing end."""
    heat = np.zeros((FRAME_H, FRAME_W))
    steps = 900
    path = [joints_of(clip.pose(smear.start + (smear.end - smear.start) * i / steps)) for i in range(steps + 1)]
    # Age by the distance the tip has moved, not by time: a cut that slows down would leave only a thin hot edge.
    travelled = [0.0]
    for last, joints in zip(path, path[1:]):
        travelled.append(travelled[-1] + math.dist(last.points["tip"], joints.points["tip"]))
    for joints, distance in zip(path, travelled):
        age = 1 - distance / max(travelled[-1], 1e-6)  # 1 is the oldest
        (ax, ay), (dx, dy) = joints.points["blade"], joints.sword
        tip = joints.points["tip"]
        length = math.hypot(tip[0] - ax, tip[1] - ay) * smear.reach
        inner = length * (0.3 + 0.55 * age ** 0.8)
        along = np.arange(inner, length * (1 - 0.04 * age), 0.4)
        if not len(along):
            continue
        px = np.floor(ax + dx * along).astype(int) + ANCHOR_X
        py = np.floor(ay + dy * along).astype(int) + ANCHOR_Y
        # From the inner edge to the rim: the rim stays hot longest.
        rim = (along - inner) / max(length - inner, 1e-6)
        value = smear.fade * (1.16 - 0.85 * age) * (0.5 + 0.5 * np.sqrt(rim))
        # Streaks along the cut, with larger gaps where it is old or fading.
        streaks = _noise(along / 2.2, along * 0 + distance / 26, 77)
        value -= streaks * (0.12 + 0.3 * age + 0.5 * (1 - smear.fade))
        inside = (px >= EDGE) & (px < FRAME_W - EDGE) & (py >= EDGE) & (py < FRAME_H)
        np.maximum.at(heat, (py[inside], px[inside]), value[inside])
    return heat


def ring_heat(ring: Ring) -> tuple[np.ndarray, np.ndarray]:
    """The far half (drawn behind the knight) and the near half of a flat ring."""
    halves = np.zeros((2, FRAME_H, FRAME_W))
    for i in range(400):
        age = 1 - i / 399
        angle = math.radians(ring.start + ring.sweep * (1 - age))
        near = 1 if math.sin(angle) >= 0 else 0
        for k in range(13):
            inward = k / 12
            if inward > 0.25 + 0.75 * (1 - age):
                break
            radius = ring.radius * (1 - 0.34 * inward)
            px = math.floor(math.cos(angle) * radius) + ANCHOR_X
            py = math.floor(ring.y + math.sin(angle) * radius * 0.26) + ANCHOR_Y
            value = ring.fade * (1.1 - 0.8 * age) * (1 - 0.5 * inward)
            halves[near, py, px] = max(halves[near, py, px], value)
    return halves[0], halves[1]


def _noise(x: np.ndarray, y: np.ndarray, seed: int) -> np.ndarray:
    """Smooth value noise, 0 to 1."""
    table = np.random.Generator(np.random.PCG64(seed)).uniform(0, 1, (64, 64))
    x0, y0 = np.floor(x).astype(int), np.floor(y).astype(int)
    fx, fy = x - x0, y - y0
    fx, fy = fx * fx * (3 - 2 * fx), fy * fy * (3 - 2 * fy)
    a, b = table[y0 % 64, x0 % 64], table[y0 % 64, (x0 + 1) % 64]
    c, d = table[(y0 + 1) % 64, x0 % 64], table[(y0 + 1) % 64, (x0 + 1) % 64]
    return a + (b - a) * fx + (c - a) * fy + (a - b - c + d) * fx * fy


def _tongues(time: float, seed: int) -> np.ndarray:
    """Vertically stretched noise that rises with time, which shapes large fires into tongues."""
    x, y = np.broadcast_arrays(*pixel_grid())
    lean = _noise(y / 17 + time * 0.9, x * 0 + 3.3, seed + 7) * 6
    large = _noise((x + lean) / 9, (y + time * 13) / 22, seed)
    small = _noise((x - lean) / 4, (y + time * 19) / 10, seed + 1)
    return large * 0.65 + small * 0.35


def _side_fade() -> np.ndarray:
    x, _ = pixel_grid()
    distance = np.minimum(x + ANCHOR_X - EDGE, FRAME_W - EDGE - ANCHOR_X - x)
    return np.clip(distance / 10, 0, 1)


def wave_heat(clip: Clip, time: float, seed: int) -> np.ndarray:
    """The special attack: fire runs from the planted blade to both ends of the frame.

    The ground below may be uneven. Therefore it consists of separate tongues with feet at different heights, and its
    outer thirds are arcs above the ground that end in a point.
    """
    x, y = np.broadcast_arrays(*pixel_grid())
    age = time - 6.0
    if age < 0 or time > clip.frames - 1.5:
        return np.zeros_like(x)
    front = 30 + 150 * (1 - (1 - min(age / 5.0, 1)) ** 1.8)
    dying = np.clip(1 - (age - 4.0) / 5.0, 0, 1) ** 1.3
    heat = np.zeros_like(x)
    torn = 1 - _tongues(time, seed)
    random = np.random.Generator(np.random.PCG64(seed + 31))
    # tongues over the inner third of each side
    for n in range(-6, 7):
        at = 14 + n * 9.5 + random.uniform(-2.5, 2.5)
        foot, tall, wide = random.uniform(0, 7) * min(abs(n), 4) / 4, random.uniform(44, 84), random.uniform(5.5, 8.5)
        sway, phase = random.uniform(-0.25, 0.25), random.uniform(0, 6.28)
        behind = front - abs(at - 14)
        if behind <= 0:
            continue
        grown = min(behind / 16, 1) * (1 + 0.35 * math.exp(-((behind - 16) / 26) ** 2)) * dying
        height = max(tall * grown * (0.92 + 0.08 * math.sin(phase + time * 2.3)), 0.1)
        level = (-y - foot) / height
        shape = np.sqrt(np.clip(level + 0.05, 0, 1)) * np.clip(1 - level, 0, 1) ** 0.8 * 1.9
        away = np.abs(x - at - sway * (-y) - 3 * np.sin(-y / 9 - time * 2 + phase)) / np.maximum(wide * shape, 0.3)
        value = 1.32 - away * 0.75 - np.clip(level, 0, 1) * 0.5 - torn * 0.42
        heat = np.where((level > 0) & (level < 1) & (height > 9), np.maximum(heat, value), heat)
    # arcs over the outer two thirds, the second lower and further out
    for side in (-1, 1):
        for begin, end, rise, thick, seed_of in ((40, 98, 40, 11, 0), (78, 136, 27, 8, 1)):
            along = (side * (x - 4) - begin) / (end - begin)
            reach = np.clip((front - begin) / (end - begin), 0, 1)
            inside = (along > 0) & (along < reach)
            crown = 8 + rise * 4 * along * (1 - along) * (0.75 + 0.25 * dying)
            taper = np.clip(4 * along * (1 - along), 0, 1) ** 0.5 * np.clip((reach - along) / 0.22, 0, 1)
            body = thick * taper * dying
            lick = _noise(x / 5 + seed_of * 9, y * 0 + time * 1.3 + seed_of * 5, seed + 11) * 1.9
            over = (-y - crown) / np.maximum(np.where(-y > crown, body * (0.6 + lick), body * 0.55), 0.4)
            value = 1.22 - np.abs(over) * 0.85 - torn * 0.35 - 0.25 * along
            heat = np.where(inside & (np.abs(over) < 1) & (body > 2.0), np.maximum(heat, value), heat)
    return heat * (0.6 + 0.4 * dying) * _side_fade()


def burst_heat(clip: Clip, time: float, seed: int) -> np.ndarray:
    """The end of the third attack: a dome of fire where the blade hits the ground."""
    x, y = np.broadcast_arrays(*pixel_grid())
    age = time - SLAM_AT
    if age < 0 or age > 7:
        return np.zeros_like(x)
    radius = 16 + 46 * (1 - (1 - min(age / 3.0, 1)) ** 2)
    cx, cy = 34.0, -2 - age * 3
    distance = np.hypot((x - cx) * 0.9, (y - cy) * 1.05) / radius
    hollow = np.clip((age - 1.5) / 3.5, 0, 1)  # burns out from the middle
    shell = 1.35 - np.abs(distance - 0.75 * hollow) * (1.0 + 0.4 * hollow)
    heat = shell - (1 - _tongues(time, seed)) * (0.85 + 0.35 * hollow) - np.clip((age - 2.4) / 3, 0, 1)
    # The remaining fire keeps burning along the ground.
    height = 10 * min(age, 2) * np.clip(1 - ((x - cx) / 46) ** 2, 0, 1) * np.clip(1.1 - age / 7, 0, 1)
    carpet = 1.15 + y / np.maximum(height, 0.5) * 0.9 - (1 - _tongues(time, seed + 9)) * 0.8
    heat = np.maximum(heat, np.where(height > 2, carpet, 0))
    return heat * _side_fade() * np.clip((y + FRAME_H - EDGE) / 8, 0, 1)


def ward_heat(clip: Clip, time: float, seed: int) -> np.ndarray:
    """A shield of fire in front of the held blade; it pulses twice in the clip."""
    x, y = np.broadcast_arrays(*pixel_grid())
    pulse = 0.5 - 0.5 * math.cos(time / clip.frames * 4 * math.pi)
    dx, dy = x + 6, (y + 22) * 0.88
    distance = np.hypot(dx, dy)
    angle = np.degrees(np.arctan2(-dy, dx))
    radius = 27.5 + 1.5 * pulse
    thick = 2.0 + 1.6 * pulse
    thickness = thick * np.clip(1 - (np.abs(angle - 5) / 68) ** 2, 0, 1)
    rim = np.clip(1 - np.abs(distance - radius) / np.maximum(thickness, 0.4), 0, 1)
    flicker = 0.12 * np.sin(np.radians(angle * 9) + time / clip.frames * 2 * math.pi * 3)
    heat = np.where(thickness > 0.5, rim * (0.75 + 0.5 * pulse + flicker), 0)
    glow = np.clip((radius - distance) / 9, 0, 1)
    inner = (distance < radius) & (np.abs(angle - 5) < 56) & (dx > 12)
    haze = np.where(inner, (0.10 + 0.16 * pulse) * (1 - glow) + 0.06 * pulse, 0)
    return np.maximum(heat, haze)


def charge_heat(clip: Clip, time: float, seed: int) -> np.ndarray:
    """Before the wave: a pillar of fire grows around the raised blade."""
    x, y = np.broadcast_arrays(*pixel_grid())
    if not 3.0 <= time < 6.0:
        return np.zeros_like(x)
    growth = (time - 1.0) / 4.0
    points = joints_of(clip.pose(time)).points
    (ax, ay), (bx, by) = points["blade"], points["tip"]
    dx, dy = bx - ax, by - ay
    along = np.clip(((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy), 0, 1)
    height = ay - by + 4 + 26 * growth
    share = np.clip((ay + 2 - y) / height, 0, 1)
    drop = np.sqrt(share) * (1 - share) * 2.6  # outline of a drop: round below, drawn out above
    sway = (_noise(y / 9 + time * 3.1, y * 0 + time, seed + 5) - 0.5) * 9 * share
    away = np.abs(x - (ax + along * dx) - sway)
    wide = (2.0 + 6.5 * growth) * drop
    heat = 1.3 - away / np.maximum(wide, 0.3) * 0.8 - share * 0.25 - (1 - _tongues(time, seed + 3)) * 0.35
    return np.where((share > 0) & (share < 1), heat, 0)


EFFECTS = {"wave": wave_heat, "burst": burst_heat, "ward": ward_heat}


def paint_dust(frame: np.ndarray, clip: Clip, number: int) -> None:
    """Puffs of dust: squares of 2 px that spread, rise and thin out over three frames."""
    for puff in clip.dust:
        age = (number - puff.frame) % clip.frames
        if age > 2:
            continue
        random = np.random.Generator(np.random.PCG64(puff.frame * 7 + age))
        for _ in range((4, 6, 3)[age]):
            px = math.floor(puff.x + puff.speed * age * 0.9 + random.uniform(-3 - 2 * age, 2 + age)) + ANCHOR_X
            py = FRAME_H - 2 - math.floor(random.uniform(0, 1 + 3 * age))
            if EDGE <= px < FRAME_W - EDGE:
                frame[py : py + 2, px : px + 2] = code("dust", LIGHT if age == 0 else MIDDLE if age == 1 else SHADE)


def paint_behind(frame: np.ndarray, clip: Clip, number: int, seed: int) -> None:
    """Paints what is behind the knight: dust, the far halves of rings and the large fields."""
    paint_dust(frame, clip, number)
    if clip.effect in ("wave", "burst"):
        lay(frame, fire_codes(EFFECTS[clip.effect](clip, float(number), seed), 0.3))
    if clip.effect == "wave":
        lay(frame, fire_codes(charge_heat(clip, float(number), seed), 0.3))
    for ring in clip.rings:
        if ring.frame == number:
            lay(frame, fire_codes(ring_heat(ring)[0]))
    for smear in clip.smears:
        if smear.frame == number and clip.pose(smear.end).behind > 0.5:
            lay(frame, fire_codes(smear_heat(clip, smear), 0.25))


def paint_before(frame: np.ndarray, clip: Clip, number: int, seed: int) -> None:
    """Paints what is in front of the knight: cuts, the near halves of rings and the ward."""
    for smear in clip.smears:
        if smear.frame == number and clip.pose(smear.end).behind <= 0.5:
            lay(frame, fire_codes(smear_heat(clip, smear), 0.25))
    for ring in clip.rings:
        if ring.frame == number:
            lay(frame, fire_codes(ring_heat(ring)[1]))
    if clip.effect == "ward":
        lay(frame, fire_codes(ward_heat(clip, float(number), seed), 0.6))


def loose_flames(particles: Particles, number: int) -> np.ndarray:
    pixels = blank()
    particles.draw(pixels, float(number))
    return pixels
