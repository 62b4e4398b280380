"""Prints the answer of `cirrilon-cli nearest` for people. Reads one JSON object from standard input."""
import json
import sys


def main():
    answer = json.load(sys.stdin)
    for kind, title in (("metar", "METAR"), ("synop", "SYNOP"), ("grib", "Upper air")):
        report = answer[kind]
        if report is None:
            print(f"  {title}: none in reach")
            continue
        print(f"  {title}, {report['distance']:.0f} NM away:")
        if kind == "metar":
            for line in report["text"].splitlines():
                print(f"    {line}")
        elif kind == "synop":
            wind = report["wind"]
            print(f"    station {report['station']} {report['name']}, wind {wind['dir']:.0f}/{wind['speed']:.0f} kt,"
                  f" cloud codes {report['low']} {report['middle']} {report['high']}")
        else:
            for level in report["levels"]:
                print(f"    {level['altitude']:6d} ft  {level['dir']:03.0f}/{level['speed']:.0f} kt"
                      f"  {level['temperature']:4d} C  {level['humidity']:.0f} %")


if __name__ == "__main__":
    main()
