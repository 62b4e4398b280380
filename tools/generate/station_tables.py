"""Readers of the public station tables, common to the generators of this folder.

Inputs (under a data folder that the caller names):
    airports/airports.csv, runways.csv, countries.csv   OurAirports
    stations/metpy_stations.txt, syworld.tbl            NCAR/Unidata station tables
    stations/nsd_cccc.txt                               NWS station list
    stations/isd-history_to_2023-04.csv                 NCEI station history

Output: lists of `Place`. This module has no command line of its own.

Every table spells countries in its own way: ISO 3166, FIPS 10-4, older two-letter codes, or English
names. Only ISO goes into the tables. A foreign code is translated by a vote: each place with that code names the
country of its nearest airport, and the most frequent answer wins. Small border errors don't matter then.
"""

import collections
import csv
import dataclasses
import math
import pathlib
import re

# Where the vote of `translate_countries` can't decide: too few airports near, or a code used by mistake.
# "" means that the code covers several of today's countries, so each place asks its own nearest airport.
COUNTRY_FIXES = {
    "NCAR stations": {"GP": "GP", "AN": "", "CS": "", "WS": "WS", "MC": "", "DN": "DK"},
    "NCAR syworld": {"LT": "CH", "YG": "", "AT": "AG", "MF": "GP", "RS": "RU", "CR": "ES", "MU": "MO", "ZM": "WS"},
    "NWS station list": {"Rwanda": "RW", "Serbia and Montenegro": "", "South Georgia and the Islands": "GS",
                         "Guadeloupe": "GP", "Netherlands Antilles": "", "Christmas Island": "CX",
                         "United States Minor Outlying Islands": "UM"},
    "NCEI station history": {"FO": "FO", "GA": "GM", "BV": "BV", "FQ": "UM", "JQ": "UM", "DQ": "UM", "SX": "GS",
                             "TL": "TK", "PC": "PN", "SV": "SJ", "CG": "CD", "CF": "CG", "RW": "RW", "BP": "SB",
                             "PN": "", "LS": "LI"},
}

ICAO = re.compile(r"[A-Z][A-Z0-9]{3}")
FEET_PER_METRE = 3.28084
KM_PER_DEGREE = 111.2
LOWEST_METRES, HIGHEST_METRES = -450.0, 8000.0
UNUSED_TYPES = ("closed", "heliport", "balloonport")


@dataclasses.dataclass
class Place:
    """One reporting place. `number` is the five-digit WMO number or ""; elevation in metres or None."""

    icao: str
    number: str
    name: str
    country: str  # ISO 3166 two letters once translated, "" unknown
    lat: float
    lon: float
    elevation: float | None
    source: str
    kind: str = ""  # OurAirports type
    last_year: int = 0  # last year of reports, station history only


def distance_km(a, b):
    """Great-circle distance of two places, good for small ones too."""
    p, q = math.radians(a.lat), math.radians(b.lat)
    half = math.sin((q - p) / 2) ** 2 + math.cos(p) * math.cos(q) * math.sin(math.radians(b.lon - a.lon) / 2) ** 2
    return 2 * math.degrees(math.asin(min(1.0, math.sqrt(half)))) * KM_PER_DEGREE


def elevation_of(text):
    """Metres, or None: the tables write numbers like -999, -999.9, -1000 and 9999 for "unknown"."""
    try:
        metres = float(text)
    except (TypeError, ValueError):
        return None
    return metres if LOWEST_METRES < metres < HIGHEST_METRES else None


def usable(lat, lon):
    """(0, 0) stands for "unknown" in all of these tables."""
    return abs(lat) <= 90 and abs(lon) <= 180 and (abs(lat) > 0.001 or abs(lon) > 0.001)


def read_countries(data):
    """ISO code to English name."""
    with open(data / "airports/countries.csv", encoding="utf-8", newline="") as file:
        return {row["code"]: row["name"] for row in csv.DictReader(file)}


