// Each type of chart with what draws it.
import type { EChartsCoreOption } from "echarts/core";

import { areaChart, barAndLineChart, barChart, lineChart } from "./bars_and_lines.ts";
import { blankOption, isBlank } from "./cartesian.ts";
import type { BuildOption, Scene } from "./chart.ts";
import { histogram } from "./histogram.ts";
import { pieChart } from "./pie.ts";
import { radarChart } from "./radar.ts";
import { bubbleChart, scatterChart } from "./scatter.ts";

/** By `DiagramType`. Tables (9, 11) are no charts: they have no option. */
const builders: Readonly<Record<number, BuildOption>> = {
  0: histogram,
  1: lineChart,
  2: areaChart,
  3: scatterChart,
  4: pieChart,
  5: barChart,
  6: barAndLineChart,
  7: radarChart,
  8: bubbleChart,
  10: histogram,
};

/** The option of a chart; one of an unknown type is drawn as bars. */
export function buildOption(scene: Scene): EChartsCoreOption {
  return isBlank(scene) ? blankOption(scene) : (builders[scene.style.DiagramType] ?? barChart)(scene);
}
