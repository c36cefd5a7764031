"""Writes the assets that the example game Cinder Keep shares with the demonstration, knight and font, to the game's own
folder, so that the game is self-contained."""

from __future__ import annotations

import json
import shutil
import tempfile
from pathlib import Path

from PIL import Image

import knight_export
import knight_sheet
import ui_font

CLIPS = ("idle", "run", "j_up", "j_down", "air_atk", "roll", "1_atk", "sp_atk", "take_hit", "death")
SIDE = 1024  # px; of the sheet; trimmed frames are packed in rows


def make(out_dir: Path) -> None:
    with tempfile.TemporaryDirectory() as scratch_name:
        scratch = Path(scratch_name)
        for generator in (ui_font, knight_sheet, knight_export):
            generator.make(scratch)
        out_dir.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(next(scratch.rglob("EuroStyle*.ttf")), out_dir / "keep.ttf")
        pack(scratch, out_dir)


def pack(scratch: Path, out_dir: Path) -> None:
    """Packs the clips that the game uses, trimmed: the texture is a twelfth as large."""
    exported = json.loads((scratch / knight_export.PATH).read_text(encoding="utf-8"))
    source = Image.open(scratch / knight_export.SHEET).convert("RGBA")
    sheet, frames, tags = Image.new("RGBA", (SIDE, SIDE)), [], []
    x = y = tallest = 0
    for tag in exported["meta"]["frameTags"]:
        if tag["name"] not in CLIPS:
            continue
        tags.append(tag | {"from": len(frames), "to": len(frames) + tag["to"] - tag["from"]})
        for frame in exported["frames"][tag["from"] : tag["to"] + 1]:
            box = frame["frame"]
            if x + box["w"] > SIDE:
                x, y, tallest = 0, y + tallest + 1, 0
            sheet.paste(source.crop((box["x"], box["y"], box["x"] + box["w"], box["y"] + box["h"])), (x, y))
            frames.append(frame | {"frame": {"x": x, "y": y, "w": box["w"], "h": box["h"]}})
            x, tallest = x + box["w"] + 1, max(tallest, box["h"])
    height = y + tallest
    sheet.crop((0, 0, SIDE, height)).save(out_dir / "knight.png", format="PNG", compress_level=9)
    meta = exported["meta"] | {"image": "knight.png", "size": {"w": SIDE, "h": height}, "frameTags": tags}
    meta.pop("slices", None)
    lines = ",\n".join("  " + json.dumps(frame) for frame in frames)
    (out_dir / "knight.json").write_text(f'{{"frames": [\n{lines}\n],\n"meta": {json.dumps(meta, indent=1)}}}\n', encoding="utf-8", newline="\n")
