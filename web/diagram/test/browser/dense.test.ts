// Charts with more values than pixels beside those with few: clicks, what is selected, and looking closer.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";

import type { Browser, Page } from "playwright-core";

import { light } from "../../src/look/palette.ts";
import type { Style } from "../../src/settings/style.ts";
import { type ChartOnPage, launch, openCharts } from "./chart_page.ts";

let browser: Browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

const levels = [10, 50, 90];

/** Rows of the same values each, on axes from 0 to 100; in a scatter x is the row's number, from 0. */
function levelChart(count: number, style: Partial<Style>, values: readonly number[] = levels): ChartOnPage {
  const rows = Array.from({ length: count }, (_, row) => `r${row}`);
  const isScatter = style.DiagramType === 3;
  const all = rows.flatMap((_, row) => (isScatter ? [row, ...values.slice(1)] : values));
  return {
    style: {
      IsAbsolute: true, yScaleMin: 0, yScaleMax: 100, SelectionMode: 3,
      ...(isScatter ? { xScaleMin: 0, xScaleMax: count - 1 } : {}), ...style,
    },
    rows,
    columns: values.map((_, column) => String.fromCharCode("a".charCodeAt(0) + column)),
    values: all.map(String),
    attributes: 'width="800" height="400"',
    fallback: "",
  };
}

interface Box {
  readonly x: number;
  readonly y: number;
  readonly width: number;
  readonly height: number;
}

/** The plot in the window: where the grid's lines begin and end. */
function plotOf(page: Page): Promise<Box> {
  return page.evaluate(() => {
    const svg = document.querySelector("plexoras-diagram")?.shadowRoot?.querySelector("svg");
    const lines = [...svg?.querySelectorAll("path") ?? []].map((path) => path.getAttribute("d") ?? "")
      .flatMap((path) => /^M([\d.]+) ([\d.]+)L([\d.]+) ([\d.]+)$/.exec(path)?.slice(1).map(Number) ?? []);
    // Those of the legend are short.
    const ends = lines.filter((_, index) => {
      const [x1 = 0, y1 = 0, x2 = 0, y2 = 0] = lines.slice(index - (index % 4));
      return Math.hypot(x2 - x1, y2 - y1) > 100;
    });
    const [xs, ys] = [ends.filter((_, index) => index % 2 === 0), ends.filter((_, index) => index % 2 === 1)];
    const { left = 0, top = 0 } = svg?.getBoundingClientRect() ?? {};
    const [x, y] = [Math.min(...xs), Math.min(...ys)];
    return { x: x + left, y: y + top, width: Math.max(...xs) - x, height: Math.max(...ys) - y };
  });
}

const frame = (page: Page): Promise<void> =>
  page.evaluate(() => new Promise<void>((drawn) => requestAnimationFrame(() => requestAnimationFrame(() => drawn()))));

const noteSelections = (page: Page): Promise<void> =>
  page.evaluate(() => document.addEventListener("plexoras-select", (event) => {
    const { row, column } = (event as CustomEvent<{ row: number; column: number }>).detail;
    document.title = `${row} ${column}`;
  }));

