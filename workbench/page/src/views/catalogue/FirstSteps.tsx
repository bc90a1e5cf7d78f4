import { address } from "../../state/route";
import { texts } from "../../texts";

const words = texts.catalogue.firstSteps;

interface Step {
  what: string;
  commands: readonly string[];
}

function Commands({ what, commands }: Step) {
  return (
    <li>
      <p>{what}</p>
      {commands.map((command) => <pre key={command} class="command"><code>{command}</code></pre>)}
    </li>
  );
}

interface FirstStepsProps {
  hasCatalogue: boolean;
  /** Whether the folder has files that are modules. */
  hasFiles: boolean;
}

/** What a person can do when the server was started without a file. */
export function FirstSteps({ hasCatalogue, hasFiles }: FirstStepsProps) {
  return (
    <section class="first-steps box" aria-labelledby="first-steps-title">
      <h2 id="first-steps-title">{words.title}</h2>
      <p>{words.restart}</p>
      <ul>
        <li><p><a href={address({ view: "station" })}>{words.newStation}</a> {words.newStationThen}</p></li>
        {hasFiles ? <li><p>{words.files}</p></li> : <Commands {...words.folder} />}
        <Commands {...words.open} />
        {!hasCatalogue && <Commands {...words.catalogue} />}
      </ul>
    </section>
  );
}
