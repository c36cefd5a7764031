"""The knight's fourteen clips as tables of key poses, eased in between.

Times are frames of 100 ms. A key's ease says how the motion arrives at it.
"""

from __future__ import annotations

import math
from dataclasses import dataclass, field, fields

from knight_rig import ANKLE, BALL_Y, FAR_HIP, NEAR_HIP, SHIN, THIGH, Pose

Key = tuple[float, str, Pose]

EASES = {
    "lin": lambda t: t,
    "in": lambda t: t * t,
    "out": lambda t: 1 - (1 - t) ** 2,
    "io": lambda t: t * t * (3 - 2 * t),
    "snap": lambda t: 1 - (1 - t) ** 3,
}
# These switch at the key instead of passing through the values in between.
STEPPED = ("face", "behind", "ball")


@dataclass(frozen=True)
class Smear:
    """The blade's path drawn into one frame; `reach` stretches it beyond the tip."""

    frame: int
    start: float
    end: float
    reach: float = 1.25
    fade: float = 1.0  # below 1 for what is left of it a frame later


@dataclass(frozen=True)
class Ring:
    """A flat ring of fire around the body, seen from the side: the trace of a spin."""

    frame: int
    y: float
    radius: float
    start: float  # degrees; 0 is to the right, 90 towards the viewer
    sweep: float
    fade: float = 1.0


@dataclass(frozen=True)
class Spray:
    """Particles thrown from a place that belongs to no blade."""

    start: float
    end: float
    x: float
    y: float
    spread: tuple[float, float]
    speed: tuple[float, float]  # least and most, pixels a frame
    angles: tuple[float, float]
    rate: int  # particles a quarter of a frame
    life: tuple[float, float] = (2.0, 5.0)


@dataclass(frozen=True)
class Clip:
    name: str
    frames: int
    keys: tuple[Key, ...]
    loop: bool = False
    grounded: bool = True  # the soles stand on the lowest row in every frame
    wind: tuple[float, float] = (0.0, 0.0)  # on cape and plume, pixels a frame
    flutter: float = 0.25
    drift: tuple[float, float] = (0.0, 0.0)  # on flames, pixels a frame
    rate: float = 1.0  # flames from the blade
    smears: tuple[Smear, ...] = ()
    rings: tuple[Ring, ...] = ()
    sprays: tuple[Spray, ...] = ()
    flash: dict[int, int] = field(default_factory=dict)  # frame -> 2 whole body glows, 1 it fades
    effect: str = ""  # a field of fire drawn by its own function

    def pose(self, time: float) -> Pose:
        """The pose at any time; a loop wraps around, a one-shot clip holds its ends."""
        time = time % self.frames if self.loop else min(max(time, 0.0), self.frames - 1.0)
        before = self.keys[0]
        for after in self.keys:
            if after[0] >= time:
                break
            before = after
        else:
            pose = before[2]
            return pose.but(hip_y=_lowered_hip(pose)) if self.grounded and not pose.roll else pose
        if after[0] <= before[0]:
            return after[2]
        part = EASES[after[1]]((time - before[0]) / (after[0] - before[0]))
        values = {}
        for entry in fields(Pose):
            a, b = getattr(before[2], entry.name), getattr(after[2], entry.name)
            if entry.name in STEPPED:
                values[entry.name] = b if time >= after[0] else a
            else:
                values[entry.name] = a + (b - a) * part
        if self.grounded:
            _step(values, before[2], after[2], part)
        pose = Pose(**values)
        return pose.but(hip_y=_lowered_hip(pose)) if self.grounded and not pose.roll else pose


def _step(values: dict[str, float], before: Pose, after: Pose, part: float) -> None:
    """Feet that change their place on the ground take steps instead of sliding, one after the other."""
    moving = []
    for foot in ("near", "far"):
        way = getattr(after, foot + "_x") - getattr(before, foot + "_x")
        if abs(way) > 1.2 and getattr(after, foot + "_y") == getattr(before, foot + "_y") == 0:
            moving.append((foot, way))
    for i, (foot, way) in enumerate(moving):
        share = min(max(part * len(moving) - i, 0.0), 1.0)
        values[foot + "_x"] = getattr(before, foot + "_x") + way * share
        values[foot + "_y"] = -min(2.0, abs(way) * 0.6) * math.sin(math.pi * share)


def _lowered_hip(pose: Pose) -> float:
    """The hip at the height from which both standing feet are within reach."""
    height = pose.hip_y
    c, s = math.cos(math.radians(pose.lean)), math.sin(math.radians(pose.lean))
    for offset, x, y in ((NEAR_HIP, pose.near_x, pose.near_y), (FAR_HIP, pose.far_x, pose.far_y)):
        if y > -0.1:
            across = pose.hip_x + offset * c - x
            down = math.sqrt(max((THIGH + SHIN - 0.1) ** 2 - across * across, 0.0))
            height = max(height, -ANKLE - down - offset * s)
    return height


