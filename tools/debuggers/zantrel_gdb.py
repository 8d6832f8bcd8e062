# SPDX-License-Identifier: Apache-2.0
"""Shows layouts, cursors, bags, properties and tickets in gdb as their users see them.

gdb loads it by itself with a library that is installed with the prefix /usr; elsewhere: (gdb) source <this file>. What bags and
children of nodes hold is known with the debug information of the library only; without it they say so. Nothing is called in
the program, so a core dump will do.
"""

import gdb
import gdb.printing

# --- What the standard library keeps ---


def text_of(string):
    """A std::wstring as Python has it."""
    size = int(string["_M_string_length"])
    if size == 0:
        return ""
    return string["_M_dataplus"]["_M_p"].string(length=size)


def elements_of(vector):
    data = vector["_M_impl"]["_M_start"]
    return (data[i] for i in range(size_of(vector)))


def size_of(vector):
    return int(vector["_M_impl"]["_M_finish"] - vector["_M_impl"]["_M_start"])


def pointer_in(unique):
    """What a std::unique_ptr holds, which is no more than that."""
    held = unique.type.strip_typedefs().template_argument(0)
    return unique.address.cast(held.pointer().pointer()).dereference()


def has_field(value, name):
    return any(field.name == name for field in value.type.strip_typedefs().fields())


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


# --- What is known of a class ---

UNKNOWN = "<no debug information of the library>"


def is_known(name):
    try:
        gdb.lookup_type(name)
        return True
    except gdb.error:
        return False


def is_described(value):
    """Whether there is more than the name of a class. The host's own debug information lacks those with virtual functions."""
    return bool(value.type.strip_typedefs().fields())


def of_the_library(read):
    """Makes `read` yield nothing where the debug information of the library isn't there."""
    return lambda value: read(value) if is_known("Zantrel::EntryBlock") else iter(())


# --- What the library keeps: one reader for each form of a table, as store/entry_forms.h tells them ---


def pointer_to(name, address):
    return gdb.Value(address).cast(gdb.lookup_type(name).pointer())


def name_of(entry_name):
    return text_of(pointer_to("std::wstring", int(entry_name["m_word"]) & ~1).dereference())


def property_at(address):
    """The property as the class that it is."""
    base = pointer_to("IPersistentProperty", address)
    return base.cast(base.dynamic_type).dereference()


def shaped_entries(block):
    shape = block["shape"].dereference()
    for i, (name, slot) in enumerate(zip(elements_of(shape["m_names"]), elements_of(shape["m_slots"]))):
        if i < int(block["made"]) and int(slot["flagBit"]) & ~int(block["flags"]) == 0:
            yield name_of(name), property_at(int(block.address) + int(slot["place"]))


def listed_entries(entries):
    for entry in entries:
        yield name_of(entry["name"]), property_at(int(entry["property"]["m_word"]) & ~1)


def block_entries(block):
    behind = int(block.address) + block.type.sizeof + (8 if int(block["hasOlder"]) else 0)
    first = pointer_to("Zantrel::Entry", behind)
    return listed_entries(first[i] for i in range(int(block["size"])))


def tree_entries(tree):
    header = tree["m_entries"]["_M_t"]["_M_impl"]["_M_header"]
    node = header["_M_left"]

    def entries():
        entry = None if node == header.address else (node + 1).cast(gdb.lookup_type("Zantrel::TreeEntry").pointer())
        while entry:
            yield entry.dereference()
            entry = entry["next"]

    return listed_entries(entries())


@of_the_library
def entries_of(bag):
    """Pairs of name and property of a PersistentProperties."""
    word = int(bag["m_entries"])
    if word & 2:
        return iter([("Value", property_at(word & ~3))])
    if word & 4:
        return tree_entries(pointer_to("Zantrel::EntryTree", word & ~7).dereference())
    if word & 1:
        return shaped_entries(pointer_to("Zantrel::ShapedBlock", word & ~7).dereference())
    return block_entries(pointer_to("Zantrel::EntryBlock", word).dereference()) if word else iter([])


def count_of(bag):
    """How many entries there are, without a look at them where that can be."""
    word = int(bag["m_entries"])
    if word & 4 and not word & 2:
        tree = pointer_to("Zantrel::EntryTree", word & ~7)
        return int(tree["m_entries"]["_M_t"]["_M_impl"]["_M_node_count"])
    return sum(1 for _ in entries_of(bag))


