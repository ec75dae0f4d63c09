// An element in its place: hidden and shown, moved and taken away, beside others, and as large as its box.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";

import type { Browser } from "playwright-core";

import { events, launch, openCharts, pictureTexts, recorder, setParam, twoFrames, waitForState } from "./chart_page.ts";

let browser: Browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

test("a chart that is not visible takes no room", async () => {
  const page = await openCharts(browser, [{ style: {} }]);
  await page.evaluate(() => {
    const param = document.createElement("param");
    param.setAttribute("name", "Visible");
    param.setAttribute("value", "False");
    document.querySelector("plexoras-diagram")?.append(param);
  });
  await waitForState(page, "hidden");
  assert.equal(await page.locator("plexoras-diagram").boundingBox(), null);
  await setParam(page, "Visible", "True");
  await waitForState(page, "drawn");
});

test("a chart that was hidden shows what has changed meanwhile", async () => {
  const page = await openCharts(browser, [{}]);
  const chart = page.locator("plexoras-diagram");
  await chart.evaluate((element) => { element.style.display = "none"; });
  await setParam(page, "XmlContents", "<xml><rows><row>new</></><cols/><data><value>1</></></>");
  await twoFrames(page);
  await chart.evaluate((element) => { element.style.display = ""; });
  await twoFrames(page);
  assert((await pictureTexts(page)).includes("new"));
});

test("charts beside each other stand on one line, with a caption and without", async () => {
  const head = "<style>plexoras-diagram { display: inline-block }</style>";
  const charts = [{ caption: "Sales", attributes: "width=300" }, { attributes: "width=300" }];
  const page = await openCharts(browser, charts, { head });
  const boxes = await Promise.all((await page.locator("plexoras-diagram").all()).map((chart) => chart.boundingBox()));
  assert.deepEqual([boxes[0]?.y, boxes[0]?.x !== boxes[1]?.x], [boxes[1]?.y, true]);
});

test("follows the language, the colours and the font of where it stands", async () => {
  const page = await openCharts(browser, [{ style: { FormatType: 3 } }], { colorScheme: "light" });
  const section = '<section lang="de" style="--plexoras-color-1: #f00; font-family: serif"></section>';
  // A value, the first colour, the scheme, the font.
  const steps: [string, string, string][] = [
    ["a move", `document.body.insertAdjacentHTML("beforeend", '${section}');
      document.querySelector("section").append(chart)`, "-4,5 #f00 light serif"],
    ["a change and a move at once", `chart.theme = "dark"; document.body.append(chart)`, "-4.5 own dark own"],
    ["another language of the page", `document.documentElement.lang = "fr"`, "-4,5 own dark own"],
    ["another class of the page", `document.head.insertAdjacentHTML("beforeend",
      "<style>.night { --plexoras-color-1: #0f0; font-family: serif }</style>");
      document.body.className = "night"`, "-4,5 #0f0 dark serif"],
    ["a language just before printing", `document.documentElement.lang = "en";
      dispatchEvent(new Event("beforeprint")); dispatchEvent(new Event("afterprint"))`, "-4.5 #0f0 dark serif"],
    ["a move that does not leave", `document.querySelector("section").moveBefore(chart, null)`,
      "-4,5 #f00 dark serif"],
  ];
  for (const [name, change, wanted] of steps) {
    await page.evaluate(`{ const chart = document.querySelector("plexoras-diagram"); ${change} }`);
    await twoFrames(page);
    const seen = await page.evaluate(() => {
      const chart = document.querySelector("plexoras-diagram") as HTMLElement & { table: { cells: string[][] } };
      const { colorScheme, fontFamily } = getComputedStyle(chart.shadowRoot?.querySelector(".frame") ?? chart);
      const color = getComputedStyle(chart).getPropertyValue("--_accent").replace("\\", "");
      return [chart.table.cells[0]?.[1], ["#f00", "#0f0"].includes(color) ? color : "own", colorScheme,
        fontFamily === "serif" ? fontFamily : "own"].join(" ");
    });
    assert.equal(seen, wanted, name);
  }
});