const clicks: { name: string; style: Partial<Style>; up: number; column: number }[] = [
  { name: "lines", style: { DiagramType: 1 }, up: 0.5, column: 1 },
  { name: "areas, by the nearest top", style: { DiagramType: 2 }, up: 0.4, column: 1 },
  { name: "stacked areas", style: { DiagramType: 2, BarStyle: 1, yScaleMax: 200 }, up: 0.2, column: 1 },
  { name: "bars", style: { DiagramType: 5 }, up: 0.8, column: 2 },
  { name: "stacked bars", style: { DiagramType: 5, BarStyle: 1, yScaleMax: 200 }, up: 0.2, column: 1 },
  { name: "shares", style: { DiagramType: 5, BarStyle: 3, IsAbsolute: false }, up: 0.2, column: 1 },
  { name: "bars and line", style: { DiagramType: 6 }, up: 0.9, column: 2 },
  { name: "lines on a second axis", style: { DiagramType: 1, HasSecondYAxis: true }, up: 0.9, column: 2 },
  { name: "rotated bars", style: { DiagramType: 5, IsRotated: true }, up: 0.8, column: 2 },
  { name: "reversed lines", style: { DiagramType: 1, Reverse: 3 }, up: 0.5, column: 1 },
  { name: "rotated and reversed lines", style: { DiagramType: 1, Reverse: 3, IsRotated: true }, up: 0.5, column: 1 },
  { name: "dots", style: { DiagramType: 3 }, up: 0.5, column: 1 },
];
for (const { name, style, up, column } of clicks) {
  test(`a click finds the cell among few and among thousands: ${name}`, async () => {
    for (const count of [20, 3000]) {
      const page = await openCharts(browser, [levelChart(count, style)]);
      await noteSelections(page);
      const { IsRotated = false, Reverse = 0, DiagramType = 0 } = style;
      const box = await plotOf(page);
      const hasBands = DiagramType === 5 || DiagramType === 6;
      const row = Math.round(count * 0.3);
      const along = hasBands ? (row + 0.5) / count : row / (count - 1);
      // Categories read downward when they stand.
      const right = (Reverse & 1) === 1 ? 1 - along : along;
      const top = (Reverse & 2) === 2 ? up : 1 - up;
      const [x, y] = IsRotated ? [1 - top, right] : [right, top];
      await page.mouse.click(box.x + x * box.width, box.y + y * box.height);
      const [gotRow = NaN, gotColumn] = (await page.title()).split(" ").map(Number);
      assert.equal(gotColumn, column, `column among ${count}`);
      const most = count > 1000 ? 16 : 0;
      assert(Math.abs(gotRow - row) <= most, `row among ${count}: ${gotRow}, not ${row}`);
      await page.context().close();
    }
  });
}

/** The colours at places in the window. */
async function coloursAt(page: Page, places: readonly { readonly x: number; readonly y: number }[]): Promise<string[]> {
  const picture = (await page.screenshot()).toString("base64");
  return page.evaluate(async ({ picture, places }) => {
    const bytes = Uint8Array.from(atob(picture), (sign) => sign.charCodeAt(0));
    const bitmap = await createImageBitmap(new Blob([bytes]));
    const canvas = new OffscreenCanvas(bitmap.width, bitmap.height).getContext("2d");
    canvas?.drawImage(bitmap, 0, 0);
    return places.map(({ x, y }) => {
      const [red = 0, green = 0, blue = 0] = canvas?.getImageData(Math.floor(x), Math.floor(y), 1, 1).data ?? [];
      return `#${[red, green, blue].map((part) => part.toString(16).padStart(2, "0")).join("")}`;
    });
  }, { picture, places });
}

