"""Generates the three music loops of the example game Cinder Keep, with the voices of music.py."""

from __future__ import annotations

from dataclasses import dataclass
from pathlib import Path

import numpy as np

import music
from sound_kit import RATE, decibels, high_pass, low_pass, seconds, write_ogg

OGG_QUALITY = 1.0
PEAK_DB = -6.0

CHORDS = {  # bass, then the notes of the arpeggio, ascending
    "Em": (40, (52, 59, 64, 67)), "C": (36, (55, 60, 64, 67)), "G": (43, (55, 59, 62, 67)), "D": (38, (54, 57, 62, 66)),
    "Am": (45, (57, 60, 64, 69)), "B": (47, (54, 59, 63, 66)), "Bm": (47, (54, 59, 62, 66)), "F": (41, (53, 57, 60, 65)),
    "Dm": (38, (53, 57, 62, 65)), "E": (40, (52, 56, 59, 64)),
}


@dataclass(frozen=True)
class Piece:
    beats_a_minute: int
    harmony: str  # one chord per bar of four beats
    melody: str  # notes as name:beats, "-" is a rest; "|" is ignored
    lead: str  # the voice of the melody
    drums: float  # volume
    pulse: int  # arpeggio notes per beat
    drive: bool  # the bass on every half beat


PIECES = {
    "title": Piece(76, "Em C G D Em C Am B", """
        E5:2 G5:1 F#5:1 | E5:3 D5:1 | B4:2 D5:1.5 C5:.5 | A4:4 |
        E5:2 G5:1 A5:1 | G5:2 E5:1 C5:1 | A4:1.5 C5:.5 E5:1 D5:1 | D#5:2 B4:2""", "bell", 0.0, 2, False),
    "halls": Piece(104, "Em Em C D Em Em C B Am C G D Am C B B", """
        E5:.5 -:.5 E5:.5 F#5:.5 G5:1 F#5:.5 E5:.5 | B4:1.5 D5:.5 E5:2 | C5:1 E5:.5 D5:.5 C5:1 G4:1 | A4:1 D5:1 F#5:1 A5:1 |
        E5:.5 -:.5 E5:.5 F#5:.5 G5:1 A5:.5 G5:.5 | B5:1.5 G5:.5 E5:2 | C5:.5 D5:.5 E5:.5 G5:.5 F#5:1 E5:1 | D#5:2 B4:1 -:1 |
        A5:1.5 G5:.5 E5:1 C5:1 | G5:1.5 E5:.5 C5:2 | D5:1 G5:1 B5:1 G5:1 | A5:1.5 F#5:.5 D5:2 |
        C5:.5 E5:.5 A5:1 G5:.5 E5:.5 C5:1 | E5:1 G5:1 C5:1 E5:1 | D#5:1 F#5:1 B5:2 | A5:.5 G5:.5 F#5:.5 D#5:.5 B4:2""",
                   "flute", 1.0, 2, False),
    "spire": Piece(132, "Am Am F G Am Am F E Dm Am F G Dm F E E", """
        A4:.5 C5:.5 E5:.5 A5:.5 G5:.5 E5:.5 G5:1 | A5:1.5 E5:.5 C5:1 E5:1 | F5:.5 E5:.5 C5:1 A4:1 C5:1 | D5:1 G5:1 B4:2 |
        A4:.5 C5:.5 E5:.5 A5:.5 B5:.5 A5:.5 G5:1 | A5:1 C6:1 B5:.5 A5:.5 E5:1 | F5:1 A5:.5 G5:.5 F5:1 C5:1 | E5:1.5 D5:.5 B4:2 |
        D5:.5 F5:.5 A5:1 G5:.5 F5:.5 E5:1 | C5:.5 E5:.5 A5:1 G5:.5 E5:.5 C5:1 | F5:1.5 E5:.5 C5:1 A4:1 | B4:1 D5:1 G5:2 |
        D5:1 F5:.5 E5:.5 D5:1 A4:1 | C5:1 F5:1 A5:1 C6:1 | B5:1 G#5:1 E5:1 B4:1 | E5:.5 F5:.5 E5:.5 D5:.5 C5:.5 B4:.5 G#4:1""",
                   "flute", 1.25, 4, True),
}


