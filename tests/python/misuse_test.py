# SPDX-License-Identifier: Apache-2.0
"""Nothing that Python can do ends the interpreter. In CI these run under AddressSanitizer, too."""

import gc
import itertools
import os
import random
import re
import subprocess
import sys
import threading

import pytest
from conftest import machine_layout

import zantrel
from zantrel import Type


def every_use(node):
    """Whatever can be asked of a node."""
    for name in dir(node):
        if not name.startswith("__"):
            value = getattr(node, name, None)
            if callable(value) and name in ("keys", "values", "items", "rows", "validate", "to_dict", "to_list"):
                value()
    return [repr(node), list(node.walk()), node == node]


def test_nodes_outlive_what_they_were_taken_from():
    held = [zantrel.Database(machine_layout()).at(path) for path in ("", "Power", "Materials", "Rows")]
    held += [machine_layout()["Power"], machine_layout().root]
    gc.collect()
    for node in held[:4]:
        every_use(node)
    assert held[1].value == 200 and repr(held[4]) and list(held[5])
    walk = zantrel.Database(machine_layout()).walk()
    gc.collect()
    assert len(list(walk)) == 11


def test_stale_nodes_raise_whatever_is_asked():
    db = zantrel.Database(machine_layout())
    db["Rows"].extend([{"X": 1}] * 3)
    db["Heights"].update([1, 2])
    item, value = db["Rows"][2], db["Heights"].node(1)
    profile = db["Materials"].add("Steel")
    power, walk = profile.node("Infill").node("Power"), db.walk()
    next(walk)
    db["Rows"].update([])
    db["Heights"].update([])
    del db["Materials"]["Steel"]
    for node in (item, value, profile, power):
        for name in dir(type(node)):
            if isinstance(getattr(type(node), name), property) and name not in ("parent", "database", "name"):
                try:
                    getattr(node, name)
                except (zantrel.StaleNode, RuntimeError):
                    pass
        with pytest.raises(zantrel.StaleNode):
            every_use(node)
        with pytest.raises(zantrel.StaleNode):
            node.read_only = True
    assert [node.name for node in walk][:2] == ["Power", "Count"]


def test_any_order_of_changes_keeps_nodes_right_or_stale():
    random.seed(7)
    layout = machine_layout()
    layout["Rows"].set_user_can_sort(True)
    db, model, held = zantrel.Database(layout), [], {}
    rows = db["Rows"]
    for number in range(400):
        action = random.choice(("append", "append", "delete", "move", "check"))
        if action == "append" or not model:
            held[number] = rows.append({"X": number})
            model.append(number)
        elif action == "delete":
            at = random.randrange(len(model))
            del rows[at]
            gone = held.pop(model.pop(at))
            with pytest.raises(zantrel.StaleNode):
                gone["X"]
        elif action == "move":
            begin, end = random.randrange(len(model)), random.randrange(len(model))
            rows.move(begin, end)
            model.insert(end, model.pop(begin))
        else:
            assert [row["X"] for row in rows] == model
            assert all(node["X"] == x and node.name == str(model.index(x)) for x, node in held.items())


class Evil:
    """A value whose conversion changes what it is to be set in."""

    def __init__(self, change):
        self.change = change

    def __float__(self):
        self.change()
        return 99.0


def test_conversions_that_change_the_database_or_raise():
    db = zantrel.Database(machine_layout())
    rows = db["Rows"]
    rows.extend([{"X": 1}, {"X": 2}])
    with pytest.raises(zantrel.StaleNode):
        rows[1].update({"X": Evil(lambda: rows.update([]))})
    with pytest.raises(ZeroDivisionError):
        db["Power"] = Evil(lambda: 1 / 0)
    values = {"Power": Evil(lambda: values.clear())}
    db.update(values)
    assert db["Power"] == 99 and len(rows) == 0

    def move_and_fail():
        rows.append({"X": 3})
        del rows[0]
        1 / 0

    rows.extend([{"X": 1}, {"X": 2}])
    with pytest.raises(ZeroDivisionError):
        rows.append({"X": Evil(move_and_fail)})
    assert [row["X"] for row in rows] == [2, 3]

    class Path:
        def __fspath__(self):
            raise ZeroDivisionError

    class Notes(list):
        def extend(self, notes):
            raise ZeroDivisionError

    for call in (lambda: db.save(Path()), lambda: zantrel.loads(db.dumps(), db.layout, notes=Notes())):
        with pytest.raises(ZeroDivisionError):
            call()