interface Hiding {
  readonly name: string;
  readonly style?: Partial<Style>;
  readonly count?: number;
  readonly values?: readonly number[];
  /** The columns seen from zero up at a twentieth, three and seven tenths of the axis. */
  readonly seen?: readonly number[];
}
const hidings: Hiding[] = [
  { name: "each of many" },
  { name: "some rows a pixel", count: 9000 },
  { name: "some pixels a row", count: 400 },
  { name: "rotated", style: { IsRotated: true } },
  { name: "reversed", style: { Reverse: 2 } },
  { name: "negative", values: [-10, -90, -50] },
  { name: "with a second axis", style: { HasSecondYAxis: true } },
  { name: "a stack behind the last series", style: { BarStyle: 1, HasSecondYAxis: true }, seen: [2, 2, 1] },
  {
    name: "a stack before the last series", style: { BarStyle: 1, HasSecondYAxis: true }, values: [10, 40, 90],
    seen: [0, 1, 2],
  },
];
for (const { name, style = {}, count = 3000, values = [10, 90, 50], seen = [0, 2, 1] } of hidings) {
  test(`bars narrower than a pixel hide no shorter ones, and clicks find what is seen: ${name}`, async () => {
    const isDown = values.some((value) => value < 0);
    const ends = isDown ? { yScaleMin: -100, yScaleMax: 0 } : {};
    const page = await openCharts(browser, [levelChart(count, { DiagramType: 5, ...ends, ...style }, values)]);
    await noteSelections(page);
    const box = await plotOf(page);
    const places = [0.05, 0.3, 0.7].map((up) => {
      const along = 0.3;
      const top = ((style.Reverse ?? 0) & 2) === 2 || isDown ? up : 1 - up;
      const [x, y] = style.IsRotated ? [1 - top, along] : [along, top];
      return { x: box.x + x * box.width, y: box.y + y * box.height };
    });
    assert.deepEqual(await coloursAt(page, places), seen.map((column) => light.palette[column]));
    for (const [index, { x, y }] of places.entries()) {
      await page.mouse.click(x, y);
      const [row = NaN, column] = (await page.title()).split(" ").map(Number);
      assert.equal(column, seen[index], `clicked at ${index}`);
      assert(Math.abs(row - count * 0.3) <= Math.max(count / 200, 1), `row ${row} of ${count}`);
    }
    await page.context().close();
  });
}

test("what stood behind a series is seen when a reader hides that one", async () => {
  const page = await openCharts(browser, [levelChart(3000, { DiagramType: 5 }, [10, 90, 50])]);
  const box = await plotOf(page);
  const place = { x: box.x + box.width * 0.3, y: box.y + box.height * 0.7 };
  assert.deepEqual(await coloursAt(page, [place]), [light.palette[2]]);
  await page.locator("plexoras-diagram svg text", { hasText: /^c$/ }).click({ force: true });
  await page.mouse.move(0, 0);
  await frame(page);
  assert.deepEqual(await coloursAt(page, [place]), [light.palette[1]]);
});

test("whoever points at the legend of bars that stand behind each other lightens none", async () => {
  const page = await openCharts(browser, [levelChart(3000, { DiagramType: 5 }, [10, 90, 50])]);
  const box = await plotOf(page);
  const places = [0.95, 0.7, 0.3].map((up) => ({ x: box.x + box.width * 0.3, y: box.y + box.height * up }));
  for (const name of ["a", "c"]) {
    await page.locator("plexoras-diagram svg text", { hasText: name }).first().hover({ force: true });
    await frame(page);
    assert.deepEqual(await coloursAt(page, places), [0, 2, 1].map((column) => light.palette[column]), name);
  }
});

test("many bars keep their room in bands that have it", async () => {
  const chart = levelChart(200, { DiagramType: 5, BarStyle: 1 }, Array.from({ length: 8 }, () => 10));
  const attributes = 'width="2400" height="400"';
  const page = await openCharts(browser, [{ ...chart, attributes }], { viewport: { width: 2500, height: 700 } });
  const box = await plotOf(page);
  const band = box.width / 200;
  const places = [0.25, 0.5, 0.75, 1].map((part) =>
    ({ x: box.x + band * (60 + part), y: box.y + box.height * 0.95 }));
  const [first = ""] = light.palette;
  assert.deepEqual(await coloursAt(page, places), [first, first, first, "#ffffff"], "air between stacks");
  const shapes = (): Promise<number> => page.locator(`plexoras-diagram svg [fill="${first}"]`).count();
  assert(await shapes() < 100, "one shape a series");
  await page.locator("plexoras-diagram svg text", { hasText: /^h$/ }).click({ force: true });
  await frame(page);
  await page.locator("plexoras-diagram svg text", { hasText: /^g$/ }).click({ force: true });
  await page.waitForFunction((colour) =>
    (document.querySelector("plexoras-diagram")?.shadowRoot?.querySelectorAll(`svg [fill="${colour}"]`).length ?? 0)
      >= 200, first);
});

