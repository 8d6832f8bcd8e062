# SPDX-License-Identifier: Apache-2.0
import collections.abc
import copy
import pickle
from decimal import Decimal

import pytest

import zantrel
from zantrel import Type


class Half:
    def __float__(self):
        return 50.5


@pytest.mark.parametrize(
    "name, value, kept",
    [
        ("Power", 275.5, 275.5),
        ("Power", 60, 60.0),
        ("Power", "1e2", 100.0),
        ("Power", Decimal("99.5"), 99.5),
        ("Power", Half(), 50.5),
        ("Count", 7, 7),
        ("Count", " 8 ", 8),
        ("Sieve", False, False),
        ("Sieve", "1", True),
        ("Blade", "Rubber", "Rubber"),
        ("Record", zantrel.Attachment("a.bin", b"\0\xff"), ("a.bin", b"\0\xff")),
        ("Record", zantrel.Attachment("a.bin", bytearray(b"x")), ("a.bin", b"x")),
        ("Material", "Default", "Default"),
    ],
)
def test_a_value_comes_back_in_its_type(db, name, value, kept):
    db[name] = value
    assert db[name] == kept and type(db[name]) in (type(kept), zantrel.Attachment)
    assert zantrel.loads(db.dumps(), db.layout)[name] == kept


@pytest.mark.parametrize(
    "name, value, error, sentence",
    [
        ("Power", 20, ValueError, "Power: 20 is below the least value, 50. It takes 50 to 400 W."),
        ("Power", float("nan"), ValueError, "NaN"),
        ("Power", "275,5", ValueError, '"275,5"'),
        ("Power", True, TypeError, "Power takes a number or a text, not bool"),
        ("Power", [1], TypeError, "not list"),
        ("Count", 2.0, TypeError, "Count takes a whole number or a text, not float"),
        ("Count", 2**31, ValueError, "2147483648"),
        ("Count", 2**70, ValueError, "1180591620717411303424"),
        ("Sieve", 1, TypeError, "True, False"),
        ("Blade", "Wood", ValueError, "Wood"),
        ("Blade", 5, TypeError, "takes a text, not int"),
        ("Record", "/nowhere/at/all", ValueError, "/nowhere/at/all"),
        ("Material", "Brass", ValueError, "Brass"),
        ("Rows", 5, TypeError, "takes a sequence"),
        ("Materials", [5], TypeError, "takes a mapping"),
    ],
)
def test_a_value_that_may_not_be_is_refused(db, name, value, error, sentence):
    before = db.copy()
    with pytest.raises(error) as refused:
        db[name] = value
    assert sentence in str(refused.value) and db == before


def test_what_is_read_only_takes_force(db):
    db.at("Power").read_only = True
    with pytest.raises(zantrel.Refused) as refused:
        db["Power"] = 100
    assert refused.value.findings[0].kind == "read_only"
    db.set("Power", 1000, force=True)
    assert db["Power"] == 1000 and [f.kind for f in db.at("Power").validate()] == ["above_maximum"]
    materials, steel = db["Materials"], db["Materials"].add("Steel")
    steel.can_be_deleted, materials.disable_add_remove = False, True
    with pytest.raises(zantrel.Refused, match="disabled"):
        materials.remove("Steel", force=True)
    assert not steel.can_be_deleted
    materials.disable_add_remove = False
    materials.remove("Steel", force=True)


def test_a_parameter_tells_its_unit_limits_and_look(db):
    node = db.at("Power")
    assert (node.unit, node.min, node.max, node.default, node.type) == ("W", 50, 400, 200, Type.DOUBLE)
    assert db.at("Blade").options == ["Steel", "Rubber"] and db.at("Mesh").visible
    db["Sieve"] = False
    assert not db.at("Mesh").visible and "Sieve" in db.at("Mesh").look.reasons[0]
    assert repr(node) == "<Parameter Power = 200.0 W>"
    layout = zantrel.Layout()
    layout.add("Whole", Type.INT, " +5 ").set_range(" 5.0", "+9.5")
    whole = zantrel.Database(layout).at("Whole")
    assert (whole.min, whole.max, whole.default, whole.value) == (5, 9.5, 5, 5)


