# SPDX-License-Identifier: Apache-2.0
"""Parameters of build processors: layouts, values with types, units and limits, and their files.

    layout = zantrel.Layout.load("machine.layout.xml")
    with zantrel.edit("m.xml", layout) as db:
        db["Materials"]["Ti6Al4V"]["Infill"]["Power"] = 275.5

docs/python.md tells all of it.
"""

from . import _protocols
from ._edit import FileChanged, edit
from ._types import (
    Attachment,
    Choice,
    Difference,
    EffectiveValue,
    Finding,
    LayoutDifference,
    LintFinding,
    Look,
    Migration,
    Note,
    PassedOver,
    ReadError,
    Refused,
    Row,
    StaleNode,
    Step,
    Type,
    WriteError,
)
from ._zantrel import (
    Database,
    Group,
    Layout,
    LayoutNode,
    List,
    Node,
    Parameter,
    ProfileList,
    Ticket,
    __version__ as __version__,
    check,
    load,
    loads,
    root_of,
)

__all__ = [
    "Attachment",
    "Choice",
    "Database",
    "Difference",
    "EffectiveValue",
    "FileChanged",
    "Finding",
    "Group",
    "Layout",
    "LayoutDifference",
    "LayoutNode",
    "LintFinding",
    "List",
    "Look",
    "Migration",
    "Node",
    "Note",
    "Parameter",
    "PassedOver",
    "ProfileList",
    "ReadError",
    "Refused",
    "Row",
    "StaleNode",
    "Step",
    "Ticket",
    "Type",
    "WriteError",
    "check",
    "edit",
    "load",
    "loads",
    "root_of",
]

for _name in __all__:
    globals()[_name].__module__ = __name__  # where users have them from, and what messages say
