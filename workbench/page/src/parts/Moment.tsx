function two(number: number): string {
  return String(number).padStart(2, "0");
}

function dayOf(at: Date): string {
  return `${at.getFullYear()}-${two(at.getMonth() + 1)}-${two(at.getDate())}`;
}

function timeOf(at: Date): string {
  return `${two(at.getHours())}:${two(at.getMinutes())}:${two(at.getSeconds())}`;
}

/** A time of the server as the clock of the person has it, with the day unless it is today; as stated in its title. */
export function Moment({ time }: { time: string }) {
  const at = new Date(time);
  const day = dayOf(at);
  return <time dateTime={time} title={time}>{day === dayOf(new Date()) ? timeOf(at) : `${day} ${timeOf(at)}`}</time>;
}
