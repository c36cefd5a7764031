"""The music: 32 bars in G, form A A' B A''. Notes, echoes and reverb tails wrap around the end of the loop."""

from __future__ import annotations

import sys
from pathlib import Path

import numpy as np

from sound_kit import RATE, decibels, edges, harmonics, high_pass, low_pass, pitch, seconds, write_mp3_loop, write_ogg

BEAT = 24500  # samples: 108 beats per minute
BARS = 32
LENGTH = BARS * 4 * BEAT
PEAK_DB = -7.0  # leaves headroom for the effects
OGG_QUALITY = 4.0
MP3_KBPS = 80

CHORDS = {  # bass, then the notes of the arpeggio, ascending
    "G": (43, (55, 59, 62, 67)), "Em": (40, (55, 59, 64, 67)), "C": (48, (55, 60, 64, 67)),
    "D": (50, (54, 57, 62, 66)), "D7": (38, (54, 60, 62, 66)), "Bm": (47, (54, 59, 62, 66)),
    "Am": (45, (57, 60, 64, 67)),
}
# One chord per bar, or two separated by a slash.
HARMONY = """
    G Em C D    G Bm C D7
    G Em C D    Em C D7 G
    Em Bm C G   Am Em C D7
    G Em C D    Bm Em Am/D7 G
""".split()

# Notes as name:beats, "-" is a rest.
MELODY = {
    "A": """
        D5:1 B4:.5 A4:.5 B4:1 D5:1      E5:1.5 D5:.5 B4:2
        C5:1 E5:.5 D5:.5 C5:1 A4:1      A4:1.5 B4:.5 A4:1.5 -:.5
        D5:1 B4:.5 A4:.5 B4:1 D5:1      F#5:1.5 E5:.5 D5:2
        E5:1 D5:.5 C5:.5 B4:1 C5:1      A4:2.5 -:.5 A4:.5 C5:.5""",
    "A1": """
        D5:1 B4:.5 A4:.5 B4:.5 D5:.5 G5:1   E5:1.5 D5:.5 B4:1.5 -:.5
        C5:1 E5:.5 D5:.5 C5:.5 B4:.5 A4:1   A4:1 B4:.5 C5:.5 A4:1.5 -:.5
        G5:1.5 F#5:.5 E5:1 D5:1             E5:1 D5:.5 C5:.5 E5:2
        D5:.5 C5:.5 B4:.5 A4:.5 F#4:1 A4:1  G4:3 -:1""",
    "B": """
        B4:.5 E5:.5 G5:1 F#5:.5 E5:.5 F#5:1  D5:1.5 B4:.5 F#5:1.5 -:.5
        E5:.5 G5:.5 E5:1 D5:.5 C5:.5 D5:1    B4:3 -:1
        C5:.5 E5:.5 A5:1 G5:.5 E5:.5 C5:1    B4:1.5 E5:.5 G5:1.5 -:.5
        G5:1 E5:1 C5:1 E5:1                  F#5:1.5 E5:.5 D5:1.5 -:.5""",
    "A2": """
        D5:1 B4:.5 A4:.5 B4:1 D5:1      E5:1.5 D5:.5 B4:2
        C5:1 E5:.5 D5:.5 C5:1 A4:1      A4:1.5 B4:.5 A4:1.5 -:.5
        F#5:1.5 E5:.5 D5:1 B4:1         E5:1 G5:1 E5:1 D5:1
        C5:.5 D5:.5 E5:.5 C5:.5 A4:1 F#4:1  G4:2 -:.5 A4:.5 B4:.5 C5:.5""",
}
FORM = ("A", "A1", "B", "A2")
STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}


class Track:
    """One voice on both channels, wrapping around the loop."""

    def __init__(self) -> None:
        self.channels = np.zeros((2, LENGTH))

    def add(self, beat: float, sound: np.ndarray, level: float, pan: float = 0.0) -> None:
        """Pan is -1 (left) to 1."""
        where = (round(beat * BEAT) + np.arange(len(sound))) % LENGTH
        angle = (pan + 1) * np.pi / 4
        for channel, share in enumerate((np.cos(angle), np.sin(angle))):
            self.channels[channel, where] += sound * (level * share)


# --- voices ---

