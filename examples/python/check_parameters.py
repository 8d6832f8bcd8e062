# SPDX-License-Identifier: Apache-2.0
"""check_parameters.py LAYOUT FILE...: a hook before a commit; fails where a parameter file breaks its layout."""

from __future__ import annotations

import sys

import zantrel


def main(layout_path: str, *paths: str) -> int:
    try:
        layout = zantrel.Layout.load(layout_path, notes=[])
    except (OSError, zantrel.ReadError) as error:
        print(error)
        return 2
    failed = False
    for path in paths:
        try:
            findings = zantrel.check(path, layout)
        except (OSError, zantrel.ReadError) as error:
            print(error)
            failed = True
            continue
        for finding in findings:
            if finding.severity != "note":
                print(f"{path}:{finding}")
                failed = True
    return int(failed)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]) if len(sys.argv) > 1 else __doc__)
