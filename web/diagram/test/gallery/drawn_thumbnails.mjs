// Those small pictures of docs/element.md that need no browser.
import { spawnSync } from "node:child_process";
import { join } from "node:path";

import { contentsOf, styleOf } from "./data.mjs";
import { thumbnails } from "./thumbnail_cases.mjs";

// Drawn as large as charts are at least, and shown at this part of it.
export const [width, height] = [240, 150];
export const scale = 0.56;

/** Draws them with what is built in the repository at `root`: the SVG texts by the names of their files. */
export function drawThumbnails(root) {
  const requests = thumbnails.map(({ table, style, patterns = false }) => JSON.stringify({
    settings: { XmlStyle: styleOf(style), XmlContents: contentsOf(table) },
    width, height, patterns, prefix: "t", languages: ["en"],
  }));
  const { stdout, stderr } = spawnSync(process.execPath, [join(root, "build/web/plexoras-render.mjs")],
    { input: requests.join("\n"), encoding: "utf8", maxBuffer: 1 << 26 });
  const answers = stdout.trim().split("\n").map((line) => JSON.parse(line));
  if (answers.length < requests.length) throw new Error(`only ${answers.length} pictures were drawn\n${stderr}`);
  return new Map(thumbnails.map(({ name }, at) => {
    const { svg, error } = answers[at];
    if (!svg) throw new Error(`${name}: ${error}`);
    return [`${name}.svg`, `${small(svg)}\n`];
  }));
}

/** The picture in its small size, without what nobody sees: fractions of a tenth of a pixel, and fonts said twice. */
function small(svg) {
  const [head, family] = /^<svg[^>]*><g font-family="([^"]*)"/.exec(svg) ?? ["", ""];
  const size = `width="${width * scale}" height="${height * scale}"`;
  const rest = svg.slice(head.length)
    .replaceAll(` font-family="${family.replaceAll("&#39;", "'")}"`, "")
    .replaceAll(' pointer-events="visible"', "");
  return (head.replace(/width="\d+" height="\d+"/, size) + rest)
    .replace(/(?<=[\s",(a-z-])\d*\.\d{2,}(?=[\s",)a-z-])/gi, (number) => String(Number(Number(number).toFixed(1))));
}