// Counts what watches for languages: observers of trees that have begun, less those that have ended.
const languageWatches = `<script>
  window.watching = new Set();
  const { observe, disconnect } = MutationObserver.prototype;
  MutationObserver.prototype.observe = function (node, options) {
    if (String(options.attributeFilter) === "lang") watching.add(this);
    observe.call(this, node, options);
  };
  MutationObserver.prototype.disconnect = function () {
    watching.delete(this);
    disconnect.call(this);
  };
</script>`;

test("another language of anything around a chart is noticed, by one observer", async () => {
  const formatted = { style: { FormatType: 3 } };
  const page = await openCharts(browser, [formatted, formatted], { head: languageWatches });
  // The first values, and how many observers there are.
  const steps: [string, string, string][] = [
    ["at first", "", "-4.5 -4.5 1"],
    ["a parent", "outer.lang = 'de'", "-4,5 -4,5 1"],
    ["one nearer to one of them", "one.parentNode.lang = 'en'", "-4.5 -4,5 1"],
    ["none any more", "outer.removeAttribute('lang')", "-4.5 -4.5 1"],
    ["elsewhere", "document.querySelector('h1').lang = 'de'", "-4.5 -4.5 1"],
    ["in two shadow trees", `const inner = document.createElement("p"), deep = document.createElement("div");
      outer.attachShadow({ mode: "open" }).append(deep, document.createElement("slot"));
      deep.append(inner);
      inner.attachShadow({ mode: "open" }).innerHTML = "<b></b>";
      inner.shadowRoot.firstChild.append(one)`, "-4.5 -4.5 3"],
    ["a host's parent", "outer.shadowRoot.firstChild.lang = 'de'", "-4,5 -4.5 3"],
    ["the outermost host", "outer.shadowRoot.firstChild.removeAttribute('lang'); outer.lang = 'fr'", "-4,5 -4,5 3"],
    ["around it, innermost", "one.parentNode.lang = 'en'", "-4.5 -4,5 3"],
    ["in a frame's shadow tree", `const frame = document.createElement("iframe");
      document.body.append(frame);
      const host = frame.contentDocument.body.appendChild(frame.contentDocument.createElement("div"));
      host.lang = "de";
      host.attachShadow({ mode: "open" }).append(one)`, "-4,5 -4,5 3"],
    ["out of the trees", "document.body.append(one)", "-4.5 -4,5 1"],
    ["the last ones have left", "one.remove(); other.remove()", "-4.5 -4,5 0"],
  ];
  await page.evaluate(() => {
    document.querySelector("main")?.insertAdjacentHTML("beforeend", "<section><div></div></section>");
    const [one, other] = document.querySelectorAll("plexoras-diagram");
    const outer = document.querySelector("section");
    outer?.append(other ?? "");
    outer?.firstElementChild?.append(one ?? "");
    Object.assign(window, { one, other, outer });
  });
  for (const [name, change, wanted] of steps) {
    await page.evaluate(`{ ${change} }`);
    await page.waitForFunction((expected) => {
      const { one, other, watching, last } = window as unknown as {
        last: string[]; watching: Set<unknown>; one: HTMLElement; other: HTMLElement;
      };
      const seen = [one, other].map((chart, index) =>
        (chart as HTMLElement & { table: { cells: string[][] } | null }).table?.cells[0]?.[1] ?? last[index] ?? "");
      Object.assign(window, { last: seen });
      return [...seen, watching.size].join(" ") === expected;
    }, wanted, { timeout: 5000 }).catch(() => { throw new Error(name); });
  }
});

test("a move keeps the drawing, leaving gives all back", async () => {
  const page = await openCharts(browser, [{}], { head: recorder });
  const outcome = await page.evaluate(async () => {
    const chart = document.querySelector("plexoras-diagram");
    const svg = (): Element | null | undefined => chart?.shadowRoot?.querySelector("svg");
    const drawn = svg();
    const place = document.createElement("section");
    document.body.append(place);
    place.append(chart ?? "");
    await new Promise((resolve) => setTimeout(resolve, 50));
    const moved = svg() === drawn;
    chart?.remove();
    await new Promise((resolve) => setTimeout(resolve, 50));
    const left = svg() ?? null;
    place.append(chart ?? "");
    const frame = document.createElement("iframe");
    document.body.append(frame);
    frame.contentDocument?.body.append(chart ?? "");
    await new Promise((resolve) => setTimeout(resolve, 200));
    const elsewhere = [chart?.clientWidth, chart?.shadowRoot?.querySelectorAll("svg").length];
    place.append(chart ?? "");
    return [moved, left, elsewhere];
  });
  // The frame is 300 pixels wide, with a margin of 8.
  assert.deepEqual(outcome, [true, null, [284, 1]]);
  await waitForState(page, "drawn");
  assert.equal((await events(page)).length, 1, "ready once");
});

