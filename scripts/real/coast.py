#!/usr/bin/env python3
"""Joins the pieces of shore that `gmt coast -W -M` prints for a region into closed polygons of land.

Reads the pieces from standard input and prints one polygon after another, "longitude latitude" a line, each begun by a line
">". Pieces end where the data are cut into bins, or at the border of the region; there the border closes the polygon, land on
the left of the shore.

Usage: gmt coast -Dl -Rwest/east/south/north -A0/0/1 -W -M | coast.py west/east/south/north
"""
import math
import sys

STEPS = 20  # of a side of the border
TOLERANCE = 2e-3  # degrees; pieces are printed cut at the bins' borders, on a lattice of 10 / 65536 degrees


def read_pieces(lines):
    pieces = []
    for line in lines:
        if line.startswith(">"):
            pieces.append([])
        elif line.strip():
            x, y = (float(word) for word in line.split()[:2])
            pieces[-1].append((x, y))
    return [piece for piece in pieces if len(piece) > 1]


def near(a, b):
    return abs(a[0] - b[0]) <= TOLERANCE and abs(a[1] - b[1]) <= TOLERANCE


def join(pieces):
    """Appends to each piece the one that begins where it ends, as long as there is one: the closed ones and the others."""
    rings, left, rest = [], [], list(pieces)
    while rest:
        piece = rest.pop()
        while not near(piece[0], piece[-1]):
            following = next((other for other in rest if near(piece[-1], other[0])), None)
            if following is None:
                break
            piece.extend(following[1:])
            rest.remove(following)
        else:
            rings.append(piece[:-1] + [piece[0]])
            continue
        before = next((other for other in rest if near(other[-1], piece[0])), None)
        if before is None:
            left.append(piece)
        else:
            before.extend(piece[1:])
    return rings, left


class Border:
    """Walks round the region against the clock, from 0 at the south-west corner to 4 back there."""

    def __init__(self, west, east, south, north):
        self.west, self.east, self.south, self.north = west, east, south, north

    def place(self, point):
        x = (point[0] - self.west) / (self.east - self.west)
        y = (point[1] - self.south) / (self.north - self.south)
        return min((y, x), (1 - x, 1 + y), (1 - y, 3 - x), (x, 4 - y))[1] % 4

    def way(self, start, end):
        """Points on the way from place `start` to `end`, both left out: the corners, and steps between, for grids that bend it."""
        corners = [(self.west, self.south), (self.east, self.south), (self.east, self.north), (self.west, self.north)]
        end += 4 if end <= start else 0
        points = []
        for k in range(int(start * STEPS) + 1, math.ceil(end * STEPS)):
            side, step = divmod(k, STEPS)
            a, b = corners[side % 4], corners[(side + 1) % 4]
            points.append((a[0] + (b[0] - a[0]) * step / STEPS, a[1] + (b[1] - a[1]) * step / STEPS))
        return points


def close_along(border, open_pieces):
    rings = []
    while open_pieces:
        ring = open_pieces.pop(0)
        while True:
            place = border.place(ring[-1])
            following = min(open_pieces + [ring], key=lambda piece: (border.place(piece[0]) - place) % 4)
            ring.extend(border.way(place, border.place(following[0])))
            if following is ring:
                break
            ring.extend(following)
            open_pieces.remove(following)
        ring.append(ring[0])
        rings.append(ring)
    return rings


def main():
    border = Border(*(float(word) for word in sys.argv[1].split("/")))
    rings, open_pieces = join(read_pieces(sys.stdin))
    for ring in close_along(border, open_pieces) + rings:
        if len(set(ring)) < 3:
            continue
        print(">")
        for x, y in ring:
            print(f"{x:.8f} {y:.8f}")


main()
