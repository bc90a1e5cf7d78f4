// Chromium without a sandbox of its own and without any use of a network.
"use strict";

const fs = require("fs");
const path = require("path");
const { chromium, requirePackage } = require("./settings.cjs");

const switches = [
  "--no-sandbox",
  "--disable-gpu",
  "--disable-dev-shm-usage",
  "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
  "--no-proxy-server",
  "--disable-sync",
  "--disable-domain-reliability",
  "--no-pings",
  // The lists below an address bar, which no window of these tests shows: as pages they would take half of the time.
  "--disable-features=WebUIOmniboxPopup,WebUIOmniboxAimPopup,AutofillServerCommunication,Translate,OptimizationHints,MediaRouter",
  "--font-render-hinting=none",
];

/** Starts Chromium with its home and profile in `folder`. */
function start(folder) {
  fs.mkdirSync(path.join(folder, "home"), { recursive: true });
  const puppeteer = requirePackage("puppeteer-core");
  return puppeteer.launch({
    executablePath: chromium,
    args: [...switches, `--log-net-log=${path.join(folder, "net-log.json")}`],
    userDataDir: path.join(folder, "profile"),
    env: { ...process.env, HOME: path.join(folder, "home"), XDG_CONFIG_HOME: path.join(folder, "home"), LANG: "C.UTF-8" },
    defaultViewport: { width: 1280, height: 900 },
    protocolTimeout: 60_000,
  });
}

/** Returns whether an address is that of this computer, or is none of a network. */
function isHere(address) {
  return /^(data|blob|about|chrome|devtools|chrome-extension):/.test(address) || /^http:\/\/127\.0\.0\.1:\d+\//.test(address);
}

// What Chromium does of its own, such as to ask for the time, has no page as its origin.
const ofChromiumItself = "not an origin";

/** Returns the addresses elsewhere that pages asked for, as Chromium itself recorded while it ran. */
function addressesElsewhere(folder) {
  const { events } = JSON.parse(fs.readFileSync(path.join(folder, "net-log.json"), "utf8"));
  const ofPages = events.filter(({ params }) => params?.url !== undefined && (params.initiator ?? ofChromiumItself) !== ofChromiumItself);
  return [...new Set(ofPages.map(({ params }) => params.url).filter((one) => !isHere(one)))];
}

module.exports = { start, isHere, addressesElsewhere };
