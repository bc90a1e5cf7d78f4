/** The row of headings of a table. */
export function Headings({ names }: { names: readonly string[] }) {
  return (
    <thead>
      <tr>{names.map((name) => <th key={name} scope="col">{name}</th>)}</tr>
    </thead>
  );
}
