# SPDX-License-Identifier: Apache-2.0
"""The examples that people copy, as they are run."""

import csv
import shutil
import subprocess
import sys

import pytest
from conftest import ROOT, machine_layout

import zantrel


@pytest.fixture
def folder(file):
    """A layout, and a hundred files of it of which three deviate."""
    machine_layout().save(file.parent / "l.xml")
    for number in range(100):
        shutil.copy(file, file.parent / f"f{number:02}.xml")
    for number in (7, 42, 99):
        with zantrel.edit(file.parent / f"f{number:02}.xml", machine_layout()) as db:
            db["Power"] = 300 + number
    return file.parent


def run(folder, name, *arguments):
    script = ROOT / "examples" / "python" / name
    return subprocess.run(
        [sys.executable, script, *arguments], cwd=folder, capture_output=True, text=True, encoding="utf-8"
    )


def test_deviations(folder):
    files = sorted(path.name for path in folder.glob("f*.xml"))
    told = run(folder, "deviations.py", "l.xml", "m.xml", "t.csv", "none.xml", *files)
    assert told.returncode == 1 and "none.xml" in told.stderr
    rows = list(csv.DictReader(open(folder / "t.csv", encoding="utf-8")))
    assert [(row["file"], row["here"]) for row in rows] == [
        ("f07.xml", "307.0"),
        ("f42.xml", "342.0"),
        ("f99.xml", "399.0"),
    ]


def test_sweep(folder):
    assert run(folder, "sweep.py", "l.xml", "m.xml", "Power", "100", "290", "out").returncode == 0
    paths = sorted((folder / "out").iterdir())
    layout = machine_layout()
    assert [zantrel.load(path, layout)["Power"] for path in paths] == [100 + 10 * i for i in range(20)]
    assert run(folder, "sweep.py", "l.xml", "m.xml", "Count", "0", "10", "counts").returncode == 0
    assert zantrel.load(folder / "counts" / "m_20.xml", layout)["Count"] == 10
    assert "It takes 50 to 400 W." in run(folder, "sweep.py", "l.xml", "m.xml", "Power", "0", "1", "out").stderr


def test_check_parameters(folder):
    assert run(folder, "check_parameters.py", "l.xml", "m.xml", "f07.xml").returncode == 0
    wrong = (folder / "m.xml").read_text().replace("<Power>200<", "<Power>20<")
    (folder / "m.xml").write_text(wrong)
    told = run(folder, "check_parameters.py", "l.xml", "m.xml", "none.xml")
    assert told.returncode == 1 and "m.xml:3:3: error: 20 is below" in told.stdout and "none.xml" in told.stdout
    assert run(folder, "check_parameters.py", "none.xml", "m.xml").returncode == 2