def piece_of(index):
    """Where a bag of a sequence stands, as store/sequence_content.cpp has it."""
    if index < 2:
        return 0, index
    if index < 512:
        piece = index.bit_length() - 1
        return piece, index - (1 << piece)
    return 9 + (index - 512) // 256, (index - 512) % 256


@of_the_library
def bags_of(sequence):
    content = sequence["m_content"]
    if not content:
        return
    pieces = (content + 1).cast(gdb.lookup_type("PersistentProperties").pointer().pointer())
    for index in range(int(content["m_size"])):
        piece, offset = piece_of(index)
        yield pieces[piece][offset]


@of_the_library
def children_of(node):
    """The nodes below a LayoutNode, in the order in which they are shown."""
    children = pointer_in(node["m_children"]["m_list"])
    if not children:
        return
    inside = children.dereference()
    for child, slot in zip(elements_of(inside["m_nodes"]), elements_of(inside["m_slots"])):
        if child and slot["isShown"]:
            yield child.dereference()


# --- One line for each ---


def type_word(node):
    return str(node["m_type"]).rsplit("::", 1)[-1]


def node_line(node):
    if not is_described(node):
        return UNKNOWN
    name = text_of(node["m_name"])
    kind = next((word for field, word in (("m_isCategoryList", "category list"), ("m_isProfileList", "profile list"),
                                          ("m_isList", "list")) if node[field]), type_word(node))
    line = f"{name} ({kind})"
    default = text_of(node["m_defaultValue"])
    if default:
        line += f" = {default}"
    limits = [text_of(node[field]) for field in ("m_min", "m_max")]
    if any(limits):
        line += f" [{limits[0]}, {limits[1]}]"
    unit = text_of(node["m_postfix"])
    return line + (f" {unit}" if unit else "")


def node_path(node):
    """The names from below the root down to a node, joined as by GetQueryName."""
    steps = []
    while node and node["m_parent"]:
        steps.append(text_of(node["m_name"]))
        node = node["m_parent"]
    return "_".join(reversed(steps))


def value_line(value):
    """A value of a property, as short as it can be said."""
    value_type = value.type.strip_typedefs()
    name = value_type.name or ""
    if name.startswith("std::__cxx11::basic_string") or name == "std::wstring":
        return quoted(text_of(value))
    if value_type.code == gdb.TYPE_CODE_BOOL:
        return "true" if value else "false"
    printer = gdb.default_visualizer(value)
    return printer.to_string() if printer else str(value)


def property_line(prop):
    if not has_field(prop, "m_value"):
        return str(prop.dynamic_type)
    return value_line(prop["m_value"]) + (" (deleted)" if prop["m_deleted"] else "")


def cursor_line(cursor):
    node = cursor["m_pNode"]
    if not node:
        return "no node"
    if not is_described(node.dereference()):
        return UNKNOWN
    path = node_path(node.dereference()) or "the layout"
    bag = cursor["m_pProperties"]
    if not bag:
        return f"{path}: not valid"
    if cursor["m_isContainer"]:
        return f"{path}: the container"
    values = [property_line(prop) for name, prop in entries_of(bag.dereference()) if name == "Value"]
    return f"{path} ({type_word(node.dereference())})" + (f" = {values[0]}" if values else "")


# --- The printers ---


class Lines:
    """What one line says, with nothing below it."""

    def __init__(self, value, line):
        self.value, self.line = value, line

    def to_string(self):
        return self.line(self.value)


class Map(Lines):
    """A line, and below it pairs of a name and a value."""

    def __init__(self, value, line, pairs):
        super().__init__(value, line)
        self.pairs = pairs

    def display_hint(self):
        return "map"

    def children(self):
        for i, (name, value) in enumerate(self.pairs(self.value)):
            yield f"[{2 * i}]", name
            yield f"[{2 * i + 1}]", value


def entry_values(bag):
    """Of a leaf's bag, which has a value and nothing else, that value."""
    for name, prop in entries_of(bag):
        value = prop["m_value"] if has_field(prop, "m_value") else prop
        if str(value.type.strip_typedefs()) == "PersistentProperties" and count_of(value) == 1:
            inner, leaf = next(entries_of(value))
            value = leaf["m_value"] if inner == "Value" and has_field(leaf, "m_value") else value
        yield name, value


