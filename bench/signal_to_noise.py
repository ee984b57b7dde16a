#!/usr/bin/env python3
"""How close a wave comes to another: signal_to_noise.py ORIGINAL COPY

Prints the signal to noise ratio in dB over both channels, and the largest difference in the last
2,036 samples of a channel against the largest anywhere. Both are 16-bit PCM.
"""
import array
import math
import sys
import wave

LAST = 2036


def samples(path):
    with wave.open(path) as file:
        if file.getsampwidth() != 2:
            sys.exit(f"{path}: not 16 bits")
        return file.getnchannels(), array.array("h", file.readframes(file.getnframes()))


def main():
    channels, original = samples(sys.argv[1])
    other_channels, copy = samples(sys.argv[2])
    if channels != other_channels or len(copy) < len(original):
        sys.exit(f"{sys.argv[2]}: {len(copy)} samples in place of {len(original)}")
    signal = sum(a * a for a in original)
    differences = [a - b for a, b in zip(original, copy)]
    noise = max(1, sum(d * d for d in differences))
    largest = max(map(abs, differences))
    last = max(map(abs, differences[-LAST * channels:]))
    print(f"{10 * math.log10(signal / noise):.2f} {last} {largest}")


main()
