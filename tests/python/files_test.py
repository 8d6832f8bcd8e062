# SPDX-License-Identifier: Apache-2.0
import copy
import errno
import os
import re
import subprocess
import sys
import warnings
from concurrent.futures import ThreadPoolExecutor

import pytest
from conftest import DATA, FORMATS, ROOT, machine_layout

import zantrel
from zantrel import Type

SAMPLE = DATA / "machine_parameters.xml"
METAL = DATA / "powder_bed_machine.xml"


def test_notes_tell_what_was_passed_over_and_warn_who_didnt_ask():
    layout, notes = zantrel.Layout.sample(2), []
    db = zantrel.load(SAMPLE, layout, notes=notes)
    assert notes == db.notes and [(note.kind, note.line) for note in notes] == [
        ("unparsed_text", next(n for n, line in enumerate(open(SAMPLE, encoding="utf-8"), 1) if "0,0" in line)),
        ("untaken_element", notes[1].line),
    ]
    assert str(notes[0]).startswith(f"{notes[0].line}:{notes[0].column}: ") and notes[1].path in str(notes[1])
    with pytest.warns(zantrel.PassedOver, match="2 notes") as told:
        zantrel.load(SAMPLE, layout)
    assert told[0].filename == __file__
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        with pytest.raises(zantrel.PassedOver):
            zantrel.load(SAMPLE, layout)


@pytest.mark.parametrize(
    "text, sentence",
    [
        (b"<Machine><Power>5</Machine>", "1:"),
        (b"", "<bytes>"),
        (b"<Other/>", 'its root is called "Other", and not "Machine"'),
        (b"<Machine>" + b"<a>" * 100_000, "nested too deep"),
    ],
    ids=["broken", "empty", "strange", "deep"],
)
def test_what_is_no_document_of_the_layout_raises(layout, text, sentence):
    with pytest.raises(zantrel.ReadError, match=sentence):
        zantrel.loads(text, layout)
    for load in (zantrel.Layout.loads, zantrel.Ticket.loads):
        with pytest.raises(ValueError):
            load(text)


def test_what_the_system_refuses_is_an_os_error_with_its_file(db, tmp_path):
    for path in (tmp_path / "none.xml", os.fsencode(tmp_path / "none.xml"), str(tmp_path / "\udcff.xml")):
        with pytest.raises(FileNotFoundError) as missing:
            zantrel.load(path, db.layout)
        assert missing.value.filename == os.fsdecode(path)
    with pytest.raises(IsADirectoryError):
        db.save(tmp_path)
    with pytest.raises(FileNotFoundError):
        db.layout.save(tmp_path / "none" / "l.xml")
    with pytest.raises(ValueError, match="null"):
        db.save("a\0b")
    with pytest.raises(TypeError):
        db.save(5)
    db.set("Material", "a\x01", force=True)
    with pytest.raises(zantrel.WriteError):
        db.save(tmp_path / "m.xml")
    assert os.listdir(tmp_path) == []


def test_what_can_be_read_once_only_is_read(db, tmp_path):
    def through_a_pipe(read, data):
        pipe = tmp_path / "pipe"
        pipe.exists() or os.mkfifo(pipe)
        with ThreadPoolExecutor(1) as pool:
            pool.submit(pipe.write_bytes, data)
            return read(pipe)

    db["Power"] = 99
    for format in ("generic", "machine"):
        read = through_a_pipe(lambda pipe: zantrel.load(pipe, db.layout, notes=[]), db.dumps(format=format))
        assert (read.to_dict(), read.format) == (db.to_dict(), format)
    layout = through_a_pipe(lambda pipe: zantrel.Layout.load(pipe, notes=[]), db.layout.dumps())
    assert layout.diff(db.layout) == []
    db.set("Power", 20, force=True)
    findings = through_a_pipe(lambda pipe: zantrel.check(pipe, db.layout), db.dumps())
    assert ("below_minimum", "Power", 0) in [(f.kind, f.path, f.line) for f in findings]
    limits = {"bytes": 100}
    with pytest.raises(zantrel.ReadError, match="more than 100 bytes"):
        through_a_pipe(lambda pipe: zantrel.load(pipe, db.layout, limits=limits), db.dumps())
    with pytest.raises(zantrel.ReadError):
        zantrel.load("/dev/zero", db.layout, limits=limits)
    limits = {"bytes": 1 << 50}  # for which no room is taken before there are as many
    assert through_a_pipe(lambda pipe: zantrel.load(pipe, db.layout, limits=limits), db.dumps())["Power"] == 20
    strange = os.fsencode(tmp_path) + b"/\xff.xml"
    with open(strange, "wb") as file:
        file.write(db.dumps())
    assert zantrel.load(strange, db.layout) == db
    with pytest.raises(OSError, match="No file can have the path"):
        db.save(strange)


