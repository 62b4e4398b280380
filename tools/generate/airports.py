"""Writes the table of airports, the program's list of all places that METARs are matched with.

Inputs, under the folder given with --data:
    the public tables named in station_tables.py
    metar/*.txt, metar/*.csv.gz, taf/*.txt   reports, read for their ICAO codes only; the csv.gz files are
                                             aviationweather.gov caches, which name the position too
Output: text with CRLF, a head line, then
    icao;name;country;elev;lat;lon;fs9;fsx;p3d;xplane;active
with the ICAO padded to four characters, elevation in whole feet, positions in decimal degrees, sorted by ICAO.
Which simulators know a station isn't to be had from public data, so the four flags are 1.

Command line:
    python3 tools/generate/airports.py --data DATA --out resources/airports [--hour FILE]
--hour names a file of METARs, one a line; how many of them the table can't place is printed.

What gets in: airports with an ICAO code; other open airports under a four-letter code when they are of some
size or have a long hard runway; three-character US fields with such a runway; all METAR and
NWS station codes; and every code that appears in the reports as far as any of the tables knows it.
"""

import argparse
import collections
import csv
import dataclasses
import gzip
import pathlib
import re
import unicodedata

from station_tables import (FEET_PER_METRE, ICAO, UNUSED_TYPES, NearestCountry, Place, data_folder,
                            distance_km, elevation_of, read_countries, read_hard_runways, read_history, read_metpy,
                            read_nsd, read_ourairports, read_syworld, translate_countries, usable)

HEAD = "# icao;name;country;elev;lat;lon;fs9_station;fsx_station;p3d_station;xplane_station;active"
LONG_RUNWAY_FT = 4000
LETTERS = re.compile(r"[A-Z]{4}")
FORMER_CODE = re.compile(r"\b[A-Z]{4}\b")
US_LOCAL = re.compile(r"[A-Z0-9]{3}")
MOVED_KM = 100.0
AGREE_KM = 30.0
REPORT = re.compile(r"^(?:METAR |SPECI |TAF )?(?:COR |AMD )?([A-Z][A-Z0-9]{3}) \d{6}Z\b")


def report_codes(data):
    """ICAO codes of all METARs and TAFs under the folder."""
    codes = set()
    for path in sorted((data / "metar").glob("*.txt")) + sorted((data / "taf").glob("*.txt")):
        for line in path.read_text(encoding="latin-1").splitlines():
            match = REPORT.match(line)
            if match:
                codes.add(match[1])
    return codes | {place.icao for place in read_caches(data)}


def read_caches(data):
    """Places of the report caches: position and elevation (metres) stand beside each raw report."""
    result = []
    for path in sorted((data / "metar").glob("*.csv.gz")):
        with gzip.open(path, "rt", encoding="utf-8", newline="") as file:
            rows = csv.reader(file)
            # Some of the files carry a few lines of counts before the head line.
            head = next(row for row in rows if "station_id" in row)
            column = {name: head.index(name) for name in ("station_id", "latitude", "longitude", "elevation_m")}
            for row in rows:
                if len(row) < len(head):
                    continue
                code, lat, lon, metres = (row[column[name]] for name in column)
                if ICAO.fullmatch(code) and lat and lon and usable(float(lat), float(lon)):
                    height = elevation_of(metres)
                    result.append(Place(code, "", code, "", float(lat), float(lon), height, "report cache"))
    return result


def airport_names(place, row):
    """Name, with the town after it where the name doesn't hold it, and the state in the US."""
    town = row["municipality"]
    parts = [place.name]
    if town and town.lower() not in place.name.lower():
        parts.append(town)
    if row["iso_country"] == "US":
        parts.append(row["iso_region"].removeprefix("US-"))
    return ", ".join(parts)


def named_place(place, row, code):
    """A copy of the place under one of its codes, with its full name."""
    return dataclasses.replace(place, icao=code, name=airport_names(place, row))


def airport_codes(row, runway_ft, wanted):
    """Codes under which one airport belongs into the table, the surest first."""
    codes = []
    used = row["type"] not in UNUSED_TYPES
    large = row["type"] in ("medium_airport", "large_airport") or row["scheduled_service"] == "yes"
    notable = large or runway_ft >= LONG_RUNWAY_FT
    if ICAO.fullmatch(row["icao_code"]) and (used or row["icao_code"] in wanted):
        codes.append(row["icao_code"])
    for code in (row["gps_code"], row["ident"]):
        if code in wanted or (used and notable and LETTERS.fullmatch(code)):
            codes.append(code)
    local = row["local_code"]
    if row["iso_country"] == "US" and US_LOCAL.fullmatch(local):
        if "K" + local in wanted:
            codes.append("K" + local)
        # A field with an ICAO code is never asked for by its local one.
        elif used and notable and not LETTERS.fullmatch(row["icao_code"] or row["gps_code"]):
            codes.append(local)
    return codes


