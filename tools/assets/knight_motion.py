"""The knight's fourteen clips as tables of key poses, interpolated with easing.

Times are in frames of 100 ms. A key's ease is the easing of the motion towards it.
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
# Fields that switch at the key instead of being interpolated.
STEPPED = ("face", "behind", "ball")


@dataclass(frozen=True)
class Smear:
    """A smear frame: the blade's path drawn into one frame; `reach` stretches it beyond the tip."""

    frame: int
    start: float
    end: float
    reach: float = 1.25
    fade: float = 1.0  # below 1 for the remains in the next frame


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
    """Particles emitted from a position other than the blade."""

    start: float
    end: float
    x: float
    y: float
    spread: tuple[float, float]
    speed: tuple[float, float]  # minimum and maximum, pixels per frame
    angles: tuple[float, float]
    rate: int  # particles per quarter of a frame
    life: tuple[float, float] = (2.0, 5.0)


@dataclass(frozen=True)
class Dust:
    """A puff of dust kicked up from the ground, which then moves with the ground."""

    frame: int
    x: float
    speed: float = -25.0  # of the ground, pixels per frame


@dataclass(frozen=True)
class Clip:
    name: str
    frames: int
    keys: tuple[Key, ...]
    loop: bool = False
    grounded: bool = True  # the soles are on the lowest row in every frame
    wind: tuple[float, float] = (0.0, 0.0)  # on cape and plume, pixels per frame
    flutter: float = 0.25
    drift: tuple[float, float] = (0.0, 0.0)  # on flames, pixels per frame
    rate: float = 1.0  # flames from the blade
    smears: tuple[Smear, ...] = ()
    rings: tuple[Ring, ...] = ()
    sprays: tuple[Spray, ...] = ()
    dust: tuple[Dust, ...] = ()
    flash: dict[int, int] = field(default_factory=dict)  # frame -> 2: the whole body glows, 1: it fades
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
    """Makes feet that move along the ground take steps, one after the other, instead of sliding."""
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
    """The height of the hip from which both standing feet are within reach."""
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
# The ground moves 25 px per frame. A foot is on the ground for two frames: it lands flat in front of the body and leaves
# on its toes behind it, 25 px further back, so that the toes stay on one spot of the ground. Then both feet are in the
# air.
FOOT_PATH = (  # x, height, turn
    (8.4, 0.0, 0.0),  # contact
    (-13.8, -3.9, -70.0),  # push-off
    (-13.5, -8.5, -80.0),  # up
    (-8.0, -11.5, -66.0),
    (0.0, -10.5, -38.0),  # under the body while the other foot stands
    (8.0, -9.5, -8.0),
    (11.0, -6.5, 12.0),  # up
    (10.5, -3.0, 12.0),
)
FAR_SHIFT = (1.1, 2.2, 1.5, 1.0, 0.0, 0.0, 0.0, 0.5)  # the far hip is the one in front
RUN_HIP = ((0.8, -11.6), (-1.4, -12.4), (-0.8, -15.4), (0.2, -14.2))  # x, y


def _run_key(frame: int) -> Key:
    near, far = FOOT_PATH[frame % 8], FOOT_PATH[(frame + 4) % 8]
    swing = math.cos(math.radians(frame * 45))
    return (
        frame, "lin",
        Pose(
            hip_x=RUN_HIP[frame % 4][0], hip_y=RUN_HIP[frame % 4][1], lean=23, head=-11,
            near_x=near[0], near_y=near[1], near_turn=near[2],
            far_x=far[0] + FAR_SHIFT[(frame + 4) % 8], far_y=far[1], far_turn=far[2],
            hand_x=-6.0 - 1.5 * swing, hand_y=5.0 - 0.8 * abs(swing), sword=172 + 5 * swing,
            off_x=2.0 + 6.0 * swing, off_y=5.0 - 2.0 * max(swing, 0),
        ),
    )


RUN = tuple(_run_key(frame) for frame in range(9))

