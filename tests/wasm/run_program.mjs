// SPDX-License-Identifier: Apache-2.0
// Runs a program that was built for WebAssembly: node run_program.mjs <program> <arguments...>
// It gets no folder, and so no file.
import { readFile } from "node:fs/promises";
import process from "node:process";
import { WASI } from "node:wasi";

const [program, ...rest] = process.argv.slice(2);
const wasi = new WASI({ version: "preview1", args: [program, ...rest], env: {}, returnOnExit: true });
const module = await WebAssembly.compile(await readFile(program));
const instance = await WebAssembly.instantiate(module, { wasi_snapshot_preview1: wasi.wasiImport });
process.exitCode = wasi.start(instance);
