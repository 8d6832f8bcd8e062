// SPDX-License-Identifier: Apache-2.0
// Elements of the page. Every text is set as text: what a layout says is never markup, nor an address.

const Dom = (() => {
  "use strict";

  let lastId = 0;
  const newId = (word) => `${word}-${++lastId}`;
  const isAttribute = (name) => name.includes("-") || name === "role" || name === "for";

  /** An element with properties, attributes (a name with "-", "role" or "for") and handlers ("on..."). */
  function element(tag, properties, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(properties ?? {})) {
      if (name.startsWith("on")) {
        made.addEventListener(name.slice(2), value);
      } else if (isAttribute(name)) {
        made.setAttribute(name, value);
      } else {
        made[name] = value;
      }
    }
    made.append(...children.filter((child) => child !== null && child !== undefined));
    return made;
  }

  const text = (tag, className, textContent) => element(tag, { className, textContent });

  const button = (label, onclick, properties) =>
    element("button", { type: "button", textContent: label, onclick, ...properties });

  const heading = (level, properties, ...children) => element(`h${Math.min(level, 6)}`, properties, ...children);

  /** Sets what has changed only, so that nothing is laid out in vain. */
  function set(target, property, value) {
    if (target[property] !== value) {
      target[property] = value;
    }
  }

  return { element, text, button, heading, set, newId };
})();
