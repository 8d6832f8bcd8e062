# SPDX-License-Identifier: Apache-2.0
"""The docstrings of the extension module; what a function takes stands in its form, which help() shows above."""

from __future__ import annotations

import inspect
from typing import Optional

_MAPPING = {
    "get": "As self[key]; `default` where there is no such name.",
    "node": "The node of that name, also of a parameter. KeyError where there is none.",
    "update": """Sets what a mapping names, pairs of names and values, or keywords.

        Goes down into what is a mapping or a sequence itself, adds profiles that aren't there, and makes a list as long
        as its sequence. Raises KeyError for a name that a group doesn't have, TypeError and Refused as Parameter.set;
        what stands before the value that is refused is set then. Nodes count as what they hold at first. `force` is
        that of Parameter.set.""",
    "to_dict": """All of its content as dicts, lists and values, which have nothing to do with the database any more.

        With `default_profiles` each profile list has its default profile, too, under "::Default::".""",
    "__getitem__": "The value of a parameter, the node of anything else. KeyError, with the names most alike.",
    "__setitem__": "Sets a value, or all that a mapping or a sequence names: see update.",
}

_NODE = {
    "walk": "The node and all below it, one after another. What is changed meanwhile comes as it is by then.",
    "rows": "A Row for each value in it, in the order of the layout, as for a data frame.",
    "validate": "What the layout has against the values in it, as Findings.",
}

_FILE_ARGUMENTS = """

        A list that is given as `notes` gets the notes of the read; otherwise a PassedOver warning tells of them.
        `limits` ends a read of more than that, as {"bytes": 64 << 20}: "bytes", "text_bytes", "elements", "depth",
        "list_items", "profiles", "report_bytes", and "refuses_same_profiles", which is True or False. Raises
        OSError for what can't be opened, and ReadError for what is no such document."""

_FLAGS_LOST = ", but not of the root, of profile lists, of default profiles and of templates"