def test_bytes_come_in_any_object_that_has_some(db):
    for kind in (bytes, bytearray, memoryview):
        assert zantrel.loads(kind(db.dumps()), db.layout) == db
    for wrong in ("m.xml", 5, [1, 2], None):
        with pytest.raises(TypeError):
            zantrel.loads(wrong, db.layout)


def test_limits_end_a_read(file, layout):
    with pytest.raises(zantrel.ReadError, match="more than 3 elements"):
        zantrel.load(file, layout, limits={"elements": 3})
    for limits, error, sentence in (
        ({"element": 3}, ValueError, 'no limit "element"'),
        ({"bytes": 1e6}, TypeError, 'limit "bytes" must be int, not float'),
        ({"depth": -1}, ValueError, 'limit "depth" is a number from 0'),
        ({"refuses_same_profiles": "yes"}, TypeError, 'profiles" must be bool, not str'),
    ):
        with pytest.raises(error, match=sentence):
            zantrel.load(file, layout, limits=limits)
    for read in (zantrel.load, zantrel.edit):
        with pytest.raises(TypeError, match="notes must be a list, not tuple"):
            read(file, layout, notes=())


def test_an_edit_is_made_whole_or_not_at_all(file, layout):
    before = file.read_text().replace("<Power>200", "<!-- mine -->\n<Power>200")
    file.write_text(before)
    with pytest.raises(ZeroDivisionError), zantrel.edit(file, layout) as db:
        db["Power"] = 100
        1 / 0
    assert file.read_text() == before
    with zantrel.edit(file, layout, backup=True) as db:
        db["Power"] = 275.5
        db["Rows"][1]["X"] = 9
    assert file.read_text() == before.replace("<Power>200", "<Power>275.5").replace("<X>2", "<X>9")
    assert file.with_suffix(".xml.bak").read_text() == before
    with pytest.warns(zantrel.PassedOver, match="without 1 comment that"), zantrel.edit(file, layout) as db:
        db["Materials"].add("Brass")
    assert list(zantrel.load(file, layout)["Materials"]) == ["Brass", "Steel"]
    other = file.with_name("other.xml")
    zantrel.Database(layout).save(other, format="machine")
    edit = zantrel.edit(file, layout)
    with edit as db:
        with pytest.raises(RuntimeError), edit:
            pass
        db.read(other)
    assert zantrel.load(file, layout).format == "generic"


def test_an_edit_refuses_what_the_format_cant_keep(file, layout):
    def changed(change, format):
        zantrel.Database(layout).save(file, format=format)
        before = file.read_bytes()
        with pytest.raises(zantrel.WriteError) as refused, zantrel.edit(file, layout) as db:
            change(db)
        assert file.read_bytes() == before
        return str(refused.value).partition("can't keep ")[2]

    assert changed(lambda db: db["Rows"].append({"X": 4}), "machine") == "Rows_Row[0]"
    assert changed(lambda db: db["Materials"].add("Steel"), "machine") == "Materials_Material[Steel]"
    for format in ("generic", "machine"):
        assert changed(lambda db: db["Rows"].default.update(X=2), format) == "Rows_Row::Default::_X"
        flag = changed(lambda db: setattr(db["Rows"], "disable_add_remove", True), format)
        assert flag == "DisableAddRemove of Rows"
    assert changed(lambda db: [setattr(node, "hidden", True) for node in db.walk()], "machine").endswith("and 7 more")
    file.write_bytes(zantrel.Database(layout).dumps().replace(b"<Materials>", b'<Materials ReadOnly="true">'))
    with pytest.warns(zantrel.PassedOver, match="ReadOnly of Materials"), zantrel.edit(file, layout) as db:
        db["Rows"].append({"X": 4})
    assert zantrel.load(file, layout)["Rows"] == [{"X": 4}]


