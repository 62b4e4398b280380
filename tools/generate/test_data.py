"""Writes the real reports and small tables that the tests read.

Inputs: the folder given with --data (metar/, synop/, taf/ and upperair/ below it), and the finished tables and
upper-air records in the folder given with --resources.
Outputs, under the folder given with --out:
    metar/reports.txt          a few thousand METARs, chosen for their variety
    synop/reports.txt          SYNOPs with their heads, one a line, without the "=" at the end
    upperair/*.txt             upper-air records with a head line, and an error line alone
    weather/small.wx           a whole small weather file around Frankfurt for 2019-07-01, 12 UTC
    tables/airports.txt, tables/wxstations.txt   the rows for small.wx and a few more

Command line:
    python3 tools/generate/test_data.py --data DATA --resources resources --out tests/data

Every choice is made by rule, never by chance: the same inputs give the same bytes.
"""

import argparse
import gzip
import hashlib
import math
import pathlib
import re

import demo_weather

METAR_ROWS, METAR_FILL = 1700, 2400
SYNOP_ROWS, SYNOP_FILL = 1300, 900
HISTORY_STEP = 12
GRID_STEP = 42
FRANKFURT = 50.03, 8.57
NEAR = {"metar": 40, "synop": 20, "taf": 10, "airport": 40}
FAR_AIRPORTS = ("00C ", "KDEN", "KMSP", "KJFK", "SAEZ", "FACT", "NZSP", "NFFN", "UHMA", "CWSA")
FAR_STATIONS = ("010010", "062400", "725300", "896060", "916800", "943350", "718160")


def shapes(line):
    """What a report's groups look like: digits as 9, letters as they are. Remarks are free text and don't count."""
    groups = line.split(" RMK")[0].split()[2:]
    return {re.sub(r"[0-9]", "9", group) for group in groups}


def pick(lines, rows, fill):
    """Lines that show group forms not seen twice yet, then others spread evenly, in the order of the input."""
    distinct = list(dict.fromkeys(line for line in lines if line))
    shuffled = sorted(range(len(distinct)), key=lambda i: hashlib.sha256(distinct[i].encode("latin-1")).digest())
    seen, chosen = {}, set()
    for index in shuffled:
        forms = shapes(distinct[index])
        if len(chosen) < rows and any(seen.get(form, 0) < 2 for form in forms):
            chosen.add(index)
            for form in forms:
                seen[form] = seen.get(form, 0) + 1
    chosen.update(range(0, len(distinct), max(1, len(distinct) // fill)))
    return [distinct[index] for index in sorted(chosen)]


def write(path, data):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(data)


def write_lines(path, lines):
    write(path, "".join(line + "\n" for line in lines).encode("latin-1"))


def raw_lines(path):
    return path.read_text(encoding="latin-1").split("\n")[:-1]


def metar_files(data, out):
    reports = [line for line in raw_lines(data / "metar/reports.txt") if len(line) <= 300]
    write_lines(out / "metar/reports.txt", pick(reports, METAR_ROWS, METAR_FILL))


def synop_files(data, out):
    folder = data / "synop"
    reports = [line for line in demo_weather.read_lines(folder / "bulletins_open.txt") if demo_weather.move_synop(line)]
    for path in sorted(folder.glob("isd_*.tsv")):
        reports += [text for _, text in demo_weather.history_rows(path)][::HISTORY_STEP]
    for path in sorted(folder.glob("ogimet_*.txt")):
        reports += pick(demo_weather.read_lines(path), SYNOP_ROWS // 2, SYNOP_FILL // 2)
    write_lines(out / "synop/reports.txt", dict.fromkeys(reports))


def upper_air_files(resources, out):
    head, *records = gzip.decompress((resources / "demo/grib.txt.gz").read_bytes()).decode("ascii").split("\n")[:-1]
    write_lines(out / "upperair/grib.txt", [head] + records[::GRID_STEP])
    write_lines(out / "upperair/error.txt", ["#Error: no data"])


def airport_positions(rows):
    """ICAO to (lat, lon)."""
    fields = (row.split(";") for row in rows if not row.startswith("#"))
    return {field[0]: (float(field[4]), float(field[5])) for field in fields}


def angle(text):
    value = int(text[:-3]) + int(text[-3:-1]) / 60
    return -value if text[-1] in "SW" else value


def station_positions(rows):
    """Six-digit number to (lat, lon)."""
    return {row[:6]: (angle(row[37:42]), angle(row[43:49])) for row in rows}


def nearness(position):
    """Angle to Frankfurt in radians; unknown positions come last."""
    if position is None:
        return math.inf
    (p, a), (q, b) = ([math.radians(value) for value in place] for place in (FRANKFURT, position))
    cosine = math.sin(p) * math.sin(q) + math.cos(p) * math.cos(q) * math.cos(a - b)
    return math.acos(max(-1.0, min(1.0, cosine)))


def nearest(reports, place_of, count):
    """The reports of the nearest places, in the order of the input."""
    ranked = sorted(range(len(reports)), key=lambda index: nearness(place_of(reports[index])))
    return [reports[index] for index in sorted(ranked[:count])]


def small_weather(data, resources, out):
    airports = (resources / "airports").read_bytes().decode("utf-8").split("\r\n")[:-1]
    stations = (resources / "wxstations").read_bytes().decode("ascii").split("\r\n")[:-1]
    by_icao, by_number = airport_positions(airports), station_positions(stations)
    metars = nearest(demo_weather.read_metars(data), lambda line: by_icao.get(line[:4]), NEAR["metar"])
    land = [report for report in demo_weather.synops(data) if report.startswith("AAXX")]
    synops = nearest(land, lambda report: by_number.get(report.split()[2] + "0"), NEAR["synop"])
    tafs = nearest(demo_weather.tafs(data), lambda report: by_icao.get(report[4:8]), NEAR["taf"])
    write(out / "weather/small.wx", demo_weather.weather_text(metars, synops, tafs).encode("ascii"))

    codes = {line[:4] for line in metars} | {report[4:8] for report in tafs} | set(FAR_AIRPORTS)
    numbers = {report.split()[2] + "0" for report in synops} | set(FAR_STATIONS)
    codes |= {row[:4] for row in nearest(airports[1:], lambda row: by_icao[row[:4]], NEAR["airport"])}
    small_airports = [airports[0]] + [row for row in airports[1:] if row[:4] in codes]
    small_stations = [row for row in stations if row[:6] in numbers or row[7:11] in codes]
    write(out / "tables/airports.txt", "".join(row + "\r\n" for row in small_airports).encode("utf-8"))
    write(out / "tables/wxstations.txt", "".join(row + "\r\n" for row in small_stations).encode("ascii"))


def main():
    parser = argparse.ArgumentParser(description="write the reports and tables of the tests")
    parser.add_argument("--data", type=pathlib.Path, required=True, help="folder of the reports")
    parser.add_argument("--resources", type=pathlib.Path, required=True, help="folder of the finished tables")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="folder to write")
    arguments = parser.parse_args()

    metar_files(arguments.data, arguments.out)
    synop_files(arguments.data, arguments.out)
    upper_air_files(arguments.resources, arguments.out)
    small_weather(arguments.data, arguments.resources, arguments.out)
    total = 0
    for path in sorted(arguments.out.rglob("*")):
        if path.is_file():
            total += path.stat().st_size
            name, lines = path.relative_to(arguments.out), path.read_bytes().count(10)
            print(f"{name}: {path.stat().st_size} bytes, {lines} lines")
    print(f"{total} bytes in all")


if __name__ == "__main__":
    main()
