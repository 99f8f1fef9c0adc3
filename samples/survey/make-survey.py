#!/usr/bin/env python3
"""Makes the data of this survey: an approach channel with a bend, dredged and sounded.

    make-survey.py [--soundings N] [FOLDER]

Everything comes from a fixed seed, so that the files are the same each time. FOLDER is this one unless it is given, and then the folder
survey-faulty beside it is made, too; a larger N (say 1000000) makes a denser survey elsewhere for measurements, with copies of the
settings and colours beside it.
"""

import argparse
import math
import os
import random
import shutil
import struct

HERE = os.path.dirname(os.path.abspath(__file__))
DAY = 1778544000000          # 2026-05-12 00:00:00 UTC, in milliseconds
ORIGIN = DAY + 6 * 3600000   # the track's seconds count from 06:00
SPEED = 3.2                  # metres a second
LINES = [-88, -66, -44, -22, 0, 22, 44, 66, 88]  # survey lines, metres to starboard of the channel's axis
SWATH = 15.0                 # metres to either side of a line
TURN = 150                   # seconds from line to line
RUN_OUT = 30.0               # metres beyond the channel's ends

# The design: x, y, z. A straight reach, a bend in chords, a second reach that rises a little towards the harbour.
# The survey is laid out on a plane of its own; files are in UTM zone 31 on WGS 84, this far to the east and north.
EAST, NORTH = 550000.0, 5710000.0

DESIGN = [(11000.0, 42600.0, -12.0), (11560.0, 42990.0, -12.0), (11700.0, 43081.0, -12.0), (11850.0, 43162.0, -12.0),
          (12010.0, 43230.0, -12.0), (12180.0, 43282.0, -12.0), (12360.0, 43322.0, -11.8), (12900.0, 43420.0, -11.5)]
HALF_FLOOR, SLOPE = 60.0, 4.0
STATIONS = [(10900.0, 43700.0), (12550.0, 43735.0), (13020.0, 43120.0)]  # of the ranges


def grid(x, y, *rest):
    return x + EAST, y + NORTH, *rest


def tide(time):
    hours = (time - DAY) / 3600000.0
    return 1.85 + 1.45 * math.cos(2 * math.pi * (hours - 3.1) / 12.42) + 0.22 * math.cos(2 * math.pi * (hours - 1.0) / 6.21)


class Axis:
    """The design line: from chainage and offset to starboard to a place, and the heading there."""

    def __init__(self):
        self.stations = [0.0]
        for a, b in zip(DESIGN, DESIGN[1:]):
            self.stations.append(self.stations[-1] + math.hypot(b[0] - a[0], b[1] - a[1]))
        self.length = self.stations[-1]
        self.headings = [math.atan2(b[0] - a[0], b[1] - a[1]) for a, b in zip(DESIGN, DESIGN[1:])]

    def segment(self, chainage):
        for i in range(len(self.headings) - 1):
            if chainage < self.stations[i + 1]:
                return i
        return len(self.headings) - 1

    def heading(self, chainage):
        """Turned gently around each corner, so that survey lines have none."""
        i = self.segment(chainage)
        reach = 60.0
        for corner in (i, i + 1):
            if 0 < corner < len(self.headings):
                off = chainage - self.stations[corner]
                if abs(off) < reach:
                    part = 0.5 + off / (2 * reach)
                    return self.headings[corner - 1] * (1 - part) + self.headings[corner] * part
        return self.headings[i]

    def level(self, chainage):
        i = self.segment(chainage)
        part = min(max((chainage - self.stations[i]) / (self.stations[i + 1] - self.stations[i]), 0.0), 1.0)
        return DESIGN[i][2] + part * (DESIGN[i + 1][2] - DESIGN[i][2])

    def place(self, chainage, offset):
        i = self.segment(chainage)
        along, heading = chainage - self.stations[i], self.headings[i]
        side = self.heading(chainage)
        x = DESIGN[i][0] + along * math.sin(heading) + offset * math.cos(side)
        y = DESIGN[i][1] + along * math.cos(heading) - offset * math.sin(side)
        return x, y


# Heaps and holes in the channel's floor: chainage, offset, radius along, radius across, height.
PATCHES = [(620, 42, 90, 22, 0.85), (980, -48, 120, 18, 1.15), (1130, 10, 45, 30, -0.75), (1500, 52, 160, 14, 0.7),
           (300, -20, 70, 40, -0.55), (1640, 6, 75, 24, 0.62), (700, -4, 50, 18, 0.5), (1780, -30, 60, 35, 0.45), (1320, -52, 60, 20, 0.9), (120, 30, 50, 45, 0.35)]


