// The element as pages see it: settings that come and go, states, events, policy.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync, mkdirSync } from "node:fs";
import { createServer } from "node:http";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { pathToFileURL } from "node:url";

import type { Browser } from "playwright-core";

import {
  chartElement, events, launch, openCharts, pictureTexts, recorder, setParam, twoFrames, waitForState,
} from "./chart_page.ts";

const script = join(PLEXORAS_ROOT, "build/web/plexoras-diagram.js");

let browser: Browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

test("draws, says so once, and keeps the fallback for the ear", async () => {
  const page = await openCharts(browser, [{ caption: "Sales" }], { head: recorder });
  assert.deepEqual(await events(page), [["ready", { type: 5 }]]);
  const fallback = page.locator("plexoras-diagram > table");
  const size = await page.evaluate(() => {
    const table = document.querySelector("plexoras-diagram > table");
    const { width, height } = table?.assignedSlot?.parentElement?.getBoundingClientRect() ?? {};
    return [width, height];
  });
  assert.deepEqual(size, [1, 1]);
  assert.match(await fallback.ariaSnapshot(), /cell "1200"/);
  assert.deepEqual(await page.evaluate(() => {
    const chart = document.querySelector("plexoras-diagram");
    const { width, height } = chart?.getBoundingClientRect() ?? {};
    const drawing = chart?.shadowRoot?.querySelector("[part~=drawing]");
    return [width, height, drawing?.clientWidth, chart?.shadowRoot?.querySelector("[part~=caption]")?.textContent];
  }), [480, 320, 480, "Sales"]);
});

test("what is set before the script runs counts when it does", async () => {
  const head = `<script>addEventListener("DOMContentLoaded", () => {}, true);
    document.addEventListener("readystatechange", () => {
      const chart = document.querySelector("plexoras-diagram");
      if (document.readyState !== "interactive" || !chart) return;
      chart.width = 300; chart.theme = "dark"; chart.patterns = true; chart.option = (option) => {
        window.seen = (window.seen ?? 0) + 1;
        return { ...option, title: { text: "hooked" } };
      };
    });</script>`;
  const page = await openCharts(browser, [{}], { head });
  assert.deepEqual(await page.evaluate(() => {
    const chart = document.querySelector("plexoras-diagram") as HTMLElement & { patterns: boolean };
    return [chart.getAttribute("width"), chart.getAttribute("theme"), chart.patterns, chart.offsetWidth,
      Object.keys(chart)];
  }), ["300", "dark", true, 300, []]);
  assert((await pictureTexts(page)).includes("hooked"));
});

test("an element that is made by a script draws when its parameters come", async () => {
  const page = await openCharts(browser, [], { head: recorder });
  await page.evaluate(async () => {
    const chart = document.createElement("plexoras-diagram");
    document.body.append(chart);
    await new Promise((resolve) => setTimeout(resolve, 50));
    const param = document.createElement("param");
    param.setAttribute("name", "XmlContents");
    param.setAttribute("value", "<xml><rows><row>only</></><cols/><data><value>5</></></xml>");
    chart.append(param);
  });
  await waitForState(page, "drawn");
  assert((await pictureTexts(page)).includes("only"));
  assert.equal((await events(page)).length, 1);
});

test("changed parameters are drawn together", async () => {
  const head = `${recorder}<script>window.drawings = 0; addEventListener("DOMContentLoaded", () => {
    document.querySelector("plexoras-diagram").option = () => { window.drawings += 1; };
  });</script>`;
  const page = await openCharts(browser, [{}], { head });
  const drawings = (): Promise<number> => page.evaluate(() => (window as unknown as { drawings: number }).drawings);
  const before = await drawings();
  await page.evaluate(async () => {
    const set = (name: string, value: string): void =>
      document.querySelector(`param[name=${name}]`)?.setAttribute("value", value);
    set("XmlStyle", "<xml><DiagramType>1</></>");
    set("XmlContents", "<xml><rows><row>new</><row>two</></><cols/><data><value>1</><value>2</></></xml>");
    await new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(resolve)));
  });
  assert((await pictureTexts(page)).includes("new"));
  assert.equal(await drawings() - before, 1);
  assert.equal((await events(page)).length, 1, "ready once");
});

