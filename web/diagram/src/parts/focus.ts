// Where the keyboard is, across shadow borders.

/**
 * What has the focus: an element of this root, or else of the nearest root around it in which one has; down into roots
 * that are open. Null in a document where there is nothing to have it.
 */
export function focusHolder(root: ShadowRoot): Element | null {
  let scope: Document | ShadowRoot = root;
  while (!scope.activeElement && "host" in scope) scope = scope.host.getRootNode() as Document | ShadowRoot;
  let holder = scope.activeElement ?? null;
  while (holder?.shadowRoot?.activeElement) holder = holder.shadowRoot.activeElement;
  return holder;
}
