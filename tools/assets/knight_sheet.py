"""Assembles the knight's sprite sheet: one row of frames per clip."""

from __future__ import annotations

import math
import sys
from pathlib import Path

import numpy as np
from PIL import Image

from knight_fire import Particles, loose_flames, paint_before, paint_behind
from knight_motion import CLIPS, Clip
from knight_raster import (
    CODE_COLOURS, FRAME_H, FRAME_W, GLINT, LIGHT, MATERIALS, SHADE, Point, blank, code, lay,
)
from knight_rig import CAPE_LINK, CAPE_LINKS, PLUME_LINK, PLUME_LINKS, joints_of, paint, toe_of

COLUMNS = 28
PATH = "fireknight/sprites/fireknight_288x128.png"
STEPS = 6  # simulation steps of cape and plume per frame
PULL, DAMPING = 0.8, 0.68
SETTLE = 24  # simulated in advance: frames of a one-shot clip, passes of a loop


class Chain:
    """Cloth simulated as a chain of links that hangs from a joint and follows it with a lag."""

    def __init__(
        self, links: int, length: float, root: str, rest: tuple[Point, ...], stiff: float, weight: float
    ) -> None:
        self.length, self.root, self.rest, self.stiff, self.weight = length, root, rest, stiff, weight
        self.points: list[list[float]] = []
        self.past: list[list[float]] = []
        self.links = links

    def step(self, clip: Clip, time: float) -> None:
        pose = clip.pose(time)
        # The curled-up knight hides cape and plume, so the chains do not follow its rotation.
        joints = joints_of(pose.but(face=1.0, roll=0.0 if pose.ball else pose.roll))
        up, forward = joints.head_up, joints.head_forward
        if self.root == "cape":
            forward = joints.forward
            up = (forward[1], -forward[0])
        root = joints.points[self.root]
        if not self.points:
            self.points = [[root[0] - i, root[1] + i * self.length] for i in range(self.links + 1)]
            self.past = [point[:] for point in self.points]
        phase = 2 * math.pi * time / clip.frames * max(1, round(clip.frames / 4))
        self.points[0] = list(root)
        for i in range(1, self.links + 1):
            now, past = self.points[i], self.past[i]
            wave = math.sin(phase - i * 0.9) * clip.flutter
            speed = ((now[0] - past[0]) * DAMPING, (now[1] - past[1]) * DAMPING)
            self.past[i] = now[:]
            now[0] += speed[0] + (clip.wind[0] + wave * 0.5) / STEPS * PULL
            now[1] += speed[1] + (clip.wind[1] + wave * 0.7 + self.weight) / STEPS * PULL
            # Pull towards the rest shape, which is given in the joint's directions.
            back, rise = self.rest[min(i - 1, len(self.rest) - 1)]
            above = self.points[i - 1]
            target = (
                above[0] + (forward[0] * back + up[0] * rise) * self.length,
                above[1] + (forward[1] * back + up[1] * rise) * self.length,
            )
            now[0] += (target[0] - now[0]) * self.stiff
            now[1] += (target[1] - now[1]) * self.stiff
            if self.root == "cape":
                self._keep_behind(now, joints.points["hip"], joints.forward, 2.5 + 0.7 * i)
            dx, dy = now[0] - above[0], now[1] - above[1]
            distance = math.hypot(dx, dy) or 1e-6
            now[0] = above[0] + dx / distance * self.length
            now[1] = above[1] + dy / distance * self.length
            now[1] = min(now[1], -5.0)  # the hem stays off the ground

    @staticmethod
    def _keep_behind(point: list[float], hip: Point, forward: Point, gap: float) -> None:
        ahead = (point[0] - hip[0]) * forward[0] + (point[1] - hip[1]) * forward[1]
        if ahead > -gap:
            point[0] -= forward[0] * (ahead + gap)
            point[1] -= forward[1] * (ahead + gap)

    def run(self, clip: Clip) -> list[list[Point]]:
        """Shapes for all frames. A loop is simulated for several passes first, until the shapes repeat."""
        before = SETTLE * clip.frames if clip.loop else SETTLE
        shapes = []
        for step in range(-before * STEPS, clip.frames * STEPS):
            self.step(clip, step / STEPS)
            if step >= 0 and step % STEPS == 0:
                shapes.append([(x, y) for x, y in self.points])
        return shapes


def _cape() -> Chain:
    return Chain(CAPE_LINKS, CAPE_LINK, "cape", ((-0.5, -0.85), (-0.3, -0.95), (-0.15, -0.98)), 0.07, 2.2)


def _plume() -> Chain:
    rest = ((-0.55, 0.8), (-1.0, 0.1), (-0.85, -0.5), (-0.4, -0.9))
    return Chain(PLUME_LINKS, PLUME_LINK, "plume", rest, 0.42, 0.4)


def render_clip(clip: Clip, seed: int) -> list[np.ndarray]:
    particles = Particles(clip, seed)
    capes, plumes = _cape().run(clip), _plume().run(clip)
    frames = []
    for number in range(clip.frames):
        pose = clip.pose(number)
        frame = blank()
        paint_behind(frame, clip, number, seed)
        flames = loose_flames(particles, number)
        body = blank()
        cape, plume = ([(x * pose.face, y) for x, y in shapes[number]] for shapes in (capes, plumes))
        paint(body, pose, cape, plume)
        if number in clip.flash:
            body = _flashed(body, clip.flash[number])
        lay(frame, flames)
        lay(frame, body)
        front = blank()
        paint_before(front, clip, number, seed)
        lay(frame, front)
        frames.append(frame)
    return frames


def _flashed(body: np.ndarray, strength: int) -> np.ndarray:
    """The flash of a hit: the whole body in flame colours, then one tone lighter than normal."""
    table = np.zeros(256, np.uint8)
    for name in MATERIALS:
        for tone in range(5):
            if strength == 2:
                table[code(name, tone)] = code("fire", LIGHT if tone else SHADE)
            else:
                table[code(name, tone)] = code(name, min(tone + 1, GLINT) if tone else 0)
    return table[body]


GROUND = 25.0  # px that the ground moves per frame of the run
SLIDE = 3.0  # px that a standing foot may slide


def check_run() -> None:
    """Fails if a standing foot slides over the ground between two frames of the run."""
    run = next(clip for clip in CLIPS if clip.name == "run")
    steps = 0
    for foot in ("near", "far"):
        for frame in range(run.frames):
            toes = [toe_of(joints_of(run.pose(time)), foot) for time in (frame, frame + 1)]
            if min(y for _, y in toes) > -1:
                steps += 1
                slide = toes[1][0] - toes[0][0] + GROUND
                assert abs(slide) < SLIDE, f"the {foot} foot slides by {slide:.1f} px after frame {frame} of the run"
    assert steps == 2, f"{steps} steps in the run"


def make(out_dir: Path) -> None:
    check_run()
    sheet = np.zeros((len(CLIPS) * FRAME_H, COLUMNS * FRAME_W), np.uint8)
    for row, clip in enumerate(CLIPS):
        for column, frame in enumerate(render_clip(clip, 4100 + row)):
            sheet[row * FRAME_H:(row + 1) * FRAME_H, column * FRAME_W:(column + 1) * FRAME_W] = frame
    target = out_dir / PATH
    target.parent.mkdir(parents=True, exist_ok=True)
    Image.fromarray(CODE_COLOURS[sheet], "RGBA").save(target, optimize=True)


if __name__ == "__main__":
    make(Path(sys.argv[1]))