class Mix:
    """Both channels of a loop. Notes that sound past its end wrap around to its start."""

    def __init__(self, length: int, beat: float) -> None:
        self.dry, self.sent, self.beat = np.zeros((2, length)), np.zeros((2, length)), beat

    def add(self, beat: float, sound: np.ndarray, level: float, pan: float = 0.0, room: float = 0.5) -> None:
        where = (round(beat * self.beat) + np.arange(len(sound))) % self.dry.shape[1]
        angle = (pan + 1) * np.pi / 4
        for channel, share in enumerate((np.cos(angle), np.sin(angle))):
            np.add.at(self.dry[channel], where, sound * (level * share))
            np.add.at(self.sent[channel], where, sound * (level * share * room))

    def finish(self) -> np.ndarray:
        noise, length, t = np.random.default_rng(5), self.dry.shape[1], seconds(1.6)
        wet = np.zeros_like(self.sent)
        for channel in range(2):
            tail = np.zeros(length)
            tail[: len(t)] = noise.standard_normal(len(t)) * np.exp(-t * 4.4) * np.clip(t / 0.02, 0, 1)
            tail = high_pass(low_pass(tail, 3800, 2), 220)
            wet[channel] = np.fft.irfft(np.fft.rfft(self.sent[channel]) * np.fft.rfft(tail / np.sqrt(np.sum(tail**2))), length)
        mix = np.array([high_pass(channel, 28) for channel in self.dry + 0.5 * wet])
        mix = np.tanh(mix * (1.2 / np.max(np.abs(mix))))
        mix -= mix.mean(axis=1, keepdims=True)
        return mix * (decibels(PEAK_DB) / np.max(np.abs(mix)))


def notes(melody: str) -> list[tuple[float, int, float]]:
    """(beat, MIDI note, beats). Each bar must have four beats."""
    found = []
    for bar, text in enumerate(melody.split("|")):
        beat = bar * 4.0
        for word in text.split():
            name, length = word.split(":")
            if name != "-":
                found.append((beat, 12 * (int(name[-1]) + 1) + music.STEPS[name[0]] + ("#" in name), float(length)))
            beat += float(length)
        assert beat == bar * 4 + 4, f"bar {bar + 1} ends at beat {beat - bar * 4}"
    return found


def compose(piece: Piece) -> np.ndarray:
    bars, beat = piece.harmony.split(), 60 * RATE / piece.beats_a_minute
    mix, noise = Mix(round(len(bars) * 4 * beat), beat), np.random.default_rng(17)
    for at, note, length in notes(piece.melody):
        accent = 1.0 if at % 2 == 0 else 0.88
        if piece.lead == "flute":
            mix.add(at, music.flute(note, length * beat / RATE * 0.9), 0.15 * accent)
            mix.add(at, music.bell(note), 0.035 * accent, 0.2, 0.8)
        else:
            mix.add(at, music.bell(note), 0.13 * accent, -0.1, 0.9)
            mix.add(at, music.flute(note - 12, length * beat / RATE * 0.95), 0.05, 0.15)
    for bar, name in enumerate(bars):
        root, tones = CHORDS[name]
        for tone in tones[:3]:
            for cents, pan in ((-5, -0.7), (5, 0.7)):
                mix.add(bar * 4, music.pad(tone, 4 * beat / RATE, cents), 0.03, pan, 0.6)
        for n in range(4 * piece.pulse):
            tone = tones[(0, 1, 2, 3, 2, 1)[n % 6]] + (12 if piece.pulse == 4 and n % 8 == 7 else 0)
            accent = 1.0 if n % piece.pulse == 0 else 0.6
            mix.add(bar * 4 + n / piece.pulse, music.pluck(tone), 0.085 * accent, (-0.5, 0.2, 0.5, -0.2)[n % 4])
        steps = [(n / 2, root + (12 if n % 4 == 3 else 0), 0.45) for n in range(8)] if piece.drive else [
            (0, root, 1.5), (1.5, root, 0.5), (2, root + 7, 1.5), (3.5, root, 0.5)]
        for at, note, length in steps:
            mix.add(bar * 4 + at, music.bass(note, length * beat / RATE * 0.9), 0.18, 0, 0.05)
        for n in range(8 if piece.drums else 0):
            if n % 4 == 0:
                mix.add(bar * 4 + n / 2, music.kick(), 0.2 * piece.drums, 0, 0.05)
            if n % 4 == 2:
                mix.add(bar * 4 + n / 2, music.rim(noise), 0.08 * piece.drums, 0.15, 0.3)
            mix.add(bar * 4 + n / 2, music.shaker(noise), (0.022 if n % 2 == 0 else 0.034) * piece.drums, -0.3, 0.1)
    return mix.finish()


def make(out_dir: Path) -> None:
    for name, piece in PIECES.items():
        write_ogg(out_dir / f"music/{name}.ogg", compose(piece), OGG_QUALITY)
