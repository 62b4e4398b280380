"""The table of libraries and programs in tools/layers.txt, for the checks and scripts that go by it."""
from pathlib import Path
from typing import NamedTuple

TABLE = "tools/layers.txt"


class Row(NamedTuple):
    name: str
    folder: str  # or main file
    included: list  # names


def read_rows(root):
    rows = []
    for line in (Path(root) / TABLE).read_text().splitlines():
        if line.strip() and not line.startswith("#"):
            name, folder, included = (part.strip() for part in line.replace("::", "@").split(":")[:3])
            names = {"-": [], "*": [row.name for row in rows]}.get(included, included.split())
            rows.append(Row(name, folder, names))
    return rows


def top_folders(root):
    """The folders directly below the root that hold the program's code."""
    return sorted({row.folder.split("/")[0] for row in read_rows(root)})
