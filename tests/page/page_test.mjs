// SPDX-License-Identifier: Apache-2.0
// The page in a browser, held against what the editing library says. Run by tests/page/run, which names the programs.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";

const { PAGE_CASES, PARAMTOOL, PAGE_MODULES, CHROMIUM } = process.env;
const require = createRequire(join(PAGE_MODULES, "node_modules", "/"));
const puppeteer = require("puppeteer-core");
const axe = readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");
const folder = mkdtempSync(join(tmpdir(), "page-"));
let browser;

before(async () => {
  browser = await puppeteer.launch({ executablePath: CHROMIUM, args: ["--no-sandbox", "--disable-dev-shm-usage"] });
});
after(async () => {
  await browser?.close();
  rmSync(folder, { recursive: true });
});

const cases = (words, input) =>
  execFileSync(PAGE_CASES, words.map(String), { input, encoding: "utf8", maxBuffer: 1 << 28 });

const machine = "examples/data/powder_bed_machine.xml";
const file = (name) => join(folder, name);

/** Makes the machine's page with the values of a file. */
function makeMachine(values, ...words) {
  execFileSync(PARAMTOOL, ["layout", "page", machine, "-o", file("page.html"), "--values", file(values), ...words], {
    stdio: "pipe", // of the machine two things are passed over
  });
}

/** Runs `body` on a page that was made; whatever a browser complains of fails. */
async function onPage(words, body, { scheme = "light", width = 1200 } = {}) {
  if (words.length !== 0) {
    cases([...words, folder]);
  }
  const page = await browser.newPage();
  page.setDefaultTimeout(10000);
  const complaints = [];
  page.on("console", (message) => complaints.push(message.text()));
  page.on("pageerror", (error) => complaints.push(error.stack));
  page.on("request", (request) => request.url().startsWith("file:") || complaints.push(`fetched ${request.url()}`));
  await page.setViewport({ width, height: 800 });
  await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
  await page.goto(pathToFileURL(join(folder, "page.html")).href);
  await body(page);
  await page.close();
  assert.deepEqual(complaints, []);
}

// What runs in the page

/** The sets of paths by what the page knows, and all values in the form in which the tool writes them. */
function said() {
  const { document: shown } = window.parameterPage;
  const sets = { visible: [], editable: [], objected: [] };
  (function collect(place) {
    const look = shown.looks.get(place);
    if (look.visible) {
      sets.visible.push(place.path);
    }
    if (look.editable) {
      sets.editable.push(place.path);
    }
    sets.objected.push(...(shown.findings.get(place) ?? []).map(() => place.path));
    for (const below of place.below()) {
      collect(below);
    }
  })(shown.top);
  return sets;
}

/** What of the fields that stand on the page isn't as the page knows it. */
function wronglyShown() {
  const app = window.parameterPage;
  const wrong = [];
  (function check(part, isHiddenAround) {
    const look = app.document.looks.get(part.place);
    const isHidden = isHiddenAround || part.root.hidden;
    const { input } = part;
    const isFixed = input && (input.disabled || input.readOnly === true);
    const isInvalid = input?.getAttribute("aria-invalid") === "true";
    const isObjected = (app.document.findings.get(part.place) ?? []).some((one) => one.severity === "error");
    const isWrong = isHidden === look.visible || (input && (isFixed === look.editable || isInvalid !== isObjected));
    if (isWrong && part.place.node.type !== "FileAttachment") {
      wrong.push(part.place.path);
    }
    for (const inner of part.parts ?? []) {
      check(inner, isHidden);
    }
  })(app.current.part, false);
  return wrong;
}

/** Does what a line says as a user would, if the page lets a user do it. */
function edit(line) {
  const app = window.parameterPage;
  const { document: shown } = app;
  const [kind, ...fields] = line.split("\t");
  const action = kind === "set" ? kind : fields.shift();
  const find = (place) =>
    place.path === fields[0] ? place : [...place.below()].reduce((found, below) => found ?? find(below), undefined);
  const place = find(shown.top);
  const profile = place.profiles?.find((one) => one.name === fields[1]);
  const item = place.items?.[fields[1]];
  const steps = {
    set: [
      () => (shown.looks.get(place).editable && Texts.parse(place.node.type, fields[1]) !== undefined ? null : "no"),
      () => shown.setText(place, fields[1]),
    ],
    "profile add": [
      () => shown.whyNotAdd(place) ?? shown.whyNotName(place, fields[1]),
      () => shown.addProfile(place, fields[1]),
    ],
    "profile copy": [
      () => shown.whyNotAdd(place) ?? shown.whyNotName(place, fields[2]),
      () => shown.copyProfile(profile, fields[2]),
    ],
    "profile rename": [
      () => shown.whyNotRename(profile) ?? shown.whyNotName(place, fields[2]),
      () => shown.renameProfile(profile, fields[2]),
    ],
    "profile remove": [() => shown.whyNotRemove(profile), () => shown.removeProfile(profile)],
    "item add": [() => shown.whyNotAdd(place), () => shown.addItem(place)],
    "item move": [
      () => shown.whyNotMove(place) ?? (item && fields[2] < place.items.length ? null : "none"),
      () => shown.moveItem(item, Number(fields[2])),
    ],
    "item remove": [() => (item ? shown.whyNotRemove(item) : "none"), () => shown.removeItem(item)],
  };
  const [whyNot, perform] = steps[kind === "set" ? kind : `${kind} ${action}`];
  const why = whyNot();
  if (!why) {
    app.change(perform);
  }
  return why ?? "";
}

