// What the runner was called with: where the program, its inputs and the npm packages are.
"use strict";

const fs = require("fs");
const { createRequire } = require("module");
const path = require("path");

const [project, mxtool, examples, output, ...words] = process.argv.slice(2);
const packages = path.join(project ?? "", "build/workbench/node_modules");

function chromiumProgram() {
  const found = (process.env.PATH ?? "").split(":").map((folder) => path.join(folder, "chromium")).find(fs.existsSync);
  return process.env.CHROMIUM ?? found;
}

/** Says why the cases cannot be run, or null. */
function whatIsMissing() {
  if (output === undefined) {
    return "call: PROGRAM PROJECT MXTOOL EXAMPLE_MODULES OUTPUT_FOLDER [WORD...]";
  }
  if (!fs.existsSync(packages)) {
    return `${packages} is missing: scripts/setup installs it`;
  }
  return chromiumProgram() === undefined ? "there is no chromium in PATH: scripts/setup installs it" : null;
}

module.exports = {
  project, mxtool, examples, output, words,
  chromium: chromiumProgram(),
  whatIsMissing,
  requirePackage: (name) => createRequire(path.join(packages, "any.js"))(name),
  packageFile: (name) => path.join(packages, name),
};
