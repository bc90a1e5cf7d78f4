// A folder of a person: modules and stations of the examples, a catalogue.
"use strict";

const fs = require("fs");
const path = require("path");
const programs = require("./programs.cjs");
const { examples, project } = require("./settings.cjs");

/** Makes the folder that is copied for each case that writes. */
async function prepare(folder) {
  fs.cpSync(path.join(project, "examples/modules"), path.join(folder, "modules"), { recursive: true });
  fs.cpSync(path.join(project, "examples/stations"), path.join(folder, "stations"), { recursive: true });
  for (const name of fs.readdirSync(examples).filter((one) => one.endsWith(".bin"))) {
    fs.copyFileSync(path.join(examples, name), path.join(folder, "modules", name));
  }
  // One of the examples is broken on purpose, which exit code 1 tells.
  await programs.run(folder, ["populate", "modules", "--db", "sqlite:catalogue.sqlite"]);
}

class Workplace {
  constructor(folder) {
    this.folder = folder;
  }

  path(name) {
    return path.join(this.folder, name);
  }

  read(name) {
    return fs.readFileSync(this.path(name), "utf8");
  }

  write(name, text) {
    fs.mkdirSync(path.dirname(this.path(name)), { recursive: true });
    fs.writeFileSync(this.path(name), text);
  }

  /** Runs a verb of mxtool here; its output as bytes. */
  output(...call) {
    return programs.output(this.folder, ...call);
  }

  /** Runs a verb of mxtool here; its output as an object. */
  json(...call) {
    return programs.json(this.folder, ...call);
  }

  /** Runs a verb that may fail. */
  run(...call) {
    return programs.run(this.folder, call);
  }

  /** What a verb prints about a text of a station, which need not be a file. */
  async ofText(text, ...call) {
    const name = `stations/.asked-${process.pid}.yaml`;
    this.write(name, text);
    try {
      return await this.json(...call, name);
    } finally {
      fs.rmSync(this.path(name));
    }
  }
}

module.exports = { prepare, Workplace };
