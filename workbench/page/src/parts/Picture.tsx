/** An image of a module as the server gives it: a data address, shown as an image only. */
export function Picture({ source, label, className = "picture" }: {
  source: string | null;
  label: string;
  className?: string;
}) {
  if (source === null || !source.startsWith("data:image/")) {
    return <span class={`${className} none`} aria-hidden="true" />;
  }
  return <img class={className} src={source} alt={label} draggable={false} />;
}

/** Returns the address of an SVG text for an image. */
export function svgAddress(text: string): string {
  return `data:image/svg+xml;charset=utf-8,${encodeURIComponent(text)}`;
}
