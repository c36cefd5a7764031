"""Shared by the music and effect generators: envelopes, voices, levels, and reproducible files."""

from __future__ import annotations

import subprocess
import tempfile
import wave
from pathlib import Path

import numpy as np

RATE = 44100  # Hz
MP3_FRAME = 1152  # samples


def seconds(duration: float) -> np.ndarray:
    """The sample times of a sound of this length, in seconds."""
    return np.arange(round(duration * RATE)) / RATE


def pitch(note: float) -> float:
    """The frequency of a MIDI note; 69 is 440 Hz."""
    return 440.0 * 2.0 ** ((note - 69) / 12)


def decibels(level: float) -> float:
    return 10.0 ** (level / 20)


def edges(sound: np.ndarray, fade_in: float = 0.002, fade_out: float = 0.004) -> np.ndarray:
    """Fades in and out, in seconds, to avoid clicks."""
    faded = sound.copy()
    n_in, n_out = round(fade_in * RATE), round(fade_out * RATE)
    faded[:n_in] *= 0.5 - 0.5 * np.cos(np.pi * np.arange(n_in) / n_in)
    faded[-n_out:] *= 0.5 + 0.5 * np.cos(np.pi * (np.arange(n_out) + 1) / n_out)
    return faded


def harmonics(frequency: float | np.ndarray, t: np.ndarray, levels: dict[float, float],
              damping: float = 0.0) -> np.ndarray:
    """Sines at multiples of the frequency, none above 15 kHz. With damping the k-th decays as exp(-damping k t)."""
    phase = 2 * np.pi * (np.cumsum(frequency) / RATE if isinstance(frequency, np.ndarray) else frequency * t)
    highest = float(np.max(frequency))
    sound = np.zeros_like(t)
    for k, level in levels.items():
        if k * highest < 15000:
            sound += level * np.sin(k * phase) * (np.exp(-damping * k * t) if damping else 1.0)
    return sound


def low_pass(sound: np.ndarray, cutoff: float, order: int = 4) -> np.ndarray:
    """Zero-phase low-pass filter in the frequency domain; circular."""
    frequencies = np.fft.rfftfreq(len(sound), 1 / RATE)
    return np.fft.irfft(np.fft.rfft(sound) / np.sqrt(1 + (frequencies / cutoff) ** (2 * order)), len(sound))


def high_pass(sound: np.ndarray, cutoff: float, order: int = 2) -> np.ndarray:
    """Zero-phase high-pass filter, circular; removes DC."""
    ratio = (np.fft.rfftfreq(len(sound), 1 / RATE) / cutoff) ** (2 * order)
    return np.fft.irfft(np.fft.rfft(sound) * np.sqrt(ratio / (1 + ratio)), len(sound))


def loudness(sound: np.ndarray) -> float:
    """RMS of the loudest 50 ms, in dBFS, with low frequencies weighted less, as by the ear."""
    power = np.convolve(high_pass(sound, 300, 1) ** 2, np.ones(round(0.05 * RATE)) / round(0.05 * RATE))
    return 10 * float(np.log10(np.max(power)))


# --- files ---

def write_wav(path: Path, sound: np.ndarray) -> None:
    """16 bit; one channel, or two as rows of left and right."""
    path.parent.mkdir(parents=True, exist_ok=True)
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1 if sound.ndim == 1 else 2)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(np.round(sound.T * 32767).astype("<i2").tobytes())


def encode(sound: np.ndarray, command: list[str], path: Path) -> None:
    """Runs an encoder; {in} and {out} in its arguments are replaced by file names."""
    path.parent.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        source = Path(folder) / "sound.wav"
        write_wav(source, sound)
        words = [word.replace("{in}", str(source)).replace("{out}", str(path)) for word in command]
        subprocess.run(words, check=True)


def write_ogg(path: Path, sound: np.ndarray, quality: float) -> None:
    """The serial number of the stream is random unless it is given."""
    encode(sound, ["oggenc", "--quiet", "--serial", "1", "--quality", str(quality), "--output", "{out}", "{in}"], path)


def write_mp3_loop(path: Path, loop: np.ndarray, kbps: int) -> None:
    """Encodes a loop. The encoder also gets the audio before the start and after the end, or the first and last frames
    would fade from and to silence; players trim both, as specified in the info frame."""
    around = np.concatenate([loop[:, -MP3_FRAME:], loop, loop[:, :MP3_FRAME]], axis=1)
    encode(around, ["lame", "--quiet", "-q", "2", "-m", "j", "--cbr", "-b", str(kbps), "--resample", "44.1",
                    "{in}", "{out}"], path)
    path.write_bytes(trim_more(path.read_bytes(), MP3_FRAME))


def crc16(data: bytes) -> int:
    crc = 0
    for byte in data:
        crc ^= byte
        for _ in range(8):
            crc = crc >> 1 ^ (0xA001 if crc & 1 else 0)
    return crc


def trim_more(mp3: bytes, samples: int) -> bytes:
    """Increases the info frame's encoder delay and padding, the samples to trim at start and end: 12 bits each."""
    tag = mp3.index(b"Info") + 120
    counts = int.from_bytes(mp3[tag + 21:tag + 24], "big")
    start, end = (counts >> 12) + samples, (counts & 0xFFF) + samples
    assert mp3[tag:tag + 4] == b"LAME" and max(start, end) < 4096, (start, end)
    assert crc16(mp3[:tag + 34]) == int.from_bytes(mp3[tag + 34:tag + 36], "big"), "not the frame that was expected"
    head = mp3[:tag + 21] + (start << 12 | end).to_bytes(3, "big") + mp3[tag + 24:tag + 34]
    return head + crc16(head).to_bytes(2, "big") + mp3[tag + 36:]
