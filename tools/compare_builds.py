#!/usr/bin/env python3
"""Says where two builds of the headless program differ, for changes that may change nothing.

Usage: compare_builds.py OLD-CLI NEW-CLI [--metar FILE]... [--synop FILE]... [--grib FILE]...
Runs every command of both programs on the bundled data, and `decode` on the named files as well,
and compares exit status, standard output, standard error and written files byte for byte.
"""
import argparse
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
DATA = ROOT / "tests/data"
DEMO = ROOT / "resources/demo"
NOW = "2019-07-01T12:10:00Z"
PLACES = ("43.20,-98.90", "50.03,8.57", "40.64,-73.78", "-33.95,151.18", "0,0", "89.5,10")
PREPARED = ("record", "fsuipc", "observations", "theme", "xplane-files", "xplane-record")
SETTINGS = {
    "plain": "",
    "without SYNOP and upper air": "[weather]\nsynopoff=true\ngriboff=true\n",
    "other clouds": "[weather]\nmixedclouds=true\nicinginclouds=false\nturbulenceincloud=false\nrange=300\n",
}


def decodings(extra):
    for kind, folder in (("metar", "metar"), ("synop", "synop"), ("grib", "upperair")):
        for file in [*sorted((DATA / folder).glob("*.txt")), *sorted((DATA / folder).glob("*.in")), *extra[kind]]:
            for elevation in ("0", "1200"):
                arguments = ["decode", kind] + (["--elevation", elevation] if kind != "grib" else [])
                yield arguments, file


def preparations(work):
    for name, text in SETTINGS.items():
        ini = work / f"{name}.ini"
        ini.write_text(text)
        store = ["--settings", str(ini), "--now", NOW, "--seed", "7", "--weather", str(DEMO / "weather.wx"),
                 "--grib", str(DEMO / "grib.txt.gz")]
        yield store + ["store", "--log", "0"]
        for pattern in ("0;100;0;99999;;KMSP", "20;100;0;99999;;", "0;100;0;99999;TS;"):
            yield store + ["search", pattern]
        for place in PLACES:
            at = store + ["--at", place]
            yield at + ["nearest"]
            yield at + ["stations", "--range", "150"]
            for what in PREPARED:
                for generation in ("11", "12") if what == "xplane-record" else ("",):
                    more = ["--generation", generation] if generation else []
                    yield at + ["--log", "0", "prepare", what] + more


def run(cli, arguments, stdin, work):
    """Everything that a call leaves: status, both streams, and the files by name."""
    out = work / "out"
    out.mkdir()
    if "prepare" in arguments and {"theme", "xplane-files"} & set(arguments):
        arguments = arguments + ["--out", str(out / "theme" if "theme" in arguments else out)]
    result = subprocess.run([cli, *arguments], stdin=stdin, cwd=work, capture_output=True)
    left = {"status": result.returncode, "output": result.stdout, "errors": result.stderr}
    for file in sorted(out.iterdir()):
        left[file.name] = file.read_bytes()
        file.unlink()
    out.rmdir()
    return left


def differences(old, new):
    for what in sorted(old.keys() | new.keys()):
        if old.get(what) != new.get(what):
            pairs = zip(*(str(left.get(what)).split("\\n") for left in (old, new)))
            line = next((f": {a[:150]} | {b[:150]}" for a, b in pairs if a != b), "")
            yield what + line


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("old", type=Path)
    parser.add_argument("new", type=Path)
    for kind in ("metar", "synop", "grib"):
        parser.add_argument(f"--{kind}", action="append", default=[], type=Path)
    options = parser.parse_args()
    count = different = 0
    with tempfile.TemporaryDirectory() as folder:
        work = Path(folder)
        calls = [(arguments, file) for arguments, file in decodings(vars(options))]
        calls += [(arguments, None) for arguments in preparations(work)]
        calls += [(["wind", "steps"], DATA / "dwc/flight.jsonl")]
        for arguments, file in calls:
            left = []
            for cli in (options.old.resolve(), options.new.resolve()):
                with open(file or "/dev/null", "rb") as stdin:
                    left.append(run(str(cli), arguments, stdin, work))
            count += 1
            for difference in differences(*left):
                different += 1
                print(f"{' '.join(arguments)} < {file}: {difference}")
    print(f"{count} calls, {different} differences")
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())
