// SPDX-License-Identifier: Apache-2.0
// Whether a place is shown and whether it may be changed, and why.

const Rules = (() => {
  "use strict";

  const { titleOf } = Nodes;
  const quoted = (text) => `"${text}"`;

  /** The sources of conditions: {node, place, wanted, actual}. A source that is missing or has no value counts not. */
  function sourcesOf(layout, place, conditions) {
    const sources = new Map();
    for (const condition of conditions) {
      const node = layout.nodes[condition.source];
      if (!node) {
        continue;
      }
      if (!sources.has(node)) {
        const at = Places.inScope(layout, place, node);
        const actual = at?.kind === "leaf" && at.hasValue ? Texts.format(node, at.text) : undefined;
        sources.set(node, { node, place: at, wanted: [], actual });
      }
      sources.get(node).wanted.push(condition.value);
    }
    return [...sources.values()].filter((source) => source.actual !== undefined);
  }

  /** A reason: a sentence, and the place of which it speaks. */
  function reasonOf(source, isMet, word) {
    const name = quoted(titleOf(source.node));
    const wanted = source.wanted.map(quoted).join(" or ");
    const sentence = isMet
      ? `${word} because ${name} is ${quoted(source.actual)}.`
      : `${word} only where ${name} is ${wanted}; it is ${quoted(source.actual)}.`;
    return { sentence, place: source.place };
  }

  /** Adds to a look what conditions say; `aspect` is "visible" or "editable". */
  function addConditions(layout, place, conditions, aspect, look) {
    for (const source of sourcesOf(layout, place, conditions)) {
      const isMet = source.wanted.includes(source.actual);
      look[aspect] &&= isMet;
      look.because.push(reasonOf(source, isMet, aspect === "visible" ? "Shown" : "Can be changed"));
    }
  }

  function addRefusal(look, aspect, sentence, place) {
    look[aspect] = false;
    look.because.push({ sentence, place });
  }

  /** {visible, editable, because}; `around` is the look of what is around the place. */
  function lookAt(layout, place, around) {
    const look = { visible: true, editable: true, because: [] };
    if (!around.visible) {
      addRefusal(look, "visible", `Not shown, like ${quoted(titleOf(place.parent.node))} around it.`, place.parent);
    }
    if (!around.editable) {
      addRefusal(look, "editable", `Read-only, like ${quoted(titleOf(place.parent.node))} around it.`, place.parent);
    }
    const node = place.entry ? null : place.node; // an entry's node has counted for its container
    if (node && !node.visible) {
      addRefusal(look, "visible", "The layout doesn't show it.");
    }
    if (node?.readOnly) {
      addRefusal(look, "editable", "The layout makes it read-only.");
    }
    if (place.flags.hidden) {
      addRefusal(look, "visible", "The file hides it.");
    }
    if (place.flags.readOnly) {
      addRefusal(look, "editable", "The file makes it read-only.");
    }
    if (node && node.visibleWhere.length !== 0) {
      addConditions(layout, place, node.visibleWhere, "visible", look);
    }
    if (node && node.editableWhere.length !== 0) {
      addConditions(layout, place, node.editableWhere, "editable", look);
    }
    return look;
  }

  /** The looks of a place and of all below it, in a map. */
  function looks(layout, place, around = { visible: true, editable: true }, found = new Map()) {
    const look = lookAt(layout, place, around);
    found.set(place, look);
    for (const below of place.below()) {
      looks(layout, below, look, found);
    }
    return found;
  }

  return { looks, quoted };
})();
