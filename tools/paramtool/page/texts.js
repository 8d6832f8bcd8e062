// SPDX-License-Identifier: Apache-2.0
// Values as texts, as the library has them: what a text says, and how a number is written.

const Texts = (() => {
  "use strict";

  const decimal = /^[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?$/i;
  const whole = /^[+-]?\d+$/;
  const unlimited = new Map([
    ["inf", Infinity],
    ["+inf", Infinity],
    ["-inf", -Infinity],
    ["nan", NaN],
    ["+nan", NaN],
  ]);

  const trim = (text) => text.replace(/^[ \t\n\r]+|[ \t\n\r]+$/g, "");

  /** The number that a text wholly is, or undefined. */
  function parseDouble(text) {
    const digits = trim(text);
    if (unlimited.has(digits.toLowerCase())) {
      return unlimited.get(digits.toLowerCase());
    }
    if (!decimal.test(digits)) {
      return undefined;
    }
    const value = Number(digits);
    const isTooSmall = value === 0 && /[1-9]/.test(digits.split(/e/i)[0]);
    return Number.isFinite(value) && !isTooSmall ? value : undefined;
  }

  function parseInteger(text) {
    const digits = trim(text);
    const value = whole.test(digits) ? Number(digits) : NaN;
    return value >= -2147483648 && value <= 2147483647 ? value : undefined;
  }

  function parseBool(text) {
    const word = trim(text);
    return ["true", "True", "1"].includes(word) ? true : ["false", "False", "0"].includes(word) ? false : undefined;
  }

  /** The value that a text is for a node's type, or undefined. */
  function parse(type, text) {
    switch (type) {
      case "Int":
        return parseInteger(text);
      case "Double":
      case "Distance":
        return parseDouble(text);
      case "Bool":
        return parseBool(text);
      default:
        return text;
    }
  }

  /** Whether two texts say the same value. */
  function isSame(type, one, other) {
    if (one === other) {
      return true;
    }
    const value = parse(type, one);
    return typeof value !== "string" && value !== undefined && Object.is(value, parse(type, other));
  }

  /** A finite number as a fraction: mantissa * 2 ** exponent, both exact. */
  function takeApart(value) {
    const view = new DataView(new ArrayBuffer(8));
    view.setFloat64(0, Math.abs(value));
    const bits = view.getBigUint64(0);
    const exponent = Number(bits >> 52n);
    const fraction = bits & 0xfffffffffffffn;
    return exponent === 0 ? [fraction, -1074] : [fraction | 0x10000000000000n, exponent - 1075];
  }

  /** With so many digits behind the point, which is always there; a half goes to the even digit. */
  function toFixed(value, precision) {
    if (!Number.isFinite(value)) {
      return Number.isNaN(value) ? "NaN" : value < 0 ? "-INF" : "INF";
    }
    const digits = precision < 0 ? 6 : Math.min(precision, 1100);
    const [mantissa, exponent] = takeApart(value);
    const scaled = mantissa * 10n ** BigInt(digits);
    let rounded = scaled << BigInt(Math.max(exponent, 0));
    if (exponent < 0) {
      const shift = BigInt(-exponent);
      const half = 1n << (shift - 1n);
      rounded = scaled >> shift;
      const rest = scaled - (rounded << shift);
      if (rest > half || (rest === half && rounded % 2n === 1n)) {
        rounded += 1n;
      }
    }
    const text = rounded.toString().padStart(digits + 1, "0");
    const point = text.length - digits;
    const sign = value < 0 || Object.is(value, -0) ? "-" : "";
    return `${sign}${text.slice(0, point)}.${text.slice(point)}`;
  }

  /** The text that a node formats, with which conditions compare. */
  function format(node, text) {
    const value = parse(node.type, text);
    switch (node.type) {
      case "Int":
        return String(value);
      case "Double":
      case "Distance":
        return toFixed(value, node.precision);
      case "Bool":
        return value ? "True" : "False";
      default:
        return text;
    }
  }

  /** In UTF-16 code units, as names order. */
  const compare = (one, other) => (one < other ? -1 : one > other ? 1 : 0);

  return { parse, parseDouble, parseInteger, isSame, toFixed, format, compare };
})();
