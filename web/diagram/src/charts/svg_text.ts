// SVG as text, for pictures without a browser.

type Value = string | number;

/** An element with its attributes; `content` is markup already. */
export function tag(name: string, attributes: Readonly<Record<string, Value>>, content = ""): string {
  const texts = Object.entries(attributes).map(([key, value]) => ` ${key}="${escaped(String(value))}"`);
  return content === "" ? `<${name}${texts.join("")}/>` : `<${name}${texts.join("")}>${content}</${name}>`;
}

/** A text as markup says it. */
export function escaped(text: string): string {
  return text.replace(/[&<>"']/g, (sign) => `&#${sign.charCodeAt(0)};`);
}

/** A drawing of this size; `label` is read in its place. */
export function picture(width: number, height: number, label: string, content: string): string {
  return tag("svg", {
    xmlns: "http://www.w3.org/2000/svg",
    width,
    height,
    viewBox: `0 0 ${width} ${height}`,
    role: "img",
    ...(label === "" ? {} : { "aria-label": label }),
  }, content);
}

/**
 * A drawing of the library made fit to stand in a page: no style attributes, which a page's policy may refuse; its ids
 * begin with `prefix`, so that two drawings on a page have none alike.
 */
export function settled(svg: string, prefix: string): string {
  const ids = new Set(Array.from(svg.matchAll(/ id="([^"]*)"/g), ([, id]) => id ?? ""));
  const inTag = (tag: string): string => tag
    .replace(/ class="[^"]*"| ecmeta_[a-z_]+="[^"]*"/g, "")
    .replace(/ style="([^"]*)"/g, (_, style: string) => presentation(style))
    .replace(/( id="|href="#|url\(#)([^")]*)/g, (whole, key: string, id: string) =>
      (ids.has(id) ? `${key}${prefix}${id}` : whole));
  return svg.replace(/<style\b[^>]*>[\s\S]*?<\/style>/g, "").replace(/<[a-z](?:"[^"]*"|[^">])*>/gi, inTag);
}

// Of the properties that the library writes these are attributes as well.
const attributes = /^(font-(size|family|weight|style)|fill|stroke|opacity|pointer-events|paint-order|text-anchor)$/;

function presentation(style: string): string {
  // Quotes in a font's name are entities here, and end in a semicolon as declarations do.
  return style.replace(/&quot;|&#34;/g, "'").split(";").flatMap((declaration) => {
    const [property = "", ...value] = declaration.split(":");
    const text = value.join(":").trim();
    return attributes.test(property.trim()) && text !== "" ? [` ${property.trim()}="${text}"`] : [];
  }).join("");
}
