// SPDX-License-Identifier: Apache-2.0
// Used by tests/page/run, which says where npm's packages are.

import { createRequire } from "node:module";
import { join } from "node:path";

const require = createRequire(join(process.env.PAGE_MODULES, "node_modules", "/"));
const readonly = (names) => Object.fromEntries(names.map((name) => [name, "readonly"]));
const browser = ["document", "window", "navigator", "Blob", "URL", "setTimeout"];
const parts = [
  "Nodes",
  "Texts",
  "Patterns",
  "Places",
  "Rules",
  "Checks",
  "Edits",
  "Dom",
  "Fields",
  "Containers",
  "Panes",
];
const rules = {
  ...require("@eslint/js").configs.recommended.rules,
  eqeqeq: "error",
  "no-shadow": "error",
  "no-var": "error",
  "prefer-const": ["error", { destructuring: "all" }],
  // A text of a layout must never become markup or program.
  "no-eval": "error",
  "no-implied-eval": "error",
  "no-restricted-properties": [
    "error",
    ...["innerHTML", "outerHTML", "insertAdjacentHTML", "write", "srcdoc"].map((property) => ({ property })),
  ],
};

export default [
  { files: ["**/*.{js,mjs}"], rules },
  {
    files: ["tools/**/*.js"], // parts of one script
    languageOptions: { sourceType: "script", globals: readonly([...browser, ...parts]) },
    rules: { "no-redeclare": ["error", { builtinGlobals: false }], "no-unused-vars": ["error", { vars: "local" }] },
  },
  {
    files: ["**/*.mjs"],
    languageOptions: {
      sourceType: "module",
      globals: readonly(["process", "window", "document", "Patterns", "Texts"]),
    },
  },
];
