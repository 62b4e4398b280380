"""Writes the two SOURCES.md: origin, licence and SHA-256 of the generated files and of what they were made from.

Inputs: the folder given with --data (see the other generators) and the generated files under the project's root.
Outputs: resources/SOURCES.md and tests/data/SOURCES.md below the folder given with --root.

Command line:
    python3 tools/generate/sources.py --data DATA --root .
"""

import argparse
import hashlib
import pathlib

OURAIRPORTS = ("OurAirports, https://ourairports.com/data/", "public domain")
NCAR = ("NCAR/Unidata station tables", "BSD")
NOAA = ("NOAA, aviationweather.gov", "public domain (US government)")
WMO = ("public WMO exchange, NOAA collective", "public domain (US government); reports are facts")
FACTS = ("reports of the public WMO/ICAO exchange, collected from open archives", "facts")

TABLE_INPUTS = {
    "airports/airports.csv": OURAIRPORTS,
    "airports/runways.csv": OURAIRPORTS,
    "airports/countries.csv": OURAIRPORTS,
    "stations/metpy_stations.txt": NCAR,
    "stations/syworld.tbl": NCAR,
    "stations/nsd_cccc.txt": ("NWS, station list nsd_cccc", "public domain (US government)"),
    "stations/isd-history_to_2023-04.csv": ("NOAA/NCEI, Integrated Surface Database station history",
                                            "public domain (US government)"),
}
METAR_INPUTS = {
    "metar/reports.txt": NOAA,
    "metar/world-hour-20190701-12Z.txt": WMO,
    "metar/wmo_collective_20190701_1200.txt": WMO,
    "metar/noaa_cycle_20111123_02Z.txt": ("NOAA, METAR cycle file", "public domain (US government)"),
    "metar/awc_cache_20200502_0040Z.csv.gz": NOAA,
    "metar/awc_cache_20221023_1137Z.csv.gz": NOAA,
    "metar/odd-reports.txt": FACTS,
    "metar/odd-strings.txt": FACTS,
    "metar/malformed.txt": FACTS,
}
SYNOP_INPUTS = {
    "synop/bulletins_open.txt": ("WMO open data bulletins", "facts"),
    "synop/bulletins/SSVX06_LFVW_011600___51411.txt": ("WMO open data bulletins", "facts"),
    "synop/bulletins/all_groups.txt": ("WMO open data bulletins", "facts"),
    "synop/decoder_test_strings_open.txt": FACTS,
    "synop/ogimet_11035.txt": ("ogimet.com, reports of one station", "facts"),
    "synop/ogimet_11082.txt": ("ogimet.com, reports of one station", "facts"),
    "synop/isd_010060-99999-2014.tsv": ("NOAA/NCEI, Integrated Surface Database", "public domain (US government)"),
    "synop/isd_725300.txt.tsv": ("NOAA/NCEI, Integrated Surface Database", "public domain (US government)"),
}
TAF_INPUTS = {
    "taf/taf_open.txt": FACTS,
    "taf/decoder_test_strings_open.txt": FACTS,
    "taf/taf_first_lines_open.txt": NOAA,
}
FIELD_INPUT = {
    "upperair/gfs_20101026_1200Z_1deg.csv.gz": ("NOAA, GFS analysis, 26 October 2010, 12 UTC, 1 degree",
                                                "public domain (US government)"),
}
TRACK_INPUT = {
    "tracks/trace_ac671b_leg8.csv": ("open ADS-B data, collected in a public repository", "MIT"),
}

RESOURCES_TEXT = """# Where the resources come from

All files named here are generated from public data; none is edited by hand. `DATA` stands for a folder with the
inputs, `.` for the root of the project. The generators need Python 3.11 or later and nothing else.

| File | Made by |
|---|---|
| `airports` | `python3 tools/generate/airports.py --data DATA --out resources/airports --hour DATA/metar/world-hour-20190701-12Z.txt` |
| `wxstations` | `python3 tools/generate/wxstations.py --data DATA --out resources/wxstations` |
| `demo/weather.wx` | `python3 tools/generate/demo_weather.py --data DATA --out resources/demo/weather.wx` |
| `demo/grib.txt.gz` | `python3 tools/generate/upper_air.py --field DATA/upperair/gfs_20101026_1200Z_1deg.csv.gz --time 2010-10-26T12 --out resources/demo/grib.txt.gz` |
| `demo/track.csv` | `python3 tools/generate/demo_track.py --data DATA --out resources/demo/track.csv` |
| this file | `python3 tools/generate/sources.py --data DATA --root .` |

`cirrilon.qrc`, `demo.qrc`, `gui.qrc` and the drawings in `icons/` are our own.

## The tables

`airports` takes a position from OurAirports where it knows the code, else from the NCAR station table, the NWS list, the
synoptic table, the station history or, last, the positions that stand beside the reports of the caches. The report
files are read for the codes that report, so that each of them gets a row when any table knows it. The four simulator flags
are not known from public data and are 1.
`wxstations` takes the newest entry of a number in the station history (numbers of six digits that end in 0, reporting in 2005 or
later, or listed in one of the NCAR tables, or found in a report), and from the NCAR tables what the history lacks.
Country codes of the tables are translated to ISO 3166.

## The demonstration

The clock of the demonstration is 2019-07-01T12:10:00Z, the aircraft stands between Minneapolis and Denver.

- The METARs are those of that hour, as they were.
- The SYNOPs are of other years. Only their day and hour are moved: to the 1st, to an hour between 06 and 12 UTC.
- The TAFs are of other years. All their days are moved by the same number: the TAF was issued on the 1st up to 12 UTC, or on the
  30th of June after it. Whole hours and minutes are as they were.
- The upper-air records are those of 26 October 2010, 12 UTC, so wind and temperature aloft don't belong to the
  reports. Surface humidity, tropopause, maximum wind and cloud cover are derived as the generator's head tells.

`cirrilon-wxserver` serves these two files, built in by `demo.qrc`, and moves them to the present: METARs, SYNOPs and TAFs by
whole hours, so that the newest is at most an hour old, upper-air records to the latest cycle of six hours. Its other documents
are made from them when they are asked for: `global_wind.grib` holds the wind of the upper-air records at 300, 250 and 200 hPa as
GRIB2 messages on their grid (20 to 65 N, 150 to 50 W, so in spite of the name not the globe); `global_turbulence.grib` the
shear of that wind in the same form, in percent of 40 m/s, in place of a turbulence that isn't known. The events and the
values of the info file are our own.

`demo/track.csv` is the flight of the stand-in simulator: Minneapolis to Denver as its transponder told it on 5 February 2025,
from the taxi-out to the landing roll, built in by `standins/simulator/simulator.qrc`. Columns that name the aircraft are left out.
The simulator puts a gate at each end.

## Files

"""

