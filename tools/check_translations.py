#!/usr/bin/env python3
"""Fails when a text of the windows lacks its translation or has a wrong one.

Usage: check_translations.py ROOT LUPDATE [--update]

Runs lupdate on the sources into copies of translations/*.ts, so the files of the tree stay as they
are, and looks at each text of the copies: it is translated and still in use, has the placeholders
(%1, %n), tags, key (&) and last sign of the original, and no two texts of one window that have
different keys in English share a key.  English itself needs only its plural forms.
--update writes what lupdate found into the tree; new texts come as unfinished.
"""
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET
from collections import Counter
from pathlib import Path

from layer_table import top_folders

SOURCE_LANGUAGE = "en"
PLACEHOLDER = re.compile(r"%(?:L?\d{1,2}|n)|<[^<>]*>|\\n")
KEY = re.compile(r"&(\w)")
LAST = re.compile(r"(\.\.\.|\u2026|[:.?!])?\s*$")
# Signs that window texts may have beside ASCII; anything else is an escape read wrongly by lupdate,
# such as \u00B0 before a letter of A to F.
SIGNS = re.compile("[^\n -~\u00a0-\u024f\u2010-\u2044\u20ac\u2190-\u22ff\u25a0-\u27bf]")


def sources(root):
    files = (p for folder in top_folders(root) for p in (root / folder).rglob("*") if p.suffix in (".cpp", ".h"))
    return sorted(str(p) for p in files)


def run_lupdate(root, lupdate, ts_files, work):
    """What lupdate complained about, a line each."""
    listing = Path(work) / "sources.lst"
    listing.write_text("\n".join(sources(root)))
    faults = []
    for ts in ts_files:
        language = ts.stem.split("_")[1]
        command = [lupdate, "-silent", "-locations", "none", "-I", str(root), "-source-language",
                   SOURCE_LANGUAGE, "-target-language", language, f"@{listing}", "-ts", str(ts)]
        if language == SOURCE_LANGUAGE:
            command.insert(1, "-pluralonly")
        result = subprocess.run(command, capture_output=True, text=True)
        if result.returncode:
            raise SystemExit(f"lupdate failed on {ts.name}: {result.stderr}")
        faults += [line for line in result.stderr.splitlines() if "Q_OBJECT" in line or "tr()" in line]
    return sorted(set(faults))


def key_of(text):
    found = KEY.search(text.replace("&&", ""))
    return found.group(1).lower() if found and "<" not in text else ""


def faults_of_form(source, form):
    """What is wrong with one translation of one text."""
    if Counter(PLACEHOLDER.findall(source)) != Counter(PLACEHOLDER.findall(form)):
        yield "placeholders or tags differ"
    if bool(key_of(source)) != bool(key_of(form)):
        yield "key (&) in one of both only"
    if LAST.search(source).group(1) != LAST.search(form).group(1):
        yield "last sign differs"
    if source[:1].isspace() != form[:1].isspace() or source[-1:].isspace() != form[-1:].isspace():
        yield "blanks at the ends differ"


def faults_of_message(message):
    source = message.findtext("source") or ""
    translation = message.find("translation")
    kind = translation.get("type", "")
    if SIGNS.search(source):
        yield "lupdate misreads a sign of the source"
    if kind:
        yield {"unfinished": "not translated"}.get(kind, "no longer in the sources")
        return
    plural = message.get("numerus") == "yes"
    forms = [f.text or "" for f in translation.findall("numerusform")] if plural else [translation.text or ""]
    if not forms or not all(forms):
        yield "not translated"
        return
    for form in forms:
        yield from faults_of_form(source, form)


def key_clashes(context):
    """Texts of one window that lost their distinct keys."""
    pairs = [(m.findtext("source") or "", m.find("translation").text or "") for m in context.findall("message")]
    keyed = [(s, t) for s, t in pairs if key_of(s) and key_of(t)]
    for i, (source, text) in enumerate(keyed):
        for other, other_text in keyed[i + 1:]:
            if key_of(text) == key_of(other_text) and key_of(source) != key_of(other):
                yield f"{text!r} and {other_text!r} share the key {key_of(text)!r}"


def check_file(path):
    faults = []
    for context in ET.parse(path).getroot().findall("context"):
        name = f"{path.name}: {context.findtext('name')}"
        for message in context.findall("message"):
            source = message.findtext("source") or ""
            faults += [f"{name}: {source!r}: {fault}" for fault in faults_of_message(message)]
        faults += [f"{name}: {fault}" for fault in key_clashes(context)]
    return faults


def main(root, lupdate, update):
    texts = sorted((root / "translations").glob("cirrilonv3_*.ts"))
    if not texts:
        raise SystemExit("no translations found")
    with tempfile.TemporaryDirectory() as work:
        copies = [Path(shutil.copy(ts, work)) for ts in texts]
        faults = run_lupdate(root, lupdate, texts if update else copies, work)
        for ts in texts if update else copies:
            faults += check_file(ts)
    for fault in faults:
        print(fault)
    print(f"{len(faults)} faults in {len(texts)} translations")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]).resolve(), sys.argv[2], "--update" in sys.argv[3:]))
