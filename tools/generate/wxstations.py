"""Writes the table of synoptic weather stations.

Inputs, under the folder given with --data:
    the public tables named in station_tables.py
    synop/*.txt   reports, read for their station numbers only
Output: ASCII text with CRLF in fixed columns, counted from 0:
    0-5 WMO number with a 0 after it, 7-10 ICAO or blanks, 14-33 name, 34-35 ISO country or blanks,
    37-41 latitude DDMM and N or S, 43-48 longitude DDDMM and E or W, 50-53 elevation in metres,
    sorted by number.

Command line:
    python3 tools/generate/wxstations.py --data DATA --out resources/wxstations

The station history comes first: of the entries of one number the newest counts, and stations that went silent before
SILENT_BEFORE are left out unless a report or one of the other tables names them. Numbers that stand in no
history come from the two NCAR tables.
"""

import argparse
import collections
import pathlib
import re
import unicodedata

from station_tables import (ICAO, NearestCountry, data_folder, distance_km, read_history, read_metpy, read_ourairports,
                            read_syworld, translate_countries)

SILENT_BEFORE = 2005
NAME_WIDTH = 20
SAME_PLACE_KM = 150.0
LAND_REPORT = re.compile(r"AAXX \d{4}[\d/] (\d{5}) ")


def reported_numbers(data):
    """Five-digit numbers of all land stations that report."""
    numbers = set()
    for path in sorted((data / "synop").glob("*.txt")):
        for line in path.read_text(encoding="latin-1").splitlines():
            match = LAND_REPORT.match(line)
            if match:
                numbers.add(match[1])
    return numbers


def is_block_number(number):
    """Blocks 01 to 98 are land; 00 and 99 hold field exercises, buoys and ships."""
    return bool(number) and "01" <= number[:2] <= "98"


def newest_of_history(places):
    """Number to the entry that reported last."""
    newest = {}
    for place in places:
        if is_block_number(place.number) and place.last_year >= newest.get(place.number, place).last_year:
            newest[place.number] = place
    return newest


def merge(history, others, reported):
    """The table: number to Place."""
    listed = {place.number for place in others}
    table = {number: place for number, place in history.items()
             if place.last_year >= SILENT_BEFORE or number in listed or number in reported}
    for place in others:
        if not is_block_number(place.number):
            continue
        known = table.setdefault(place.number, place)
        if distance_km(known, place) > SAME_PLACE_KM:
            continue
        if not ICAO.fullmatch(known.icao) and ICAO.fullmatch(place.icao):
            known.icao = place.icao
        if known.elevation is None:
            known.elevation = place.elevation
    return table


def ascii_name(text):
    """Capitals, digits and signs of ASCII, at most as wide as the column."""
    plain = unicodedata.normalize("NFKD", text).encode("ascii", "ignore").decode("ascii")
    return " ".join(plain.upper().split())[:NAME_WIDTH].strip()


def angle_text(value, width, signs):
    """Degrees and whole minutes with the letter of the hemisphere."""
    minutes = round(abs(value) * 60)
    return f"{minutes // 60:0{width}d}{minutes % 60:02d}{signs[value < 0]}"


def row_text(place):
    """One row without its line end."""
    icao = place.icao if ICAO.fullmatch(place.icao) else ""
    latitude, longitude = angle_text(place.lat, 2, "NS"), angle_text(place.lon, 3, "EW")
    # Python counts the sign in the width: -012 fills the four columns as 0009 does.
    elevation = f"{round(place.elevation or 0.0):04d}"
    head = f"{place.number}0 {icao:<4}   {ascii_name(place.name):<{NAME_WIDTH}}{place.country:<2}"
    row = f"{head} {latitude} {longitude} {elevation}   "
    assert len(row) == 57, row
    return row


def main():
    parser = argparse.ArgumentParser(description="write the table of weather stations")
    parser.add_argument("--data", type=data_folder, required=True, help="folder of the public tables and reports")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="file to write")
    arguments = parser.parse_args()

    nearest = NearestCountry(read_ourairports(arguments.data))
    history, syworld, metpy = (reader(arguments.data) for reader in (read_history, read_syworld, read_metpy))
    for places in (history, syworld, metpy):
        translate_countries(places, nearest)
    reported = reported_numbers(arguments.data)
    table = merge(newest_of_history(history), metpy + syworld, reported)
    text = "".join(row_text(table[number]) + "\r\n" for number in sorted(table))
    arguments.out.write_bytes(text.encode("ascii"))

    print(f"{len(table)} rows, {arguments.out.stat().st_size} bytes")
    print("by source:", dict(collections.Counter(place.source for place in table.values())))
    print(f"numbers in reports: {len(reported)}, without a row: {' '.join(sorted(reported - table.keys())) or 'none'}")


if __name__ == "__main__":
    main()
