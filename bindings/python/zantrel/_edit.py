# SPDX-License-Identifier: Apache-2.0
"""A change to a parameter file that is made whole or not at all."""

from __future__ import annotations

import errno
import os
import re
import shutil
import stat
import warnings
from types import TracebackType
from typing import Mapping, Optional, Union

from . import _zantrel
from ._types import Difference, Note, PassedOver, Type, WriteError

_Path = Union[str, bytes, "os.PathLike[str]"]

_COMMENT = re.compile(rb"<!--|<\0!\0-\0-")  # in UTF-16 of either byte order
_OTHER_ENCODING = re.compile(rb"[^>]*\0|[^<]*<\?xml[^>]*\sencoding\s*=\s*[\"'](?!utf-8[\"'])", re.IGNORECASE)


class FileChanged(OSError):
    """The file that an edit would save is no longer the one that it has read."""


class edit:
    """Opens a parameter file; what the block changes is saved at its end, unless it raises.

    Where only values were changed that the file has elements for, their bytes are all that changes. Otherwise the file
    is written anew, which ends its comments, what was passed over, flags that are read and never written, and another
    encoding than UTF-8; a warning tells so. Where its format can't keep a change, it stays as it was (WriteError).

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
        if notes is not None and not hasattr(notes, "extend"):
            raise TypeError(f"notes must be a list, not {type(notes).__name__}")
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
        self._format = self._format or self._database.format  # of this file, whatever the block reads
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
            count = f"{len(self._notes)} note{'s' * (len(self._notes) > 1)}"
            sentence = f"{self._path}: {count} of the read, the first: {self._notes[0]}"
            warnings.warn(sentence, PassedOver, stacklevel=3)
        return database

    def _save(self, changes: list[Difference]) -> None:
        stamp = self._look()
        is_as_read = stamp == self._stamp
        if not is_as_read and not self._overwrite:
            who = "by somebody else or by a save in the block"
            sentence = f"It has changed since it was read, {who}; it was left so (overwrite=True goes over it)"
            raise FileChanged(errno.ESTALE, sentence, self._path)
        if self._backup and stamp is not None:
            shutil.copy2(self._path, self._path + ".bak")
        if is_as_read and stamp is not None and self._has_saved_texts(changes):
            return
        self._warn_of_losses(stamp is not None, self._require_kept(changes))
        self._database.save(self._path, format=self._format)

    def _has_saved_texts(self, changes: list[Difference]) -> bool:
        """Whether texts in place were all that had to be written."""
        wanted = {change.path for change in changes if change.kind == "value"}
        # A path of findings may be that of several places, and is that of none in a list's template.
        met = [row.path for row in self._database.rows() if row.path in wanted]
        texts = {path: self._text(path) for path in met}
        if not len(met) == len(texts) == len(changes) or None in texts.values():
            return False
        return _zantrel._edit_texts(self._path, self._layout, self._format, texts)

    def _losses(self, database: _zantrel.Database) -> list[Difference]:
        """What doesn't come back from a file of the format. Nothing is known here of what it can carry."""
        data = database.dumps(format=self._format)
        return database.diff(_zantrel.loads(data, self._layout, format=self._format, notes=[]))

    def _require_kept(self, changes: list[Difference]) -> list[Difference]:
        """Raises WriteError where a change would be lost; gives what else would be, which the file had."""
        losses = self._losses(self._database)
        if not losses:
            return []
        had = {loss[:3] for loss in self._losses(self._before)}
        changed = {change[:3] for change in changes}
        # Each new profile can be deleted, which no file keeps and none has had.
        passing = {loss[:3] for loss in losses if loss.what == "CanBeDeleted"} | had
        made = [loss for loss in losses if loss[:3] in changed or loss[:3] not in passing]
        if made:
            raise WriteError(f"{self._path} is not written, since its format can't keep {self._named(made)}")
        return [loss for loss in losses if loss[:3] in had]

    def _named(self, losses: list[Difference]) -> str:
        names = [(loss.what and f"{loss.what} of ") + (loss.path or self._layout.name) for loss in losses[:4]]
        return ", ".join(names) + (f" and {len(losses) - 4} more" if len(losses) > 4 else "")

    def _warn_of_losses(self, is_there: bool, losses: list[Difference]) -> None:
        """Before the file is written anew, which a warning that is an error prevents."""
        data = b""
        if is_there:
            with open(self._path, "rb") as file:
                data = file.read()
        comments = len(_COMMENT.findall(data))
        lost = [f"{comments} comment{'s' * (comments > 1)}"] * bool(comments)
        lost += ["the encoding"] * bool(_OTHER_ENCODING.match(data))
        lost += ["what was passed over"] * bool(self._notes)
        lost += [self._named(losses)] * bool(losses)
        if lost:
            sentence = f"{self._path} is written anew, without {' and '.join(lost)} that it had"
            warnings.warn(sentence, PassedOver, stacklevel=4)

    def _text(self, path: str) -> Optional[str]:
        """The value as a file has it; None for an attachment, which is no text, and for what isn't found so."""
        try:
            node = self._database.at(path)  # which tries first whether names are joined by "/"
        except KeyError:
            return None
        if not isinstance(node, _zantrel.Parameter) or node.path != path or node.type == Type.FILE_ATTACHMENT:
            return None
        return node.text
