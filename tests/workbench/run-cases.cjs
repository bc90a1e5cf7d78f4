// Uses the page of mxtool serve in one Chromium, as cases/*.cjs say, and fails if one of them does.
// The addresses of all requests of the browser are looked at as well: none may leave this computer.
//
// Usage: node run-cases.cjs PROJECT MXTOOL EXAMPLE_MODULES OUTPUT_FOLDER [WORD...]
//
// With words only the cases whose names have all of them; with SHARE=2/3 in the environment only each third, from the
// second. A failed case leaves a picture in OUTPUT_FOLDER.

"use strict";

const fs = require("fs");
const os = require("os");
const path = require("path");
const settings = require("./harness/settings.cjs");

const caseMs = Number(process.env.CASE_SECONDS ?? "90") * 1_000;

function casesOf(folder) {
  const all = [];
  for (const file of fs.readdirSync(folder).filter((one) => one.endsWith(".cjs")).sort()) {
    const found = require(path.join(folder, file));
    for (const [name, body] of Object.entries(found)) {
      all.push({ name: `${path.basename(file, ".cjs")}: ${name}`, body });
    }
  }
  const [share, shares] = (process.env.SHARE ?? "1/1").split("/").map(Number);
  return all.filter(({ name }) => settings.words.every((word) => name.includes(word)))
    .filter((_, index) => index % shares === share - 1);
}

function timeLimit(ms) {
  let timer;
  const over = new Promise((_, fail) => {
    timer = setTimeout(() => fail(new Error(`not done after ${ms / 1000} s`)), ms);
  });
  return { over, end: () => clearTimeout(timer) };
}

function fileName(name) {
  return name.replace(/[^a-z0-9]+/gi, "-").toLowerCase();
}

async function showPages(one) {
  for (const [index, page] of one.pages.entries()) {
    const file = path.join(settings.output, `${fileName(one.name)}-${index + 1}.png`);
    const shown = await page.text().catch((error) => `not readable: ${error.message}`);
    console.log(`  page ${index + 1} shows:\n${shown.replace(/^/gm, "  | ").slice(0, 6_000)}`);
    await page.page.screenshot({ path: file }).then(() => console.log(`  picture: ${file}`)).catch(() => undefined);
  }
}

async function runCase(run, { name, body }) {
  const { Case } = require("./harness/case.cjs");
  const one = new Case(run, name);
  const began = Date.now();
  const limit = timeLimit(caseMs);
  let failure = null;
  try {
    await Promise.race([body(one), limit.over]);
    if (one.watch.faults.length > 0) {
      failure = new Error(`the browser reports:\n  ${one.watch.faults.join("\n  ")}`);
    }
  } catch (error) {
    failure = error;
  }
  limit.end();
  const seconds = ((Date.now() - began) / 1000).toFixed(2);
  console.log(`${failure === null ? "ok    " : "FAILED"} ${seconds} s  ${name}`);
  if (failure !== null) {
    const place = (failure.stack ?? "").split("\n").find((line) => line.includes(`${path.sep}cases${path.sep}`)) ?? "";
    console.log(`  ${failure.message}\n${place}`);
    one.watch.faults.forEach((text) => console.log(`  the browser reports: ${text}`));
    await showPages(one);
  }
  await one.end();
  return failure === null;
}

async function runAll(folder) {
  const { prepare } = require("./harness/workplace.cjs");
  const browsers = require("./harness/browser.cjs");
  const run = { folder, template: path.join(folder, "template"), servers: new Map() };
  const [browser] = await Promise.all([browsers.start(folder), prepare(run.template)]);
  run.browser = browser;
  const all = casesOf(path.join(__dirname, "cases"));
  const failed = [];
  try {
    for (const one of all) {
      if (!await runCase(run, one)) {
        failed.push(one.name);
      }
    }
  } finally {
    await Promise.all([...run.servers.values()].map(async (server) => (await server).end("SIGKILL")));
    await browser.close();
  }
  const elsewhere = browsers.addressesElsewhere(folder);
  elsewhere.forEach((address) => console.log(`FAILED the browser asked for ${address}`));
  console.log(`${all.length} cases, ${failed.length} failed`);
  failed.forEach((name) => console.log(`  ${name}`));
  return all.length > 0 && failed.length === 0 && elsewhere.length === 0;
}

async function main() {
  const missing = settings.whatIsMissing();
  if (missing !== null) {
    console.log(missing);
    return false;
  }
  fs.mkdirSync(settings.output, { recursive: true });
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), "workbench-"));
  try {
    return await runAll(folder);
  } finally {
    fs.rmSync(folder, { recursive: true, force: true, maxRetries: 5 });
  }
}

main().then((isDone) => process.exit(isDone ? 0 : 1), (error) => {
  console.log(error);
  process.exit(1);
});
