// SPDX-License-Identifier: Apache-2.0
// Groups, lists and profile lists. Each gives a part: {place, root, parts, refresh}, where `parts` are those
// inside. What isn't shown at first, as the other profiles of a list, is made when it is wanted.

const Containers = (() => {
  "use strict";

  const { element, text, button, heading, set, newId } = Dom;

  // The sections of the build ticket have names of their own in every layout, and no display names.
  const sectionTitles = new Map([
    ["PlatformOptions", "Platform options"],
    ["PartOptions", "Part options"],
    ["PartConfigurator", "Part overrides"],
  ]);

  const titleOf = (app, place) => {
    const { node } = place;
    if (app.document.sections.includes(place) && !node.displayName && sectionTitles.has(node.name)) {
      return sectionTitles.get(node.name);
    }
    return app.translate((place.isContainer && node.containerDisplayName) || node.displayName || node.name);
  };

  /** Of an entry: as a person names it. */
  function entryTitleOf(app, entry) {
    switch (entry.entry) {
      case "item":
        return `${app.translate(entry.node.entryDisplayName || entry.node.entryName)} ${entry.position + 1}`;
      case "profile":
        return entry.name;
      default:
        return "Default";
    }
  }

  function partOf(app, place, level) {
    switch (place.kind) {
      case "leaf":
        return Fields.field(app, place, titleOf(app, place));
      case "group":
        return new Group(app, place, level);
      case "list":
        return new List(app, place, level);
      default:
        return new ProfileList(app, place, level);
    }
  }

  /** A part with a heading, and a way back for all in it. */
  class Section {
    parts = [];
    #back;

    constructor(app, place, level, className) {
      this.app = app;
      this.place = place;
      this.level = level;
      const title = titleOf(app, place);
      this.#back = button("↺ Put back", () => this.#putBack(), { className: "back", hidden: true });
      this.#back.setAttribute("aria-label", `Put back all in ${title}`);
      const properties = { id: newId("heading"), textContent: title, tabIndex: -1 };
      this.heading = heading(level, properties);
      this.heading.addEventListener("focus", () => app.select(place));
      this.bar = element("div", { className: "heading" }, this.heading, this.#back);
      this.root = element("section", { className, "aria-labelledby": properties.id }, this.bar);
    }

    #putBack() {
      this.app.change(() => this.app.document.reset(this.place));
      this.heading.focus();
    }

    refresh() {
      const look = this.app.document.looks.get(this.place);
      set(this.root, "hidden", !look.visible && !this.app.showsHidden);
      this.root.classList.toggle("not-shown", !look.visible);
      set(this.#back, "hidden", !this.app.document.marked.has(this.place));
      for (const part of this.parts) {
        part.refresh();
      }
    }
  }

  /** Makes its fields as many at a time as the app lets it, so that thousands don't keep the page from showing. */
  class Group extends Section {
    #fields = element("div", { className: "fields" });

    constructor(app, place, level) {
      super(app, place, level, "group");
      this.root.append(this.#fields);
      this.fill();
    }

    fill(isAll = false) {
      const { children } = this.place;
      while (this.parts.length < children.length && (isAll || this.app.mayMake())) {
        this.parts.push(partOf(this.app, children[this.parts.length], this.level + 1));
        this.#fields.append(this.parts.at(-1).root);
      }
      if (this.parts.length < children.length) {
        this.app.makeLater(this);
      }
    }
  }

  /** What an entry holds, without a heading. */
  function contentOf(app, entry, level) {
    return entry.kind === "leaf"
      ? [Fields.field(app, entry, titleOf(app, entry))]
      : entry.children.map((child) => partOf(app, child, level));
  }

  /** What a container has to say: why nothing can be added, and what speaks against it. */
  function showNotes(app, place, note, ...words) {
    const why = app.document.whyNotAdd(place);
    const findings = app.document.findings.get(place) ?? [];
    const isWrong = findings.some((finding) => finding.severity === "error");
    const sentences = new Set([...words, ...findings.map((finding) => finding.sentence), ...(why ? [why] : [])]);
    set(note, "textContent", [...sentences].join(" "));
    set(note, "className", isWrong ? "note error" : "note");
    return why;
  }

  // --- Lists ---

  const mostColumns = 8;

  /** The leaves that can stand in one row, or null. */
  function columnsOf({ template }) {
    const leaves = template.kind === "leaf" ? [template] : template.children;
    const fit = leaves.length <= mostColumns && leaves.every((leaf) => leaf.kind === "leaf" && !leaf.node.multiLine);
    return fit ? leaves : null;
  }

  class List extends Section {
    #shown = [];
    #tools = []; // of each item
    #rows = element("div", { className: "rows" });
    #note = text("p", "note", "");
    #add;
    #columns;

    constructor(app, place, level) {
      super(app, place, level, "group list");
      this.#columns = columnsOf(place);
      this.itemName = app.translate(place.node.entryDisplayName || place.node.entryName);
      this.#add = button(`Add ${this.itemName}`, () => this.app.change(() => this.app.document.addItem(place)));
      this.root.append(this.#rows, element("div", { className: "tools" }, this.#add, this.#note));
    }

    /** What a user can do with an item: a sign, words, what it does, and where the item then is. */
    #actionsOf(item, index) {
      const { document: shown } = this.app;
      const to = (target) => ({ perform: () => shown.moveItem(item, target), index: target });
      const actions = [{ sign: "✕", words: "Remove", perform: () => shown.removeItem(item), index: -1 }];
      if (this.place.node.canSort) {
        actions.unshift(
          { sign: "↑", words: "Move up", ...to(index - 1) },
          { sign: "↓", words: "Move down", ...to(index + 1) },
        );
      }
      return actions;
    }

    #toolsOf(item, index) {
      const tools = this.#actionsOf(item, index).map((action, at) => {
        const made = button(action.sign, () => this.#perform(action, at));
        made.setAttribute("aria-label", `${action.words} ${this.itemName} ${index + 1}`);
        return made;
      });
      this.#tools.push(tools);
      return element("div", { className: "tools row-tools" }, ...tools);
    }

    /** The rows are made anew, and the focus goes to where it was. */
    #perform(action, at) {
      this.app.change(action.perform);
      const tools = this.#tools[action.index];
      (tools?.[at].disabled === false ? tools[at] : (tools?.find((tool) => !tool.disabled) ?? this.#add)).focus();
    }

    #refreshTools() {
      const { document: shown } = this.app;
      const whyNotMove = shown.whyNotMove(this.place);
      const { items } = this.place;
      this.#tools.forEach((tools, index) => {
        const why = [shown.whyNotRemove(items[index])];
        if (tools.length > 1) {
          why.unshift(whyNotMove ?? (index === 0 ? "" : null), whyNotMove ?? (index === items.length - 1 ? "" : null));
        }
        tools.forEach((tool, at) => {
          set(tool, "disabled", why[at] !== null);
          set(tool, "title", why[at] ?? tool.getAttribute("aria-label"));
        });
      });
    }

    #table() {
      const unit = ({ node }) => (node.postfix === "" ? "" : ` [${this.app.translate(node.postfix)}]`);
      const range = ({ node }) => (Fields.rangeOf(node) === "" ? null : text("span", "range", Fields.rangeOf(node)));
      const heads = this.#columns.map((leaf) =>
        element("th", { scope: "col" }, titleOf(this.app, leaf) + unit(leaf), range(leaf)),
      );
      const head = element("tr", null, element("th", { scope: "col", textContent: "#" }), ...heads, element("td"));
      const body = this.place.items.map((item, index) => this.#row(item, index));
      return element("table", null, element("thead", null, head), element("tbody", null, ...body));
    }

    #row(item, index) {
      const cells = item.kind === "leaf" ? [item] : item.children;
      const fields = cells.map((cell) =>
        Fields.field(this.app, cell, `${titleOf(this.app, cell)}, ${this.itemName} ${index + 1}`, true),
      );
      this.parts.push(...fields);
      const number = element("th", { scope: "row", textContent: String(index + 1) });
      const row = element("tr", null, number, ...fields.map((made) => element("td", null, made.root)));
      row.append(element("td", null, this.#toolsOf(item, index)));
      return row;
    }

    #card(item, index) {
      const parts = contentOf(this.app, item, this.level + 2);
      this.parts.push(...parts);
      const title = heading(this.level + 1, { textContent: `${this.itemName} ${index + 1}` });
      const bar = element("div", { className: "heading" }, title, this.#toolsOf(item, index));
      const fields = element("div", { className: "fields" }, ...parts.map((part) => part.root));
      return element("div", { className: "card" }, bar, fields);
    }

    #showItems() {
      const { items } = this.place;
      this.parts = [];
      this.#tools = [];
      const cards = () => items.map((item, index) => this.#card(item, index));
      this.#rows.replaceChildren(...(items.length === 0 ? [] : this.#columns ? [this.#table()] : cards()));
      this.#shown = [...items];
    }

    refresh() {
      const { items } = this.place;
      if (this.#shown.length !== items.length || this.#shown.some((item, i) => item !== items[i])) {
        this.#showItems();
      }
      this.#refreshTools();
      const why = showNotes(this.app, this.place, this.#note, ...(items.length === 0 ? ["No entries."] : []));
      set(this.#add, "disabled", why !== null);
      super.refresh();
    }
  }

  // --- Profile lists ---

  class ProfileList extends Section {
    #shown = null;
    #shownNames = "";
    #content = element("div", { className: "fields" });
    #note = element("p", { className: "note", role: "status" });
    #picker;
    #name;
    #buttons;

    constructor(app, place, level) {
      super(app, place, level, "group profiles");
      const entryName = app.translate(place.node.entryDisplayName || place.node.entryName);
      this.#picker = element("select", { id: newId("profile"), onchange: () => this.#choose() });
      this.#name = element("input", { id: newId("name"), type: "text", autocomplete: "off", spellcheck: false });
      const { document: shown } = app;
      const remove = () => this.#remove();
      this.#buttons = {
        add: button("Add", () => this.#withName((name) => shown.addProfile(place, name))),
        copy: button("Copy", () => this.#withName((name) => shown.copyProfile(this.#chosen, name))),
        rename: button("Rename", () => this.#withName((name) => shown.renameProfile(this.#chosen, name))),
        remove: button("Remove", remove),
      };
      const { add, copy, rename } = this.#buttons;
      const label = (input, words) => element("label", { for: input.id, textContent: words });
      const pick = element(
        "span",
        { className: "tools" },
        label(this.#picker, entryName),
        this.#picker,
        this.#buttons.remove,
      );
      const make = element(
        "span",
        { className: "tools" },
        label(this.#name, "New name"),
        this.#name,
        add,
        copy,
        rename,
      );
      this.root.append(element("div", { className: "tools profile-tools" }, pick, make), this.#note, this.#content);
    }

    get #chosen() {
      return this.app.chosen(this.place);
    }

    #choose() {
      this.app.choose(this.place, this.place.below()[this.#picker.selectedIndex]);
      this.app.refresh();
    }

    /** Does it with the name that was typed and goes to the profile, or says why not. */
    #withName(action) {
      const why = this.app.document.whyNotName(this.place, this.#name.value);
      if (why) {
        set(this.#note, "textContent", why);
        this.#name.focus();
        return;
      }
      this.app.change(() => this.app.choose(this.place, action(this.#name.value)));
      this.#name.value = "";
      this.#picker.focus();
    }

    #remove() {
      const gone = this.#chosen;
      this.app.change(() => {
        this.app.choose(this.place, this.place.default);
        this.app.document.removeProfile(gone);
      });
      this.#picker.focus();
    }

    #showNames() {
      const names = this.place.below().map((entry) => entryTitleOf(this.app, entry));
      if (names.join("\n") !== this.#shownNames) {
        this.#shownNames = names.join("\n");
        this.#picker.replaceChildren(...names.map((name) => element("option", { textContent: name })));
      }
      set(this.#picker, "selectedIndex", this.place.below().indexOf(this.#chosen));
    }

    refresh() {
      const { document: shown } = this.app;
      this.#showNames();
      if (this.#shown !== this.#chosen) {
        this.#shown = this.#chosen;
        this.parts = contentOf(this.app, this.#shown, this.level + 1);
        this.#content.replaceChildren(...this.parts.map((part) => part.root));
      }
      const why = showNotes(this.app, this.place, this.#note);
      const whyNot = {
        add: why,
        copy: why,
        rename: shown.whyNotRename(this.#chosen),
        remove: shown.whyNotRemove(this.#chosen),
      };
      for (const [action, reason] of Object.entries(whyNot)) {
        set(this.#buttons[action], "disabled", reason !== null);
        set(this.#buttons[action], "title", reason ?? "");
      }
      super.refresh();
    }
  }

  return { partOf, titleOf, entryTitleOf };
})();