test("a setting that cannot be read leaves the fallback on show until it is mended", async () => {
  const page = await openCharts(browser, [{ id: "sales" }], { head: recorder });
  const table = page.locator("plexoras-diagram > table");
  const cases: [string, string, string][] = [
    ["XmlStyle", "<xml>\n<FontSize>big</></xml>",
      "XmlStyle: 2:11: FontSize (Integer): Type mismatch: \"big\" is not a number"],
    ["XmlStyle", "<xml><FormatType>0</><FormatPattern>0 'it</></xml>",
      "Pattern: a quote (') or a fill (*) is not complete"],
    ["XmlContents", "<xml><rows>", "XmlContents: 1:6: <rows> is never closed; close it with \"</>\""],
  ];
  for (const [name, value, message] of cases) {
    const good = await page.locator(`param[name=${name}]`).getAttribute("value") ?? "";
    await setParam(page, name, value);
    await waitForState(page, "failed");
    const [type, detail] = (await events(page)).pop() ?? [];
    assert.equal(type, "error");
    assert.equal(detail?.["message"], message);
    const box = await table.boundingBox();
    assert(box && box.width > 60 && box.height > 60, "the table is there to be seen");
    await setParam(page, name, good);
    await waitForState(page, "drawn");
  }
  await page.evaluate(() => {
    (document.querySelector("plexoras-diagram") as unknown as { option: () => void }).option = () => {
      throw new Error("no such option");
    };
  });
  await waitForState(page, "failed");
  assert.deepEqual((await events(page)).pop(), ["error", { message: "no such option", setting: "option" }]);
  await page.evaluate(() => {
    (document.querySelector("plexoras-diagram") as unknown as { option: null }).option = null;
  });
  await waitForState(page, "drawn");
});

test("a failure is told once, whatever its listener tries", async () => {
  const bad = "<xml><FontSize>big</></xml>";
  const tries: [string, string][] = [
    ["another language", `chart.lang = chart.lang === "de" ? "fr" : "de"`],
    ["another option", "chart.option = () => { throw new Error('still none') }"],
    ["the same settings", `chart.querySelector("param").setAttribute("value", "${bad}")`],
  ];
  for (const [name, action] of tries) {
    const page = await openCharts(browser, [{}], { head: `${recorder}<script>
      addEventListener("plexoras-error", ({ target: chart }) => { ${action}; });</script>` });
    await setParam(page, "XmlStyle", bad);
    await page.waitForTimeout(200);
    assert.equal((await events(page)).filter(([type]) => type === "error").length, 1, name);
    await setParam(page, "XmlStyle", "<xml/>");
    await page.waitForTimeout(200);
    const isMended = !action.includes("option");
    const [type, detail] = (await events(page)).pop() ?? [];
    assert.deepEqual(isMended ? [] : [type, detail?.["message"]], isMended ? [] : ["error", "still none"], name);
    await waitForState(page, isMended ? "drawn" : "failed");
    await page.close();
  }
});

test("clicks select, and say what", async () => {
  const style = { SelectionMode: 3, RowSelection: 0, ColSelection: 0 };
  const page = await openCharts(browser, [{ style }], { head: recorder, reducedMotion: "reduce" });
  await page.waitForFunction(() => (window as unknown as { events: unknown[] }).events.length > 0);
  // The last bar of three rows and columns: East, Q3.
  const bar = await page.evaluate(() => {
    const paths = [...document.querySelector("plexoras-diagram")?.shadowRoot?.querySelectorAll("svg path") ?? []];
    const boxes = paths.filter((path) => path.getAttribute("fill") !== "none")
      .map((path) => path.getBoundingClientRect())
      .filter((box) => box.height > 100 && box.width < 100 && box.width > 5);
    const box = boxes[0];
    return box ? { x: box.x + box.width / 2, y: box.y + box.height / 2 } : null;
  });
  assert(bar, "there is a tall bar");
  await page.mouse.click(bar.x, bar.y);
  await page.waitForFunction(() => (window as unknown as { events: unknown[] }).events.length > 1);
  assert.deepEqual((await events(page)).pop(), ["select", {
    row: 2, column: 2, rowLabel: "East", columnLabel: "Q3", value: 1200, text: "1200", cells: [{ row: 2, column: 2 }],
  }]);
  assert.deepEqual(await page.evaluate(() => {
    const { table } = document.querySelector("plexoras-diagram") as unknown as { table: { cells: string[][] } };
    return table.cells[2];
  }), ["20", "5", "1200"]);
});

