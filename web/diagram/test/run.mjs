// Bundles tests and runs them: node test/run.mjs unit|browser [part of a file's name]
import { spawnSync } from "node:child_process";
import { readdirSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

import { build } from "esbuild";

const [kind = "unit", wanted = ""] = process.argv.slice(2);
const here = dirname(fileURLToPath(import.meta.url));
const project = join(here, "..");
const source = kind === "browser" ? join(here, "browser") : here;
const out = join(project, "../../build/web/tests", kind);

// These run as they are installed, not bundled.
const installed = {
  name: "installed",
  setup({ onResolve }) {
    const { resolve } = createRequire(import.meta.url);
    onResolve({ filter: /^(playwright-core|axe-core)$/ }, ({ path }) => ({
      path: pathToFileURL(resolve(path)).href,
      external: true,
    }));
  },
};

const tests = readdirSync(source).filter((file) => file.endsWith(".test.ts") && file.includes(wanted));
if (tests.length === 0) {
  console.error(`no ${kind} test is called *${wanted}*.test.ts`);
  process.exit(1);
}
await build({
  entryPoints: tests.map((file) => join(source, file)),
  outdir: out,
  outExtension: { ".js": ".mjs" },
  bundle: true,
  format: "esm",
  platform: "node",
  target: "node18",
  sourcemap: "inline",
  plugins: [installed],
  // Where tests find the repository, wherever their bundles stand.
  define: {
    "process.env.NODE_ENV": '"production"',
    PLEXORAS_ROOT: JSON.stringify(join(project, "../..")),
    PLEXORAS_VERSION: '"test"',
  },
  logLevel: "warning",
});
const files = tests.map((file) => join(out, file.replace(/\.ts$/, ".mjs")));
const run = (some) =>
  spawnSync(process.execPath, ["--enable-source-maps", "--test", ...some], { stdio: "inherit" }).status ?? 1;
// One browser at a time.
const runs = kind === "browser" ? files.map((file) => [file]) : [files];
process.exit(Math.max(...runs.map(run)));
