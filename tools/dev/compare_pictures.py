#!/usr/bin/env python3
"""Compares pictures with the stored ones of the same names: compare_pictures.py STORED SHOWN SHARE [NAME=SHARE ...]

As in the tests, differences of up to 48 of 255 per channel are tolerated, because font rasterisers differ. SHARE
thousandths of the pixels may differ by more; NAME=SHARE sets the limit of one picture."""

import sys
from pathlib import Path

import numpy as np
from PIL import Image

STEP = 48


def pixels(path: Path) -> np.ndarray:
    return np.asarray(Image.open(path).convert("RGB"), np.int16)


def main() -> None:
    stored, shown = Path(sys.argv[1]), Path(sys.argv[2])
    named = dict(word.split("=") for word in sys.argv[4:])
    pictures, failed = sorted(shown.glob("*.png")), 0
    for path in pictures:
        actual, expected = pixels(path), pixels(stored / path.name)
        if actual.shape != expected.shape:
            print(f"{path.name}: size {actual.shape}, expected {expected.shape}")
            failed += 1
            continue
        difference = np.abs(actual - expected).max(axis=2)
        beyond = float((difference > STEP).mean())
        failed += beyond > float(named.get(path.stem, sys.argv[3])) / 1000
        print(f"{path.name}: {(difference > 0).mean():.4%} of the pixels differ, {beyond:.4%} by more than {STEP}")
    sys.exit(1 if failed or not pictures else 0)


if __name__ == "__main__":
    main()
