// Decodes every example with the reader that Kaitai Struct compiles from docs/format/mx.ksy, and fails
// where it and `mxtool explain` do not say the same of every field.
//
// Usage: node examples-decode-alike.cjs PROJECT MXTOOL EXAMPLES   (NODE_PATH: the packages)

"use strict";

const { execFileSync } = require("child_process");
const fs = require("fs");
const path = require("path");
const vm = require("vm");

const [project, mxtool, examples] = process.argv.slice(2);

// Fields that mxtool explain shows as bytes between fields.
const fillings = new Set(["lineFeed", "equalsSign"]);
const explainedFillings = new Set(["line_end", "separator", "tail"]);

async function compileReader() {
  const { load } = require("js-yaml");
  const compiler = require("kaitai-struct-compiler");
  const source = load(fs.readFileSync(path.join(project, "docs/format/mx.ksy"), "utf8"));
  const files = await compiler.compile("javascript", source, null, true);
  const module = { exports: {} };
  // The generated code is a module like any other, but never a file.
  vm.runInThisContext(`(function (require, module, exports) {${files["Mx.js"]}\n})`)(
    require, module, module.exports);
  return module.exports.Mx || module.exports;
}

function isObject(value) {
  return value !== null && typeof value === "object" && value._debug !== undefined;
}

// The fields of a decoded object in file order: group, record, name, place and value.
function fieldsOf(object, at, found) {
  for (const [name, place] of Object.entries(object._debug)) {
    const value = object[name];
    if (place.start === undefined || fillings.has(name)) {
      continue;
    }
    if (place.arr !== undefined) {
      value.forEach((item, index) => {
        const inside = at.group === undefined ? { group: index }
          : { ...at, record: at.record === undefined && isObject(item) ? index : at.record };
        addField(name, item, place.arr[index], inside, found);
      });
    } else {
      addField(name, value, place, at, found);
    }
  }
}

function addField(name, value, place, at, found) {
  if (isObject(value)) {
    fieldsOf(value, at, found);
    return;
  }
  const isBytes = value instanceof Uint8Array;
  const length = isBytes ? value.length : place.end - place.start;
  if (length > 0) {
    const shown = isBytes ? Buffer.from(value).toString("hex") : value;
    found.push({ group: at.group, record: at.record ?? null, field: name.toLowerCase(),
                 offset: place.ioOffset + place.start, length, value: shown });
  }
}

// What mxtool says, in the same form; the bytes of the block are one field again.
// The compiler writes content_length as contentLength, so the names are compared without either.
function explained(report) {
  const fields = [];
  for (const part of report.parts) {
    if (explainedFillings.has(part.field)) {
      continue;
    }
    const hex = part.bytes.replaceAll(" ", "");
    const last = fields[fields.length - 1];
    if (part.field === "block" && last.field === "block") {
      last.length += part.length;
      last.hex += hex;
    } else {
      const field = part.field.replaceAll("_", "");
      fields.push({ group: part.group, record: part.record, field,
                    offset: part.offset, length: part.length, value: part.value, hex });
    }
  }
  return fields;
}

function sameValue(decoded, part) {
  if (typeof decoded === "string") {
    return decoded === part.hex;
  }
  if (part.field === "factor" || part.field === "offset") {
    return decoded === Buffer.from(part.hex, "hex").readFloatBE(0);
  }
  return decoded === part.value;
}

function difference(decoded, part) {
  for (const key of ["group", "record", "field", "offset", "length"]) {
    if (decoded === undefined || part === undefined || decoded[key] !== part[key]) {
      return key;
    }
  }
  return sameValue(decoded.value, part) ? null : "value";
}

function compareFile(Mx, file) {
  const { KaitaiStream } = { KaitaiStream: require("kaitai-struct/KaitaiStream") };
  const bytes = new Uint8Array(fs.readFileSync(file)); // a separate buffer, from offset 0
  const mx = new Mx(new (KaitaiStream.KaitaiStream || KaitaiStream)(bytes.buffer));
  mx._read();
  const decoded = [];
  fieldsOf(mx, {}, decoded);
  const report = JSON.parse(execFileSync(mxtool, ["explain", "--format", "json", file],
                                         {maxBuffer: 1 << 28}));
  const parts = explained(report);
  for (let i = 0; i < Math.max(decoded.length, parts.length); ++i) {
    const key = difference(decoded[i], parts[i]);
    if (key !== null) {
      throw new Error(`${file}: field ${i}: another ${key}\n  mx.ksy:  ` +
                      `${JSON.stringify(decoded[i])}\n  explain: ${JSON.stringify(parts[i])}`);
    }
  }
  return decoded.length;
}

async function main() {
  const Mx = await compileReader();
  let files = 0;
  let fields = 0;
  for (const name of fs.readdirSync(examples).sort()) {
    // MX9999.bin is cut off on purpose: its framing does not hold.
    if (name.endsWith(".bin") && name !== "MX9999.bin") {
      fields += compareFile(Mx, path.join(examples, name));
      ++files;
    }
  }
  if (files < 11 || fields < 3500) {
    throw new Error(`${files} files with ${fields} fields, expected more`);
  }
  console.log(`${files} files, ${fields} fields alike`);
}

main().catch((failure) => {
  console.error(failure.message);
  process.exit(1);
});
