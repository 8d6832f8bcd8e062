// SPDX-License-Identifier: Apache-2.0
// What the tool put into the page, made ready: nodes tell only what isn't as a new node has it.

const Nodes = (() => {
  "use strict";

  const plain = {
    displayName: "",
    description: "",
    prefix: "",
    postfix: "",
    default: "",
    min: "",
    max: "",
    profileName: "",
    profileList: null,
    regex: "",
    badRegex: "",
    regexText: "",
    propName: "",
    image: "",
    request: "",
    visibilityRequest: "",
    fileFilter: "",
    container: "",
    entryName: "",
    entryDisplayName: "",
    containerDisplayName: "",
    containerDescription: "",
    leastMessage: "",
    mostMessage: "",
    visible: true,
    readOnly: false,
    hideName: false,
    allowEmpty: false,
    emptyIsTold: false,
    unique: false,
    multiLine: false,
    canAddRemove: true,
    canSort: false,
    canRemoveAny: true,
    maxLength: 0,
    leastItems: 0,
    mostItems: 0,
    initialItems: 0,
    precision: 4,
    options: [],
    visibleWhere: [],
    editableWhere: [],
    children: [],
  };

  /** The data as the other parts take it; the dictionary as maps, in which every text is only a key. */
  function prepare(data) {
    const nodes = data.layout.nodes.map((node) => ({ ...plain, ...node }));
    const dictionary = new Map(
      Object.entries(data.dictionary).map(([text, translations]) => [text, new Map(Object.entries(translations))]),
    );
    return { ...data, layout: { ...data.layout, nodes }, dictionary };
  }

  const titleOf = (node) => node.displayName || node.name;
  const isNumber = (node) => ["Int", "Double", "Distance"].includes(node.type);

  return { prepare, titleOf, isNumber };
})();