for (const IsRotated of [false, true]) {
  test(`in a dense histogram the lower count is in front${IsRotated ? ", rotated" : ""}`, async () => {
    const rows = Array.from({ length: 1800 }, (_, row) => `r${row}`);
    // Twice or three times in each bucket, and once.
    const values = rows.flatMap((_, row) => [row < 1200 ? row % 600 : "", row < 600 ? row : "", row % 600].map(String));
    const style = { DiagramType: 0, BucketCount: 600, IsAbsolute: true, yScaleMax: 3, IsRotated };
    const page = await openCharts(browser, [{ style, rows, columns: ["a", "b", "c"], values, fallback: "",
      attributes: 'width="800" height="400"' }]);
    const box = await plotOf(page);
    const places = [0.1, 0.5, 0.9].map((up) => {
      const [x, y] = IsRotated ? [up, 0.3] : [0.3, 1 - up];
      return { x: box.x + x * box.width, y: box.y + y * box.height };
    });
    assert.deepEqual(await coloursAt(page, places), [1, 0, 2].map((column) => light.palette[column]));
    await page.context().close();
  });
}

test("a click far from everything selects nothing, and so does one in a histogram", async () => {
  for (const style of [{ DiagramType: 1 }, { DiagramType: 3 }, { DiagramType: 0, IsAbsolute: false }]) {
    const page = await openCharts(browser, [levelChart(3000, style)]);
    await noteSelections(page);
    const { x, y, width, height } = await plotOf(page);
    await page.mouse.click(x + width * 0.3, y + height * 0.7);
    assert.equal(await page.title(), "Charts", `type ${style.DiagramType}`);
    await page.context().close();
  }
});

test("what is selected is marked among thousands", async () => {
  for (const DiagramType of [1, 2, 5, 3]) {
    const one = { DiagramType, RowSelection: 500, ColSelection: 1 };
    const page = await openCharts(browser, [levelChart(3000, one), levelChart(3000, { DiagramType, ColSelection: 1 }),
      levelChart(3000, { DiagramType })]);
    // The colour of outlines and chips.
    const marks = await page.evaluate(() => [...document.querySelectorAll("plexoras-diagram")].map((chart) =>
      [...chart.shadowRoot?.querySelectorAll("svg [fill='#243051'], svg [stroke='#243051']") ?? []].length));
    assert.deepEqual(marks.map((count) => count > 0), [true, true, false], `type ${DiagramType}: ${String(marks)}`);
    await page.context().close();
  }
});

const marked: { name: string; count: number; style?: Partial<Style> }[] = [
  { name: "behind each other", count: 3000 },
  { name: "rotated", count: 3000, style: { IsRotated: true } },
  { name: "beside each other", count: 60 },
];
for (const { name, count, style } of marked) {
  test(`a selected bar among many is marked where it stands, and is what a click there finds: ${name}`, async () => {
    for (const row of [count / 6, count / 2 - count / 30]) {
      const one = { DiagramType: 5, RowSelection: row, ColSelection: 1, ...style };
      const page = await openCharts(browser, [levelChart(count, one, [10, 90, 50])]);
      await noteSelections(page);
      const box = await plotOf(page);
      const { x, y, width, height } = await page.evaluate(() => {
        const outlines = [...document.querySelector("plexoras-diagram")?.shadowRoot
          ?.querySelectorAll("svg [stroke='#243051']") ?? []];
        const outline = outlines[0]?.getBoundingClientRect();
        return { x: outline?.x ?? 0, y: outline?.y ?? 0, width: outline?.width ?? 0, height: outline?.height ?? 0 };
      });
      const [place, wanted] = style?.IsRotated
        ? [y + height / 2, box.y + ((row + 0.5) / count) * box.height]
        : [x + width / 2, box.x + ((row + 0.5) / count) * box.width];
      assert(Math.abs(place - wanted) < 2, `${row} at ${place}, not ${wanted}`);
      await page.mouse.click(...(style?.IsRotated ? [box.x + 8, place] as const : [place, y + height - 12] as const));
      await frame(page);
      assert.equal(await page.title(), "Charts", "it is what is selected already");
      await page.context().close();
    }
  });
}

