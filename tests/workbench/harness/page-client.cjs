// The requests of a page without a browser: many of these cost less than one page of Chromium.
"use strict";

const http = require("http");

// As many as a browser opens to one server.
const mostConnections = 6;

class PageClient {
  constructor(server) {
    this.server = server;
    this.agent = new http.Agent({ keepAlive: true, maxSockets: mostConnections });
  }

  /** Gives status and body; the name of the failure in place of a status if there was no answer. */
  ask(method, path, content) {
    const body = content === undefined ? undefined : JSON.stringify(content);
    const headers = { Authorization: `Bearer ${this.server.token}` };
    if (body !== undefined) {
      headers["Content-Type"] = "application/json";
      headers["Content-Length"] = Buffer.byteLength(body);
    }
    return new Promise((done) => {
      const options = { host: "127.0.0.1", port: this.server.port, agent: this.agent, method, path, headers };
      const request = http.request(options, (response) => {
        const parts = [];
        response.on("data", (part) => parts.push(part));
        response.on("end", () => done({ status: response.statusCode, body: Buffer.concat(parts).toString() }));
        response.on("error", (error) => done({ status: error.code, body: "" }));
      });
      request.on("error", (error) => done({ status: error.code, body: "" }));
      request.end(body);
    });
  }

  end() {
    this.agent.destroy();
  }
}

module.exports = { PageClient };