def read_ourairports(data):
    """All airports as (Place, row); the caller picks the codes it wants from the row."""
    result = []
    with open(data / "airports/airports.csv", encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            lat, lon = float(row["latitude_deg"]), float(row["longitude_deg"])
            if not usable(lat, lon):
                continue
            feet = row["elevation_ft"]
            metres = float(feet) / FEET_PER_METRE if feet else None
            place = Place("", "", row["name"], row["iso_country"], lat, lon, metres, "OurAirports", row["type"])
            result.append((place, row))
    return result


def read_hard_runways(data):
    """Airport identifier to the length in feet of its longest open hard runway."""
    hard = re.compile(r"ASP|CON|BIT|TAR|PEM|PAVED|MAC|HARD", re.IGNORECASE)
    longest = collections.defaultdict(float)
    with open(data / "airports/runways.csv", encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            if row["closed"] != "1" and hard.match(row["surface"].strip()) and row["length_ft"]:
                longest[row["airport_ident"]] = max(longest[row["airport_ident"]], float(row["length_ft"]))
    return longest


def read_metpy(data):
    """NCAR table: fixed columns, degrees and whole minutes, elevation in metres, country in ISO."""
    row = re.compile(r"^(\d+) (\d\d)([NS])\s+(\d+) (\d\d)([EW])\s*(-?\d+)?")
    result = []
    for line in (data / "stations/metpy_stations.txt").read_text(encoding="latin-1").splitlines():
        match = row.match(line[39:59].strip())
        if line.startswith("!") or not match:
            continue
        lat = (int(match[1]) + int(match[2]) / 60) * (-1 if match[3] == "S" else 1)
        lon = (int(match[4]) + int(match[5]) / 60) * (-1 if match[6] == "W" else 1)
        elevation = elevation_of(match[7])
        icao, number = line[20:24].strip(), line[32:37].strip()
        country = line[81:83].strip() if len(line) > 82 else ""
        if usable(lat, lon):
            place = Place(icao, number, line[3:19].strip(), country, lat, lon, elevation, "NCAR stations")
            # Column 62 marks places that send METARs.
            place.kind = "metar" if line[62:63] == "X" else ""
            result.append(place)
    return result


def read_syworld(data):
    """NCAR table of synoptic stations: positions in hundredths of a degree, elevation in metres."""
    row = re.compile(r"\s+(-?\d+)\s+(-?\d+)\s+(-?\d+)")
    result = []
    for line in (data / "stations/syworld.tbl").read_text(encoding="latin-1").splitlines():
        match = row.match(line[50:])
        if line.startswith("!") or not match or not line[5:11].strip().isdigit():
            continue
        lat, lon = int(match[1]) / 100, int(match[2]) / 100
        elevation = elevation_of(match[3])
        if usable(lat, lon):
            number = line[5:11].strip().zfill(5)
            country = line[48:50].strip()
            result.append(Place(line[0:4].strip(), number, line[12:44].strip(), country, lat, lon, elevation,
                                "NCAR syworld"))
    return result


def _degrees(text):
    match = re.fullmatch(r"(\d+)-(\d+)(?:-(\d+))?([NSEW])", text.strip())
    if not match:
        return None
    value = int(match[1]) + int(match[2]) / 60 + int(match[3] or 0) / 3600
    return -value if match[4] in "SW" else value


def read_nsd(data):
    """NWS list: fields separated by ";", positions as DD-MM[-SS]H, country as an English name."""
    result = []
    for line in (data / "stations/nsd_cccc.txt").read_text(encoding="latin-1").splitlines():
        field = line.split(";")
        if len(field) < 12:
            continue
        lat, lon = _degrees(field[7]), _degrees(field[8])
        if lat is None or lon is None or not usable(lat, lon):
            continue
        number = field[1] + field[2] if (field[1] + field[2]).isdigit() else ""
        elevation = elevation_of(field[11])
        result.append(Place(field[0].strip(), number, field[3].strip(), field[5].strip(), lat, lon, elevation,
                            "NWS station list"))
    return result


def read_history(data):
    """NCEI station history: six-digit numbers, countries in FIPS 10-4, elevation in metres."""
    result = []
    with open(data / "stations/isd-history_to_2023-04.csv", encoding="latin-1", newline="") as file:
        for row in csv.DictReader(file):
            try:
                lat, lon = float(row["LAT"]), float(row["LON"])
            except ValueError:
                continue
            if not usable(lat, lon):
                continue
            elevation = elevation_of(row["ELEV(M)"])
            number = row["USAF"][:5] if re.fullmatch(r"\d{5}0", row["USAF"]) else ""
            result.append(Place(row["ICAO"].strip(), number, row["STATION NAME"].strip(), row["CTRY"].strip(), lat, lon,
                                elevation, "NCEI station history", last_year=int(row["END"][:4])))
    return result


class NearestCountry:
    """Country of the airport nearest to a position, found on a grid of whole degrees."""

    def __init__(self, airports):
        self._cells: dict[tuple[int, int], list[Place]] = collections.defaultdict(list)
        for place, row in airports:
            if row["type"] not in UNUSED_TYPES:
                self._cells[math.floor(place.lat), math.floor(place.lon)].append(place)

    def of(self, place, limit_km=150.0):
        """ISO code, or "" when no airport lies within the limit."""
        row, column = math.floor(place.lat), math.floor(place.lon)
        best, best_km = "", limit_km
        for lat in range(row - 1, row + 2):
            for lon in range(column - 2, column + 3):
                for airport in self._cells.get((lat, (lon + 180) % 360 - 180), ()):
                    km = distance_km(place, airport)
                    if km < best_km:
                        best, best_km = airport.country, km
        return best


def translate_countries(places, nearest):
    """Replaces each code of one table by the ISO code that most of its places vote for."""
    votes = collections.defaultdict(collections.Counter)
    for place in places:
        if place.country:
            votes[place.country][nearest.of(place)] += 1
    for counter in votes.values():
        counter.pop("", None)
    table = {code: counter.most_common(1)[0][0] if counter else "" for code, counter in votes.items()}
    table.update(COUNTRY_FIXES[places[0].source])
    for place in places:
        place.country = table.get(place.country, "") or nearest.of(place, 60.0)


def data_folder(text):
    """The --data argument; ends with a clear message when the folder isn't one."""
    path = pathlib.Path(text)
    if not (path / "airports/airports.csv").is_file():
        raise SystemExit(f"{text}: expected a folder with airports/airports.csv and stations/ in it")
    return path
