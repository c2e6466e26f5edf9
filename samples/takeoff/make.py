#!/usr/bin/env python3
"""Makes the sample take-off tables: an office and teaching building of eight storeys and a basement.

    make.py            writes the tables beside the rule files, and flaws.csv beside this script
    make.py --check    compares them with what it would write, and fails when they differ

Every run gives the same files byte for byte.
"""

import pathlib
import sys

import electrical
import hvac
import plumbing
from table import csv_text

HERE = pathlib.Path(__file__).resolve().parent

TABLES = {
    "PlumbingTakeoff.csv": plumbing.takeoff,
    "ElectricalTakeoff.csv": electrical.takeoff,
    "HvacTakeoff.csv": hvac.takeoff,
}


def files():
    """Path and content of every file that this script makes."""
    flaws = [["table", "line", "id", "column", "told"]]
    made = {}
    for name, takeoff in TABLES.items():
        table = takeoff()
        made[HERE.parent / name] = table.text()
        flaws += [[name, *flaw] for flaw in table.flaws]
    made[HERE / "flaws.csv"] = csv_text(flaws)
    return made


def main():
    different = []
    for path, text in files().items():
        content = text.encode("utf-8")
        if sys.argv[1:] == ["--check"]:
            if not path.exists() or path.read_bytes() != content:
                different.append(path.name)
        else:
            path.write_bytes(content)
    if different:
        sys.exit("not what make.py makes: " + ", ".join(different))


if __name__ == "__main__":
    main()
