// Every text that the page shows, in English. Texts of modules, stations and findings come from the
// server and are not here.

function counted(count: number, one: string, many: string): string {
  return `${count} ${count === 1 ? one : many}`;
}

export const texts = {
  brand: "mxtool workbench",
  title: (view: string) => `${view} – mxtool workbench`,
  skip: "Skip to the content",
  close: "Close",
  dismiss: "Remove this message",
  loading: "Loading …",
  nothing: "–",

  messages: "Messages",

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
      unknown: "Target: not known",
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
      ["Arrow keys, Home, End", "In the row of a station: select another module"],
      ["Alt+Left, Alt+Right", "In the row: move the selected module or reserved place"],
      ["Delete", "In the row: remove the selected module or reserved place"],
    ] as readonly (readonly [string, string])[],
  },

  catalogue: {
    title: "Catalogue",
    words: "Search words",
    wordsHint: "Label, order code, channels, parameters, options",
    filesHint: "Names of files and labels",
    field: "Property",
    comparison: "Comparison",
    value: "Value",
    addCondition: "Add the condition",
    removeCondition: (text: string) => `Remove the condition ${text}`,
    count: (count: number) => counted(count, "module", "modules"),
    noCatalogue: "No catalogue: start mxtool serve with --db to search one.",
    firstSteps: {
      title: "No file is opened",
      restart: "What can be done now. For a command, end mxtool serve first: Ctrl+C in its terminal.",
      newStation: "Begin a new station",
      newStationThen: "here: add modules, then Download gives it as a file.",
      files: "Open a module of the folder: they are listed below.",
      folder: {
        what: "The folder has no mx files: name another one, such as",
        commands: ["mxtool serve --folder modules --open"],
      },
      open: {
        what: "Open a station or an mx file, such as",
        commands: ["mxtool serve station.yaml --open", "mxtool serve module.bin --open"],
      },
      catalogue: {
        what: "Search a catalogue: make one of a folder of mx files, then start with it:",
        commands: ["mxtool populate modules --db sqlite:devices.sqlite", "mxtool serve --db sqlite:devices.sqlite --open"],
      },
    },
    empty: "No module has all of this.",
    searching: "Searching …",
    results: "Modules of the catalogue",
    found: (count: number, hasMore: boolean) =>
      hasMore ? `The first ${count} modules; more match` : counted(count, "module", "modules"),
    more: "Show more modules",
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
    semicolons: (label: string) => `${label} with semicolons, for spreadsheets`,
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

  station: {
    emptyDraft: "station: New station\nmodules: []\n",
    fileName: "station.yaml",
    row: "Row of modules and reserved places",
    emptyRow: "The row is empty. Add a module or reserve bytes for one.",
    notPlanned: "The station has errors: see the findings.",
    parts: "Parts of the station",
    tabs: { entry: "Selected module", notes: "Its channels", images: "Process images", channels: "All channels" },
    findings: "Findings",
    firstError: (errors: number) => `${counted(errors, "error", "errors")}: go to ${errors === 1 ? "it" : "the first"}`,
    findingCount: (errors: number, others: number) =>
      errors + others === 0
        ? "Nothing is wrong"
        : `${counted(errors, "error", "errors")}, ${counted(others, "other finding", "other findings")}`,
    reserved: "Reserved",
    position: (position: number) => String(position),
    sides: { in: "in", out: "out" },
    images: {
      in: "Input image", out: "Output image", module: "Module",
      bytes: (first: number, last: number) => `${first}–${last}`,
    },
    range: (offset: number, size: number) =>
      `${size === 1 ? offset : `${offset}–${offset + size - 1}`} (${size} B)`,
    reasons: {
      padding: "Padding", reserved: "Reserved", status: "Status", "no channel": "No channel",
    } as Record<string, string>,
    withoutChannel: (bits: number) => `${counted(bits, "bit", "bits")} without a channel`,
    pinMark: "⚲",
    pinnedAt: (at: number) => `Pinned to byte ${at}`,
    refused: (reason: string) => `Not changed. ${reason}`,
    notMade: "Not changed: the server does not answer. Try again when it does.",
    moved: (name: string, place: number, count: number) => `${name} is at place ${place} of ${count}`,
    removed: (name: string) => `${name} was removed`,
    added: (label: string, name: string, place: number, count: number) =>
      `Added: ${label === name ? name : `${name} (${label})`}, place ${place} of ${count}`,
    pinned: (name: string) => `${name} is pinned`,
    unpinned: (name: string) => `${name} is no longer pinned`,
    pinnedAll: "Every module and reserved place is pinned to the addresses that it has",
    named: (name: string) => (name === "" ? "The own name was removed" : `The name is ${name}`),
    sized: "The size of the reserved place was changed",
    saved: "Saved",
    notSaved: (reason: string) => `Not saved. ${reason}`,
    notOpened: (reason: string) => `The file cannot be opened. ${reason}`,
    tookTheirs: "The file was loaded as it is on disk",

    tools: {
      label: "Actions",
      add: "Add module …",
      reserve: "Reserve bytes …",
      pinAll: "Pin all",
      exports: "Export …",
      save: "Save",
      download: "Download",
      entryOf: (name: string) => `Selected: ${name}`,
      entry: { before: "Move before", after: "Move after", pin: "Pin to addresses …", remove: "Remove" },
      keys: { before: "Alt+Left", after: "Alt+Right", pin: "", remove: "Delete" },
    },

    totals: {
      title: "Totals",
      modules: "Modules",
      ofMost: (count: number, most: number) => `${count} of at most ${most}`,
      input: "Input image",
      output: "Output image",
      image: (size: number, first: number, data: number) =>
        size === 0 ? "0 B" : `${size} B at ${first}${size === 1 ? "" : `–${first + size - 1}`}, ${data} B of modules`,
      parameters: "Parameters",
      parameterSize: (bytes: number, registers: number) => `${bytes} B, ${counted(registers, "register", "registers")}`,
      layout: "Layout",
      note: "Note",
      old: "of the last text without errors",
    },

    yaml: { title: "Station file", label: "Text of the station, YAML" },

    entry: {
      name: "Name",
      nameOf: (planned: string) => `Name, ${planned} if empty`,
      reserved: "These bytes are kept for a module.",
      stale: "The station has errors: these are the values of the last text without errors.",
    },

    notes: {
      title: "Channels of the module",
      noModule: "A reserved place has no channels.",
      columns: { name: "Channel", symbol: "Address", alias: "Alias", comment: "Comment" },
      aliasOf: (channel: string) => `Alias of ${channel}`,
      commentOf: (channel: string) => `Comment on ${channel}`,
    },

    channels: {
      title: "Channels of the station",
      filter: "Find a channel",
      count: (found: number, all: number) => `${found} of ${counted(all, "channel", "channels")}`,
      columns: {
        module: "Module", channel: "Channel", symbol: "Address", place: "Bytes", direction: "Direction",
        alias: "Alias", comment: "Comment",
      },
      bits: (byte: number, bit: number, bits: number) =>
        bits === 1 ? `${byte}, bit ${bit}` : `${byte}, bits ${bit}–${bit + bits - 1}`,
      bytes: (byte: number, bits: number) => (bits <= 8 ? String(byte) : `${byte}–${byte + Math.ceil(bits / 8) - 1}`),
    },

    add: {
      title: "Add a module",
      search: "Search words",
      place: "Place",
      before: (place: number, name: string) => `Before ${place}: ${name}`,
      atEnd: "At the end",
      name: "Name (may be empty)",
      choices: "Modules",
      files: "Files of the folder",
      catalogue: "Catalogue",
      explained: "Choose a module: it is added at the place, and the dialog closes.",
      none: "No module has all of these words.",
    },

    reserve: {
      title: "Reserve bytes for a module",
      input: "Input bytes",
      output: "Output bytes",
      name: "Name (may be empty)",
      add: "Reserve",
      noNumber: "A number of bytes is expected: decimal, or hexadecimal after 0x.",
    },

    pin: {
      title: (name: string) => `Pin ${name}`,
      explained: "A pinned module keeps its address when modules before it change. An empty field: not pinned.",
      input: "Byte of the input image",
      output: "Byte of the output image",
      notPinned: "not pinned",
      pin: "Pin",
      unpin: "Unpin",
    },

    exports: {
      title: "Export",
      ofStation: "The station",
      ofModule: (name: string) => `Module ${name}`,
      declarations: "For declarations",
      address: "Addresses of words",
      addresses: { byte: "of bytes", index: "by size", separate: "without addresses" },
      scope: "Variables",
      scopes: { global: "global", program: "of a program" },
      csv: "For CSV",
      separator: "Separator",
      separators: { comma: "comma", semicolon: "semicolon", tab: "tab" },
      byteOrderMark: "Byte order mark",
      byteOrderMarks: { no: "none", yes: "at the beginning, for spreadsheets" },
    },

    file: {
      changed: (file: string) => `Another program changed ${file}.`,
      hasOwn: "Your changes are not saved: nothing was overwritten.",
      load: "Load it",
      compare: "Compare and choose …",
      title: (file: string) => `${file} was changed by another program`,
      explained:
        "Your changes began from an older version of the file. Keep yours to replace the file as it is now, take "
        + "the file to continue with it (Undo returns to yours), or download yours and decide later.",
      legend: "−: only in yours; +: only in the file",
      differences: "Lines that differ",
      onlyMine: "Only in yours:",
      onlyTheirs: "Only in the file:",
      leftOut: "…",
      download: "Download mine",
      keepMine: "Keep mine: replace the file",
      takeTheirs: "Take the file",
    },
  },

  online: {
    title: "Online",
    target: "Target",
    connection: "Connection",
    connections: {
      none: "Not connected: nothing was asked for",
      connected: "Connected: the coupler answered the last request",
      failed: "Failed: the coupler did not answer the last request",
    },
    serverLost: "Not known: the server does not answer",
    traffic: "Traffic",
    parameters: "Parameters",
    plan: "Plan",
    verify: "Verify",
    steps: "Plan and Verify read the coupler and show what differs from the station; they write nothing. Apply writes a plan.",
    working: "The coupler is being used",
    works: { plan: "Reading for the plan …", verify: "Reading …", apply: "Writing, then reading back …" },
    progress: (done: number, total: number) => `${done} of ${total}`,
    planOf: (station: string) => `Plan: ${station}`,
    verified: (station: string) => `Compared: ${station}`,
    otherText: "This is of another text than the station has now.",
    notBegun: (reason: string) => `Not begun. ${reason}`,
    register: (address: number, hex: string) => `${address} (0x${hex})`,

    apply: {
      open: "Apply …",
      title: (target: string) => `Write to ${target}`,
      word: "yes",
      type: "Type \"yes\" to write",
      write: "Write",
      readBack: "Everything is read back afterwards.",
      noPlan: "Plan first: only what you have seen is written.",
      notSaved: "Save the station, then plan again.",
      otherPlan: "The plan is not that of the saved file: plan again.",
      otherModules: "The coupler has other modules.",
      nothing: "Nothing to write.",
    },

    differences: {
      title: "Parameters that differ",
      modules: "Modules",
      columns: {
        position: "Position", name: "Name", module: "Module", coupler: "On the coupler", parameter: "Parameter",
        register: "Register", planned: "Planned",
      },
      identification: (kind: string, found: string) =>
        kind === "same" ? "identified" : kind === "other" ? `another module: ${found}` : "not possible to identify",
      notRead: "not read",
      same: "Every parameter is as the station states.",
      count: (count: number) => `${counted(count, "parameter differs", "parameters differ")}`,
      writes: (parameters: number, registers: number, requests: number) =>
        `To write: ${counted(parameters, "parameter", "parameters")} in ${counted(registers, "register", "registers")}, `
        + `${counted(requests, "request", "requests")}`,
      withoutRegisters: (module: string, names: string) => `${module}: in no register: ${names}`,
    },

    report: {
      title: "Report",
      download: "Download the report",
      formats: { html: "HTML, for people", text: "Text", json: "JSON" },
      columns: {
        module: "Module", parameter: "Parameter", register: "Register", before: "Before", planned: "Planned",
        now: "Now", outcome: "Outcome",
      },
      until: "to",
    },

    live: {
      title: "Live values",
      names: "Modules and channels",
      all: "All channels",
      add: "Choose",
      remove: (name: string) => `Remove ${name}`,
      start: "Read live values",
      restart: "Read these",
      stop: "Stop",
      columns: { module: "Module", channel: "Channel", symbol: "Address", value: "Value", hex: "Hexadecimal" },
      changed: "changed: ",
      noSample: "No sample yet",
      at: "Sample of",
      stale: "Not live: nothing newer came for more than 3 seconds.",
      ofOther:
        "Another page began to read these channels. There is one reading for all pages: Read these and Stop change it "
        + "there too.",
      otherText: "The channels are those of another text than the station has now: read again.",
    },
  },
} as const;
