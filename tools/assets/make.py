"""Runs every generator and writes its files: assets, icons, and the assets of the example game."""

from __future__ import annotations

import shutil
import sys
import tempfile
from pathlib import Path

import castle_tilemap
import icon
import keep_levels
import keep_music
import keep_shared
import keep_sprites
import knight_export
import knight_sheet
import music
import sound_effects
import text_mode_font
import textures
import ui_font

GENERATORS = (ui_font, text_mode_font, textures, music, sound_effects, castle_tilemap, knight_sheet, knight_export)
KEEP_GENERATORS = (keep_shared, keep_sprites, keep_levels, keep_music)
PROJECT = Path(__file__).resolve().parents[2]


def generate(generators: tuple, out_dir: Path) -> None:
    """Generates into a temporary folder first, so that a failing generator does not change existing files."""
    with tempfile.TemporaryDirectory() as scratch_name:
        scratch = Path(scratch_name)
        for generator in generators:
            generator.make(scratch)
        for source in sorted(path for path in scratch.rglob("*") if path.is_file()):
            relative = source.relative_to(scratch)
            target = out_dir / relative
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, target)
            print(relative.as_posix())


if __name__ == "__main__":
    out = Path(sys.argv[1]) if len(sys.argv) > 1 else None
    generate(GENERATORS, out or PROJECT / "assets")
    generate((icon,), out / "icons" if out else PROJECT / "packaging/icons")
    generate(KEEP_GENERATORS, out / "cinder-keep" if out else PROJECT / "examples/cinder-keep/assets")
