import type { Start } from "../api/types";
import type { AddModule } from "./catalogue/Results";
export function ModuleView({ reference }: { reference: string; start: Start; onAdd: AddModule | undefined }) {
  return <h1 tabIndex={-1}>{reference}</h1>;
}
