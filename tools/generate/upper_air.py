"""Writes upper-air records, one line of TEMP-like groups a grid point, from a model analysis.

Input: a csv.gz with the columns
    lat, lon_east, level_hPa ("surface" or a number), hgt_gpm, temp_K, rh_pct, u_mps, v_mps, mslp_Pa
Output: text, gzipped when the name ends in .gz; first a head line "# TIME:" with the ten digits of the analysis
time (seconds since 1970), then for each grid point in the order of the input
    GRIB YYGG1 yymm0 99LaLaLa QLoLoLoLo 99PPP TTTDD dddff, then per level PPhhhhh TTTDD dddff,
    then 77 (maximum wind) and 88 (tropopause) in the same form, then L, M and H with four digits.

Command line:
    python3 tools/generate/upper_air.py --field FILE.csv.gz --time YYYY-MM-DDTHH --out grib.txt.gz

The groups, after WMO Manual on Codes FM 35: T in tenths with an odd last digit for "below zero"; DD the
depression in tenths to 50, above that whole degrees and 50; ddd in whole degrees, 0 only with calm; speeds of 100 to
199 knots are written less 100 with 360 added to ddd, higher ones with three digits.
Level codes have two digits, so 975 hPa can't be said and is left out. Levels below sea level have no height group
and are left out too; those between there and the ground stay, as the model gives them.
The surface has no humidity in the field: below the ground the model repeats the air next to it, so the lowest
level's humidity is taken. Cloud cover comes from humidity (after Sundqvist), its three other digits are the
pressure of the dampest level. Every record is read back and compared before the file is written.
"""

import argparse
import collections
import csv
import dataclasses
import datetime
import gzip
import math
import pathlib
import re

KNOTS_PER_MPS = 3600 / 1852
ZERO_CELSIUS = 273.15
DRIEST_PERCENT = 0.1
MAXIMUM_WIND_HPA = (70, 500)
TROPOPAUSE_HPA = (70, 500)
TROPOPAUSE_LAPSE = 2.0 / 1000  # K a metre
TROPOPAUSE_DEPTH = 2000.0
# Pressure band and the humidity at which the first cloud forms.
CLOUD_BANDS = {"L": (800, 1000, 0.80), "M": (450, 750, 0.70), "H": (150, 400, 0.70)}


@dataclasses.dataclass
class Level:
    """One level: pressure in hPa (0 for the surface), height in m, Celsius, percent, degrees, knots."""

    pressure: int
    height: float
    temperature: float
    humidity: float | None
    direction: float
    speed: float

    @property
    def dew_point(self):
        return dew_point(self.temperature, self.humidity)


def dew_point(temperature, humidity):
    """Magnus formula with the constants for above and below zero that readers of the records use."""
    pressure = saturation(temperature) * max(humidity or 0.0, DRIEST_PERCENT) / 100
    exponent = math.log10(pressure / 6.1078)
    a, b = (7.5, 237.3) if exponent >= 0 else (7.6, 240.7)
    return min(temperature, b * exponent / (a - exponent))


def saturation(celsius):
    a, b = (7.5, 237.3) if celsius >= 0 else (7.6, 240.7)
    return 6.1078 * 10 ** (a * celsius / (b + celsius))


def read_field(path):
    """Yields (lat, lon east, mean sea-level pressure in hPa, surface Level, other Levels from the ground up)."""
    points = collections.OrderedDict()
    with gzip.open(path, "rt", encoding="ascii", newline="") as file:
        for row in csv.DictReader(file):
            u, v = float(row["u_mps"]), float(row["v_mps"])
            level = Level(
                pressure=0 if row["level_hPa"] == "surface" else int(row["level_hPa"]),
                height=float(row["hgt_gpm"] or 0),
                temperature=float(row["temp_K"]) - ZERO_CELSIUS,
                humidity=float(row["rh_pct"]) if row["rh_pct"] else None,
                direction=math.degrees(math.atan2(-u, -v)) % 360,
                speed=math.hypot(u, v) * KNOTS_PER_MPS,
            )
            key = float(row["lat"]), float(row["lon_east"])
            points.setdefault(key, (float(row["mslp_Pa"]) / 100, []))[1].append(level)
    for (lat, lon), (sea_level, levels) in points.items():
        surface = next(level for level in levels if level.pressure == 0)
        others = sorted((level for level in levels if level.pressure), key=lambda level: -level.pressure)
        surface.humidity = others[0].humidity
        yield lat, lon if lon <= 180 else lon - 360, sea_level, surface, others