def swell(t: np.ndarray, length: float, attack: float, release: float) -> np.ndarray:
    return np.clip(t / attack, 0, 1) * np.clip((length + release - t) / release, 0, 1)


def flute(note: int, length: float) -> np.ndarray:
    t = seconds(length + 0.12)
    vibrato = 1 + 0.0035 * np.sin(2 * np.pi * 5.2 * t) * np.clip((t - 0.2) / 0.3, 0, 1)
    tone = harmonics(pitch(note) * vibrato, t, {1: 1, 2: 0.10, 3: 0.16, 5: 0.045, 7: 0.02})
    return edges(tone * swell(t, length, 0.025, 0.12) * (0.72 + 0.28 * np.exp(-t * 5)))


def bell(note: int) -> np.ndarray:
    t = seconds(1.6)
    return edges(harmonics(pitch(note), t, {1: 1, 2: 0.45, 3.01: 0.22, 4.1: 0.12, 6.3: 0.05}, 2.6), 0.003, 0.05)


def pluck(note: int) -> np.ndarray:
    t = seconds(1.1)
    tone = harmonics(pitch(note), t, {k: k ** -1.35 for k in range(1, 11)}, 1.1)
    return edges(tone * np.exp(-t * 2.4), 0.003, 0.08)


def bass(note: int, length: float) -> np.ndarray:
    t = seconds(length + 0.08)
    tone = harmonics(pitch(note), t, {1: 1, 2: 0.42, 3: 0.2, 4: 0.1, 5: 0.05, 6: 0.03})
    return edges(tone * swell(t, length, 0.012, 0.08) * (0.45 + 0.55 * np.exp(-t * 3.5)))


def pad(note: int, length: float, cents: float) -> np.ndarray:
    t = seconds(length + 0.7)
    return harmonics(pitch(note + cents / 100), t, {k: k ** -2.0 for k in range(1, 6)}) * swell(t, length, 0.5, 0.7)


def kick() -> np.ndarray:
    t = seconds(0.28)
    return edges(harmonics(46 + 80 * np.exp(-t * 38), t, {1: 1, 2: 0.12}) * np.exp(-t * 13), 0.002, 0.02)


def shaker(noise: np.random.Generator) -> np.ndarray:
    t = seconds(0.12)
    return edges(high_pass(noise.standard_normal(len(t)), 6500) * np.exp(-t * 48) * np.clip(t / 0.012, 0, 1))


def rim(noise: np.random.Generator) -> np.ndarray:
    t = seconds(0.14)
    snap = low_pass(high_pass(noise.standard_normal(len(t)), 900), 4200)
    return edges(0.5 * snap * np.exp(-t * 45) + 0.4 * harmonics(415, t, {1: 1, 1.6: 0.5}) * np.exp(-t * 55))


# --- parts ---

def melody_notes() -> list[tuple[str, float, int, float]]:
    """(section, beat, MIDI note, beats) of the whole piece. Each section must fill its eight bars."""
    notes = []
    for index, section in enumerate(FORM):
        beat = index * 32.0
        for word in MELODY[section].split():
            name, length = word.split(":")
            if name != "-":
                midi = 12 * (int(name[-1]) + 1) + STEPS[name[0]] + ("#" in name)
                notes.append((section, beat, midi, float(length)))
            beat += float(length)
        assert beat == (index + 1) * 32, f"section {section} ends at beat {beat - index * 32}"
    return notes


def chords() -> list[tuple[float, float, str]]:
    """(beat, beats, name)"""
    spans = []
    for bar, names in enumerate(HARMONY):
        parts = names.split("/")
        spans += [(bar * 4 + i * 4 / len(parts), 4 / len(parts), name) for i, name in enumerate(parts)]
    return spans


def play_melody(lead: Track, bells: Track) -> None:
    for section, beat, note, length in melody_notes():
        accent = 1.0 if beat % 2 == 0 else 0.9
        sounding = length * BEAT / RATE * 0.92
        lead.add(beat, flute(note, sounding), 0.17 * accent * (0.8 if section == "B" else 1.0))
        if section == "B":
            bells.add(beat, bell(note), 0.085 * accent, -0.15)
        elif section == "A2" or (section == "A1" and beat % 4 == 0):
            bells.add(beat, bell(note + 12), 0.04 * accent, 0.2)


