# SPDX-License-Identifier: Apache-2.0
"""python -m zantrel FILE: shows a parameter file, a layout or a build ticket as a tree."""

from __future__ import annotations

import argparse
import sys
from typing import Any, Iterator, Optional, Sequence

import zantrel


def _lines_of_node(node: zantrel.Node, depth: int) -> Iterator[str]:
    indent = "  " * depth
    if isinstance(node, zantrel.Parameter):
        unit = f" {node.unit}" if node.unit else ""
        yield f"{indent}{node.name} = {node.value}{unit}"
        return
    if depth >= 0:
        yield indent + node.name
    if isinstance(node, zantrel.List):
        children = [node.node(index) for index in range(len(node))]
    elif isinstance(node, (zantrel.Group, zantrel.ProfileList)):
        children = [node.node(name) for name in node]
    for child in children:
        yield from _lines_of_node(child, depth + 1)


def _lines_of_layout(node: zantrel.LayoutNode, depth: int) -> Iterator[str]:
    if node.type == zantrel.Type.GROUP:
        yield "  " * depth + node.name
    else:
        limits = "" if node.min is None and node.max is None else f", {node.min} to {node.max}"
        yield f"{'  ' * depth}{node.name}: {node.type.name} = {node.default!r}{limits} {node.unit}".rstrip()
    for name in node:
        yield from _lines_of_layout(node[name], depth + 1)


def _lines_of_value(name: str, value: Any, depth: int) -> Iterator[str]:
    indent = "  " * depth
    if isinstance(value, dict):
        yield indent + name
        for key, inner in value.items():
            yield from _lines_of_value(key, inner, depth + 1)
    elif isinstance(value, list):
        for index, inner in enumerate(value):
            yield from _lines_of_value(f"{name}[{index}]", inner, depth)
    else:
        yield f"{indent}{name} = {value!r}"


def _lines_of_file(path: str, layout_path: Optional[str], notes: list[zantrel.Note]) -> Iterator[str]:
    if layout_path is not None:
        layout_notes: list[zantrel.Note] = []
        layout = zantrel.Layout.load(layout_path, notes=layout_notes)
        yield from _lines_of_node(zantrel.load(path, layout, notes=notes).root, -1)
    elif zantrel.root_of(path) == "KlvrBuildTicket":
        for section, content in zantrel.Ticket.load(path, notes=notes).to_dict().items():
            yield from _lines_of_value(section, content, 0)
    else:
        yield from _lines_of_layout(zantrel.Layout.load(path, notes=notes).root, 0)


def main(arguments: Optional[Sequence[str]] = None) -> int:
    parser = argparse.ArgumentParser(prog="python -m zantrel", description=__doc__)
    parser.add_argument("file", help="a parameter file; without --layout a layout or a build ticket")
    parser.add_argument("--layout", help="the layout of a parameter file")
    options = parser.parse_args(arguments)
    notes: list[zantrel.Note] = []
    try:
        for line in _lines_of_file(options.file, options.layout, notes):
            print(line)
    except (OSError, ValueError) as error:
        print(error, file=sys.stderr)
        return 2
    for note in notes:
        print(f"{options.file}:{note}", file=sys.stderr)
    return 0


if __name__ == "__main__":
    sys.exit(main())
