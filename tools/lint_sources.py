#!/usr/bin/env python3
"""Prints the sources through which the linter sees the given files, a line each.

Usage: lint_sources.py BUILD FILE...  BUILD holds the compile commands.  A header is seen through the
source of its name, or else through the first that includes it; what isn't compiled here (the Windows
forms) is left out.
"""
import json
import sys
from pathlib import Path


def compiled_sources(build):
    root = Path.cwd().resolve()
    entries = json.loads((Path(build) / "compile_commands.json").read_text())
    files = {Path(entry["file"]).resolve() for entry in entries}
    return sorted(f.relative_to(root).as_posix() for f in files if root in f.parents and "build" not in f.parts)


def source_for(header, sources, texts):
    own = header.removesuffix(".h") + ".cpp"
    if own in sources:
        return own
    return next((s for s in sources if f'"{header}"' in texts[s]), None)


def main(build, files):
    sources = compiled_sources(build)
    texts = {s: Path(s).read_text(errors="replace") for s in sources}
    wanted = {f if f.endswith(".cpp") else source_for(f, sources, texts) for f in files}
    print("\n".join(s for s in sources if s in wanted))


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2:])
