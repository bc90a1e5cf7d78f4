// axe and html-validate on what is shown.
"use strict";

const fs = require("fs");
const { packageFile, requirePackage } = require("./settings.cjs");
const { equal } = require("./expected.cjs");

const axe = fs.readFileSync(packageFile("axe-core/axe.min.js"), "utf8");

// Rules for the way in which a person writes HTML, which the text of a finished document cannot tell.
const ofWriting = {
  "attribute-boolean-style": "off", // the browser writes attributes without a value as ""
  "attribute-empty-style": "off",
  "void-style": "off",
  "no-trailing-whitespace": "off",
  "doctype-style": "off",
  "long-title": "off",
  "no-inline-style": "off", // sizes of the text field, set by script; the policy of the page allows these
  "prefer-native-element": "off", // role=grid on a table, role=switch on a checkbox: what they are
};

const { HtmlValidate, StaticConfigLoader } = requirePackage("html-validate");
const validator = new HtmlValidate(new StaticConfigLoader({ root: true, extends: ["html-validate:recommended"], rules: ofWriting }));

/** Expects that axe finds nothing on the page as it is now. */
async function hasNoViolation(page, where) {
  await page.evaluate(`window.axe === undefined && (() => { ${axe} })()`);
  const found = await page.evaluate(async () => {
    const { violations } = await window.axe.run(document, { resultTypes: ["violations"] });
    return violations.map(({ id, nodes }) => `${id}: ${nodes.slice(0, 4).map((one) => `${one.html.slice(0, 160)} ${one.any[0]?.message ?? ""}`).join("; ")}`);
  });
  equal(`axe on ${where}`, found, []);
}

/** Expects that html-validate accepts a document. */
async function isValid(html, where) {
  const { results } = await validator.validateString(html);
  const lines = html.split("\n");
  const found = results.flatMap((one) => one.messages).map((one) =>
    `${one.ruleId}: ${one.message} at ${(lines[one.line - 1] ?? "").slice(Math.max(0, one.column - 60), one.column + 100)}`);
  equal(`html-validate on ${where}`, found.slice(0, 12), []);
}

async function documentOf(page) {
  return `<!DOCTYPE html>\n${await page.evaluate(() => document.documentElement.outerHTML)}`;
}

module.exports = { hasNoViolation, isValid, documentOf };
