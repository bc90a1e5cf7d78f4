import type { CouplerDifference, DifferenceModule, DifferingParameter } from "../../api/onlineTypes";
import { Headings } from "../../parts/Headings";
import { memo } from "../../parts/memo";
import { texts } from "../../texts";
import { registerText, registersText } from "./registers";

const words = texts.online.differences;

function Modules({ modules }: { modules: readonly DifferenceModule[] }) {
  const { columns } = words;
  return (
    <div class="box scrolls" tabIndex={0} role="region" aria-label={words.modules}>
      <table>
        <caption class="heard">{words.modules}</caption>
        <thead>
          <tr>
            <th scope="col" class="number">{columns.position}</th>
            <th scope="col">{columns.name}</th>
            <th scope="col">{columns.module}</th>
            <th scope="col">{columns.coupler}</th>
          </tr>
        </thead>
        <tbody>
          {modules.map((one) => (
            <tr key={one.position} class={one.identification === "other" ? "wrong" : ""}>
              <td class="number">{one.position}</td>
              <th scope="row">{one.name}</th>
              <td class="mono">{one.module_id}</td>
              <td>
                {words.identification(one.identification, one.found_id ?? "")}
                {!one.read && `, ${words.notRead}`}
              </td>
            </tr>
          ))}
        </tbody>
      </table>
    </div>
  );
}

function ParameterRow({ module, parameter }: { module: string; parameter: DifferingParameter }) {
  return (
    <tr>
      <td data-label={words.columns.module}>{module}</td>
      <th scope="row" data-label={words.columns.parameter}>{parameter.name}</th>
      <td class="mono" data-label={words.columns.register}>{registerText(parameter.address)}</td>
      <td data-label={words.columns.coupler}>
        {parameter.found} <span class="mono faint">{registersText(parameter.found_registers)}</span>
      </td>
      <td data-label={words.columns.planned}>
        <span aria-hidden="true">→ </span>{parameter.planned} <span class="mono faint">{registersText(parameter.planned_registers)}</span>
      </td>
    </tr>
  );
}

function Parameters({ modules }: { modules: readonly DifferenceModule[] }) {
  const { columns } = words;
  return (
    <table class="stacked differences box">
      <caption class="heard">{words.title}</caption>
      <Headings names={[columns.module, columns.parameter, columns.register, columns.coupler, columns.planned]} />
      <tbody>
        {modules.flatMap((module) => module.parameters.map((one) => (
          <ParameterRow key={`${module.position} ${one.address} ${one.name}`} module={module.name} parameter={one} />
        )))}
      </tbody>
    </table>
  );
}

function WithoutRegisters({ modules }: { modules: readonly DifferenceModule[] }) {
  const affected = modules.filter((one) => one.without_registers.length > 0);
  if (affected.length === 0) return null;
  return (
    <ul class="facts">
      {affected.map((one) => <li key={one.position}>{words.withoutRegisters(one.name, one.without_registers.join(", "))}</li>)}
    </ul>
  );
}

/** What differs between the coupler and the station, exactly, and what applying would write. */
export const Differences = memo(function Differences({ difference }: { difference: CouplerDifference }) {
  const { modules, writes, notes } = difference;
  return (
    <div class="difference">
      <Modules modules={modules} />
      {difference.differing > 0 && <Parameters modules={modules} />}
      <p><strong>{difference.same ? words.same : words.count(difference.differing)}</strong></p>
      <p>{words.writes(writes.parameters, writes.registers, writes.requests)}</p>
      <WithoutRegisters modules={modules} />
      <ul class="facts">{notes.map((note) => <li key={note}>{note}</li>)}</ul>
    </div>
  );
});
