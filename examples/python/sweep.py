# SPDX-License-Identifier: Apache-2.0
"""sweep.py LAYOUT FILE PATH FIRST LAST FOLDER: writes twenty variants of a file, one value from first to last."""

from __future__ import annotations

import sys
from pathlib import Path

import zantrel

VARIANTS = 20


def main(layout_path: str, file: str, path: str, first: str, last: str, folder: str) -> int:
    layout = zantrel.Layout.load(layout_path, notes=[])
    database = zantrel.load(file, layout, notes=[])
    parameter = database.at(path)
    digits = None if parameter.type == zantrel.Type.INT else parameter.precision  # None makes whole numbers
    step = (float(last) - float(first)) / (VARIANTS - 1)
    Path(folder).mkdir(parents=True, exist_ok=True)
    for number in range(VARIANTS):
        # Decimals that a person would write, and not those of the sum; what may not be raises ValueError.
        parameter.value = round(float(first) + number * step, digits)
        database.save(Path(folder) / f"{Path(file).stem}_{number + 1:02}.xml")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]) if len(sys.argv) == 7 else __doc__)