TESTS_TEXT = """# Where the test data come from

Real reports of the public exchange, chosen by rule from the inputs named below, and a few rows of our own tables. Report texts
are facts. The files of this table are made by
`python3 tools/generate/test_data.py --data DATA --resources resources --out tests/data`, where `DATA` stands for a folder
with the inputs; this file by `python3 tools/generate/sources.py --data DATA --root .`.

| File | What it is |
|---|---|
| `metar/reports.txt` | METARs from 2011 to 2026, chosen so that every form of group appears, one a line |
| `synop/reports.txt` | FM-12 and FM-13 with heads, one a line, without "="; the history rows lack a head and got one from their time |
| `upperair/grib.txt` | every 42nd record of `resources/demo/grib.txt.gz`, with its head line |
| `upperair/error.txt` | the other form of the text |
| `weather/small.wx` | a weather file around Frankfurt for 2019-07-01, 12 UTC; days of its SYNOPs and TAFs are moved |
| `tables/airports.txt`, `tables/wxstations.txt` | the rows of `resources/` for it, and some far ones |

The reports of the decoder tests are in `.in` files, one a line; each has beside it the `.out` with what they decode to.

| File | Chosen from |
|---|---|
| `metar/reports.in` | `metar/reports.txt` and `DATA/metar/world-hour-20190701-12Z.txt` |
| `metar/odd.in` | `DATA/metar/odd-reports.txt`, `odd-strings.txt`, `malformed.txt` |
| `synop/reports.in` | `synop/reports.txt` |
| `synop/odd.in` | all of `DATA/synop/decoder_test_strings_open.txt` and of the bulletins what is NIL, unfinished or of another code |
| `upperair/reports.in` | `upperair/grib.txt`, with and without the head line |
| `forms.in` | every form of each group and what only looks like one: real reports and our own |

Of each source those were taken that together go every way through the decoder which any of its reports goes: the reports,
a file each, merged by their fuzz target (`MetarFuzz -merge=1 chosen reports`).

Everything else below this folder is our own: written by hand, made by `tools/generate/wind_flight.py` (`dwc/`), or what the
program gives: the `.out` files, `expected/` for the small weather file, and `bridge/session.txt`, what the program (`> `) and the
stand-in simulator (`< `) said to each other, a message a line. A test that finds something else leaves it in the
build folder; after a wanted change the test program with `CIRRILON_UPDATE_EXPECTED=1` writes these files anew.

## Files

"""

GENERATED = ("airports", "wxstations", "demo", "metar", "synop", "taf", "upperair", "weather", "tables")


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def file_table(folder):
    """Name, size and sum of each generated file below the folder."""
    rows = ["| File | Bytes | SHA-256 |", "|---|---|---|"]
    for path in sorted(folder.rglob("*")):
        if path.is_file() and path.suffix != ".out" and path.relative_to(folder).parts[0] in GENERATED:
            rows.append(f"| `{path.relative_to(folder)}` | {path.stat().st_size} | `{digest(path)}` |")
    return "\n".join(rows) + "\n"


def input_table(data, inputs):
    rows = ["| Below `DATA` | Origin | Licence | SHA-256 |", "|---|---|---|---|"]
    for name, (origin, licence) in inputs.items():
        rows.append(f"| `{name}` | {origin} | {licence} | `{digest(data / name)}` |")
    return "\n".join(rows) + "\n"


def main():
    parser = argparse.ArgumentParser(description="write the files that tell where data come from")
    parser.add_argument("--data", type=pathlib.Path, required=True, help="folder of the inputs")
    parser.add_argument("--root", type=pathlib.Path, required=True, help="root of the project")
    arguments = parser.parse_args()

    reports = METAR_INPUTS | SYNOP_INPUTS | TAF_INPUTS
    for folder, text, inputs in (("resources", RESOURCES_TEXT,
                                  TABLE_INPUTS | reports | FIELD_INPUT | TRACK_INPUT),
                                 ("tests/data", TESTS_TEXT, TABLE_INPUTS | reports | FIELD_INPUT)):
        path = arguments.root / folder
        body = text + file_table(path) + "\n## Inputs\n\n" + input_table(arguments.data, inputs)
        (path / "SOURCES.md").write_text(body, encoding="utf-8")


if __name__ == "__main__":
    main()