/** The first and the last row whose labels are on show. */
async function shownRows(page: Page): Promise<[number, number]> {
  await frame(page);
  const labels = await page.locator("plexoras-diagram").first().locator("svg text").allTextContents();
  const rows = labels.flatMap((label) => /^r(\d+)$/.exec(label)?.[1] ?? []).map(Number);
  return [Math.min(...rows), Math.max(...rows)];
}

async function wheel(page: Page, turns: number, key: "Control" | null = "Control"): Promise<void> {
  if (key) await page.keyboard.down(key);
  for (let turn = 0; turn < Math.abs(turns); turn += 1) await page.mouse.wheel(0, Math.sign(turns) * 100);
  if (key) await page.keyboard.up(key);
  await frame(page);
}

async function openTall(chart: ChartOnPage): Promise<{ page: Page; box: Box }> {
  const page = await openCharts(browser, [chart], { head: "<style>body { height: 3000px }</style>" });
  return { page, box: await plotOf(page) };
}

test("Ctrl and the wheel look closer, a drag moves, and each way back shows all", async () => {
  for (const DiagramType of [1, 5]) {
    const { page, box } = await openTall(levelChart(3000, { DiagramType }));
    const [middle, height] = [box.x + box.width / 2, box.y + box.height / 2];
    await page.mouse.move(middle, height);
    assert.equal((await shownRows(page))[0], 0);
    await wheel(page, -8);
    const [first, last] = await shownRows(page);
    assert(first > 1200 && last < 1800 && first < 1500 && last > 1500, `${first} to ${last}`);

    await page.mouse.down();
    await page.mouse.move(middle + 200, height, { steps: 4 });
    await page.mouse.up();
    const moved = await shownRows(page);
    assert(moved[0] < first && moved[1] < last, `moved to ${String(moved)}`);

    for (const back of [
      () => page.mouse.dblclick(middle, height),
      () => page.getByRole("button", { name: "Show all" }).click(),
      () => page.keyboard.press("Escape"),
      () => page.keyboard.press("0"),
    ]) {
      await page.locator(".walker").focus();
      await page.mouse.move(middle, height);
      await wheel(page, -8);
      assert((await shownRows(page))[0] > 1000);
      await back();
      assert.equal((await shownRows(page))[0], 0, String(back));
      assert.equal(await page.getByRole("button", { name: "Show all" }).count(), 0);
    }
    assert.equal(await page.evaluate(() => scrollY), 0);
    await page.context().close();
  }
});

test("what is the page's own stays with it", async () => {
  const prevented = (page: Page): Promise<void> => page.evaluate(() => {
    addEventListener("wheel", (event) => { document.title = String(event.defaultPrevented); });
  });
  const few = await openTall(levelChart(8, { DiagramType: 1 }));
  await prevented(few.page);
  await few.page.mouse.move(few.box.x + 100, few.box.y + 100);
  await wheel(few.page, -1);
  assert.equal(await few.page.title(), "false", "there is nothing to be seen closer");

  const { page, box } = await openTall(levelChart(3000, { DiagramType: 1 }));
  await prevented(page);
  await page.mouse.move(box.x + 100, box.y + 100);
  await wheel(page, 1);
  assert.equal(await page.title(), "false", "all is on show already");
  await wheel(page, -3);
  assert.equal(await page.title(), "true");
  await wheel(page, 3, null);
  await page.waitForFunction(() => scrollY > 100);
});

