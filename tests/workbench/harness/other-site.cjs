// A server of somebody else on this computer: another origin, whose pages try to reach the page of mxtool serve.
"use strict";

const http = require("http");

class OtherSite {
  static start() {
    const site = new OtherSite();
    site.requests = [];
    site.page = "<!DOCTYPE html><link rel=icon href=data:,><title>Another site</title>";
    site.server = http.createServer((request, response) => {
      site.requests.push(request.url);
      response.setHeader("Content-Type", "text/html");
      response.end(site.page);
    });
    return new Promise((done) => site.server.listen(0, "127.0.0.1", () => {
      site.origin = `http://127.0.0.1:${site.server.address().port}`;
      done(site);
    }));
  }

  end() {
    this.server.closeAllConnections?.();
    this.server.close();
  }
}

module.exports = { OtherSite };