def temperature_digits(celsius):
    """TTT: the nearest tenth whose parity gives the sign."""
    tenths = celsius * 10
    if tenths < -0.5:
        return f"{round((-tenths - 1) / 2) * 2 + 1:03d}"
    return f"{max(0, round(tenths / 2) * 2):03d}"


def depression_digits(kelvin):
    """DD: tenths up to 5.0, whole degrees and 50 above, at most 49 degrees."""
    if round(kelvin * 10) <= 50:
        return f"{max(0, round(kelvin * 10)):02d}"
    return f"{min(99, 50 + round(kelvin)):02d}"


def wind_group(level):
    """dddff, or six digits from 200 knots up."""
    speed = round(level.speed)
    if speed == 0:
        return "00000"
    direction = round(level.direction) % 360 or 360
    if speed >= 200:
        return f"{direction:03d}{speed:03d}"
    return f"{direction + 360:03d}{speed - 100:02d}" if speed >= 100 else f"{direction:03d}{speed:02d}"


def temperature_group(level):
    return temperature_digits(level.temperature) + depression_digits(level.temperature - level.dew_point)


def level_code(pressure):
    """Two characters, or None for a pressure that they can't say."""
    if pressure == 925:
        return "92"
    return None if pressure % 10 else f"{pressure // 10 % 100:02d}"


def level_groups(code, level):
    return f"{code}{round(level.height):05d} {temperature_group(level)} {wind_group(level)}"


def tropopause(levels):
    """Lowest level from which the air cools by 2 K/km at most, there and on average over the next 2 km."""
    for index, level in enumerate(levels[:-1]):
        if not TROPOPAUSE_HPA[0] <= level.pressure <= TROPOPAUSE_HPA[1]:
            continue
        above = [other for other in levels[index + 1:] if other.height <= level.height + TROPOPAUSE_DEPTH]
        above = above or [levels[index + 1]]
        if all(level.temperature - other.temperature <= TROPOPAUSE_LAPSE * (other.height - level.height)
               for other in above):
            return level
    return None


def maximum_wind(levels):
    low, high = MAXIMUM_WIND_HPA
    return max((level for level in levels if low <= level.pressure <= high), key=lambda level: level.speed)


def cloud_group(letter, levels):
    """Octas and the pressure of the dampest level of the band; 1000 hPa is written 000."""
    low, high, first = CLOUD_BANDS[letter]
    damp = max((level for level in levels if low <= level.pressure <= high), key=lambda level: level.humidity or 0.0)
    humidity = min(1.0, (damp.humidity or 0.0) / 100)
    cover = 1 - math.sqrt((1 - humidity) / (1 - first)) if humidity > first else 0.0
    octas = round(8 * cover)
    return f"{letter}{octas}{damp.pressure % 1000 if octas else 0:03d}"


def quadrant(lat, lon):
    if lat >= 0:
        return 1 if lon >= 0 else 7
    return 3 if lon >= 0 else 5


def record(point, time):
    """The line of one grid point."""
    lat, lon, sea_level, surface, levels = point
    groups = [f"GRIB {time:%d%H}1 {time:%y%m}0", f"99{round(abs(lat) * 10):03d}",
              f"{quadrant(lat, lon)}{round(abs(lon) * 10):04d}", f"99{round(sea_level) % 1000:03d}",
              temperature_group(surface), wind_group(surface)]
    for level in levels:
        code = level_code(level.pressure)
        if code and round(level.height) >= 0:
            groups.append(level_groups(code, level))
    groups.append(level_groups("77", maximum_wind(levels)))
    top = tropopause(levels)
    if top:
        groups.append(level_groups("88", top))
    return " ".join(groups + [cloud_group(letter, levels) for letter in CLOUD_BANDS])


