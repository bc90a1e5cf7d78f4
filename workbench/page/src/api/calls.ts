// One function for each call of the catalogue, of files and of modules.

import { callFile, callJson } from "./client";
import type { Download } from "./client";
import { combined } from "./combined";
import type {
  CatalogueModule, CataloguePage, Configured, CsvChoice, Explanation, Finding, FolderModule, Module, NamedValue, OpenedFile, Start,
} from "./types";

export function start(signal?: AbortSignal): Promise<Start> {
  return callJson("start", { signal });
}

export function openedFile(): Promise<OpenedFile> {
  return callJson("file");
}

export function fileVersion(): Promise<{ version: string }> {
  return callJson("file/version");
}

/** Saves the text unless the file has another version than `from`: then a Refusal of status 409. */
export function saveFile(text: string, from: string): Promise<{ version: string }> {
  return callJson("file", { method: "PUT", body: { text, from } });
}

export function folderModules(signal?: AbortSignal): Promise<{ modules: FolderModule[] }> {
  return callJson("modules", { signal });
}

/** The first `limit` modules that match, or those after the module `after` of the same list. */
export function searchCatalogue(
  words: string, conditions: readonly string[], limit: number, after: CatalogueModule | null, signal?: AbortSignal,
): Promise<CataloguePage> {
  const last = after === null ? null : { reference: after.reference, family: after.family };
  return callJson("catalogue", { body: { words, conditions, limit, after: last }, signal });
}

export async function module(reference: string, signal?: AbortSignal): Promise<Module> {
  return combined(await callJson<Module>("module", { body: { reference }, signal }));
}

/** `configured` is null if a value is refused. */
export function configuration(
  reference: string, values: NamedValue[],
): Promise<{ configured: Configured | null; findings: Finding[] }> {
  return callJson("module/configuration", { body: { reference, values } });
}

export function explanation(reference: string, signal?: AbortSignal): Promise<Explanation> {
  return callJson("module/explanation", { body: { reference }, signal });
}

export function exportModule(reference: string, values: NamedValue[], format: string, csv: CsvChoice): Promise<Download> {
  return callFile("module/export", { body: { reference, values, format, ...csv } });
}
