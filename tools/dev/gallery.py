#!/usr/bin/env python3
"""Converts a folder of BMP pictures to docs/gallery: a PNG of each, overview.png with all of them at half size, three
per row, and animations of the pictures named play-* and keep-*."""

import sys
from pathlib import Path

from PIL import Image

COLUMNS = 3
GAP = 8
BACKGROUND = (20, 24, 30)
ANIMATIONS = {"play": ("play.webp", 50), "keep": ("cinder-keep.webp", 100)}  # ms per frame
LARGEST = 3_000_000  # bytes; limits download time


def overview(pictures: list[Image.Image]) -> Image.Image:
    small = [picture.reduce(2) for picture in pictures]
    width, height = small[0].size
    rows = -(-len(small) // COLUMNS)
    sheet = Image.new("RGB", (COLUMNS * (width + GAP) + GAP, rows * (height + GAP) + GAP), BACKGROUND)
    for i, picture in enumerate(small):
        sheet.paste(picture, (GAP + i % COLUMNS * (width + GAP), GAP + i // COLUMNS * (height + GAP)))
    return sheet


def main(source: Path, target: Path) -> None:
    target.mkdir(parents=True, exist_ok=True)
    for old in [*target.glob("*.png"), *target.glob("*.webp")]:
        old.unlink()
    pictures = []
    for path in sorted(source.glob("*.bmp")):
        if path.stem.split("-")[0] in ANIMATIONS and path.stem[-1].isdigit():
            continue
        pictures.append(Image.open(path).convert("RGB"))
        pictures[-1].save(target / f"{path.stem}.png", optimize=True)
    overview(pictures).save(target / "overview.png", optimize=True)

    for name, (file, frame_ms) in ANIMATIONS.items():
        frames = [Image.open(path).convert("RGB") for path in sorted(source.glob(f"{name}-*.bmp"))]
        animation = target / file
        frames[0].save(
            animation, save_all=True, append_images=frames[1:], duration=frame_ms, loop=0, lossless=True, quality=80,
            method=4,
        )
        size = animation.stat().st_size
        print(f"{animation.name}: {len(frames)} frames, {size} bytes")
        if size > LARGEST:
            sys.exit(f"{animation} is larger than {LARGEST} bytes")
    print(f"{len(pictures)} pictures")


if __name__ == "__main__":
    main(Path(sys.argv[1]), Path(sys.argv[2]))
