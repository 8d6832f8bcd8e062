// SPDX-License-Identifier: Apache-2.0
// Pictures of a page as a person uses it: pictures.mjs PAGE FOLDER. Run by script/pictures.

import { createRequire } from "node:module";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const require = createRequire(join(process.env.PAGE_MODULES, "node_modules", "/"));
const puppeteer = require("puppeteer-core");
const [source, folder] = process.argv.slice(2);
const browser = await puppeteer.launch({ executablePath: process.env.CHROMIUM, args: ["--no-sandbox"] });

for (const scheme of ["light", "dark"]) {
  const page = await browser.newPage();
  await page.setViewport({ width: 1200, height: 780 });
  await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
  await page.goto(pathToFileURL(source).href);
  const named = (name) => page.locator(`::-p-aria([name="${name}"])`);
  await named("Materials").click();
  await named("Maximum powder uses").fill("15");
  await named("Scan speed").fill("1150");
  await named("Hatch distance").fill("0.3");
  await named("Laser power").fill("310");
  await named("Stripe width").click();
  await page.screenshot({ path: join(folder, `layout_page_${scheme}.png`) });
  await page.close();
}
await browser.close();
