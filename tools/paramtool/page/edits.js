// SPDX-License-Identifier: Apache-2.0
// What is changed on the page, what a user may change, and the lines by which `paramtool set --from` makes the
// same changes in a file.
//
// Changes of entries (profiles, items) are told in the order in which they were made, and values behind them: one
// line for each that isn't what it would be without it, so that a value that was put back leaves no trace. Values on
// which it depends what else may be changed are told in that order, too, and what was changed before them before
// them: so each line may be done when its turn comes, as it could be on the page.

const Edits = (() => {
  "use strict";

  const { quoted } = Rules;
  const escapes = new Map([
    ["\\", "\\\\"],
    ["\t", "\\t"],
    ["\n", "\\n"],
    ["\r", "\\r"],
  ]);
  const escape = (text) => String(text).replace(/[\\\t\n\r]/g, (character) => escapes.get(character));
  const line = (...fields) => fields.map(escape).join("\t");

  /** Under which the library keeps something else, or by which choices mean the default profile. */
  const keptNames = new Set([
    "Value",
    "ReadOnly",
    "Hidden",
    "NameReadOnly",
    "CanBeDeleted",
    "UserDefaultProfile",
    "DisableAddRemove",
    "::DefaultProfile::",
    "Default",
  ]);
  // eslint-disable-next-line no-control-regex -- these are what no file can carry
  const notCarried = /[\0-\x08\x0b\x0c\x0e-\x1f\ufffe\uffff]/;

  class Document {
    /** `data` is what the tool put into the page, prepared. */
    constructor(data) {
      this.layout = data.layout;
      const editor = this.layout.nodes[this.layout.profileEditor];
      this.top = Places.format(this.layout, editor, null);
      if (data.values) {
        Places.load(this.layout, this.top, data.values);
      }
      /** Of the build ticket, whose values no parameter file has. */
      this.sections = this.layout.sections.map((id) => Places.format(this.layout, this.layout.nodes[id], null));
      this.sourceNodes = new Set(this.layout.nodes.flatMap((node) => node.editableWhere.map((one) => one.source)));
      this.lines = [];
      this.last = null; // the value that the last line sets: {place, before}
      this.compute();
    }

    /** All looks, findings and marks, after a change. */
    compute() {
      this.looks = Rules.looks(this.layout, this.top);
      for (const section of this.sections) {
        Rules.looks(this.layout, section, undefined, this.looks);
      }
      this.findings = Checks.findings(this, this.top);
      for (const section of this.sections) {
        Checks.findings(this, section, this.findings);
      }
      this.marked = new Set();
      for (const root of [this.top, ...this.sections]) {
        this.#mark(root);
      }
    }

    /** Collects what has been changed, and what that stands in. */
    #mark(place) {
      let isMarked = place.kind === "leaf" && this.isChanged(place);
      for (const below of place.below()) {
        isMarked = this.#mark(below) || isMarked;
      }
      if (isMarked) {
        this.marked.add(place);
      }
      return isMarked;
    }

    isChanged(place) {
      return place.text !== place.base && !Texts.isSame(place.node.type, place.text, place.base);
    }

    /** Whether a leaf differs from what the layout gives it. */
    deviates(place) {
      return place.hasValue && !Texts.isSame(place.node.type, place.text, place.node.default);
    }

    // --- Values ---

    setText(place, text) {
      this.#assign(place, text, true);
    }

    /** Back to what was there before values were changed here. */
    reset(place) {
      Places.walk(place, (at) => {
        if (at.kind === "leaf" && at.text !== at.base) {
          this.#assign(at, at.base, at.hadValue);
        }
      });
    }

    #assign(place, text, hasValue) {
      const isSource = this.sourceNodes.has(place.node.id);
      if (isSource) {
        this.#tellValues(place);
        this.#takeBackLast(place);
      }
      place.text = text;
      place.hasValue = hasValue;
      if (isSource) {
        this.#tellValue(place);
      }
    }

    // --- What may be done with entries: why not, or null ---

    whyNotChange(container) {
      const { node } = container;
      if (!this.looks.get(container).editable) {
        return "This is read-only.";
      }
      const isFixed = !node.canAddRemove || container.flags.disableAddRemove;
      return isFixed ? "Entries can't be added or removed here." : null;
    }

    whyNotAdd(container) {
      const { node } = container;
      const isFull = node.mostItems !== 0 && entriesOf(container).length >= node.mostItems;
      const full = isFull ? node.mostMessage || `There can be no more than ${node.mostItems}.` : null;
      return this.whyNotChange(container) ?? full;
    }

    whyNotRemove(entry) {
      const { node, parent } = entry;
      const isLeast = node.leastItems !== 0 && entriesOf(parent).length <= node.leastItems;
      const least = isLeast ? node.leastMessage || `There must be ${node.leastItems} at least.` : null;
      return this.whyNotChange(parent) ?? least ?? this.#whyNotRemoveThis(entry);
    }

    #whyNotRemoveThis(entry) {
      if (entry.entry === "profile") {
        return entry.flags.canBeDeleted ? null : "This profile can't be removed.";
      }
      if (entry.entry !== "item") {
        return "The default can't be removed.";
      }
      if (!entry.node.canRemoveAny && entry.parent.items.at(-1) !== entry) {
        return "Only the last one can be removed.";
      }
      return this.looks.get(entry).editable ? null : "This is read-only.";
    }

    whyNotMove(list) {
      const isFixed = !this.looks.get(list).editable || !list.node.canSort;
      return isFixed ? "The order can't be changed." : null;
    }

    whyNotRename(profile) {
      if (profile.entry !== "profile") {
        return "The default has no name.";
      }
      if (!this.looks.get(profile.parent).editable) {
        return "This is read-only.";
      }
      return profile.flags.nameReadOnly ? "The name of this profile is fixed." : null;
    }

    whyNotName(container, name) {
      if (name === "") {
        return "A profile needs a name.";
      }
      if (keptNames.has(name) || notCarried.test(name)) {
        return `${quoted(name)} is no name for a profile.`;
      }
      return container.profile(name) ? `There is a profile ${quoted(name)} already.` : null;
    }

    // --- Entries ---

    addProfile(container, name) {
      this.#tell("profile", "add", container.path, name);
      return this.#adopt(Places.copyEntry(this.layout, container.default, "profile", name));
    }

    copyProfile(source, name) {
      if (source.entry === "default") {
        return this.addProfile(source.parent, name);
      }
      this.#tell("profile", "copy", source.parent.path, source.name, name);
      return this.#adopt(Places.copyEntry(this.layout, source, "profile", name));
    }

    #adopt(profile) {
      profile.flags = { canBeDeleted: true };
      Places.insertProfile(profile);
      return profile;
    }

    renameProfile(profile, name) {
      const old = profile.name;
      this.#tell("profile", "rename", profile.parent.path, old, name);
      for (const place of this.#choicesOf(profile.parent)) {
        for (const text of ["text", "base", "told"]) {
          place[text] = place[text] === old ? name : place[text];
        }
      }
      profile.name = name;
      Places.insertProfile(profile);
      return profile;
    }

    removeProfile(profile) {
      this.#tell("profile", "remove", profile.parent.path, profile.name);
      profile.parent.profiles = profile.parent.profiles.filter((other) => other !== profile);
    }

    addItem(list) {
      this.#tell("item", "add", list.path);
      const item = Places.copyEntry(this.layout, list.template, "item");
      list.items.push(item);
      return item;
    }

    moveItem(item, to) {
      const { items } = item.parent;
      const from = item.position;
      this.#tell("item", "move", item.parent.path, from, to);
      items.splice(to, 0, ...items.splice(from, 1));
    }

    removeItem(item) {
      this.#tell("item", "remove", item.parent.path, item.position);
      item.parent.items.splice(item.position, 1);
    }

    /** The profile list from which a leaf chooses; undefined where none can be seen, as from a build ticket. */
    listOf(place) {
      const node = this.layout.nodes[place.node.profileList];
      return node && Places.inScope(this.layout, place, node);
    }

    /** The one whose profiles are offered for a leaf. */
    offeredTo(place) {
      const node = this.layout.nodes[place.node.profileList];
      return this.listOf(place) ?? (node && Places.inScope(this.layout, this.top, node));
    }

    /** The leaves that choose from this very profile list, also those of templates. */
    #choicesOf(list) {
      const found = [];
      Places.walkAll(this.top, (place) => {
        if (place.kind === "leaf" && place.node.profileList === list.node.id && this.listOf(place) === list) {
          found.push(place);
        }
      });
      return found;
    }

    // --- The export ---

    /** A line for a change of entries, before it is made. */
    #tell(...fields) {
      this.lines.push(line(...fields));
      this.last = null;
    }

    /** All values that no line tells yet, but for one. */
    #tellValues(except) {
      Places.walk(this.top, (place) => {
        if (place.text !== place.told && place !== except) {
          this.#tellValue(place);
        }
      });
    }

    #tellValue(place) {
      const lines = this.#valueLine(place);
      if (lines.length !== 0 && this.isOfFile(place)) {
        this.lines.push(...lines);
        this.last = { place, before: place.told };
        place.told = place.text;
      }
    }

    /** Of a value that is typed letter by letter one line stays. */
    #takeBackLast(place) {
      if (this.last?.place === place) {
        this.lines.pop();
        place.told = this.last.before;
        this.last = null;
      }
    }

    /** Whether a parameter file has the place, and not a build ticket. */
    isOfFile(place) {
      let top = place;
      while (top.parent) {
        top = top.parent;
      }
      return top === this.top;
    }

    /** Nothing where the value is told already, and for a text that is no value, which stays on the page. */
    #valueLine(place) {
      const { type } = place.node;
      const isTold = place.text === place.told || Texts.isSame(type, place.text, place.told);
      return isTold || Texts.parse(type, place.text) === undefined ? [] : [line("set", place.path, place.text)];
    }

    /** What `paramtool set --from` takes. */
    exportLines() {
      const lines = [...this.lines];
      Places.walk(this.top, (place) => {
        if (place.text !== place.told) {
          lines.push(...this.#valueLine(place));
        }
      });
      return lines;
    }
  }

  const entriesOf = (container) => (container.kind === "list" ? container.items : container.profiles);

  return { Document };
})();