# --- in the air ---
RISE = Pose(
    hip_x=-1, hip_y=-17, lean=10, head=-12, near_x=-5, near_y=-3, near_turn=-40, far_x=5, far_y=-8, far_turn=-12,
    hand_x=-7, hand_y=3, sword=190, off_x=5, off_y=-5,
)
FALL = Pose(
    hip_x=0, hip_y=-17, lean=2, head=8, near_x=-9, near_y=-6, near_turn=-48, far_x=6, far_y=-6, far_turn=-8,
    hand_x=-7, hand_y=-3, sword=158, off_x=8, off_y=-4,
)
J_UP = (
    (0, "lin", RISE),
    (1, "io", RISE.but(near_y=-4, far_y=-9, hand_y=2.6, sword=188)),
    (2, "io", RISE.but(near_y=-3.5, near_turn=-46, hand_x=-7.3, sword=192)),
    (3, "io", RISE),
)
J_DOWN = (
    (0, "lin", FALL),
    (1, "io", FALL.but(near_x=-8, near_y=-7, far_y=-5, hand_y=-3.6, sword=155, off_y=-5.5)),
    (2, "io", FALL.but(near_y=-5, far_x=7, sword=160, off_y=-3)),
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
    (0, "lin", AIR_WIND.but(sword=158)),
    (1, "snap", AIR_CUT),
    (2, "out", AIR_CUT.but(hand_x=7, hand_y=4, sword=-44, lean=26)),
    (4, "out", AIR_CUT.but(hand_x=6, hand_y=4, sword=-52, lean=27)),
    (5, "out", AIR_CUT.but(hand_x=5, hand_y=4, sword=-46, lean=22)),
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
    (0, "lin", WIND_UP.but(sword=156)),
    (1, "snap", CUT),
    (2, "out", CUT_LOW),
    (3, "out", CUT_LOW.but(hip_x=4.6, sword=-40, lean=27, hand_x=6.5, hand_y=4.5)),
    (5, "out", CUT_LOW.but(sword=-36, lean=25)),
    (6, "io", CUT_LOW.but(hip_x=3, sword=-24, lean=19)),
    (8, "io", STAND.but(hip_x=1, hip_y=-13, far_x=6, hand_y=7, sword=10, lean=8)),
    (10, "io", STAND),
)
BACK_CUT = Pose(
    hip_x=1, hip_y=-14, lean=-8, head=-4, near_x=-7, far_x=8, hand_x=-3.5, hand_y=-9.5, sword=122, off_x=-5, off_y=5,
    reach=1.15,
)
ATK_2 = (
    (0, "lin", WIND_UP.but(hip_x=-1, sword=128)),
    (1, "out", WIND_UP.but(sword=160)),
    (2, "snap", CUT),
    (3, "out", CUT_LOW),
    (4, "out", CUT_LOW.but(sword=-38, lean=26)),
    (5, "lin", CUT_LOW.but(hip_x=3, hip_y=-11, hand_x=4, hand_y=5, sword=-84, lean=26, blade=0.5)),
    (6, "out", CUT_LOW.but(hip_x=2, hip_y=-10.5, hand_x=-6, hand_y=3, sword=-160, lean=29)),
    (7, "snap", BACK_CUT.but(sword=60, hand_x=7, hand_y=-5)),
    (8, "out", BACK_CUT),
    (9, "out", BACK_CUT.but(sword=128, lean=-11)),
    (11, "lin", BACK_CUT.but(sword=132, lean=-12)),
    (13, "io", BACK_CUT.but(sword=118, lean=-6, hip_y=-13.5)),
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
SLAM_AT = 12  # the frame of the third attack in which the blade hits the ground
ATK_3 = (
    (0, "lin", COIL.but(hip_y=-11.5, lean=14, sword=172)),
    (1, "out", COIL.but(hip_y=-10, sword=194)),
    (2, "in", SPIN),
    (3, "lin", SPIN.but(face=-1)),
    (4, "lin", SPIN.but(face=-1, blade=0.7)),
    (5, "lin", SPIN),
    (6, "lin", SPIN.but(blade=0.8)),
    (7, "lin", SPIN.but(face=-1)),
    (8, "lin", SPIN.but(hip_y=-12, lean=12)),
    (10, "out", RAISED),
    (11, "out", RAISED.but(sword=122, hip_y=-15, lean=-13)),
    (SLAM_AT, "snap", SLAM),
    (13, "out", SLAM.but(hip_y=-9, sword=-26)),
    (15, "out", SLAM.but(hip_y=-8.6, sword=-28, lean=35)),
    (19, "io", SLAM.but(hip_y=-9, sword=-24)),
    (23, "io", STAND.but(hip_y=-12, lean=14, hand_y=8, sword=0, far_x=6)),
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
# The lying knight is the standing one rotated by 90 degrees.
LYING = Pose(
    hip_x=-6, hip_y=-14, lean=0, head=0, near_x=-8, near_turn=-35, far_x=-5, far_turn=-50, hand_x=5.6, hand_y=-7.5,
    sword=91, off_x=4, off_y=6, heat=0.0, roll=90, pivot_x=-8, pivot_y=-8.0,
)
# Between kneeling and lying: half rotated, the free hand in front.
SINKING = LYING.but(
    hip_y=-8, lean=12, head=14, roll=52, near_x=-7, near_y=6, near_turn=-20, far_x=-3, far_y=6, far_turn=-30, off_x=6,
    off_y=2, hand_x=5, hand_y=-3, sword=48, heat=0.55, pivot_x=-7, pivot_y=-4,
)
DEATH = (
    (0, "lin", STRUCK),
    (1, "out", STRUCK.but(lean=-18, hand_y=6, sword=20)),
    (3, "in", KNEEL),
    (4, "out", KNEEL.but(hip_y=-8, lean=20, head=30)),
    (5, "lin", KNEEL.but(hip_y=-8, lean=26, head=36, heat=0.75)),
    (6, "in", KNEEL.but(hip_y=-7.4, lean=40, head=40, heat=0.65, off_x=7, off_y=6)),
    (7, "lin", SINKING),
    (8, "out", LYING.but(roll=84, heat=0.45)),
    (9, "out", LYING.but(heat=0.3)),
    (10, "lin", LYING),
    (12, "lin", LYING),
)

CLIPS: tuple[Clip, ...] = (
    Clip("idle", 8, IDLE, loop=True, wind=(-0.5, 0.0), flutter=0.5),
    Clip("run", 8, RUN, loop=True, grounded=False, wind=(-4.6, -1.0), flutter=1.0, drift=(-6.0, 0.0),
         dust=(Dust(1, -14), Dust(5, -14))),
    Clip("j_up", 3, J_UP, loop=True, grounded=False, wind=(-0.9, 2.8), flutter=0.5, drift=(-1.5, 5.0)),
    Clip("j_down", 3, J_DOWN, loop=True, grounded=False, wind=(-0.9, -4.4), flutter=0.9, drift=(-1.0, -4.0)),
    Clip("jump", 20, JUMP, grounded=False, wind=(-0.8, 0.0), flutter=0.4),
    Clip("air_atk", 8, AIR_ATK, grounded=False, wind=(-0.8, -2.4), flutter=0.5, drift=(0.0, -1.5), rate=1.4,
         smears=(Smear(1, 0.0, 1.0, 1.35), Smear(2, 0.15, 1.3, 1.35, 0.65))),
    Clip("roll", 8, ROLL, wind=(-1.0, 0.0), drift=(-6.0, 0.0), rate=0.6,
         sprays=(Spray(0.4, 6.6, -4, -10, (3, 8), (1, 3), (100, 170), 5, (1.5, 3.2)),)),
    Clip("1_atk", 11, ATK_1, rate=1.3, smears=(Smear(1, 0.0, 1.0, 1.4), Smear(2, 0.15, 1.3, 1.4, 0.65))),
    Clip("2_atk", 19, ATK_2, rate=1.4,
         smears=(Smear(2, 1.0, 2.0, 1.4), Smear(3, 1.15, 2.3, 1.4, 0.65),
                 Smear(7, 6.2, 7.0, 1.55), Smear(8, 6.6, 8.0, 1.5, 0.8))),
    Clip("3_atk", 28, ATK_3, rate=1.6, effect="burst",
         rings=(Ring(2, -17, 38, 100, 200), Ring(3, -17, 42, 0, 270), Ring(4, -17, 43, 90, 260),
                Ring(5, -17, 44, 180, 280), Ring(6, -17, 44, 270, 280), Ring(7, -17, 44, 360, 300, 0.9),
                Ring(8, -17, 44, 450, 260, 0.6)),
         smears=(Smear(SLAM_AT, SLAM_AT - 1.0, SLAM_AT, 1.5),),
         sprays=(Spray(SLAM_AT + 0.5, SLAM_AT + 2.5, 34, -3, (8, 2), (4, 13), (15, 165), 9, (2, 5)),)),
    Clip("sp_atk", 18, SP_ATK, rate=1.8, effect="wave",
         smears=(Smear(6, 5.0, 6.0, 1.3),),
         sprays=(Spray(8.0, 12.5, 0, -8, (124, 5), (4, 10), (60, 120), 7, (3, 6)),)),
    Clip("defend", 10, DEFEND, loop=True, rate=1.0, effect="ward"),
    Clip("take_hit", 6, TAKE_HIT, flash={0: 2, 1: 1}, rate=0.8,
         sprays=(Spray(0.0, 0.6, 4, -22, (2, 4), (3, 8), (-40, 80), 4, (1.5, 3)),)),
    Clip("death", 13, DEATH, flash={0: 2}, rate=1.0),
)
