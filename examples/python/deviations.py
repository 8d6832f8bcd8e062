# SPDX-License-Identifier: Apache-2.0
"""deviations.py LAYOUT REFERENCE TABLE FILE...: what differs from a reference in many files, as a CSV table."""

from __future__ import annotations

import csv
import sys
from concurrent.futures import ThreadPoolExecutor

import zantrel


def main(layout_path: str, reference_path: str, table: str, *paths: str) -> int:
    layout = zantrel.Layout.load(layout_path, notes=[])
    reference = zantrel.load(reference_path, layout, notes=[])

    def load(path: str) -> zantrel.Database | OSError | zantrel.ReadError:
        try:
            return zantrel.load(path, layout, notes=[])
        except (OSError, zantrel.ReadError) as error:
            return error  # one file that can't be read doesn't end the table

    failed = False
    with open(table, "w", newline="", encoding="utf-8") as file, ThreadPoolExecutor() as pool:
        writer = csv.writer(file)
        writer.writerow(["file", "path", "kind", "reference", "here"])
        for path, loaded in zip(paths, pool.map(load, paths)):
            if not isinstance(loaded, zantrel.Database):
                print(loaded, file=sys.stderr)
                failed = True
                continue
            for difference in reference.diff(loaded):
                before, after = difference.before, difference.after
                writer.writerow([path, difference.path, difference.kind, before, after])
    return int(failed)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]) if len(sys.argv) > 4 else __doc__)
