import { createElement } from "preact";
import type { Component, FunctionComponent, VNode } from "preact";

function differs(before: object, after: object): boolean {
  const old = before as Record<string, unknown>;
  const now = after as Record<string, unknown>;
  const names = Object.keys(now);
  return names.length !== Object.keys(old).length || names.some((name) => !Object.is(old[name], now[name]));
}

/** Returns the component as one that renders again only if one of its properties is another one. */
export function memo<P extends object>(render: (props: P) => VNode | null): FunctionComponent<P> {
  return function Memo(this: Component<P>, props: P) {
    this.shouldComponentUpdate = (next) => differs(this.props, next);
    return createElement(render as FunctionComponent<P>, props);
  } as FunctionComponent<P>;
}
