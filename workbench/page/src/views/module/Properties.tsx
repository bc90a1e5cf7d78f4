import type { Device } from "../../api/types";
import { texts } from "../../texts";

export function Properties({ properties }: { properties: Device["properties"] }) {
  return (
    <div class="box scrolls narrow">
      <table>
        <caption class="heard">{texts.properties.title}</caption>
        <thead>
          <tr><th scope="col">{texts.properties.name}</th><th scope="col">{texts.properties.value}</th></tr>
        </thead>
        <tbody>
          {properties.map(({ id, name, value }) => (
            <tr key={id}><th scope="row">{name}</th><td class="mono">{value === "" ? texts.nothing : value}</td></tr>
          ))}
        </tbody>
      </table>
    </div>
  );
}
