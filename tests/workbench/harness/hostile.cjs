// Texts and pictures that would do something if they were taken for more than texts and pictures.
"use strict";

/** Texts of a module or a station: markup, ends of quotes, marks that reverse text, control characters, long ones. */
const texts = [
  "<img src=x onerror=window.ran=1>",
  "<script>window.ran=1</script>",
  "\"><svg onload=window.ran=1>",
  "' autofocus onfocus=window.ran=1 x='",
  "</textarea><iframe srcdoc='<script>parent.ran=1</script>'>",
  "]]><!-- --&gt; &amp; &#60;b&#62;",
  "javascript:window.ran=1",
  "{{constructor.constructor('window.ran=1')()}} ${window.ran=1}",
  "\u202etxt.exe\u2066",
  "a\u2028b\u2029c",
  "\u001b[2J\u001b]0;title\u0007",
  "__proto__",
  "- item: {a: b} # & * ! | > % ` ?",
  "../../../etc/passwd",
  "W".repeat(255),
];

/** Those that an mx file can hold: its texts are Windows-1252. */
const ofModules = texts.filter((one) => [...one].every((character) => character.codePointAt(0) < 0x100));

/** A picture of a product that asks for addresses elsewhere and has scripts. */
function picture(elsewhere) {
  return `<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" width="40" height="60" onload="window.ran=1">
<script>window.ran = 1; top.ran = 1;</script>
<style>@import url("${elsewhere}/style.css"); rect { fill: url("${elsewhere}/fill.svg#x"); }</style>
<image href="${elsewhere}/image.png" width="9" height="9"/><use xlink:href="${elsewhere}/use.svg#x"/>
<a href="javascript:window.ran=1"><rect width="40" height="60"/></a>
<foreignObject width="40" height="60"><iframe xmlns="http://www.w3.org/1999/xhtml" src="${elsewhere}/frame"></iframe>
<img xmlns="http://www.w3.org/1999/xhtml" src="x" onerror="window.ran=1"/></foreignObject>
<animate attributeName="href" values="javascript:window.ran=1"/></svg>`;
}

/** The text form of a module with each of its texts as the name of a channel, a parameter, an option and a unit. */
function moduleText(label, svg) {
  return JSON.stringify({
    module: { type: 1, id: 0x5a010a01 },
    catalogue: {
      BrandLabelName: label, BrandVersion: "2.1", BrandId: "41", BrandSerialNumber: "0", ProductVersion: "01.00.00",
      BrandOrderCode: texts[1], BrandHwRevision: texts[2],
    },
    component: { Component: texts[3] },
    channels: ofModules.map((name) => ({ name, in: "SInt16" })),
    parameters: ofModules.flatMap((name, index) => [
      { name, channel: index, at: 2 * index, type: "UInt8", default: 1, options: "choices" },
      { name: `${name}#`, channel: index, at: 2 * index + 1, type: "UInt8", default: 1, range: [0, 9], conversion: "scaled" },
    ]),
    optionLists: { choices: { options: Object.fromEntries(ofModules.map((text, index) => [index, text])) } },
    conversions: { scaled: { factor: 1, unit: texts[0] } },
    image: { svg },
  }, null, 1);
}

/** A station with each text as a name, an alias, a comment and the name of a reserved place. */
function stationText(file) {
  return JSON.stringify({
    station: texts[0],
    modbus: { inputs: { address: 0 }, outputs: { address: 0x1000 }, parameters: { address: 0x4000 } },
    modules: [{ module: file, name: `${texts[0]}!` }, ...texts.flatMap((text, index) => [
      { module: "../modules/MX0108.yaml", name: text, channels: { 0: { alias: `a${index}${text}`, comment: text } } },
      { reserve: { in: 1, name: `r${index}${text}` } },
    ])],
  }, null, 1);
}

module.exports = { texts, ofModules, picture, moduleText, stationText };