# Reading back, to be sure that what was written says what the field says.

def read_temperature(group):
    tenths, depression = int(group[:3]), int(group[3:])
    temperature = -tenths / 10 if tenths % 2 else tenths / 10
    return temperature, depression / 10 if depression <= 50 else depression - 50


def read_wind(group):
    direction, speed = int(group[:3]), int(group[3:])
    return (direction - 360, speed + 100) if direction > 360 else (direction, speed)


def complain(line, what):
    raise SystemExit(f"record doesn't say what the field says ({what}): {line}")


def check_values(line, level, temperature_text, wind_text):
    temperature, depression = read_temperature(temperature_text)
    direction, speed = read_wind(wind_text)
    if abs(temperature - level.temperature) > 0.1501:
        complain(line, "temperature")
    wanted = min(49.0, level.temperature - level.dew_point)
    if abs(depression - wanted) > (0.0501 if wanted <= 5 else 0.501):
        complain(line, "dew point")
    turn = abs((direction - level.direction + 180) % 360 - 180)
    if abs(speed - level.speed) > 0.501 or (speed and turn > 0.501):
        complain(line, "wind")


def check(line, point):
    """Takes the line apart group by group, as a reader does, and compares."""
    lat, lon, sea_level, surface, levels = point
    head = re.match(r"GRIB ([0-9]{5}) ([0-9]{5}) (99[0-9]{3}) ([0-9]{5}) ", line)
    rest = line[head.end():]
    signs = {"1": (1, 1), "3": (-1, 1), "5": (-1, -1), "7": (1, -1)}[head[4][0]]
    if abs(int(head[3][2:]) / 10 * signs[0] - lat) > 0.05 or abs(int(head[4][1:]) / 10 * signs[1] - lon) > 0.05:
        complain(line, "position")
    ground = re.match(r"99([0-9]{3}) ([0-9]{5}) ([0-9]{5}) ", rest)
    pressure = int(ground[1]) + (1000 if int(ground[1]) < 800 else 0)
    if abs(pressure - sea_level) > 0.5:
        complain(line, "pressure")
    check_values(line, surface, ground[2], ground[3])
    rest = rest[ground.end():]
    by_pressure = {level.pressure: level for level in levels}
    special = {"77": maximum_wind(levels), "88": tropopause(levels)}
    count = 0
    while match := re.match(r"([0-9/]{7}) ([0-9/]{5}) ([0-9]{5,6}) ", rest):
        code = match[1][:2]
        level = special.get(code) or by_pressure[{"00": 1000, "92": 925}.get(code, int(code) * 10)]
        if abs(int(match[1][2:]) - level.height) > 0.501:
            complain(line, "height")
        check_values(line, level, match[2], match[3])
        rest = rest[match.end():]
        count += 1
    if count < 13 or not re.fullmatch(r"L[0-8][0-9]{3} M[0-8][0-9]{3} H[0-8][0-9]{3}", rest):
        complain(line, "groups")


def main():
    parser = argparse.ArgumentParser(description="write upper-air records from a model analysis")
    parser.add_argument("--field", type=pathlib.Path, required=True, help="the analysis, csv.gz")
    parser.add_argument("--time", required=True, help="time of the analysis, UTC, as 2010-10-26T12")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="file to write")
    arguments = parser.parse_args()

    time = datetime.datetime.strptime(arguments.time, "%Y-%m-%dT%H").replace(tzinfo=datetime.timezone.utc)
    lines = [f"# TIME:{int(time.timestamp()):010d}"]
    for point in read_field(arguments.field):
        line = record(point, time)
        check(line, point)
        lines.append(line)
    text = "".join(line + "\n" for line in lines).encode("ascii")
    if arguments.out.suffix == ".gz":
        # No name and no time of packing, so that the same field gives the same bytes.
        text = gzip.compress(text, 9, mtime=0)
    arguments.out.write_bytes(text)
    print(f"{len(lines) - 1} records, {arguments.out.stat().st_size} bytes")


if __name__ == "__main__":
    main()