def seabed(x, y):
    """The natural bottom beside the channel."""
    return (-7.6 + 0.0011 * (x - 11000.0) + 0.5 * math.sin(x / 310.0 + 0.6) * math.cos(y / 240.0) +
            0.22 * math.sin(x / 71.0 - y / 93.0))


def bottom(axis, chainage, offset, x, y):
    floor = axis.level(chainage) - 0.32 + 0.10 * math.sin(chainage / 37.0 + offset / 11.0) + 0.07 * math.sin(chainage / 13.0 - offset / 7.0)
    for at, side, along, across, height in PATCHES:
        far = ((chainage - at) / along) ** 2 + ((offset - side) / across) ** 2
        if far < 6.0:
            floor += height * math.exp(-far * 1.6)
    beside = abs(offset) - HALF_FLOOR + 2.0
    if beside > 0.0:
        floor += beside / SLOPE * (1.0 + 0.06 * math.sin(chainage / 29.0))
    return min(floor, seabed(x, y)) if beside > 0.0 else floor


def survey_lines(axis):
    """Each line: offset, direction, time of its begin in milliseconds."""
    time = ORIGIN + 600000
    for number, offset in enumerate(LINES):
        yield offset, 1 if number % 2 == 0 else -1, time
        time += int(1000 * (axis.length + 2 * RUN_OUT) / SPEED) + TURN * 1000


def write_soundings(axis, folder, count):
    rng = random.Random(20260512)
    density = math.sqrt(count / 60000.0)
    beams = max(2, round(16 * density))
    pings = max(2, round(count / (len(LINES) * beams)))
    with open(os.path.join(folder, "soundings.xyz"), "w") as out:
        out.write("# x y z time: metres in the survey's grid, z up from the water's level, milliseconds since 1970 (UTC)\n")
        for offset, direction, begin in survey_lines(axis):
            for ping in range(pings):
                run = (ping + 0.5) / pings * (axis.length + 2 * RUN_OUT)
                along = (run if direction > 0 else axis.length + 2 * RUN_OUT - run) - RUN_OUT
                time = begin + int(1000 * run / SPEED)
                rise = tide(time)
                rows = []
                for beam in range(beams):
                    across = offset + ((beam + 0.5) / beams * 2 - 1) * SWATH + rng.gauss(0, 0.3)
                    at = along + rng.gauss(0, 0.4)
                    x, y = axis.place(at, across)
                    z = bottom(axis, at, across, x, y) - rise + rng.gauss(0, 0.035)
                    rows.append("%.1f %.1f %.2f %d\n" % (*grid(x, y, z), time))
                out.writelines(rows)