/** Where the page doesn't show these values, which the tool has written. */
function differences(expected) {
  const found = [];
  const entriesOf = (place, values) => [
    [place.template, values.template],
    [place.default, values.default],
    ...(place.children ?? []).map((child, i) => [child, values.children[i]]),
    ...(place.items ?? []).map((item, i) => [item, values.items[i]]),
    ...(place.profiles ?? []).map((profile, i) => [profile, values.profiles[i]]),
  ];
  const countOf = (one) => [one.items?.length, one.profiles?.length].join();
  const flagsOf = (one) => Object.keys(one.flags).sort().join();
  (function compare(place, values) {
    const isSame =
      countOf(place) === countOf(values) &&
      flagsOf(place) === flagsOf(values) &&
      place.name === values.name &&
      (!place.hasValue || place.node.type === "Group" || Texts.isSame(place.node.type, place.text, values.text ?? ""));
    if (!isSame) {
      found.push(place.path);
      return;
    }
    for (const [inner, innerValues] of entriesOf(place, values)) {
      if (inner) {
        compare(inner, innerValues);
      }
    }
  })(window.parameterPage.document.top, expected);
  return found;
}

const sorted = ({ visible, editable, objected }) => ({
  visible: visible.sort(),
  editable: editable.sort(),
  objected: objected.sort(),
});

test("looks, findings and edits are those of the library, and the export makes them again", async () => {
  for (let seed = 1; seed <= 6; ++seed) {
    await onPage(["generated", seed], async (page) => {
      const expected = JSON.parse(readFileSync(join(folder, "expected.json"), "utf8"));
      assert.deepEqual(sorted(await page.evaluate(said)), sorted(expected.before), `seed ${seed}`);
      for (const { line, isDone } of expected.edits) {
        const why = await page.evaluate(edit, line);
        assert.equal(why === "", isDone, `seed ${seed}: ${line}: ${why}`);
      }
      assert.deepEqual(sorted(await page.evaluate(said)), sorted(expected.after), `seed ${seed}`);
      assert.deepEqual(await page.evaluate(wronglyShown), [], `seed ${seed}`);
      assert.deepEqual(await page.evaluate(differences, expected.after.values), [], `seed ${seed}`);
      const lines = await page.evaluate(() =>
        window.parameterPage.document
          .exportLines()
          .map((line) => `${line}\n`)
          .join(""),
      );
      assert.deepEqual(await page.evaluate(differences, JSON.parse(cases(["apply", seed], lines))), [], `seed ${seed}`);
    });
  }
});

test("what leaves the page comes into the file by paramtool", async () => {
  writeFileSync(
    file("values.xml"),
    `<PowderBedMachine><Machine><BuildHeight>300</BuildHeight></Machine><Materials>
       <Material Name="Steel"/></Materials></PowderBedMachine>`,
  );
  makeMachine("values.xml", "--language", "de-DE");
  let shown;
  await onPage([], async (page) => {
    const fill = async (label, text) => page.locator(`::-p-aria([name="${label}"])`).fill(text);
    const click = async (label) => page.locator(`::-p-aria([name="${label}"][role="button"])`).click();
    const tab = async (label) => page.locator(`::-p-aria([name="${label}"][role="tab"])`).click();
    const isDeviating = (input) => input.closest(".field").classList.contains("deviates");
    assert.ok(await page.$eval('::-p-aria([name="Bauhöhe"])', isDeviating));
    await fill("Bauhöhe", "290.5");
    await fill("Seriennummer", 'PB\\ "ü" 漢');
    await click("Add Laser");
    await click("Add Laser");
    await fill("Maximalleistung, Laser 2", "500");
    await click("Remove Laser 1");
    await tab("Werkstoffe");
    await fill("Dichte", "7.9");
    await fill("New name", "Steel\\t, fine");
    await click("Rename");
    await fill("Dichte", "");
    await fill("Dichte", "7.8");
    writeFileSync(file("changes.txt"), await page.$eval(".changes textarea", (lines) => lines.value));
    execFileSync(PARAMTOOL, ["set", file("values.xml"), "--from", file("changes.txt"), "--layout", machine], {
      stdio: "pipe",
    });
    makeMachine("values.xml");
    shown = JSON.parse(/id="data">(.*?)<\/script>/s.exec(readFileSync(file("page.html"), "utf8"))[1]);
    assert.deepEqual(await page.evaluate(differences, shown.values), []);
  });
  assert.equal(shown.values.children[1].profiles[0].name, "Steel\\t, fine");
});

