// Finds texts for people in the sources of the page outside of src/texts.ts, where all of them are.
// Usage: node texts-in-one-place.cjs PROJECT
"use strict";

const fs = require("fs");
const path = require("path");

const project = process.argv[2] ?? "";
const sources = path.join(project, "workbench/page/src");
const compiler = path.join(project, "build/page/node_modules/typescript");
if (!fs.existsSync(compiler)) {
  console.log(`${compiler} is missing: scripts/setup installs it`);
  process.exit(1);
}
const ts = require(compiler);

const readAttributes = new Set(["aria-label", "aria-description", "aria-roledescription", "aria-valuetext", "alt", "title", "placeholder", "label"]);
const announcing = new Set(["announce", "say"]);

function filesBelow(folder) {
  return fs.readdirSync(folder, { withFileTypes: true }).flatMap((one) => {
    const name = path.join(folder, one.name);
    return one.isDirectory() ? filesBelow(name) : /\.tsx?$/.test(name) ? [name] : [];
  });
}

// Signs such as "▾" need no translation.
function hasWords(text) {
  return /\p{L}/u.test(text);
}

// The constant texts that an expression can have as its value.
function literalsOf(node) {
  if (ts.isStringLiteralLike(node)) return [node.text];
  if (ts.isTemplateExpression(node)) return [node.head.text, ...node.templateSpans.map((one) => one.literal.text)];
  if (ts.isParenthesizedExpression(node) || ts.isJsxExpression(node)) return node.expression === undefined ? [] : literalsOf(node.expression);
  if (ts.isConditionalExpression(node)) return [...literalsOf(node.whenTrue), ...literalsOf(node.whenFalse)];
  const joins = ["PlusToken", "BarBarToken", "QuestionQuestionToken", "AmpersandAmpersandToken"].map((name) => ts.SyntaxKind[name]);
  if (ts.isBinaryExpression(node) && joins.includes(node.operatorToken.kind)) return [...literalsOf(node.left), ...literalsOf(node.right)];
  return [];
}

// The constant texts that a person sees or hears of a node itself.
function textsOf(node) {
  if (ts.isJsxText(node)) return [node.text];
  if (ts.isJsxExpression(node) && !ts.isJsxAttribute(node.parent)) return literalsOf(node);
  if (ts.isJsxAttribute(node) && readAttributes.has(node.name.getText()) && node.initializer !== undefined) return literalsOf(node.initializer);
  if (ts.isCallExpression(node) && announcing.has(node.expression.getText())) return node.arguments.flatMap(literalsOf);
  if (ts.isNewExpression(node) && /Error$|^Unreachable$/.test(node.expression.getText())) return (node.arguments ?? []).flatMap(literalsOf);
  return [];
}

function findIn(file) {
  const source = ts.createSourceFile(file, fs.readFileSync(file, "utf8"), ts.ScriptTarget.Latest, true, file.endsWith("x") ? ts.ScriptKind.TSX : ts.ScriptKind.TS);
  const found = [];
  const visit = (node) => {
    for (const text of textsOf(node).filter(hasWords)) {
      const { line } = source.getLineAndCharacterOfPosition(node.getStart());
      found.push(`${path.relative(project, file)}:${line + 1}: "${text.trim()}": expected it in workbench/page/src/texts.ts`);
    }
    ts.forEachChild(node, visit);
  };
  visit(source);
  return found;
}

const files = filesBelow(sources).filter((one) => path.relative(sources, one) !== "texts.ts");
const found = files.flatMap(findIn);
found.forEach((one) => console.log(one));
console.log(`${files.length} files, ${found.length} texts`);
process.exit(files.length > 0 && found.length === 0 ? 0 : 1);
