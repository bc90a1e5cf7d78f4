// The exports of a configured module: each is byte for byte what mxtool writes.
"use strict";

const { equal, equalBytes, soon } = require("../harness/expected.cjs");
const { ModuleView, configured, parameterOf } = require("../harness/module-view.cjs");
const { Workplace } = require("../harness/workplace.cjs");

const file = "MX0304.bin";
const served = `modules/${file}`;
const sets = ["--set", "AI 1/Upper limit=9.9", "--set", "AI 2/Signal range=off"];

// The call of mxtool that writes the same file.
const calls = {
  "image-raw": ["config", file, ...sets, "--format", "binary"],
  "parameters-raw-text": ["config", file, ...sets, "--format", "text"],
  "parameters-raw-csv": ["config", file, ...sets, "--format", "csv"],
  "parameters-raw-json": ["config", file, ...sets, "--format", "json"],
  "image-modbus": ["config", file, ...sets, "--fieldbus", "modbus", "--format", "binary"],
  "parameters-modbus-text": ["config", file, ...sets, "--fieldbus", "modbus", "--format", "text"],
  "parameters-modbus-csv": ["config", file, ...sets, "--fieldbus", "modbus", "--format", "csv"],
  "parameters-modbus-json": ["config", file, ...sets, "--fieldbus", "modbus", "--format", "json"],
  values: ["config", file, ...sets, "--format", "values"],
  "channels-text": ["channels", file],
  "channels-csv": ["channels", file, "--format", "csv"],
  "channels-json": ["channels", file, "--format", "json"],
  "channels-st": ["channels", file, "--format", "st"],
  "channels-svg": ["channels", file, "--picture", "-"],
  explanation: ["explain", file, "--format", "html"],
  datasheet: ["datasheet", file, "-o", "-"],
  "device-text": ["show", file],
  "device-json": ["show", file, "--format", "json"],
};

// JSON contains the name of the file as it was given: the server has it without its folder.
function modulesOf(t) {
  return new Workplace(t.shared.path("modules"));
}

async function openChanged(t) {
  const page = await t.open(await t.sharedServer(served));
  const view = new ModuleView(page);
  const before = await configured(modulesOf(t), file, {});
  await soon("bytes of the defaults", () => view.bytes("raw"), before.raw.bytes);
  await view.set(parameterOf(before.raw, 0, "Upper limit").id, "9.9");
  await view.set(parameterOf(before.raw, 1, "Signal range").id, "off");
  await view.showsBytesOf(await configured(modulesOf(t), file, { "AI 1/Upper limit": "9.9", "AI 2/Signal range": "off" }));
  return page;
}

async function exportOf(page, downloads, label) {
  await page.click("button", "Export");
  await page.click("[role=menuitem]", label);
  return downloads.next();
}

module.exports = {
  async "each is what mxtool writes"(t) {
    const page = await openChanged(t);
    const downloads = await t.downloads(page);
    const { body } = await (await t.sharedServer(served)).call("start");
    const formats = JSON.parse(body).exports.module;
    const known = [...Object.keys(calls), "mx-file"];
    equal("forms with a call to compare with", formats.map((one) => one.format).filter((one) => !known.includes(one)), []);
    for (const { format, label } of formats) {
      const { bytes } = await exportOf(page, downloads, label);
      const expected = format === "mx-file" ? require("fs").readFileSync(t.shared.path(served)) : await modulesOf(t).output(...calls[format]);
      equalBytes(format, bytes, expected);
    }
  },

  async "CSV for spreadsheets has semicolons and a byte order mark"(t) {
    const page = await openChanged(t);
    const { bytes } = await exportOf(page, await t.downloads(page), "Parameters for Modbus, CSV with semicolons, for spreadsheets");
    equalBytes("CSV", bytes, await modulesOf(t).output(...calls["parameters-modbus-csv"], "--separator", "semicolon", "--bom"));
  },

  async "the file of a module has a name of its own"(t) {
    const page = await openChanged(t);
    const { name } = await exportOf(page, await t.downloads(page), "Parameter image, bytes");
    equal("name", name, "MX5a030304.bin");
  },
};
