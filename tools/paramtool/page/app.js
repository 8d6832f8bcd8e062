// SPDX-License-Identifier: Apache-2.0
// The page as a whole: tabs, search, languages, and the one way in which it follows a change.

(() => {
  "use strict";

  const { element, text, button, set, newId } = Dom;
  const mostFound = 50;
  const mostAtOnce = 300; // parts that are made before the page is shown or goes on

  class App {
    #mayMake = mostAtOnce;
    #unfinished = []; // groups

    constructor(data) {
      this.data = data;
      this.document = new Edits.Document(data);
      this.language = data.language || this.#ownLanguage();
      this.showsHidden = false;
      this.selected = null;
      this.choices = new Map(); // of a profile list the entry that is shown
      this.tabs = [];
      this.current = null;
    }

    // --- What the parts ask ---

    translate(words) {
      return this.data.dictionary.get(words)?.get(this.language) ?? words;
    }

    chosen(list) {
      const entry = this.choices.get(list);
      const isThere = entry === list.default || list.profiles.includes(entry);
      return isThere ? entry : (list.profiles[0] ?? list.default);
    }

    choose(list, entry) {
      this.choices.set(list, entry);
    }

    select(place) {
      this.selected = place;
      this.details?.refresh();
    }

    /** Makes a change and shows what follows from it. */
    change(action) {
      action();
      this.document.compute();
      this.refresh();
    }

    refresh() {
      this.#mayMake = mostAtOnce;
      this.current?.part.refresh();
      this.details.refresh();
      for (const pane of this.panes) {
        pane.refresh();
      }
      for (const tab of this.tabs) {
        set(tab.button, "hidden", !this.showsHidden && !this.document.looks.get(tab.place).visible);
        tab.button.classList.toggle("changed", this.document.marked.has(tab.place));
      }
    }

    // --- Making parts ---

    mayMake() {
      return this.#mayMake-- > 0;
    }

    makeLater(group) {
      this.#unfinished.push(group);
      if (this.#unfinished.length === 1) {
        setTimeout(() => this.#makeMore());
      }
    }

    #makeMore() {
      this.#mayMake = mostAtOnce;
      for (const group of this.#unfinished.splice(0)) {
        if (group.root.isConnected) {
          group.fill();
          group.refresh();
        }
      }
    }

    // --- Tabs ---

    makeTabs() {
      const sections = this.document.sections.filter((section) => section.children.length !== 0);
      this.tabs = [...this.document.top.children, ...sections].map((place) => this.#tabOf(place));
      this.tabList = element("div", { className: "tabs", role: "tablist", "aria-label": "Sections" });
      this.tabList.addEventListener("keydown", (event) => this.#moveAmongTabs(event));
      this.tabList.append(...this.tabs.map((tab) => tab.button));
      this.panels = element("main", null, ...this.tabs.map((tab) => tab.panel));
    }

    #tabOf(place) {
      const id = newId("tab");
      const properties = { id: `${id}-panel`, role: "tabpanel", "aria-labelledby": id, tabIndex: 0, hidden: true };
      const tab = { place, part: null, panel: element("div", properties) };
      const isTicket = !this.document.isOfFile(place);
      tab.button = element("button", { id, type: "button", role: "tab", "aria-controls": properties.id });
      tab.button.classList.toggle("of-ticket", isTicket);
      tab.button.addEventListener("click", () => this.show(tab));
      return tab;
    }

    #nameTabs() {
      for (const tab of this.tabs) {
        set(tab.button, "textContent", Containers.titleOf(this, tab.place));
      }
    }

    #moveAmongTabs(event) {
      const shown = this.tabs.filter((tab) => !tab.button.hidden);
      const at = shown.indexOf(this.current);
      const targets = { ArrowRight: at + 1, ArrowLeft: at - 1, Home: 0, End: shown.length - 1 };
      if (event.key in targets) {
        const next = shown.at(targets[event.key] % shown.length);
        this.show(next);
        next.button.focus();
        event.preventDefault();
      }
    }

    /** The content of a tab is made when it is shown first. */
    show(tab) {
      this.#mayMake = mostAtOnce;
      this.current = tab;
      for (const other of this.tabs) {
        const isShown = other === tab;
        set(other.panel, "hidden", !isShown);
        other.button.setAttribute("aria-selected", String(isShown));
        other.button.tabIndex = isShown ? 0 : -1;
      }
      if (!tab.part) {
        tab.part = Containers.partOf(this, tab.place, 2);
        const words = "Of the build ticket: what is changed here is in no parameter file, and not in the lines.";
        tab.panel.replaceChildren(
          ...(this.document.isOfFile(tab.place) ? [] : [text("p", "note", words)]),
          tab.part.root,
        );
      }
      tab.part.refresh();
    }

    // --- Going to a place ---

    placeOfNode(id) {
      const node = this.data.layout.nodes[id];
      const roots = node ? [this.document.top, ...this.document.sections] : [];
      return roots.map((root) => Places.inScope(this.data.layout, root, node)).find((place) => place) ?? null;
    }

    goTo(place) {
      const way = [];
      for (let at = place; at; at = at.parent) {
        way.unshift(at);
        if (at.parent?.kind === "profiles") {
          this.choose(at.parent, at);
        }
      }
      const tab = this.tabs.find((candidate) => way.includes(candidate.place));
      if (!tab) {
        return;
      }
      if (!this.document.looks.get(place).visible) {
        this.#showHidden(true);
      }
      this.show(tab);
      this.refresh();
      this.select(place);
      const part = this.#partOf(tab.part, way);
      tab.part.refresh();
      const target = part.input ?? part.heading;
      target.scrollIntoView({ block: "center" });
      target.focus();
    }

    /** The innermost part on the way to a place. */
    #partOf(part, way) {
      part.fill?.(true);
      const inner = part.parts?.find((candidate) => way.includes(candidate.place));
      return inner ? this.#partOf(inner, way) : part;
    }

    // --- Search ---

    /** Places whose name, display name or description has the text; of profiles and items one stands for all. */
    search(words) {
      const wanted = words.toLowerCase();
      const found = [];
      const look = (place) => {
        if (found.length === mostFound) {
          return;
        }
        if (place.parent && !place.entry && this.#textsOf(place.node).some((one) => one.includes(wanted))) {
          found.push(place);
        }
        const isMany = place.isContainer;
        const below = place.kind === "profiles" ? [this.chosen(place)] : place.below();
        (isMany ? below.slice(0, 1) : below).forEach(look);
      };
      for (const root of wanted === "" ? [] : [this.document.top, ...this.document.sections]) {
        look(root);
      }
      return found;
    }

    #textsOf(node) {
      const shown = [node.displayName, node.description, node.containerDisplayName].map((one) => this.translate(one));
      return [node.name, ...shown].map((one) => one.toLowerCase());
    }

    makeSearch() {
      const results = element("ul", { className: "results", hidden: true });
      const status = element("p", { className: "unseen", role: "status" });
      const input = element("input", { id: newId("search"), type: "search", autocomplete: "off", spellcheck: false });
      const root = element("div", { className: "search", role: "search" });
      const clear = () => {
        input.value = "";
        show();
      };
      const resultOf = (place) => {
        const go = () => {
          clear();
          this.goTo(place);
        };
        const where = Panes.titlesOf(this, place).slice(0, -1).join(" › ");
        const result = button(Containers.titleOf(this, place), go, { className: "link" });
        return element("li", null, result, text("span", "words", where));
      };
      const show = () => {
        const found = this.search(input.value.trim());
        const isAsked = input.value.trim() !== "";
        const words = found.length === mostFound ? `The first ${mostFound}` : `${found.length} found`;
        results.replaceChildren(...found.map(resultOf), text("li", "note", words));
        set(results, "hidden", !isAsked);
        set(status, "textContent", isAsked ? words : "");
      };
      input.addEventListener("input", show);
      root.addEventListener("keydown", (event) => {
        if (event.key === "Escape") {
          clear();
          input.focus();
        }
      });
      root.append(element("label", { for: input.id, textContent: "Search" }), input, status, results);
      return root;
    }

    // --- Languages ---

    /** The dictionary's language that the browser's user reads best, else its first. */
    #ownLanguage() {
      const { languages } = this.data;
      const beginsWith = (wanted) => languages.find((one) => one.toLowerCase().startsWith(wanted.toLowerCase()));
      for (const wanted of navigator.languages) {
        const found = beginsWith(wanted) ?? beginsWith(wanted.split("-")[0]);
        if (found) {
          return found;
        }
      }
      return languages[0] ?? "";
    }

    untranslated() {
      return [...this.data.dictionary].filter(([, texts]) => !texts.has(this.language)).map(([key]) => key);
    }

    /** All titles change, so everything is made anew. */
    speak(language) {
      this.language = language;
      for (const tab of this.tabs) {
        tab.panel.replaceChildren();
        tab.part = null;
      }
      this.#nameTabs();
      this.show(this.current);
      this.refresh();
    }

    makeLanguages() {
      const { languages } = this.data;
      if (languages.length === 0) {
        return null;
      }
      const options = [...languages, ""].map((language) =>
        element("option", { value: language, textContent: language || "(keys)", selected: language === this.language }),
      );
      const picker = element("select", { id: newId("language") }, ...options);
      picker.addEventListener("change", () => this.speak(picker.value));
      return element(
        "div",
        { className: "tools" },
        element("label", { for: picker.id, textContent: "Language" }),
        picker,
      );
    }

    // --- The whole ---

    makeHiddenSwitch() {
      this.hiddenSwitch = element("input", { id: newId("hidden"), type: "checkbox" });
      this.hiddenSwitch.addEventListener("change", () => {
        this.#showHidden(this.hiddenSwitch.checked);
        this.refresh();
      });
      const label = element("label", { for: this.hiddenSwitch.id, textContent: "Show hidden parameters" });
      return element("div", { className: "tools" }, this.hiddenSwitch, label);
    }

    #showHidden(shows) {
      this.showsHidden = shows;
      this.hiddenSwitch.checked = shows;
    }

    start(body) {
      const { layout, valuesFile } = this.data;
      const source = this.data.values ? `Values of ${valuesFile}` : "Default values";
      const title = element("div", { className: "title" }, text("h1", "", layout.name), text("p", "note", source));
      const tools = [this.makeSearch(), this.makeLanguages(), this.makeHiddenSwitch()];
      const header = element("header", { className: "top" }, title, ...tools);
      this.makeTabs();
      this.#nameTabs();
      this.details = Panes.details(this);
      this.panes = [Panes.changes(this), Panes.findings(this), Panes.lint(this), Panes.missingTranslations(this)];
      const properties = { className: "side", "aria-label": "Beside the parameters" };
      const side = element("aside", properties, this.details.root, ...this.panes.map((pane) => pane.root));
      const tabs = element("nav", { "aria-label": "Sections" }, this.tabList);
      body.append(header, tabs, element("div", { className: "columns" }, this.panels, side));
      const first = this.tabs.find((tab) => this.document.looks.get(tab.place).visible) ?? this.tabs[0];
      if (first) {
        this.show(first);
      }
      this.refresh();
    }
  }

  const data = JSON.parse(document.getElementById("data").textContent);
  const app = new App(Nodes.prepare(data));
  app.start(document.body);
  // For scripts that try the page, as the console does.
  window.parameterPage = app;
})();
