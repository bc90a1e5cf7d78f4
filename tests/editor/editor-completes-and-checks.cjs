// Runs the YAML language server, as editors do, to complete and check texts of modules and stations with their
// JSON Schemas.
// Fails if a valid text is underlined, an invalid one is not, or a word is not offered.
//
// Usage: node editor-completes-and-checks.cjs PROJECT MXTOOL SERVER

"use strict";

const { execFileSync, spawn } = require("child_process");
const fs = require("fs");
const path = require("path");
const { pathToFileURL } = require("url");

const [project, mxtool, serverProgram] = process.argv.slice(2);
const schemaOf = (kind) => pathToFileURL(path.join(project, `share/parser-mx/mx-${kind}.schema.json`)).href;
const failures = [];

if (!fs.existsSync(serverProgram)) {
  console.log(`${serverProgram} is missing: scripts/setup installs it`);
  process.exit(1);
}

// A language server over its standard streams: messages with a header that states their length.
class Server {
  constructor() {
    this.process = spawn(process.execPath, [serverProgram, "--stdio"],
      { stdio: ["pipe", "pipe", "inherit"] });
    this.pending = new Map();
    this.diagnostics = new Map();
    this.number = 0;
    this.bytes = Buffer.alloc(0);
    this.process.on("exit", (code) => {
      console.log(`The language server ended with ${code}`);
      process.exit(1);
    });
    this.process.stdout.on("data", (bytes) => this.take(bytes));
  }

  take(bytes) {
    this.bytes = Buffer.concat([this.bytes, bytes]);
    for (;;) {
      const end = this.bytes.indexOf("\r\n\r\n");
      const header = end < 0 ? null : /Content-Length: (\d+)/.exec(this.bytes.toString("ascii", 0, end));
      const size = header === null ? 0 : Number(header[1]);
      if (header === null || this.bytes.length < end + 4 + size) {
        return;
      }
      this.handle(JSON.parse(this.bytes.toString("utf8", end + 4, end + 4 + size)));
      this.bytes = this.bytes.subarray(end + 4 + size);
    }
  }

  handle(message) {
    if (message.method === "textDocument/publishDiagnostics") {
      const waiting = this.diagnostics.get(message.params.uri);
      if (waiting) {
        waiting(message.params.diagnostics);
      }
    } else if (message.method === "workspace/configuration") {
      this.send({ id: message.id, result: message.params.items.map(() => ({})) });
    } else if (message.method && message.id !== undefined) {
      this.send({ id: message.id, result: null });
    } else if (this.pending.has(message.id)) {
      this.pending.get(message.id)(message.result);
    }
  }

  send(message) {
    const body = Buffer.from(JSON.stringify({ jsonrpc: "2.0", ...message }));
    this.process.stdin.write(`Content-Length: ${body.length}\r\n\r\n`);
    this.process.stdin.write(body);
  }

  request(method, params) {
    const id = ++this.number;
    this.send({ id, method, params });
    return new Promise((resolve) => this.pending.set(id, resolve));
  }

  // Opens a text and returns what is underlined in it.
  open(uri, text) {
    return new Promise((resolve) => {
      this.diagnostics.set(uri, resolve);
      this.send({ method: "textDocument/didOpen",
        params: { textDocument: { uri, languageId: "yaml", version: 1, text } } });
    });
  }
}

let texts = 0;
const uriOfNext = () => `file:///text-${++texts}.yaml`;
let schema = schemaOf("module");
const withSchema = (text) => `# yaml-language-server: $schema=${schema}\n${text}`;
const shown = (found) => found.map((one) => `${one.range.start.line}: ${one.message}`).join("; ");

async function expectSound(server, name, text) {
  const found = await server.open(uriOfNext(), withSchema(text));
  if (found.length > 0) {
    failures.push(`${name} is underlined: ${shown(found)}`);
  }
}

// `marker` is what is underlined.
async function expectUnderlined(server, text, marker, message) {
  const source = withSchema(text);
  const found = await server.open(uriOfNext(), source);
  const lines = source.split("\n");
  const isMeant = (one) => one.message.includes(message) &&
    lines[one.range.start.line].slice(one.range.start.character).startsWith(marker);
  if (!found.some(isMeant)) {
    failures.push(`"${marker}" is not underlined with "${message}" but: ${shown(found)}`);
  }
}

