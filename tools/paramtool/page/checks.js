// SPDX-License-Identifier: Apache-2.0
// What the layout has against the values: the findings of each place.

const Checks = (() => {
  "use strict";

  const { quoted } = Rules;
  const error = (kind, sentence) => ({ kind, severity: "error", sentence });
  const defaultWords = ["Default", "::DefaultProfile::"];

  // What a node's type asks. Each gives findings for a text that isn't empty.

  const limits = new Map();

  /** The least and the greatest value; undefined is no limit. */
  function limitsOf(node) {
    if (!limits.has(node)) {
      limits.set(node, [node.min, node.max].map(Texts.parseDouble));
    }
    return limits.get(node);
  }

  function ofNumber(node, text) {
    const value = Texts.parse(node.type, text);
    const isWhole = node.type === "Int";
    if (value === undefined || !Number.isFinite(value)) {
      return [error("NoNumber", `${quoted(text)} is no ${isWhole ? "whole number of 32 bits" : "number"}.`)];
    }
    const [least, most] = limitsOf(node);
    return [
      ...(value < least ? [error("BelowMinimum", `${text} is below the least value, ${node.min}.`)] : []),
      ...(value > most ? [error("AboveMaximum", `${text} is above the greatest value, ${node.max}.`)] : []),
    ];
  }

  function ofFlag(node, text) {
    const isFlag = Texts.parse("Bool", text) !== undefined;
    return isFlag ? [] : [error("NoFlag", `${quoted(text)} is neither "true" nor "false".`)];
  }

  function ofOption(node, text) {
    const isOffered = node.options.length === 0 || node.options.some((option) => option.value === text);
    return isOffered ? [] : [error("NoOption", `${quoted(text)} is none of the options.`)];
  }

  function ofProfile(node, text, document, place) {
    const list = defaultWords.includes(text) ? undefined : document.listOf(place);
    const isMissing = list?.kind === "profiles" && !list.profile(text);
    return isMissing
      ? [error("NoSuchProfile", `There is no profile ${quoted(text)} in ${quoted(list.node.name)}.`)]
      : [];
  }

  const byType = new Map([
    ["Int", ofNumber],
    ["Double", ofNumber],
    ["Distance", ofNumber],
    ["Bool", ofFlag],
    ["Options", ofOption],
    ["OptionsFromProfiles", ofProfile],
  ]);
  const hasValueWhenEmpty = new Set(["Int", "Double", "Distance", "Bool"]);
  const emptyNote = { kind: "Empty", severity: "note", sentence: "This is empty, which the layout doesn't allow." };
  const withoutText = new Set(["Int", "Double", "Distance", "Bool", "FileAttachment"]);

  function ofText(node, text) {
    const found = [];
    if (node.maxLength && [...text].length > node.maxLength) {
      found.push(error("TooLong", `This is longer than ${node.maxLength} characters.`));
    } else if (node.regex && !Patterns.matches(node.regex, text)) {
      found.push(error("AgainstPattern", `This doesn't follow the rule: ${node.regexText || node.regex}`));
    }
    return found;
  }

  function ofLeaf(document, place) {
    const { node } = place;
    const text = place.hasValue ? place.text : "";
    if (text === "" && !hasValueWhenEmpty.has(node.type)) {
      const isOption = node.type === "Options" && node.options.some((option) => option.value === "");
      const isAllowed = place.bytes !== 0 || isOption;
      return node.emptyIsTold && !isAllowed ? [emptyNote] : [];
    }
    const found = byType.get(node.type)?.(node, text, document, place) ?? [];
    return withoutText.has(node.type) ? found : [...found, ...ofText(node, text)];
  }

  function ofSize(place) {
    const size = place.kind === "list" ? place.items.length : place.profiles.length;
    const { node } = place;
    return [
      ...(size < node.leastItems
        ? [
            error(
              "TooFewItems",
              node.leastMessage || `There are ${size} entries; at least ${node.leastItems} are needed.`,
            ),
          ]
        : []),
      ...(node.mostItems && size > node.mostItems
        ? [
            error(
              "TooManyItems",
              node.mostMessage || `There are ${size} entries; at most ${node.mostItems} are allowed.`,
            ),
          ]
        : []),
    ];
  }

  // --- Values that must be unique among the entries of the innermost container ---

  function entryAround(place) {
    let at = place;
    while (at && !at.entry) {
      at = at.parent;
    }
    return at;
  }

  /** The value as a key: numbers by what they are, and one key for both zeros. */
  function keyOf(place) {
    const value = Texts.parse(place.node.type, place.text);
    return typeof value === "number" ? String(value === 0 ? 0 : value) : String(value ?? place.text);
  }

  function noteUnique(place, seen) {
    const entry = entryAround(place);
    if (!entry || entry.entry === "default" || !place.hasValue || place.text === "") {
      return;
    }
    const byNode = seen.get(entry.parent) ?? seen.set(entry.parent, new Map()).get(entry.parent);
    const key = `${place.node.id}\n${keyOf(place)}`;
    const same = byNode.get(key) ?? byNode.set(key, []).get(key);
    same.push(place);
  }

  function addRepeated(seen, all) {
    for (const byNode of seen.values()) {
      for (const places of byNode.values()) {
        for (const place of places.length > 1 ? places : []) {
          const other = place === places[0] ? places[1] : places[0];
          const sentence = `${quoted(place.text)} stands already at ${other.path} and must be unique.`;
          all.set(place, [...(all.get(place) ?? []), error("NotUnique", sentence)]);
        }
      }
    }
  }

  /** The findings of a place and all below it that have any, in a map. */
  function findings(document, top, all = new Map()) {
    const seen = new Map();
    Places.walk(top, (place) => {
      const found = place.kind === "leaf" ? ofLeaf(document, place) : place.isContainer ? ofSize(place) : [];
      if (found.length !== 0) {
        all.set(place, found);
      }
      if (place.kind === "leaf" && place.node.unique) {
        noteUnique(place, seen);
      }
    });
    addRepeated(seen, all);
    return all;
  }

  return { findings };
})();
