#!/usr/bin/env python3
"""Plots the wind of direct wind control over a flight as PNG.

Reads what `cirrilon-cli wind steps` answers on standard input and the cases that it was given, one column of charts a
case: altitude, direction and speed over time. Needs gnuplot (Debian: gnuplot-nox).

    cirrilon-cli wind steps < tests/data/dwc/flight.jsonl |
        python3 tools/plot_wind.py --cases tests/data/dwc/flight.jsonl --out docs/direct-wind.png
"""

import argparse
import json
import pathlib
import shutil
import subprocess
import sys

CHART_WIDTH = 600
HEIGHT = 900
GUST_LIMIT_FEET = 3000

HEAD = """set terminal pngcairo size {width},{height} font "sans,11" background "#ffffff"
set output "{out}"
set multiplot
set grid xtics ytics linetype 1 linecolor "#dddddd" linewidth 1
set border linecolor "#444444"
set xrange [0:{minutes}]
set style line 1 linecolor "#9a9a9a" linewidth 1
set style line 2 linecolor "#d95f02" linewidth 1.5 dashtype (6,12)
set style line 3 linecolor "#1b63a5" linewidth 2
"""

COLUMN = """set lmargin at screen {left}
set rmargin at screen {right}
set title "{title}"
set xlabel
set format x ""
set key default
set tmargin at screen 0.95
set bmargin at screen 0.71
set ylabel "Altitude (ft)"
set yrange [0:*]
set ytics 5000
set arrow 1 from graph 0, first {gust_limit} to graph 1, first {gust_limit} nohead linecolor "#9a9a9a" dashtype 3
set label 1 "3,000 ft above the ground" at graph 0.5, first {gust_limit} center offset 0,0.6 textcolor "#666666"
plot $altitude{index} using 1:2 with lines linestyle 3 title "aircraft"
unset arrow 1
unset label 1
unset title
set tmargin at screen 0.68
set bmargin at screen 0.39
set ylabel "Direction (degrees true)"
set yrange [0:360]
set ytics 90
set key default
set key at graph 0.97, graph 0.5
plot {direction}
set tmargin at screen 0.36
set bmargin at screen 0.07
set ylabel "Speed (kt)"
set yrange [0:*]
set ytics 10
set xlabel "Time (min)"
set format x "%g"
set key default
set key bottom center
plot {speed}
"""


class InputError(Exception):
    """Why the input can't be plotted; one line."""


def json_lines(text, name):
    """One object for each line that isn't empty."""
    try:
        return [json.loads(line) for line in text.splitlines() if line.strip()]
    except (ValueError, RecursionError) as error:
        raise InputError(f"{name}: {error}") from error


def given(fields, name, default):
    """The value of a field; like cirrilon-cli it takes one that is null for absent."""
    value = fields.get(name)
    return default if value is None else value


def altitude_times(case):
    """(ms since the start, feet) whenever the case says where the aircraft is, and at its end."""
    now, altitude, times = 0, 0, []
    for event in given(case, "events", []):
        now += given(event, "after", 1000)
        aircraft = given(event, "aircraft", None)
        if aircraft is not None:
            altitude = given(aircraft, "altitude", 0)
            times.append((now, altitude))
        steps = given(event, "steps", 0) + given(event, "xplaneSteps", 0)
        now += given(event, "every", 1000) * steps
    times.append((now, altitude))
    return times


def broken_at_north(points):
    """Directions without a stroke across the chart where they pass north: None stands for a gap."""
    line, before = [], None
    for time, direction in points:
        if before is not None and abs(direction - before) > 180:
            line.append(None)
        line.append((time, direction))
        before = direction
    return line


def with_gust(step, field):
    """The target with the gust wind in force added."""
    value = step["target"][field] + step["force"][field]
    return value % 360 if field == "dir" else value


