// Draws the small pictures of docs/element.md:
//
//     node build.mjs && node test/gallery/thumbnails.mjs    -> docs/thumbnails/*.svg, *.png
import { spawnSync } from "node:child_process";
import { mkdirSync, readFileSync, readdirSync, rmSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { fileURLToPath } from "node:url";

import { contentsOf, styleOf } from "./data.mjs";
import { shootThumbnails } from "./live_thumbnails.mjs";
import { liveThumbnails, thumbnails } from "./thumbnail_cases.mjs";

const root = fileURLToPath(new URL("../../../../", import.meta.url));
const out = join(root, "docs/thumbnails");
// Drawn as large as charts are at least, and shown at this part of it.
const [width, height] = [240, 150];
const scale = 0.56;

const requests = thumbnails.map(({ table, style, patterns = false }) => JSON.stringify({
  settings: { XmlStyle: styleOf(style), XmlContents: contentsOf(table) },
  width, height, patterns, prefix: "t", languages: ["en"],
}));

const { stdout, stderr } = spawnSync(process.execPath, [join(root, "build/web/plexoras-render.mjs")],
  { input: requests.join("\n"), encoding: "utf8", maxBuffer: 1 << 26 });
const answers = stdout.trim().split("\n").map((line) => JSON.parse(line));
if (answers.length < requests.length) throw new Error(`only ${answers.length} pictures were drawn\n${stderr}`);

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

mkdirSync(out, { recursive: true });
for (const old of readdirSync(out)) rmSync(join(out, old));
let bytes = 0;
let largest = ["", 0];
thumbnails.forEach(({ name }, at) => {
  const { svg, error } = answers[at];
  if (!svg) throw new Error(`${name}: ${error}`);
  const text = `${small(svg)}\n`;
  bytes += text.length;
  if (text.length > largest[1]) largest = [name, text.length];
  writeFileSync(join(out, `${name}.svg`), text);
});

await shootThumbnails(liveThumbnails,
  { script: join(root, "build/web/plexoras-diagram.js"), out, width, height, scale });
console.log(`${thumbnails.length} drawings, ${(bytes / 1024).toFixed(0)} KiB, the largest ${largest[0]} with `
  + `${(largest[1] / 1024).toFixed(1)} KiB; ${liveThumbnails.length} pictures of the browser: docs/thumbnails`);
