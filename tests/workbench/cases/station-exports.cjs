// The exports of a station: each is byte for byte what mxtool writes.
"use strict";

const { equal, equalBytes, soon } = require("../harness/expected.cjs");
const { StationView } = require("../harness/station-view.cjs");
const fs = require("fs");

const file = "stations/pump-house.yaml";
const call = [file, "--folder", "."];

// The call of mxtool that writes the same file.
const calls = {
  "channels-text": ["station", "channels", file],
  "channels-csv": ["station", "channels", file, "--format", "csv"],
  "channels-json": ["station", "channels", file, "--format", "json"],
  "channels-st": ["station", "channels", file, "--format", "st"],
  "channels-plcopen": ["station", "channels", file, "--format", "plcopen"],
  "channels-c": ["station", "channels", file, "--format", "c"],
  picture: ["station", "channels", file, "--picture", "-"],
  "parameters-raw-text": ["station", "config", file],
  "parameters-raw-json": ["station", "config", file, "--format", "json"],
  "parameters-modbus-text": ["station", "config", file, "--fieldbus", "modbus"],
  "parameters-modbus-json": ["station", "config", file, "--fieldbus", "modbus", "--format", "json"],
  "station-text": ["station", "show", file],
  "station-json": ["station", "show", file, "--format", "json"],
  "check-json": ["station", "check", file, "--format", "json"],
  datasheet: ["datasheet", file, "-o", "-"],
};

async function open(t) {
  const server = await t.sharedServer(...call);
  const page = await t.open(server);
  const view = await StationView.on(page);
  const { exports } = JSON.parse((await server.call("start")).body);
  return { page, view, formats: exports.station, downloads: await t.downloads(page) };
}

/** The files that mxtool writes for the modules: by fieldbus, and name in the folder. */
async function imagesOf(t, fieldbus) {
  const workplace = t.workplace();
  await workplace.output("station", "config", file, "--fieldbus", fieldbus, "--directory", "images");
  const names = fs.readdirSync(workplace.path("images")).sort();
  return new Map(names.map((name) => [name, fs.readFileSync(workplace.path(`images/${name}`))]));
}

module.exports = {
  async "each of the station is what mxtool writes"(t) {
    const { page, formats, downloads } = await open(t);
    const images = { raw: await imagesOf(t, "raw"), modbus: await imagesOf(t, "modbus") };
    const ofStation = formats.filter((one) => !one.isOfModule);
    const lists = { "images-raw-json": images.raw, "images-modbus-json": images.modbus };
    equal("forms with nothing to compare with", ofStation.map((one) => one.format).filter((one) => !(one in calls) && !(one in lists)), []);
    await page.click("button", "Export …");
    for (const { format, label } of ofStation) {
      await page.click("button", label, "dialog");
      const { bytes } = await downloads.next();
      const expected = format in lists ? lists[format].get("station.json") : await t.shared.output(...calls[format]);
      equalBytes(format, bytes, expected);
    }
  },

  async "the parameter images are the files of mxtool station config --directory"(t) {
    const { page, view, formats, downloads } = await open(t);
    const images = { "image-raw": await imagesOf(t, "raw"), "image-modbus": await imagesOf(t, "modbus") };
    equal("forms of a module", formats.filter((one) => one.isOfModule).map((one) => one.format), Object.keys(images));
    for (const [position, name] of [[1, "MX0116"], [2, "Levels"], [3, "Pumps"]]) {
      await view.choose(name);
      await page.click("button", "Export …");
      for (const [format, files] of Object.entries(images)) {
        await page.click("button", formats.find((one) => one.format === format).label, "dialog");
        equalBytes(`${format} of ${name}`, (await downloads.next()).bytes, files.get(`${position}-${name}.bin`));
      }
      await page.press("Escape");
      await soon("dialog", () => page.dialog(), "");
    }
  },

  async "declarations have the chosen addresses and scope"(t) {
    const { page, formats, downloads } = await open(t);
    await page.click("button", "Export …");
    await page.choose("Addresses of words", "index", "dialog");
    await page.choose("Variables", "program", "dialog");
    await page.click("button", formats.find((one) => one.format === "channels-st").label, "dialog");
    const expected = await t.shared.run("station", "channels", file, "--format", "st", "--address", "index", "--scope", "program");
    equalBytes("declarations", (await downloads.next()).bytes, expected.out);
  },

  async "CSV has the chosen separator and byte order mark"(t) {
    const { page, formats, downloads } = await open(t);
    await page.click("button", "Export …");
    await page.choose("Separator", "semicolon", "dialog");
    await page.choose("Byte order mark", "yes", "dialog");
    await page.click("button", formats.find((one) => one.format === "channels-csv").label, "dialog");
    const expected = await t.shared.output("station", "channels", file, "--format", "csv", "--separator", "semicolon", "--bom");
    equalBytes("CSV", (await downloads.next()).bytes, expected);
  },

  async "they are those of the draft, not of the file"(t) {
    const { page, view, downloads } = await open(t);
    await view.choose("Levels");
    await page.press("Delete");
    await soon("entries", () => view.names(), ["MX0116", "flow meter", "Pumps"]);
    await page.click("button", "Export …");
    await page.click("button", "Row, JSON", "dialog");
    const { modules } = JSON.parse((await downloads.next()).bytes);
    equal("modules", modules.map((one) => one.name), ["MX0116", "Pumps"]);
  },
};
