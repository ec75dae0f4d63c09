// Where the plot of a drawn chart lies, and what stands where in it.
import type { Plane, Range, Spot } from "../charts/chart.ts";
import type { EChartsType } from "../charts/library.ts";

// What the library keeps for its own parts: nothing else tells the box between the axes, and the ends of these.
interface Inside {
  getModel(): { getComponent(kind: string, index: number): Component | undefined };
}

interface Component {
  readonly axis?: Axis;
  readonly coordinateSystem?: { getRect(): { x: number; y: number; width: number; height: number } };
}

interface Axis {
  readonly inverse: boolean;
  readonly scale: { getExtent(): [number, number] };
  dataToCoord(value: number): number;
  toGlobalCoord(place: number): number;
}

/** The plot of a chart with axes; as long as it is drawn so. Places are in pixels of the drawing. */
export class PlotArea {
  readonly box: { readonly x: number; readonly y: number; readonly width: number; readonly height: number };
  private readonly isRotated: boolean;
  private readonly along: Axis;
  private readonly ups: readonly Axis[];

  private constructor(box: PlotArea["box"], isRotated: boolean, along: Axis, ups: readonly Axis[]) {
    this.box = box;
    this.isRotated = isRotated;
    this.along = along;
    this.ups = ups;
  }

  /** Null where a chart has no axes. */
  static of(chart: EChartsType, isRotated: boolean): PlotArea | null {
    const model = (chart as unknown as Inside).getModel();
    const axes = (kind: string): Axis[] => [0, 1].flatMap((index) => model.getComponent(kind, index)?.axis ?? []);
    const box = model.getComponent("grid", 0)?.coordinateSystem?.getRect();
    const [[along], ups] = isRotated ? [axes("yAxis"), axes("xAxis")] : [axes("xAxis"), axes("yAxis")];
    return box && along ? new PlotArea(box, isRotated, along, ups) : null;
  }

  /** Whether a place is in the plot, or at most so far outside. */
  holds(x: number, y: number, margin = 0): boolean {
    const { box } = this;
    return x >= box.x - margin && x <= box.x + box.width + margin
      && y >= box.y - margin && y <= box.y + box.height + margin;
  }

  spot(x: number, y: number): Spot {
    return this.isRotated ? { along: y, up: x } : { along: x, up: y };
  }

  plane(isShown: Plane["isShown"]): Plane {
    const placeOn = (axis: Axis | undefined, value: number): number =>
      (axis ? axis.toGlobalCoord(axis.dataToCoord(value)) : 0);
    return {
      length: this.isRotated ? this.box.height : this.box.width,
      along: (value) => placeOn(this.along, value),
      up: (value, axis) => placeOn(this.ups[axis], value),
      isShown,
    };
  }

  /** How far along the x axis a place is, from 0 at its low end to 1 at its high one. */
  shareAt(x: number, y: number): number {
    const { box } = this;
    const share = this.isRotated ? (box.y + box.height - y) / box.height : (x - box.x) / box.width;
    return this.along.inverse ? 1 - share : share;
  }

  /** The ends of the axes. */
  get ranges(): { readonly along: Range; readonly ups: readonly Range[] } {
    return { along: this.along.scale.getExtent(), ups: this.ups.map((axis) => axis.scale.getExtent()) };
  }
}
