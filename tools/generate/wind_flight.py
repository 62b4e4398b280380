"""Writes the demonstration flight of direct wind control as cases of `cirrilon-cli wind steps`.

A flight from the ground through 3,000 ft to cruise and back, in weather of our own making whose wind turns through
north with height: the first case without gusts, the second one with them.

Command line:
    python3 tools/generate/wind_flight.py --out tests/data/dwc/flight.jsonl
"""

import argparse
import datetime
import json
import pathlib
import random

START = datetime.datetime(2019, 7, 1, 12, 40, tzinfo=datetime.timezone.utc)
ELEVATION = 364
CRUISE = 16000
WEATHER = {
    "metar": {"timeGroup": "011220", "dir": 250, "speed": 12, "elevation": ELEVATION, "lat": 50.03, "lon": 8.57},
    "levels": [{"altitude": altitude, "dir": direction, "speed": speed}
               for altitude, direction, speed in ((1000, 252, 15), (2500, 265, 20), (5000, 285, 24), (10000, 320, 30),
                                                  (14000, 10, 38), (18000, 50, 50), (24000, 55, 64), (30000, 60, 80))],
}
# seconds, feet a second
LEGS = ((60, 0), (480, (CRUISE - ELEVATION) / 480), (300, 0), (540, -(CRUISE - ELEVATION) / 540), (120, 0))
SECONDS_PER_EVENT = 5


def altitudes():
    """The altitude of each event, feet."""
    altitude = ELEVATION
    for seconds, rate in LEGS:
        for _ in range(seconds // SECONDS_PER_EVENT):
            altitude += rate * SECONDS_PER_EVENT
            yield round(altitude)


def flight(gusty, seed):
    """One case."""
    events = [{"after": 0, "weather": WEATHER}]
    for altitude in altitudes():
        aircraft = {"altitude": altitude, "heightAgl": altitude - ELEVATION, "magneticVariation": 3}
        events.append({"after": 0, "aircraft": aircraft, "steps": SECONDS_PER_EVENT})
    numbers = random.Random(seed)
    return {"start": int(START.timestamp()) * 1000,
            "settings": {"degreesPerSecond": 1, "knotsPerSecond": 1, "gusty": gusty},
            "random": [numbers.randrange(2**31) for _ in range(97)], "events": events}


def main():
    parser = argparse.ArgumentParser(description="Writes the demonstration flight of direct wind control.")
    parser.add_argument("--out", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    lines = [json.dumps(flight(gusty, 7), separators=(",", ":")) for gusty in (False, True)]
    arguments.out.write_text("\n".join(lines) + "\n", encoding="ascii")


if __name__ == "__main__":
    main()
