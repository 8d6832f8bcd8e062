// SPDX-License-Identifier: Apache-2.0
// The field of one value: its label, its control, its marks and what speaks against it.

const Fields = (() => {
  "use strict";

  const { element, text, button, set, newId } = Dom;
  const { isNumber } = Nodes;

  // Each makes the control that a kind of node has: {input, show(text)}. `change` takes the new text.

  function checkbox(change) {
    const input = element("input", { type: "checkbox", onchange: () => change(input.checked ? "true" : "false") });
    return { input, show: (value) => set(input, "checked", Texts.parse("Bool", value) === true) };
  }

  /** `choices` gives [{value, title}], which may change. */
  function choice(change, choices) {
    const input = element("select", { onchange: () => change(input.value) });
    let shown = null;
    function show(value) {
      const offered = choices();
      const isOffered = offered.some((option) => option.value === value);
      const title = value === "" ? "(none)" : `${value} (not offered)`;
      const options = isOffered ? offered : [{ value, title }, ...offered];
      const key = JSON.stringify(options);
      if (key !== shown) {
        const elements = options.map((option) => element("option", { value: option.value, textContent: option.title }));
        input.replaceChildren(...elements);
        shown = key;
      }
      set(input, "value", value);
    }
    return { input, show };
  }

  function line(change, node) {
    const isText = !isNumber(node);
    const input = element(node.multiLine && isText ? "textarea" : "input", {
      spellcheck: false,
      autocomplete: "off",
      className: isText ? "text" : "number",
      inputMode: isText ? "text" : "decimal",
      oninput: () => change(input.value),
    });
    if (node.type === "FileAbsolute") {
      input.placeholder = "path of a file";
    }
    return { input, show: (value) => set(input, "value", value) };
  }

  function attachment(place) {
    const input = element("input", { type: "text", readOnly: true, className: "text" });
    const size = place.bytes === 0 ? "" : ` (${place.bytes.toLocaleString("en")} bytes)`;
    const show = (value) => set(input, "value", value === "" && size === "" ? "(no file)" : value + size);
    return { input, show, isFixed: true };
  }

  const optionsOf = (app, node) =>
    node.options.map((option) => ({ value: option.value, title: app.translate(option.displayName || option.value) }));

  /** The default profile, under a word that no profile has for its name, and the profiles. */
  function profilesOf(app, place) {
    const list = app.document.offeredTo(place);
    if (list?.kind !== "profiles") {
      return [];
    }
    const names = [...new Set(list.profiles.map((profile) => profile.name))];
    const words = ["Default", "::DefaultProfile::"].filter((word) => !names.includes(word));
    const word = words.includes(place.text) ? place.text : words[0];
    return [{ value: word, title: "Default" }, ...names.map((name) => ({ value: name, title: name }))];
  }

  function controlOf(app, place, change) {
    const { node } = place;
    switch (node.type) {
      case "Bool":
        return checkbox(change);
      case "Options":
        return node.options.length === 0 ? line(change, node) : choice(change, () => optionsOf(app, node));
      case "OptionsFromProfiles":
        return choice(change, () => profilesOf(app, place));
      case "FileAttachment":
        return attachment(place);
      default:
        return line(change, node);
    }
  }

  // What stands beside the control

  function rangeOf(node) {
    if (!isNumber(node) || (node.min === "" && node.max === "")) {
      return "";
    }
    return node.min === "" ? `≤ ${node.max}` : node.max === "" ? `≥ ${node.min}` : `${node.min} – ${node.max}`;
  }

  function shortened(value) {
    return value.length > 24 ? `${value.slice(0, 23)}…` : value;
  }

  const messageOf = (finding) => text("li", finding.severity, finding.sentence);

  /** The field of a leaf, whose label is in a table what a screen reader says only. */
  class Field {
    #app;
    #control;
    #messages = element("ul", { className: "messages", id: newId("messages"), hidden: true });
    #deviation = text("span", "deviation", "");
    #back;
    #isToggle;
    #shownMessages = "";

    constructor(app, place, label, isCell) {
      const { node } = place;
      this.#app = app;
      this.place = place;
      this.#control = controlOf(app, place, (value) => app.change(() => app.document.setText(place, value)));
      this.input = this.#control.input;
      this.input.id = newId("field");
      this.input.addEventListener("focus", () => app.select(place));
      this.#isToggle = this.input.type === "checkbox" || this.input.tagName === "SELECT";
      this.#back = button("↺", () => this.#putBack(), { className: "back", title: "Put back", hidden: true });
      this.#back.setAttribute("aria-label", `Put back ${label}`);
      const body = element("div", { className: "control" });
      body.append(this.input, this.#back);
      if (!isCell) {
        this.#addWords(body, node);
      }
      this.root = element("div", { className: isCell ? "field cell" : "field" }, body, this.#messages);
      if (isCell) {
        this.input.setAttribute("aria-label", label);
      } else {
        this.root.prepend(element("label", { for: this.input.id, textContent: label }));
        this.root.classList.toggle("nameless", node.hideName);
      }
    }

    #addWords(body, node) {
      const word = (className, textContent) => (textContent === "" ? [] : [text("span", className, textContent)]);
      this.input.before(...word("unit", this.#app.translate(node.prefix)));
      this.#back.before(...word("unit", this.#app.translate(node.postfix)), ...word("range", rangeOf(node)));
      body.append(this.#deviation);
    }

    #putBack() {
      this.#app.change(() => this.#app.document.reset(this.place));
      this.input.focus();
    }

    refresh() {
      const { place, root } = this;
      const { document: shown, showsHidden } = this.#app;
      const look = shown.looks.get(place);
      const deviates = shown.deviates(place);
      this.#control.show(place.text);
      set(root, "hidden", !look.visible && !showsHidden);
      root.classList.toggle("not-shown", !look.visible);
      root.classList.toggle("changed", shown.isChanged(place));
      root.classList.toggle("deviates", deviates);
      const isTold = deviates && place.node.type !== "FileAttachment" && place.node.default !== "";
      set(this.#deviation, "textContent", isTold ? `default ${shortened(place.node.default)}` : "");
      set(this.#back, "hidden", !shown.isChanged(place));
      set(this.input, this.#isToggle ? "disabled" : "readOnly", !look.editable || this.#control.isFixed === true);
      this.#refreshMessages(shown.findings.get(place) ?? []);
    }

    #refreshMessages(findings) {
      const sentences = findings.map((finding) => finding.sentence).join("\n");
      if (sentences === this.#shownMessages) {
        return;
      }
      this.#shownMessages = sentences;
      this.#messages.replaceChildren(...findings.map(messageOf));
      set(this.#messages, "hidden", findings.length === 0);
      this.input.setAttribute("aria-invalid", String(findings.some((finding) => finding.severity === "error")));
      if (findings.length === 0) {
        this.input.removeAttribute("aria-describedby");
      } else {
        this.input.setAttribute("aria-describedby", this.#messages.id);
      }
    }
  }

  const field = (app, place, label, isCell = false) => new Field(app, place, label, isCell);

  return { field, rangeOf };
})();
