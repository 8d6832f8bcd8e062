# SPDX-License-Identifier: Apache-2.0
"""pack_wheel.py FOLDER WHEEL: packs what a wheel holds, with the list of files that it needs, the same bytes each time."""

import base64
import hashlib
import sys
import zipfile
from pathlib import Path


def main(folder: Path, wheel: Path) -> None:
    record = next(folder.glob("*.dist-info")) / "RECORD"
    files = sorted(path for path in folder.rglob("*") if path.is_file() and path != record)
    lines = []
    for path in files:
        data = path.read_bytes()
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
        lines.append(f"{path.relative_to(folder).as_posix()},sha256={digest},{len(data)}\n")
    record.write_text("".join(lines) + f"{record.relative_to(folder).as_posix()},,\n")
    with zipfile.ZipFile(wheel, "w", zipfile.ZIP_DEFLATED) as packed:
        for path in [*files, record]:
            entry = zipfile.ZipInfo(path.relative_to(folder).as_posix())  # dated 1980
            entry.external_attr = 0o644 << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            packed.writestr(entry, path.read_bytes())


main(Path(sys.argv[1]), Path(sys.argv[2]))