def test_an_edit_warns_of_what_another_encoding_loses(file, layout):
    text = file.read_text().replace("UTF-8", "UTF-16").replace("<Power>200", "<!-- mine --><Power>200")
    for encoding in ("utf-16-le", "utf-16-be"):
        file.write_bytes(("\ufeff" + text).encode(encoding))
        told = pytest.warns(zantrel.PassedOver, match="1 comment and the encoding that")
        with told, zantrel.edit(file, layout) as db:
            db["Power"] = 275.5
    assert zantrel.load(file, layout)["Power"] == 275.5


def test_an_edit_tells_places_apart_that_share_a_path(tmp_path):
    layout = zantrel.Layout("Machine")
    layout.add("A_B", Type.INT, 1)
    layout.add_group("A").add("B", Type.INT, 2)
    zantrel.Database(layout).save(tmp_path / "m.xml")
    for name, value in (("A/B", 7), ("A_B", 8)):
        with zantrel.edit(tmp_path / "m.xml", layout) as db:
            db.set(name, value)
    assert zantrel.load(tmp_path / "m.xml", layout).to_dict() == {"A_B": 8, "A": {"B": 7}}


def test_an_edit_leaves_what_somebody_else_has_changed(file, layout):
    def change_twice(change, **options):
        with zantrel.edit(file, layout, **options) as db:
            db["Power"] = 100
            change()

    def change():
        with zantrel.edit(file, layout) as other:
            other["Count"] += 1

    before = file.read_bytes()
    for somebody, left in ((change, before.replace(b"Count>3", b"Count>4")), (file.unlink, None)):
        with pytest.raises(zantrel.FileChanged, match="has changed since") as refused:
            change_twice(somebody)
        assert refused.value.filename == str(file) and (file.read_bytes() if file.exists() else None) == left
    with pytest.raises(FileNotFoundError), zantrel.edit(file, layout):
        pass
    with pytest.raises(zantrel.FileChanged):
        change_twice(lambda: file.write_bytes(before), create=True)
    change_twice(change, overwrite=True)
    after = zantrel.load(file, layout)
    assert (after["Power"], after["Count"]) == (100, 3)


def test_an_edit_makes_reads_and_tells_as_it_is_told(file, layout):
    new = file.with_name("new.xml")
    with zantrel.edit(new, layout, create=True, backup=True, format="machine"):
        pass
    assert zantrel.load(new, layout).format == "machine" and not new.with_suffix(".xml.bak").exists()
    notes = []
    file.write_text(file.read_text().replace("<Power>200", "<Power>many"))
    with zantrel.edit(file, layout, notes=notes):
        assert [note.kind for note in notes] == ["unparsed_text"]
    with pytest.raises(zantrel.ReadError, match="more than 3"), zantrel.edit(file, layout, limits={"elements": 3}):
        pass
    with pytest.raises(OSError, match="Only a file"), zantrel.edit("/dev/null", layout):
        pass


def test_a_file_can_be_checked_with_places(file, layout):
    assert not [f for f in zantrel.check(file, layout) if f.severity == "error"]
    file.write_text(file.read_text().replace("<Power>200<", "<Power>20<").replace("<Count>3<", "<Count>three<"))
    errors = [f for f in zantrel.check(file, layout) if f.severity == "error"]
    assert [(f.kind, f.path, f.line) for f in errors] == [
        ("unparsed_text", "Machine/Count", 4),
        ("below_minimum", "Power", 3),
    ]


