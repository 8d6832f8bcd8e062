// SPDX-License-Identifier: Apache-2.0
// Patterns of texts, matched as a whole. The browser's own expressions try one way after another, and a pattern
// can be such that this doesn't end; here all ways are followed at once, as the library does it. What the
// library refuses to understand never comes here.

const Patterns = (() => {
  "use strict";

  const any = (...ranges) => ranges;
  const digits = any([0x30, 0x39]);
  const word = any([0x30, 0x39], [0x41, 0x5a], [0x5f, 0x5f], [0x61, 0x7a]);
  const blanks = any(
    [0x09, 0x0d], [0x20, 0x20], [0xa0, 0xa0], [0x1680, 0x1680], [0x2000, 0x200a],
    [0x2028, 0x2029], [0x202f, 0x202f], [0x205f, 0x205f], [0x3000, 0x3000], [0xfeff, 0xfeff],
  ); // prettier-ignore
  const lineEnds = any([0x0a, 0x0a], [0x0d, 0x0d], [0x2028, 0x2029]);
  const controls = { t: 9, n: 10, r: 13, v: 11, f: 12, 0: 0 };

  const isIn = (ranges, code) => ranges.some(([first, last]) => code >= first && code <= last);
  const isWord = (code) => code !== undefined && isIn(word, code);

  /** What isn't in the ranges. */
  function allBut(ranges) {
    const rest = [];
    let next = 0;
    for (const [first, last] of [...ranges].sort((one, other) => one[0] - other[0])) {
      if (first > next) {
        rest.push([next, first - 1]);
      }
      next = Math.max(next, last + 1);
    }
    return next <= 0x10ffff ? [...rest, [next, 0x10ffff]] : rest;
  }

  // Parsed into pieces: {set}, {all: pieces}, {either: pieces}, {repeated, least, most}, {condition}.

  function parse(pattern) {
    const text = [...pattern];
    let at = 0;
    const isAt = (what) => text.slice(at, at + what.length).join("") === what;
    function take(what) {
      const isThere = isAt(what);
      at += isThere ? what.length : 0;
      return isThere;
    }

    function alternatives() {
      const either = [sequence()];
      while (take("|")) {
        either.push(sequence());
      }
      return { either };
    }

    function sequence() {
      const all = [];
      while (at < text.length && text[at] !== "|" && text[at] !== ")") {
        all.push(term());
      }
      return { all };
    }

    function term() {
      const condition = ["^", "$", "\\b", "\\B"].find((words) => take(words));
      return condition ? { condition } : repetition(atom());
    }

    function repetition(repeated) {
      let [least, most] = [1, 1];
      if (take("?")) {
        least = 0;
      } else if (take("+")) {
        most = Infinity;
      } else if (take("*")) {
        [least, most] = [0, Infinity];
      } else if (take("{")) {
        least = most = count();
        if (take(",")) {
          most = isAt("}") ? Infinity : count();
        }
        take("}");
      } else {
        return repeated;
      }
      take("?");
      return { repeated, least, most };
    }

    function count() {
      let number = "";
      while (/^[0-9]$/.test(text[at] ?? "")) {
        number += text[at++];
      }
      return Number(number);
    }

    function atom() {
      if (take(".")) {
        return { set: allBut(lineEnds) };
      }
      if (take("[")) {
        return { set: members() };
      }
      if (take("(")) {
        if (take("?<")) {
          while (at < text.length && text[at++] !== ">");
        } else {
          take("?:");
        }
        const group = alternatives();
        take(")");
        return group;
      }
      return { set: take("\\") ? escape() : one(text[at++].codePointAt(0)) };
    }

    const one = (code) => [[code, code]];

    function members() {
      const isNegated = take("^");
      const set = [];
      while (at < text.length && !take("]")) {
        const first = member();
        const isRange = isAt("-") && !isAt("-]") && first.length === 1 && first[0][0] === first[0][1];
        if (isRange) {
          ++at;
          set.push([first[0][0], member()[0][0]]);
        } else {
          set.push(...first);
        }
      }
      return isNegated ? allBut(set) : set;
    }

    function member() {
      if (take("\\b")) {
        return one(8);
      }
      return take("\\") ? escape() : one(text[at++].codePointAt(0));
    }

    function escape() {
      const letter = text[at++];
      const known = { d: digits, w: word, s: blanks }[letter.toLowerCase()];
      if (known) {
        return letter === letter.toLowerCase() ? known : allBut(known);
      }
      if (letter in controls) {
        return one(controls[letter]);
      }
      switch (letter) {
        case "x":
          return one(hexadecimal(2));
        case "u":
          return one(unicode());
        case "c":
          return one(text[at++].codePointAt(0) & 0x1f);
        default:
          return one(letter.codePointAt(0));
      }
    }

    function hexadecimal(length) {
      at += length;
      return parseInt(text.slice(at - length, at).join(""), 16);
    }

    function unicode() {
      if (take("{")) {
        const end = text.indexOf("}", at);
        const value = hexadecimal(end - at);
        ++at;
        return value;
      }
      const high = hexadecimal(4);
      const low = /^\\u(d[c-f][0-9a-f]{2})/i.exec(text.slice(at, at + 6).join(""));
      if (high >= 0xd800 && high <= 0xdbff && low) {
        at += 6;
        return 0x10000 + ((high - 0xd800) << 10) + (parseInt(low[1], 16) - 0xdc00);
      }
      return high;
    }

    return alternatives();
  }

  // States: {set, next} takes a character, {condition, next} and {ways} none; the last one is null.

  function build(piece, next) {
    if (piece.set) {
      return { set: piece.set, next };
    }
    if (piece.condition) {
      return { condition: piece.condition, next };
    }
    if (piece.all) {
      return piece.all.reduceRight((behind, part) => build(part, behind), next);
    }
    if (piece.either) {
      return { ways: piece.either.map((part) => build(part, next)) };
    }
    let state = next;
    if (piece.most === Infinity) {
      const loop = { ways: [next] };
      loop.ways.push(build(piece.repeated, loop));
      state = loop;
    } else {
      for (let i = piece.least; i < piece.most; ++i) {
        state = { ways: [next, build(piece.repeated, state)] };
      }
    }
    for (let i = 0; i < piece.least; ++i) {
      state = build(piece.repeated, state);
    }
    return state;
  }

  const end = {};

  function holds(condition, before, after) {
    switch (condition) {
      case "^":
        return before === undefined;
      case "$":
        return after === undefined;
      default:
        return (isWord(before) !== isWord(after)) === (condition === "\\b");
    }
  }

  /** All states that can be reached between two characters without taking one. */
  function spread(states, before, after) {
    const reached = new Set();
    const open = [...states];
    while (open.length !== 0) {
      const state = open.pop();
      if (reached.has(state)) {
        continue;
      }
      reached.add(state);
      if (state.ways) {
        open.push(...state.ways);
      } else if (state.condition && holds(state.condition, before, after)) {
        open.push(state.next);
      }
    }
    return reached;
  }

  /** Whether a text matches as a whole. */
  function run(start, text) {
    const codes = [...text].map((character) => character.codePointAt(0));
    let states = spread([start], undefined, codes[0]);
    for (let i = 0; i < codes.length && states.size !== 0; ++i) {
      const next = [];
      for (const state of states) {
        if (state.set && isIn(state.set, codes[i])) {
          next.push(state.next);
        }
      }
      states = spread(next, codes[i], codes[i + 1]);
    }
    return states.has(end);
  }

  const known = new Map();

  function matches(pattern, text) {
    if (!known.has(pattern)) {
      known.set(pattern, build(parse(pattern), end));
    }
    return run(known.get(pattern), text);
  }

  return { matches };
})();
