// The commands that the element knows itself: what menu entries of type "java" can do.
import { csvOf, tabTextOf } from "../data/table_text.ts";
import { announce } from "../host/announcer.ts";
import type { PartHost } from "../host/part.ts";
import { type TextName, textsFor } from "../host/texts.ts";
import type { MenuEntry } from "../settings/menu.ts";
import { copyText } from "./clipboard.ts";
import { showDataTable } from "./data_dialog.ts";
import { fileNameOf, pngAddress, saveAs, svgAddress, svgOf, svgOfTable } from "./picture_file.ts";
import { printAlone } from "./print.ts";

const pngScale = 2;

type Command = (host: PartHost, option: string) => void | Promise<void>;

/** By the param of the menu entry; what stands behind a colon in it is `option`. */
const commands = new Map<string, Command>(Object.entries<Command>({
  print: (host) => printAlone(host.element),
  copyData: async (host) => {
    const copied = await copyText(tabTextOf(host.scene().table));
    announce(host.root, textsFor(host.element)(copied ? "copied" : "notCopied"));
  },
  savePicture: async (host, option) => {
    const scene = host.scene();
    const svg = host.withAll(() => svgOf(host.drawing, scene.look.ground))
      ?? svgOfTable(scene, host.name, textsFor(host.element));
    if (option === "png") saveAs(`${fileName(host)}.png`, await pngAddress(svg, pngScale));
    else saveAs(`${fileName(host)}.svg`, svgAddress(svg));
  },
  saveCsv: (host) => {
    // With a byte order mark, or spreadsheets take the bytes for another encoding.
    const csv = `\ufeff${csvOf(host.scene().table)}`;
    saveAs(`${fileName(host)}.csv`, `data:text/csv;charset=utf-8,${encodeURIComponent(csv)}`);
  },
  showTable: (host) => showDataTable(host),
  fullScreen: (host) => (document.fullscreenElement ? document.exitFullscreen() : host.element.requestFullscreen()),
}));

/** Runs the command that a menu entry's param names; one of a name that we do not know is left to the page. */
export async function runCommand(host: PartHost, param: string): Promise<void> {
  const [name = "", option = ""] = param.split(":");
  await commands.get(name)?.(host, option);
}

/** The menu of a chart without one of its own: all commands that make sense for it. */
export function defaultMenu(host: PartHost): MenuEntry[] {
  const texts = textsFor(host.element);
  const item = (param: string, caption: TextName): MenuEntry =>
    ({ kind: "item", type: "java", param, caption: texts(caption) });
  const picture: MenuEntry[] = [item("savePicture", "asSvg"), item("savePicture:png", "asPng")];
  return [
    item("showTable", "showTable"),
    item("copyData", "copyData"),
    item("saveCsv", "saveCsv"),
    { kind: "menu", caption: texts("savePicture"), entries: picture },
    { kind: "separator" },
    item("print", "print"),
    ...(document.fullscreenEnabled ? [item("fullScreen", "fullScreen")] : []),
  ];
}

function fileName(host: PartHost): string {
  return fileNameOf(host.root.querySelector("[part~=caption]")?.textContent || host.element.id);
}
