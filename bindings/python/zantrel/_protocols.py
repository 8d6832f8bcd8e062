# SPDX-License-Identifier: Apache-2.0
"""What mappings and sequences of Python have beyond what the extension module gives its own."""

from __future__ import annotations

from collections.abc import Mapping, MutableMapping, MutableSequence
from typing import Any

from ._zantrel import Database, Group, List, ProfileList

_MISSING = object()


def _content(value: Any) -> Any:
    """What stays when the entry that it comes from goes."""
    return value.to_dict() if isinstance(value, Group) else value


def _pop_item(self: List, index: int = -1) -> Any:
    content = _content(self[index])
    del self[index]
    return content


def _pop_profile(self: ProfileList, name: str, default: Any = _MISSING) -> Any:
    if default is not _MISSING and name not in self:
        return default
    content = _content(self[name])
    del self[name]
    return content


def _set_default(self: ProfileList, name: str, default: Any = None) -> Any:
    if name not in self:
        self[name] = {} if default is None else default
    return self[name]


def _pop_last_profile(self: ProfileList) -> tuple[str, Any]:
    if not len(self):
        raise KeyError(f"{self.path} has no profiles")
    name = list(self)[-1]
    return name, _pop_profile(self, name)


def _clear_list(self: List) -> None:
    self.update([])


def _clear_profiles(self: ProfileList) -> None:
    for name in list(self):
        del self[name]


for _name in ("count", "index", "remove", "__contains__", "__iadd__", "__reversed__"):
    setattr(List, _name, getattr(MutableSequence, _name))
setattr(List, "clear", _clear_list)
setattr(ProfileList, "clear", _clear_profiles)
setattr(List, "pop", _pop_item)
setattr(ProfileList, "pop", _pop_profile)
setattr(ProfileList, "setdefault", _set_default)
setattr(ProfileList, "popitem", _pop_last_profile)

Mapping.register(Database)
Mapping.register(Group)
MutableMapping.register(ProfileList)
MutableSequence.register(List)
