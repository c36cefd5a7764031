"""The game's palette: 32 colours in ramps from dark to light.

Ramps shift towards blue-violet as they darken and towards yellow as they brighten. Neighbouring ramps
share colours on purpose, so that pictures drawn from different ramps match.
"""

from __future__ import annotations

Colour = tuple[int, int, int]

RAMP_HEX: dict[str, list[str]] = {
    "night": ["15121f", "20203a", "2f3560", "49588c"],
    "shade": ["1b192e", "383855"],  # between night and stone: walls need many dark tones close to each other
    "stone": ["2c2b45", "454a66", "68728a", "929fa8", "c4ccc0"],  # cold, blue-grey
    "torchlit": ["3b283c", "63454c", "94705a", "c59f72"],  # the same walls lit by fire
    "wood": ["3b283c", "54302f", "7d4b30", "aa6c34"],
    "iron": ["20203a", "454a66", "748aa3", "b3c9cf", "faf3d2"],
    "cloth": ["351a32", "77203f", "b4303c", "df5c48"],
    "gold": ["54302f", "aa6c34", "e0a33c", "f8d65f"],
    "moss": ["2c2b45", "3f5a3a", "6b8540", "a6b254"],
    "flame": ["b4303c", "ef7c33", "f8d65f", "faf3d2"],
    "skin": ["63454c", "94705a", "c59f72", "f3cda0"],
}


def from_hex(text: str) -> Colour:
    """Parses rrggbb."""
    return int(text[0:2], 16), int(text[2:4], 16), int(text[4:6], 16)


RAMPS: dict[str, list[Colour]] = {
    name: [from_hex(step) for step in steps] for name, steps in RAMP_HEX.items()
}
COLOURS: list[Colour] = list(dict.fromkeys(step for ramp in RAMPS.values() for step in ramp))


def colour(name: str) -> Colour:
    """Looks up a colour by ramp and step, as in "stone.2"; step 0 is the darkest."""
    ramp, step = name.split(".")
    return RAMPS[ramp][int(step)]