def test_finalizers_that_run_in_the_middle_of_a_call():
    db = zantrel.Database(machine_layout())
    db["Rows"].extend([{"X": x} for x in range(2000)])
    refused = []

    class Cycle:
        def __init__(self):
            self.me = self

        def __del__(self):
            try:
                db["Rows"].update([])
            except RuntimeError as error:
                refused.append(error)

    gc.collect()
    for _ in range(50):
        Cycle()
    gc.set_threshold(1)
    try:
        content, rows = db.to_dict(), db.rows()
    finally:
        gc.set_threshold(700, 10, 10)
    assert len(content["Rows"]) in (0, 2000) and rows


def test_a_layout_in_use_cant_be_changed():
    layout = machine_layout()
    db = zantrel.Database(layout)
    for change in (
        lambda: layout.add("New"),
        lambda: layout["Power"].set_range(0, 1),
        lambda: layout["Power"].set_option_values(str(i) for i in range(3)),
        lambda: layout.add_category_node_if_needed(),
    ):
        with pytest.raises(RuntimeError, match="in use"):
            change()
    del db
    for name in ("set_list", "set_profile", "set_category_list", "set_is_list"):
        with pytest.raises(ValueError, match="ProfileEditor is a section"):
            getattr(layout.profile_editor, name)(*[True] * (name == "set_is_list"))
    layout["Power"].set_default_value(55)
    assert zantrel.Database(layout)["Power"] == 55


def on_a_small_stack(work):
    """What the function gives in a thread that has hardly any stack."""
    found, usual = [], threading.stack_size(256 << 10)
    try:
        thread = threading.Thread(target=lambda: found.append(work()))
        thread.start()
    finally:
        threading.stack_size(usual)
    thread.join()
    return found[0]


def test_a_hundred_thousand_levels(tmp_path):
    layout = zantrel.Layout()
    node = layout.profile_editor
    with pytest.raises(RecursionError):
        for _ in range(100_000):
            node = node.add_group("a")
    node["a"] if "a" in node else node.parent.add("leaf", Type.INT, 5)
    db = zantrel.Database(layout)
    db.save(tmp_path / "m.xml")
    (tmp_path / "flat.xml").write_bytes(zantrel.Database(zantrel.Layout()).dumps())

    def work():
        assert db.rows()[-1].value == 5 and len(list(db.walk())) > 900
        assert zantrel.Database(layout) == db and db.copy() == db and db.root == db.copy().root
        last = db.at(db.rows()[-1].path)
        last.value = 6
        every_use(last)
        db.read(tmp_path / "flat.xml")
        return last.value

    assert on_a_small_stack(work) == 6
    with pytest.raises(ValueError):
        layout.save("deep.xml")


def test_a_thousand_lists_within_profiles():
    layout, values = zantrel.Layout(), {"leaf": 7}
    node = layout.profile_editor
    for _ in range(490):
        node = node.add_group("P").set_profile("p").add_group("A").set_list("a")
        values = {"P": {"x": {"A": [values]}}}
    node.add("leaf", Type.INT, 5)
    db = zantrel.Database(layout)

    def work():
        db.update(values)
        last = list(db.walk())[-1]
        assert last.value == 7 and db.at(last.path) is last and db.root == values and not db.validate()
        return last

    last = on_a_small_stack(work)
    del db["P"]["x"]
    with pytest.raises(zantrel.StaleNode):
        last.value


