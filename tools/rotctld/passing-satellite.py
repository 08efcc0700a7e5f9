#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes gpredict's files for a satellite that passes west of Copenhagen just now, from south to north, and for a
rotator on this machine: passing-satellite.py FOLDER PORT (FOLDER is .config/Gpredict)."""
import datetime
import os
import sys

LATITUDE, LONGITUDE = 55.6, 12.65  # degrees north and east, of gpredict's own sample station
START_SOUTH, PASS_WEST = 8.0, 6.0  # degrees from there when it begins
REVOLUTIONS_A_DAY = 14.2
NUMBER = 99999


def sidereal_degrees(now):
    days = now.timestamp() / 86400 + 2440587.5 - 2451545.0
    return (280.46061837 + 360.98564736629 * days) % 360


def with_checksum(line):
    return line + str(sum(int(c) if c.isdigit() else c == "-" for c in line) % 10)


def elements(now):
    start = datetime.datetime(now.year, 1, 1, tzinfo=now.tzinfo)
    day = 1 + (now - start).total_seconds() / 86400
    node = (sidereal_degrees(now) + LONGITUDE - PASS_WEST) % 360
    first = f"1 {NUMBER}U 26001A   {now:%y}{day:012.8f}  .00000000  00000-0  00000-0 0  999"
    second = (f"2 {NUMBER}  90.0000 {node:8.4f} 0001000   0.0000 {LATITUDE - START_SOUTH:8.4f} "
              f"{REVOLUTIONS_A_DAY:11.8f}    1")
    return with_checksum(first), with_checksum(second)


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as file:
        file.write(text)


def main():
    folder, port = sys.argv[1:]
    first, second = elements(datetime.datetime.now(datetime.timezone.utc))
    write(f"{folder}/satdata/{NUMBER}.sat",
          f"[Satellite]\nVERSION=1.1\nNAME=PASS\nNICKNAME=PASS\nTLE1={first}\nTLE2={second}\n")
    write(f"{folder}/modules/Amateur.mod", f"[GLOBAL]\nSATELLITES={NUMBER};\nQTHFILE=sample.qth\n")
    write(f"{folder}/hwconf/vextral.rot",
          f"[Rotator]\nHost=localhost\nPort={port}\nMinAz=0\nMaxAz=360\nMinEl=0\nMaxEl=90\nAzType=0\nAzStopPos=0\n")


main()