_DOCS: dict[str, dict[str, str]] = {
    "": {
        "load": """The values in a parameter file, with the layout's defaults where it has none.

        `format` is "generic" or "machine"; without it the file's root tells."""
        + _FILE_ARGUMENTS,
        "loads": "As load, from bytes, a bytearray or any other buffer of a document." + _FILE_ARGUMENTS,
        "check": """What is wrong with a parameter file, as Findings with lines and columns: its structure, and what
        the layout has against its values; these have no places where it isn't a file but a pipe. Raises OSError and
        ReadError, and takes `limits`, as load.""",
        "root_of": "The name of a document's root element, which ends the read. Raises OSError and ReadError as load.",
    },
    "Database": {
        "": """The values of one layout, at first its defaults; a mapping of what stands at the layout's top.

        Database(layout) makes one, as load and loads do. It belongs to one thread at a time: another one that comes
        while it is at work gets a RuntimeError.""",
        **_MAPPING,
        **_NODE,
        "root": "The node of all, whose path is empty.",
        "at": """The node at a path, as "Materials/Steel/Infill/Power", or as findings and rows have it. KeyError
        where there is none, with the names most alike.""",
        "set": "Sets what stands at a path: see at, and Parameter.set.",
        "read": "Reads a file over the values; on failure nothing changes. Nodes of entries go stale."
        + _FILE_ARGUMENTS,
        "save": """Writes all to a file, which is then the new one or, on failure, still the old one.

        `format` is "generic" or "machine"; without it that of the file last read. `in_place` lets a file be written
        over where no other can be put beside it. Raises OSError, and WriteError for a text that XML has no
        characters for. A PassedOver warning of what the file can't keep comes when it is there, also as an error.""",
        "dumps": "The bytes of the file that save would write.",
        "notes": "What the reads into it passed over, as Notes.",
        "path": "Of the file that it was read from; empty where there is none.",
        "format": 'Of that file: "generic" or "machine".',
        "layout": "The layout that it stands on, which can't be changed as long as it does.",
        "diff": "In what the other one differs from this, as Differences: `before` is here, `after` there.",
        "migrate": """The values on another layout, and Steps that tell what became of each.

        `renamings` has the new paths of what is called otherwise there, by the old ones. This database stays.""",
        "copy": "A database of its own with the same values, on the same layout.",
    },
    "Node": {
        "": """A place of a database, which it keeps alive.

        It stands for the same item or profile also when that is moved or renamed, and raises StaleNode when it was
        removed. Equal where the content is, also to a dict, list or value.""",
        **_NODE,
        "name": "Of the layout's node or of the profile; of an item its index.",
        "path": 'As findings and rows have it: "Materials_Material[Steel]_Power". Empty for the root.',
        "display_name": "What users read in place of the name.",
        "description": "What the layout says of it.",
        "parent": "The node that it stands in; None for the root.",
        "database": "The database that it is of.",
        "is_default": "Whether it is the default profile of a profile list, or the template of a list.",
        "look": "Whether users see it and may change it, and why not.",
        "visible": "Whether users see it, by the layout's conditions and its own flag.",
        "editable": "Whether users may change it, likewise.",
        "read_only": "A flag of its own: users may not change it. Generic files keep it" + _FLAGS_LOST + ".",
        "hidden": "A flag of its own: users don't see it. Generic files keep it" + _FLAGS_LOST + ", and of profiles.",
    },
    "Parameter": {
        "": "The node of one value.",
        "value": "As int, float, bool, str or Attachment; what is assigned is held against the layout, as by set.",
        "set": """Sets a value of the parameter's type, or a text that is one.

        Raises TypeError for a value of another kind, and Refused, a ValueError, for one that the layout doesn't
        allow or where users may not change it. With `force` only what is no value of the type is refused.""",
        "text": "The value as files have it.",
        "unit": "Of the layout.",
        "precision": "How many digits behind the point the layout shows.",
        "type": "As a Type.",
        "min": "The least value; None where there is none.",
        "max": "The greatest value; None where there is none.",
        "default": "The layout's.",
        "choices": "What can be chosen by now, as Choices with the names that users read.",
        "options": "The values of the choices.",
        "objections": "What the layout has against a text, as Findings; nothing is set.",
    },
    "Group": {
        "": "The node of a group, and a mapping of its children; they are the layout's, and none comes or goes.",
        **_MAPPING,
        "name_read_only": """A flag of a profile, which generic files keep: users may not rename it. AttributeError for
        what is no profile.""",
        "can_be_deleted": "Likewise, but read and never written: users may remove it.",
        "user_default_profile": "Likewise: users have made it their default.",
    },
    "List": {
        "": "The node of a list as a whole, and a sequence of its items: of values, or of the nodes of groups.",
        "node": "The node of an item, also where that is a value. IndexError where there is none.",
        "append": "Adds an item, with the template's values where `value` says no other, and gives its node.",
        "insert": "The same before an item; a list whose users may not sort it is Refused.",
        "extend": "Appends each of the values.",
        "move": "Moves an item, so that it then has the index `to`.",
        "to_list": "Its content, which has nothing to do with the database any more.",
        "update": "Makes it as long as the sequence, and sets each item: see Group.update.",
        "default": "The template of its items, which no file keeps.",
        "disable_add_remove": "A flag of its own, which is read and never written: users may not add or remove items.",
    },
    "ProfileList": {
        "": "The node of a profile list as a whole, and a mapping of its profiles by name.",
        **_MAPPING,
        "add": """Adds a profile with the values of the default one, or of that whose name is `copy_of`, and gives
        its node.

        KeyError where that one isn't there; Refused where the name is in use or none, or the layout or a flag doesn't
        let users add one.""",
        "rename": """Gives a profile another name, which choices of it take on: each as a Finding. Its node goes on
        with it.

        KeyError where there is none, Refused as by add.""",
        "remove": """Ends a profile. KeyError where there is none; Refused where users may not remove it.

        With `force` also one of which no file says that it can be deleted.""",
        "default": "The default profile, whose values new ones get.",
        "disable_add_remove": "A flag of its own, which generic files keep: users may not add or remove profiles.",
    },
    "Layout": {
        "": """What parameters there are, with types, limits and looks; a mapping of the nodes below
        "ProfileEditor".

        Layout(name) makes one without parameters. While databases stand on it, it can't be changed (RuntimeError);
        copy.deepcopy gives one that can.""",
        "load": "The layout in a meta file or a property template." + _FILE_ARGUMENTS,
        "loads": "As load, from bytes, a bytearray or any other buffer of a document." + _FILE_ARGUMENTS,
        "sample": "A layout to try things on; `level`, from 0 to 2 and more, says how much it holds.",
        "save": """Writes it to a file: `format` is "meta", or "template", which can't carry all.

        Raises OSError and WriteError.""",
        "dumps": "The bytes of the file that save would write.",
        "save_schema": "Writes an XML schema of its parameter files. Raises OSError.",
        "lint": "What is wrong with it, as LintFindings.",
        "diff": "In what the other one differs from this, as LayoutDifferences.",
        "add_category_node_if_needed": "Gives the platform options a choice of the category, where there are such.",
        "notes": "What the read passed over, as Notes.",
        "path": "Of the file that it was read from; empty where there is none.",
        "name": "What the root of its files is called.",
        "root": "The node of all sections.",
        "profile_editor": "The section of what parameter files hold.",
        "platform_options": "The section of options of a build platform.",
        "part_options": "The section of options of a part.",
        "part_configurator": "The section of the part configurator.",
        "version_node": "The node of the layout's version.",
        "add": "Adds a node below the profile editor: see LayoutNode.add.",
        "add_group": "Adds a group below the profile editor.",
        "translate": 'The text of a key in a language, as "de"; the key itself where there is none.',
        "add_translation": "Says what a key is in a language.",
        "__getitem__": "The node of that name below the profile editor. KeyError, with the names most alike.",
    },
    "LayoutNode": {
        "": """A node of a layout, which it keeps alive; a mapping of the nodes below it.

        Each attribute is a property and a setter that gives the node, so that one expression declares a parameter:
        layout.add("Power", Type.DOUBLE, 200).set_range(50, 400).set_unit("W").""",
        "name": "By which it is found; given once, by add.",
        "path": 'The names from the root to it, with "/".',
        "parent": "The node that it stands in; None for the root.",
        "layout": "The layout that it is of.",
        "add": """Adds a node below it and gives it: a group unless `type` says another, with the value that it has
        at first.

        RecursionError below a thousand levels.""",
        "add_group": "Adds a group below it and gives it.",
        "type": "What kind of value it has, as a Type.",
        "default": "The value that it has at first; None where there is none.",
        "min": "The least value; None where there is none.",
        "max": "The greatest value; None where there is none.",
        "set_type": "Sets `type` and gives the node.",
        "set_default_value": "Sets `default` and gives the node.",
        "set_range": "Sets `min` and `max`, of which None is no limit, and gives the node.",
        "visibility_sources": "The conditions under which it is shown: pairs of a node, or None, and its value.",
        "editability_sources": "The conditions under which it can be changed, likewise.",
        "add_visibility_source": "Shows it only where `source`, of the same layout, has that value; gives the node.",
        "add_editability_source": "Lets it be changed only where `source` has that value; gives the node.",
        "add_license_check_for_editor_visibility": "Shows it only with that license; gives the node.",
        "generate_source_identifier": "Gives it an identifier, by which files name it in conditions; gives the node.",
        "set_list": "Makes it a list, whose items are called `node_name`, and gives the node.",
        "set_profile": "Makes it a profile list, whose profiles are called `node_name`, and gives the node.",
        "set_category_list": "Makes it a list of categories, and gives the node.",
        "add_option": "Adds a text that can be chosen, with what users read in its place; gives the node.",
        "set_type_from_profiles": "Makes it a choice from a profile list of the same layout, and gives the node.",
        "profile_node": "The profile list that it is a choice from; None where it is no such choice.",
        "__getitem__": "The node of that name below it. KeyError, with the names most alike.",
        # The attributes, whose setters get theirs below.
        "is_list": "Whether it is a list.",
        "is_profile_list": "Whether it is a profile list.",
        "is_category_list": "Whether it is a list of categories.",
        "user_can_add_remove": "Whether users may add and remove entries.",
        "user_can_sort": "Whether users may move items.",
        "user_can_remove_any_element": "Whether users may remove other items than the last.",
        "can_be_transformed": "For the host: whether users may transform the list.",
        "node_name": "What an entry of a container is called in files and paths.",
        "node_display_name": "What users read in its place.",
        "container_display_name": "What users read for the container as a whole.",
        "container_description": "What is said of the container as a whole.",
        "multiplicity": "How many items a new list has.",
        "multiplicity_max": "How many entries there may be at most; 0 is no limit.",
        "multiplicity_min": "How many entries there must be at least.",
        "multiplicity_max_message": "What is said where there would be too many entries.",
        "multiplicity_min_message": "What is said where there would be too few entries.",
        "visible": "Whether users see it at all.",
        "read_only": "Whether users may not change it.",
        "expanded": "For the host: whether it is open at first.",
        "hide_name": "For the host: whether its name isn't shown.",
        "perform_transform": "For the host: whether the list is transformed.",
        "precision": "How many digits behind the point are shown.",
        "display_name": "What users read in place of the name.",
        "option_display_names": "What users read in place of the options' values, in their order.",
        "prefix": "What stands before the value.",
        "postfix": "What stands behind the value: the unit, as a rule.",
        "unit": "Another name of `postfix`.",
        "description": "What users are told of it.",
        "image_description": "For the host: an image that describes it.",
        "image_stretch": "For the host: how the image fills its place.",
        "display_name_shared_size_group": "For the host: names of one group are shown in one width.",
        "postfix_shared_size_group": "For the host: units of one group are shown in one width.",
        "allow_empty": "Whether the text may be empty.",
        "is_value_unique": "Whether no two entries of the container may have the same value.",
        "enable_multi_line": "For the host: whether the text may have several lines.",
        "write_to_parameter_file": "Whether a parameter file must have an element for it.",
        "children_write_to_parameter_file": "The same for nodes that are added below it.",
        "disable_for_parents": "For the host: not to be changed for whole parts.",
        "disable_for_sub_parts": "For the host: not to be changed for sub-parts.",
        "show_only_parts_selected_in_tessra": "For the host: which parts are shown.",
        "identifier": "By which files name it in conditions.",
        "profile_name": "The name of the profile list that a choice is from.",
        "request_name": "For the host: what it asks the driver for to fill the node.",
        "trigger_property_name": "For the host: the property whose change asks the driver anew.",
        "file_filter": "For the host: which files its dialog shows.",
        "option_values": "The texts that can be chosen.",
        "visibility_request": "For the host: what it asks the driver for to show the node.",
        "regex": "The pattern that a text must have.",
        "regex_user_friendly": "What is said of a text that hasn't.",
        "max_length": "How many characters a text may have; 0 is no limit.",
        "profile_editing_policy": "For the host: how profiles are edited.",
        "editor_license_checks": "The licenses without which it isn't shown.",
        "prop_name": "The name under which build tickets have it.",
    },
    "Ticket": {
        "": "A build ticket: what counts for the parts of a build. Only read.",
        "load": "The ticket in a file." + _FILE_ARGUMENTS,
        "loads": "As load, from bytes, a bytearray or any other buffer of a document." + _FILE_ARGUMENTS,
        "effective": """What counts for a part, as EffectiveValues by name; without `part`, for those that override
        nothing.

        With a layout its defaults count, too.""",
        "parts": "The parts that override something.",
        "notes": "What the read passed over, as Notes.",
        "to_dict": 'All that the ticket says. A second one of a name has "#2" behind it, or a further number.',
    },
}


def doc_of(owner: str, member: str) -> Optional[str]:
    """Of a class, where `member` is empty, or a function of the module; None where there is nothing to say."""
    docs = _DOCS.get(owner)
    if docs is None:
        docs, member = _DOCS[""], owner
    text = docs.get(member)
    attribute = member[len("set_") :]
    if text is None and member.startswith("set_") and attribute in docs:
        return f"Sets `{attribute}` and gives the node."
    return None if text is None else inspect.cleandoc(text)
