# SPDX-License-Identifier: Apache-2.0
"""Shows a parameter file, a layout or a build ticket as a tree.

Notes of the read go to standard error. The status is 0 when the file was shown, 1 when nobody read on, and 2 when it
can't be shown.
"""

from __future__ import annotations

import argparse
import os
import sys
from typing import Any, Iterable, Iterator, NamedTuple, Optional, Sequence

import zantrel


class _Branch(NamedTuple):
    """A line of a tree, and what goes below it; made while it is shown, so that depth costs no recursion."""

    line: str
    below: Iterable[_Branch] = ()


def _lines(branches: Iterable[_Branch]) -> Iterator[str]:
    open_branches = [iter(branches)]
    while open_branches:
        branch = next(open_branches[-1], None)
        if branch is None:
            open_branches.pop()
        else:
            yield "  " * (len(open_branches) - 1) + branch.line
            open_branches.append(iter(branch.below))


def _text(value: Any) -> str:
    """Nothing that would break the tree, or talk to the terminal."""
    if isinstance(value, zantrel.Attachment):
        return f"{_text(value.name)} ({len(value.data)} bytes)"
    text = str(value)
    return text if text.isprintable() else repr(text)


def _values(parent: zantrel.Node) -> Iterator[_Branch]:
    children: list[zantrel.Node] = []
    if isinstance(parent, zantrel.List):
        children = [parent.node(index) for index in range(len(parent))]
    elif isinstance(parent, (zantrel.Group, zantrel.ProfileList)):
        children = [parent.node(name) for name in parent]
    for child in children:
        if isinstance(child, zantrel.Parameter):
            yield _Branch(f"{_text(child.name)} = {_text(child.value)} {_text(child.unit)}".rstrip())
        else:
            yield _Branch(_text(child.name), _values(child))


def _declarations(parents: Iterable[zantrel.LayoutNode]) -> Iterator[_Branch]:
    for node in parents:
        line = _text(node.name)
        if node.type != zantrel.Type.GROUP:
            limits = "" if node.min is None and node.max is None else f", {_text(node.min)} to {_text(node.max)}"
            line = f"{line}: {node.type.name} = {node.default!r}{limits} {_text(node.unit)}".rstrip()
        yield _Branch(line, _declarations([node[name] for name in node]))


def _properties(values: dict[str, Any]) -> Iterator[_Branch]:
    for name, value in values.items():
        if isinstance(value, dict):
            yield _Branch(_text(name), _properties(value))
        elif isinstance(value, list):
            for index, item in enumerate(value):
                yield _Branch(f"{_text(name)}[{index}]", _properties(item))
        else:
            yield _Branch(f"{_text(name)} = {_text(value)}")


def _branches(data: bytes, layout_path: Optional[str], notes: list[zantrel.Note]) -> Iterable[_Branch]:
    if layout_path is not None:
        layout = zantrel.Layout.load(layout_path, notes=[])
        return _values(zantrel.loads(data, layout, notes=notes).root)
    if zantrel._zantrel._root_of_bytes(data) == "KlvrBuildTicket":
        return _properties(zantrel.Ticket.loads(data, notes=notes).to_dict())
    try:
        return _declarations([zantrel.Layout.loads(data, notes=notes).root])
    except zantrel.ReadError as error:
        raise zantrel.ReadError(f"{error}; a parameter file is shown with --layout LAYOUT") from None


def _show(path: str, layout_path: Optional[str]) -> int:
    notes: list[zantrel.Note] = []
    try:
        # As bytes, since standard input is read only once, and what the file is shows by its content.
        with open(sys.stdin.fileno() if path == "-" else path, "rb", closefd=path != "-") as file:
            branches = _branches(file.read(), layout_path, notes)
    except (OSError, ValueError) as error:
        print(f"python -m zantrel: {_text(error)}".replace("<bytes>", path), file=sys.stderr)
        return 2
    for line in _lines(branches):
        print(line)
    sys.stdout.flush()
    for note in notes:
        print(f"{path}:{_text(note)}", file=sys.stderr)
    return 0


def main(arguments: Optional[Sequence[str]] = None) -> int:
    parser = argparse.ArgumentParser(prog="python -m zantrel", description=__doc__)
    parser.add_argument(
        "file", help="a parameter file, without --layout a layout or a build ticket; - is standard input"
    )
    parser.add_argument("--layout", help="the layout of a parameter file")
    parser.add_argument("--version", action="version", version=f"zantrel {zantrel.__version__}")
    options = parser.parse_args(arguments)
    for stream in (sys.stdout, sys.stderr):
        if hasattr(stream, "reconfigure"):
            stream.reconfigure(errors="backslashreplace")  # for terminals that have not all characters
    try:
        return _show(options.file, options.layout)
    except BrokenPipeError:
        # What is still held for the output has nowhere to go, which Python would say again at its end.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        return 1


if __name__ == "__main__":
    sys.exit(main())
