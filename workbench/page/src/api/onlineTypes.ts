// The objects of the coupler's calls, as docs/workbench-api.md and docs/json-output.md describe them.

import type { Finding } from "./types";

interface ComparedModule {
  position: number;
  name: string;
  module_id: string;
  identification: string;
  found_id: string | null;
  without_registers: string[];
}

export interface DifferingParameter {
  name: string;
  address: number;
  found: string;
  planned: string;
  found_registers: number[] | string;
  planned_registers: number[] | string;
}

export interface DifferenceModule extends ComparedModule {
  read: boolean;
  parameters: DifferingParameter[];
}

/** mxtool.coupler-difference */
export interface CouplerDifference {
  station: string;
  target: string;
  unit: number;
  identity: boolean;
  commit: { address: number; value: number; reads: string } | null;
  same: boolean;
  differing: number;
  writes: { parameters: number; registers: number; requests: number };
  modules: DifferenceModule[];
  notes: string[];
}

export interface WrittenParameter {
  name: string;
  address: number;
  before: string;
  planned: string;
  now: string | null;
  written: boolean;
  outcome: string;
}

export interface ReportModule extends ComparedModule {
  parameters: WrittenParameter[];
  written_again: number;
  sha256: string | null;
}

/** mxtool.apply-report */
export interface ApplyReport {
  done: boolean;
  verdict: string;
  reasons: string[];
  station: string;
  station_sha256: string;
  target: string;
  unit: number;
  started: string;
  finished: string;
  committed: boolean | null;
  read_back: boolean;
  sha256: string | null;
  modules: ReportModule[];
  findings: { severity: Finding["severity"]; place: string; text: string; hint: string }[];
  notes: string[];
}

export interface OnlinePlan {
  id: number;
  version: string;
  isPlan: boolean;
  question: string;
  identityErrors: Finding[];
  difference: CouplerDifference;
}

export interface LiveValue {
  name: string;
  module: number;
  moduleName: string;
  channel: string;
  alias: string;
  symbol: string;
  text: string;
  hex: string;
  isChanged: boolean;
}

export interface OnlineLive {
  /** Of the watch, as the call that began it answered. */
  id: number;
  version: string;
  time: string;
  values: LiveValue[];
  findings: Finding[];
}

export type WorkKind = "plan" | "verify" | "apply";

export interface OnlineState {
  sequence: number;
  target: string;
  connection: "none" | "connected" | "failed";
  work: { kind: WorkKind; done: number; total: number } | null;
  findings: Finding[];
  plan: OnlinePlan | null;
  report: ApplyReport | null;
  live: OnlineLive | null;
  traffic: string;
}

export type OnlineAnswer = ({ isNew: true } & OnlineState) | { isNew: false; sequence: number };
