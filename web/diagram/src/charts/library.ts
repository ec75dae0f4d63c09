// The parts of the drawing library that charts use, and no more: each costs readers kilobytes. Bars, pies and points
// have bodies, marks and cells that its own series know nothing of, and are drawn by hand.
import { CustomChart, LineChart } from "echarts/charts";
import {
  GridComponent, LegendComponent, LegendScrollComponent, TitleComponent, TooltipComponent,
} from "echarts/components";
import { use } from "echarts/core";
import { SVGRenderer } from "echarts/renderers";

use([
  CustomChart, LineChart,
  GridComponent, LegendComponent, LegendScrollComponent, TitleComponent, TooltipComponent,
  SVGRenderer,
]);

export { init, setPlatformAPI } from "echarts/core";
export type { EChartsType } from "echarts/core";
