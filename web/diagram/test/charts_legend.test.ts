import assert from "node:assert/strict";
import { test } from "node:test";

import type { Scene } from "../src/charts/chart.ts";
import { buildOption } from "../src/charts/index.ts";
import { init } from "../src/charts/library.ts";
import type { Style } from "../src/settings/style.ts";
import { quarters, sceneOf } from "./charts_scene.ts";

/** The outlines of what is drawn in a colour, after a reader has hidden some of the legend's entries. */
function outlines(scene: Scene, colour: string, hidden: readonly string[] = []): string[] {
  const chart = init(null, null, { renderer: "svg", ssr: true, width: scene.width, height: scene.height });
  chart.setOption(buildOption(scene));
  for (const name of hidden) chart.dispatchAction({ type: "legendUnSelect", name });
  const svg = chart.renderToSVGString();
  chart.dispose();
  const shapes = Array.from(svg.matchAll(/<path d="([^"]+)"[^>]*>/g));
  return shapes.flatMap(([tag, outline]) => (tag.includes(`fill="${colour}"`) ? [outline ?? ""] : [])).sort();
}

test("what readers hide gives its room to the others", () => {
  const styles: [string, Partial<Style>][] = [
    ["beside each other", {}],
    ["stacked", { BarStyle: 1 }],
    ["boxes, stacked and rotated", { BarStyle: 1, RectStyle: 1, IsRotated: true }],
    ["buckets", { DiagramType: 0, BucketCount: 3, showColLabels: false }],
  ];
  for (const [name, style] of styles) {
    // The axis would follow the data: it has to be the same for both.
    const scene = sceneOf(quarters, { IsAbsolute: true, yScaleMax: 60, HasLegend: false, ...style });
    const [, south = ""] = scene.look.palette;
    const alone = outlines({ ...scene, series: 1 }, south);
    const left = outlines(scene, south, ["North"]);
    assert(alone.length > 0, name);
    assert.deepEqual(left, alone, name);
  }
});

test("slices close up where others are hidden", () => {
  const scene = sceneOf([["A"], ["x", 1], ["y", 1], ["z", 2]], { DiagramType: 4, HasLegend: false });
  const [, second = ""] = scene.look.palette;
  const [before] = outlines(scene, second);
  const [after] = outlines(scene, second, ["x", "z"]);
  assert(before !== undefined && after !== undefined && before !== after);
  assert.equal((after.match(/A/g) ?? []).length, 2, "the last one is a whole circle");
});
