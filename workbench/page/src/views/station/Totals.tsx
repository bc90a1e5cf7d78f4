import type { StationPlan } from "../../api/stationTypes";
import { memo } from "../../parts/memo";
import { texts } from "../../texts";

const words = texts.station.totals;

/** The sums of the station, with the addresses of both images. */
export const Totals = memo(function Totals({ plan, isOld }: { plan: StationPlan; isOld: boolean }) {
  const { totals, input, output, layout } = plan;
  const facts: readonly (readonly [string, string])[] = [
    [words.modules, words.ofMost(totals.modules, layout.most_modules)],
    [words.input, words.image(input.size, input.offset, totals.in)],
    [words.output, words.image(output.size, output.offset, totals.out)],
    [words.parameters, words.parameterSize(totals.parameters, totals.registers)],
    [words.layout, layout.name],
  ];
  return (
    <section aria-label={words.title}>
      <dl class="totals">
        {facts.map(([name, value]) => (
          <div key={name}><dt>{name}</dt><dd>{value}</dd></div>
        ))}
        {isOld && <div class="old"><dt>{words.note}</dt><dd>{words.old}</dd></div>}
      </dl>
    </section>
  );
});