// `text` holds | where the cursor is.
async function expectOffered(server, text, words) {
  const source = withSchema(text);
  const before = source.slice(0, source.indexOf("|")).split("\n");
  const uri = uriOfNext();
  await server.open(uri, source.replace("|", ""));
  const result = await server.request("textDocument/completion", { textDocument: { uri },
    position: { line: before.length - 1, character: before[before.length - 1].length } });
  const offered = (result.items || result).map((item) => item.label);
  for (const word of words) {
    if (!offered.includes(word)) {
      failures.push(`${JSON.stringify(text)}: ${word} is not offered, but ${offered}`);
    }
  }
}

async function checkStations(server) {
  schema = schemaOf("station");
  const stations = path.join(project, "examples/stations");
  for (const file of ["pump-house.yaml", "own-layout.yaml"]) {
    const text = fs.readFileSync(path.join(stations, file), "utf8");
    await expectSound(server, file, text.split("\n").slice(1).join("\n"));
  }
  await expectUnderlined(server, "modules:\n  - module: a.bin\n    nmae: A\n", "nmae", "nmae");
  await expectOffered(server, "modules: []\nlayout: |", ["plain", "words", "bytes-first", "aligned"]);
  await expectOffered(server, "modules: []\nlayout:\n  |", ["align", "pad_module", "like"]);
  await expectOffered(server, "modules:\n  - module: a.bin\n    |", ["name", "parameters", "at"]);
  await expectUnderlined(server, "modbus: {parameters: {address: 65536}}\nmodules: []\n", "65536", "65535");
  await expectOffered(server, "modules: []\nmodbus:\n  |", ["parameters", "inputs", "commit", "bytes"]);
  await expectOffered(server, "modules: []\nmodbus:\n  bytes: |", ["big", "little"]);
  await expectOffered(server, "modules: []\nmodbus:\n  outputs:\n    write: |", ["6", "16", "22"]);
}

async function run() {
  const server = new Server();
  await server.request("initialize", { processId: process.pid, rootUri: null, capabilities: {
    textDocument: { publishDiagnostics: {}, completion: {} }, workspace: { configuration: true } } });
  server.send({ method: "initialized", params: {} });
  server.send({ method: "workspace/didChangeConfiguration", params: { settings: { yaml: {
    validate: true, completion: true, schemaStore: { enable: false } } } } });

  const skeleton = execFileSync(mxtool, ["new", "--channels", "3 AI, 2 DO"]).toString()
    .split("\n").slice(1).join("\n");
  await expectSound(server, "A skeleton", skeleton);
  const modules = path.join(project, "examples/modules");
  for (const file of fs.readdirSync(modules).filter((name) => name.endsWith(".yaml"))) {
    await expectSound(server, file, fs.readFileSync(path.join(modules, file), "utf8"));
  }

  const wrong = (from, to) => skeleton.replace(from, to);
  await expectUnderlined(server, wrong("channels:\n", "chanels:\n"), "chanels", "chanels");
  await expectUnderlined(server, wrong("in: SInt16", "in: SInt61"), "SInt61", "Value");
  await expectUnderlined(server, wrong("bits: 1,", "bits: 9,"), "9", "8");
  await expectUnderlined(server, wrong("repeat: 3,", "repeat: 300,"), "300", "256");
  await expectUnderlined(server, wrong(/^module:.*\n/m, ""), "", "module");
  await expectUnderlined(server, wrong(/^ *BrandId:.*\n/m, ""), "", "BrandId");

  await expectOffered(server, "mod|", ["module"]);
  await expectOffered(server, "module:\n  |", ["type", "id"]);
  await expectOffered(server, "module:\n  type: |", ["3"]);
  await expectOffered(server, "catalogue:\n  Brand|", ["BrandLabelName", "BrandHwRevision"]);
  await expectOffered(server, "channels:\n  - name: A\n    |", ["in", "out", "repeat", "each"]);
  await expectOffered(server, "channels:\n  - in: |", ["Bit", "SInt16"]);
  await expectOffered(server, "parameters:\n  - name: A\n    type: |", ["UInt8", "Byte"]);

  await checkStations(server);

  server.process.removeAllListeners("exit");
  await server.request("shutdown", null);
  server.send({ method: "exit" });
}

run().then(() => {
  failures.forEach((failure) => console.log(failure));
  process.exit(failures.length > 0 ? 1 : 0);
});