def collect_airports(data, wanted):
    """Code to candidates of OurAirports: (rank, Place).

    Ranks: 0 official code, 1 GPS code, 2 identifier, 3 local code, 4 to 7 the same of a closed airport or a
    heliport, 13 a former code named among the keywords.
    """
    runways = read_hard_runways(data)
    found = collections.defaultdict(list)
    airports = read_ourairports(data)
    for place, row in airports:
        if "duplicate" in place.name.lower():
            continue
        for code in airport_codes(row, runways[row["ident"]], wanted):
            rank = 0 if code == row["icao_code"] else 1 if code == row["gps_code"] else 2 if code == row["ident"] else 3
            found[code].append((rank + (4 if row["type"] in UNUSED_TYPES else 0), named_place(place, row, code)))
        for code in FORMER_CODE.findall(row["keywords"]):
            if code in wanted:
                found[code].append((13, named_place(place, row, code)))
    return airports, found


def collect_stations(data, airports, wanted):
    """Code to candidates of the station tables, in the order of their trust."""
    nearest = NearestCountry(airports)
    found = collections.defaultdict(list)
    tables = [(8, read_metpy(data)), (9, read_nsd(data)), (10, read_syworld(data)), (11, read_history(data))]
    for rank, places in tables:
        translate_countries(places, nearest)
        for place in places:
            if US_LOCAL.fullmatch(place.icao) and "K" + place.icao in wanted:
                place.icao = "K" + place.icao
                found[place.icao].append((rank + 5, place))
            elif place.icao in wanted or rank == 9 or place.kind == "metar":
                if ICAO.fullmatch(place.icao):
                    found[place.icao].append((rank, place))
    for place in read_caches(data):
        # Platforms in the Gulf of Mexico lie far from any airport, but K is given to the United States only.
        place.country = nearest.of(place) or ("US" if place.icao.startswith("K") else "")
        found[place.icao].append((12, place))
    return found


def choose(candidates):
    """The most trusted candidate, unless two other sources agree on a place far from it.

    An official code stands against all others: they copy each other, and codes are given anew now and then.
    """
    ordered = [place for _, place in sorted(candidates, key=lambda item: item[0])]
    first = ordered[0]
    official = min(rank for rank, _ in candidates) == 0
    others = {place.source: place for place in reversed(ordered) if place.source != first.source}
    far = [place for place in others.values() if distance_km(first, place) > MOVED_KM]
    alone = not official and len(far) == len(others)
    for place in (place for place in ordered if place in far and alone):
        if any(other is not place and distance_km(place, other) < AGREE_KM for other in far):
            print(f"{first.icao}: {first.source} stands {distance_km(first, place):.0f} km from the others, "
                  f"{place.source} taken ({first.name} / {place.name})")
            first = place
            break
    near = [place for place in ordered if distance_km(first, place) < MOVED_KM]
    if first.elevation is None:
        first.elevation = next((place.elevation for place in near if place.elevation is not None), None)
    if not first.country:
        first.country = next((place.country for place in near if place.country), "")
    if first.source == "report cache" or not first.name:
        first.name = next((place.name for place in near if place.name and place.name != place.icao), first.icao)
    return first


def clean(text):
    """One line without the separator; letters outside the Latin script are left out."""
    text = unicodedata.normalize("NFC", text).replace("\u2019", "'").replace("\u2013", "-").replace(";", ",")
    kept = (c if c.isprintable() and (ord(c) < 0x180 or 0x1E00 <= ord(c) < 0x1F00 or c == "\u0259") else " "
            for c in text)
    return re.sub(r"\s+([,)])", r"\1", " ".join("".join(kept).split())).strip(" ,")


def row_text(place, countries):
    """One row without its line end."""
    feet = round((place.elevation or 0.0) * FEET_PER_METRE)
    country = clean(countries.get(place.country, ""))
    return f"{place.icao:<4};{clean(place.name)};{country};{feet};{place.lat:.7f};{place.lon:.9f};1;1;1;1;1"


def report_failures(hour, rows):
    """Prints how many METARs of the file have no row."""
    lines = [line for line in hour.read_text(encoding="latin-1").splitlines() if len(line) >= 10]
    missing = collections.Counter(line[:4] for line in lines if line[:4] not in rows)
    count = sum(missing.values())
    print(f"METARs without a row: {count} of {len(lines)} ({100 * count / len(lines):.2f} %), "
          f"{len(missing)} codes: {' '.join(sorted(missing))}")


def main():
    parser = argparse.ArgumentParser(description="write the table of airports")
    parser.add_argument("--data", type=data_folder, required=True, help="folder of the public tables and reports")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="file to write")
    parser.add_argument("--hour", type=pathlib.Path, help="METARs to check the table with")
    arguments = parser.parse_args()

    wanted = report_codes(arguments.data)
    airports, candidates = collect_airports(arguments.data, wanted)
    for code, places in collect_stations(arguments.data, airports, wanted).items():
        candidates[code] += places
    chosen = {code: choose(places) for code, places in candidates.items()}
    for code, place in chosen.items():
        place.icao = code
    countries = read_countries(arguments.data)
    lines = [HEAD] + [row_text(chosen[code], countries) for code in sorted(chosen)]
    arguments.out.write_bytes("".join(line + "\r\n" for line in lines).encode("utf-8"))

    print(f"{len(chosen)} rows, {arguments.out.stat().st_size} bytes")
    print("by source:", dict(collections.Counter(place.source for place in chosen.values())))
    print(f"codes in reports: {len(wanted)}, placed: {len(wanted & chosen.keys())}")
    if arguments.hour:
        report_failures(arguments.hour, chosen)


if __name__ == "__main__":
    main()
