import type { DeviceParameter, Option } from "../api/types";
import { texts } from "../texts";

const mostSegments = 4;
const mostLetters = 32;

/** How a parameter is set on the page. */
export type Kind = "switch" | "segments" | "choice" | "number";

function isOffOn(options: readonly Option[]): boolean {
  const words = options.map((one) => one.text.toLowerCase());
  return texts.parameters.switchWords.some((pair) => words.length === 2 && pair.every((word) => words.includes(word)));
}

function ofOptions(options: readonly Option[]): Kind {
  if (isOffOn(options)) return "switch";
  const letters = options.reduce((sum, one) => sum + one.text.length, 0);
  return options.length >= 2 && options.length <= mostSegments && letters <= mostLetters ? "segments" : "choice";
}

export function kindOf(parameter: DeviceParameter): Kind {
  if (parameter.has_option_list) return ofOptions(parameter.options);
  const isBit = parameter.min_digits === "0" && parameter.max_digits === "1" && parameter.unit === "";
  return isBit && parameter.place.data_size === 1 ? "switch" : "number";
}

/** A state that a parameter can be set to, and the word that selects it. */
export interface Choice {
  word: string;
  text: string;
  value: string;
}

/** Returns what the parameter can be set to; nothing for a number. A switch has off first. */
export function choicesOf(parameter: DeviceParameter): readonly Choice[] {
  if (!parameter.has_option_list) {
    const { off, on } = texts.parameters;
    return [{ word: "0", text: off, value: "0" }, { word: "1", text: on, value: "1" }];
  }
  const all = parameter.options;
  const choices = all.map(({ callText, text, value }) => ({ word: callText, text, value }));
  const isReversed = isOffOn(all) && texts.parameters.switchWords.some((pair) => pair[1] === all[0]?.text.toLowerCase());
  return isReversed ? choices.reverse() : choices;
}
