# SPDX-License-Identifier: Apache-2.0
"""What the extension module has Python do with files, so that it is as in Python's own functions."""

from __future__ import annotations

import os
from typing import Optional


def error_of(number: int, path: str, sentence: str) -> OSError:
    """The kind of OSError that an errno has; the path is said by Python, and so taken out of the library's sentence."""
    cause = sentence.partition(f'"{path}": ')[2]
    return OSError(number, (cause or sentence).rstrip("."), path)


def bytes_unless_file(path: str, limit: int) -> Optional[bytes]:
    """What a pipe or a device holds, up to one byte more than allowed; None for a file that the library reads itself.

    The library has no name for a file whose own isn't UTF-8; such a one is read here, too.
    """
    try:
        path.encode()
        if os.path.isfile(path):
            return None
    except UnicodeEncodeError:
        pass
    blocks, left = [], limit + 1
    with open(path, "rb") as file:
        while block := file.read(min(left, 1 << 20)):  # of a limit as large as it may be no room is taken at once
            blocks.append(block)
            left -= len(block)
    return b"".join(blocks)
