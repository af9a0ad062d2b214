#!/usr/bin/env python3
"""Makes the sound files that the fuzzers wav, aiff and repair start from: corpus/{wav,aiff,repair}/*."""

import pathlib
import struct

NAN, INF, MINUS_INF = b"\x00\x00\xc0\x7f", b"\x00\x00\x80\x7f", b"\x00\x00\x80\xff"
FLOATS = b"".join(struct.pack("<f", x) for x in (0.5, -1.0, 1e-40, 3.0))
DAMAGED = FLOATS + NAN + INF + struct.pack("<f", 0.25) + MINUS_INF
BYTES = bytes(range(0x78, 0x90))
RATE_44100 = b"\x40\x0e\xac\x44" + bytes(6)
FLOAT_ID = bytes.fromhex("0300000000001000800000aa00389b71")


def swapped(floats):
    return b"".join(floats[i : i + 4][::-1] for i in range(0, len(floats), 4))


def little_chunk(name, data):
    return name + struct.pack("<I", len(data)) + data + bytes(len(data) % 2)


def wav(tag, channels, bits, data, extension=b"", extra=b"", claimed=None):
    frame = channels * bits // 8
    form = struct.pack("<HHIIHH", tag, channels, 48000, 48000 * frame, frame, min(bits, 0xFFFF)) + extension
    data_chunk = b"data" + struct.pack("<I", len(data) if claimed is None else claimed) + data
    body = b"WAVE" + little_chunk(b"fmt ", form) + extra + data_chunk
    return b"RIFF" + struct.pack("<I", len(body)) + body


def rf64(data):
    sizes = struct.pack("<QQQI", 1000, len(data), len(data) // 4, 0)
    form = little_chunk(b"fmt ", struct.pack("<HHIIHH", 3, 1, 96000, 384000, 4, 32))
    return b"RF64\xff\xff\xff\xffWAVE" + little_chunk(b"ds64", sizes) + form + b"data\xff\xff\xff\xff" + data


def aiff(channels, bits, data, compression=b"", extra=b"", claimed=None):
    frames = len(data) * 8 // (channels * bits) if claimed is None else claimed
    common = struct.pack(">hIh", channels, frames, bits) + RATE_44100 + compression
    sound = struct.pack(">II", 0, 0) + data
    body = (b"AIFC" if compression else b"AIFF") + extra
    for name, content in ((b"COMM", common), (b"SSND", sound)):
        body += name + struct.pack(">I", len(content)) + content
    return b"FORM" + struct.pack(">I", len(body)) + body


def reads(*spans):
    """What the readers' fuzzers take from the input's end, last byte first: how many spans, and each of them."""
    taken = bytes([len(spans)])
    for start, length, channel in spans:
        is_near = start < 256
        taken += bytes([not is_near]) + start.to_bytes(1 if is_near else 8, "big")
        taken += length.to_bytes(2, "big") + channel.to_bytes(2, "big")
    return taken[::-1]


def repair(file, gives_value, is_wav):
    """Of repair the input's end is the mode, the replacement value (0.5) and the kind of file."""
    taken = bytes([gives_value]) + struct.pack(">d", 0.5) + bytes([is_wav])
    return file + taken[::-1]


WAVS = {
    "pcm8": wav(1, 1, 8, BYTES),
    "pcm16-stereo": wav(1, 2, 16, BYTES),
    "pcm24-cut": wav(1, 2, 24, BYTES[:-1]),
    "pcm32-list": wav(1, 1, 32, BYTES, extra=little_chunk(b"LIST", b"odd")),
    "float": wav(3, 1, 32, DAMAGED),
    "float-lying": wav(3, 1, 32, DAMAGED, claimed=0x7FFE0000),
    "extensible": wav(0xFFFE, 2, 32, FLOATS, extension=struct.pack("<HHI", 22, 32, 3) + FLOAT_ID),
    "rf64": rf64(DAMAGED),
    "wide": wav(1, 2, 80, BYTES),
    "unknown-tag": wav(2, 1, 4, BYTES),
}
AIFFS = {
    "pcm8": aiff(1, 8, BYTES),
    "pcm16-stereo": aiff(2, 16, BYTES),
    "pcm24-cut": aiff(2, 24, BYTES[:-1], claimed=4),
    "pcm32-name": aiff(1, 32, BYTES, extra=b"NAME" + struct.pack(">I", 4) + b"take"),
    "float": aiff(1, 32, swapped(DAMAGED), b"FL32"),
    "float-stereo": aiff(2, 32, swapped(DAMAGED), b"fl32", extra=b"FVER" + struct.pack(">II", 4, 0xA2805140)),
    "swapped": aiff(1, 16, BYTES, b"sowt"),
}
DAMAGED_WAVS = {name: WAVS[name] for name in ("float", "float-lying", "rf64")}
DAMAGED_WAVS["stereo"] = wav(3, 2, 32, DAMAGED * 2, extra=little_chunk(b"LIST", b"odd"))
SPANS = reads((0, 5, 0), (3, 40, 1), (2**40, 7, 0))

SEEDS = {
    "wav": {name: file + SPANS for name, file in WAVS.items()},
    "aiff": {name: file + SPANS for name, file in AIFFS.items()},
    "repair": {f"{name}.wav": repair(file, name == "rf64", True) for name, file in DAMAGED_WAVS.items()}
    | {f"{name}.aiff": repair(AIFFS[name], name == "float", False) for name in ("float", "float-stereo", "pcm16-stereo")},
}

for fuzzer, seeds in SEEDS.items():
    folder = pathlib.Path(__file__).parent / "corpus" / fuzzer
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in seeds.items():
        (folder / name).write_bytes(content)