def test_wrong_arguments_are_type_errors():
    layout, db = machine_layout(), zantrel.Database(machine_layout())
    functions = [zantrel.load, zantrel.check, zantrel.Database, db.diff, db.migrate, db.at, db.save, layout.diff]
    for function, argument in itertools.product(functions, (None, 5, [], object())):
        with pytest.raises(TypeError, match="must be|is missing"):
            function(argument)
    nameless = zantrel.Attachment(5, b"")
    for call, sentence in (
        (lambda: db.at(), "Database.at() is missing the argument 'path'"),
        (lambda: db.at("a", "b"), "Database.at() takes 1 positional argument at most, not 2"),
        (lambda: db.at("a", path="b"), "Database.at() got two values for the argument 'path'"),
        (lambda: db.at(way="b"), "Database.at() got an unexpected keyword argument 'way'"),
        (lambda: zantrel.Database.at(5, "a"), "Database.at() needs a Database, not int"),
        (lambda: db["Rows"]["a"], "List[...]: index must be int or slice, not str"),
        (lambda: layout.add("New", "float"), "Layout.add(): type must be int, not str"),
        (lambda: layout["Blade"].set_option_values("Wood"), "option_values must be a list of str, not str"),
        (lambda: layout["Blade"].set_option_values([5]), "the texts are str, not int"),
        (lambda: layout["Power"].set_precision("3"), "precision must be int, not str"),
        (lambda: setattr(db.root, "hidden", "False"), "the value must be bool, not str"),
        (lambda: setattr(layout, "name", 5), "the value must be str, not int"),
        (lambda: db.migrate(layout, {"Power": 5}), "renamings are of str to str, not int"),
        (lambda: db.set("Record", nameless), "Record takes an Attachment whose name is a str, not int"),
        (lambda: db.update({5: 1}), "names in Machine are str, not int"),
        (lambda: db.update("Power"), "Machine takes a mapping, or pairs of a name and a value, not str"),
    ):
        with pytest.raises(TypeError, match="^" + re.escape(sentence) + "$"):
            call()
    for call, sentence in (
        (lambda: zantrel.Layout.sample(2**40), "level is out of range"),
        (lambda: layout.add("New", -(2**70)), "type is out of range"),
        (lambda: db.set("Power", 10**400), "Power takes no number that large"),
    ):
        with pytest.raises(ValueError, match=sentence):
            call()
    assert db != None and db.layout != None and db.root != None  # noqa: E711


def test_objects_that_hold_nothing(db):
    for kind in vars(zantrel._zantrel).values():
        if not isinstance(kind, type):
            continue
        nothing = [None, 5]
        try:
            nothing.append(kind.__new__(kind))
        except TypeError:
            assert kind not in (zantrel.Database, zantrel.Layout)
        for name, function in vars(kind).items():
            if callable(getattr(function, "fget", function)) and name not in ("__init__", "__new__"):
                for self, others in itertools.product(nothing, ((), (None,), ("a",), (0,), (db,))):
                    try:
                        getattr(function, "fget", function)(self, *others)
                    except (TypeError, RuntimeError, AttributeError):
                        pass


def test_no_object_becomes_one_of_another_class(db, layout, monkeypatch):
    class Mine(zantrel.Database):
        __slots__ = ()

    things = [Mine(layout), db.root, db["Rows"], db.at("Power"), layout, layout["Power"]]
    for one, other in itertools.permutations(things, 2):
        with pytest.raises(TypeError, match="differs"):
            one.__class__ = type(other)
    with pytest.raises(TypeError, match="differs"):
        Mine.__bases__ = (zantrel.Layout,)
    for strange in (5, list):
        monkeypatch.setattr(zantrel._types, "Row", strange)
        with pytest.raises(TypeError, match="Row must be"):
            db.rows()


def test_a_fork_in_between(db, tmp_path):
    db["Power"] = 99
    child = os.fork()
    if child == 0:
        try:
            db.save(tmp_path / "m.xml")
            os._exit(0 if zantrel.load(tmp_path / "m.xml", db.layout)["Power"] == 99 else 1)
        except BaseException:
            os._exit(2)
    assert os.waitpid(child, 0)[1] == 0


def test_a_database_belongs_to_one_thread_at_a_time(tmp_path):
    layout = machine_layout()
    db = zantrel.Database(layout)
    db["Rows"].extend([{"X": x} for x in range(3000)])
    outcomes, barrier = [], threading.Barrier(4)

    def work(number):
        barrier.wait()
        for round in range(20):
            try:
                if number % 2:
                    db.save(tmp_path / f"{number}.xml")
                else:
                    db["Rows"].append({"X": round})
                    db.validate()
                outcomes.append("done")
            except RuntimeError as error:
                assert "belongs to one at a time" in str(error)
                outcomes.append("refused")

    threads = [threading.Thread(target=work, args=[number]) for number in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert len(outcomes) == 80 and zantrel.loads(db.dumps(), layout) == db


def test_many_threads_read_on_one_layout(file, layout):
    expected, found = zantrel.load(file, layout), []
    threads = [threading.Thread(target=lambda: found.append(zantrel.load(file, layout))) for _ in range(16)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert found == [expected] * 16


def test_the_interpreter_ends_while_threads_are_at_work():
    code = """
import threading, time, zantrel
layout = zantrel.Layout.sample()
def work():
    while True:
        zantrel.loads(zantrel.Database(layout).dumps(), layout)
for _ in range(4):
    threading.Thread(target=work, daemon=True).start()
kept = zantrel.Database(layout).walk()
next(kept)
"""
    run = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True)
    assert (run.returncode, run.stderr) == (0, "")
