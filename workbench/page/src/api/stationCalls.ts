// One function for each call of the station.

import { callFile, callJson } from "./client";
import type { Download } from "./client";
import { combined } from "./combined";
import type { StationAnswer, StationExportChoice, StationQuestion } from "./stationTypes";

/** Reads and plans a text, after one edit if the question has one. */
export async function askStation(question: StationQuestion): Promise<StationAnswer> {
  const answer = await callJson<StationAnswer>("station", { body: question });
  return combined({ ...answer, module: answer.module && combined(answer.module) });
}

/** Returns the product images of the station's modules by their references. */
export function stationPictures(text: string): Promise<{ pictures: Record<string, string | null> }> {
  return callJson("station/pictures", { body: { text } });
}

export function exportStation(text: string, choice: StationExportChoice): Promise<Download> {
  return callFile("station/export", { body: { text, ...choice } });
}