STAND = Pose()

# --- idle ---
IDLE = (
    (0, "lin", STAND),
    (2, "io", STAND.but(breath=0.4, hand_y=5.8, sword=49)),
    (4, "io", STAND.but(breath=-0.6, sword=45, hand_y=6.2)),
    (6, "io", STAND.but(breath=-0.6, sword=46, hand_y=6.2)),
    (8, "io", STAND),
)

# --- run: one foot's path under the hip, the other foot half a clip later ---
FOOT_PATH = (  # x, height, turn
    (9.5, 0.0, 18.0),  # contact
    (5.0, 0.0, 0.0),  # down
    (-1.0, 0.0, 0.0),  # pass
    (-7.0, -1.0, -32.0),  # push
    (-11.0, -5.0, -62.0),  # off the ground
    (-7.0, -8.0, -58.0),
    (2.0, -7.0, -20.0),
    (9.0, -4.0, 10.0),
)
RUN_HIP = (-13.0, -12.4, -13.6, -15.0)


def _run_key(frame: int) -> Key:
    near, far = FOOT_PATH[frame % 8], FOOT_PATH[(frame + 4) % 8]
    swing = math.cos(math.radians(frame * 45))
    return (
        frame, "lin",
        Pose(
            hip_x=-1.0, hip_y=RUN_HIP[frame % 4], lean=17, head=-6,
            near_x=near[0], near_y=near[1], near_turn=near[2],
            far_x=far[0], far_y=far[1], far_turn=far[2],
            hand_x=-6.0 - 1.5 * swing, hand_y=5.0 - 0.8 * abs(swing), sword=172 + 5 * swing,
            off_x=2.0 + 6.0 * swing, off_y=5.0 - 2.0 * max(swing, 0),
        ),
    )


RUN = tuple(_run_key(frame) for frame in range(9))

# --- in the air ---
RISE = Pose(
    hip_x=-1, hip_y=-17, lean=10, head=-12, near_x=-5, near_y=-3, near_turn=-40, far_x=5, far_y=-8, far_turn=-12,
    hand_x=-6, hand_y=6, sword=212, off_x=5, off_y=-5,
)
FALL = Pose(
    hip_x=0, hip_y=-17, lean=2, head=8, near_x=-9, near_y=-6, near_turn=-48, far_x=6, far_y=-6, far_turn=-8,
    hand_x=-4, hand_y=-8, sword=136, off_x=8, off_y=-4,
)
J_UP = (
    (0, "lin", RISE),
    (1, "io", RISE.but(near_y=-4, far_y=-9, hand_y=5.4, sword=208)),
    (2, "io", RISE.but(near_y=-3.5, near_turn=-46, hand_x=-6.5, sword=215)),
    (3, "io", RISE),
)
J_DOWN = (
    (0, "lin", FALL),
    (1, "io", FALL.but(near_x=-8, near_y=-7, far_y=-5, hand_y=-8.6, sword=132, off_y=-5.5)),
    (2, "io", FALL.but(near_y=-5, far_x=7, sword=139, off_y=-3)),
    (3, "io", FALL),
)
CROUCH = Pose(
    hip_x=-2, hip_y=-9.5, lean=26, head=-14, near_x=-5, far_x=5, hand_x=-6, hand_y=6, sword=190, off_x=-2, off_y=8,
)
LAUNCH = Pose(
    hip_x=1, hip_y=-18, lean=14, head=-16, near_x=-5, near_y=-2, near_turn=-55, far_x=-1, far_y=-3, far_turn=-50,
    hand_x=-5, hand_y=7, sword=222, off_x=5, off_y=-8,
)
APEX = Pose(
    hip_x=0, hip_y=-18, lean=6, near_x=-3, near_y=-7, near_turn=-30, far_x=5, far_y=-9, far_turn=-8,
    hand_x=-7, hand_y=0, sword=165, off_x=8, off_y=-1,
)
LAND = Pose(
    hip_x=-1, hip_y=-9, lean=24, head=0, near_x=-6, far_x=6, hand_x=2, hand_y=8, sword=8, off_x=4, off_y=8,
)
JUMP = (
    (0, "lin", STAND),
    (2, "out", CROUCH),
    (3, "lin", CROUCH.but(hip_y=-9)),
    (4, "snap", LAUNCH),
    (6, "out", RISE),
    (8, "io", RISE.but(near_y=-5, far_y=-9)),
    (10, "io", APEX),
    (11, "lin", APEX.but(hand_y=-2, sword=158)),
    (13, "io", FALL),
    (15, "lin", FALL.but(near_y=-2, far_y=-1, sword=128, far_turn=0, near_turn=-8)),
    (16, "snap", LAND),
    (17, "out", LAND.but(hip_y=-8.5, sword=0)),
    (19, "io", STAND),
)
AIR_WIND = FALL.but(
    hip_y=-18, lean=-14, head=6, near_x=-6, near_y=-5, near_turn=-40, far_x=4, far_y=-8, far_turn=-10,
    hand_x=-6, hand_y=-7, sword=150, off_x=7, off_y=-4, behind=1,
)
AIR_CUT = FALL.but(
    hip_y=-18, lean=22, head=-4, near_x=-9, near_y=-8, near_turn=-55, far_x=4, far_y=-8, far_turn=-25,
    hand_x=8, hand_y=2, sword=-30, off_x=-6, off_y=3,
)
AIR_ATK = (
    (0, "lin", FALL.but(hand_x=-5, sword=140)),
    (1, "out", AIR_WIND),
    (2, "lin", AIR_WIND.but(sword=158)),
    (3, "snap", AIR_CUT),
    (4, "out", AIR_CUT.but(hand_x=7, hand_y=4, sword=-44, lean=26)),
    (5, "out", AIR_CUT.but(hand_x=6, hand_y=4, sword=-46, lean=24)),
    (7, "io", FALL.but(hand_x=4, hand_y=4, sword=20, lean=2)),
)

