# SPDX-License-Identifier: Apache-2.0
"""The data of the tests in C++, and a small layout of one's own."""

from pathlib import Path

import pytest

import zantrel
from zantrel import Type

ROOT = Path(__file__).parents[2]
DATA = ROOT / "examples" / "data"
FORMATS = ROOT / "tests" / "formats" / "examples"


def machine_layout() -> zantrel.Layout:
    layout = zantrel.Layout("Machine")
    layout.add("Power", Type.DOUBLE, 200.0).set_range(50, 400).set_unit("W").set_display_name("Laser power")
    layout.add("Count", Type.INT, 3).set_range(0, 10)
    layout.add("Sieve", Type.BOOL, True)
    layout.add("Blade", Type.OPTIONS, "Steel").add_option("Steel").add_option("Rubber")
    layout.add("Record", Type.FILE_ATTACHMENT)
    layout.add("Mesh", Type.INT, 63).add_visibility_source(layout["Sieve"], True)
    layout.add_group("Rows").set_list("Row").add("X", Type.DISTANCE, 0.5)
    layout.add("Heights", Type.DOUBLE, 1.0).set_list("Height")
    layout.add_group("Materials").set_profile("Material").add_group("Infill").add("Power", Type.DOUBLE, 280)
    layout.add("Material").set_type_from_profiles(layout["Materials"])
    layout.add_category_node_if_needed()
    return layout


@pytest.fixture
def layout() -> zantrel.Layout:
    return machine_layout()


@pytest.fixture
def db(layout: zantrel.Layout) -> zantrel.Database:
    return zantrel.Database(layout)


@pytest.fixture
def file(db: zantrel.Database, tmp_path: Path) -> Path:
    db["Materials"].add("Steel")
    db["Rows"].extend([{"X": 1}, {"X": 2}])
    db.save(tmp_path / "m.xml")
    return tmp_path / "m.xml"
