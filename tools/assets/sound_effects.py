"""The interface sounds (Ogg Vorbis, in the music's key of G) and the retro sounds (WAV), one clear gesture each."""

from __future__ import annotations

import sys
from pathlib import Path

import numpy as np

from sound_kit import (RATE, decibels, edges, harmonics, high_pass, loudness, low_pass, pitch, seconds, write_ogg,
                       write_wav)

LOUDNESS_DB = -13.0  # of the loudest 50 ms
PEAK_DB = -2.5       # at most, before encoding
LEAD_IN = 0.004      # seconds of silence before an encoded sound, for the codec's pre-echo of a sharp attack
G4, B4, D5, E5, G5, A5, B5, D6, E6, G6 = 67, 71, 74, 76, 79, 81, 83, 86, 88, 91


def noise_of(seed: int, t: np.ndarray) -> np.ndarray:
    return np.random.default_rng(seed).standard_normal(len(t))


def held_noise(seed: int, rates: np.ndarray) -> np.ndarray:
    """Sample-and-hold noise with a given number of values per second, per sample."""
    slots = np.floor(np.cumsum(rates) / RATE).astype(int)
    return np.random.default_rng(seed).uniform(-1, 1, slots[-1] + 1)[slots]


def square(frequency: np.ndarray, duty: float | np.ndarray = 0.5) -> np.ndarray:
    """A pulse wave with 8x oversampling, so that its edges do not fall on whole samples."""
    fine = np.repeat(np.cumsum(frequency) / RATE, 8) + np.tile(np.arange(8) / 8, len(frequency)) * np.repeat(
        frequency / RATE, 8)
    pulse = np.where(np.mod(fine, 1.0) < np.repeat(np.broadcast_to(duty, frequency.shape), 8), 1.0, -1.0)
    return pulse.reshape(-1, 8).mean(axis=1)


def finish(sound: np.ndarray, rumble: float = 40) -> np.ndarray:
    """Removes DC, fades the ends and normalises loudness."""
    sound = edges(high_pass(np.pad(sound, 2000), rumble)[2000:-2000])
    # The fades reintroduce a little DC; subtracting a bump of the fades' shape removes it without a step at the ends.
    bump = edges(np.ones(len(sound)), 0.01, 0.02)
    sound = sound - bump * (sound.sum() / bump.sum())
    sound = sound * decibels(LOUDNESS_DB - loudness(sound))
    limit = decibels(PEAK_DB)
    return limit * np.tanh(sound / limit) if np.max(np.abs(sound)) > limit else sound


# --- interface ---

def chime(note: float, length: float, damping: float) -> np.ndarray:
    t = seconds(length)
    return edges(harmonics(pitch(note), t, {1: 1, 2: 0.25, 3: 0.18, 5: 0.06}, damping))


def at(total: float, *parts: tuple[float, np.ndarray]) -> np.ndarray:
    """Mixes sounds, each starting at its time in seconds."""
    sound = np.zeros(round(total * RATE))
    for start, part in parts:
        first = round(start * RATE)
        part = part[: len(sound) - first]
        sound[first:first + len(part)] += part
    return sound


def click() -> np.ndarray:
    t = seconds(0.05)
    tap = high_pass(noise_of(1, t), 1500) * np.exp(-t * 380)
    return 0.35 * tap + harmonics(pitch(G6) * (1 - 0.25 * np.clip(t / 0.02, 0, 1)), t, {1: 1, 2: 0.3}) * np.exp(-t * 110)


def select() -> np.ndarray:
    return chime(D6, 0.11, 26)


def back() -> np.ndarray:
    return at(0.18, (0, chime(B5, 0.1, 26)), (0.06, chime(G5, 0.12, 24)))


def confirmation() -> np.ndarray:
    return at(0.24, (0, chime(G5, 0.12, 20)), (0.055, chime(B5, 0.14, 18)), (0.11, chime(D6, 0.14, 14)))


def error() -> np.ndarray:
    t = seconds(0.1)
    buzz = low_pass(square(np.full(len(t), pitch(G4 - 12))) + square(np.full(len(t), pitch(G4 - 11))), 1500, 2)
    return at(0.23, (0, edges(buzz * np.exp(-t * 9))), (0.125, edges(0.9 * buzz * np.exp(-t * 12))))


# --- retro ---

def jump() -> np.ndarray:
    t = seconds(0.26)
    return square(240 * 2.0 ** (np.clip(t / 0.24, 0, 1) * 1.6), 0.5 - 0.9 * t) * np.exp(-t * 6)


def coin() -> np.ndarray:
    t = seconds(0.42)
    frequency = np.where(t < 0.075, pitch(B5), pitch(E6))
    return square(frequency, 0.5) * np.where(t < 0.075, 0.9, np.exp(-(t - 0.075) * 9))


def hit() -> np.ndarray:
    t = seconds(0.2)
    return (0.7 * held_noise(3, 9000 * np.exp(-t * 11) + 500) + 0.6 * square(330 * np.exp(-t * 9), 0.35)) * np.exp(-t * 15)


def explosion() -> np.ndarray:
    t = seconds(0.75)
    roar = held_noise(4, 7000 * np.exp(-t * 5) + 350)
    thump = harmonics(45 + 120 * np.exp(-t * 18), t, {1: 1})
    return np.tanh(1.6 * (roar * np.exp(-t * 4.6) + 0.9 * thump * np.exp(-t * 7)))


def laser() -> np.ndarray:
    t = seconds(0.28)
    return square(170 + 1900 * np.exp(-t * 13), 0.25 + 0.8 * t) * np.exp(-t * 8)


def fanfare() -> np.ndarray:
    tune = [(0.0, 0.1, G4, B4), (0.11, 0.1, B4, D5), (0.22, 0.1, D5, G5), (0.33, 0.2, G5, B5), (0.55, 0.1, E5, A5),
            (0.66, 0.5, G5, B5)]
    parts = []
    for start, length, low, high in tune:
        t = seconds(length)
        shimmer = 1 + 0.004 * np.sin(2 * np.pi * 7 * t)
        voice = 0.7 * square(pitch(high) * shimmer, 0.25) + 0.45 * square(pitch(low) * shimmer, 0.5)
        parts.append((start, edges(voice * np.exp(-t * (2.2 if length > 0.3 else 5)))))
    return at(1.16, *parts)


INTERFACE = {"click_001": click, "select_001": select, "back_001": back, "confirmation_001": confirmation,
             "error_001": error}
RETRO = {"sfx_movement_jump1": jump, "sfx_coin_single1": coin, "sfx_damage_hit1": hit,
         "sfx_exp_short_hard1": explosion, "sfx_wpn_laser1": laser, "sfx_sounds_fanfare1": fanfare}


GAIN_DB = {"error_001": -5.0}  # its low buzz carries further than the chimes at the same loudness


def make(out_dir: Path) -> None:
    for name, sound in INTERFACE.items():
        samples = finish(sound(), 80) * decibels(GAIN_DB.get(name, 0.0))
        write_ogg(out_dir / f"audio/sfx/interface/{name}.ogg", np.pad(samples, (round(LEAD_IN * RATE), 0)), 4)
    for name, sound in RETRO.items():
        write_wav(out_dir / f"audio/sfx/retro/{name}.wav", finish(sound()))


if __name__ == "__main__":
    make(Path(sys.argv[1]))