def test_a_group_is_a_mapping(db):
    assert isinstance(db, collections.abc.Mapping) and isinstance(db["Materials"], collections.abc.MutableMapping)
    assert list(db) == list(db.keys()) == db._ipython_key_completions_() and len(db) == 10
    assert db.keys() & {"Power", "Powr"} == {"Power"} and ("Power", 200) in db.items() and 63 in db.values()
    assert next(reversed(db)) == next(reversed(db.keys())) == "Material" and len(db["Materials"].items()) == 0
    assert "Power" in db and "Powr" not in db and 5 not in db and "Power\0" not in db
    assert dict(db.items())["Power"] == 200 and db.get("Nothing", 7) == 7
    with pytest.raises(KeyError, match='did you mean "Power"'):
        db["Powr"]
    db["Materials"]["Steel"] = {}
    for path in ("Materials/Stel/Infill", "Materials_Material[Stel]_Infill"):
        with pytest.raises(KeyError, match='in Materials; did you mean "Steel"'):
            db.at(path)
    db.update([("Power", 99)], Count=4)
    assert (db["Power"], db["Count"]) == (99, 4)


def test_a_list_is_a_sequence(db):
    rows, heights = db["Rows"], db["Heights"]
    assert isinstance(rows, collections.abc.MutableSequence)
    rows.extend([{"X": 1}, {"X": 2}, {"X": 3}])
    heights.update([1.5, 2.5, 3.5])
    assert heights == [1.5, 2.5, 3.5] and heights[-1] == 3.5 and heights[::2] == [1.5, 3.5] and 2.5 in heights
    heights[:2] = (value / 2 for value in heights[:2])
    heights.insert(7, 9)
    del heights[::2]
    for insert in (lambda: heights.insert(0, 9), lambda: heights.insert(-1, 9), heights.reverse):
        with pytest.raises(zantrel.Refused, match="can't reorder"):
            insert()
    with pytest.raises(ValueError, match="a slice of 2 items can't take 1"):
        heights[:] = [5]
    with pytest.raises(zantrel.Refused):
        heights.update([1.25, 9, "no"])
    assert heights.to_list() == [1.25, 9]
    assert [row["X"] for row in rows] == [1, 2, 3] and rows == [{"X": 1}, {"X": 2}, {"X": 3}]
    for wrong in (3, -4, 2**40, 2**70):
        with pytest.raises(IndexError):
            rows[wrong]
    with pytest.raises(ValueError):
        rows.append({"X": "no"})
    assert len(rows) == 3 and rows.pop() == {"X": 3} and rows.index({"X": 2}) == 1
    for search in (rows.index, rows.remove):
        with pytest.raises(ValueError, match="isn't in Rows"):
            search({"X": 7})
    rows += [{"X": 4}]
    rows.remove({"X": 1})
    assert [row["X"] for row in reversed(rows)] == [4, 2]
    rows[:] = reversed(rows)
    x = rows.node(0).node("X")
    x.read_only = True
    db["Rows"] += [{"X": 5}]
    x.read_only = False
    rows.update([rows[0], rows[2], rows[1]])
    assert [row["X"] for row in rows] == [4, 5, 2]
    db["Power"] = db.at("Power")
    rows.clear()
    materials = db["Materials"]
    assert materials.setdefault("Steel", {}) == materials["Steel"] and materials.pop("Brass", 5) == 5
    assert materials.popitem() == ("Steel", {"Infill": {"Power": 280}}) and len(rows) == len(materials) == 0


