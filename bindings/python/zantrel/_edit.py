# SPDX-License-Identifier: Apache-2.0
"""A change to a parameter file that is made whole or not at all."""

from __future__ import annotations

import os
import shutil
import warnings
from types import TracebackType
from typing import Optional, Union

from . import _zantrel
from ._types import Difference, Note, PassedOver, Type

_Path = Union[str, bytes, "os.PathLike[str]"]


class edit:
    """Opens a parameter file; what the block changes is saved at its end, unless it raises.

    Where only values were changed that the file has elements for, their bytes are all that changes. Otherwise the file
    is written anew, which ends its comments and what was passed over; a warning tells so. With `backup` the old file
    stays beside it, with ".bak" behind its name.
    """

    def __init__(self, path: _Path, layout: _zantrel.Layout, *, backup: bool = False) -> None:
        self._path = os.path.abspath(os.fsdecode(path))  # whatever folder the block goes to
        self._is_entered = False
        self._layout = layout
        self._backup = backup

    def __enter__(self) -> _zantrel.Database:
        if self._is_entered:
            raise RuntimeError("an edit is entered once: make another one")
        self._is_entered = True
        notes: list[Note] = []
        self._database = _zantrel.load(self._path, self._layout, notes=notes)
        if notes:
            sentence = f"{self._path}: {len(notes)} notes of the read, the first: {notes[0]}"
            warnings.warn(sentence, PassedOver, stacklevel=2)
        self._notes = notes
        self._before = self._database.copy()
        self._format = self._database.format  # of this file, whatever the block reads
        return self._database

    def __exit__(
        self,
        kind: Optional[type[BaseException]],
        error: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None:
        if kind is None:
            self._save(self._before.diff(self._database))

    def _save(self, changes: list[Difference]) -> None:
        if not changes:
            return
        if self._backup:
            shutil.copy2(self._path, self._path + ".bak")
        texts = {change.path: self._text(change) for change in changes if change.kind == "value"}
        texts_only = len(texts) == len(changes) and None not in texts.values()
        if texts_only and _zantrel._edit_texts(self._path, self._layout, self._format, texts):
            return
        with open(self._path, "rb") as file:
            comments = file.read().count(b"<!--")
        lost = [f"{comments} comments"] * bool(comments) + ["what was passed over"] * bool(self._notes)
        if lost:
            sentence = f"{self._path} is written anew, without {' and '.join(lost)} that it had"
            warnings.warn(sentence, PassedOver, stacklevel=3)  # before it is done, which an error then prevents
        self._database.save(self._path, format=self._format)

    def _text(self, change: Difference) -> Optional[str]:
        """The value as a file has it; None for an attachment, which is no text."""
        node = self._database.at(change.path)
        assert isinstance(node, _zantrel.Parameter)
        if node.type == Type.FILE_ATTACHMENT:
            return None
        return node.text
