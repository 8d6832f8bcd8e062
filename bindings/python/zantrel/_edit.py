# SPDX-License-Identifier: Apache-2.0
"""A change to a parameter file that is made whole or not at all."""

from __future__ import annotations

import errno
import os
import shutil
import stat
import warnings
from types import TracebackType
from typing import Mapping, Optional, Union

from . import _zantrel
from ._types import Difference, Note, PassedOver, Type

_Path = Union[str, bytes, "os.PathLike[str]"]


class FileChanged(OSError):
    """The file that an edit would save is no longer the one that it has read."""


class edit:
    """Opens a parameter file; what the block changes is saved at its end, unless it raises.

    Where only values were changed that the file has elements for, their bytes are all that changes. Otherwise the file
    is written anew, which ends its comments and what was passed over; a warning tells so.

    `format`, `notes` and `limits` are those of load. With `backup` the old file stays beside it, with ".bak" behind its
    name. With `create` there may be no such file: then the block gets the defaults, and the file is made. A file that
    somebody else has changed since it was read is left as it is (FileChanged); with `overwrite` all of the database
    goes over it.
    """

    def __init__(
        self,
        path: _Path,
        layout: _zantrel.Layout,
        *,
        format: str = "",
        notes: Optional[list[Note]] = None,
        limits: Optional[Mapping[str, Union[int, bool]]] = None,
        backup: bool = False,
        create: bool = False,
        overwrite: bool = False,
    ) -> None:
        self._path = os.path.abspath(os.fsdecode(path))  # whatever folder the block goes to
        self._is_entered = False
        self._layout = layout
        self._format = format
        self._told = notes
        self._limits = limits
        self._backup = backup
        self._create = create
        self._overwrite = overwrite

    def __enter__(self) -> _zantrel.Database:
        if self._is_entered:
            raise RuntimeError("an edit is entered once: make another one")
        self._is_entered = True
        self._notes: list[Note] = []
        self._stamp = self._look()  # before the read, so that no change falls between the two
        if self._stamp is None and self._create:
            self._database = _zantrel.Database(self._layout)
        else:
            self._database = self._load()
            self._format = self._database.format  # of this file, whatever the block reads
        self._before = self._database.copy()
        return self._database

    def __exit__(
        self,
        kind: Optional[type[BaseException]],
        error: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None:
        if kind is None:
            changes = self._before.diff(self._database)
            if changes or self._stamp is None:
                self._save(changes)

    def _look(self) -> Optional[tuple[int, ...]]:
        """What changes whenever the file does, without reading it; None where there is none."""
        try:
            found = os.stat(self._path)
        except FileNotFoundError:
            return None
        if not stat.S_ISREG(found.st_mode) and not stat.S_ISDIR(found.st_mode):
            raise OSError(errno.EINVAL, "Only a file can be edited", self._path)
        return (found.st_dev, found.st_ino, found.st_size, found.st_mtime_ns)

    def _load(self) -> _zantrel.Database:
        database = _zantrel.load(
            self._path, self._layout, format=self._format, notes=self._notes, limits=self._limits
        )
        if self._told is not None:
            self._told.extend(self._notes)
        elif self._notes:
            sentence = f"{self._path}: {len(self._notes)} notes of the read, the first: {self._notes[0]}"
            warnings.warn(sentence, PassedOver, stacklevel=3)
        return database

    def _save(self, changes: list[Difference]) -> None:
        stamp = self._look()
        is_as_read = stamp == self._stamp
        if not is_as_read and not self._overwrite:
            sentence = "Somebody else has changed it since it was read; it was left so (overwrite=True goes over it)"
            raise FileChanged(errno.ESTALE, sentence, self._path)
        if self._backup and stamp is not None:
            shutil.copy2(self._path, self._path + ".bak")
        if is_as_read and stamp is not None and self._has_saved_texts(changes):
            return
        self._warn_of_losses(stamp is not None)
        self._database.save(self._path, format=self._format)

    def _has_saved_texts(self, changes: list[Difference]) -> bool:
        """Whether texts in place were all that had to be written."""
        texts = {change.path: self._text(change) for change in changes if change.kind == "value"}
        if len(texts) != len(changes) or None in texts.values():
            return False
        return _zantrel._edit_texts(self._path, self._layout, self._format, texts)

    def _warn_of_losses(self, is_there: bool) -> None:
        """Before the file is written anew, which a warning that is an error prevents."""
        comments = 0
        if is_there:
            with open(self._path, "rb") as file:
                comments = file.read().count(b"<!--")
        lost = [f"{comments} comment{'s' * (comments > 1)}"] * bool(comments)
        lost += ["what was passed over"] * bool(self._notes)
        if lost:
            sentence = f"{self._path} is written anew, without {' and '.join(lost)} that it had"
            warnings.warn(sentence, PassedOver, stacklevel=4)

    def _text(self, change: Difference) -> Optional[str]:
        """The value as a file has it; None for an attachment, which is no text."""
        node = self._database.at(change.path)
        assert isinstance(node, _zantrel.Parameter)
        if node.type == Type.FILE_ATTACHMENT:
            return None
        return node.text
