// The folders of the source stand in an order: each uses those before it alone.
import assert from "node:assert/strict";
import { readdirSync, readFileSync } from "node:fs";
import { dirname, join, relative } from "node:path";
import { test } from "node:test";

// "" is the source folder itself: the element, and the programs.
const order = ["settings", "data", "format", "look", "charts", "host", "grid", "parts", ""];
const source = join(PLEXORAS_ROOT, "web/diagram/src");

test("imports go to folders that stand before", () => {
  const back: string[] = [];
  let seen = 0;
  for (const folder of order) {
    for (const file of readdirSync(join(source, folder)).filter((name) => name.endsWith(".ts"))) {
      const text = readFileSync(join(source, folder, file), "utf8");
      for (const [, path = ""] of text.matchAll(/ from "(\.[^"]*)"/g)) {
        const target = relative(source, join(source, folder, path));
        const to = dirname(target) === "." ? "" : dirname(target);
        seen += 1;
        if (!order.slice(0, order.indexOf(folder) + 1).includes(to)) back.push(`${join(folder, file)} -> ${target}`);
      }
    }
  }
  assert.deepEqual(back, []);
  assert(seen > 100, "imports have been found");
});
