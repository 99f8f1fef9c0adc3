#!/usr/bin/env python3
"""Makes harbour.txt: the tide of a harbour for May 2026, seeded, so that it always gives the same file.

Five constituents, a surge of some centimetres that comes and goes, 5 mm of noise; a value each 10 minutes, UTC, metres above chart
datum. The gauge was down for five hours on the 9th and for a day and a half from the 21st, and lost single values.
"""
import datetime
import math
import random

SEED = 20260501
START = datetime.datetime(2026, 5, 1)
MEAN = 2.35
# amplitude in metres, speed in degrees an hour, phase in degrees
CONSTITUENTS = [(1.42, 28.9841042, 311.0), (0.47, 30.0, 4.0), (0.29, 28.4397295, 288.0), (0.09, 15.0410686, 170.0), (0.11, 13.9430356, 118.0)]
DOWN = [(8, 7, 20, 12, 30), (20, 16, 0, 28, 10)]


def is_down(hours):
    (day1, h1, m1, h2, m2), (day2, h3, m3, h4, m4) = DOWN
    first = day1 * 24 + h1 + m1 / 60 <= hours < day1 * 24 + h2 + m2 / 60
    second = day2 * 24 + h3 + m3 / 60 <= hours < day2 * 24 + 24 + h4 + m4 / 60
    return first or second


def main():
    noise = random.Random(SEED)
    print("# Tide of the harbour, metres above chart datum, UTC. Made by make-tide.py.")
    surge = 0.0
    for i in range(31 * 24 * 6):
        hours = i / 6
        surge = 0.997 * surge + noise.gauss(0, 0.006)
        height = MEAN + surge + noise.gauss(0, 0.005)
        height += sum(a * math.cos(math.radians(speed * hours - phase)) for a, speed, phase in CONSTITUENTS)
        if is_down(hours) or noise.random() < 0.003:
            continue
        time = START + datetime.timedelta(minutes=10 * i)
        print(f"{time:%Y-%m-%d %H:%M} {height:.3f}")


if __name__ == "__main__":
    main()