test("no click is lost on a shape that comes to the front as it is pressed", async () => {
  const style = { SelectionMode: 3, RowSelection: 0, ColSelection: 0 };
  for (const type of [5, 4]) {
    const values = ["40", "50", "60", "50", "60", "40", "60", "40", "50"];
    const charts = [{ style: { ...style, DiagramType: type }, values }];
    const page = await openCharts(browser, charts, { head: recorder, reducedMotion: "reduce" });
    const [first, second] = await page.evaluate(() => {
      const shapes = [...document.querySelector("plexoras-diagram")?.shadowRoot?.querySelectorAll("svg path") ?? []]
        .filter((path) => path.getAttribute("fill") !== "none")
        .map((path) => path.getBoundingClientRect())
        .filter(({ width, height }) => width > 20 && height > 20 && width < 400)
        .sort((one, other) => other.height - one.height);
      return shapes.slice(0, 2).map(({ x, y, width, height }) => ({ x: x + width / 2, y: y + height / 2 }));
    });
    assert(first && second);
    for (const { x, y } of Array(12).fill([first, second]).flat()) {
      // All at once, as a finger does it: the shape answers the movement when it is pressed already.
      await Promise.all([page.mouse.move(x, y), page.mouse.down(), page.mouse.up()]);
    }
    const selections = (await events(page)).filter(([name]) => name === "select");
    assert.equal(selections.length, 24, `type ${type}`);
    await page.close();
  }
});

test("what the legend hides stays hidden in the next drawing, but not at the front", async () => {
  const page = await openCharts(browser, [{ style: { TabStyle: 1 } }]);
  const chart = page.locator("plexoras-diagram");
  await page.evaluate(() => {
    const chart = document.querySelector("plexoras-diagram") as unknown as { option: (option: object) => void };
    chart.option = (option) => { (window as unknown as { drawn: object }).drawn = option; };
  });
  const hidden = async (): Promise<string[]> => {
    await twoFrames(page);
    return page.evaluate(() => {
      const { drawn } = window as unknown as { drawn: { legend: { selected: Record<string, boolean> }[] } };
      return Object.entries(drawn.legend[0]?.selected ?? {}).filter(([, shown]) => !shown).map(([name]) => name);
    });
  };
  await chart.locator("svg text", { hasText: "Q2" }).click({ force: true });
  await chart.evaluate((element) => element.setAttribute("theme", "dark"));
  assert.deepEqual(await hidden(), ["Q2"]);
  await page.getByRole("tab", { name: "Q2" }).click();
  assert.deepEqual(await hidden(), []);
  await page.getByRole("tab", { name: "All" }).click();
  assert.deepEqual(await hidden(), ["Q2"]);
});

test("axes fit what the legend leaves on show, also in a closer look", async () => {
  const rows = Array.from({ length: 20 }, (_, row) => `r${row}`);
  const values = rows.flatMap((_, row) => [`${2000 + row}-01-01`, `2024-05-${String(row + 1).padStart(2, "0")}`]);
  const style = { DiagramType: 1, FormatType: 5 };
  const page = await openCharts(browser, [{ style, rows, columns: ["Start", "Due"], values }]);
  const chart = page.locator("plexoras-diagram");
  const years = async (): Promise<string[]> => (await pictureTexts(page)).filter((text) => /\d{4}$/.test(text));
  const due = ["Apr 29, 2024", "May 6, 2024", "May 13, 2024", "May 20, 2024"];
  await chart.locator("svg text", { hasText: "Start" }).click({ force: true });
  await twoFrames(page);
  assert.deepEqual(await years(), due);
  await page.locator(".walker").focus();
  await page.keyboard.press("+");
  await chart.getByRole("button", { name: "Show all" }).waitFor();
  assert.deepEqual(await years(), due);
});

test("a legend stays in one column where no font has the sign that the library measures lines by", async () => {
  const head = `<script>
    const { measureText } = CanvasRenderingContext2D.prototype;
    CanvasRenderingContext2D.prototype.measureText = function (text) {
      if (text !== "\\u56fd") return measureText.call(this, text);
      return { width: 1.6 * parseFloat(/[\\d.]+px/.exec(this.font)) };
    };
  </script>`;
  const page = await openCharts(browser, [{ style: { DiagramType: 7, LabelStyle: 3 } }], { head });
  const left = await page.evaluate((names) => names.map((name) => {
    const texts = [...document.querySelector("plexoras-diagram")?.shadowRoot?.querySelectorAll("svg text") ?? []];
    return Math.round(texts.find((text) => text.textContent === name)?.getBoundingClientRect().left ?? NaN);
  }), ["Q1", "Q2", "Q3"]);
  assert.deepEqual(left, Array(3).fill(left[0]));
});

