# SPDX-License-Identifier: Apache-2.0
"""What the extension module has Python do with files, so that it is as in Python's own functions."""

from __future__ import annotations

import os
import sys
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
    with open(path, "rb") as file:
        return file.read(limit + 1 if limit < sys.maxsize else -1)
