// Draws the small pictures of docs/element.md:
//
//     node build.mjs && node test/gallery/thumbnails.mjs    -> docs/thumbnails/*.svg, *.png
import { mkdirSync, mkdtempSync, renameSync, rmSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

import { drawThumbnails, height, scale, width } from "./drawn_thumbnails.mjs";
import { shootThumbnails } from "./live_thumbnails.mjs";
import { liveThumbnails } from "./thumbnail_cases.mjs";

const root = fileURLToPath(new URL("../../../../", import.meta.url));
const out = join(root, "docs/thumbnails");
mkdirSync(out, { recursive: true });
// The old ones stay until all new ones are there.
const fresh = mkdtempSync(join(dirname(out), ".thumbnails-"));
try {
  const drawings = [...drawThumbnails(root)];
  for (const [name, text] of drawings) writeFileSync(join(fresh, name), text);
  await shootThumbnails(liveThumbnails,
    { script: join(root, "build/web/plexoras-diagram.js"), out: fresh, width, height, scale });
  rmSync(out, { recursive: true });
  renameSync(fresh, out);

  const size = (text) => `${(text.length / 1024).toFixed(1)} KiB`;
  const [largest, text] = drawings.reduce((most, one) => (one[1].length > most[1].length ? one : most));
  console.log(`${drawings.length} drawings, the largest ${largest} with ${size(text)}; `
    + `${liveThumbnails.length} pictures of the browser: docs/thumbnails`);
} finally {
  rmSync(fresh, { recursive: true, force: true });
}
