# SPDX-License-Identifier: Apache-2.0
"""What mappings and sequences of Python have beyond what the extension module gives its own."""

from __future__ import annotations

from collections.abc import ItemsView, KeysView, Mapping, MutableMapping, MutableSequence, ValuesView
from typing import Any, Iterator, Optional

from ._zantrel import Database, Group, Layout, LayoutNode, List, ProfileList

_MISSING = object()


class Keys(KeysView):  # type: ignore[type-arg]
    def __reversed__(self) -> Iterator[Any]:
        return reversed(list(self))


class Values(ValuesView):  # type: ignore[type-arg]
    def __reversed__(self) -> Iterator[Any]:
        return reversed(list(self))


class Items(ItemsView):  # type: ignore[type-arg]
    def __reversed__(self) -> Iterator[Any]:
        return reversed(list(self))


def _keys(self: Any) -> Keys:
    """The names in it, as a view, which changes with it."""
    return Keys(self)


def _values(self: Any) -> Values:
    """What is found by the names, as a view, which changes with it."""
    return Values(self)


def _items(self: Any) -> Items:
    """Pairs of a name and what is found by it, as a view, which changes with it."""
    return Items(self)


def _reversed(self: Any) -> Iterator[str]:
    return reversed(list(self))


def _get(self: Any, key: str, default: Any = None) -> Any:
    """As self[key]; `default` where there is no such name."""
    return self[key] if key in self else default


def _content(value: Any) -> Any:
    """What stays when the entry that it comes from goes."""
    return value.to_dict() if isinstance(value, Group) else value


def _pop_item(self: List, index: int = -1) -> Any:
    """Removes an item and gives its content. IndexError where there is none."""
    content = _content(self[index])
    del self[index]
    return content


def _pop_profile(self: ProfileList, name: str, default: Any = _MISSING) -> Any:
    """Removes a profile and gives its content. `default`, or KeyError, where there is none."""
    if default is not _MISSING and name not in self:
        return default
    content = _content(self[name])
    del self[name]
    return content


def _set_default(self: ProfileList, name: str, default: Any = None) -> Any:
    """The profile of that name, which is added with that content where there is none."""
    if name not in self:
        self[name] = {} if default is None else default
    return self[name]


def _pop_first_profile(self: ProfileList) -> tuple[str, Any]:
    """Removes one of the profiles and gives its name and content. KeyError where there is none."""
    name = self._first()
    return name, _pop_profile(self, name)


def _index(self: List, value: Any, start: int = 0, stop: Optional[int] = None) -> int:
    """Where the first item that is equal stands. ValueError where there is none."""
    for index in range(*slice(start, stop).indices(len(self))):
        item = self[index]
        if item is value or item == value:
            return index
    raise ValueError(f"{value!r} isn't in {self.path}")


def _remove(self: List, value: Any) -> None:
    """Removes the first item that is equal. ValueError where there is none."""
    del self[self.index(value)]


def _clear_list(self: List) -> None:
    """Removes all items."""
    self.update([])


def _reverse(self: List) -> None:
    """Turns the order of the items round; Refused where users may not sort them."""
    for index in range(len(self) - 1):
        self.move(-1, index)


def _clear_profiles(self: ProfileList) -> None:
    """Removes all profiles; what is Refused stays, and those behind it."""
    for name in list(self):
        del self[name]


for _name in ("count", "__contains__", "__iadd__", "__reversed__"):
    setattr(List, _name, getattr(MutableSequence, _name))
setattr(List, "clear", _clear_list)
setattr(List, "index", _index)
setattr(List, "remove", _remove)
setattr(List, "pop", _pop_item)
setattr(List, "reverse", _reverse)
setattr(ProfileList, "clear", _clear_profiles)
setattr(ProfileList, "pop", _pop_profile)
setattr(ProfileList, "setdefault", _set_default)
setattr(ProfileList, "popitem", _pop_first_profile)
for _class in (Database, Group, ProfileList, Layout, LayoutNode):
    setattr(_class, "keys", _keys)
    setattr(_class, "values", _values)
    setattr(_class, "items", _items)
    setattr(_class, "__reversed__", _reversed)
for _class in (Layout, LayoutNode):
    setattr(_class, "get", _get)

for _class in (Database, Group, Layout, LayoutNode):
    Mapping.register(_class)
MutableMapping.register(ProfileList)
MutableSequence.register(List)
