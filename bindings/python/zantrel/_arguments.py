# SPDX-License-Identifier: Apache-2.0
"""What is wrong with the arguments of a call, in Python's own words; pybind11 lists every form and all values."""

from __future__ import annotations

import re
from typing import Any, NamedTuple, Optional, Sequence

_FORM = re.compile(r"^ +\d+\. (?:[\w.]*)\((.*)\)(?: -> .*)?$", re.MULTILINE)
_KNOWN: dict[str, Any] = {
    "bytes": bytes,
    "bytearray": bytearray,
    "memoryview": memoryview,
    "dict": dict,
    "list": list,
    "slice": slice,
    "str": str,
    "bool": bool,
    "None": type(None),
}


class _Parameter(NamedTuple):
    name: str
    type: str
    is_optional: bool
    is_by_name: bool


def _split(text: str) -> list[str]:
    """At the commas that stand in no brackets and no quotes."""
    parts, depth, quote = [""], 0, ""
    for char in text:
        if quote or char in "'\"":
            quote = "" if char == quote else quote or char
        depth += (char in "[({") - (char in "])}") if not quote else 0
        if char == "," and depth == 0 and not quote:
            parts.append("")
        else:
            parts[-1] += char
    return [part.strip() for part in parts if part.strip()]


def _parameters(form: str) -> list[_Parameter]:
    parameters, is_by_name = [], False
    for part in _split(form):
        if part in ("*", "/"):
            is_by_name = is_by_name or part == "*"
            continue
        name, _, rest = part.partition(": ")
        kind, default, _ = rest.partition(" = ")
        parameters.append(_Parameter(name, kind.replace("zantrel._zantrel.", ""), bool(default), is_by_name))
    return parameters


def _types(kind: str) -> list[str]:
    inner = re.fullmatch(r"Optional\[(.*)\]", kind)
    return [inner[1], "None"] if inner else kind.split(" | ")


def _fits(value: Any, kind: str) -> bool:
    """Whether it may be what the parameter takes; only a plain no is one."""
    if kind.startswith("os.PathLike"):
        return hasattr(value, "__fspath__")
    if kind in _KNOWN:
        return isinstance(value, _KNOWN[kind])
    if kind in ("int", "float"):
        return hasattr(value, "__index__") or (kind == "float" and hasattr(value, "__float__"))
    is_ours = kind[:1].isupper() and kind.isidentifier()
    return not is_ours or any(base.__name__ == kind for base in type(value).__mro__)


def _wrong_type(forms: list[list[_Parameter]], args: Sequence[Any], named: dict[str, Any]) -> Optional[str]:
    """The first argument that no form takes."""
    for at in range(len(forms[0])):
        if any(at >= len(form) for form in forms):
            return None
        name = forms[0][at].name
        if at >= len(args) and name not in named:
            continue
        value = args[at] if at < len(args) else named[name]
        types = [one for form in forms for one in _types(form[at].type)]
        if not any(_fits(value, one) for one in types):
            wanted = " or ".join(dict.fromkeys(types))
            return f"{name} must be {wanted}, not {type(value).__name__}"
    return None


def _out_of_range(form: list[_Parameter], args: Sequence[Any], named: dict[str, Any]) -> Optional[str]:
    """The first argument that is an int, but none of the library's."""
    given = {**dict(zip([one.name for one in form], args)), **named}
    for one in form:
        value = given.get(one.name)
        if one.type == "int" and isinstance(value, int) and not -(2**31) <= value < 2**31:
            return f"{one.name} is out of range"
    return None


def _wrong_number(form: list[_Parameter], args: Sequence[Any], named: dict[str, Any]) -> Optional[str]:
    places = [parameter for parameter in form if not parameter.is_by_name]
    if len(args) > len(places):
        return f"takes {len(places)} positional argument{'s' * (len(places) != 1)} at most, not {len(args)}"
    given = {parameter.name for parameter in places[: len(args)]}
    for name in named:
        if name in given:
            return f"got two values for the argument '{name}'"
        if name not in [parameter.name for parameter in form]:
            return f"got an unexpected keyword argument '{name}'"
    missing = [one.name for one in form if not one.is_optional and one.name not in given and one.name not in named]
    return f"is missing the argument '{missing[0]}'" if missing else None


def sentence(message: str, args: tuple[Any, ...], named: dict[str, Any]) -> str:
    """The message of a TypeError; one that isn't pybind11's stays. ValueError for an int that is too large."""
    function, found, _ = message.partition("(): incompatible ")
    forms = [_parameters(form) for form in _FORM.findall(message.partition("\nInvoked with")[0])]
    if not found or not forms:
        return message
    if function == "__init__":  # of which the forms name the class, and not self
        function, args = f"{type(args[0]).__name__}()" if args else function, args[1:]
    elif forms[0] and (forms[0][0].name == "self" or not function):  # a setter has no name
        owner = forms[0][0].type
        if not args or not _fits(args[0], owner):
            return f"{owner}.{function}() needs a {owner}" + (f", not {type(args[0]).__name__}" if args else "")
        owner, args, forms = type(args[0]).__name__, args[1:], [form[1:] for form in forms]
        is_item = function in ("__getitem__", "__setitem__", "__delitem__")
        function = f"{owner}[...]" if is_item else f"{owner}.{function}()" if function else "the value"
    else:
        function += "()"
    wrong = _wrong_number(forms[0], args, named) if len(forms) == 1 else None
    if wrong:
        return f"{function} {wrong}"
    wrong = _wrong_type(forms, args, named)
    outside = None if wrong else _out_of_range(forms[0], args, named)
    said = wrong or outside
    if said:
        said = f"{function}: {said}" if function != "the value" else f"the value {said.partition(' ')[2]}"
        if outside:
            raise ValueError(said)
        return said
    given = [type(value).__name__ for value in args] + [f"{name}: {type(named[name]).__name__}" for name in named]
    known = " or ".join("(" + ", ".join(f"{one.name}: {one.type}" for one in form) + ")" for form in forms)
    return f"{function} takes {known}, not ({', '.join(given)})"
