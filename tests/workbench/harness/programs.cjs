// mxtool as a process: a call of a verb, the server of the page, a simulated coupler.
"use strict";

const { execFile, spawn } = require("child_process");
const { mxtool } = require("./settings.cjs");

const callMs = 60_000;

const environment = { ...process.env, NO_COLOR: "1" };
delete environment.DEVICE_DATABASE_URL;

/** Runs mxtool to its end; gives exit code, output as bytes and errors as text. */
function run(folder, call, input) {
  return new Promise((done) => {
    const options = { cwd: folder, env: environment, encoding: "buffer", timeout: callMs, maxBuffer: 1 << 28 };
    const child = execFile(mxtool, call, options, (error, out, err) => {
      done({ code: error === null ? 0 : error.code, out, err: err.toString() });
    });
    // A program that reads nothing may have ended before.
    child.stdin.on("error", () => undefined);
    child.stdin.end(input ?? "");
  });
}

/** Runs mxtool, which must succeed; gives its output as bytes. */
async function output(folder, ...call) {
  const { code, out, err } = await run(folder, call);
  if (code !== 0) {
    throw new Error(`mxtool ${call.join(" ")}: exit ${code}\n${err}`);
  }
  return out;
}

async function json(folder, ...call) {
  return JSON.parse(await output(folder, ...call, "--format", "json"));
}

// A run that fails early leaves no process behind.
const running = new Set();
["SIGINT", "SIGTERM"].forEach((signal) => process.once(signal, () => process.exit(1)));
process.on("exit", () => running.forEach((one) => one.kill("SIGKILL")));

/** A process of mxtool that runs until it is ended. */
class Running {
  constructor(folder, call) {
    this.errors = "";
    this.process = spawn(mxtool, call, { cwd: folder, env: environment, stdio: ["pipe", "pipe", "pipe"] });
    this.process.stdin.on("error", () => undefined);
    this.process.stderr.on("data", (bytes) => { this.errors += bytes; });
    this.ended = new Promise((done) => this.process.on("exit", (code, signal) => done({ code, signal })));
    running.add(this.process);
    this.ended.then(() => running.delete(this.process));
    this.lines = [];
    this.waiting = [];
    let rest = "";
    this.process.stdout.on("data", (bytes) => {
      const parts = (rest + bytes).split("\n");
      rest = parts.pop();
      parts.forEach((line) => this.take(line));
    });
    this.ended.then(() => this.waiting.forEach(({ fail }) => fail(new Error(`mxtool ended: ${this.errors}`))));
  }

  take(line) {
    const next = this.waiting.shift();
    if (next === undefined) {
      this.lines.push(line);
    } else {
      next.done(line);
    }
  }

  /** The next line of its output. */
  line() {
    if (this.lines.length > 0) {
      return Promise.resolve(this.lines.shift());
    }
    return new Promise((done, fail) => this.waiting.push({ done, fail }));
  }

  type(line) {
    this.process.stdin.write(`${line}\n`);
  }

  async end(signal = "SIGTERM") {
    this.process.kill(signal);
    return this.ended;
  }
}

/** The server of the page: `address` with the token, `origin` and `token` apart. */
class Server extends Running {
  static async start(folder, call, port = 0) {
    const server = new Server(folder, ["serve", "--port", String(port), ...call]);
    server.address = await server.line();
    [server.origin, server.token] = server.address.split("/#");
    return server;
  }

  get port() {
    return new URL(this.origin).port;
  }

  /** Calls the API without the page; gives status and body. */
  async call(path, options = {}) {
    const headers = { Authorization: `Bearer ${this.token}`, "Content-Type": "application/json" };
    const response = await fetch(`${this.origin}/api/v1/${path}`, { headers, ...options });
    return { status: response.status, body: await response.text() };
  }
}

/** A simulated coupler: `target` is its address. */
class Coupler extends Running {
  static async start(folder, call, port = 0) {
    const coupler = new Coupler(folder, ["simulate", "--listen", `tcp:127.0.0.1:${port}`, ...call]);
    coupler.target = (await coupler.line()).replace("listening at ", "");
    return coupler;
  }

  /** Sets a channel; returns after it was set. */
  async set(name, value) {
    this.type(`${name} = ${value}`);
    return this.shown(name);
  }

  async shown(name) {
    this.type(`show ${name}`);
    return this.line();
  }
}

module.exports = { run, output, json, Server, Coupler };