def counted(count, one, more):
    return f"{count} {one if count == 1 else more}"


def bag_line(bag):
    return counted(count_of(bag), "entry", "entries") if is_known("Zantrel::EntryBlock") else UNKNOWN


def sequence_line(sequence):
    if not is_known("Zantrel::SequenceContent"):
        return UNKNOWN
    content = sequence["m_content"]
    return counted(int(content["m_size"]) if content else 0, "bag", "bags")


def object_line(store):
    kinds = {1: "build", 2: "build item", 3: "object", 4: "component"}
    kind = kinds.get(int(store["m_objectKind"]), "no kind")
    return f"{quoted(text_of(store['m_id']['m_text']))}, {kind}, {bag_line(store)}"


def ticket_line(ticket):
    return f"a ticket from {quoted(text_of(ticket['m_sourceId']))}"


def ticket_parts(ticket):
    return [("defaults", ticket["m_defaults"]), ("part overrides", ticket["m_partOverrides"]),
            ("object properties", ticket["m_objectProperties"])]


def report_line(report):
    return f"{counted(size_of(report['m_entries']), 'entry', 'entries')}, {int(report['m_leftOut'])} left out"


def report_entry_line(entry):
    place = f"{int(entry['line'])}:{int(entry['column'])}: " if int(entry["line"]) else ""
    return place + text_of(entry["sentence"])


def database_line(database):
    layout = database["m_pLayout"]
    if layout and not is_described(layout.dereference()):
        return UNKNOWN
    return f"values of {quoted(text_of(layout['m_name']))}" if layout else "without a layout"


PRINTERS = {
    "Zantrel::LayoutNode": lambda v: Map(v, node_line, lambda n: ((text_of(c["m_name"]), c) for c in children_of(n))),
    "Zantrel::ParameterLayout": lambda v: Map(v, node_line,
                                              lambda n: ((text_of(c["m_name"]), c) for c in children_of(n))),
    "Zantrel::ParameterLayout::pNode": lambda v: Lines(
        v, lambda p: node_line(p["m_node"].dereference()) if p["m_node"] else "no node"),
    "Zantrel::ParameterNode": lambda v: Lines(v, cursor_line),
    "Zantrel::ParameterView": lambda v: Lines(v, lambda view: cursor_line(view["m_node"])),
    "Zantrel::ParameterDatabase": lambda v: Map(v, database_line, lambda d: entry_values(d["m_properties"])),
    "Zantrel::BuildTicket": lambda v: Map(v, ticket_line, ticket_parts),
    "Zantrel::ReadReport": lambda v: Map(v, report_line, lambda r: ((str(i), e) for i, e in
                                                                    enumerate(elements_of(r["m_entries"])))),
    "Zantrel::ReadReport::Entry": lambda v: Lines(v, report_entry_line),
    "PersistentProperties": lambda v: Map(v, bag_line, entry_values),
    "KelAM::SubProperties": lambda v: Map(v, bag_line, entry_values),
    "KelAM::ExternalProperties": lambda v: Map(v, object_line, entry_values),
    "KelAM::DatabaseExternalProperties": lambda v: Map(v, bag_line, entry_values),
    "KelAM::ExternalPropertyID": lambda v: Lines(v, lambda i: quoted(text_of(i["m_text"]))),
    "KelAM::FileContent": lambda v: Lines(
        v, lambda f: f"{quoted(text_of(f['m_name']))}, {size_of(f['m_data'])} bytes"),
    "IndexedProperties<PersistentProperties>": lambda v: Map(
        v, sequence_line, lambda s: ((str(i), b) for i, b in enumerate(bags_of(s)))),
}


class Collection(gdb.printing.PrettyPrinter):
    def __call__(self, value):
        name = value.type.unqualified().strip_typedefs().name or ""
        make = (lambda prop: Lines(prop, property_line)) if name.startswith("PersistentProperty<") else PRINTERS.get(name)
        if make and not is_described(value):
            return Lines(value, lambda _: UNKNOWN)
        return make(value) if make else None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Collection("zantrel"), replace=True)
