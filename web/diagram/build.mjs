// Builds what pages and the tool use: the script with the element, and the program that draws without a browser.
//
//     node build.mjs        -> build/web/plexoras-diagram.js, plexoras-render.mjs, plexoras-diagram.LICENSES.txt
import { existsSync, readdirSync, readFileSync, writeFileSync } from "node:fs";
import { dirname, join, relative } from "node:path";
import { fileURLToPath } from "node:url";
import { gzipSync } from "node:zlib";

import { build, transform } from "esbuild";

const here = dirname(fileURLToPath(import.meta.url));
const out = join(here, "../../build/web");
const { version } = JSON.parse(readFileSync(join(here, "package.json"), "utf8"));

// What a page's reader has to wait for.
const mostKiB = 256;

// What the drawing library brings along, but we never reach: tooltips are texts and no HTML, pictures are SVG and not
// painted on a canvas, and all words are ours.
const replacements = {
  "echarts/lib/component/tooltip/TooltipHTMLContent.js": 'export { default } from "./TooltipRichContent.js";',
  "echarts/lib/i18n/langZH.js": 'export { default } from "./langEN.js";',
  "zrender/lib/canvas/graphic.js":
    "const none = () => {};"
    + "export { none as brush, none as brushLoopFinalize, none as brushSingle, none as createCanvasPattern };",
};

const replaceUnused = {
  name: "replace-unused",
  setup({ onLoad, onEnd }) {
    const left = new Set(Object.keys(replacements));
    for (const [file, contents] of Object.entries(replacements)) {
      onLoad({ filter: new RegExp(`node_modules/${file.replaceAll(".", "\\.")}$`) }, () => {
        left.delete(file);
        return { contents };
      });
    }
    onEnd(() => {
      if (left.size > 0) return { errors: [{ text: `replaced, but not there any more: ${[...left].join(", ")}` }] };
    });
  },
};

// Style sheets stand in template literals, where the bundler leaves all blanks and comments.
const minifyStyles = {
  name: "minify-styles",
  setup({ onLoad }) {
    onLoad({ filter: /src\/.*_style\.ts$/ }, async ({ path }) => {
      const source = readFileSync(path, "utf8");
      const sheet = /(?<=^export const \w*Style = )`([^`$\\]*)`/gm;
      const minified = await Promise.all([...source.matchAll(sheet)]
        .map(async ([, css]) => JSON.stringify((await transform(css, { loader: "css", minify: true })).code.trim())));
      return { contents: source.replace(sheet, () => minified.shift()), loader: "ts" };
    });
  },
};

const common = {
  absWorkingDir: here,
  bundle: true,
  minify: true,
  legalComments: "none",
  // A page that does not say its encoding must not spoil the script's own words.
  charset: "ascii",
  define: { "process.env.NODE_ENV": '"production"', PLEXORAS_VERSION: JSON.stringify(version) },
  plugins: [replaceUnused, minifyStyles],
  logLevel: "warning",
  metafile: true,
};

const licences = "plexoras-diagram.LICENSES.txt";
const notice = "/* plexoras-diagram. Contains Apache ECharts (Apache License 2.0), ZRender (BSD 3-Clause) and tslib (0BSD):"
  + ` ${licences} */`;

/** What the packages say of their terms, whole: the licences ask that it goes along with the scripts. */
function licencesOf(packages) {
  return packages.map((name) => {
    const folder = join(here, "node_modules", name);
    const texts = ["", "licenses"].map((part) => join(folder, part)).filter(existsSync)
      .flatMap((path) => readdirSync(path, { withFileTypes: true })
        .filter((entry) => entry.isFile() && /^(licen[cs]e|notice|copy)/i.test(entry.name))
        .map((entry) => readFileSync(join(path, entry.name), "utf8").replaceAll("\r\n", "\n").trim()));
    if (texts.length === 0) throw new Error(`${name} has no licence in ${folder}`);
    const { version: itsVersion } = JSON.parse(readFileSync(join(folder, "package.json"), "utf8"));
    return `${"=".repeat(80)}\n${name} ${itsVersion}\n${"=".repeat(80)}\n\n${texts.join("\n\n")}\n`;
  }).join("\n");
}

const programs = [
  {
    file: "plexoras-diagram.js",
    limit: mostKiB,
    options: { entryPoints: ["src/index.ts"], format: "iife", target: "es2021", banner: { js: notice } },
  },
  {
    file: "plexoras-render.mjs",
    options: {
      entryPoints: ["src/render.ts"], format: "esm", platform: "node", target: "node18", banner: { js: notice },
    },
  },
];

const packages = new Set();
for (const { file, limit, options } of programs) {
  const outfile = join(out, file);
  const { metafile } = await build({ ...common, ...options, outfile });
  for (const input of Object.keys(metafile.inputs)) {
    const [, name] = /node_modules\/((?:@[^/]+\/)?[^/]+)\/(?!.*node_modules\/)/.exec(input) ?? [];
    if (name) packages.add(name);
  }
  const bytes = readFileSync(outfile);
  const kiB = (size) => (size / 1024).toFixed(1);
  const zipped = gzipSync(bytes, { level: 9 }).length;
  console.log(`${relative(join(here, "../.."), outfile)}: ${kiB(bytes.length)} KiB, ${kiB(zipped)} KiB gzip`);
  if (/[^\0-\x7f]/.test(bytes.toString())) {
    console.error(`${file} holds signs beyond ASCII: write those of regular expressions as \\u....`);
    process.exitCode = 1;
  }
  if (limit && zipped > limit * 1024) {
    console.error(`${file} is larger than ${limit} KiB gzip`);
    process.exitCode = 1;
  }
}
for (const name of packages) {
  if (!notice.toLowerCase().includes(name)) throw new Error(`the notice of the scripts does not name ${name}`);
}
writeFileSync(join(out, licences), `plexoras-diagram.js and plexoras-render.mjs contain parts of what follows.\n\n`
  + licencesOf([...packages].sort()));