def test_paths_lead_to_what_they_name(db):
    materials = db["Materials"]
    materials["17-4/H900"] = {"Infill": {"Power": 300}}
    materials.add("17-4", copy_of="17-4/H900")
    for path in ("Materials/17-4/H900/Infill/Power", "Materials_Material[17-4/H900]_Infill_Power"):
        assert db.at(path).value == 300 and db.at(path) is db.at(path)
    assert db.at("Materials/::Default::/Infill/Power").value == 280
    other, template = db.copy(), db["Rows"].default
    other.at("Rows/::Default::/X").value = 9
    assert db.at(template.path) is template and other.at(other.diff(db)[0].path).value == 9
    for node in db.walk():
        assert node.path == "" or db.at(node.path) is node
    assert [row.path for row in materials.rows() if row.value == 300] == [
        "Materials_Material[17-4]_Infill_Power",
        "Materials_Material[17-4/H900]_Infill_Power",
    ]


def test_nodes_follow_their_entries_and_go_stale_with_them(db):
    rows, materials = db["Rows"], db["Materials"]
    rows.extend({"X": x} for x in range(5))
    held = list(rows)
    for item in held[1::2]:
        del rows[int(item.name)]
    assert [held[i]["X"] for i in (0, 2, 4)] == [0, 2, 4]
    steel, infill = materials.add("Steel"), materials.add("Brass").node("Infill")
    db["Material"] = "Steel"
    assert materials.rename("Steel", "Steel 316L")[0].path == "Material" and db["Material"] == "Steel 316L"
    assert steel.name == "Steel 316L" and materials["Steel 316L"] is steel
    del materials["Brass"]
    for stale in (held[1], infill):
        assert "can't be seen now" in repr(stale)
        for use in (lambda node: node.to_dict(), lambda node: list(node.walk()), lambda node: node.path):
            with pytest.raises(zantrel.StaleNode):
                use(stale)
    assert materials.add("Brass").node("Infill") == {"Power": 280}
    with pytest.raises(KeyError):
        materials["Iron"] = {"Nope": 1}
    for change in (lambda: materials.rename("Bras", "Iron"), lambda: materials.add("Iron", copy_of="Bras")):
        with pytest.raises(KeyError, match='did you mean "Brass"'):
            change()
    for change in (materials.add, lambda name: materials.rename("Brass", name)):
        with pytest.raises(zantrel.Refused, match='"::Default::" is no name for a profile'):
            change("::Default::")
    rows.extend(rows)
    assert "Iron" not in materials and len(rows) == 6 and list(db.layout) == list(db.layout.keys())


def test_copies_are_equal_and_apart(db):
    copies = [db.copy(), copy.copy(db), copy.deepcopy(db)]
    assert all(one == db and one is not db for one in copies)
    copies[0]["Count"] = 4
    assert copies[0] != db and db.diff(copies[0]) == [("value", "Count", "", 3, 4)]
    for thing in (db, db.layout, db.root, db.layout.root):
        with pytest.raises(TypeError, match="pickle"):
            pickle.dumps(thing)
    assert pickle.loads(pickle.dumps(db.rows())) == db.rows()


def test_content_as_dict_and_rows(db):
    db["Materials"].add("Steel")
    values = db.to_dict()
    assert values["Materials"] == {"Steel": {"Infill": {"Power": 280.0}}} and values["Rows"] == []
    assert "::Default::" in db.to_dict(default_profiles=True)["Materials"]
    other = zantrel.Database(db.layout)
    values["Power"] = 99
    del values["Record"]
    other.update(values)
    assert other["Power"] == 99 and "Steel" in other["Materials"]
    assert db.rows()[0] == ("Power", 200.0, "W", Type.DOUBLE)


def test_all_that_is_public_says_what_it_is():
    for name in zantrel.__all__:
        thing = getattr(zantrel, name)
        members = vars(thing).items() if hasattr(zantrel._zantrel, name) and isinstance(thing, type) else ()
        for member, value in [("", thing), *members]:
            # What pybind11 alone has to say is the function's form.
            text = [line for line in (value.__doc__ or "").splitlines() if not line.startswith(member + "(")]
            assert member[:1] == "_" or any(text), (name, member)
    assert zantrel.__version__.count(".") == 2
