#!/usr/bin/env python3
"""Puts the pictures of a folder side by side into overview.png, at half their size, three to a row."""

import sys
from pathlib import Path

from PIL import Image

COLUMNS = 3
GAP = 8
BACKGROUND = (20, 24, 30)


def main(folder: Path) -> None:
    files = [path for path in sorted(folder.glob("*.png")) if path.name != "overview.png"]
    pictures = [Image.open(path).convert("RGB").reduce(2) for path in files]
    width, height = pictures[0].size
    rows = -(-len(pictures) // COLUMNS)
    sheet = Image.new("RGB", (COLUMNS * (width + GAP) + GAP, rows * (height + GAP) + GAP), BACKGROUND)
    for i, picture in enumerate(pictures):
        sheet.paste(picture, (GAP + i % COLUMNS * (width + GAP), GAP + i // COLUMNS * (height + GAP)))
    sheet.save(folder / "overview.png", optimize=True)


if __name__ == "__main__":
    main(Path(sys.argv[1]))