def test_formats_and_reading_again(db, tmp_path):
    db["Power"] = 99
    held = db["Materials"].add("Steel")
    db["Heights"].append(5)
    db.save(tmp_path / "m.xml", format="machine")
    other = zantrel.load(tmp_path / "m.xml", db.layout, notes=[])
    assert other.format == "machine" and other["Power"] == 99 and zantrel.root_of(tmp_path / "m.xml") != "Machine"
    db.save(tmp_path / "g.xml")
    (tmp_path / "broken.xml").write_text((tmp_path / "g.xml").read_text().replace("</Machine>", ""))
    db["Heights"].append(6)
    with pytest.raises(zantrel.ReadError):
        db.read(tmp_path / "broken.xml")
    assert db["Heights"] == [5, 6] and held.to_dict()
    db.read(tmp_path / "g.xml")
    assert db["Heights"] == [5]
    with pytest.raises(zantrel.StaleNode):
        held.to_dict()
    for wrong in ("json", "\udc80"):
        with pytest.raises(ValueError, match='or "machine", not'):
            db.save(tmp_path / "m.xml", format=wrong)


def test_differences_and_migration(layout):
    old = zantrel.Database(layout)
    old["Power"], old["Count"] = 99.5, 7
    new_layout = machine_layout()
    new_layout["Count"].set_type(Type.STRING).set_range(None, None)
    new_layout.add_group("Laser").add("Watts", Type.DOUBLE, 1)
    new, steps = old.migrate(new_layout, {"Power": "Laser/Watts"})
    assert (new["Laser"]["Watts"], new["Count"]) == (99.5, "7")
    kinds = {step.path: step.kind for step in steps}
    assert (kinds["Power"], kinds["Count"], kinds["Sieve"]) == ("renamed", "converted", "taken")
    with pytest.raises(ValueError):
        old.migrate(new_layout, {"Nothing": "Power"})
    differences = layout.diff(new_layout)
    assert ("added", "ProfileEditor/Laser") in [(d.kind, d.path) for d in differences]


def test_layouts_built_read_and_written(layout, tmp_path):
    layout["Rows"].set_container_display_name("rows").set_user_can_sort(True).multiplicity_max = 5
    layout.add("Note", Type.STRING).set_regex("a*").regex_user_friendly = "a and nothing else"
    layout.add_translation("Laser power", "de-DE", "Laserleistung")
    layout.save(tmp_path / "l.xml")
    layout.save_schema(tmp_path / "l.xsd")
    back = zantrel.Layout.load(tmp_path / "l.xml")
    assert layout.diff(back) == [] and back.translate("Laser power", "de-DE") == "Laserleistung"
    power = back["Power"]
    assert (power.min, power.max, power.unit, power.default) == (50, 400, "W", 200) and power.type is Type.DOUBLE
    assert [(s.path, v) for s, v in back["Mesh"].visibility_sources] == [("ProfileEditor/Sieve", "True")]
    assert back.lint() == []
    options = zantrel.Layout("T")
    assert copy.copy(options).name == "T"
    options.part_options.add("Depth", Type.INT, 4).set_prop_name("z")
    for same in (zantrel.Layout.loads(options.dumps()), copy.deepcopy(options)):
        assert list(same.part_options) == ["Depth"]
    back.add("Power", Type.INT)
    assert [f.kind for f in back.lint() if f.severity == "error"] == ["same_name"]
    metal = zantrel.Layout.load(METAL, notes=[])
    assert {note.kind for note in metal.notes} and len(metal.notes) == 2
    for wrong, error in (("visible", TypeError), ("precision", TypeError), ("display_name", TypeError)):
        with pytest.raises(error, match=wrong):
            setattr(power, wrong, [])
    with pytest.raises(ValueError, match="two layouts"):
        power.add_visibility_source(layout["Sieve"], True)