/** What axe-core finds against the page as it stands. */
async function violations(page) {
  await page.evaluate(axe);
  const { violations: found } = await page.evaluate(() => window.axe.run());
  return found.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html).join(" ")}`);
}

for (const [scheme, width] of [
  ["light", 1200],
  ["dark", 1200],
  ["light", 360],
]) {
  test(`nobody is shut out: ${scheme}, ${width} wide`, async () => {
    const show = async (page) => {
      await page.evaluate(() => window.parameterPage.hiddenSwitch.click());
      await page.type("input[type=search]", "n1");
      assert.deepEqual(await violations(page), []);
      await page.keyboard.press("Escape");
      assert.deepEqual(await page.evaluate(() => document.body.scrollWidth <= window.innerWidth), true);
    };
    await onPage(["generated", 3], show, { scheme, width });
    await onPage(["large", 500], show, { scheme, width });
  });
}

test("patterns match what the library lets them match", async () => {
  await onPage(["hostile"], async (page) => {
    const results = JSON.parse(cases(["patterns"]));
    const found = await page.evaluate(
      (all) => all.map(([pattern, words]) => Patterns.matches(pattern, words)),
      results,
    );
    assert.deepEqual(
      results.filter(([, , isTaken], i) => isTaken !== found[i]),
      [],
    );
    assert.ok(found.includes(true) && found.includes(false));
  });
});

test("texts of a layout do nothing", async () => {
  await onPage(["hostile"], async (page) => {
    for (const tab of await page.$$("[role=tab]")) {
      await tab.click();
    }
    for (const input of await page.$$("[role=tabpanel]:not([hidden]) input")) {
      await input.focus();
    }
    await page.evaluate(() => window.parameterPage.hiddenSwitch.click());
    await page.type("input[type=search]", "script");
    await page.click(".results button");
    await page.select("select", "toString");
    const state = await page.evaluate(() => ({
      wasRun: window.wasRun ?? null,
      made: document.querySelectorAll("img, main script, main a, main iframe, [href^=javascript]").length,
      isShown: document.body.textContent.includes("</script><script>window.wasRun = 1</script><img src=x"),
      title: document.title.includes("</script>"),
    }));
    assert.deepEqual(state, { wasRun: null, made: 0, isShown: true, title: true });
    assert.deepEqual(await violations(page), []);
  });
});

test("the keyboard alone reaches a value, changes it and puts it back", async () => {
  await onPage(["large", 500], async (page) => {
    const press = async (...keys) => {
      for (const key of keys) {
        await page.keyboard.press(key);
      }
    };
    const isAt = (selector) => page.evaluate((wanted) => document.activeElement.matches(wanted), selector);
    const tabTo = async (selector) => {
      for (let i = 0; i < 200 && !(await isAt(selector)); ++i) {
        await press("Tab");
      }
      assert.ok(await isAt(selector), selector);
    };
    const lines = () => page.evaluate(() => document.querySelector(".changes textarea").value);
    await tabTo("[role=tab]");
    await press("ArrowRight", "ArrowRight");
    await tabTo("main input.number");
    await press("ArrowRight", "Backspace");
    await page.keyboard.type("7");
    assert.equal(await lines(), "set\tTab2_Group0_Parameter0\t7\n");
    assert.equal(await page.evaluate(() => document.querySelector(".pane code").textContent), "Tab2_Group0_Parameter0");
    await tabTo("main .field .back");
    await press("Enter");
    assert.equal(await lines(), "");
    await tabTo("main input[type=checkbox]");
    const shown = () => page.$$eval("[role=tabpanel]:not([hidden]) .field:not([hidden])", (fields) => fields.length);
    assert.equal(await shown(), 15);
    await press("Space");
    assert.equal(await lines(), "set\tTab2_Group0_Parameter1\ttrue\n");
    assert.equal(await shown(), 30);
    await press("Tab", "Tab");
    await page.keyboard.type("5"); // which it can while the flag is true
    await page.keyboard.down("Shift");
    await press("Tab", "Tab");
    await page.keyboard.up("Shift");
    await press("Space");
    const sets = ["1\ttrue", "2\t5", "1\tfalse"].map((set) => `set\tTab2_Group0_Parameter${set}\n`);
    assert.equal(await lines(), sets.join(""));
  });
});