test("charts that have gone leave nothing behind", async () => {
  const own = await launch("--js-flags=--expose-gc");
  try {
    const page = await openCharts(own, []);
    const left = await page.evaluate(async (types) => {
      const gone: WeakRef<Element>[] = [];
      const pause = (time: number): Promise<void> => new Promise((done) => setTimeout(done, time));
      for (let index = 0; index < 100; ++index) {
        const chart = document.createElement("plexoras-diagram");
        const style = `<xml><DiagramType>${types[index % types.length]}</><HasPopupMenu>True</><TabStyle>1</></>`;
        const contents = "<xml><rows><row>a</></><cols/><data><value>1</></></>";
        for (const [name, value] of Object.entries({ XmlStyle: style, XmlContents: contents })) {
          const param = document.createElement("param");
          param.setAttribute("name", name);
          param.setAttribute("value", value);
          chart.append(param);
        }
        const drawn = new Promise((done) => chart.addEventListener("plexoras-ready", done, { once: true }));
        document.body.append(chart);
        await drawn;
        // Every other chart goes while its menu or the window with its data is open.
        if (index % 2 === 1) chart.shadowRoot?.querySelector<HTMLElement>(".menu-button")?.click();
        if (index % 4 === 1) chart.shadowRoot?.querySelector<HTMLElement>("[role=menuitem]")?.click();
        chart.remove();
        gone.push(new WeakRef(chart));
        await pause(0);
      }
      const stillThere = (): number => gone.filter((one) => one.deref()).length;
      // What the drawing library does in its next frames ends first.
      for (let round = 0; round < 20 && stillThere() > 1; ++round) {
        await pause(500);
        // From a task of its own it finds nothing on the stack that only looks like a reference.
        await (window as unknown as { gc: (how: object) => Promise<void> }).gc({ type: "major", execution: "async" });
      }
      return stillThere();
    }, [5, 9, 4, 1]);
    // The browser itself may still know the last one.
    assert(left <= 1, `${left} of 100 charts are still there`);
  } finally {
    await own.close();
  }
});

test("follows its box, with one drawing a frame, and comes to rest", async () => {
  const head = "<style>plexoras-diagram { width: 60%; height: 200px }</style>";
  const page = await openCharts(browser, [{ attributes: "width=100%" }], { head });
  const chart = page.locator("plexoras-diagram");
  await page.setViewportSize({ width: 600, height: 500 });
  await page.waitForTimeout(100);
  const width = await chart.evaluate((element) => element.clientWidth);
  assert.equal(width, Math.round((600 - 16) * 0.6));
  assert.equal(await chart.locator("svg").getAttribute("viewBox"), `0 0 ${width} 200`);
  const frames = await page.evaluate(async () => {
    const chart = document.querySelector("plexoras-diagram") as HTMLElement & { option: unknown };
    let frame = 0;
    const drawnIn: number[] = [];
    chart.option = () => { drawnIn.push(frame); };
    for (; frame < 40; ++frame) {
      await new Promise(requestAnimationFrame);
      // All that can ask for a drawing, in one frame and several times.
      for (let again = 0; frame === 10 && again < 3; ++again) {
        chart.style.width = `${300 + again}px`;
        chart.setAttribute("theme", again === 1 ? "dark" : "light");
        chart.setAttribute("height", `${250 + again}`);
        chart.lang = ["de", "fr", "es"][again] ?? "";
        chart.toggleAttribute("patterns");
        chart.querySelector("param")?.setAttribute("value", `<xml><DiagramType>${again}</></>`);
      }
    }
    return drawnIn;
  });
  assert.equal(new Set(frames).size, frames.length, `drawn twice in a frame: ${frames}`);
  // One for the settings, at most one more for the size that the browser has found meanwhile.
  const later = frames.filter((frame) => frame >= 10);
  assert(later.length >= 1 && later.length <= 2 && Math.max(...later) <= 12, `drawn in frames ${frames}`);
});
