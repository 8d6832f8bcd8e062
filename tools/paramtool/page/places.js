// SPDX-License-Identifier: Apache-2.0
// The values of a layout as a tree of places, and what stands where in it.
//
// A place is {kind, node, parent, ...}: a "leaf" has its text, a "group" children, a "list" items and a
// template, a "profiles" list its default and its profiles, by name. An entry is a leaf or a group with `entry` set.
// Of a leaf's text there are three: `text` as it is now; `base`, with the changes of entries alone; and `told`,
// with those changes and the values of which a line of the export tells already.

const Places = (() => {
  "use strict";

  class Place {
    constructor(node, parent, kind) {
      this.node = node;
      this.parent = parent;
      this.kind = kind;
      this.entry = null; // "item", "profile", "default" or "template"
      this.flags = {};
      this.index = 0; // of an item, as it was when it was asked for
    }

    get isContainer() {
      return this.kind === "list" || this.kind === "profiles";
    }

    /** All places directly below, a list's template aside. */
    below() {
      switch (this.kind) {
        case "group":
          return this.children;
        case "list":
          return this.items;
        case "profiles":
          return [this.default, ...this.profiles];
        default:
          return [];
      }
    }

    /** The first profile of that name. */
    profile(name) {
      return this.profiles.find((profile) => profile.name === name);
    }

    /** An item's place in its list. */
    get position() {
      const { items } = this.parent;
      if (items[this.index] !== this) {
        this.index = items.indexOf(this);
      }
      return this.index;
    }

    get step() {
      const entryName = this.node.entryName;
      switch (this.entry) {
        case "item":
          return `${entryName}[${this.position}]`;
        case "profile":
          return `${entryName}[${this.name}]`;
        case "default":
          return `${entryName}::Default::`;
        default:
          return this.node.name;
      }
    }

    /** As `paramtool query` takes it. */
    get path() {
      const above = this.parent?.parent ? `${this.parent.path}_` : "";
      return this.parent ? above + this.step : "";
    }

    child(node) {
      return this.kind === "group" ? this.children.find((child) => child.node === node) : undefined;
    }
  }

  /** Calls `visit` with a place and all below it. */
  function walk(place, visit) {
    visit(place);
    for (const below of place.below()) {
      walk(below, visit);
    }
  }

  /** The same with the templates of lists. */
  function walkAll(place, visit) {
    visit(place);
    for (const below of place.kind === "list" ? [place.template, ...place.items] : place.below()) {
      walkAll(below, visit);
    }
  }

  /** What formatting makes of a node. */
  function format(layout, node, parent) {
    const place = new Place(node, parent, node.container);
    if (node.container === "list") {
      place.template = formatEntry(layout, place, "template");
      place.items = [];
      for (let i = 0; i < node.initialItems; ++i) {
        place.items.push(formatEntry(layout, place, "item"));
      }
    } else if (node.container === "profiles") {
      place.default = formatEntry(layout, place, "default");
      place.profiles = [];
    } else {
      fill(layout, place);
    }
    return place;
  }

  function formatEntry(layout, container, entry, name) {
    const place = new Place(container.node, container, "");
    place.entry = entry;
    place.name = name;
    fill(layout, place);
    return place;
  }

  function setAll(place, text) {
    place.text = place.base = place.told = text;
  }

  function fill(layout, place) {
    const node = place.node;
    place.kind = node.type === "Group" ? "group" : "leaf";
    if (place.kind === "group") {
      place.children = node.children.map((id) => format(layout, layout.nodes[id], place));
    } else {
      setAll(place, node.default);
      place.hasValue = place.hadValue = node.type !== "StandardOptions";
      place.bytes = 0;
    }
  }

  /** Puts what a file holds, in the form in which the tool writes it, over a formatted place. */
  function load(layout, place, values) {
    place.flags = values.flags ?? {};
    switch (place.kind) {
      case "leaf":
        if (values.text !== undefined) {
          setAll(place, values.text);
          place.hasValue = place.hadValue = true;
          place.bytes = values.bytes ?? 0;
        }
        break;
      case "group":
        place.children.forEach((child, i) => {
          if (values.children?.[i]) {
            load(layout, child, values.children[i]);
          }
        });
        break;
      case "list":
        load(layout, place.template, values.template);
        place.items = values.items.map((item) => load(layout, formatEntry(layout, place, "item"), item));
        break;
      case "profiles":
        load(layout, place.default, values.default);
        place.profiles = values.profiles.map((profile) =>
          load(layout, formatEntry(layout, place, "profile", profile.name), profile),
        );
        break;
    }
    return place;
  }

  /** A copy of all that an entry holds, as another entry of the same container. */
  function copyEntry(layout, source, entry, name) {
    const copy = formatEntry(layout, source.parent, entry, name);
    copyContent(layout, source, copy);
    return copy;
  }

  /** Both stand for one node and are formatted. */
  function copyContent(layout, source, target) {
    target.flags = { ...source.flags };
    switch (source.kind) {
      case "leaf":
        for (const field of ["text", "base", "told", "hasValue", "hadValue", "bytes"]) {
          target[field] = source[field];
        }
        break;
      case "group":
        source.children.forEach((child, i) => copyContent(layout, child, target.children[i]));
        break;
      case "list":
        copyContent(layout, source.template, target.template);
        target.items = source.items.map((item) => {
          const copy = formatEntry(layout, target, "item");
          copyContent(layout, item, copy);
          return copy;
        });
        break;
      case "profiles":
        copyContent(layout, source.default, target.default);
        target.profiles = source.profiles.map((profile) => {
          const copy = formatEntry(layout, target, "profile", profile.name);
          copyContent(layout, profile, copy);
          return copy;
        });
        break;
    }
  }

  /** Puts a profile among the others, by its name. */
  function insertProfile(profile) {
    const others = profile.parent.profiles.filter((other) => other !== profile);
    const behind = others.findIndex((other) => Texts.compare(other.name, profile.name) > 0);
    others.splice(behind < 0 ? others.length : behind, 0, profile);
    profile.parent.profiles = others;
  }

  /** The nodes from just below the top of the places down to a node. */
  function wayTo(layout, top, node) {
    const way = [];
    for (let at = node; at !== top.node; at = layout.nodes[at.parent]) {
      if (at === undefined || at.parent === undefined) {
        return null;
      }
      way.unshift(at);
    }
    return way;
  }

  /**
   * What stands for a node, seen from a place: in the same item or profile, else in the next one outward, else
   * in the whole; below a profile list that the place isn't in, in the default profile. Undefined where no
   * place does.
   */
  function inScope(layout, from, node) {
    const steps = [];
    for (let at = from; at; at = at.parent) {
      steps.unshift(at);
    }
    const way = wayTo(layout, steps[0], node);
    if (!way || way.length === 0) {
      return undefined;
    }
    let shared = 0;
    let step = 0;
    const stands = (wanted) => steps[step + 1]?.node === wanted;
    while (shared < way.length && stands(way[shared])) {
      ++step;
      ++shared;
      if (shared < way.length && stands(way[shared - 1])) {
        ++step;
      }
    }
    let place = steps[step];
    for (; shared < way.length && place; ++shared) {
      if (place.isContainer) {
        place = place.kind === "profiles" ? place.default : undefined;
      }
      place = place?.child(way[shared]);
    }
    return place;
  }

  return { Place, walk, walkAll, format, formatEntry, load, copyEntry, insertProfile, inScope };
})();
