# SPDX-License-Identifier: Apache-2.0
"""What the extension module gives and raises: plain records, which can be kept, compared and pickled."""

from __future__ import annotations

import enum
from typing import Any, NamedTuple, Sequence


class Type(enum.IntEnum):
    """What a node of a layout declares; the numbers are those that files and hosts know."""

    GROUP = 0
    INT = 1
    DOUBLE = 2
    DISTANCE = 3
    BOOL = 4
    STRING = 5
    OPTIONS = 6
    OPTIONS_FROM_PROFILES = 7
    FILE_ABSOLUTE = 8
    FILE_ATTACHMENT = 9
    STANDARD_OPTIONS = 10


class Attachment(NamedTuple):
    """A file that travels with the values."""

    name: str
    data: bytes


class Note(NamedTuple):
    """Something that a read passed over, or for which it failed; line 0 where there is no place."""

    kind: str
    line: int
    column: int
    path: str
    sentence: str

    def __str__(self) -> str:
        place = f"{self.line}:{self.column}: " if self.line else ""
        return place + self.sentence + (f" ({self.path})" if self.path else "")


class Finding(NamedTuple):
    """What the layout has against a value or a change; line 0 where no file was looked at or mentions it."""

    kind: str
    severity: str
    path: str
    value: str
    limit: str
    sentence: str
    line: int = 0
    column: int = 0

    def __str__(self) -> str:
        place = f"{self.line}:{self.column}: " if self.line else ""
        return f"{place}{self.severity}: {self.sentence}" + (f" ({self.path})" if self.path else "")


class Row(NamedTuple):
    """One value of a database, as a line of a table."""

    path: str
    value: Any
    unit: str
    type: Type


class Difference(NamedTuple):
    """One thing in which two databases differ; values have their types, and are None where there is none."""

    kind: str
    path: str
    what: str
    before: Any
    after: Any


class Step(NamedTuple):
    """What became of one place in a migration."""

    kind: str
    path: str
    new_path: str
    what: str
    before: str
    after: str
    reason: str


class Migration(NamedTuple):
    """The values on the new layout, and what became of each."""

    database: Any
    steps: list[Step]


class LintFinding(NamedTuple):
    """What is wrong with a layout."""

    kind: str
    severity: str
    path: str
    value: str
    sentence: str

    def __str__(self) -> str:
        return f"{self.severity}: {self.sentence}" + (f" ({self.path})" if self.path else "")


class LayoutDifference(NamedTuple):
    """One thing in which two layouts differ."""

    kind: str
    path: str
    what: str
    before: str
    after: str


class EffectiveValue(NamedTuple):
    """What counts for a part under one property name, and whether layout, ticket or part says so."""

    name: str
    value: Any
    source: str


class Choice(NamedTuple):
    """What can be chosen for a parameter."""

    value: str
    display_name: str
    is_default_profile: bool


class Look(NamedTuple):
    """Whether users see a place and may change it, and why not."""

    visible: bool
    editable: bool
    reasons: list[str]


class PassedOver(UserWarning):
    """A read passed something over, or a write had to leave something behind, and the caller didn't ask."""


class StaleNode(RuntimeError):
    """What the node stood for has gone: its item or profile was removed, or the database read anew."""


class ReadError(ValueError):
    """A document that can't be taken; `notes` say where and why."""

    def __init__(self, message: str, notes: Sequence[Note] = ()) -> None:
        super().__init__(message)
        self.notes = list(notes)


class WriteError(ValueError):
    """What can't be put into a document, as a text that XML has no characters for."""


class Refused(ValueError):
    """A value or a change that the layout doesn't allow; nothing was changed."""

    def __init__(self, message: str, findings: Sequence[Finding] = ()) -> None:
        super().__init__(message)
        self.findings = list(findings)