def play_chords(plucks: Track, pads: Track, low: Track) -> None:
    for beat, length, name in chords():
        root, tones = CHORDS[name]
        middle = 64 <= beat < 96
        order = (0, 2, 3, 2, 1, 2, 3, 1) if middle else (0, 1, 2, 3, 2, 1, 2, 1)
        for i in range(int(length * 2)):
            accent = (1.0, 0.62, 0.8, 0.66)[i % 4]
            plucks.add(beat + i / 2, pluck(tones[order[i]]), 0.115 * accent, (-0.45, 0.1, 0.45, -0.1)[i % 4])
        for tone in tones[:3]:
            pads.add(beat, pad(tone, length * BEAT / RATE, -4), 0.028, -0.7)
            pads.add(beat, pad(tone, length * BEAT / RATE, 4), 0.028, 0.7)
        fifth = root + 7 if root + 7 < 52 else root - 5
        figure = [(0, root, 1.5), (1.5, root, 0.5), (2, fifth, 1.5), (3.5, root, 0.5)] if not middle else [
            (0, root, 2), (2, fifth, 2)]
        for at, note, beats in figure:
            if at < length:
                low.add(beat + at, bass(note, min(beats, length - at) * BEAT / RATE * 0.9), 0.2)


def play_percussion(drums: Track) -> None:
    noise = np.random.default_rng(108)
    for beat in range(BARS * 4):
        quiet = 64 <= beat < 96
        if beat % 2 == 0:
            drums.add(beat, kick(), 0.19 if beat % 4 == 0 else 0.15)
        elif not quiet:
            drums.add(beat, rim(noise), 0.065, 0.15)
        for half, level in ((0, 0.022), (0.5, 0.034)):
            if not (quiet and half == 0):
                drums.add(beat + half, shaker(noise), level, -0.3)
    drums.add(63.5, rim(noise), 0.05, 0.15)  # two small fills
    for i in range(4):
        drums.add(94 + i / 2, rim(noise), 0.03 + 0.012 * i, 0.15 - 0.1 * i)


# --- mixing ---

def echoes(channels: np.ndarray) -> np.ndarray:
    """Ping-pong echo: after a dotted quaver on the other channel, and again after another."""
    once, twice = np.roll(channels, round(0.75 * BEAT), axis=1), np.roll(channels, round(1.5 * BEAT), axis=1)
    return channels + 0.16 * once[::-1] + 0.07 * twice


def room(channels: np.ndarray) -> np.ndarray:
    """Reverb of a small hall: circular convolution with decaying noise."""
    noise = np.random.default_rng(2)
    t = seconds(1.4)
    wet = np.zeros_like(channels)
    for channel in range(2):
        tail = np.zeros(LENGTH)
        tail[: len(t)] = noise.standard_normal(len(t)) * np.exp(-t * 5.2) * np.clip(t / 0.018, 0, 1)
        tail = high_pass(low_pass(tail, 4200, 2), 220)
        tail /= np.sqrt(np.sum(tail**2))
        wet[channel] = np.fft.irfft(np.fft.rfft(channels[channel]) * np.fft.rfft(tail), LENGTH)
    return wet


def compose() -> np.ndarray:
    lead, bells, plucks, pads, low, drums = (Track() for _ in range(6))
    play_melody(lead, bells)
    play_chords(plucks, pads, low)
    play_percussion(drums)
    solo = echoes(lead.channels + bells.channels)
    dry = solo + plucks.channels + pads.channels + low.channels + drums.channels
    wet = room(solo + 0.8 * plucks.channels + 0.6 * pads.channels + 0.25 * drums.channels)
    mix = np.array([high_pass(channel, 28) for channel in dry + 0.24 * wet])
    mix = np.tanh(mix * (1.2 / np.max(np.abs(mix))))  # soft-clips the highest peaks
    mix -= mix.mean(axis=1, keepdims=True)
    return mix * (decibels(PEAK_DB) / np.max(np.abs(mix)))


def make(out_dir: Path) -> None:
    piece = compose()
    write_ogg(out_dir / "audio/music/FluffyTail.ogg", piece, OGG_QUALITY)
    write_mp3_loop(out_dir / "audio/music/FluffyTail.mp3", piece, MP3_KBPS)


if __name__ == "__main__":
    make(Path(sys.argv[1]))
