# SPDX-License-Identifier: Apache-2.0
"""python_benchmark.py [ROUNDS]: the package beside xml.etree with typed conversion, and on two threads.

Prints the medians of ratios that are formed within one round, so that what else the machine does disturbs both sides.
"""

from __future__ import annotations

import hashlib
import statistics
import sys
import tempfile
import time
import xml.etree.ElementTree as ET
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Any, Callable

import zantrel
from zantrel import Type

GROUPS, VALUES, PROFILES = 10, 40, 100
CONVERSIONS: dict[int, Callable[[str], Any]] = {
    Type.DOUBLE: float,
    Type.INT: int,
    Type.BOOL: lambda text: text in ("true", "True", "1"),
    Type.STRING: str,
}


def make_layout() -> zantrel.Layout:
    layout = zantrel.Layout("Machine")
    profile = layout.add_group("Materials").set_profile("Material")
    defaults: list[tuple[Type, float | str]]
    defaults = [(Type.DOUBLE, 0.25), (Type.INT, 7), (Type.BOOL, True), (Type.STRING, "some text")]
    for group in range(GROUPS):
        node = profile.add_group(f"Group{group}")
        for value in range(VALUES):
            kind, default = defaults[value % len(defaults)]
            node.add(f"Parameter{value}", kind, default)
    return layout


def make_file(path: Path, layout: zantrel.Layout) -> None:
    db = zantrel.Database(layout)
    for number in range(PROFILES):
        profile = db["Materials"].add(f"Material {number}")
        for index, row in enumerate(profile.rows()):
            if row.type == Type.DOUBLE:
                db.set(row.path, number + index / 7)
    db.save(path)


def types_of(node: zantrel.LayoutNode) -> dict[str, Any]:
    """What a script that goes by hand knows of the layout: a conversion for each element."""
    return {name: types_of(node[name]) if len(node[name]) else CONVERSIONS[node[name].type] for name in node}


def content_of(element: ET.Element, types: dict[str, Any]) -> dict[str, Any]:
    content: dict[str, Any] = {}
    for child in element:
        kind = types[child.tag]
        content[child.tag] = content_of(child, kind) if isinstance(kind, dict) else kind(child.text or "")
    return content


def read_by_hand(path: Path, types: dict[str, Any]) -> dict[str, Any]:
    entries = ET.parse(path).getroot().find("Materials")
    assert entries is not None
    return {entry.get("Name", "::Default::"): content_of(entry, types) for entry in entries}


def write_by_hand(path: Path, content: dict[str, Any]) -> None:
    def add(above: ET.Element, values: dict[str, Any]) -> None:
        for name, value in values.items():
            element = ET.SubElement(above, name)
            if isinstance(value, dict):
                add(element, value)
            else:
                element.text = str(value).lower() if isinstance(value, bool) else str(value)

    root = ET.Element("Machine")
    entries = ET.SubElement(root, "Materials")
    for name, values in content.items():
        add(ET.SubElement(entries, "Material", Name=name), values)
    ET.indent(root)
    ET.ElementTree(root).write(path, encoding="utf-8", xml_declaration=True)


def checksum(_: object) -> None:
    """What surely runs without the interpreter's lock: shows how much of two processors there is to be had."""
    hashlib.sha256(bytes(10_000_000)).digest()


def seconds(work: Callable[[], Any]) -> float:
    begin = time.perf_counter()
    work()
    return time.perf_counter() - begin


def median_ratio(rounds: int, ours: Callable[[], Any], theirs: Callable[[], Any]) -> str:
    pairs = [(seconds(ours), seconds(theirs)) for _ in range(rounds)]
    ratio = statistics.median(one / other for one, other in pairs)
    one, other = (statistics.median(side) * 1000 for side in zip(*pairs))
    return f"{ratio:.3f} ({one:.1f} ms of {other:.1f} ms)"


def main(rounds: int = 9) -> None:
    with tempfile.TemporaryDirectory() as folder:
        layout, path, copy = make_layout(), Path(folder, "m.xml"), Path(folder, "copy.xml")
        make_file(path, layout)
        types = types_of(layout["Materials"])
        db, content = zantrel.load(path, layout), read_by_hand(path, types)
        assert content["Material 3"] == db.to_dict()["Materials"]["Material 3"]
        print(f"{path.stat().st_size / 1e6:.1f} MB, {len(db.rows())} values, {rounds} rounds; time of xml.etree:")

        def load(_: object = None) -> zantrel.Database:
            return zantrel.load(path, layout)

        def job(_: object = None) -> object:
            one = load()
            return one.validate(), one.copy().diff(one), one.dumps()

        def by_hand() -> dict[str, Any]:
            return read_by_hand(path, types)

        print("  read                   ", median_ratio(rounds, load, by_hand))
        print("  read, all to a dict    ", median_ratio(rounds, lambda: load().to_dict(), by_hand))
        write = median_ratio(rounds, lambda: db.save(copy), lambda: write_by_hand(copy, content))
        print("  write, to the disk     ", write)
        print("  write, to bytes        ", median_ratio(rounds, db.dumps, lambda: write_by_hand(copy, content)))
        print("time of one thread on two:")
        works: list[tuple[str, Callable[[int], object]]] = [
            ("16 reads", load),
            ("16 reads to writes", job),
            ("16 checksums", checksum),
        ]
        for name, work in works:
            with ThreadPoolExecutor(2) as pool:
                many = range(16)
                ratio = median_ratio(rounds, lambda: list(pool.map(work, many)), lambda: list(map(work, many)))
            print(f"  {name:23}", ratio)


if __name__ == "__main__":
    main(*map(int, sys.argv[1:]))