# --- roll: one ball about its own centre, two turns ---
BALL = Pose(
    hip_x=-4, hip_y=-8, lean=62, sword=180, blade=0.0, pivot_y=BALL_Y, ball=1,
)
DIVE = CROUCH.but(
    hip_x=-2, hip_y=-10, lean=58, head=20, near_x=-8, near_turn=-35, near_y=-1, far_x=3, hand_x=2, hand_y=7,
    off_x=5, off_y=6, sword=200, blade=0.5, pivot_y=BALL_Y,
)
ROLL = (
    (0, "lin", DIVE),
    (1, "lin", BALL.but(roll=75)),
    (6, "lin", BALL.but(roll=630)),
    (7, "lin", CROUCH.but(roll=720, pivot_y=BALL_Y, blade=0.8, sword=170, lean=34)),
)

# --- ground attacks ---
WIND_UP = Pose(
    hip_x=-3, hip_y=-12.5, lean=-10, head=6, near_x=-6, far_x=4, hand_x=-6, hand_y=-5, sword=148, off_x=7, off_y=1,
    behind=1,
)
CUT = Pose(
    hip_x=4, hip_y=-11.5, lean=20, head=-8, near_x=-7, near_turn=-14, near_y=0, far_x=10, hand_x=9, hand_y=3, sword=-24,
    off_x=-6, off_y=3,
)
CUT_LOW = CUT.but(hand_x=8, hand_y=3.5, sword=-30, lean=24)
ATK_1 = (
    (0, "lin", STAND.but(hand_x=5, hand_y=3, sword=72, lean=0)),
    (1, "out", WIND_UP.but(hip_x=-2)),
    (2, "out", WIND_UP.but(sword=158)),
    (3, "snap", CUT),
    (4, "out", CUT_LOW),
    (5, "out", CUT_LOW.but(sword=-32)),
    (6, "out", CUT_LOW.but(sword=-30)),
    (8, "io", STAND.but(hip_x=1, hip_y=-13, far_x=6, hand_y=7, sword=10, lean=8)),
    (10, "io", STAND),
)
BACK_CUT = Pose(
    hip_x=1, hip_y=-14, lean=-8, head=-4, near_x=-7, far_x=8, hand_x=-3.5, hand_y=-9.5, sword=122, off_x=-5, off_y=5,
    reach=1.15,
)
ATK_2 = (
    (0, "lin", STAND.but(hand_x=5, hand_y=2, sword=74, lean=0)),
    (2, "out", WIND_UP),
    (3, "lin", WIND_UP.but(sword=160)),
    (4, "snap", CUT),
    (5, "out", CUT_LOW),
    (6, "lin", CUT_LOW.but(hip_x=3, hip_y=-11, hand_x=4, hand_y=5, sword=-80, lean=26, blade=0.5)),
    (7, "out", CUT_LOW.but(hip_x=2, hip_y=-10.5, hand_x=-6, hand_y=3, sword=-156, lean=28)),
    (8, "lin", CUT_LOW.but(hip_x=2, hip_y=-10, hand_x=-7, hand_y=2.5, sword=-166, lean=30)),
    (9, "snap", BACK_CUT.but(sword=60, hand_x=7, hand_y=-5)),
    (10, "out", BACK_CUT),
    (11, "out", BACK_CUT.but(sword=128, lean=-10)),
    (13, "lin", BACK_CUT.but(sword=130, lean=-10)),
    (15, "io", STAND.but(hand_x=4, hand_y=2, sword=80, far_x=6)),
    (18, "io", STAND),
)
COIL = Pose(
    hip_x=-2, hip_y=-10.5, lean=22, head=-8, near_x=-7, far_x=6, hand_x=-7, hand_y=4, sword=186, off_x=-3, off_y=6,
)
SPIN = Pose(hip_x=0, hip_y=-13, lean=6, near_x=-4, far_x=4, hand_x=9, hand_y=3, sword=0, off_x=-6, off_y=2)
RAISED = Pose(
    hip_x=-2, hip_y=-14.5, lean=-10, head=-4, near_x=-6, far_x=5, hand_x=1.5, hand_y=-13, sword=108, grip=1,
    reach=1.35,
)
SLAM = Pose(
    hip_x=3, hip_y=-9.5, lean=32, head=-10, near_x=-7, near_turn=0, far_x=9, hand_x=7, hand_y=6, sword=-22, grip=1,
)
ATK_3 = (
    (0, "lin", STAND),
    (2, "out", COIL),
    (4, "lin", COIL.but(hip_y=-10, sword=194)),
    (5, "in", SPIN),
    (6, "lin", SPIN.but(face=-1)),
    (7, "lin", SPIN.but(face=-1, blade=0.7)),
    (8, "lin", SPIN),
    (9, "lin", SPIN.but(blade=0.8)),
    (10, "lin", SPIN.but(face=-1)),
    (11, "lin", SPIN.but(hip_y=-12, lean=12)),
    (13, "out", RAISED),
    (15, "out", RAISED.but(sword=122, hip_y=-15, lean=-13)),
    (16, "snap", SLAM),
    (17, "out", SLAM.but(hip_y=-9, sword=-26)),
    (21, "lin", SLAM.but(hip_y=-9, sword=-24)),
    (24, "io", STAND.but(hip_y=-12, lean=14, hand_y=8, sword=0, far_x=6)),
    (27, "io", STAND),
)
INVOKE = Pose(
    hip_x=-1, hip_y=-14.5, lean=-4, head=-10, near_x=-6, far_x=5, hand_x=3, hand_y=-13, sword=92, grip=1,
    reach=1.35,
)
PLANT = Pose(
    hip_x=2, hip_y=-9.5, lean=26, head=4, near_x=-6, near_turn=0, far_x=7, hand_x=8, hand_y=2, sword=-72, grip=1,
    blade=0.75,
)
SP_ATK = (
    (0, "lin", STAND.but(hip_y=-13, lean=8, hand_x=3, hand_y=5, sword=70)),
    (1, "out", STAND.but(hip_y=-11, lean=14, hand_x=2, hand_y=5, sword=80, grip=1)),
    (3, "out", INVOKE),
    (5, "lin", INVOKE.but(hip_y=-15, sword=96, lean=-8)),
    (6, "snap", PLANT),
    (7, "out", PLANT.but(hip_y=-9)),
    (13, "lin", PLANT.but(hip_y=-9.4)),
    (15, "io", STAND.but(hip_y=-12, lean=10, hand_x=5, hand_y=7, sword=0, grip=0.5)),
    (17, "io", STAND),
)

