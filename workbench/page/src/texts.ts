// Every text that the page shows, in English. Texts of modules, stations and findings come from the
// server and are not here.

function counted(count: number, one: string, many: string): string {
  return `${count} ${count === 1 ? one : many}`;
}

export const texts = {
  brand: "mxtool workbench",
  skip: "Skip to the content",
  close: "Close",
  dismiss: "Remove this message",
  loading: "Loading …",
  nothing: "–",

  nav: {
    label: "Views",
    openedModule: "Module",
    catalogue: "Catalogue",
    station: "Station",
    online: "Online",
  },

  header: {
    noFile: "No file opened",
    save: { saved: "Saved", changed: "Not saved", saving: "Saving …", conflict: "Changed on disk" },
    target: {
      none: "No target",
      idle: "Target: not connected",
      working: "Target: working",
      connected: "Target: connected",
      failed: "Target: failed",
    },
    theme: "Colours",
    themes: { system: "System colours", light: "Light", dark: "Dark" },
  },

  connection: {
    short: { connected: "Server connected", lost: "Server lost", "earlier-run": "Earlier run" },
    lost: "The server does not answer",
    lostLong:
      "The server does not answer. What you changed is still on this page; it tries again each second. "
      + "If mxtool serve has ended, start it again and open the address that it prints.",
    earlierRun: "This address belongs to an earlier run of mxtool serve",
    earlierRunLong:
      "This address belongs to an earlier run of mxtool serve, or has no token. Open the address that the "
      + "running program printed as its first line.",
    retry: "Try now",
    failed: (status: number) => `The server answered ${status} without a reason`,
  },

  findings: {
    severity: { error: "Error", warning: "Warning", note: "Note" },
    accepted: "Accepted:",
  },

  downloads: {
    done: (name: string) => `${name} is in the downloads of the browser`,
    failed: (reason: string) => `The export failed: ${reason}`,
  },

  help: {
    open: "Keys and shortcuts",
    title: "Keys",
    keys: "Keys",
    what: "What they do",
    all: [
      ["?", "Show this list"],
      ["Ctrl+K", "Go to the search field of the view"],
      ["Ctrl+Z", "Take back the last change"],
      ["Ctrl+Shift+Z or Ctrl+Y", "Make the change again that was taken back"],
      ["Enter", "In a field: set the value. On a byte: go to its field. In a list: open"],
      ["Escape", "In a field: return to the value before. In a dialog or menu: close"],
      ["Arrow keys, Home, End, Page Up, Page Down", "In a table of bytes or a list: move"],
      ["Ctrl+S", "Save the station"],
    ] as readonly (readonly [string, string])[],
  },

  catalogue: {
    title: "Catalogue",
    words: "Search words",
    wordsHint: "Label, order code, names of channels and parameters",
    field: "Property",
    comparison: "Comparison",
    value: "Value",
    addCondition: "Add the condition",
    removeCondition: (text: string) => `Remove the condition ${text}`,
    count: (count: number) => counted(count, "module", "modules"),
    noCatalogue: "No catalogue: start mxtool serve with --db to search one.",
    empty: "No module has all of this.",
    searching: "Searching …",
    results: "Modules of the catalogue",
    folder: "Files in the folder",
    columns: {
      label: "Module",
      reference: "Identifier",
      family: "Family",
      input: "Input",
      output: "Output",
      parameters: "Parameters",
      file: "mx file",
      actions: "Actions",
    },
    bytes: (count: number) => `${count} B`,
    noContent: "The catalogue has no mx file of this module",
    add: "Add to station",
    addOf: (label: string) => `Add to station: ${label}`,
    unnamed: "No label",
  },

  module: {
    failed: "The module could not be opened.",
    tabs: "Parts of the module",
    tab: {
      parameters: "Parameters",
      image: "Process image",
      channels: "Channels",
      properties: "Properties",
      file: "Bytes of the file",
    },
    pictureOf: (label: string) => `Picture of ${label}`,
    facts: (input: number, output: number, parameters: number) =>
      `Input ${input} B · output ${output} B · parameters ${parameters} B`,
    changed: (count: number) => counted(count, "value changed", "values changed"),
    undo: "Undo",
    redo: "Redo",
    resetAll: "Reset all",
    exports: "Export",
    undone: "Change taken back",
    redone: "Change made again",
    reset: "All values are the defaults",
    nothingToUndo: "Nothing to take back",
    nothingToRedo: "Nothing to make again",
  },

  parameters: {
    ofModule: "Module",
    channel: (number: number, name: string) => (name === "" ? `Channel ${number}` : `${number} ${name}`),
    none: "This module has no parameters.",
    filter: "Find a parameter or channel",
    onlyChanged: "Only changed values",
    openAll: "Open all groups",
    closeAll: "Close all groups",
    noneFound: "No parameter has all of this.",
    count: (count: number) => counted(count, "parameter", "parameters"),
    changed: (count: number) => `${count} changed`,
    refused: (count: number) => `${count} refused`,
    range: (least: string, most: string, unit: string) =>
      unit === "" ? `${least} to ${most}` : `${least} to ${most} ${unit}`,
    bytesAt: (first: number, last: number) => (first === last ? `byte ${first}` : `bytes ${first}–${last}`),
    bitsAt: (byte: number, first: number, last: number) =>
      first === last ? `byte ${byte}, bit ${first}` : `byte ${byte}, bits ${first}–${last}`,
    default: (shown: string) => `default ${shown}`,
    toDefault: "Reset",
    toDefaultOf: (name: string, shown: string) => `Reset ${name} to ${shown}`,
    refusedAnnounced: (name: string, reason: string) => `${name}: refused. ${reason}`,
    setAnnounced: (name: string, shown: string) => `${name}: ${shown}`,
    off: "Off",
    on: "On",
    // Pairs of options that are shown as a switch, in lower case: off, on.
    switchWords: [["off", "on"], ["no", "yes"], ["disabled", "enabled"], ["inactive", "active"]] as
      readonly (readonly [string, string])[],
    notAnOption: (shown: string) => `${shown} (no option)`,
  },

  bytes: {
    parameterImage: "Parameter image",
    registers: "Modbus registers",
    size: (count: number) => counted(count, "byte", "bytes"),
    registerCount: (count: number) => counted(count, "register", "registers"),
    empty: "No bytes",
    offset: "Byte",
    register: "Register",
    cell: (index: number, hex: string) => `Byte ${index}, ${hex} hexadecimal, ${parseInt(hex, 16)} decimal`,
    registerCell: (register: number, isHigh: boolean, hex: string) =>
      `Register ${register}, ${isHigh ? "high" : "low"} byte, ${hex} hexadecimal, ${parseInt(hex, 16)} decimal`,
    binary: (hex: string) => parseInt(hex, 16).toString(2).padStart(8, "0"),
    nothingHere: "No parameter",
    help: "Touch a byte or a field: each shows the other.",
    stale: (count: number) =>
      `These are the bytes of the last accepted values: ${counted(count, "value is", "values are")} refused.`,
    showRefused: "Show the refused value",
    title: "Bytes",
  },

  image: {
    in: "Inputs",
    out: "Outputs",
    noData: "No data",
    from: (size: number, first: number) => `${counted(size, "byte", "bytes")} from byte ${first}`,
    byte: "Byte",
    bit: (number: number) => `Bit ${number}`,
    free: "no channel",
    overlap: (names: string) => `Held by several: ${names}`,
    asDrawn: "As mxtool draws it",
    asTable: "As a table with links",
    drawn: (label: string) => `Process image of ${label}`,
  },

  channels: {
    title: "Channels",
    number: "Channel",
    name: "Name",
    direction: "Direction",
    symbol: "Symbol",
    byte: "Byte",
    bit: "Bit",
    bits: "Bits",
    directions: { in: "in", out: "out" } as Record<string, string>,
    none: "This module has no channels.",
  },

  properties: {
    title: "Properties",
    name: "Property",
    value: "Value",
  },

  file: {
    groups: "Groups",
    group: "Group",
    name: "Name",
    offset: "Offset",
    length: "Length",
    unknown: "not known",
    failure: "The groups end early",
    bytesOf: (name: string) => `Bytes of ${name}`,
    page: (first: number, last: number, size: number) => `Bytes ${first} to ${last} of ${size}`,
    before: "Bytes before",
    after: "Bytes after",
    part: (field: string, offset: number, length: number) =>
      `${field}, ${counted(length, "byte", "bytes")} at ${offset}`,
    notRead: "not read",
    help: "Touch a byte to see what it means.",
    outside: "Outside of the groups",
  },
} as const;
