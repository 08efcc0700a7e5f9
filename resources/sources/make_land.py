#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes maps/land.dat, the outlines of the earth's land, from Natural Earth's at 1:50 million.

    npm pack world-atlas@2.0.2 && tar xzf world-atlas-2.0.2.tgz
    ./make_land.py package/land-50m.json ../maps/land.dat

Natural Earth (https://www.naturalearthdata.com) is in the public domain; the package world-atlas (ISC licence) has
stitched its outlines where the 180th meridian cuts them. The result is committed.

The file is a row of variable-length numbers: seven bits a byte, the lowest first, the eighth bit says that more
follow. Each outline is the number of its points, then longitude and latitude of each in hundredths of a degree as the
difference from the point before, of the outline before for the first. A difference d is written as 2d, or as -2d - 1
when it is negative. Outlines are closed; the first point is not repeated.
"""

import json
import sys

STEPS_PER_DEGREE = 100  # 1.1 km, a twentieth of a pixel of the usual map
# The package closes Antarctica with a small ring about the pole, which is no coast.
SOUTHERNMOST_COAST = -89.0


def read_arcs(topology):
    scale, origin = topology["transform"]["scale"], topology["transform"]["translate"]
    for arc in topology["arcs"]:
        x = y = 0
        points = []
        for dx, dy in arc:
            x += dx
            y += dy
            points.append((x * scale[0] + origin[0], y * scale[1] + origin[1]))
        yield points


def read_outlines(topology):
    arcs = list(read_arcs(topology))
    for geometry in topology["objects"]["land"]["geometries"]:
        for polygon in geometry["arcs"]:
            for ring in polygon:
                yield [p for i in ring for p in (arcs[i] if i >= 0 else arcs[~i][::-1])[:-1]]


def in_steps(outline):
    points = []
    for longitude, latitude in outline:
        point = (round(longitude * STEPS_PER_DEGREE), round(latitude * STEPS_PER_DEGREE))
        if not points or point != points[-1]:
            points.append(point)
    return points


def encode(number):
    code = bytearray()
    while number > 127:
        code.append(number & 127 | 128)
        number >>= 7
    code.append(number)
    return code


def encode_difference(difference):
    return encode(2 * difference if difference >= 0 else -2 * difference - 1)


def main(source, target):
    with open(source, encoding="utf-8") as file:
        outlines = [in_steps(o) for o in read_outlines(json.load(file)) if max(p[1] for p in o) > SOUTHERNMOST_COAST]
    data = bytearray()
    before = (0, 0)
    for outline in outlines:
        data += encode(len(outline))
        for point in outline:
            for now, then in zip(point, before):
                data += encode_difference(now - then)
            before = point
    with open(target, "wb") as file:
        file.write(data)
    print(f"{len(outlines)} outlines, {sum(map(len, outlines))} points, {len(data)} bytes")


if __name__ == "__main__":
    main(*sys.argv[1:])
