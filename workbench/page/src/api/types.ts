// The objects of the API, as docs/workbench-api.md and docs/json-output.md describe them.

export interface Finding {
  severity: "error" | "warning" | "note";
  place: string;
  line: number | null;
  column: number | null;
  text: string;
  hint: string;
  accepted: string[];
  excerpt: string;
}

export interface Condition {
  name: string;
  isNumber: boolean;
  meaning: string;
  comparisons: string[];
}

/** How CSV is exported. */
export interface CsvChoice {
  separator?: "comma" | "semicolon" | "tab";
  byteOrderMark?: boolean;
}

export interface Export {
  format: string;
  label: string;
  isOfModule: boolean;
}

export interface Start {
  schema: { name: string; version: number };
  version: string;
  opened: "station" | "module" | "nothing";
  file: string | null;
  catalogue: string | null;
  target: string | null;
  conditions: Condition[];
  exports: { station: Export[]; module: Export[] };
}

export interface OpenedFile {
  name: string;
  text: string;
  version: string;
}

export interface FolderModule {
  reference: string;
  /** "": not known. */
  label: string;
}

export interface CatalogueModule {
  reference: string;
  label: string;
  family: string;
  inputSize: number;
  outputSize: number;
  parameterSize: number;
  fileSize: number;
  hasContent: boolean;
}

/** A part of the modules that match a search, the best matches first. */
export interface CataloguePage {
  modules: CatalogueModule[];
  /** Modules that match come after them. */
  hasMore: boolean;
  findings: Finding[];
}

export interface Option {
  text: string;
  /** What selects it as a value. */
  callText: string;
  value: string;
  raw: number;
  current: boolean;
}

/** A parameter with a value of it. */
interface ParameterValue {
  id: string;
  channel: number | null;
  name: string;
  value: string;
  digits: string;
  shown: string;
  unit: string;
}

export interface DeviceParameter extends ParameterValue {
  min: string;
  max: string;
  min_digits: string;
  max_digits: string;
  has_option_list: boolean;
  options: Option[];
  flag_bit_0: boolean;
  flag_bit_1: boolean;
  place: { byte_offset: number; data_size: number; bit_offset: number; bit_length: number };
}

export interface DeviceChannel {
  id: string;
  number: number;
  name: string;
  direction: string;
  symbol: string;
  size_letter: string;
  byte: number;
  bit_offset: number;
  bit_length: number;
}

/** mxtool.device */
export interface Device {
  label: string;
  device_type_id: string;
  properties: { id: string; name: string; value: string }[];
  channels: DeviceChannel[];
  parameters: DeviceParameter[];
}

export interface ConfigParameter extends ParameterValue {
  default: string;
  default_digits: string;
  default_shown: string;
  changed: boolean;
  byte: number;
  size: number;
  bit_offset: number;
  bit_length: number;
  hex: string;
}

/** mxtool.config */
export interface Config {
  label: string;
  device_type_id: string;
  fieldbus: "raw" | "modbus";
  size: number;
  bytes: string;
  image: string;
  parameters: ConfigParameter[];
  values: Record<string, string>;
}

export interface Configured {
  raw: Config;
  modbus: Config | null;
  noRegisters: Finding | null;
  callNames?: Record<string, string>;
}

export interface BitRun {
  byte: number;
  bit: number;
  bits: number;
}

export interface ImageArea {
  first_byte: number;
  size: number;
  free: BitRun[];
  overlapping: BitRun[];
}

/** Bits of an image, counted from byte 0. */
export interface Place {
  firstBit: number;
  bits: number;
}

export interface MappedChannel extends DeviceChannel, Place {
  area: string;
  mask: number;
}

/** mxtool.channels */
export interface Channels {
  input: ImageArea;
  output: ImageArea;
  channels: MappedChannel[];
  without_symbol: { id: string; number: number; name: string; direction: string }[];
}

/** What a module is, whatever its values are. */
export interface ModuleDescription {
  device: Device;
  channels: Channels;
  picture: string | null;
  processImage: string;
  sizes: { input: number; output: number; parameters: number };
  places: Place[];
}

export interface Module extends ModuleDescription {
  configured: Configured;
}

export interface NamedValue {
  name: string;
  value: string;
}

export interface ExplainGroup {
  id: string;
  name: string;
  offset: number;
  length: number;
  read: boolean;
}

export interface ExplainPart {
  offset: number;
  length: number;
  group: number | null;
  record: number | null;
  subject: string;
  field: string;
  value: number | string | null;
  bytes: string;
  meaning: string;
  read: boolean;
}

/** mxtool.explain */
export interface Explanation {
  file: string;
  size: number;
  groups: ExplainGroup[];
  parts: ExplainPart[];
  failure: string | null;
}
