import { reportFile } from "../../api/onlineCalls";
import type { ApplyReport, ReportModule } from "../../api/onlineTypes";
import { Findings } from "../../parts/Findings";
import { Headings } from "../../parts/Headings";
import { Menu } from "../../parts/Menu";
import { Moment } from "../../parts/Moment";
import { download } from "../../parts/download";
import { texts } from "../../texts";
import { registerText } from "./registers";

const words = texts.online.report;

function Written({ modules }: { modules: readonly ReportModule[] }) {
  const { columns } = words;
  return (
    <table class="stacked box">
      <caption class="heard">{words.title}</caption>
      <Headings names={[columns.module, columns.parameter, columns.register, columns.before, columns.planned, columns.now, columns.outcome]} />
      <tbody>
        {modules.flatMap((module) => module.parameters.map((one) => (
          <tr key={`${module.position} ${one.address} ${one.name}`} class={one.outcome === "verified" ? "" : "wrong"}>
            <td data-label={columns.module}>{module.name}</td>
            <th scope="row" data-label={columns.parameter}>{one.name}</th>
            <td class="mono" data-label={columns.register}>{registerText(one.address)}</td>
            <td data-label={columns.before}>{one.before}</td>
            <td data-label={columns.planned}>{one.planned}</td>
            <td data-label={columns.now}>{one.now ?? texts.nothing}</td>
            <td data-label={columns.outcome}>{one.outcome}</td>
          </tr>
        )))}
      </tbody>
    </table>
  );
}

const formats = Object.keys(words.formats) as (keyof typeof words.formats)[];

/** What was written, the verdict first. */
export function Report({ report }: { report: ApplyReport }) {
  const isSome = report.modules.some((one) => one.parameters.length > 0);
  const findings = report.findings.map((one) => ({ ...one, line: null, column: null, accepted: [], excerpt: "" }));
  return (
    <section class="report" aria-labelledby="report-title">
      <div class="station-head">
        <h2 id="report-title">{words.title}</h2>
        <Menu
          label={words.download}
          items={formats.map((key) => ({ key, label: words.formats[key] }))}
          onChoose={(key) => void download(reportFile(key as keyof typeof words.formats))}
        />
      </div>
      <p class={`verdict ${report.done ? "good" : "bad"}`} role="status">{report.verdict}</p>
      <ul class="facts">{report.reasons.map((reason) => <li key={reason}>{reason}</li>)}</ul>
      <Findings findings={findings} />
      {isSome && <Written modules={report.modules} />}
      <ul class="facts">{report.notes.map((note) => <li key={note}>{note}</li>)}</ul>
      <p class="faint"><Moment time={report.started} /> {words.until} <Moment time={report.finished} /> · <span class="mono">{report.station_sha256}</span></p>
    </section>
  );
}