def test_a_ticket_says_what_counts_for_a_part():
    text = (FORMATS / "ticket.xml").read_bytes().strip().replace(b"<R>", b"<KlvrBuildTicket>")
    ticket = zantrel.Ticket.loads(text.replace(b"</R>", b"</KlvrBuildTicket>"), notes=[])
    assert ticket.to_dict()["defaults"] == {"a": 5, "d": 0.5, "f": True, "g": "t"}
    assert ticket.to_dict()["parts"] == {"p": {"b": [{"c": ("n", b"\0\xff")}]}} and ticket.parts == ["p"]
    assert ("d", 0.5, "ticket") in ticket.effective("p")
    pairs = (("a", 1), ("a", 2), ("a#2", 3), ("a", 4))
    properties = "".join(f'<Property Name="{name}" Type="integer">{value}</Property>' for name, value in pairs)
    same = f'<KlvrBuildTicket><Defaults type="build">{properties}</Defaults></KlvrBuildTicket>'.encode()
    assert zantrel.Ticket.loads(same).to_dict()["defaults"] == {"a": 1, "a#2": 2, "a#2#2": 3, "a#3": 4}
    layout = zantrel.Layout()
    layout.part_options.add("Depth", Type.INT, 4).set_prop_name("z")
    assert ("z", 4, "layout") in ticket.effective("p", layout) and ticket == ticket


def shown(*arguments, **options):
    command = [sys.executable, "-m", "zantrel", *map(str, arguments)]
    return subprocess.run(command, capture_output=True, text=True, encoding="utf-8", **options)


def test_the_module_shows_a_file(db, tmp_path):
    db.set("Material", "a\u2028b", force=True)
    db["Record"] = zantrel.Attachment("\u65e5.bin", b"12345")
    db["Materials"].add("Steel")
    db.layout.save(tmp_path / "l.xml")
    with open(tmp_path / "m.xml", "wb") as file:
        file.write(db.dumps().replace(b"<Count>3", b"<Count>many"))
    run = shown(tmp_path / "m.xml", "--layout", tmp_path / "l.xml", env={**os.environ, "PYTHONIOENCODING": "ascii"})
    assert "Power = 200.0 W\n" in run.stdout and "\n  Steel\n    Infill\n      Power = 280.0\n" in run.stdout
    assert "\nRecord = \\u65e5.bin (5 bytes)\n" in run.stdout and "\nMaterial = 'a\\u2028b'\n" in run.stdout
    assert re.match(r".*m\.xml:\d+:\d+: .*many", run.stderr)
    assert "--layout LAYOUT" in shown(tmp_path / "m.xml").stderr
    assert "BuildHeight: DISTANCE = 325.0, 10.0 to 325.0 mm" in shown(METAL).stdout
    with open(METAL, "rb") as stdin:
        assert shown("-", stdin=stdin).stdout == shown(METAL).stdout
    db = zantrel.Layout("Machine")
    db.add("a", Type.INT).unit = "\x9b2J"
    db.save(tmp_path / "l.xml")
    assert "\n    a: INT = None '\\x9b2J'\n" in shown(tmp_path / "l.xml").stdout
    assert shown(tmp_path / "none").returncode == 2
    assert shown("--version").stdout == f"zantrel {zantrel.__version__}\n"


def test_a_reader_that_goes_away_ends_the_module_quietly():
    read, write = os.pipe()
    os.close(read)
    with os.fdopen(write, "w") as nowhere:
        run = subprocess.run([sys.executable, "-m", "zantrel", METAL], stdout=nowhere, stderr=subprocess.PIPE)
    assert (run.returncode, run.stderr) == (1, b"")


@pytest.mark.parametrize("name", sorted(path.name for path in (ROOT / "examples" / "python").glob("*.py")))
def test_examples_have_a_test(name):
    assert re.search(rf"\b{name}\b", (ROOT / "tests" / "python" / "examples_test.py").read_text())


def test_errno_of_files_that_cant_be_written(db, tmp_path, monkeypatch):
    with pytest.raises(OSError) as full:
        db.save("/dev/full")
    assert (full.value.errno, full.value.filename) == (errno.ENOSPC, "/dev/full")
    db.save(tmp_path / "m.xml")
    (tmp_path / "m.xml").chmod(0o666)
    tmp_path.chmod(0o555)
    monkeypatch.chdir(tmp_path)
    is_root = os.geteuid() == 0  # who may write everywhere
    if is_root:
        os.seteuid(1)
    try:
        with pytest.raises(PermissionError, match=r"Permission denied \(no file can be made in its folder") as refused:
            db.save("m.xml")
    finally:
        if is_root:
            os.seteuid(0)
    assert (refused.value.errno, refused.value.filename) == (errno.EACCES, "m.xml")
