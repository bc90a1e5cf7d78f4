import { Store } from "./store";

export type Theme = "system" | "light" | "dark";

const key = "mxtool-workbench-theme";

function stored(): Theme {
  const text = localStorage.getItem(key);
  return text === "light" || text === "dark" ? text : "system";
}

function apply(chosen: Theme): void {
  if (chosen === "system") delete document.documentElement.dataset["theme"];
  else document.documentElement.dataset["theme"] = chosen;
}

export const theme = new Store<Theme>(stored());
apply(theme.get());

export function setTheme(chosen: Theme): void {
  localStorage.setItem(key, chosen);
  apply(chosen);
  theme.set(chosen);
}
