// SPDX-License-Identifier: Apache-2.0
// What stands beside the parameters: what is to be known of the selected one, findings, changes, translations.

const Panes = (() => {
  "use strict";

  const { element, text, button, set, newId } = Dom;

  /** As a person finds a place: the titles of what it stands in, and its own. */
  function titlesOf(app, place) {
    const titles = [];
    for (let at = place; at; at = at.parent) {
      if (at.parent || at !== app.document.top) {
        titles.unshift(at.entry ? Containers.entryTitleOf(app, at) : Containers.titleOf(app, at));
      }
    }
    return titles;
  }

  // --- The selected parameter ---

  const typeNames = new Map([
    ["Int", "whole number"],
    ["Double", "number"],
    ["Distance", "length"],
    ["Bool", "yes or no"],
    ["String", "text"],
    ["Options", "choice"],
    ["OptionsFromProfiles", "choice of a profile"],
    ["FileAbsolute", "path of a file"],
    ["FileAttachment", "file that travels with the values"],
    ["StandardOptions", "choice that the driver offers"],
    ["Group", "group"],
  ]);
  const containerNames = { list: "list", profiles: "profiles" };

  function numberOf(node) {
    const least = node.leastItems === 0 ? "" : `at least ${node.leastItems}`;
    const most = node.mostItems === 0 ? "" : `at most ${node.mostItems}`;
    return [least, most].filter((words) => words !== "").join(", ");
  }

  function typeOf(place) {
    const { node } = place;
    return place.isContainer ? `${containerNames[node.container]}, of ${node.type}` : typeNames.get(node.type);
  }

  /** The rows of the pane: a word and what it is, empty where there is nothing to say. */
  function factsOf(app, place) {
    const { node } = place;
    const isLeaf = place.kind === "leaf";
    const isText = isLeaf && !["Int", "Double", "Distance", "Bool", "FileAttachment"].includes(node.type);
    const hasDefault = isLeaf && node.type !== "FileAttachment";
    const digits = node.precision === 1 ? "1 digit" : `${node.precision} digits`;
    return [
      ["Type", typeOf(place)],
      ["Default", hasDefault ? node.default : ""],
      ["In the file", hasDefault && app.data.values && app.document.isChanged(place) ? place.base : ""],
      ["Range", isLeaf ? Fields.rangeOf(node) : ""],
      ["Unit", isLeaf ? app.translate(node.postfix) : ""],
      ["Precision", ["Double", "Distance"].includes(node.type) && isLeaf ? `${digits} behind the point` : ""],
      ["Length", node.maxLength === 0 || !isText ? "" : `at most ${node.maxLength} characters`],
      ["Rule", isText ? node.regexText || node.regex || node.badRegex : ""],
      ["Entries", place.isContainer ? numberOf(node) : ""],
      ["Unique", node.unique ? "among the entries around it" : ""],
      ["May be empty", isLeaf && node.allowEmpty ? "yes" : ""],
      ["Files", node.fileFilter],
      ["Picture", node.image],
      ["Profiles of", node.profileName],
      ["Filled by", node.request],
      ["Shown if", node.visibilityRequest === "" ? "" : `the driver says so (${node.visibilityRequest})`],
      ["Ticket property", node.propName],
    ].filter(([, words]) => words !== "");
  }

  function crumbsOf(app, place) {
    const crumbs = [];
    for (let at = place.parent; at && at !== app.document.top; at = at.parent) {
      const title = at.entry ? Containers.entryTitleOf(app, at) : Containers.titleOf(app, at);
      const target = at;
      crumbs.unshift(
        element(
          "li",
          null,
          button(title, () => app.goTo(target), { className: "link" }),
        ),
      );
    }
    return crumbs.length === 0 ? null : element("ol", { className: "crumbs" }, ...crumbs);
  }

  function reasonOf(app, reason) {
    const go = reason.place && reason.place.parent && reason.place.kind === "leaf";
    const link = go ? button("Go there", () => app.goTo(reason.place), { className: "link" }) : null;
    return element("li", null, `${reason.sentence} `, link);
  }

  function findingsOf(app, place) {
    const found = app.document.findings.get(place) ?? [];
    return found.length === 0
      ? null
      : element("ul", { className: "messages" }, ...found.map((one) => text("li", one.severity, one.sentence)));
  }

  function details(app) {
    const root = element("section", { className: "pane", "aria-label": "About the selected parameter" });
    function refresh() {
      const place = app.selected;
      if (!place || !app.document.looks.has(place)) {
        root.replaceChildren(text("p", "note", "Select a parameter to see what the layout says of it."));
        return;
      }
      const { node } = place;
      const description = (place.isContainer && node.containerDescription) || node.description;
      const { because } = app.document.looks.get(place);
      const rows = factsOf(app, place).flatMap(([word, words]) => [text("dt", "", word), text("dd", "", words)]);
      const isInFile = place.path !== "" && app.document.isOfFile(place);
      const path = isInFile ? [text("dt", "", "Path"), element("dd", null, text("code", "", place.path))] : [];
      const parts = [
        crumbsOf(app, place),
        text("h2", "", Containers.titleOf(app, place)),
        description === "" ? null : text("p", "description", app.translate(description)),
        findingsOf(app, place),
        element("dl", null, ...rows, ...path),
        because.length === 0 ? null : text("h3", "", "Why it is shown or fixed"),
        because.length === 0
          ? null
          : element("ul", { className: "because" }, ...because.map((one) => reasonOf(app, one))),
      ];
      root.replaceChildren(...parts.filter((part) => part !== null));
    }
    return { root, refresh };
  }

  // --- Lists of things to look at ---

  const mostRows = 100;

  /**
   * A part that opens, with a number in its title. `rows` gives [{severity, place, title, words}], of which the
   * first are shown; title and words are functions, since most rows never are.
   */
  function listing(app, title, rows, isOpen) {
    const count = text("span", "count", "");
    const summary = element("summary", null, `${title} `, count);
    const list = element("ul", { className: "listing" });
    const root = element("details", { className: "pane", open: isOpen, ontoggle: () => refresh() }, summary, list);
    let shown = "";
    function rowOf({ severity, place, title: titleOf, words }) {
      const name = place
        ? button(titleOf(), () => app.goTo(place), { className: "link" })
        : text("span", "", titleOf());
      return element("li", { className: severity ?? "" }, name, words ? text("span", "words", words()) : null);
    }
    function refresh() {
      const all = rows();
      set(count, "textContent", String(all.length));
      set(root, "hidden", all.length === 0);
      const first = root.open ? all.slice(0, mostRows) : [];
      const key = JSON.stringify(first.map((row) => [row.severity, row.title(), row.words?.()]));
      if (key !== shown) {
        shown = key;
        const rest = all.length - first.length;
        const more = root.open && rest > 0 ? [text("li", "note", `and ${rest} more`)] : [];
        list.replaceChildren(...first.map(rowOf), ...more);
      }
    }
    return { root, refresh };
  }

  const ranks = { error: 0, warning: 1, note: 2 };

  function findings(app) {
    const rows = () =>
      [...app.document.findings]
        .flatMap(([place, found]) =>
          found.map(({ severity, sentence }) => ({
            severity,
            place,
            title: () => titlesOf(app, place).join(" › "),
            words: () => sentence,
          })),
        )
        .sort((one, other) => ranks[one.severity] - ranks[other.severity]);
    return listing(app, "Findings", rows, true);
  }

  function lint(app) {
    const all = app.data.lint.map((finding) => ({
      severity: finding.severity,
      place: app.placeOfNode(finding.node),
      title: () => finding.path || "The layout",
      words: () => finding.sentence,
    }));
    return listing(app, "Findings of the layout itself", () => all, false);
  }

  function missingTranslations(app) {
    const rows = () => (app.language === "" ? [] : app.untranslated().map((key) => ({ title: () => key })));
    return listing(app, "Not translated", rows, false);
  }

  // --- Changes ---

  function changes(app) {
    const lines = element("textarea", { id: newId("lines"), readOnly: true, rows: 6, spellcheck: false, wrap: "off" });
    const status = element("p", { className: "note", role: "status" });
    const copy = button("Copy", async () => {
      lines.select();
      try {
        await navigator.clipboard.writeText(lines.value);
        set(status, "textContent", "Copied.");
      } catch {
        lines.focus();
        set(status, "textContent", "Selected; copy it with the keyboard.");
      }
    });
    const download = button("Download", () => {
      const url = URL.createObjectURL(new Blob([lines.value], { type: "text/plain" }));
      element("a", { href: url, download: "changes.txt" }).click();
      URL.revokeObjectURL(url);
    });
    const count = text("span", "count", "");
    const label = element("label", { for: lines.id, className: "note" }, "For ");
    label.append(text("code", "", "paramtool set FILE --from changes.txt"));
    const tools = element("div", { className: "tools" }, copy, download);
    const summary = element("summary", null, "Changes ", count);
    const root = element("details", { className: "pane changes", open: true }, summary, label, lines, tools, status);
    function refresh() {
      const all = app.document.exportLines();
      set(count, "textContent", String(all.length));
      const value = all.map((line) => `${line}\n`).join("");
      if (lines.value !== value) {
        lines.value = value;
        set(status, "textContent", "");
      }
      set(root, "hidden", all.length === 0);
    }
    return { root, refresh };
  }

  return { details, findings, lint, missingTranslations, changes, titlesOf };
})();
