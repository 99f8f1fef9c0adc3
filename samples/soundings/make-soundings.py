#!/usr/bin/env python3
"""Makes harbour.xyz: 102,400 soundings of a harbour basin, seeded, so that it always gives the same file.

Sixteen lines, 200 pings a line, 32 beams a ping: x, y in metres, z in metres (up, so depths are negative), time in milliseconds since
1970 UTC. A channel dredged to 12 m runs through the basin, with slopes, sand waves, a scour hole and a wreck; the outer beams are noisier,
and two beams in a thousand are spikes.
"""
import math
import random

SEED = 20260510
LINES, PINGS, BEAMS = 16, 200, 32
EAST, NORTH = 3300.0, 8100.0
SPACING, STEP = 22.0, 2.0
START = 1778400000000  # 2026-05-10 08:00 UTC
SPEED = 2.2            # metres a second


def bottom(x, y):
    across = y - NORTH - 160.0 - 30.0 * math.sin((x - EAST) / 170.0)
    channel = 1.0 / (1.0 + math.exp((abs(across) - 62.0) / 9.0))
    z = -5.5 - 6.5 * channel - 0.004 * (x - EAST)
    z += 0.18 * math.sin((x - EAST) / 4.5 + across / 40.0) * channel
    z -= 3.2 * math.exp(-((x - EAST - 260.0) ** 2 + (across - 20.0) ** 2) / 350.0)
    wreck = abs(x - EAST - 120.0) < 17.0 and abs(across + 35.0) < 4.0
    return z + (2.6 if wreck else 0.0)


def main():
    noise = random.Random(SEED)
    print("# x y z time")
    clock = START
    for line in range(LINES):
        pings = range(PINGS) if line % 2 == 0 else reversed(range(PINGS))
        for ping in pings:
            x0 = EAST + STEP * ping + noise.gauss(0, 0.05)
            y0 = NORTH + SPACING * line + noise.gauss(0, 0.08)
            for beam in range(BEAMS):
                swath = math.tan(math.radians(-55.0 + 110.0 * beam / (BEAMS - 1)))
                y = y0 + swath * 10.0
                z = bottom(x0, y) + noise.gauss(0, 0.03 + 0.05 * abs(swath))
                if noise.random() < 0.002:
                    z += noise.choice([-1.0, 1.0]) * noise.uniform(2.0, 6.0)
                print(f"{x0:.2f} {y:.2f} {z:.2f} {clock}")
            clock += round(STEP / SPEED * 1000)
        clock += 45000


if __name__ == "__main__":
    main()