# --- the rest ---
WARD = Pose(
    hip_x=-3, hip_y=-11.5, lean=6, head=4, near_x=-7, far_x=4, hand_x=9, hand_y=4, sword=76, grip=1,
)
DEFEND = (
    (0, "lin", WARD),
    (5, "io", WARD.but(hip_y=-12, hand_y=3.5, sword=74)),
    (10, "io", WARD),
)
STRUCK = Pose(
    hip_x=-4, hip_y=-12.5, lean=-24, head=-22, near_x=-8, far_x=4, far_turn=22, hand_x=7, hand_y=3, sword=64,
    off_x=7, off_y=-4,
)
TAKE_HIT = (
    (0, "lin", STRUCK.but(hip_x=-2, lean=-14)),
    (1, "out", STRUCK),
    (2, "out", STRUCK.but(hip_y=-12, lean=-20)),
    (4, "io", STAND.but(hip_x=-2, hip_y=-11.5, lean=18, head=14, hand_y=7, sword=22, near_x=-6)),
    (5, "io", STAND.but(hip_y=-13, lean=10, sword=34, near_x=-5)),
)
KNEEL = Pose(
    hip_x=-2, hip_y=-8.5, lean=12, head=20, near_x=-9, near_y=-0.5, near_turn=-50, far_x=5, hand_x=8, hand_y=4,
    sword=-82, blade=0.5, off_x=4, off_y=7, heat=0.9,
)
# The lying knight is the standing one turned by a quarter.
LYING = Pose(
    hip_x=-6, hip_y=-14, lean=0, head=0, near_x=-8, near_turn=-35, far_x=-5, far_turn=-50, hand_x=5.6, hand_y=-7.5,
    sword=91, off_x=4, off_y=6, heat=0.0, roll=90, pivot_x=-8, pivot_y=-8.0,
)
DEATH = (
    (0, "lin", STRUCK),
    (1, "out", STRUCK.but(lean=-18, hand_y=6, sword=20)),
    (3, "in", KNEEL),
    (4, "out", KNEEL.but(hip_y=-8, lean=20, head=30)),
    (6, "lin", KNEEL.but(hip_y=-8, lean=26, head=36, heat=0.7)),
    (8, "lin", LYING.but(heat=0.55)),
    (9, "out", LYING.but(heat=0.3)),
    (10, "lin", LYING),
    (12, "lin", LYING),
)