def write_pings(axis, folder):
    rng = random.Random(7)
    begin = ORIGIN + 600000 + len(LINES) * (int(1000 * (axis.length + 2 * RUN_OUT) / SPEED) + TURN * 1000) - TURN * 1000
    with open(os.path.join(folder, "pings.txt"), "w") as out:
        out.write("# A last run over the heap at chainage 980, by the multibeam sonar: pings, and below each its beams from port to starboard.\n"
                  "# ping TIME X Y HEADING        beam ACROSS ALONG DEPTH [FLAGS]        metres and degrees; flags reject a beam, but for numbers below 256\n")
        for number in range(24):
            at, offset, time = 930 + 5.0 * number, -48.0, begin + number * 1560
            heading = axis.heading(at)
            x, y = axis.place(at, offset)
            stamp = "2026-05-12T%02d:%02d:%06.3fZ" % ((time - DAY) // 3600000, (time - DAY) // 60000 % 60, (time - DAY) % 60000 / 1000.0)
            out.write("ping %s %.2f %.2f %.2f\n" % (stamp, *grid(x, y), math.degrees(heading)))
            for beam in range(48):
                across = (beam - 23.5) * 0.9
                bx, by = x + across * math.cos(heading), y - across * math.sin(heading)
                depth = tide(time) - bottom(axis, at, offset + across, bx, by) + rng.gauss(0, 0.03)
                flags = ""
                if rng.random() < 0.05:
                    depth, flags = depth - rng.uniform(2.0, 6.0), rng.choice([" DEP", " MAN+DEP", " QUA", " 1024"])
                elif beam in (0, 47):
                    flags = " BEA"
                elif rng.random() < 0.01:
                    flags = " 3 0"
                out.write("beam %.1f 0 %.2f%s\n" % (across, depth, flags))


def write_tide(folder):
    with open(os.path.join(folder, "tide.tid"), "wb") as out:
        for minute in range(0, 24 * 60 + 1, 10):
            # The gauge stood still for an hour and a half in the evening.
            if not 18 * 60 < minute < 19 * 60 + 30:
                time = DAY + minute * 60000
                out.write(struct.pack("<dd", time, round(tide(time), 3)))


def fix(rng, out, second, x, y, number):
    if number % 197 == 50:
        x, y = x + 31.0, y - 24.0  # thrown far off: the gate refuses it
    out.write("fix %.1f %.2f %.2f %.2f %.2f 0.3\n" % (second, *grid(x + rng.gauss(0, 0.5), y + rng.gauss(0, 0.4)), 0.6, 0.45))


def turn(begin, end, seconds):
    """From line to line in a loop, about every 4 seconds: both given as x, y, vx, vy."""
    steps = round(seconds / 4)
    for step in range(1, steps):
        t = step / steps
        place, speed = [], []
        for axis in (0, 1):
            a, b, va, vb = begin[axis], end[axis], begin[axis + 2] * seconds, end[axis + 2] * seconds
            place.append((2 * t**3 - 3 * t**2 + 1) * a + (t**3 - 2 * t**2 + t) * va + (3 * t**2 - 2 * t**3) * b + (t**3 - t**2) * vb)
            speed.append(((6 * t**2 - 6 * t) * (a - b) + (3 * t**2 - 4 * t + 1) * va + (3 * t**2 - 2 * t) * vb) / seconds)
        yield t * seconds, place + speed


def vessel(axis):
    """Every 4 seconds: seconds, x, y, vx, vy, and whether satellites were lost."""
    last = None
    for line, (offset, direction, begin) in enumerate(survey_lines(axis)):
        steps = int((axis.length + 2 * RUN_OUT) / SPEED / 4)
        for step in range(steps):
            run = step * 4 * SPEED
            along = (run if direction > 0 else axis.length + 2 * RUN_OUT - run) - RUN_OUT
            x, y = axis.place(along, offset)
            course = axis.heading(along) + (0 if direction > 0 else math.pi)
            now = [x, y, SPEED * math.sin(course), SPEED * math.cos(course)]
            second = (begin - ORIGIN) / 1000.0 + step * 4
            if step == 0 and last is not None:
                for after, place in turn(last[1], now, second - last[0]):
                    yield (last[0] + after, *place, False)
            yield (second, *now, line == 4 and 60 <= step < 90)
            last = (second, now)


def write_track(axis, folder):
    rng = random.Random(99)
    off, scale = math.radians(-1.8), 0.985  # what the velocity sensor is wrong by
    with open(os.path.join(folder, "track.txt"), "w") as out:
        out.write("# The vessel on nine lines: fixes and velocities; ranges to three stations while the fifth line had no satellites.\n"
                  "# Seconds from 2026-05-12 06:00 UTC, metres, metres a second.\n")
        for number, (second, x, y, vx, vy, ranged) in enumerate(vessel(axis)):
            if not ranged:
                fix(rng, out, second, x, y, number)
            elif number % 3 == 0:
                for sx, sy in STATIONS:
                    out.write("range %.1f %.1f %.1f %.2f 1.5\n" % (second, *grid(sx, sy), math.hypot(x - sx, y - sy) + rng.gauss(0, 0.8)))
            east = scale * (vx * math.cos(off) + vy * math.sin(off)) + rng.gauss(0, 0.03)
            north = scale * (vy * math.cos(off) - vx * math.sin(off)) + rng.gauss(0, 0.03)
            out.write("velocity %.1f %.3f %.3f\n" % (second + 0.5, east, north))


def write_lines(axis, folder):
    with open(os.path.join(folder, "design.txt"), "w") as out:
        out.write("# The channel's axis with the level of its floor: x y z.\n")
        out.writelines("%.1f %.1f %.2f\n" % grid(*point) for point in DESIGN)
    half = 98.0
    with open(os.path.join(folder, "work-area.txt"), "w") as out:
        out.write("# What this survey is to cover: the channel with its slopes.\n")
        marks = [0.0] + axis.stations[1:-1] + [axis.length]
        for side in (1, -1):
            for chainage in marks if side > 0 else reversed(marks):
                out.write("%.1f %.1f\n" % grid(*axis.place(chainage, side * half)))


def coast(rng, corners, step, rough):
    points = []
    for (ax, ay), (bx, by) in zip(corners, corners[1:]):
        count = max(1, int(math.hypot(bx - ax, by - ay) / step))
        for i in range(count):
            part = i / count
            points.append((ax + part * (bx - ax) + rng.gauss(0, rough), ay + part * (by - ay) + rng.gauss(0, rough)))
    return points + [corners[-1]]


def write_land(folder):
    rng = random.Random(3)
    north = coast(rng, [(9300, 44060), (10050, 43960), (10600, 43890), (11050, 43830), (11320, 43760), (11480, 43650), (11790, 43640),
                        (12080, 43730), (12330, 43640), (12520, 43600)], 22, 5)
    pier = [(12700, 43560), (12712, 43540), (12726, 43548), (12722, 43572), (12600, 43630), (12640, 43700), (12990, 43640), (13010, 43560),
            (13300, 43560), (13300, 43490), (13460, 43490)]
    south = coast(rng, [(13460, 43050), (13120, 43040), (12960, 43090), (12700, 43130), (12500, 43060), (12330, 42980), (12180, 42820),
                        (12230, 42610), (12380, 42430), (12350, 42200), (12560, 41980), (12700, 41600), (12640, 40900)], 22, 5)
    inland = [(14800, 40900), (14800, 45600), (9300, 45600)]
    islet = coast(rng, [(11960, 42900), (12010, 42880), (12050, 42905), (12030, 42950), (11985, 42955), (11960, 42900)], 9, 2)
    with open(os.path.join(folder, "land.txt"), "w") as out:
        out.write("# Land: the northern shore with its pier and quays and the southern shore in one, and an islet.\n")
        for polygon in (north + pier + south + inland, islet[:-1]):
            out.writelines("%.1f %.1f\n" % grid(x, y) for x, y in polygon)
            out.write("\n")


def write_faulty(axis, folder):
    """The folder with missing and bad pieces: a thin survey, spoilt by hand."""
    write_soundings(axis, folder, 1500)
    with open(os.path.join(folder, "soundings.xyz"), "a") as out:
        out.write("561500.0 5752950.0 deep 1778566200811\n11500.0 42950.0\n11500.0 42950.0 nan 1778566200811\n"
                  "561500.0,5752950.0,-12.0,1778566200811,1\n11500.0 42950.0 -12.0\n")
    with open(os.path.join(folder, "pings.txt"), "w") as out:
        out.write("beam 0 0 12.0\nping 2026-05-12T06:30:00Z 561500 5752950\nping 2026-05-12T06:30:00Z 561500 5752950 55\n"
                  "beam -3 0 13.1\nbeam 0 0 13.0 XYZ\nbeam 3 0 13.2\nbeam 6 0 4.0 MAN\n")
    with open(os.path.join(folder, "tide.tid"), "wb") as out:
        for minute in range(5 * 60, 7 * 60 + 31, 10):
            out.write(struct.pack("<dd", DAY + minute * 60000, round(tide(DAY + minute * 60000), 3)))
    with open(os.path.join(folder, "land.txt"), "w") as out:
        out.write("561050 5753880\n12520 43600\n\n11050 43880\n11050 43820\n11480 43650\n12080 43730\n12520 43600\nthe pier\n12640 43880\n")
    with open(os.path.join(folder, "track.txt"), "w") as out:
        out.write("velocity 600 2.5 1.9\n")
        for second in range(600, 1000, 10):
            x, y = axis.place((second - 600) * SPEED, 0.0)
            out.write("fix %d %.2f %.2f 0.6\n" % (second, *grid(x, y)))
        out.write("fix 700 561300 5752800 0.6\nfix 1010 561300\ncourse 1020 55\nrange 1030 560900 5753700 800 1.5\n")


def main():
    parser = argparse.ArgumentParser(description="Makes the data of the sample survey.")
    parser.add_argument("folder", nargs="?", default=HERE)
    parser.add_argument("--soundings", type=int, default=60000)
    arguments = parser.parse_args()
    os.makedirs(arguments.folder, exist_ok=True)
    axis = Axis()
    write_soundings(axis, arguments.folder, arguments.soundings)
    write_pings(axis, arguments.folder)
    write_tide(arguments.folder)
    write_track(axis, arguments.folder)
    write_lines(axis, arguments.folder)
    write_land(arguments.folder)
    if os.path.abspath(arguments.folder) == HERE:
        write_faulty(axis, os.path.join(HERE, "..", "survey-faulty"))
    else:
        for name in ("survey.ini", "depth.col", "dredge.col", "vessel.con"):
            shutil.copy(os.path.join(HERE, name), arguments.folder)


main()