test("keys look closer at the walked value, and walking out of view moves the view", async () => {
  const { page } = await openTall(levelChart(3000, { DiagramType: 5 }));
  await page.keyboard.press("Tab");
  for (const key of ["Home", "End"]) await page.keyboard.press(key);
  for (let press = 0; press < 7; press += 1) await page.keyboard.press("+");
  const [first, last] = await shownRows(page);
  assert(first >= 2970 && last >= 2990, `${first} to ${last}`);
  await page.keyboard.press("Home");
  assert.equal((await shownRows(page))[0], 0);
  await page.keyboard.press("-");
  assert((await shownRows(page))[1] > 30);
  await page.keyboard.press("Escape");
  assert((await shownRows(page))[1] > 2500);
  assert.equal(await page.evaluate(() => document.activeElement?.localName), "plexoras-diagram");
});

test("a closer look survives a selection and another style, not other data; paper and clicks know of it", async () => {
  const { page, box } = await openTall(levelChart(3000, { DiagramType: 3 }));
  await noteSelections(page);
  const [x, y] = [box.x + box.width / 2, box.y + box.height / 2];
  await page.mouse.move(x, y);
  await wheel(page, -14);
  const width = (): Promise<number> => page.evaluate(() => {
    const texts = [...document.querySelector("plexoras-diagram")?.shadowRoot?.querySelectorAll("svg text") ?? []];
    const numbers = texts.map((text) => Number(text.textContent)).filter((number) => number > 100);
    return Math.max(...numbers) - Math.min(...numbers);
  });
  assert(await width() < 100);
  await page.mouse.click(x, y);
  await frame(page);
  const [row = 0, column] = (await page.title()).split(" ").map(Number);
  assert(Math.abs(row - 1500) < 3 && column === 1, await page.title());
  assert(await width() < 100, "selected");

  await page.evaluate(() => window.dispatchEvent(new Event("beforeprint")));
  assert(await width() > 1000, "on paper");
  await page.evaluate(() => window.dispatchEvent(new Event("afterprint")));
  await frame(page);
  assert(await width() < 100, "after printing");

  await page.evaluate(() => document.querySelector("param[name=XmlStyle]")
    ?.setAttribute("value", "<xml><DiagramType>3</><HasBorder>True</></>"));
  await frame(page);
  assert(await width() < 100, "another style");

  await page.evaluate(() => {
    const param = document.querySelector("param[name=XmlContents]");
    param?.setAttribute("value", param.getAttribute("value")?.replace("<value>50<", "<value>51<") ?? "");
  });
  await frame(page);
  assert(await width() > 1000, "other data");
});

test("two fingers look closer, and one finger then moves the view", async () => {
  const page = await openCharts(browser, [levelChart(3000, { DiagramType: 1 })], { hasTouch: true });
  const session = await page.context().newCDPSession(page);
  const { x, y, width, height } = await plotOf(page);
  const [middle, row] = [x + width / 2, y + height / 2];
  const touch = (type: "touchStart" | "touchMove" | "touchEnd", ...places: number[]): Promise<unknown> =>
    session.send("Input.dispatchTouchEvent", {
      type, touchPoints: places.map((place, id) => ({ x: place, y: row, id })),
    }).then(() => frame(page));
  await touch("touchStart", middle - 20);
  await touch("touchStart", middle - 20, middle + 20);
  for (const far of [40, 100, 200]) await touch("touchMove", middle - far, middle + far);
  await touch("touchEnd");
  const [first, last] = await shownRows(page);
  assert(last - first < 400 && first < 1500 && last > 1500, `${first} to ${last}`);

  await touch("touchStart", middle);
  for (const far of [20, 60, 150]) await touch("touchMove", middle + far);
  await touch("touchEnd");
  const moved = await shownRows(page);
  assert(moved[0] < first - 20, `${first}, then ${moved[0]}`);
});
