#!/usr/bin/env python3
"""Makes harbour.txt: 16 minutes of a survey vessel on four lines, seeded, so that it always gives the same file.

True motion: legs of 220 m at 2.2 m/s, joined by half turns, then a way home. What is measured:
  fixes every 4 s, sigma 0.8 m; four of them thrown far off; none from 300 s to 345 s
  velocities every 2 s from a log that points 2.5 degrees too far to port and reads 3 % low; none from 610 s to 640 s
  nothing at all from 700 s to 725 s
  at 325 s and 625 s ranges and a bearing from three stations on land
"""
import math
import random

SEED = 20261121
SPEED = 2.2
LEG = 220.0
SPACING = 25.0
EAST, NORTH = 3400.0, 8200.0
STATIONS = [(3190.0, 8420.0), (3760.0, 8390.0), (3720.0, 7990.0)]


def course_at(time):
    """Course over ground in degrees, and turning seconds within the pattern of legs."""
    leg_time, turn_time = LEG / SPEED, math.pi * SPACING / 2 / SPEED
    period = leg_time + turn_time
    number, within = int(time // period), time % period
    base = 70.0 if number % 2 == 0 else 250.0
    if within < leg_time:
        return base
    share = (within - leg_time) / turn_time
    return base + (-180.0 if number % 2 == 0 else 180.0) * share


def simulate(duration, step=0.1):
    x, y, track = EAST, NORTH, []
    for i in range(int(duration / step) + 1):
        time = i * step
        course = math.radians(course_at(time) + 1.2 * math.sin(time / 23.0))
        speed = SPEED + 0.15 * math.sin(time / 41.0)
        vx, vy = speed * math.sin(course), speed * math.cos(course)
        track.append((time, x, y, vx, vy))
        x, y = x + vx * step, y + vy * step
    return track


def main():
    noise = random.Random(SEED)
    track = simulate(960.0)
    at = lambda time: track[round(time * 10)]
    rows = []
    thrown = {132.0: (38.0, -21.0), 416.0: (-55.0, 12.0), 560.0: (22.0, 30.0), 804.0: (-18.0, -44.0)}
    for time in range(0, 961, 4):
        if 300 < time < 345 or 700 < time < 725:
            continue
        _, x, y, _, _ = at(time)
        dx, dy = thrown.get(float(time), (0.0, 0.0))
        rows.append((time, 0, f"fix {time:.1f} {x + dx + noise.gauss(0, 0.8):.2f} {y + dy + noise.gauss(0, 0.8):.2f} 0.8"))
    turn = math.radians(-2.5)
    for time in range(1, 961, 2):
        if 610 < time < 640 or 700 < time < 725:
            continue
        _, _, _, vx, vy = at(time)
        east = (vx * math.cos(turn) + vy * math.sin(turn)) * 0.97 + noise.gauss(0, 0.02)
        north = (vy * math.cos(turn) - vx * math.sin(turn)) * 0.97 + noise.gauss(0, 0.02)
        rows.append((time, 1, f"velocity {time:.1f} {east:.3f} {north:.3f}"))
    for time in (325.0, 625.0):
        _, x, y, _, _ = at(time)
        for number, (sx, sy) in enumerate(STATIONS):
            dx, dy = x - sx, y - sy
            if number < 2:
                text = f"range {time:.1f} {sx:.0f} {sy:.0f} {math.hypot(dx, dy) + noise.gauss(0, 1.5):.2f} 1.5"
            else:
                bearing = math.degrees(math.atan2(dx, dy)) % 360.0 + noise.gauss(0, 0.2)
                text = f"bearing {time:.1f} {sx:.0f} {sy:.0f} {bearing:.3f} 0.2"
            rows.append((time, 2 + number, text))
    rows.sort()
    print("# A survey vessel on four lines, with turns, gaps and fixes thrown far off. Made by make-track.py.")
    print("\n".join(text for _, _, text in rows))


if __name__ == "__main__":
    main()