CLIPS: tuple[Clip, ...] = (
    Clip("idle", 8, IDLE, loop=True, wind=(-0.5, 0.0), flutter=0.5),
    Clip("run", 8, RUN, loop=True, grounded=False, wind=(-4.6, -1.0), flutter=1.0, drift=(-6.0, 0.0)),
    Clip("j_up", 3, J_UP, loop=True, grounded=False, wind=(-0.9, 1.6), flutter=0.5, drift=(-1.5, 4.0)),
    Clip("j_down", 3, J_DOWN, loop=True, grounded=False, wind=(-0.9, -3.2), flutter=0.9, drift=(-1.0, -3.0)),
    Clip("jump", 20, JUMP, grounded=False, wind=(-0.8, 0.0), flutter=0.4),
    Clip("air_atk", 8, AIR_ATK, grounded=False, wind=(-0.8, -2.4), flutter=0.5, drift=(0.0, -1.5), rate=1.4,
         smears=(Smear(3, 2.0, 3.0, 1.35), Smear(4, 2.15, 3.3, 1.35, 0.65))),
    Clip("roll", 8, ROLL, wind=(-1.0, 0.0), drift=(-6.0, 0.0), rate=0.6,
         sprays=(Spray(0.4, 6.6, -4, -10, (3, 8), (1, 3), (100, 170), 5, (1.5, 3.2)),)),
    Clip("1_atk", 11, ATK_1, rate=1.3, smears=(Smear(3, 2.0, 3.0, 1.4), Smear(4, 2.15, 3.3, 1.4, 0.65))),
    Clip("2_atk", 19, ATK_2, rate=1.4,
         smears=(Smear(4, 3.0, 4.0, 1.4), Smear(5, 3.15, 4.3, 1.4, 0.65),
                 Smear(9, 8.2, 9.0, 1.55), Smear(10, 8.6, 10.0, 1.5, 0.8))),
    Clip("3_atk", 28, ATK_3, rate=1.6, effect="burst",
         rings=(Ring(5, -17, 34, 100, 180, 0.8), Ring(6, -17, 38, 0, 250), Ring(7, -17, 40, 90, 260),
                Ring(8, -17, 42, 180, 280), Ring(9, -17, 43, 270, 280), Ring(10, -17, 44, 360, 300),
                Ring(11, -17, 44, 450, 260, 0.6)),
         smears=(Smear(16, 15.0, 16.0, 1.5),),
         sprays=(Spray(16.5, 18.5, 34, -3, (8, 2), (4, 13), (15, 165), 9, (2, 5)),)),
    Clip("sp_atk", 18, SP_ATK, rate=1.8, effect="wave",
         smears=(Smear(6, 5.0, 6.0, 1.3),),
         sprays=(Spray(8.0, 12.5, 0, -8, (124, 5), (4, 10), (60, 120), 7, (3, 6)),)),
    Clip("defend", 10, DEFEND, loop=True, rate=1.0, effect="ward"),
    Clip("take_hit", 6, TAKE_HIT, flash={0: 2, 1: 1}, rate=0.8,
         sprays=(Spray(0.0, 0.6, 4, -22, (2, 4), (3, 8), (-40, 80), 4, (1.5, 3)),)),
    Clip("death", 13, DEATH, flash={0: 2}, rate=1.0),
)
