"""Writes the knight's sheet in a sprite editor's export format: a JSON file beside the image, with trimmed frames."""

from __future__ import annotations

import json
import sys
from pathlib import Path

from PIL import Image

from knight_motion import CLIPS
from knight_raster import FRAME_H, FRAME_W

SHEET = "fireknight/sprites/fireknight_288x128.png"
PATH = "fireknight/sprites/fireknight.json"
FRAME_MS = 100


def frame(sheet: Image.Image, row: int, column: int) -> dict:
    """One cell of the sheet, trimmed; an empty cell keeps one pixel."""
    left, top = column * FRAME_W, row * FRAME_H
    cell = sheet.crop((left, top, left + FRAME_W, top + FRAME_H))
    x0, y0, x1, y1 = cell.getchannel("A").getbbox() or (0, 0, 1, 1)
    return {
        "filename": f"{CLIPS[row].name} {column}",
        "frame": {"x": left + x0, "y": top + y0, "w": x1 - x0, "h": y1 - y0},
        "rotated": False,
        "trimmed": True,
        "spriteSourceSize": {"x": x0, "y": y0, "w": x1 - x0, "h": y1 - y0},
        "sourceSize": {"w": FRAME_W, "h": FRAME_H},
        "duration": FRAME_MS,
    }


def make(out_dir: Path) -> None:
    """Reads the sheet below out_dir, which must be generated first."""
    sheet = Image.open(out_dir / SHEET).convert("RGBA")
    frames, tags = [], []
    for row, clip in enumerate(CLIPS):
        tag = {"name": clip.name, "from": len(frames), "to": len(frames) + clip.frames - 1, "direction": "forward"}
        tags.append(tag if clip.loop else tag | {"repeat": "1"})
        frames += [frame(sheet, row, column) for column in range(clip.frames)]
    feet = {"x": 0, "y": 0, "w": FRAME_W, "h": FRAME_H}
    meta = {
        "image": Path(SHEET).name,
        "format": "RGBA8888",
        "size": {"w": sheet.width, "h": sheet.height},
        "scale": "1",
        "frameTags": tags,
        "slices": [{"name": "feet", "keys": [
            {"frame": 0, "bounds": feet, "pivot": {"x": FRAME_W // 2, "y": FRAME_H}}]}],
    }
    lines = ",\n".join("  " + json.dumps(entry) for entry in frames)
    tail = json.dumps(meta, indent=1)
    (out_dir / PATH).write_text(f'{{"frames": [\n{lines}\n],\n"meta": {tail}}}\n', encoding="utf-8", newline="\n")


if __name__ == "__main__":
    make(Path(sys.argv[1]))