def series_of(case, answer):
    """The name and points (minutes, value) of each line of one column."""
    if "error" in answer:
        raise InputError("the case wasn't answered: " + answer["error"])
    start = given(case, "start", 0)
    steps = [step for step in answer["steps"] if "out" in step]
    if not steps:
        raise InputError("a case without steps of the wind at the aircraft")
    times = [(step["at"] - start) / 60000 for step in steps]
    series = {"altitude": [(at / 60000, feet) for at, feet in altitude_times(case)]}
    for field in ("dir", "speed"):
        values = {"target": [step["target"][field] for step in steps], "out": [step["out"][field] for step in steps],
                  "gust": [with_gust(step, field) for step in steps]}
        for name, numbers in values.items():
            points = list(zip(times, numbers))
            series[name + field] = broken_at_north(points) if field == "dir" else points
    return series, any(step["force"]["speed"] or step["force"]["dir"] for step in steps)


def data_block(name, points):
    """A gnuplot data block; a gap is an empty line."""
    rows = ["" if point is None else f"{point[0]:.5f} {point[1]:.5f}" for point in points]
    return f"${name} << END\n" + "\n".join(rows) + "\nEND\n"


def strokes(field, index, gusty):
    """What one chart shows, from the lowest stroke to the highest."""
    shown = [("gust", 1, "target with gust")] if gusty else []
    shown += [("out", 3, "set in the simulator"), ("target", 2, "target: the real wind")]
    return ", ".join(f'${name}{field}{index} using 1:2 with lines linestyle {style} title "{title}"'
                     for name, style, title in shown)


def ground_of(case):
    """Elevation of the first METAR, feet."""
    weathers = (given(event, "weather", None) for event in given(case, "events", []))
    first = next((weather for weather in weathers if weather is not None), {})
    return given(given(first, "metar", {}), "elevation", 0)


def gnuplot_script(cases, answers, out):
    """The whole input of gnuplot."""
    columns = [series_of(case, answer) for case, answer in zip(cases, answers)]
    minutes = max(series["altitude"][-1][0] for series, _ in columns)
    quoted = str(out).replace("\\", "\\\\").replace('"', '\\"')
    script = HEAD.format(width=CHART_WIDTH * len(columns), height=HEIGHT, out=quoted, minutes=minutes)
    for index, (series, gusty) in enumerate(columns):
        script += "".join(data_block(f"{name}{index}", points) for name, points in series.items())
        ground = ground_of(cases[index])
        script += COLUMN.format(index=index, left=(index + 0.14) / len(columns), right=(index + 0.97) / len(columns),
                                title="With gusts" if gusty else "Without gusts", gust_limit=ground + GUST_LIMIT_FEET,
                                direction=strokes("dir", index, gusty), speed=strokes("speed", index, gusty))
    return script + "unset multiplot\n"


def plot(arguments):
    """Draws the picture; it is complete or absent."""
    cases = json_lines(arguments.cases.read_text(encoding="utf-8"), str(arguments.cases))
    answers = json_lines(sys.stdin.read(), "standard input")
    if not cases or len(cases) != len(answers):
        raise InputError(f"{len(cases)} cases, but {len(answers)} answers")
    program = shutil.which(arguments.gnuplot)
    if program is None:
        raise InputError(f"{arguments.gnuplot}: no such program (Debian: apt-get install gnuplot-nox)")
    if arguments.out.is_dir() or not arguments.out.parent.is_dir():
        raise InputError(f"{arguments.out}: not the name of a file in a folder that exists")
    unfinished = arguments.out.with_name(arguments.out.name + ".part")
    try:
        script = gnuplot_script(cases, answers, unfinished)
    except (AttributeError, KeyError, TypeError) as error:
        raise InputError(f"these aren't the cases and answers of cirrilon-cli wind steps: {error}") from error
    try:
        subprocess.run([program], input=script, text=True, check=True)
        unfinished.replace(arguments.out)
    finally:
        unfinished.unlink(missing_ok=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--cases", type=pathlib.Path, required=True, help="the cases, one a line")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="the picture")
    parser.add_argument("--gnuplot", default="gnuplot", help="the program that draws")
    try:
        plot(parser.parse_args())
    except (InputError, OSError, UnicodeDecodeError, subprocess.CalledProcessError) as error:
        sys.exit(f"plot_wind.py: {error}")


if __name__ == "__main__":
    main()
