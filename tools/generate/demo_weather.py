"""Writes the demonstration weather: one weather file of real reports for 2019-07-01, 12:10 UTC.

Inputs, under the folder given with --data:
    metar/world-hour-20190701-12Z.txt   METARs of the whole world, one a line, taken as they are
    synop/*.txt, synop/*.tsv            SYNOPs of many years
    taf/taf_open.txt                    whole TAFs of many years, one a line
Output: text with the blocks [METAR] (one a line), [SYNOP] (each ended by "=") and [TAF] (each ended by an empty
line); gzipped when the name ends in .gz.

Command line:
    python3 tools/generate/demo_weather.py --data DATA --out resources/demo/weather.wx

SYNOPs and TAFs aren't of that day, so their day and hour groups are moved, the rest stays letter by letter: a SYNOP to
the same hour of its half day between 06 and 12 UTC of the 1st; a TAF by whole days, so that it was issued on the 1st up to
12 UTC or on the 30th of June after it. All groups of a TAF move by the same number of days.
"""

import argparse
import csv
import gzip
import pathlib
import re

LAND = re.compile(r"AAXX (\d\d)(\d\d)([\d/]) (\d{5}) (?!NIL)[\d/]{5} [\d/]{5}( [\d/]{3,5})+")
SHIP = re.compile(r"(?:BBXX|OOXX) (\w{1,7}) (\d\d)(\d\d)([\d/]) 99\d{3} [1357]\d{4} [\d/]{5} [\d/]{5} .+")
TAF = re.compile(r"TAF ([A-Z]{4}) (\d\d)(\d\d)\d\dZ (\d{4}/\d{4}) (?!NIL|CNL)\S+")
DAY = "01"
JUNE = 30
WIND_UNITS = {"ms": "1", "kt": "4"}
WARM = re.compile(r" 102\d\d ")


def read_lines(path):
    """Lines cut after the first "="; what follows is no part of the report."""
    return [line.split("=")[0].strip() for line in path.read_text(encoding="latin-1").splitlines()]


def demo_hour(hour):
    """Hour of the morning of the demonstration that stands for any hour of a day."""
    half = hour % 12 or 12
    return half if half >= 6 else half + 6


def move_synop(report):
    """The report with its day and hour on the demonstration day, or None when it isn't whole."""
    if LAND.fullmatch(report):
        return f"AAXX {DAY}{demo_hour(int(report[7:9])):02d}{report[9:]}"
    ship = SHIP.fullmatch(report)
    if ship:
        return f"{report[:ship.start(2)]}{DAY}{demo_hour(int(ship[3])):02d}{report[ship.end(3):]}"
    return None


def station_of(report):
    return report.split()[2] if report.startswith("AAXX") else report.split()[1]


def morning_series(path):
    """06 to 12 UTC of the first warm 1st of a month in a file of one station, the newest first."""
    lines = read_lines(path)
    noon = next(i for i, line in enumerate(lines) if line.startswith(f"AAXX {DAY}12") and WARM.search(line))
    return [line for line in reversed(lines[noon - 6:noon + 1]) if "06" <= line[7:9] <= "12" and line[5:7] == DAY]


def history_rows(path):
    """Rows of a table of decoded reports as whole reports: (ISO time, text). The table lacks the AAXX head."""
    with open(path, encoding="latin-1", newline="") as file:
        for row in csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE):
            values = list(row.values())
            time, unit, body = values[0], values[7], values[12]
            if re.match(r"\d{5} ", body or ""):
                head = f"AAXX {time[8:10]}{time[11:13]}{WIND_UNITS.get(unit, '/')}"
                yield time, f"{head} {body.split('=')[0].strip()}"


def latest_hours(path):
    """The last report of each hour from 06 to 12 UTC in a table of one station, the newest first."""
    latest = {time[11:13]: report for time, report in history_rows(path) if time[14:16] == "00"}
    return [latest[hour] for hour in sorted(latest, reverse=True) if "06" <= hour <= "12"]


def synops(data):
    """All reports of the demonstration, moved; of the many-station file one a station, noon before other hours."""
    folder = data / "synop"
    many = [line for line in read_lines(folder / "bulletins_open.txt") if move_synop(line)]
    many += [line for line in read_lines(folder / "decoder_test_strings_open.txt") if SHIP.fullmatch(line)]
    many.sort(key=lambda report: 0 if " ".join(report.split()[1:3])[2:4] == "12" else 1)
    single = {}
    for report in many:
        single.setdefault(station_of(report), report)
    series = [morning_series(path) for path in sorted(folder.glob("ogimet_*.txt"))]
    series += [latest_hours(path) for path in sorted(folder.glob("isd_*.tsv"))]
    reports = list(single.values()) + [report for one in series for report in one]
    return [moved for moved in map(move_synop, reports) if moved]


def move_days(digits, days):
    """Day and hour, four digits, some days on in a month of 30."""
    return f"{(int(digits[:2]) - 1 + days) % JUNE + 1:02d}{digits[2:]}"


def move_taf(report):
    """The TAF with all its days moved, or None when it isn't a plain whole one."""
    match = TAF.match(report)
    if not match or match[1] == "ZZZZ":
        return None
    target = 1 if int(match[3]) <= 12 else JUNE
    days = target - int(match[2])
    groups = []
    for group in report.split():
        if re.fullmatch(r"\d{6}Z", group):
            group = move_days(group, days)
        elif re.fullmatch(r"\d{4}/\d{4}", group):
            group = f"{move_days(group[:4], days)}/{move_days(group[5:], days)}"
        elif re.fullmatch(r"FM\d{6}", group):
            group = "FM" + move_days(group[2:], days)
        elif re.fullmatch(r"T[XN]M?\d\d/\d{4}Z", group):
            group = group[:-5] + move_days(group[-5:], days)
        groups.append(group)
    return " ".join(groups)


def tafs(data):
    """One TAF a station, moved."""
    single = {}
    for report in read_lines(data / "taf/taf_open.txt"):
        moved = move_taf(report)
        if moved:
            single.setdefault(moved[4:8], moved)
    return [single[icao] for icao in sorted(single)]


def weather_text(metar_lines, synop_reports, taf_reports):
    """The three blocks as one text."""
    metar = "".join(line + "\n" for line in metar_lines)
    synop = "".join(report + "=\n" for report in synop_reports)
    taf = "".join(report + "\n\n" for report in taf_reports)
    return f"[METAR]\n{metar}[/METAR]\n[SYNOP]\n{synop}[/SYNOP]\n[TAF]\n{taf}[/TAF]\n"


def read_metars(data):
    text = (data / "metar/world-hour-20190701-12Z.txt").read_text(encoding="ascii")
    return text.split("\n")[:-1]


def main():
    parser = argparse.ArgumentParser(description="write the demonstration weather")
    parser.add_argument("--data", type=pathlib.Path, required=True, help="folder of the reports")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="file to write")
    arguments = parser.parse_args()

    blocks = read_metars(arguments.data), synops(arguments.data), tafs(arguments.data)
    text = weather_text(*blocks).encode("ascii")
    if arguments.out.suffix == ".gz":
        text = gzip.compress(text, 9, mtime=0)
    arguments.out.write_bytes(text)
    print(f"{len(blocks[0])} METARs, {len(blocks[1])} SYNOPs, {len(blocks[2])} TAFs, {len(text)} bytes")


if __name__ == "__main__":
    main()