test("a series at the front goes back when its tab is gone", async () => {
  const tabs = "<TabStyle>1</>";
  const endings: [string, string, string[]][] = [
    ["no tabs", "<xml/>", ["Q1", "Q2", "Q3"]],
    ["its column is x now", `<xml>${tabs}<DiagramType>3</></>`, ["Q2", "Q3"]],
  ];
  for (const [name, style, wanted] of endings) {
    const page = await openCharts(browser, [{ style: { TabStyle: 1 } }]);
    await page.evaluate(() => {
      const chart = document.querySelector("plexoras-diagram") as unknown as { option: (option: object) => void };
      chart.option = (option) => { (window as unknown as { drawn: object }).drawn = option; };
    });
    const drawn = async (): Promise<(string | undefined)[]> => {
      await twoFrames(page);
      return page.evaluate(() => (window as unknown as { drawn: { series: { name?: string }[] } }).drawn.series
        .map(({ name }) => name).filter((name) => name?.startsWith("Q")));
    };
    await page.getByRole("tab", { name: "Q1" }).click();
    assert.deepEqual(await drawn(), ["Q1"], name);
    await setParam(page, "XmlStyle", style);
    assert.deepEqual(await drawn(), wanted, name);
    await setParam(page, "XmlStyle", `<xml>${tabs}</>`);
    assert.deepEqual(await drawn(), ["Q1", "Q2", "Q3"], name);
    await page.close();
  }
});

test("the nearest language decides how values are written", async () => {
  const page = await openCharts(browser, [{ style: { FormatType: 3 } }], { locale: "fr-FR" });
  const written = (): Promise<string | undefined> => page.evaluate(() => {
    const { table } = document.querySelector("plexoras-diagram") as unknown as { table: { cells: string[][] } };
    return table.cells[0]?.[1];
  });
  assert.equal(await written(), "-4.5", "that of the page");
  await page.evaluate(() => document.querySelector("plexoras-diagram")?.setAttribute("lang", "de"));
  assert.equal(await written(), "-4,5");
});

test("draws from a file without a request, in a page with one global more, however often it is loaded", async () => {
  const page = await browser.newPage();
  const requests: string[] = [];
  page.on("request", (request) => requests.push(request.url()));
  const folder = join(PLEXORAS_ROOT, "build/web/tests/pages");
  mkdirSync(folder, { recursive: true });
  const address = pathToFileURL(script).href;
  writeFileSync(join(folder, "twice.html"), `<!doctype html><title>t</title>
    <script>window.before = Object.getOwnPropertyNames(window)</script>
    <script defer src="${address}"></script><script defer src="${address}?again"></script>${chartElement({}, 0)}`);
  const page_ = pathToFileURL(join(folder, "twice.html")).href;
  await page.goto(page_);
  await waitForState(page, "drawn");
  assert.deepEqual(requests, [page_, address, `${address}?again`]);
  const added = await page.evaluate(() => {
    const { before } = window as unknown as { before: string[] };
    const known = new Set([...before, "before"]);
    return Object.getOwnPropertyNames(window).filter((name) => !known.has(name));
  });
  assert.deepEqual(added.filter((name) => !name.startsWith("__")), ["PlexorasDiagram"]);
  await page.close();
});

test("keeps to a strict policy", async () => {
  const types = [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11];
  const style = { HasPopupMenu: true, TabStyle: 1 };
  const charts = types.map((DiagramType) => ({ id: `t${DiagramType}`, style: { ...style, DiagramType } }));
  const body = charts.map(chartElement).join("");
  const server = createServer((request, response) => {
    const isScript = request.url?.endsWith(".js");
    response.writeHead(200, {
      "content-type": isScript ? "text/javascript" : "text/html; charset=utf-8",
      "content-security-policy": "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:",
    });
    if (request.url === "/watch.js") {
      response.end("window.violations = []; addEventListener('securitypolicyviolation', (event) => "
        + "window.violations.push(event.violatedDirective + ' ' + event.sourceFile + ':' + event.lineNumber));");
    } else {
      response.end(isScript ? readFileSync(script, "utf8")
        : `<!doctype html><html lang=en><title>t</title>
          <script src=watch.js></script><script defer src=d.js></script>${body}`);
    }
  });
  await new Promise<void>((done) => server.listen(0, "127.0.0.1", done));
  const page = await browser.newPage({ viewport: { width: 800, height: 600 } });
  try {
    await page.goto(`http://127.0.0.1:${server.address().port}/`);
    for (const { id } of charts) {
      const chart = page.locator(`#${id}`);
      await chart.scrollIntoViewIfNeeded();
      const box = await chart.boundingBox();
      assert(box);
      // Tooltips, marks and menus are made under the pointer.
      for (const part of [0.3, 0.5, 0.7]) await page.mouse.move(box.x + box.width * part, box.y + box.height * 0.6);
      await page.mouse.click(box.x + box.width / 2, box.y + box.height / 2, { button: "right" });
      await page.keyboard.press("Escape");
    }
    assert.deepEqual(await page.evaluate(() => (window as unknown as { violations: string[] }).violations), []);
    const drawn = await page.evaluate(() => [...document.querySelectorAll("plexoras-diagram")]
      .filter((chart) => chart.shadowRoot?.querySelector("div.drawn")).length);
    assert.equal(drawn, types.length);
  } finally {
    await page.close();
    server.close();
  }
});
