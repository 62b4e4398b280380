"""Writes the track of the demonstration: a recorded flight from the taxi-out at Minneapolis to the landing at Denver.

Input, under the folder given with --data:
    tracks/trace_ac671b_leg8.csv   one point a line, with a head line
Output: the same points without the columns that name the aircraft, in order of time, each second once.

Command line:
    python3 tools/generate/demo_track.py --data DATA --out resources/demo/track.csv
"""

import argparse
import csv
import pathlib

COLUMNS = ("time_utc", "latitude", "longitude", "altitude_ft", "groundspeed_kt", "track_deg", "vertical_rate_fpm",
           "onground")


def track_lines(rows):
    """The track's columns of each row; of rows of one second the last one."""
    by_time = {row["time_utc"]: ",".join(row[column] for column in COLUMNS) for row in rows}
    return [line for _, line in sorted(by_time.items())]


def main():
    parser = argparse.ArgumentParser(description="Writes the track of the demonstration.")
    parser.add_argument("--data", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    with open(arguments.data / "tracks/trace_ac671b_leg8.csv", newline="", encoding="ascii") as file:
        lines = track_lines(csv.DictReader(file))
    arguments.out.write_text("\n".join([",".join(COLUMNS), *lines]) + "\n", encoding="ascii")


if __name__ == "__main__":
    main()
