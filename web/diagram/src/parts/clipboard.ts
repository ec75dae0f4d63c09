/** Copies a text; false if the browser will not. */
export async function copyText(text: string): Promise<boolean> {
  try {
    await navigator.clipboard.writeText(text);
    return true;
  } catch {
    return copyByEvent(text);
  }
}

/** The older way, for pages without a secure origin, where there is no `navigator.clipboard`. */
function copyByEvent(text: string): boolean {
  let copied = false;
  const fill = (event: ClipboardEvent): void => {
    event.preventDefault();
    event.stopImmediatePropagation();
    event.clipboardData?.setData("text/plain", text);
    copied = true;
  };
  document.addEventListener("copy", fill, true);
  try {
    document.execCommand("copy");
  } finally {
    document.removeEventListener("copy", fill, true);
  }
  return copied;
}
